#include "scrivalen/output_file.h"

#include "output/clog.h"
#include "support/captured_log.h"
#include "support/files.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

TEST(ReportFile, BuffersUntilItIsFlushed) {
  const TemporaryFolder folder;
  ReportFile file;
  ASSERT_TRUE(file.Open((folder / L"a").c_str()));
  file.Write("abc", 3);
  EXPECT_EQ(file.Position(), 3u);
  EXPECT_TRUE(file.Flush());
  file.Write("de", 2);
  EXPECT_EQ(file.Position(), 5u);
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(bytesOf(folder / L"a"), "abcde");
}

TEST(ReportFile, ReportsItsNameAndWhetherItIsOpen) {
  const TemporaryFolder folder;
  ReportFile file;
  EXPECT_FALSE(file.IsOpen());
  EXPECT_EQ(file.Handle(), nullptr);
  EXPECT_STREQ(file.Name(), L"");
  ASSERT_TRUE(file.Open((folder / L"a").c_str()));
  EXPECT_TRUE(file.IsOpen());
  EXPECT_NE(file.Handle(), nullptr);
  EXPECT_EQ(file.Name(), folder / L"a");
  EXPECT_TRUE(file.Close());
  EXPECT_FALSE(file.IsOpen());
}

TEST(ReportFile, WritesMoreThanItsBufferHolds) {
  const TemporaryFolder folder;
  std::string expected;
  ReportFile file;
  ASSERT_TRUE(file.Open((folder / L"a").c_str()));
  for (int i = 0; i < 50000; ++i) {
    const std::string line = "line " + std::to_string(i) + "\n";
    file.Write(line.data(), line.size());
    expected += line;
  }
  const std::string large(200000, 'x');
  file.Write(large.data(), large.size());
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(bytesOf(folder / L"a"), expected + large);
}

TEST(ReportFile, IgnoresWritesWithoutAnOpenFile) {
  ReportFile file;
  file.Write("abc", 3);
  EXPECT_EQ(file.Position(), 0u);
  EXPECT_TRUE(file.Flush());
  EXPECT_TRUE(file.Close());
}

TEST(ReportFile, CanBeOpenedAgainAfterClosing) {
  const TemporaryFolder folder;
  ReportFile file;
  ASSERT_TRUE(file.Open((folder / L"a").c_str()));
  file.Write("first", 5);
  EXPECT_TRUE(file.Close());
  ASSERT_TRUE(file.Open((folder / L"b").c_str()));
  EXPECT_EQ(file.Position(), 0u);
  file.Write("second", 6);
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(bytesOf(folder / L"a"), "first");
  EXPECT_EQ(bytesOf(folder / L"b"), "second");
}

TEST(ReportFile, RefusesASecondOpenAndKeepsTheFirst) {
  const TemporaryFolder folder;
  ReportFile file;
  ASSERT_TRUE(file.Open((folder / L"a").c_str()));
  file.Write("first", 5);
  EXPECT_FALSE(file.Open((folder / L"b").c_str()));
  EXPECT_STREQ(file.Error(), L"The report is still open.");
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(bytesOf(folder / L"a"), "first");
  EXPECT_FALSE(exists(folder / L"b"));
}

TEST(ReportFile, ExcludesASecondWriterOfTheSameFile) {
  const TemporaryFolder folder;
  ReportFile first;
  ReportFile second;
  ASSERT_TRUE(first.Open((folder / L"a").c_str()));
  first.Write("kept", 4);
  EXPECT_FALSE(second.Open((folder / L"a").c_str()));
  EXPECT_STRNE(second.Error(), L"");
  EXPECT_TRUE(first.Close());
  EXPECT_EQ(bytesOf(folder / L"a"), "kept");
}

TEST(ReportFile, ReportsWhyItCannotBeOpened) {
  const TemporaryFolder folder;
  ReportFile file;
  EXPECT_FALSE(file.Open((folder / L"missing/a").c_str()));
  EXPECT_STRNE(file.Error(), L"");
  EXPECT_FALSE(file.Open(nullptr));
  EXPECT_FALSE(file.Open(L""));
}

TEST(ReportFile, FlushesWhenItIsDestroyed) {
  const TemporaryFolder folder;
  {
    ReportFile file;
    ASSERT_TRUE(file.Open((folder / L"a").c_str()));
    file.Write("abc", 3);
  }
  EXPECT_EQ(bytesOf(folder / L"a"), "abc");
}

TEST(ReportFile, WritesNothingOnceItsWriterHasGivenUp) {
  const CapturedLog log;
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a";
  ReportFile file;
  ASSERT_TRUE(file.Open(path.c_str()));
  file.Write("abc", 3);
  ASSERT_TRUE(file.Flush());
  file.Write("lost", 4);
  scrivalen::giveUp(file, L"No time");
  scrivalen::giveUp(file, L"No reason either");
  file.Write("lost", 4);
  EXPECT_FALSE(file.Flush());
  EXPECT_FALSE(file.Close());
  EXPECT_STREQ(file.WriteError(), L"No time");
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"File write error for '" + path + L"'. No time"});
  EXPECT_EQ(bytesOf(path), "abc");
  scrivalen::giveUp(file, L"Too late");
  EXPECT_TRUE(file.Open(path.c_str()));
  EXPECT_TRUE(file.Close());
}
