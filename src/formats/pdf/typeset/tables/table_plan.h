#pragma once

#include "document/model/table.h"
#include "formats/pdf/typeset/length.h"
#include "formats/pdf/typeset/text/shaper.h"

#include <cstddef>
#include <vector>

namespace scrivalen::typeset {

/// A range of a table's columns that is on one page, beside the first column.
struct TablePart {
  std::size_t first = 0;  ///< 0 if the first column is in the range itself
  std::size_t end = 0;
  std::vector<Length> edges;  ///< the left edge of each column, the first column before the range, then the right edge

  bool repeatsFirst() const { return first > 0; }
  bool has(std::size_t column) const { return (column == 0 && repeatsFirst()) || (column >= first && column < end); }
  /// The place in edges of a column in the part, or of its end.
  std::size_t placeOf(std::size_t column) const { return column == 0 ? 0 : column - first + (repeatsFirst() ? 1 : 0); }
};

/// How a table fits the text's width.
struct TablePlan {
  bool isTurned = false;  ///< on pages on their side
  Length size = 0;        ///< of its text
  std::vector<TablePart> parts;
};

/// What a column needs for the text of its sample, in thousandths of the text's size.
struct ColumnText {
  std::int64_t longestWord = 0;
  std::int64_t longestLine = 0;
};

/// Measures the sample of a table in its font.
std::vector<ColumnText> measureColumns(const document::Table& table, Shaper& shaper, Family family);

struct TableSpace {
  Length upright;
  Length turned;  ///< not wider: there are no turned pages
  bool isEqual;   ///< columns of equal widths rather than widths from their content
};

/// Between the text of a cell and each of its sides.
inline constexpr Length kCellPadding = 4 * kPoint;

/// A table that does not fit is set smaller, then on turned pages, then split; in parts it is on turned pages only if
/// there are fewer of them.
TablePlan planTable(const document::Table& table, const std::vector<ColumnText>& texts, const TableSpace& space);

}  // namespace scrivalen::typeset
