#include "platform/files.h"

#include "platform/utf.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace scrivalen::platform;
using namespace scrivalen::test;

TEST(Files, MoveWorksFromOneVolumeToAnother) {
  const TemporaryFolder folder;
  if (!isFolder(L"/dev/shm")) {
    FAIL() << "this test needs a second volume at /dev/shm";
  }
  const std::wstring source = L"/dev/shm/scrivalen-" + randomName();
  writeBytes(source, std::string(200000, 'x'));
  writeBytes(folder / L"target", "old");
  EXPECT_TRUE(moveReplacing(source, folder / L"target"));
  EXPECT_FALSE(pathExists(source));
  EXPECT_EQ(bytesOf(folder / L"target"), std::string(200000, 'x'));
  EXPECT_EQ(filesEndingWith(folder.path(), L"").size(), 1u);
}

TEST(Files, DevicesAreSpecialAndCanBeWrittenTo) {
  EXPECT_TRUE(isSpecialFile(L"/dev/null"));
  const NativeFile first = openExclusive(L"/dev/null");
  const NativeFile second = openExclusive(L"/dev/null");
  EXPECT_NE(first, nullptr);
  EXPECT_NE(second, nullptr);
  EXPECT_TRUE(closeFile(first));
  EXPECT_TRUE(closeFile(second));
}

TEST(Files, ResolvesLinks) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "");
  std::filesystem::create_symlink(std::filesystem::path(folder / L"a"), std::filesystem::path(folder / L"link"));
  EXPECT_EQ(resolvedPath(folder / L"link"), resolvedPath(folder / L"a"));
  EXPECT_EQ(fileNameOf(resolvedPath(folder / L"link")), L"a");
  EXPECT_EQ(resolvedPath(folder / L"missing"), folder / L"missing");
  EXPECT_TRUE(isSameFile(folder / L"link", folder / L"a"));
}
