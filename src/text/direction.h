#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// Which way characters are written (Unicode Standard Annex 9, "Bidirectional Character Types").
namespace scrivalen {

enum class Direction : std::uint8_t { Neutral, LeftToRight, RightToLeft };

/// Letters have the direction of their script; digits, punctuation and symbols are neutral.
Direction directionOf(char32_t c);

/// That of the first character that is not neutral; Neutral if there is none. The text is clean UTF-8.
Direction firstDirection(std::string_view utf8);

/// Whether a text has a character that is written from right to left. The text is clean UTF-8.
bool hasRightToLeft(std::string_view utf8);

/// The length of the run that a text begins with: what is written in one direction. Neutral characters belong to the
/// characters on both sides if those have one direction, else to the base direction.
/// @param utf8  clean and not empty
/// @param base  left to right or right to left; set to the direction of the run
std::size_t runLength(std::string_view utf8, Direction base, Direction& direction);

}  // namespace scrivalen
