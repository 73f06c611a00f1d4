#pragma once

#include "options/options.h"

#include <vector>

namespace scrivalen::command {

/// Raises UsageError if an output is one of the inputs, or if two outputs are the same file, by whatever links and
/// names. Devices and pipes may be given several times.
void requireDifferentFiles(const std::vector<Job>& jobs);

}  // namespace scrivalen::command
