#include "formats/pdf/typeset/text/paragraph.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::typeset {
namespace {

using Texts = std::vector<std::string>;

TextStyle sans(Length size = 10 * kPoint) {
  TextStyle style;
  style.font = fontOf(Family::Sans, false, false);
  style.size = size;
  return style;
}

StyledText textOf(std::string_view text) {
  StyledText styled;
  styled.add(text, sans());
  return styled;
}

struct Paragraphs : testing::Test {
  SetText set(const StyledText& text, LineRule rule) {
    rule.leading = 1300;
    rule.usual = sans();
    return setText(text, rule, shaper);
  }
  Texts lines(const StyledText& text, const LineRule& rule) {
    Texts lines;
    for (const TextLine& line : set(text, rule).lines) {
      lines.push_back(text.text.substr(line.begin, line.end - line.begin));
    }
    return lines;
  }
  FontSet fonts;
  Shaper shaper{fonts};
};

// Widths in Liberation Sans of 10 points: n and o 5.56 points, a blank 2.78.
TEST_F(Paragraphs, BreakBeforeAWordThatDoesNotFit) {
  EXPECT_EQ(lines(textOf("no no no"), {.width = 25100}), (Texts{"no no ", "no"}));
  EXPECT_EQ(lines(textOf("no no no"), {.width = 24000}), (Texts{"no ", "no ", "no"}));
}

TEST_F(Paragraphs, DoNotCountTheBlanksAtTheEndOfALine) {
  const SetText text = set(textOf("no no   no"), {.width = 25100});
  ASSERT_EQ(text.lines.size(), 2u);
  EXPECT_EQ(text.lines[0].width, 4 * 5560 + 2780);
}

TEST_F(Paragraphs, HaveBlanksInTheFontOfTheWordBefore) {
  for (const std::string_view words : {"\u0434\u043E\u043C \u0434\u043E\u043C", "\u05DB\u05DC \u05D1\u05E0\u05D9"}) {
    EXPECT_EQ(set(textOf(words), {.width = 100 * kPoint}).pieces.size(), 1u) << words;
  }
  EXPECT_EQ(set(textOf("\u05DB\u05DC no"), {.width = 100 * kPoint}).pieces.size(), 2u);
}

// The operators of marked content in the order of the page, and what is between them.
std::string marksOf(const SetText& set) {
  std::string marks;
  for (const TextPiece& piece : set.pieces) {
    const std::string content = set.content.substr(piece.begin, piece.end - piece.begin);
    for (std::size_t at = 0; at < content.size(); ++at) {
      const std::string_view left = std::string_view(content).substr(at);
      const bool isGlyph = left.starts_with("(") && !std::string_view(content).substr(0, at).ends_with("ActualText");
      marks += left.starts_with("BDC") ? "<" : left.starts_with("EMC") ? ">" : isGlyph ? "g" : "";
    }
  }
  return marks;
}

// Of a letter and its mark the last number of one font and the first of the next.
TEST_F(Paragraphs, KeepLettersWithMarksWholeThatTwoFontsHave) {
  for (const std::size_t mostCodes : {1, 2, 3}) {
    FontSet fewCodes({}, false, mostCodes);
    Shaper own(fewCodes);
    const LineRule rule{.width = 100 * kPoint, .leading = 1300, .usual = sans()};
    // The mark is before its letter from right to left, and nothing that is seen is before the mark.
    EXPECT_EQ(marksOf(setText(textOf("\u05E9\u05B2\u05E2\u05B2"), rule, own)), "<ggg><ggg>");
    EXPECT_EQ(marksOf(setText(textOf("q\u0303x"), rule, own)), "<ggg>g");
  }
}

TEST_F(Paragraphs, BreakAWordThatNoLineHolds) {
  EXPECT_EQ(lines(textOf("nonono"), {.width = 12000}), (Texts{"no", "no", "no"}));
}

TEST_F(Paragraphs, KeepMarksWithTheirLettersWhereAWordBreaks) {
  EXPECT_EQ(lines(textOf("no\u0323no\u0323"), {.width = 12000}), (Texts{"no\u0323", "no\u0323"}));
}

// The glyphs of a part of a word are those that the part has alone.
TEST_F(Paragraphs, ShapeTheLettersOfABrokenWordTogether) {
  const std::string word = "\u0633\u0644\u0633\u0644\u0633\u0644";
  const LineRule rule{.width = 25 * kPoint};
  const SetText broken = set(textOf(word), rule);
  ASSERT_GE(broken.lines.size(), 2u);
  for (const TextLine& line : broken.lines) {
    const SetText alone = set(textOf(word.substr(line.begin, line.end - line.begin)), rule);
    EXPECT_GT(line.end - line.begin, 2u);
    ASSERT_EQ(alone.lines.size(), 1u);
    EXPECT_EQ(alone.lines.front().width, line.width);
    const TextPiece& piece = broken.pieces.at(line.firstPiece);
    EXPECT_EQ(broken.content.substr(piece.begin, piece.end - piece.begin), alone.content);
  }
}

TEST_F(Paragraphs, BreakNoSequenceOfEmojiFlagOrConjunct) {
  for (const std::string letter : {"\U0001F468\u200D\U0001F469\u200D\U0001F467", "\U0001F1E9\U0001F1EA",
                                   "\U0001F44D\U0001F3FD", "\u0915\u094D\u0937\u093F"}) {
    EXPECT_EQ(lines(textOf(letter + letter), {.width = 3 * kPoint}), (Texts{letter, letter}));
  }
}

TEST_F(Paragraphs, BreakAWordOfManyLettersInProportionalTime) {
  std::string word;
  for (int i = 0; i < 50000; ++i) {
    word += "\u0633\u0644";
  }
  const SetText broken = set(textOf(word), {.width = 100 * kPoint});
  EXPECT_GT(broken.lines.size(), 1000u);
  EXPECT_LT(broken.lines.size(), 10000u);
}

TEST_F(Paragraphs, KeepLongWordsWholeWhereTheyAreMeasured) {
  EXPECT_EQ(lines(textOf("no nonono no"), {.keepsWords = true}), (Texts{"no ", "nonono ", "no"}));
}

TEST_F(Paragraphs, AreOneLineWithoutText) {
  const SetText text = set(StyledText(), {.width = 100 * kPoint});
  ASSERT_EQ(text.lines.size(), 1u);
  EXPECT_EQ(text.height(), 13 * kPoint);
}

TEST_F(Paragraphs, KeepBlanksAtTheBeginningOfALineOfCode) {
  EXPECT_EQ(set(textOf("  no"), {.width = 100 * kPoint, .keepsBlanks = true}).lines[0].width, 2 * (2780 + 5560));
  EXPECT_EQ(set(textOf("  no"), {.width = 100 * kPoint}).lines[0].width, 2 * 5560);
}

TEST_F(Paragraphs, FillTheirLinesExceptTheLastOne) {
  const SetText text = set(textOf("no no no"), {.width = 30 * kPoint, .isJustified = true});
  ASSERT_EQ(text.lines.size(), 2u);
  EXPECT_EQ(text.lines[0].width, 30 * kPoint);
  EXPECT_EQ(text.lines[1].width, 2 * 5560);
}

// 25.02 points of text in a line that is followed by a word with no room beside it.
TEST_F(Paragraphs, DoNotWidenBlanksByMoreThanTheSizeOfTheText) {
  const StyledText text = textOf("no no nononono");
  EXPECT_EQ(set(text, {.width = 45 * kPoint, .isJustified = true}).lines[0].width, 4 * 5560 + 2780);
  const StyledText narrow = textOf("no no nonono");
  EXPECT_EQ(set(narrow, {.width = 35 * kPoint, .isJustified = true}).lines[0].width, 35 * kPoint);
}

TEST_F(Paragraphs, AreAsHighAsTheirLargestText) {
  StyledText text = textOf("no ");
  text.add("no", sans(20 * kPoint));
  EXPECT_EQ(set(text, {.width = 100 * kPoint}).height(), 26 * kPoint);
}

TEST_F(Paragraphs, AreInTheOrderOfThePage) {
  const StyledText text = textOf("אב ab גד");
  const SetText set = this->set(text, {.width = 100 * kPoint});
  EXPECT_TRUE(set.isRightToLeft);
  ASSERT_EQ(set.lines.size(), 1u);
  // The letters gimel and dalet are on the left, and each run is drawn from left to right.
  const std::vector<ShapedRun> left =
      shaper.shape("גד", {.font = sans().font, .size = 10 * kPoint, .isRightToLeft = true});
  EXPECT_EQ(set.content.find(left.front().content.substr(0, left.front().content.size() - 1)), 0u);
}

TEST_F(Paragraphs, HavePicturesAmongTheirWords) {
  StyledText text = textOf("no ");
  text.addPicture({.at = 0, .width = 20 * kPoint, .height = 40 * kPoint, .object = 7, .orientation = 1}, sans());
  const SetText set = this->set(text, {.width = 100 * kPoint});
  ASSERT_EQ(set.pieces.size(), 2u);
  EXPECT_EQ(set.pieces[1].picture, 0);
  EXPECT_EQ(set.pieces[1].width, 20 * kPoint);
  EXPECT_EQ(set.lines[0].baseline, 40 * kPoint);
}

TEST_F(Paragraphs, MakePicturesSmallerThatDoNotFit) {
  const PictureSize size = fitted({200 * kPoint, 100 * kPoint}, {.width = 100 * kPoint, .height = 25 * kPoint});
  EXPECT_EQ(size.width, 50 * kPoint);
  EXPECT_EQ(size.height, 25 * kPoint);
}

TEST_F(Paragraphs, MakeNoPictureSoSmallThatItVanishes) {
  const LineRule rule{.width = 100 * kPoint, .height = 25 * kPoint};
  const PictureSize wide = fitted({1'000'000 * kPoint, 1}, rule);
  EXPECT_EQ(wide.width, 100 * kPoint);
  EXPECT_EQ(wide.height, 1);
  const PictureSize tall = fitted({1, 1'000'000 * kPoint}, rule);
  EXPECT_EQ(tall.width, 1);
  EXPECT_EQ(tall.height, 25 * kPoint);
}

TEST_F(Paragraphs, DivideTheirTextWhereItsStyleChanges) {
  StyledText text = textOf("no");
  TextStyle other = sans();
  other.isUnderlined = true;
  text.add("no", other);
  const SetText set = this->set(text, {.width = 100 * kPoint});
  ASSERT_EQ(set.pieces.size(), 2u);
  EXPECT_EQ(set.pieces[0].span, 0u);
  EXPECT_EQ(set.pieces[1].span, 1u);
}

}  // namespace
}  // namespace scrivalen::typeset
