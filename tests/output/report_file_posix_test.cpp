#include "scrivalen/output_file.h"

#include "support/captured_log.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>
#include <cstdint>

using scrivalen::test::CapturedLog;

TEST(ReportFileOnAFullDisk, RemembersTheFirstFailureAndLogsItOnce) {
  const CapturedLog log;
  ReportFile file;
  ASSERT_TRUE(file.Open(L"/dev/full"));
  file.Write("abc", 3);
  EXPECT_FALSE(file.Flush());
  file.Write("def", 3);
  EXPECT_FALSE(file.Flush());
  EXPECT_FALSE(file.Close());
  EXPECT_STREQ(file.WriteError(), L"No space left on device");
  ASSERT_EQ(log.lines().size(), 1u);
  EXPECT_EQ(log.lines()[0], L"File write error for '/dev/full'. No space left on device");
}

TEST(ReportFileOnAFullDisk, ForgetsTheFailureWhenItIsOpenedAgain) {
  const CapturedLog log;
  ReportFile file;
  ASSERT_TRUE(file.Open(L"/dev/full"));
  file.Write("abc", 3);
  EXPECT_FALSE(file.Close());
  ASSERT_TRUE(file.Open(L"/dev/null"));
  EXPECT_STREQ(file.WriteError(), L"");
  file.Write("abc", 3);
  EXPECT_TRUE(file.Close());
}

TEST(ReportFileHandle, IsADescriptorAboveTheStandardStreams) {
  const int saved = ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 10);
  ASSERT_GE(saved, 0);
  ::close(STDIN_FILENO);
  ReportFile file;
  EXPECT_TRUE(file.Open(L"/dev/null"));
  EXPECT_GE(reinterpret_cast<std::intptr_t>(file.Handle()), 3);
  EXPECT_TRUE(file.Close());
  ::dup2(saved, STDIN_FILENO);
  ::close(saved);
}
