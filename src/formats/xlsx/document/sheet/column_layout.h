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

inline constexpr double kHighestPicture = 390;  ///< in points; the row has to hold its text too

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

/// The widths of a table's columns in digits of the usual font, at most as many as a sheet has columns. A column is as
/// wide as its longest line in the sample, but long texts are wrapped.
std::vector<double> sheetWidths(const document::Table& table, const document::FormatSettings& settings);

}  // namespace scrivalen::xlsx
