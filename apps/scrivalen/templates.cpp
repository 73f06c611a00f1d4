#include "templates.h"

#include "system/files/files.h"
#include "text/ascii.h"
#include "text/utf.h"

#include <scrivalen/html_report.h>

#include <algorithm>

namespace scrivalen::command {
namespace {

constexpr std::wstring_view kSuffix = L".htm";

std::vector<std::wstring> templateFiles() {
  std::wstring folder;
  HtmlReport().MakeTemplateName(folder, L"");
  auto files = scrivalen::filesEndingWith(folder, kSuffix);
  std::sort(files.begin(), files.end());
  return files;
}

std::wstring withoutSuffix(const std::wstring& file) { return file.substr(0, file.size() - kSuffix.size()); }

}  // namespace

std::vector<std::wstring> templateNames() {
  auto names = templateFiles();
  std::transform(names.begin(), names.end(), names.begin(), withoutSuffix);
  return names;
}

std::optional<std::wstring> templateFile(std::wstring_view name) {
  for (const std::wstring& file : templateFiles()) {
    if (scrivalen::equalIgnoringCase(file, name) || scrivalen::equalIgnoringCase(withoutSuffix(file), name)) {
      return file;
    }
  }
  return std::nullopt;
}

}  // namespace scrivalen::command
