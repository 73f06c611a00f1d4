#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace scrivalen::test {

/// Bytes of a simple generator, which no compressor makes smaller.
inline std::string noise(std::size_t size) {
  std::string bytes;
  std::uint32_t state = 1;
  while (bytes.size() < size) {
    state = state * 1664525 + 1013904223;
    bytes += static_cast<char>(static_cast<unsigned char>(state >> 24));
  }
  return bytes;
}

/// Lines that are alike.
inline std::string lines(std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += "line " + std::to_string(i * 7919 % 1000) + "\n";
  }
  return text;
}

}  // namespace scrivalen::test
