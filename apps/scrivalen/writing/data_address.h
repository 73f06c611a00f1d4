#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::command {

/// Whether an address holds its content itself (RFC 2397).
bool isDataAddress(std::string_view address);

/// The content of such an address, if it is in base64 (RFC 4648, 4); blanks in it are skipped.
std::optional<std::string> dataOf(std::string_view address);

}  // namespace scrivalen::command
