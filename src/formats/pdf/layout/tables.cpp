#include "formats/pdf/layout/tables.h"

#include "formats/pdf/objects/piece.h"

#include <algorithm>

namespace scrivalen::pdf {
namespace {

constexpr Points kCellIndent = 1;
constexpr Points kFrameLift = 3;  // how far a row's frame is raised

// Limits the columns without cells. If there are more columns than points across the paper, columns have no width and
// their frames coincide, so a thousand of them look like two billion.
constexpr std::int32_t kMaxEmptyColumns = 1000;

}  // namespace

Points CPDFtable::Layout(Pages& pages, PageText& lines, Points y) {
  y = leadingGap(pages, lines, kDefaultStyle, y);
  for (CPDFitem* row = rows.first; row; row = row->next) {
    y = row->Layout(pages, lines, y);
  }
  if (OffPaperCheck* const check = pages.offPaperCheck(lines)) {
    check->endTable();
  }
  return y;
}

Points CPDFtableCell::layOut(Pages& pages, PageText& lines, Points x, Points y, Points width) const {
  const Points top = beginOfText(pages, y);
  PDFStuffer::CPDFPage* const startPage = pages.current();
  const Points bottom = layoutText(pages, lines, x + kCellIndent, top, width);
  place(pages, {startPage, pages.current(), top, bottom, width, x});
  return bottom;
}

CPDFtableRow::Trial CPDFtableRow::tryCells(Pages& pages, const Columns& columns, Points y) const {
  PageText discarded(PageText::Keeping::Nothing);
  Trial trial{y, false};
  std::int32_t column = 0;
  for (const CPDFitem* item = cells_.first; item && !trial.ranOff; item = item->next) {
    const auto& cell = static_cast<const CPDFtableCell&>(*item);
    const Points bottom = cell.layOut(pages, discarded, columns.left(column++), y, columns.width());
    trial.bottom = std::min(trial.bottom, bottom);
    trial.ranOff = bottom > y;
  }
  return trial;
}

// @return the bottom of the lowest cell
Points CPDFtableRow::layOutCells(Pages& pages, PageText& lines, const Columns& columns, Points y) const {
  Points bottom = y;
  std::int32_t column = 0;
  for (const CPDFitem* item = cells_.first; item; item = item->next) {
    const auto& cell = static_cast<const CPDFtableCell&>(*item);
    bottom = std::min(bottom, cell.layOut(pages, lines, columns.left(column++), y, columns.width()));
  }
  return bottom;
}

// A row is laid out on trial first. If a cell runs off the page, the page break stays and the row begins on the next
// page; a second trial finds its height, and only then is the row drawn. Without a page break all three give the same
// lines. The first layout, which keeps no lines, then needs only the trial, and the second one only the height.
Points CPDFtableRow::Layout(Pages& pages, PageText& lines, Points y) {
  const Columns columns(pages.paper(), columns_);
  if (height_ != kUnknown) {
    drawFrame(pages, lines, columns, y, y - height_);
    return layOutCells(pages, lines, columns, y);
  }
  const std::uint64_t pageBreaks = pages.pageBreaks();
  const Trial trial = tryCells(pages, columns, y);
  if (!trial.ranOff && pages.pageBreaks() == pageBreaks) {
    height_ = y - trial.bottom;
    return trial.bottom;
  }
  if (trial.ranOff) {
    y = pages.paper().top();
  }
  PageText discarded(PageText::Keeping::Nothing);
  const Points bottom = layOutCells(pages, discarded, columns, y);
  drawFrame(pages, lines, columns, y, bottom);
  layOutCells(pages, lines, columns, y);
  return bottom;
}

void CPDFtableRow::drawFrame(Pages& pages, PageText& lines, const Columns& columns, Points y, Points bottom) const {
  if (!lines.keepsLines()) {
    return;
  }
  if (OffPaperCheck* const check = pages.offPaperCheck(lines)) {
    check->frame(bottom + kFrameLift, y + kFrameLift, pages.pageBreaks());
  }
  lines.line("ET");
  lines.line("0.0 0.0 0.0 RG");
  PDFStuffer::Piece rest;
  rest.text(" ").number(bottom + kFrameLift).text(" ").number(columns.width()).text(" ");
  rest.number(y - bottom).text(" re\r\n");
  const CPDFitem* cell = cells_.first;
  const std::int32_t drawn = std::min(columns_, std::max(cellCount_, kMaxEmptyColumns));
  for (std::int32_t column = 0; column < drawn; ++column) {
    const Points x = columns.left(column);
    if (cell) {
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

}  // namespace scrivalen::pdf
