#pragma once

#include "document/model/table.h"
#include "formats/markdown/escaping.h"
#include "formats/markdown/lines.h"
#include "formats/markdown/losses.h"
#include "output/output_buffer.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace scrivalen::markdown {

/// Writes the rows of tables. Columns are padded to the width of their sample, unless the table is too wide for an
/// editor's window.
class TableRows {
 public:
  /// The longest text that is written in place.
  static constexpr std::size_t kLongestPlain = 8192;

  /// @param out, lines, losses  not owned; must outlive this object
  TableRows(OutputBuffer& out, Lines& lines, Losses& losses) : out_(out), lines_(lines), losses_(losses) {}

  void begin(const document::Table& table);
  void end() { columns_.clear(); }

  void startRow(const document::Row& row);
  void endRow();
  /// Writes a cell that is only a text.
  void writePlain(std::string_view text, std::size_t column);
  /// Begins a cell whose text the caller writes.
  void startCell();
  void endCell(std::size_t column);
  /// After each cell: writes the empty cells that stand for the other columns it spans, and counts what is lost.
  void finishCell(const document::Cell& cell, std::size_t column);

 private:
  struct Column {
    document::Align align;
    std::size_t width;  // at least so many characters; 0: not padded
  };

  void writeDelimiters();
  void writeEmptyRow();
  char* pad(char* begin, char* end, const Column& column) const;

  OutputBuffer& out_;
  Lines& lines_;
  Losses& losses_;
  Escaper escaper_{Place::Cell};
  std::vector<Column> columns_;
  bool isHeaderRow_ = false;
  bool isFirstRow_ = false;
  std::uint64_t cellStart_ = 0;
};

}  // namespace scrivalen::markdown
