#include "document/table_measure.h"

#include "text/character_width.h"

#include <algorithm>

namespace scrivalen::document {
namespace {

void measureWords(std::string_view line, std::size_t& longest) {
  while (!line.empty()) {
    const std::size_t end = std::min(line.find(' '), line.size());
    longest = std::max(longest, columnsOf(line.substr(0, end)));
    line.remove_prefix(std::min(end + 1, line.size()));
  }
}

bool isNumber(const Cell& cell) {
  return cell.type == ValueType::Number || cell.type == ValueType::Integer ||
         (!cell.isValue() && isPlainNumber(cell.text));
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

TableMeasure::TableMeasure(Table& table)
    : table_(table), isOpen_(table.columns.empty()), kinds_(table.columns.size()) {}

void TableMeasure::addColumnsUpTo(std::size_t count) {
  if (isOpen_ && count > table_.columns.size()) {
    table_.columns.resize(count);
    kinds_.resize(count);
  }
}

void TableMeasure::add(std::span<const Cell> row, bool header) {
  std::size_t column = 0;
  for (const Cell& cell : row) {
    addColumnsUpTo(column + static_cast<std::size_t>(cell.span));
    if (cell.span == 1 && column < table_.columns.size()) {
      addText(column, cell, header);
    }
    column += static_cast<std::size_t>(cell.span);
  }
}

void TableMeasure::addText(std::size_t column, const Cell& cell, bool header) {
  Column& measured = table_.columns[column];
  std::string_view text = cell.text;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    measured.longestLine = std::max(measured.longestLine, columnsOf(line));
    measureWords(line, measured.longestWord);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  if (!header && !cell.header && !cell.text.empty()) {
    (isNumber(cell) ? kinds_[column].hasNumbers : kinds_[column].hasOthers) = true;
  }
}

void TableMeasure::finish() {
  addColumnsUpTo(1);
  for (std::size_t column = 0; column < table_.columns.size(); ++column) {
    Column& measured = table_.columns[column];
    if (measured.align == Align::Auto) {
      measured.align = alignmentOf(measured.type, kinds_[column].hasNumbers && !kinds_[column].hasOthers);
    }
  }
}

}  // namespace scrivalen::document
