#pragma once

#include <cstddef>
#include <string_view>

// The widths of characters in a monospaced font, counted in columns (Unicode 15).
namespace scrivalen {

/// The columns of one character: 0 for combining marks and format characters, 2 for East Asian wide and fullwidth
/// characters and for emoji, else 1.
std::size_t columnsOf(char32_t c);

/// The columns of a line of UTF-8. What a reader sees as one character counts once: a letter with its marks, a flag, a
/// family of emoji joined by U+200D.
std::size_t columnsOf(std::string_view utf8);

/// One character as a reader sees it.
struct VisibleCharacter {
  char32_t first;       ///< of its code points
  char32_t last;        ///< equal to the first, if it is the only one
  std::size_t columns;  ///< of all of them together
};

/// Moves past the character at @p at, which is before @p end, and all that belongs to it. An ill-formed sequence is
/// taken for U+FFFD.
VisibleCharacter nextVisibleCharacter(const char*& at, const char* end);

}  // namespace scrivalen
