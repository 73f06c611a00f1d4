#pragma once

#include "document/model/table.h"
#include "document/settings/settings.h"

#include <string_view>
#include <vector>

namespace scrivalen::xlsx {

inline constexpr double kUsualWidth = 8.43;      ///< of a column, in digits of the usual font
inline constexpr double kPointsPerDigit = 5.25;  ///< of the usual font, 11 points
inline constexpr double kProseWidth = 90;        ///< of a text outside tables, in digits

inline constexpr double kLineHeight = 15;       ///< of a row, in points
inline constexpr double kHighestRow = 409;      ///< in points
inline constexpr double kHighestPicture = 390;  ///< in points; the row has to hold its text too

/// How many lines a text takes in cells of a width in digits; with a larger font there are fewer digits.
double linesOf(std::string_view text, double width);

/// The same as a reader is likely to show it: small letters are mostly narrower than digits, and capitals wider.
double shownLinesOf(std::string_view text, double width);

/// The widths of a table's columns in digits of the usual font, at most as many as a sheet has columns. A column is as
/// wide as its longest line in the sample, but long texts are wrapped.
std::vector<double> sheetWidths(const document::Table& table, const document::FormatSettings& settings);

}  // namespace scrivalen::xlsx
