#pragma once

#include "formats/pdf/fonts/char_widths.h"
#include "formats/pdf/layout/text_style.h"
#include "formats/pdf/layout/units.h"
#include "formats/pdf/objects/mem_block.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace scrivalen::pdf {

/// The parts of a style's lines that are computed only once.
struct DrawStyle {
  DrawStyle() = default;
  DrawStyle(const CPDFtextStyle& style, int resolvedFont, const CharWidths& charWidths, PDFStuffer::Form form);

  Points lead = 0;    // two thirds of the size
  Points height = 0;  // four thirds
  CharWidths widths;
  std::string segmentEnd;  // after a line's position: the first step down, the font, the colour
  std::string lineEnd;     // after a line's text: the next step down
};

/// "%f %f %f rg", the operator that sets the colour of text and fills, without a line end.
std::string fillColor(const _RGB_COLOR& color, PDFStuffer::Form form);

/// Lines of a page's content (PDF 1.4, 5.3), each with its line end. Keeps nothing if only positions are needed.
class PageText {
 public:
  enum class Keeping { Lines, Nothing };

  explicit PageText(Keeping keeping = Keeping::Lines) : keepsLines_(keeping == Keeping::Lines) {}

  void line(std::string_view words);

  void moveDown(Points y);
  void beginText(Points x, Points y, const DrawStyle& style);
  void showText(std::string_view text, const DrawStyle& style) { show(text, style); }
  void showText(std::u16string_view text, const DrawStyle& style) { show(text, style); }

  /// One of a row of rectangles, which differ only in @p x.
  void rectangle(Points x, std::string_view rest);
  bool keepsLines() const { return keepsLines_; }

  void clear() { size_ = 0; }
  std::string_view text() const { return {bytes_.get(), size_}; }

 private:
  template <typename View>
  void show(View text, const DrawStyle& style);
  char* reserve(std::size_t size);
  void endAt(const char* end) { size_ = static_cast<std::size_t>(end - bytes_.get()); }

  bool keepsLines_;
  std::unique_ptr<char[]> bytes_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

}  // namespace scrivalen::pdf
