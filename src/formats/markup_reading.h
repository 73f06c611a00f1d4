#pragma once

#include <string>
#include <string_view>

// Texts of the classic interface that are markup already, in UTF-8.
namespace scrivalen {

/// Replaces the references that XML 1.0 allows (4.1, 4.6) by their characters; every other & stays.
void decodeReferences(std::string& text);

/// The text of HTML markup as a reader sees it: without tags, comments, scripts and styles. White space becomes one
/// blank; br and the ends of blocks become line breaks. References to the characters of Latin-1 and to typographic
/// ones are decoded.
std::string textOfMarkup(std::string_view markup);

/// Whether markup begins with a tag, or the end tag, of an HTML element that a paragraph cannot contain.
bool beginsWithBlock(std::string_view markup);

}  // namespace scrivalen
