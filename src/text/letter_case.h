#pragma once

namespace scrivalen {

// Case mapping of Latin, Greek, Cyrillic and Armenian letters, independent of the locale. Other characters are returned
// unchanged.

/// The upper-case form of a lower-case letter.
char32_t toUpperCase(char32_t c);

/// The lower-case form of an upper-case letter.
char32_t toLowerCase(char32_t c);

}  // namespace scrivalen
