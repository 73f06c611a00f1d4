#pragma once

#include "document/model/warnings.h"
#include "document/settings/settings.h"
#include "output/output_buffer.h"

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>

namespace scrivalen::document::docx {

enum class Style : std::uint8_t {
  Normal,
  Heading1,
  Heading2,
  Heading3,
  Heading4,
  Heading5,
  Heading6,
  Title,
  Quote,
  QuoteRightToLeft,
  QuoteList,
  QuoteHeading1,
  QuoteHeading2,
  QuoteHeading3,
  QuoteHeading4,
  QuoteHeading5,
  QuoteHeading6,
  Code,
  List,
  ListCompact,
  ListItemText,
  ListQuote,
  ListCode,
  Contents1,
  Contents2,
  Contents3,
  Contents4,
  Contents5,
  Contents6,
  Header,
  Footer,
  Rule,
  TableSpace,
  SectionEnd
};

using StyleSet = std::bitset<static_cast<std::size_t>(Style::SectionEnd) + 1>;

/// @param first  the style of level 1
constexpr Style styleOfLevel(Style first, int level) { return static_cast<Style>(static_cast<int>(first) + level - 1); }

// What the library itself colours.
inline constexpr std::string_view kLineColor = "B8C0C8";
inline constexpr std::string_view kHeaderColor = "E6EAEE";

/// The element that refers to a style; empty for Normal, which needs none.
std::string_view styleReference(Style style);

inline constexpr int kUsualTableHalfPoints = 20;

/// The styles of a document, each with a name, so that a person changes the looks of all its paragraphs at once.
class StyleSheet {
 public:
  /// @param settings   not owned; must outlive this object
  /// @param textWidth  in twips
  /// @param warnings   gets one about a font whose name is cut
  StyleSheet(const FormatSettings& settings, int textWidth, OutputWarnings& warnings);

  /// The element that refers to a style; empty for Normal, which needs none. Some styles are hidden unless a paragraph
  /// refers to them.
  /// @param hasNumber  whether the paragraph itself has a number or bullet
  std::string_view reference(Style style, bool hasNumber);
  /// The element that refers to the style of the text of tables of a size. The style is then written, too.
  /// @param halfPoints  at most kUsualTableHalfPoints
  std::string tableReference(int halfPoints, bool isHeading);
  /// Writes the part of all styles that may be used.
  void write(OutputBuffer& out) const;
  /// The same as a text.
  std::string text() const;
  /// The ids of the styles of tables in the document, and of its paragraphs without a number or bullet of their own.
  std::set<std::string> unnumberedIds() const;

 private:
  void writeDefaults(OutputBuffer& out) const;
  void writeTableTexts(OutputBuffer& out) const;

  const FormatSettings& settings_;
  const int textWidth_;
  const std::string_view font_;
  StyleSet used_;
  StyleSet unnumbered_;                                // of paragraphs without a number or bullet
  std::bitset<kUsualTableHalfPoints + 1> tableSizes_;  // that are used, in half points
};

}  // namespace scrivalen::document::docx
