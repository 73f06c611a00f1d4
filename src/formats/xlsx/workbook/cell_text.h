#pragma once

#include "output/markup_text.h"
#include "output/output_buffer.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen::xlsx {

inline constexpr std::size_t kLongestCellText = 32767;  ///< in UTF-16 code units

inline constexpr std::size_t kMostOfAUnit = 6;  ///< bytes of XML for a UTF-16 code unit, or for a byte of UTF-8

/// Whether a text begins as "_x0041_" does, which readers take for an escaped character (ECMA-376, 22.9.2.19). Some
/// need no four digits.
bool beginsWithEscape(std::string_view text);
/// The same text with control characters escaped as "_x0001_", and with what readers take for such an escape escaped
/// too. A tab and a line feed stay.
std::string escapedText(std::string_view text);

/// Writes the text of a cell as the element "t". What readers would take for escaped characters is escaped.
/// @param text  without control characters but tabs and line feeds
void writeTextElement(OutputBuffer& out, MarkupText& markup, std::string_view text);
/// The same for a text that escapedText has made, or that needs no escapes.
void writeEscapedTextElement(OutputBuffer& out, MarkupText& markup, std::string_view text);
/// Appends it.
void appendTextElement(std::string& out, MarkupText& markup, std::string_view text);

/// Appends the value of an attribute, or the text of an element in which line breaks do not matter.
void appendXml(std::string& out, std::string_view text);
/// The same where the type is ST_Xstring: what readers would take for escaped characters is escaped.
void appendXstring(std::string& out, std::string_view text);

}  // namespace scrivalen::xlsx
