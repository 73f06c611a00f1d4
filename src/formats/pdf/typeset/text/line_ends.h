#pragma once

#include "text/line_breaking/line_break_reader.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace scrivalen::typeset {

/// Finds where lines of a text may end: where Unicode Standard Annex 14 has it, tailored for names of programs. A line
/// may end before ".NET", ":name" and "/path", but not between the signs of "C++", nor after the hyphens that begin
/// "--option".
class LineEnds {
 public:
  /// @param text  clean UTF-8; not owned
  explicit LineEnds(std::string_view text) : text_(text), breaks_(text) {}

  /// The next place; the last one is the end of the text.
  /// @return false after that, and for an empty text
  bool next(LineBreak& place);

 private:
  bool isInName(std::size_t at) const;
  std::optional<std::size_t> nextSignAfterBlank(std::size_t end) const;

  std::string_view text_;
  LineBreakReader breaks_;
  std::optional<LineBreak> coming_;
  std::size_t begin_ = 0;  // of the part of the text that has not been looked at
};

/// The last place in a part of a word where the word is better divided than between two letters: after a sign such as
/// a comma. @return its end if there is none in its second half
std::size_t endAfterSign(std::string_view word, std::size_t begin, std::size_t end);

}  // namespace scrivalen::typeset
