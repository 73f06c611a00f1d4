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
  FontWriter(PdfFile& file, const FontFile& font, const FontFile::Subset& subset);

  /// @param bytes  of WinAnsi that are drawn, ascending
  /// @return the font's number
  int writeSimple(std::span<const unsigned char> bytes, const std::array<std::uint16_t, 256>& widths);
  /// @param glyphs  of the numbers from the font's first one on
  int writeComposite(std::span<const CompositeGlyph> glyphs);

 private:
  void writeFile();
  int writeDescriptor(std::string_view entries = {});
  int descriptorOfComposite(std::span<const CompositeGlyph> glyphs);
  int writeUnicodes(std::span<const CompositeGlyph> glyphs);
  int writeGlyphNumbers(std::span<const CompositeGlyph> glyphs);
  int writeCids(std::span<const CompositeGlyph> glyphs);
  void appendGlyphsOfTrueType(std::string& object, std::span<const CompositeGlyph> glyphs);
  void appendGlyphsOfPostScript(std::string& object, std::span<const CompositeGlyph> glyphs) const;
  unsigned cidOf(const CompositeGlyph& glyph) const;

  PdfFile& file_;
  const FontFile& font_;
  const FontFile::Subset& subset_;
  const unsigned firstNumber_;
  std::string fontName_;
  int stream_;
  int descriptor_;
};

}  // namespace scrivalen::typeset
