#pragma once

#include "output/output_buffer.h"

#include <string_view>

namespace scrivalen::document::rtf {

/// How text looks. Readers keep the looks of text that is written from right to left apart from those of other text
/// (RTF 1.9, "Associated Character Properties"), so each run of such text states them again.
struct RunStyle {
  int font = 0;
  int halfPoints = 0;
  bool bold = false;
  bool italic = false;
  int language = 0;  ///< its number; 0: the document's
};

/// Writes how text from right to left looks in what follows, without beginning a run of it.
void writeRightToLeftStyle(OutputBuffer& out, const RunStyle& style);

/// Begins a run from right to left, which a closing brace ends.
void beginRightToLeftRun(OutputBuffer& out, const RunStyle& style);

/// Writes a text with each run from right to left marked.
/// @param isRightToLeft  whether the paragraph is
void writeRuns(OutputBuffer& out, std::string_view text, bool isRightToLeft, const RunStyle& style);

}  // namespace scrivalen::document::rtf
