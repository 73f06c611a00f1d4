#pragma once

#include "formats/docx/text/run_style.h"
#include "output/output_buffer.h"

#include <string>
#include <string_view>

namespace scrivalen::document::docx {

/// Writes text in runs, each with its looks and its direction.
class RunWriter {
 public:
  RunWriter() { setStyle({}); }

  void setStyle(const RunStyle& style);
  /// Writes clean text; a line feed is a line break, a tab a tab.
  /// @param isRightToLeft  whether the paragraph is
  void write(OutputBuffer& out, std::string_view text, bool isRightToLeft) const;
  /// Begins and ends a run that does not hold text, such as a picture or a part of a field.
  void begin(OutputBuffer& out) const;
  static void end(OutputBuffer& out);

 private:
  std::string start_;  // of a run from left to right
  std::string startFromRight_;
};

/// Writes text without line feeds and tabs as the content of a run.
void writeTextElement(OutputBuffer& out, std::string_view text);

}  // namespace scrivalen::document::docx
