#include "formats/xlsx/document/made_workbook.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <string_view>

using scrivalen::test::MadeWorkbook;
using scrivalen::test::warningsOf;

namespace {

bool has(const std::string& text, std::string_view part) { return text.find(part) != std::string::npos; }

std::string onlyCell(const char* text) {
  MadeWorkbook workbook;
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  workbook.row({text});
  const std::string xml = workbook.sheet();
  const std::size_t begin = xml.find("<c r=\"A1\"");
  return xml.substr(begin, xml.find("</row>") - begin);
}

// Between the parts of a date.
constexpr const char* kSeparators[] = {" ",  "-",  ".",  "/",  ",",  "  ", " -", " .", " /", " ,",
                                       "- ", "--", "-.", "-/", "-,", ". ", ".-", "..", "./", ".,",
                                       "/ ", "/-", "/.", "//", "/,", ", ", ",-", ",.", ",/", ",,"};

enum class Colored { Text, Cell };

// A table with a colour of its own in each row. All texts but the last are "a".
void writeColoredRows(MadeWorkbook& workbook, int rows, const char* last, Colored colored = Colored::Text) {
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  for (int i = 0; i < rows; ++i) {
    char color[16];
    std::snprintf(color, sizeof color, "#%06X", i);
    scrivalen_begin_row(workbook, 0);
    scrivalen_cell_style style{sizeof style, 0, 0, 1, nullptr, nullptr};
    (colored == Colored::Text ? style.color : style.background) = color;
    scrivalen_begin_cell(workbook, &style);
    workbook.text(i + 1 < rows ? "a" : last);
    workbook.end(2);
  }
}

}  // namespace

TEST(WorkbookLimits, EscapeWhatReadersTakeForEscapes) {
  EXPECT_EQ(onlyCell("_x0041_ _xA_ _x00z_"),
            "<c r=\"A1\" t=\"inlineStr\"><is><t>_x005F_x0041_ _x005F_xA_ _x00z_</t></is></c>");
}

TEST(WorkbookLimits, KeepOuterBlanks) {
  EXPECT_EQ(onlyCell(" a"), "<c r=\"A1\" t=\"inlineStr\"><is><t xml:space=\"preserve\"> a</t></is></c>");
  EXPECT_EQ(onlyCell("a<&>\"b"), "<c r=\"A1\" t=\"inlineStr\"><is><t>a&lt;&amp;&gt;\"b</t></is></c>");
}

TEST(WorkbookLimits, ReplaceCharactersThatXmlCannotContain) {
  EXPECT_EQ(onlyCell("a\x01\xEF\xBF\xBF\xED\xA0\x80z"),
            "<c r=\"A1\" t=\"inlineStr\"><is><t>a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDz</t>"
            "</is></c>");
}

TEST(WorkbookLimits, CutCellsBetweenCharacters) {
  MadeWorkbook workbook;
  const std::string text = std::string(32'766, 'x') + "\xF0\x9F\x98\x80";
  workbook.table({"a"}, {text.c_str()});
  const std::string xml = workbook.sheet();
  EXPECT_TRUE(has(xml, std::string(32'766, 'x') + "</t>"));
  EXPECT_EQ(warningsOf(workbook), "0 2 1 cells cut at 32,767 characters\n");
}

// The second part is cut before its last character, and the third has no text left.
TEST(WorkbookLimits, CutCellsOfSeveralFontsBetweenCharacters) {
  MadeWorkbook workbook;
  scrivalen_begin_paragraph(workbook, nullptr);
  workbook.text(std::string(32'000, 'x').c_str());
  workbook.span(SCRIVALEN_STRONG, (std::string(766, 'y') + "\U0001F600").c_str());
  workbook.text("z");
  workbook.end();
  const std::string xml = workbook.sheet();
  EXPECT_TRUE(has(xml, "<r><t>" + std::string(32'000, 'x') + "</t></r><r><rPr><b/>"));
  EXPECT_TRUE(has(xml, "<t>" + std::string(766, 'y') + "</t></r></is></c>"));
  EXPECT_EQ(warningsOf(workbook), "0 2 1 cells cut at 32,767 characters\n");
}

TEST(WorkbookLimits, CutTheNameOfAFontAsItIsWritten) {
  MadeWorkbook workbook;
  workbook.setting("font", ("_x0041_" + std::string(20, 'f')).c_str());
  workbook.paragraph("a");
  EXPECT_TRUE(has(workbook.part("xl/styles.xml"), "<name val=\"_x005F_x0041_" + std::string(18, 'f') + "\"/>"));
  EXPECT_EQ(warningsOf(workbook), "0 2 1 the name of a font cut at 31 characters\n");
}

TEST(WorkbookLimits, CutTheNameOfAFont) {
  MadeWorkbook workbook;
  workbook.setting("font", (std::string(30, 'f') + "\U0001F600").c_str());
  workbook.paragraph("a");
  EXPECT_TRUE(has(workbook.part("xl/styles.xml"), "<name val=\"" + std::string(30, 'f') + "\"/>"));
  EXPECT_EQ(warningsOf(workbook), "0 2 1 the name of a font cut at 31 characters\n");
}

TEST(WorkbookLimits, DropCellsBeyondTheLastColumn) {
  MadeWorkbook workbook;
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  scrivalen_begin_row(workbook, 0);
  for (int i = 0; i < 16'386; ++i) {
    scrivalen_cell(workbook, "a", 1);
  }
  const std::string xml = workbook.sheet();
  EXPECT_TRUE(has(xml, "<c r=\"XFD1\""));
  EXPECT_FALSE(has(xml, "<c r=\"XFE1\""));
  EXPECT_EQ(warningsOf(workbook), "0 3 2 cells dropped beyond column 16,384\n");
}

TEST(WorkbookLimits, LinkCellsAndPlaces) {
  MadeWorkbook workbook;
  scrivalen_begin_heading(workbook, 1, "a place", nullptr);
  workbook.text("H");
  workbook.end();
  scrivalen_begin_paragraph(workbook, nullptr);
  workbook.link("https://x.org/\xC3\xA4?a=1&b#frag", "text", "t\"ip");
  workbook.end();
  scrivalen_begin_paragraph(workbook, nullptr);
  workbook.link("#a place", "there");
  workbook.end();
  EXPECT_TRUE(
      workbook.sheetHas("<hyperlinks><hyperlink ref=\"A2\" r:id=\"rId1\" location=\"frag\" "
                        "tooltip=\"t&quot;ip\"/><hyperlink ref=\"A3\" location=\"_a_place\"/></hyperlinks>"));
  EXPECT_TRUE(has(workbook.part("xl/worksheets/_rels/sheet1.xml.rels"),
                  "Target=\"https://x.org/%C3%A4?a=1&amp;b\" TargetMode=\"External\"/>"));
  EXPECT_TRUE(has(workbook.part("xl/workbook.xml"), "<definedName name=\"_a_place\">'Sheet1'!$A$1</definedName>"));
  EXPECT_EQ(workbook.cells(), "A1 \"H\" bold 16\nA2 \"text\" color=0563C1\nA3 \"there\" color=0563C1\n");
}

// As spreadsheet programs write them.
TEST(WorkbookLimits, LinkToFilesOfWindows) {
  const auto targetOf = [](const char* address) {
    MadeWorkbook workbook;
    scrivalen_begin_paragraph(workbook, nullptr);
    workbook.link(address, "text");
    workbook.end();
    const std::string part = workbook.part("xl/worksheets/_rels/sheet1.xml.rels");
    const std::size_t begin = part.find("Target=\"") + 8;
    return part.substr(begin, part.find('"', begin) - begin);
  };
  EXPECT_EQ(targetOf("\\\\server\\share\\a b.xlsx#'S'!A1"), "file:///\\\\server\\share\\a%20b.xlsx");
  EXPECT_EQ(targetOf("C:\\x\\y.pdf"), "file:///C:\\x\\y.pdf");
  EXPECT_EQ(targetOf("d:/x.pdf"), "file:///d:/x.pdf");
  EXPECT_EQ(targetOf("x\\y.pdf"), "x%5Cy.pdf");
}

TEST(WorkbookLimits, CutTheDescriptionOfALink) {
  const std::string most(255, 't');
  for (const std::string& more : {std::string(), std::string("u")}) {
    MadeWorkbook workbook;
    scrivalen_begin_paragraph(workbook, nullptr);
    workbook.link("https://x.org/", "text", (most + more).c_str());
    workbook.end();
    EXPECT_TRUE(workbook.sheetHas("tooltip=\"" + most + "\"/>"));
    EXPECT_EQ(warningsOf(workbook), more.empty() ? "" : "0 2 1 descriptions of links cut at 255 characters\n");
  }
}

TEST(WorkbookLimits, EscapeWhatReadersTakeForEscapesInLinks) {
  MadeWorkbook workbook;
  scrivalen_begin_heading(workbook, 1, "x0041_1", nullptr);
  workbook.text("H");
  workbook.end();
  scrivalen_begin_paragraph(workbook, nullptr);
  workbook.link("https://x.org/_x0041_#_x0042_", "text", "_x0043_");
  workbook.end();
  scrivalen_begin_paragraph(workbook, nullptr);
  workbook.link("#x0041_1", "there");
  workbook.end();
  EXPECT_TRUE(workbook.sheetHas("location=\"_x005F_x0042_\" tooltip=\"_x005F_x0043_\"/>"));
  EXPECT_TRUE(workbook.sheetHas("location=\"_X0041_1\"/>"));
  EXPECT_TRUE(has(workbook.part("xl/workbook.xml"), "<definedName name=\"_X0041_1\">"));
  EXPECT_TRUE(has(workbook.part("xl/worksheets/_rels/sheet1.xml.rels"), "Target=\"https://x.org/_x0041_\""));
}

TEST(WorkbookLimits, EscapeWhatReadersTakeForEscapesInNamesOfFonts) {
  MadeWorkbook workbook;
  workbook.setting("font", "Font _x0041_");
  workbook.paragraph("a");
  EXPECT_TRUE(has(workbook.part("xl/styles.xml"), "<name val=\"Font _x005F_x0041_\"/>"));
}

// The address counts as the file has it, with "%C3%A4" for each letter.
TEST(WorkbookLimits, WriteAnAddressThatIsTooLongWithItsEscapes) {
  std::string address = "https://x.org/";
  for (int i = 0; i < 344; ++i) {
    address += "\u00E4";
  }
  MadeWorkbook longest;
  scrivalen_begin_paragraph(longest, nullptr);
  longest.link(address.c_str(), "a");
  longest.end();
  EXPECT_TRUE(longest.sheetHas("<hyperlink ref=\"A1\""));
  address += "\u00E4";
  MadeWorkbook longer;
  scrivalen_begin_paragraph(longer, nullptr);
  longer.link(address.c_str(), "a");
  longer.end();
  EXPECT_FALSE(longer.sheetHas("<hyperlink"));
  EXPECT_EQ(warningsOf(longer), "0 4 1 links that a sheet does not take, written as text\n");
}

TEST(WorkbookLimits, WriteAddressesThatAreNoLinks) {
  MadeWorkbook workbook;
  scrivalen_begin_paragraph(workbook, nullptr);
  workbook.link("https://x.org", "one");
  workbook.text(" and ");
  workbook.link("https://y.org", "two");
  workbook.end();
  scrivalen_begin_paragraph(workbook, nullptr);
  workbook.link("javascript:alert(1)", "three");
  workbook.end();
  scrivalen_begin_paragraph(workbook, nullptr);
  workbook.link(("https://x.org/" + std::string(2100, 'a')).c_str(), "four");
  workbook.end();
  const std::string cells = workbook.cells();
  EXPECT_TRUE(
      has(cells, "A1 \"one (https://x.org) and two (https://y.org)\"\nA2 \"three\"\nA3 \"four (https://x.org/"));
  EXPECT_FALSE(workbook.sheetHas("<hyperlink"));
  EXPECT_EQ(warningsOf(workbook),
            "0 4 1 links that a sheet does not take, written as text\n"
            "0 4 2 links within the text of a cell, written as text\n");
}

TEST(WorkbookLimits, WarnOfALinkInALongText) {
  const std::string before(80, 'x');
  for (const std::string& after : {std::string(), std::string("y")}) {
    MadeWorkbook workbook;
    workbook.beginColumn(SCRIVALEN_AUTO);
    scrivalen_begin_row(workbook, 0);
    scrivalen_begin_cell(workbook, nullptr);
    workbook.text(before.substr(3).c_str());
    workbook.link("https://x.org", "one");
    workbook.text(after.c_str());
    workbook.end(2);
    EXPECT_EQ(workbook.sheetHas("<hyperlink ref=\"A1\""), after.empty());
    EXPECT_EQ(warningsOf(workbook), after.empty() ? "" : "0 4 1 links within the text of a cell, written as text\n");
    EXPECT_EQ(workbook.sheetHas("one (https://x.org)y</t>"), !after.empty());
  }
}

TEST(WorkbookLimits, WriteTheAddressAfterTextOfSeveralFonts) {
  MadeWorkbook workbook;
  scrivalen_begin_paragraph(workbook, nullptr);
  scrivalen_begin_link(workbook, ("https://x.org/" + std::string(2100, 'a')).c_str(), nullptr);
  workbook.text("one ");
  workbook.span(SCRIVALEN_STRONG, "two");
  workbook.end(2);
  EXPECT_TRUE(has(workbook.sheet(), " (https://x.org/aaaa"));
  EXPECT_EQ(warningsOf(workbook), "0 4 1 links that a sheet does not take, written as text\n");
}

TEST(WorkbookLimits, HaveAsManyLinksAsASheetTakes) {
  MadeWorkbook workbook;
  for (int i = 0; i < 65'531; ++i) {
    scrivalen_begin_paragraph(workbook, nullptr);
    workbook.link("file:a", "b");
    workbook.end();
  }
  const std::string xml = workbook.sheet();
  EXPECT_TRUE(has(xml, "<hyperlink ref=\"A65530\""));
  EXPECT_FALSE(has(xml, "<hyperlink ref=\"A65531\""));
  EXPECT_TRUE(has(xml, "<t>b</t></is></c></row><row r=\"65531\"><c r=\"A65531\""));
  EXPECT_TRUE(has(xml, "<t>b (file:a)</t></is></c></row></sheetData>"));
  EXPECT_EQ(warningsOf(workbook), "0 4 1 links that a sheet does not take, written as text\n");
}

TEST(WorkbookLimits, KeepRowsWhoseColoursAreTooMany) {
  MadeWorkbook workbook;
  writeColoredRows(workbook, 600, "a");
  EXPECT_TRUE(has(workbook.cells(), "A600 \"a\"\n"));
  EXPECT_TRUE(has(workbook.part("xl/styles.xml"), "<fonts count=\"440\">"));
  EXPECT_EQ(warningsOf(workbook), "0 4 161 cells without their colours, beyond the formats of a workbook\n");
}

// A row of a cell in this colour with a word in bold.
void writeColoredBold(MadeWorkbook& workbook, const char* color, const char* before = "") {
  const scrivalen_cell_style style{sizeof style, 0, 0, 1, color, nullptr};
  scrivalen_begin_row(workbook, 0);
  scrivalen_begin_cell(workbook, &style);
  workbook.text(before);
  workbook.span(SCRIVALEN_STRONG, "bold");
  workbook.end(2);
}

TEST(WorkbookLimits, KeepBoldBeyondTheirColours) {
  MadeWorkbook workbook;
  writeColoredRows(workbook, 600, "a");
  writeColoredBold(workbook, "#123456");
  EXPECT_TRUE(has(workbook.cells(), "A601 \"bold\" bold\n"));
  EXPECT_EQ(warningsOf(workbook), "0 4 162 cells without their colours, beyond the formats of a workbook\n");
}

TEST(WorkbookLimits, KeepBoldWithinACellBeyondTheirColours) {
  MadeWorkbook workbook;
  writeColoredRows(workbook, 600, "a");
  writeColoredBold(workbook, "#123456", "plain ");
  EXPECT_TRUE(workbook.sheetHas("<r><rPr><b/><sz val=\"11\"/><rFont val=\"Calibri\"/></rPr><t>bold</t></r>"));
}

TEST(WorkbookLimits, KeepTheLooksOfLinksBeyondOtherColours) {
  MadeWorkbook workbook;
  writeColoredRows(workbook, 600, "a");
  scrivalen_begin_row(workbook, 0);
  scrivalen_begin_cell(workbook, nullptr);
  workbook.link("https://x.org", "link");
  workbook.end(2);
  EXPECT_TRUE(has(workbook.cells(), "A601 \"link\" color=0563C1\n"));
}

// Every size is a font of its own.
TEST(WorkbookLimits, KeepBoldBeyondTheirSizes) {
  MadeWorkbook workbook;
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  for (int i = 0; i < 600; ++i) {
    scrivalen_begin_row(workbook, 0);
    scrivalen_begin_cell(workbook, nullptr);
    scrivalen_begin_sized(workbook, 12 + i / 100.0);
    workbook.span(SCRIVALEN_EMPHASIS, "a");
    workbook.end(3);
  }
  writeColoredBold(workbook, "#123456");
  EXPECT_TRUE(has(workbook.cells(), "A601 \"bold\" bold\n"));
  EXPECT_TRUE(has(workbook.part("xl/styles.xml"), "<fonts count=\"472\">"));
  EXPECT_EQ(warningsOf(workbook),
            "0 4 1 cells without their colours, beyond the formats of a workbook\n"
            "0 4 131 cells without their font, beyond the formats of a workbook\n");
}

// Two of a workbook's 256 fills are fixed.
TEST(WorkbookLimits, KeepRowsWhoseBackgroundsAreTooMany) {
  MadeWorkbook workbook;
  writeColoredRows(workbook, 600, "2024-05-06", Colored::Cell);
  const std::string cells = workbook.cells();
  EXPECT_TRUE(has(cells, "A254 \"a\" fill=0000FD\nA255 \"a\"\n")) << cells.substr(cells.find("A253"), 80);
  EXPECT_TRUE(has(cells, "A600 45418 yyyy-mm-dd"));
  EXPECT_TRUE(has(workbook.part("xl/styles.xml"), "<fills count=\"256\">"));
  EXPECT_EQ(warningsOf(workbook), "0 4 346 cells without their colours, beyond the formats of a workbook\n");
}

// A table whose column has one of 300 formats.
void writeFormattedTable(MadeWorkbook& workbook, std::size_t number) {
  const std::string_view first = kSeparators[number % 30];
  const std::string format = std::string("dd").append(first).append("mm").append(kSeparators[number / 30]);
  workbook.beginColumn(SCRIVALEN_DATE, 0, (format + "yyyy").c_str());
  scrivalen_begin_row(workbook, 0);
  scrivalen_cell_date(workbook, 45418 - 25569);
  workbook.end(2);
}

TEST(WorkbookLimits, CountTheFormatsThatAreTooManyOnce) {
  MadeWorkbook workbook;
  for (std::size_t i = 0; i < 300; ++i) {
    scrivalen_begin_section(workbook, nullptr, nullptr);
    writeFormattedTable(workbook, i);
    workbook.end();
  }
  workbook.file();
  EXPECT_EQ(warningsOf(workbook), "0 4 136 columns without their format, beyond those of a workbook\n");
}

// The formats of texts keep their room.
TEST(WorkbookLimits, ShowValuesWhoseFormatsAreTooMany) {
  MadeWorkbook workbook;
  for (std::size_t i = 0; i < 300; ++i) {
    writeFormattedTable(workbook, i);
  }
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  workbook.row({"1.2345", "2024-05-06"});
  workbook.end();
  const std::string cells = workbook.cells();
  EXPECT_TRUE(has(cells, "A1 45418 dd mm yyyy\n"));
  EXPECT_TRUE(has(cells, "A599 45418 yyyy-mm-dd\nA601 1.2345 0.0000\nB601 45418 yyyy-mm-dd"))
      << cells.substr(cells.find("A597"));
  EXPECT_EQ(warningsOf(workbook), "0 4 136 columns without their format, beyond those of a workbook\n");
}

// Cells 1 to 499 have the colours that a workbook takes.
TEST(WorkbookLimits, ShowDatesAsDatesBeyondTheirColours) {
  MadeWorkbook workbook;
  writeColoredRows(workbook, 600, "2024-05-06");
  const std::string cells = workbook.cells();
  EXPECT_TRUE(has(cells, "A600 45418 yyyy-mm-dd")) << cells.substr(cells.find("A599"));
}
