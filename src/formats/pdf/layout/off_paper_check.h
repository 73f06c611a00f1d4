#pragma once

#include "formats/pdf/layout/page_text.h"
#include "formats/pdf/layout/units.h"

#include <cstdint>
#include <string_view>

namespace scrivalen::pdf {

/// Counts the parts of a document that are partly off the paper.
struct OffPaper {
  std::uint64_t paragraphs = 0;
  std::uint64_t tables = 0;
  std::uint64_t firstPage = 0;  // pages count from 1
};

/// Finds the paragraphs and tables of a conforming document that are partly off the paper.
///
/// The layout prevents this except for a letter too wide for the paper right of its column's left edge, a size higher
/// than a page, and a negative size, which rotates letters by 180 degrees.
class OffPaperCheck {
 public:
  explicit OffPaperCheck(const Paper& paper) : paper_(paper) {}

  /// Checks a line of text that begins at @p x and whose letters reach up to @p y.
  void line(std::string_view text, const DrawStyle& style, Points x, Points y, std::uint64_t page);
  void line(std::u16string_view, const DrawStyle&, Points, Points, std::uint64_t) {}  // conforming text is never wide
  void frame(Points bottom, Points top, std::uint64_t page);

  void endParagraph() { countInto(found_.paragraphs); }
  void endTable() { countInto(found_.tables); }
  const OffPaper& found() const { return found_; }

 private:
  void checkHeights(Points bottom, Points top, std::uint64_t page);
  void note(std::uint64_t page);
  void countInto(std::uint64_t& count);

  Paper paper_;
  bool isOutside_ = false;  // a part of the current paragraph or table
  OffPaper found_;
};

}  // namespace scrivalen::pdf
