#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

/// The template of HTML pages that is used when none is asked for.
inline constexpr const wchar_t* kDefaultTemplate = L"default.htm";

// Each of these raises InputError when the folder of the templates beside the library, or a template in it, is there
// but cannot be read: to make another page then would hide it.

/// The names of the templates, without ".htm", sorted.
std::vector<std::wstring> templateNames();

/// The file name of a template that is named with or without ".htm", in any case; nothing when there is none.
/// The template can be read.
std::optional<std::wstring> templateFile(std::wstring_view name);

}  // namespace scrivalen::command
