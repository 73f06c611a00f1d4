#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

// The order in which characters are read and written (Unicode Standard Annex 9).
namespace scrivalen::typeset {

/// The embedding level of each byte of a text, that of its character: odd from right to left.
/// @param text           clean UTF-8
/// @param isRightToLeft  the direction of the paragraph
void levelsOf(std::string_view text, bool isRightToLeft, std::vector<std::uint8_t>& levels);

/// The order from left to right of the parts of a line (rule L2).
/// @param levels  of each part
/// @param order   set: the indexes of the parts
void orderOf(const std::vector<std::uint8_t>& levels, std::vector<std::size_t>& order);

}  // namespace scrivalen::typeset
