#include "formats/xlsx/stream_watch.h"

#include <io.h>

namespace scrivalen {
StreamWatch::StreamWatch(std::FILE* stream) : duplicate_(::_dup(::_fileno(stream))) {
  position_ = duplicate_ < 0 ? -1 : ::_lseeki64(duplicate_, 1, SEEK_END);
}

StreamWatch::~StreamWatch() {
  if (duplicate_ >= 0) {
    ::_close(duplicate_);
  }
}

bool StreamWatch::isOpen() const { return position_ >= 0 && ::_lseeki64(duplicate_, 0, SEEK_CUR) == position_; }

std::optional<std::uint64_t> streamPosition(std::FILE* stream) {
  const auto position = ::_ftelli64(stream);
  return position < 0 ? std::nullopt : std::optional<std::uint64_t>(static_cast<std::uint64_t>(position));
}

}  // namespace scrivalen
