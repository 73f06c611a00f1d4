#include "formats/pdf/typeset/tables/table_plan.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

using namespace scrivalen;
using namespace scrivalen::typeset;

namespace {

constexpr Length kUpright = 500 * kPoint;
constexpr Length kTurned = 750 * kPoint;

document::Table tableOf(std::size_t columns) {
  document::Table table;
  table.columns.resize(columns);
  return table;
}

// What a column needs with its padding, in points, for text of the usual size.
ColumnText needs(Length word, Length line) {
  return {word * kPoint - 2 * kCellPadding, line * kPoint - 2 * kCellPadding};
}

std::vector<ColumnText> same(std::size_t columns, Length word, Length line) {
  return std::vector<ColumnText>(columns, needs(word, line));
}

TablePlan planned(const std::vector<ColumnText>& texts, bool isEqual = false) {
  return planTable(tableOf(texts.size()), texts, {kUpright, kTurned, isEqual});
}

// The widths of a part's columns, rounded to points.
std::string widthsOf(const TablePart& part) {
  std::ostringstream widths;
  for (std::size_t i = 1; i < part.edges.size(); ++i) {
    widths << (i > 1 ? " " : "") << (part.edges[i] - part.edges[i - 1] + kPoint / 2) / kPoint;
  }
  return widths.str();
}

std::string rangesOf(const TablePlan& plan) {
  std::ostringstream ranges;
  for (const TablePart& part : plan.parts) {
    ranges << (part.first > 0 ? " " : "") << part.first << '-' << part.end;
  }
  return ranges.str();
}

}  // namespace

TEST(TablePlan, GivesColumnsThatFitSomewhatMoreThanTheirLines) {
  const TablePlan plan = planned({needs(40, 100), needs(60, 60)});
  EXPECT_FALSE(plan.isTurned);
  EXPECT_EQ(plan.size, 9 * kPoint);
  EXPECT_EQ(widthsOf(plan.parts.front()), "115 69");
}

// Words of 498 points leave no space for a gap.
TEST(TablePlan, SeparatesNumbersFromTheTextBesideThemWhereTheUsualTextHasSpace) {
  using document::Align;
  const auto gapsOf = [](std::initializer_list<Align> aligns, Length word) {
    document::Table table = tableOf(aligns.size());
    std::size_t column = 0;
    for (const Align align : aligns) {
      table.columns[column++].align = align;
    }
    const TablePlan plan = planTable(table, same(aligns.size(), word, word), {kUpright, kUpright, false});
    EXPECT_EQ(plan.size, 9 * kPoint);
    return plan.parts.front().gaps;
  };
  const Length gap = kGapAfterNumbers;
  EXPECT_EQ(gapsOf({Align::Right, Align::Right, Align::Left}, 100), (std::vector<Length>{0, gap, 0}));
  EXPECT_EQ(gapsOf({Align::Right, Align::Center, Align::Right}, 100), (std::vector<Length>{0, 0, 0}));
  EXPECT_EQ(gapsOf({Align::Right, Align::Left, Align::Left}, 164), (std::vector<Length>{gap, 0, 0}));
  EXPECT_TRUE(gapsOf({Align::Right, Align::Left, Align::Left}, 166).empty());
}

TEST(TablePlan, HasNoGapsInATableFromRightToLeft) {
  document::Table table = tableOf(2);
  table.columns[0].align = document::Align::Right;
  table.columns[1].align = document::Align::Left;
  EXPECT_TRUE(planTable(table, same(2, 50, 50), {kUpright, kTurned, false, true}).parts.front().gaps.empty());
}

TEST(TablePlan, GivesWhatIsLeftToColumnsOfTextThatMayGetLonger) {
  ColumnText text = needs(40, 100);
  text.mayGrow = true;
  EXPECT_EQ(widthsOf(planned({needs(60, 60), text}).parts.front()), "60 440");
  EXPECT_EQ(widthsOf(planned({text, needs(60, 60), text}).parts.front()), "220 60 220");
}

// Of a column of short names one is very long; the texts of the other are long in every row.
TEST(TablePlan, TakesNoSpaceFromLongTextsForASingleLongCell) {
  ColumnText names = needs(60, 1200);
  names.usualLine = 72 * kPoint;
  ColumnText texts = needs(70, 400);
  texts.usualLine = 382 * kPoint;
  EXPECT_EQ(widthsOf(planned({names, texts}).parts.front()), "100 400");
}

TEST(TablePlan, SharesWhatIsLeftAboveTheLongestWordsInProportionToTheLines) {
  // 450 beside the short column, and no line counts as longer: 300 above the words for lines that need 300 and 400
  // more.
  const TablePlan plan = planned({needs(50, 50), needs(100, 400), needs(50, 650)});
  EXPECT_EQ(plan.size, 9 * kPoint);
  EXPECT_EQ(widthsOf(plan.parts.front()), "50 229 221");
  EXPECT_EQ(plan.parts.front().edges.back(), kUpright);
}

TEST(TablePlan, KeepsTheHostsWidthsButNeverBreaksAWord) {
  document::Table table = tableOf(3);
  table.columns[0].width = 1;
  table.columns[1].width = 3;
  table.columns[2].width = 1;
  const TableSpace space{kUpright, kTurned, false};
  EXPECT_EQ(widthsOf(planTable(table, same(3, 30, 60), space).parts.front()), "100 300 100");
  EXPECT_EQ(widthsOf(planTable(table, {needs(180, 200), needs(30, 60), needs(30, 60)}, space).parts.front()),
            "180 240 80");
}

TEST(TablePlan, MakesColumnsEqualOnRequest) {
  EXPECT_EQ(widthsOf(planned({needs(40, 100), needs(60, 60)}, true).parts.front()), "250 250");
}

TEST(TablePlan, SetsAWideTableInSmallerTextDownToSixPoints) {
  EXPECT_EQ(planned(same(5, 99, 99)).size, 9 * kPoint);
  EXPECT_EQ(planned(same(5, 105, 105)).size, 8500);
  const TablePlan smallest = planned(same(5, 140, 140));
  EXPECT_EQ(smallest.size, 6 * kPoint);
  EXPECT_FALSE(smallest.isTurned);
}

TEST(TablePlan, TurnsThePagesOfATableThatIsTooWideInTheSmallestText) {
  const TablePlan plan = planned(same(5, 160, 160));
  EXPECT_TRUE(plan.isTurned);
  EXPECT_EQ(plan.size, 8 * kPoint);
  EXPECT_EQ(plan.parts.size(), 1u);
  EXPECT_LE(plan.parts.front().edges.back(), kTurned);
}

TEST(TablePlan, SplitsATableThatNoPageHoldsIntoPartsThatRepeatTheFirstColumn) {
  // 6 points make 58 points plus padding of each of the 88.
  const TablePlan plan = planned(same(24, 96, 96));
  EXPECT_TRUE(plan.isTurned);
  EXPECT_EQ(plan.size, 6 * kPoint);
  EXPECT_EQ(rangesOf(plan), "0-11 11-21 21-24");
  EXPECT_EQ(plan.parts[1].edges.size(), 12u);
  for (const TablePart& part : plan.parts) {
    EXPECT_LE(part.edges.back(), kTurned);
  }
}

TEST(TablePlan, StaysUprightIfTurnedPagesWouldNotBeFewer) {
  // Words of half the width and more: every part has one column beside the first.
  const TablePlan plan = planned(same(4, 2000, 2000));
  EXPECT_FALSE(plan.isTurned);
  EXPECT_EQ(rangesOf(plan), "0-2 2-3 3-4");
}

TEST(TablePlan, DoesNotTurnPagesThatAreOnTheirSideAlready) {
  const TablePlan plan = planTable(tableOf(24), same(24, 96, 96), {kTurned, kTurned, false});
  EXPECT_FALSE(plan.isTurned);
  EXPECT_EQ(rangesOf(plan), "0-11 11-21 21-24");
}

TEST(TablePlan, BreaksAWordThatIsLongerThanHalfThePageRatherThanMakingTheTextSmaller) {
  const TablePlan plan = planned({needs(30, 30), needs(3000, 3000)});
  EXPECT_EQ(plan.size, 9 * kPoint);
  EXPECT_FALSE(plan.isTurned);
  EXPECT_EQ(widthsOf(plan.parts.front()), "30 470");
}

TEST(TablePlan, HasSpaceForTenThousandColumns) {
  const TablePlan plan = planned(same(10000, 30, 40));
  std::size_t next = 0;
  for (const TablePart& part : plan.parts) {
    EXPECT_EQ(part.first, next);
    EXPECT_LE(part.edges.back(), plan.isTurned ? kTurned : kUpright);
    next = part.end;
  }
  EXPECT_EQ(next, 10000u);
}

TEST(TablePlan, SurvivesWidthsAtTheirLimits) {
  document::Table table = tableOf(3);
  table.columns[0].width = 1e-6;
  table.columns[1].width = 1e6;
  const TablePlan plan = planTable(table, same(3, 30, 60), {kUpright, kTurned, false});
  EXPECT_EQ(widthsOf(plan.parts.front()), "30 410 60");
}

TEST(TablePlan, FindsTheSpaceOfCellsInEachPart) {
  const TablePart first{0, 3, {0, 10, 30, 60}};
  EXPECT_EQ(first.leftOf(1), 10);
  EXPECT_EQ(first.rightOf(2), 30);
  EXPECT_EQ(first.rightOf(9), 60);
  const TablePart second{3, 5, {0, 10, 50, 90}};
  EXPECT_EQ(second.leftOf(0), 0);
  EXPECT_EQ(second.rightOf(1), 10);
  EXPECT_EQ(second.rightOf(4), 50);
  EXPECT_EQ(second.leftOf(2), 10) << "of a cell that begins in the first part";
  EXPECT_TRUE(second.reaches(2, 4));
  EXPECT_FALSE(second.reaches(1, 3));
}

namespace {

// The needs of a table with one column whose cells are these.
ColumnText measured(std::initializer_list<document::Cell> cells, document::Align align = document::Align::Left,
                    bool isWhole = true, document::ValueType type = document::ValueType::Auto) {
  document::Table table = tableOf(1);
  table.columns[0].align = align;
  table.columns[0].type = type;
  table.isSampleWhole = isWhole;
  for (const document::Cell& cell : cells) {
    table.sample.push_back({{&cell, 1}, false});
  }
  FontSet fonts;
  Shaper shaper(fonts);
  return measureColumns(table, shaper, Family::Sans).front();
}

}  // namespace

TEST(MeasureColumns, FindsTheLongestWordAndLineOfTheSample) {
  // In Liberation Sans "n" is 556 thousandths wide, a blank 278.
  const ColumnText text = measured({{.text = "n nnn"}, {.text = "nn nn nn"}, {.text = "n\nnn"}});
  EXPECT_EQ(text.longestWord, 3 * 556 * 9);
  EXPECT_EQ(text.longestLine, (6 * 556 + 2 * 278) * 9);
}

// The mean square of 3, 4 and 5 "n" is 50 / 3. A line counts as 500 points at most.
TEST(MeasureColumns, FindsTheUsualLineOfTheSample) {
  EXPECT_NEAR(static_cast<double>(measured({{.text = "nnn"}, {.text = "nnnn"}, {.text = "nnnnn"}}).usualLine),
              std::sqrt(50 / 3.0) * 556 * 9, 1);
  const std::string chapter(10000, 'n');
  EXPECT_EQ(measured({{.text = chapter}}).usualLine, 500 * kPoint);
}

// "n" is 611 thousandths wide in bold.
TEST(MeasureColumns, FindsTheUsualWordOfTheSample) {
  const document::Cell cell{.text = "n nn"};
  const document::Cell rare{.text = "nnnnnnnnnn"};
  EXPECT_EQ(measured({cell, cell, cell, rare}).usualWord, 10 * 556 * 9);
  EXPECT_EQ(measured({cell, cell, cell, cell, cell, cell, cell, cell, cell, cell,
                      cell, cell, cell, cell, cell, cell, cell, cell, cell, rare})
                .usualWord,
            2 * 556 * 9);
  EXPECT_EQ(measured({{.text = "nnn", .header = true}, cell}).usualWord, 3 * 611 * 9);
}

TEST(MeasureColumns, MeasuresHeadersInBold) {
  // "n" is 611 thousandths wide in bold.
  EXPECT_EQ(measured({{.text = "n", .header = true}}).longestWord, 611 * 9);
}

TEST(MeasureColumns, LeavesCellsThatSpanColumnsOut) {
  EXPECT_EQ(measured({{.text = "nnnnnnnnnnnnnn", .span = 2}, {.text = "n"}}).longestLine, 556 * 9);
}

TEST(MeasureColumns, LeavesNumbersSpaceForMillionsAfterASample) {
  const auto right = document::Align::Right;
  EXPECT_EQ(measured({{.text = "7"}}, right, true).longestWord, 556 * 9);
  EXPECT_EQ(measured({{.text = "7"}}, right, false).longestWord, 7 * 556 * 9);
  EXPECT_EQ(measured({{.text = "123456789"}}, right, false).longestWord, 11 * 556 * 9);
  EXPECT_EQ(measured({{.text = "7"}}, document::Align::Left, false).longestWord, 556 * 9);
}

TEST(MeasureColumns, ExpectsLongerTextsAfterASampleOfTexts) {
  EXPECT_TRUE(measured({{.text = "short"}}, document::Align::Left, false).mayGrow);
  EXPECT_FALSE(measured({{.text = "short"}}, document::Align::Left, true).mayGrow);
  EXPECT_FALSE(measured({{.text = "7"}}, document::Align::Right, false).mayGrow);
  EXPECT_FALSE(
      measured({{.text = "Day", .header = true}, {.text = "2026-01-31"}}, document::Align::Left, false).mayGrow);
  EXPECT_FALSE(measured({{.text = "31 Jan", .type = document::ValueType::Date}}, document::Align::Left, false).mayGrow);
}

TEST(MeasureColumns, ExpectsTextInAColumnThatIsEmptySoFar) {
  const ColumnText text = measured({{.text = "n", .header = true}, {.text = ""}}, document::Align::Left, false);
  EXPECT_TRUE(text.mayGrow);
  EXPECT_EQ(text.longestWord, 611 * 9);
  EXPECT_EQ(text.longestLine, 80 * kPoint);
  EXPECT_EQ(text.usualLine, 80 * kPoint);
  EXPECT_EQ(measured({{.text = ""}}, document::Align::Left, true).longestLine, 0);
  EXPECT_FALSE(measured({{.text = ""}}, document::Align::Left, false, document::ValueType::Date).mayGrow);
}
