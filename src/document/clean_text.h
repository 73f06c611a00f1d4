#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace scrivalen::document {

enum class TextKind : std::uint8_t {
  Flowing,  ///< line ends become line feeds, tabs blanks
  Code,     ///< the same, but tabs stay
  Line      ///< both become blanks
};

/// How many characters of a document's texts were replaced by U+FFFD.
struct Replaced {
  std::uint64_t badBytes = 0;  ///< ill-formed sequences
  std::uint64_t controls = 0;  ///< control characters and the noncharacters that XML excludes
};

/// The length of the part of a text, from its beginning, that is clean already. It ends between two characters.
std::size_t cleanLength(std::string_view text, TextKind kind);

/// Appends a text, cleaned: well-formed UTF-8 without control characters but for line feeds, in code also tabs. CR LF
/// and CR become one line feed.
void appendClean(std::string& out, std::string_view text, TextKind kind, Replaced& replaced);

}  // namespace scrivalen::document
