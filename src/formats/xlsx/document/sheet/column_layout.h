#pragma once

#include "document/model/table.h"
#include "document/settings/settings.h"
#include "document/tables/column_widths.h"
#include "formats/xlsx/document/cells/rich_text.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace scrivalen::xlsx {

inline constexpr double kUsualWidth = 8.43;      ///< of a column, in digits of the usual font
inline constexpr double kPointsPerDigit = 5.25;  ///< of the usual font, 11 points
inline constexpr double kProseWidth = 90;        ///< of a text outside tables, in digits
inline constexpr double kDigitsPerIndent = 1.3;
inline constexpr double kBoldGrowth = 1.1;       ///< at most, of a text's width
inline constexpr double kPrintedDigit = 1.0625;  ///< of the usual font, in digits, which are whole pixels
inline constexpr double kCodeWidth = 1.26;       ///< of a character of code, in digits

inline constexpr double kLineHeight = 15;       ///< of a row, in points
inline constexpr double kHighestRow = 409;      ///< in points
inline constexpr double kHighestPicture = 390;  ///< in points; the row has to hold its text too

/// How many lines a text takes in cells of a width in digits; with a larger font there are fewer digits.
double linesOf(std::string_view text, double width);

/// The same as a reader is likely to show it: small letters are mostly narrower than digits, and capitals wider.
double shownLinesOf(std::string_view text, double width);

/// How many digits of a number surely fit in a cell of a width in digits; one that is too wide is shown as "###".
double digitsIn(double width);

/// Whether a column on the right is indented, so that its numbers do not touch the texts of the next one.
bool isBesideTexts(const document::Table& table, std::size_t column);

/// The columns that the tables of a sheet share, at most as many as it has.
class SharedColumns {
 public:
  /// @param table  with its sample
  void add(const document::Table& table);
  /// Their widths in digits of the usual font. A column is as wide as its longest line in the samples, but long texts
  /// are wrapped. Where not all lines have room, those that most rows need count.
  std::vector<double> widths(const document::FormatSettings& settings) const;

 private:
  std::size_t usualCount() const;

  std::vector<document::ColumnNeed> needs_;
  std::vector<double> rows_;  // that have the column
};
/// The space of a text in cells of a width in digits of the usual font: how many of its own characters that is.
double spaceOf(const RichText& text, const Font& font, double width);

/// The height of a text in such cells, in points.
/// @param font  that of most of the text; parts in larger ones take more
double heightOf(const RichText& text, const Font& font, double width);

/// The widths of a table's columns in digits of the usual font, at most as many as a sheet has columns. A column is as
/// wide as its longest line in the sample, but long texts are wrapped.
std::vector<double> sheetWidths(const document::Table& table, const document::FormatSettings& settings);

}  // namespace scrivalen::xlsx
