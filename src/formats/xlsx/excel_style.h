#pragma once

#include "formats/xlsx/colors.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen {

/// How cells look; what is not set is as the spreadsheet program has it.
struct CellStyle {
  std::optional<std::wstring> fontFamily;
  std::optional<double> fontSize;  ///< points
  std::optional<Rgb> color;
  std::optional<Rgb> background;
};

/// How the cells of a workbook look.
struct SheetStyle {
  CellStyle cell;
  CellStyle bold;                     ///< of bold cells, which take nothing from the others
  std::optional<double> columnWidth;  ///< of every column, in digits of the default font; else each has its own
  std::uint32_t frozenRows = 0;       ///< how many rows of the first sheet stay in sight when the others are scrolled
};

/// Reads a style text: rules `sheet`, `cell` and `bold`, each with declarations in braces, as in
/// `sheet { font-family: "Arial"; column-width: 20 } bold { color: #FFFFFF; background-color: navy }`.
///
/// A rule takes `font-family` (the first name of a list), `font-size` (points, 1 to 409), `color` and
/// `background-color`; `sheet` holds for the cells of both kinds as far as their own rule says nothing else, and takes
/// `column-width` (1 to 255) and `freeze-rows` (whole rows, up to 1,000) too. Later declarations win. Comments are
/// those of CSS.
/// @param problem  called for each part that is not understood, which is skipped
SheetStyle readStyle(std::wstring_view text, const std::function<void(const std::wstring&)>& problem);

/// What the text of a cell's colour says: `fill`, or `font;fill`. An unknown name colours nothing.
struct CellColors {
  std::optional<Rgb> color;
  std::optional<Rgb> background;
  bool isUnderstood = true;  ///< whether every name is known
};
CellColors readColors(std::wstring_view text);

}  // namespace scrivalen
