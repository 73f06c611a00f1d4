#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <utility>

namespace scrivalen {

/// Tells whether a stream is still open that is handed over to someone who reads it from its beginning and then closes
/// it, but not always. It moves the position to where no reader comes, and looks at that through a descriptor of its
/// own: the stream's may be another file's by then.
class StreamWatch {
 public:
  /// @param stream  has nothing to flush
  explicit StreamWatch(std::FILE* stream);
  StreamWatch(StreamWatch&& other) noexcept
      : duplicate_(std::exchange(other.duplicate_, -1)), position_(std::exchange(other.position_, -1)) {}
  StreamWatch& operator=(StreamWatch&&) = delete;
  ~StreamWatch();

  bool isOpen() const;

 private:
  int duplicate_;
  std::int64_t position_ = -1;  // beyond the end; negative: not known
};

/// How far from its beginning a stream is written next, also beyond 2 GiB; nothing on an error.
std::optional<std::uint64_t> streamPosition(std::FILE* stream);

}  // namespace scrivalen
