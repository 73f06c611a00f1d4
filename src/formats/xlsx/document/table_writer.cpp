#include "formats/xlsx/document/table_writer.h"

#include "formats/xlsx/document/sheet/column_layout.h"

#include <algorithm>
#include <utility>

namespace scrivalen::xlsx {
namespace {

using document::Align;
using document::Cell;
using document::ValueType;

constexpr std::uint32_t kMostRepeatedRows = 20;
constexpr double kPictureEdge = 2;

// What the general alignment does already need not be said: texts are on the left, numbers on the right.
Align alignOf(Align align, CellValue::Kind kind) {
  const bool isGeneral =
      kind == CellValue::Kind::Text ? align == Align::Left : kind == CellValue::Kind::Number && align == Align::Right;
  return isGeneral ? Align::Auto : align;
}

bool isSimple(const Cell& cell) {
  return cell.content == nullptr && cell.span == 1 && !cell.header && !cell.color && !cell.background &&
         cell.align == Align::Auto;
}

}  // namespace

std::uint32_t TableWriter::headerRowsOf(const document::Table& table) {
  const auto end = std::find_if_not(table.sample.begin(), table.sample.end(),
                                    [](const document::SampleRow& row) { return row.header; });
  return std::min(static_cast<std::uint32_t>(end - table.sample.begin()), kMostRepeatedRows);
}

void TableWriter::begin(const document::Table& table, bool isFirst) {
  const SheetLayout& layout = sheets_.current().layout();
  columns_.clear();
  header_.clear();
  isFirst_ = isFirst;
  firstRow_ = sheets_.current().row();
  const auto count = static_cast<std::uint32_t>(std::min<std::size_t>(table.columns.size(), kMostColumns));
  isTop_ = false;
  for (std::uint32_t i = 0; i < count; ++i) {
    const document::Column& column = table.columns[i];
    const double width = layout.widthOf(i);
    const bool wraps = column.widestLine > width;
    isTop_ = isTop_ || wraps;
    columns_.push_back({ColumnValues(column, numbers_), column.align, width, wraps, 0, 0, {}});
  }
  for (Column& column : columns_) {
    CellFormat format = looks_.body;
    format.align = alignOf(column.align, CellValue::Kind::Text);
    format.isTop = isTop_;
    format.wraps = column.wraps;
    column.text = formats_.add(format);
    format.wraps = true;
    format.isTop = true;
    column.wrapped = formats_.add(format);
  }
}

void TableWriter::row(const document::Row& row) {
  if (sheets_.current().isFull()) {
    continueOnNextSheet();
  }
  if (row.header) {
    PreparedRow cells = prepared(row);
    writeRow(cells, nullptr);
    if (row.repeated) {
      header_.push_back(std::move(cells));
    }
  } else if (std::all_of(row.cells.begin(), row.cells.end(), isSimple)) {
    writeSimpleRow(row);
  } else {
    writeRow(prepared(row), &row);
  }
}

void TableWriter::writeSimpleRow(const document::Row& row) {
  SheetWriter& sheet = sheets_.current();
  sheet.beginRow(heightOf(row));
  const std::size_t count = std::min(row.cells.size(), columns_.size());
  for (std::size_t i = 0; i < count; ++i) {
    if (!row.cells[i].text.empty() || row.cells[i].isValue()) {
      writeSimpleCell(columns_[i], static_cast<std::uint32_t>(i), row.cells[i]);
    }
  }
  for (std::size_t i = count; i < row.cells.size(); ++i) {
    sheets_.losses().dropped += row.cells[i].text.empty() ? 0u : 1u;
  }
  sheet.endRow();
}

// Of a row with long texts; else 0. Not every reader gives a row the height of its texts.
double TableWriter::heightOf(const document::Row& row) const {
  double lines = 1;
  const std::size_t count = std::min(row.cells.size(), columns_.size());
  for (std::size_t i = 0; i < count; ++i) {
    if (!row.cells[i].isValue()) {
      lines = std::max(lines, shownLinesOf(row.cells[i].text, columns_[i].width));
    }
  }
  return lines > 1 ? std::min(lines * kLineHeight, kHighestRow) : 0;
}

void TableWriter::writeSimpleCell(Column& column, std::uint32_t index, const Cell& cell) {
  SheetWriter& sheet = sheets_.current();
  char buffer[ColumnValues::kLongest];
  const CellValue value = column.values.of(cell, buffer);
  switch (value.kind) {
    case CellValue::Kind::Number: return sheet.number(index, formatOf(column, value.format), value.digits);
    case CellValue::Kind::Boolean: {
      CellFormat format = looks_.body;
      format.align = alignOf(column.align, CellValue::Kind::Boolean);
      format.isTop = isTop_;
      return sheet.boolean(index, formats_.add(format), value.digits);
    }
    case CellValue::Kind::Text: break;
  }
  const bool isLong = linesOf(cell.text, column.width) > 1;
  sheet.text(index, isLong ? column.wrapped : column.text, cell.text);
}

std::uint32_t TableWriter::formatOf(Column& column, NumberFormat number) {
  if (column.numbers.size() <= number) {
    column.numbers.resize(number + std::size_t{1}, -1);
  }
  std::int64_t& known = column.numbers[number];
  if (known < 0) {
    CellFormat format = looks_.body;
    format.align = alignOf(column.align, CellValue::Kind::Number);
    format.isTop = isTop_;
    format.number = number;
    known = formats_.add(format);
  }
  return static_cast<std::uint32_t>(known);
}

TableWriter::PreparedRow TableWriter::prepared(const document::Row& row) {
  PreparedRow cells;
  std::uint32_t column = 0;
  for (const Cell& cell : row.cells) {
    if (column < columns_.size()) {
      cells.push_back(prepared(cell, column, row.header));
    } else {
      sheets_.losses().dropped += cell.text.empty() ? 0u : 1u;
    }
    column += static_cast<std::uint32_t>(cell.span);
  }
  // At the bottom of its cell, text would be under the pictures.
  if (std::any_of(cells.begin(), cells.end(), [](const auto& cell) { return !cell.text.pictures.empty(); })) {
    for (PreparedCell& cell : cells) {
      cell.format.isTop = true;
    }
  }
  return cells;
}

TableWriter::PreparedCell TableWriter::prepared(const Cell& cell, std::uint32_t column, bool isHeader) {
  const auto left = static_cast<std::uint32_t>(columns_.size()) - column;
  PreparedCell result{column, std::min(static_cast<std::uint32_t>(cell.span), left), looks_.body, {}};
  CellFormat& format = result.format;
  if (isHeader) {
    format = looks_.header;
  } else if (cell.header) {
    format.font.flags |= Font::Bold;
  }
  format.font.color = cell.color.value_or(format.font.color);
  format.align = cell.align == Align::Auto ? columns_[column].align : cell.align;
  collector_.begin(format.font);
  cell.replay(collector_);
  result.text = collector_.take();
  const std::uint32_t usualFill = result.text.fill == kNoColor ? format.fill : result.text.fill;
  format.fill = cell.background.value_or(usualFill);
  const double width = widthOf(result);
  format.wraps = columns_[column].wraps || linesOf(result.text.text, width) > 1;
  format.isTop = !isHeader && (isTop_ || format.wraps);
  const double widthPt = width * kPointsPerDigit;
  for (PlacedPicture& picture : result.text.pictures) {
    const double scale = std::min({1.0, widthPt / picture.width, kHighestPicture / picture.height});
    picture.width *= scale;
    picture.height *= scale;
  }
  return result;
}

double TableWriter::widthOf(const PreparedCell& cell) const {
  double width = 0;
  for (std::uint32_t i = cell.column; i < cell.column + cell.span; ++i) {
    width += columns_[i].width;
  }
  return width;
}

// Pictures are below each other, and below the text.
double TableWriter::heightOf(const PreparedRow& row) const {
  double height = 0;
  for (const PreparedCell& cell : row) {
    double own = cell.text.text.empty() ? 0 : shownLinesOf(cell.text.text, widthOf(cell)) * kLineHeight;
    for (const PlacedPicture& picture : cell.text.pictures) {
      own += picture.height + kPictureEdge;
    }
    height = std::max(height, own);
  }
  return height > kLineHeight ? std::min(height, kHighestRow) : 0;
}

void TableWriter::writeRow(const PreparedRow& row, const document::Row* values) {
  SheetWriter& sheet = sheets_.current();
  sheet.beginRow(heightOf(row));
  for (std::size_t i = 0; i < row.size(); ++i) {
    writeCell(row[i], values == nullptr ? nullptr : &values->cells[i]);
  }
  sheet.endRow();
}

// Without values, all cells are texts.
void TableWriter::writeCell(const PreparedCell& cell, const Cell* value) {
  SheetWriter& sheet = sheets_.current();
  CellFormat format = cell.format;
  char buffer[ColumnValues::kLongest];
  CellValue typed;
  const bool isPlain = cell.text.runs.size() <= 1 && cell.text.links.empty() && cell.text.pictures.empty();
  if (value != nullptr && isPlain && (value->content == nullptr || value->type == ValueType::Auto)) {
    typed = columns_[cell.column].values.of(*value, buffer);
  }
  format.align = alignOf(format.align, typed.kind);
  if (typed.kind != CellValue::Kind::Text) {
    format.font = cell.text.runs.empty() ? format.font : cell.text.runs.front().font;
    format.number = typed.format;
    for (const std::string& id : cell.text.anchors) {
      sheet.addAnchor(id);
    }
  }
  switch (typed.kind) {
    case CellValue::Kind::Number: sheet.number(cell.column, formats_.add(format), typed.digits); break;
    case CellValue::Kind::Boolean: sheet.boolean(cell.column, formats_.add(format), typed.digits); break;
    case CellValue::Kind::Text: sheet.rich(cell.column, format, cell.text); break;
  }
  double top = cell.text.text.empty() ? 0 : shownLinesOf(cell.text.text, widthOf(cell)) * kLineHeight;
  for (const PlacedPicture& picture : cell.text.pictures) {
    sheet.addPicture(cell.column, top + kPictureEdge / 2, picture);
    top += picture.height + kPictureEdge;
  }
  if (cell.span > 1) {
    const std::uint32_t index = formats_.add(format);
    for (std::uint32_t i = 1; i < cell.span; ++i) {
      sheet.blank(cell.column + i, index);
    }
    sheet.merge(cell.column, cell.column + cell.span - 1);
  }
}

void TableWriter::closePart() {
  SheetWriter& sheet = sheets_.current();
  const auto headerRows = static_cast<std::uint32_t>(header_.size());
  const std::uint32_t end = sheet.row();
  if (!isFirst_ || headerRows == 0) {
    return;
  }
  sheet.setTitleRows(firstRow_, firstRow_ + headerRows - 1);
  if (end > firstRow_ + headerRows) {
    sheet.setFilter({firstRow_ + headerRows - 1, 0, end - 1, static_cast<std::uint32_t>(columns_.size()) - 1});
  }
}

void TableWriter::continueOnNextSheet() {
  closePart();
  SheetLayout layout = sheets_.current().layout();
  layout.frozenRows = looks_.frozenRows.value_or(static_cast<std::uint32_t>(header_.size()));
  const std::string name = sheets_.current().name();
  sheets_.begin(name, layout);
  firstRow_ = 0;
  isFirst_ = true;
  for (const PreparedRow& row : header_) {
    writeRow(row, nullptr);
  }
}

void TableWriter::end() { closePart(); }

}  // namespace scrivalen::xlsx
