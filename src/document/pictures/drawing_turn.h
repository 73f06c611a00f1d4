#pragma once

#include <string_view>

namespace scrivalen::document {

/// Whether the rows of a stored picture are shown as columns.
/// @param orientation  of the picture, as in EXIF: 1 to 8
constexpr bool isOnItsSide(int orientation) { return orientation >= 5; }

/// The attributes with which DrawingML mirrors and then turns a picture (ECMA-376, 20.1.7.6), each after a blank.
std::string_view drawingTurn(int orientation);

}  // namespace scrivalen::document
