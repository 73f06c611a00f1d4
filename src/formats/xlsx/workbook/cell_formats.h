#pragma once

#include "document/model/event.h"
#include "text/colors.h"
#include "text/direction.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace scrivalen::xlsx {

inline constexpr std::uint32_t kNoColor = 0xFFFFFFFF;
inline constexpr std::uint32_t kLinkColor = 0x0563C1;

/// Usual is the family of cells without a format, where it is none of the others.
enum class Family : std::uint8_t { Body, Header, Code, Usual };

struct Font {
  enum Flag : std::uint8_t { Bold = 1, Italic = 2, Underlined = 4, Deleted = 8, Superscript = 16, Subscript = 32 };

  std::uint8_t flags = 0;
  Family family = Family::Body;
  std::uint16_t size = 1100;  ///< in hundredths of a point
  std::uint32_t color = kNoColor;

  friend bool operator==(const Font&, const Font&) = default;
  std::uint64_t key() const;
};

using NumberFormat = std::uint8_t;  ///< an index of CellFormats
inline constexpr NumberFormat kGeneral = 0;

/// What a cell looks like.
struct CellFormat {
  Font font;
  std::uint32_t fill = kNoColor;
  NumberFormat number = kGeneral;
  document::Align align = document::Align::Auto;
  std::uint8_t indent = 0;
  Direction direction = Direction::Neutral;  ///< of its text; Neutral: as readers think
  bool wraps = false;
  bool isTop = false;     ///< at the top of its row; else at the bottom
  bool isRuled = false;   ///< a line is below it
  bool isShrunk = false;  ///< smaller where its column is too narrow

  std::uint64_t key() const;  ///< of all but the font
};

/// The formats of a workbook's cells, collected while they are written.
class CellFormats {
 public:
  static constexpr std::size_t kMost = 60000;       ///< below the 65,490 that spreadsheet programs accept
  static constexpr std::size_t kMostPlain = 65000;  ///< with those that have no colours for lack of room
  static constexpr std::size_t kMostFonts = 500;    ///< below their 512
  static constexpr std::size_t kKeptFonts = 60;     ///< of these, for text without a colour of its own
  static constexpr std::size_t kMostFills = 256;    ///< the documented limit
  static constexpr std::size_t kMostNumbers = 200;  ///< the fewest that they promise

  /// @param mostFonts  at most 512, which is what spreadsheet programs accept
  /// @param keptFonts  of these, for text without a colour of its own; half of them for text of the usual size
  explicit CellFormats(std::size_t mostFonts = kMostFonts, std::size_t keptFonts = kKeptFonts,
                       std::size_t mostFills = kMostFills);

  void setFamily(Family family, std::string name) { families_[static_cast<std::size_t>(family)] = std::move(name); }
  /// Makes it the first of all, that of cells without a format.
  void setUsual(const CellFormat& format);

  /// The index of a format. Beyond the limits, one without its colours, which is still bold and still shows numbers and
  /// dates as such.
  std::uint32_t add(const CellFormat& format);
  /// Whether add returns the index of this very format.
  bool takes(const CellFormat& format) const;
  /// The index of a number format; nothing beyond the limit.
  /// @param kept  how many others must have room afterwards
  std::optional<NumberFormat> addNumber(std::string_view code, std::size_t kept = 0);
  /// How many cells or texts did not get their colours, but their font.
  std::uint64_t refused() const { return refused_; }
  /// How many did not get their font either.
  std::uint64_t refusedFonts() const { return refusedFonts_; }
  /// The font that text gets instead of this one: the same, or beyond the limit one without its colour. It is one of
  /// the workbook's from now on.
  Font addRunFont(const Font& font);

  /// The part xl/styles.xml.
  std::string xml() const;
  /// Appends a font as the properties of a piece of text.
  void appendRunFont(std::string& out, const Font& font) const;

 private:
  struct Key {
    std::uint64_t font;
    std::uint64_t rest;
    friend bool operator==(const Key&, const Key&) = default;
  };
  struct Hash {
    std::size_t operator()(const Key& key) const {
      return static_cast<std::size_t>((key.font ^ key.rest * 0x9E3779B97F4A7C15u) * 0xD6E8FEB86659FD93u >> 16);
    }
  };
  struct Entry {
    CellFormat format;
    std::uint32_t font;
    std::uint32_t fill;
  };

  bool canAdd(const CellFormat& format) const;
  bool hasRoomFor(const Font& font) const;
  std::size_t mostFontsWith(const Font& font) const;
  Font plainerFont(Font font) const;
  bool hasRoomForFill(std::uint32_t color) const;
  CellFormat withoutColors(const CellFormat& format) const;
  void countRefused(const Font& wanted, const Font& given);
  std::uint32_t insert(const CellFormat& format);
  std::uint32_t fontOf(const Font& font);
  std::uint32_t fillOf(std::uint32_t color);
  const std::string& nameOf(const Font& font) const { return families_[static_cast<std::size_t>(font.family)]; }
  void appendFont(std::string& out, const Font& font, std::string_view nameElement) const;
  std::vector<int> numberIds() const;
  void appendNumbers(std::string& out) const;
  void appendFonts(std::string& out) const;
  void appendFills(std::string& out) const;
  void appendFormats(std::string& out) const;

  std::size_t mostFonts_;
  std::size_t keptFonts_;
  std::size_t mostFills_;
  std::string families_[4];
  std::vector<std::string> numbers_;  // codes
  std::vector<Font> fonts_;
  std::unordered_map<std::uint64_t, std::uint32_t> fontIndices_;
  std::unordered_set<std::uint64_t> runFonts_;  // of texts only
  std::vector<std::uint32_t> fills_;
  std::unordered_map<std::uint32_t, std::uint32_t> fillIndices_;
  std::vector<Entry> formats_;
  std::unordered_map<Key, std::uint32_t, Hash> indices_;
  std::uint64_t refused_ = 0;
  std::uint64_t refusedFonts_ = 0;
};

}  // namespace scrivalen::xlsx
