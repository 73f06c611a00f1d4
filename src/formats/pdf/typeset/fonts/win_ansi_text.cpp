#include "formats/pdf/typeset/fonts/win_ansi_text.h"

#include "text/utf.h"
#include "text/windows_1252.h"

#include <array>

namespace scrivalen::typeset {
namespace {

constexpr char32_t kHyphenationMark = 0xAD;

// Whether a byte begins a letter of U+0300 to U+07FF, such as those of Greek and Cyrillic. WinAnsi has none of them.
bool isOfOtherScript(char c) {
  const auto lead = static_cast<unsigned char>(c);
  return lead >= 0xCC && lead <= 0xDF;
}

// A soft hyphen has a byte whose glyph is a hyphen, but is drawn where a line ends alone.
std::array<char32_t, 256> makeCharacters() {
  std::array<char32_t, 256> characters{};
  for (char32_t c = ' '; c < 0x2200; ++c) {
    const auto byte = toWindows1252(c);
    if (byte && *byte >= ' ' && *byte != 0x7F && !(c >= 0x80 && c < 0xA0) && c != kHyphenationMark) {
      characters[*byte] = c;
    }
  }
  return characters;
}

}  // namespace

char32_t characterOfWinAnsi(unsigned char byte) {
  static const std::array<char32_t, 256> characters = makeCharacters();
  return characters[byte];
}

bool appendWinAnsi(std::string& bytes, std::string_view utf8) {
  const char* at = utf8.data();
  const char* const end = at + utf8.size();
  while (at != end) {
    const char* const ascii = endOfAscii(at, end);
    bytes.append(at, static_cast<std::size_t>(ascii - at));
    at = ascii;
    if (at == end) {
      break;
    }
    if (isOfOtherScript(*at)) {
      return false;
    }
    char32_t c = kReplacement;
    nextUtf8(at, end, c);
    const auto byte = toWindows1252(c);
    if (!byte || characterOfWinAnsi(*byte) != c) {
      return false;
    }
    bytes += static_cast<char>(*byte);
  }
  return true;
}

}  // namespace scrivalen::typeset
