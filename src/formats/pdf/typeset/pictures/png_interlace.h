#pragma once

#include "formats/pdf/typeset/pictures/png_file.h"

#include <string>

namespace scrivalen::typeset {

/// Decodes an interlaced PNG.
/// @param pixels  set to its rows from top to bottom, plain, without filters' numbers
/// @return false when it is broken
bool decodeInterlaced(const PngFile& file, std::string& pixels);

}  // namespace scrivalen::typeset
