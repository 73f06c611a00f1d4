#include "document/tables/table_split.h"

#include <gtest/gtest.h>

#include <string>

namespace scrivalen::document {
namespace {

std::vector<ColumnNeed> columnsWithWords(const std::vector<double>& words) {
  std::vector<ColumnNeed> needs;
  for (const double word : words) {
    needs.push_back({.longestWord = word, .longestLine = word});
  }
  return needs;
}

// As "0-3 3-5".
std::string rangesOf(const std::vector<double>& words, double space, std::size_t mostColumns = 63) {
  std::string text;
  for (const ColumnRange range : splitColumns(columnsWithWords(words), space, mostColumns)) {
    text += (text.empty() ? "" : " ") + std::to_string(range.first) + '-' + std::to_string(range.end);
  }
  return text;
}

TEST(TableSplit, PutsAsManyColumnsIntoARangeAsFitBesideTheFirst) {
  EXPECT_EQ(rangesOf({10, 10, 10}, 30), "0-3");
  EXPECT_EQ(rangesOf({10, 10, 10, 10, 10}, 30), "0-3 3-5");
}

TEST(TableSplit, HasAColumnThatIsWiderThanTheSpaceInARangeOfItsOwn) {
  EXPECT_EQ(rangesOf({10, 50, 10, 10}, 30), "0-2 2-4");
  EXPECT_EQ(rangesOf({10, 10, 50, 10}, 30), "0-2 2-3 3-4");
}

TEST(TableSplit, CountsTheRepeatedColumn) { EXPECT_EQ(rangesOf({1, 1, 1, 1, 1, 1}, 30, 3), "0-3 3-5 5-6"); }

TEST(TableSplit, GivesARangeTheNeedsOfTheFirstColumnAndItsOwn) {
  const std::vector<ColumnNeed> needs = columnsWithWords({1, 2, 3, 4});
  const std::vector<ColumnNeed> own = needsOfRange(needs, {2, 4});
  ASSERT_EQ(own.size(), 3u);
  EXPECT_EQ(own[0].longestWord, 1);
  EXPECT_EQ(own[1].longestWord, 3);
  EXPECT_EQ(own[2].longestWord, 4);
  EXPECT_EQ(needsOfRange(needs, {0, 2}).size(), 2u);
}

TEST(TableSplit, BreaksWordsThatAreLongerThanHalfOfTheSpace) {
  std::vector<ColumnNeed> needs = columnsWithWords({20, 10});
  breakLongWords(needs, 30);
  EXPECT_EQ(needs[0].longestWord, 15);
  EXPECT_EQ(needs[1].longestWord, 10);
}

}  // namespace
}  // namespace scrivalen::document
