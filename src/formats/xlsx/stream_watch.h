#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <utility>

namespace scrivalen {

/// Checks whether a stream that was handed over is still open. The new owner either reads it from the beginning and
/// closes it, or does neither. The position is set beyond what any reader reaches, and checked through a duplicate
/// descriptor, because the stream's own may be another file's by then.
class StreamWatch {
 public:
  /// @param stream  must have nothing to flush
  explicit StreamWatch(std::FILE* stream);
  StreamWatch(StreamWatch&& other) noexcept
      : duplicate_(std::exchange(other.duplicate_, -1)), position_(std::exchange(other.position_, -1)) {}
  StreamWatch& operator=(StreamWatch&&) = delete;
  ~StreamWatch();

  bool isOpen() const;

 private:
  int duplicate_;
  std::int64_t position_ = -1;  // beyond the end; negative: unknown
};

/// A stream's position, also beyond 2 GiB; nothing on an error.
std::optional<std::uint64_t> streamPosition(std::FILE* stream);

}  // namespace scrivalen
