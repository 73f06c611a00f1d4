#include "formats/xlsx/document/sheet/column_layout.h"

#include "document/tables/shown_cell.h"
#include "formats/xlsx/document/sheet/text_height.h"
#include "formats/xlsx/workbook/cell_name.h"
#include "text/columns/line_breaks.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <span>

namespace scrivalen::xlsx {
namespace {

constexpr double kNarrowest = 5;
constexpr double kWidestLine = 60;   // longer ones are wrapped
constexpr double kUsualSpace = 150;  // of a whole table: about a screen
constexpr double kPadding = 1.5;     // on both sides of a text
constexpr double kFilterButton = 3;  // beside the text of a header
constexpr double kWidestOfAll = 254;

// The buttons of a header must not hide its text.
void addHeader(std::string_view text, document::ColumnNeed& need) {
  const TextExtent extent = extentOf(text);
  need.longestLine = std::max(need.longestLine, extent.widestLine * kBoldGrowth + kFilterButton + kPadding);
  need.longestWord = std::max(need.longestWord, extent.widestWord * kBoldGrowth + kFilterButton + kPadding);
}

// The letters of code are wider than the columns that a text is measured in.
void addCode(const document::Cell& cell, double space, document::ColumnNeed& need) {
  RichTextCollector collector;
  collector.begin({});
  cell.replay(collector);
  const RichText text = collector.take();
  double added = 0;
  for (std::size_t i = 0; i < text.runs.size(); ++i) {
    if (text.runs[i].font.family == Family::Code) {
      const TextExtent extent = extentOf(partOf(text, i));
      added += static_cast<double>(extent.longestLine) * (kCodeWidth - 1);
      need.longestWord = std::max(need.longestWord, static_cast<double>(extent.longestWord) * kCodeWidth + space);
    }
  }
  if (added > 0) {
    need.longestLine = std::max(need.longestLine, extentOf(text.text).widestLine + added + space);
  }
}

// Pictures are below each other, from the edge of their cell.
void addPictures(const document::ShownCell& shown, document::ColumnNeed& need) {
  const double width = shown.widestPicture / kPointsPerDigit;
  need.longestLine = std::max(need.longestLine, width);
  need.usualLine = std::max(need.usualLine, std::min(width, kWidestLine));
}

void addCell(const document::Cell& cell, bool isHeader, double space, document::ColumnNeed& need) {
  if (cell.content == nullptr) {
    if (isHeader) {
      addHeader(cell.text, need);
    }
    return;
  }
  const document::ShownCell shown = document::shownCell(cell);
  if (isHeader) {
    addHeader(shown.text, need);
  }
  addPictures(shown, need);
  addCode(cell, space, need);
}

double spaceBeside(const document::Table& table, std::size_t column) {
  return kPadding + (isBesideTexts(table, column) ? kDigitsPerIndent : 0);
}

void addRow(const document::Table& table, const document::SampleRow& row, std::vector<document::ColumnNeed>& needs) {
  std::size_t column = 0;
  for (const document::Cell& cell : row.cells) {
    if (column < needs.size() && cell.span == 1) {
      addCell(cell, row.header, spaceBeside(table, column), needs[column]);
    }
    column += static_cast<std::size_t>(cell.span);
  }
}

std::vector<document::ColumnNeed> needsOf(const document::Table& table) {
  std::vector<document::ColumnNeed> needs;
  const std::size_t count = std::min<std::size_t>(table.columns.size(), kMostColumns);
  for (std::size_t i = 0; i < count; ++i) {
    const document::Column& column = table.columns[i];
    const double space = spaceBeside(table, i);
    needs.push_back({column.widestWord + space, column.widestLine + space, column.width, column.usualWideLine + space});
  }
  for (const document::SampleRow& row : table.sample) {
    addRow(table, row, needs);
  }
  for (document::ColumnNeed& need : needs) {
    need.longestWord = std::clamp(need.longestWord, kNarrowest, kWidestLine);
    need.longestLine = std::clamp(need.longestLine, need.longestWord, kWidestLine);
  }
  return needs;
}

// @param space  that they fill if they have shares
std::vector<double> widthsOf(std::span<const document::ColumnNeed> needs, const document::FormatSettings& settings,
                             double space) {
  const double lines =
      std::accumulate(needs.begin(), needs.end(), 0.0,
                      [](double sum, const document::ColumnNeed& need) { return sum + need.longestLine; });
  const double filled = std::clamp(lines, std::min(kProseWidth, space), space);
  if (settings.text("widths") == "equal") {
    return document::equalColumnWidths(needs, filled).widths;
  }
  const bool hasShares =
      std::any_of(needs.begin(), needs.end(), [](const document::ColumnNeed& need) { return need.share > 0; });
  return document::columnWidths(needs, hasShares ? filled : space).widths;
}

}  // namespace

// A printed digit is wider than the unit of columns, which is one of whole pixels.
double digitsIn(double width) {
  constexpr double kEdge = 0.3;
  return std::max(width - kEdge, 0.0) / kPrintedDigit;
}

bool isBesideTexts(const document::Table& table, std::size_t column) {
  return column + 1 < table.columns.size() && table.columns[column].align == document::Align::Right &&
         table.columns[column + 1].align == document::Align::Left;
}

void SharedColumns::add(const document::Table& table) {
  const std::vector<document::ColumnNeed> more = needsOf(table);
  const auto rows = static_cast<double>(std::max<std::size_t>(table.sample.size(), 1));
  needs_.resize(std::max(needs_.size(), more.size()));
  rows_.resize(needs_.size());
  for (std::size_t i = 0; i < more.size(); ++i) {
    document::ColumnNeed& need = needs_[i];
    need.longestWord = std::max(need.longestWord, more[i].longestWord);
    need.longestLine = std::max(need.longestLine, more[i].longestLine);
    need.usualLine = (need.usualLine * rows_[i] + more[i].usualLine * rows) / (rows_[i] + rows);
    need.share = need.share > 0 ? need.share : more[i].share;
    rows_[i] += rows;
  }
}

// Every table has the first columns. How many of them a good part of the rows have.
std::size_t SharedColumns::usualCount() const {
  constexpr double kShareOfRows = 0.25;
  const auto rare =
      std::find_if(rows_.begin(), rows_.end(), [this](double rows) { return rows < rows_.front() * kShareOfRows; });
  return static_cast<std::size_t>(rare - rows_.begin());
}

// Columns that few rows have are narrow, so that they leave most of the space to the others.
std::vector<double> SharedColumns::widths(const document::FormatSettings& settings) const {
  constexpr double kWidestRare = 16;
  constexpr double kUsualShare = 0.75;
  const std::span<const document::ColumnNeed> needs(needs_);
  std::vector<double> rare;
  for (const document::ColumnNeed& need : needs.subspan(usualCount())) {
    rare.push_back(std::max(need.longestWord, std::min(need.longestLine, kWidestRare)));
  }
  const double left = kUsualSpace - std::accumulate(rare.begin(), rare.end(), 0.0);
  std::vector<double> widths = widthsOf(needs.first(usualCount()), settings, std::max(left, kUsualSpace * kUsualShare));
  widths.insert(widths.end(), rare.begin(), rare.end());
  for (double& width : widths) {
    width = std::clamp(width, kNarrowest, kWidestOfAll);
  }
  return widths;
}

}  // namespace scrivalen::xlsx
