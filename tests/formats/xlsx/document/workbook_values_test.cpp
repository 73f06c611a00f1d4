#include "formats/xlsx/document/made_workbook.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

using scrivalen::test::MadeWorkbook;

namespace {

// The only cell of a column, after its name.
std::string cellOf(const char* text, int type = SCRIVALEN_AUTO) {
  MadeWorkbook workbook;
  workbook.beginColumn(type);
  workbook.row({text});
  return workbook.cells().substr(3);
}

template <typename Add>
std::string valueOf(Add add, int decimals = 0, const char* format = nullptr) {
  MadeWorkbook workbook;
  workbook.beginColumn(SCRIVALEN_AUTO, decimals, format);
  scrivalen_begin_row(workbook, 0);
  add(workbook);
  return workbook.cells().substr(3);
}

std::string numberOf(double value, int decimals = 0, const char* format = nullptr) {
  return valueOf([&](MadeWorkbook& book) { scrivalen_cell_number(book, value); }, decimals, format);
}

std::string integerOf(std::int64_t value, int decimals = 0, const char* format = nullptr) {
  return valueOf([&](MadeWorkbook& book) { scrivalen_cell_integer(book, value); }, decimals, format);
}

}  // namespace

TEST(WorkbookValues, AreMadeOfTextsThatTheSheetShowsAlike) {
  EXPECT_EQ(cellOf("0"), "0 0\n");
  EXPECT_EQ(cellOf("-12"), "-12 0\n");
  EXPECT_EQ(cellOf("12.50"), "12.50 0.00\n");
  EXPECT_EQ(cellOf("0.000000001"), "0.000000001 0.000000000\n");
  EXPECT_EQ(cellOf("999999999999999"), "999999999999999 0\n");
  EXPECT_EQ(cellOf("1900-03-01"), "61 yyyy-mm-dd\n");
  EXPECT_EQ(cellOf("2024-02-29"), "45351 yyyy-mm-dd\n");
  EXPECT_EQ(cellOf("9999-12-31"), "2958465 yyyy-mm-dd\n");
}

TEST(WorkbookValues, AreNotMadeOfOtherTexts) {
  for (const char* text : {"007",          "+7",         "1e5",        "12%",      "1,234.50", "=1+1",
                           "-0",           "-0.00",      ".5",         "5.",       "1 000",    "1000000000000000",
                           "0.0000000001", "1900-02-28", "2023-02-29", "2024-1-5", "12:30",    "TRUE",
                           "#N/A",         " 1",         "1 ",         "@a",       "-1+2"}) {
    EXPECT_EQ(cellOf(text), '"' + std::string(text) + "\"\n");
  }
}

TEST(WorkbookValues, AreOfTheColumnsType) {
  EXPECT_EQ(cellOf("12", SCRIVALEN_TEXT), "\"12\"\n");
  EXPECT_EQ(cellOf("2024-02-29", SCRIVALEN_NUMBER), "\"2024-02-29\"\n");
  EXPECT_EQ(cellOf("1.5", SCRIVALEN_INTEGER), "\"1.5\"\n");
  EXPECT_EQ(cellOf("15", SCRIVALEN_INTEGER), "15 0\n");
  EXPECT_EQ(cellOf("15", SCRIVALEN_DATE), "\"15\"\n");
  EXPECT_EQ(cellOf("TRUE", SCRIVALEN_BOOLEAN), "TRUE \"TRUE\";\"TRUE\";\"FALSE\"\n");
  EXPECT_EQ(cellOf("true", SCRIVALEN_BOOLEAN), "\"true\"\n");
}

TEST(WorkbookValues, ShowNumbersWithTheirDecimals) {
  EXPECT_EQ(numberOf(0.5), "0.5\n");
  EXPECT_EQ(numberOf(-0.0), "0\n");
  EXPECT_EQ(numberOf(1234567.891234), "1234567.891234 0.000000\n");
  EXPECT_EQ(numberOf(123456789012.0), "123456789012 0\n");
  EXPECT_EQ(numberOf(1e300), "1e+300\n");
  EXPECT_EQ(numberOf(0.1 + 0.2), "0.30000000000000004\n");
  EXPECT_EQ(numberOf(2.0 / 3, 2), "0.6666666666666666 0.00\n");
  EXPECT_EQ(numberOf(2.5, -1), "2.5 0\n");
  EXPECT_EQ(numberOf(0.25, 0, "0.0%"), "0.25 0.0%\n");
  EXPECT_EQ(numberOf(1234.5, 0, "#,##0.00"), "1234.5 #,##0.00\n");
  EXPECT_EQ(valueOf([](MadeWorkbook& book) { scrivalen_cell_decimal(book, 1250, 2); }), "12.50 0.00\n");
  EXPECT_EQ(valueOf([](MadeWorkbook& book) { scrivalen_cell_decimal(book, -5, 3); }), "-0.005 0.000\n");
  EXPECT_EQ(valueOf([](MadeWorkbook& book) { scrivalen_cell_decimal(book, 0, 15); }),
            "0.000000000000000 0.000000000000000\n");
}

TEST(WorkbookValues, ShowLargeWholeNumbersWhole) {
  EXPECT_EQ(numberOf(1e15), "1000000000000000 0\n");
  EXPECT_EQ(numberOf(-1234567890123000), "-1234567890123000 0\n");
  EXPECT_EQ(numberOf(9007199254740992), "9007199254740992\n");
}

// A spreadsheet shows 15 digits, and groups none in the general format.
TEST(WorkbookValues, GroupNumbersOfTooManyDigits) {
  const auto groupedOf = [](double value) {
    MadeWorkbook workbook;
    workbook.setting("numbers", "1,234.5");
    scrivalen_begin_table(workbook, nullptr, 0, nullptr);
    scrivalen_begin_row(workbook, 0);
    scrivalen_cell_number(workbook, value);
    return workbook.cells().substr(3);
  };
  EXPECT_EQ(groupedOf(1e6 / 3), "333333.3333333333 #,##0.000000000\n");
  EXPECT_EQ(groupedOf(123456789.12345679), "123456789.12345679 #,##0.000000 shrunk\n");
  EXPECT_EQ(groupedOf(9007199254740992), "9007199254740992 #,##0 shrunk\n");
  EXPECT_EQ(groupedOf(1e20), "100000000000000000000 #,##0 shrunk\n");
  EXPECT_EQ(groupedOf(1e21), "1e+21\n");
}

TEST(WorkbookValues, ShowIntegersWhole) {
  EXPECT_EQ(integerOf(42), "42 0\n");
  EXPECT_EQ(integerOf(-999'999'999'999'999), "-999999999999999 0\n");
  EXPECT_EQ(integerOf(42, 2), "42 0.00\n");
  EXPECT_EQ(integerOf(42, 0, "#,##0"), "42 #,##0\n");
}

TEST(WorkbookValues, ThatASheetCannotHoldAreTexts) {
  EXPECT_EQ(integerOf(1'000'000'000'000'000), "\"1000000000000000\"\n");
  EXPECT_EQ(integerOf(INT64_MIN), "\"-9223372036854775808\"\n");
  EXPECT_EQ(valueOf([](MadeWorkbook& book) { scrivalen_cell_decimal(book, INT64_MIN, 2); }),
            "\"-92233720368547758.08\"\n");
  EXPECT_EQ(numberOf(1.5e308).substr(0, 9), "\"1.5e+308");
  EXPECT_EQ(numberOf(5e-324).substr(0, 4), "\"5e-");
  EXPECT_EQ(valueOf([](MadeWorkbook& book) { scrivalen_cell_date(book, -25'568); }), "\"1899-12-31\"\n");
  EXPECT_EQ(valueOf([](MadeWorkbook& book) { scrivalen_cell_date(book, 2'932'897); }), "\"10000-01-01\"\n");
  EXPECT_EQ(valueOf([](MadeWorkbook& book) { scrivalen_cell_time(book, INT64_C(-2'300'000'000)); }),
            "\"1897-02-11 15:06:40\"\n");
}

TEST(WorkbookValues, AreDatesTimesAndBooleans) {
  EXPECT_EQ(valueOf([](MadeWorkbook& book) { scrivalen_cell_date(book, 1); }), "25570 yyyy-mm-dd\n");
  EXPECT_EQ(valueOf([](MadeWorkbook& book) { scrivalen_cell_time(book, 43'200); }), "25569.5 yyyy-mm-dd hh:mm:ss\n");
  EXPECT_EQ(valueOf([](MadeWorkbook& book) { scrivalen_cell_date(book, 1); }, 0, "yyyy-mm"), "25570 yyyy-mm\n");
  EXPECT_EQ(valueOf([](MadeWorkbook& book) { scrivalen_cell_time(book, 3600); }, 0, "hh:mm"),
            "25569.041666666668 hh:mm\n");
  EXPECT_EQ(valueOf([](MadeWorkbook& book) { scrivalen_cell_boolean(book, 7); }), "TRUE \"TRUE\";\"TRUE\";\"FALSE\"\n");
}

// 25932.15568287037, the nearest number, is less than that time.
TEST(WorkbookValues, AreNeverBeforeTheirTime) {
  EXPECT_EQ(valueOf([](MadeWorkbook& book) { scrivalen_cell_time(book, 31'376'651); }),
            "25932.155682870372 yyyy-mm-dd hh:mm:ss\n");
}

TEST(WorkbookValues, TakeNumbersAndDatesOfPeopleAsFormats) {
  MadeWorkbook workbook;
  workbook.setting("numbers", "1.234,5");
  workbook.setting("dates", "dd/mm/yyyy");
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  scrivalen_begin_row(workbook, 0);
  scrivalen_cell_number(workbook, 1234.5);
  scrivalen_cell_integer(workbook, 1234);
  scrivalen_cell_date(workbook, 1);
  scrivalen_cell(workbook, "1234", 4);
  EXPECT_EQ(workbook.cells(), "A1 1234.5 #,##0.0\nB1 1234 #,##0\nC1 25570 dd\\/mm\\/yyyy\nD1 1234 0\n");
}

TEST(WorkbookValues, AreAlsoBold) {
  MadeWorkbook workbook;
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  scrivalen_begin_row(workbook, 0);
  scrivalen_begin_cell(workbook, nullptr);
  workbook.span(SCRIVALEN_STRONG, "12.5");
  workbook.end();
  scrivalen_begin_cell(workbook, nullptr);
  workbook.span(SCRIVALEN_STRONG, "1");
  workbook.text("2");
  workbook.end();
  EXPECT_EQ(workbook.cells(), "A1 12.5 bold 0.0\nB1 \"12\"\n");
}

TEST(WorkbookValues, AreNotInHeaders) {
  MadeWorkbook workbook;
  workbook.table({"2024"}, {"1"});
  EXPECT_EQ(workbook.cells(), "A1 \"2024\"" + scrivalen::test::kHeaderLook + "\nA2 1 0\n");
  EXPECT_TRUE(workbook.sheetHas("<ignoredError sqref=\"A1:XFD1048576\" numberStoredAsText=\"1\"/>"));
}
