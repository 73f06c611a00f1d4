#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen::command {

/// The blanks and tabs that are before a line of code as the text has them. The parser makes tabs blanks, up to the
/// next multiple of four columns.
/// @param text     the whole text
/// @param at       where the line begins in it, past its blanks
/// @param columns  the width of what belongs to the code
std::string codeIndentation(std::string_view text, std::size_t at, std::size_t columns);

}  // namespace scrivalen::command
