#pragma once

#include "readers/text_input.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

/// Divides separated values into rows and cells. Blanks around a cell are dropped, unless they are in quotes. A quote
/// inside an unquoted cell is an ordinary character; any other misplaced one raises an InputError that names the line.
class CsvRows {
 public:
  /// @param input      not owned; must outlive this object
  /// @param delimiter  an ASCII character; nothing: found from the first rows
  CsvRows(TextInput& input, std::optional<char> delimiter);

  /// Reads the next row. A blank line is a row without cells. @return false after the last row
  bool next();
  /// The cells of the row, valid until the next call.
  const std::vector<std::string_view>& cells() const { return cells_; }
  const std::string& input() const { return input_.name(); }
  /// Where the row begins, counted from 1.
  std::size_t line() const { return line_; }

 private:
  // Positions are relative to the beginning of the row, which moves when more text is read.
  struct Extent {
    std::size_t begin;
    std::size_t size;
  };

  static constexpr int kEnd = -1;

  int peek();
  bool readMore();
  void skipBlanks();
  bool isBlank(int c) const { return (c == ' ' || c == '\t') && c != delimiter_; }
  Extent unquotedCell();
  Extent quotedCell();
  void endQuotedCell(Extent& cell, bool hasQuotes);
  bool endCell();
  [[noreturn]] void fail(std::size_t line, const char* reason) const;

  TextInput& input_;
  std::string text_;  // from the row that is being read on
  std::size_t rowBegin_ = 0;
  std::size_t at_ = 0;
  std::size_t line_ = 0;
  std::size_t currentLine_ = 1;
  char delimiter_ = ',';
  std::vector<Extent> extents_;
  std::vector<std::string_view> cells_;
};

}  // namespace scrivalen::command
