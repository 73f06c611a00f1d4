#pragma once

#include <cstddef>
#include <limits>
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

/// The most bytes that a string may have (PDF 1.4, Appendix C; ISO 19005-2, 6.1.13).
constexpr std::size_t longestString(Standard standard) {
  switch (standard) {
    case Standard::A1b: return 65'535;
    case Standard::A2u: return 32'767;
    default: return std::numeric_limits<std::size_t>::max();
  }
}

/// The most entries that an array may have (PDF 1.4, Appendix C).
constexpr std::size_t longestArray(Standard standard) {
  return standard == Standard::A1b ? 8'191 : std::numeric_limits<std::size_t>::max();
}

}  // namespace scrivalen::typeset
