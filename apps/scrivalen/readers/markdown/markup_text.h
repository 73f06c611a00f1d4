#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace scrivalen::command {

/// Content of HTML, apart from tags, that a page does not show.
enum class HiddenContent : std::uint8_t { None, Script, StyleSheet, Comment };

/// Converts HTML to plain text piece by piece. Hidden content may begin in one piece and end in another.
class MarkupText {
 public:
  /// Appends the visible text of an HTML block, without tags, comments, scripts and style sheets. Blanks are collapsed;
  /// <br> and the boundaries of blocks become line breaks.
  void appendBlock(std::string& text, std::string_view markup);

  /// Appends the text of tags and comments inside a line: a line break for each <br>.
  void appendInline(std::string& text, std::string_view markup);

  /// The hidden content that has begun but not ended.
  HiddenContent hidden() const { return hidden_; }
  /// Ends the hidden content.
  void reveal() { hidden_ = HiddenContent::None; }

 private:
  HiddenContent hidden_ = HiddenContent::None;
};

/// The position after the end of hidden content; npos if it does not end in this piece of HTML.
std::size_t endOfHidden(HiddenContent hidden, std::string_view markup);

}  // namespace scrivalen::command
