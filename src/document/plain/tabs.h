#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen::document {

inline constexpr std::size_t kTabWidth = 4;  ///< of code, in characters

/// Code with blanks for its tabs, which lead to the next of the columns that are a tab's width apart.
/// @param column  that of the first character, counted from 0; set to that after the last
std::string withoutTabs(std::string_view code, std::size_t& column);

}  // namespace scrivalen::document
