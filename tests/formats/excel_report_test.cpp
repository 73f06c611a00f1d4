#include "formats/excel_report.h"

#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/files.h"
#include "support/open_errors.h"
#include "support/workbook.h"

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

}  // namespace

TEST(ExcelReport, WritesARowForEachTextOutsideOfRows) {
  EXPECT_EQ(written([](AReport& report) {
              report.Text(L"Heading", PARAGRAPH_HEADING1, L"", 0);
              report.Text(L"plain", PARAGRAPH_NONE, L"", 0);
              report.Text(L"paragraph", PARAGRAPH_NORMAL, L"", 0);
            }),
            "A1 \"Heading\" bold\n"
            "A2 \"plain\"\n"
            "A3 \"paragraph\" bold\n");
}

TEST(ExcelReport, WritesARowForEachRowOfATable) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginTable(L"disks", L"border=1");
              report.Row3(L"a", L"b", L"c", 0);
              report.Row2(L"001", L"e", 0, L" class=x", nullptr);
              report.EndTable(L"disks");
            }),
            "A1 \"a\"\nB1 \"b\"\nC1 \"c\"\n"
            "A2 \"001\"\nB2 \"e\"\n");
}

TEST(ExcelReport, WritesHeaderCellsBold) {
  EXPECT_EQ(written([](AReport& report) { report.Row2(L"a", L"b", 1, nullptr, nullptr); }),
            "A1 \"a\" bold\nB1 \"b\" bold\n");
}

TEST(ExcelReport, ColoursTheNextCellOnly) {
  EXPECT_EQ(written([](AReport& report) {
              report.SetCellColor(L"red");
              report.Row2(L"a", L"b", 1, nullptr, nullptr);
            }),
            "A1 \"a\" fill=FF0000\nB1 \"b\" bold\n");
}
