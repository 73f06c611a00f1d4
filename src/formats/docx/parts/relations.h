#pragma once

#include "document/pictures/picture.h"
#include "document/pictures/waiting_pictures.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen::document::docx {

/// The id of the relation that leads to a picture, and the picture's file in the folder of the main part.
/// @param picture  its number, from 0
std::string pictureRelation(std::size_t picture);
std::string picturePart(std::size_t picture, Picture::Format format);

/// The same of a header or footer.
std::string headerRelation(std::size_t header);
std::string headerPart(std::size_t header);

/// An element of a part that lists relations.
/// @param type  the last part of its name
std::string relation(std::string_view id, std::string_view type, std::string_view target);

inline constexpr std::string_view kRelationsStart =
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
inline constexpr std::string_view kRelationsEnd = "</Relationships>\n";

}  // namespace scrivalen::document::docx
