#pragma once

#include "environment.h"

#include <string>
#include <vector>

namespace scrivalen::command {

/// Runs the command.
/// @param arguments  UTF-8, without the program's name
/// @return 0 success, 1 an input or output failed, 2 wrong usage
int runCommand(const std::vector<std::string>& arguments, const Environment& environment);

}  // namespace scrivalen::command
