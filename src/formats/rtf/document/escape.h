#pragma once

#include "output/output_buffer.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

// What a document's words are made of: control words, numbers, and texts in ASCII.
namespace scrivalen::document::rtf {

inline void put(OutputBuffer& out, std::string_view words) { out.write(words.data(), words.size()); }

/// Writes a control word and its number.
inline void put(OutputBuffer& out, std::string_view word, std::int64_t number) {
  constexpr std::size_t kDigits = 20;
  char* const at = out.reserve(word.size() + kDigits);
  std::memcpy(at, word.data(), word.size());
  out.advance(std::to_chars(at + word.size(), at + word.size() + kDigits, number).ptr);
}

/// The space that putText needs for a text of @p size bytes; most of it stays unused.
constexpr std::size_t spaceForText(std::size_t size) { return size * 6 + 8; }
/// The longest text that may be written in place in a buffer.
inline constexpr std::size_t kLongestInPlace = 8192;

/// Writes clean UTF-8: braces and backslashes escaped, a line feed as \line, a tab as \tab, other characters as
/// Windows-1252 or else as Unicode with a question mark for readers without it (RTF 1.9, "Unicode RTF"). Between two
/// blanks there is an empty group.
/// @return the end
char* putText(char* out, std::string_view text);
/// The same for a text of any length.
void writeText(OutputBuffer& out, std::string_view text);

/// Writes a text as part of an argument in quotation marks of a field's instructions.
/// @param quote  in place of each quotation mark of the text
void writeArgument(OutputBuffer& out, std::string_view text, std::string_view quote = "'");

/// Writes the begin or the end of the bookmark of a place.
void writeBookmarkBegin(OutputBuffer& out, std::string_view id);
void writeBookmarkEnd(OutputBuffer& out, std::string_view id);

}  // namespace scrivalen::document::rtf
