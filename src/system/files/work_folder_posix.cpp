#include "system/files/work_folder.h"

#include "system/files/descriptor_posix.h"
#include "system/files/native_path_posix.h"

#include <algorithm>
#include <cerrno>
#include <string_view>

#include <dirent.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace scrivalen {
namespace {

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

// Calls a function with the name of each entry of a folder except "." and "..". It avoids opendir, which allocates, so
// that cleaning up works even without memory.
template <class Call>
void forEachEntry(int folder, Call call) noexcept {
  alignas(dirent64) char entries[4096];
  const int fd = ::openat(folder, ".", kFolderFlags);  // has its own position
  for (ssize_t size = 0; fd >= 0 && (size = ::getdents64(fd, entries, sizeof entries)) > 0;) {
    for (ssize_t at = 0; at < size;) {
      const auto& entry = *reinterpret_cast<const dirent64*>(entries + at);
      const std::string_view name = entry.d_name;
      if (name != "." && name != "..") {
        call(entry.d_name);
      }
      at += entry.d_reclen;
    }
  }
  if (fd >= 0) {
    ::close(fd);
  }
}

// Follows no paths, because others may be allowed to rename the folders above.
void removeContents(int folder) noexcept {
  forEachEntry(folder, [folder](const char* name) noexcept {
    if (::unlinkat(folder, name, 0) == 0) {
      return;
    }
    const int inner = ::openat(folder, name, kFolderFlags);
    if (inner >= 0) {
      removeContents(inner);
      ::close(inner);
      ::unlinkat(folder, name, AT_REMOVEDIR);
    }
  });
}

// A folder may have been removed between being opened and being locked.
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

void removeAbandonedFolders(const std::wstring& folder, std::wstring_view prefix) noexcept {
  const NativePath path(folder);
  const int fd = ::open(folder.empty() ? "." : path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) {
    return;
  }
  forEachEntry(fd, [fd, prefix](const char* entry) noexcept {
    const std::string_view name = entry;
    if (name.size() > prefix.size() && std::equal(prefix.begin(), prefix.end(), name.begin())) {
      removeIfAbandoned(fd, entry);
    }
  });
  ::close(fd);
}

}  // namespace scrivalen
