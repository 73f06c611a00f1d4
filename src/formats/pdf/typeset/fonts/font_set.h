#pragma once

#include "formats/pdf/typeset/fonts/typeface.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::typeset {

enum class Family : std::uint8_t { Serif, Sans, Mono, DejaVu };

/// A font of the set.
using FontId = std::uint8_t;

/// A font among the resources of a page: that of a typeface for WinAnsi, or one of its composite ones.
struct FontUse {
  FontId typeface = 0;
  std::uint8_t composite = 0;  ///< 0: the simple one; else the number of the composite one, from 1 on

  friend bool operator==(const FontUse&, const FontUse&) = default;
};

constexpr FontId fontOf(Family family, bool isBold, bool isItalic) {
  return static_cast<FontId>(static_cast<unsigned>(family) * 4 + (isBold ? 2 : 0) + (isItalic ? 1 : 0));
}

/// The family that a person's name of a font means: its own, or that of the well-known font with the same widths.
std::optional<Family> familyOf(std::string_view name);

/// The fonts that come with the library, each read when it is needed first.
class FontSet {
 public:
  static constexpr std::size_t kFonts = 16;

  /// @param hidesMissingGlyphs  whether another glyph is drawn where a font has none for a character
  explicit FontSet(bool hidesMissingGlyphs = false) : hidesMissingGlyphs_(hidesMissingGlyphs) {}

  /// Raises OutputFailure when a font's file is missing.
  Typeface& at(FontId font) {
    const auto& loaded = fonts_[font];
    return loaded ? *loaded : load(font);
  }
  /// The font that a character is drawn with where a text has another: that font itself if it has the character, or one
  /// that does, in the same weight and slope. @param found  set to whether any has it
  FontId fontFor(FontId font, char32_t c, bool& found);
  /// Writes the fonts that were drawn. @param resources  gets their dictionary
  void write(PdfFile& file, std::string& resources);

 private:
  Typeface& load(FontId font);

  const bool hidesMissingGlyphs_;
  std::array<std::unique_ptr<Typeface>, kFonts> fonts_;
};

}  // namespace scrivalen::typeset
