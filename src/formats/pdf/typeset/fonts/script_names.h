#pragma once

#include <cstdint>
#include <string>

namespace scrivalen::typeset {

/// A script, as its four letters of ISO 15924 in one number.
using Script = std::uint32_t;

/// Its English name, or its four letters.
std::string nameOf(Script script);

}  // namespace scrivalen::typeset
