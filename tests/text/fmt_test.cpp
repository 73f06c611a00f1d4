#include "text/fmt.h"

#include <gtest/gtest.h>

TEST(Fmt, FillsTextsAndNumbers) { EXPECT_EQ(FMT::Format(L"<h%d %s>", 3, L"id=\"x\""), L"<h3 id=\"x\">"); }

TEST(Fmt, TakesWideTextForSmallS) { EXPECT_EQ(FMT::Format(L"%s", L"\u0416\u20AC"), L"\u0416\u20AC"); }

TEST(Fmt, WritesANullTextAsEmpty) { EXPECT_EQ(FMT::Format(L"[%s]", static_cast<const wchar_t*>(nullptr)), L"[]"); }

TEST(Fmt, WritesCharacters) { EXPECT_EQ(FMT::Format(L"%c%c", 65, L"bc"), L"Ab"); }

TEST(Fmt, WritesExtremeNumbers) {
  EXPECT_EQ(FMT::Format(L"%d %d %u", INT64_MIN, INT64_MAX, UINT64_MAX),
            L"-9223372036854775808 9223372036854775807 18446744073709551615");
}

TEST(Fmt, WritesHexadecimal) { EXPECT_EQ(FMT::Format(L"%x %X U+%04X", 255, 48879, 65), L"ff BEEF U+0041"); }

TEST(Fmt, PadsToTheWidth) {
  EXPECT_EQ(FMT::Format(L"[%5d][%-5d][%05d][%+d][%4s][%-4s][%.2s]", -42, 42, -42, 7, L"ab", L"ab", L"abc"),
            L"[  -42][42   ][-0042][+7][  ab][ab  ][ab]");
}

TEST(Fmt, PassesOverSizeModifiers) { EXPECT_EQ(FMT::Format(L"%ls %ld %hd %I64d", L"a", 1, 2, 3), L"a 1 2 3"); }

TEST(Fmt, WritesADoubledPercentSignOnce) { EXPECT_EQ(FMT::Format(L"100%%"), L"100%"); }

TEST(Fmt, LeavesWhatItDoesNotKnow) {
  EXPECT_EQ(FMT::Format(L"%q %", 1), L"%q %");
  EXPECT_EQ(FMT::Format(L"%d %d", 1), L"1 %d");
  EXPECT_EQ(FMT::Format(L"%d", L"text"), L"%d");
  EXPECT_EQ(FMT::Format(L"%s", 5), L"%s");
}

TEST(Fmt, DoesNotReadPercentSignsInValues) { EXPECT_EQ(FMT::Format(L"%s|", L"%d%s%n"), L"%d%s%n|"); }

TEST(Fmt, WritesALongText) {
  const std::wstring text(100000, L'x');
  EXPECT_EQ(FMT::Format(L"%s", text), text);
}
