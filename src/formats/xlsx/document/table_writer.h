#pragma once

#include "document/model/table.h"
#include "document/settings/settings.h"
#include "formats/xlsx/document/cells/cell_value.h"
#include "formats/xlsx/document/cells/rich_text.h"
#include "formats/xlsx/document/looks.h"
#include "formats/xlsx/document/sheet/sheets.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace scrivalen::xlsx {

/// What a sheet has of one of its tables.
struct TableMarks {
  bool filter = false;
  bool titles = false;  ///< header rows that are repeated in print
};

/// Writes the rows of tables. A table that does not fit on a sheet goes on in another, with its header.
class TableWriter {
 public:
  /// All of them outlive this object.
  TableWriter(Sheets& sheets, CellFormats& formats, NumberFormats& numbers, const Looks& looks)
      : sheets_(sheets), formats_(formats), numbers_(numbers), looks_(looks) {}

  /// How many header rows a table begins with.
  static std::uint32_t headerRowsOf(const document::Table& table);

  /// The height of these rows in points.
  /// @param table  with its sample
  double heightOfHeader(const document::Table& table, const SheetLayout& layout);

  /// Begins a table in the row that comes next.
  void begin(const document::Table& table, TableMarks marks);
  void row(const document::Row& row);
  void end();

 private:
  struct Column {
    ColumnValues values;
    document::Align align;
    std::uint8_t indent;  // of what is on the right
    double width;         // without it
    std::size_t digits;   // that a number may have and fit
    bool wraps;
    std::uint32_t text;                 // the format of texts
    std::uint32_t wrapped;              // of long ones
    std::vector<std::int64_t> numbers;  // by number format; -1: not asked for yet
  };
  struct PreparedCell {
    std::uint32_t column;
    std::uint32_t span;
    CellFormat format;
    RichText text;
    double height;  // of its text, in points
  };
  using PreparedRow = std::vector<PreparedCell>;

  bool hasRoomFor(const document::Row& row) const;
  bool hasRoomFor(const PreparedRow& row) const;
  bool isAtBegin() const;
  void setColumns(const document::Table& table, const SheetLayout& layout);
  void continueOnNextSheet();
  std::uint32_t frozenHeader() const;
  void countDropped(const document::Row& row);
  void writeSimpleRow(const document::Row& row);
  void writeSimpleCell(Column& column, std::uint32_t index, const document::Cell& cell);
  std::uint32_t wideFormatOf(const Column& column, const CellValue& value);
  CellFormat shrunk(CellFormat format, const CellValue& value);
  PreparedRow prepared(const document::Row& row);
  PreparedCell prepared(const document::Cell& cell, std::uint32_t column, bool isHeader);
  void writeRow(const PreparedRow& row, const document::Row* values);
  void writeCell(const PreparedCell& cell, const document::Cell* value);
  double heightOf(const document::Row& row);
  double heightOf(const PreparedRow& row) const;
  double widthOf(const PreparedCell& cell) const;
  CellValue valueOf(const PreparedCell& cell, const document::Cell& value, char* buffer);
  bool isTooWide(const PreparedCell& cell, const document::Cell& value, const Font& font) const;
  static void align(CellFormat& format, document::Align align, const Column& column, CellValue::Kind kind);
  CellFormat formatFor(const Column& column, const CellValue& value) const;
  std::uint32_t formatOf(Column& column, NumberFormat number);
  void closePart();

  Sheets& sheets_;
  CellFormats& formats_;
  NumberFormats& numbers_;
  const Looks& looks_;

  std::vector<Column> columns_;
  std::vector<PreparedRow> header_;
  RichTextCollector collector_;
  std::uint32_t firstRow_ = 0;
  TableMarks marks_;
  bool isTop_ = false;  // whether cells are at the top of their rows
};

}  // namespace scrivalen::xlsx
