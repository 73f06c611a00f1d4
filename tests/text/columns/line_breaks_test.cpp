#include "text/columns/line_breaks.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

using scrivalen::extentOf;
using scrivalen::Word;
using scrivalen::WordReader;

namespace {

std::string_view bytes(const char8_t* text) { return reinterpret_cast<const char*>(text); }

// The words, each followed by a bar.
std::string words(const char8_t* line) {
  std::string result;
  WordReader reader(bytes(line));
  Word word;
  while (reader.next(word)) {
    result.append(word.blanks, '_').append(word.text).append("|");
  }
  return result;
}

}  // namespace

TEST(Words, EndAtBlanks) {
  EXPECT_EQ(words(u8""), "");
  EXPECT_EQ(words(u8"   "), "");
  EXPECT_EQ(words(u8"one two"), "one|_two|");
  EXPECT_EQ(words(u8"  one  two  "), "__one|__two|");
  EXPECT_EQ(words(u8"well-known, (été)"), bytes(u8"well-known,|_(été)|"));
}

TEST(Words, AreKeptByANoBreakSpace) { EXPECT_EQ(words(u8"10\u00A0km far"), bytes(u8"10\u00A0km|_far|")); }

TEST(Words, EndBesideIdeographs) {
  EXPECT_EQ(words(u8"漢字"), bytes(u8"漢|字|"));
  EXPECT_EQ(words(u8"PDFの形式"), bytes(u8"PDF|の|形|式|"));
  EXPECT_EQ(words(u8"go🎉go"), bytes(u8"go|🎉|go|"));
}

TEST(Words, KeepPunctuationWithItsIdeograph) {
  EXPECT_EQ(words(u8"「漢字」、漢。"), bytes(u8"「漢|字」、|漢。|"));
  EXPECT_EQ(words(u8"漢(字)."), bytes(u8"漢|(字).|"));
  EXPECT_EQ(words(u8"ページ"), bytes(u8"ペー|ジ|"));
}

TEST(Words, EndAfterAZeroWidthSpace) { EXPECT_EQ(words(u8"very\u200Blong"), bytes(u8"very\u200B|long|")); }

TEST(Words, KeepHangulTogether) { EXPECT_EQ(words(u8"한국어 책"), bytes(u8"한국어|_책|")); }

TEST(Words, CountTheirColumns) {
  WordReader reader(bytes(u8"Größe 漢字"));
  Word word;
  ASSERT_TRUE(reader.next(word));
  EXPECT_EQ(word.columns, 5u);
  ASSERT_TRUE(reader.next(word));
  EXPECT_EQ(word.columns, 2u);
}

TEST(TextExtent, HasTheLongestWordAndTheLongestLine) {
  EXPECT_EQ(extentOf("").longestWord, 0u);
  EXPECT_EQ(extentOf("").longestLine, 0u);
  EXPECT_EQ(extentOf("one three two").longestWord, 5u);
  EXPECT_EQ(extentOf("one three two").longestLine, 13u);
  EXPECT_EQ(extentOf(bytes(u8"漢字 ab")).longestWord, 2u);
  EXPECT_EQ(extentOf(bytes(u8"漢字 ab")).longestLine, 7u);
}

TEST(TextExtent, EndsALineAtALineFeed) {
  EXPECT_EQ(extentOf("one two\nthree\n").longestWord, 5u);
  EXPECT_EQ(extentOf("one two\nthree\n").longestLine, 7u);
}

TEST(TextExtent, GivesWideLettersMoreWidth) {
  EXPECT_DOUBLE_EQ(extentOf("Price of it").widestWord, 5);
  EXPECT_DOUBLE_EQ(extentOf("Price of it").widestLine, 11);
  EXPECT_DOUBLE_EQ(extentOf("a\nNAD83 EAST").widestWord, 5 + 2 * 0.18);
  EXPECT_DOUBLE_EQ(extentOf("a\nNAD83 EAST").widestLine, 10 + 5 * 0.18);
  EXPECT_DOUBLE_EQ(extentOf("am").widestWord, 2.4);
  EXPECT_GT(extentOf("WWWW").widestWord, 5.5);
}

TEST(TextExtent, DropsBlanksAtTheEndOfALine) { EXPECT_EQ(extentOf("one  \n  two").longestLine, 5u); }

namespace {

// The lines, each followed by a bar.
std::string lines(std::string_view text, std::size_t columns) {
  std::string result;
  scrivalen::LineReader reader(text, columns);
  scrivalen::Line line;
  while (reader.next(line)) {
    result.append(line.text).append("|");
  }
  return result;
}

}  // namespace

TEST(Lines, AreWrappedAtWords) {
  EXPECT_EQ(lines("one two three", 13), "one two three|");
  EXPECT_EQ(lines("one two three", 12), "one two|three|");
  EXPECT_EQ(lines("one two three", 7), "one two|three|");
  EXPECT_EQ(lines("one two three", 6), "one|two|three|");
  EXPECT_EQ(lines("one two three", 1), "one|two|three|");
}

TEST(Lines, EndAtLineFeeds) {
  EXPECT_EQ(lines("one\n\ntwo", 10), "one||two|");
  EXPECT_EQ(lines("\none\n\n", 10), "|one|");
  EXPECT_EQ(lines("", 10), "|");
}

TEST(Lines, KeepTheBlanksWithinThem) {
  EXPECT_EQ(lines("  one  two  ", 10), "  one  two|");
  EXPECT_EQ(lines("  one  two  ", 9), "  one|two|");
  EXPECT_EQ(lines("   \nx", 9), "|x|");
}

TEST(Lines, CountTheirColumns) {
  scrivalen::LineReader reader(bytes(u8"漢字 a"), 5);
  scrivalen::Line line;
  ASSERT_TRUE(reader.next(line));
  EXPECT_EQ(line.columns, 4u);
  ASSERT_TRUE(reader.next(line));
  EXPECT_EQ(line.columns, 1u);
  EXPECT_FALSE(reader.next(line));
}
