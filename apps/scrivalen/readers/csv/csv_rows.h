#pragma once

#include "readers/text_input.h"

#include <cstddef>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct csv_parser;  // of libcsv

namespace scrivalen::command {

/// Divides separated values into rows and cells by libcsv. Blanks around a cell are dropped, unless they are in quotes.
/// A quote inside an unquoted cell is an ordinary character; any other misplaced one raises an InputError that names
/// the line.
class CsvRows {
 public:
  /// @param input      not owned; must outlive this object
  /// @param delimiter  an ASCII character; nothing: found from the first rows
  CsvRows(TextInput& input, std::optional<char> delimiter);
  CsvRows(const CsvRows&) = delete;
  CsvRows& operator=(const CsvRows&) = delete;

  /// Reads the next row. A blank line is a row without cells. @return false after the last row
  bool next();
  /// The cells of the row, valid until the next call.
  const std::vector<std::string_view>& cells() const { return cells_; }
  const std::string& input() const { return input_.name(); }
  /// Where the row begins, counted from 1.
  std::size_t line() const { return line_; }

 private:
  struct FreeParser {
    void operator()(csv_parser* parser) const;
  };

  static void onCell(void* text, std::size_t size, void* rows);
  static void onRow(int end, void* rows);

  void addCell(std::string_view text);
  void endRow(int end);
  void readMore();
  void dropRows();
  void divide(std::string_view piece);
  void readMisplacedQuote(std::string_view rest);
  void finish();
  void rethrow() const;
  std::size_t unfinishedRow() const { return rowEnds_.empty() ? 0 : rowEnds_.back(); }
  bool isRowTooLong() const;
  std::size_t linesInUnfinishedRow() const;
  std::size_t linesInUnfinishedCell() const;

  TextInput& input_;
  std::unique_ptr<csv_parser, FreeParser> parser_;
  std::string start_;                  // read to find the delimiter
  std::string text_;                   // of the cells below, one after the other
  std::vector<std::size_t> cellEnds_;  // in text_; the last ones may belong to a row that is unfinished
  std::vector<std::size_t> rowEnds_;   // in cellEnds_
  std::size_t nextText_ = 0;
  std::size_t nextCell_ = 0;
  std::size_t nextRow_ = 0;
  std::size_t searched_ = 0;  // how much of text_ was searched for line ends
  bool hasLineEnds_ = false;  // in text_, so in quoted cells
  bool ended_ = false;
  int lastEnd_ = 0;  // the character that ended a row last
  std::size_t line_ = 0;
  std::size_t currentLine_ = 1;
  const char* problem_ = nullptr;   // after all the rows above
  std::size_t linesToProblem_ = 0;  // from the beginning of the row that has it
  std::exception_ptr failure_;
  std::vector<std::string_view> cells_;
};

}  // namespace scrivalen::command
