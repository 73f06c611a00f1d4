#include "readers/csv/csv_columns.h"

#include "errors.h"
#include "options/suggestion.h"
#include "text/utf.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

namespace scrivalen::command {
namespace {

using Header = std::vector<std::string_view>;

// A column by its number, counted from 0; nothing if there is no such number.
std::optional<std::size_t> columnNumber(std::string_view text, std::size_t count) {
  std::size_t number = 0;
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number);
  const bool isNumber = result.ec == std::errc() && result.ptr == end;
  return isNumber && number >= 1 && number <= count ? std::optional(number - 1) : std::nullopt;
}

// The first and the last column that an entry of the list means.
std::optional<std::pair<std::size_t, std::size_t>> columnRange(std::string_view entry, const Header& header) {
  if (const auto named = std::find(header.begin(), header.end(), entry); named != header.end()) {
    const auto column = static_cast<std::size_t>(named - header.begin());
    return std::pair(column, column);
  }
  const std::size_t hyphen = entry.find('-');
  const auto first = columnNumber(entry.substr(0, hyphen), header.size());
  const auto last = hyphen == entry.npos ? first : columnNumber(entry.substr(hyphen + 1), header.size());
  return first && last ? std::optional(std::pair(*first, *last)) : std::nullopt;
}

// A name as a message quotes it: a cell may be as long as its file.
std::string inQuotes(std::string_view name) {
  constexpr int kMostCharacters = 60;
  const char* at = name.data();
  const char* const end = at + name.size();
  char32_t c = 0;
  for (int i = 0; i < kMostCharacters && at != end; ++i) {
    scrivalen::nextUtf8(at, end, c);
  }
  return "'" + std::string(name.data(), at) + (at == end ? "'" : "...'");
}

std::string unknownColumn(std::string_view entry, const Header& header) {
  constexpr std::size_t kMostNames = 20;
  std::string known = "; the columns are ";
  for (std::size_t i = 0; i < std::min(header.size(), kMostNames); ++i) {
    known.append(i > 0 ? ", " : "").append(inQuotes(header[i]));
  }
  known += header.size() > kMostNames ? " and " + std::to_string(header.size() - kMostNames) + " more" : "";
  return "--columns: there is no column " + inQuotes(entry) + suggestion(entry, header, known);
}

std::string tooMany(const char* option, std::size_t given, std::size_t columns) {
  return std::string(option) + " has " + std::to_string(given) + " entries for a table of " + std::to_string(columns) +
         (columns == 1 ? " column" : " columns");
}

// Divides what percents leave among the columns without one. The sum of percents such as 33.4 is not exact.
void sharePercents(std::vector<TableColumn>& columns) {
  constexpr double kTolerance = 1e-6;
  double sum = 0;
  std::size_t without = 0;
  for (const TableColumn& column : columns) {
    sum += column.width;
    without += column.width > 0 ? 0 : 1;
  }
  if (sum > 100 + kTolerance || (sum > 100 - kTolerance && without > 0)) {
    throw UsageError("--width: the percents leave nothing for other columns; they add up to at most 100");
  }
  for (TableColumn& column : columns) {
    if (column.width == 0) {
      column.width = (100 - sum) / static_cast<double>(without);
    }
  }
}

}  // namespace

std::vector<std::size_t> chosenColumns(const std::vector<std::string>& list, const Header& header) {
  std::vector<std::size_t> chosen;
  for (const std::string& entry : list) {
    const auto range = columnRange(entry, header);
    if (!range) {
      throw UsageError(unknownColumn(entry, header));
    }
    const bool ascends = range->first <= range->second;
    for (std::size_t column = range->first;; column += ascends ? 1 : -1) {
      chosen.push_back(column);
      if (column == range->second) {
        break;
      }
    }
  }
  return chosen;
}

std::vector<TableColumn> describedColumns(const CsvOptions& options, std::size_t count) {
  if (options.aligns.size() > count) {
    throw UsageError(tooMany("--align", options.aligns.size(), count));
  }
  if (options.widths.size() > count) {
    throw UsageError(tooMany("--width", options.widths.size(), count));
  }
  std::vector<TableColumn> columns(count);
  for (std::size_t i = 0; i < count; ++i) {
    columns[i].align = i < options.aligns.size() ? options.aligns[i] : Align::Default;
    columns[i].width = i < options.widths.size() ? options.widths[i] : 0;
    columns[i].isText = options.isText;
  }
  if (options.arePercent && !options.widths.empty()) {
    sharePercents(columns);
  }
  return columns;
}

}  // namespace scrivalen::command
