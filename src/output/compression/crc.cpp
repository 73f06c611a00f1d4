#include "output/compression/crc.h"

#include <zlib.h>

namespace scrivalen {

std::uint32_t crc32Of(std::string_view bytes, std::uint32_t before) {
  if (bytes.empty()) {
    return before;  // zlib takes a null pointer for the request of its initial value
  }
  return static_cast<std::uint32_t>(crc32_z(before, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
}

}  // namespace scrivalen
