#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace scrivalen::xlsx {

inline constexpr std::uint32_t kMostRows = 1048576;   ///< of a sheet
inline constexpr std::uint32_t kMostColumns = 16384;  ///< of a sheet

/// The letters of a column, counted from 0: A to XFD.
std::string columnName(std::uint32_t column);
/// The name of a cell, whose row and column count from 0, as in "B3".
std::string cellName(std::uint32_t row, std::uint32_t column);

/// A sheet's name as formulas have it, in apostrophes.
std::string quotedSheetName(std::string_view name);

/// Cells in one row or more, all counted from 0.
struct CellRange {
  std::uint32_t firstRow = 0;
  std::uint32_t firstColumn = 0;
  std::uint32_t lastRow = 0;
  std::uint32_t lastColumn = 0;
};

/// As in "A1:C3".
std::string rangeName(const CellRange& range);
/// As in "$A$1:$C$3".
std::string fixedRangeName(const CellRange& range);

}  // namespace scrivalen::xlsx
