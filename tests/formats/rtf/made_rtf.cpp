#include "made_rtf.h"

#include "formats/rtf/document/document_writer.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace scrivalen::test {
namespace {

const document::Format kFormat{"rtf", &document::createRtfDocumentWriter};

}  // namespace

std::string rtfOf(const Content& content, const SettingValues& settings, std::vector<document::Warning>* warnings) {
  return bytesOfDocument(kFormat, content, settings, warnings);
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
