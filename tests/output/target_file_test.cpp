#include "output/target_file.h"

#include "support/files.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <iterator>
#include <thread>
#include <vector>

using namespace scrivalen;
using namespace scrivalen::test;

namespace {

std::size_t entryCount(const TemporaryFolder& folder) {
  const std::filesystem::directory_iterator entries(asPath(folder.path()));
  return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

bool isHeld(const std::wstring& path) {
  File file = openForReading(path);
  return !file || !file.close();
}

}  // namespace

TEST(TargetFile, ExistsAndIsHeldFromTheStart) {
  const TemporaryFolder folder;
  TargetFile target;
  ASSERT_TRUE(target.hold(folder / L"a"));
  EXPECT_TRUE(exists(folder / L"a"));
  EXPECT_TRUE(isHeld(folder / L"a"));
}

TEST(TargetFile, KeepsItsContentUntilItIsReplaced) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "old");
  TargetFile target;
  ASSERT_TRUE(target.hold(folder / L"a"));
  writeBytes(target.newFile(), "new and longer");
  target.release();
  EXPECT_EQ(bytesOf(folder / L"a"), "old");
  ASSERT_TRUE(target.hold(folder / L"a"));
  writeBytes(target.newFile(), "new and longer");
  EXPECT_TRUE(target.replaceBy(target.newFile()));
  target.release();
  EXPECT_EQ(bytesOf(folder / L"a"), "new and longer");
  EXPECT_EQ(entryCount(folder), 1u);
}

TEST(TargetFile, IsReleasedOnceItIsReplaced) {
  const TemporaryFolder folder;
  TargetFile target;
  ASSERT_TRUE(target.hold(folder / L"a"));
  writeBytes(target.newFile(), "x");
  EXPECT_TRUE(target.replaceBy(target.newFile()));
  EXPECT_FALSE(isHeld(folder / L"a"));
}

TEST(TargetFile, NeedNotBeHeldOrExist) {
  const TemporaryFolder folder;
  TargetFile target;
  ASSERT_TRUE(target.prepare(folder / L"a"));
  EXPECT_FALSE(exists(folder / L"a"));
  writeBytes(target.newFile(), "x");
  EXPECT_TRUE(target.replaceBy(target.newFile()));
  target.release();
  EXPECT_EQ(bytesOf(folder / L"a"), "x");
  EXPECT_EQ(entryCount(folder), 1u);
}

TEST(TargetFile, CanBeReplacedByAFileFromElsewhere) {
  const TemporaryFolder folder;
  const TemporaryFolder elsewhere;
  writeBytes(elsewhere / L"made", "new");
  writeBytes(folder / L"a", "old");
  TargetFile target;
  ASSERT_TRUE(target.prepare(folder / L"a"));
  EXPECT_TRUE(target.replaceBy(elsewhere / L"made"));
  EXPECT_EQ(bytesOf(folder / L"a"), "new");
  EXPECT_FALSE(exists(elsewhere / L"made"));
}

TEST(TargetFile, LeavesAFileFromElsewhereThatCannotReplaceIt) {
  const TemporaryFolder folder;
  const TemporaryFolder elsewhere;
  writeBytes(elsewhere / L"made", "new");
  TargetFile target;
  ASSERT_TRUE(target.prepare(folder / L"a"));
  makeFolder(folder / L"a");
  writeBytes(folder / L"a/b", "");
  EXPECT_FALSE(target.replaceBy(elsewhere / L"made"));
  EXPECT_EQ(bytesOf(elsewhere / L"made"), "new");
}

TEST(TargetFile, IsRemovedWhenItWasNewAndNotReplaced) {
  const TemporaryFolder folder;
  {
    TargetFile target;
    ASSERT_TRUE(target.hold(folder / L"a"));
  }
  EXPECT_FALSE(exists(folder / L"a"));
  EXPECT_EQ(entryCount(folder), 0u);
}

TEST(TargetFile, StaysWhenItExistedAndWasNotReplaced) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "");
  {
    TargetFile target;
    ASSERT_TRUE(target.hold(folder / L"a"));
  }
  EXPECT_TRUE(exists(folder / L"a"));
}

TEST(TargetFile, KeepsItsContentWhenItCannotBeReplaced) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "old");
  {
    TargetFile target;
    ASSERT_TRUE(target.hold(folder / L"a"));
    EXPECT_FALSE(target.replaceBy(folder / L"missing"));
  }
  EXPECT_EQ(bytesOf(folder / L"a"), "old");
}

TEST(TargetFile, IsRefusedWhereNoFileCanExist) {
  const TemporaryFolder folder;
  TargetFile target;
  EXPECT_FALSE(target.hold(folder / L"missing/a"));
  EXPECT_FALSE(target.hold(folder.path()));
  EXPECT_FALSE(target.hold(L""));
}

TEST(TargetFile, IsRefusedWhileHeld) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "kept");
  TargetFile first;
  TargetFile second;
  ASSERT_TRUE(first.hold(folder / L"a"));
  EXPECT_FALSE(second.hold(folder / L"a"));
  first.release();
  EXPECT_TRUE(second.hold(folder / L"a"));
  second.release();
  EXPECT_EQ(bytesOf(folder / L"a"), "kept");
}

TEST(TargetFile, IsPreparedInAFolderBesideIt) {
  const TemporaryFolder folder;
  TargetFile target;
  ASSERT_TRUE(target.hold(folder / L"a"));
  EXPECT_TRUE(isSameFile(std::wstring(folderOf(target.folder())), folder.path()));
  EXPECT_EQ(target.newFile(), target.folder() + kPathSeparator + L"a");
  EXPECT_FALSE(exists(target.newFile()));
  EXPECT_EQ(entryCount(folder), 2u);
}

TEST(TargetFile, RemovesTheFilesThatAKilledRunLeft) {
  const TemporaryFolder folder;
  std::wstring left;
  {
    TargetFile killed;
    ASSERT_TRUE(killed.prepare(folder / L"a"));
    left = folder / fileNameOf(killed.folder());
  }
  makeFolder(left + L"/inner");
  writeBytes(left + L"/a", "half");
  writeBytes(left + L"/inner/b", "half");
  TargetFile other;
  ASSERT_TRUE(other.prepare(folder / L"another"));
  EXPECT_TRUE(exists(left));
  TargetFile target;
  ASSERT_TRUE(target.prepare(folder / L"a"));
  EXPECT_FALSE(exists(left));
}

TEST(TargetFile, LeavesTheFilesOfAnotherRunAlone) {
  const TemporaryFolder folder;
  TargetFile first;
  TargetFile second;
  ASSERT_TRUE(first.prepare(folder / L"a"));
  writeBytes(first.newFile(), "first");
  ASSERT_TRUE(second.prepare(folder / L"a"));
  writeBytes(second.newFile(), "second");
  EXPECT_EQ(bytesOf(first.newFile()), "first");
  EXPECT_TRUE(second.replaceBy(second.newFile()));
  EXPECT_EQ(bytesOf(folder / L"a"), "second");
  EXPECT_TRUE(first.replaceBy(first.newFile()));
  EXPECT_EQ(bytesOf(folder / L"a"), "first");
}

// Each run removes the folders that look abandoned, while others have only just created theirs.
TEST(TargetFile, IsNotMistakenForAbandonedByConcurrentRuns) {
  constexpr int kThreads = 4;
  const TemporaryFolder folder;
  std::atomic<int> failures = 0;
  const auto prepare = [&] {
    for (int i = 0; i < 100; ++i) {
      TargetFile target;
      File file = target.prepare(folder / L"a") ? createNew(target.newFile()) : File();
      const bool isWritten = file && file.close() && exists(target.newFile());
      failures += isWritten ? 0 : 1;
    }
  };
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back(prepare);
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(entryCount(folder), 0u);
}
