#include "document/tables/table_builder.h"

#include "document/tables/table_measure.h"

#include <algorithm>
#include <cmath>

namespace scrivalen::document {
namespace {

constexpr std::size_t kSampleRows = 500;
constexpr std::size_t kSampleBytes = 262144;
constexpr std::size_t kSampleCells = 65536;  // most of them may be empty
constexpr int kMostRepeatedRows = 20;
constexpr std::size_t kRowsBetweenQuestions = 64;

const ValueFormat kPlainFormat;

bool isSet(const std::uint8_t* bits, std::size_t index) { return (bits[index / 8] >> (index % 8) & 1) != 0; }

template <typename Value>
Value valueAt(const ColumnData& column, std::size_t index) {
  return static_cast<const Value*>(column.values)[index];
}

}  // namespace

TableBuilder::TableBuilder(Table table, const Values& values, TableTarget& target, Warnings& warnings,
                           Replaced& replaced)
    : table_(std::move(table)),
      values_(values),
      target_(target),
      warnings_(warnings),
      replaced_(replaced),
      isOpen_(table_.columns.empty()),
      repeatable_(kMostRepeatedRows) {}

const ValueFormat& TableBuilder::formatOf(std::size_t column) const {
  return column < table_.columns.size() ? table_.columns[column].format : kPlainFormat;
}

void TableBuilder::describeColumn(std::size_t column, const Column& description) {
  if (!isSampling_ || (column >= table_.columns.size() && !isOpen_)) {
    return;
  }
  table_.columns.resize(std::max(table_.columns.size(), column + 1));
  Column& described = table_.columns[column];
  described.name = description.name.empty() ? described.name : description.name;
  described.type = description.type == ValueType::Auto ? described.type : description.type;
  described.width = description.width > 0 ? description.width : described.width;
  described.align = description.align == Align::Auto ? described.align : description.align;
  if (description.format.decimals() != 0 || !description.format.pattern().empty()) {
    described.format = description.format;
  }
}

void TableBuilder::addText(std::string_view text) {
  Cell& cell = push();
  if (cleanLength(text, TextKind::Flowing) == text.size()) {
    cell.text = arena_.copy(text);
  } else {
    cleaned_.clear();
    appendClean(cleaned_, text, TextKind::Flowing, replaced_);
    cell.text = arena_.copy(cleaned_);
  }
}

// The text stays where it is: it is written before the host gets its memory back.
void TableBuilder::addBorrowedText(std::string_view text) {
  if (cleanLength(text, TextKind::Flowing) == text.size()) {
    push().text = text;
  } else {
    addText(text);
  }
}

void TableBuilder::addValue(ValueType type, double number, std::int64_t integer, int decimals) {
  const ValueFormat& format = formatOf(column_);
  setValueOf(push(), format, type, number, integer, decimals);
}

void TableBuilder::setValueOf(Cell& cell, const ValueFormat& format, ValueType type, double number,
                              std::int64_t integer, int decimals) {
  if (type == ValueType::Number && !std::isfinite(number)) {
    ++notFinite_;
    return;
  }
  cell.type = type;
  cell.number = number;
  cell.integer = integer;
  cell.decimals = static_cast<std::int8_t>(decimals);
  char* const out = arena_.reserve(Values::kLongest);
  char* end = out;
  switch (type) {
    case ValueType::Number:
      end = decimals > 0 ? values_.decimal(out, integer, decimals, format) : values_.number(out, number, format);
      break;
    case ValueType::Integer: end = values_.integer(out, integer, format); break;
    case ValueType::Date: end = values_.date(out, static_cast<std::int32_t>(integer), format); break;
    case ValueType::Time: end = values_.time(out, integer, format); break;
    case ValueType::Boolean: end = Values::boolean(out, integer != 0); break;
    default: break;
  }
  cell.text = arena_.keep(end);
}

void TableBuilder::beginCell(const CellStyle& style) {
  cell_ = Cell();
  cell_.header = style.header;
  cell_.align = style.align;
  hasAlignedCells_ = hasAlignedCells_ || style.align != Align::Auto;
  cell_.span = style.span;
  cell_.color = style.color;
  cell_.background = style.background;
  cell_.type = style.type == ValueType::Text ? ValueType::Text : ValueType::Auto;
  plain_.clear();
  isRich_ = false;
  hasValue_ = false;
}

void TableBuilder::setText(std::string_view text) {
  hasValue_ = true;
  appendClean(plain_, text, TextKind::Flowing, replaced_);
}

void TableBuilder::setValue(ValueType type, double number, std::int64_t integer, int decimals) {
  hasValue_ = true;
  cell_.type = ValueType::Auto;
  setValueOf(cell_, formatOf(column_), type, number, integer, decimals);
}

void TableBuilder::text(std::string_view text) {
  plain_ += text;
  if (isRich_) {
    log_.write({.kind = EventKind::Text, .text = text});
  }
}

void TableBuilder::write(const Event& event) {
  if (!isRich_) {
    isRich_ = true;
    cell_.contentBegin = log_.size();
    if (!plain_.empty()) {
      log_.write({.kind = EventKind::Text, .text = plain_});
    }
  }
  log_.write(event);
  if (event.kind == EventKind::Image) {
    plain_ += event.text;
  }
}

void TableBuilder::endCell() {
  if (!cell_.isValue()) {
    cell_.text = arena_.copy(plain_);
  }
  if (isRich_) {
    cell_.content = &log_;
    cell_.contentEnd = log_.size();
  }
  push() = cell_;
  column_ += static_cast<std::size_t>(cell_.span) - 1;
}

void TableBuilder::endRow() {
  if (!isSampling_) {
    emit(cells_, isHeader_);
    return forgetRows();
  }
  held_.push_back({firstCell_, isHeader_});
  firstCell_ = cells_.size();
  if (isSampleFull()) {
    begin(false);
  }
}

bool TableBuilder::isSampleFull() const {
  return held_.size() >= kSampleRows || cells_.size() >= kSampleCells ||
         arena_.used() + log_.size() + log_.pictureBytes() >= kSampleBytes;
}

void TableBuilder::addRows(const ColumnData* columns, std::size_t count, std::size_t rows) {
  for (std::size_t row = 0; row < rows; ++row) {
    if (row % kRowsBetweenQuestions == 0 && !target_.isWanted()) {
      return;
    }
    beginRow(false);
    for (std::size_t column = 0; column < count; ++column) {
      addColumnCell(columns[column], columns[column].offset + row);
    }
    endRow();
  }
}

void TableBuilder::addColumnCell(const ColumnData& column, std::size_t row) {
  if (column.validity && !isSet(column.validity, row)) {
    push();
    return;
  }
  switch (column.type) {
    case ValueType::Auto:
    case ValueType::Text: {
      const std::int64_t begin = column.offsets[row];
      const auto size = static_cast<std::size_t>(column.offsets[row + 1] - begin);
      // Without any text the values may be null, and null plus an offset is no pointer.
      const char* const values = static_cast<const char*>(column.values);
      const std::string_view text = size > 0 ? std::string_view(values + begin, size) : std::string_view();
      return isSampling_ ? addText(text) : addBorrowedText(text);
    }
    case ValueType::Number: return addValue(ValueType::Number, valueAt<double>(column, row), 0);
    case ValueType::Date: return addValue(ValueType::Date, 0, valueAt<std::int32_t>(column, row));
    case ValueType::Integer:
    case ValueType::Time: return addValue(column.type, 0, valueAt<std::int64_t>(column, row));
    case ValueType::Boolean:
      return addValue(ValueType::Boolean, 0, isSet(static_cast<const std::uint8_t*>(column.values), row) ? 1 : 0);
  }
}

void TableBuilder::finish() {
  if (isSampling_) {
    begin(true);
  }
  target_.endTable();
  if (missing_ > 0) {
    warnings_.add(kAllOutputs, WarningCode::InputMended, "rows with fewer cells than their table has columns",
                  missing_);
  }
  if (joined_ > 0) {
    warnings_.add(kAllOutputs, WarningCode::InputMended, "cells past the last column of their table, joined to it",
                  joined_);
  }
  if (cut_ > 0) {
    warnings_.add(kAllOutputs, WarningCode::InputMended, "cells that span columns past the last one of their table",
                  cut_);
  }
  if (notFinite_ > 0) {
    warnings_.add(kAllOutputs, WarningCode::InputMended, "numbers that are not finite, written as empty cells",
                  notFinite_);
  }
}

void TableBuilder::begin(bool isWhole) {
  isSampling_ = false;
  const std::vector<HeldRow> held = std::move(held_);
  for (std::size_t row = 0; row < held.size(); ++row) {
    const std::size_t end = row + 1 < held.size() ? held[row + 1].firstCell : firstCell_;
    table_.sample.push_back(
        {std::span<const Cell>(cells_).subspan(held[row].firstCell, end - held[row].firstCell), held[row].header});
  }
  table_.isSampleWhole = isWhole;
  measure();
  target_.beginTable(table_);
  table_.sample.clear();
  for (std::size_t row = 0; row < held.size(); ++row) {
    const std::size_t end = row + 1 < held.size() ? held[row + 1].firstCell : firstCell_;
    emit(std::span(cells_).subspan(held[row].firstCell, end - held[row].firstCell), held[row].header);
  }
  forgetRows();
}

void TableBuilder::measure() {
  TableMeasure measure(table_, isOpen_);
  for (const SampleRow& row : table_.sample) {
    measure.add(row.cells, row.header);
  }
  measure.finish(table_.isSampleWhole);
}

void TableBuilder::forgetRows() {
  cells_.clear();
  firstCell_ = 0;
  arena_.reset();
  if (log_.size() > 0) {
    log_.clear();
  }
}

void TableBuilder::emit(std::span<Cell> cells, bool header) {
  if (hasAlignedCells_) {
    dropAlignsOfColumns(cells);
  }
  const bool isRepeated = header && repeatable_ > 0;
  repeatable_ = isRepeated ? repeatable_ - 1 : 0;
  const bool fits = cells.size() == table_.columns.size() &&
                    std::all_of(cells.begin(), cells.end(), [](const Cell& cell) { return cell.span == 1; });
  target_.row({fits ? cells : fitted(cells), header, isRepeated});
}

// What a cell shares with its column need not be written for each. A column on the left is one that begins where its
// language does, which a cell on the left may not.
void TableBuilder::dropAlignsOfColumns(std::span<Cell> cells) {
  std::size_t column = 0;
  for (Cell& cell : cells) {
    if (column < table_.columns.size() && cell.align == table_.columns[column].align && cell.align != Align::Left) {
      cell.align = Align::Auto;
    }
    column += static_cast<std::size_t>(cell.span);
  }
}

std::span<const Cell> TableBuilder::fitted(std::span<const Cell> cells) {
  const std::size_t columns = table_.columns.size();
  std::size_t used = 0;
  std::size_t taken = 0;
  fitted_.clear();
  for (; taken < cells.size() && used < columns; ++taken) {
    Cell& fitting = fitted_.emplace_back(cells[taken]);
    fitting.span = static_cast<int>(std::min(static_cast<std::size_t>(fitting.span), columns - used));
    cut_ += fitting.span < cells[taken].span ? 1 : 0;
    used += static_cast<std::size_t>(fitting.span);
  }
  if (taken < cells.size()) {
    join(fitted_.back(), cells.subspan(taken));
  }
  missing_ += used < columns ? 1 : 0;
  fitted_.resize(fitted_.size() + columns - used);
  return fitted_;
}

void TableBuilder::join(Cell& last, std::span<const Cell> further) {
  joined_ += further.size();
  if (last.content || std::any_of(further.begin(), further.end(), [](const Cell& cell) { return cell.content; })) {
    EventLog content;
    last.replay(content);
    for (const Cell& cell : further) {
      content.write({.kind = EventKind::Text, .text = " "});
      cell.replay(content);
    }
    last.contentBegin = log_.size();
    content.replay(log_);
    last.contentEnd = log_.size();
    last.content = &log_;
  }
  cleaned_ = last.text;
  for (const Cell& cell : further) {
    cleaned_.append(" ").append(cell.text);
  }
  last.text = arena_.copy(cleaned_);
  last.type = ValueType::Text;
}

}  // namespace scrivalen::document
