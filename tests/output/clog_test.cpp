#include "output/clog.h"

#include "output/log_loss.h"
#include "support/captured_log.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

using scrivalen::test::CapturedLog;

TEST(Log, WritesAMessageAsOneLine) {
  const CapturedLog log;
  CLog::Bug2(L"first\r\nsecond\n");
  ASSERT_EQ(log.lines().size(), 1u);
  EXPECT_EQ(log.lines()[0], L"first second");
}

TEST(Log, ReportsADefectWithItsPlace) {
  const CapturedLog log;
  CLog::Bug(L"HHC Error!", L"CHM", 156, L"Run Compiler");
  ASSERT_EQ(log.lines().size(), 1u);
  EXPECT_EQ(log.lines()[0], L"HHC Error! CHM(156): Run Compiler");
}

TEST(Log, ReturnsTheSystemsTextWithoutALineEnd) {
  EXPECT_EQ(scrivalen::openForReading(L"no such folder here/no such file"), nullptr);
  std::wstring message;
  const std::uint32_t error = CLog::FormatLastError(message);
  EXPECT_NE(error, 0u);
  ASSERT_FALSE(message.empty());
  EXPECT_EQ(message.find_first_of(L"\r\n"), std::wstring::npos);
  std::wstring again;
  EXPECT_EQ(CLog::FormatLastError(again, error), error);
  EXPECT_EQ(again, message);
}

TEST(Log, NamesTheVersion) { EXPECT_EQ(CLog::VersionStr(0), L"Scrivalen 1.1.0"); }

TEST(LossLine, IsNotWrittenWithoutALoss) {
  const CapturedLog log;
  scrivalen::logLoss(L"out.txt", {});
  EXPECT_TRUE(log.lines().empty());
}

TEST(LossLine, ReportsTheCountAndTheFirstCharacter) {
  const CapturedLog log;
  scrivalen::LossCounter loss;
  loss.note(0x141);
  scrivalen::logLoss(L"out.txt", loss);
  loss.note(0x1F600);
  scrivalen::logLoss(L"out.txt", loss);
  ASSERT_EQ(log.lines().size(), 2u);
  EXPECT_EQ(log.lines()[0], L"'out.txt': 1 character could not be written as it was given: U+0141.");
  EXPECT_EQ(log.lines()[1], L"'out.txt': 2 characters could not be written as they were given, the first is U+0141.");
}
