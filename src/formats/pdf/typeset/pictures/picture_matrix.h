#pragma once

#include "formats/pdf/typeset/length.h"

#include <array>

namespace scrivalen::typeset {

/// The six numbers of a matrix (PDF 1.7, 8.3.3), in the order of the operator cm.
using PictureMatrix = std::array<Length, 6>;

/// Turns and mirrors an image, which is drawn in the unit square, into a box.
/// @param orientation  of the picture, as in EXIF: 1 to 8
/// @param left         of the box, whose coordinates are those of PDF: upwards
/// @param width        as shown, so that of the turned image
PictureMatrix pictureMatrix(int orientation, Length left, Length bottom, Length width, Length height);

}  // namespace scrivalen::typeset
