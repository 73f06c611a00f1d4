#pragma once

#include "readers/markdown/markup_text.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace scrivalen::command {

/// Finds where scripts, style sheets and comments end in the raw HTML of a Markdown text. Without this check, an
/// unclosed tag in a sentence would hide the rest of the text.
class HiddenContentEnds {
 public:
  /// Parses the text.
  explicit HiddenContentEnds(std::string_view markdown);

  /// Whether such an end comes after the given text of the parser. Texts are numbered from 1.
  bool follow(HiddenContent hidden, std::size_t text) const { return last_[static_cast<std::size_t>(hidden)] > text; }

 private:
  std::array<std::size_t, 4> last_{};  // for each kind the number of the text with its last end
};

}  // namespace scrivalen::command
