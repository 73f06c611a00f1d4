#pragma once

#include "formats/pdf/typeset/pictures/image_data.h"

#include <string_view>

namespace scrivalen::typeset {

/// Makes an image of a JPEG, whose bytes stay as they are.
/// @param jpeg     one that document::Picture has accepted; must outlive @p data
/// @param hasCmyk  whether the file may have colours for printing
/// @return what is wrong with it, as the end of a sentence "The picture ..."; empty if nothing is
std::string_view encodeJpeg(std::string_view jpeg, PictureData& data, bool hasCmyk = true);

}  // namespace scrivalen::typeset
