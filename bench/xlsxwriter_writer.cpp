// Writes the cells of the library's spreadsheet report with libxlsxwriter, as a program that uses it would: in its mode
// for large tables, with a check of the result of closing, and with nothing but the cells.
#include "ledger.h"
#include "writers.h"

#include <xlsxwriter.h>

#include <filesystem>
#include <string_view>

namespace scrivalen::bench {
namespace {

/// The ledger has no characters above U+07FF.
void putUtf8(std::string& utf8, std::wstring_view text) {
  utf8.clear();
  for (const wchar_t c : text) {
    if (c < 0x80) {
      utf8 += static_cast<char>(c);
    } else {
      utf8 += static_cast<char>(0xC0 | c >> 6);
      utf8 += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
}

lxw_error writeSheet(lxw_workbook* workbook, long rows) {
  lxw_worksheet* const sheet = workbook_add_worksheet(workbook, nullptr);
  lxw_format* const bold = workbook_add_format(workbook);
  format_set_bold(bold);
  std::string text;
  putUtf8(text, kTitle);
  lxw_error error = worksheet_write_string(sheet, 0, 0, text.c_str(), bold);
  Ledger ledger;
  for (lxw_row_t row = 1; row <= static_cast<lxw_row_t>(rows) && error == LXW_NO_ERROR; ++row) {
    lxw_col_t column = 0;
    for (const wchar_t* cell : ledger.next()) {
      putUtf8(text, cell);
      error = worksheet_write_string(sheet, row, column++, text.c_str(), nullptr);
    }
  }
  return error;
}

}  // namespace

std::string writeWithXlsxwriter(Format format, long rows, const std::string& file) {
  if (format != Format::Xlsx) {
    return "libxlsxwriter writes xlsx only";
  }
  std::string folder = std::filesystem::absolute(file).parent_path().string();
  lxw_workbook_options options{};
  options.constant_memory = LXW_TRUE;
  options.tmpdir = folder.data();
  lxw_workbook* const workbook = workbook_new_opt(file.c_str(), &options);
  const lxw_error written = writeSheet(workbook, rows);
  const lxw_error closed = workbook_close(workbook);
  const lxw_error error = written == LXW_NO_ERROR ? closed : written;
  return error == LXW_NO_ERROR ? std::string() : lxw_strerror(error);
}

}  // namespace scrivalen::bench
