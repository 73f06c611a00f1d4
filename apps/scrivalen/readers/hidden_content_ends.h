#pragma once

#include "readers/markup_text.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace scrivalen::command {

/// Where the raw HTML of a Markdown text ends scripts, style sheets and comments. A tag that stands in a sentence
/// without its end would hide the rest of the text otherwise.
class HiddenContentEnds {
 public:
  /// Parses the text.
  explicit HiddenContentEnds(std::string_view markdown);

  /// Whether an end follows a text of the parser; texts count from 1.
  bool follow(HiddenContent hidden, std::size_t text) const { return last_[static_cast<std::size_t>(hidden)] > text; }

 private:
  std::array<std::size_t, 4> last_{};  // the number of the text with the last end of each
};

}  // namespace scrivalen::command
