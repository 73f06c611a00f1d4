#include "platform/output_buffer.h"

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

void OutputBuffer::makeRoom() {
  if (!bytes_) {
    bytes_ = std::make_unique_for_overwrite<char[]>(kCapacity);
    at_ = bytes_.get();
    end_ = at_ + kCapacity;
    return;
  }
  flush();
}

// What does not fit goes to the sink in whole buffers, the rest of it stays in the buffer.
void OutputBuffer::writeThrough(const char* data, std::size_t size) {
  makeRoom();
  if (size >= kCapacity) {
    hand(data, size);
    return;
  }
  std::memcpy(at_, data, size);
  at_ += size;
}

}  // namespace scrivalen::platform
