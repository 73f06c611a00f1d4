#include "formats/docx/tables/table_writer.h"

#include "formats/docx/paragraphs.h"
#include "formats/docx/text/run_style.h"
#include "formats/docx/xml.h"

#include <algorithm>

namespace scrivalen::document::docx {
namespace {

constexpr std::string_view kRowStart = "<w:tr><w:trPr><w:cantSplit/></w:trPr>";
constexpr std::string_view kRepeatedRowStart = "<w:tr><w:trPr><w:cantSplit/><w:tblHeader/></w:trPr>";
constexpr std::string_view kRowEnd = "</w:tr>\n";
constexpr std::string_view kPlainCellEnd = "</w:r></w:p></w:tc>";
constexpr int kUsualPadding = 4 * kUsualTableHalfPoints;

std::string cellStart(int width) {
  return joined({"<w:tc><w:tcPr><w:tcW w:w=\"", std::to_string(width), "\" w:type=\"dxa\"/>"});
}

// Text that is aligned to the left needs no element.
std::string_view cellAlignment(Align align, bool isRightToLeft) {
  return align == Align::Left && !isRightToLeft ? std::string_view() : alignmentElement(align, isRightToLeft);
}

}  // namespace

// A line break is an element of its own.
bool TableWriter::isPlain(const Row& row) const {
  return WordTables::isPlain(row) && std::none_of(row.cells.begin(), row.cells.end(), [](const Cell& cell) {
           return cell.text.find('\n') != std::string_view::npos;
         });
}

void TableWriter::prepare() {
  textStyle_ = styles_.tableReference(plan().halfPoints, false);
  headingStyle_ = styles_.tableReference(plan().halfPoints, true);
  leads_.clear();
  int before = 0;
  const std::vector<int>& edges = plan().parts.front().edges;
  for (std::size_t i = 0; i < std::min(aligns().size(), edges.size()); ++i) {
    leads_.push_back(joined({cellStart(edges[i] - before), "</w:tcPr><w:p><w:pPr>", textStyle_,
                             cellAlignment(aligns()[i], false), "</w:pPr><w:r>"}));
    before = edges[i];
  }
}

void TableWriter::writeBegin(const TablePart& part) {
  put(out(), "<w:tbl><w:tblPr><w:tblStyle w:val=\"Table\"/>");
  put(out(), isRightToLeft() ? "<w:bidiVisual/>" : "");
  put(out(), "<w:tblW w:w=\"", part.edges.back(), "\" w:type=\"dxa\"/>");
  put(out(), "<w:tblInd w:w=\"", indent(), "\" w:type=\"dxa\"/><w:tblLayout w:type=\"fixed\"/>");
  // The widths of the columns are made for this space, which the style of a reference may not have.
  if (look_ || plan().padding != kUsualPadding) {
    put(out(), "<w:tblCellMar><w:left w:w=\"", plan().padding, "\" w:type=\"dxa\"/>");
    put(out(), "<w:right w:w=\"", plan().padding, "\" w:type=\"dxa\"/></w:tblCellMar>");
  }
  writeLook();
  int edge = 0;
  for (const int next : part.edges) {
    put(out(), "<w:gridCol w:w=\"", next - edge, "\"/>");
    edge = next;
  }
  put(out(), "</w:tblGrid>\n");
}

// Which parts of the table's style apply.
void TableWriter::writeLook() {
  const bool hasBands = look_ && look_->hasBands;
  put(out(), joined({"<w:tblLook w:val=\"0", hasBands ? "4" : "6",
                     hasHeader() ? "20\" w:firstRow=\"1\"" : "00\" w:firstRow=\"0\"",
                     " w:lastRow=\"0\" w:firstColumn=\"0\" w:lastColumn=\"0\" w:noHBand=\"", hasBands ? "0" : "1",
                     "\" w:noVBand=\"1\"/></w:tblPr><w:tblGrid>"}));
}

// Readers join tables that have nothing between them.
void TableWriter::writeEnd() {
  put(out(), "</w:tbl>\n<w:p><w:pPr>");
  put(out(), styleReference(Style::TableSpace));
  put(out(), "</w:pPr></w:p>\n");
}

void TableWriter::writePlainRow(const Row& row) {
  put(out(), kRowStart);
  for (std::size_t i = 0; i < row.cells.size(); ++i) {
    put(out(), leads_[i]);
    if (!row.cells[i].text.empty()) {
      writeTextElement(out(), row.cells[i].text);
    }
    put(out(), kPlainCellEnd);
  }
  put(out(), kRowEnd);
}

void TableWriter::writeRow(OutputBuffer& out, const Row& row, const Places& places) {
  put(out, row.repeated ? kRepeatedRowStart : kRowStart);
  writeCells(out, row, places);
  put(out, kRowEnd);
}

void TableWriter::writeCell(OutputBuffer& out, const Row& row, const Place& place) {
  put(out, cellStart(place.width));
  if (place.columns > 1) {
    put(out, "<w:gridSpan w:val=\"", static_cast<std::int64_t>(place.columns), "\"/>");
  }
  writeShade(out, row, place);
  put(out, "</w:tcPr><w:p><w:pPr>");
  put(out, place.cell->header || row.header ? headingStyle_ : textStyle_);
  put(out, row.repeated ? "<w:keepNext/>" : "");
  put(out, place.isRightToLeft ? "<w:bidi/>" : "");
  put(out, cellAlignment(place.align, place.isRightToLeft));
  put(out, "</w:pPr>");
  writeContent(place);
  put(out, "</w:p></w:tc>");
}

// The table's style has the colour of a first row that is a header, and of those after it that are repeated
// (ECMA-376, 17.18.89).
void TableWriter::writeShade(OutputBuffer& out, const Row& row, const Place& place) {
  const bool isShaded = row.header && !((isFirstRow() || row.repeated) && hasHeader());
  if (look_ && isShaded && !place.background) {
    put(out, look_->headerShade);
  } else if (place.background || isShaded) {
    put(out, "<w:shd w:val=\"clear\" w:color=\"auto\" w:fill=\"");
    put(out, place.background ? colorValue(*place.background) : std::string(kHeaderColor));
    put(out, "\"/>");
  }
}

void TableWriter::writeContent(const Place& place) {
  const Cell& cell = *place.cell;
  inlines_.beginText({.color = cell.color}, place.isRightToLeft);
  inlines_.writeHeld();
  if (cell.content != nullptr) {
    cell.replay(inlines_);
  } else if (!cell.text.empty()) {
    inlines_.writeText(cell.text);
  }
}

}  // namespace scrivalen::document::docx
