#include "formats/pdf/layout/items.h"

#include "formats/pdf/layout/line_breaking.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace scrivalen::pdf {
namespace {

// Each line begins with its own step down, so the distance between two lines is twice the style's lead.
template <typename View>
Points layoutLines(Pages& pages, PageText& lines, const DrawStyle& style, View text, Points x, Points y, Points width) {
  static constexpr typename View::value_type kBlank[] = {' '};
  OffPaperCheck* const check = pages.offPaperCheck(lines);
  for (;;) {
    if (y - style.height < kBottomLimit) {
      pages.breakPage();
      y = pages.paper().top();
    }
    const TextLine line = nextLine(text, width, style.widths);
    const bool emptyLine = line.length == 0 && text.starts_with('\n');
    if (check) {
      check->line(text.substr(0, line.length), style, x, y, pages.pageBreaks());
    }
    lines.beginText(x, y, style);
    lines.showText(emptyLine ? View(kBlank, 1) : text.substr(0, line.length), style);
    y -= 2 * style.lead;
    if (line.last) {
      return y;
    }
    text.remove_prefix(line.next);
  }
}

std::uint32_t lengthOf(std::size_t length) {
  if (length > std::numeric_limits<std::uint32_t>::max()) {
    throw std::length_error("The text of an item is too long");
  }
  return static_cast<std::uint32_t>(length);
}

}  // namespace

void CPDFtextItem::setText(std::string_view bytes) {
  length_ = lengthOf(bytes.size());
  text_ = bytes.data();
  isWide_ = false;
}

void CPDFtextItem::setText(std::u16string_view units) {
  length_ = lengthOf(units.size());
  text_ = units.data();
  isWide_ = true;
}

Points CPDFitem::Layout(Pages&, PageText&, Points y) { return y; }

void CPDFitem::AttachLink(LinkWriter& writer, const CPDFlink& link) const { writer.addAnnotation(this, link); }

Points CPDFitem::leadingGap(Pages& pages, PageText& lines, std::uint32_t style, Points y) {
  const Points lead = pages.drawStyle(style).lead;
  if (y - lead < kBottomLimit) {
    pages.breakPage();
    return pages.paper().top();
  }
  lines.moveDown(y - lead);
  return y - lead;
}

Points CPDFtextItem::layoutText(Pages& pages, PageText& lines, Points x, Points y, Points width) const {
  if (hasNoText()) {
    return y;
  }
  const DrawStyle& drawn = pages.drawStyle(style_);
  return visitText([&](auto view) { return layoutLines(pages, lines, drawn, view, x, y, width); });
}

// Text that does not fit begins on the next page. Conforming links lead there; classic links lead to the position where
// it would have begun.
Points CPDFtextItem::beginOfText(Pages& pages, Points y) const {
  const Points top = pages.paper().top();
  const auto fitsAt = [&](Points from) { return from - pages.drawStyle(style_).height >= kBottomLimit; };
  if (pages.form() == PDFStuffer::Form::Classic || hasNoText() || fitsAt(y) || !fitsAt(top)) {
    return y;
  }
  pages.breakPage();
  return top;
}

void CPDFitem::place(Pages& pages, const Placement& placement) const {
  if (needsPlacement()) {
    pages.placements()[this] = placement;
  }
}

Points CPDFparagraf::Layout(Pages& pages, PageText& lines, Points y) {
  const Points width = pages.paper().usableWidth();
  const Points top = beginOfText(pages, leadingGap(pages, lines, style(), y));
  PDFStuffer::CPDFPage* const startPage = pages.current();
  const Points bottom = layoutText(pages, lines, kLeftMargin, top, width);
  place(pages, {startPage, pages.current(), top, bottom, width, kLeftMargin});
  if (OffPaperCheck* const check = pages.offPaperCheck(lines)) {
    check->endParagraph();
  }
  return bottom;
}

void CPDFoutlineItem::AttachLink(LinkWriter& writer, const CPDFlink& link) const {
  std::unique_ptr<std::u16string> title;
  if (!hasNoText()) {
    title = visitText([](auto view) {
      auto units = std::make_unique<std::u16string>();
      std::transform(view.begin(), view.end(), std::back_inserter(*units), [](auto c) { return unitOf(c); });
      return units;
    });
  }
  writer.addOutlineEntry(std::move(title), place_, link);
}

}  // namespace scrivalen::pdf
