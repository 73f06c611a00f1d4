#pragma once

#include "formats/pdf/typeset/length.h"
#include "formats/pdf/typeset/text/styled_text.h"
#include "text/colors.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::typeset {

/// The content of a page while it is drawn (PDF 1.7, 8 and 9). Positions are from the upper left corner. All texts are
/// in one text object after the areas and lines, so that a text costs its move and its bytes; numbers are whole tenths
/// of a point.
class Canvas {
 public:
  /// Begins an empty page.
  void begin(Length pageHeight);
  bool isEmpty() const { return texts_.empty() && areas_.empty(); }

  /// @param bytes      WinAnsi
  /// @param wordSpace  what each blank is wider
  void text(Length x, Length baseline, FontId font, Length size, Rgb color, std::string_view bytes,
            Length wordSpace = 0);
  void area(Length x, Length top, Length width, Length height, Rgb color);
  /// Draws a form object, whose origin is at this point.
  void form(Length x, Length baseline, std::string_view name);

  /// The whole content; valid until the page is changed.
  std::string_view content();

 private:
  void move(std::int64_t x, std::int64_t y);

  std::string areas_;
  std::string texts_;
  std::string content_;
  Length height_ = 0;

  bool hasFont_ = false;
  FontId font_ = 0;
  Length size_ = 0;
  Rgb color_ = 0;
  std::int64_t wordSpace_ = 0;
  std::int64_t x_ = 0;  // of the text that was drawn last, in tenths
  std::int64_t y_ = 0;
  std::optional<Rgb> areaColor_;
};

}  // namespace scrivalen::typeset
