#pragma once

#include "document/document.h"
#include "readers/text_input.h"

namespace scrivalen::command {

/// Reads a table of separated values, row by row: its first row is the header, a shorter row is filled up with empty
/// cells to the header's length, a longer one stays longer. Empty lines are skipped, as are the blanks around a cell
/// that is not quoted. A quote inside such a cell is a character like any other; whatever else is wrong with the quotes
/// raises an InputError that names the line.
void readCsv(TextInput& input, char separator, EventSink& sink);

}  // namespace scrivalen::command
