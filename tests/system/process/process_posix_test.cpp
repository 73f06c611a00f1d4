#include "system/process/process.h"

#include "support/files.h"
#include "system/files/files.h"
#include "system/process/stop.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace scrivalen;
using namespace scrivalen::test;

namespace {

// Requests a stop as soon as a script has created the file named by its $1.
class StopOnceStarted {
 public:
  StopOnceStarted() {
    path() = folder_ / L"started";
    setStopQuery([] { return pathExists(path()); });
  }
  StopOnceStarted(const StopOnceStarted&) = delete;
  StopOnceStarted& operator=(const StopOnceStarted&) = delete;
  ~StopOnceStarted() { setStopQuery(nullptr); }

  static ProcessResult run(const wchar_t* script) {
    const auto start = std::chrono::steady_clock::now();
    ProcessResult result = runProgram({L"sh", L"-c", script, L"sh", path()});
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20)) << "it was not stopped";
    return result;
  }

 private:
  static std::wstring& path() {
    static std::wstring path;
    return path;
  }

  const TemporaryFolder folder_;
};

}  // namespace

TEST(RunProgram, PassesArgumentsWithoutAShell) {
  const TemporaryFolder folder;
  const std::wstring odd = L"a b;$(touch x) \"q\" 'r' \u20AC";
  const ProcessResult result = runProgram({L"sh", L"-c", L"printf %s \"$1\" > \"$2\"", L"sh", odd, folder / L"out"});
  EXPECT_TRUE(result.started);
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(bytesOf(folder / L"out"), "a b;$(touch x) \"q\" 'r' \xE2\x82\xAC");
}

TEST(RunProgram, ReturnsTheStatusOfAProgramThatFails) {
  EXPECT_EQ(runProgram({L"sh", L"-c", L"exit 7"}).exitStatus, 7);
  EXPECT_EQ(runProgram({L"sh", L"-c", L"exit 7"}).signal, 0);
  EXPECT_EQ(runProgram({L"sh", L"-c", L"kill -9 $$"}).exitStatus, -1);
  EXPECT_EQ(runProgram({L"sh", L"-c", L"kill -9 $$"}).signal, 9);
}

TEST(RunProgram, KeepsTheLinesOfAProgramsStandardError) {
  const ProcessResult result = runProgram({L"sh", L"-c", L"printf 'one \u20AC\\n\\ntwo' >&2; exit 3"});
  EXPECT_EQ(result.messages, (std::vector<std::wstring>{L"one \u20AC", L"two"}));
  EXPECT_EQ(result.exitStatus, 3);
  EXPECT_TRUE(runProgram({L"sh", L"-c", L":"}).messages.empty());
}

TEST(RunProgram, KeepsTheBeginningOfManyMessages) {
  const std::wstring many = L"yes line | head -n 100000 >&2";  // more than a pipe holds
  const ProcessResult result = runProgram({L"sh", L"-c", many});
  EXPECT_EQ(result.exitStatus, 0);
  ASSERT_EQ(result.messages.size(), 820u);
  EXPECT_EQ(result.messages.front(), L"line");
  EXPECT_EQ(result.messages.back(), L"l");
}

TEST(RunProgram, PassesOnlyTheStandardStreams) {
  const int open = ::open("/dev/null", O_RDONLY);
  ASSERT_GT(open, 2);
  const std::wstring listing = L"for file in 2 $1; do [ ! -e /proc/$$/fd/$file ] || echo $file >&2; done";
  const ProcessResult result = runProgram({L"sh", L"-c", listing, L"sh", std::to_wstring(open)});
  ::close(open);
  EXPECT_EQ(result.messages, std::vector<std::wstring>{L"2"});
}

TEST(RunProgram, AddsVariablesToThoseOfThisProcess) {
  ::setenv("SCRIVALEN_KEPT", "kept", 1);
  ::setenv("SCRIVALEN_CHANGED", "before", 1);
  const std::wstring printing = L"printf '%s|%s|%s' \"$SCRIVALEN_KEPT\" \"$SCRIVALEN_CHANGED\" \"$SCRIVALEN_NEW\" >&2";
  const std::vector<std::wstring> variables = {L"SCRIVALEN_CHANGED=after \u20AC", L"SCRIVALEN_NEW=a=b"};
  const ProcessResult result = runProgram({L"sh", L"-c", printing}, variables);
  EXPECT_EQ(result.messages, std::vector<std::wstring>{L"kept|after \u20AC|a=b"});
  EXPECT_STREQ(std::getenv("SCRIVALEN_CHANGED"), "before");
  ::unsetenv("SCRIVALEN_KEPT");
  ::unsetenv("SCRIVALEN_CHANGED");
}

TEST(RunProgram, StopsAProgramAndItsChildren) {
  const StopOnceStarted stop;
  EXPECT_EQ(stop.run(L"sleep 60 & : > \"$1\"; wait").exitStatus, -1);
}

TEST(RunProgram, StopsAProgramWhenItsSetupSaysSo) {
  int questions = 0;
  const auto start = std::chrono::steady_clock::now();
  const ProcessResult result =
      runProgram({L"sh", L"-c", L"sleep 60 & wait"}, {}, {L"", [&questions] { return ++questions > 3; }});
  EXPECT_EQ(result.signal, SIGTERM);
  EXPECT_GT(questions, 3);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST(RunProgram, RunsAProgramInAFolder) {
  const TemporaryFolder folder;
  makeFolder(folder / L"a b");
  const ProcessResult result = runProgram({L"sh", L"-c", L"pwd > out"}, {}, {folder / L"a b", nullptr});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(bytesOf(folder / L"a b/out"), narrowPath(folder / L"a b") + "\n");
}

TEST(RunProgram, FindsAProgramByAPathFromThisProcesssFolderAndRunsItInAnother) {
  const TemporaryFolder folder;
  makeFolder(folder / L"bin");
  makeFolder(folder / L"other");
  writeBytes(folder / L"bin/program", "#!/bin/sh\necho good > out\n");
  ASSERT_EQ(::chmod(narrowPath(folder / L"bin/program").c_str(), 0700), 0);
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(asPath(folder.path()));
  const ProcessResult result = runProgram({L"bin/program"}, {}, {folder / L"other", nullptr});
  std::filesystem::current_path(before);
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(bytesOf(folder / L"other/out"), "good\n");
}

TEST(RunProgram, StopsAProgramThatClosedItsStandardError) {
  const StopOnceStarted stop;
  EXPECT_EQ(stop.run(L"exec 2>&-; : > \"$1\"; exec sleep 60").exitStatus, -1);
}

TEST(RunProgram, LetsAStoppedProgramCleanUp) {
  const StopOnceStarted stop;
  const ProcessResult result = stop.run(L"trap 'echo tidy >&2; exit 4' TERM; : > \"$1\"; sleep 60");
  EXPECT_EQ(result.exitStatus, 4);
  EXPECT_EQ(result.messages.back(), L"tidy");
}

TEST(RunProgram, KillsAProgramThatRefusesToStop) {
  const StopOnceStarted stop;
  EXPECT_EQ(stop.run(L"trap '' TERM; : > \"$1\"; sleep 60").exitStatus, -1);
}

TEST(RunProgram, ResetsSignalsThatThisProcessIgnores) {
  const auto pipe = std::signal(SIGPIPE, SIG_IGN);
  const auto size = std::signal(SIGXFSZ, SIG_IGN);
  EXPECT_EQ(runProgram({L"sh", L"-c", L"kill -PIPE $$"}).exitStatus, -1);
  EXPECT_EQ(runProgram({L"sh", L"-c", L"kill -XFSZ $$"}).exitStatus, -1);
  std::signal(SIGPIPE, pipe);
  std::signal(SIGXFSZ, size);
}
