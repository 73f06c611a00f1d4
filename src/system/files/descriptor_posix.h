#pragma once

#include "system/files/files.h"

#include <cerrno>
#include <cstdint>
#include <string>

#include <fcntl.h>
#include <unistd.h>

namespace scrivalen {

inline int descriptor(NativeFile file) { return static_cast<int>(reinterpret_cast<std::intptr_t>(file)); }

inline NativeFile toNative(int fd) {
  return fd < 0 ? nullptr : reinterpret_cast<NativeFile>(static_cast<std::intptr_t>(fd));
}

inline void closeKeepingError(int fd) {
  const int error = errno;
  ::close(fd);
  errno = error;
}

/// Moves a descriptor that was just opened to 3 or above: 0 would read as no file, and a report must not take the place
/// of a standard stream that the host has closed.
inline int aboveStandardStreams(int fd) {
  if (fd < 0 || fd > STDERR_FILENO) {
    return fd;
  }
  const int moved = ::fcntl(fd, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  closeKeepingError(fd);
  return moved;
}

}  // namespace scrivalen
