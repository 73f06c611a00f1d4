#pragma once

#include "options/option_group.h"

#include <string>
#include <vector>

namespace scrivalen::command {

/// Gives options their values, as GNU programs do: "--name value", "--name=value", "-n value", "-nvalue", "-n=value",
/// flags in one word as in "-qh", and no options after "--". Raises UsageError.
void parseArguments(const std::vector<Option>& options, const std::vector<std::string>& arguments);

}  // namespace scrivalen::command
