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

File openFolderIn(int folder, const char* name) noexcept {
  return File(toNative(aboveStandardStreams(::openat(folder, name, kFolderFlags))));
}

// Calls a function with the name of each entry of a folder except "." and "..". It avoids opendir, which allocates, so
// that cleaning up works even without memory.
template <class Call>
void forEachEntry(int folder, Call call) noexcept {
  alignas(dirent64) char entries[4096];
  const File own = openFolderIn(folder, ".");  // has its own position
  for (ssize_t size = 0; own && (size = ::getdents64(descriptor(own), entries, sizeof entries)) > 0;) {
    for (ssize_t at = 0; at < size;) {
      const auto& entry = *reinterpret_cast<const dirent64*>(entries + at);
      const std::string_view name = entry.d_name;
      if (name != "." && name != "..") {
        call(entry.d_name);
      }
      at += entry.d_reclen;
    }
  }
}

// Follows no paths, because others may be allowed to rename the folders above.
void removeContents(int folder) noexcept {
  forEachEntry(folder, [folder](const char* name) noexcept {
    if (::unlinkat(folder, name, 0) == 0) {
      return;
    }
    const File inner = openFolderIn(folder, name);
    if (inner) {
      removeContents(descriptor(inner));
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
  const File found = openFolderIn(folder, name);
  if (!found) {
    return;
  }
  const int fd = descriptor(found);
  if (isOwn(fd) && ::flock(fd, LOCK_EX | LOCK_NB) == 0 && hasItsName(fd, folder, name)) {
    removeContents(fd);
    ::unlinkat(folder, name, AT_REMOVEDIR);
  }
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
  File folder = openFolderIn(AT_FDCWD, native.c_str());
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
  const int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;  // follows links, as the caller's path may have some
  const File opened(toNative(aboveStandardStreams(::open(folder.empty() ? "." : path.c_str(), flags))));
  if (!opened) {
    return;
  }
  const int fd = descriptor(opened);
  forEachEntry(fd, [fd, prefix](const char* entry) noexcept {
    const std::string_view name = entry;
    if (name.size() > prefix.size() && std::equal(prefix.begin(), prefix.end(), name.begin())) {
      removeIfAbandoned(fd, entry);
    }
  });
}

}  // namespace scrivalen
