#pragma once

#include "formats/docx/reference/xml_element.h"

#include <string_view>

namespace scrivalen::document::docx {

/// Brings what is in a style, in the defaults of all, or in the list of fonts into the order of the schema (ECMA-376,
/// 17.7 and 17.8) and removes what the library does not take over: languages, sizes of tables, changes that are
/// tracked, embedded fonts, and elements and attributes that the schema does not know. Of elements that may be there
/// once the first is kept. Values of attributes stay as they are.
void putInSchemaOrder(XmlElement& element);

/// Adds a child to an element of a style, in its place of the schema's order. The element must be in order.
/// @return the child
XmlElement& insertInOrder(XmlElement& parent, XmlElement child);

/// The child of a name, which is added in its place if there is none.
XmlElement& childInOrder(XmlElement& parent, std::string_view name);

}  // namespace scrivalen::document::docx
