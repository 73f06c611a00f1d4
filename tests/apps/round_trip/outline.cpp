#include "round_trip/outline.h"

#include "text/utf.h"

namespace scrivalen::test {

std::size_t Outline::beginBlock(const std::string& name) {
  add(name);
  indent_ += "  ";
  return lines_.size() - 1;
}

void Outline::endBlock() { indent_.resize(indent_.size() - 2); }

void Outline::add(const std::string& line) { lines_ += indent_ + line + "\n"; }

void Outline::beginText(const std::string& name, bool mayBeEmpty) {
  name_ = name;
  mayBeEmpty_ = mayBeEmpty;
  characters_.clear();
}

void Outline::text(std::string_view text, const Style& style) {
  const char* at = text.data();
  while (at != text.data() + text.size()) {
    const char* const begin = at;
    char32_t c = 0;
    nextUtf8(at, text.data() + text.size(), c);
    const bool isBlank = c == ' ' || c == '\n';
    if (isBlank && c == ' ' && (characters_.empty() || characters_.back().bytes == "\n")) {
      continue;
    }
    while (c == '\n' && !characters_.empty() && characters_.back().bytes == " ") {
      characters_.pop_back();
    }
    characters_.push_back({std::string(begin, at), isBlank ? Style() : style});
  }
}

void Outline::endText() {
  while (!characters_.empty() && characters_.back().bytes == " ") {
    characters_.pop_back();
  }
  bool hasContent = mayBeEmpty_;
  std::string line = name_;
  std::string style;
  for (const Character& c : characters_) {
    const bool isBlank = c.bytes == " " || c.bytes == "\n";
    hasContent = hasContent || !isBlank;
    if (!isBlank && nameOf(c.style) != style) {
      style = nameOf(c.style);
      line += "{" + style + "}";
    }
    line += c.bytes == "\n" ? "\\n" : c.bytes;
  }
  if (hasContent) {
    add(line);
  }
}

std::string Outline::nameOf(const Style& style) {
  return std::string(style.strong ? "S" : "") + (style.emphasis ? "E" : "") + (style.deleted ? "D" : "") +
         (style.code ? "C" : "") + style.link;
}

}  // namespace scrivalen::test
