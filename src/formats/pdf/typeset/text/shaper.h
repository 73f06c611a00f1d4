#pragma once

#include "formats/pdf/typeset/fonts/font_set.h"
#include "formats/pdf/typeset/length.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace scrivalen::typeset {

/// A place where a word may be divided.
inline constexpr std::string_view kSoftHyphen = "\u00AD";

/// Glyphs of one font, ready to be drawn.
struct ShapedRun {
  FontUse font;
  std::string content;  ///< what the array of the operator TJ has (PDF 1.7, 9.4.3)
  Length width = 0;
  std::optional<char32_t> missing = std::nullopt;  ///< it is this character, which no font has
};

/// Characters of one script that no font has.
struct MissingCharacters {
  char32_t first = 0;
  std::uint64_t count = 0;
};

/// A piece of text in one style and direction.
struct ShapeStyle {
  FontId font = 0;
  Length size = 0;
  bool isRightToLeft = false;
  bool isKerned = false;           ///< with kerning and ligatures
  std::string_view language = {};  ///< BCP 47; may be empty
};

/// Chooses fonts and glyphs for words. Words that come again, within limits, cost a lookup.
class Shaper {
 public:
  /// @param fonts  not owned; must outlive this object
  explicit Shaper(FontSet& fonts) : fonts_(fonts) {}

  /// @param text  clean UTF-8 without line feeds
  /// @return the runs in the order of the text, each from left to right; valid until the next call
  const std::vector<ShapedRun>& shape(std::string_view text, const ShapeStyle& style);
  /// A blank after a word. @param fontBefore  of the word: the blank is in it, if it is a composite one that has a
  /// blank
  ShapedRun blank(const ShapeStyle& style, FontUse fontBefore);
  /// The hyphen that is drawn where a line ends after a soft hyphen, as which it is copied.
  ShapedRun softHyphen(const ShapeStyle& style);
  /// Counts a run that is drawn without the glyph of its character.
  void countMissing(char32_t c);
  /// How many languages words were shaped for.
  std::size_t languageCount() const { return languages_.size(); }
  /// The characters of each script that were drawn and that no font has.
  const std::map<Script, MissingCharacters>& missing() const { return missing_; }

 private:
  struct Part {
    std::size_t begin;
    std::size_t end;
    FontId font;
    Script script;
    bool needsShaping;
    bool isMissing;  // a character that no font has
  };

  static constexpr std::size_t kMostWords = 8192;
  static constexpr std::size_t kLongestWord = 64;
  static constexpr std::size_t kMostLanguages = 256;

  std::string_view known(std::string_view language);
  void divide(std::string_view text, const ShapeStyle& style);
  std::size_t takeJoiners(std::string_view text, const ShapeStyle& style);
  void shapePart(std::string_view text, const Part& part, const ShapeStyle& style, std::vector<ShapedRun>& runs);
  void setCharacters(std::string_view text, FontId font, const ShapeStyle& style, std::vector<ShapedRun>& runs);
  bool setSimple(std::string_view text, FontId font, Length size, std::vector<ShapedRun>& runs);
  std::size_t endOfCluster(std::size_t firstGlyph, std::size_t endGlyph, std::size_t textSize) const;
  void setComposite(std::string_view text, FontId font, const ShapeStyle& style, std::vector<ShapedRun>& runs);

  FontSet& fonts_;
  std::unordered_map<std::string, std::vector<ShapedRun>> words_;
  std::unordered_set<std::string> languages_;
  std::string key_;
  std::vector<Part> parts_;
  std::vector<ShapedGlyph> glyphs_;
  std::vector<ShapedRun> long_;
  std::map<Script, MissingCharacters> missing_;
};

}  // namespace scrivalen::typeset
