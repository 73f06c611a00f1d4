#include "report/template_path.h"

#include "system/files/files.h"

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

}  // namespace scrivalen
