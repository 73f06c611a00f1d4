#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::command {

/// How the characters of an input are encoded. A byte-order mark overrides what was given; Utf16 needs one.
enum class InputEncoding : std::uint8_t { Default, Utf8, Utf16, Utf16Little, Utf16Big, Latin1, Windows1252 };

inline constexpr const char* kEncodingNames = "utf-8, utf-16le, utf-16be, latin-1 or windows-1252";

/// The encoding with a name, in any case and with or without hyphens; nothing for an unknown one.
std::optional<InputEncoding> encodingNamed(std::string_view name);

/// Turns bytes that are a character each into UTF-8.
class SingleByteDecoder {
 public:
  /// @param encoding  Latin1 or Windows1252
  explicit SingleByteDecoder(InputEncoding encoding);

  /// Appends the text. NUL and bytes without a character become U+FFFD. @return how many
  std::size_t append(std::string& out, std::string_view bytes) const;

 private:
  struct Character {
    char bytes[3];
    std::uint8_t size;
  };

  std::array<Character, 256> characters_{};
};

}  // namespace scrivalen::command
