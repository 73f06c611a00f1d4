#include "formats.h"

#include "text/ascii.h"

#include <algorithm>

namespace scrivalen::command {
namespace {

constexpr Format kFormats[] = {
    {"text", "txt"}, {"html", "html htm"}, {"xml", "xml"},   {"markdown", "md markdown"},
    {"rtf", "rtf"},  {"pdf", "pdf"},       {"xlsx", "xlsx"}, {"chm", "chm"},
};

// Calls a function with each extension of a list until it returns true.
template <class Call>
bool anyExtension(std::string_view extensions, Call call) {
  while (!extensions.empty()) {
    const std::size_t end = std::min(extensions.find(' '), extensions.size());
    if (call(extensions.substr(0, end))) {
      return true;
    }
    extensions.remove_prefix(std::min(end + 1, extensions.size()));
  }
  return false;
}

}  // namespace

const Format* findFormat(std::string_view nameOrExtension) {
  const std::string wanted = scrivalen::asciiLowered<char>(nameOrExtension);
  const auto isWanted = [&](std::string_view extension) { return extension == wanted; };
  for (const Format& format : kFormats) {
    if (format.name == wanted || anyExtension(format.extensions, isWanted)) {
      return &format;
    }
  }
  return nullptr;
}

std::string knownExtensions() {
  std::string list;
  for (const Format& format : kFormats) {
    anyExtension(format.extensions, [&](std::string_view extension) {
      list.append(list.empty() ? "." : " .").append(extension);
      return false;
    });
  }
  return list;
}

}  // namespace scrivalen::command
