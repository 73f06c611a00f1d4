#pragma once

#include "formats/pdf/typeset/pictures/image_data.h"

#include <string_view>

namespace scrivalen::typeset {

/// Makes an image of a PNG. Its compressed bytes stay as they are unless it is interlaced or has a channel of alpha.
/// @param png       one that document::Picture has accepted; must outlive @p data
/// @param isOpaque  whether its alpha is drawn on white, and components have 8 bits at most
/// @return what is wrong with it, as the end of a sentence "The picture ..."; empty if nothing is
std::string_view encodePng(std::string_view png, PictureData& data, bool isOpaque = false);

}  // namespace scrivalen::typeset
