#include "readers/csv/csv_rows.h"

#include "errors.h"
#include "readers/csv/csv_delimiter.h"

#include <csv.h>

#include <algorithm>
#include <new>

namespace scrivalen::command {
namespace {

constexpr std::size_t kLongLine = 65536;
constexpr std::size_t kMostCells = 1000000;  // as many as a table of the library has columns

constexpr unsigned char kLoose = CSV_STRICT_FINI | CSV_REPALL_NL;
constexpr unsigned char kStrict = kLoose | CSV_STRICT;

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

}  // namespace

void CsvRows::FreeParser::operator()(csv_parser* parser) const {
  csv_free(parser);
  delete parser;
}

CsvRows::CsvRows(TextInput& input, std::optional<char> delimiter) : input_(input), parser_(new csv_parser{}) {
  csv_init(parser_.get(), kStrict);
  start_ = delimiter ? std::string() : readCsvStart(input_);
  csv_set_delim(parser_.get(), static_cast<unsigned char>(delimiter ? *delimiter : csvDelimiterOf(start_)));
}

bool CsvRows::next() {
  while (nextRow_ == rowEnds_.size()) {
    if (problem_) {
      const std::size_t line = currentLine_ + linesToProblem_;
      throw InputError("'" + input_.name() + "', line " + std::to_string(line) + ": " + problem_);
    }
    if (ended_) {
      return false;
    }
    readMore();
  }
  line_ = currentLine_++;
  cells_.clear();
  for (const std::size_t end = rowEnds_[nextRow_++]; nextCell_ < end; ++nextCell_) {
    cells_.emplace_back(text_.data() + nextText_, cellEnds_[nextCell_] - nextText_);
    nextText_ = cellEnds_[nextCell_];
  }
  if (hasLineEnds_) {
    for (const std::string_view cell : cells_) {
      currentLine_ += linesIn(cell);
    }
  }
  return true;
}

void CsvRows::readMore() {
  dropRows();
  if (!start_.empty()) {
    divide(start_);
    start_.clear();
  } else if (const std::string_view piece = input_.next(); !piece.empty()) {
    divide(piece);
  } else {
    finish();
  }
  // Line ends in cells are rare, so they are looked for in all cells at once.
  hasLineEnds_ = hasLineEnds_ || text_.find('\n', searched_) != text_.npos || text_.find('\r', searched_) != text_.npos;
  searched_ = text_.size();
}

// Leaves the row that is unfinished.
void CsvRows::dropRows() {
  if (rowEnds_.empty()) {
    return;
  }
  text_.erase(0, nextText_);
  cellEnds_.erase(cellEnds_.begin(), cellEnds_.begin() + static_cast<std::ptrdiff_t>(nextCell_));
  for (std::size_t& end : cellEnds_) {
    end -= nextText_;
  }
  rowEnds_.clear();
  nextText_ = nextCell_ = nextRow_ = searched_ = 0;
  hasLineEnds_ = false;
}

void CsvRows::divide(std::string_view piece) {
  // Twice as much each time, for a long cell.
  csv_set_blk_size(parser_.get(), std::max(kLongLine, csv_get_buffer_size(parser_.get())));
  while (!piece.empty() && !problem_) {
    piece.remove_prefix(csv_parse(parser_.get(), piece.data(), piece.size(), &onCell, &onRow, this));
    rethrow();
    if (isRowTooLong()) {
      problem_ = "a row has at most 1,000,000 cells";
      linesToProblem_ = linesInUnfinishedRow();
    } else if (!piece.empty()) {
      readMisplacedQuote(piece);
      piece.remove_prefix(1);
    }
  }
}

// The strict parser stops before a quote inside an unquoted cell, as in 3.5" disk. If it is not strict, it accepts the
// quote.
void CsvRows::readMisplacedQuote(std::string_view rest) {
  if (csv_error(parser_.get()) != CSV_EPARSE) {
    throw std::bad_alloc();
  }
  if (parser_->quoted != 0) {
    problem_ = "text after the closing quote of a cell; inside quotes, a quote is written twice";
    linesToProblem_ = linesInUnfinishedRow() + linesInUnfinishedCell();
    return;
  }
  csv_set_opts(parser_.get(), kLoose);
  csv_parse(parser_.get(), rest.data(), 1, &onCell, &onRow, this);
  csv_set_opts(parser_.get(), kStrict);
}

void CsvRows::finish() {
  ended_ = true;
  if (csv_fini(parser_.get(), &onCell, &onRow, this) != 0) {
    problem_ = "a quoted cell begins here but never ends";
    linesToProblem_ = linesInUnfinishedRow();
  }
  rethrow();
}

// The parser is C code: exceptions must not pass through it.
void CsvRows::rethrow() const {
  if (failure_) {
    std::rethrow_exception(failure_);
  }
}

void CsvRows::onCell(void* text, std::size_t size, void* rows) {
  auto& self = *static_cast<CsvRows*>(rows);
  try {
    self.addCell({static_cast<const char*>(text), size});
  } catch (...) {
    self.failure_ = std::current_exception();
  }
}

void CsvRows::onRow(int end, void* rows) {
  auto& self = *static_cast<CsvRows*>(rows);
  try {
    self.endRow(end);
  } catch (...) {
    self.failure_ = std::current_exception();
  }
}

inline void CsvRows::addCell(std::string_view text) {
  text_ += text;
  cellEnds_.push_back(text_.size());
}

// The parser reports both characters of CR LF, but no blanks between them, which so make no line of their own. A row
// that is too long stays unfinished, as the last one.
inline void CsvRows::endRow(int end) {
  const bool isSecond = end == '\n' && lastEnd_ == '\r' && cellEnds_.size() == unfinishedRow();
  lastEnd_ = end;
  if (!isSecond && !isRowTooLong()) {
    rowEnds_.push_back(cellEnds_.size());
  }
}

bool CsvRows::isRowTooLong() const { return cellEnds_.size() - unfinishedRow() > kMostCells; }

// Of a row that is too long, up to the cell that is one too many.
std::size_t CsvRows::linesInUnfinishedRow() const {
  const std::size_t first = unfinishedRow();
  const std::size_t end = first + std::min(cellEnds_.size() - first, kMostCells + 1);
  std::size_t lines = 0;
  std::size_t begin = first == 0 ? 0 : cellEnds_[first - 1];
  for (std::size_t cell = first; cell < end; ++cell) {
    lines += linesIn(std::string_view(text_).substr(begin, cellEnds_[cell] - begin));
    begin = cellEnds_[cell];
  }
  return lines;
}

std::size_t CsvRows::linesInUnfinishedCell() const {
  return linesIn({reinterpret_cast<const char*>(parser_->entry_buf), parser_->entry_pos});
}

}  // namespace scrivalen::command
