#pragma once

#include "document/pictures/picture.h"

namespace scrivalen::document {

/// Reads a picture from a file.
/// @param path    as narrowPath has it
/// @param reason  set to one line for a person when there is no picture
/// @return null when the file cannot be read, or holds no picture
std::shared_ptr<const Picture> readPictureFile(std::string_view path, std::string& reason);

}  // namespace scrivalen::document
