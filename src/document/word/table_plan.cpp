#include "document/word/table_plan.h"

#include "document/tables/column_widths.h"
#include "document/word/page_twips.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <optional>
#include <span>
#include <utility>

namespace scrivalen::document {
namespace {

constexpr int kUsualHalfPoints = 20;
constexpr int kLeastHalfPoints = 12;
constexpr std::size_t kMostColumnsOfAPart = 63;  // of a table that Word opens
constexpr int kWidestTable = 31680;              // twips; Word's limit of 22 inches

// The width of a column of text in a proportional font, by the font's size. A digit has 0.56 of it, but words may be
// bold; in a whole line wide letters and narrow ones make up for each other.
constexpr double kWidthInWord = 0.62;
constexpr double kWidthInLine = 0.58;

// Columns that fit get somewhat more than they ask for, as some letters are wider than others.
constexpr double kMostSlack = 1.1;

int paddingOf(int halfPoints) { return 4 * halfPoints; }

// The width of a bold letter by the font's size, as far as Arial and fonts like it agree.
double boldWidthOf(char c) {
  constexpr std::string_view kNarrow = "!'()*,./:;I[\\]`fijlrt|";
  constexpr std::string_view kWide = "%@MWmw";
  constexpr double kNarrowLetter = 0.39;
  constexpr double kWideLetter = 0.95;
  constexpr double kCapital = 0.78;
  if (kNarrow.find(c) != kNarrow.npos) {
    return kNarrowLetter;
  }
  return kWide.find(c) != kWide.npos ? kWideLetter : c >= 'A' && c <= 'Z' ? kCapital : kWidthInWord;
}

// The width of the widest bold word, by the font's size. Words with other letters than those of ASCII are left out.
double boldWordOf(std::string_view text) {
  double widest = 0;
  double word = 0;
  for (const char c : text) {
    const bool isBreak = c == ' ' || c == '-' || c == '\n' || static_cast<unsigned char>(c) > 127;
    word = isBreak ? 0 : word + boldWidthOf(c);
    widest = std::max(widest, word);
  }
  return widest;
}

// Headers are bold.
void addHeader(const SampleRow& row, double size, double padding, std::vector<ColumnNeed>& needs) {
  std::size_t column = 0;
  for (const Cell& cell : row.cells) {
    if (column < needs.size() && cell.span == 1 && (row.header || cell.header)) {
      ColumnNeed& need = needs[column];
      need.longestWord = std::max(need.longestWord, boldWordOf(cell.text) * size + padding);
      need.longestLine = std::max(need.longestLine, need.longestWord);
    }
    column += static_cast<std::size_t>(cell.span);
  }
}

std::vector<ColumnNeed> needsOf(const Table& table, int halfPoints) {
  const double size = halfPoints * kTwipsPerPoint / 2;
  const double padding = 2 * paddingOf(halfPoints);
  std::vector<ColumnNeed> needs;
  for (const Column& column : table.columns) {
    const double word = std::max(column.widestWord, 1.0) * size * kWidthInWord;
    const double line = std::max(column.widestLine * size * kWidthInLine, word);
    const double usual = column.usualWideLine * size * kWidthInLine;
    const double usualWord = std::max(column.usualWideWord, 1.0) * size * kWidthInWord;
    needs.push_back({word + padding, line + padding, column.width, usual + padding, usualWord + padding});
  }
  for (const SampleRow& row : table.sample) {
    addHeader(row, size, padding, needs);
  }
  return needs;
}

// A word such as a long address is rather broken than that it makes all text small.
void breakLongWords(std::vector<ColumnNeed>& needs, double space) {
  for (ColumnNeed& need : needs) {
    need.longestWord = std::min(need.longestWord, space / 2);
  }
}

ColumnWidths widthsOf(std::span<const ColumnNeed> needs, double space, WidthRule rule) {
  return rule.isEqual ? equalColumnWidths(needs, space) : columnWidths(needs, space);
}

double sumOf(const std::vector<double>& widths) { return std::accumulate(widths.begin(), widths.end(), 0.0); }

// Widths that are too wide together lose in proportion: readers break their words.
void scale(ColumnWidths& widths, double space, bool isFilled) {
  const double whole = space / sumOf(widths.widths);
  const double factor = isFilled ? whole : std::min(whole, kMostSlack);
  for (double& width : widths.widths) {
    width *= factor;
  }
}

std::vector<int> edgesOf(const std::vector<double>& widths) {
  std::vector<int> edges;
  double edge = 0;
  for (const double width : widths) {
    edge += width;
    const int least = edges.empty() ? 1 : edges.back() + 1;
    edges.push_back(std::max(static_cast<int>(std::lround(edge)), least));
  }
  return edges;
}

TablePart partOf(const std::vector<ColumnNeed>& needs, std::size_t first, std::size_t end, double space,
                 WidthRule rule) {
  std::vector<ColumnNeed> own(needs.begin() + static_cast<std::ptrdiff_t>(first),
                              needs.begin() + static_cast<std::ptrdiff_t>(end));
  if (first > 0) {
    own.insert(own.begin(), needs.front());
  }
  ColumnWidths widths = widthsOf(own, space, rule);
  if (!widths.fit) {
    widths = columnWidths(own, space);
  }
  scale(widths, space, rule.isFilled);
  return {first, end, edgesOf(widths.widths)};
}

std::vector<TablePart> split(const std::vector<ColumnNeed>& needs, double space, WidthRule rule) {
  std::vector<TablePart> parts;
  std::size_t first = 0;
  while (first < needs.size()) {
    double taken = first > 0 ? needs.front().longestWord : 0;
    std::size_t columns = first > 0 ? 1 : 0;
    std::size_t end = first;
    while (end < needs.size() && columns < kMostColumnsOfAPart &&
           (end == std::max<std::size_t>(first, 1) || taken + needs[end].longestWord <= space)) {
      taken += needs[end++].longestWord;
      ++columns;
    }
    parts.push_back(partOf(needs, first, std::max(end, first + 1), space, rule));
    first = parts.back().end;
  }
  return parts;
}

// One part in the largest text that fits; none if not even the smallest does.
std::optional<TablePlan> inOnePart(const Table& table, double width, WidthRule rule) {
  std::vector<ColumnNeed> needs = needsOf(table, kUsualHalfPoints);
  if (needs.size() > kMostColumnsOfAPart) {
    return std::nullopt;
  }
  int halfPoints = kUsualHalfPoints;
  bool fits = widthsOf(needs, width, rule).fit;
  while (!fits) {
    breakLongWords(needs, width);
    fits = widthsOf(needs, width, rule).fit;
    if (!fits) {
      if (halfPoints == kLeastHalfPoints) {
        return std::nullopt;
      }
      needs = needsOf(table, --halfPoints);
    }
  }
  return TablePlan{
      Orientation::Upright, halfPoints, paddingOf(halfPoints), {partOf(needs, 0, needs.size(), width, rule)}};
}

TablePlan inParts(const Table& table, double width, WidthRule rule) {
  std::vector<ColumnNeed> needs = needsOf(table, kLeastHalfPoints);
  breakLongWords(needs, width);
  return {Orientation::Upright, kLeastHalfPoints, paddingOf(kLeastHalfPoints), split(needs, width, rule)};
}

TablePlan turned(TablePlan plan) {
  plan.orientation = Orientation::Turned;
  return plan;
}

}  // namespace

std::size_t TablePart::columnsBefore(std::size_t column) const {
  const std::size_t repeated = repeatsFirst() && column > 0 ? 1 : 0;
  return repeated + std::clamp(column, first, end) - first;
}

TablePlan planTable(const Table& table, TableSpace space, WidthRule rule) {
  const double width = std::min(space.upright, kWidestTable);
  const double turnedWidth = std::min(space.turned, kWidestTable);
  if (auto plan = inOnePart(table, width, rule)) {
    return *std::move(plan);
  }
  TablePlan upright = inParts(table, width, rule);
  if (turnedWidth <= width) {
    return upright;
  }
  if (auto plan = inOnePart(table, turnedWidth, rule)) {
    return turned(*std::move(plan));
  }
  TablePlan landscape = inParts(table, turnedWidth, rule);
  return landscape.parts.size() < upright.parts.size() ? turned(std::move(landscape)) : upright;
}

}  // namespace scrivalen::document
