#include "text/windows_1252.h"

#include <algorithm>
#include <array>

namespace scrivalen {
namespace {

// Bytes 0x80 to 0x9F (Unicode Consortium, CP1252.TXT; the five unassigned ones as in bestfit1252.txt).
constexpr std::array<char16_t, 32> kUpperControls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                     0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                     0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                     0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

}  // namespace

std::optional<unsigned char> toWindows1252(char32_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
    return static_cast<unsigned char>(c);
  }
  const auto found = std::find(kUpperControls.begin(), kUpperControls.end(), c);
  if (found == kUpperControls.end()) {
    return std::nullopt;
  }
  return static_cast<unsigned char>(0x80 + (found - kUpperControls.begin()));
}

std::optional<char32_t> fromWindows1252(unsigned char byte) {
  if (byte < 0x80 || byte >= 0xA0) {
    return byte;
  }
  const char32_t c = kUpperControls[byte - 0x80u];
  return c < 0xA0 ? std::nullopt : std::optional(c);
}

}  // namespace scrivalen
