#include "formats/xlsx/excel_report.h"

#include "support/captured_log.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace scrivalen::test;

TEST(ExcelReport, ReportsWhyItCannotBeClosed) {
  const CapturedLog log;
  ExcelReport report;
  EXPECT_EQ(report.Open(L"/dev/full"), REPORT_OK);
  report.Text(L"a", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), L"File write error for '/dev/full'. No space left on device");
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{report.GetError()});
  EXPECT_EQ(report.Close(), REPORT_OK);
}
