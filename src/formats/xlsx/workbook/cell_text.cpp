#include "formats/xlsx/workbook/cell_text.h"

#include "text/ascii.h"
#include "text/utf.h"

#include <algorithm>

namespace scrivalen::xlsx {
namespace {

constexpr std::string_view kEscapeBegin = "_x";

bool isControl(char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t'; }

bool isSpace(char c) { return c == ' ' || c == '\n' || c == '\t'; }

// Without xml:space="preserve" readers drop blanks at the ends.
std::string_view startTag(std::string_view text) {
  const bool hasOuterSpace = !text.empty() && (isSpace(text.front()) || isSpace(text.back()));
  return hasOuterSpace ? "<t xml:space=\"preserve\">" : "<t>";
}

constexpr std::string_view kEndTag = "</t>";
constexpr std::string_view kLineBreak = "\n";

}  // namespace

// The escape of a control character begins with an underscore.
bool beginsWithEscape(std::string_view text) {
  if (!text.starts_with(kEscapeBegin)) {
    return false;
  }
  text.remove_prefix(kEscapeBegin.size());
  const auto end = std::find_if(text.begin(), text.end(), [](char c) { return hexValue(c) < 0; });
  return end != text.begin() && end != text.end() && (*end == '_' || isControl(*end));
}

std::string escapedText(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string result;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    if (isControl(c)) {
      result.append(c < 0x10 ? "_x000" : "_x001").append(1, kDigits[c & 0xF]).append("_");
    } else {
      result.append(beginsWithEscape(text.substr(at)) ? "_x005F" : "").append(1, c);
    }
  }
  return result;
}

void writeTextElement(OutputBuffer& out, MarkupText& markup, std::string_view text) {
  if (text.find(kEscapeBegin) == std::string_view::npos) {
    writeEscapedTextElement(out, markup, text);
  } else {
    writeEscapedTextElement(out, markup, escapedText(text));
  }
}

void writeEscapedTextElement(OutputBuffer& out, MarkupText& markup, std::string_view text) {
  const std::string_view start = startTag(text);
  out.write(start.data(), start.size());
  markup.content(out, text, kLineBreak);
  out.write(kEndTag.data(), kEndTag.size());
}

void appendTextElement(std::string& out, MarkupText& markup, std::string_view text) {
  const std::string escaped = escapedText(text);
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

void appendXstring(std::string& out, std::string_view text) {
  std::string escaped;
  for (std::size_t at = 0; at < text.size(); ++at) {
    escaped.append(beginsWithEscape(text.substr(at)) ? "_x005F" : "").append(1, text[at]);
  }
  appendXml(out, escaped);
}

}  // namespace scrivalen::xlsx
