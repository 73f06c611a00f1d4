#pragma once

namespace scrivalen {

// Letters of the Latin, Greek, Cyrillic and Armenian alphabets, whatever the locale. Every other character is returned
// as it is.

/// The capital of a small letter.
char32_t toUpperCase(char32_t c);

/// The small letter of a capital.
char32_t toLowerCase(char32_t c);

}  // namespace scrivalen
