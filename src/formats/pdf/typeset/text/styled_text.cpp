#include "formats/pdf/typeset/text/styled_text.h"

#include "formats/pdf/typeset/fonts/win_ansi_text.h"

namespace scrivalen::typeset {

void StyledText::add(std::string_view utf8, const TextStyle& style) {
  const std::size_t begin = bytes.size();
  missing += appendWinAnsi(bytes, utf8);
  if (bytes.size() > begin && (spans.empty() || !(spans.back().style == style))) {
    spans.push_back({begin, style});
  }
}

void StyledText::clear() {
  bytes.clear();
  spans.clear();
  links.clear();
  anchors.clear();
  missing = 0;
}

}  // namespace scrivalen::typeset
