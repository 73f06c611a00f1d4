#pragma once

#include "formats/docx/reference/xml_element.h"

#include <string>

namespace scrivalen::document::docx {

/// The part of a theme, without what refers to other parts: a fill with a picture becomes one of the colour that it is
/// used with. Empty for one that lacks colours, fonts or formats.
/// @param theme  "a:theme"
std::string themePart(XmlElement theme);

/// The part of fonts, without those that are embedded.
/// @param fonts  "w:fonts"
std::string fontsPart(XmlElement fonts);

}  // namespace scrivalen::document::docx
