#pragma once

#include "events/document.h"
#include "readers/markup_text.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

/// For formats without tags: finds the text inside a line that a web page would not show, because raw HTML encloses it
/// in a script or a style sheet.
class VisibleContent {
 public:
  /// Whether an event is to be written. Takes each event of the document. A span is visible if its beginning is; hidden
  /// content ends with its block.
  bool includes(const Event& event);

  /// Appends the text of tags and comments inside a line: a line break for each <br>.
  void appendMarkup(std::wstring& text, std::wstring_view markup) { markup_.appendInline(text, markup); }

 private:
  bool isHidden() const { return markup_.hidden() != HiddenContent::None; }
  bool beginSpan();
  bool endSpan();

  MarkupText markup_;
  std::vector<bool> spans_;  // for each open span, whether it is visible
};

}  // namespace scrivalen::command
