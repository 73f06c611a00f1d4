#include "readers/input_encoding.h"

#include "text/ascii.h"
#include "text/utf.h"
#include "text/windows_1252.h"

#include <algorithm>
#include <iterator>

namespace scrivalen::command {
namespace {

struct Name {
  std::string_view name;  // without hyphens
  InputEncoding encoding;
};

constexpr Name kNames[] = {{"utf8", InputEncoding::Utf8},
                           {"ascii", InputEncoding::Utf8},
                           {"usascii", InputEncoding::Utf8},
                           {"utf16", InputEncoding::Utf16},
                           {"utf16le", InputEncoding::Utf16Little},
                           {"utf16be", InputEncoding::Utf16Big},
                           {"latin1", InputEncoding::Latin1},
                           {"iso88591", InputEncoding::Latin1},
                           {"windows1252", InputEncoding::Windows1252},
                           {"cp1252", InputEncoding::Windows1252}};

char32_t characterOf(unsigned char byte, InputEncoding encoding) {
  if (byte == 0) {
    return scrivalen::kReplacement;
  }
  return encoding == InputEncoding::Latin1 ? byte : scrivalen::fromWindows1252(byte).value_or(scrivalen::kReplacement);
}

}  // namespace

std::optional<InputEncoding> encodingNamed(std::string_view name) {
  std::string wanted = scrivalen::asciiLowered<char>(name);
  std::erase_if(wanted, [](char c) { return c == '-' || c == '_' || c == ' '; });
  const auto* const found =
      std::find_if(std::begin(kNames), std::end(kNames), [&](const Name& known) { return known.name == wanted; });
  return found == std::end(kNames) ? std::nullopt : std::optional(found->encoding);
}

SingleByteDecoder::SingleByteDecoder(InputEncoding encoding) {
  for (unsigned byte = 0; byte < characters_.size(); ++byte) {
    Character& character = characters_[byte];
    char bytes[4];
    character.size =
        static_cast<std::uint8_t>(scrivalen::putUtf8(characterOf(static_cast<unsigned char>(byte), encoding), bytes));
    std::copy_n(bytes, character.size, character.bytes);
  }
}

std::size_t SingleByteDecoder::append(std::string& out, std::string_view bytes) const {
  std::size_t replaced = 0;
  const char* at = bytes.data();
  const char* const end = at + bytes.size();
  const char* endOfAscii = at;  // which may be far beyond the next NUL
  while (at != end) {
    endOfAscii = at < endOfAscii ? endOfAscii : scrivalen::endOfAscii(at, end);
    const char* const ascii = std::find(at, endOfAscii, '\0');
    out.append(at, ascii);
    at = ascii;
    if (at != end) {
      const Character& character = characters_[static_cast<unsigned char>(*at++)];
      out.append(character.bytes, character.size);
      replaced += std::string_view(character.bytes, character.size) == "\xEF\xBF\xBD" ? 1 : 0;
    }
  }
  return replaced;
}

}  // namespace scrivalen::command
