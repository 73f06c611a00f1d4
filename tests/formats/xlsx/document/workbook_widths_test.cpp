#include "formats/xlsx/document/made_workbook.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

using scrivalen::test::kHeaderLook;
using scrivalen::test::MadeWorkbook;

namespace {

// Rows as many as the sample has, whose only cell is the digit 1.
void writeSample(MadeWorkbook& workbook) {
  for (int i = 0; i < 500; ++i) {
    workbook.row({"1"});
  }
}

// The last cell of the column.
std::string lastCell(MadeWorkbook& workbook) {
  const std::string cells = workbook.cells();
  return cells.substr(cells.rfind("\nA") + 1);
}

// The only cell of a column of so many digits, after its name.
template <typename Add>
std::string cellIn(const char* width, Add add, const char* format = nullptr) {
  MadeWorkbook workbook;
  workbook.styles("sheet { column-width: " + std::string(width) + " }");
  workbook.beginColumn(SCRIVALEN_AUTO, 0, format);
  scrivalen_begin_row(workbook, 0);
  add(workbook);
  return workbook.cells().substr(3);
}

std::string textIn(const char* width, const char* text) {
  return cellIn(width, [&](MadeWorkbook& book) { scrivalen_cell(book, text, scrivalen::test::kNul); });
}

std::string numberIn(const char* width, double number, const char* format = nullptr) {
  return cellIn(
      width, [&](MadeWorkbook& book) { scrivalen_cell_number(book, number); }, format);
}

}  // namespace

TEST(WorkbookWidths, LeaveRoomForNumbersThatGrowAfterTheSample) {
  MadeWorkbook workbook;
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  writeSample(workbook);
  workbook.row({"9999"});
  EXPECT_TRUE(workbook.sheetHas("<col min=\"1\" max=\"1\" width=\"7.21\""));
  EXPECT_EQ(lastCell(workbook), "A501 9999 0\n");
}

TEST(WorkbookWidths, ShrinkOnlyNumbersThatAreWiderThanTheSample) {
  MadeWorkbook workbook;
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  writeSample(workbook);
  workbook.row({"-123456789012345"});
  EXPECT_EQ(lastCell(workbook), "A501 -123456789012345 0 shrunk\n");
  EXPECT_TRUE(workbook.sheetHas("<row r=\"500\"><c r=\"A500\" s=\"3\"><v>1</v></c></row>"));
  EXPECT_TRUE(workbook.sheetHas("<row r=\"501\"><c r=\"A501\" s=\"4\"><v>-123456789012345</v></c></row>"));
  EXPECT_NE(workbook.part("xl/styles.xml")
                .find("<xf numFmtId=\"1\" fontId=\"0\" fillId=\"0\" borderId=\"0\" xfId=\"0\" "
                      "applyNumberFormat=\"1\" applyAlignment=\"1\">"
                      "<alignment shrinkToFit=\"1\"/></xf></cellXfs>"),
            std::string::npos);
}

TEST(WorkbookWidths, ShrinkTextsThatBecomeValues) {
  EXPECT_EQ(textIn("8", "1234567"), "1234567 0\n");
  EXPECT_EQ(textIn("8", "-1234567"), "-1234567 0 shrunk\n");
  EXPECT_EQ(textIn("8", "12345.67"), "12345.67 0.00 shrunk\n");
  EXPECT_EQ(textIn("8", "2024-02-29"), "45351 yyyy-mm-dd shrunk\n");
  EXPECT_EQ(textIn("12", "2024-02-29"), "45351 yyyy-mm-dd\n");
  EXPECT_EQ(textIn("8", "a longer text"), "\"a longer text\"\n");
}

TEST(WorkbookWidths, ShrinkGivenValuesByTheTextThatIsShown) {
  EXPECT_EQ(numberIn("8", 1234, "#,##0"), "1234 #,##0\n");
  EXPECT_EQ(numberIn("8", 1234, "#,##0.00"), "1234 #,##0.00 shrunk\n");
  EXPECT_EQ(numberIn("8", 1234, "0.0%"), "1234 0.0% shrunk\n");
  EXPECT_EQ(cellIn("12", [](MadeWorkbook& book) { scrivalen_cell_time(book, 0); }),
            "25569 yyyy-mm-dd hh:mm:ss shrunk\n");
  EXPECT_EQ(cellIn("12", [](MadeWorkbook& book) { scrivalen_cell_date(book, 0); }), "25569 yyyy-mm-dd\n");
  EXPECT_EQ(cellIn("4", [](MadeWorkbook& book) { scrivalen_cell_boolean(book, 0); }),
            "FALSE \"TRUE\";\"TRUE\";\"FALSE\" shrunk\n");
  EXPECT_EQ(cellIn("8", [](MadeWorkbook& book) { scrivalen_cell_boolean(book, 0); }),
            "FALSE \"TRUE\";\"TRUE\";\"FALSE\"\n");
}

// The general format rounds a number to the width of its column.
TEST(WorkbookWidths, ShowAllDigitsOfNumbersInTheGeneralFormat) {
  EXPECT_EQ(numberIn("12", 1234.5678), "1234.5678\n");
  EXPECT_EQ(numberIn("8", 1234.5678), "1234.5678 0.0000 shrunk\n");
  EXPECT_EQ(numberIn("4", 1e300), "1e+300 shrunk\n");
}

TEST(WorkbookWidths, CountBoldAndLargeDigits) {
  const auto spanned = [](double points, int span) {
    return cellIn("8.4", [&](MadeWorkbook& book) {
      scrivalen_begin_cell(book, nullptr);
      scrivalen_begin_sized(book, points);
      scrivalen_begin_span(book, span);
      book.text("1234567");
    });
  };
  EXPECT_EQ(spanned(11, SCRIVALEN_EMPHASIS), "1234567 0\n");
  EXPECT_EQ(spanned(11, SCRIVALEN_STRONG), "1234567 bold 0 shrunk\n");
  EXPECT_EQ(spanned(16, SCRIVALEN_EMPHASIS), "1234567 16 0 shrunk\n");
}

namespace {

void writeCode(MadeWorkbook& workbook, const char* code) {
  scrivalen_begin_row(workbook, 0);
  scrivalen_begin_cell(workbook, nullptr);
  workbook.span(SCRIVALEN_CODE, code);
  workbook.end(2);
}

}  // namespace

// Its letters are wider than those of the usual font.
TEST(WorkbookWidths, HoldCodeInOneLine) {
  MadeWorkbook workbook;
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  writeCode(workbook, "--an-option-with-a-longer-name");
  EXPECT_TRUE(workbook.sheetHas("<col min=\"1\" max=\"1\" width=\"40.01\""));
  EXPECT_TRUE(workbook.sheetHas("<row r=\"1\"><c"));
}

TEST(WorkbookWidths, HoldCodeBeforeText) {
  MadeWorkbook workbook;
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  scrivalen_begin_row(workbook, 0);
  scrivalen_cell(workbook, "1", 1);
  scrivalen_begin_cell(workbook, nullptr);
  workbook.span(SCRIVALEN_CODE, "--an-option-with-a-name");
  workbook.text(" and text");
  workbook.end(2);
  EXPECT_TRUE(workbook.sheetHas("<row r=\"1\"><c"));
}

TEST(WorkbookWidths, ShowValuesThatAreCodeInOneLine) {
  MadeWorkbook wide;
  scrivalen_begin_table(wide, nullptr, 0, nullptr);
  writeCode(wide, "2024-02-29");
  EXPECT_TRUE(wide.sheetHas("<row r=\"1\"><c"));
  EXPECT_EQ(wide.cells().find("shrunk"), std::string::npos);

  MadeWorkbook narrow;
  narrow.styles("sheet { column-width: 12 }");
  scrivalen_begin_table(narrow, nullptr, 0, nullptr);
  writeCode(narrow, "2024-02-29");
  EXPECT_TRUE(narrow.sheetHas("<row r=\"1\"><c"));
  EXPECT_NE(narrow.cells().find("45351"), std::string::npos);
  EXPECT_NE(narrow.cells().find("shrunk"), std::string::npos);
}

TEST(WorkbookWidths, CountTheDigitsOfOtherFontsAsWide) {
  MadeWorkbook workbook;
  workbook.setting("font", "Verdana");
  workbook.styles("sheet { column-width: 12 }");
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  workbook.row({"12345678"});
  workbook.row({"123456789"});
  EXPECT_EQ(workbook.cells(), "A1 12345678 Verdana 0\nA2 123456789 Verdana 0 shrunk\n");
}

TEST(WorkbookWidths, OfJoinedCellsAreAddedUp) {
  MadeWorkbook workbook;
  workbook.styles("sheet { column-width: 8 }");
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  workbook.row({"a", "b", "c"}, 1);
  for (const char* number : {"12345678901234", "123456789012345"}) {
    scrivalen_begin_row(workbook, 0);
    const scrivalen_cell_style style{sizeof style, 0, 0, 2, nullptr, nullptr};
    scrivalen_begin_cell(workbook, &style);
    workbook.text(number);
    workbook.end(2);
  }
  const std::string header = "A1 \"a\"" + kHeaderLook + "\nB1 \"b\"" + kHeaderLook + "\nC1 \"c\"" + kHeaderLook;
  EXPECT_EQ(workbook.cells(), header +
                                  "\nA2 12345678901234 0\nB2 \"\" 0\nC2 \"\"\n"
                                  "A3 123456789012345 0 shrunk\nB3 \"\" 0 shrunk\nC3 \"\"\n");
}

TEST(WorkbookWidths, LeaveValuesInALineOfTheirOwn) {
  MadeWorkbook workbook;
  workbook.styles("sheet { column-width: 8 }");
  workbook.table({"a", "b"}, {"123456789012345", "1"});
  EXPECT_TRUE(workbook.sheetHas("<row r=\"2\"><c"));

  MadeWorkbook joined;
  joined.styles("sheet { column-width: 4 }");
  scrivalen_begin_table(joined, nullptr, 0, nullptr);
  scrivalen_begin_row(joined, 0);
  const scrivalen_cell_style style{sizeof style, 0, 0, 2, nullptr, nullptr};
  scrivalen_begin_cell(joined, &style);
  joined.text("123456789012345");
  EXPECT_TRUE(joined.sheetHas("<row r=\"1\"><c"));
}

TEST(WorkbookWidths, FitAllTablesOfASheet) {
  MadeWorkbook workbook;
  workbook.table({"a", "b"}, {"1", "2"});
  workbook.table({"a", "b", "c"}, {"1", "some twenty characters", "some thirty characters of text"});
  EXPECT_EQ(workbook.all().substr(0, 32), "[Sheet1]\nA 6.3\nB 24.6\nC 32.6\nA1 ");
  EXPECT_FALSE(workbook.sheetHas("\" ht="));
  EXPECT_TRUE(workbook.sheetHas("<sheetFormatPr defaultRowHeight=\"15\"/>"));
}

TEST(WorkbookWidths, HaveRoomForTheLettersOfCode) {
  MadeWorkbook workbook;
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  scrivalen_begin_row(workbook, 0);
  scrivalen_begin_cell(workbook, nullptr);
  workbook.span(SCRIVALEN_CODE, "some_twenty_letters_");
  workbook.end();
  scrivalen_begin_cell(workbook, nullptr);
  workbook.text("ten or so ");
  workbook.span(SCRIVALEN_CODE, "some_ten__");
  EXPECT_EQ(workbook.all().substr(0, 23), "[Sheet1]\nA 27.4\nB 24.8\n");
}

TEST(WorkbookWidths, AreNarrowWhereFewRowsHaveAColumn) {
  MadeWorkbook workbook;
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  for (int i = 0; i < 10; ++i) {
    workbook.row({"1"});
  }
  workbook.end();
  workbook.table({"a", "b"}, {"1", "some thirty characters of text"});
  EXPECT_EQ(workbook.all().substr(0, 25), "[Sheet1]\nA 6.3\nB 16.7\nA1 ");
}

TEST(WorkbookWidths, HaveASensibleDefaultWhereFurtherTablesMayCome) {
  MadeWorkbook workbook;
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  writeSample(workbook);
  workbook.end();
  workbook.table({"a", "b"}, {"1", "2024-02-29"});
  EXPECT_TRUE(workbook.sheetHas("<sheetFormatPr defaultColWidth=\"13.71\" defaultRowHeight=\"15\"/>"));
  EXPECT_NE(workbook.cells().find("\nB503 45351 yyyy-mm-dd\n"), std::string::npos);
}

TEST(WorkbookWidths, AreThoseOfTheFirstMebibyteOfTables) {
  MadeWorkbook workbook;
  const std::string text(30000, 'x');
  for (int i = 0; i < 40; ++i) {
    workbook.table({"a"}, {text.c_str()});
  }
  workbook.table({"a", "b"}, {"1", "some twenty characters"});
  EXPECT_TRUE(
      workbook.sheetHas("<sheetFormatPr defaultColWidth=\"13.71\" defaultRowHeight=\"15\"/>"
                        "<cols><col min=\"1\" max=\"1\" width=\"60.71\" customWidth=\"1\"/></cols>"));
  EXPECT_NE(workbook.cells().find("\nB122 \"some twenty characters\"\n"), std::string::npos);
}

TEST(WorkbookWidths, AreKnownBeforeATableOfManyCellsEnds) {
  MadeWorkbook workbook;
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  for (int row = 1; row <= 100; ++row) {
    scrivalen_begin_row(workbook, row == 1);
    for (int column = 0; column < 200; ++column) {
      scrivalen_cell(workbook, "x", 1);
    }
    workbook.end();
  }
  workbook.end();
  const std::string cells = workbook.cells();
  EXPECT_EQ(std::count(cells.begin(), cells.end(), '\n'), 20000);
  EXPECT_TRUE(workbook.sheetHas("<autoFilter ref=\"A1:GR100\"/>"));
}
