#pragma once

#include "output/file_error.h"
#include "output/reason.h"

#include <memory>
#include <string>
#include <string_view>

/// Writes a spreadsheet (Office Open XML, .xlsx) row by row; all cells are strings.
///
/// The file is held from the beginning, and keeps what it had until the workbook is whole: then it is replaced in one
/// step. Whatever fails, even when memory runs out, leaves neither half a workbook nor other files behind.
///
/// A sheet takes 1,048,576 rows; the next one begins another sheet, which is logged and has no frozen rows. Columns are
/// as wide as their longest text, up to 60 characters. What a spreadsheet cannot hold is left out and told in the log
/// at the end: what a cell has beyond 32,767 UTF-16 code units, cells beyond 16,384 columns, and cells outside of rows.
class ExcelWriter {
 public:
  ExcelWriter();
  ExcelWriter(const ExcelWriter&) = delete;
  ExcelWriter& operator=(const ExcelWriter&) = delete;
  /// A spreadsheet that was not ended is discarded.
  ~ExcelWriter();

  /// @param file    null is an empty path
  /// @param styles  null: none; see readStyle for what is understood. The rest is logged and passed over
  /// @return false, with the reason in Error, when the file cannot be written or another one is begun
  bool Begin(const wchar_t* file, const wchar_t* styles) noexcept;

  /// Begins a row, which ends the one that is open, or ends it.
  void Row(bool begin) noexcept;

  /// Appends a cell to the row.
  /// @param type   changes nothing: every cell holds a string
  /// @param value  null is an empty text
  void SetCellValue(const wchar_t* type, const wchar_t* value, bool bold) noexcept;
  /// @param color  `fill` or `font;fill`, each a name or `#RRGGBB`; an unknown name colours nothing. Null is empty
  void SetCellValue(const wchar_t* type, const wchar_t* value, const wchar_t* color) noexcept;

  /// Whether a spreadsheet is begun and not ended.
  bool IsBegun() const noexcept { return document_ != nullptr; }

  /// Lets the spreadsheet that is begun fail for a reason of its caller's, who has lost a part of it.
  void Fail(std::wstring_view reason) noexcept;

  /// Finishes the spreadsheet.
  /// @return false, with the reason in Error, when it failed; true when none was begun
  bool End() noexcept;

  /// Why Begin or End failed last; empty when they did not, or when there is no memory for the text.
  const std::wstring& Error() const { return error_; }

 private:
  class Document;

  bool keep(const scrivalen::Reason& reason, scrivalen::FileError error, std::wstring_view file) noexcept;

  std::unique_ptr<Document> document_;
  std::wstring error_;
};
