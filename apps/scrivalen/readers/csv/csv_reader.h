#pragma once

#include "readers/csv/csv_options.h"
#include "readers/table_sink.h"
#include "readers/text_input.h"

#include <optional>

namespace scrivalen::command {

/// Reads a table of separated values, cell by cell. The first row is the header. Blank lines are skipped unless the
/// table has one column. Texts that are plain numbers or ISO dates become values, which read the same. Rows with fewer
/// or more cells than the header are counted in a warning. Raises an InputError that names the line of a misplaced
/// quote, and a UsageError for options that do not fit the header.
/// @param delimiter  an ASCII character; nothing: found from the first rows
void readCsv(TextInput& input, std::optional<char> delimiter, const CsvOptions& options, TableSink& sink);

}  // namespace scrivalen::command
