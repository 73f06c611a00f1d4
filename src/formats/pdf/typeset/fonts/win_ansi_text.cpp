#include "formats/pdf/typeset/fonts/win_ansi_text.h"

#include "text/utf.h"
#include "text/windows_1252.h"

#include <array>

namespace scrivalen::typeset {
namespace {

constexpr char32_t kSoftHyphen = 0xAD;
constexpr char32_t kZeroWidthSpace = 0x200B;

std::array<char32_t, 256> makeCharacters() {
  std::array<char32_t, 256> characters{};
  for (char32_t c = ' '; c < 0x2200; ++c) {
    const auto byte = toWindows1252(c);
    if (byte && *byte >= ' ' && *byte != 0x7F && !(c >= 0x80 && c < 0xA0)) {
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

std::uint64_t appendWinAnsi(std::string& bytes, std::string_view utf8) {
  std::uint64_t missing = 0;
  const char* at = utf8.data();
  const char* const end = at + utf8.size();
  while (at != end) {
    const char* const ascii = endOfAscii(at, end);
    bytes.append(at, ascii);
    at = ascii;
    if (at == end) {
      break;
    }
    char32_t c = kReplacement;
    nextUtf8(at, end, c);
    if (c == kSoftHyphen || c == kZeroWidthSpace) {
      continue;
    }
    const auto byte = toWindows1252(c);
    const bool isDrawn = byte && characterOfWinAnsi(*byte) == c;
    bytes += isDrawn ? static_cast<char>(*byte) : kMissingCharacter;
    missing += isDrawn ? 0 : 1;
  }
  return missing;
}

}  // namespace scrivalen::typeset
