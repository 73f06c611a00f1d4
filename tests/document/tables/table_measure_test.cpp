#include "document/tables/table_measure.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

using scrivalen::document::Align;
using scrivalen::document::Cell;
using scrivalen::document::Table;
using scrivalen::document::TableMeasure;
using scrivalen::document::ValueType;

namespace {

// The only column of a table with one row.
scrivalen::document::Column measured(const char8_t* text) {
  Table table;
  TableMeasure measure(table);
  std::vector<Cell> row(1);
  row[0].text = reinterpret_cast<const char*>(text);
  measure.add(row, false);
  measure.finish(true);
  return table.columns.front();
}

// The alignment of a column whose cells have these.
Align alignOfCells(const std::vector<Align>& aligns) {
  Table table;
  TableMeasure measure(table);
  for (const Align align : aligns) {
    std::vector<Cell> row(1);
    row[0].text = "12";
    row[0].align = align;
    measure.add(row, false);
  }
  measure.finish(true);
  return table.columns.front().align;
}

// The alignment of a column with these cells below its header.
Align alignOf(const std::vector<std::string>& texts) {
  Table table;
  TableMeasure measure(table);
  const Cell header{.text = "Amount"};
  measure.add({&header, 1}, true);
  for (const std::string& text : texts) {
    const Cell cell{.text = text};
    measure.add({&cell, 1}, false);
  }
  measure.finish(true);
  return table.columns.front().align;
}

}  // namespace

TEST(TableMeasure, AlignsTextsThatReadAsNumbersToTheRight) {
  EXPECT_EQ(alignOf({"1,001.50", "5", "(12.00)"}), Align::Right);
  EXPECT_EQ(alignOf({"5%", "", "-3.5 %"}), Align::Right);
  EXPECT_EQ(alignOf({"12", "n/a", "-"}), Align::Right);
  EXPECT_EQ(alignOf({"12", "(3)"}), Align::Right);
}

TEST(TableMeasure, AlignsOtherTextsToTheLeft) {
  EXPECT_EQ(alignOf({"007", "12"}), Align::Left);
  EXPECT_EQ(alignOf({"(1)", "(2)"}), Align::Left);
  EXPECT_EQ(alignOf({"612 345 678", "601 234 567"}), Align::Left);
  EXPECT_EQ(alignOf({"1.2", "1.2.3"}), Align::Left);
  EXPECT_EQ(alignOf({"-", "n/a"}), Align::Left);
  EXPECT_EQ(alignOf({"", ""}), Align::Left);
}

TEST(TableMeasure, AlignsManyNumbersAndAFewShortTextsToTheRight) {
  std::vector<std::string> texts(20, "$5");
  texts.push_back("see note");
  EXPECT_EQ(alignOf(texts), Align::Right);
  texts.push_back("see note");
  EXPECT_EQ(alignOf(texts), Align::Left);
  texts.resize(20);
  texts.push_back("The sums are those of last year.");
  EXPECT_EQ(alignOf(texts), Align::Left);
}

// A text that must not become a value is not aligned as one.
TEST(TableMeasure, KeepsTheAlignmentOfTextsAndThatOfTheHost) {
  Table table;
  table.columns.resize(3);
  table.columns[0].type = ValueType::Text;
  table.columns[1].align = Align::Center;
  TableMeasure measure(table);
  const std::vector<Cell> row{{.text = "5%"}, {.text = "5%"}, {.text = "5%", .type = ValueType::Text}};
  measure.add(row, false);
  measure.finish(true);
  EXPECT_EQ(table.columns[0].align, Align::Left);
  EXPECT_EQ(table.columns[1].align, Align::Center);
  EXPECT_EQ(table.columns[2].align, Align::Left);
}

TEST(TableMeasure, AlignsAColumnAsAllItsCellsAre) {
  EXPECT_EQ(alignOfCells({Align::Center, Align::Center}), Align::Center);
  EXPECT_EQ(alignOfCells({Align::Left}), Align::Left);
  EXPECT_EQ(alignOfCells({Align::Center, Align::Left, Align::Left}), Align::Right);
  EXPECT_EQ(alignOfCells({Align::Center, Align::Auto}), Align::Right);
}

TEST(TableMeasure, FindsTheLongestWordAndTheLongestLine) {
  const auto column = measured(u8"one three\nfour");
  EXPECT_EQ(column.longestWord, 5u);
  EXPECT_EQ(column.longestLine, 9u);
}

// 24 lines of 3 and one of 100 or more: a mean square of 408.64.
TEST(TableMeasure, FindsAUsualLineThatOneLongCellHardlyChanges) {
  Table table;
  TableMeasure measure(table);
  const std::string chapter(100000, 'n');
  for (int i = 0; i < 25; ++i) {
    std::vector<Cell> row(1);
    row[0].text = i == 7 ? std::string_view(chapter) : "nnn";
    measure.add(row, false);
  }
  measure.finish(true);
  EXPECT_NEAR(table.columns.front().usualLine, 20.21, 0.01);
  EXPECT_NEAR(table.columns.front().usualWideLine, 20.21, 0.01);
}

TEST(TableMeasure, FindsAUsualWordThatOneLongCellDoesNotChange) {
  Table table;
  TableMeasure measure(table);
  const Cell header{.text = "nnnnn"};
  measure.add({&header, 1}, true);
  for (int i = 0; i < 20; ++i) {
    const Cell cell{.text = i == 7 ? "nnnnnnnnnnnnnnnnnnnn" : "nnn nnn"};
    measure.add({&cell, 1}, false);
  }
  measure.finish(true);
  EXPECT_EQ(table.columns.front().usualWideWord, 5);
  EXPECT_EQ(table.columns.front().widestWord, 20);
}

// A line may be broken between two of them.
TEST(TableMeasure, TakesAnIdeographForAWord) {
  const auto column = measured(u8"漢字漢字");
  EXPECT_EQ(column.longestWord, 2u);
  EXPECT_EQ(column.longestLine, 8u);
}
