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

/// Writes the rows of tables. A table that does not fit on a sheet goes on in another, with its header.
class TableWriter {
 public:
  /// All of them outlive this object.
  TableWriter(Sheets& sheets, CellFormats& formats, NumberFormats& numbers, const Looks& looks)
      : sheets_(sheets), formats_(formats), numbers_(numbers), looks_(looks) {}

  /// How many header rows a table begins with.
  static std::uint32_t headerRowsOf(const document::Table& table);

  /// Begins a table in the row that comes next.
  /// @param isFirst  whether it is the first of its sheet, which has the filter and the print titles
  void begin(const document::Table& table, bool isFirst);
  void row(const document::Row& row);
  void end();

 private:
  struct Column {
    ColumnValues values;
    document::Align align;
    double width;
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
  };
  using PreparedRow = std::vector<PreparedCell>;

  void continueOnNextSheet();
  void writeSimpleRow(const document::Row& row);
  void writeSimpleCell(Column& column, std::uint32_t index, const document::Cell& cell);
  PreparedRow prepared(const document::Row& row);
  PreparedCell prepared(const document::Cell& cell, std::uint32_t column, bool isHeader);
  void writeRow(const PreparedRow& row, const document::Row* values);
  void writeCell(const PreparedCell& cell, const document::Cell* value);
  double heightOf(const document::Row& row) const;
  double heightOf(const PreparedRow& row) const;
  double widthOf(const PreparedCell& cell) const;
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
  bool isFirst_ = false;
  bool isTop_ = false;  // whether cells are at the top of their rows
};

}  // namespace scrivalen::xlsx
