#pragma once

#include <string_view>

namespace scrivalen::typeset {

/// A standard for archives that a file conforms to (ISO 19005).
enum class Standard {
  None,
  A1b,  ///< PDF/A-1b: PDF 1.4, nothing transparent
  A2u   ///< PDF/A-2u: PDF 1.7, a text for every glyph
};

/// @param setting  a value of the setting "standard"
constexpr Standard standardOf(std::string_view setting) {
  return setting == "a-1b" ? Standard::A1b : setting == "a-2u" ? Standard::A2u : Standard::None;
}

}  // namespace scrivalen::typeset
