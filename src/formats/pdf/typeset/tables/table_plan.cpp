#include "formats/pdf/typeset/tables/table_plan.h"

#include "document/tables/table_split.h"
#include "document/tables/usual_line.h"
#include "formats/pdf/typeset/blocks/inline_collector.h"
#include "formats/pdf/typeset/text/paragraph.h"
#include "text/ascii.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <optional>

namespace scrivalen::typeset {
namespace {

using document::ColumnNeed;
using document::ColumnRange;
using document::ColumnWidths;

constexpr Length kLeastSize = 6 * kPoint;
constexpr Length kSizeStep = kPoint / 2;

// Columns that fit get somewhat more than they ask for, unless texts may get longer.
constexpr double kMostSlack = 1.15;

// Numbers may get longer after the sample: from the 500 rows that it has at most to millions. Those that are long
// already need less.
constexpr std::string_view kMillions = "0000000";
constexpr std::string_view kDigitsToCome = "00";

// Lines that are longer do not take more space from other columns.
constexpr Length kLongestLineThatCounts = 500 * kPoint;

// What a column that is empty in the sample asks for. It is a line rather than a word, so that no text gets smaller.
constexpr Length kLineToCome = 80 * kPoint;

// A table that is planned.
struct TableColumns {
  const document::Table& table;
  const std::vector<ColumnText>& texts;
  bool isEqual;
  std::vector<Length> gaps = {};
};

// Numbers are close to the text on their right, unlike texts, most of which are shorter than their column.
std::vector<Length> gapsOf(const document::Table& table) {
  std::vector<Length> gaps(table.columns.size());
  for (std::size_t i = 0; i + 1 < gaps.size(); ++i) {
    const bool isBesideText =
        table.columns[i].align == document::Align::Right && table.columns[i + 1].align == document::Align::Left;
    gaps[i] = isBesideText ? kGapAfterNumbers : 0;
  }
  return gaps;
}

std::vector<ColumnNeed> needsOf(const TableColumns& columns, Length size) {
  std::vector<ColumnNeed> needs;
  needs.reserve(columns.texts.size());
  for (std::size_t column = 0; column < columns.texts.size(); ++column) {
    const Length gap = columns.gaps.empty() ? 0 : columns.gaps[column];
    const auto need = [size, gap](Length usual) {
      return static_cast<double>(usual * size / kUsualTableSize + 2 * kCellPadding + gap + kPoint / 10);
    };
    const ColumnText& text = columns.texts[column];
    needs.push_back({need(text.longestWord), need(text.longestLine), columns.table.columns[column].width,
                     text.usualLine > 0 ? need(text.usualLine) : 0, text.usualWord > 0 ? need(text.usualWord) : 0});
  }
  return needs;
}

double sumOf(const std::vector<double>& widths) { return std::accumulate(widths.begin(), widths.end(), 0.0); }

// Gives what is left to the columns whose texts may get longer, in equal parts.
void fillSpace(std::vector<double>& widths, const std::vector<bool>& mayGrow, double space) {
  const auto count = std::count(mayGrow.begin(), mayGrow.end(), true);
  const double left = space - sumOf(widths);
  if (count > 0 && left > 0) {
    for (std::size_t i = 0; i < widths.size(); ++i) {
      widths[i] += mayGrow[i] ? left / static_cast<double>(count) : 0;
    }
    return;
  }
  const double factor = std::min(space / sumOf(widths), kMostSlack);
  for (double& width : widths) {
    width *= factor;
  }
}

TablePart partOf(const TableColumns& columns, const std::vector<ColumnNeed>& needs, ColumnRange range, double space) {
  const std::vector<ColumnNeed> own = document::needsOfRange(needs, range);
  std::vector<bool> mayGrow;
  if (range.first > 0) {
    mayGrow.push_back(columns.texts.front().mayGrow);
  }
  for (std::size_t column = range.first; column < range.end; ++column) {
    mayGrow.push_back(columns.texts[column].mayGrow);
  }
  ColumnWidths widths = document::tableWidths(own, space, columns.isEqual);
  if (!widths.fit) {
    widths = document::columnWidths(own, space);
  }
  fillSpace(widths.widths, mayGrow, space);
  TablePart part{range.first, range.end, {0}, columns.gaps};
  double edge = 0;
  for (const double width : widths.widths) {
    edge += width;
    part.edges.push_back(std::llround(edge));
  }
  return part;
}

// One part in the largest text that fits; none if not even the smallest does.
std::optional<TablePlan> inOnePart(const TableColumns& columns, double width) {
  for (Length size = kUsualTableSize; size >= kLeastSize; size -= kSizeStep) {
    std::vector<ColumnNeed> needs = needsOf(columns, size);
    bool fits = document::tableWidths(needs, width, columns.isEqual).fit;
    if (!fits) {
      document::breakLongWords(needs, width);
      fits = document::tableWidths(needs, width, columns.isEqual).fit;
    }
    if (fits) {
      return TablePlan{false, size, {partOf(columns, needs, {0, needs.size()}, width)}};
    }
  }
  return std::nullopt;
}

TablePlan inParts(const TableColumns& columns, double width) {
  std::vector<ColumnNeed> needs = needsOf(columns, kLeastSize);
  document::breakLongWords(needs, width);
  TablePlan plan{false, kLeastSize, {}};
  for (const ColumnRange range : document::splitColumns(needs, width)) {
    plan.parts.push_back(partOf(columns, needs, range, width));
  }
  return plan;
}

// Whether a text has more than figures and the signs that numbers and dates have.
bool hasLetter(std::string_view text) {
  return std::any_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) >= 0x80 || isAsciiLetter(c); });
}

// What a column's cells are; the headers count for the lines only.
struct Kinds {
  bool isEmpty = true;
  bool hasLetters = false;
  document::UsualLine line;
  document::UsualWord word;

  void add(const document::Cell& cell) {
    isEmpty = isEmpty && cell.text.empty();
    hasLetters = hasLetters || (!cell.isValue() && hasLetter(cell.text));
  }
};

// Measures texts of the usual size.
class Ruler {
 public:
  struct CellText {
    Length longestWord = 0;
    Length longestLine = 0;
  };

  Ruler(Shaper& shaper, Family family) : shaper_(shaper), family_(family) {}

  // Returns what the cell needs.
  CellText measure(const document::Cell& cell, bool isBold) {
    TextStyle style;
    style.font = fontOf(family_, isBold, false);
    style.size = kUsualTableSize;
    collector_.begin(style);
    cell.replay(collector_);
    const StyledText text = collector_.take();
    CellText needs{longestWordOf(text)};
    const SetText set = setText(text, {.width = kEndless, .leading = kAnyLeading, .usual = style}, shaper_);
    for (const TextLine& line : set.lines) {
      needs.longestLine = std::max(needs.longestLine, line.width);
    }
    return needs;
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
  Length longestWordOf(const StyledText& text) {
    Length longest = 0;
    const SetText set = setText(text, {.leading = kAnyLeading, .keepsWords = true}, shaper_);
    for (const TextLine& line : set.lines) {
      longest = std::max(longest, line.width);
    }
    return longest;
  }

  Shaper& shaper_;
  Family family_;
  InlineCollector collector_{nullptr, nullptr};
};

void addCell(const Ruler::CellText& needs, bool isHeader, ColumnText& column, Kinds& kinds) {
  column.longestWord = std::max(column.longestWord, needs.longestWord);
  column.longestLine = std::max(column.longestLine, needs.longestLine);
  kinds.line.add(static_cast<double>(needs.longestLine), static_cast<double>(kLongestLineThatCounts));
  if (isHeader) {
    kinds.word.addHeader(static_cast<double>(needs.longestWord));
  } else {
    kinds.word.add(static_cast<double>(needs.longestWord));
  }
}

}  // namespace

std::vector<ColumnText> measureColumns(const document::Table& table, Shaper& shaper, Family family) {
  Ruler ruler(shaper, family);
  std::vector<ColumnText> columns(table.columns.size());
  std::vector<Kinds> kinds(table.columns.size());
  for (const document::SampleRow& row : table.sample) {
    std::size_t column = 0;
    for (const document::Cell& cell : row.cells) {
      if (column < columns.size() && cell.span == 1) {
        const bool isHeader = row.header || cell.header;
        addCell(ruler.measure(cell, isHeader), isHeader, columns[column], kinds[column]);
        if (!isHeader) {
          kinds[column].add(cell);
        }
      }
      column += static_cast<std::size_t>(cell.span);
    }
  }
  for (std::size_t column = 0; column < columns.size(); ++column) {
    columns[column].usualLine = std::llround(kinds[column].line.width());
    columns[column].usualWord = std::llround(kinds[column].word.width());
  }
  if (!table.isSampleWhole) {
    const Length toCome = ruler.widthOf(kDigitsToCome);
    const Length millions = ruler.widthOf(kMillions);
    for (std::size_t column = 0; column < columns.size(); ++column) {
      ColumnText& text = columns[column];
      if (table.columns[column].align == document::Align::Right) {
        text.longestWord = std::max(text.longestWord + toCome, millions);
        text.longestLine = std::max(text.longestLine + toCome, millions);
        text.usualLine += toCome;
        text.usualWord = std::max(text.usualWord + toCome, millions);
      } else if (table.columns[column].type <= document::ValueType::Text) {
        text.mayGrow = kinds[column].hasLetters || kinds[column].isEmpty;
        if (kinds[column].isEmpty) {
          text.longestLine = std::max(text.longestLine, kLineToCome);
          text.usualLine = std::max(text.usualLine, kLineToCome);
        }
      }
    }
  }
  return columns;
}

TablePlan planTable(const document::Table& table, const std::vector<ColumnText>& texts, const TableSpace& space) {
  const auto width = static_cast<double>(space.upright);
  if (!space.isRightToLeft) {
    const TableColumns spaced{table, texts, space.isEqual, gapsOf(table)};
    const std::vector<ColumnNeed> needs = needsOf(spaced, kUsualTableSize);
    if (document::tableWidths(needs, width, space.isEqual).fit) {
      return {false, kUsualTableSize, {partOf(spaced, needs, {0, needs.size()}, width)}};
    }
  }
  const TableColumns columns{table, texts, space.isEqual};
  auto [plan, isTurned] = document::choosePages(
      width, static_cast<double>(space.turned), [&](double each) { return inOnePart(columns, each); },
      [&](double each) { return inParts(columns, each); });
  plan.isTurned = isTurned;
  return std::move(plan);
}

}  // namespace scrivalen::typeset
