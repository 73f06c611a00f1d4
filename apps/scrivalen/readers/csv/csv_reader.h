#pragma once

#include "readers/document_sink.h"
#include "readers/text_input.h"

#include <optional>

namespace scrivalen::command {

/// Reads a table of separated values, cell by cell. The first row is the header. Blank lines are skipped unless the
/// table has one column; blanks around an unquoted cell are dropped. A quote inside an unquoted cell is an ordinary
/// character; any other misplaced quote raises an InputError that names the line.
/// @param delimiter  an ASCII character; nothing: found from the first rows
void readCsv(TextInput& input, std::optional<char> delimiter, DocumentSink& sink);

}  // namespace scrivalen::command
