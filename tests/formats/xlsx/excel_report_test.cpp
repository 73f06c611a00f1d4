#include "formats/xlsx/excel_report.h"

#include "scrivalen/multi_report.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/documents/report_state.h"
#include "support/documents/workbook.h"
#include "support/faults/open_errors.h"
#include "support/files.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

namespace {

// The cells of a report.
template <typename Action>
std::string written(Action action) {
  const TemporaryFolder folder;
  ExcelReport report;
  EXPECT_EQ(report.Open((folder / L"a.xlsx").c_str()), REPORT_OK);
  action(report);
  EXPECT_EQ(report.Close(), REPORT_OK);
  return readCells(folder / L"a.xlsx");
}

void writeRow(AReport& report, const wchar_t* text) {
  report.BeginRow(L"row", nullptr, 1);
  report.Cell(text, 0, nullptr);
  report.EndRow(L"row");
}

}  // namespace

TEST(ExcelReport, WritesARowForEachTextOutsideARow) {
  EXPECT_EQ(written([](AReport& report) {
              report.Text(L"a", PARAGRAPH_NONE, L"", 0);
              report.Text(L"b", PARAGRAPH_NONE, L"class=x", 1);
              report.Text(L"", PARAGRAPH_NONE, L"", 0);
              report.Text(L"d", PARAGRAPH_NONE, nullptr, 0);
            }),
            "A1 \"a\"\nA2 \"b\"\nA4 \"d\"\n");
}

TEST(ExcelReport, WritesHeadingsAndParagraphsBold) {
  EXPECT_EQ(written([](AReport& report) {
              for (const int type : {1, 2, 3, 4, 5, 6, 7, 42, -1}) {
                report.Text(L"x", static_cast<PARAGRAPH_TYPE>(type), L"", 0);
              }
              report.Text(L"y", PARAGRAPH_NONE, L"", 0);
            }),
            "A1 \"x\" bold\nA2 \"x\" bold\nA3 \"x\" bold\nA4 \"x\" bold\nA5 \"x\" bold\nA6 \"x\" bold\n"
            "A7 \"x\" bold\nA8 \"x\" bold\nA9 \"x\" bold\n"
            "A10 \"y\"\n");
}

TEST(ExcelReport, WritesATextInsideARowAsAnotherCell) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginRow(L"row", nullptr, 3);
              report.Cell(L"a", 0, nullptr);
              report.Text(L"b", PARAGRAPH_NONE, L"", 0);
              report.Text(L"c", PARAGRAPH_HEADING1, L"", 0);
              report.EndRow(L"row");
              report.Text(L"d", PARAGRAPH_NONE, L"", 0);
            }),
            "A1 \"a\"\nB1 \"b\"\nC1 \"c\" bold\nA2 \"d\"\n");
}

TEST(ExcelReport, WritesTheTextsOfBegunAndEndedCells) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginRow(L"row", nullptr, 2);
              report.BeginCell(L"name", 1, L" class=x");
              report.Text(L"a", PARAGRAPH_NONE, L"", 0);
              report.EndCell(L"name", 1);
              report.BeginCell(nullptr, 0, nullptr);
              report.EndCell(nullptr, 0);
              report.Text(L"b", PARAGRAPH_NONE, L"", 0);
              report.EndRow(L"row");
            }),
            "A1 \"a\"\nB1 \"b\"\n");
}

TEST(ExcelReport, WritesARowForEachRowOfATable) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginTable(L"disks", L"border=1");
              report.Row3(L"a", L"b", L"c", 0);
              report.Row2(L"001", L"e", 0, L" class=x", nullptr);
              report.EndTable(L"disks");
              report.BeginTable(nullptr, nullptr);
              report.EndTable(nullptr);
              report.BeginTable(L"more", nullptr);
              report.BeginRow(nullptr, L"class=x", -1);
              report.Cell(L"f", 0, nullptr);
              report.EndRow(nullptr);
              report.EndTable(L"more");
            }),
            "A1 \"a\"\nB1 \"b\"\nC1 \"c\"\n"
            "A2 \"001\"\nB2 \"e\"\n"
            "A3 \"f\"\n");
}

TEST(ExcelReport, WritesHeaderCellsBold) {
  EXPECT_EQ(written([](AReport& report) {
              report.Row2(L"a", L"b", 1, nullptr, nullptr);
              report.Row2(L"c", L"d", -1, nullptr, nullptr);
              report.Row2(L"e", L"f", 0, nullptr, nullptr);
            }),
            "A1 \"a\" bold\nB1 \"b\" bold\nA2 \"c\" bold\nB2 \"d\" bold\nA3 \"e\"\nB3 \"f\"\n");
}

TEST(ExcelReport, ColoursOnlyTheNextCellAndNotInBold) {
  EXPECT_EQ(written([](AReport& report) {
              report.SetCellColor(L"red");
              report.Row2(L"a", L"b", 0, nullptr, nullptr);
              report.SetCellColor(L"#00FF00;navy");
              report.Row2(L"c", L"d", 1, nullptr, nullptr);
              report.BeginStyle(STYLE_BOLD, 0);
              report.SetCellColor(L"blue");
              report.Row2(L"e", L"f", 1, nullptr, nullptr);
            }),
            "A1 \"a\" fill=FF0000\nB1 \"b\"\n"
            "A2 \"c\" color=00FF00 fill=000080\nB2 \"d\" bold\n"
            "A3 \"e\" fill=0000FF\nB3 \"f\" bold\n");
}

TEST(ExcelReport, WritesACellWithAnyColourTextNotInBold) {
  const CapturedLog log;
  EXPECT_EQ(written([](AReport& report) {
              report.BeginStyle(STYLE_BOLD, 0);
              report.SetCellColor(L"blurple");
              report.Row2(L"a", L"b", 1, nullptr, nullptr);
              report.SetCellColor(L" ");
              report.Text(L"c", PARAGRAPH_HEADING1, L"", 0);
            }),
            "A1 \"a\"\nB1 \"b\" bold\nA2 \"c\"\n");
}

TEST(ExcelReport, ColoursTheNextTextToo) {
  EXPECT_EQ(written([](AReport& report) {
              report.SetCellColor(L"red");
              report.Text(L"a", PARAGRAPH_HEADING1, L"", 0);
              report.Text(L"b", PARAGRAPH_HEADING1, L"", 0);
              report.BeginRow(L"row", nullptr, 2);
              report.SetCellColor(L"lime");
              report.Text(L"c", PARAGRAPH_NONE, L"", 0);
              report.Cell(L"d", 0, nullptr);
              report.EndRow(L"row");
            }),
            "A1 \"a\" fill=FF0000\nA2 \"b\" bold\nA3 \"c\" fill=00FF00\nB3 \"d\"\n");
}

TEST(ExcelReport, UsesTheLastColourAndAnEmptyOneResetsIt) {
  EXPECT_EQ(written([](AReport& report) {
              report.SetCellColor(L"red");
              report.SetCellColor(L"lime");
              writeRow(report, L"a");
              report.SetCellColor(L"red");
              report.SetCellColor(L"");
              writeRow(report, L"b");
              report.SetCellColor(L"red");
              report.SetCellColor(nullptr);
              writeRow(report, L"c");
            }),
            "A1 \"a\" fill=00FF00\nA2 \"b\"\nA3 \"c\"\n");
}

TEST(ExcelReport, KeepsAPendingColourForAMuchLaterCell) {
  EXPECT_EQ(written([](AReport& report) {
              report.SetCellColor(L"red");
              report.BeginTable(L"t", nullptr);
              report.BeginRow(L"row", nullptr, 0);
              report.EndRow(L"row");
              report.BeginParagraph(PARAGRAPH_NORMAL, L"");
              report.EndParagraph(PARAGRAPH_NORMAL);
              writeRow(report, L"a");
            }),
            "A2 \"a\" fill=FF0000\n");
}

TEST(ExcelReport, WritesBoldUntilTheStyleEnds) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginStyle(STYLE_BOLD, 0);
              report.Text(L"a", PARAGRAPH_NONE, L"", 0);
              writeRow(report, L"b");
              report.BeginStyle(STYLE_BOLD, 1);
              report.EndStyle(STYLE_BOLD, 0);
              report.Text(L"c", PARAGRAPH_NONE, L"", 0);
              report.EndStyle(STYLE_BOLD, 0);
              writeRow(report, L"d");
            }),
            "A1 \"a\" bold\nA2 \"b\" bold\nA3 \"c\"\nA4 \"d\"\n");
}

TEST(ExcelReport, IgnoresOtherStyles) {
  EXPECT_EQ(written([](AReport& report) {
              for (const int style : {1, 2, 3, -1}) {
                report.BeginStyle(static_cast<REPORT_STYLE>(style), 14);
              }
              writeRow(report, L"a");
              report.BeginStyle(STYLE_BOLD, 0);
              for (const int style : {1, 2, 3, -1}) {
                report.EndStyle(static_cast<REPORT_STYLE>(style), 14);
              }
              writeRow(report, L"b");
            }),
            "A1 \"a\"\nA2 \"b\" bold\n");
}

TEST(ExcelReport, IgnoresCallsThatSpreadsheetsDoNotSupport) {
  EXPECT_EQ(written([](AReport& report) {
              report.EndOfLine();
              report.Space();
              report.BeginAncor(L"name");
              report.EndAncor();
              report.Ancor(L"name");
              report.Link(L"text", L"#target");
              report.BeginToc();
              report.TocItem(L"anchor", L"text", 1);
              report.EndToc();
              report.SetColumnSeparator(L";");
              for (const int option : {0, 1, 100}) {
                report.SetReportOption(static_cast<REPORT_OPTION>(option), 1);
              }
              EXPECT_EQ(report.BeginSubDocument(L"folder", L"file", L"title"), REPORT_OK);
              report.EndSubDocument();
              report.AddProperty(L"%TITLE%", L"title");
              report.BeginParagraph(PARAGRAPH_HEADING1, L"class=x");
              report.EndParagraph(PARAGRAPH_HEADING1);
              report.BeginCell(L"cell", 1, nullptr);
              report.EndCell(L"cell", 1);
              report.Text(L"end", PARAGRAPH_NONE, L"", 0);
            }),
            "A1 \"end\"\n");
}

TEST(ExcelReport, WritesTheTextsOfAParagraphAsRows) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginParagraph(PARAGRAPH_NORMAL, L"");
              report.Text(L"a", PARAGRAPH_NONE, L"", 0);
              report.Text(L"b", PARAGRAPH_NONE, L"", 0);
              report.EndParagraph(PARAGRAPH_NORMAL);
            }),
            "A1 \"a\"\nA2 \"b\"\n");
}

TEST(ExcelReport, DoesNotEscapeTexts) {
  ExcelReport report;
  EXPECT_EQ(report.Quoting(L"a<b> & \"c\""), L"a<b> & \"c\"");
  EXPECT_EQ(written([](AReport& target) {
              target.Text(L"<em>&amp;</em>", PARAGRAPH_NONE, L"", 1);
              target.Row2NotEmptyWithQuote(L"a<b", L"c & d");
            }),
            "A1 \"<em>&amp;</em>\"\nA2 \"a<b\"\nB2 \"c & d\"\n");
}

TEST(ExcelReport, TreatsNullTextsAsEmpty) {
  EXPECT_EQ(written([](AReport& report) {
              report.Text(nullptr, PARAGRAPH_NONE, nullptr, 0);
              report.Text(nullptr, PARAGRAPH_HEADING1, nullptr, 0);
              report.BeginRow(nullptr, nullptr, 0);
              report.Cell(nullptr, 0, nullptr);
              report.Cell(nullptr, 1, nullptr);
              report.EndRow(nullptr);
            }),
            "A2 \"\" bold\nB3 \"\" bold\n");
}

TEST(ExcelReport, DropsACellOutsideARowAndLogsIt) {
  const CapturedLog log;
  EXPECT_EQ(written([](AReport& report) {
              report.Cell(L"lost", 0, nullptr);
              writeRow(report, L"a");
              report.Cell(L"lost", 1, nullptr);
            }),
            "A1 \"a\"\n");
  ASSERT_EQ(log.lines().size(), 1u);
  EXPECT_TRUE(log.lines()[0].ends_with(L"a.xlsx': 2 cells dropped outside of any row."));
}

TEST(ExcelReport, EndsAnOpenRowWhenTheNextBegins) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginRow(L"row", nullptr, 1);
              report.Cell(L"a", 0, nullptr);
              report.BeginRow(L"row", nullptr, 1);
              report.Cell(L"b", 0, nullptr);
              report.EndRow(L"row");
              report.EndRow(L"row");
              report.Text(L"c", PARAGRAPH_NONE, L"", 0);
            }),
            "A1 \"a\"\nA2 \"b\"\nA3 \"c\"\n");
}

TEST(ExcelReport, KeepsBoldAndAColourForItsNextFile) {
  const TemporaryFolder folder;
  ExcelReport report;
  EXPECT_EQ(report.Open((folder / L"a.xlsx").c_str()), REPORT_OK);
  report.BeginStyle(STYLE_BOLD, 0);
  report.SetCellColor(L"red");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.Open((folder / L"b.xlsx").c_str()), REPORT_OK);
  report.Row2(L"a", L"b", 0, nullptr, nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(readCells(folder / L"b.xlsx"), "A1 \"a\" fill=FF0000\nB1 \"b\" bold\n");
}

TEST(ExcelReport, OpensItsOwnRowThroughOverrides) {
  struct Overriding : ExcelReport {
    void BeginRow(const wchar_t* name, const wchar_t* attributes, int columns) override {
      calls += name || attributes || columns != 0 ? "wrong" : "begin ";
      ExcelReport::BeginRow(name, attributes, columns);
    }
    void EndRow(const wchar_t* name) override {
      calls += name ? "wrong" : "end";
      ExcelReport::EndRow(name);
    }
    std::string calls;
  } report;
  const TemporaryFolder folder;
  EXPECT_EQ(report.Open((folder / L"a.xlsx").c_str()), REPORT_OK);
  report.Text(L"a", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.calls, "begin end");
  EXPECT_EQ(report.Close(), REPORT_OK);
}

TEST(ExcelReport, BeginsACellForAParagraphThroughOverrides) {
  struct Overriding : ExcelReport {
    void BeginCell(const wchar_t* text, int header, const wchar_t* attributes) override {
      calls += text || header != 0 || attributes ? "wrong" : "begin ";
    }
    void EndCell(const wchar_t* text, int header) override { calls += text || header != 0 ? "wrong" : "end"; }
    std::string calls;
  } report;
  report.BeginParagraph(PARAGRAPH_NORMAL, L"class=x");
  report.EndParagraph(PARAGRAPH_NORMAL);
  EXPECT_EQ(report.calls, "begin end");
}

TEST(ExcelReport, PassesItsStylesToTheWriter) {
  const CapturedLog log;
  const TemporaryFolder folder;
  ExcelReport report;
  report.SetStyles(L"bold { color: white; background-color: navy } cell { font-size: 9; margin: 0 }");
  report.SetOutputFileName((folder / L"a.xlsx").c_str());
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(ReportState::openFlag(report), 0);
  report.Row2(L"a", L"b", 1, nullptr, nullptr);
  report.Row2(L"c", L"d", 0, nullptr, nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(readCells(folder / L"a.xlsx"),
            "A1 \"a\" bold color=FFFFFF fill=000080\nB1 \"b\" bold color=FFFFFF fill=000080\n"
            "A2 \"c\" 9\nB2 \"d\" 9\n");
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"'" + (folder / L"a.xlsx") +
                                                   L"': the style sheet is not understood: 'cell' has no 'margin'."});
}

TEST(ExcelReport, ReportsWhyItCannotBeOpened) {
  const CapturedLog log;
  const TemporaryFolder folder;
  ExcelReport report;
  report.SetOutputFileName((folder / L"missing/a.xlsx").c_str());
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(folder / L"missing/a.xlsx"));
  EXPECT_EQ(report.Open(nullptr), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(L""));
  EXPECT_TRUE(log.lines().empty());
}

TEST(ExcelReport, RefusesAnotherFileWhileItIsOpen) {
  const TemporaryFolder folder;
  ExcelReport report;
  EXPECT_EQ(report.Open((folder / L"a.xlsx").c_str()), REPORT_OK);
  writeRow(report, L"a");
  EXPECT_EQ(report.Open((folder / L"b.xlsx").c_str()), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(),
            L"File open/create error for '" + (folder / L"b.xlsx") + L"'. The report is still open.");
  writeRow(report, L"b");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(readCells(folder / L"a.xlsx"), "A1 \"a\"\nA2 \"b\"\n");
  EXPECT_FALSE(exists(folder / L"b.xlsx"));
}

TEST(ExcelReport, KeepsTheOpenRowWhenItRefusesAnotherFile) {
  const TemporaryFolder folder;
  ExcelReport report;
  EXPECT_EQ(report.Open((folder / L"a.xlsx").c_str()), REPORT_OK);
  report.BeginRow(L"row", nullptr, 2);
  report.Cell(L"a", 0, nullptr);
  EXPECT_EQ(report.Open((folder / L"b.xlsx").c_str()), REPORT_FILE_ERROR);
  report.Text(L"b", PARAGRAPH_NONE, L"", 0);
  report.EndRow(L"row");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(readCells(folder / L"a.xlsx"), "A1 \"a\"\nB1 \"b\"\n");
}

TEST(ExcelReport, MayBeClosedWithoutAFile) {
  const CapturedLog log;
  ExcelReport report;
  writeRow(report, L"a");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_STREQ(report.GetError(), L"");
  EXPECT_TRUE(log.lines().empty());
}

TEST(ExcelReport, IgnoresCellsAfterClose) {
  const CapturedLog log;
  const TemporaryFolder folder;
  ExcelReport report;
  EXPECT_EQ(report.Open((folder / L"a.xlsx").c_str()), REPORT_OK);
  writeRow(report, L"a");
  EXPECT_EQ(report.Close(), REPORT_OK);
  writeRow(report, L"b");
  report.Text(L"c", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(readCells(folder / L"a.xlsx"), "A1 \"a\"\n");
  EXPECT_TRUE(log.lines().empty());
}

TEST(ExcelReport, CanBeAChildOfAMultiReport) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_EXCEL, (folder / L"a.xlsx").c_str(), nullptr);
  report.AddReport(FORMAT_TEXT, (folder / L"a.txt").c_str(), nullptr);
  report.SetStyles(L"cell { color: red }");
  EXPECT_EQ(report.Open(), REPORT_OK);
  report.SetCellColor(L"lime");
  report.Row2(L"a", L"b", 0, nullptr, nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(readCells(folder / L"a.xlsx"), "A1 \"a\" color=FF0000 fill=00FF00\nB1 \"b\" color=FF0000\n");
  EXPECT_EQ(fromMarkedUtf16(bytesOf(folder / L"a.txt")), "a\tb\r\n");
}

TEST(ExcelReport, LeftOpenByItsMultiReportLeavesItsFileHeld) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a.xlsx", "earlier");
  {
    MultiReport report;
    report.AddReport(FORMAT_EXCEL, (folder / L"a.xlsx").c_str(), nullptr);
    EXPECT_EQ(report.Open(), REPORT_OK);
    report.Row2(L"a", L"b", 0, nullptr, nullptr);
  }
  ExcelReport another;
  EXPECT_EQ(another.Open((folder / L"a.xlsx").c_str()), REPORT_FILE_ERROR);
}

TEST(ExcelReport, BeginsEveryFileOutsideARow) {
  const TemporaryFolder folder;
  ExcelReport report;
  report.BeginRow(nullptr, nullptr, 0);
  EXPECT_EQ(report.Open((folder / L"a.xlsx").c_str()), REPORT_OK);
  report.Text(L"a", PARAGRAPH_NONE, L"", 0);
  report.BeginRow(nullptr, nullptr, 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.Open((folder / L"b.xlsx").c_str()), REPORT_OK);
  report.Text(L"b", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(readCells(folder / L"a.xlsx"), "A1 \"a\"\n");
  EXPECT_EQ(readCells(folder / L"b.xlsx"), "A1 \"b\"\n");
}

TEST(ExcelReport, UsesUpAColourForACellOutsideARow) {
  const CapturedLog log;
  EXPECT_EQ(written([](AReport& report) {
              report.SetCellColor(L"red");
              report.Cell(L"lost", 0, nullptr);
              report.Row2(L"a", L"b", 0, nullptr, nullptr);
            }),
            "A1 \"a\"\nB1 \"b\"\n");
}
