#include "document/pictures/base64.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace scrivalen::document {
namespace {

constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::size_t kChunk = 3 * 4096;  // bytes per request for buffer space

// Up to three bytes as a number of 24 bits; missing ones are 0.
std::uint32_t groupOf(std::string_view bytes) {
  std::uint32_t group = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    group = group << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U);
  }
  return group;
}

char* putGroup(char* at, std::uint32_t group) {
  at[0] = kDigits[group >> 18];
  at[1] = kDigits[group >> 12 & 0x3F];
  at[2] = kDigits[group >> 6 & 0x3F];
  at[3] = kDigits[group & 0x3F];
  return at + 4;
}

}  // namespace

void putBase64(OutputBuffer& out, std::string_view bytes) {
  while (bytes.size() >= 3) {
    const std::size_t size = std::min(bytes.size() / 3 * 3, kChunk);
    char* at = out.reserve(size / 3 * 4);
    for (std::size_t i = 0; i < size; i += 3) {
      at = putGroup(at, groupOf(bytes.substr(i, 3)));
    }
    out.advance(at);
    bytes.remove_prefix(size);
  }
  if (!bytes.empty()) {
    char* const at = out.reserve(4);
    putGroup(at, groupOf(bytes));
    std::fill(at + 1 + bytes.size(), at + 4, '=');
    out.advance(at + 4);
  }
}

}  // namespace scrivalen::document
