#include "formats/rtf/document/tables/table_writer.h"

#include "formats/rtf/document/escape.h"

#include <cstddef>
#include <cstring>

namespace scrivalen::document::rtf {
namespace {

constexpr std::string_view kCellEnd = "\\cell\n";
constexpr std::string_view kRowEnd = "\\row\n";

// Readers join tables that have nothing between them.
constexpr std::string_view kAfterTable = "\\pard\\plain\\sl-160\\slmult0\\fs12\\par\n";

std::string_view cellAlignment(Align align) {
  switch (align) {
    case Align::Center: return "\\qc ";
    case Align::Right: return "\\qr ";
    case Align::Justify: return "\\qj ";
    default: return "\\ql ";
  }
}

}  // namespace

TableWriter::TableWriter(OutputBuffer& out, const ColorTable& colors, InlineWriter& inlines, int font,
                         bool isRightToLeft)
    : WordTables(out, inlines, isRightToLeft),
      colors_(colors),
      inlines_(inlines),
      font_(font),
      cellBorder_("\\clbrdrb\\brdrs\\brdrw5\\brdrcf" + std::to_string(colors.indexOf(kLineColor))) {}

void TableWriter::prepare() {
  paragraph_ = "\\pard\\plain\\intbl\\sb30\\sa30\\fs" + std::to_string(plan().halfPoints);
  leads_.clear();
  for (std::size_t i = 0; i < aligns().size(); ++i) {
    const bool isSame = i > 0 && aligns()[i] == aligns()[i - 1];
    leads_.push_back(isSame ? std::string_view() : cellAlignment(aligns()[i]));
  }
  plain_ = plainDefinition();
}

std::string TableWriter::definitionBegin(bool isRepeated) const {
  return std::string(isRightToLeft() ? "\\trowd\\rtlrow\\taprtl\\trgaph" : "\\trowd\\trgaph") +
         std::to_string(plan().padding) + "\\trleft" + std::to_string(indent()) + "\\trkeep" +
         (isRepeated ? "\\trhdr" : "");
}

std::string TableWriter::plainDefinition() const {
  std::string words = definitionBegin(false);
  for (const int edge : plan().parts.front().edges) {
    words += cellBorder_ + "\\cellx" + std::to_string(indent() + edge);
  }
  return words + paragraph_;
}

void TableWriter::writePlainRow(const Row& row) {
  put(out(), plain_);
  for (std::size_t i = 0; i < row.cells.size(); ++i) {
    put(out(), leads_[i]);
    const std::string_view text = row.cells[i].text;
    if (text.size() > kLongestInPlace) {
      writeText(out(), text);
      put(out(), kCellEnd);
      continue;
    }
    char* const end = putText(out().reserve(spaceForText(text.size()) + kCellEnd.size()), text);
    std::memcpy(end, kCellEnd.data(), kCellEnd.size());
    out().advance(end + kCellEnd.size());
  }
  put(out(), kRowEnd);
}

void TableWriter::writeEnd() { put(out(), kAfterTable); }

void TableWriter::writeRow(OutputBuffer& out, const Row& row, const Places& places) {
  writeDefinition(out, row, places);
  put(out, paragraph_);
  put(out, row.repeated ? "\\keepn" : "");
  put(out, row.header ? "\\b" : "");
  writeCells(out, row, places);
  put(out, kRowEnd);
}

void TableWriter::writeDefinition(OutputBuffer& out, const Row& row, const Places& places) {
  put(out, definitionBegin(row.repeated));
  for (const Place& place : places) {
    put(out, cellBorder_);
    if (place.background || row.header) {
      put(out, "\\clcbpat", colors_.indexOf(place.background.value_or(kHeaderColor)));
    }
    put(out, "\\cellx", indent() + place.edge);
  }
}

void TableWriter::writeCell(OutputBuffer& out, const Row& row, const Place& place) {
  const Cell& cell = *place.cell;
  if (hasDirections()) {
    put(out, place.isRightToLeft ? "\\rtlpar" : "\\ltrpar");
  }
  put(out, cellAlignment(place.align));
  inlines_.writeHeld();
  const bool isBold = cell.header && !row.header;
  const RunStyle style{font_, plan().halfPoints, cell.header || row.header, false};
  if (!isBold && !cell.color) {
    writeContent(out, cell, style, place.isRightToLeft);
  } else {
    put(out, isBold ? "{\\b" : "{");
    if (cell.color) {
      put(out, "\\cf", colors_.indexOf(*cell.color));
    }
    out.put(' ');
    writeContent(out, cell, style, place.isRightToLeft);
    out.put('}');
  }
  put(out, kCellEnd);
}

void TableWriter::writeContent(OutputBuffer& out, const Cell& cell, const RunStyle& style, bool isRightToLeft) {
  if (cell.content == nullptr) {
    return writeRuns(out, cell.text, isRightToLeft, style);
  }
  inlines_.beginText(style, isRightToLeft);
  cell.replay(inlines_);
}

}  // namespace scrivalen::document::rtf
