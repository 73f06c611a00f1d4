#include "formats/xlsx/document/cells/cell_text.h"

#include "text/ascii.h"
#include "text/utf.h"

#include <algorithm>

namespace scrivalen::xlsx {
namespace {

constexpr std::string_view kEscapeBegin = "_x";

}  // namespace

bool beginsWithEscape(std::string_view text) {
  if (!text.starts_with(kEscapeBegin)) {
    return false;
  }
  text.remove_prefix(kEscapeBegin.size());
  const auto end = std::find_if(text.begin(), text.end(), [](char c) { return hexValue(c) < 0; });
  return end != text.begin() && end != text.end() && *end == '_';
}

namespace {

// The same text with the underscore escaped that begins each of them.
std::string withoutEscapes(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::size_t at = text.find(kEscapeBegin);
    result.append(text.substr(0, at));
    if (at == std::string_view::npos) {
      break;
    }
    text.remove_prefix(at);
    result.append(beginsWithEscape(text) ? "_x005F_" : "_");
    text.remove_prefix(1);
  }
  return result;
}

bool isSpace(char c) { return c == ' ' || c == '\n' || c == '\t'; }

// Readers drop blanks at the ends unless they are told not to.
std::string_view startTag(std::string_view text) {
  const bool hasOuterSpace = !text.empty() && (isSpace(text.front()) || isSpace(text.back()));
  return hasOuterSpace ? "<t xml:space=\"preserve\">" : "<t>";
}

constexpr std::string_view kEndTag = "</t>";
constexpr std::string_view kLineBreak = "\n";

}  // namespace

std::string_view cutToUnits(std::string_view utf8, std::size_t units) {
  if (utf8.size() <= units) {
    return utf8;
  }
  std::size_t used = 0;
  std::size_t at = 0;
  while (at < utf8.size()) {
    constexpr std::size_t kAboveBmp = 4;  // bytes
    const std::size_t size = std::max<std::size_t>(utf8Length(utf8[at]), 1);
    used += size == kAboveBmp ? 2 : 1;
    if (used > units) {
      break;
    }
    at += size;
  }
  return utf8.substr(0, at);
}

void writeTextElement(OutputBuffer& out, MarkupText& markup, std::string_view text) {
  const std::string_view start = startTag(text);
  out.write(start.data(), start.size());
  if (text.find(kEscapeBegin) == std::string_view::npos) {
    markup.content(out, text, kLineBreak);
  } else {
    markup.content(out, withoutEscapes(text), kLineBreak);
  }
  out.write(kEndTag.data(), kEndTag.size());
}

void appendTextElement(std::string& out, MarkupText& markup, std::string_view text) {
  const std::string escaped = withoutEscapes(text);
  out.append(startTag(text));
  const std::size_t begin = out.size();
  out.resize(begin + MarkupText::spaceFor(escaped.size()));
  char* const end = markup.content(out.data() + begin, escaped, kLineBreak);
  out.resize(static_cast<std::size_t>(end - out.data()));
  out.append(kEndTag);
}

void appendXml(std::string& out, std::string_view text) {
  MarkupText markup;
  const std::size_t begin = out.size();
  out.resize(begin + MarkupText::spaceFor(text.size()));
  char* const end = markup.value(out.data() + begin, text);
  out.resize(static_cast<std::size_t>(end - out.data()));
}

}  // namespace scrivalen::xlsx
