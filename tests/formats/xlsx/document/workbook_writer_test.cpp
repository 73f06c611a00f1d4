#include "formats/xlsx/document/made_workbook.h"
#include "support/captured_log.h"
#include "support/documents/pictures.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <string>

using scrivalen::test::CapturedLog;
using scrivalen::test::kHeaderLook;
using scrivalen::test::MadeWorkbook;
using scrivalen::test::warningsOf;

TEST(WorkbookWriter, HasARowForEachBlockAndBoldHeadings) {
  MadeWorkbook workbook;
  workbook.heading(1, "A & B");
  scrivalen_begin_paragraph(workbook, nullptr);
  workbook.text("one ");
  workbook.span(SCRIVALEN_EMPHASIS, "two");
  workbook.text(" ");
  workbook.span(SCRIVALEN_STRONG, "three");
  workbook.text("\nfour");
  workbook.end();
  workbook.heading(2, "C");
  EXPECT_EQ(workbook.cells(), "A1 \"A & B\" bold 16\nA2 \"one two three\nfour\"\nA4 \"C\" bold 14\n");
}

TEST(WorkbookWriter, GivesEachPartOfATextItsFont) {
  MadeWorkbook workbook;
  scrivalen_begin_paragraph(workbook, nullptr);
  workbook.text("a ");
  workbook.span(SCRIVALEN_STRONG, "b");
  workbook.span(SCRIVALEN_CODE, " c");
  scrivalen_begin_colored(workbook, "red", nullptr);
  scrivalen_begin_sized(workbook, 8.5);
  workbook.span(SCRIVALEN_SUPERSCRIPT, "d");
  workbook.end(3);
  EXPECT_TRUE(workbook.sheetHas(
      "<is><r><t xml:space=\"preserve\">a </t></r><r><rPr><b/><sz val=\"11\"/><rFont "
      "val=\"Calibri\"/></rPr><t>b</t></r>"
      "<r><rPr><sz val=\"11\"/><rFont val=\"Courier New\"/></rPr><t xml:space=\"preserve\"> c</t></r>"
      "<r><rPr><vertAlign val=\"superscript\"/><sz val=\"8.5\"/><color rgb=\"FFFF0000\"/><rFont val=\"Calibri\"/>"
      "</rPr><t>d</t></r></is>"));
}

// White text would be lost without its background.
TEST(WorkbookWriter, GivesPartsOfATextNeitherBackgroundsNorTheirColours) {
  MadeWorkbook workbook;
  scrivalen_begin_paragraph(workbook, nullptr);
  scrivalen_begin_colored(workbook, "white", "navy");
  workbook.text("a");
  workbook.end();
  workbook.text(" b ");
  scrivalen_begin_colored(workbook, "red", nullptr);
  workbook.text("c");
  workbook.end(2);
  scrivalen_begin_paragraph(workbook, nullptr);
  scrivalen_begin_colored(workbook, "white", "navy");
  workbook.text("whole");
  workbook.end(2);
  EXPECT_EQ(workbook.cells(), "A1 \"a b c\"\nA2 \"whole\" color=FFFFFF fill=000080\n");
  EXPECT_FALSE(workbook.sheetHas("FFFFFFFF"));
  EXPECT_TRUE(workbook.sheetHas("<color rgb=\"FFFF0000\"/><rFont val=\"Calibri\"/></rPr><t>c</t></r>"));
  EXPECT_EQ(warningsOf(workbook), "0 4 1 backgrounds of parts of a text, which only whole cells have\n");
}

TEST(WorkbookWriter, IndentsListsAndQuotesByTheirDepth) {
  MadeWorkbook workbook;
  scrivalen_begin_list(workbook, 0, 0, 1);
  scrivalen_begin_item(workbook, 0);
  workbook.text("a");
  scrivalen_begin_list(workbook, 1, 1, 1);
  scrivalen_begin_item(workbook, 0);
  workbook.text("b");
  workbook.end(3);
  workbook.item("d", 2);
  workbook.end();
  scrivalen_begin_quote(workbook);
  workbook.paragraph("e");
  EXPECT_EQ(workbook.cells(), "A1 \"\u2022 a\"\nA2 \"1. b\"\nA3 \"\u2022 [x] d\"\nA4 \"e\" color=595959\n");
  const std::string styles = workbook.part("xl/styles.xml");
  for (const char* indent :
       {"<alignment horizontal=\"left\" indent=\"1\"/>", "<alignment horizontal=\"left\" indent=\"2\"/>"}) {
    EXPECT_NE(styles.find(indent), std::string::npos) << indent;
  }
}

TEST(WorkbookWriter, IndentsTheDeepestQuotesAlike) {
  MadeWorkbook workbook;
  for (int i = 0; i < 900; ++i) {
    scrivalen_begin_quote(workbook);
  }
  workbook.paragraph("a");
  EXPECT_NE(workbook.part("xl/styles.xml").find("indent=\"15\""), std::string::npos);
}

TEST(WorkbookWriter, KeepsAnEmptyItemAndTheMarkerBeforeATable) {
  MadeWorkbook workbook;
  scrivalen_begin_list(workbook, 0, 0, 1);
  workbook.item("");
  scrivalen_begin_item(workbook, 0);
  workbook.table({"a"}, {"b"});
  workbook.end(2);
  EXPECT_EQ(workbook.cells(), "A1 \"\u2022 \"\nA2 \"\u2022 \"\nA4 \"a\"" + kHeaderLook + "\nA5 \"b\"\n");
}

TEST(WorkbookWriter, HasARowForEachLineOfCode) {
  MadeWorkbook workbook;
  scrivalen_begin_code(workbook, nullptr);
  workbook.text("a\n\n  12\n");
  workbook.end();
  workbook.paragraph("c");
  EXPECT_EQ(workbook.cells(), "A1 \"a\" Courier New\nA2 \"\" Courier New\nA3 \"  12\" Courier New\nA4 \"c\"\n");
}

// Spreadsheets show no tabs.
TEST(WorkbookWriter, IndentsCodeByBlanks) {
  MadeWorkbook workbook;
  scrivalen_begin_code(workbook, nullptr);
  workbook.text("if\n\ta\tb\n\t\tc\n");
  workbook.end();
  EXPECT_EQ(workbook.cells(), "A1 \"if\" Courier New\nA2 \"    a   b\" Courier New\nA3 \"        c\" Courier New\n");
}

TEST(WorkbookWriter, LinksTheLinesOfContentsAndShowsNoTitle) {
  MadeWorkbook workbook;
  workbook.setting("title", "never shown");
  scrivalen_begin_contents(workbook);
  scrivalen_contents_item(workbook, 2, "a", "A", scrivalen::test::kNul);
  workbook.end();
  scrivalen_rule(workbook);
  scrivalen_begin_heading(workbook, 1, "a", nullptr);
  workbook.text("A");
  workbook.end();
  EXPECT_EQ(workbook.cells(), "A1 \"A\" color=0563C1\nA3 \"A\" bold 16\n");
  EXPECT_TRUE(workbook.sheetHas("<hyperlink ref=\"A1\" location=\"_a\"/>"));
  EXPECT_EQ(warningsOf(workbook), "");
}

TEST(WorkbookWriter, ColoursAndJoinsCells) {
  MadeWorkbook workbook;
  scrivalen_begin_table(workbook, nullptr, 3, nullptr);
  scrivalen_begin_row(workbook, 0);
  const scrivalen_cell_style wide{sizeof wide, 0, SCRIVALEN_CENTER, 2, "#010203", "blue"};
  scrivalen_begin_cell(workbook, &wide);
  workbook.text("a");
  workbook.end();
  const scrivalen_cell_style red{sizeof red, 0, 0, 1, "red", nullptr};
  scrivalen_begin_cell(workbook, &red);
  workbook.text("12");
  workbook.end();
  EXPECT_EQ(workbook.cells(),
            "A1 \"a\" color=010203 fill=0000FF\nB1 \"\" color=010203 fill=0000FF\nC1 12 color=FF0000 0\n");
  EXPECT_TRUE(workbook.sheetHas("<mergeCells count=\"1\"><mergeCell ref=\"A1:B1\"/></mergeCells>"));
  EXPECT_NE(workbook.part("xl/styles.xml").find("<alignment horizontal=\"center\"/>"), std::string::npos);
}

TEST(WorkbookWriter, PlacesPictures) {
  MadeWorkbook workbook;
  const std::string png = scrivalen::test::greyPng(4, 4);
  scrivalen_image(workbook, png.data(), png.size(), "a \"dot\"", 60);
  workbook.paragraph("after");
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  scrivalen_begin_row(workbook, 0);
  scrivalen_begin_cell(workbook, nullptr);
  scrivalen_image(workbook, png.data(), png.size(), "again", 15);
  workbook.end(3);
  EXPECT_TRUE(workbook.sheetHas("<row r=\"1\" ht=\"62.00\">"));
  EXPECT_TRUE(workbook.sheetHas("<row r=\"4\" ht=\"17.00\">"));
  EXPECT_TRUE(workbook.sheetHas("<drawing r:id=\"rId1\"/></worksheet>"));
  const std::string drawing = workbook.part("xl/drawings/drawing1.xml");
  EXPECT_NE(drawing.find(
                "<xdr:row>0</xdr:row><xdr:rowOff>12700</xdr:rowOff></xdr:from><xdr:ext cx=\"762000\" cy=\"762000\"/>"),
            std::string::npos);
  EXPECT_NE(drawing.find("descr=\"a &quot;dot&quot;\""), std::string::npos);
  EXPECT_NE(drawing.find("<xdr:row>3</xdr:row>"), std::string::npos);
  EXPECT_EQ(workbook.part("xl/media/image1.png"), png);
  EXPECT_EQ(workbook.part("xl/drawings/_rels/drawing1.xml.rels").find("rId2"), std::string::npos);
}

TEST(WorkbookWriter, MakesAColumnAsWideAsItsPicture) {
  MadeWorkbook workbook;
  const std::string png = scrivalen::test::greyPng(4, 4);
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  scrivalen_begin_row(workbook, 0);
  scrivalen_begin_cell(workbook, nullptr);
  scrivalen_image(workbook, png.data(), png.size(), "no width is for this text, which nobody sees here", 105);
  workbook.end(3);
  EXPECT_TRUE(workbook.sheetHas("<col min=\"1\" max=\"1\" width=\"20"));
  EXPECT_NE(workbook.part("xl/drawings/drawing1.xml").find("<xdr:ext cx=\"1333500\""), std::string::npos);
}

// Excel and LibreOffice exchange the sides of such an anchor before they turn the picture.
TEST(WorkbookWriter, AnchorsAPictureOnItsSideWhereItIsShown) {
  const std::string jpeg = scrivalen::test::turnedJpeg(40, 20, 6);
  MadeWorkbook workbook;
  scrivalen_image(workbook, jpeg.data(), jpeg.size(), "turned", 0);
  const std::string drawing = workbook.part("xl/drawings/drawing1.xml");
  EXPECT_NE(drawing.find("<xdr:colOff>0</xdr:colOff><xdr:row>0</xdr:row><xdr:rowOff>12700</xdr:rowOff></xdr:from>"
                         "<xdr:ext cx=\"190500\" cy=\"381000\"/>"),
            std::string::npos);
  EXPECT_NE(drawing.find("<a:xfrm rot=\"5400000\"><a:off x=\"0\" y=\"0\"/><a:ext cx=\"381000\" cy=\"190500\"/>"),
            std::string::npos);
}

TEST(WorkbookWriter, GivesAPictureAWidthAndHeightHoweverThinItIs) {
  using scrivalen::test::bigEndian;
  const std::string resolution = bigEndian(394, 4) + bigEndian(393'700, 4) + '\1';  // 10 by 10,000 pixels an inch
  const std::string png = scrivalen::test::greyPng(60'000, 1, scrivalen::test::pngChunk("pHYs", resolution));
  MadeWorkbook workbook;
  scrivalen_image(workbook, png.data(), png.size(), "thin", 0);
  EXPECT_NE(workbook.part("xl/drawings/drawing1.xml").find("\" cy=\"1\"/>"), std::string::npos);
}

// The picture is below its text, so the text is not at the bottom.
TEST(WorkbookWriter, PutsTextAboveThePicturesOfItsRow) {
  MadeWorkbook workbook;
  const std::string png = scrivalen::test::greyPng(4, 4);
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  scrivalen_begin_row(workbook, 0);
  scrivalen_cell(workbook, "name", SCRIVALEN_NUL);
  scrivalen_begin_cell(workbook, nullptr);
  scrivalen_text(workbook, "text", SCRIVALEN_NUL);
  scrivalen_image(workbook, png.data(), png.size(), "picture", 15);
  workbook.end(3);
  EXPECT_TRUE(workbook.sheetHas("<row r=\"1\" ht=\"32.00\">"));
  EXPECT_NE(workbook.part("xl/styles.xml").find("vertical=\"top\""), std::string::npos);
  EXPECT_FALSE(workbook.sheetHas("<c r=\"A1\" t=\"inlineStr\">"));
  EXPECT_FALSE(workbook.sheetHas("<c r=\"B1\" t=\"inlineStr\">"));
  const std::string drawing = workbook.part("xl/drawings/drawing1.xml");
  EXPECT_NE(drawing.find("<xdr:rowOff>203200</xdr:rowOff>"), std::string::npos);
}

TEST(WorkbookWriter, LetsTheStyleSheetOverrideTheFrozenRow) {
  MadeWorkbook workbook;
  workbook.styles("sheet { freeze-rows: 0 }");
  workbook.table({"a"}, {"1"});
  EXPECT_FALSE(workbook.sheetHas("<pane"));
}

TEST(WorkbookWriter, HasTheFormatsOfItsStyleSheet) {
  MadeWorkbook workbook;
  workbook.styles("cell { color: red } bold { font-size: 14 }");
  workbook.table({"a"}, {"x"});
  EXPECT_EQ(workbook.cells(), "A1 \"a\" bold 14 fill=F2F2F2\nA2 \"x\" color=FF0000\n");
}

TEST(WorkbookWriter, HasTheFontOfTheSettings) {
  MadeWorkbook workbook;
  workbook.setting("font", "A & B");
  workbook.table({"a"}, {"x"});
  EXPECT_EQ(workbook.cells(), "A1 \"a\" bold A & B fill=F2F2F2\nA2 \"x\" A & B\n");
}

TEST(WorkbookWriter, WarnsOfWhatItsStyleSheetHasAndLogsNothing) {
  const CapturedLog log;
  MadeWorkbook workbook;
  workbook.styles(
      "\xEF\xBB\xBF"
      "cell { margin: 1; font-size: 9 }");
  workbook.table({"a"}, {"x"});
  EXPECT_EQ(workbook.cells(), "A1 \"a\" bold fill=F2F2F2\nA2 \"x\" 9\n");
  EXPECT_EQ(warningsOf(workbook),
            "0 4 1 the style sheet is not understood: a byte-order mark is no part of a style sheet\n"
            "0 4 1 the style sheet is not understood: 'cell' has no 'margin'\n");
  EXPECT_TRUE(log.lines().empty());
}

TEST(WorkbookWriter, FailsAtOpenWithoutItsStyleSheet) {
  MadeWorkbook workbook;
  workbook.setting("styles", "no such file.css");
  EXPECT_EQ(scrivalen_open(workbook), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(workbook.error().find("cannot read the style sheet 'no such file.css': "), 0u) << workbook.error();
}

TEST(WorkbookWriter, FailsWithItsStream) {
  MadeWorkbook whole;
  scrivalen::test::writeContent(whole);
  const std::size_t size = whole.closed().size();
  for (std::size_t room = 0; room < size; room += 61) {
    MadeWorkbook workbook;
    workbook.stream.room = room;
    scrivalen::test::writeContent(workbook);
    workbook.closed();
    ASSERT_EQ(workbook.result, SCRIVALEN_FILE_ERROR) << room;
    ASSERT_EQ(workbook.error(), "cannot write the stream of xlsx: No space left on device") << room;
  }
}

TEST(WorkbookWriter, HasTheSameBytesInAFileAndInAStream) {
  MadeWorkbook workbook;
  const std::wstring path = workbook.folder / L"other.xlsx";
  scrivalen_add_file(workbook, scrivalen::narrowPath(path).c_str(), "xlsx");
  ASSERT_EQ(scrivalen::test::writeContent(workbook), SCRIVALEN_OK);
  const std::string streamed = workbook.closed();
  EXPECT_TRUE(streamed == scrivalen::test::bytesOf(path));
}

TEST(WorkbookWriter, IsComplete) {
  MadeWorkbook workbook;
  ASSERT_EQ(scrivalen::test::writeContent(workbook), SCRIVALEN_OK) << workbook.error();
  const std::string cells = workbook.cells();
  for (const char* word : {"A heading", "Prices", "A paragraph.", "gro\xC3\x9F", "none", "done", "return x;", "what",
                           "45569 yyyy-mm-dd", "plum"}) {
    EXPECT_NE(cells.find(word), std::string::npos) << word;
  }
}
