#pragma once

#include <string>
#include <string_view>

namespace scrivalen::command {

/// Appends the character of a character reference. An unknown reference is appended unchanged.
/// @param reference  from '&' to ';'
void appendEntity(std::string& text, std::string_view reference);

}  // namespace scrivalen::command
