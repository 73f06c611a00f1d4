#pragma once

#include "options/options.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

// Each of these functions raises UsageError.

/// The output that an argument of -o asks for: "C:\x.html" is a file on a drive, "html:x" a format and its file,
/// "12:30.html" a file with a colon in its name. A word before a colon has to be a format.
OutputRequest outputRequest(const std::string& argument);

/// The formats of lists such as "html,pdf", each once.
std::vector<const Format*> formatsOf(const std::vector<std::string>& lists);

/// The output in a folder that is named after its input: "out" and "docs/a.b.md" give "out/a.b.html".
OutputRequest outputInFolder(const std::string& folder, const std::string& input, const Format& format);

}  // namespace scrivalen::command
