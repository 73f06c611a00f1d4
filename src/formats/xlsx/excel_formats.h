#pragma once

#include "formats/xlsx/excel_style.h"
#include "formats/xlsx/workbook/cell_formats.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

namespace scrivalen {

/// The formats of a report's cells: that of plain ones, that of bold ones, and one for each pair of colours.
class ExcelFormats {
 public:
  /// The format of a cell that has none: the spreadsheet program's default.
  static constexpr std::uint32_t kNone = 0;

  explicit ExcelFormats(const SheetStyle& style);

  std::uint32_t plain() const { return plain_; }
  std::uint32_t bold() const { return bold_; }
  /// @param colors  a colour text; one that sets no colour makes a plain cell
  std::uint32_t colored(const std::wstring& colors);

  /// How many colour texts were not understood, or exceeded the number of colours.
  std::uint64_t refused() const { return refused_; }
  const std::wstring& firstRefused() const { return firstRefused_; }

  /// The part with the formats.
  std::string xml() const { return formats_.xml(); }

 private:
  struct Entry {
    std::uint32_t format;
    bool isUnderstood;
  };

  Entry make(const std::wstring& colors);
  void refuse(const std::wstring& colors);

  static constexpr std::size_t kMostTexts = 100000;

  xlsx::CellFormat plainFormat_;
  xlsx::CellFormats formats_;
  std::uint32_t plain_ = kNone;
  std::uint32_t bold_ = kNone;
  std::map<std::wstring, Entry, std::less<>> byText_;
  std::uint64_t refused_ = 0;
  std::wstring firstRefused_;
};

}  // namespace scrivalen
