#pragma once

#include "document/model/table.h"
#include "formats/text/text_lines.h"
#include "output/output_buffer.h"
#include "text/columns/line_breaks.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::text {

/// Writes tables in columns, with two blanks between them. The text of a cell is wrapped; a word that is wider than its
/// column pushes the rest of its line to the right. With a separator each row is one line instead, with the separator
/// between its cells.
class TextTable {
 public:
  /// @param hasEqualColumns  whether all columns are equally wide
  /// @param separator        empty: columns
  TextTable(OutputBuffer& out, TextLines& lines, bool hasEqualColumns, std::string_view separator)
      : out_(out), lines_(lines), hasEqualColumns_(hasEqualColumns), separator_(separator) {}

  void begin(const document::Table& table);
  void row(const document::Row& row);
  void end();

 private:
  // Where the text of a column is, counted from the table's left side.
  struct Slot {
    std::size_t begin = 0;
    std::size_t columns = 0;
    document::Align align = document::Align::Left;
  };
  struct Place {
    std::size_t begin;
    std::size_t columns;
  };
  struct OpenCell {
    Slot slot;
    LineReader reader;
    Line line;
  };

  Slot slotOf(const document::Cell& cell, std::size_t column) const;
  static std::size_t beginOfText(const Slot& slot, std::size_t columns, std::size_t used);
  bool placeCells(const document::Row& row);
  void writePlaced(const document::Row& row);
  void writeSeparated(const document::Row& row);
  void writeWrapped(const document::Row& row);
  void writeLine();
  void writeDashes();
  void separate(bool isWrapped, bool isHeader);

  OutputBuffer& out_;
  TextLines& lines_;
  bool hasEqualColumns_;
  std::string separator_;
  std::vector<Slot> slots_;
  std::vector<Place> places_;
  std::vector<OpenCell> open_;
  std::string line_;
  std::size_t columnsOfRow_ = 0;  // of the row that has its places
  bool isAfterHeader_ = false;
  bool isAfterWrapped_ = false;
  bool isFirstOfBody_ = true;
};

}  // namespace scrivalen::text
