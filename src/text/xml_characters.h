#pragma once

#include "text/utf.h"

namespace scrivalen {

/// Whether an XML document may contain a character (XML 1.0, 2.2).
constexpr bool isXmlCharacter(char32_t c) {
  return c < 0x20 ? c == U'\t' || c == U'\n' || c == U'\r' : isCharacter(c) && c != 0xFFFE && c != 0xFFFF;
}

}  // namespace scrivalen
