#pragma once

#include "document/tables/column_widths.h"

#include <cstddef>
#include <limits>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace scrivalen::document {

/// Lets words that are longer than half of the space be broken: one such as a long address is rather broken than that
/// it makes all text small.
void breakLongWords(std::vector<ColumnNeed>& needs, double space);

/// @param isEqual  equal widths rather than widths from the content
ColumnWidths tableWidths(std::span<const ColumnNeed> needs, double space, bool isEqual);

/// A range of columns. Beside one that does not begin with the first column, that column is repeated.
struct ColumnRange {
  std::size_t first;
  std::size_t end;
};

/// Divides columns into ranges whose longest words fit the space, together with that of the repeated column. A range
/// has at least one column of its own.
/// @param mostColumns  of a range and the repeated column
std::vector<ColumnRange> splitColumns(std::span<const ColumnNeed> needs, double space,
                                      std::size_t mostColumns = std::numeric_limits<std::size_t>::max());

/// What the columns of a range need, after those of the repeated column.
std::vector<ColumnNeed> needsOfRange(std::span<const ColumnNeed> needs, ColumnRange range);

/// Chooses between upright and turned pages: whole on upright ones, whole on turned ones, in parts on those that need
/// fewer parts.
/// @param whole     makes an optional plan for a width: none if the table does not fit it
/// @param divided   makes a plan for a width in parts
/// @param turnedWidth  not more than @p width: there are no turned pages
/// @return the plan, and whether its pages are turned
template <typename Whole, typename Divided>
auto choosePages(double width, double turnedWidth, Whole whole, Divided divided) {
  using Plan = decltype(divided(width));
  using Choice = std::pair<Plan, bool>;
  if (std::optional<Plan> plan = whole(width)) {
    return Choice(*std::move(plan), false);
  }
  Plan upright = divided(width);
  if (turnedWidth <= width) {
    return Choice(std::move(upright), false);
  }
  if (std::optional<Plan> plan = whole(turnedWidth)) {
    return Choice(*std::move(plan), true);
  }
  Plan turned = divided(turnedWidth);
  const bool isTurned = turned.parts.size() < upright.parts.size();
  return Choice(std::move(isTurned ? turned : upright), isTurned);
}

}  // namespace scrivalen::document
