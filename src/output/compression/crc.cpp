#include "output/compression/crc.h"

#include <libdeflate.h>

namespace scrivalen {

// libdeflate's checksum takes half the time of zlib's. With its first one it stores, without a lock, which code suits
// the processor; here one thread has it do so before any other.
std::uint32_t crc32Of(std::string_view bytes, std::uint32_t before) {
  [[maybe_unused]] static const std::uint32_t first = libdeflate_crc32(0, "", 0);
  if (bytes.empty()) {
    return before;  // a null pointer would ask for the initial value
  }
  return libdeflate_crc32(before, bytes.data(), bytes.size());
}

}  // namespace scrivalen
