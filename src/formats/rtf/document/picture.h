#pragma once

#include "document/model/warnings.h"
#include "document/pictures/picture.h"
#include "document/word/word_inlines.h"
#include "output/output_buffer.h"

#include <string_view>

namespace scrivalen::document::rtf {

/// Gives a warning about a picture that is mirrored and turned, or mirrored upside down: LibreOffice does not show it so.
void warnOfTurn(const Picture& picture, OutputWarnings& warnings);

/// Writes a picture, unchanged but for its size. Readers mirror and turn it.
/// @param alternative  its text for readers who do not see it
/// @param widthPt      0: its own
void writePicture(OutputBuffer& out, const Picture& picture, std::string_view alternative, double widthPt, Room room);

}  // namespace scrivalen::document::rtf
