#pragma once

#include <string>
#include <string_view>

/// What the addresses of links and images mean.
namespace scrivalen::command {

/// A link's text followed by its address in parentheses, unless the text shows the address already or the address is an
/// anchor of the document. The result begins with the text.
std::wstring withAddress(std::wstring_view text, std::wstring_view address);

enum class AddressUse { Link, Image };

/// Whether following an address runs a program that is in it: javascript:, vbscript:, and data: except in an image. The
/// scheme is found as browsers find it, whatever its case and the blanks and control characters around and within it.
bool runsProgram(std::wstring_view address, AddressUse use);

}  // namespace scrivalen::command
