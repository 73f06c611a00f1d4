#include "document/word/table_plan.h"

#include "document/tables/shown_cell.h"
#include "document/tables/table_split.h"
#include "document/word/page_twips.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>
#include <span>
#include <utility>

namespace scrivalen::document {
namespace {

constexpr int kUsualHalfPoints = 20;
constexpr int kLeastHalfPoints = 12;
constexpr std::size_t kMostColumnsOfAPart = 63;  // of a table that Word opens

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

// What cells of the sample need beside the texts that their columns are measured by.
struct CellNeed {
  std::size_t column;
  std::size_t span;
  double boldWord;       // by the font's size
  double widestPicture;  // in twips
  double pictures;       // of a line, in twips
};

// A table and what is measured in its sample.
struct Measured {
  const Table& table;
  WidthRule rule;
  std::vector<CellNeed> cells;
};

// Headers are bold.
CellNeed needOf(const Cell& cell, std::size_t column, bool isBold) {
  CellNeed need{column, static_cast<std::size_t>(cell.span), 0, 0, 0};
  if (cell.content == nullptr) {
    need.boldWord = isBold ? boldWordOf(cell.text) : 0;
  } else {
    const ShownCell shown = shownCell(cell);
    need.boldWord = isBold ? boldWordOf(shown.text) : 0;
    need.widestPicture = shown.widestPicture * kTwipsPerPoint;
    need.pictures = shown.widestPictures * kTwipsPerPoint;
  }
  return need;
}

Measured measured(const Table& table, WidthRule rule) {
  Measured result{table, rule, {}};
  for (const SampleRow& row : table.sample) {
    std::size_t column = 0;
    for (const Cell& cell : row.cells) {
      const bool isBold = (row.header || cell.header) && cell.span == 1;
      if (column < table.columns.size() && (isBold || cell.content != nullptr)) {
        result.cells.push_back(needOf(cell, column, isBold));
      }
      column += static_cast<std::size_t>(cell.span);
    }
  }
  return result;
}

// The pictures of a cell are as lines: shown smaller, rather than that they make the text smaller or split the table,
// but for those that are hardly larger than text.
void addPictures(const CellNeed& cell, double size, double padding, double space, std::span<ColumnNeed> needs) {
  constexpr double kLeastPicture = 4;  // by the font's size
  const double line = std::min(cell.pictures + padding, space);
  double lacking = line;
  double lackingUsual = line;
  for (const ColumnNeed& need : needs) {
    lacking -= need.longestLine;
    lackingUsual -= need.usualLine;
  }
  const auto columns = static_cast<double>(needs.size());
  const double word = std::min(cell.widestPicture, kLeastPicture * size) / columns + padding;
  for (ColumnNeed& need : needs) {
    need.longestLine += std::max(lacking / columns, 0.0);
    need.usualLine += std::max(lackingUsual / columns, 0.0);
    need.longestWord = std::max(need.longestWord, word);
    need.usualWord = std::max(need.usualWord, word);
  }
}

void addCell(const CellNeed& cell, double size, double padding, double space, std::vector<ColumnNeed>& needs) {
  if (cell.boldWord > 0) {
    ColumnNeed& need = needs[cell.column];
    need.longestWord = std::max(need.longestWord, cell.boldWord * size + padding);
    need.longestLine = std::max(need.longestLine, need.longestWord);
  }
  const std::size_t span = std::min(cell.span, needs.size() - cell.column);
  if (cell.pictures > 0 && span <= kMostColumnsOfAPart) {
    addPictures(cell, size, padding, space, std::span(needs).subspan(cell.column, span));
  }
}

std::vector<ColumnNeed> needsOf(const Measured& measured, int halfPoints, double space) {
  const Table& table = measured.table;
  const double size = halfPoints * kTwipsPerPoint / 2 * measured.rule.letters;
  const double padding = 2 * paddingOf(halfPoints);
  std::vector<ColumnNeed> needs;
  needs.reserve(table.columns.size());
  for (const Column& column : table.columns) {
    const double word = std::max(column.widestWord, 1.0) * size * kWidthInWord;
    const double line = std::max(column.widestLine * size * kWidthInLine, word);
    const double usual = column.usualWideLine * size * kWidthInLine;
    const double usualWord = std::max(column.usualWideWord, 1.0) * size * kWidthInWord;
    needs.push_back({word + padding, line + padding, column.width, usual + padding, usualWord + padding});
  }
  for (const CellNeed& cell : measured.cells) {
    addCell(cell, size, padding, space, needs);
  }
  return needs;
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

TablePart partOf(const std::vector<ColumnNeed>& needs, ColumnRange range, double space, WidthRule rule) {
  const std::vector<ColumnNeed> own = needsOfRange(needs, range);
  ColumnWidths widths = tableWidths(own, space, rule.isEqual);
  if (!widths.fit) {
    widths = columnWidths(own, space);
  }
  scale(widths, space, rule.isFilled);
  return {range.first, range.end, edgesOf(widths.widths)};
}

// One part in the largest text that fits; none if not even the smallest does.
std::optional<TablePlan> inOnePart(const Measured& table, double width) {
  std::vector<ColumnNeed> needs = needsOf(table, kUsualHalfPoints, width);
  if (needs.size() > kMostColumnsOfAPart) {
    return std::nullopt;
  }
  int halfPoints = kUsualHalfPoints;
  bool fits = tableWidths(needs, width, table.rule.isEqual).fit;
  while (!fits) {
    breakLongWords(needs, width);
    fits = tableWidths(needs, width, table.rule.isEqual).fit;
    if (!fits) {
      if (halfPoints == kLeastHalfPoints) {
        return std::nullopt;
      }
      needs = needsOf(table, --halfPoints, width);
    }
  }
  return TablePlan{
      Orientation::Upright, halfPoints, paddingOf(halfPoints), {partOf(needs, {0, needs.size()}, width, table.rule)}};
}

TablePlan inParts(const Measured& table, double width) {
  std::vector<ColumnNeed> needs = needsOf(table, kLeastHalfPoints, width);
  breakLongWords(needs, width);
  TablePlan plan{Orientation::Upright, kLeastHalfPoints, paddingOf(kLeastHalfPoints), {}};
  for (const ColumnRange range : splitColumns(needs, width, kMostColumnsOfAPart)) {
    plan.parts.push_back(partOf(needs, range, width, table.rule));
  }
  return plan;
}

}  // namespace

std::size_t TablePart::columnsBefore(std::size_t column) const {
  const std::size_t repeated = repeatsFirst() && column > 0 ? 1 : 0;
  return repeated + std::clamp(column, first, end) - first;
}

TablePlan planTable(const Table& table, TableSpace space, WidthRule rule) {
  const Measured all = measured(table, rule);
  auto [plan, isTurned] = choosePages(
      space.upright, space.turned, [&](double width) { return inOnePart(all, width); },
      [&](double width) { return inParts(all, width); });
  plan.orientation = isTurned ? Orientation::Turned : Orientation::Upright;
  return std::move(plan);
}

}  // namespace scrivalen::document
