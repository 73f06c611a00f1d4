#pragma once

#include "formats/pdf/typeset/file/pdf_file.h"
#include "formats/pdf/typeset/fonts/font_file.h"
#include "formats/pdf/typeset/length.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace scrivalen::typeset {

/// A font whose texts are WinAnsi, one byte a character, measured by a table. It is embedded with the glyphs that were
/// drawn.
class SimpleFont {
 public:
  explicit SimpleFont(std::unique_ptr<FontFile> file);

  /// In thousandths of the font's size.
  std::int64_t widthOf(std::string_view bytes) const {
    std::int64_t width = 0;
    for (const char c : bytes) {
      width += widths_[static_cast<unsigned char>(c)];
    }
    return width;
  }
  std::int64_t widthOf(char c) const { return widths_[static_cast<unsigned char>(c)]; }
  Length widthOf(std::string_view bytes, Length size) const { return scaled(widthOf(bytes), size); }
  Length blank(Length size) const { return scaled(widths_[' '], size); }
  const FontMeasures& measures() const { return file_->measures(); }

  /// Marks the characters of a text that is drawn.
  void use(std::string_view bytes) {
    for (const char c : bytes) {
      used_[static_cast<unsigned char>(c)] = 1;
    }
  }
  bool isUsed() const { return std::find(used_.begin(), used_.end(), 1) != used_.end(); }

  /// Writes the font. @param number  of its object
  void write(PdfFile& file, int number) const;

 private:
  std::unique_ptr<FontFile> file_;
  std::array<std::uint16_t, 256> widths_{};
  std::array<std::uint8_t, 256> used_{};
};

}  // namespace scrivalen::typeset
