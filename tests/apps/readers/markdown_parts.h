#pragma once

#include "readers/markdown/markdown_reader.h"
#include "recorded_parts.h"

#include <string_view>

namespace scrivalen::command::test {

/// The parts of a document that Markdown becomes.
inline Lines partsOf(std::string_view markdown, Safety safety = Safety::Safe) {
  RecordedParts parts;
  readMarkdown(markdown, safety, parts);
  return parts.lines();
}

/// The parts of a paragraph with this content.
inline Lines paragraph(const Lines& content) {
  Lines lines = {"BeginParagraph"};
  lines.insert(lines.end(), content.begin(), content.end());
  lines.push_back("EndParagraph");
  return lines;
}

}  // namespace scrivalen::command::test
