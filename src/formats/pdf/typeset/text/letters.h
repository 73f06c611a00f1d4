#pragma once

#include <cstddef>
#include <string_view>

namespace scrivalen::typeset {

/// Where the letter ends that begins at a place, with what is not divided from it: its marks, joiners and what they
/// join, the letters of a conjunct, the two halves of a flag (about Unicode Standard Annex 29, "Grapheme Clusters").
/// @param text  clean UTF-8
/// @param at    before its end
std::size_t endOfLetter(std::string_view text, std::size_t at);

}  // namespace scrivalen::typeset
