#pragma once

#include <cstddef>
#include <string_view>

namespace scrivalen::command {

/// Whether the text is well-formed UTF-8 (Unicode 15, table 3-7) without a NUL.
bool isCleanUtf8(std::string_view text);

/// The number of bytes at the end of the text that begin a character but do not complete it.
std::size_t incompleteSequence(std::string_view text);

}  // namespace scrivalen::command
