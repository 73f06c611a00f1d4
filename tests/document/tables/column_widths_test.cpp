#include "document/tables/column_widths.h"
#include "document/tables/usual_line.h"

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

// One cell of the first column is long. Both usual lines fit, and the 10 that are left are enough for the second
// column.
TEST(ColumnWidths, KeepLinesWholeBesideASingleLongCell) {
  EXPECT_EQ(columnWidths(Needs{{5, 400, 0, 15}, {10, 80, 0, 75}}, 100).widths, (Widths{20, 80}));
}

// The second column lacks 25 of the 30 that are left above the usual lines, the first one 85.
TEST(ColumnWidths, ShareWhatIsLeftAboveTheUsualLinesByWhatTheLongestLack) {
  const auto result = columnWidths(Needs{{5, 100, 0, 15}, {10, 80, 0, 55}}, 100);
  ASSERT_EQ(result.widths.size(), 2u);
  EXPECT_NEAR(result.widths[0], 15 + 30 * 85 / 110.0, 0.01);
  EXPECT_NEAR(result.widths[1], 55 + 30 * 25 / 110.0, 0.01);
}

// The usual lines need 115 of 100, and that of the first column is less than a half.
TEST(ColumnWidths, KeepAShortUsualLineWholeBesideLongTexts) {
  EXPECT_EQ(columnWidths(Needs{{5, 400, 0, 15}, {10, 500, 0, 100}}, 100).widths, (Widths{15, 85}));
}

// The words leave 70 of 90 for needs of 80 and 60.
TEST(ColumnWidths, ShareWhatIsLeftAboveTheWordsByTheUsualLines) {
  EXPECT_EQ(columnWidths(Needs{{10, 400, 0, 90}, {10, 300, 0, 70}}, 90).widths, (Widths{50, 40}));
}

// No usual line is shorter than a word or longer than the longest line.
TEST(ColumnWidths, KeepAWordWholeThatIsLongerThanTheUsualLine) {
  EXPECT_EQ(columnWidths(Needs{{30, 400, 0, 5}, {10, 100, 0, 95}}, 100).widths, (Widths{30, 70}));
  EXPECT_EQ(columnWidths(Needs{{3, 7, 0, 20}, {5, 50, 0, 60}}, 60).widths, (Widths{7, 50}));
}

// Beside the word of 60 the second column would have 40 for lines of 70.
TEST(ColumnWidths, BreakRareWordsWhereUsualLinesDoNotFit) {
  EXPECT_EQ(columnWidths(Needs{{60, 60, 0, 20, 25}, {10, 71, 0, 70}}, 100).widths, (Widths{29, 71}));
  EXPECT_EQ(columnWidths(Needs{{60, 60, 0, 20, 0}, {10, 80, 0, 70}}, 100).widths, (Widths{60, 40}));
}

TEST(ColumnWidths, KeepRareWordsWholeWhereUsualLinesFit) {
  EXPECT_EQ(columnWidths(Needs{{60, 60, 0, 20, 25}, {10, 80, 0, 40}}, 100).widths, (Widths{60, 40}));
}

TEST(ColumnWidths, KeepRareWordsWholeInAColumnWithAShare) {
  EXPECT_EQ(columnWidths(Needs{{60, 60, 1, 20, 25}, {10, 80, 0, 70}}, 100).widths, (Widths{60, 40}));
}

TEST(UsualWord, IsTheLongestButForOneCellInTwenty) {
  scrivalen::document::UsualWord word;
  EXPECT_EQ(word.width(), 0);
  for (int i = 0; i < 18; ++i) {
    word.add(3);
  }
  word.add(50);
  EXPECT_EQ(word.width(), 50);
  word.add(5);
  EXPECT_EQ(word.width(), 5);
  word.addHeader(7);
  EXPECT_EQ(word.width(), 7);
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
