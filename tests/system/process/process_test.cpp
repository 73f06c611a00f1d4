#include "system/process/process.h"

#include "system/messages.h"
#include "system/module_path.h"

#include <gtest/gtest.h>

using namespace scrivalen;

// Runs this test program, which exists on every platform.
TEST(RunProgram, WaitsAndReturnsTheExitStatus) {
  const ProcessResult listed = runProgram({modulePath(), L"--gtest_list_tests", L"--gtest_filter=Fmt.*"});
  EXPECT_TRUE(listed.started);
  EXPECT_EQ(listed.exitStatus, 0);
}

TEST(RunProgram, QuotesTheProgramAndItsArguments) {
  const ProcessResult result = runProgram({L"no such program.exe", L"C:\\out\\report.hhp"});
  EXPECT_EQ(result.commandLine, L"\"no such program.exe\" \"C:\\out\\report.hhp\"");
}

TEST(RunProgram, ReportsWhyAProgramWasNotStarted) {
  const ProcessResult result = runProgram({L"no such program.exe"});
  EXPECT_FALSE(result.started);
  EXPECT_NE(result.error, 0u);
  EXPECT_FALSE(systemErrorText(result.error).empty());
}
