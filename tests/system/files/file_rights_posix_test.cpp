#include "system/files/file_rights.h"

#include "output/target_file.h"
#include "support/files.h"
#include "system/files/files.h"
#include "system/messages.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace scrivalen;
using namespace scrivalen::test;

namespace {

constexpr const char* kListName = "system.posix_acl_access";
constexpr unsigned kNobody = 65534;

struct Rights {
  unsigned mode = 0;
  unsigned owner = 0;
  unsigned group = 0;
  std::string list;

  bool operator==(const Rights&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Rights& rights) {
  return stream << std::oct << rights.mode << std::dec << ' ' << rights.owner << ':' << rights.group << ", list of "
                << rights.list.size() << " bytes";
}

Rights rightsOf(const std::wstring& path) {
  struct stat status {};
  EXPECT_EQ(::stat(narrowPath(path).c_str(), &status), 0);
  Rights rights{status.st_mode & 0777u, status.st_uid, status.st_gid, std::string(1024, '\0')};
  const ssize_t size = ::getxattr(narrowPath(path).c_str(), kListName, rights.list.data(), rights.list.size());
  rights.list.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
  return rights;
}

// An access control list as acl(5) and Linux's headers describe it: tags 1 owner, 2 user, 4 group, 8 another group, 16
// mask, 32 others.
struct Entry {
  unsigned tag;
  unsigned rights;
  unsigned id = 0xFFFFFFFF;
};

std::string listOf(std::initializer_list<Entry> entries) {
  std::string bytes("\2\0\0\0", 4);
  for (const Entry& entry : entries) {
    for (const unsigned value :
         {entry.tag, entry.tag >> 8, entry.rights, 0u, entry.id, entry.id >> 8, entry.id >> 16, entry.id >> 24}) {
      bytes += static_cast<char>(static_cast<unsigned char>(value & 0xFF));
    }
  }
  return bytes;
}

void setList(const std::wstring& path, const std::string& list, const char* name = kListName) {
  ASSERT_EQ(::setxattr(narrowPath(path).c_str(), name, list.data(), list.size(), 0), 0) << errno;
}

void setRights(const std::wstring& path, unsigned mode, unsigned owner, unsigned group) {
  ASSERT_EQ(::chown(narrowPath(path).c_str(), owner, group), 0);
  ASSERT_EQ(::chmod(narrowPath(path).c_str(), mode), 0);
}

// Runs as an unprivileged user for its lifetime.
class AsNobody {
 public:
  AsNobody() {
    EXPECT_EQ(::setegid(kNobody), 0);
    EXPECT_EQ(::seteuid(kNobody), 0);
  }
  AsNobody(const AsNobody&) = delete;
  AsNobody& operator=(const AsNobody&) = delete;
  ~AsNobody() {
    EXPECT_EQ(::seteuid(0), 0);
    EXPECT_EQ(::setegid(0), 0);
  }
};

// Tests that switch users, as only the superuser can.
class FileRights : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(::geteuid(), 0u) << "these tests change owners and need to run as the superuser";
    ASSERT_EQ(::chmod(narrowPath(folder.path()).c_str(), 0777), 0);
    writeBytes(old, "old");
    writeBytes(made, "new");
  }

  void replace() {
    TargetFile target;
    ASSERT_TRUE(target.prepare(old));
    writeBytes(target.newFile(), "new");
    ASSERT_TRUE(target.replaceBy(target.newFile()));
    ASSERT_EQ(bytesOf(old), "new");
  }

  const TemporaryFolder folder;
  const std::wstring old = folder / L"old";
  const std::wstring made = folder / L"made";
};

}  // namespace

TEST_F(FileRights, StayWithAFileThatIsReplaced) {
  for (const unsigned mode : {0600u, 0640u, 0664u, 0666u, 0755u}) {
    setRights(old, mode, 1234, 2345);
    replace();
    EXPECT_EQ(rightsOf(old), (Rights{mode, 1234, 2345, {}}));
  }
}

TEST_F(FileRights, KeepAnAccessControlList) {
  const std::string list = listOf({{1, 6}, {2, 6, 1000}, {2, 0, 1001}, {4, 4}, {16, 6}, {32, 0}});
  setRights(old, 0640, 1234, 2345);
  setList(old, list);
  replace();
  EXPECT_EQ(rightsOf(old), (Rights{0660, 1234, 2345, list}));
}

TEST_F(FileRights, IgnoreTheFoldersDefaultListWhenAFileIsReplaced) {
  setRights(old, 0600, 0, 0);
  setList(folder.path(), listOf({{1, 7}, {2, 7, 1000}, {4, 7}, {16, 7}, {32, 5}}), "system.posix_acl_default");
  replace();
  EXPECT_EQ(rightsOf(old), (Rights{0600, 0, 0, {}}));
}

TEST_F(FileRights, OfANewFileAreThoseOfAnyFileInItsFolder) {
  const mode_t before = ::umask(027);
  ASSERT_TRUE(deleteFile(old));
  replace();
  EXPECT_EQ(rightsOf(old).mode, 0640u);
  ::umask(before);
  ASSERT_TRUE(deleteFile(old));
  setList(folder.path(), listOf({{1, 7}, {2, 7, 1000}, {4, 7}, {16, 7}, {32, 0}}), "system.posix_acl_default");
  ASSERT_EQ(::chmod(narrowPath(folder.path()).c_str(), 02770), 0);
  ASSERT_EQ(::chown(narrowPath(folder.path()).c_str(), 0, 2345), 0);
  ASSERT_EQ(::chmod(narrowPath(folder.path()).c_str(), 02770), 0);
  writeBytes(folder / L"other", "");
  replace();
  EXPECT_EQ(rightsOf(old), rightsOf(folder / L"other"));
  EXPECT_EQ(rightsOf(old).group, 2345u);
}

// No other user may read the new content before it has the old file's permissions.
TEST_F(FileRights, OfNewContentAdmitOnlyItsUser) {
  TargetFile target;
  ASSERT_TRUE(target.prepare(old));
  EXPECT_EQ(rightsOf(target.folder()), (Rights{0700, 0, 0, {}}));
  writeBytes(target.newFile(), "new");
  const AsNobody nobody;
  EXPECT_EQ(openForReading(target.newFile()), nullptr);
  EXPECT_EQ(lastSystemError(), std::uint32_t{EACCES});
}

// The new file is in another group, so the group and others keep only the permissions that both had.
TEST_F(FileRights, AreNarrowedWhenTheGroupCannotBeKept) {
  for (const auto& [before, after] : {std::pair{0664u, 0644u}, {0660u, 0600u}, {0606u, 0600u}, {0446u, 0444u}}) {
    ASSERT_TRUE(deleteFile(old));
    writeBytes(old, "old");
    setRights(old, before, 0, 0);
    const AsNobody nobody;
    replace();
    EXPECT_EQ(rightsOf(old), (Rights{after, kNobody, kNobody, {}}));
  }
}

TEST_F(FileRights, AreNarrowedWhenTheOwnerCannotBeKept) {
  setRights(old, 0464, 0, kNobody);
  const AsNobody nobody;
  replace();
  EXPECT_EQ(rightsOf(old), (Rights{0444, kNobody, kNobody, {}}));
}

TEST_F(FileRights, AreTheCommonOnesWhenAnAccessControlListCannotBeKept) {
  setRights(old, 0660, 0, 0);
  setList(old, listOf({{1, 6}, {2, 6, 1000}, {2, 4, 1001}, {4, 6}, {16, 6}, {32, 6}}));
  {
    const AsNobody nobody;
    replace();
  }
  EXPECT_EQ(rightsOf(old), (Rights{0644, kNobody, kNobody, {}}));
}

TEST_F(FileRights, MayOnlyBeLeftUnsetWhenNotTooWide) {
  setRights(old, 0600, 0, 0);
  setRights(made, 0644, 0, 0);
  {
    const AsNobody nobody;
    EXPECT_FALSE(copyRights(old, made));
    EXPECT_EQ(lastSystemError(), std::uint32_t{EPERM});
  }
  setRights(made, 0600, 0, 0);
  setRights(old, 0644, 0, 0);
  const AsNobody nobody;
  EXPECT_TRUE(copyRights(old, made));
}

TEST_F(FileRights, PreventAReplacementThatWouldWidenThem) {
  setRights(old, 0600, 0, 0);
  setRights(made, 0644, 0, 0);
  const AsNobody nobody;
  EXPECT_FALSE(replaceFile(made, old));
  EXPECT_FALSE(copyRights(folder / L"missing", made));
}
