#include "formats/help/chm_report.h"

#include "scrivalen/text.h"
#include "support/captured_log.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

using namespace scrivalen;
using namespace scrivalen::test;

// These tests are in a separate program that has no help compiler next to it.

namespace {

namespace fs = std::filesystem;

// Puts a help compiler, a short script, first on the search path for as long as it lives.
class CompilerOnPath {
 public:
  explicit CompilerOnPath(const std::string& script) : path_(std::getenv("PATH")) {
    writeBytes(folder_ / L"hhc.exe", "#!/bin/sh\n" + script);
    fs::permissions(asPath(folder_ / L"hhc.exe"), fs::perms::owner_all);
    ::setenv("PATH", (scrivalen::ToUtf8(folder_.path()) + ":" + path_).c_str(), 1);
  }
  CompilerOnPath(const CompilerOnPath&) = delete;
  CompilerOnPath& operator=(const CompilerOnPath&) = delete;
  ~CompilerOnPath() { ::setenv("PATH", path_.c_str(), 1); }

 private:
  std::string path_;
  TemporaryFolder folder_;
};

REPORT_ERRORS writeReport(const TemporaryFolder& folder) {
  CHMReport report;
  EXPECT_EQ(report.Open((folder / L"help.chm").c_str()), REPORT_OK);
  EXPECT_EQ(report.BeginSubDocument((folder / L"").c_str(), L"a.htm", L"A"), REPORT_OK);
  report.EndSubDocument();
  return report.Close();
}

}  // namespace

TEST(HelpCompilerOnThePath, IsUsedWhenNoneIsNextToTheLibrary) {
  const CapturedLog log;
  const TemporaryFolder folder;
  const CompilerOnPath compiler("printf '%s|' \"$#\" \"$1\" >\"${1%/*}/report.chm\"\n");
  EXPECT_EQ(writeReport(folder), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"help.chm"), "1|" + scrivalen::ToUtf8(folder / L"report.hhp") + "|");
}

TEST(HelpCompilerOnThePath, GetsTheTimeOfTheHostsClock) {
  const CapturedLog log;
  const FixedClock clock(86400);
  const TemporaryFolder folder;
  const CompilerOnPath compiler("printf %s \"$SOURCE_DATE_EPOCH\" >\"${1%/*}/report.chm\"\n");
  EXPECT_EQ(writeReport(folder), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"help.chm"), "86400");
}

TEST(HelpCompilerOnThePath, IsWaitedForHoweverItEnds) {
  const CapturedLog log;
  const TemporaryFolder folder;
  {
    const CompilerOnPath compiler("sleep 1; printf done >\"${1%/*}/report.chm\"; kill -9 $$\n");
    EXPECT_EQ(writeReport(folder), REPORT_OK);
    EXPECT_EQ(bytesOf(folder / L"help.chm"), "done");
  }
  const CompilerOnPath compiler("kill -9 $$\n");
  EXPECT_EQ(writeReport(folder), REPORT_FILE_ERROR);
  EXPECT_EQ(bytesOf(folder / L"help.chm"), "done");
  EXPECT_TRUE(log.lines().back().ends_with(L"report.chm'. It was ended by signal 9.")) << log.lines().back().c_str();
}

TEST(HelpCompilerOnThePath, IsLoggedOnceWhenMissingAndTheHostShowsNoErrors) {
  const CapturedLog log;
  const TemporaryFolder folder;
  EXPECT_EQ(writeReport(folder), REPORT_FILE_ERROR);
  const auto isOfTheCompiler = [](const std::wstring& line) { return line.find(L"hhc.exe") != std::wstring::npos; };
  EXPECT_EQ(std::count_if(log.lines().begin(), log.lines().end(), isOfTheCompiler), 1);
  EXPECT_TRUE(log.lines().back().starts_with(L"HHC Error! CHM(156): Run Compiler: \"hhc.exe\" "));
}

TEST(HelpCompilerOnThePath, DoesNotInheritTheReportsOwnFiles) {
  const CapturedLog log;
  const TemporaryFolder folder;
  ReportFile open;
  EXPECT_TRUE(open.Open((folder / L"open").c_str()));
  const CompilerOnPath compiler("ls -l /proc/$$/fd >\"${1%/*}/report.chm\"\n");
  EXPECT_EQ(writeReport(folder), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"help.chm").find(scrivalen::ToUtf8(folder / L"open")), std::string::npos);
}

TEST(HelpCompilerOnThePath, MayMoveTheFolderOfAnEarlierHelpFile) {
  const CapturedLog log;
  const TemporaryFolder folder;
  const std::wstring prefix = folder / L"topics/";
  makeFolder(prefix);
  writeBytes(prefix + L"report.chm", "earlier");
  const CompilerOnPath compiler("mv \"${1%/*}\" \"${1%/*}.away\"\n");
  CHMReport report;
  EXPECT_EQ(report.Open((folder / L"help.chm").c_str()), REPORT_OK);
  EXPECT_EQ(report.BeginSubDocument(prefix.c_str(), L"a.htm", L"A"), REPORT_OK);
  report.EndSubDocument();
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  const std::wstring& line = log.lines().back();
  const std::wstring start = L"The earlier '" + prefix + L"report.chm' is called '" + prefix + L".";
  EXPECT_TRUE(line.starts_with(start)) << scrivalen::ToUtf8(line);
  EXPECT_TRUE(line.ends_with(L"' now. No such file or directory")) << scrivalen::ToUtf8(line);
}

// Not even the superuser may set the rights of the file that the output leads to.
TEST(HelpCompilerOnThePath, DoesNotReplaceAFileWhoseRightsItsOutputCannotHave) {
  const CapturedLog log;
  const TemporaryFolder folder;
  const std::wstring target = folder / L"report.chm";
  writeBytes(target, "earlier");
  fs::permissions(asPath(target), fs::perms(0600));
  const CompilerOnPath compiler("ln -s /proc/self/status \"${1%/*}/report.chm\"\n");
  CHMReport report;
  EXPECT_EQ(report.Open(target.c_str()), REPORT_OK);
  EXPECT_EQ(report.BeginSubDocument((folder / L"").c_str(), L"a.htm", L"A"), REPORT_OK);
  report.EndSubDocument();
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), L"The new help file cannot have the rights of the earlier '" + target +
                                   L"', which is kept. Operation not permitted");
  EXPECT_EQ(log.lines().back(), report.GetError());
  EXPECT_EQ(bytesOf(target), "earlier");
  EXPECT_EQ(fs::status(asPath(target)).permissions(), fs::perms(0600));
  EXPECT_EQ(filesEndingWith(folder.path(), L""), std::vector<std::wstring>{L"report.chm"});
}
