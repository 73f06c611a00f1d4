#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace scrivalen::typeset {

/// The character of a WinAnsi byte; 0 for a byte without one.
char32_t characterOfWinAnsi(unsigned char byte);

/// Appends clean UTF-8 as WinAnsi. @return false at the first character that it does not have
bool appendWinAnsi(std::string& bytes, std::string_view utf8);

}  // namespace scrivalen::typeset
