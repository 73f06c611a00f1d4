#include "readers/csv/csv_reader.h"

#include "errors.h"
#include "readers/csv/csv_delimiter.h"

#include <csv.h>

#include <exception>
#include <new>
#include <string>

namespace scrivalen::command {
namespace {

class CsvReader {
 public:
  CsvReader(std::string name, char separator, DocumentSink& sink);
  CsvReader(const CsvReader&) = delete;
  CsvReader& operator=(const CsvReader&) = delete;
  ~CsvReader() { csv_free(&parser_); }

  void read(std::string_view text);
  void finish();

 private:
  static void onCell(void* text, std::size_t size, void* reader);
  static void onRow(int end, void* reader);

  void chooseLineEnd(std::string_view text);
  void readLine(std::string_view line);
  void endLine();
  void readPart(std::string_view part);
  void readLooseQuote(const char* quote);
  void cell(std::string_view text);
  void endRow();
  void rethrow();
  [[noreturn]] void fail(std::size_t line, const char* reason) const;

  std::string name_;  // of the input, for messages
  std::string_view blanks_;
  DocumentSink& sink_;
  csv_parser parser_{};
  std::size_t columns_ = 0;  // in the header; 0 until it is read
  std::size_t cells_ = 0;    // of the row that is being read
  std::size_t line_ = 1;
  std::size_t quoteLine_ = 0;  // where the current quoted cell began; 0 outside a quoted cell
  bool cellEnded_ = false;
  bool isLineBlank_ = true;   // so far
  bool beganQuoted_ = false;  // whether the line began inside a quoted cell
  char lineEnd_ = '\0';       // NUL until it is known
  bool endsWithReturn_ = false;
  std::exception_ptr failure_;
};

CsvReader::CsvReader(std::string name, char separator, DocumentSink& sink)
    : name_(std::move(name)), blanks_(separator == '\t' ? " \r\n" : " \t\r\n"), sink_(sink) {
  if (csv_init(&parser_, CSV_STRICT | CSV_STRICT_FINI) != 0) {
    throw std::bad_alloc();
  }
  csv_set_delim(&parser_, static_cast<unsigned char>(separator));
}

// The parser is fed line by line, so that an error can name its line.
void CsvReader::read(std::string_view text) {
  if (lineEnd_ == '\0') {
    chooseLineEnd(text);
  }
  while (!text.empty()) {
    const std::size_t end = lineEnd_ == '\0' ? std::string_view::npos : text.find(lineEnd_);
    readLine(text.substr(0, end == std::string_view::npos ? end : end + 1));
    if (end == std::string_view::npos) {
      return;
    }
    endLine();
    text.remove_prefix(end + 1);
  }
}

// All lines end like the first one. A carriage return at the end of a piece may belong to a line feed in the next
// piece.
void CsvReader::chooseLineEnd(std::string_view text) {
  if (endsWithReturn_) {
    lineEnd_ = text.front() == '\n' ? '\n' : '\r';
    if (lineEnd_ == '\r') {
      endLine();
    }
    return;
  }
  const std::size_t end = text.find_first_of("\r\n");
  if (end == std::string_view::npos) {
    return;
  }
  endsWithReturn_ = end + 1 == text.size() && text[end] == '\r';
  if (!endsWithReturn_) {
    lineEnd_ = text[end] == '\r' && text[end + 1] != '\n' ? '\r' : '\n';
  }
}

void CsvReader::readLine(std::string_view line) {
  cellEnded_ = false;
  isLineBlank_ = isLineBlank_ && line.find_first_not_of(blanks_) == std::string_view::npos;
  readPart(line);
  if (parser_.quoted == 0) {
    quoteLine_ = 0;
  } else if (quoteLine_ == 0 || cellEnded_) {
    quoteLine_ = line_;
  }
}

// The parser skips blank lines. In a table of one column, a blank line is an empty value.
void CsvReader::endLine() {
  if (isLineBlank_ && !beganQuoted_ && columns_ == 1) {
    cell({});
    endRow();
  }
  isLineBlank_ = true;
  beganQuoted_ = parser_.quoted != 0;
  ++line_;
}

void CsvReader::readPart(std::string_view part) {
  while (!part.empty()) {
    const std::size_t done = csv_parse(&parser_, part.data(), part.size(), &onCell, &onRow, this);
    rethrow();
    if (done == part.size()) {
      return;
    }
    if (csv_error(&parser_) != CSV_EPARSE) {
      throw std::bad_alloc();
    }
    if (parser_.quoted != 0) {
      fail(line_, "text after the closing quote of a cell");
    }
    readLooseQuote(part.data() + done);
    part.remove_prefix(done + 1);
  }
}

// A quote inside an unquoted cell, as in 3.5" disk. The strict parser stops before it; in non-strict mode it accepts
// the quote.
void CsvReader::readLooseQuote(const char* quote) {
  csv_set_opts(&parser_, CSV_STRICT_FINI);
  csv_parse(&parser_, quote, 1, &onCell, &onRow, this);
  csv_set_opts(&parser_, CSV_STRICT | CSV_STRICT_FINI);
}

void CsvReader::finish() {
  if (csv_fini(&parser_, &onCell, &onRow, this) != 0) {
    fail(quoteLine_, "a quoted cell begins here but never ends");
  }
  rethrow();
  if (columns_ > 0) {
    sink_.end();
  }
}

void CsvReader::onCell(void* text, std::size_t size, void* reader) {
  auto& self = *static_cast<CsvReader*>(reader);
  try {
    self.cellEnded_ = true;
    if (!self.failure_) {
      self.cell({static_cast<const char*>(text), size});
    }
  } catch (...) {
    self.failure_ = std::current_exception();
  }
}

void CsvReader::onRow(int, void* reader) {
  auto& self = *static_cast<CsvReader*>(reader);
  try {
    if (!self.failure_) {
      self.endRow();
    }
  } catch (...) {
    self.failure_ = std::current_exception();
  }
}

void CsvReader::cell(std::string_view text) {
  if (cells_ == 0) {
    if (columns_ == 0) {
      sink_.beginTable();
    }
    sink_.beginRow(columns_ == 0);
  }
  ++cells_;
  sink_.cell(text);
}

void CsvReader::endRow() {
  sink_.end();
  columns_ = columns_ == 0 ? cells_ : columns_;
  cells_ = 0;
}

// The parser is C code: exceptions must not pass through it.
void CsvReader::rethrow() {
  if (failure_) {
    std::rethrow_exception(failure_);
  }
}

void CsvReader::fail(std::size_t line, const char* reason) const {
  throw InputError("'" + name_ + "', line " + std::to_string(line) + ": " + reason);
}

// Enough to tell what separates the cells: of a pipe, what comes with its first line.
std::string beginningOf(TextInput& input) {
  constexpr std::size_t kLongLine = 65536;
  std::string start;
  while (start.find_first_of("\r\n") == start.npos && start.size() < kLongLine) {
    const std::string_view piece = input.next();
    if (piece.empty()) {
      break;
    }
    start += piece;
  }
  return start;
}

}  // namespace

void readCsv(TextInput& input, std::optional<char> delimiter, DocumentSink& sink) {
  const std::string start = delimiter ? std::string() : beginningOf(input);
  CsvReader reader(input.name(), delimiter ? *delimiter : csvDelimiterOf(start), sink);
  reader.read(start);
  for (std::string_view piece = input.next(); !piece.empty(); piece = input.next()) {
    reader.read(piece);
  }
  reader.finish();
}

}  // namespace scrivalen::command
