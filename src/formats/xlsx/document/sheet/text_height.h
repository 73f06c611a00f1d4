#pragma once

#include "formats/xlsx/document/cells/rich_text.h"

#include <string_view>

namespace scrivalen::xlsx {

inline constexpr double kCodeWidth = 1.26;  ///< of a character of code, in digits

inline constexpr double kLineHeight = 15;   ///< of a row, in points
inline constexpr double kHighestRow = 409;  ///< in points

/// How many lines a text takes in cells of a width in digits; with a larger font there are fewer digits.
double linesOf(std::string_view text, double width);

/// The same as a reader is likely to show it: small letters are mostly narrower than digits, and capitals wider.
double shownLinesOf(std::string_view text, double width);

/// The space of a text in cells of a width in digits of the usual font: how many of its own characters that is.
double spaceOf(const RichText& text, const Font& font, double width);

/// The height of a text in such cells, in points.
/// @param font  that of most of the text; parts in larger ones take more
double heightOf(const RichText& text, const Font& font, double width);

}  // namespace scrivalen::xlsx
