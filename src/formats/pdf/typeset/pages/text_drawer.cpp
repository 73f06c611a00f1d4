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

// The style whose underline the pieces from one on have: that of the largest text that is not raised.
const TextStyle* styleOfUnderline(const StyledText& text, const SetText& set, const TextLine& line, std::size_t piece) {
  const auto styleAt = [&](std::size_t i) { return &text.spans[set.pieces[i].span].style; };
  const TextStyle* found = styleAt(piece);
  for (; piece < line.endPiece && styleAt(piece)->isUnderlined; ++piece) {
    const TextStyle* const style = styleAt(piece);
    const bool isBetter = found->rise != 0 ? style->rise == 0 : style->rise == 0 && style->size > found->size;
    found = isBetter && set.pieces[piece].picture < 0 ? style : found;
  }
  return found;
}

// Whether a line ends between two words, and not in one or at the end of the text.
bool endsWord(const StyledText& text, const TextLine& line) {
  const std::string& all = text.text;
  return line.end > line.begin && line.end + 1 < all.size() && (all[line.end] == '\n' || all[line.end - 1] == ' ');
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
                      document::Align align, TextTags* tags) {
  if (align == document::Align::Auto || align == document::Align::Justify) {
    align = set.isRightToLeft ? document::Align::Right : document::Align::Left;
  }
  const Length baseline = space.top + line.baseline;
  Length x = space.left + freeSpaceBefore(align, std::max<Length>(space.width - line.width, 0));
  int link = -1;
  Length linkBegin = x;
  const TextStyle* underlined = nullptr;
  const auto endLink = [&] {
    if (link >= 0 && x > linkBegin && pages_.takesLink(text.links[static_cast<std::size_t>(link)].address)) {
      const std::int64_t key = tags != nullptr ? tags->newLinkKey() : -1;
      const int annotation = pages_.link({linkBegin, space.top, x - linkBegin, line.height}, text, link, key);
      if (tags != nullptr) {
        tags->addLink(annotation);
      }
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
    if (tags != nullptr) {
      tags->enter(text, style);
    }
    if (piece.picture >= 0) {
      drawPicture(text, piece, x, baseline, tags);
    } else {
      underlined = !style.isUnderlined ? nullptr : underlined ? underlined : styleOfUnderline(text, set, line, i);
      decorate(style, underlined, x, baseline, piece.width);
      if (tags != nullptr) {
        tags->show();
      }
      pages_.canvas().glyphs(x, baseline - style.rise, piece.font, style.size, style.color,
                             std::string_view(set.content).substr(piece.begin, piece.end - piece.begin));
      countMissing(piece.missing);
    }
    x += piece.width;
  }
  if (tags != nullptr && line.endPiece > line.firstPiece && endsWord(text, line)) {
    drawBlank(x, baseline, text.spans[set.pieces[line.endPiece - 1].span].style, *tags);
  }
  endLink();
  notePlaces(text, set, line, space.top);
}

void TextDrawer::countMissing(std::optional<char32_t> c) {
  if (c) {
    shaper_.countMissing(*c);
  }
}

// Tagged text has a blank between any two words (PDF 1.7, 14.8.2.5), also where a line ends.
void TextDrawer::drawBlank(Length x, Length baseline, const TextStyle& style, TextTags& tags) {
  constexpr std::string_view kBlank = " ";
  if (fonts_.at(style.font).has(kBlank)) {
    tags.show();
    drawBytes(x, baseline, style, {style.font, 0}, kBlank);
  }
}

void TextDrawer::drawPicture(const StyledText& text, const TextPiece& piece, Length x, Length baseline,
                             TextTags* tags) {
  const TextPicture& picture = text.pictures[static_cast<std::size_t>(piece.picture)];
  const Box box{x, baseline - piece.height, piece.width, piece.height};
  const bool isFigure = tags != nullptr && tags->beginPicture(picture, pages_.edgesOf(box));
  pages_.image(box, picture.object, picture.orientation);
  if (isFigure) {
    tags->endPicture();
  }
}

// The line under a text is straight, and as thick under its bold words and raised letters.
void TextDrawer::decorate(const TextStyle& style, const TextStyle* underlined, Length x, Length baseline,
                          Length width) {
  Canvas& canvas = pages_.canvas();
  const FontMeasures& m = fonts_.at(style.font).measures();
  const Length own = baseline - style.rise;
  if (style.background) {
    const Length above = scaled(m.ascent, style.size);
    canvas.area(x, own - above, width, above - scaled(m.descent, style.size), *style.background);
  }
  if (underlined != nullptr) {
    const FontMeasures& line = fonts_.at(underlined->font).measures();
    canvas.area(x, baseline - underlined->rise - scaled(line.underlineTop, underlined->size), width,
                scaled(line.underlineSize, underlined->size), style.color);
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
