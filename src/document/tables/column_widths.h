#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace scrivalen::document {

/// What a column asks for, in the unit of the space that a table has.
struct ColumnNeed {
  double longestWord = 0;
  double longestLine = 0;
  double share = 0;      ///< beside those of the other columns; 0: from the content
  double usualLine = 0;  ///< what a line of it usually takes, whatever the longest one does; 0: not known, the longest
  double usualWord = 0;  ///< longer words may be broken where lines lack space; 0: never
};

template <typename Width>
struct WidthsOf {
  std::vector<Width> widths;
  /// False: not even the longest words fit. Each column then has its longest word, and the table overflows.
  bool fit = true;
};
using ColumnWidths = WidthsOf<double>;
using WholeColumnWidths = WidthsOf<std::size_t>;

/// The widths of a table's columns.
///
/// If the longest lines of all columns fit, each column gets what its line needs. Else a column with a short line, at
/// most an equal part of the space, still gets what it needs, so that names and numbers do not break beside long texts.
/// For the others their usual lines count rather than the longest ones, so that a single long cell takes no space from
/// texts that are long in every row. If the usual lines fit, what is left above them goes to the longer lines. Else
/// columns with a short usual line get it, the others at least their longest words and a part of what is left above
/// those, in proportion to what their usual lines need beyond them. A line counts at most as long as the space. Where
/// the usual lines do not fit beside the longest words, longer words than the usual ones may be broken.
///
/// Columns with a share divide what the others leave in proportion to their shares, and fill the space. One whose part
/// is narrower than its longest word gets the word, at the cost of the others.
///
/// @param space  without the gaps between the columns
ColumnWidths columnWidths(std::span<const ColumnNeed> columns, double space);

/// The same in whole units, such as the columns of a monospaced font. The widths add up to as much as before rounding.
/// @param columns  with whole needs
WholeColumnWidths wholeColumnWidths(std::span<const ColumnNeed> columns, std::size_t space);

/// Equal widths that fill the space, in whole units up to one a column less; if the longest word of all is wider than
/// that, each column gets its width.
/// @param columns  at least one
ColumnWidths equalColumnWidths(std::span<const ColumnNeed> columns, double space);
WholeColumnWidths wholeEqualColumnWidths(std::span<const ColumnNeed> columns, std::size_t space);

}  // namespace scrivalen::document
