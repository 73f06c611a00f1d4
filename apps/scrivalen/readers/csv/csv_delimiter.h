#pragma once

#include <string_view>

namespace scrivalen::command {

/// What separates the cells of a table, found from its first lines: a comma, a semicolon, a tab or a bar. Separators in
/// quoted cells do not count, nor does a comma between two digits where another separator fits as well.
/// @param start  the beginning of the table; a comma is the default
char csvDelimiterOf(std::string_view start);

}  // namespace scrivalen::command
