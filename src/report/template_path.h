#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace scrivalen {

/// The path of a template, in the folder "tmpl" beside a module's file; nothing when the module's path has no folder.
std::optional<std::wstring> templatePath(std::wstring_view module, std::wstring_view name);

/// The path of a template that a setting names: the path as it is; a name without a folder may also be that of a
/// template that is installed with the library.
std::wstring templateFile(std::string_view setting);

}  // namespace scrivalen
