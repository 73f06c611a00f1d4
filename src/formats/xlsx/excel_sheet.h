#pragma once

#include "formats/xlsx/excel_text.h"
#include "formats/xlsx/workbook/sheet_rows.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace scrivalen {

/// A sheet of a report. Its columns are as wide as their longest texts in the first rows, which wait until they are
/// enough: 500 rows of two cells or more, or 256 KiB. Rows of one cell, such as headings, set no widths.
class ExcelSheet {
 public:
  /// @param zip     not owned; must outlive this object
  /// @param number  of the sheet, counted from 1
  /// @param frame   its widths, if it has any, are those of the columns
  ExcelSheet(ZipWriter& zip, std::size_t number, xlsx::SheetFrame frame, const xlsx::SheetLimits& limits);

  /// Whether the archive has no room for further rows.
  bool isFull() const { return hasBegun_ && rows_.isFull(); }

  /// Writes a cell after the earlier ones, in their row or below. Rows and columns count from 0.
  /// @return whether there was room for the text; if not, the cell is empty
  bool put(std::uint32_t row, std::uint32_t column, std::uint32_t format, const ExcelText& text);
  /// Ends a row.
  /// @param cells  how many it has, with those that were not written
  void endRow(std::uint32_t cells);

  void end();

 private:
  struct HeldCell {
    std::uint32_t row;
    std::uint32_t column;
    std::uint32_t format;
    std::uint32_t size;  // of its text
  };

  void hold(std::uint32_t row, std::uint32_t column, std::uint32_t format, const ExcelText& text);
  bool isSampled() const;
  void takeWidths();
  void begin();
  void write(std::uint32_t row, std::uint32_t column, std::uint32_t format, std::string_view text);
  void closeRow();

  xlsx::SheetRows rows_;
  xlsx::SheetFrame frame_;
  const bool hasWidths_;  // from the style sheet
  bool hasBegun_ = false;
  bool isRowOpen_ = false;

  std::vector<HeldCell> held_;
  std::string heldTexts_;
  std::size_t sampledRows_ = 0;
  std::vector<std::uint8_t> widths_;     // of the columns so far
  std::vector<std::uint8_t> rowWidths_;  // of the row that is open
};

}  // namespace scrivalen
