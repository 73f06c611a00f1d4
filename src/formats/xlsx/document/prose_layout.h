#pragma once

#include "formats/xlsx/document/block_writer.h"
#include "formats/xlsx/document/sheet/sheet_writer.h"

#include <cstdint>

namespace scrivalen::xlsx {

/// How the text of a row outside tables is shown on a sheet.
struct ProseText {
  CellFormat format;
  double heightPt;  ///< of its row
  bool isJoined;    ///< whether it needs the cells beside it
};

/// A text that is too long for the columns it may cover is wrapped in them. One that does not begin at the edge of the
/// sheet would be cut there, so it gets them, too.
ProseText proseTextOf(const ProseRow& row, const SheetLayout& layout);

/// A picture, made as small as the sheet asks for.
PlacedPicture fittedPicture(PlacedPicture picture, const SheetLayout& layout);

inline constexpr double kProsePictureEdge = 2;  ///< in points: above and below a picture, together

/// Some rows of a sheet.
struct RowsExtent {
  std::uint32_t rows = 0;
  double heightPt = 0;

  void add(double height) {
    ++rows;
    heightPt += height;
  }
};

/// Adds the rows that a text and its pictures take: the text, if there is one, and each picture.
void addExtent(RowsExtent& extent, const ProseRow& row, const SheetLayout& layout);

}  // namespace scrivalen::xlsx
