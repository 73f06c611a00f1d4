#pragma once

#include "formats/pdf/typeset/fonts/font_set.h"
#include "formats/pdf/typeset/length.h"
#include "text/colors.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::typeset {

/// U+FFFC
inline constexpr std::string_view kPictureCharacter = "\xEF\xBF\xBC";

/// Of code in a text, in thousandths of the size around it.
inline constexpr int kCodeSpanSize = 900;

/// How a piece of text is drawn.
struct TextStyle {
  FontId font = 0;
  bool isUnderlined = false;
  bool isDeleted = false;
  Length size = 0;
  Length rise = 0;  ///< of the baseline
  Rgb color = 0;
  std::optional<Rgb> background = std::nullopt;
  int link = -1;      ///< an index of StyledText::links
  int language = -1;  ///< an index of StyledText::languages
  bool isCode = false;

  friend bool operator==(const TextStyle&, const TextStyle&) = default;
};

/// A part of a text that has one style. It ends where the next one begins.
struct StyledSpan {
  std::size_t begin;
  TextStyle style;
};

/// A place in a text that links can lead to.
struct TextAnchor {
  std::size_t at;
  std::string name;
};

/// A link of a text.
struct TextLink {
  std::string address;  ///< with "#" before it, a place of the document
  std::size_t begin;    ///< of its text
};

/// A picture in a line of text. Its place in the text is U+FFFC.
struct TextPicture {
  std::size_t at;
  Length width;
  Length height;
  int object;             ///< the number of its image
  int orientation;        ///< as in EXIF
  std::string text = {};  ///< that says what it shows
};

/// The text of a block or cell, as clean UTF-8; a line feed is a line break.
struct StyledText {
  std::string text;
  std::vector<StyledSpan> spans;  ///< the first at 0, if there is a text
  std::vector<TextLink> links;
  std::vector<std::string> languages;  ///< BCP 47
  std::vector<TextAnchor> anchors;
  std::vector<TextPicture> pictures;

  bool isEmpty() const { return text.empty(); }
  void add(std::string_view utf8, const TextStyle& style) {
    if (!utf8.empty() && (spans.empty() || !(spans.back().style == style))) {
      spans.push_back({text.size(), style});
    }
    text.append(utf8);
  }
  void addPicture(TextPicture picture, const TextStyle& style) {
    picture.at = text.size();
    pictures.push_back(std::move(picture));
    add(kPictureCharacter, style);
  }
  /// What people read of a link, pictures by their texts; of a long one the beginning. Without any it is the address.
  std::string descriptionOf(int link) const;
};

}  // namespace scrivalen::typeset
