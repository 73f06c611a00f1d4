#include "readers/csv/csv_reader.h"

#include "readers/csv/csv_columns.h"
#include "readers/csv/csv_rows.h"
#include "text/ascii.h"
#include "text/values/plain_values.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {
namespace {

using Cells = std::vector<std::string_view>;

// Each row of a table has as many cells as the widest one, most of them empty then.
constexpr std::size_t kMostFurtherCells = 1000;

// Rows that are unlike the header, for one warning about all of them.
class OddRows {
 public:
  void add(std::size_t line) { first_ = count_++ == 0 ? line : first_; }

  /// @param input  its name
  /// @param what   such as "fewer cells than the header"
  void warn(const std::string& input, const std::string& what, TableSink& sink) const {
    if (count_ > 0) {
      const bool isOne = count_ == 1;
      sink.warn("'" + input + "': " + (isOne ? "1 row has " : std::to_string(count_) + " rows have ") + what +
                (isOne ? ", in line " : ", the first in line ") + std::to_string(first_));
    }
  }

 private:
  std::size_t count_ = 0;
  std::size_t first_ = 0;
};

/// Writes the rows of a table to a sink.
class CsvTable {
 public:
  CsvTable(const CsvOptions& options, TableSink& sink) : options_(options), sink_(sink) {}

  void read(CsvRows& rows);

 private:
  void writeHeader(const Cells& cells);
  void writeRow(const Cells& cells, std::size_t line);
  void writeCell(std::string_view text);
  std::string_view joined(const Cells& cells, std::size_t first);
  void describeFurtherColumns(std::size_t count);

  const CsvOptions& options_;
  TableSink& sink_;
  std::vector<std::size_t> chosen_;  // empty: all
  std::size_t columns_ = 0;          // in the header
  std::size_t described_ = 0;        // columns that are not to become values
  OddRows shorter_;
  OddRows longer_;
  OddRows tooLong_;
  std::string joined_;
};

// In a table of one column, a blank line is an empty value.
void CsvTable::read(CsvRows& rows) {
  while (rows.next()) {
    const bool isBlank = rows.cells().empty();
    if (columns_ == 0 && !isBlank) {
      writeHeader(rows.cells());
    } else if (!isBlank) {
      writeRow(rows.cells(), rows.line());
    } else if (columns_ == 1) {
      writeRow({std::string_view()}, rows.line());
    }
  }
  if (columns_ == 0) {
    return;
  }
  sink_.end();
  shorter_.warn(rows.input(), "fewer cells than the header", sink_);
  longer_.warn(rows.input(),
               chosen_.empty() ? "more cells than the header" : "more cells than the header, which are left out",
               sink_);
  tooLong_.warn(rows.input(), "more than 1,000 cells more than the header, which are joined to the last of these",
                sink_);
}

void CsvTable::writeHeader(const Cells& cells) {
  columns_ = cells.size();
  chosen_ = chosenColumns(options_.columns, cells);
  const std::size_t shown = chosen_.empty() ? columns_ : chosen_.size();
  const std::vector<TableColumn> columns = describedColumns(options_, shown);
  sink_.beginTable();
  if (options_.isText || !options_.aligns.empty() || !options_.widths.empty()) {
    for (std::size_t i = 0; i < shown; ++i) {
      sink_.describeColumn(i, columns[i]);
    }
  }
  described_ = shown;
  sink_.beginRow(true);
  for (std::size_t i = 0; i < shown; ++i) {
    sink_.cell(cells[chosen_.empty() ? i : chosen_[i]]);
  }
  sink_.end();
}

void CsvTable::writeRow(const Cells& cells, std::size_t line) {
  if (cells.size() != columns_) {
    (cells.size() < columns_ ? shorter_ : longer_).add(line);
    describeFurtherColumns(cells.size());
  }
  sink_.beginRow(false);
  if (chosen_.empty()) {
    const std::size_t most = columns_ + kMostFurtherCells;
    if (cells.size() > most) {
      tooLong_.add(line);
    }
    for (std::size_t i = 0; i < std::min(cells.size(), most); ++i) {
      writeCell(i + 1 == most ? joined(cells, i) : cells[i]);
    }
  } else {
    for (const std::size_t column : chosen_) {
      writeCell(column < cells.size() ? cells[column] : std::string_view());
    }
  }
  sink_.end();
}

// What a row has from a cell on, in one cell.
std::string_view CsvTable::joined(const Cells& cells, std::size_t first) {
  joined_ = cells[first];
  for (std::size_t i = first + 1; i < cells.size(); ++i) {
    joined_.append(" ").append(cells[i]);
  }
  return joined_;
}

// The header does not say how many columns there are.
void CsvTable::describeFurtherColumns(std::size_t count) {
  if (!options_.isText || !chosen_.empty()) {
    return;
  }
  for (count = std::min(count, columns_ + kMostFurtherCells); described_ < count; ++described_) {
    sink_.describeColumn(described_, {.isText = true});
  }
}

void CsvTable::writeCell(std::string_view text) {
  const bool mayBeValue = !options_.isText && !text.empty() && scrivalen::isAsciiDigit(text.back());
  if (mayBeValue) {
    if (const auto number = scrivalen::plainNumber(text)) {
      return sink_.numberCell(number->digits, number->decimals);
    }
    if (const auto days = scrivalen::plainDate(text)) {
      return sink_.dateCell(*days);
    }
  }
  sink_.cell(text);
}

}  // namespace

void readCsv(TextInput& input, std::optional<char> delimiter, const CsvOptions& options, TableSink& sink) {
  CsvRows rows(input, delimiter);
  CsvTable(options, sink).read(rows);
}

}  // namespace scrivalen::command
