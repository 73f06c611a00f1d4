#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <utility>

namespace scrivalen {

/// Tells whether a stream is still open that someone else may close without telling. It has a descriptor of its own for
/// the stream's file, so that no other file can take that one's identity meanwhile.
class StreamWatch {
 public:
  explicit StreamWatch(std::FILE* stream);
  StreamWatch(StreamWatch&& other) noexcept
      : descriptor_(std::exchange(other.descriptor_, -1)), duplicate_(std::exchange(other.duplicate_, -1)) {}
  StreamWatch& operator=(StreamWatch&&) = delete;
  ~StreamWatch();

  bool isOpen() const;

 private:
  int descriptor_;
  int duplicate_;
};

/// How far from its beginning a stream is written next, also beyond 2 GiB; nothing on an error.
std::optional<std::uint64_t> streamPosition(std::FILE* stream);

}  // namespace scrivalen
