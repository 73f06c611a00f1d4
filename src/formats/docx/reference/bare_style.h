#pragma once

#include "formats/docx/reference/style_list.h"

#include <string_view>

namespace scrivalen::document::docx {

/// Whether a style of the library has space of its own, such as that of cells, so that it must not have the indents,
/// borders and breaks that plain text may have in a reference.
/// @param id  of the style
bool isBare(std::string_view id);

/// Sets those of them that such a style would inherit to none.
/// @param styles  it is one of these
void makeBare(XmlElement& style, const StyleList& styles);

}  // namespace scrivalen::document::docx
