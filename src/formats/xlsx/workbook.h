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

/// A workbook of strings, written row by row with libxlsxwriter: one row is in memory, the others are in a temporary
/// file per sheet. The library does not check that writes to its temporary files succeed, so this class does; and it
/// uses the thread's locale, so it is only called in the "C" locale.
class Workbook {
 public:
  static constexpr std::uint32_t kRows = 1048576;    ///< per sheet
  static constexpr std::uint32_t kColumns = 16384;   ///< per sheet
  static constexpr std::size_t kCellLength = 32767;  ///< UTF-16 code units per cell
  static constexpr std::uint32_t kFormats = 60000;   ///< below the 65,490 that spreadsheet programs accept
  static constexpr std::uint32_t kFonts = 500;       ///< below their 512

  /// @param folder   for the temporary files
  /// @param created  the creation time, in seconds since 1970-01-01 UTC
  Workbook(const std::wstring& folder, std::int64_t created);
  Workbook(const Workbook&) = delete;
  Workbook& operator=(const Workbook&) = delete;
  /// Discards a workbook that was not closed, and its temporary files.
  ~Workbook();

  /// Begins the next sheet. @return false, with the reason in lastSystemError, when it gets no temporary file
  bool addSheet();

  /// Adds a cell format, which lives as long as the workbook.
  lxw_format* addFormat(const CellStyle& style, bool bold);

  /// Writes a cell of the last sheet, in its last row or below.
  /// @param text    UTF-8; an empty text makes a cell only with a format
  /// @param format  null: the spreadsheet program's default
  /// @return false, with the reason in lastSystemError, when the rows above were not all written to the temporary file
  bool write(std::uint32_t row, std::uint16_t column, const char* text, lxw_format* format);

  /// Sets the width of columns of the last sheet, in digits of the default font.
  void setWidth(std::uint16_t first, std::uint16_t last, double width);
  /// Freezes the first rows of the last sheet.
  void freeze(std::uint32_t rows);

  /// Assembles the workbook; nothing can be written afterwards.
  /// @param file  is created
  /// @return why the workbook is incomplete; empty on success
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
  std::uint32_t flushedRow_ = 0;  // the last row to get its first cell, which flushed the one above
};

}  // namespace scrivalen
