#include "formats/xlsx/document/sheet/column_layout.h"

#include "document/tables/column_widths.h"
#include "formats/xlsx/workbook/cell_name.h"
#include "text/columns/line_breaks.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace scrivalen::xlsx {
namespace {

constexpr double kNarrowest = 5;
constexpr double kWidestLine = 60;   // longer ones are wrapped
constexpr double kUsualSpace = 150;  // of a whole table: about a screen
constexpr double kPadding = 1.5;     // on both sides of a text
constexpr double kFilterButton = 3;  // beside the text of a header
constexpr double kBoldGrowth = 1.1;
constexpr double kWidestOfAll = 254;

// What the header's cells need, whose buttons must not hide their texts.
void addHeader(const document::SampleRow& row, std::vector<document::ColumnNeed>& needs) {
  std::size_t column = 0;
  for (const document::Cell& cell : row.cells) {
    if (column < needs.size() && cell.span == 1) {
      const TextExtent extent = extentOf(cell.text);
      document::ColumnNeed& need = needs[column];
      need.longestLine = std::max(need.longestLine, extent.widestLine * kBoldGrowth + kFilterButton + kPadding);
      need.longestWord = std::max(need.longestWord, extent.widestWord * kBoldGrowth + kFilterButton + kPadding);
    }
    column += static_cast<std::size_t>(cell.span);
  }
}

std::vector<document::ColumnNeed> needsOf(const document::Table& table) {
  std::vector<document::ColumnNeed> needs;
  const std::size_t count = std::min<std::size_t>(table.columns.size(), kMostColumns);
  for (std::size_t i = 0; i < count; ++i) {
    const document::Column& column = table.columns[i];
    needs.push_back(
        {column.widestWord + kPadding, column.widestLine + kPadding, column.width, column.usualWideLine + kPadding});
  }
  for (const document::SampleRow& row : table.sample) {
    if (row.header) {
      addHeader(row, needs);
    }
  }
  for (document::ColumnNeed& need : needs) {
    need.longestWord = std::clamp(need.longestWord, kNarrowest, kWidestLine);
    need.longestLine = std::clamp(need.longestLine, need.longestWord, kWidestLine);
  }
  return needs;
}

// The width of a text's letters in digits, for each column that a monospaced font gives them.
double letterWidthOf(std::string_view text) {
  constexpr std::string_view kNarrow = " !'(),-./:;I[\\]`fijlrt|";
  constexpr std::string_view kWide = "%@MWmw";
  double width = 0;
  for (const char c : text) {
    const bool isNarrow = kNarrow.find(c) != kNarrow.npos;
    width += isNarrow ? 0.65 : kWide.find(c) != kWide.npos ? 1.65 : c >= 'A' && c <= 'Z' ? 1.2 : 1;
  }
  return width / static_cast<double>(text.size());
}

double sumOfLines(const std::vector<document::ColumnNeed>& needs) {
  return std::accumulate(needs.begin(), needs.end(), 0.0,
                         [](double sum, const document::ColumnNeed& need) { return sum + need.longestLine; });
}

}  // namespace

double linesOf(std::string_view text, double width) {
  const bool hasBreak = text.find('\n') != text.npos;
  // A character is at least a byte.
  if (!hasBreak && (static_cast<double>(text.size()) <= width || extentOf(text).widestLine <= width)) {
    return 1;
  }
  LineReader reader(text, static_cast<std::size_t>(std::max(width, 1.0)));
  double lines = 0;
  for (Line line; reader.next(line);) {
    ++lines;
  }
  return std::max(lines, 1.0);
}

double shownLinesOf(std::string_view text, double width) {
  const double lines = linesOf(text, width);
  return lines > 1 ? linesOf(text, width / letterWidthOf(text)) : lines;
}

std::vector<double> sheetWidths(const document::Table& table, const document::FormatSettings& settings) {
  const std::vector<document::ColumnNeed> needs = needsOf(table);
  const bool hasShares =
      std::any_of(needs.begin(), needs.end(), [](const document::ColumnNeed& need) { return need.share > 0; });
  const double lines = sumOfLines(needs);
  std::vector<double> widths;
  if (settings.text("widths") == "equal") {
    widths = document::equalColumnWidths(needs, std::clamp(lines, kProseWidth, kUsualSpace)).widths;
  } else if (hasShares) {
    widths = document::columnWidths(needs, std::clamp(lines, kProseWidth, kUsualSpace)).widths;
  } else {
    widths = document::columnWidths(needs, kUsualSpace).widths;
  }
  for (double& width : widths) {
    width = std::clamp(width, kNarrowest, kWidestOfAll);
  }
  return widths;
}

}  // namespace scrivalen::xlsx
