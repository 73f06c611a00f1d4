#include "output/target_file.h"

#include "support/files.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace scrivalen::platform;
using namespace scrivalen::test;

namespace {

std::size_t fileCount(const TemporaryFolder& folder) { return filesEndingWith(folder.path(), L"").size(); }

bool isHeld(const std::wstring& path) {
  const NativeFile file = openForReading(path);
  return !file || !closeFile(file);
}

}  // namespace

TEST(TargetFile, IsThereAndHeldFromTheBeginning) {
  const TemporaryFolder folder;
  TargetFile target;
  ASSERT_TRUE(target.hold(folder / L"a"));
  EXPECT_TRUE(exists(folder / L"a"));
  EXPECT_TRUE(isHeld(folder / L"a"));
  EXPECT_EQ(fileCount(folder), 1u);
}

TEST(TargetFile, KeepsWhatItHadUntilItIsReplaced) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "old");
  TargetFile target;
  ASSERT_TRUE(target.hold(folder / L"a"));
  const auto finished = target.createTemporary();
  ASSERT_TRUE(finished.has_value());
  writeBytes(*finished, "new and longer");
  target.release();
  EXPECT_EQ(bytesOf(folder / L"a"), "old");
  ASSERT_TRUE(target.hold(folder / L"a"));
  EXPECT_TRUE(target.replaceBy(*finished));
  target.release();
  EXPECT_EQ(bytesOf(folder / L"a"), "new and longer");
  EXPECT_EQ(fileCount(folder), 1u);
}

TEST(TargetFile, IsFreeAgainOnceItIsReplaced) {
  const TemporaryFolder folder;
  TargetFile target;
  ASSERT_TRUE(target.hold(folder / L"a"));
  const auto finished = target.createTemporary();
  writeBytes(finished.value_or(L""), "x");
  EXPECT_TRUE(target.replaceBy(finished.value_or(L"")));
  EXPECT_FALSE(isHeld(folder / L"a"));
}

TEST(TargetFile, GoesAwayWhenItWasNewAndNotReplaced) {
  const TemporaryFolder folder;
  {
    TargetFile target;
    ASSERT_TRUE(target.hold(folder / L"a"));
  }
  EXPECT_FALSE(exists(folder / L"a"));
  EXPECT_EQ(fileCount(folder), 0u);
}

TEST(TargetFile, StaysWhenItWasThereAndNotReplaced) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "");
  {
    TargetFile target;
    ASSERT_TRUE(target.hold(folder / L"a"));
  }
  EXPECT_TRUE(exists(folder / L"a"));
}

TEST(TargetFile, KeepsWhatItHadWhenItCannotBeReplaced) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "old");
  {
    TargetFile target;
    ASSERT_TRUE(target.hold(folder / L"a"));
    EXPECT_FALSE(target.replaceBy(folder / L"missing"));
  }
  EXPECT_EQ(bytesOf(folder / L"a"), "old");
}

TEST(TargetFile, IsRefusedWhereNoFileCanBe) {
  const TemporaryFolder folder;
  TargetFile target;
  EXPECT_FALSE(target.hold(folder / L"missing/a"));
  EXPECT_FALSE(target.hold(folder.path()));
  EXPECT_FALSE(target.hold(L""));
}

TEST(TargetFile, IsRefusedWhileItIsHeld) {
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

TEST(TargetFile, HasItsTemporaryFilesBesideIt) {
  const TemporaryFolder folder;
  TargetFile target;
  ASSERT_TRUE(target.hold(folder / L"a"));
  EXPECT_TRUE(isSameFile(target.folder(), folder.path()));
  const auto temporary = target.createTemporary();
  ASSERT_TRUE(temporary.has_value());
  EXPECT_TRUE(isSameFile(std::wstring(folderOf(*temporary)), folder.path()));
  EXPECT_TRUE(deleteFile(*temporary));
}

TEST(TargetFile, HasTemporaryFilesThatNobodyElseMayRead) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "secret");
  constexpr auto kOwnersOnly = std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
  std::filesystem::permissions(asPath(folder / L"a"), kOwnersOnly);
  const auto permissions = std::filesystem::status(asPath(folder / L"a")).permissions();
  TargetFile target;
  ASSERT_TRUE(target.hold(folder / L"a"));
  const auto temporary = target.createTemporary();
  ASSERT_TRUE(temporary.has_value());
  EXPECT_EQ(std::filesystem::status(asPath(*temporary)).permissions(), permissions);
  EXPECT_TRUE(deleteFile(*temporary));
}
