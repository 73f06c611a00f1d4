#include "document/tables/table_measure.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

using scrivalen::document::Align;
using scrivalen::document::Cell;
using scrivalen::document::Table;
using scrivalen::document::TableMeasure;

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

}  // namespace

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

// A line may be broken between two of them.
TEST(TableMeasure, TakesAnIdeographForAWord) {
  const auto column = measured(u8"漢字漢字");
  EXPECT_EQ(column.longestWord, 2u);
  EXPECT_EQ(column.longestLine, 8u);
}
