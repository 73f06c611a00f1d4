#include "formats/pdf/typeset/pages/text_drawer.h"

#include <algorithm>
#include <cstddef>

namespace scrivalen::typeset {
namespace {

Length freeSpaceBefore(document::Align align, Length free) {
  switch (align) {
    case document::Align::Right: return free;
    case document::Align::Center: return free / 2;
    default: return 0;
  }
}

}  // namespace

void TextDrawer::drawPiece(Length x, Length baseline, const TextStyle& style, std::string_view bytes,
                           Length wordSpace) {
  fonts_.at(style.font).use(bytes);
  pages_.canvas().text(x, baseline - style.rise, style.font, style.size, style.color, bytes, wordSpace);
}

void TextDrawer::draw(const StyledText& text, const TextLine& line, const LineSpace& space, document::Align align) {
  const Length free = std::max<Length>(space.width - line.width, 0);
  const bool isJustified = align == document::Align::Justify && line.isBroken && line.blanks > 0;
  const Length wordSpace = isJustified ? free / static_cast<Length>(line.blanks) : 0;
  const Length baseline = space.top + line.baseline;
  Length x = space.left + freeSpaceBefore(align, free);
  int link = -1;
  Length linkBegin = x;
  const auto endLink = [&] {
    if (link >= 0 && x > linkBegin) {
      pages_.link({linkBegin, space.top, x - linkBegin, line.height}, text.links[static_cast<std::size_t>(link)]);
    }
  };
  forEachPiece(text, line, [&](const LinePiece& piece) {
    const TextStyle& style = *piece.style;
    if (style.link != link) {
      endLink();
      link = style.link;
      linkBegin = x;
    }
    const auto blanks = std::count(piece.bytes.begin(), piece.bytes.end(), ' ');
    const Length width =
        fonts_.at(style.font).widthOf(piece.bytes, style.size) + static_cast<Length>(blanks) * wordSpace;
    decorate(style, x, baseline, width);
    drawPiece(x, baseline, style, piece.bytes, wordSpace);
    x += width;
  });
  endLink();
  notePlaces(text, line, space.top);
}

void TextDrawer::decorate(const TextStyle& style, Length x, Length baseline, Length width) {
  Canvas& canvas = pages_.canvas();
  const FontMeasures& m = fonts_.at(style.font).measures();
  const Length own = baseline - style.rise;
  if (style.background) {
    const Length above = scaled(m.ascent, style.size);
    canvas.area(x, own - above, width, above - scaled(m.descent, style.size), *style.background);
  }
  if (style.isUnderlined) {
    canvas.area(x, own - scaled(m.underlineTop, style.size), width, scaled(m.underlineSize, style.size), style.color);
  }
  if (style.isDeleted) {
    canvas.area(x, own - scaled(m.strikeTop, style.size), width, scaled(m.strikeSize, style.size), style.color);
  }
}

void TextDrawer::notePlaces(const StyledText& text, const TextLine& line, Length top) {
  for (const TextAnchor& anchor : text.anchors) {
    const bool isLast = !line.isBroken && line.end == text.bytes.size();
    if (anchor.at >= line.begin && (anchor.at <= line.end || isLast)) {
      places_.add(anchor.name, pages_.placeAt(top));
    }
  }
}

}  // namespace scrivalen::typeset
