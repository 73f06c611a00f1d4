#include "formats/pdf/layout/items.h"

#include "formats/pdf/layout/line_breaking.h"
#include "formats/pdf/objects/numbers.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace scrivalen::pdf {
namespace {

constexpr Points kCellIndent = 1;
constexpr Points kFrameLift = 3;  // of a row's lower edge, above its lowest text

// Of columns that have no cell. More columns than the paper has points have no width: their frames all stand on one
// spot, where a thousand of them look like two thousand million.
constexpr std::int32_t kMostEmptyColumns = 1000;

// The gap above a paragraph or a table.
Points leadingGap(Pages& pages, PageText& lines, const DrawStyle& style, Points y) {
  if (y - style.lead < kBottomLimit) {
    pages.breakPage();
    return pages.paper().top();
  }
  lines.moveDown(y - style.lead);
  return y - style.lead;
}

// Each line begins with a step down of its own, so that the distance of two lines is twice the style's lead.
template <typename View>
Points layoutLines(Pages& pages, PageText& lines, const DrawStyle& style, View text, Points x, Points y, Points width) {
  static constexpr typename View::value_type kBlank[] = {' '};
  for (;;) {
    if (y - style.height < kBottomLimit) {
      pages.breakPage();
      y = pages.paper().top();
    }
    const TextLine line = nextLine(text, width, style.widths);
    const bool emptyLine = line.length == 0 && text.starts_with('\n');
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

void CPDFitem::setText(std::string_view bytes) {
  length_ = lengthOf(bytes.size());
  text_ = bytes.data();
  isWide_ = false;
}

void CPDFitem::setText(std::u16string_view units) {
  length_ = lengthOf(units.size());
  text_ = units.data();
  isWide_ = true;
}

Points CPDFitem::Layout(Pages&, PageText&, Points y) { return y; }

void CPDFitem::AttachLink(LinkWriter& writer, const CPDFitem* target) const { writer.addAnnotation(this, target); }

Points CPDFitem::layoutText(Pages& pages, PageText& lines, Points x, Points y, Points width) const {
  if (hasNoText()) {
    return y;
  }
  const DrawStyle& drawn = pages.drawStyle(style);
  return visitText([&](auto view) { return layoutLines(pages, lines, drawn, view, x, y, width); });
}

// A text that does not fit begins on the next page. In a conforming document links lead there; classic ones lead to
// where it would have begun.
Points CPDFitem::beginOfText(Pages& pages, Points y) const {
  const Points top = pages.paper().top();
  const auto fitsAt = [&](Points from) { return from - pages.drawStyle(style).height >= kBottomLimit; };
  if (pages.form() == PDFStuffer::Form::Classic || hasNoText() || fitsAt(y) || !fitsAt(top)) {
    return y;
  }
  pages.breakPage();
  return top;
}

void CPDFitem::place(Pages& pages, const Placement& placement) const {
  if (isPlaced()) {
    pages.placements()[this] = placement;
  }
}

Points CPDFparagraf::Layout(Pages& pages, PageText& lines, Points y) {
  const Points width = pages.paper().usableWidth();
  const Points top = beginOfText(pages, leadingGap(pages, lines, pages.drawStyle(style), y));
  PDFStuffer::CPDFPage* const startPage = pages.current();
  const Points bottom = layoutText(pages, lines, kLeftMargin, top, width);
  place(pages, {startPage, pages.current(), top, bottom, width, kLeftMargin});
  return bottom;
}

Points CPDFtable::Layout(Pages& pages, PageText& lines, Points y) {
  y = leadingGap(pages, lines, pages.drawStyle(style), y);
  for (CPDFitem* row = rows.first; row; row = row->next) {
    y = row->Layout(pages, lines, y);
  }
  return y;
}

Points CPDFtableCell::layOut(Pages& pages, PageText& lines, Points y, Points width) const {
  const Points top = beginOfText(pages, y);
  PDFStuffer::CPDFPage* const startPage = pages.current();
  const Points x = column * width + kLeftMargin;
  const Points bottom = layoutText(pages, lines, x + kCellIndent, top, width);
  place(pages, {startPage, pages.current(), top, bottom, width, x});
  return bottom;
}

template <typename Function>
void CPDFtableRow::forEachCell(Function function) const {
  for (const CPDFitem* cell = cells.first; cell; cell = cell->next) {
    function(static_cast<const CPDFtableCell&>(*cell));
  }
}

CPDFtableRow::Trial CPDFtableRow::tryCells(Pages& pages, Points y, Points width) const {
  PageText& scratch = pages.scratch();
  scratch.clear();
  const std::uint64_t pageBreaks = pages.pageBreaks();
  Trial trial{y, true, false};
  forEachCell([&](const CPDFtableCell& cell) {
    if (!trial.ranOff) {
      const Points bottom = cell.layOut(pages, scratch, y, width);
      trial.bottom = std::min(trial.bottom, bottom);
      trial.ranOff = bottom > y;
    }
  });
  trial.stands = !trial.ranOff && pages.pageBreaks() == pageBreaks;
  return trial;
}

// A row is tried first: when a cell runs off the page, which breaks it for good, the row begins on the next one; then
// it is tried again for its height, and only then laid out. Without a page break all three give the same lines.
Points CPDFtableRow::Layout(Pages& pages, PageText& lines, Points y) {
  const Points width = columns == 0 ? 0 : pages.paper().usableWidth() / columns;
  const Trial trial = tryCells(pages, y, width);
  if (trial.stands) {
    drawFrame(pages, lines, y, trial.bottom, width);
    lines.append(pages.scratch());
    return trial.bottom;
  }
  if (trial.ranOff) {
    y = pages.paper().top();
  }
  Points bottom = y;
  PageText nowhere(PageText::Keeping::Nothing);
  forEachCell([&](const CPDFtableCell& cell) { bottom = std::min(bottom, cell.layOut(pages, nowhere, y, width)); });
  drawFrame(pages, lines, y, bottom, width);
  forEachCell([&](const CPDFtableCell& cell) { cell.layOut(pages, lines, y, width); });
  return bottom;
}

void CPDFtableRow::drawFrame(Pages& pages, PageText& lines, Points y, Points bottom, Points width) const {
  if (!lines.keepsLines()) {
    return;
  }
  lines.line("ET");
  lines.line("0.0 0.0 0.0 RG");
  PDFStuffer::Piece rest;
  rest.text(" ").number(bottom + kFrameLift).text(" ").number(width).text(" ").number(y - bottom).text(" re\r\n");
  // A cell for which there was no memory is missing between the others.
  const CPDFitem* cell = cells.first;
  const std::int32_t drawn = std::min(columns, std::max(cellCount, kMostEmptyColumns));
  for (std::int32_t i = 0; i < drawn; ++i) {
    const Points x = kLeftMargin + i * width;
    if (cell && cell->column == columnIndex(i)) {
      lines.line(pages.background(static_cast<const CPDFtableCell*>(cell)->background));
      lines.rectangle(x, rest.view());
      lines.line("F");
      cell = cell->next;
    }
    lines.rectangle(x, rest.view());
    lines.line("S");
  }
  lines.line("BT");
}

void CPDFoutlineItem::AttachLink(LinkWriter& writer, const CPDFitem* target) const {
  std::unique_ptr<std::u16string> title;
  if (!hasNoText()) {
    title = visitText([](auto view) {
      auto units = std::make_unique<std::u16string>();
      std::transform(view.begin(), view.end(), std::back_inserter(*units), [](auto c) { return unitOf(c); });
      return units;
    });
  }
  writer.addOutlineEntry(std::move(title), level, target);
}

}  // namespace scrivalen::pdf
