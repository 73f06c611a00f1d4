#include "formats/pdf/layout/pdf_report.h"
#include "support/out_of_memory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace scrivalen::test;

struct PdfReportOnAFullDiskWithoutMemory : testing::TestWithParam<Extent> {};

TEST_P(PdfReportOnAFullDiskWithoutMemory, TellsOneReasonInOneLine) {
  const UnfailingLog log;
  PDFReport report;
  runOutOfMemory([&](std::size_t nth) {
    UnfailingLog::lines().clear();
    EXPECT_EQ(report.Open(L"/dev/full"), REPORT_OK);
    report.Text(L"a", PARAGRAPH_NORMAL, L"", 0);
    const FailingAllocations memory(nth, GetParam());
    EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
    const UnfailingAllocations ownMemory;
    EXPECT_STRNE(report.GetError(), L"");
    EXPECT_EQ(UnfailingLog::lines(), std::vector<std::wstring>{report.GetError()});
    return memory.hasFailed();
  });
}

INSTANTIATE_TEST_SUITE_P(Pdf, PdfReportOnAFullDiskWithoutMemory, testing::Values(Extent::One, Extent::AllFromThere));

TEST(ReportFileOnAFullDiskWithoutMemory, IsClosedAllTheSame) {
  const UnfailingLog log;
  ReportFile file;
  ASSERT_TRUE(file.Open(L"/dev/full"));
  file.Write("a", 1);
  {
    const FailingAllocations memory(1, Extent::AllFromThere);
    EXPECT_FALSE(file.Close());
  }
  EXPECT_FALSE(file.IsOpen());
  EXPECT_EQ(UnfailingLog::lines().size(), 1u);
  EXPECT_TRUE(file.Open(L"/dev/full"));
  EXPECT_TRUE(file.Close());
}
