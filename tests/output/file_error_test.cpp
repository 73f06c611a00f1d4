#include "output/file_error.h"

#include "support/captured_log.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace scrivalen;
using scrivalen::test::CapturedLog;

TEST(FileErrorText, NamesTheFileAndTheReason) {
  EXPECT_EQ(fileErrorText(FileError::Open, L"a.txt", L"No such file"),
            L"File open/create error for 'a.txt'. No such file");
  EXPECT_EQ(fileErrorText(FileError::Write, L"a.txt", L"Disk full"), L"File write error for 'a.txt'. Disk full");
}

TEST(FileErrorText, KeepsPercentSignsInNames) {
  EXPECT_EQ(fileErrorText(FileError::Open, L"%s%d.txt", L"%s"), L"File open/create error for '%s%d.txt'. %s");
}

TEST(LogFileError, WritesTheSentence) {
  const CapturedLog log;
  logFileError(FileError::Write, L"a.txt", L"Disk full");
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"File write error for 'a.txt'. Disk full"});
}
