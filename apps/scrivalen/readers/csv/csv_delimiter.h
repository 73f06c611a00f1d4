#pragma once

#include "readers/text_input.h"

#include <string>
#include <string_view>

namespace scrivalen::command {

/// What separates the cells of a table, found from its first 50 rows and 64 KiB: a comma, a semicolon, a tab or a bar,
/// whichever the most rows have equally often. Separators in quoted cells do not count, nor does a comma between two
/// digits where another separator fits as well. Of two that fit, one that no blank follows is preferred.
/// @param start  the beginning of the table; a comma is the default
char csvDelimiterOf(std::string_view start);

/// Reads as much of a table as csvDelimiterOf takes into account, or all of a shorter one, so that the delimiter does
/// not depend on how a pipe divides the input. An interactive pipe therefore shows nothing before that many rows have
/// come.
/// @return the text that was read, which may be longer
std::string readCsvStart(TextInput& input);

}  // namespace scrivalen::command
