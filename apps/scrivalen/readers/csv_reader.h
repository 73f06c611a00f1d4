#pragma once

#include "readers/document_sink.h"
#include "readers/text_input.h"

namespace scrivalen::command {

/// Reads a table of separated values, cell by cell. The first row is the header. Blank lines are skipped unless the
/// table has one column; blanks around an unquoted cell are dropped. A quote inside an unquoted cell is an ordinary
/// character; any other misplaced quote raises an InputError that names the line.
void readCsv(TextInput& input, char separator, DocumentSink& sink);

}  // namespace scrivalen::command
