#include "system/files/work_folder.h"

#include "system/files/descriptor_posix.h"
#include "system/files/native_path_posix.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string_view>

#include <dirent.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace scrivalen {
namespace {

using Entries = std::unique_ptr<DIR, int (*)(DIR*)>;

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

// Lists a folder through a descriptor of its own.
Entries entriesOf(int folder) noexcept {
  const int fd = ::openat(folder, ".", kFolderFlags);
  DIR* const entries = fd < 0 ? nullptr : ::fdopendir(fd);
  if (fd >= 0 && !entries) {
    ::close(fd);
  }
  return {entries, &::closedir};
}

// No path is followed on the way, because others may be allowed to rename folders above.
void removeContents(int folder) noexcept {
  const Entries entries = entriesOf(folder);
  while (const dirent* entry = entries ? ::readdir(entries.get()) : nullptr) {
    const std::string_view name = entry->d_name;
    if (name == "." || name == ".." || ::unlinkat(folder, entry->d_name, 0) == 0) {
      continue;
    }
    const int inner = ::openat(folder, entry->d_name, kFolderFlags);
    if (inner >= 0) {
      removeContents(inner);
      ::close(inner);
      ::unlinkat(folder, entry->d_name, AT_REMOVEDIR);
    }
  }
}

// Whoever has locked a folder may find that it was removed meanwhile.
bool hasItsName(int fd, int folder, const char* name) noexcept {
  struct stat own {};
  struct stat named {};
  return ::fstat(fd, &own) == 0 && ::fstatat(folder, name, &named, AT_SYMLINK_NOFOLLOW) == 0 &&
         own.st_dev == named.st_dev && own.st_ino == named.st_ino;
}

bool isOwn(int fd) noexcept {
  struct stat status {};
  return ::fstat(fd, &status) == 0 && status.st_uid == ::geteuid();
}

void removeIfAbandoned(int folder, const char* name) noexcept {
  const int fd = ::openat(folder, name, kFolderFlags);
  if (fd < 0) {
    return;
  }
  if (isOwn(fd) && ::flock(fd, LOCK_EX | LOCK_NB) == 0 && hasItsName(fd, folder, name)) {
    removeContents(fd);
    ::unlinkat(folder, name, AT_REMOVEDIR);
  }
  ::close(fd);
}

}  // namespace

bool createFolder(const std::wstring& path, bool) noexcept {
  constexpr mode_t kOwnersOnly = 0700;
  const NativePath native(path);
  if (!native.isValid()) {
    errno = EILSEQ;
    return false;
  }
  return ::mkdir(native.c_str(), kOwnersOnly) == 0;
}

File holdFolder(const std::wstring& path) noexcept {
  const NativePath native(path);
  File folder(toNative(aboveStandardStreams(::open(native.c_str(), kFolderFlags))));
  if (!folder) {
    return {};
  }
  const bool isHeldByOthers = ::flock(descriptor(folder), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  if (isHeldByOthers || !hasItsName(descriptor(folder), AT_FDCWD, native.c_str())) {
    errno = EBUSY;
    return {};
  }
  return folder;
}

void removeHeldFolder(File held, const std::wstring& path) noexcept {
  removeContents(descriptor(held));
  ::rmdir(NativePath(path).c_str());
}

void removeAbandonedFolders(const std::wstring& folder, std::wstring_view namesBegin) noexcept {
  const NativePath path(folder);
  const int fd = ::open(folder.empty() ? "." : path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) {
    return;
  }
  const Entries entries = entriesOf(fd);
  while (const dirent* entry = entries ? ::readdir(entries.get()) : nullptr) {
    const std::string_view name = entry->d_name;
    if (name.size() > namesBegin.size() && std::equal(namesBegin.begin(), namesBegin.end(), name.begin())) {
      removeIfAbandoned(fd, entry->d_name);
    }
  }
  ::close(fd);
}

}  // namespace scrivalen
