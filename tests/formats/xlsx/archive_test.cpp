#include "formats/xlsx/archive.h"

#include "support/documents/archive_maker.h"
#include "support/files.h"

#include <gtest/gtest.h>

using namespace scrivalen;
using namespace scrivalen::test;

namespace {

// Every member as `name: content`, or the reason why there are none.
std::string read(const std::string& bytes) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a.zip", bytes);
  File file = openForReading(folder / L"a.zip");
  const auto members = membersOf(file);
  std::string result = members ? "" : "no directory";
  for (const ArchiveMember& member : members.value_or(std::vector<ArchiveMember>())) {
    result += member.name + ": " + unpacked(file, member).value_or("cannot be unpacked") + '\n';
  }
  EXPECT_TRUE(file.close());
  return result;
}

const ArchiveContent kContent = {{"a", "first"}, {"folder/b", std::string(3000, 'b')}, {"c", ""}};
const std::string kRead = "a: first\nfolder/b: " + std::string(3000, 'b') + "\nc: \n";

}  // namespace

TEST(Archive, ListsItsMembers) { EXPECT_EQ(read(archiveOf(kContent)), kRead); }

TEST(Archive, ListsItsMembersInTheLargeFormToo) { EXPECT_EQ(read(archiveOf(kContent, Numbers::Large)), kRead); }

TEST(Archive, MayBeEmpty) { EXPECT_EQ(read(archiveOf({})), ""); }

TEST(Archive, HasNoMembersWithoutItsDirectory) {
  EXPECT_EQ(read(""), "no directory");
  EXPECT_EQ(read(std::string(100, 'x')), "no directory");
}

TEST(Archive, HasNoMembersWhenTruncatedAnywhere) {
  for (const Numbers numbers : {Numbers::Plain, Numbers::Large}) {
    const std::string bytes = archiveOf(kContent, numbers);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
      EXPECT_EQ(read(bytes.substr(0, size)), "no directory") << size;
    }
  }
}

TEST(Archive, IsReadSafelyWithAnyByteCorrupted) {
  for (const Numbers numbers : {Numbers::Plain, Numbers::Large}) {
    const std::string bytes = archiveOf(kContent, numbers);
    for (std::size_t at = 0; at < bytes.size(); ++at) {
      std::string wrong = bytes;
      wrong[at] = static_cast<char>(~wrong[at]);
      EXPECT_LT(read(wrong).size(), 4000u) << at;
    }
  }
}

TEST(Archive, RefusesAMemberWhoseSizeIsWrong) {
  std::string bytes = archiveOf({{"a", "first"}});
  const std::size_t size = bytes.find("PK\1\2") + 24;
  bytes[size] = 6;
  EXPECT_EQ(read(bytes), "a: cannot be unpacked\n");
  bytes[size] = 4;
  EXPECT_EQ(read(bytes), "a: cannot be unpacked\n");
}
