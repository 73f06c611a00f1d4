#pragma once

#include "events/document.h"
#include "readers/text_input.h"

namespace scrivalen::command {

/// Reads a table of separated values, row by row. The first row is the header. A shorter row is padded with empty
/// cells; a longer one stays longer. Blank lines are skipped unless the table has one column; blanks around an unquoted
/// cell are dropped. A quote inside an unquoted cell is an ordinary character; any other misplaced quote raises an
/// InputError that names the line.
void readCsv(TextInput& input, char separator, EventSink& sink);

}  // namespace scrivalen::command
