#include "formats/rtf/document/runs.h"

#include "formats/rtf/document/escape.h"
#include "text/direction.h"

#include <cstddef>

namespace scrivalen::document::rtf {

void beginRightToLeftRun(OutputBuffer& out, const RunStyle& style) {
  put(out, "{\\ltrch\\rtlch\\f", style.font);
  put(out, "\\fs", style.halfPoints);
  put(out, style.bold ? "\\b" : "");
  put(out, style.italic ? "\\i" : "");
  if (style.language > 0) {
    put(out, "\\lang", style.language);
  }
  out.put(' ');
}

void writeRightToLeftStyle(OutputBuffer& out, const RunStyle& style) {
  put(out, "\\rtlch\\af", style.font);
  put(out, "\\afs", style.halfPoints);
  put(out, style.bold ? "\\ab" : "");
  put(out, style.italic ? "\\ai" : "");
  put(out, "\\ltrch");
}

// Readers show digits after text from right to left as part of it, so runs of the other direction state its looks, too.
void writeRuns(OutputBuffer& out, std::string_view text, bool isRightToLeft, const RunStyle& style) {
  if (!isRightToLeft && !hasRightToLeft(text)) {
    return writeText(out, text);
  }
  const Direction base = isRightToLeft ? Direction::RightToLeft : Direction::LeftToRight;
  while (!text.empty()) {
    Direction direction = base;
    const std::string_view run = text.substr(0, runLength(text, base, direction));
    if (direction == Direction::RightToLeft) {
      beginRightToLeftRun(out, style);
    } else {
      out.put('{');
      writeRightToLeftStyle(out, style);
      out.put(' ');
    }
    writeText(out, run);
    out.put('}');
    text.remove_prefix(run.size());
  }
}

}  // namespace scrivalen::document::rtf
