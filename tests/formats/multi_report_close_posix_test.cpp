#include "scrivalen/multi_report.h"
#include "support/captured_log.h"
#include "support/documents/child_formats.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace scrivalen::test;

namespace {

constexpr const wchar_t* kFull = L"/dev/full";
constexpr const wchar_t* kReason = L"File write error for '/dev/full'. No space left on device";

using Lines = std::vector<std::wstring>;

struct MultiReportChildOnAFullDisk : testing::TestWithParam<ChildFormat> {};

}  // namespace

TEST_P(MultiReportChildOnAFullDisk, DoesNotStopTheOthersFromBeingWritten) {
  const CapturedLog log;
  const ChildFiles files;
  MultiReport report;
  for (const ChildFormat& format : fileFormats()) {
    files.add(report, format, L"before");
  }
  report.AddReport(GetParam().format(), kFull, nullptr);
  for (const ChildFormat& format : fileFormats()) {
    files.add(report, format, L"behind");
  }
  files.add(report, childFormats().back(), L"behind");
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeOneTwo(report, files);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), kReason);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_STREQ(report.GetError(), kReason);
  report.Clear();
  EXPECT_EQ(log.lines(), Lines{kReason});
  for (const ChildFormat& format : fileFormats()) {
    EXPECT_EQ(format.read(files.path(format, L"before")), format.oneTwo) << format.name;
  }
  files.expectAllHaveOneTwo(L"behind");
}

TEST_P(MultiReportChildOnAFullDisk, IsNotReportedWhenAnEarlierChildFails) {
  const CapturedLog log;
  MultiReport report;
  report.AddReport(FORMAT_EXCEL, L"/dev/./full", nullptr);
  report.AddReport(GetParam().format(), kFull, nullptr);
  report.AddReport(FORMAT_TEXT, L"/dev//full", nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  report.Text(L"one", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), L"File write error for '/dev/./full'. No space left on device");
  report.Clear();
  EXPECT_EQ(log.lines(), (Lines{L"File write error for '/dev/./full'. No space left on device", kReason,
                                L"File write error for '/dev//full'. No space left on device"}));
}

INSTANTIATE_TEST_SUITE_P(Each, MultiReportChildOnAFullDisk, testing::ValuesIn(fileFormats()), nameOf);

TEST(MultiReportClear, NeitherWritesNorClosesThePageOfATopicThatWasNotEnded) {
  const ChildFiles files;
  MultiReport report;
  files.add(report, childFormats().back());
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(files.beginTopic(report), REPORT_OK);
  report.Text(L"not flushed", PARAGRAPH_NORMAL, L"", 0);
  report.Clear();
  EXPECT_EQ(std::filesystem::file_size(asPath(files.topic())), 0u);
  EXPECT_TRUE(isHeld(files.topic()));
}

TEST(MultiReportClose, ReleasesThePageOfATopicThatWasNotEnded) {
  const CapturedLog log;
  const ChildFiles files;
  const std::wstring sameFile = files.folder / L"page";  // the page is deleted by its own name with the topics
  MultiReport report;
  files.add(report, childFormats().back());
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(files.beginTopic(report), REPORT_OK);
  std::filesystem::create_hard_link(asPath(files.topic()), asPath(sameFile));
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), L"The topic '" + files.topic() + L"' was not ended.");
  EXPECT_FALSE(isHeld(sameFile));
  report.Clear();
}
