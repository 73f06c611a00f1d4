#include "formats/pdf/layout/pdf_report.h"
#include "support/faults/out_of_memory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace scrivalen::test;

namespace {

const std::wstring kNoRoom = L"No space left on device";
const std::wstring kNoMemory = L"There is not enough memory";

std::wstring sentence(const std::wstring& reason) { return L"File write error for '/dev/full'. " + reason; }

// When there is no memory for the whole message, only its reason is reported.
bool isOfAFailure(const std::wstring& text) {
  return text == sentence(kNoRoom) || text == sentence(kNoMemory) || text == kNoRoom || text == kNoMemory;
}

}  // namespace

struct PdfReportOnAFullDiskWithoutMemory : testing::TestWithParam<Extent> {};

TEST_P(PdfReportOnAFullDiskWithoutMemory, LogsOneLine) {
  const UnfailingLog log;
  PDFReport report;
  runOutOfMemory([&](std::size_t nth) {
    UnfailingLog::lines().clear();
    EXPECT_EQ(report.Open(L"/dev/full"), REPORT_OK);
    report.Text(L"a", PARAGRAPH_NORMAL, L"", 0);
    const FailingAllocations memory(nth, GetParam());
    EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
    const UnfailingAllocations ownMemory;
    const std::vector<std::wstring> lines = UnfailingLog::lines();
    EXPECT_EQ(lines.size(), 1u);
    for (const std::wstring& reported : {lines.front(), std::wstring(report.GetError())}) {
      EXPECT_TRUE(memory.hasFailed() ? isOfAFailure(reported) : reported == sentence(kNoRoom)) << reported;
    }
    return memory.hasFailed();
  });
}

INSTANTIATE_TEST_SUITE_P(Pdf, PdfReportOnAFullDiskWithoutMemory, testing::Values(Extent::One, Extent::AllFromThere));

TEST(ReportFileOnAFullDiskWithoutMemory, IsStillClosed) {
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
