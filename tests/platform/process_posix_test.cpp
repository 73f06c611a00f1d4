#include "platform/process.h"

#include "support/files.h"

#include <gtest/gtest.h>

using namespace scrivalen::platform;
using namespace scrivalen::test;

TEST(RunProgram, HandsArgumentsOverWithoutAShell) {
  const TemporaryFolder folder;
  const std::wstring odd = L"a b;$(touch x) \"q\" 'r' \u20AC";
  const ProcessResult result = runProgram({L"sh", L"-c", L"printf %s \"$1\" > \"$2\"", L"sh", odd, folder / L"out"});
  EXPECT_TRUE(result.started);
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(bytesOf(folder / L"out"), "a b;$(touch x) \"q\" 'r' \xE2\x82\xAC");
}

TEST(RunProgram, AnswersTheStatusOfAProgramThatFails) {
  EXPECT_EQ(runProgram({L"sh", L"-c", L"exit 7"}).exitStatus, 7);
  EXPECT_EQ(runProgram({L"sh", L"-c", L"kill -9 $$"}).exitStatus, -1);
}
