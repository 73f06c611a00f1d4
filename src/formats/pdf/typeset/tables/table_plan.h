#pragma once

#include "document/model/table.h"
#include "formats/pdf/typeset/length.h"
#include "formats/pdf/typeset/text/shaper.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace scrivalen::typeset {

/// A range of a table's columns that is on one page, beside the first column.
struct TablePart {
  std::size_t first = 0;  ///< 0 if the first column is in the range itself
  std::size_t end = 0;
  std::vector<Length> edges;  ///< the left edge of each column, the first column before the range, then the right edge
  std::vector<Length> gaps = {};  ///< of each column, beyond its text on the right; empty: none

  bool repeatsFirst() const { return first > 0; }
  bool has(std::size_t column) const { return (column == 0 && repeatsFirst()) || (column >= first && column < end); }
  /// Whether a cell of these columns takes some of the part's space.
  bool reaches(std::size_t column, std::size_t endColumn) const {
    return has(column) || (column < end && endColumn > first);
  }
  /// The left edge of a cell that reaches into the part, and its right edge.
  Length leftOf(std::size_t column) const {
    return edges[column == 0 ? 0 : std::max(column, first) - first + (repeatsFirst() ? 1 : 0)];
  }
  /// How many of a cell's columns it shows.
  std::size_t columnsOf(std::size_t column, std::size_t endColumn) const {
    if (column == 0 && repeatsFirst()) {
      return 1 + (endColumn > first ? std::min(endColumn, end) - first : 0);
    }
    return std::min(endColumn, end) - std::max(column, first);
  }
  Length rightOf(std::size_t endColumn) const {
    const std::size_t shown = std::max(std::min(endColumn, end), first);
    return edges[shown - first + (repeatsFirst() ? 1 : 0)];
  }
  /// The gap in a cell that ends before a column.
  Length gapBefore(std::size_t endColumn) const { return gaps.empty() ? 0 : gaps[endColumn - 1]; }
};

/// How a table fits the text's width.
struct TablePlan {
  bool isTurned = false;  ///< on pages on their side
  Length size = 0;        ///< of its text
  std::vector<TablePart> parts;
};

/// The size of a table's text, unless the table is too wide.
inline constexpr Length kUsualTableSize = 9 * kPoint;

/// What a column needs for the content of its sample, with text of the usual size.
struct ColumnText {
  Length longestWord = 0;
  Length longestLine = 0;
  Length usualLine = 0;  ///< whatever a single long cell needs
  Length usualWord = 0;  ///< longer words are rare
  bool mayGrow = false;  ///< text, of which longer may come after the sample
};

/// Measures the sample of a table in its font.
std::vector<ColumnText> measureColumns(const document::Table& table, Shaper& shaper, Family family);

struct TableSpace {
  Length upright;
  Length turned;  ///< not wider: there are no turned pages
  bool isEqual;   ///< columns of equal widths rather than widths from their content
  bool isRightToLeft = false;
};

/// Between the text of a cell and each of its sides.
inline constexpr Length kCellPadding = 4 * kPoint;

/// Between a column that is aligned to the right and the text beside it, beyond their padding, where a table of text in
/// the usual size has space for it.
inline constexpr Length kGapAfterNumbers = 5 * kPoint;

/// A table that does not fit is set smaller, then on turned pages, then split; in parts it is on turned pages only if
/// there are fewer of them.
TablePlan planTable(const document::Table& table, const std::vector<ColumnText>& texts, const TableSpace& space);

}  // namespace scrivalen::typeset
