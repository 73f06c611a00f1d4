#include "made_rtf.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace scrivalen::test {
namespace {

const document::Format kFormat{"rtf", &document::createRtfDocumentWriter};

int append(void* user, const void* data, std::size_t size) {
  static_cast<std::string*>(user)->append(static_cast<const char*>(data), size);
  return 0;
}

}  // namespace

std::string rtfOf(const Content& content, const SettingValues& settings, std::vector<document::Warning>* warnings) {
  std::string bytes;
  document::Document document;
  document.addStream(kFormat, &append, &bytes);
  document.set("clock", "2026-01-31 23:59:58");
  for (const auto& [name, value] : settings) {
    EXPECT_EQ(document.set(name, value), document::Status::Ok) << document.error();
  }
  content(document);
  EXPECT_EQ(document.close(), document::Status::Ok) << document.error();
  if (warnings != nullptr) {
    for (const document::Warning* warning = document.nextWarning(); warning != nullptr;) {
      warnings->push_back(*warning);
      warning = document.nextWarning();
    }
  }
  return bytes;
}

std::string rtfBodyOf(const Content& content, const SettingValues& settings) {
  const std::string rtf = rtfOf(content, settings);
  constexpr std::string_view kEnd = "}\n";
  const std::size_t begin = rtf.find('\n', rtf.find("\n\\sectd") + 1) + 1;
  EXPECT_TRUE(rtf.ends_with(kEnd));
  return rtf.substr(begin, rtf.size() - kEnd.size() - begin);
}

std::string linesWith(std::string_view part, const std::string& rtf) {
  std::string lines;
  std::size_t begin = 0;
  while (begin < rtf.size()) {
    const std::size_t end = rtf.find('\n', begin) + 1;
    const std::string line = rtf.substr(begin, end - begin);
    lines += line.find(part) != std::string::npos ? line : "";
    begin = end == 0 ? rtf.size() : end;
  }
  return lines;
}

std::string replaced(std::string text, std::string_view from, std::string_view to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

}  // namespace scrivalen::test
