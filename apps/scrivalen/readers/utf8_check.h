#pragma once

#include <cstddef>
#include <string_view>

namespace scrivalen::command {

/// Whether the text is well-formed UTF-8 (Unicode 15, table 3-7) without a NUL.
bool isValidUtf8(std::string_view text);

/// How many bytes at the end of the text begin a character that goes on behind it.
std::size_t incompleteSequence(std::string_view text);

}  // namespace scrivalen::command
