#include "scrivalen/html_report.h"

#include "support/captured_log.h"
#include "support/documents/templates.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;
using scrivalen::kPathSeparator;

// These tests are in a separate program that has no template folder next to it.

TEST(WithoutATemplateFolder, OpenLogsTheFolderAndWritesTheDefaultHead) {
  const CapturedLog log;
  const TemporaryFolder folder;
  HtmlReport report;
  report.SetOutputFileName((folder / L"a.html").c_str());
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(log.lines(),
            std::vector<std::wstring>{L"Template '" + templateFolder() + kPathSeparator + L"' not found."});
  EXPECT_TRUE(bytesOf(folder / L"a.html").starts_with("<!DOCTYPE html>\n"));
  EXPECT_STREQ(report.GetError(), L"");
}

TEST(WithoutATemplateFolder, ListingReportsAnError) {
  std::vector<std::wstring> names;
  EXPECT_EQ(HtmlReport::GetTemplatesList(templateFolder().c_str(), &names), -1);
}
