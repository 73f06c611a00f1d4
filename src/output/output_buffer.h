#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

namespace scrivalen {

/// Takes the bytes of a full buffer.
class ByteSink {
 public:
  virtual ~ByteSink() = default;
  /// @return false when the bytes, or some of them, are lost
  virtual bool take(const char* data, std::size_t size) = 0;
};

/// 64 KiB in front of a sink, and as much behind them. Writers put their bytes in place, so that a byte costs a store
/// and not a call. The sink gets blocks of 64 KiB exactly; the one behind a flush is shorter, so that the next one ends
/// on a multiple of them again. A file that grows by aligned blocks costs the system less: Linux can cache each in one
/// piece of memory. Once the sink has lost bytes, nothing more is handed to it until the next reset.
class OutputBuffer {
 public:
  static constexpr std::size_t kCapacity = 131072;
  static constexpr std::size_t kBlock = kCapacity / 2;

  /// @param sink  not owned; must outlive the buffer
  explicit OutputBuffer(ByteSink& sink) : sink_(&sink) {}

  /// Room for up to kBlock bytes, to be written in place and told with advance.
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

  /// Hands over what is there. @return false when bytes were lost since the last reset
  bool flush();

  /// Empties the buffer for a new document.
  void reset();

  /// How many bytes were written since the last reset.
  std::uint64_t position() const { return taken_ + static_cast<std::uint64_t>(at_ - bytes_.get()); }

 private:
  void begin();
  void makeSpace();
  void writeThrough(const char* data, std::size_t size);
  void handOver(const char* data, std::size_t size);

  ByteSink* sink_;
  std::unique_ptr<char[]> bytes_;
  char* at_ = nullptr;
  char* end_ = nullptr;  // of the block; what is written in place may reach past it
  std::uint64_t taken_ = 0;
  bool lost_ = false;
};

}  // namespace scrivalen
