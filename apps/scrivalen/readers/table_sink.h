#pragma once

#include "readers/document_sink.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace scrivalen::command {

struct TableColumn {
  Align align = Align::Default;  ///< Default: numbers to the right
  double width = 0;              ///< a share, beside those of the other columns; 0: from the content
  bool isText = false;           ///< its texts never become values
};

/// Takes a table with values, too.
class TableSink : public DocumentSink {
 public:
  /// Describes a column of the table that was begun, counted from 0. Without effect after the first hundreds of rows.
  virtual void describeColumn(std::size_t index, const TableColumn& column) = 0;
  /// A cell with the number digits / 10^decimals.
  /// @param decimals  0 to 15
  virtual void numberCell(std::int64_t digits, int decimals) = 0;
  /// @param days  since 1970-01-01
  virtual void dateCell(std::int32_t days) = 0;
  /// Something about the input that its reader should know, in one line.
  virtual void warn(const std::string& text) = 0;
};

}  // namespace scrivalen::command
