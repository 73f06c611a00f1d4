#include "formats/docx/text/run_writer.h"

#include "formats/docx/xml.h"
#include "text/direction.h"

#include <algorithm>
#include <cstddef>

namespace scrivalen::document::docx {
namespace {

constexpr std::string_view kRunEnd = "</w:r>";

void writeRun(OutputBuffer& out, std::string_view start, std::string_view text) {
  put(out, start);
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\n\t"), text.size());
    if (end > 0) {
      writeTextElement(out, text.substr(0, end));
    }
    if (end < text.size()) {
      put(out, text[end] == '\n' ? "<w:br/>" : "<w:tab/>");
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  put(out, kRunEnd);
}

}  // namespace

// Readers drop blanks at the ends of a text unless it says that they count (XML 1.0, 2.10).
void writeTextElement(OutputBuffer& out, std::string_view text) {
  const bool hasBlanks = text.starts_with(' ') || text.ends_with(' ');
  put(out, hasBlanks ? "<w:t xml:space=\"preserve\">" : "<w:t>");
  putContent(out, text);
  put(out, "</w:t>");
}

void RunWriter::setStyle(const RunStyle& style) {
  start_ = joined({"<w:r>", runProperties(style, false)});
  startFromRight_ = joined({"<w:r>", runProperties(style, true)});
}

void RunWriter::write(OutputBuffer& out, std::string_view text, bool isRightToLeft) const {
  if (!isRightToLeft && !hasRightToLeft(text)) {
    return writeRun(out, start_, text);
  }
  const Direction base = isRightToLeft ? Direction::RightToLeft : Direction::LeftToRight;
  while (!text.empty()) {
    Direction direction = base;
    const std::string_view run = text.substr(0, runLength(text, base, direction));
    writeRun(out, direction == Direction::RightToLeft ? startFromRight_ : start_, run);
    text.remove_prefix(run.size());
  }
}

void RunWriter::begin(OutputBuffer& out) const { put(out, start_); }
void RunWriter::end(OutputBuffer& out) { put(out, kRunEnd); }

}  // namespace scrivalen::document::docx
