#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

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

/// A font as its file has it (OpenType). Reads, measures and makes subsets by HarfBuzz, which takes hostile files.
class FontFile {
 public:
  /// @param data    the file; kept
  /// @param index   of the font in a collection
  /// @param reason  set to why it is none
  static std::unique_ptr<FontFile> read(std::string data, unsigned index, std::string& reason);
  FontFile(const FontFile&) = delete;
  FontFile& operator=(const FontFile&) = delete;
  ~FontFile();

  const FontMeasures& measures() const { return measures_; }
  const std::string& postScriptName() const { return postScriptName_; }
  /// 0 for a character that the font does not have.
  std::uint32_t glyphOf(char32_t c) const;
  /// In thousandths of the size.
  int advanceOf(std::uint32_t glyph) const;
  /// A font file with the glyphs of these characters alone; empty when the file is broken.
  std::string subsetOf(std::span<const char32_t> characters) const;

 private:
  struct Handles;
  explicit FontFile(std::unique_ptr<Handles> handles);

  int thousandths(std::int64_t units) const;
  void measure();

  std::unique_ptr<Handles> handles_;
  std::int64_t unitsPerEm_ = 1000;
  FontMeasures measures_;
  std::string postScriptName_;
};

}  // namespace scrivalen::typeset
