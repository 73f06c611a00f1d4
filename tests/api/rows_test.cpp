#include "api/api_support.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

using namespace scrivalen::test;

namespace {

scrivalen_column_data data(int type, const void* values, const std::int64_t* offsets = nullptr) {
  return {sizeof(scrivalen_column_data), type, values, offsets, nullptr, 0};
}

const double kNumbers[] = {0.5, -2, 1e20};
const std::int64_t kOffsets[] = {0, 1, 1, 4};

// What scrivalen_rows says about a second column, of which three rows are written.
std::string refused(const scrivalen_column_data& column) {
  Written document;
  scrivalen_begin_table(document, nullptr, 2, nullptr);
  const scrivalen_column_data columns[] = {data(SCRIVALEN_NUMBER, kNumbers), column};
  EXPECT_EQ(scrivalen_rows(document, columns, 2, 3), SCRIVALEN_MISUSE);
  const std::string error(document.error());
  EXPECT_EQ(document.closed(), "");
  return error;
}

}  // namespace

TEST(DocumentRows, HaveAColumnOfEachType) {
  Written document;
  scrivalen_begin_table(document, nullptr, 6, nullptr);
  const std::int64_t integers[] = {7, std::numeric_limits<std::int64_t>::min()};
  const std::int32_t dates[] = {0, -1};
  const std::int64_t times[] = {0, 1700000000};
  const std::uint8_t bits = 2;
  const scrivalen_column_data columns[] = {data(SCRIVALEN_TEXT, "abcd", kOffsets),
                                           data(SCRIVALEN_NUMBER, kNumbers),
                                           data(SCRIVALEN_INTEGER, integers),
                                           data(SCRIVALEN_DATE, dates),
                                           data(SCRIVALEN_TIME, times),
                                           data(SCRIVALEN_BOOLEAN, &bits)};
  EXPECT_EQ(scrivalen_rows(document, columns, 6, 2), SCRIVALEN_OK);
  EXPECT_EQ(document.closed(),
            "a  0.5                     7  1970-01-01  1970-01-01 00:00:00  false\n"
            "    -2  -9223372036854775808  1969-12-31  2023-11-14 22:13:20  true\n");
}

TEST(DocumentRows, SkipTheOffsetInValuesOffsetsAndValidity) {
  Written document;
  scrivalen_begin_table(document, nullptr, 2, nullptr);
  const std::uint8_t validity = 0b010;
  scrivalen_column_data columns[] = {data(SCRIVALEN_TEXT, "abcd", kOffsets), data(SCRIVALEN_NUMBER, kNumbers)};
  columns[0].offset = 2;
  columns[1].offset = 1;
  columns[1].validity = &validity;
  EXPECT_EQ(scrivalen_rows(document, columns, 2, 1), SCRIVALEN_OK);
  columns[1].offset = 2;
  EXPECT_EQ(scrivalen_rows(document, columns, 2, 1), SCRIVALEN_OK);
  EXPECT_EQ(document.closed(), "bcd  -2\nbcd\n");
}

TEST(DocumentRows, AreAllCheckedBeforeOneIsWritten) {
  EXPECT_EQ(refused(data(SCRIVALEN_AUTO, kNumbers)), "column 1: its type is not 1 to 6");
  EXPECT_EQ(refused(data(7, kNumbers)), "column 1: its type is not 1 to 6");
  EXPECT_EQ(refused(data(SCRIVALEN_NUMBER, nullptr)), "column 1: its values are null");
  EXPECT_EQ(refused(data(SCRIVALEN_TEXT, nullptr, kOffsets)), "column 1: its values are null");
  EXPECT_EQ(refused(data(SCRIVALEN_TEXT, "abcd")), "column 1: its offsets are null");
  const std::int64_t descending[] = {0, 3, 2, 4};
  const std::int64_t negative[] = {-1, 0, 1, 2};
  EXPECT_EQ(refused(data(SCRIVALEN_TEXT, "abcd", descending)), "column 1: its offsets do not ascend from 0 or more");
  EXPECT_EQ(refused(data(SCRIVALEN_TEXT, "abcd", negative)), "column 1: its offsets do not ascend from 0 or more");
  scrivalen_column_data far = data(SCRIVALEN_NUMBER, kNumbers);
  far.offset = kNul;
  EXPECT_EQ(refused(far), "column 1: its offset is out of range");
  scrivalen_column_data small = data(SCRIVALEN_NUMBER, kNumbers);
  small.size -= 1;
  EXPECT_EQ(refused(small), "the size of a struct is not set, or is out of range");
}

TEST(DocumentRows, NeedAColumnAndATable) {
  const Written document;
  const scrivalen_column_data column = data(SCRIVALEN_NUMBER, kNumbers);
  EXPECT_EQ(scrivalen_rows(document, &column, 1, 3), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "a row cannot be in the document");
  scrivalen_begin_table(document, nullptr, 1, nullptr);
  EXPECT_EQ(scrivalen_rows(document, &column, 0, 1), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_rows(document, nullptr, 1, 1), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "rows need at least one column");
  EXPECT_EQ(scrivalen_rows(document, &column, 1, kNul), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "the number of rows is out of range");
  scrivalen_begin_row(document, 0);
  EXPECT_EQ(scrivalen_rows(document, &column, 1, 3), SCRIVALEN_MISUSE);
}

TEST(DocumentRows, NeedValuesOnlyWhereOneIsThere) {
  Written document;
  scrivalen_begin_table(document, nullptr, 3, nullptr);
  const std::int64_t sameOffsets[] = {5, 5, 5};
  const std::int64_t offsets[] = {1, 1, 3};
  const std::uint8_t none = 0;
  const std::uint8_t first = 1;
  const std::uint8_t second = 2;
  scrivalen_column_data columns[] = {data(SCRIVALEN_NUMBER, nullptr), data(SCRIVALEN_TEXT, nullptr, sameOffsets),
                                     data(SCRIVALEN_TEXT, nullptr, offsets)};
  columns[0].validity = &none;
  columns[2].validity = &first;
  EXPECT_EQ(scrivalen_rows(document, columns, 3, 2), SCRIVALEN_OK) << document.error();
  columns[0].validity = &first;
  EXPECT_EQ(scrivalen_rows(document, columns, 3, 2), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "column 0: its values are null");
  columns[0].offset = 1;
  EXPECT_EQ(scrivalen_rows(document, columns, 3, 1), SCRIVALEN_OK);
  columns[2].validity = &second;
  EXPECT_EQ(scrivalen_rows(document, columns, 3, 2), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "column 2: its values are null");
  EXPECT_EQ(document.closed(), "\n\n\n");
}

TEST(DocumentRows, NoRowsNeedNoValues) {
  Written document;
  scrivalen_begin_table(document, nullptr, 1, nullptr);
  const std::int64_t none[] = {0, 0};
  const scrivalen_column_data texts = data(SCRIVALEN_TEXT, nullptr);
  EXPECT_EQ(scrivalen_rows(document, &texts, 1, 0), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_rows(document, nullptr, 0, 0), SCRIVALEN_OK);
  const scrivalen_column_data empty = data(SCRIVALEN_TEXT, nullptr, none);
  EXPECT_EQ(scrivalen_rows(document, &empty, 1, 1), SCRIVALEN_OK);
  EXPECT_EQ(document.closed(), "\n");
}
