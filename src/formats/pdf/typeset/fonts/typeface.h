#pragma once

#include "formats/pdf/typeset/file/pdf_file.h"
#include "formats/pdf/typeset/fonts/font_file.h"
#include "formats/pdf/typeset/length.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace scrivalen::typeset {

/// A glyph that stands for a text, in a composite font.
struct Code {
  std::uint16_t font;  ///< which of the composite fonts of a typeface
  std::uint16_t number;
};

/// A character that is drawn as it is, without shaping.
struct CharacterCode {
  bool isKnown = false;
  bool isMissing = false;  ///< the font does not have it
  bool isPlain = false;    ///< its glyph is the same whatever is beside it
  Code code{};
  std::int64_t advance = 0;  ///< in thousandths of the size
};

/// A font of the document. It is drawn with by two kinds of fonts of PDF, which share the font's file: a simple one,
/// whose texts are WinAnsi, one byte a character, and composite ones, whose texts are numbers of two bytes, each for a
/// glyph and the text that it stands for (PDF 1.7, 9.6 and 9.7).
class Typeface {
 public:
  explicit Typeface(std::unique_ptr<FontFile> file);

  const FontMeasures& measures() const { return file_->measures(); }
  const FontFile& file() const { return *file_; }

  /// Of WinAnsi, in thousandths of the font's size.
  std::int64_t widthOf(std::string_view bytes) const {
    std::int64_t width = 0;
    for (const char c : bytes) {
      width += widths_[static_cast<unsigned char>(c)];
    }
    return width;
  }
  std::int64_t widthOf(char c) const { return widths_[static_cast<unsigned char>(c)]; }
  Length widthOf(std::string_view bytes, Length size) const { return scaled(widthOf(bytes), size); }
  /// Whether a byte of WinAnsi has a glyph, and which.
  std::uint32_t glyphOfWinAnsi(unsigned char byte) const { return glyphs_[byte]; }
  /// Whether each byte has a glyph.
  bool has(std::string_view bytes) const {
    return std::all_of(bytes.begin(), bytes.end(),
                       [this](char c) { return glyphs_[static_cast<unsigned char>(c)] != 0; });
  }
  /// Marks the bytes of a text that is drawn.
  void use(std::string_view bytes) {
    for (const char c : bytes) {
      used_[static_cast<unsigned char>(c)] = 1;
    }
  }

  /// Draws missing glyphs as another one from now on: archives may not show the font's own, glyph 0.
  void replaceMissingGlyph();
  /// Gives missing glyphs the width of what is drawn for them.
  void spaceMissingGlyphs(std::vector<ShapedGlyph>& glyphs) const;

  /// The glyph of a character; 0 if the font has none.
  std::uint32_t glyphOf(char32_t c) const { return file_->glyphOf(c); }
  /// The number of a glyph that stands for a text, which is drawn with it.
  Code codeOf(std::uint32_t glyph, std::string_view text);
  /// The number of a character's usual glyph.
  const CharacterCode& characterOf(char32_t c);
  /// Appends the numbers of a text whose characters are all plain, as the first composite font has them.
  /// @param width  gets the text's, in thousandths of the size
  /// @return false if it has others
  bool appendPlain(std::string& bytes, std::string_view utf8, std::int64_t& width);
  std::int64_t advanceOf(std::uint32_t glyph) const { return file_->advanceOf(shownFor(glyph)); }

  /// Writes the fonts that were drawn with. @param resources  gets their names, F and G with @p name
  void write(PdfFile& file, int name, std::string& resources) const;

 private:
  const CharacterCode& knownOrNew(char32_t c) {
    const std::size_t page = c / kPage;
    if (page < pages_.size() && pages_[page]) {
      const CharacterCode& known = (*pages_[page])[c % kPage];
      if (known.isKnown) {
        return known;
      }
    }
    return characterOf(c);
  }

  std::uint32_t shownFor(std::uint32_t glyph) const { return glyph == 0 ? missing_ : glyph; }

  struct Entry {
    std::uint32_t glyph;
    std::string text;  // UTF-8; empty: none
  };

  // The numbers of a composite font; 0 is the missing glyph of its own file.
  static constexpr std::size_t kMostCodes = 65535;

  std::unique_ptr<FontFile> file_;
  std::array<std::uint16_t, 256> widths_{};
  std::array<std::uint32_t, 256> glyphs_{};
  std::array<std::uint8_t, 256> used_{};
  std::vector<Entry> entries_;
  std::unordered_map<std::string, std::uint32_t> codes_;  // of glyph and text, an index of entries_
  std::string key_;
  std::uint32_t missing_ = 0;  // what is drawn for a missing glyph
  static constexpr std::size_t kPage = 256;
  std::vector<std::unique_ptr<std::array<CharacterCode, kPage>>> pages_;  // of characters, by their number
};

}  // namespace scrivalen::typeset
