#include "document/tables/table_measure.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

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

}  // namespace

TEST(TableMeasure, FindsTheLongestWordAndTheLongestLine) {
  const auto column = measured(u8"one three\nfour");
  EXPECT_EQ(column.longestWord, 5u);
  EXPECT_EQ(column.longestLine, 9u);
}

// A line may be broken between two of them.
TEST(TableMeasure, TakesAnIdeographForAWord) {
  const auto column = measured(u8"漢字漢字");
  EXPECT_EQ(column.longestWord, 2u);
  EXPECT_EQ(column.longestLine, 8u);
}
