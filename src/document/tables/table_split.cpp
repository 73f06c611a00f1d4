#include "document/tables/table_split.h"

#include <algorithm>

namespace scrivalen::document {

void breakLongWords(std::vector<ColumnNeed>& needs, double space) {
  for (ColumnNeed& need : needs) {
    need.longestWord = std::min(need.longestWord, space / 2);
  }
}

ColumnWidths tableWidths(std::span<const ColumnNeed> needs, double space, bool isEqual) {
  return isEqual ? equalColumnWidths(needs, space) : columnWidths(needs, space);
}

std::vector<ColumnRange> splitColumns(std::span<const ColumnNeed> needs, double space, std::size_t mostColumns) {
  std::vector<ColumnRange> ranges;
  for (std::size_t first = 0; first < needs.size(); first = ranges.back().end) {
    double taken = first > 0 ? needs.front().longestWord : 0;
    std::size_t columns = first > 0 ? 1 : 0;
    std::size_t end = first;
    while (end < needs.size() && columns < mostColumns &&
           (end == std::max<std::size_t>(first, 1) || taken + needs[end].longestWord <= space)) {
      taken += needs[end++].longestWord;
      ++columns;
    }
    ranges.push_back({first, std::max(end, first + 1)});
  }
  return ranges;
}

std::vector<ColumnNeed> needsOfRange(std::span<const ColumnNeed> needs, ColumnRange range) {
  std::vector<ColumnNeed> own;
  own.reserve(range.end - range.first + 1);
  if (range.first > 0) {
    own.push_back(needs.front());
  }
  const auto columns = needs.subspan(range.first, range.end - range.first);
  own.insert(own.end(), columns.begin(), columns.end());
  return own;
}

}  // namespace scrivalen::document
