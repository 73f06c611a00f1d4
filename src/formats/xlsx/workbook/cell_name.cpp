#include "formats/xlsx/workbook/cell_name.h"

namespace scrivalen::xlsx {

std::string columnName(std::uint32_t column) {
  constexpr std::uint32_t kLetters = 26;
  std::string name;
  for (std::uint32_t rest = column + 1; rest > 0; rest = (rest - 1) / kLetters) {
    name.insert(name.begin(), static_cast<char>('A' + (rest - 1) % kLetters));
  }
  return name;
}

std::string cellName(std::uint32_t row, std::uint32_t column) {
  return columnName(column).append(std::to_string(row + 1));
}

std::string quotedSheetName(std::string_view name) {
  std::string quoted("'");
  for (const char c : name) {
    quoted.append(c == '\'' ? "'" : "").push_back(c);
  }
  return quoted.append("'");
}

std::string rangeName(const CellRange& range) {
  return cellName(range.firstRow, range.firstColumn).append(":").append(cellName(range.lastRow, range.lastColumn));
}

std::string fixedRangeName(const CellRange& range) {
  const auto fixed = [](std::uint32_t row, std::uint32_t column) {
    return std::string("$").append(columnName(column)).append("$").append(std::to_string(row + 1));
  };
  return fixed(range.firstRow, range.firstColumn).append(":").append(fixed(range.lastRow, range.lastColumn));
}

}  // namespace scrivalen::xlsx
