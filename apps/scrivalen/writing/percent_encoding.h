#pragma once

#include <string>
#include <string_view>

namespace scrivalen::command {

/// Puts the bytes of "%XX" (RFC 3986, 2.1) into a text. A percent sign without two digits stands for itself.
std::string percentDecoded(std::string_view text);

}  // namespace scrivalen::command
