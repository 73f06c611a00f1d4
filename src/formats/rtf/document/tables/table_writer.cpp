#include "formats/rtf/document/tables/table_writer.h"

#include "formats/rtf/document/escape.h"
#include "text/direction.h"

#include <algorithm>
#include <cstring>
#include <utility>

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

bool isPlainCell(const Cell& cell) {
  return cell.content == nullptr && cell.span == 1 && !cell.header && cell.align == Align::Auto && !cell.color &&
         !cell.background;
}

}  // namespace

TableWriter::TableWriter(OutputBuffer& out, const ColorTable& colors, InlineWriter& inlines, int font,
                         bool isRightToLeft)
    : out_(out),
      colors_(colors),
      inlines_(inlines),
      font_(font),
      isRightToLeft_(isRightToLeft),
      cellBorder_("\\clbrdrb\\brdrs\\brdrw5\\brdrcf" + std::to_string(colors.indexOf(kLineColor))),
      scratch_(sink_) {}

void TableWriter::begin(const Table& table, TablePlan plan, int indent) {
  plan_ = std::move(plan);
  indent_ = indent;
  room_ = inlines_.room();
  paragraph_ = "\\pard\\plain\\intbl\\sb30\\sa30\\fs" + std::to_string(plan_.halfPoints);
  aligns_.clear();
  leads_.clear();
  for (const Column& column : table.columns) {
    const Align align = isRightToLeft_ && column.align == Align::Left ? Align::Right : column.align;
    const bool isSame = !aligns_.empty() && aligns_.back() == align;
    leads_.push_back(isSame ? std::string_view() : cellAlignment(align));
    aligns_.push_back(align);
  }
  plain_ = plainDefinition(plan_.parts.front());
  waiting_.assign(plan_.parts.size() > 1 ? plan_.parts.size() : 0, {});
  waitingRows_ = 0;
  hasWritten_ = false;
}

std::string TableWriter::definitionBegin(bool isRepeated) const {
  return std::string(isRightToLeft_ ? "\\trowd\\rtlrow\\taprtl\\trgaph" : "\\trowd\\trgaph") +
         std::to_string(plan_.padding) + "\\trleft" + std::to_string(indent_) + "\\trkeep" +
         (isRepeated ? "\\trhdr" : "");
}

std::string TableWriter::plainDefinition(const TablePart& part) const {
  std::string words = definitionBegin(false);
  for (const int edge : part.edges) {
    words += cellBorder_ + "\\cellx" + std::to_string(indent_ + edge);
  }
  return words + paragraph_;
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
  hasWritten_ = true;
  if (isPlain(row)) {
    return writePlainRow(row);
  }
  hasDirections_ = hasDirections(row);
  findColumns(row);
  if (waiting_.empty()) {
    writeRow(out_, row, plan_.parts.front());
  } else {
    writeSplitRow(row);
  }
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
  put(out_, plain_);
  for (std::size_t i = 0; i < row.cells.size(); ++i) {
    put(out_, leads_[i]);
    const std::string_view text = row.cells[i].text;
    if (text.size() > kLongestInPlace) {
      writeText(out_, text);
      put(out_, kCellEnd);
      continue;
    }
    char* const end = putText(out_.reserve(spaceForText(text.size()) + kCellEnd.size()), text);
    std::memcpy(end, kCellEnd.data(), kCellEnd.size());
    out_.advance(end + kCellEnd.size());
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
  for (Waiting& part : waiting_) {
    put(out_, part.headers);
    put(out_, part.rows);
    put(out_, kAfterTable);
    part.rows.clear();
  }
  waitingRows_ = 0;
}

void TableWriter::end() {
  if (!waiting_.empty() && (waitingRows_ > 0 || hasWritten_)) {
    writeWaiting();
  } else if (hasWritten_) {
    put(out_, kAfterTable);
  }
  waiting_.clear();
}

void TableWriter::writeRow(OutputBuffer& out, const Row& row, const TablePart& part) {
  writeDefinition(out, row, part);
  put(out, paragraph_);
  put(out, row.repeated ? "\\keepn" : "");
  put(out, row.header ? "\\b" : "");
  for (std::size_t i = 0; i < columns_.size() && columns_[i] < part.end; i = nextCell(i, part)) {
    const Cell& cell = row.cells[i];
    const std::size_t column = columns_[i];
    const std::size_t end = column + static_cast<std::size_t>(cell.span);
    const std::size_t before = part.columnsBefore(column);
    const std::size_t after = part.columnsBefore(end);
    if (after > before) {
      room_.width = part.edges[after - 1] - (before > 0 ? part.edges[before - 1] : 0) - 2 * plan_.padding;
      const bool isFirstPart = column == 0 ? !part.repeatsFirst() : column >= part.first;
      inlines_.setPlaces(isFirstPart);
      // A cell that spans several parts has its text in the first of them, a heading in all.
      const bool isContinued = column > 0 && column < part.first && !row.header;
      writeCell(out, isContinued ? Cell{} : cell, row, cell.align == Align::Auto ? aligns_[column] : cell.align);
    }
  }
  inlines_.setPlaces(true);
  put(out, kRowEnd);
}

void TableWriter::writeDefinition(OutputBuffer& out, const Row& row, const TablePart& part) {
  put(out, definitionBegin(row.repeated));
  for (std::size_t i = 0; i < columns_.size() && columns_[i] < part.end; i = nextCell(i, part)) {
    const Cell& cell = row.cells[i];
    const std::size_t column = columns_[i];
    const std::size_t end = column + static_cast<std::size_t>(cell.span);
    const std::size_t after = part.columnsBefore(end);
    if (after > part.columnsBefore(column)) {
      put(out, cellBorder_);
      if (cell.background || row.header) {
        put(out, "\\clcbpat", colors_.indexOf(cell.background.value_or(kHeaderColor)));
      }
      put(out, "\\cellx", indent_ + part.edges[after - 1]);
    }
  }
}

void TableWriter::writeCell(OutputBuffer& out, const Cell& cell, const Row& row, Align align) {
  const Direction direction = hasDirections_ ? firstDirection(cell.text) : Direction::LeftToRight;
  const bool isRight = direction == Direction::Neutral ? isRightToLeft_ : direction == Direction::RightToLeft;
  if (hasDirections_) {
    put(out, isRight ? "\\rtlpar" : "\\ltrpar");
  }
  put(out, cellAlignment(align));
  inlines_.writeHeld();
  const bool isBold = cell.header && !row.header;
  const RunStyle style{font_, plan_.halfPoints, cell.header || row.header, false};
  if (!isBold && !cell.color) {
    writeContent(out, cell, style, isRight);
  } else {
    put(out, isBold ? "{\\b" : "{");
    if (cell.color) {
      put(out, "\\cf", colors_.indexOf(*cell.color));
    }
    out.put(' ');
    writeContent(out, cell, style, isRight);
    out.put('}');
  }
  put(out, kCellEnd);
}

void TableWriter::writeContent(OutputBuffer& out, const Cell& cell, const RunStyle& style, bool isRightToLeft) {
  if (cell.content == nullptr) {
    return writeRuns(out, cell.text, isRightToLeft, style);
  }
  const Room outer = inlines_.room();
  inlines_.setRoom({std::max(room_.width, 1), room_.height});
  inlines_.beginText(style, isRightToLeft);
  cell.replay(inlines_);
  inlines_.setRoom(outer);
}

}  // namespace scrivalen::document::rtf
