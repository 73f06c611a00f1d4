#include "templates.h"

#include "errors.h"
#include "system/files/files.h"
#include "text/ascii.h"
#include "text/utf.h"
#include "texts.h"

#include <scrivalen/html_report.h>

#include <algorithm>

namespace scrivalen::command {
namespace {

constexpr std::wstring_view kSuffix = L".htm";

std::wstring templateFolder() {
  std::wstring folder;
  HtmlReport().MakeTemplateName(folder, L"");
  return folder;
}

[[noreturn]] void fail(const char* what, const std::wstring& path) {
  const std::string reason = lastErrorText();
  throw InputError(std::string("cannot read the ") + what + " '" + scrivalen::narrowPath(path) + "': " + reason);
}

std::vector<std::wstring> templateFiles() {
  const std::wstring folder = templateFolder();
  auto files = scrivalen::findFilesEndingWith(folder, kSuffix);
  if (!files) {
    fail("folder of templates", folder);
  }
  std::sort(files->begin(), files->end());
  return *files;
}

std::wstring withoutSuffix(const std::wstring& file) { return file.substr(0, file.size() - kSuffix.size()); }

}  // namespace

std::vector<std::wstring> templateNames() {
  auto names = templateFiles();
  std::transform(names.begin(), names.end(), names.begin(), withoutSuffix);
  return names;
}

std::optional<std::string> templateFile(std::wstring_view name) {
  for (const std::wstring& file : templateFiles()) {
    if (scrivalen::equalIgnoringCase(file, name) || scrivalen::equalIgnoringCase(withoutSuffix(file), name)) {
      const std::wstring path = templateFolder() + file;
      if (!scrivalen::openForReading(path)) {
        fail("template", path);
      }
      return scrivalen::narrowPath(path);
    }
  }
  return std::nullopt;
}

}  // namespace scrivalen::command
