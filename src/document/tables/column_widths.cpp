#include "document/tables/column_widths.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>

namespace scrivalen::document {
namespace {

using Needs = std::span<const ColumnNeed>;

template <typename Part>
double sumOf(Needs columns, Part part) {
  return std::accumulate(columns.begin(), columns.end(), 0.0,
                         [&](double sum, const ColumnNeed& column) { return sum + part(column); });
}

double longestWordOf(const ColumnNeed& column) { return column.longestWord; }

// The line that a column asks for. It is never shorter than a word of it.
double lineOf(const ColumnNeed& column, double space) {
  return std::max(column.longestWord, std::min(column.longestLine, space));
}

ColumnWidths widthsOfWords(Needs columns) {
  ColumnWidths result;
  std::transform(columns.begin(), columns.end(), std::back_inserter(result.widths), longestWordOf);
  result.fit = false;
  return result;
}

// The columns, those with the shortest lines first.
std::vector<std::size_t> orderOfLines(Needs columns) {
  std::vector<std::size_t> order(columns.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t a, std::size_t b) { return columns[a].longestLine < columns[b].longestLine; });
  return order;
}

// The lines of short columns first, each at most an equal part of what is left; then the longest word of each other
// column, and a part of the space above those words.
ColumnWidths widthsOfContent(Needs columns, double space) {
  ColumnWidths result{std::vector<double>(columns.size())};
  std::vector<std::size_t> order = orderOfLines(columns);
  double words = sumOf(columns, longestWordOf);
  auto next = order.begin();
  for (; next != order.end(); ++next) {
    const ColumnNeed& column = columns[*next];
    const double line = lineOf(column, space);
    const double otherWords = words - column.longestWord;
    if (line > space / static_cast<double>(order.end() - next) || line + otherWords > space) {
      break;
    }
    result.widths[*next] = line;
    words = otherWords;
    space -= line;
  }
  double lines = 0;
  std::for_each(next, order.end(), [&](std::size_t i) { lines += lineOf(columns[i], space); });
  const double part = lines <= space ? 1 : (space - words) / (lines - words);
  std::for_each(next, order.end(), [&](std::size_t i) {
    const double word = columns[i].longestWord;
    result.widths[i] = word + (lineOf(columns[i], space) - word) * part;
  });
  return result;
}

// Divides a space among the columns with a share. A column whose part is too narrow for its longest word gets the word,
// which makes the parts of the others narrower, so the division is repeated without it.
void divide(Needs columns, double space, std::vector<double>& widths) {
  std::vector<std::size_t> open;
  double shares = 0;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].share > 0) {
      open.push_back(i);
      shares += columns[i].share;
    }
  }
  while (!open.empty()) {
    const double part = space / shares;
    const auto isNarrow = [&](std::size_t i) { return columns[i].share * part < columns[i].longestWord; };
    const auto narrow = std::stable_partition(open.begin(), open.end(), [&](std::size_t i) { return !isNarrow(i); });
    if (narrow == open.end()) {
      break;
    }
    for (auto i = narrow; i != open.end(); ++i) {
      widths[*i] = columns[*i].longestWord;
      space -= widths[*i];
      shares -= columns[*i].share;
    }
    open.erase(narrow, open.end());
  }
  for (const std::size_t i : open) {
    widths[i] = columns[i].share * (space / shares);
  }
}

// Rounds down, then gives the whole units that are left to the columns that lost most.
WholeColumnWidths rounded(const ColumnWidths& exact) {
  const std::size_t count = exact.widths.size();
  WholeColumnWidths result{std::vector<std::size_t>(count), exact.fit};
  std::vector<double> lost(count);
  double allLost = 0;
  for (std::size_t i = 0; i < count; ++i) {
    result.widths[i] = static_cast<std::size_t>(std::floor(exact.widths[i]));
    lost[i] = exact.widths[i] - std::floor(exact.widths[i]);
    allLost += lost[i];
  }
  std::vector<std::size_t> order(count);
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return lost[a] > lost[b]; });
  const auto left = std::min(count, static_cast<std::size_t>(std::lround(allLost)));
  for (std::size_t i = 0; i < left; ++i) {
    ++result.widths[order[i]];
  }
  return result;
}

}  // namespace

ColumnWidths columnWidths(Needs columns, double space) {
  if (sumOf(columns, longestWordOf) > space) {
    return widthsOfWords(columns);
  }
  ColumnWidths result = widthsOfContent(columns, space);
  double left = space;
  bool hasShares = false;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    hasShares = hasShares || columns[i].share > 0;
    left -= columns[i].share > 0 ? 0 : result.widths[i];
  }
  if (hasShares) {
    divide(columns, left, result.widths);
  }
  return result;
}

WholeColumnWidths wholeColumnWidths(Needs columns, std::size_t space) {
  return rounded(columnWidths(columns, static_cast<double>(space)));
}

ColumnWidths equalColumnWidths(Needs columns, double space) {
  double longestWord = 0;
  for (const ColumnNeed& column : columns) {
    longestWord = std::max(longestWord, column.longestWord);
  }
  const double equal = space / static_cast<double>(columns.size());
  return {std::vector<double>(columns.size(), std::max(equal, longestWord)), longestWord <= equal};
}

WholeColumnWidths wholeEqualColumnWidths(Needs columns, std::size_t space) {
  const ColumnWidths exact = equalColumnWidths(columns, static_cast<double>(space));
  return {std::vector<std::size_t>(columns.size(), static_cast<std::size_t>(exact.widths.front())), exact.fit};
}

}  // namespace scrivalen::document
