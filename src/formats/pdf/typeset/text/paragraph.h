#pragma once

#include "document/model/event.h"
#include "formats/pdf/typeset/length.h"
#include "formats/pdf/typeset/text/shaper.h"
#include "formats/pdf/typeset/text/styled_text.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace scrivalen::typeset {

/// Glyphs that are drawn at once.
struct TextPiece {
  std::size_t span;  ///< an index of StyledText::spans
  FontUse font;
  std::size_t begin;  ///< of its part of SetText::content
  std::size_t end;
  Length width;
  int picture = -1;                                ///< an index of StyledText::pictures; it has no glyphs then
  std::optional<char32_t> missing = std::nullopt;  ///< it is this character, which no font has
  Length height = 0;                               ///< of a picture
};

/// A line of a text. Its pieces are from left to right.
struct TextLine {
  std::size_t firstPiece = 0;
  std::size_t endPiece = 0;
  std::size_t begin = 0;  ///< of its text, in bytes
  std::size_t end = 0;
  Length width = 0;
  Length height = 0;
  Length baseline = 0;  ///< below the line's upper edge
};

/// A text that has been broken into lines.
struct SetText {
  std::string content;
  std::vector<TextPiece> pieces;
  std::vector<TextLine> lines;
  bool isRightToLeft = false;
  bool dividesWords = false;  ///< of which no line has the whole

  Length height() const;
};

struct PictureSize {
  Length width;
  Length height;
};

struct LineRule {
  Length width = 0;          ///< of the space
  Length leading = 0;        ///< from baseline to baseline, in thousandths of the size of the largest text of a line
  TextStyle usual = {};      ///< of a line without text
  bool keepsBlanks = false;  ///< as code does: blanks at the beginning of a line count
  bool isKerned = false;
  bool isJustified = false;
  bool keepsWords = false;     ///< a word that is longer than a line is a line of its own
  Length height = 0;           ///< that no picture exceeds; 0: any may
  bool isRightToLeft = false;  ///< whatever its first letter is
};

/// Where the baseline is in a line of a height, below its upper edge.
Length baselineOf(Length height, Length size);

/// The size of a picture where a text is set: its own, or less if the space is narrower or lower, but never nothing.
PictureSize fitted(const PictureSize& picture, const LineRule& rule);

/// Breaks a text into lines (Unicode Standard Annexes 9 and 14). A line ends at a line feed, and before a word that
/// would make it too long; a word that is longer than a line breaks anywhere, if possible after a sign. An empty text
/// is one empty line.
SetText setText(const StyledText& text, const LineRule& rule, Shaper& shaper);

}  // namespace scrivalen::typeset
