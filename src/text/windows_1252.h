#pragma once

#include <optional>

namespace scrivalen {

/// The byte of a character in Windows-1252, whose five unused bytes stand for themselves; nothing for what it lacks.
std::optional<unsigned char> toWindows1252(char32_t c);

}  // namespace scrivalen
