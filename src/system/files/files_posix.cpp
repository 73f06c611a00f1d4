#include "system/files/files.h"

#include "system/files/descriptor_posix.h"
#include "system/files/native_path_posix.h"
#include "system/messages.h"
#include "system/process/stop.h"
#include "text/ascii.h"
#include "text/utf.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <iterator>
#include <memory>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace scrivalen {
namespace {

// Whether a system call was interrupted by a signal that is no reason to give up.
bool shouldRetry() { return errno == EINTR && !isStopRequested(); }

File openFile(const std::wstring& path, int flags) {
  constexpr mode_t kRights = 0666;
  const NativePath native(path);
  if (!native.isValid()) {
    errno = EILSEQ;
    return {};
  }
  int fd = -1;
  do {
    fd = ::open(native.c_str(), flags | O_CLOEXEC, kRights);
  } while (fd < 0 && shouldRetry());
  return File(toNative(aboveStandardStreams(fd)));
}

bool statusOf(const std::wstring& path, struct stat& status) { return ::stat(NativePath(path).c_str(), &status) == 0; }

bool isRegular(int fd) {
  struct stat status {};
  return ::fstat(fd, &status) == 0 && S_ISREG(status.st_mode);
}

// A file system without locks is no reason to fail: the file is then opened without one.
bool lock(int fd) {
  if (::flock(fd, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) {
    return true;
  }
  errno = EBUSY;
  return false;
}

File openHeld(const std::wstring& path) {
  File file = openFile(path, O_WRONLY | O_CREAT);
  if (file && isRegular(descriptor(file)) && !lock(descriptor(file))) {
    return {};
  }
  return file;
}

bool copyFile(const std::wstring& from, const std::wstring& to) {
  const File source = openForReading(from);
  File target = source ? openExclusive(to) : File();
  return target && copyContents(source, target) && target.close();
}

std::string narrowFolderOf(const std::string& path) {
  const std::size_t name = path.rfind('/') + 1;
  return name == 0 ? "./" : path.substr(0, name);
}

// A path with all links resolved; empty if it does not exist.
std::string realPath(const std::string& path) {
  char real[PATH_MAX];
  return ::realpath(path.c_str(), real) ? real : "";
}

// Follows the links that a path may be, even to a target that does not exist. The path is empty when they form a loop.
struct Followed {
  explicit Followed(const std::wstring& from) : path(narrowPath(from)) {
    constexpr int kMaxLinks = 40;
    char target[PATH_MAX];
    for (int links = 0; links < kMaxLinks; ++links) {
      isOpenFile |= realPath(narrowFolderOf(path)).starts_with("/proc/");
      const ssize_t size = ::readlink(path.c_str(), target, sizeof target);
      if (size <= 0) {
        return;
      }
      const std::string next(target, static_cast<std::size_t>(size));
      path = next.front() == '/' ? next : narrowFolderOf(path) + next;
    }
    path.clear();
    errno = ELOOP;
  }

  std::string path;
  bool isOpenFile = false;  // whether they lead through /proc, and so to a process's open file
};

bool renamePath(const std::wstring& from, const std::wstring& to) {
  return ::rename(NativePath(from).c_str(), NativePath(to).c_str()) == 0;
}

// Copies to a file beside the target first, so that the target is never half written.
bool moveAcrossVolumes(const std::wstring& from, const std::wstring& to) {
  const auto beside = createFileBeside(to);
  if (!beside) {
    return false;
  }
  if (!copyFile(from, *beside) || !renamePath(*beside, to)) {
    const SystemErrorKeeper error;
    deleteFile(*beside);
    return false;
  }
  return deleteFile(from);
}

}  // namespace

std::string narrowPath(std::wstring_view path) {
  std::string bytes;
  const wchar_t* const end = path.data() + path.size();
  for (const wchar_t* at = path.data(); at != end;) {
    char character[4];
    const char32_t c = nextCharacter(at, end);
    const std::size_t size = putPathCharacter(c, character);
    bytes.append(character, size > 0 ? size : putUtf8(c, character));
  }
  return bytes;
}

std::wstring widePath(std::string_view path) {
  std::wstring wide;
  const char* at = path.data();
  const char* const end = at + path.size();
  while (at != end) {
    const char* const start = at;
    char32_t c = 0;
    if (nextUtf8(at, end, c)) {
      appendCharacter(wide, c);
    } else {
      std::transform(start, at, std::back_inserter(wide),
                     [](char byte) { return static_cast<wchar_t>(kByteEscape + static_cast<unsigned char>(byte)); });
    }
  }
  return wide;
}

// Locks before truncating, so that a file locked by another report is untouched.
File openExclusive(const std::wstring& path) noexcept {
  File file = openHeld(path);
  if (file && isRegular(descriptor(file)) && ::ftruncate(descriptor(file), 0) != 0) {
    return {};
  }
  return file;
}

HeldFile holdExclusive(const std::wstring& path) noexcept {
  const bool wasThere = pathExists(path);
  File file = openHeld(path);
  const bool isNew = file && !wasThere;
  return {std::move(file), isNew};
}

File createNew(const std::wstring& path) noexcept { return openFile(path, O_WRONLY | O_CREAT | O_EXCL); }

File openForReading(const std::wstring& path) noexcept {
  File file = openFile(path, O_RDONLY);
  struct stat status {};
  if (!file || ::fstat(descriptor(file), &status) != 0) {
    return {};
  }
  if (S_ISDIR(status.st_mode)) {
    errno = EISDIR;
    return {};
  }
  if (S_ISREG(status.st_mode) && ::flock(descriptor(file), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
    errno = EBUSY;
    return {};
  }
  return file;
}

bool writeAll(NativeFile file, const void* data, std::size_t size) noexcept {
  const char* at = static_cast<const char*>(data);
  while (size > 0) {
    const ssize_t written = ::write(descriptor(file), at, size);
    if (written < 0) {
      if (shouldRetry()) {
        continue;
      }
      return false;
    }
    at += written;
    size -= static_cast<std::size_t>(written);
  }
  return true;
}

std::optional<std::uint64_t> positionOf(NativeFile file) {
  const off_t position = ::lseek(descriptor(file), 0, SEEK_CUR);
  return position < 0 ? std::nullopt : std::optional<std::uint64_t>(static_cast<std::uint64_t>(position));
}

std::optional<std::size_t> readSome(NativeFile file, void* data, std::size_t size) noexcept {
  for (;;) {
    const ssize_t count = ::read(descriptor(file), data, size);
    if (count >= 0) {
      return static_cast<std::size_t>(count);
    }
    if (!shouldRetry()) {
      return std::nullopt;
    }
  }
}

std::optional<std::uint64_t> sizeOf(NativeFile file) noexcept {
  struct stat status {};
  if (::fstat(descriptor(file), &status) != 0 || !S_ISREG(status.st_mode)) {
    return std::nullopt;
  }
  return static_cast<std::uint64_t>(status.st_size);
}

bool readAt(NativeFile file, std::uint64_t offset, void* data, std::size_t size) {
  char* at = static_cast<char*>(data);
  while (size > 0) {
    const ssize_t count = ::pread(descriptor(file), at, size, static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR) {
      continue;
    }
    if (count <= 0) {
      return false;
    }
    at += count;
    offset += static_cast<std::uint64_t>(count);
    size -= static_cast<std::size_t>(count);
  }
  return true;
}

// A process that another thread is starting has the file open, too, until it runs its program, and would hold the lock.
bool closeFile(NativeFile file) noexcept {
  ::flock(descriptor(file), LOCK_UN);
  return ::close(descriptor(file)) == 0;
}

bool pathExists(const std::wstring& path) noexcept {
  struct stat status {};
  return statusOf(path, status);
}

bool isFolder(const std::wstring& path) {
  struct stat status {};
  return statusOf(path, status) && S_ISDIR(status.st_mode);
}

bool isSpecialFile(const std::wstring& path) noexcept {
  struct stat status {};
  return statusOf(path, status) && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

bool isReadOnly(const std::wstring& path) noexcept {
  struct stat status {};
  return statusOf(path, status) && (status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
}

std::optional<FileIdentity> identityOf(const std::wstring& path) {
  struct stat status {};
  if (!statusOf(path, status)) {
    return std::nullopt;
  }
  return FileIdentity{static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino)};
}

bool deleteFile(const std::wstring& path) noexcept { return ::unlink(NativePath(path).c_str()) == 0; }

bool moveReplacing(const std::wstring& from, const std::wstring& to) {
  if (renamePath(from, to)) {
    return true;
  }
  return errno == EXDEV && moveAcrossVolumes(from, to);
}

std::optional<std::vector<std::wstring>> findFilesEndingWith(const std::wstring& folder, std::wstring_view suffix) {
  std::vector<std::wstring> names;
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(NativePath(folder).c_str()), &::closedir);
  if (!entries) {
    return errno == ENOENT ? std::optional(names) : std::nullopt;
  }
  while (const dirent* entry = ::readdir(entries.get())) {
    std::wstring name = widePath(entry->d_name);
    if (endsWithIgnoringCase(name, suffix) && !isFolder(folder + kPathSeparator + name)) {
      names.push_back(std::move(name));
    }
  }
  return names;
}

std::wstring temporaryFolder() {
  const char* const folder = std::getenv("TMPDIR");
  return widePath(folder && *folder ? folder : "/tmp") + kPathSeparator;
}

bool deleteFolder(const std::wstring& path) noexcept { return ::rmdir(NativePath(path).c_str()) == 0; }

std::wstring resolvedPath(const std::wstring& path) {
  const std::string real = realPath(narrowPath(path));
  if (!real.empty()) {
    return widePath(real);
  }
  const std::string target = Followed(path).path;
  const std::string folder = target.empty() ? "" : realPath(narrowFolderOf(target));
  if (folder.empty()) {
    return widePath(target);
  }
  const std::string_view name = std::string_view(target).substr(target.rfind('/') + 1);
  return widePath(folder + (folder.ends_with('/') ? "" : "/")).append(widePath(name));
}

int comparePaths(const std::wstring& a, const std::wstring& b) noexcept { return a.compare(b); }

bool isOpenFilesName(const std::wstring& path) { return Followed(path).isOpenFile; }

}  // namespace scrivalen
