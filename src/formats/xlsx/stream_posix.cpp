#include "formats/xlsx/stream.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

namespace scrivalen {

StreamWatch::StreamWatch(std::FILE* stream)
    : descriptor_(::fileno(stream)), duplicate_(::fcntl(descriptor_, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)) {}

StreamWatch::~StreamWatch() {
  if (duplicate_ >= 0) {
    ::close(duplicate_);
  }
}

bool StreamWatch::isOpen() const {
  struct stat now {};
  struct stat own {};
  return ::fstat(descriptor_, &now) == 0 && ::fstat(duplicate_, &own) == 0 && now.st_dev == own.st_dev &&
         now.st_ino == own.st_ino;
}

std::optional<std::uint64_t> streamPosition(std::FILE* stream) {
  const off_t position = ::ftello(stream);
  return position < 0 ? std::nullopt : std::optional<std::uint64_t>(static_cast<std::uint64_t>(position));
}

}  // namespace scrivalen
