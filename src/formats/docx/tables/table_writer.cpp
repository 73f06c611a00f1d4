#include "formats/docx/tables/table_writer.h"

#include "formats/docx/paragraphs.h"
#include "formats/docx/text/run_style.h"
#include "formats/docx/xml.h"
#include "text/direction.h"

#include <algorithm>
#include <utility>

namespace scrivalen::document::docx {
namespace {

constexpr std::string_view kRowStart = "<w:tr><w:trPr><w:cantSplit/></w:trPr>";
constexpr std::string_view kRepeatedRowStart = "<w:tr><w:trPr><w:cantSplit/><w:tblHeader/></w:trPr>";
constexpr std::string_view kRowEnd = "</w:tr>\n";
constexpr std::string_view kPlainCellEnd = "</w:r></w:p></w:tc>";
constexpr int kUsualPadding = 4 * kUsualTableHalfPoints;

bool isPlainCell(const Cell& cell) {
  return cell.content == nullptr && cell.span == 1 && !cell.header && cell.align == Align::Auto && !cell.color &&
         !cell.background && cell.text.find('\n') == std::string_view::npos;
}

std::string cellStart(int width) {
  return joined({"<w:tc><w:tcPr><w:tcW w:w=\"", std::to_string(width), "\" w:type=\"dxa\"/>"});
}

// Text that is aligned to the left needs no element.
std::string_view cellAlignment(Align align, bool isRightToLeft) {
  return align == Align::Left && !isRightToLeft ? std::string_view() : alignmentElement(align, isRightToLeft);
}

int widthBetween(const TablePart& part, std::size_t before, std::size_t after) {
  return part.edges[after - 1] - (before > 0 ? part.edges[before - 1] : 0);
}

}  // namespace

void TableWriter::begin(const Table& table, TablePlan plan, int indent) {
  plan_ = std::move(plan);
  indent_ = indent;
  textStyle_ = styles_.tableReference(plan_.halfPoints, false);
  headingStyle_ = styles_.tableReference(plan_.halfPoints, true);
  aligns_.clear();
  leads_.clear();
  const std::vector<int>& edges = plan_.parts.front().edges;
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    const Align given = table.columns[i].align;
    aligns_.push_back(isRightToLeft_ && given == Align::Left ? Align::Right : given);
    if (i < edges.size()) {
      const int width = edges[i] - (i > 0 ? edges[i - 1] : 0);
      leads_.push_back(joined(
          {cellStart(width), "</w:tcPr><w:p><w:pPr>", textStyle_, cellAlignment(aligns_[i], false), "</w:pPr><w:r>"}));
    }
  }
  waiting_.assign(plan_.parts.size() > 1 ? plan_.parts.size() : 0, {});
  waitingRows_ = 0;
  hasWritten_ = false;
}

void TableWriter::writeStart(const TablePart& part) {
  put(out_, "<w:tbl><w:tblPr><w:tblStyle w:val=\"Table\"/>");
  put(out_, isRightToLeft_ ? "<w:bidiVisual/>" : "");
  put(out_, "<w:tblW w:w=\"", part.edges.back(), "\" w:type=\"dxa\"/>");
  put(out_, "<w:tblInd w:w=\"", indent_, "\" w:type=\"dxa\"/><w:tblLayout w:type=\"fixed\"/>");
  if (plan_.padding != kUsualPadding) {
    put(out_, "<w:tblCellMar><w:left w:w=\"", plan_.padding, "\" w:type=\"dxa\"/>");
    put(out_, "<w:right w:w=\"", plan_.padding, "\" w:type=\"dxa\"/></w:tblCellMar>");
  }
  put(out_, hasHeader_ ? "<w:tblLook w:val=\"0620\" w:firstRow=\"1\"" : "<w:tblLook w:val=\"0600\" w:firstRow=\"0\"");
  put(out_,
      " w:lastRow=\"0\" w:firstColumn=\"0\" w:lastColumn=\"0\" w:noHBand=\"1\" w:noVBand=\"1\"/></w:tblPr><w:tblGrid>");
  int edge = 0;
  for (const int next : part.edges) {
    put(out_, "<w:gridCol w:w=\"", next - edge, "\"/>");
    edge = next;
  }
  put(out_, "</w:tblGrid>\n");
}

bool TableWriter::isPlain(const Row& row) const {
  return !row.header && waiting_.empty() && !inlines_.holdsPlaces() &&
         std::all_of(row.cells.begin(), row.cells.end(), &isPlainCell) && !hasDirections(row);
}

bool TableWriter::hasDirections(const Row& row) const {
  return isRightToLeft_ ||
         std::any_of(row.cells.begin(), row.cells.end(), [](const Cell& cell) { return hasRightToLeft(cell.text); });
}

void TableWriter::row(const Row& row) {
  if (!hasWritten_) {
    hasHeader_ = row.header;
    isFirstRow_ = true;
    if (waiting_.empty()) {
      writeStart(plan_.parts.front());
    }
  }
  if (isPlain(row)) {
    writePlainRow(row);
  } else {
    hasDirections_ = hasDirections(row);
    findColumns(row);
    if (waiting_.empty()) {
      writeRow(out_, row, plan_.parts.front());
    } else {
      writeSplitRow(row);
    }
  }
  hasWritten_ = true;
  isFirstRow_ = false;
}

void TableWriter::findColumns(const Row& row) {
  columns_.clear();
  std::size_t column = 0;
  for (const Cell& cell : row.cells) {
    columns_.push_back(column);
    column += static_cast<std::size_t>(cell.span);
  }
}

// A part has the first column and its own ones. The cells between them are not looked at: a wide table has as many
// parts as columns, divided by 62.
std::size_t TableWriter::nextCell(std::size_t cell, const TablePart& part) const {
  if (cell > 0) {
    return cell + 1;
  }
  const auto after = std::upper_bound(columns_.begin(), columns_.end(), part.first);
  return std::max<std::size_t>(1, static_cast<std::size_t>(after - columns_.begin()) - 1);
}

void TableWriter::writePlainRow(const Row& row) {
  put(out_, kRowStart);
  for (std::size_t i = 0; i < row.cells.size(); ++i) {
    put(out_, leads_[i]);
    if (!row.cells[i].text.empty()) {
      writeTextElement(out_, row.cells[i].text);
    }
    put(out_, kPlainCellEnd);
  }
  put(out_, kRowEnd);
}

void TableWriter::writeSplitRow(const Row& row) {
  inlines_.setOutput(scratch_);
  for (std::size_t i = 0; i < waiting_.size(); ++i) {
    sink_.text = row.repeated ? &waiting_[i].headers : &waiting_[i].rows;
    writeRow(scratch_, row, plan_.parts[i]);
    scratch_.flush();
  }
  inlines_.setOutput(out_);
  waitingRows_ += row.repeated ? 0 : 1;
  if (waitingRows_ == kRowsOfAPart) {
    writeWaiting();
  }
}

void TableWriter::writeWaiting() {
  for (std::size_t i = 0; i < waiting_.size(); ++i) {
    Waiting& part = waiting_[i];
    writeStart(plan_.parts[i]);
    put(out_, part.headers);
    put(out_, part.rows);
    put(out_, "</w:tbl>\n<w:p><w:pPr>");
    put(out_, styleReference(Style::TableSpace));
    put(out_, "</w:pPr></w:p>\n");
    part.rows.clear();
  }
  waitingRows_ = 0;
}

// Readers join tables that have nothing between them.
void TableWriter::end() {
  if (!waiting_.empty() && (waitingRows_ > 0 || hasWritten_)) {
    writeWaiting();
  } else if (hasWritten_) {
    put(out_, "</w:tbl>\n<w:p><w:pPr>");
    put(out_, styleReference(Style::TableSpace));
    put(out_, "</w:pPr></w:p>\n");
  }
  waiting_.clear();
}

void TableWriter::writeRow(OutputBuffer& out, const Row& row, const TablePart& part) {
  put(out, row.repeated ? kRepeatedRowStart : kRowStart);
  for (std::size_t i = 0; i < columns_.size() && columns_[i] < part.end; i = nextCell(i, part)) {
    const Cell& cell = row.cells[i];
    const std::size_t column = columns_[i];
    const std::size_t before = part.columnsBefore(column);
    const std::size_t after = part.columnsBefore(column + static_cast<std::size_t>(cell.span));
    if (after > before) {
      inlines_.setPlaces(column == 0 ? !part.repeatsFirst() : column >= part.first);
      // A cell that spans several parts has its text in the first of them, a heading in all.
      const bool isContinued = column > 0 && column < part.first && !row.header;
      const Cell empty{};
      const Align align = cell.align == Align::Auto ? aligns_[column] : cell.align;
      writeCell(out, {isContinued ? &empty : &cell, after - before, widthBetween(part, before, after), align}, row);
    }
  }
  inlines_.setPlaces(true);
  put(out, kRowEnd);
}

void TableWriter::writeCell(OutputBuffer& out, const Place& place, const Row& row) {
  const Cell& cell = *place.cell;
  const Direction direction = hasDirections_ ? firstDirection(cell.text) : Direction::LeftToRight;
  const bool isRight = direction == Direction::Neutral ? isRightToLeft_ : direction == Direction::RightToLeft;
  put(out, cellStart(place.width));
  if (place.columns > 1) {
    put(out, "<w:gridSpan w:val=\"", static_cast<std::int64_t>(place.columns), "\"/>");
  }
  // The table's style has the colour of the first row if that is a header.
  const bool isShaded = row.header && !(isFirstRow_ && hasHeader_);
  if (cell.background || isShaded) {
    put(out, "<w:shd w:val=\"clear\" w:color=\"auto\" w:fill=\"");
    put(out, cell.background ? colorValue(*cell.background) : std::string(kHeaderColor));
    put(out, "\"/>");
  }
  put(out, "</w:tcPr><w:p><w:pPr>");
  put(out, cell.header || row.header ? headingStyle_ : textStyle_);
  put(out, row.repeated ? "<w:keepNext/>" : "");
  put(out, isRight ? "<w:bidi/>" : "");
  put(out, cellAlignment(place.align, isRight));
  put(out, "</w:pPr>");
  writeContent(out, place, isRight);
  put(out, "</w:p></w:tc>");
}

void TableWriter::writeContent(OutputBuffer& out, const Place& place, bool isRightToLeft) {
  const Cell& cell = *place.cell;
  const Room outer = inlines_.room();
  inlines_.setRoom({std::max(place.width - 2 * plan_.padding, 1), outer.height});
  inlines_.setOutput(out);
  inlines_.beginText({.color = cell.color}, isRightToLeft);
  inlines_.writeHeld();
  if (cell.content != nullptr) {
    cell.replay(inlines_);
  } else if (!cell.text.empty()) {
    inlines_.writeText(cell.text);
  }
  inlines_.setRoom(outer);
}

}  // namespace scrivalen::document::docx
