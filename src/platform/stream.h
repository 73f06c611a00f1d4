#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>

namespace scrivalen::platform {

/// What tells the file behind a stream from every other file.
struct StreamFile {
  int descriptor = -1;
  std::uint64_t device = 0;
  std::uint64_t number = 0;
};

StreamFile fileOf(std::FILE* stream);

/// Whether the descriptor still belongs to that file: its stream may have been closed by someone who does not tell.
bool isStillOpen(const StreamFile& file);

/// How far from its beginning a stream is written next, also beyond 2 GiB; nothing on an error.
std::optional<std::uint64_t> streamPosition(std::FILE* stream);

}  // namespace scrivalen::platform
