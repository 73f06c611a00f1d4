#include "output/target_file.h"

#include "support/files.h"
#include "system/files/work_folder.h"
#include "system/messages.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace scrivalen;
using namespace scrivalen::test;

namespace {

namespace fs = std::filesystem;

std::size_t entriesOf(const fs::path& folder) {
  const fs::directory_iterator entries(folder);
  return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

bool replace(const std::wstring& path) {
  TargetFile target;
  if (!target.prepare(path)) {
    return false;
  }
  writeBytes(target.newFile(), "new");
  return target.replaceBy(target.newFile());
}

// Sets the folder for temporary files for its lifetime.
class TemporaryFilesIn {
 public:
  explicit TemporaryFilesIn(const std::wstring& folder) { ::setenv("TMPDIR", narrowPath(folder).c_str(), 1); }
  TemporaryFilesIn(const TemporaryFilesIn&) = delete;
  TemporaryFilesIn& operator=(const TemporaryFilesIn&) = delete;
  ~TemporaryFilesIn() {
    if (hadOne_) {
      ::setenv("TMPDIR", before_.c_str(), 1);
    } else {
      ::unsetenv("TMPDIR");
    }
  }

 private:
  const bool hadOne_ = std::getenv("TMPDIR") != nullptr;
  const std::string before_ = hadOne_ ? std::getenv("TMPDIR") : "";
};

}  // namespace

TEST(TargetFilePosix, RemovesAKilledProcesssFilesButNotALiveOnes) {
  const TemporaryFolder folder;
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  const pid_t process = ::fork();
  if (process == 0) {
    TargetFile target;
    const bool isPrepared = target.prepare(folder / L"a");
    File file = isPrepared ? createNew(target.newFile()) : File();
    const char said = file && writeAll(file, "half", 4) ? 'y' : 'n';
    while (::write(ends[1], &said, 1) == 1) {
      ::pause();
    }
    ::_exit(1);
  }
  char said = 0;
  ASSERT_EQ(::read(ends[0], &said, 1), 1);
  EXPECT_EQ(said, 'y');
  EXPECT_TRUE(replace(folder / L"a"));
  EXPECT_EQ(entriesOf(asPath(folder.path())), 2u);
  ::kill(process, SIGKILL);
  ::waitpid(process, nullptr, 0);
  EXPECT_EQ(entriesOf(asPath(folder.path())), 2u);
  EXPECT_TRUE(replace(folder / L"a"));
  EXPECT_EQ(entriesOf(asPath(folder.path())), 1u);
  ::close(ends[0]);
  ::close(ends[1]);
}

// One that is killed with a folder among the temporary files, as a help report's pages have.
TEST(WorkFolderPosix, IsRemovedByTheNextProcessWhenItsOwnWasKilled) {
  const TemporaryFolder folder;
  const TemporaryFilesIn temporary(folder.path());
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  const pid_t process = ::fork();
  if (process == 0) {
    WorkFolder pages;
    const bool isCreated = pages.createElsewhere() && createNew(pages.path() + L"/page.htm");
    const char said = isCreated ? 'y' : 'n';
    while (::write(ends[1], &said, 1) == 1) {
      ::pause();
    }
    ::_exit(1);
  }
  char said = 0;
  ASSERT_EQ(::read(ends[0], &said, 1), 1);
  EXPECT_EQ(said, 'y');
  EXPECT_TRUE(WorkFolder().createElsewhere());
  EXPECT_EQ(entriesOf(asPath(folder.path())), 1u);
  ::kill(process, SIGKILL);
  ::waitpid(process, nullptr, 0);
  EXPECT_EQ(entriesOf(asPath(folder.path())), 1u);
  EXPECT_TRUE(WorkFolder().createElsewhere());
  EXPECT_EQ(entriesOf(asPath(folder.path())), 0u);
  ::close(ends[0]);
  ::close(ends[1]);
}

TEST(WorkFolderPosix, AmongTheTemporaryFilesAdmitsOnlyItsUser) {
  const TemporaryFolder folder;
  const TemporaryFilesIn temporary(folder.path());
  WorkFolder pages;
  ASSERT_TRUE(pages.createElsewhere());
  EXPECT_EQ(fs::status(asPath(pages.path())).permissions(), fs::perms::owner_all);
}

// Others may write into the folder for temporary files, too.
TEST(WorkFolderPosix, RemovesNeitherThroughLinksNorOtherUsersFiles) {
  const TemporaryFolder folder;
  const TemporaryFolder victim;
  const TemporaryFilesIn temporary(folder.path());
  writeBytes(victim / L"kept", "kept");
  fs::create_directory_symlink(asPath(victim.path()), asPath(folder / L"scrivalen-work-link"));
  makeFolder(folder / L"scrivalen-work-others");
  writeBytes(folder / L"scrivalen-work-others/page.htm", "");
  ASSERT_EQ(::chown(narrowPath(folder / L"scrivalen-work-others").c_str(), 1234, 1234), 0);
  makeFolder(folder / L"scrivalen-other");
  WorkFolder pages;
  ASSERT_TRUE(pages.createElsewhere());
  EXPECT_TRUE(exists(victim / L"kept"));
  EXPECT_TRUE(exists(folder / L"scrivalen-work-others/page.htm"));
  EXPECT_TRUE(exists(folder / L"scrivalen-other"));
}

// Anyone who may write into the folder could plant links there, so that the removal reaches other files.
TEST(TargetFilePosix, NeverRemovesThroughLinksNorOtherUsersFiles) {
  const TemporaryFolder folder;
  const TemporaryFolder victim;
  writeBytes(victim / L"kept", "kept");
  std::wstring left;
  {
    TargetFile killed;
    ASSERT_TRUE(killed.prepare(folder / L"a"));
    left = killed.folder();
  }
  fs::create_directory_symlink(asPath(victim.path()), asPath(left));
  makeFolder(left + L"0");
  writeBytes(left + L"0/others", "");
  ASSERT_EQ(::chown(narrowPath(left + L"0").c_str(), 1234, 1234), 0);
  makeFolder(left + L"1");
  fs::create_directory_symlink(asPath(victim.path()), asPath(left + L"1/link"));
  TargetFile target;
  ASSERT_TRUE(target.prepare(folder / L"a"));
  EXPECT_TRUE(exists(victim / L"kept"));
  EXPECT_TRUE(exists(left + L"0/others"));
  EXPECT_FALSE(exists(left + L"1"));
}

TEST(TargetFilePosix, IsTheTargetOfALinkEvenWhenMissing) {
  const TemporaryFolder folder;
  makeFolder(folder / L"inner");
  fs::create_symlink("inner/middle", asPath(folder / L"link"));
  fs::create_symlink("real", asPath(folder / L"inner/middle"));
  EXPECT_TRUE(replace(folder / L"link"));
  EXPECT_TRUE(fs::is_symlink(asPath(folder / L"link")));
  EXPECT_TRUE(fs::is_symlink(asPath(folder / L"inner/middle")));
  EXPECT_EQ(bytesOf(folder / L"inner/real"), "new");
  EXPECT_TRUE(replace(folder / L"link"));
  EXPECT_EQ(entriesOf(asPath(folder / L"inner")), 2u);
}

TEST(TargetFilePosix, IsRefusedWhereLinksLeadNowhere) {
  const TemporaryFolder folder;
  fs::create_symlink("loop", asPath(folder / L"loop"));
  fs::create_symlink("missing/a", asPath(folder / L"link"));
  EXPECT_FALSE(replace(folder / L"loop"));
  EXPECT_FALSE(replace(folder / L"link"));
  EXPECT_EQ(lastSystemError(), std::uint32_t{ENOENT});
  EXPECT_EQ(entriesOf(asPath(folder.path())), 2u);
}

TEST(TargetFilePosix, MayBeOnAnotherVolume) {
  const TemporaryFolder shared(L"/dev/shm/scrivalen-" + randomName());
  const TemporaryFolder folder;
  for (const std::string content : {"first", "second"}) {
    writeBytes(folder / L"made", content);
    TargetFile target;
    ASSERT_TRUE(target.prepare(shared / L"a"));
    EXPECT_TRUE(target.replaceBy(folder / L"made"));
    EXPECT_EQ(bytesOf(shared / L"a"), content);
  }
  EXPECT_EQ(entriesOf(asPath(shared.path())), 1u);
  EXPECT_EQ(entriesOf(asPath(folder.path())), 0u);
}

TEST(TargetFilePosix, IsWrittenInPlaceWhenItIsAnOpenFile) {
  const TemporaryFolder folder;
  writeBytes(folder / L"log", "longer than the new content");
  const int fd = ::open(narrowPath(folder / L"log").c_str(), O_WRONLY);
  ASSERT_GE(fd, 0);
  const std::wstring name = L"/dev/fd/" + std::to_wstring(fd);
  EXPECT_TRUE(isOpenFilesName(name));
  EXPECT_TRUE(replace(name));
  EXPECT_EQ(bytesOf(folder / L"log"), "new");
  ::close(fd);
  EXPECT_TRUE(isOpenFilesName(name));
  EXPECT_FALSE(replace(name));
  EXPECT_EQ(entriesOf(asPath(folder.path())), 1u);
}

TEST(Files, InDeviceFoldersHaveNamesOfTheirOwn) {
  const TemporaryFolder shared(L"/dev/shm/scrivalen-" + randomName());
  writeBytes(shared / L"a", "");
  EXPECT_FALSE(isOpenFilesName(shared / L"a"));
  EXPECT_FALSE(isOpenFilesName(L"/dev/null"));
  EXPECT_TRUE(isOpenFilesName(L"/dev/stdout"));
}
