#pragma once

#include "document/model/table.h"

#include <cstddef>
#include <vector>

namespace scrivalen::document::rtf {

/// A range of a table's columns that fits beside its first one.
struct TablePart {
  std::size_t first = 0;  ///< 0 if the first column is in the range itself
  std::size_t end = 0;
  std::vector<int> edges;  ///< the right edges of the first column, if it is repeated, and of the range, in twips

  bool repeatsFirst() const { return first > 0; }
  /// The number of its columns before a column of the table, which need not be in it.
  std::size_t columnsBefore(std::size_t column) const;
};

/// How a table fits the text's width: the size of its text, and its parts.
struct TablePlan {
  int halfPoints = 0;
  int padding = 0;  ///< between the text of a cell and each of its sides, in twips
  std::vector<TablePart> parts;
};

/// @param space    in twips
/// @param isEqual  columns of equal widths rather than widths from their content
TablePlan planTable(const Table& table, int space, bool isEqual);

}  // namespace scrivalen::document::rtf
