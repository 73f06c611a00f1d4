#include "formats/pdf/objects/mem_block.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace PDFStuffer {

void CPDFMemBlock::Reserve(std::uint64_t extra) {
  constexpr std::uint64_t kMax = std::numeric_limits<std::ptrdiff_t>::max();
  const bool possible = extra <= kMax && size <= kMax - extra;
  if (possible && allocate(size + extra)) {
    zeroDropped(size + extra);
    usable_ = size + extra;
  }
  if (!data) {
    size = free = 0;
    return;
  }
  size += extra;
  free += extra;
}

// The public sizes grow by what is needed, the memory by doubling; otherwise each entry of a long list would cause a
// copy.
bool CPDFMemBlock::allocate(std::uint64_t needed) {
  if (data && needed <= allocated_) {
    return true;
  }
  for (const std::uint64_t wanted : {std::max(needed, 2 * allocated_), needed}) {
    if (void* const grown = std::realloc(data.get(), static_cast<std::size_t>(wanted))) {
      data.release();
      data.reset(static_cast<char*>(grown));
      allocated_ = wanted;
      return true;
    }
  }
  return false;
}

// Dropped text still occupies its place. If memory for that place becomes available later, it is zeroed, so that no
// uninitialized bytes reach the file.
void CPDFMemBlock::zeroDropped(std::uint64_t usable) {
  if (const std::uint64_t end = std::min(length(), usable); end > usable_) {
    std::memset(data.get() + usable_, 0, static_cast<std::size_t>(end - usable_));
  }
}

void CPDFMemBlock::Rewind() {
  size = std::min(size, allocated_);
  free = usable_ = size;
  isWhole_ = true;
}

// The place for the next code units; null if there is no memory for them.
char* CPDFMemBlock::take(std::size_t length) {
  if (length == 0) {
    return nullptr;
  }
  if (free < length) {
    Reserve(2 * (length - free));
  }
  if (!data) {
    isWhole_ = false;
    return nullptr;
  }
  const std::uint64_t at = size - free;
  free -= length;
  if (at + length > usable_) {
    isWhole_ = false;
    usable_ = std::min(usable_, at);
    return nullptr;
  }
  return data.get() + at;
}

void CPDFMemBlock::Append(std::u16string_view text) {
  if (char* const at = take(text.size())) {
    std::transform(text.begin(), text.end(), at, [](char16_t unit) { return static_cast<char>(unit & 0xFF); });
  }
}

void CPDFMemBlock::Append(std::string_view text) {
  if (char* const at = take(text.size())) {
    std::memcpy(at, text.data(), text.size());
  }
}

std::string_view CPDFMemBlock::text() const {
  return {data.get(), static_cast<std::size_t>(std::min(length(), usable_))};
}

}  // namespace PDFStuffer
