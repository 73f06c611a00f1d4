#pragma once

#include "document/model/event.h"
#include "document/model/values.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document {

class EventLog;

enum class ValueType : std::uint8_t { Auto, Text, Number, Integer, Date, Time, Boolean };

/// A column of a table that begins.
struct Column {
  std::string name;  ///< its element in XML; empty: "cell"
  ValueType type = ValueType::Auto;
  Align align = Align::Auto;  ///< never Auto once the table has begun
  double width = 0;           ///< its share, beside those of the others; 0: from the content
  ValueFormat format;         ///< of values that are given as values

  // Of the sample, in columns of a monospaced font; East Asian wide characters take two.
  std::size_t longestWord = 0;
  std::size_t longestLine = 0;
  double usualLine = 0;  ///< whatever a single long cell needs
  // The same in a proportional font, where words in capitals need more, and without the texts of pictures.
  double widestWord = 0;
  double widestLine = 0;
  double usualWideLine = 0;
  double usualWideWord = 0;  ///< longer words are rare
};

/// Whether a number may be a column's width. Sums and quotients of such numbers are finite.
constexpr bool isShare(double width) { return width == 0 || (width >= 1e-6 && width <= 1e6); }

inline constexpr std::size_t kMostColumns = 1000000;
inline constexpr int kWidestSpan = 16384;  ///< of a cell, in columns

struct Cell;

/// A row of the sample, as the host gave it: its cells may be more or fewer than the columns.
struct SampleRow {
  std::span<const Cell> cells;
  bool header = false;
};

struct Table {
  std::string name;
  std::vector<Column> columns;  ///< at least one

  // For a writer that measures texts itself, only while the table begins.
  std::vector<SampleRow> sample = {};
  bool isSampleWhole = false;  ///< whether the table has no more rows
};

/// The content of a cell. A value has its type, and its text as the settings and its column show it.
struct Cell {
  std::string_view text;  ///< clean UTF-8; a line feed is a line break. Of a cell with content: the plain text of it
  ValueType type = ValueType::Auto;  ///< of a value; Auto or Text for a text: whether it may become a value
  bool header = false;
  Align align = Align::Auto;  ///< Auto: its column's
  std::int8_t decimals = 0;   ///< of a Number that was given as integer / 10^decimals
  int span = 1;               ///< in columns; those of a row add up to the table's
  double number = 0;          ///< of a Number
  std::int64_t integer = 0;   ///< of an Integer, Date (days since 1970), Time (seconds since 1970) or Boolean
  std::optional<Rgb> color = std::nullopt;
  std::optional<Rgb> background = std::nullopt;

  /// Spans, links, pictures and the like, in a part of the log; null for a cell that has only text.
  const EventLog* content = nullptr;
  std::size_t contentBegin = 0;
  std::size_t contentEnd = 0;

  bool isValue() const { return type > ValueType::Text; }
  void replay(EventSink& sink) const;
};

struct Row {
  std::span<const Cell> cells;
  bool header = false;
  bool repeated = false;  ///< one of the first rows, all of them header rows, that each page repeats; at most 20
};

}  // namespace scrivalen::document
