#pragma once

#include "document/model/event_log.h"
#include "document/model/table.h"
#include "document/settings/settings.h"
#include "document/tables/arena.h"
#include "formats/xlsx/document/block_writer.h"
#include "formats/xlsx/document/looks.h"
#include "formats/xlsx/document/prose_layout.h"
#include "formats/xlsx/document/sheet/column_layout.h"
#include "formats/xlsx/document/sheet/sheet_writer.h"
#include "formats/xlsx/document/table_writer.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace scrivalen::xlsx {

/// What the rows of a table begin with.
struct TableHead {
  std::uint32_t headerRows;
  bool hasBreakBefore;  ///< of the page
};

/// Where the blocks of a sheet go once it has begun.
class SheetTarget {
 public:
  virtual ~SheetTarget() = default;
  virtual void writeProse(const ProseRow& row) = 0;
  virtual void beginHeldTable(const document::Table& table, const TableHead& head) = 0;
  virtual void writeHeldRow(const document::Row& row) = 0;
  virtual void endHeldTable() = 0;
};

/// The blocks of a sheet that has not begun. Its columns come before its rows in the file, and fit all of these tables.
class SheetPlan {
 public:
  /// @param settings, looks  not owned; must outlive this object
  SheetPlan(const document::FormatSettings& settings, const Looks& looks) : settings_(settings), looks_(looks) {}

  bool isEmpty() const { return blocks_.empty(); }
  /// Whether it takes so much memory that the sheet has to begin.
  bool isFull() const;

  void add(ProseRow row);
  /// Makes room for a table in the columns, before it is held or written.
  /// @param tables  measures its header
  void measure(const document::Table& table, TableWriter& tables);
  /// Holds a table, whose rows follow.
  void beginTable(const document::Table& table, const TableHead& head);
  bool isInTable() const { return isInTable_; }
  void add(const document::Row& row);
  void endTable() { isInTable_ = false; }

  /// Whether the first table is what the sheet is about: its header is at the top, or no other table and little text is
  /// known to follow.
  bool isOfFirstTable() const;
  /// How the sheet is shown.
  /// @param isWhole  whether no other block follows
  SheetLayout layout(bool isWhole) const;
  /// Gives all blocks to a sheet and forgets them. A table that has not ended is not ended there either.
  void writeTo(SheetTarget& target);

 private:
  struct HeldRow {
    std::size_t firstCell;
    std::size_t count;
    bool header;
    bool repeated;
  };
  struct HeldTable {
    document::Table table;  // without its sample
    std::size_t firstRow;
    std::size_t rows;
    TableHead head;
  };
  struct Block {
    ProseRow prose;
    std::unique_ptr<HeldTable> table;  // null: prose
  };

  void setColumns(SheetLayout& layout) const;
  RowsExtent rowsBeforeTable(const SheetLayout& layout) const;
  void writeTable(const HeldTable& table, bool isOpen, SheetTarget& target) const;

  const document::FormatSettings& settings_;
  const Looks& looks_;
  std::vector<Block> blocks_;
  std::size_t proseBytes_ = 0;
  SharedColumns columns_;  // of all tables
  std::size_t tableCount_ = 0;
  std::size_t rowsAfterTable_ = 0;
  std::uint32_t frozenRows_ = 0;  // down to the header of the first table
  bool isInTable_ = false;

  // Of the tables, whose sample is gone after they begin.
  document::Arena texts_;
  document::EventLog contents_;
  std::vector<document::Cell> cells_;
  std::vector<HeldRow> rows_;
  std::size_t columnBytes_ = 0;
};

}  // namespace scrivalen::xlsx
