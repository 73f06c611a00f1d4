#include "formats/help/chm_report.h"

#include "formats/help/help_compiler.h"
#include "scrivalen/multi_report.h"
#include "support/captured_log.h"
#include "support/files.h"
#include "system/files/files.h"
#include "system/messages.h"
#include "system/process/process.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

using namespace scrivalen;
using namespace scrivalen::test;

// These tests are in a separate program that has neither a help compiler nor a template next to it.

namespace {

std::uint32_t searchError() { return runProgram({L"hhc.exe"}).error; }

std::wstring commandLine(const std::wstring& project) { return L"\"hhc.exe\" \"" + project + L"\""; }

std::wstring boxText(const std::wstring& project) {
  return L"Run Compiler: " + commandLine(project) + L"\nError: " + std::to_wstring(searchError()) + L"\nMessage:" +
         systemErrorText(searchError()) + L"\n";
}

std::wstring bugLine(const std::wstring& project) {
  return L"HHC Error! CHM(156): Run Compiler: " + commandLine(project) + L" Error: " + std::to_wstring(searchError()) +
         L" Message:" + systemErrorText(searchError());
}

std::wstring reason(const std::wstring& project) {
  return L"The help compiler could not be started: " + commandLine(project) + L" " + systemErrorText(searchError()) +
         L" " + std::wstring(scrivalen::formats::helpCompilerAdvice());
}

// Leaves out the log's line about the missing template.
std::vector<std::wstring> linesThatName(const CapturedLog& log, std::wstring_view name) {
  std::vector<std::wstring> lines;
  std::copy_if(log.lines().begin(), log.lines().end(), std::back_inserter(lines),
               [name](const std::wstring& line) { return line.find(name) != std::wstring::npos; });
  return lines;
}

}  // namespace

TEST(WithoutAHelpCompiler, ABoxAndTheLogShowTheCommandTheErrorNumberAndTheMessage) {
  ASSERT_NE(searchError(), 0u);
  const CapturedLog log;
  const CapturedErrorBox box;
  const TemporaryFolder folder;
  CCHM help;
  EXPECT_EQ(help.compile(folder / L"report.hhp"), 1);
  ASSERT_EQ(box.shown().size(), 1u);
  EXPECT_EQ(box.shown()[0].title, L"Help Compiler Error!");
  EXPECT_EQ(box.shown()[0].text, boxText(folder / L"report.hhp"));
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{bugLine(folder / L"report.hhp")});
  EXPECT_EQ(help.failure, reason(folder / L"report.hhp"));
}

TEST(WithoutAHelpCompiler, TheWorkingFilesAreStillDeleted) {
  const CapturedLog log;
  const CapturedErrorBox box;
  const TemporaryFolder folder;
  writeBytes(folder / L"a.htm", "page");
  CCHM help;
  help.files = {folder / L"a.htm"};
  help.writeProject(folder / L"report.hhp", L"");
  help.writeContents(folder / L"report.hhc");
  help.compile(folder / L"report.hhp");
  for (const wchar_t* name : {L"a.htm", L"report.hhp", L"report.hhc"}) {
    EXPECT_FALSE(exists(folder / name));
  }
}

TEST(WithoutAHelpCompiler, CloseExplainsHowToGetItAndLeavesNoTarget) {
  const CapturedLog log;
  const CapturedErrorBox box;
  const TemporaryFolder folder;
  const std::wstring prefix = folder.path() + kPathSeparator;
  CHMReport report;
  EXPECT_EQ(report.Open((folder / L"help.chm").c_str()), REPORT_OK);
  EXPECT_EQ(report.BeginSubDocument(prefix.c_str(), L"a.htm", L"A"), REPORT_OK);
  report.EndSubDocument();
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), reason(folder / L"report.hhp"));
  EXPECT_EQ(linesThatName(log, L"hhc.exe"), std::vector<std::wstring>{bugLine(folder / L"report.hhp")});
  EXPECT_EQ(box.shown().size(), 1u);
  EXPECT_FALSE(exists(folder / L"help.chm"));
  EXPECT_FALSE(exists(folder / L"a.htm"));
}

TEST(WithoutAHelpCompiler, AnEarlierHelpFileIsLeftAlone) {
  const CapturedLog log;
  const CapturedErrorBox box;
  const TemporaryFolder folder;
  const std::wstring prefix = folder.path() + kPathSeparator;
  writeBytes(folder / L"report.chm", "earlier");
  writeBytes(folder / L"help.chm", "earlier too");
  MultiReport report;
  report.AddReport(FORMAT_CHM, (folder / L"help.chm").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.BeginSubDocument(prefix.c_str(), L"a.htm", L"A"), REPORT_OK);
  report.EndSubDocument();
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), reason(folder / L"report.hhp"));
  report.Clear();
  EXPECT_EQ(bytesOf(folder / L"report.chm"), "earlier");
  EXPECT_EQ(bytesOf(folder / L"help.chm"), "earlier too");
  EXPECT_EQ(filesEndingWith(folder.path(), L"").size(), 2u);
}

TEST(WithoutATemplateFolder, ATopicHasTheDefaultHead) {
  const CapturedLog log;
  const CapturedErrorBox box;
  const TemporaryFolder folder;
  const std::wstring prefix = folder.path() + kPathSeparator;
  for (const bool conforming : {false, true}) {
    CHMReport report;
    report.SetReportOption(OPTION_CONFORMING, conforming);
    EXPECT_EQ(report.Open((folder / L"help.chm").c_str()), REPORT_OK);
    EXPECT_EQ(report.BeginSubDocument(prefix.c_str(), L"a.htm", L"A & 50%"), REPORT_OK);
    report.EndSubDocument();
    const std::string page = bytesOf(folder / L"a.htm");
    EXPECT_TRUE(page.starts_with("<!DOCTYPE html>\n"));
    EXPECT_TRUE(page.ends_with("<body>\n</body></html>\n"));
    EXPECT_EQ(page.find("<title>A &amp; 50%</title>") != std::string::npos, conforming);
    EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  }
}
