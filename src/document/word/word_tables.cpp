#include "document/word/word_tables.h"

#include "text/direction.h"

#include <algorithm>
#include <utility>

namespace scrivalen::document {
namespace {

const Cell kNoCell{};

bool isPlainText(const Cell& cell) {
  return cell.content == nullptr && cell.span == 1 && !cell.header && cell.align == Align::Auto && !cell.color &&
         !cell.background;
}

}  // namespace

void WordTables::begin(const Table& table, TablePlan plan, int indent) {
  plan_ = std::move(plan);
  indent_ = indent;
  aligns_.clear();
  for (const Column& column : table.columns) {
    aligns_.push_back(isRightToLeft_ && column.align == Align::Left ? Align::Right : column.align);
  }
  waiting_.assign(plan_.parts.size() > 1 ? plan_.parts.size() : 0, {});
  waitingRows_ = 0;
  hasHeader_ = false;
  hasWritten_ = false;
  prepare();
}

bool WordTables::isPlain(const Row& row) const {
  return !row.header && waiting_.empty() && !inlines_.holdsPlaces() &&
         std::all_of(row.cells.begin(), row.cells.end(), &isPlainText) && !mayHaveDirections(row);
}

bool WordTables::mayHaveDirections(const Row& row) const {
  return isRightToLeft_ ||
         std::any_of(row.cells.begin(), row.cells.end(), [](const Cell& cell) { return hasRightToLeft(cell.text); });
}

void WordTables::row(const Row& row) {
  if (!hasWritten_) {
    hasHeader_ = row.header;
    if (waiting_.empty()) {
      writeBegin(plan_.parts.front());
    }
  }
  if (isPlain(row)) {
    writePlainRow(row);
  } else {
    hasDirections_ = mayHaveDirections(row);
    findColumns(row);
    if (waiting_.empty()) {
      writeRow(out_, row, findPlaces(row, plan_.parts.front()));
    } else {
      writeSplitRow(row);
    }
  }
  hasWritten_ = true;
}

void WordTables::findColumns(const Row& row) {
  columns_.clear();
  std::size_t column = 0;
  for (const Cell& cell : row.cells) {
    columns_.push_back(column);
    column += static_cast<std::size_t>(cell.span);
  }
}

WordTables::Places& WordTables::findPlaces(const Row& row, const TablePart& part) {
  places_.clear();
  for (std::size_t i = 0; i < columns_.size() && columns_[i] < part.end; i = nextCell(i, part)) {
    addPlace(row, i, part);
  }
  return places_;
}

// A part has the first column and its own ones. The cells between them are not looked at: a wide table has as many
// parts as columns, divided by 62.
std::size_t WordTables::nextCell(std::size_t cell, const TablePart& part) const {
  if (cell > 0) {
    return cell + 1;
  }
  const auto after = std::upper_bound(columns_.begin(), columns_.end(), part.first);
  return std::max<std::size_t>(1, static_cast<std::size_t>(after - columns_.begin()) - 1);
}

// A cell that spans several parts has its text in the first of them, a heading in all.
void WordTables::addPlace(const Row& row, std::size_t cell, const TablePart& part) {
  const Cell& given = row.cells[cell];
  const std::size_t column = columns_[cell];
  const std::size_t before = part.columnsBefore(column);
  const std::size_t after = part.columnsBefore(column + static_cast<std::size_t>(given.span));
  if (after == before) {
    return;
  }
  const bool isContinued = column > 0 && column < part.first;
  const Cell& shown = isContinued && !row.header ? kNoCell : given;
  const Direction direction = hasDirections_ ? firstDirection(shown.text) : Direction::LeftToRight;
  const int edge = part.edges[after - 1];
  places_.push_back(
      {.cell = &shown,
       .columns = after - before,
       .width = edge - (before > 0 ? part.edges[before - 1] : 0),
       .edge = edge,
       .align = given.align == Align::Auto ? aligns_[column] : given.align,
       .isRightToLeft = direction == Direction::Neutral ? isRightToLeft_ : direction == Direction::RightToLeft,
       .background = given.background,
       .isRepeated = column == 0 ? part.repeatsFirst() : isContinued});
}

void WordTables::writeCells(OutputBuffer& out, const Row& row, const Places& places) {
  const Room outer = inlines_.room();
  for (const Place& place : places) {
    inlines_.setRoom({std::max(place.width - 2 * plan_.padding, 1), outer.height});
    inlines_.setPlaces(!place.isRepeated);
    writeCell(out, row, place);
  }
  inlines_.setPlaces(true);
  inlines_.setRoom(outer);
}

void WordTables::writeSplitRow(const Row& row) {
  inlines_.setOutput(scratch_);
  for (std::size_t i = 0; i < waiting_.size(); ++i) {
    if (row.repeated) {
      writeHeader(row, i);
    } else {
      writeTo(waiting_[i].rows, row, findPlaces(row, plan_.parts[i]));
    }
  }
  inlines_.setOutput(out_);
  waitingRows_ += row.repeated ? 0 : 1;
  if (waitingRows_ == kRowsOfAPart) {
    writeWaiting();
  }
}

// No two places have one name.
void WordTables::writeHeader(const Row& row, std::size_t part) {
  Waiting& waiting = waiting_[part];
  Places& places = findPlaces(row, plan_.parts[part]);
  const std::size_t begin = waiting.headers.size();
  inlines_.forgetPlaces();
  writeTo(waiting.headers, row, places);
  if (!inlines_.hasWrittenPlaces()) {
    waiting.laterHeaders.append(waiting.headers, begin);
    return;
  }
  for (Place& place : places) {
    place.isRepeated = true;
  }
  writeTo(waiting.laterHeaders, row, places);
}

void WordTables::writeTo(std::string& text, const Row& row, const Places& places) {
  sink_.text = &text;
  writeRow(scratch_, row, places);
  scratch_.flush();
}

void WordTables::writeWaiting() {
  for (std::size_t i = 0; i < waiting_.size(); ++i) {
    writeBegin(plan_.parts[i]);
    out_.write(waiting_[i].headers.data(), waiting_[i].headers.size());
    out_.write(waiting_[i].rows.data(), waiting_[i].rows.size());
    writeEnd();
    waiting_[i].headers = waiting_[i].laterHeaders;
    renumber(waiting_[i].headers);
    waiting_[i].rows.clear();
  }
  waitingRows_ = 0;
}

void WordTables::end() {
  if (!waiting_.empty() && (waitingRows_ > 0 || hasWritten_)) {
    writeWaiting();
  } else if (hasWritten_) {
    writeEnd();
  }
  waiting_.clear();
}

}  // namespace scrivalen::document
