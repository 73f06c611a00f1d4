#pragma once

#include "formats/pdf/layout/page_text.h"
#include "formats/pdf/layout/units.h"

#include <cstdint>
#include <string_view>

namespace scrivalen::pdf {

/// How much of a document is partly outside the paper.
struct OffPaper {
  std::uint64_t paragraphs = 0;
  std::uint64_t tables = 0;
  std::uint64_t firstPage = 0;  // pages count from 1
};

/// Finds the paragraphs and tables of a conforming document that leave the paper.
///
/// Only one that cannot be helped does: a letter that is wider than what its column leaves of the paper, a size higher
/// than a page, a negative size, which turns the letters around.
class PaperWatch {
 public:
  explicit PaperWatch(const Paper& paper) : paper_(paper) {}

  /// A line of text that begins at @p x and whose letters reach up to @p y.
  void line(std::string_view text, const DrawStyle& style, Points x, Points y, std::uint64_t page);
  void line(std::u16string_view, const DrawStyle&, Points, Points, std::uint64_t) {}  // no conforming text is wide
  void frame(Points bottom, Points top, std::uint64_t page);

  void endParagraph() { countInto(found_.paragraphs); }
  void endTable() { countInto(found_.tables); }
  const OffPaper& found() const { return found_; }

 private:
  void checkHeights(Points bottom, Points top, std::uint64_t page);
  void note(std::uint64_t page);
  void countInto(std::uint64_t& count);

  Paper paper_;
  bool isOutside_ = false;  // a part of the paragraph or table that is being drawn
  OffPaper found_;
};

}  // namespace scrivalen::pdf
