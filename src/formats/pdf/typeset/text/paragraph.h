#pragma once

#include "formats/pdf/typeset/length.h"
#include "formats/pdf/typeset/text/styled_text.h"

#include <cstddef>
#include <vector>

namespace scrivalen::typeset {

/// A line of a text: a range of its bytes, without the blanks at its end.
struct TextLine {
  std::size_t begin = 0;
  std::size_t end = 0;
  Length width = 0;
  Length height = 0;
  Length baseline = 0;     ///< below the line's upper edge
  std::size_t blanks = 0;  ///< that a justified line stretches
  bool isBroken = false;   ///< the text goes on in the next line, without a line feed
};

/// A part of a line that has one style.
struct LinePiece {
  const TextStyle* style;
  std::string_view bytes;
};

struct LineRule {
  Length width = 0;          ///< of the space
  Length leading = 0;        ///< from baseline to baseline, in thousandths of the size of the largest text of a line
  TextStyle usual;           ///< of a line without text
  bool keepsBlanks = false;  ///< as code does: blanks are never dropped, and a line that is too long breaks anywhere
};

/// Breaks a text into lines. A line ends at a line feed, and before a word that would make it too long; a word that is
/// longer than a line breaks anywhere. An empty text is one empty line.
std::vector<TextLine> linesOf(const StyledText& text, const LineRule& rule, FontSet& fonts);

/// Calls @p take with the pieces of a line, from left to right.
template <typename Take>
void forEachPiece(const StyledText& text, const TextLine& line, Take take) {
  std::size_t span = 0;
  while (span + 1 < text.spans.size() && text.spans[span + 1].begin <= line.begin) {
    ++span;
  }
  for (std::size_t at = line.begin; at < line.end; ++span) {
    const std::size_t end =
        span + 1 < text.spans.size() && text.spans[span + 1].begin < line.end ? text.spans[span + 1].begin : line.end;
    take(LinePiece{&text.spans[span].style, std::string_view(text.bytes).substr(at, end - at)});
    at = end;
  }
}

}  // namespace scrivalen::typeset
