#include "report/template_path.h"

#include "system/files/files.h"
#include "system/module_path.h"

namespace scrivalen {

std::optional<std::wstring> templatePath(std::wstring_view module, std::wstring_view name) {
  const std::wstring_view folder = scrivalen::folderOf(module);
  if (folder.empty()) {
    return std::nullopt;
  }
  std::wstring path(folder);
  path += L"tmpl";
  path += scrivalen::kPathSeparator;
  return path.append(name);
}

std::wstring templateFile(std::string_view setting) {
  std::wstring path = widePath(setting);
  if (folderOf(path).empty() && !pathExists(path)) {
    const auto installed = templatePath(modulePath(), path);
    if (installed && pathExists(*installed)) {
      return *installed;
    }
  }
  return path;
}

}  // namespace scrivalen
