#include "system/files/files.h"

#include "support/files.h"
#include "system/files/work_folder.h"

#include <scrivalen/text.h>

#include <gtest/gtest.h>

#include <algorithm>

using namespace scrivalen;
using namespace scrivalen::test;

TEST(Files, OpenExclusiveTruncatesAnExistingFile) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "old and long");
  writeBytes(folder / L"a", "new");
  EXPECT_EQ(bytesOf(folder / L"a"), "new");
}

TEST(Files, OpenExclusiveRefusesAHeldFileAndLeavesItAlone) {
  const TemporaryFolder folder;
  File held = openExclusive(folder / L"a");
  ASSERT_NE(held, nullptr);
  EXPECT_TRUE(writeAll(held, "kept", 4));
  EXPECT_EQ(openExclusive(folder / L"a"), nullptr);
  EXPECT_TRUE(held.close());
  EXPECT_EQ(bytesOf(folder / L"a"), "kept");
}

TEST(Files, HoldExclusiveKeepsTheBytesOfAFile) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "kept");
  HeldFile held = holdExclusive(folder / L"a");
  ASSERT_NE(held.file, nullptr);
  EXPECT_FALSE(held.isNew);
  EXPECT_EQ(openExclusive(folder / L"a"), nullptr);
  EXPECT_EQ(holdExclusive(folder / L"a").file, nullptr);
  EXPECT_TRUE(held.file.close());
  EXPECT_EQ(bytesOf(folder / L"a"), "kept");
}

TEST(Files, HoldExclusiveReportsWhetherItCreatedTheFile) {
  const TemporaryFolder folder;
  HeldFile held = holdExclusive(folder / L"a");
  ASSERT_NE(held.file, nullptr);
  EXPECT_TRUE(held.isNew);
  EXPECT_TRUE(held.file.close());
  EXPECT_TRUE(pathExists(folder / L"a"));
  EXPECT_EQ(holdExclusive(folder / L"missing/a").file, nullptr);
}

TEST(Files, AreReadAtAnyOffset) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "0123456789");
  File file = openForReading(folder / L"a");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(sizeOf(file), 10u);
  char bytes[3] = {};
  EXPECT_TRUE(readAt(file, 7, bytes, 3));
  EXPECT_EQ(std::string_view(bytes, 3), "789");
  EXPECT_TRUE(readAt(file, 0, bytes, 3));
  EXPECT_EQ(std::string_view(bytes, 3), "012");
  EXPECT_FALSE(readAt(file, 8, bytes, 3));
  EXPECT_TRUE(readAt(file, 20, bytes, 0));
  EXPECT_TRUE(file.close());
}

TEST(Files, OpenForReadingRefusesAFileThatIsHeldForWriting) {
  const TemporaryFolder folder;
  File held = openExclusive(folder / L"a");
  EXPECT_EQ(openForReading(folder / L"a"), nullptr);
  EXPECT_TRUE(held.close());
}

TEST(Files, OpenExclusiveRefusesAFileThatIsBeingRead) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "kept");
  File reader = openForReading(folder / L"a");
  EXPECT_EQ(openExclusive(folder / L"a"), nullptr);
  EXPECT_TRUE(reader.close());
  EXPECT_EQ(bytesOf(folder / L"a"), "kept");
}

TEST(Files, OpenForReadingAllowsOtherReaders) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "x");
  File first = openForReading(folder / L"a");
  File second = openForReading(folder / L"a");
  EXPECT_NE(first, nullptr);
  EXPECT_NE(second, nullptr);
  EXPECT_TRUE(first.close());
  EXPECT_TRUE(second.close());
}

TEST(Files, AFolderIsNotAFile) {
  const TemporaryFolder folder;
  EXPECT_EQ(openExclusive(folder.path()), nullptr);
  EXPECT_EQ(openForReading(folder.path()), nullptr);
  EXPECT_TRUE(pathExists(folder.path()));
  EXPECT_TRUE(isFolder(folder.path()));
}

TEST(Files, OpenFailsInAMissingFolder) {
  const TemporaryFolder folder;
  EXPECT_EQ(openExclusive(folder / L"missing/a"), nullptr);
  EXPECT_FALSE(pathExists(folder / L"missing/a"));
}

TEST(Files, CreateNewLeavesAnExistingFileAlone) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "kept");
  EXPECT_EQ(createNew(folder / L"a"), nullptr);
  EXPECT_EQ(bytesOf(folder / L"a"), "kept");
}

TEST(Files, NamesMayHoldAnyLetters) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"r\u00E9sum\u00E9 \u4E2D\u6587 & 'x'.txt";
  writeBytes(path, "x");
  EXPECT_TRUE(pathExists(path));
  EXPECT_EQ(filesEndingWith(folder.path(), L".TXT"),
            std::vector<std::wstring>{L"r\u00E9sum\u00E9 \u4E2D\u6587 & 'x'.txt"});
}

TEST(Paths, KeepTheirLettersInNarrowForm) {
  const std::wstring path = L"a/r\u00E9sum\u00E9 \u4E2D.txt";
  EXPECT_EQ(narrowPath(path), "a/r\xC3\xA9sum\xC3\xA9 \xE4\xB8\xAD.txt");
  EXPECT_EQ(widePath(narrowPath(path)), path);
  EXPECT_EQ(widePath("\xF0\x9F\x98\x80"), scrivalen::FromUtf8("\xF0\x9F\x98\x80"));
  EXPECT_EQ(narrowPath(scrivalen::FromUtf8("\xF0\x9F\x98\x80")), "\xF0\x9F\x98\x80");
}

TEST(Files, MoveReplacesTheTarget) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "new");
  writeBytes(folder / L"b", "old");
  EXPECT_TRUE(moveReplacing(folder / L"a", folder / L"b"));
  EXPECT_FALSE(pathExists(folder / L"a"));
  EXPECT_EQ(bytesOf(folder / L"b"), "new");
}

TEST(Files, MoveOfAMissingFileFailsAndLeavesTheTarget) {
  const TemporaryFolder folder;
  writeBytes(folder / L"b", "old");
  EXPECT_FALSE(moveReplacing(folder / L"a", folder / L"b"));
  EXPECT_EQ(bytesOf(folder / L"b"), "old");
}

TEST(Files, DeleteReturnsWhetherTheFileExisted) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "");
  EXPECT_TRUE(deleteFile(folder / L"a"));
  EXPECT_FALSE(deleteFile(folder / L"a"));
}

TEST(Files, ListsFilesByEndingInAnyCase) {
  const TemporaryFolder folder;
  for (const wchar_t* name : {L"a.htm", L"B.HTM", L"c.html", L"d.htmx", L"htm"}) {
    writeBytes(folder / name, "");
  }
  std::vector<std::wstring> names = filesEndingWith(folder.path(), L".htm");
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::wstring>{L"B.HTM", L"a.htm"}));
  EXPECT_EQ(filesEndingWith(folder.path() + kPathSeparator, L".htmx"), std::vector<std::wstring>{L"d.htmx"});
  EXPECT_TRUE(filesEndingWith(folder / L"missing", L".htm").empty());
}

TEST(WorkFolder, IsNewAndRemovedAgain) {
  WorkFolder first;
  WorkFolder second;
  ASSERT_TRUE(first.createElsewhere() && second.createElsewhere());
  const std::wstring path = first.path();
  EXPECT_NE(path, second.path());
  EXPECT_TRUE(isFolder(path));
  first.remove();
  EXPECT_FALSE(pathExists(path));
  EXPECT_TRUE(isFolder(second.path()));
}

TEST(Files, AFileBesideIsInTheSameFolder) {
  const TemporaryFolder folder;
  const auto beside = createFileBeside(folder / L"out.html");
  ASSERT_TRUE(beside.has_value());
  EXPECT_EQ(folderOf(*beside), folder / L"");
  EXPECT_EQ(bytesOf(*beside), "");
  EXPECT_EQ(createFileBeside(folder / L"missing/out.html"), std::nullopt);
}

TEST(Files, RecognizesOneFileByTwoPaths) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "");
  writeBytes(folder / L"b", "");
  EXPECT_TRUE(isSameFile(folder / L"a", folder.path() + L"/./a"));
  EXPECT_FALSE(isSameFile(folder / L"a", folder / L"b"));
  EXPECT_FALSE(isSameFile(folder / L"a", folder / L"missing"));
  EXPECT_FALSE(isSameFile(folder / L"missing", folder / L"missing"));
}

TEST(Files, AskTheirFolderWhetherCaseMatters) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "");
  EXPECT_EQ(ignoresCase(folder / L"x"), pathExists(folder / L"A"));
  EXPECT_EQ(filesEndingWith(folder.path(), L""), std::vector<std::wstring>{L"a"});
  EXPECT_FALSE(ignoresCase(folder / L"missing/x"));
}

TEST(Paths, HaveAnOrder) {
  EXPECT_EQ(comparePaths(L"/a", L"/a"), 0);
  EXPECT_LT(comparePaths(L"/a", L"/b"), 0);
  EXPECT_GT(comparePaths(L"/b", L"/a"), 0);
  EXPECT_LT(comparePaths(L"/a", L"/ab"), 0);
}

TEST(Files, OrdinaryFilesAreNotSpecial) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "");
  EXPECT_FALSE(isSpecialFile(folder / L"a"));
  EXPECT_FALSE(isSpecialFile(folder.path()));
  EXPECT_FALSE(isSpecialFile(folder / L"missing"));
}

TEST(Files, ReadsAFileToItsEnd) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "abcde");
  File file = openForReading(folder / L"a");
  char bytes[3];
  EXPECT_EQ(readSome(file, bytes, 3), 3u);
  EXPECT_EQ(readSome(file, bytes, 3), 2u);
  EXPECT_EQ(readSome(file, bytes, 3), 0u);
  EXPECT_TRUE(file.close());
}

TEST(FolderOf, KeepsTheSeparator) {
  const std::wstring path = std::wstring(L"one") + kPathSeparator + L"two.txt";
  EXPECT_EQ(folderOf(path), std::wstring(L"one") + kPathSeparator);
  EXPECT_EQ(fileNameOf(path), L"two.txt");
  EXPECT_EQ(folderOf(L"two.txt"), L"");
  EXPECT_EQ(fileNameOf(L"two.txt"), L"two.txt");
}
