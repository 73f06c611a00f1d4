// Tables: columns, rows and cells.

#include "api/call.h"
#include "api/colors.h"

#include <utility>
#include <vector>

namespace {

using namespace scrivalen::api;
using scrivalen::document::Align;
using scrivalen::document::Column;
using scrivalen::document::decimalValue;
using scrivalen::document::isShare;
using scrivalen::document::ValueFormat;
using scrivalen::document::ValueType;

static_assert(static_cast<int>(ValueType::Auto) == SCRIVALEN_AUTO);
static_assert(static_cast<int>(ValueType::Text) == SCRIVALEN_TEXT);
static_assert(static_cast<int>(ValueType::Number) == SCRIVALEN_NUMBER);
static_assert(static_cast<int>(ValueType::Integer) == SCRIVALEN_INTEGER);
static_assert(static_cast<int>(ValueType::Date) == SCRIVALEN_DATE);
static_assert(static_cast<int>(ValueType::Time) == SCRIVALEN_TIME);
static_assert(static_cast<int>(ValueType::Boolean) == SCRIVALEN_BOOLEAN);

constexpr int kMostDecimals = 15;

// What is wrong with a column; empty if nothing is.
std::string readColumn(const scrivalen_column& given, Column& result) {
  const auto type = enumOf(given.type, ValueType::Boolean);
  if (!type) {
    return "the type of a column is 0 to 6";
  }
  const auto align = enumOf(given.align, Align::Justify);
  if (!align) {
    return std::string(kUnknownAlignment);
  }
  if (!isShare(given.width)) {
    return "the width of a column is 0, or from 0.000001 to 1,000,000";
  }
  if (given.decimals < -1 || given.decimals > kMostDecimals) {
    return "the decimals of a column are -1 to 15";
  }
  const std::string_view pattern = textOf(given.format);
  const auto format = pattern.empty() ? ValueFormat(given.decimals) : ValueFormat::of(pattern);
  if (!format) {
    return "the format " + quoted(pattern) + " of a column is unknown";
  }
  result = {
      .name = std::string(textOf(given.name)), .type = *type, .align = *align, .width = given.width, .format = *format};
  return {};
}

Status beginTable(Document& document, const scrivalen_column* given, std::size_t count, std::string_view name) {
  if (const Status status = document.ready(); status != Status::Ok) {
    return status;
  }
  if (count > Document::kMostColumns) {
    return document.misuse(Document::kTooManyColumns);
  }
  std::vector<Column> columns(count);
  for (std::size_t i = 0; given && i < count; ++i) {
    scrivalen_column column{};
    if (!readStruct(given, i, column)) {
      return document.misuse(kWrongSize);
    }
    if (const std::string wrong = readColumn(column, columns[i]); !wrong.empty()) {
      return document.misuse("column " + std::to_string(i) + ": " + wrong);
    }
  }
  return document.beginTable(std::move(columns), name);
}

Status describeColumn(Document& document, std::size_t index, const scrivalen_column* given) {
  if (const Status status = document.ready(); status != Status::Ok) {
    return status;
  }
  scrivalen_column column{};
  if (!given || !readStruct(given, column)) {
    return document.misuse(kWrongSize);
  }
  Column description;
  if (const std::string wrong = readColumn(column, description); !wrong.empty()) {
    return document.misuse("column " + std::to_string(index) + ": " + wrong);
  }
  return document.describeColumn(index, description);
}

Status decimal(Document& document, std::int64_t digits, int decimals) {
  if (const Status status = document.ready(); status != Status::Ok) {
    return status;
  }
  if (decimals < 0 || decimals > kMostDecimals) {
    return document.misuse("the decimals of a number are 0 to 15");
  }
  return decimals == 0 ? document.value(ValueType::Integer, 0, digits)
                       : document.value(ValueType::Number, decimalValue(digits, decimals), digits, decimals);
}

Status beginCell(Document& document, const scrivalen_cell_style* given) {
  if (const Status status = document.ready(); status != Status::Ok) {
    return status;
  }
  scrivalen_cell_style style{};
  if (given && !readStruct(given, style)) {
    return document.misuse(kWrongSize);
  }
  const auto align = enumOf(style.align, Align::Justify);
  if (!align) {
    return document.misuse(kUnknownAlignment);
  }
  scrivalen::document::CellStyle result{
      .header = style.header != 0, .align = *align, .span = style.span == 0 ? 1 : style.span};
  if (!readColor(style.color, result.color)) {
    return document.misuse(unknownColor(style.color));
  }
  if (!readColor(style.background, result.background)) {
    return document.misuse(unknownColor(style.background));
  }
  return document.beginCell(result);
}

}  // namespace

scrivalen_status scrivalen_begin_table(scrivalen_document* document, const scrivalen_column* columns, size_t count,
                                       const char* name) {
  return call(document, [&](Document& to) { return beginTable(to, columns, count, textOf(name)); });
}

scrivalen_status scrivalen_describe_column(scrivalen_document* document, size_t index, const scrivalen_column* column) {
  return call(document, [&](Document& to) { return describeColumn(to, index, column); });
}

scrivalen_status scrivalen_begin_row(scrivalen_document* document, int header) {
  return call(document, [&](Document& to) { return to.beginRow(header != 0); });
}

scrivalen_status scrivalen_begin_cell(scrivalen_document* document, const scrivalen_cell_style* style) {
  return call(document, [&](Document& to) { return beginCell(to, style); });
}

scrivalen_status scrivalen_cell(scrivalen_document* document, const char* text, size_t size) {
  return call(document, [&](Document& to) { return to.cell(textOf(text, size)); });
}

scrivalen_status scrivalen_cell_number(scrivalen_document* document, double value) {
  return call(document, [&](Document& to) { return to.value(ValueType::Number, value, 0); });
}

scrivalen_status scrivalen_cell_integer(scrivalen_document* document, int64_t value) {
  return call(document, [&](Document& to) { return to.value(ValueType::Integer, 0, value); });
}

scrivalen_status scrivalen_cell_decimal(scrivalen_document* document, int64_t digits, int decimals) {
  return call(document, [&](Document& to) { return decimal(to, digits, decimals); });
}

scrivalen_status scrivalen_cell_date(scrivalen_document* document, int32_t days) {
  return call(document, [&](Document& to) { return to.value(ValueType::Date, 0, days); });
}

scrivalen_status scrivalen_cell_time(scrivalen_document* document, int64_t seconds) {
  return call(document, [&](Document& to) { return to.value(ValueType::Time, 0, seconds); });
}

scrivalen_status scrivalen_cell_boolean(scrivalen_document* document, int value) {
  return call(document, [&](Document& to) { return to.value(ValueType::Boolean, 0, value != 0 ? 1 : 0); });
}
