#include "formats/pdf/typeset/tables/table_plan.h"

#include "document/tables/column_widths.h"
#include "formats/pdf/typeset/blocks/inline_collector.h"
#include "formats/pdf/typeset/text/paragraph.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>
#include <span>

namespace scrivalen::typeset {
namespace {

using document::ColumnNeed;
using document::ColumnWidths;

constexpr Length kLeastSize = 6 * kPoint;
constexpr Length kSizeStep = kPoint / 2;

// Columns that fit get somewhat more than they ask for.
constexpr double kMostSlack = 1.15;

// Numbers may get longer after the sample: from the 500 rows that it has at most to millions. Those that are long
// already need less.
constexpr std::string_view kMillions = "0000000";
constexpr std::string_view kDigitsToCome = "00";

std::vector<ColumnNeed> needsOf(const document::Table& table, const std::vector<ColumnText>& texts, Length size) {
  std::vector<ColumnNeed> needs;
  for (std::size_t column = 0; column < texts.size(); ++column) {
    const auto need = [size](Length usual) {
      return static_cast<double>(usual * size / kUsualTableSize + 2 * kCellPadding + kPoint / 10);
    };
    needs.push_back({need(texts[column].longestWord), need(texts[column].longestLine), table.columns[column].width});
  }
  return needs;
}

// A word such as a long address is rather broken than that it makes all text small.
void breakLongWords(std::vector<ColumnNeed>& needs, double space) {
  for (ColumnNeed& need : needs) {
    need.longestWord = std::min(need.longestWord, space / 2);
  }
}

ColumnWidths widthsOf(std::span<const ColumnNeed> needs, const double space, bool isEqual) {
  return isEqual ? document::equalColumnWidths(needs, space) : document::columnWidths(needs, space);
}

double sumOf(const std::vector<double>& widths) { return std::accumulate(widths.begin(), widths.end(), 0.0); }

TablePart partOf(const std::vector<ColumnNeed>& needs, std::size_t first, std::size_t end, double space, bool isEqual) {
  std::vector<ColumnNeed> own(needs.begin() + static_cast<std::ptrdiff_t>(first),
                              needs.begin() + static_cast<std::ptrdiff_t>(end));
  if (first > 0) {
    own.insert(own.begin(), needs.front());
  }
  ColumnWidths widths = widthsOf(own, space, isEqual);
  if (!widths.fit) {
    widths = document::columnWidths(own, space);
  }
  const double factor = std::min(space / sumOf(widths.widths), kMostSlack);
  TablePart part{first, end, {0}};
  double edge = 0;
  for (const double width : widths.widths) {
    edge += width * factor;
    part.edges.push_back(std::llround(edge));
  }
  return part;
}

std::vector<TablePart> split(const std::vector<ColumnNeed>& needs, double space, bool isEqual) {
  std::vector<TablePart> parts;
  std::size_t first = 0;
  while (first < needs.size()) {
    double taken = first > 0 ? needs.front().longestWord : 0;
    std::size_t end = first;
    while (end < needs.size() && (end == std::max<std::size_t>(first, 1) || taken + needs[end].longestWord <= space)) {
      taken += needs[end++].longestWord;
    }
    parts.push_back(partOf(needs, first, std::max(end, first + 1), space, isEqual));
    first = parts.back().end;
  }
  return parts;
}

// One part in the largest text that fits; none if not even the smallest does.
std::optional<TablePlan> inOnePart(const document::Table& table, const std::vector<ColumnText>& texts, double width,
                                   bool isEqual) {
  for (Length size = kUsualTableSize; size >= kLeastSize; size -= kSizeStep) {
    std::vector<ColumnNeed> needs = needsOf(table, texts, size);
    bool fits = widthsOf(needs, width, isEqual).fit;
    if (!fits) {
      breakLongWords(needs, width);
      fits = widthsOf(needs, width, isEqual).fit;
    }
    if (fits) {
      return TablePlan{false, size, {partOf(needs, 0, needs.size(), width, isEqual)}};
    }
  }
  return std::nullopt;
}

TablePlan inParts(const document::Table& table, const std::vector<ColumnText>& texts, double width, bool isEqual) {
  std::vector<ColumnNeed> needs = needsOf(table, texts, kLeastSize);
  breakLongWords(needs, width);
  return {false, kLeastSize, split(needs, width, isEqual)};
}

TablePlan turned(TablePlan plan) {
  plan.isTurned = true;
  return plan;
}

// Measures texts of the usual size.
class Ruler {
 public:
  Ruler(Shaper& shaper, Family family) : shaper_(shaper), family_(family) {}

  void measure(const document::Cell& cell, bool isBold, ColumnText& column) {
    TextStyle style;
    style.font = fontOf(family_, isBold, false);
    style.size = kUsualTableSize;
    collector_.begin(style);
    cell.replay(collector_);
    const StyledText text = collector_.take();
    measureWords(text, column);
    const SetText set = setText(text, {.width = kEndless, .leading = kAnyLeading, .usual = style}, shaper_);
    for (const TextLine& line : set.lines) {
      column.longestLine = std::max(column.longestLine, line.width);
    }
  }

  Length widthOf(std::string_view text) {
    Length width = 0;
    for (const ShapedRun& run : shaper_.shape(text, {fontOf(family_, false, false), kUsualTableSize})) {
      width += run.width;
    }
    return width;
  }

 private:
  static constexpr Length kAnyLeading = 1000;
  static constexpr Length kEndless = Length{1} << 40;

  // In a space without any width each word has a line of its own.
  void measureWords(const StyledText& text, ColumnText& column) {
    const SetText set = setText(text, {.leading = kAnyLeading, .keepsWords = true}, shaper_);
    for (const TextLine& line : set.lines) {
      column.longestWord = std::max(column.longestWord, line.width);
    }
  }

  Shaper& shaper_;
  Family family_;
  InlineCollector collector_{nullptr, nullptr};
};

}  // namespace

std::vector<ColumnText> measureColumns(const document::Table& table, Shaper& shaper, Family family) {
  Ruler ruler(shaper, family);
  std::vector<ColumnText> columns(table.columns.size());
  for (const document::SampleRow& row : table.sample) {
    std::size_t column = 0;
    for (const document::Cell& cell : row.cells) {
      if (column < columns.size() && cell.span == 1) {
        ruler.measure(cell, row.header || cell.header, columns[column]);
      }
      column += static_cast<std::size_t>(cell.span);
    }
  }
  if (!table.isSampleWhole) {
    const Length toCome = ruler.widthOf(kDigitsToCome);
    const Length millions = ruler.widthOf(kMillions);
    for (std::size_t column = 0; column < columns.size(); ++column) {
      if (table.columns[column].align == document::Align::Right) {
        ColumnText& text = columns[column];
        text.longestWord = std::max(text.longestWord + toCome, millions);
        text.longestLine = std::max(text.longestLine + toCome, millions);
      }
    }
  }
  return columns;
}

TablePlan planTable(const document::Table& table, const std::vector<ColumnText>& texts, const TableSpace& space) {
  const auto width = static_cast<double>(space.upright);
  const auto turnedWidth = static_cast<double>(space.turned);
  if (auto plan = inOnePart(table, texts, width, space.isEqual)) {
    return *std::move(plan);
  }
  TablePlan upright = inParts(table, texts, width, space.isEqual);
  if (turnedWidth <= width) {
    return upright;
  }
  if (auto plan = inOnePart(table, texts, turnedWidth, space.isEqual)) {
    return turned(*std::move(plan));
  }
  TablePlan landscape = inParts(table, texts, turnedWidth, space.isEqual);
  return landscape.parts.size() < upright.parts.size() ? turned(std::move(landscape)) : upright;
}

}  // namespace scrivalen::typeset
