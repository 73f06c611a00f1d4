#pragma once

#include "formats/pdf/fonts/char_widths.h"
#include "formats/pdf/layout/units.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace scrivalen::pdf {

/// The next line of a text.
struct TextLine {
  std::size_t length;  // of the text shown, from the beginning
  std::size_t next;    // where the rest of the text begins
  bool last;           // nothing is left
};

// A text whose code units all fit into a byte is stored as bytes.
inline char16_t unitOf(char byte) { return static_cast<unsigned char>(byte); }
inline char16_t unitOf(char16_t unit) { return unit; }

constexpr bool isBlank(char16_t unit) { return unit == u' ' || unit == u'\t'; }

constexpr bool isSeparator(char16_t unit) {
  return isBlank(unit) || unit == u',' || unit == u'-' || unit == u'.' || unit == u'/';
}

/// Breaks a text of which only @p fit characters fit. The break follows the last separator that fits, or replaces it if
/// it is blank. At least one character is consumed, however narrow the line.
template <typename Unit>
TextLine breakLine(std::basic_string_view<Unit> text, std::size_t fit) {
  TextLine line{fit, fit, false};
  if (!isSeparator(unitOf(text[fit]))) {
    const auto candidate = text.substr(0, fit);
    const auto found =
        std::find_if(candidate.rbegin(), candidate.rend(), [](Unit c) { return isSeparator(unitOf(c)); });
    const auto position = static_cast<std::size_t>(candidate.rend() - found);  // after the separator
    if (position > 1) {
      line = {isBlank(unitOf(candidate[position - 1])) ? position - 1 : position, position, false};
    }
  }
  if (line.next == 0 && unitOf(text[0]) != u' ') {
    line = {1, 1, false};
  }
  if (line.next < text.size() && unitOf(text[line.next]) == u' ') {
    ++line.next;
  }
  return line;
}

/// The next line ends at the first line feed; otherwise it is broken before the character that reaches the width.
template <typename Unit>
TextLine nextLine(std::basic_string_view<Unit> text, Points width, const CharWidths& widths) {
  const std::int64_t limit = width * widths.perPoint();
  std::int64_t sum = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == Unit('\n')) {
      return {i, i + 1, false};
    }
    sum += widths.of(text[i]);
    if (sum >= limit) {
      return breakLine(text, i);
    }
  }
  return {text.size(), text.size(), true};
}

}  // namespace scrivalen::pdf
