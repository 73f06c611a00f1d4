#include "formats/help/chm_report.h"

#include "support/captured_log.h"
#include "support/documents/templates.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

using namespace scrivalen;
using namespace scrivalen::test;

// The test program has no templates except those that a test creates.

namespace {

// The page of a topic without any text.
std::string emptyPage(bool conforming) {
  const TemporaryFolder folder;
  CHMReport report;
  report.SetReportOption(OPTION_CONFORMING, conforming);
  EXPECT_EQ(report.Open((folder / L"help.chm").c_str()), REPORT_OK);
  EXPECT_EQ(report.BeginSubDocument((folder.path() + kPathSeparator).c_str(), L"a.htm", L"A"), REPORT_OK);
  report.EndSubDocument();
  return bytesOf(folder / L"a.htm");
}

}  // namespace

TEST(TopicTemplate, IsReadAsUtf8InTheConformingForm) {
  const TemporaryFolder templates(templateFolder());
  writeBytes(templates / L"default.htm", "<i>\xC3\xA9</i>%BODY%<b>\xE2\x82\xAC</b>");
  EXPECT_EQ(emptyPage(true), "<i>\xC3\xA9</i><b>\xE2\x82\xAC</b>");
  EXPECT_EQ(emptyPage(false), "<i>\xC3\x83\xC2\xA9</i><b>\xC3\xA2\xC2\x82\xC2\xAC</b>");
}

TEST(TopicTemplate, ThatCannotBeReadIsReported) {
  const TemporaryFolder templates(templateFolder());
  makeFolder(templates / L"default.htm");
  for (const bool conforming : {false, true}) {
    const CapturedLog log;
    const CapturedErrorBox box;
    const TemporaryFolder folder;
    CHMReport report;
    report.SetReportOption(OPTION_CONFORMING, conforming);
    EXPECT_EQ(report.Open((folder / L"help.chm").c_str()), REPORT_OK);
    EXPECT_EQ(report.BeginSubDocument((folder.path() + kPathSeparator).c_str(), L"a.htm", L"A"),
              REPORT_TEMPLATE_NOT_FOUND);
    const std::wstring reason = report.GetError();
    EXPECT_NE(reason.find(templates / L"default.htm"), std::wstring::npos);
    EXPECT_FALSE(exists(folder / L"a.htm"));
    EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
    EXPECT_EQ(report.GetError(), reason);
  }
}
