#pragma once

#include <string>
#include <string_view>

namespace scrivalen::command {

std::wstring wide(std::string_view utf8);
std::string utf8(std::wstring_view wide);

/// The system's reason for the last call of the platform layer that failed.
std::string lastErrorText();

/// The text with the letters A to Z in lower case.
std::string asciiLower(std::string_view text);

/// The text with every occurrence of a part replaced.
std::string replaceAll(std::string text, std::string_view part, std::string_view with);

}  // namespace scrivalen::command
