#include "text/fmt.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstdio>
#include <string>

TEST(Fmt, InsertsTextsAndNumbers) { EXPECT_EQ(FMT::Format(L"<h%d %s>", 3, L"id=\"x\""), L"<h3 id=\"x\">"); }

TEST(Fmt, AcceptsWideTextForALowerCaseS) { EXPECT_EQ(FMT::Format(L"%s", L"\u0416\u20AC"), L"\u0416\u20AC"); }

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

TEST(Fmt, IgnoresSizeModifiers) { EXPECT_EQ(FMT::Format(L"%ls %ld %hd %I64d", L"a", 1, 2, 3), L"a 1 2 3"); }

TEST(Fmt, WritesADoubledPercentSignOnce) { EXPECT_EQ(FMT::Format(L"100%%"), L"100%"); }

TEST(Fmt, LeavesUnknownConversionsAlone) {
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

TEST(Fmt, ShowsANegativeIntAsUnsigned32BitNumber) {
  EXPECT_EQ(FMT::Format(L"%u %x %X", -1, -1, -1), L"4294967295 ffffffff FFFFFFFF");
  EXPECT_EQ(FMT::Format(L"%u %x", INT_MIN, INT_MIN), L"2147483648 80000000");
  EXPECT_EQ(FMT::Format(L"%u %x", static_cast<short>(-1), static_cast<signed char>(-2)), L"4294967295 fffffffe");
  EXPECT_EQ(FMT::Format(L"%u %X", INT64_C(-1), INT64_C(-2)), L"18446744073709551615 FFFFFFFFFFFFFFFE");
  EXPECT_EQ(FMT::Format(L"%08x|%.10u", -255, -1), L"ffffff01|4294967295");
}

TEST(Fmt, TreatsAPrecisionAsTheMinimumOfDigits) {
  EXPECT_EQ(FMT::Format(L"%.3d %.3d %.3d %.3d", 7, -7, 4711, 0), L"007 -007 4711 000");
  EXPECT_EQ(FMT::Format(L"%.4u %.4x %.4X %.1i", 42u, 255, 255, 0), L"0042 00ff 00FF 0");
  EXPECT_EQ(FMT::Format(L"[%6.3d][%-6.3d][%+.3d][%+6.3d]", -7, -7, 7, 7), L"[  -007][-007  ][+007][  +007]");
}

TEST(Fmt, WritesNoDigitsForZeroWithAPrecisionOfZero) {
  EXPECT_EQ(FMT::Format(L"[%.0d][%.d][%.0u][%.0x][%3.0d][%+.0d]", 0, 0, 0u, 0, 0, 0), L"[][][][][   ][+]");
  EXPECT_EQ(FMT::Format(L"[%.0d][%.0x]", 1, 10), L"[1][a]");
}

TEST(Fmt, PadsANumberWithAPrecisionByBlanks) {
  EXPECT_EQ(FMT::Format(L"[%05.2d][%05d][%-05d][%05.2x]", 7, 7, 7, 7), L"[   07][00007][7    ][   07]");
}

TEST(Fmt, PutsAPlusSignOnlyBeforeSignedConversions) {
  EXPECT_EQ(FMT::Format(L"%+d %+i %+u %+x", 5, -5, 5, 5), L"+5 -5 5 5");
}

TEST(Fmt, TruncatesTextsButNotCharactersAtThePrecision) {
  EXPECT_EQ(FMT::Format(L"[%.0s][%.s][%.1s][%5.2s][%-5.2s][%.9s][%.0c]", L"abc", L"abc", L"abc", L"abc", L"abc", L"abc",
                        L"x"),
            L"[][][a][   ab][ab   ][abc][x]");
}

TEST(Fmt, LimitsWidthAndPrecisionTo4096Characters) {
  EXPECT_EQ(FMT::Format(L"%4096d", 1).size(), 4096u);
  EXPECT_EQ(FMT::Format(L"%99999999999999999999d", 1).size(), 4096u);
  EXPECT_EQ(FMT::Format(L"%.4097d", 1), std::wstring(4095, L'0') + L"1");
}

namespace {

// The conversion by the C library.
template <typename Number>
std::wstring byTheCLibrary(const std::string& format, Number number) {
  char text[128] = "";
  const int length = std::snprintf(text, sizeof text, format.c_str(), number);
  EXPECT_TRUE(length >= 0 && length < static_cast<int>(sizeof text)) << format;
  return {text, text + length};
}

template <typename Number>
void expectPrintf(const std::string& options, const std::string& size, const std::string& types, Number number) {
  for (const char type : types) {
    const std::string format = '%' + options + size + type;
    const std::wstring wide(format.begin(), format.end());
    EXPECT_EQ(FMT::Format(wide, number), byTheCLibrary(format, number)) << format << " of " << +number;
  }
}

}  // namespace

TEST(Fmt, WritesNumbersAsPrintfDoes) {
  for (const char* flags : {"", "-", "0", "+", "-0", "+-", "0+", "-+0"}) {
    for (const char* width : {"", "1", "3", "11", "21"}) {
      for (const char* precision : {"", ".", ".0", ".1", ".3", ".10", ".12", ".25"}) {
        const std::string options = std::string(flags) + width + precision;
        for (const int number : {0, 1, -1, 9, 10, -10, 255, -255, 4711, -4711, INT_MAX, INT_MIN}) {
          expectPrintf(options, "", "diuxX", number);
          expectPrintf(options, "", "uxX", static_cast<unsigned>(number));
        }
        for (const long long number : {0LL, -1LL, 4294967296LL, -4294967296LL, LLONG_MAX, LLONG_MIN}) {
          expectPrintf(options, "ll", "diuxX", number);
          expectPrintf(options, "ll", "uxX", static_cast<unsigned long long>(number));
        }
      }
    }
  }
}
