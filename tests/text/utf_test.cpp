#include "text/utf.h"
#include "scrivalen/text.h"
#include "text/ascii.h"

#include <gtest/gtest.h>

using namespace scrivalen;

namespace {

// U+1F600 in this platform's wide text.
const std::wstring kGrin = sizeof(wchar_t) == 2
                               ? std::wstring{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)}
                               : std::wstring{static_cast<wchar_t>(0x1F600)};
const std::wstring kHighSurrogate{static_cast<wchar_t>(0xD83D)};
const std::wstring kLowSurrogate{static_cast<wchar_t>(0xDE00)};

}  // namespace

TEST(FromUtf8, ReadsOneToFourByteSequences) {
  EXPECT_EQ(FromUtf8("A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), L"A\u00E9\u20AC" + kGrin);
}

TEST(FromUtf8, ConvertsAnEmptyText) { EXPECT_EQ(FromUtf8(""), L""); }

TEST(FromUtf8, KeepsNulCharacters) { EXPECT_EQ(FromUtf8(std::string_view("a\0b", 3)), std::wstring(L"a\0b", 3)); }

TEST(FromUtf8, ReadsTextThatIsLongerThanABlock) {
  EXPECT_EQ(FromUtf8("0123456789abcdefghijklmnopqrstuvwxyz\xC3\xA9"
                     "ABCDEFGHIJKLMNOPQRSTUVWXYZ"),
            L"0123456789abcdefghijklmnopqrstuvwxyz\u00E9ABCDEFGHIJKLMNOPQRSTUVWXYZ");
}

TEST(EndOfAscii, IsTheFirstOtherByteWhereverItIs) {
  for (std::size_t at = 0; at < 40; ++at) {
    std::string text(40, 'a');
    EXPECT_EQ(endOfAscii(text.data(), text.data() + at), text.data() + at);
    text[at] = '\x80';
    EXPECT_EQ(endOfAscii(text.data(), text.data() + text.size()), text.data() + at);
  }
}

TEST(FromUtf8, ReplacesEachIllFormedSequenceOnce) {
  EXPECT_EQ(FromUtf8("a\xFF"
                     "z"),
            L"a\uFFFDz");  // no lead byte
  EXPECT_EQ(FromUtf8("a\x80\x80"
                     "z"),
            L"a\uFFFD\uFFFDz");  // continuation bytes alone
  EXPECT_EQ(FromUtf8("a\xE2\x82"
                     "z"),
            L"a\uFFFDz");                            // truncated sequence
  EXPECT_EQ(FromUtf8("a\xF0\x9F\x98"), L"a\uFFFD");  // truncated at the end
  EXPECT_EQ(FromUtf8("\xC0\xAF"), L"\uFFFD\uFFFD");  // overlong
  EXPECT_EQ(FromUtf8("\xE0\x80\xAF"), L"\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(FromUtf8("\xED\xA0\x80"), L"\uFFFD\uFFFD\uFFFD");            // a surrogate
  EXPECT_EQ(FromUtf8("\xF4\x90\x80\x80"), L"\uFFFD\uFFFD\uFFFD\uFFFD");  // above U+10FFFF
}

TEST(FromUtf8, CountsTheSequencesItReplaces) {
  std::wstring wide = L"<";
  EXPECT_EQ(appendWide(wide, "a\xFF\xC3\xA9\xC3"), 2u);
  EXPECT_EQ(wide, L"<a\uFFFD\u00E9\uFFFD");
}

TEST(ToUtf8, WritesOneToFourByteSequences) {
  EXPECT_EQ(ToUtf8(L"A\u00E9\u20AC" + kGrin), "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(ToUtf8, JoinsASurrogatePairOnEveryPlatform) {
  EXPECT_EQ(ToUtf8(kHighSurrogate + kLowSurrogate), "\xF0\x9F\x98\x80");
}

TEST(ToUtf8, ReplacesALoneSurrogate) {
  EXPECT_EQ(ToUtf8(L"a" + kHighSurrogate), "a\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(kLowSurrogate + L"a"),
            "\xEF\xBF\xBD"
            "a");
  EXPECT_EQ(ToUtf8(kLowSurrogate + kHighSurrogate), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(CutToUnits, KeepsWholeCharacters) {
  EXPECT_EQ(cutToUnits("abc", 3), "abc");
  EXPECT_EQ(cutToUnits("abc", 2), "ab");
  EXPECT_EQ(cutToUnits("\xC3\xA4\xE2\x82\xAC", 1), "\xC3\xA4");
  EXPECT_EQ(cutToUnits("a\xF0\x9F\x98\x80", 3), "a\xF0\x9F\x98\x80");
  EXPECT_EQ(cutToUnits("a\xF0\x9F\x98\x80", 2), "a");
}

TEST(EqualIgnoringCase, FoldsOnlyAsciiLetters) {
  EXPECT_TRUE(equalIgnoringCase(L"DarkBlue", L"darkblue"));
  EXPECT_FALSE(equalIgnoringCase(L"\u00C9", L"\u00E9"));
  EXPECT_FALSE(equalIgnoringCase(L"blue", L"blues"));
  EXPECT_FALSE(equalIgnoringCase(L"@", L"`"));
}

TEST(EndsWithIgnoringCase, RequiresTheWholeSuffix) {
  EXPECT_TRUE(endsWithIgnoringCase(L"Page.HTM", L".htm"));
  EXPECT_TRUE(endsWithIgnoringCase(L".htm", L".htm"));
  EXPECT_FALSE(endsWithIgnoringCase(L"page.html", L".htm"));
  EXPECT_FALSE(endsWithIgnoringCase(L"htm", L".htm"));
}
