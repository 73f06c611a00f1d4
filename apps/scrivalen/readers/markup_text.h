#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace scrivalen::command {

/// What HTML holds, besides its tags, that a reader of the page does not see.
enum class HiddenContent : std::uint8_t { None, Script, StyleSheet, Comment };

/// Makes plain text of HTML that comes in pieces: what is hidden may begin in one piece and end in another.
class MarkupText {
 public:
  /// Appends what a reader of an HTML block sees of it: no tags, comments, scripts and style sheets, blanks drawn
  /// together, a line break for <br> and where a block begins or ends.
  void appendBlock(std::wstring& text, std::wstring_view markup);

  /// Appends what tags and comments within a line come to: a line break for each <br>.
  void appendInline(std::wstring& text, std::wstring_view markup);

  /// What has begun and not ended yet.
  HiddenContent hidden() const { return hidden_; }
  /// Takes it as ended.
  void reveal() { hidden_ = HiddenContent::None; }

 private:
  HiddenContent hidden_ = HiddenContent::None;
};

/// The position after the end of what is hidden; npos when it does not end in this piece of HTML.
std::size_t endOfHidden(HiddenContent hidden, std::wstring_view markup);

}  // namespace scrivalen::command
