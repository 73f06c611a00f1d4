#pragma once

#include "readers/csv/csv_options.h"
#include "readers/table_sink.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

/// The columns of the table that a list of names, numbers and ranges means, in its order. A name comes before a number.
/// Raises UsageError for what no column has.
std::vector<std::size_t> chosenColumns(const std::vector<std::string>& list,
                                       const std::vector<std::string_view>& header);

/// How the columns look that are shown. Raises UsageError for more alignments or widths than columns, and for percents
/// over 100.
std::vector<TableColumn> describedColumns(const CsvOptions& options, std::size_t count);

}  // namespace scrivalen::command
