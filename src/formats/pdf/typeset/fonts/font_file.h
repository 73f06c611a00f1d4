#pragma once

#include "formats/pdf/typeset/fonts/script_names.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::typeset {

/// The measures of a font, in thousandths of its size; those below the baseline are negative.
struct FontMeasures {
  int ascent = 0;
  int descent = 0;
  int capHeight = 0;
  int left = 0;  ///< of the box that all glyphs together need
  int bottom = 0;
  int right = 0;
  int top = 0;
  int italicAngle = 0;  ///< in degrees
  int underlineTop = 0;
  int underlineSize = 0;
  int strikeTop = 0;
  int strikeSize = 0;
  bool isFixedPitch = false;
};

/// The script of a character; kNoScript for those that are in texts of every script.
Script scriptOf(char32_t c);
inline constexpr Script kNoScript = 0;
/// Whether a character is never drawn, but says how a text is written.
bool isInvisible(char32_t c);
/// Whether a character is drawn on or around the one before it.
bool isMark(char32_t c);
/// Whether a mark joins the consonants beside it.
bool isVirama(char32_t c);
/// Whether letters of a script take their forms from the letters beside them, or need marks to be placed.
bool needsShaping(Script script);

/// What a font is called, and its place in its family.
struct FontNames {
  std::string postScript;
  std::string family;       ///< of at most four fonts: regular, italic, bold, bold italic
  std::string wholeFamily;  ///< of all weights and widths; empty if the family has no others
  std::string full;
  bool isBold = false;
  bool isItalic = false;
};

/// What the maker of a font allows (OS/2, fsType).
enum class Embedding : std::uint8_t { Allowed, Forbidden, OnlyWhole, OnlyBitmaps };

/// A text in one font, script and direction.
struct ShapeRequest {
  std::string_view text;  ///< clean UTF-8
  Script script = kNoScript;
  bool isRightToLeft = false;
  std::string_view language = {};  ///< BCP 47; may be empty
};

/// A glyph in its place, from left to right. Lengths are in thousandths of the font's size.
struct ShapedGlyph {
  std::uint32_t glyph;
  std::uint32_t cluster;  ///< where the text that it stands for begins, in bytes
  std::int32_t advance;
  std::int32_t x;  ///< from where the glyphs before it end
  std::int32_t y;
};

/// A font as its file has it (OpenType). Reads, measures and makes subsets by HarfBuzz, which takes hostile files.
class FontFile {
 public:
  /// @param data    the file; kept
  /// @param index   of the font in a collection; else 0
  /// @param reason  set to why it is none, or none that PDF can have
  static std::unique_ptr<FontFile> read(std::string data, unsigned index, std::string& reason);
  FontFile(const FontFile&) = delete;
  FontFile& operator=(const FontFile&) = delete;
  ~FontFile();

  const FontMeasures& measures() const { return measures_; }
  const FontNames& names() const { return names_; }
  /// 0 for a character that the font does not have.
  std::uint32_t glyphOf(char32_t c) const;
  /// In thousandths of the size.
  int advanceOf(std::uint32_t glyph) const;
  /// Whether a glyph shows nothing and takes no width.
  bool isNothing(std::uint32_t glyph) const;
  /// Chooses and places the glyphs of a text. @param glyphs  set
  void shape(const ShapeRequest& request, std::vector<ShapedGlyph>& glyphs) const;
  /// Whether glyphs are outlines of PostScript (CFF), which PDF embeds in another way.
  bool isPostScript() const { return isPostScript_; }
  Embedding embedding() const { return embedding_; }

  /// A font file with some glyphs alone; of a font of PostScript, its table "CFF " alone.
  struct Subset {
    std::string file;                   ///< empty when the font is broken
    std::vector<std::uint32_t> glyphs;  ///< the numbers that the glyphs have in it, in the order of those asked for
    std::vector<std::uint16_t> cids;    ///< of a CID-keyed font: by which PDF finds its glyphs, in their order
  };
  /// @param characters  that its character map keeps
  Subset subsetOf(std::span<const char32_t> characters, std::span<const std::uint32_t> glyphs) const;

 private:
  struct Handles;
  explicit FontFile(std::unique_ptr<Handles> handles);

  int thousandths(std::int64_t units) const;
  const char* problem() const;
  void measure();
  void readNames();

  std::unique_ptr<Handles> handles_;
  std::int64_t unitsPerEm_ = 1000;
  FontMeasures measures_;
  FontNames names_;
  bool isPostScript_ = false;
  Embedding embedding_ = Embedding::Allowed;
};

}  // namespace scrivalen::typeset
