#include "scrivalen/multi_report.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/documents/file_reports.h"
#include "support/files.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

namespace {

constexpr const wchar_t* kFull = L"/dev/full";
constexpr const wchar_t* kReason = L"File write error for '/dev/full'. No space left on device";

const std::vector<std::wstring> kOneLine = {kReason};

template <typename Report>
struct OnAFullDisk : testing::Test {};

TYPED_TEST_SUITE(OnAFullDisk, FileReports, FileReportName);

// More than a file's buffer holds, in texts that no format drops or cuts.
void writeMuch(AReport& report) {
  for (int i = 0; i < 100; ++i) {
    report.Text(longText(4000).c_str(), PARAGRAPH_NORMAL, L"", 0);
  }
}

}  // namespace

TYPED_TEST(OnAFullDisk, CloseReportsTheReasonAndLogsOneLine) {
  const CapturedLog log;
  TypeParam report;
  EXPECT_EQ(report.Open(kFull), REPORT_OK);
  report.Text(L"text", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), kReason);
  EXPECT_EQ(log.lines(), kOneLine);
}

TYPED_TEST(OnAFullDisk, LongReportsLogOneLineToo) {
  const CapturedLog log;
  TypeParam report;
  EXPECT_EQ(report.Open(kFull), REPORT_OK);
  writeMuch(report);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), kReason);
  EXPECT_EQ(log.lines(), kOneLine);
}

TYPED_TEST(OnAFullDisk, ClosingAgainIsHarmless) {
  const CapturedLog log;
  TypeParam report;
  EXPECT_EQ(report.Open(kFull), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.Close(), REPORT_OK);
}

TYPED_TEST(OnAFullDisk, TheReportWorksAgainOnAnotherDisk) {
  const CapturedLog log;
  const TemporaryFolder folder;
  TypeParam report;
  EXPECT_EQ(report.Open(kFull), REPORT_OK);
  report.Text(L"text", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.Open((folder / L"a").c_str()), REPORT_OK);
  report.Text(L"text", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_FALSE(bytesOf(folder / L"a").empty());
  EXPECT_STREQ(report.GetError(), kReason);
}

TYPED_TEST(OnAFullDisk, TheFirstReasonSurvivesARefusedOpen) {
  const CapturedLog log;
  const TemporaryFolder folder;
  TypeParam report;
  EXPECT_EQ(report.Open(kFull), REPORT_OK);
  writeMuch(report);
  EXPECT_EQ(report.Open((folder / L"a").c_str()), REPORT_FILE_ERROR);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), kReason);
  EXPECT_EQ(log.lines(), kOneLine);
}

TEST(MultiReportOnAFullDisk, CompletesItsOtherChildren) {
  const CapturedLog log;
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_TEXT, (folder / L"a.txt").c_str(), nullptr);
  report.AddReport(FORMAT_HTML, kFull, nullptr);
  report.AddReport(FORMAT_XML, (folder / L"a.xml").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  report.Text(L"text", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), kReason);
  report.Clear();
  EXPECT_EQ(log.lines(), kOneLine);
  EXPECT_EQ(fromMarkedUtf16(bytesOf(folder / L"a.txt")), "text\r\n");
  EXPECT_EQ(bytesOf(folder / L"a.xml"),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report><text>text</text></report>");
}

TEST(MultiReportOnAFullDisk, TakesTheErrorTextOfTheFirstChildThatFails) {
  const CapturedLog log;
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_XML, kFull, nullptr);
  report.AddReport(FORMAT_TEXT, (folder / L"missing/a.txt").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), kReason);
  report.Clear();
  EXPECT_EQ(log.lines(), kOneLine);
}

TEST(MultiReportOnAFullDisk, CallsItsChildrenInOrder) {
  const CapturedLog log;
  MultiReport report;
  for (const wchar_t* path : {L"/dev/./full", L"/dev/full", L"/dev//full"}) {
    report.AddReport(FORMAT_XML, path, nullptr);
  }
  EXPECT_EQ(report.Open(), REPORT_OK);
  report.Text(longText(100000).c_str(), PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(log.lines(),
            (std::vector<std::wstring>{L"File write error for '/dev/./full'. No space left on device", kReason,
                                       L"File write error for '/dev//full'. No space left on device"}));
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), L"File write error for '/dev/./full'. No space left on device");
  report.Clear();
}

TEST(MultiReportOnAFullDisk, LogsALineForEachChildThatFails) {
  const CapturedLog log;
  MultiReport report;
  report.AddReport(FORMAT_XML, kFull, nullptr);
  report.AddReport(FORMAT_HTML, kFull, nullptr);
  report.AddReport(FORMAT_TEXT, kFull, nullptr);
  report.AddReport(FORMAT_RTF, kFull, nullptr);
  report.AddReport(FORMAT_PDF, kFull, nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  report.Clear();
  EXPECT_EQ(log.lines(), (std::vector<std::wstring>{kReason, kReason, kReason, kReason, kReason}));
}

TEST(RtfReportOnAFullDisk, ReportsItAndDroppedTexts) {
  const CapturedLog log;
  RTFReport report;
  EXPECT_EQ(report.Open(kFull), REPORT_OK);
  report.Text(longText(5000).c_str(), PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), kReason);
  EXPECT_EQ(log.lines(), (std::vector<std::wstring>{kReason,
                                                    L"'/dev/full': 5000 characters could not be written as they were "
                                                    L"given, the first is U+0078."}));
}

TEST(MultiReportOnAFullDisk, CompletesTheOthersWhenTheRtfChildFails) {
  const CapturedLog log;
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_RTF, kFull, nullptr);
  report.AddReport(FORMAT_RTF, (folder / L"a.rtf").c_str(), nullptr);
  report.AddReport(FORMAT_TEXT, (folder / L"a.txt").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeMuch(report);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), kReason);
  report.Clear();
  EXPECT_EQ(log.lines(), kOneLine);
  EXPECT_TRUE(bytesOf(folder / L"a.rtf").ends_with("x\\s0\\ql\\par\\pard\\plain }}"));
  EXPECT_EQ(fromMarkedUtf16(bytesOf(folder / L"a.txt")).size(), 100u * 4002u);
}
