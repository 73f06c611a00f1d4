#pragma once

#include "document/clean_text.h"
#include "document/model/event_log.h"
#include "document/model/table.h"
#include "document/model/values.h"
#include "document/model/warnings.h"
#include "document/tables/arena.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document {

/// Where a table goes once its columns are known.
class TableTarget {
 public:
  virtual ~TableTarget() = default;
  virtual void beginTable(const Table& table) = 0;
  virtual void row(const Row& row) = 0;
  virtual void endTable() = 0;
  /// Whether anything takes the rows still.
  virtual bool isWanted() const = 0;
};

struct CellStyle {
  bool header = false;
  Align align = Align::Auto;
  int span = 1;
  std::optional<Rgb> color = std::nullopt;
  std::optional<Rgb> background = std::nullopt;
  ValueType type = ValueType::Auto;  ///< of a text: Auto, or Text for one that must not become a value
};

/// A column of values in the host's memory.
struct ColumnData {
  ValueType type = ValueType::Auto;  ///< never Auto
  const void* values = nullptr;
  const std::int64_t* offsets = nullptr;
  const std::uint8_t* validity = nullptr;
  std::size_t offset = 0;  ///< rows to skip
};

/// Makes a table of rows that come cell by cell. The first rows are held back as a sample, from which the columns are
/// measured. Every row gets exactly the table's columns: cells past the last join it, missing ones are empty.
class TableBuilder {
 public:
  /// @param table        its columns; none if their number follows from the sample
  /// @param values, target, warnings, replaced  not owned; must outlive the builder
  TableBuilder(Table table, const Values& values, TableTarget& target, Warnings& warnings, Replaced& replaced);

  void beginRow(bool header) {
    isHeader_ = header;
    column_ = 0;
  }
  /// Says of the row that is open whether it is a header row.
  void markRow(bool header) { isHeader_ = header; }
  /// Sets of a column what the description has. Without effect after the sample.
  void describeColumn(std::size_t column, const Column& description);
  /// A cell that is only a text, as the host gave it.
  void addText(std::string_view text);
  /// A cell that is only a value; its text is made from it.
  void addValue(ValueType type, double number, std::int64_t integer, int decimals = 0);

  void beginCell(const CellStyle& style);
  /// Gives the cell that was begun its value.
  void setText(std::string_view text);
  void setValue(ValueType type, double number, std::int64_t integer, int decimals = 0);
  /// A text of the cell that was begun, clean.
  void text(std::string_view text);
  /// A part of the cell's content other than text.
  void write(const Event& event);
  void endCell();
  /// Whether the cell that was begun has no content yet.
  bool isCellEmpty() const { return plain_.empty() && !isRich_ && !hasValue_; }
  bool hasValue() const { return hasValue_; }

  void endRow();
  /// Rows from columns of values, which were checked before.
  void addRows(const ColumnData* columns, std::size_t count, std::size_t rows);
  /// Ends the table.
  void finish();

 private:
  struct HeldRow {
    std::size_t firstCell;
    bool header;
  };

  const ValueFormat& formatOf(std::size_t column) const;
  /// Adds an empty cell of one column.
  Cell& push() {
    ++column_;
    return cells_.emplace_back();
  }
  bool isSampleFull() const;
  /// Gives an empty cell a value, and its text.
  void setValueOf(Cell& cell, const ValueFormat& format, ValueType type, double number, std::int64_t integer,
                  int decimals);
  void addBorrowedText(std::string_view text);
  void addColumnCell(const ColumnData& column, std::size_t row);
  void begin(bool isWhole);
  void measure();
  void emit(std::span<Cell> cells, bool header);
  void dropAlignsOfColumns(std::span<Cell> cells);
  std::span<const Cell> fitted(std::span<const Cell> cells);
  void join(Cell& last, std::span<const Cell> further);
  void forgetRows();

  Table table_;
  const Values& values_;
  TableTarget& target_;
  Warnings& warnings_;
  Replaced& replaced_;

  Arena arena_;
  EventLog log_;  // the contents of rich cells
  std::vector<Cell> cells_;
  std::vector<HeldRow> held_;
  std::vector<Cell> fitted_;
  std::size_t firstCell_ = 0;  // of the current row
  std::size_t column_ = 0;     // of the next cell
  bool isOpen_;                // the sample decides how many columns there are
  bool isHeader_ = false;
  bool isSampling_ = true;
  int repeatable_;  // how many further header rows would be repeated

  Cell cell_;  // the one that was begun
  std::string plain_;
  bool isRich_ = false;
  bool hasAlignedCells_ = false;  // any cell of the table so far
  bool hasValue_ = false;
  std::string cleaned_;

  std::uint64_t missing_ = 0;
  std::uint64_t joined_ = 0;
  std::uint64_t cut_ = 0;
  std::uint64_t notFinite_ = 0;
};

}  // namespace scrivalen::document
