#include "formats.h"

#include "text/ascii.h"
#include "texts.h"

#include <algorithm>

namespace scrivalen::command {
namespace {

constexpr Format kFormats[] = {
    {"text", "txt"},  {"html", "html htm"}, {"xml", "xml"}, {"markdown", "md markdown"}, {"rtf", "rtf"}, {"pdf", "pdf"},
    {"xlsx", "xlsx"}, {"docx", "docx"},     {"chm", "chm"},
};

}  // namespace

const Format* findFormat(std::string_view nameOrExtension) {
  const std::string wanted = scrivalen::asciiLowered<char>(nameOrExtension);
  for (const Format& format : kFormats) {
    const auto extensions = split(format.extensions, ' ');
    if (format.name == wanted || std::find(extensions.begin(), extensions.end(), wanted) != extensions.end()) {
      return &format;
    }
  }
  return nullptr;
}

std::vector<std::string_view> formatNames() {
  std::vector<std::string_view> names;
  for (const Format& format : kFormats) {
    names.emplace_back(format.name);
  }
  return names;
}

std::vector<std::string_view> formatExtensions() {
  std::vector<std::string_view> all;
  for (const Format& format : kFormats) {
    const auto extensions = split(format.extensions, ' ');
    all.insert(all.end(), extensions.begin(), extensions.end());
  }
  return all;
}

}  // namespace scrivalen::command
