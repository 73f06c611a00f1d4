#pragma once

#include <string>
#include <string_view>

/// Display of link addresses.
namespace scrivalen::command {

/// Returns a link's text followed by its address in parentheses. The address is left out if the text already shows it
/// or if it is an anchor of the document. The result begins with the text.
std::string withAddress(std::string_view text, std::string_view address);

}  // namespace scrivalen::command
