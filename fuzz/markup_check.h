#pragma once

#include <string>
#include <string_view>

namespace scrivalen::fuzz {

/// Why bytes are no well-formed XML 1.0 of elements without attributes and text, which is what reports write; empty
/// when they are.
std::string problemOfXml(std::string_view bytes);

/// Why a page that the command made of text it does not trust is not safe, or its elements do not nest; empty when all
/// is well. A page of the default template is expected.
std::string problemOfPage(std::string_view page);

/// Why the groups of an RTF file do not nest; empty when they do.
std::string problemOfRtf(std::string_view bytes);

}  // namespace scrivalen::fuzz
