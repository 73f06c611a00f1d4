#pragma once

#include <string>
#include <string_view>

namespace scrivalen::command {

/// Appends what a character reference stands for; a name that HTML does not know is appended as it was typed.
/// @param reference  as typed, from '&' to ';'
void appendEntity(std::wstring& text, std::string_view reference);

}  // namespace scrivalen::command
