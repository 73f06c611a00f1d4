#pragma once

namespace scrivalen::platform {

/// The capital of a small letter of the Latin, Greek, Cyrillic and Armenian alphabets, whatever the locale; every other
/// character itself.
wchar_t toCapital(wchar_t c);

}  // namespace scrivalen::platform
