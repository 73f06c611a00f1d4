#include "document/tables/table_measure.h"

#include "document/tables/number_text.h"
#include "document/tables/shown_cell.h"
#include "text/columns/line_breaks.h"

#include <algorithm>

namespace scrivalen::document {
namespace {

constexpr double kLongestLineThatCounts = 100;  // about a page's width
constexpr std::size_t kDigitsToCome = 4;        // from the 500 rows of a sample to millions

// A column of numbers may have a short text other than a number for so many numbers.
constexpr std::size_t kNumbersForAnOther = 20;
constexpr std::size_t kLongestShortText = 16;

// How a cell reads. An empty one says nothing, as one for a missing number.
NumberText kindOf(const Cell& cell) {
  switch (cell.type) {
    case ValueType::Number:
    case ValueType::Integer: return NumberText::Number;
    case ValueType::Auto: return cell.text.empty() ? NumberText::Placeholder : numberTextOf(cell.text);
    default: return cell.text.empty() ? NumberText::Placeholder : NumberText::Other;
  }
}

Align alignmentOf(ValueType type, bool allNumbers) {
  switch (type) {
    case ValueType::Number:
    case ValueType::Integer: return Align::Right;
    case ValueType::Auto: return allNumbers ? Align::Right : Align::Left;
    default: return Align::Left;
  }
}

}  // namespace

TableMeasure::TableMeasure(Table& table, bool isOpen) : table_(table), isOpen_(isOpen), kinds_(table.columns.size()) {}

void TableMeasure::Kinds::count(const Cell& cell, std::size_t longestLine) {
  const NumberText kind = kindOf(cell);
  numbers += kind == NumberText::Number ? 1 : 0;
  perhaps += kind == NumberText::Perhaps ? 1 : 0;
  others += kind == NumberText::Other ? 1 : 0;
  hasProse = hasProse || (kind == NumberText::Other && longestLine > kLongestShortText);
}

bool TableMeasure::Kinds::areNumbers() const {
  return numbers > 0 && !hasProse && others * kNumbersForAnOther <= numbers + perhaps;
}

void TableMeasure::addColumnsUpTo(std::size_t count) {
  if (isOpen_ && count > table_.columns.size()) {
    table_.columns.resize(count);
    kinds_.resize(count);
  }
}

// A column costs each format memory. One that a cell is in is paid for with that cell; those that no cell is in are as
// many as a cell spans at most, however many cells span them.
void TableMeasure::add(std::span<const Cell> row, bool header) {
  const std::size_t most = std::min(row.size() + static_cast<std::size_t>(kWidestSpan), kMostColumns);
  std::size_t column = 0;
  for (const Cell& cell : row) {
    addColumnsUpTo(std::min(column + static_cast<std::size_t>(cell.span), most));
    if (cell.span == 1 && column < table_.columns.size()) {
      addText(column, cell, header);
    }
    column += static_cast<std::size_t>(cell.span);
  }
}

void TableMeasure::addText(std::size_t column, const Cell& cell, bool header) {
  Column& measured = table_.columns[column];
  Kinds& kinds = kinds_[column];
  kinds.align = !kinds.hasCells || kinds.align == cell.align ? cell.align : Align::Auto;
  kinds.hasCells = true;
  const TextExtent extent = extentOf(cell.text);
  const TextExtent wide = cell.content == nullptr ? extent : extentOf(shownCell(cell).text);
  measured.longestWord = std::max(measured.longestWord, extent.longestWord);
  measured.longestLine = std::max(measured.longestLine, extent.longestLine);
  measured.widestWord = std::max(measured.widestWord, wide.widestWord);
  measured.widestLine = std::max(measured.widestLine, wide.widestLine);
  kinds.line.add(static_cast<double>(extent.longestLine), kLongestLineThatCounts);
  kinds.wideLine.add(wide.widestLine, kLongestLineThatCounts);
  if (header || cell.header) {
    kinds.wideWord.addHeader(wide.widestWord);
  } else {
    kinds.wideWord.add(wide.widestWord);
    kinds.count(cell, extent.longestLine);
  }
}

void TableMeasure::finish(bool isWhole) {
  addColumnsUpTo(1);
  for (std::size_t column = 0; column < table_.columns.size(); ++column) {
    Column& measured = table_.columns[column];
    Kinds& kinds = kinds_[column];
    measured.usualLine = kinds.line.width();
    measured.usualWideLine = kinds.wideLine.width();
    measured.usualWideWord = kinds.wideWord.width();
    if (measured.align == Align::Auto) {
      measured.align = kinds.align != Align::Auto ? kinds.align : alignmentOf(measured.type, kinds.areNumbers());
      if (measured.align == Align::Right && !isWhole) {
        measured.longestWord += kDigitsToCome;
        measured.longestLine += kDigitsToCome;
        measured.usualLine += kDigitsToCome;
        measured.widestWord += kDigitsToCome;
        measured.widestLine += kDigitsToCome;
        measured.usualWideLine += kDigitsToCome;
        measured.usualWideWord += kDigitsToCome;
      }
    }
  }
}

}  // namespace scrivalen::document
