#include "readers/csv/csv_rows.h"

#include "errors.h"
#include "readers/csv/csv_delimiter.h"

#include <algorithm>
#include <cstring>

namespace scrivalen::command {
namespace {

constexpr std::size_t kLongLine = 65536;
constexpr std::size_t kMostCells = 1000000;  // as many as a table of the library has columns

bool isLineEnd(int c) { return c == '\n' || c == '\r'; }

// LF, CR and CR LF each end a line.
std::size_t linesIn(std::string_view text) {
  std::size_t lines = 0;
  for (std::size_t at = text.find('\n'); at != text.npos; at = text.find('\n', at + 1)) {
    ++lines;
  }
  for (std::size_t at = text.find('\r'); at != text.npos; at = text.find('\r', at + 1)) {
    lines += at + 1 < text.size() && text[at + 1] == '\n' ? 0 : 1;
  }
  return lines;
}

// Makes one quote of two.
std::size_t withoutDoubledQuotes(char* text, std::size_t size) {
  char* out = text;
  for (const char* at = text; at < text + size; ++at) {
    *out++ = *at;
    at += *at == '"' ? 1 : 0;
  }
  return static_cast<std::size_t>(out - text);
}

}  // namespace

// The delimiter is found from what comes with the first line of a pipe.
CsvRows::CsvRows(TextInput& input, std::optional<char> delimiter) : input_(input) {
  if (delimiter) {
    delimiter_ = *delimiter;
    return;
  }
  while (text_.find_first_of("\r\n") == text_.npos && text_.size() < kLongLine && readMore()) {
  }
  delimiter_ = csvDelimiterOf(text_);
}

bool CsvRows::next() {
  rowBegin_ += at_;
  at_ = 0;
  line_ = currentLine_;
  extents_.clear();
  cells_.clear();
  bool isQuoted = false;
  do {
    skipBlanks();
    isQuoted = peek() == '"';
    extents_.push_back(isQuoted ? quotedCell() : unquotedCell());
    if (extents_.size() > kMostCells) {
      fail(currentLine_, "a row has at most 1,000,000 cells");
    }
  } while (endCell());
  const bool isBlankLine = extents_.size() == 1 && extents_.front().size == 0 && !isQuoted;
  if (isBlankLine) {
    return currentLine_ > line_;
  }
  for (const Extent& cell : extents_) {
    cells_.emplace_back(text_.data() + rowBegin_ + cell.begin, cell.size);
  }
  return true;
}

inline int CsvRows::peek() {
  if (rowBegin_ + at_ == text_.size() && !readMore()) {
    return kEnd;
  }
  return static_cast<unsigned char>(text_[rowBegin_ + at_]);
}

bool CsvRows::readMore() {
  text_.erase(0, rowBegin_);
  rowBegin_ = 0;
  const std::string_view more = input_.next();
  text_ += more;
  return !more.empty();
}

void CsvRows::skipBlanks() {
  while (isBlank(peek())) {
    ++at_;
  }
}

CsvRows::Extent CsvRows::unquotedCell() {
  const std::size_t begin = at_;
  for (int c = peek(); c != kEnd && c != delimiter_ && !isLineEnd(c); c = peek()) {
    const char* const first = text_.data() + rowBegin_ + at_;
    const char* const last = text_.data() + text_.size();
    const char* const end =
        std::find_if(first, last, [this](char each) { return each == delimiter_ || each == '\n' || each == '\r'; });
    at_ += static_cast<std::size_t>(end - first);
  }
  std::size_t end = at_;
  while (end > begin && isBlank(text_[rowBegin_ + end - 1])) {
    --end;
  }
  return {begin, end - begin};
}

CsvRows::Extent CsvRows::quotedCell() {
  const std::size_t lineOfQuote = currentLine_;
  Extent cell{++at_, 0};
  bool hasQuotes = false;
  for (;;) {
    if (peek() == kEnd) {
      fail(lineOfQuote, "a quoted cell begins here but never ends");
    }
    const char* const first = text_.data() + rowBegin_ + at_;
    const std::size_t size = text_.size() - rowBegin_ - at_;
    const void* const quote = std::memchr(first, '"', size);
    at_ += quote ? static_cast<std::size_t>(static_cast<const char*>(quote) - first) + 1 : size;
    if (!quote) {
      continue;
    }
    if (peek() != '"') {
      break;
    }
    hasQuotes = true;
    ++at_;
  }
  cell.size = at_ - 1 - cell.begin;
  endQuotedCell(cell, hasQuotes);
  return cell;
}

void CsvRows::endQuotedCell(Extent& cell, bool hasQuotes) {
  char* const text = text_.data() + rowBegin_ + cell.begin;
  currentLine_ += linesIn({text, cell.size});
  if (hasQuotes) {
    cell.size = withoutDoubledQuotes(text, cell.size);
  }
  skipBlanks();
  if (const int c = peek(); c != kEnd && c != delimiter_ && !isLineEnd(c)) {
    fail(currentLine_, "text after the closing quote of a cell; inside quotes, a quote is written twice");
  }
}

// @return whether another cell follows
bool CsvRows::endCell() {
  const int c = peek();
  if (c == kEnd) {
    return false;
  }
  ++at_;
  if (c == delimiter_) {
    return true;
  }
  if (c == '\r' && peek() == '\n') {
    ++at_;
  }
  ++currentLine_;
  return false;
}

void CsvRows::fail(std::size_t line, const char* reason) const {
  throw InputError("'" + input_.name() + "', line " + std::to_string(line) + ": " + reason);
}

}  // namespace scrivalen::command
