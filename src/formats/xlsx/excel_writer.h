#pragma once

#include "formats/xlsx/workbook/sheet_rows.h"
#include "output/failure_reason.h"
#include "output/file_error.h"

#include <memory>
#include <string>
#include <string_view>

/// Writes a spreadsheet (Office Open XML, .xlsx) row by row; all cells are strings.
///
/// The file is locked from the beginning, and keeps its content until the workbook is complete: then it is replaced in
/// one step. A failure leaves neither half a workbook nor other files, even when memory runs out.
///
/// A sheet has up to 1,048,576 rows and 4 GB of XML; further rows go to another sheet, which is logged and has no
/// frozen rows. Columns are as wide as their longest text in the first 500 rows of two cells or more, up to 60
/// characters. Whatever a spreadsheet cannot hold is dropped and logged at the end: text of a cell beyond 32,767 UTF-16
/// code units, long texts of a row that begins at the end of those 4 GB, cells beyond 16,384 columns, and cells outside
/// rows.
class ExcelWriter {
 public:
  /// @param limits  of each sheet, smaller ones for tests
  explicit ExcelWriter(const scrivalen::xlsx::SheetLimits& limits = {});
  ExcelWriter(const ExcelWriter&) = delete;
  ExcelWriter& operator=(const ExcelWriter&) = delete;
  /// A spreadsheet that was not ended is discarded.
  ~ExcelWriter();

  /// @param file    null is an empty path
  /// @param styles  null: none; readStyle says what is understood. The rest is logged and skipped
  /// @return false, with the reason in Error, when the file cannot be written or a spreadsheet is already begun
  bool Begin(const wchar_t* file, const wchar_t* styles) noexcept;

  /// Ends the open row, if any, and begins another if @p begin is set.
  void Row(bool begin) noexcept;

  /// Appends a cell to the row.
  /// @param type   ignored: every cell is a string
  /// @param value  null is an empty text
  void SetCellValue(const wchar_t* type, const wchar_t* value, bool bold) noexcept;
  /// @param color  `fill` or `font;fill`, each a name or `#RRGGBB`; an unknown name sets no colour. Null is empty
  void SetCellValue(const wchar_t* type, const wchar_t* value, const wchar_t* color) noexcept;

  /// Whether a spreadsheet has been begun and not ended.
  bool IsBegun() const noexcept { return document_ != nullptr; }

  /// Makes the open spreadsheet fail, for a caller that has lost a part of it.
  void Fail(std::wstring_view reason) noexcept;

  /// Finishes the spreadsheet.
  /// @return false, with the reason in Error, when it failed; true when none was begun
  bool End() noexcept;

  /// Why the last Begin or End failed; empty after a success, or when memory for the text ran out.
  const std::wstring& Error() const { return error_; }

 private:
  class Document;

  bool keep(const scrivalen::Reason& reason, scrivalen::FileError error, std::wstring_view file) noexcept;

  const scrivalen::xlsx::SheetLimits limits_;
  std::unique_ptr<Document> document_;
  std::wstring error_;
};
