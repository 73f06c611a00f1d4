#pragma once

#include "options/options.h"

namespace scrivalen::command {

/// Raises UsageError if an output is a file that the run reads, such as an input or a template, or if two outputs are
/// the same file, by whatever links and names. Devices and pipes may be given several times.
void requireDifferentFiles(const Options& options);

}  // namespace scrivalen::command
