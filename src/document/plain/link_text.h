#pragma once

#include <string>
#include <string_view>

namespace scrivalen::document {

/// A link as text: its own text, followed by the address in parentheses if that leads out of the document and the text
/// does not show it already.
std::string withAddress(std::string_view text, std::string_view address);

}  // namespace scrivalen::document
