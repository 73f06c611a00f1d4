#include "texts.h"

#include "system/messages.h"
#include "text/utf.h"

namespace scrivalen::command {

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (std::size_t end = text.find(separator); end != text.npos; end = text.find(separator)) {
    parts.push_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  parts.push_back(text);
  return parts;
}

std::string joined(const std::vector<std::string_view>& parts, std::string_view separator) {
  std::string text;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    text.append(i == 0 ? "" : separator).append(parts[i]);
  }
  return text;
}

std::wstring_view withoutExtension(std::wstring_view fileName) {
  const std::size_t dot = fileName.rfind(L'.');
  return dot == 0 ? fileName : fileName.substr(0, dot);
}

std::string lastErrorText() { return toUtf8(scrivalen::systemErrorText(scrivalen::lastSystemError())); }

}  // namespace scrivalen::command
