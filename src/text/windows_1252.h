#pragma once

#include <optional>

namespace scrivalen {

/// The Windows-1252 byte of a character; nothing if there is none. The five unassigned bytes map to themselves.
std::optional<unsigned char> toWindows1252(char32_t c);

/// The character of a Windows-1252 byte; nothing for the five unassigned ones.
std::optional<char32_t> fromWindows1252(unsigned char byte);

}  // namespace scrivalen
