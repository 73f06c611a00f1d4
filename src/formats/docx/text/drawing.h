#pragma once

#include "document/pictures/picture.h"
#include "document/word/word_inlines.h"
#include "output/output_buffer.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace scrivalen::document::docx {

struct Drawing {
  std::string_view relation;     ///< that leads to the picture
  std::int64_t number = 0;       ///< of its own in the document, from 1
  std::string_view alternative;  ///< its text for readers who do not see it
  double widthPt = 0;            ///< 0: its own
};

/// Writes a picture as a character of a run (ECMA-376, 20.4.2.8).
void writeDrawing(OutputBuffer& out, const Picture& picture, const Drawing& drawing, Room room);
/// Gives the drawings in a copy of markup the numbers after @p last, which becomes the last of them.
void renumberDrawings(std::string& markup, std::int64_t& last);

}  // namespace scrivalen::document::docx
