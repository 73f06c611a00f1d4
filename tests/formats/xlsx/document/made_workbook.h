#pragma once

#include "api/api_support.h"
#include "support/files.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace scrivalen::test {

/// A document with a workbook as its output.
struct MadeWorkbook : Written {
  MadeWorkbook() : Written("xlsx") {}

  std::wstring file();
  /// The cells, one a line, as in `A1 "text" bold`.
  std::string cells();
  /// The cells, with names and widths.
  std::string all();
  /// The part of the file that has this sheet and how it is shown.
  std::string sheet(int number = 1);
  std::string part(std::string_view name);
  bool sheetHas(std::string_view xml, int number = 1) { return sheet(number).find(xml) != std::string::npos; }
  /// Gives it a style sheet.
  void styles(std::string_view text);

  void table(std::initializer_list<const char*> header, std::initializer_list<const char*> row1);
  /// Begins a table with this column only.
  void beginColumn(int type, int decimals = 0, const char* format = nullptr, int align = 0);

  const TemporaryFolder folder;
};

/// What the header of a table looks like, in a list of cells.
inline const std::string kHeaderLook = " bold fill=F2F2F2";

}  // namespace scrivalen::test
