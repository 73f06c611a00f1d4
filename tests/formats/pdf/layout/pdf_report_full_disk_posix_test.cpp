#include "formats/pdf/layout/pdf_report.h"
#include "scrivalen/multi_report.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/faults/file_size_limit.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

using namespace scrivalen::test;

namespace {

constexpr const wchar_t* kFull = L"/dev/full";
constexpr const wchar_t* kReason = L"File write error for '/dev/full'. No space left on device";

// Several hundred kilobytes of pages.
void writeMuch(AReport& report) {
  for (int i = 0; i < 1000; ++i) {
    report.Text(longText(400).c_str(), PARAGRAPH_NORMAL, L"", 0);
  }
}

}  // namespace

TEST(PdfReportOnAFullDisk, ReportsItAtCloseAndNotBefore) {
  const CapturedLog log;
  PDFReport report;
  EXPECT_EQ(report.Open(kFull), REPORT_OK);
  writeMuch(report);
  EXPECT_TRUE(log.lines().empty());
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), kReason);
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{kReason});
}

// Each page that is begun asks whether the host wants to stop.
TEST(PdfReportOnAFullDisk, LaysOutNoMorePages) {
  static int begun;
  const auto pagesBegunOn = [](const wchar_t* file) {
    const CapturedLog log;
    PDFReport report;
    EXPECT_EQ(report.Open(file), REPORT_OK);
    writeMuch(report);
    begun = 0;
    scrivalen::SetStopHandler([] { return ++begun < 0; });
    report.Close();
    scrivalen::SetStopHandler(nullptr);
    return begun;
  };
  const int all = pagesBegunOn(L"/dev/null");
  EXPECT_GT(all, 100);
  EXPECT_GT(pagesBegunOn(kFull), all / 2);  // the pages are begun twice: to be placed, and to be written
  EXPECT_LT(pagesBegunOn(kFull), all / 2 + all / 8);
}

TEST(PdfReportOnAFullDisk, ReportsItEvenForAnEmptyDocument) {
  const CapturedLog log;
  PDFReport report;
  EXPECT_EQ(report.Open(kFull), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), kReason);
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{kReason});
}

TEST(PdfReportOnAFullDisk, ReportsItAndLostCharacters) {
  const CapturedLog log;
  PDFReport report;
  EXPECT_EQ(report.Open(kFull), REPORT_OK);
  report.Text(L"\u20AC", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), kReason);
  EXPECT_EQ(log.lines(), (std::vector<std::wstring>{
                             kReason, L"'/dev/full': 1 character could not be written as it was given: U+20AC."}));
}

TEST(PdfReportOnAClosedDescriptor, ReportsTheFirstReasonInOneLine) {
  const CapturedLog log;
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.pdf";
  const int descriptor = ::open("/dev/null", O_RDONLY);  // the report gets the same descriptor
  ::close(descriptor);
  PDFReport report;
  EXPECT_EQ(report.Open(path.c_str()), REPORT_OK);
  EXPECT_EQ(::close(descriptor), 0);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"File write error for '" + path + L"'. Bad file descriptor"});
  EXPECT_EQ(report.GetError(), log.lines().front());
  EXPECT_EQ(report.Open(path.c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
}

TEST(PdfReportOnAFullDisk, CompletesTheOtherChildren) {
  const CapturedLog log;
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_PDF, kFull, nullptr);
  report.AddReport(FORMAT_PDF, (folder / L"a.pdf").c_str(), nullptr);
  report.AddReport(FORMAT_TEXT, (folder / L"a.txt").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeMuch(report);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), kReason);
  report.Clear();
  ASSERT_EQ(log.lines().size(), 2u);  // the other report logs that it has several pages
  EXPECT_EQ(log.lines().front(), kReason);
  EXPECT_TRUE(bytesOf(folder / L"a.pdf").ends_with("%%EOF"));
  EXPECT_EQ(fromMarkedUtf16(bytesOf(folder / L"a.txt")).size(), 1000u * 402u);
}

TEST(PdfReportOfAFileThatMayNotGrow, ReportsItAndKeepsTheBytesThatFitted) {
  const CapturedLog log;
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.pdf";
  const std::wstring reason = L"File write error for '" + path + L"'. File too large";
  PDFReport report;
  EXPECT_EQ(report.Open(path.c_str()), REPORT_OK);
  writeMuch(report);
  {
    const FileSizeLimit limit(200000);
    EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  }
  EXPECT_EQ(report.GetError(), reason);
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{reason});
  EXPECT_EQ(bytesOf(path).size(), 200000u);
  EXPECT_EQ(report.Open(path.c_str()), REPORT_OK);
  writeMuch(report);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(bytesOf(path).ends_with("%%EOF"));
}
