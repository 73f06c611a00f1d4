#include "readers/markdown/code_indentation.h"

namespace scrivalen::command {
namespace {

std::size_t columnAfter(std::size_t column, char c) { return c == '\t' ? column / 4 * 4 + 4 : column + 1; }

std::size_t columnAfter(std::size_t column, std::string_view text) {
  for (const char c : text) {
    column = columnAfter(column, c);
  }
  return column;
}

}  // namespace

std::string codeIndentation(std::string_view text, std::size_t at, std::size_t columns) {
  const std::string_view before = text.substr(0, at);
  const std::size_t lineEnd = before.find_last_of("\r\n");
  const std::string_view line = before.substr(lineEnd == before.npos ? 0 : lineEnd + 1);
  const std::size_t last = line.find_last_not_of(" \t");
  std::string_view blanks = line.substr(last == line.npos ? 0 : last + 1);
  if (blanks.find('\t') == blanks.npos) {
    return std::string(columns, ' ');
  }
  const std::size_t end = columnAfter(0, line);
  if (end < columns) {
    return std::string(columns, ' ');
  }
  const std::size_t start = end - columns;
  std::size_t column = columnAfter(0, line.substr(0, line.size() - blanks.size()));
  while (column < start && !blanks.empty()) {
    column = columnAfter(column, blanks.front());
    blanks.remove_prefix(1);
  }
  // A tab may belong to the code in part; CommonMark 0.30, 2.2.
  return std::string(column - start, ' ').append(blanks);
}

}  // namespace scrivalen::command
