#include "formats/xlsx/document/table_writer.h"

#include "formats/xlsx/document/sheet/column_layout.h"
#include "formats/xlsx/document/sheet/text_height.h"
#include "formats/xlsx/workbook/cell_text.h"

#include <algorithm>
#include <span>
#include <utility>

namespace scrivalen::xlsx {
namespace {

using document::Align;
using document::Cell;
using document::ValueType;

constexpr std::uint32_t kMostRepeatedRows = 20;
constexpr double kPictureEdge = 2;
constexpr double kWidestValue = 1e6;  // in digits, of a value in one line
constexpr Font kUsualFont;

// What the general alignment does already need not be said: texts are on the left, numbers on the right.
Align alignOf(Align align, CellValue::Kind kind) {
  const bool isGeneral =
      kind == CellValue::Kind::Text ? align == Align::Left : kind == CellValue::Kind::Number && align == Align::Right;
  return isGeneral ? Align::Auto : align;
}

// How many characters of a number fit in a column. A percent sign is wider than a digit.
std::size_t charactersIn(const document::Column& column, double width, double digitWidth) {
  const double digits = digitsIn(width) / digitWidth;
  const bool hasPercent = column.format.pattern().find('%') != std::string_view::npos;
  return static_cast<std::size_t>(hasPercent ? std::max(digits - 1, 0.0) : digits);
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

void TableWriter::setColumns(const document::Table& table, const SheetLayout& layout) {
  columns_.clear();
  const auto count = static_cast<std::uint32_t>(std::min<std::size_t>(table.columns.size(), kMostColumns));
  isTop_ = false;
  for (std::uint32_t i = 0; i < count; ++i) {
    const document::Column& column = table.columns[i];
    const bool isIndented = !layout.isRightToLeft && isBesideTexts(table, i);
    const double width = layout.widthOf(i) - (isIndented ? kDigitsPerIndent : 0);
    const bool wraps = column.widestLine > width;
    isTop_ = isTop_ || wraps;
    const std::size_t digits = charactersIn(column, width, looks_.digitWidth);
    const std::uint8_t indent = isIndented ? 1 : 0;
    columns_.push_back({ColumnValues(column, numbers_), column.align, indent, width, digits, wraps, 0, 0, {}});
  }
}

// The formats of the columns are asked for once, when the table begins.
double TableWriter::heightOfHeader(const document::Table& table, const SheetLayout& layout) {
  document::Table plain{table.name, table.columns};
  for (document::Column& column : plain.columns) {
    column.format = {};
  }
  setColumns(plain, layout);
  double height = 0;
  for (const document::SampleRow& row : std::span(table.sample).first(headerRowsOf(table))) {
    height += std::max(heightOf(prepared({row.cells, true})), kLineHeight);
  }
  return height;
}

void TableWriter::begin(const document::Table& table, TableMarks marks) {
  setColumns(table, sheets_.current().layout());
  header_.clear();
  marks_ = marks;
  firstRow_ = sheets_.current().row();
  for (Column& column : columns_) {
    CellFormat format = looks_.body;
    align(format, column.align, column, CellValue::Kind::Text);
    format.isTop = isTop_;
    format.wraps = column.wraps;
    column.text = formats_.add(format);
    format.wraps = true;
    format.isTop = true;
    column.wrapped = formats_.add(format);
  }
}

void TableWriter::row(const document::Row& row) {
  if (columns_.size() == kMostColumns) {
    countDropped(row);
  }
  if (!row.header && std::all_of(row.cells.begin(), row.cells.end(), isSimple)) {
    if (!hasRoomFor(row)) {
      continueOnNextSheet();
    }
    return writeSimpleRow(row);
  }
  PreparedRow cells = prepared(row);
  if (!hasRoomFor(cells)) {
    continueOnNextSheet();
  }
  writeRow(cells, row.header ? nullptr : &row);
  if (row.repeated) {
    header_.push_back(std::move(cells));
  }
}

bool TableWriter::hasRoomFor(const document::Row& row) const {
  constexpr std::uint64_t kLargestRow = std::uint64_t{kMostColumns} * kLongestCellText * kMostOfAUnit;
  const SheetWriter& sheet = sheets_.current();
  if (sheet.isFull() || sheet.hasRoomFor(kLargestRow)) {
    return !sheet.isFull();
  }
  std::uint64_t bytes = 0;
  for (const Cell& cell : row.cells) {
    bytes += mostBytesOf(cell.text);
  }
  return sheet.hasRoomFor(bytes) || isAtBegin();
}

bool TableWriter::hasRoomFor(const PreparedRow& row) const {
  const SheetWriter& sheet = sheets_.current();
  std::uint64_t bytes = 0;
  for (const PreparedCell& cell : row) {
    bytes += mostBytesOf(cell.text);
  }
  return !sheet.isFull() && (sheet.hasRoomFor(bytes) || isAtBegin());
}

// Whether another sheet has no more room for a row than this one.
bool TableWriter::isAtBegin() const { return sheets_.current().row() <= header_.size(); }

// Of a row that may have more columns than a sheet.
void TableWriter::countDropped(const document::Row& row) {
  std::size_t column = 0;
  for (const Cell& cell : row.cells) {
    sheets_.losses().dropped += column < columns_.size() || cell.text.empty() ? 0u : 1u;
    column += static_cast<std::size_t>(cell.span);
  }
}

void TableWriter::writeSimpleRow(const document::Row& row) {
  const double height = heightOf(row);
  if (height > 0 && !isTop_) {
    return writeRow(prepared(row), &row);
  }
  SheetWriter& sheet = sheets_.current();
  sheet.beginRow(height);
  const std::size_t count = std::min(row.cells.size(), columns_.size());
  for (std::size_t i = 0; i < count; ++i) {
    if (!row.cells[i].text.empty() || row.cells[i].isValue()) {
      writeSimpleCell(columns_[i], static_cast<std::uint32_t>(i), row.cells[i]);
    }
  }
  sheet.endRow();
}

// Of a row with long texts; else 0. Not every reader gives a row the height of its texts. A number has one line.
double TableWriter::heightOf(const document::Row& row) {
  double lines = 1;
  char buffer[ColumnValues::kLongest];
  const std::size_t count = std::min(row.cells.size(), columns_.size());
  for (std::size_t i = 0; i < count; ++i) {
    const Cell& cell = row.cells[i];
    const double own = cell.isValue() ? 1 : shownLinesOf(cell.text, columns_[i].width);
    if (own > lines && columns_[i].values.of(cell, buffer).kind == CellValue::Kind::Text) {
      lines = own;
    }
  }
  return lines > 1 ? std::min(lines * kLineHeight, kHighestRow) : 0;
}

void TableWriter::writeSimpleCell(Column& column, std::uint32_t index, const Cell& cell) {
  SheetWriter& sheet = sheets_.current();
  char buffer[ColumnValues::kLongest];
  const CellValue value = column.values.of(cell, buffer);
  switch (value.kind) {
    case CellValue::Kind::Number: {
      const bool fits = cell.text.size() <= column.digits;
      return sheet.number(index, fits ? formatOf(column, value.format) : wideFormatOf(column, value), value.digits);
    }
    case CellValue::Kind::Boolean: {
      const bool fits = cell.text.size() <= column.digits;
      const std::uint32_t format = fits ? formats_.add(formatFor(column, value)) : wideFormatOf(column, value);
      return sheet.boolean(index, format, value.digits);
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
    known = formats_.add(formatFor(column, {CellValue::Kind::Number, number}));
  }
  return static_cast<std::uint32_t>(known);
}

void TableWriter::align(CellFormat& format, Align align, const Column& column, CellValue::Kind kind) {
  format.indent = align == Align::Right ? column.indent : 0;
  format.align = format.indent > 0 ? align : alignOf(align, kind);
}

CellFormat TableWriter::formatFor(const Column& column, const CellValue& value) const {
  CellFormat format = looks_.body;
  align(format, column.align, column, value.kind);
  format.isTop = isTop_;
  format.number = value.format;
  return format;
}

std::uint32_t TableWriter::wideFormatOf(const Column& column, const CellValue& value) {
  return formats_.add(shrunk(formatFor(column, value), value));
}

// A number that is wider than its cell is shown as "###", or is rounded in the general format. Smaller digits show all
// of it; a reader makes them so only in a cell that neither wraps nor justifies its text.
CellFormat TableWriter::shrunk(CellFormat format, const CellValue& value) {
  format.isShrunk = true;
  format.wraps = false;
  format.align = format.align == Align::Justify ? Align::Auto : format.align;
  if (value.kind == CellValue::Kind::Number && value.format == kGeneral) {
    format.number = numbers_.allOf(value.digits);
  }
  return format;
}

TableWriter::PreparedRow TableWriter::prepared(const document::Row& row) {
  PreparedRow cells;
  std::uint32_t column = 0;
  for (const Cell& cell : row.cells) {
    if (column < columns_.size()) {
      cells.push_back(prepared(cell, column, row.header));
    }
    column += static_cast<std::uint32_t>(cell.span);
  }
  // The first lines of all cells are beside each other. At the bottom of its cell, text would be under the pictures.
  if (std::any_of(cells.begin(), cells.end(),
                  [](const auto& cell) { return cell.format.isTop || !cell.text.pictures.empty(); })) {
    for (PreparedCell& cell : cells) {
      cell.format.isTop = true;
    }
  }
  return cells;
}

TableWriter::PreparedCell TableWriter::prepared(const Cell& cell, std::uint32_t column, bool isHeader) {
  const auto left = static_cast<std::uint32_t>(columns_.size()) - column;
  PreparedCell result{column, std::min(static_cast<std::uint32_t>(cell.span), left), looks_.body, {}, 0};
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
  const double space = spaceOf(result.text, kUsualFont, width);
  char buffer[ColumnValues::kLongest];
  const bool isText = isHeader || valueOf(result, cell, buffer).kind == CellValue::Kind::Text;
  const bool isLong = isText && linesOf(result.text.text, space) > 1;
  const bool isLarge = space < width;
  const double lineWidth = isText ? width : kWidestValue;
  const double shownHeight = isLong || isLarge ? xlsx::heightOf(result.text, kUsualFont, lineWidth) : kLineHeight;
  result.height = result.text.text.empty() ? 0 : shownHeight;
  format.wraps = columns_[column].wraps || isLong;
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
    double own = cell.height;
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

CellValue TableWriter::valueOf(const PreparedCell& cell, const Cell& value, char* buffer) {
  const bool isPlain = cell.text.runs.size() <= 1 && cell.text.links.empty() && cell.text.pictures.empty();
  const bool isTyped = isPlain && (value.content == nullptr || value.type == ValueType::Auto);
  return isTyped ? columns_[cell.column].values.of(value, buffer) : CellValue();
}

bool TableWriter::isTooWide(const PreparedCell& cell, const Cell& value, const Font& font) const {
  const double usualSize = looks_.body.font.size;
  const double ownWidth = font.family == Family::Code ? kCodeWidth / kPrintedDigit : looks_.digitWidth;
  const double digitWidth = ownWidth * font.size / usualSize * ((font.flags & Font::Bold) != 0 ? kBoldGrowth : 1);
  const std::size_t length = value.text.size() + (value.text.ends_with('%') ? 1 : 0);
  return digitsIn(widthOf(cell)) < static_cast<double>(length) * digitWidth;
}

// Without values, all cells are texts.
void TableWriter::writeCell(const PreparedCell& cell, const Cell* value) {
  SheetWriter& sheet = sheets_.current();
  CellFormat format = cell.format;
  char buffer[ColumnValues::kLongest];
  const CellValue typed = value == nullptr ? CellValue() : valueOf(cell, *value, buffer);
  align(format, format.align, columns_[cell.column], typed.kind);
  if (typed.kind != CellValue::Kind::Text) {
    format.font = cell.text.runs.empty() ? format.font : cell.text.runs.front().font;
    format.number = typed.format;
    format = isTooWide(cell, *value, format.font) ? shrunk(format, typed) : format;
    for (const std::string& id : cell.text.anchors) {
      sheet.addAnchor(id);
    }
  }
  switch (typed.kind) {
    case CellValue::Kind::Number: sheet.number(cell.column, formats_.add(format), typed.digits); break;
    case CellValue::Kind::Boolean: sheet.boolean(cell.column, formats_.add(format), typed.digits); break;
    case CellValue::Kind::Text: sheet.rich(cell.column, format, cell.text); break;
  }
  double top = cell.height;
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
  if (headerRows == 0) {
    return;
  }
  if (marks_.titles) {
    sheet.setTitleRows(firstRow_, firstRow_ + headerRows - 1);
  }
  if (marks_.filter && end > firstRow_ + headerRows) {
    sheet.setFilter({firstRow_ + headerRows - 1, 0, end - 1, static_cast<std::uint32_t>(columns_.size()) - 1});
  }
}

void TableWriter::continueOnNextSheet() {
  closePart();
  SheetLayout layout = sheets_.current().layout();
  layout.frozenRows = looks_.frozenRows.value_or(frozenHeader());
  const std::string name = sheets_.current().name();
  sheets_.begin(name, layout);
  firstRow_ = 0;
  marks_ = {true, true};
  for (const PreparedRow& row : header_) {
    writeRow(row, nullptr);
  }
}

std::uint32_t TableWriter::frozenHeader() const {
  double height = 0;
  for (const PreparedRow& row : header_) {
    height += std::max(heightOf(row), kLineHeight);
  }
  const auto rows = static_cast<std::uint32_t>(header_.size());
  return canFreeze(rows, height) ? rows : 0;
}

void TableWriter::end() { closePart(); }

}  // namespace scrivalen::xlsx
