#include "formats/xlsx/document/made_workbook.h"

#include "support/documents/workbook.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

namespace scrivalen::test {

std::wstring MadeWorkbook::file() {
  const std::wstring path = folder / L"made.xlsx";
  writeBytes(path, closed());
  EXPECT_EQ(result, SCRIVALEN_OK) << error();
  return path;
}

std::string MadeWorkbook::cells() { return readCells(file()); }
std::string MadeWorkbook::all() { return readWorkbook(file()); }
std::string MadeWorkbook::part(std::string_view name) { return workbookPart(file(), name); }
std::string MadeWorkbook::sheet(int number) { return part("xl/worksheets/sheet" + std::to_string(number) + ".xml"); }

void MadeWorkbook::styles(std::string_view text) {
  const std::wstring path = folder / L"styles";
  writeBytes(path, text);
  setting("styles", narrowPath(path).c_str());
}

void MadeWorkbook::table(std::initializer_list<const char*> header, std::initializer_list<const char*> row1) {
  scrivalen_begin_table(get(), nullptr, 0, nullptr);
  row(header, 1);
  row(row1);
  end();
}

void MadeWorkbook::beginColumn(int type, int decimals, const char* format, int align) {
  const scrivalen_column column{sizeof column, nullptr, type, align, 0, decimals, format};
  EXPECT_EQ(scrivalen_begin_table(get(), &column, 1, nullptr), SCRIVALEN_OK) << error();
}

}  // namespace scrivalen::test
