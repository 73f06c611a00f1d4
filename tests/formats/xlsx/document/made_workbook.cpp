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

void MadeWorkbook::setting(const char* name, const char* value) {
  EXPECT_EQ(scrivalen_set(get(), name, value), SCRIVALEN_OK) << error();
}

void MadeWorkbook::styles(std::string_view text) {
  const std::wstring path = folder / L"styles";
  writeBytes(path, text);
  setting("styles", narrowPath(path).c_str());
}

void MadeWorkbook::end(int count) {
  for (; count > 0; --count) {
    EXPECT_EQ(scrivalen_end(get()), SCRIVALEN_OK) << error();
  }
}

void MadeWorkbook::text(const char* text) { EXPECT_EQ(scrivalen_text(get(), text, kNul), SCRIVALEN_OK) << error(); }

void MadeWorkbook::paragraph(const char* text) { EXPECT_EQ(scrivalen_paragraph(get(), text, kNul), SCRIVALEN_OK); }

void MadeWorkbook::heading(int level, const char* text) {
  EXPECT_EQ(scrivalen_heading(get(), level, text, kNul), SCRIVALEN_OK);
}

void MadeWorkbook::span(int kind, const char* content) {
  scrivalen_begin_span(get(), kind);
  text(content);
  end();
}

void MadeWorkbook::link(const char* address, const char* content, const char* title) {
  scrivalen_begin_link(get(), address, title);
  text(content);
  end();
}

void MadeWorkbook::item(const char* content, int task) {
  scrivalen_begin_item(get(), task);
  text(content);
  end();
}

void MadeWorkbook::row(std::initializer_list<const char*> cells, int header) {
  scrivalen_begin_row(get(), header);
  for (const char* cell : cells) {
    scrivalen_cell(get(), cell, kNul);
  }
  end();
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
