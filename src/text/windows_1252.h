#pragma once

#include <optional>

namespace scrivalen {

/// The Windows-1252 byte of a character; nothing if there is none. The five unassigned bytes map to themselves.
std::optional<unsigned char> toWindows1252(char32_t c);

}  // namespace scrivalen
