#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

namespace scrivalen {

/// Receives the bytes of a buffer.
class ByteSink {
 public:
  virtual ~ByteSink() = default;
  /// @return false when the bytes, or some of them, are lost
  virtual bool take(const char* data, std::size_t size) = 0;
};

/// Buffers a block of 64 KiB for a sink, with another 64 KiB after it for overflow. Writers store their bytes in place,
/// so that a byte costs a store and not a call. The sink gets blocks of exactly 64 KiB; only the block after a flush is
/// shorter, so that the next one ends on a multiple of 64 KiB again. A file that grows by aligned blocks costs the
/// system less: Linux can cache each block in one piece of memory. Once the sink has lost bytes, it gets no more until
/// the next reset.
class OutputBuffer {
 public:
  static constexpr std::size_t kCapacity = 131072;
  static constexpr std::size_t kBlock = kCapacity / 2;

  /// @param sink  not owned; must outlive the buffer
  explicit OutputBuffer(ByteSink& sink) : sink_(&sink) {}

  /// Returns space for up to kBlock bytes; the caller writes in place and then calls advance.
  char* reserve(std::size_t size) {
    if (static_cast<std::ptrdiff_t>(size) > end_ - at_) {
      makeSpace();
    }
    return at_;
  }
  void advance(char* to) { at_ = to; }

  void put(char c) {
    char* at = reserve(1);
    *at = c;
    advance(at + 1);
  }

  void write(const void* data, std::size_t size) {
    if (static_cast<std::ptrdiff_t>(size) <= end_ - at_) {
      if (size > 0) {
        std::memcpy(at_, data, size);
        at_ += size;
      }
    } else {
      writeThrough(static_cast<const char*>(data), size);
    }
  }

  /// Passes the buffered bytes to the sink. @return false when bytes were lost since the last reset
  bool flush();

  /// Whether bytes were lost since the last reset.
  bool hasLostBytes() const { return lost_; }

  /// Discards the buffered bytes, for a new document.
  void reset();

  /// The number of bytes written since the last reset.
  std::uint64_t position() const { return taken_ + static_cast<std::uint64_t>(at_ - bytes_.get()); }

 private:
  void begin();
  void makeSpace();
  void writeThrough(const char* data, std::size_t size);
  void handOver(const char* data, std::size_t size);

  ByteSink* sink_;
  std::unique_ptr<char[]> bytes_;
  char* at_ = nullptr;
  char* end_ = nullptr;  // of the block; bytes written in place may extend past it
  std::uint64_t taken_ = 0;
  bool lost_ = false;
};

}  // namespace scrivalen
