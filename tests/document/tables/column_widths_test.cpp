#include "document/tables/column_widths.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

using scrivalen::document::ColumnNeed;
using scrivalen::document::columnWidths;
using scrivalen::document::equalColumnWidths;
using scrivalen::document::wholeColumnWidths;
using scrivalen::document::wholeEqualColumnWidths;

namespace {

using Needs = std::vector<ColumnNeed>;
using Widths = std::vector<double>;
using WholeWidths = std::vector<std::size_t>;

}  // namespace

TEST(ColumnWidths, AreTheLongestLinesWhereTheyFit) {
  const auto result = columnWidths(Needs{{5, 20}, {3, 3}, {10, 50}}, 73);
  EXPECT_EQ(result.widths, (Widths{20, 3, 50}));
  EXPECT_TRUE(result.fit);
}

// The words need 15 of 55. The lines need 20 and 30 more: two and three fifths of 40.
TEST(ColumnWidths, ShareWhatIsLeftAboveTheWordsByTheNeedOfTheLines) {
  const auto result = columnWidths(Needs{{10, 30}, {5, 35}}, 55);
  ASSERT_EQ(result.widths.size(), 2u);
  EXPECT_DOUBLE_EQ(result.widths[0], 26);
  EXPECT_DOUBLE_EQ(result.widths[1], 29);
  EXPECT_TRUE(result.fit);
}

// A line of 10,000 counts as 80: 60 is shared as 40 to 70, and the first column gets 10 + 60 * 40 / 110.
TEST(ColumnWidths, LeaveRoomBesideAVeryLongText) {
  const auto result = columnWidths(Needs{{10, 50}, {10, 10000}}, 80);
  EXPECT_NEAR(result.widths[0], 31.82, 0.01);
  EXPECT_NEAR(result.widths[1], 48.18, 0.01);
}

// A third of 60 is 20, and half of the 50 that the first column leaves is 25.
TEST(ColumnWidths, GiveAShortLineWhatItNeeds) {
  EXPECT_EQ(columnWidths(Needs{{5, 10}, {5, 25}, {10, 500}}, 60).widths, (Widths{10, 25, 25}));
}

// The first line is short, but then the word beside it would not fit. The words leave 6 of 60 for needs of 20 and 10.
TEST(ColumnWidths, KeepWordsWholeBesideShortLines) {
  EXPECT_EQ(columnWidths(Needs{{4, 24}, {50, 90}}, 60).widths, (Widths{8, 52}));
}

TEST(ColumnWidths, AreTheLongestWordsWhereNotEvenTheyFit) {
  const auto result = columnWidths(Needs{{30, 40}, {25, 90}}, 50);
  EXPECT_EQ(result.widths, (Widths{30, 25}));
  EXPECT_FALSE(result.fit);
}

TEST(ColumnWidths, AreTheLongestWordsWhereTheyJustFit) {
  const auto result = columnWidths(Needs{{30, 40}, {20, 90}}, 50);
  EXPECT_EQ(result.widths, (Widths{30, 20}));
  EXPECT_TRUE(result.fit);
}

TEST(ColumnWidths, DivideTheSpaceByShares) {
  EXPECT_EQ(columnWidths(Needs{{1, 1, 1}, {1, 100, 3}}, 100).widths, (Widths{25, 75}));
  EXPECT_EQ(columnWidths(Needs{{1, 5, 50}}, 100).widths, (Widths{100}));
}

TEST(ColumnWidths, GiveColumnsWithSharesWhatTheOthersLeave) {
  EXPECT_EQ(columnWidths(Needs{{4, 20}, {1, 5, 1}, {1, 5, 3}}, 100).widths, (Widths{20, 20, 60}));
}

// By its share the first column would get 10; its word takes 40, and the others divide 60 as 1 to 2.
TEST(ColumnWidths, KeepAWordWholeThatIsWiderThanItsShare) {
  EXPECT_EQ(columnWidths(Needs{{40, 40, 1}, {1, 1, 3}, {1, 1, 6}}, 100).widths, (Widths{40, 20, 40}));
}

// The first column's word leaves the second one 25, less than its word.
TEST(ColumnWidths, KeepAWordWholeThatOnlyTheOthersMakeTooWide) {
  EXPECT_EQ(columnWidths(Needs{{50, 50, 1}, {30, 30, 3}, {1, 1, 3}}, 100).widths, (Widths{50, 30, 20}));
}

TEST(ColumnWidths, ReportThatWordsDoNotFitDespiteShares) {
  const auto result = columnWidths(Needs{{60, 60, 1}, {60, 60, 1}}, 100);
  EXPECT_EQ(result.widths, (Widths{60, 60}));
  EXPECT_FALSE(result.fit);
}

TEST(ColumnWidths, AreNothingForNoColumnsAndEmptyOnes) {
  EXPECT_TRUE(columnWidths(Needs{}, 100).widths.empty());
  EXPECT_EQ(columnWidths(Needs{{}, {}}, 100).widths, (Widths{0, 0}));
}

// 14 is shared by needs of 10 each: 4 2/3 for each column. The two units left over go to the first columns.
TEST(WholeColumnWidths, AddUpToTheSpace) {
  const auto result = wholeColumnWidths(Needs{{2, 12}, {2, 12}, {2, 12}}, 20);
  EXPECT_EQ(result.widths, (WholeWidths{7, 7, 6}));
  EXPECT_TRUE(result.fit);
}

TEST(WholeColumnWidths, AreTheLongestLinesWhereTheyFit) {
  EXPECT_EQ(wholeColumnWidths(Needs{{5, 20}, {3, 3}}, 80).widths, (WholeWidths{20, 3}));
}

TEST(WholeColumnWidths, FillTheSpaceByShares) {
  EXPECT_EQ(wholeColumnWidths(Needs{{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}, 80).widths, (WholeWidths{27, 27, 26}));
}

TEST(EqualColumnWidths, FillTheSpace) {
  const auto result = equalColumnWidths(Needs{{1, 5}, {2, 90}, {1, 1}, {4, 4}}, 100);
  EXPECT_EQ(result.widths, (Widths{25, 25, 25, 25}));
  EXPECT_TRUE(result.fit);
  EXPECT_EQ(wholeEqualColumnWidths(Needs{{1, 5}, {2, 90}, {1, 1}}, 80).widths, (WholeWidths{26, 26, 26}));
}

TEST(EqualColumnWidths, AreAllTheLongestWordWhereItDoesNotFit) {
  const auto result = wholeEqualColumnWidths(Needs{{1, 5}, {45, 90}}, 80);
  EXPECT_EQ(result.widths, (WholeWidths{45, 45}));
  EXPECT_FALSE(result.fit);
}
