#include "formats/xlsx/document/sheet/column_layout.h"

#include "document/tables/shown_cell.h"
#include "formats/xlsx/workbook/cell_name.h"
#include "text/columns/line_breaks.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
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

std::string_view partOf(const RichText& text, std::size_t run) {
  const std::size_t begin = text.runs[run].begin;
  const std::size_t end = run + 1 < text.runs.size() ? text.runs[run + 1].begin : text.text.size();
  return std::string_view(text.text).substr(begin, end - begin);
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

struct LetterWidth {
  std::string_view letters;
  double width;
};

// In digits: how wide the characters of Carlito, Liberation Sans and DejaVu Sans are at most. All others are as wide as
// a digit.
constexpr LetterWidth kLetterWidths[] = {{" ',.Iijl", 0.5},  {"!():;-[]f", 0.65}, {"rt", 0.7},        {"\"/\\`", 0.8},
                                         {"Jcsz", 0.9},      {"kvxy|", 0.95},     {"bdhnopqu", 1.05}, {"FTZ", 1.1},
                                         {"ABEKPSVXY", 1.2}, {"CDHNRU", 1.3},     {"#&+<=>^~", 1.35}, {"GOQ", 1.4},
                                         {"w", 1.45},        {"%m", 1.6},         {"MW", 1.8},        {"@", 1.85}};

constexpr std::array<double, 256> kWidthsOfLetters = [] {
  std::array<double, 256> widths{};
  widths.fill(1);
  for (const LetterWidth& known : kLetterWidths) {
    for (const char letter : known.letters) {
      widths[static_cast<unsigned char>(letter)] = known.width;
    }
  }
  return widths;
}();

// The width of a text's letters in digits, for each column that a monospaced font gives them.
double letterWidthOf(std::string_view text) {
  const double width = std::accumulate(text.begin(), text.end(), 0.0, [](double sum, char c) {
    return sum + kWidthsOfLetters[static_cast<unsigned char>(c)];
  });
  return width / static_cast<double>(text.size());
}

constexpr double kUsualSize = 1100;  // of a font

bool isCode(const RichText& text) {
  return !text.runs.empty() && std::all_of(text.runs.begin(), text.runs.end(),
                                           [](const TextRun& run) { return run.font.family == Family::Code; });
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

double linesOf(std::string_view text, double width) {
  const bool hasBreak = text.find('\n') != text.npos;
  // A character is at least a byte.
  if (!hasBreak && (static_cast<double>(text.size()) <= width || extentOf(text).widestLine <= width)) {
    return 1;
  }
  const auto columns = static_cast<std::size_t>(std::max(width, 1.0));
  LineReader reader(text, columns);
  std::size_t lines = 0;
  for (Line line; reader.next(line);) {
    const std::size_t pieces = (line.columns + columns - 1) / columns;  // of a word that is too long
    lines += std::max<std::size_t>(pieces, 1);
  }
  return static_cast<double>(std::max<std::size_t>(lines, 1));
}

double shownLinesOf(std::string_view text, double width) {
  const double lines = linesOf(text, width);
  return lines > 1 ? linesOf(text, width / letterWidthOf(text)) : lines;
}

// A printed digit is wider than the unit of columns, which is one of whole pixels.
double digitsIn(double width) {
  constexpr double kEdge = 0.3;
  return std::max(width - kEdge, 0.0) / kPrintedDigit;
}

double spaceOf(const RichText& text, const Font& font, double width) {
  double size = 0;  // that of each byte, added up
  for (std::size_t i = 0; i < text.runs.size(); ++i) {
    const Font& own = text.runs[i].font;
    const double letter = own.family == Family::Code ? kCodeWidth : 1;
    size += static_cast<double>(partOf(text, i).size()) * letter * std::max(own.size, font.size);
  }
  const double average = text.text.empty() ? font.size : size / static_cast<double>(text.text.size());
  return width * kUsualSize / std::max<double>(average, font.size);
}

double heightOf(const RichText& text, const Font& font, double width) {
  const double space = spaceOf(text, font, width);
  const double lines = isCode(text) ? linesOf(text.text, space) : shownLinesOf(text.text, space);
  double added = 0;
  double highest = 0;
  for (std::size_t i = 0; i < text.runs.size(); ++i) {
    const double size = text.runs[i].font.size;
    if (size > font.size) {
      added += (size - font.size) * shownLinesOf(partOf(text, i), width * kUsualSize / size);
      highest = std::max(highest, size - font.size);
    }
  }
  return kLineHeight * (lines * font.size + std::min(added, lines * highest)) / kUsualSize;
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
