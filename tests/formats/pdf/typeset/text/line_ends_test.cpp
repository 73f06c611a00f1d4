#include "formats/pdf/typeset/text/paragraph.h"
#include "formats/pdf/typeset/text/shaper.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::typeset {
namespace {

StyledText plainText(std::string_view text) {
  TextStyle style;
  style.font = fontOf(Family::Sans, false, false);
  style.size = 10 * kPoint;
  StyledText styled;
  styled.add(text, style);
  return styled;
}

std::vector<std::string> linesOf(const StyledText& text, Length width) {
  FontSet fonts;
  Shaper shaper(fonts);
  const SetText set = setText(text, {.width = width, .leading = 1300}, shaper);
  std::vector<std::string> lines;
  for (const TextLine& line : set.lines) {
    lines.push_back(text.text.substr(line.begin, line.end - line.begin));
  }
  return lines;
}

TEST(ParagraphLines, EndAtEachCharacterThatEndsALine) {
  EXPECT_EQ(linesOf(plainText("one\ntwo\u0085three\u2028four\u2029five"), 500 * kPoint),
            (std::vector<std::string>{"one", "two", "three", "four", "five"}));
}

TEST(ParagraphLines, MayEndAtASoftHyphen) {
  EXPECT_EQ(linesOf(plainText("Donau\u00ADdampf\u00ADschiff"), 70 * kPoint),
            (std::vector<std::string>{"Donau\u00ADdampf\u00AD", "schiff"}));
}

// Helvetica's and Liberation Sans's widths: n, o 556, hyphen 333 thousandths.
TEST(ParagraphLines, HaveAHyphenOnlyWhereTheyEndAtASoftOne) {
  FontSet fonts;
  Shaper shaper(fonts);
  const StyledText text = plainText("no\u00ADno\u00ADno");
  const SetText set = setText(text, {.width = 26 * kPoint, .leading = 1300}, shaper);
  ASSERT_EQ(set.lines.size(), 2u);
  EXPECT_EQ(set.lines[0].width, 4 * 5560 + 3330);
  EXPECT_EQ(set.lines[1].width, 2 * 5560);
}

TEST(ParagraphLines, BreakBeforeAWordWhoseHyphenDoesNotFit) {
  EXPECT_EQ(linesOf(plainText("no\u00ADno\u00ADno"), 25 * kPoint),
            (std::vector<std::string>{"no\u00AD", "no\u00ADno"}));
}

// Without a name after it the sign ends what comes before it, as in French.
TEST(ParagraphLines, MayEndBeforeASignThatBeginsAName) {
  using Lines = std::vector<std::string>;
  const auto lines = [](std::string_view text) { return linesOf(plainText(text), 45 * kPoint); };
  EXPECT_EQ(lines("setting :public_folder"), (Lines{"setting ", ":public_", "folder"}));
  EXPECT_EQ(lines("nonono .net"), (Lines{"nonono ", ".net"}));
  EXPECT_EQ(lines("nonono ./no"), (Lines{"nonono ", "./no"}));
  EXPECT_EQ(lines("no nonono : no"), (Lines{"no ", "nonono : ", "no"}));
  EXPECT_EQ(lines("no nonono ... no"), (Lines{"no ", "nonono ... ", "no"}));
}

TEST(ParagraphLines, DoNotEndAfterTheHyphensThatBeginAWord) {
  using Lines = std::vector<std::string>;
  const auto lines = [](std::string_view text) { return linesOf(plainText(text), 50 * kPoint); };
  EXPECT_EQ(lines("nonon --no-no"), (Lines{"nonon ", "--no-no"}));
  EXPECT_EQ(lines("nono --none no"), (Lines{"nono ", "--none no"}));
  EXPECT_EQ(lines("nonono-none"), (Lines{"nonono-", "none"}));
}

TEST(ParagraphLines, DoNotEndBetweenPlusSigns) {
  EXPECT_EQ(linesOf(plainText("no C++ no"), 30 * kPoint), (std::vector<std::string>{"no ", "C++ ", "no"}));
}

TEST(ParagraphLines, DivideALongWordAfterASign) {
  using Lines = std::vector<std::string>;
  const auto lines = [](std::string_view text) { return linesOf(plainText(text), 50 * kPoint); };
  EXPECT_EQ(lines("nono;nono;nono"), (Lines{"nono;", "nono;nono"}));
  EXPECT_EQ(lines("no;nononononono"), (Lines{"no;nonono", "nonono"}));
}

}  // namespace
}  // namespace scrivalen::typeset
