// Many rows at once, column by column.

#include "api/call.h"

#include <limits>
#include <vector>

namespace {

using namespace scrivalen::api;
using scrivalen::document::ColumnData;
using scrivalen::document::ValueType;

// Whether the rows of a text column have offsets that ascend from 0 or more.
bool areAscending(const scrivalen_column_data& column, std::size_t rows) {
  const std::int64_t* const offsets = column.offsets + column.offset;
  bool ascends = offsets[0] >= 0;
  for (std::size_t row = 0; row < rows; ++row) {
    ascends = ascends && offsets[row] <= offsets[row + 1];
  }
  return ascends;
}

bool isThere(const scrivalen_column_data& column, std::size_t row) {
  return !column.validity || (column.validity[row / 8] >> row % 8 & 1) != 0;
}

// Whether any row needs the values. The offsets of a text column ascend.
bool needsValues(const scrivalen_column_data& column, std::size_t rows) {
  const bool isText = column.type == SCRIVALEN_TEXT;
  for (std::size_t row = column.offset; row < column.offset + rows; ++row) {
    if (isThere(column, row) && (!isText || column.offsets[row] < column.offsets[row + 1])) {
      return true;
    }
  }
  return false;
}

// What is wrong with a column of at least one row; null if nothing is.
const char* faultOf(const scrivalen_column_data& column, std::size_t rows) {
  if (column.offset > std::numeric_limits<std::ptrdiff_t>::max() / sizeof(std::int64_t) - rows - 1) {
    return "its offset is out of range";
  }
  const bool isText = column.type == SCRIVALEN_TEXT;
  if (isText && !column.offsets) {
    return "its offsets are null";
  }
  if (isText && !areAscending(column, rows)) {
    return "its offsets do not ascend from 0 or more";
  }
  return column.values || !needsValues(column, rows) ? nullptr : "its values are null";
}

Status writeRows(Document& document, const scrivalen_column_data* given, std::size_t count, std::size_t rows) {
  if (const Status status = document.ready(); status != Status::Ok) {
    return status;
  }
  if (count > Document::kMostColumns) {
    return document.misuse(Document::kTooManyColumns);
  }
  if ((!given && count > 0) || (count == 0 && rows > 0)) {
    return document.misuse("rows need at least one column");
  }
  if (rows > std::numeric_limits<std::ptrdiff_t>::max() / sizeof(std::int64_t) - 1) {
    return document.misuse("the number of rows is out of range");
  }
  std::vector<ColumnData> columns(count);
  for (std::size_t i = 0; i < count; ++i) {
    scrivalen_column_data column{};
    if (!readStruct(given, i, column)) {
      return document.misuse(kWrongSize);
    }
    const auto type = enumOf(column.type, ValueType::Boolean);
    const char* const fault = !type || *type == ValueType::Auto ? "its type is not 1 to 6"
                              : rows > 0                        ? faultOf(column, rows)
                                                                : nullptr;
    if (fault) {
      return document.misuse("column " + std::to_string(i) + ": " + fault);
    }
    columns[i] = {*type, column.values, column.offsets, column.validity, column.offset};
  }
  return document.rows(columns.data(), count, rows);
}

}  // namespace

scrivalen_status scrivalen_rows(scrivalen_document* document, const scrivalen_column_data* columns, size_t count,
                                size_t rows) {
  return call(document, [&](Document& to) { return writeRows(to, columns, count, rows); });
}
