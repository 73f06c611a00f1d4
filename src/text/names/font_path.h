#pragma once

#include <limits>
#include <string_view>

namespace scrivalen {

/// The index of a font that no collection has: what is said of larger ones, too.
inline constexpr unsigned kLargestFontIndex = std::numeric_limits<unsigned>::max();

/// What a value of the setting "font-file" names.
struct FontPath {
  std::string_view file;
  unsigned index = 0;  ///< of the font in a collection
};

/// Divides a value at a '#' with a number after it, which chooses a font of a collection.
FontPath fontPathOf(std::string_view value);

}  // namespace scrivalen
