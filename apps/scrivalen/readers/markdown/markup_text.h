#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

/// Content of HTML, apart from tags, that a page does not show.
enum class HiddenContent : std::uint8_t { None, Script, StyleSheet, Comment };

/// A picture or link among the text of HTML.
struct MarkupPart {
  enum class Kind : std::uint8_t { Image, Link, EndOfLink };

  Kind kind;
  std::size_t at;       ///< where it is in the text; at the end of the text if that is shorter
  std::string address;  ///< empty: there is none, only text
  std::string text;     ///< the alternative text of a picture, the title of a link
};

/// Converts HTML to plain text piece by piece. Hidden content may begin in one piece and end in another.
class MarkupText {
 public:
  /// Appends the visible text of an HTML block, without tags, comments, scripts and style sheets. Blanks are collapsed;
  /// <br> and the boundaries of blocks become line breaks. A tag that never ends is text.
  void appendBlock(std::string& text, std::string_view markup);

  /// Appends the text of tags and comments inside a line: a line break for each <br>.
  void appendInline(std::string& text, std::string_view markup);

  /// The pictures and links of the last piece, in the order of the text.
  const std::vector<MarkupPart>& parts() const { return parts_; }

  /// The hidden content that has begun but not ended.
  HiddenContent hidden() const { return hidden_; }
  /// Ends the hidden content.
  void reveal() { hidden_ = HiddenContent::None; }

 private:
  HiddenContent hidden_ = HiddenContent::None;
  std::vector<MarkupPart> parts_;
};

/// The position after the end of hidden content; npos if it does not end in this piece of HTML.
std::size_t endOfHidden(HiddenContent hidden, std::string_view markup);

}  // namespace scrivalen::command
