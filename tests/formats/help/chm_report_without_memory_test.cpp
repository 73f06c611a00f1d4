#include "formats/help/chm_report.h"

#include "support/faults/out_of_memory.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

using namespace scrivalen;
using namespace scrivalen::test;

// The test program's folder has a help compiler that writes down its input.

namespace {

// Closes a report with two topics, the second not ended, while memory runs out at the nth allocation. Returns whether
// it did.
bool closesWithout(std::size_t nth, Extent extent) {
  const UnfailingLog log;
  const TemporaryFolder folder;
  const std::wstring prefix = folder.path() + kPathSeparator;
  writeBytes(folder / L"report.chm", "earlier");
  writeBytes(folder / L"help.chm", "earlier too");
  CHMReport report;
  EXPECT_EQ(report.Open((folder / L"help.chm").c_str()), REPORT_OK);
  EXPECT_EQ(report.BeginSubDocument(prefix.c_str(), L"a.htm", L"A"), REPORT_OK);
  report.EndSubDocument();
  EXPECT_EQ(report.BeginSubDocument(prefix.c_str(), L"b.htm", L"B"), REPORT_OK);
  bool hasFailed = false;
  {
    const FailingAllocations failing(nth, extent);
    EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
    hasFailed = failing.hasFailed();
  }
  EXPECT_EQ(filesEndingWith(folder.path(), L"").size(), 2u) << "at allocation " << nth;
  EXPECT_EQ(bytesOf(folder / L"report.chm"), "earlier") << "at allocation " << nth;
  EXPECT_EQ(bytesOf(folder / L"help.chm"), "earlier too") << "at allocation " << nth;
  return hasFailed;
}

}  // namespace

TEST(ChmReportWithoutMemory, LeavesNoPagesAndDoesNotChangeEarlierHelpFiles) {
  for (const Extent extent : {Extent::One, Extent::AllFromThere}) {
    runOutOfMemory([extent](std::size_t nth) { return closesWithout(nth, extent); });
  }
}
