#pragma once

#include "formats/pdf/typeset/file/pdf_file.h"
#include "formats/pdf/typeset/fonts/font_file.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace scrivalen::typeset {

/// A number of a composite font.
struct CompositeGlyph {
  std::uint32_t glyph;    ///< in the subset
  int advance;            ///< in thousandths of the size
  std::string_view text;  ///< that it stands for, as UTF-8; empty: none of its own
};

/// Writes the fonts of PDF that share a font's file.
class FontWriter {
 public:
  /// Writes the file. @param subset  the font's file with the glyphs that are drawn; must outlive this object
  FontWriter(PdfFile& file, const FontFile& font, std::string_view subset);

  /// @param bytes      of WinAnsi that are drawn, ascending
  /// @param resources  gets the font's name and reference
  void writeSimple(std::string_view name, std::span<const unsigned char> bytes,
                   const std::array<std::uint16_t, 256>& widths, std::string& resources);
  /// @param glyphs  of the numbers from 1 on
  void writeComposite(std::string_view name, std::span<const CompositeGlyph> glyphs, std::string& resources);

 private:
  void writeFile(std::string_view subset);
  int writeDescriptor(std::string_view entries = {});
  int descriptorOfComposite(std::size_t glyphs);
  int writeUnicodes(std::span<const CompositeGlyph> glyphs);
  int writeGlyphNumbers(std::span<const CompositeGlyph> glyphs);

  PdfFile& file_;
  const FontFile& font_;
  std::string fontName_;
  int stream_;
  int descriptor_;
};

}  // namespace scrivalen::typeset
