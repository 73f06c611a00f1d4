#pragma once

#include "formats/xlsx/excel_style.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

struct lxw_format;
struct lxw_workbook;
struct lxw_worksheet;

namespace scrivalen {

class StreamWatch;

/// A workbook of strings, written row by row with libxlsxwriter: a row is in memory, the others are in a temporary
/// file for each sheet. That library does not look whether its temporary files took what it wrote, which is made up for
/// here, and it uses the thread's locale, so that it only runs in that of C.
class Workbook {
 public:
  static constexpr std::uint32_t kRows = 1048576;    ///< of a sheet
  static constexpr std::uint32_t kColumns = 16384;   ///< of a sheet
  static constexpr std::size_t kCellLength = 32767;  ///< UTF-16 code units of a cell
  static constexpr std::uint32_t kFormats = 60000;   ///< fewer than the 65,490 that spreadsheet programs take
  static constexpr std::uint32_t kFonts = 500;       ///< fewer than their 512

  /// @param folder   where the temporary files go
  /// @param created  when the workbook was made, in seconds since 1970-01-01 UTC
  Workbook(const std::wstring& folder, std::int64_t created);
  Workbook(const Workbook&) = delete;
  Workbook& operator=(const Workbook&) = delete;
  /// A workbook that was not closed leaves nothing behind.
  ~Workbook();

  /// Begins the next sheet. @return false, with the reason in lastSystemError, when it has no temporary file
  bool addSheet();

  /// A way for cells to look, which lives as long as the workbook.
  lxw_format* addFormat(const CellStyle& style, bool bold);

  /// Writes a cell of the last sheet, in a row that is not above the last one.
  /// @param text    UTF-8; without a text there is a cell only where it has a format
  /// @param format  null: as the spreadsheet program has it
  /// @return false, with the reason in lastSystemError, when the rows above it did not all reach the temporary file
  bool write(std::uint32_t row, std::uint16_t column, const char* text, lxw_format* format);

  /// Sets the width of columns of the last sheet, in digits of the default font.
  void setWidth(std::uint16_t first, std::uint16_t last, double width);
  /// Keeps the first rows of the last sheet in sight.
  void freeze(std::uint32_t rows);

  /// Puts the workbook together; nothing can be written afterwards.
  /// @param file  is created
  /// @return why it is not whole; empty when it is
  std::wstring close(const std::wstring& file);

 private:
  struct Sheet {
    lxw_worksheet* sheet;
    std::FILE* rows;
  };

  bool hasRows(const Sheet& sheet) const;
  bool flushRows(const Sheet& sheet);
  bool measureSheets(std::vector<std::uint64_t>& sizes);
  bool measureFrame(const Sheet& sheet, std::uint64_t& size);
  std::wstring assemble(const std::wstring& file, bool isLarge);
  void closeRows(const std::vector<StreamWatch>& watches);

  std::string folder_;
  lxw_workbook* book_ = nullptr;
  std::vector<Sheet> sheets_;
  std::uint32_t flushedRow_ = 0;  // the row whose first cell was written last, which flushed the one above it
};

}  // namespace scrivalen
