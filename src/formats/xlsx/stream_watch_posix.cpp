#include "formats/xlsx/stream_watch.h"

#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

namespace scrivalen {

StreamWatch::StreamWatch(std::FILE* stream)
    : duplicate_(::fcntl(::fileno(stream), F_DUPFD_CLOEXEC, STDERR_FILENO + 1)) {
  position_ = ::lseek(duplicate_, 1, SEEK_END);
}

StreamWatch::~StreamWatch() {
  if (duplicate_ >= 0) {
    ::close(duplicate_);
  }
}

bool StreamWatch::isOpen() const { return position_ >= 0 && ::lseek(duplicate_, 0, SEEK_CUR) == position_; }

std::optional<std::uint64_t> streamPosition(std::FILE* stream) {
  const off_t position = ::ftello(stream);
  return position < 0 ? std::nullopt : std::optional<std::uint64_t>(static_cast<std::uint64_t>(position));
}

}  // namespace scrivalen
