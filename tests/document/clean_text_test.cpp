#include "document/clean_text.h"

#include <gtest/gtest.h>

using namespace scrivalen::document;

namespace {

std::string clean(std::string_view text, TextKind kind = TextKind::Flowing) {
  std::string out;
  Replaced replaced;
  appendClean(out, text, kind, replaced);
  return out;
}

Replaced replacedIn(std::string_view text) {
  std::string out;
  Replaced replaced;
  appendClean(out, text, TextKind::Flowing, replaced);
  return replaced;
}

}  // namespace

TEST(CleanText, KeepsTextOfEveryAlphabet) {
  const std::string text = "plain, \xC3\xA9t\xC3\xA9, \xD0\xBF\xD1\x80, \xE4\xB8\xAD, \xF0\x9F\x98\x80";
  EXPECT_EQ(clean(text), text);
  EXPECT_EQ(cleanLength(text, TextKind::Flowing), text.size());
}

TEST(CleanText, MakesOneLineFeedOfEachLineEnd) {
  EXPECT_EQ(clean("a\r\nb\rc\nd\r\r\ne"), "a\nb\nc\nd\n\ne");
  EXPECT_EQ(clean("a\r\nb\rc\nd", TextKind::Code), "a\nb\nc\nd");
}

TEST(CleanText, MakesBlanksOfTabsOutsideCode) {
  EXPECT_EQ(clean("a\tb"), "a b");
  EXPECT_EQ(clean("a\tb", TextKind::Code), "a\tb");
}

TEST(CleanText, KeepsALineInOneLine) {
  EXPECT_EQ(clean("a\tb\r\nc\nd", TextKind::Line), "a b c d");
  EXPECT_EQ(cleanLength("ab\nc", TextKind::Line), 2u);
}

TEST(CleanText, ReplacesAMaximalIllFormedSequenceAtOnce) {
  EXPECT_EQ(clean("a\xFFz"), "a\xEF\xBF\xBDz");
  EXPECT_EQ(clean("a\xE4\xB8z"), "a\xEF\xBF\xBDz");
  EXPECT_EQ(clean("\xED\xA0\x80"), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(clean("\xC0\xAF"), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(replacedIn("a\xFFz\xE4\xB8").badBytes, 2u);
  EXPECT_EQ(replacedIn("a\xFFz\xE4\xB8").controls, 0u);
}

TEST(CleanText, ReplacesControlCharacters) {
  EXPECT_EQ(clean(std::string_view("a\0b", 3)),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(clean("\x01\x1B\x7F"), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(clean("\xC2\x85\xC2\x9F\xC2\xA0"), "\xEF\xBF\xBD\xEF\xBF\xBD\xC2\xA0");
  EXPECT_EQ(clean("\xEF\xBF\xBE\xEF\xBF\xBF"), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(replacedIn("\x01\x1B\x7F").controls, 3u);
}

TEST(CleanText, FindsTheFirstUncleanByteAtEveryPlace) {
  for (std::size_t place = 0; place < 40; ++place) {
    for (const char bad : {'\x01', '\x7F', '\t', '\xFF'}) {
      std::string text(40, 'x');
      text[place] = bad;
      EXPECT_EQ(cleanLength(text, TextKind::Flowing), place);
    }
  }
}
