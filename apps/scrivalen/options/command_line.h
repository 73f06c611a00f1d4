#pragma once

#include "options/options.h"

#include <optional>
#include <string>
#include <vector>

namespace scrivalen::command {

struct CommandLine {
  Options options;
  std::optional<std::string> printout;  ///< the help, version or list to print instead of a conversion
};

/// Raises UsageError.
/// @param arguments  UTF-8, without the program's name
CommandLine parseCommandLine(const std::vector<std::string>& arguments);

}  // namespace scrivalen::command
