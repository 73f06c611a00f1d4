#pragma once

#include "document/model/table.h"
#include "document/word/page_twips.h"

#include <cstddef>
#include <vector>

namespace scrivalen::document {

/// A range of a table's columns that fits beside its first one.
struct TablePart {
  std::size_t first = 0;  ///< 0 if the first column is in the range itself
  std::size_t end = 0;
  std::vector<int> edges;  ///< the right edges of the first column, if it is repeated, and of the range, in twips

  bool repeatsFirst() const { return first > 0; }
  /// The number of its columns before a column of the table, which need not be in it.
  std::size_t columnsBefore(std::size_t column) const;
};

/// How a table fits the text's width: the page's orientation, the size of the text, and the parts.
struct TablePlan {
  Orientation orientation = Orientation::Upright;
  int halfPoints = 0;
  int padding = 0;  ///< between the text of a cell and each of its sides, in twips
  std::vector<TablePart> parts;
};

/// The widths that a table may have, in twips.
struct TableSpace {
  int upright;
  int turned;  ///< on a page turned to landscape; 0: there is none
};

struct WidthRule {
  bool isEqual = false;   ///< columns of equal widths rather than widths from their content
  bool isFilled = false;  ///< the table is as wide as the space
  double letters = 1;     ///< how wide letters are, by those of Arial in the size of the plan
};

/// A table that does not fit is set smaller, then on turned pages, then split; in parts it is on turned pages only if
/// there are fewer of them.
TablePlan planTable(const Table& table, TableSpace space, WidthRule rule);

}  // namespace scrivalen::document
