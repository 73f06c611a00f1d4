#pragma once

#include "document/model/warnings.h"
#include "document/settings/settings.h"
#include "formats/xlsx/workbook/cell_formats.h"

#include <cstdint>
#include <optional>

namespace scrivalen::xlsx {

/// The looks that the settings "font" and "styles" ask for.
struct Looks {
  CellFormat body;
  CellFormat header;                        ///< of a table; its font is also that of headings
  double digitWidth = 1;                    ///< of the cells' font, at most, in digits of the usual one
  bool isHeadingSized = true;               ///< whether headings are larger than text
  std::optional<double> columnWidth;        ///< of all columns, in digits
  std::optional<std::uint32_t> frozenRows;  ///< of each sheet that begins with a table

  /// @param formats  gets the names of the fonts, and its first format
  static Looks of(const document::FormatSettings& settings, document::OutputWarnings& warnings, CellFormats& formats);
};

}  // namespace scrivalen::xlsx
