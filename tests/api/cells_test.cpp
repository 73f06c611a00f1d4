#include "api/api_support.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

using namespace scrivalen::test;

namespace {

struct Number {
  std::int64_t digits;
  int decimals;
};

// A row for each number, as plain text.
std::string written(const std::vector<Number>& numbers, const char* style, const scrivalen_column* column = nullptr) {
  Written document;
  scrivalen_set(document, "numbers", style);
  scrivalen_begin_table(document, column, 1, nullptr);
  for (const Number& number : numbers) {
    scrivalen_begin_row(document, 0);
    EXPECT_EQ(scrivalen_cell_decimal(document, number.digits, number.decimals), SCRIVALEN_OK);
    scrivalen_end(document);
  }
  return document.closed();
}

scrivalen_column column(int align = SCRIVALEN_ALIGN_AUTO) {
  scrivalen_column result{};
  result.size = sizeof result;
  result.align = align;
  return result;
}

}  // namespace

TEST(DecimalCells, HaveTheirOwnDecimals) {
  EXPECT_EQ(written({{1250, 2}, {-5, 3}, {0, 1}, {7, 0}, {123456789, 9}}, "1234.5"),
            "      12.50\n     -0.005\n        0.0\n          7\n0.123456789\n");
  EXPECT_EQ(written({{std::numeric_limits<std::int64_t>::min(), 15}}, "1234.5"), "-9223.372036854775808\n");
}

TEST(DecimalCells, AreShownAsTheSettingNumbersSays) {
  EXPECT_EQ(written({{123450, 2}, {1234567, 0}, {-123456, 1}}, "1.234,5"), " 1.234,50\n1.234.567\n-12.345,6\n");
}

TEST(DecimalCells, HaveTheDecimalsOrTheFormatOfTheirColumn) {
  scrivalen_column two = column();
  two.decimals = 2;
  EXPECT_EQ(written({{12345, 3}, {5, 1}}, "1,234.5", &two), "12.35\n 0.50\n");
  two.format = "0%";
  EXPECT_EQ(written({{5, 1}}, "1234.5", &two), "50%\n");
}

TEST(DecimalCells, HaveUpTo15Decimals) {
  Written document;
  scrivalen_begin_table(document, nullptr, 1, nullptr);
  scrivalen_begin_row(document, 0);
  for (const int decimals : {-1, 16}) {
    EXPECT_EQ(scrivalen_cell_decimal(document, 1, decimals), SCRIVALEN_MISUSE);
    EXPECT_EQ(document.error(), "the decimals of a number are 0 to 15");
  }
  EXPECT_EQ(scrivalen_cell_decimal(document, 1, 15), SCRIVALEN_OK);
  EXPECT_EQ(document.closed(), "0.000000000000001\n");
}

TEST(DecimalCells, KeepTheirPlainFormInXml) {
  Written document("xml");
  scrivalen_set(document, "numbers", "1,234.5");
  scrivalen_begin_table(document, nullptr, 1, nullptr);
  scrivalen_begin_row(document, 0);
  scrivalen_cell_decimal(document, 123450, 2);
  const std::string& xml = document.closed();
  EXPECT_NE(xml.find("<cell type=\"number\" value=\"1234.50\">1,234.50</cell>"), std::string::npos) << xml;
}

TEST(DescribedColumns, LeaveTheirNumberToTheRows) {
  Written document("html");
  scrivalen_begin_table(document, nullptr, 0, nullptr);
  const scrivalen_column right = column(SCRIVALEN_RIGHT);
  EXPECT_EQ(scrivalen_describe_column(document, 0, &right), SCRIVALEN_OK);
  scrivalen_begin_row(document, 0);
  scrivalen_cell(document, "a", kNul);
  scrivalen_cell(document, "b", kNul);
  const std::string& page = document.closed();
  EXPECT_NE(page.find("<tr><td style=\"text-align:right\">a</td><td>b</td></tr>"), std::string::npos) << page;
}

TEST(DescribedColumns, ChangeOnlyWhatTheDescriptionHas) {
  Written document("html");
  scrivalen_column first = column(SCRIVALEN_CENTER);
  scrivalen_begin_table(document, &first, 1, nullptr);
  scrivalen_column decimals = column();
  decimals.decimals = 1;
  EXPECT_EQ(scrivalen_describe_column(document, 0, &decimals), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_describe_column(document, 1, &decimals), SCRIVALEN_OK);
  scrivalen_begin_row(document, 0);
  scrivalen_cell_number(document, 2);
  const std::string& page = document.closed();
  EXPECT_NE(page.find("<tr><td style=\"text-align:center\">2.0</td></tr>"), std::string::npos) << page;
}

TEST(DescribedColumns, AreRefusedWithoutATable) {
  Written document;
  scrivalen_column wrong = column();
  EXPECT_EQ(scrivalen_describe_column(document, 0, &wrong), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "no table is open that could have this column");
  scrivalen_begin_table(document, nullptr, 0, nullptr);
  EXPECT_EQ(scrivalen_describe_column(document, 0, nullptr), SCRIVALEN_MISUSE);
  wrong.type = 7;
  EXPECT_EQ(scrivalen_describe_column(document, 4, &wrong), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "column 4: the type of a column is 0 to 6");
  EXPECT_EQ(document.closed(), "");
}
