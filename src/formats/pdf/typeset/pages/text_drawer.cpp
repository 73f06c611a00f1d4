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

void TextDrawer::drawBytes(Length x, Length baseline, const TextStyle& style, FontUse font, std::string_view bytes) {
  if (font.composite == 0) {
    fonts_.at(font.typeface).use(bytes);
  }
  pages_.canvas().text(x, baseline - style.rise, font, style.size, style.color, bytes);
}

Length TextDrawer::drawShort(Length x, Length baseline, const TextStyle& style, std::string_view text) {
  Length width = 0;
  for (const ShapedRun& run : shaper_.shape(text, {style.font, style.size})) {
    pages_.canvas().glyphs(x + width, baseline - style.rise, run.font, style.size, style.color, run.content);
    width += run.width;
    countMissing(run.missing);
  }
  return width;
}

Length TextDrawer::widthOf(std::string_view text, const TextStyle& style) {
  Length width = 0;
  for (const ShapedRun& run : shaper_.shape(text, {style.font, style.size})) {
    width += run.width;
  }
  return width;
}

void TextDrawer::draw(const StyledText& text, const SetText& set, const TextLine& line, const LineSpace& space,
                      document::Align align) {
  if (align == document::Align::Auto || align == document::Align::Justify) {
    align = set.isRightToLeft ? document::Align::Right : document::Align::Left;
  }
  const Length baseline = space.top + line.baseline;
  Length x = space.left + freeSpaceBefore(align, std::max<Length>(space.width - line.width, 0));
  int link = -1;
  Length linkBegin = x;
  const auto endLink = [&] {
    if (link >= 0 && x > linkBegin) {
      pages_.link({linkBegin, space.top, x - linkBegin, line.height}, text.links[static_cast<std::size_t>(link)]);
    }
  };
  for (std::size_t i = line.firstPiece; i < line.endPiece; ++i) {
    const TextPiece& piece = set.pieces[i];
    const TextStyle& style = text.spans[piece.span].style;
    if (style.link != link) {
      endLink();
      link = style.link;
      linkBegin = x;
    }
    if (piece.picture >= 0) {
      const TextPicture& picture = text.pictures[static_cast<std::size_t>(piece.picture)];
      const Length height = picture.height * piece.width / std::max<Length>(picture.width, 1);
      pages_.image({x, baseline - height, piece.width, height}, picture.object, picture.orientation);
    } else {
      decorate(style, x, baseline, piece.width);
      pages_.canvas().glyphs(x, baseline - style.rise, piece.font, style.size, style.color,
                             std::string_view(set.content).substr(piece.begin, piece.end - piece.begin));
      countMissing(piece.missing);
    }
    x += piece.width;
  }
  endLink();
  notePlaces(text, set, line, space.top);
}

void TextDrawer::countMissing(std::optional<Script> script) {
  if (script) {
    shaper_.countMissing(*script);
  }
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

void TextDrawer::notePlaces(const StyledText& text, const SetText& set, const TextLine& line, Length top) {
  const bool isLast = &line == &set.lines.back();
  for (const TextAnchor& anchor : text.anchors) {
    if (anchor.at >= line.begin && (anchor.at < line.end || isLast || line.begin == line.end)) {
      places_.add(anchor.name, pages_.placeAt(top));
    }
  }
}

}  // namespace scrivalen::typeset
