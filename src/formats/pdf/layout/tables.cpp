#include "formats/pdf/layout/tables.h"

#include "formats/pdf/objects/numbers.h"

namespace scrivalen::pdf {
namespace {

constexpr Points kCellIndent = 1;
constexpr Points kFrameLift = 3;  // of a row's lower edge, above its lowest text

// Of columns that have no cell. More columns than the paper has points have no width: their frames are all in one
// place, where a thousand of them look like two thousand million.
constexpr std::int32_t kMostEmptyColumns = 1000;

}  // namespace

Points CPDFtable::Layout(Pages& pages, PageText& lines, Points y) {
  y = leadingGap(pages, lines, y);
  for (CPDFitem* row = rows.first; row; row = row->next) {
    y = row->Layout(pages, lines, y);
  }
  return y;
}

Points CPDFtableCell::layOut(Pages& pages, PageText& lines, const Columns& columns, Points y) const {
  const Points top = beginOfText(pages, y);
  PDFStuffer::CPDFPage* const startPage = pages.current();
  const Points x = columns.left(column);
  const Points bottom = layoutText(pages, lines, x + kCellIndent, top, columns.width());
  place(pages, {startPage, pages.current(), top, bottom, columns.width(), x});
  return bottom;
}

template <typename Function>
void CPDFtableRow::forEachCell(Function function) const {
  for (const CPDFitem* cell = cells.first; cell; cell = cell->next) {
    function(static_cast<const CPDFtableCell&>(*cell));
  }
}

CPDFtableRow::Trial CPDFtableRow::tryCells(Pages& pages, const Columns& edges, Points y) const {
  PageText& scratch = pages.scratch();
  scratch.clear();
  const std::uint64_t pageBreaks = pages.pageBreaks();
  Trial trial{y, true, false};
  forEachCell([&](const CPDFtableCell& cell) {
    if (!trial.ranOff) {
      const Points bottom = cell.layOut(pages, scratch, edges, y);
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
  const Columns edges(pages.paper(), columns);
  const Trial trial = tryCells(pages, edges, y);
  if (trial.stands) {
    drawFrame(pages, lines, edges, y, trial.bottom);
    lines.append(pages.scratch());
    return trial.bottom;
  }
  if (trial.ranOff) {
    y = pages.paper().top();
  }
  Points bottom = y;
  PageText nowhere(PageText::Keeping::Nothing);
  forEachCell([&](const CPDFtableCell& cell) { bottom = std::min(bottom, cell.layOut(pages, nowhere, edges, y)); });
  drawFrame(pages, lines, edges, y, bottom);
  forEachCell([&](const CPDFtableCell& cell) { cell.layOut(pages, lines, edges, y); });
  return bottom;
}

void CPDFtableRow::drawFrame(Pages& pages, PageText& lines, const Columns& edges, Points y, Points bottom) const {
  if (!lines.keepsLines()) {
    return;
  }
  lines.line("ET");
  lines.line("0.0 0.0 0.0 RG");
  PDFStuffer::Piece rest;
  rest.text(" ").number(bottom + kFrameLift).text(" ").number(edges.width()).text(" ");
  rest.number(y - bottom).text(" re\r\n");
  // A cell for which there was no memory is missing between the others.
  const CPDFitem* cell = cells.first;
  const std::int32_t drawn = std::min(columns, std::max(cellCount, kMostEmptyColumns));
  for (std::int32_t i = 0; i < drawn; ++i) {
    if (cell && cell->column == columnIndex(i)) {
      lines.line(pages.background(static_cast<const CPDFtableCell*>(cell)->background));
      lines.rectangle(edges.left(i), rest.view());
      lines.line("F");
      cell = cell->next;
    }
    lines.rectangle(edges.left(i), rest.view());
    lines.line("S");
  }
  lines.line("BT");
}

}  // namespace scrivalen::pdf
