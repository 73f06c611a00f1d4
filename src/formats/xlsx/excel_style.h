#pragma once

#include "text/colors.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen {

/// A cell format; the spreadsheet program's defaults apply to members that are not set.
struct CellStyle {
  std::optional<std::wstring> fontFamily;
  std::optional<double> fontSize;  ///< points
  std::optional<Rgb> color;
  std::optional<Rgb> background;
};

/// The formats of a workbook.
struct SheetStyle {
  CellStyle cell;
  CellStyle bold;                     ///< of bold cells, which inherit nothing from the others
  std::optional<double> columnWidth;  ///< of every column, in digits of the default font; if not set, each has its own
  std::uint32_t frozenRows = 0;       ///< rows of the first sheet that do not scroll
};

/// Parses a style sheet: rules `sheet`, `cell` and `bold`, each with declarations in braces, as in `sheet {
/// font-family: "Arial"; column-width: 20 } bold { color: #FFFFFF; background-color: navy }`.
///
/// A rule may have `font-family` (the first name of a list), `font-size` (points, 1 to 409), `color` and
/// `background-color`; `sheet` applies to both kinds of cells unless their own rule overrides it, and may also have
/// `column-width` (1 to 255) and `freeze-rows` (whole rows, up to 1,000). Later declarations win. Comments are as in
/// CSS.
/// @param problem  called for each part that is not understood, which is skipped
SheetStyle readStyle(std::wstring_view text, const std::function<void(const std::wstring&)>& problem);

/// The colours in a cell's colour text: `fill`, or `font;fill`. An unknown name sets no colour.
struct CellColors {
  std::optional<Rgb> color;
  std::optional<Rgb> background;
  bool isUnderstood = true;  ///< whether every name is known
};
CellColors readColors(std::wstring_view text);

}  // namespace scrivalen
