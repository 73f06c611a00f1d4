#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::command {

/// Keeps the parser from ending a list after code. After a fence it takes the last bytes that it keeps of the code for
/// the beginning of a list item if they look like it, which depends on where the last line of the code ends in the
/// text. In a copy such lines are moved by a blank after the fence that begins the code, where blanks mean nothing.
/// @return the copy; nothing if there is no such line
std::optional<std::string> withCodeKeptInLists(std::string_view text);

}  // namespace scrivalen::command
