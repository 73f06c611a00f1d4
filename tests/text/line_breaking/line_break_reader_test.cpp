#include "text/line_breaking/line_break_reader.h"
#include "text/utf.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

using namespace scrivalen;

namespace {

// The text, with a bar where a line may end and two where it has to.
std::string broken(const char8_t* text) {
  const std::string_view bytes(reinterpret_cast<const char*>(text));
  std::string result;
  LineBreakReader reader(bytes);
  LineBreak place;
  std::size_t begin = 0;
  while (reader.next(place)) {
    result.append(bytes.substr(begin, place.at - begin)).append(place.isForced ? "||" : "|");
    begin = place.at;
  }
  return result;
}

std::string_view bytes(const char8_t* text) { return reinterpret_cast<const char*>(text); }

// A test of Unicode's: characters in hexadecimal digits, with a division sign where a line may end, else a times sign.
struct UnicodeTest {
  std::string text;
  std::vector<std::size_t> places;
};

UnicodeTest testOf(const std::string& line) {
  UnicodeTest test;
  std::istringstream words(line.substr(0, line.find('#')));
  for (std::string word; words >> word;) {
    if (word == bytes(u8"÷")) {
      test.places.push_back(test.text.size());
    } else if (word != bytes(u8"×")) {
      char character[4];
      test.text.append(character, putUtf8(static_cast<char32_t>(std::stoul(word, nullptr, 16)), character));
    }
  }
  return test;
}

std::vector<std::size_t> placesOf(std::string_view text) {
  std::vector<std::size_t> places;
  LineBreakReader reader(text);
  for (LineBreak place; reader.next(place);) {
    places.push_back(place.at);
  }
  return places;
}

}  // namespace

TEST(LineBreaks, PassTheTestsOfUnicode) {
  std::ifstream file(SCRIVALEN_LINE_BREAK_TESTS, std::ios::binary);
  ASSERT_TRUE(file) << SCRIVALEN_LINE_BREAK_TESTS;
  std::size_t tests = 0;
  for (std::string line; std::getline(file, line);) {
    if (!line.empty() && line.front() != '#') {
      const UnicodeTest test = testOf(line);
      EXPECT_EQ(placesOf(test.text), test.places) << line;
      ++tests;
    }
  }
  EXPECT_EQ(tests, 7654u);
}

TEST(LineBreaks, AreAfterBlanks) {
  EXPECT_EQ(broken(u8"one two  three"), "one |two  |three|");
  EXPECT_EQ(broken(u8"one "), "one |");
  EXPECT_EQ(broken(u8" one"), " |one|");
}

TEST(LineBreaks, AreNoneInAnEmptyText) { EXPECT_EQ(broken(u8""), ""); }

TEST(LineBreaks, AreForcedByLineEnds) {
  EXPECT_EQ(broken(u8"one\ntwo\r\nthree"), "one\n||two\r\n||three|");
  EXPECT_EQ(broken(u8"one\u2028two\n"), bytes(u8"one\u2028||two\n||"));
}

TEST(LineBreaks, AreAfterHyphensAndDashes) {
  EXPECT_EQ(broken(u8"well-known"), "well-|known|");
  EXPECT_EQ(broken(u8"here\u2014there"), bytes(u8"here|\u2014|there|"));
  EXPECT_EQ(broken(u8"soft\u00ADly"), bytes(u8"soft\u00AD|ly|"));
}

TEST(LineBreaks, AreNotAtNoBreakSpaces) {
  EXPECT_EQ(broken(u8"10\u00A0km far"), bytes(u8"10\u00A0km |far|"));
  EXPECT_EQ(broken(u8"1\u202F000"), bytes(u8"1\u202F000|"));
}

TEST(LineBreaks, KeepPunctuationWithItsWord) {
  EXPECT_EQ(broken(u8"(well) [so], \"what\"?"), "(well) |[so], |\"what\"?|");
  EXPECT_EQ(broken(u8"«\u00A0non\u00A0» oui"), bytes(u8"«\u00A0non\u00A0» |oui|"));
}

TEST(LineBreaks, KeepNumbersWhole) {
  EXPECT_EQ(broken(u8"-1,234.56 $12 (50%)"), "-1,234.56 |$12 |(50%)|");
  EXPECT_EQ(broken(u8"2026-11-22"), "2026-11-22|");
}

TEST(LineBreaks, AreInAddressesAfterSlashes) { EXPECT_EQ(broken(u8"http://a.b/c"), "http://|a.b/|c|"); }

TEST(LineBreaks, AreBetweenIdeographsButNotBeforeTheirPunctuation) {
  EXPECT_EQ(broken(u8"漢字。仮名"), bytes(u8"漢|字。|仮|名|"));
  EXPECT_EQ(broken(u8"「日本」"), bytes(u8"「日|本」|"));
  EXPECT_EQ(broken(u8"한국어"), bytes(u8"한|국|어|"));
}

TEST(LineBreaks, KeepMarksAndEmojiWhole) {
  EXPECT_EQ(broken(u8"e\u0301e\u0301 x"), bytes(u8"e\u0301e\u0301 |x|"));
  EXPECT_EQ(broken(u8"👩‍👩‍👧👍🏽"), bytes(u8"👩‍👩‍👧|👍🏽|"));
  EXPECT_EQ(broken(u8"🇩🇪🇫🇷"), bytes(u8"🇩🇪|🇫🇷|"));
}

TEST(LineBreaks, AreWhereAZeroWidthSpaceAllowsThem) {
  EXPECT_EQ(broken(u8"ab\u200Bcd"), bytes(u8"ab\u200B|cd|"));
  EXPECT_EQ(broken(u8"漢\u2060字"), bytes(u8"漢\u2060字|"));
}

TEST(LineBreakClasses, AreKnownForEveryCharacter) {
  EXPECT_EQ(breakClassOf(U'a'), BreakClass::AL);
  EXPECT_EQ(breakClassOf(0x4E00), BreakClass::ID);
  EXPECT_EQ(breakClassOf(0x10FFFF), BreakClass::AL);
}
