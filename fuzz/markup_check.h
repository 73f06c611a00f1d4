#pragma once

#include <string>
#include <string_view>

namespace scrivalen::fuzz {

/// Why bytes are not well-formed XML 1.0 of elements without attributes and text, as reports write it. Empty when they
/// are.
std::string problemOfXml(std::string_view bytes);

/// Why a page that the command wrote from untrusted text is unsafe, or where its elements do not nest. Empty for a good
/// page. Expects a page made with the default template.
std::string problemOfPage(std::string_view page);

/// Why the groups of an RTF file do not nest; empty when they do.
std::string problemOfRtf(std::string_view bytes);

}  // namespace scrivalen::fuzz
