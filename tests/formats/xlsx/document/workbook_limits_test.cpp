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

// A table with a colour of its own in each row. All texts but the last are "a".
void writeColoredRows(MadeWorkbook& workbook, int rows, const char* last) {
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  for (int i = 0; i < rows; ++i) {
    char color[16];
    std::snprintf(color, sizeof color, "#%06X", i);
    scrivalen_begin_row(workbook, 0);
    const scrivalen_cell_style style{sizeof style, 0, 0, 1, color, nullptr};
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
  EXPECT_EQ(warningsOf(workbook), "0 4 1 links that a sheet does not take, written as text\n");
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
    workbook.link("#a", "b");
    workbook.end();
  }
  const std::string xml = workbook.sheet();
  EXPECT_TRUE(has(xml, "<hyperlink ref=\"A65530\""));
  EXPECT_FALSE(has(xml, "<hyperlink ref=\"A65531\""));
}

TEST(WorkbookLimits, KeepRowsWhoseColoursAreTooMany) {
  MadeWorkbook workbook;
  writeColoredRows(workbook, 600, "a");
  EXPECT_TRUE(has(workbook.cells(), "A600 \"a\"\n"));
  EXPECT_TRUE(has(workbook.part("xl/styles.xml"), "<fonts count=\"500\">"));
  EXPECT_EQ(warningsOf(workbook), "0 4 101 cells without their colours, beyond the formats of a workbook\n");
}

// Cells 1 to 499 have the colours that a workbook takes.
TEST(WorkbookLimits, ShowDatesAsDatesBeyondTheirColours) {
  MadeWorkbook workbook;
  writeColoredRows(workbook, 600, "2024-05-06");
  const std::string cells = workbook.cells();
  EXPECT_TRUE(has(cells, "A600 45418 yyyy-mm-dd")) << cells.substr(cells.find("A599"));
}
