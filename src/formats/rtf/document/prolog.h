#pragma once

#include "document/settings/page.h"
#include "document/settings/settings.h"
#include "formats/rtf/document/color_table.h"
#include "output/output_buffer.h"

#include <string>
#include <string_view>

namespace scrivalen::document::rtf {

inline constexpr double kTwipsPerPoint = 20;

/// The page in twips.
struct PageTwips {
  explicit PageTwips(const Page& page);
  int textWidth() const { return width - left - right; }
  int textHeight() const { return height - top - bottom; }

  int width, height, top, right, bottom, left;
};

inline constexpr std::string_view kMonoFont = "\\f2";

enum class Style {
  Normal,
  Heading1,
  Heading2,
  Heading3,
  Heading4,
  Heading5,
  Heading6,
  Title,
  Quote,
  Code,
  List,
  Contents,
  Header,
  Footer
};
inline constexpr int kStyles = static_cast<int>(Style::Footer) + 1;

/// The words of each style. A paragraph repeats those of its style, as readers expect.
class StyleSheet {
 public:
  explicit StyleSheet(const ColorTable& colors);

  /// As in "\s1\keepn...\b\fs36".
  std::string_view words(Style style) const { return words_[static_cast<int>(style)]; }
  /// The words that a paragraph of another style gets in a quote.
  std::string_view quoteBorder() const { return quoteBorder_; }
  void write(OutputBuffer& out) const;

 private:
  std::string words_[kStyles];
  std::string quoteBorder_;
};

// Lists: one of bullets for all of them, and numbered ones that start at 1. Each of those is used once, since the next
// use would continue it.
inline constexpr int kBulletList = 1;
inline constexpr int kFirstNumberedList = 2;
inline constexpr int kNumberedLists = 60;
inline constexpr int kBulletLevels = 9;
inline constexpr int kListIndent = 440;  // twips
/// The character before an item, by the list's depth.
std::string_view bulletOf(int level);

/// Writes what comes before the text: tables of fonts, colours, styles and lists, properties, and paper.
void writeProlog(OutputBuffer& out, const FormatSettings& settings, const ColorTable& colors, const StyleSheet& styles,
                 const PageTwips& paper);

}  // namespace scrivalen::document::rtf
