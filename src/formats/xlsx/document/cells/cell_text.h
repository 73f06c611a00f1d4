#pragma once

#include "output/markup_text.h"
#include "output/output_buffer.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen::xlsx {

inline constexpr std::size_t kLongestCellText = 32767;  ///< in UTF-16 code units

/// The beginning of a text that has at most so many UTF-16 code units, in whole characters.
/// @param utf8  well-formed
std::string_view cutToUnits(std::string_view utf8, std::size_t units);

/// Writes the text of a cell as the element "t". Texts such as "_x0041_", which readers take for escaped characters
/// (ECMA-376, 22.9.2.19), are escaped.
void writeTextElement(OutputBuffer& out, MarkupText& markup, std::string_view text);
/// Appends it.
void appendTextElement(std::string& out, MarkupText& markup, std::string_view text);

/// Appends the value of an attribute, or the text of an element in which line breaks do not matter.
void appendXml(std::string& out, std::string_view text);

}  // namespace scrivalen::xlsx
