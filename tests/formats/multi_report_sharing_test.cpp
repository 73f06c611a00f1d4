#include "scrivalen/multi_report.h"
#include "support/captured_log.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

using namespace scrivalen::test;

namespace {

bool isHeld(const std::wstring& path) {
  ReportFile file;
  return !file.Open(path.c_str());
}

}  // namespace

TEST(MultiReportCopy, KeepsWritingAfterItsSourceIsDestroyed) {
  const TemporaryFolder folder;
  std::optional<MultiReport> source(std::in_place);
  source->AddReport(FORMAT_TEXT, (folder / L"a.txt").c_str(), nullptr);
  source->SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  EXPECT_EQ(source->Open(), REPORT_OK);
  source->Text(L"one ", PARAGRAPH_NONE, L"", 0);
  MultiReport copy(*source);
  source.reset();
  copy.Text(L"two", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(copy.Close(), REPORT_OK);
  copy.Clear();
  EXPECT_EQ(bytesOf(folder / L"a.txt"), "one two");
}

TEST(MultiReportCopy, LeavesTheFileHeldWhenItsSourceIsClearedWhileOpen) {
  const TemporaryFolder folder;
  {
    MultiReport source;
    source.AddReport(FORMAT_TEXT, (folder / L"a.txt").c_str(), nullptr);
    EXPECT_EQ(source.Open(), REPORT_OK);
    source.Text(L"lost", PARAGRAPH_NONE, L"", 0);
    MultiReport copy(source);
    source.Clear();
  }
  EXPECT_TRUE(isHeld(folder / L"a.txt"));
  EXPECT_EQ(std::filesystem::file_size(asPath(folder / L"a.txt")), 0u);
}

TEST(MultiReportCopy, ByAssignmentCopiesTheBase) {
  MultiReport source;
  source.SetOutputFileName(L"name");
  MultiReport copy;
  copy = source;
  EXPECT_STREQ(copy.GetOutputFileName(), L"name");
}

TEST(MultiReportOpenOfAFile, OpensNoChildAfterAFailure) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_TEXT, (folder / L"a.txt").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  report.AddReport(FORMAT_TEXT, (folder / L"b.txt").c_str(), nullptr);
  EXPECT_EQ(report.Open((folder / L"given.txt").c_str()), REPORT_FILE_ERROR);
  EXPECT_FALSE(exists(folder / L"given.txt"));
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
}

TEST(MultiReportForwarding, PassesOnTheHeaderFlagOfCells) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_HTML, (folder / L"a.html").c_str(), nullptr);
  EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
  report.BeginCell(nullptr, 1, L" a=1");
  report.EndCell(nullptr, 1);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(bytesOf(folder / L"a.html"), "<th a=1></th></body></html>\n");
}
