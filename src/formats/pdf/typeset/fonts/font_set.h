#pragma once

#include "formats/pdf/typeset/fonts/typeface.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::typeset {

/// The families that come with the library. Those of the host's files have the numbers after them.
enum class Family : std::uint16_t { Serif, Sans, Mono, DejaVu };

/// A font of the set.
using FontId = std::uint16_t;

/// A font among the resources of a page: that of a typeface for WinAnsi, or one of its composite ones.
struct FontUse {
  FontId typeface = 0;
  std::uint16_t composite = 0;  ///< 0: the simple one; else the number of the composite one, from 1 on

  friend bool operator==(const FontUse&, const FontUse&) = default;
};

constexpr FontId fontOf(Family family, bool isBold, bool isItalic) {
  return static_cast<FontId>(static_cast<unsigned>(family) * 4 + (isBold ? 2 : 0) + (isItalic ? 1 : 0));
}

/// The fonts of a document: those that come with the library, each read when it is needed first, and those of files
/// that the host gives.
class FontSet {
 public:
  /// @param files               of the host, in the order in which they are asked for characters
  /// @param hidesMissingGlyphs  whether another glyph is drawn where a font has none for a character
  /// @param mostCodes           of a composite font, after which a typeface begins another
  explicit FontSet(std::vector<std::unique_ptr<FontFile>> files = {}, bool hidesMissingGlyphs = false,
                   std::size_t mostCodes = Typeface::kMostCodes);

  /// The family that a person's name of a font means: of a host's file, of a font of the library, or of the well-known
  /// font with the same widths as one of these.
  std::optional<Family> familyOf(std::string_view name) const;
  /// The names of the families, each in quotation marks.
  std::string familyNames() const;
  /// Raises OutputFailure when a font's file is missing.
  Typeface& at(FontId font) {
    Typeface* const loaded = fonts_[font];
    return loaded ? *loaded : load(font);
  }
  /// The font that a character is drawn with where a text has another: that font itself if it has the character, or one
  /// that does, if possible in the same weight and slope. @param found  set to whether any has it
  FontId fontFor(FontId font, char32_t c, bool& found);
  /// Writes the fonts that were drawn. @param resources  gets their dictionary
  void write(PdfFile& file, std::string& resources) const;

 private:
  void add(std::unique_ptr<FontFile> file);
  Typeface& load(FontId font);
  bool findIn(FontId first, unsigned style, char32_t c, FontId& font);

  const bool hidesMissingGlyphs_;
  const std::size_t mostCodes_;
  std::vector<std::unique_ptr<Typeface>> typefaces_;
  std::vector<Typeface*> fonts_;  // four of each family; null: not read yet
  std::vector<FontNames> names_;  // of the host's families
};

}  // namespace scrivalen::typeset
