#include "formats/xlsx/document/prose_layout.h"

#include "formats/xlsx/document/sheet/column_layout.h"
#include "formats/xlsx/document/sheet/text_height.h"

#include <algorithm>

namespace scrivalen::xlsx {
namespace {

using document::Align;

Align sideOf(Direction direction) { return direction == Direction::RightToLeft ? Align::Right : Align::Left; }

// Text that is read in the other direction than its sheet begins on the other side. LibreOffice needs
// the direction of text from right to left even in such a sheet. @return whether the text is at the edge
bool align(CellFormat& format, Direction own, bool isRightToLeft) {
  const Direction usual = isRightToLeft ? Direction::RightToLeft : Direction::LeftToRight;
  const bool isOther = own != Direction::Neutral && own != usual;
  format.direction = isOther || own == Direction::RightToLeft ? own : Direction::Neutral;
  const Align side = sideOf(isOther ? own : usual);
  if (format.align == Align::Auto && (isOther || format.indent > 0)) {
    format.align = side;
  }
  const bool isStated = format.align != Align::Auto && format.align != Align::Justify;
  return (isStated ? format.align : side) == sideOf(usual);
}

}  // namespace

ProseText proseTextOf(const ProseRow& row, const SheetLayout& layout) {
  CellFormat format = row.format;
  const double width = layout.proseWidth - format.indent * kDigitsPerIndent;
  format.wraps = linesOf(row.text.text, spaceOf(row.text, format.font, width)) > 1;
  format.isTop = format.wraps;
  const bool isAtEdge = align(format, row.direction, layout.isRightToLeft);
  const bool isJoined = (format.wraps || !isAtEdge) && layout.proseColumns > 1 && !row.text.text.empty();
  const double height = heightOf(row.text, format.font, width);
  return {format, std::clamp(height, kLineHeight, kHighestRow), isJoined};
}

PlacedPicture fittedPicture(PlacedPicture picture, const SheetLayout& layout) {
  const double width = layout.proseWidth * kPointsPerDigit;
  const double scale = std::min({1.0, width / picture.width, kHighestPicture / picture.height});
  picture.width *= scale;
  picture.height *= scale;
  return picture;
}

void addExtent(RowsExtent& extent, const ProseRow& row, const SheetLayout& layout) {
  if (row.hasText()) {
    extent.add(proseTextOf(row, layout).heightPt);
  }
  for (const PlacedPicture& picture : row.text.pictures) {
    extent.add(fittedPicture(picture, layout).height + kProsePictureEdge);
  }
}

}  // namespace scrivalen::xlsx
