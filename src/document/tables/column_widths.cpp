#include "document/tables/column_widths.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <numeric>
#include <utility>

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

// The same for most of its cells.
double usualLineOf(const ColumnNeed& column, double space) {
  const double longest = lineOf(column, space);
  return column.usualLine > 0 ? std::clamp(column.usualLine, column.longestWord, longest) : longest;
}

using LineNeed = double (*)(const ColumnNeed& column, double space);

ColumnWidths widthsOfWords(Needs columns) {
  ColumnWidths result;
  result.widths.reserve(columns.size());
  std::transform(columns.begin(), columns.end(), std::back_inserter(result.widths), longestWordOf);
  result.fit = false;
  return result;
}

// The columns of a table that have no width yet, and the space that is left for them.
struct Sharing {
  Sharing(Needs needs, double tableSpace)
      : columns(needs), widths(needs.size()), open(needs.size()), space(tableSpace) {
    std::iota(open.begin(), open.end(), std::size_t{0});
  }

  template <typename Need>
  void sortBy(Need need) {
    std::stable_sort(open.begin(), open.end(),
                     [&](std::size_t a, std::size_t b) { return need(columns[a]) < need(columns[b]); });
  }

  template <typename Need>
  double sumOfOpen(Need need) const {
    return std::accumulate(open.begin(), open.end(), 0.0,
                           [&](double sum, std::size_t column) { return sum + need(columns[column]); });
  }

  Needs columns;
  std::vector<double> widths;
  std::vector<std::size_t> open;
  double space;
};

// Gives short lines to their columns, each at most an equal part of what is left beside the words of the others.
void giveShortLines(Sharing& sharing, LineNeed line) {
  constexpr double kAnySpace = std::numeric_limits<double>::infinity();
  sharing.sortBy([&](const ColumnNeed& column) { return line(column, kAnySpace); });
  double words = sharing.sumOfOpen(longestWordOf);
  auto next = sharing.open.begin();
  for (; next != sharing.open.end(); ++next) {
    const ColumnNeed& column = sharing.columns[*next];
    const double width = line(column, sharing.space);
    const double otherWords = words - column.longestWord;
    if (width > sharing.space / static_cast<double>(sharing.open.end() - next) || width + otherWords > sharing.space) {
      break;
    }
    sharing.widths[*next] = width;
    words = otherWords;
    sharing.space -= width;
  }
  sharing.open.erase(sharing.open.begin(), next);
}

// Gives each column its usual line, then of what is left an equal part at most to columns that lack little, and the
// rest to the others in proportion to what they lack.
void giveUsualLines(Sharing& sharing) {
  const auto usual = [space = sharing.space](const ColumnNeed& column) { return usualLineOf(column, space); };
  const auto lack = [&, space = sharing.space](const ColumnNeed& column) {
    return lineOf(column, space) - usual(column);
  };
  sharing.sortBy(lack);
  double left = std::max(sharing.space - sharing.sumOfOpen(usual), 0.0);
  double lacking = sharing.sumOfOpen(lack);
  double part = 1;
  for (std::size_t k = 0; k < sharing.open.size(); ++k) {
    const std::size_t i = sharing.open[k];
    const double lacked = lack(sharing.columns[i]);
    if (part == 1 && lacked > left / static_cast<double>(sharing.open.size() - k)) {
      part = left / lacking;
    }
    sharing.widths[i] = usual(sharing.columns[i]) + lacked * part;
    left -= lacked;
    lacking -= lacked;
  }
}

// Gives each column its longest word, and a part of the space above those words.
void giveParts(Sharing& sharing) {
  const auto lack = [space = sharing.space](const ColumnNeed& column) {
    return usualLineOf(column, space) - column.longestWord;
  };
  const double lacking = sharing.sumOfOpen(lack);
  const double part = lacking > 0 ? (sharing.space - sharing.sumOfOpen(longestWordOf)) / lacking : 0;
  for (const std::size_t i : sharing.open) {
    sharing.widths[i] = sharing.columns[i].longestWord + lack(sharing.columns[i]) * part;
  }
}

// Words that are rare take no space that usual lines need.
std::vector<ColumnNeed> breakRareWords(Needs columns, double space) {
  std::vector<ColumnNeed> needs(columns.begin(), columns.end());
  if (sumOf(columns, [&](const ColumnNeed& column) { return usualLineOf(column, space); }) > space) {
    for (ColumnNeed& need : needs) {
      const bool mayBreak = need.usualWord > 0 && need.share == 0;
      need.longestWord = mayBreak ? std::min(need.longestWord, need.usualWord) : need.longestWord;
    }
  }
  return needs;
}

ColumnWidths widthsOfContent(Needs columns, double space) {
  Sharing sharing(columns, space);
  giveShortLines(sharing, lineOf);
  const auto usual = [&](const ColumnNeed& column) { return usualLineOf(column, sharing.space); };
  if (sharing.sumOfOpen(usual) <= sharing.space) {
    giveUsualLines(sharing);
  } else {
    giveShortLines(sharing, usualLineOf);
    giveParts(sharing);
  }
  return {std::move(sharing.widths)};
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
  ColumnWidths result = widthsOfContent(breakRareWords(columns, space), space);
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
