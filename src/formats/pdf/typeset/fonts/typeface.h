#pragma once

#include "formats/pdf/typeset/file/pdf_file.h"
#include "formats/pdf/typeset/fonts/code_bytes.h"
#include "formats/pdf/typeset/fonts/font_file.h"
#include "formats/pdf/typeset/length.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
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
  std::uint32_t glyph = 0;
  bool isKnown = false;
  bool isPlain = false;      ///< its glyph is the same whatever is beside it
  Code code{};               ///< of the number 0 until it is drawn
  std::int64_t advance = 0;  ///< in thousandths of the size
};

/// The numbers of the objects that a typeface's fonts are; 0 for the simple font if nothing is drawn with it.
struct WrittenFonts {
  int simple = 0;
  std::vector<int> composites;
};

/// A font of the document. It is drawn with by two kinds of fonts of PDF, which share the font's file: a simple one,
/// whose texts are WinAnsi, one byte a character, and composite ones, whose texts are numbers of one or two bytes, each
/// for a glyph and the text that it stands for (PDF 1.7, 9.6 and 9.7).
class Typeface {
 public:
  static constexpr std::size_t kMostCodes = kEndOfNumbers - kFirstNumber;

  /// @param mostCodes  after which another composite font begins
  explicit Typeface(std::unique_ptr<FontFile> file, std::size_t mostCodes = kMostCodes);

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
  /// The same for bytes of which each has a glyph; -1 for others. That is never so for a font of
  /// PostScript: its composite fonts serve all texts.
  std::int64_t widthIfKnown(std::string_view bytes) const {
    std::int64_t width = 0;
    std::uint32_t all = 0;
    for (const char c : bytes) {
      const std::uint32_t known = known_[static_cast<unsigned char>(c)];
      width += known;
      all |= known;
    }
    return (all & kUnknown) != 0 ? -1 : width;
  }
  std::int64_t widthOf(char c) const { return widths_[static_cast<unsigned char>(c)]; }
  Length widthOf(std::string_view bytes, Length size) const { return scaled(widthOf(bytes), size); }
  /// Whether a byte of WinAnsi has a glyph, and which.
  std::uint32_t glyphOfWinAnsi(unsigned char byte) const { return glyphs_[byte]; }
  /// Whether each byte has a glyph.
  bool has(std::string_view bytes) const { return widthIfKnown(bytes) >= 0; }
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

  /// The usual glyph of a character; 0 if the font has none.
  std::uint32_t glyphOf(char32_t c) { return knownCharacter(c).glyph; }
  bool has(char32_t c) { return glyphOf(c) != 0; }
  /// A glyph that shows nothing and takes no width; 0 if the font has none.
  std::uint32_t blankGlyph();
  /// The number of a glyph that stands for a text, which is drawn with it.
  Code codeOf(std::uint32_t glyph, std::string_view text);
  /// A character that is drawn, with the number of its usual glyph.
  const CharacterCode& characterOf(char32_t c);
  /// Appends the numbers of a text whose characters are all plain, as the first composite font has them.
  /// @param width  gets the text's, in thousandths of the size
  /// @return false if it has others
  bool appendPlain(std::string& bytes, std::string_view utf8, std::int64_t& width);
  std::int64_t advanceOf(std::uint32_t glyph) const { return file_->advanceOf(shownFor(glyph)); }

  /// Writes the fonts that were drawn with. Raises OutputFailure if the font's file turns out to be broken.
  WrittenFonts write(PdfFile& file) const;

 private:
  CharacterCode& knownCharacter(char32_t c) {
    const std::size_t page = c / kPage;
    if (page < pages_.size() && pages_[page]) {
      CharacterCode& known = (*pages_[page])[c % kPage];
      if (known.isKnown) {
        return known;
      }
    }
    return newCharacter(c);
  }
  CharacterCode& newCharacter(char32_t c);
  const CharacterCode* plainCharacter(char32_t c);
  void giveCode(CharacterCode& character, char32_t c);

  std::uint32_t shownFor(std::uint32_t glyph) const { return glyph == 0 ? missing_ : glyph; }

  /// A letter of two bytes of UTF-8 that is plain, in one byte of the first composite font.
  struct PlainLetter {
    std::uint16_t advance = 0;
    std::uint8_t byte = 0;  // 0: it is none, or was not drawn yet
  };

  struct Entry {
    std::uint32_t glyph;
    std::string text;  // UTF-8; empty: none
  };

  static constexpr std::uint32_t kUnknown = std::uint32_t{1} << 31;

  std::unique_ptr<FontFile> file_;
  std::size_t mostCodes_;
  std::array<std::uint16_t, 256> widths_{};
  std::array<std::uint32_t, 256> known_{};  // the same widths, or kUnknown for a byte without a glyph
  std::array<std::uint32_t, 256> glyphs_{};
  std::array<std::uint8_t, 256> used_{};
  std::vector<Entry> entries_;
  std::unordered_map<std::string, std::uint32_t> codes_;  // of glyph and text, an index of entries_
  std::string key_;
  std::optional<std::uint32_t> blank_;  // known after its first use
  std::uint32_t missing_ = 0;           // what is drawn for a missing glyph
  static constexpr std::size_t kPage = 256;
  std::vector<std::unique_ptr<std::array<CharacterCode, kPage>>> pages_;  // of characters, by their number
  static constexpr std::size_t kPlainLetters = 0x800;
  using PlainLetters = std::array<PlainLetter, kPlainLetters>;
  std::unique_ptr<PlainLetters> plainLetters_;  // by the character; null until a text has composite ones
};

}  // namespace scrivalen::typeset
