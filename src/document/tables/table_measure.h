#pragma once

#include "document/model/table.h"
#include "document/tables/usual_line.h"

#include <span>
#include <vector>

namespace scrivalen::document {

/// Measures the columns of a table from its sample.
class TableMeasure {
 public:
  /// @param table  gets its missing columns and their measures; must outlive this object
  explicit TableMeasure(Table& table) : TableMeasure(table, table.columns.empty()) {}
  /// @param isOpen  whether the number of columns follows from the rows, even if some are described already
  TableMeasure(Table& table, bool isOpen);

  void add(std::span<const Cell> row, bool header);
  /// Decides the alignment of columns that have none: that of their cells, if these have the same one; otherwise
  /// columns of numbers, whose texts may have units and groups, are aligned to the right even if a few cells are other
  /// short texts. Also makes sure that there is a column.
  /// @param isWhole  whether the sample is the whole table. If not, columns of numbers get space for longer ones, such
  ///                 as the ids of a million rows
  void finish(bool isWhole);

 private:
  struct Kinds {
    std::size_t numbers = 0;
    std::size_t perhaps = 0;  // numbers, if there are others
    std::size_t others = 0;
    bool hasProse = false;
    bool hasCells = false;

    void count(const Cell& cell, std::size_t longestLine);
    bool areNumbers() const;
    Align align = Align::Auto;  // of all cells; Auto if they differ
    UsualLine line;
    UsualLine wideLine;
    UsualWord wideWord;
  };

  void addColumnsUpTo(std::size_t count);
  void addText(std::size_t column, const Cell& cell, bool header);

  Table& table_;
  bool isOpen_;  // whether the number of columns follows from the rows
  std::vector<Kinds> kinds_;
};

}  // namespace scrivalen::document
