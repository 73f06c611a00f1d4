#pragma once

#include <string>
#include <string_view>

namespace scrivalen::fuzz {

/// Why bytes are not well-formed XML 1.0 of elements without attributes and text, as reports write it. Empty when they
/// are.
std::string problemOfXml(std::string_view bytes);
/// Like problemOfXml, but elements may have attributes and be empty, as documents write them.
std::string problemOfDocumentXml(std::string_view bytes);

/// Why one of the pages that the command wrote from untrusted text is unsafe, or where its elements do not nest. Empty
/// for good pages. Expects pages made without a template, one after another.
std::string problemOfPages(std::string_view pages);

/// Adds an attribute to each tag of a text that begins an element, whatever its name. No page or XML file may have it:
/// otherwise the plain tag of an element that reports write themselves would pass for theirs. An end tag that came
/// through would match no beginning.
std::string withMarkedTags(std::string_view text);

/// Why the groups of an RTF file do not nest; empty when they do.
std::string problemOfRtf(std::string_view bytes);

}  // namespace scrivalen::fuzz
