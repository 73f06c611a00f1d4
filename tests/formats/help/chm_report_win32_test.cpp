#include "formats/help/chm_report.h"

#include "scrivalen/text.h"
#include "support/captured_log.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

using namespace scrivalen;
using namespace scrivalen::test;

// The help compiler of these tests opens the topics by their names in the project, which are in the code page.

TEST(ChmReportOnWindows, AcceptsTopicsWithOddNames) {
  const CapturedLog log;
  const TemporaryFolder folder;
  const std::wstring prefix = folder.path() + kPathSeparator;
  const struct {
    const wchar_t* name;
    const char* inProject;
  } topics[] = {{L";a.htm", ";a.htm"},
                {L"a;b $c.htm", "a;b $c.htm"},
                {L"it's (1) & [2].htm", "it's (1) & [2].htm"},
                {L"50%20.htm", "50%20.htm"},
                {L"gr\u00F6\u00DFe \u20AC.htm",
                 "gr\xF6\xDF"
                 "e \x80.htm"}};
  CHMReport report;
  EXPECT_EQ(report.Open((folder / L"help.chm").c_str()), REPORT_OK);
  std::string pages;
  for (const auto& topic : topics) {
    EXPECT_EQ(report.BeginSubDocument(prefix.c_str(), topic.name, topic.name), REPORT_OK);
    report.Text(topic.name, PARAGRAPH_NORMAL, L"", 0);
    report.EndSubDocument();
    pages.append("[").append(scrivalen::ToUtf8(prefix)).append(topic.inProject).append("]\n");
    pages.append(bytesOf(prefix + topic.name));
  }
  EXPECT_EQ(report.Close(), REPORT_OK) << scrivalen::ToUtf8(report.GetError());
  EXPECT_TRUE(bytesOf(folder / L"help.chm").ends_with("</UL></body></html>\n" + pages));
  EXPECT_EQ(filesEndingWith(folder.path(), L""), std::vector<std::wstring>{L"help.chm"});
}
