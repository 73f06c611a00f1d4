#include "texts.h"

#include "system/messages.h"
#include "text/utf.h"

namespace scrivalen::command {

std::wstring wide(std::string_view utf8) {
  std::wstring result;
  platform::appendWide(result, utf8);
  return result;
}

std::string utf8(std::wstring_view wide) {
  std::string result;
  platform::appendUtf8(result, wide);
  return result;
}

std::string lastErrorText() { return utf8(platform::systemErrorText(platform::lastSystemError())); }

std::string asciiLower(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return result;
}

std::string replaceAll(std::string text, std::string_view part, std::string_view with) {
  if (part.empty()) {
    return text;
  }
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + with.size())) {
    text.replace(at, part.size(), with);
  }
  return text;
}

}  // namespace scrivalen::command
