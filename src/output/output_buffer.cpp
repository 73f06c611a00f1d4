#include "output/output_buffer.h"

#include <algorithm>

namespace scrivalen {

void OutputBuffer::handOver(const char* data, std::size_t size) {
  taken_ += size;
  if (!lost_ && size > 0) {
    lost_ = !sink_->take(data, size);
  }
}

bool OutputBuffer::flush() {
  handOver(bytes_.get(), static_cast<std::size_t>(at_ - bytes_.get()));
  begin();
  return !lost_;
}

void OutputBuffer::reset() {
  taken_ = 0;
  lost_ = false;
  begin();
}

// The block after a flush is shorter, so that the next one is aligned again.
void OutputBuffer::begin() {
  at_ = bytes_.get();
  end_ = bytes_ ? at_ + (kBlock - taken_ % kBlock) : nullptr;
}

// A block that is not full is kept: after its end there is space for another one.
void OutputBuffer::makeSpace() {
  if (!bytes_) {
    bytes_ = std::make_unique_for_overwrite<char[]>(kCapacity);
    begin();
  } else if (at_ >= end_) {
    const auto rest = static_cast<std::size_t>(at_ - end_);
    const char* const overflow = end_;
    handOver(bytes_.get(), static_cast<std::size_t>(end_ - bytes_.get()));
    begin();
    std::memmove(bytes_.get(), overflow, rest);
    at_ += rest;
  }
}

void OutputBuffer::writeThrough(const char* data, std::size_t size) {
  while (size > 0) {
    makeSpace();
    const std::size_t part = std::min(size, static_cast<std::size_t>(end_ - at_));
    std::memcpy(at_, data, part);
    at_ += part;
    data += part;
    size -= part;
  }
}

}  // namespace scrivalen
