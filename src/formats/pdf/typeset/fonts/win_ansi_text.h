#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace scrivalen::typeset {

/// What a character that WinAnsi does not have is drawn as.
inline constexpr char kMissingCharacter = '?';

/// The character of a WinAnsi byte; 0 for a byte without one.
char32_t characterOfWinAnsi(unsigned char byte);

/// Appends clean UTF-8 as WinAnsi. @return how many characters it does not have
std::uint64_t appendWinAnsi(std::string& bytes, std::string_view utf8);

}  // namespace scrivalen::typeset
