#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace scrivalen {

/// The path of a template, in the folder "tmpl" beside a module's file; nothing when the module's path has no folder.
std::optional<std::wstring> templatePath(std::wstring_view module, std::wstring_view name);

}  // namespace scrivalen
