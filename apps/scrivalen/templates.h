#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

// Each of these functions raises InputError if the folder of the templates, or a template in it, exists but cannot be
// read. Falling back to another page would hide the error.

/// The names of the templates, without ".htm", sorted.
std::vector<std::wstring> templateNames();

/// Finds a template by its name with or without ".htm", ignoring case, and makes sure that it is readable.
/// @return its path, as narrowPath has it; nothing if there is no such template
std::optional<std::string> templateFile(std::wstring_view name);

}  // namespace scrivalen::command
