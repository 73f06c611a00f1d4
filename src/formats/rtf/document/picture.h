#pragma once

#include "document/pictures/picture.h"
#include "document/word/word_inlines.h"
#include "output/output_buffer.h"

#include <string_view>

namespace scrivalen::document::rtf {

/// Whether a picture is stored turned or mirrored. Readers of RTF show it so.
bool isTurned(const Picture& picture);

inline constexpr std::string_view kTurnedWarning = "pictures are shown as they are stored, turned or mirrored";

/// Writes a picture, unchanged but for its size.
/// @param alternative  its text for readers who do not see it
/// @param widthPt      0: its own
void writePicture(OutputBuffer& out, const Picture& picture, std::string_view alternative, double widthPt, Room room);

}  // namespace scrivalen::document::rtf
