#include "formats/markdown/table_rows.h"

#include "text/columns/character_width.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace scrivalen::markdown {

using namespace document;

namespace {

constexpr std::size_t kWidestTable = 120;
constexpr std::size_t kBetween = 3;  // characters between two columns

// The shortest cell of the row of hyphens: some readers want three of them.
std::size_t shortest(Align align) { return align == Align::Right ? 4 : align == Align::Center ? 5 : 3; }

std::size_t widthOf(const char* begin, const char* end) {
  const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  const std::string_view text(begin, static_cast<std::size_t>(end - begin));
  return std::all_of(begin, end, isAscii) ? text.size() : columnsOf(text);
}

}  // namespace

void TableRows::begin(const Table& table) {
  lines_.startBlock(Block::Table);
  columns_.clear();
  std::size_t whole = 1;
  for (const auto& column : table.columns) {
    columns_.push_back({column.align, std::max(column.longestLine, shortest(column.align))});
    whole += columns_.back().width + kBetween;
  }
  if (whole > kWidestTable) {
    for (Column& column : columns_) {
      column.width = 0;
    }
  }
  isFirstRow_ = true;
}

void TableRows::startRow(const Row& row) {
  isHeaderRow_ = row.header;
  if (isFirstRow_ && !row.repeated) {
    writeEmptyRow();
    writeDelimiters();
    isFirstRow_ = false;
  }
  if (row.header && !isFirstRow_) {
    losses_.count(Loss::HeaderRows);
  }
  lines_.startLine();
}

void TableRows::endRow() {
  out_.write("|\n", 2);
  if (isFirstRow_) {
    writeDelimiters();
    isFirstRow_ = false;
  }
}

void TableRows::writeEmptyRow() {
  lines_.startLine();
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    writePlain({}, column);
  }
  out_.write("|\n", 2);
}

void TableRows::writeDelimiters() {
  std::string line;
  for (const Column& column : columns_) {
    std::string cell(std::max(column.width, shortest(column.align)), '-');
    if (column.align == Align::Center) {
      cell.front() = ':';
    }
    if (column.align == Align::Center || column.align == Align::Right) {
      cell.back() = ':';
    }
    line += "| " + cell + ' ';
  }
  lines_.startLine();
  line += "|\n";
  out_.write(line.data(), line.size());
}

void TableRows::writePlain(std::string_view text, std::size_t column) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  text = text.substr(0, text.find_last_not_of(' ') + 1);
  const Column& form = columns_[column];
  char* const begin = out_.reserve(text.size() * Escaper::kGrowth + kWidestTable + kBetween);
  std::memcpy(begin, "| ", 2);
  escaper_.beginLine();
  char* end = escaper_.put(begin + 2, text, text.size());
  end = form.width > 0 ? pad(begin + 2, end, form) : end;
  *end = ' ';
  out_.advance(end + 1);
}

// Pads a cell that is still in the buffer. @return its end
char* TableRows::pad(char* begin, char* end, const Column& column) const {
  const std::size_t width = widthOf(begin, end);
  if (width >= column.width) {
    return end;
  }
  const std::size_t missing = column.width - width;
  const std::size_t before = column.align == Align::Right ? missing : column.align == Align::Center ? missing / 2 : 0;
  if (before > 0) {
    std::memmove(begin + before, begin, static_cast<std::size_t>(end - begin));
    std::memset(begin, ' ', before);
  }
  std::memset(end + before, ' ', missing - before);
  return end + missing;
}

void TableRows::startCell() {
  out_.write("| ", 2);
  cellStart_ = out_.position();
}

// What was written may have left the buffer, so blanks can only follow it.
void TableRows::endCell(std::size_t column) {
  for (std::uint64_t width = out_.position() - cellStart_; width < columns_[column].width; ++width) {
    out_.put(' ');
  }
  out_.put(' ');
}

void TableRows::finishCell(const Cell& cell, std::size_t column) {
  for (std::size_t i = 1; i < static_cast<std::size_t>(cell.span); ++i) {
    writePlain({}, column + i);
  }
  const auto count = [this](Loss loss, bool isLost) {
    if (isLost) {
      losses_.count(loss);
    }
  };
  count(Loss::Spans, cell.span > 1);
  count(Loss::HeaderCells, cell.header && !isHeaderRow_);
  count(Loss::CellAligns, cell.align != Align::Auto && cell.align != columns_[column].align);
  count(Loss::CellColors, cell.color || cell.background);
}

}  // namespace scrivalen::markdown
