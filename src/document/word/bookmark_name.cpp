#include "document/word/bookmark_name.h"

#include "text/ascii.h"
#include "text/utf.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace scrivalen::document {
namespace {

bool isInName(char c) {
  return isAsciiLetter(c) || isAsciiDigit(c) || c == '_' || c == '-' || static_cast<unsigned char>(c) >= 0x80;
}

std::size_t unitsOfName(std::string_view utf8) {
  std::size_t units = 0;
  const char* at = utf8.data();
  while (at != utf8.data() + utf8.size()) {
    char32_t c = 0;
    nextUtf8(at, utf8.data() + utf8.size(), c);
    units += unitsOf(c);
  }
  return units;
}

// FNV-1a.
std::uint32_t hashOf(std::string_view text) {
  std::uint32_t hash = 2166136261;
  for (const char c : text) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 16777619;
  }
  return hash;
}

}  // namespace

std::string bookmarkName(std::string_view id) {
  constexpr std::size_t kLongest = 40;
  constexpr std::size_t kKept = 30;
  if (unitsOfName(id) <= kLongest && std::all_of(id.begin(), id.end(), isInName)) {
    return std::string(id);
  }
  std::string name;
  for (const char c : id.substr(0, kKept)) {
    name += static_cast<unsigned char>(c) < 0x80 && isInName(c) ? c : '_';
  }
  name += '_';
  const std::uint32_t hash = hashOf(id);
  for (int shift = 28; shift >= 0; shift -= 4) {
    name += kHexDigits[hash >> shift & 0xF];
  }
  return name;
}

}  // namespace scrivalen::document
