#include "scrivalen/html_report.h"
#include "scrivalen/multi_report.h"
#include "support/files.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

namespace {

std::wstring errorOfOpening(const std::wstring& path) {
  HtmlReport report;
  report.SetOutputFileName(path.c_str());
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  return report.GetError();
}

}  // namespace

TEST(OpenError, OfAMissingFolder) {
  EXPECT_EQ(errorOfOpening(L"/no such folder/a"),
            L"File open/create error for '/no such folder/a'. No such file or directory");
}

TEST(OpenError, OfNoName) {
  EXPECT_EQ(errorOfOpening(L""), L"File open/create error for ''. No such file or directory");
}

TEST(OpenError, OfAFolder) {
  const TemporaryFolder folder;
  EXPECT_EQ(errorOfOpening(folder.path()), L"File open/create error for '" + folder.path() + L"'. Is a directory");
}

TEST(OpenError, OfAPathUnderAFile) {
  const TemporaryFolder folder;
  writeBytes(folder / L"file", "kept");
  const std::wstring path = folder / L"file/a";
  EXPECT_EQ(errorOfOpening(path), L"File open/create error for '" + path + L"'. Not a directory");
  EXPECT_EQ(bytesOf(folder / L"file"), "kept");
}

TEST(OpenError, OfAFileThatAnotherReportHolds) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a";
  MultiReport holder;
  holder.AddReport(FORMAT_XML, path.c_str(), nullptr);
  EXPECT_EQ(holder.Open(), REPORT_OK);
  EXPECT_EQ(errorOfOpening(path), L"File open/create error for '" + path + L"'. Device or resource busy");
  EXPECT_EQ(holder.Close(), REPORT_OK);
  holder.Clear();
}

TEST(OpenError, OfANameThatIsTooLong) {
  const TemporaryFolder folder;
  const std::wstring path = folder / std::wstring(300, L'x');
  EXPECT_EQ(errorOfOpening(path), L"File open/create error for '" + path + L"'. File name too long");
}

TEST(OpenError, OfATemplateThatFailsWhileItIsRead) {
  struct Bare : HtmlReport {
    using HtmlReport::LoadTemplate;
  } report;
  std::wstring text = L"kept";
  EXPECT_EQ(report.LoadTemplate(&text, L"/proc/self/mem", 1), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), L"File open/create error for '/proc/self/mem'. Input/output error");
  EXPECT_EQ(text, L"kept");
}
