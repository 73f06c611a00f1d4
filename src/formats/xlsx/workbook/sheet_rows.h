#pragma once

#include "formats/xlsx/workbook/cell_name.h"
#include "output/archive/zip_writer.h"
#include "output/markup_text.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::xlsx {

/// The part of a sheet before its rows.
struct SheetFrame {
  std::vector<double> widths;  ///< of the first columns, in digits; those with 0 have the usual one
  double otherWidth = 0;       ///< of the others, in digits; 0: the usual one
  std::uint32_t frozenRows = 0;
  bool isRightToLeft = false;
  bool fitsPage = false;  ///< as wide as a page when it is printed
};

/// How much a sheet takes before another has to continue it.
struct SheetLimits {
  std::uint32_t rows = kMostRows;
  std::uint64_t bytes = 0xF0000000;  ///< of XML; an entry of the archive has less than 4 GiB
};

/// In bytes: a row of such texts has room even at the end of a sheet, where longer ones may have none.
inline constexpr std::size_t kShortText = 256;

/// Writes the XML of a sheet, from its first row to its last, into an entry of an archive.
class SheetRows {
 public:
  /// @param zip     not owned; must outlive this object
  /// @param number  of the sheet, counted from 1
  explicit SheetRows(ZipWriter& zip, std::size_t number, const SheetLimits& limits = {})
      : zip_(zip), number_(number), limits_(limits) {}

  void begin(const SheetFrame& frame);
  std::size_t sheetNumber() const { return number_; }

  /// The row that is open, or else the next one; counted from 0.
  std::uint32_t row() const { return row_; }
  /// Whether no further row has room. One that begins may be a little longer than what is left: by numbers, and by
  /// texts of some hundred characters.
  bool isFull() const { return row_ >= limits_.rows || !hasRoomFor(0); }
  /// Whether so many bytes of XML have room.
  bool hasRoomFor(std::uint64_t bytes) const { return zip_.entrySize() + bytes < limits_.bytes; }
  /// @param heightPt  0: the usual one; readers that measure their texts themselves do not change it
  void beginRow(double heightPt = 0);
  void endRow();
  /// Leaves rows empty.
  void skipRow() { ++row_; }
  void skipTo(std::uint32_t row) { row_ = row; }

  /// Each writes a cell of the open row, in ascending columns. Texts are as long as a cell may be.
  void blank(std::uint32_t column, std::uint32_t format);
  void number(std::uint32_t column, std::uint32_t format, std::string_view digits);
  void boolean(std::uint32_t column, std::uint32_t format, std::string_view digit);
  /// @param text  clean UTF-8
  void plainText(std::uint32_t column, std::uint32_t format, std::string_view text);
  /// @param text  as escapedText returns it
  void escapedText(std::uint32_t column, std::uint32_t format, std::string_view text);
  /// @param runs  elements
  void richText(std::uint32_t column, std::uint32_t format, std::string_view runs);

  /// The name of a cell of the open row.
  std::string cellName(std::uint32_t column) { return std::string(nameOf(column)).append(rowDigits_); }
  /// Where the texts of this sheet are escaped.
  MarkupText& markup() { return markup_; }

  /// @param settings  the elements after the rows, up to the page breaks (ECMA-376, 18.3.1.99)
  /// @param drawings  the elements that refer to drawings
  void end(std::string_view settings, std::string_view drawings);

 private:
  char* putCellStart(char* out, std::uint32_t column, std::uint32_t format);
  void beginText(std::uint32_t column, std::uint32_t format);
  void writeValue(std::uint32_t column, std::uint32_t format, std::string_view type, std::string_view value);
  const std::string& nameOf(std::uint32_t column);
  void put(std::string_view xml) { zip_.content().write(xml.data(), xml.size()); }

  ZipWriter& zip_;
  std::size_t number_;
  SheetLimits limits_;
  MarkupText markup_;
  std::uint32_t row_ = 0;
  std::string rowDigits_;
  std::vector<std::string> columnNames_;
};

}  // namespace scrivalen::xlsx
