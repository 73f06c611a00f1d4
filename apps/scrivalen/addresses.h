#pragma once

#include <string>
#include <string_view>

/// Display and safety of link and image addresses.
namespace scrivalen::command {

/// Returns a link's text followed by its address in parentheses. The address is left out if the text already shows it
/// or if it is an anchor of the document. The result begins with the text.
std::wstring withAddress(std::wstring_view text, std::wstring_view address);

enum class AddressUse { Link, Image };

/// Whether following an address may run a script, a macro or a program that it holds or names, such as javascript:,
/// macro: and ms-msdt:; also data:, except in an image. The scheme is recognized as browsers do, in any case and with
/// blanks and control characters around or inside it.
bool runsProgram(std::wstring_view address, AddressUse use);

}  // namespace scrivalen::command
