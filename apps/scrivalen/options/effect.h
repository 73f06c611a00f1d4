#pragma once

#include "options/options.h"

#include <string_view>

namespace scrivalen::command {

// An option that was given but changes nothing is probably a mistake. Each of these functions adds a warning to the
// options if the inputs and outputs, which must be known already, leave an option without effect.

/// For an option that has an effect on some formats only.
/// @param formats  their names, with a blank between them
void warnWithoutOutput(Options& options, std::string_view option, std::string_view formats);

/// For an option that has an effect on Markdown only.
void warnWithoutMarkdown(Options& options, std::string_view option);

/// For an option that has an effect on CSV and TSV only.
void warnWithoutTable(Options& options, std::string_view option);

}  // namespace scrivalen::command
