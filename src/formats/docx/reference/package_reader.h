#pragma once

#include "formats/docx/reference/xml_element.h"

#include <optional>
#include <string_view>

namespace scrivalen::document::docx {

/// The parts of a Word document that say how it looks.
struct LookParts {
  XmlElement styles;                ///< "w:styles"
  std::optional<XmlElement> theme;  ///< "a:theme"
  std::optional<XmlElement> fonts;  ///< "w:fonts"
};

/// Reads them from the bytes of a .docx or .dotx file. Parts are found by their relations (ECMA-376 part 2, 9.3).
/// Raises ArchiveError where one is missing that the document must have, or one is damaged.
LookParts readLookParts(std::string_view bytes);

}  // namespace scrivalen::document::docx
