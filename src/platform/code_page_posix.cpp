#include "platform/code_page.h"

#include "platform/utf.h"

#include <algorithm>
#include <array>

namespace scrivalen::platform {
namespace {

// Windows-1252, bytes 0x80 to 0x9F (Unicode Consortium, CP1252.TXT, best fit included for the unused five).
constexpr std::array<char16_t, 32> kUpperControls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                     0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                     0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                     0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::optional<unsigned char> toByte(char32_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
    return static_cast<unsigned char>(c);
  }
  const auto found = std::find(kUpperControls.begin(), kUpperControls.end(), c);
  if (found == kUpperControls.end()) {
    return std::nullopt;
  }
  return static_cast<unsigned char>(0x80 + (found - kUpperControls.begin()));
}

}  // namespace

std::optional<std::size_t> toCodePage(std::wstring_view text, char* out, std::size_t capacity, LossCounter& loss) {
  std::size_t size = 0;
  const wchar_t* at = text.data();
  const wchar_t* const end = at + text.size();
  while (at != end) {
    const char32_t c = nextCharacter(at, end);
    const std::size_t width = c > 0xFFFF ? 2 : 1;
    if (capacity - size < width) {
      return std::nullopt;
    }
    const auto byte = toByte(c);
    if (!byte) {
      loss.note(c);
    }
    for (std::size_t i = 0; i < width; ++i) {
      out[size++] = static_cast<char>(byte.value_or('?'));
    }
  }
  return size;
}

bool isInCodePage(std::wstring_view text) {
  return std::all_of(text.begin(), text.end(), [](wchar_t c) { return toByte(static_cast<char32_t>(c)).has_value(); });
}

}  // namespace scrivalen::platform
