#include "platform/output_buffer.h"

#include <algorithm>

namespace scrivalen::platform {

void OutputBuffer::hand(const char* data, std::size_t size) {
  taken_ += size;
  if (!lost_ && size > 0) {
    lost_ = !sink_->take(data, size);
  }
}

bool OutputBuffer::flush() {
  hand(bytes_.get(), static_cast<std::size_t>(at_ - bytes_.get()));
  at_ = bytes_.get();
  return !lost_;
}

void OutputBuffer::reset() {
  at_ = bytes_.get();
  taken_ = 0;
  lost_ = false;
}

// A block that is not full yet stays: behind its end there is room for as much again.
void OutputBuffer::makeRoom() {
  if (!bytes_) {
    bytes_ = std::make_unique_for_overwrite<char[]>(kCapacity);
    at_ = bytes_.get();
    end_ = at_ + kBlock;
  } else if (at_ >= end_) {
    const auto rest = static_cast<std::size_t>(at_ - end_);
    hand(bytes_.get(), kBlock);
    std::memcpy(bytes_.get(), end_, rest);
    at_ = bytes_.get() + rest;
  }
}

void OutputBuffer::writeThrough(const char* data, std::size_t size) {
  while (size > 0) {
    makeRoom();
    const std::size_t part = std::min(size, static_cast<std::size_t>(end_ - at_));
    std::memcpy(at_, data, part);
    at_ += part;
    data += part;
    size -= part;
  }
}

}  // namespace scrivalen::platform
