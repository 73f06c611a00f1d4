#include "formats/recorded_report.h"
#include "support/captured_log.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

namespace {

void writeInline(AReport& report, const wchar_t* text) { report.Text(text, PARAGRAPH_NONE, L"", 0); }

void writeRow(AReport& report, std::initializer_list<const wchar_t*> cells, int header = 0) {
  report.BeginRow(L"row", nullptr, 1);
  for (const wchar_t* cell : cells) {
    report.Cell(cell, header, nullptr);
  }
  report.EndRow(L"row");
}

}  // namespace

TEST(DocumentReportTables, HaveHeaderRowsAndRows) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginTable(L"stock", L"class=\"x\"");
              writeRow(report, {L"Item", L"Count"}, 1);
              writeRow(report, {L"nuts &amp; bolts", L"12"});
              report.BeginRow(L"row", nullptr, 2);
              report.Cell(L"rice", 1, nullptr);
              report.BeginCell(L"c", 0, nullptr);
              writeInline(report, L"7");
              report.EndCell(L"c", 0);
              report.EndRow(L"row");
              report.EndTable(L"stock");
            }),
            "table 'stock' left 5/12 right 5/5\nheader header:'Item' header:'Count'\n"
            "row 'nuts & bolts' '12'\nrow header:'rice' '7'\nend table\n");
}

TEST(DocumentReportTables, TakeTheStylesOfCells) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginTable(nullptr, nullptr);
              report.BeginRow(nullptr, nullptr, 4);
              report.Cell(L"a", 0, L" style=\"text-align:right;color:red\"");
              report.Cell(L"b", 0, L" colspan=\"2\" style=\"font-weight:bold;font-style:italic\"");
              report.BeginCell(nullptr, 0, L"white;blue");
              writeInline(report, L"c");
              report.EndCell(nullptr, 0);
              report.Cell(L"007", 0, L" data-type=\"text\"");
              report.EndRow(nullptr);
              report.EndTable(nullptr);
            }),
            "table right 1/1 left 0/0 left 0/0 left 1/1 left 3/3\n"
            "row #FF0000:'a' 2x'b' #FFFFFF:'c' text:'007'\n"
            "[\nspan kind 1\nspan kind 2\ntext 'b'\nend span kind 2\nend span kind 1\n]\nend table\n");
}

TEST(DocumentReportTables, GiveTheStyleOfARowToItsCells) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginRow(nullptr, L"align=\"center\" style=\"color:#010203\"", 2);
              report.Cell(L"a", 0, nullptr);
              report.Cell(L"b", 0, L" align=left");
              report.EndRow(nullptr);
              report.BeginRow(nullptr, nullptr, 2);
              report.Cell(L"c", 0, nullptr);
              report.Cell(L"d", 0, nullptr);
              report.EndRow(nullptr);
            }),
            "table left 1/1 left 1/1\nrow align2:#010203:'a' align1:#010203:'b'\nrow 'c' 'd'\nend table\n");
}

TEST(DocumentReportTables, ColorTheNextCell) {
  const CapturedLog log;
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginRow(nullptr, nullptr, 4);
              report.SetCellColor(L"red;white");
              report.Cell(L"a", 0, nullptr);
              report.Cell(L"b", 0, nullptr);
              report.SetCellColor(L"#0000FF;black");
              report.BeginCell(nullptr, 0, nullptr);
              writeInline(report, L"c");
              report.EndCell(nullptr, 0);
              report.SetCellColor(L"red;red");
              report.SetCellColor(nullptr);
              report.Cell(L"d", 0, nullptr);
              report.SetCellColor(L"nocolor");
              report.Cell(L"e", 0, nullptr);
              report.EndRow(nullptr);
            }),
            "table left 1/1 left 1/1 left 1/1 left 1/1 left 1/1\n"
            "row #FF0000:'a' 'b' #0000FF:'c' 'd' 'e'\nend table\n");
  ASSERT_EQ(log.lines().size(), 1u);
  EXPECT_TRUE(log.lines()[0].ends_with(L"a': a cell's color that is neither a name of CSS nor #RRGGBB."))
      << log.lines()[0];
}

TEST(DocumentReportTables, HaveRowsWithoutATable) {
  EXPECT_EQ(recorded([](AReport& report) {
              writeInline(report, L"before");
              writeRow(report, {L"a"});
              writeRow(report, {L"b"});
              writeInline(report, L"after");
              report.EndTable(L"t");
              report.EndRow(L"row");
              report.EndCell(nullptr, 0);
            }),
            "paragraph\ntext 'before'\nend paragraph\ntable left 1/1\nrow 'a'\nrow 'b'\nend table\n"
            "paragraph\ntext 'after'\nend paragraph\n");
}

TEST(DocumentReportTables, HaveCellsWithoutARow) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.Cell(L"a", 0, nullptr);
              report.BeginCell(nullptr, 0, nullptr);
              writeInline(report, L"b");
              report.EndCell(nullptr, 0);
              writeInline(report, L"after");
              report.BeginTable(L"t", nullptr);
              report.Cell(L"c", 0, nullptr);
              writeRow(report, {L"d"});
              report.EndTable(L"t");
            }),
            "table left 1/1 left 1/1\nrow 'a' 'b'\nend table\nparagraph\ntext 'after'\nend paragraph\n"
            "table 't' left 1/1\nrow 'c'\nrow 'd'\nend table\n");
}

TEST(DocumentReportTables, TakeTextBetweenCellsForACell) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginRow(nullptr, nullptr, 5);
              writeInline(report, L"a");
              report.EndOfLine();
              report.Space();
              writeInline(report, L"b");
              report.Cell(L"c", 0, nullptr);
              report.Space();
              report.EndOfLine();
              report.Text(L"d", PARAGRAPH_NORMAL, L"", 0);
              report.Text(L"e", PARAGRAPH_NORMAL, L"", 0);
              report.BeginCell(nullptr, 0, nullptr);
              report.EndCell(nullptr, 0);
              report.EndRow(nullptr);
            }),
            "table left 2/2 left 1/1 left 1/1 left 1/1 left 0/0\nrow 'a\\n\xC2\xA0"
            "b' 'c' 'd' 'e' ''\nend table\n");
}

TEST(DocumentReportTables, AreInterruptedByTextBetweenRows) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginTable(L"t", nullptr);
              writeRow(report, {L"a"});
              report.Text(L"Part two", PARAGRAPH_HEADING2, L"", 0);
              writeRow(report, {L"b"});
              report.BeginRow(nullptr, nullptr, 1);
              report.Cell(L"c", 0, nullptr);
              report.Text(L"Part three", PARAGRAPH_HEADING2, L"", 0);
              report.EndTable(L"t");
            }),
            "table 't' left 1/1\nrow 'a'\nend table\n"
            "heading 2 'Part two' @part-two\ntext 'Part two'\nend heading 2\n"
            "table 't' left 1/1\nrow 'b'\nrow 'c'\nend table\n"
            "heading 2 'Part three' @part-three\ntext 'Part three'\nend heading 2\n");
}

TEST(DocumentReportTables, HaveParagraphsOfACellAsItsLines) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginRow(nullptr, nullptr, 1);
              report.BeginCell(nullptr, 0, nullptr);
              report.Text(L"Title", PARAGRAPH_HEADING3, L"", 0);
              report.Text(L"a", PARAGRAPH_NORMAL, L"", 0);
              report.BeginParagraph(PARAGRAPH_NORMAL, nullptr);
              writeInline(report, L"b");
              report.EndOfLine();
              writeInline(report, L"c");
              report.EndParagraph(PARAGRAPH_NORMAL);
              report.EndCell(nullptr, 0);
              report.EndRow(nullptr);
            }),
            "table left 5/5\nrow 'Title\\na\\nb\\nc'\n[\nspan kind 1\ntext 'Title'\nend span kind 1\n"
            "text '\\n'\ntext 'a'\ntext '\\n'\ntext 'b'\ntext '\\n'\ntext 'c'\n]\nend table\n");
}

TEST(DocumentReportTables, EndACellWhereTheNextBegins) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginTable(L"t", nullptr);
              report.BeginRow(nullptr, nullptr, 3);
              report.BeginCell(nullptr, 0, nullptr);
              writeInline(report, L"a");
              report.BeginCell(nullptr, 0, nullptr);
              writeInline(report, L"b");
              report.Cell(L"c", 0, nullptr);
              report.BeginCell(nullptr, 0, nullptr);
              writeInline(report, L"d");
              report.BeginRow(nullptr, nullptr, 3);
              report.Cell(L"e", 0, nullptr);
              report.EndTable(L"t");
              writeInline(report, L"after");
            }),
            "table 't' left 1/1 left 1/1 left 1/1 left 1/1\nrow 'a' 'b' 'c' 'd'\nrow 'e' '' '' ''\nend table\n"
            "paragraph\ntext 'after'\nend paragraph\n");
}

TEST(DocumentReportTables, HaveATableInACellAsItsLines) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginTable(L"outer", nullptr);
              report.BeginRow(nullptr, nullptr, 2);
              report.BeginCell(nullptr, 0, nullptr);
              writeInline(report, L"list");
              report.BeginTable(L"inner", nullptr);
              writeRow(report, {L"a", L"b"});
              report.BeginRow(nullptr, nullptr, 2);
              report.BeginCell(nullptr, 0, nullptr);
              writeInline(report, L"c");
              report.EndCell(nullptr, 0);
              report.Cell(L"d", 0, nullptr);
              report.EndRow(nullptr);
              report.EndTable(L"inner");
              writeInline(report, L"end");
              report.EndCell(nullptr, 0);
              report.Cell(L"next", 0, nullptr);
              report.EndRow(nullptr);
              report.EndTable(L"outer");
            }),
            "table 'outer' left 4/4 left 4/4\nrow 'list\\na b\\nc d\\nend' 'next'\nend table\n");
}

TEST(DocumentReportTables, EndATableInACellWithTheCell) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginTable(L"outer", nullptr);
              report.BeginRow(nullptr, nullptr, 2);
              report.BeginCell(nullptr, 0, nullptr);
              report.BeginTable(L"inner", nullptr);
              report.BeginRow(nullptr, nullptr, 1);
              report.BeginCell(nullptr, 0, nullptr);
              writeInline(report, L"a");
              report.EndRow(nullptr);
              report.EndCell(nullptr, 0);
              report.Cell(L"b", 0, nullptr);
              report.EndRow(nullptr);
              writeRow(report, {L"c", L"d"});
              report.EndTable(L"outer");
            }),
            "table 'outer' left 1/1 left 1/1\nrow 'a' 'b'\nrow 'c' 'd'\nend table\n");
}

TEST(DocumentReportTables, AreNothingWithoutRows) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginTable(L"t", nullptr);
              report.BeginRow(nullptr, nullptr, 3);
              report.EndRow(nullptr);
              report.EndTable(L"t");
            }),
            "");
}

TEST(DocumentReportTables, HaveAnchorsOfRowsInTheNextCell) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginTable(L"t", nullptr);
              report.Ancor(L"first");
              report.BeginRow(nullptr, nullptr, 1);
              report.Cell(L"a", 0, nullptr);
              report.EndRow(nullptr);
              report.EndTable(L"t");
            }),
            "table 't' left 1/1\nrow 'a'\n[\nanchor @first\ntext 'a'\n]\nend table\n");
}

TEST(DocumentReportTables, HaveTheCompositeRows) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginTable(L"t", nullptr);
              report.AttributeRowHeader();
              report.Row2(L"a", L"b", 0, nullptr, L" align=\"right\"");
              report.Row2NotEmptyWithQuote(L"c", L"R & D");
              report.Row2NotEmptyWithQuote(L"c", L"");
              report.EndTable(L"t");
            }),
            "table 't' left 9/16 left 5/5\nheader header:'Report Attribute' header:'Value'\nrow 'a' align3:'b'\n"
            "row 'c' 'R & D'\nend table\n");
}

TEST(DocumentReportTables, HaveContentsInACellAsItsLines) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginRow(nullptr, nullptr, 1);
              report.BeginCell(nullptr, 0, nullptr);
              writeInline(report, L"see");
              report.BeginToc();
              report.TocItem(L"one", L"One", 0);
              report.EndToc();
              report.EndCell(nullptr, 0);
              report.EndRow(nullptr);
              report.Ancor(L"one");
            }),
            "table left 3/3\nrow 'see\\nOne'\n[\ntext 'see\\n'\nlink ->#one\ntext 'One'\nend link\n]\n"
            "end table\nanchor @one\n");
}

TEST(DocumentReportTables, ColorACellOverItsAttributes) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.SetCellColor(L"red;blue");
              report.Cell(L"a", 0, L" style=\"color:lime\" align=right");
              report.Cell(L"b", 0, L" style=\"color:lime\"");
            }),
            "table right 1/1 left 1/1\nrow #FF0000:'a' #00FF00:'b'\nend table\n");
}
