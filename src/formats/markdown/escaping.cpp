#include "formats/markdown/escaping.h"

#include "text/ascii.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace scrivalen::markdown {
namespace {

constexpr std::string_view kBreak = "<br>";
constexpr std::size_t kRemembered = 6;  // "https" and the character before it

// The characters that may be markup within a line.
constexpr auto kIsSpecial = [] {
  std::array<bool, 256> is = {};
  for (const char c : std::string_view("\\`*_[]<&~|:.@#{\n")) {
    is[static_cast<unsigned char>(c)] = true;
  }
  return is;
}();

bool isAlphanumeric(char c) { return isAsciiLetter(c) || isAsciiDigit(c); }

// Whether "&" begins a character reference: also if it could with the text that comes later.
bool isReference(std::string_view rest) {
  constexpr std::size_t kLongest = 33;
  const std::size_t size = std::min(rest.size(), kLongest);
  for (std::size_t i = 1; i < size; ++i) {
    if (rest[i] == ';') {
      return i > 1;
    }
    if (!isAlphanumeric(rest[i]) && !(i == 1 && rest[i] == '#')) {
      return false;
    }
  }
  return rest.size() < kLongest;
}

}  // namespace

char Escaper::before(std::string_view text, std::size_t at, std::size_t distance) const {
  if (distance <= at) {
    return text[at - distance];
  }
  const std::size_t earlier = distance - at;
  return earlier <= before_.size() ? before_[before_.size() - earlier] : '\0';
}

// Whether a word, and nothing longer, is before a place.
bool Escaper::follows(std::string_view text, std::size_t at, std::string_view word) const {
  for (std::size_t i = 1; i <= word.size(); ++i) {
    if (asciiLower(before(text, at, i)) != word[word.size() - i]) {
      return false;
    }
  }
  return !isAlphanumeric(before(text, at, word.size() + 1));
}

bool Escaper::isMarkup(std::string_view text, std::size_t at, std::size_t size) const {
  const std::string_view rest = text.substr(at);
  const bool isLast = rest.size() == 1;
  const char next = isLast ? '\0' : rest[1];
  switch (rest.front()) {
    case '<': return isLast || (next != '=' && !isAsciiDigit(next));
    case '&': return isReference(rest);
    // The character after those that are written may still become a reference.
    case '_': return !isAlphanumeric(before(text, at, 1)) || !isAlphanumeric(next) || (at + 1 == size);
    case '|': return place_ == Place::Cell;
    case '#': return place_ == Place::Heading && (before(text, at, 1) == ' ' || before(text, at, 1) == '\0');
    case '{': return place_ == Place::Heading && (isLast || next == '#');  // "{#id}"
    case ':':
      return std::string_view("://").starts_with(rest.substr(0, 3)) &&
             (follows(text, at, "http") || follows(text, at, "https") || follows(text, at, "ftp"));
    case '.': return (isLast || next != ' ') && follows(text, at, "www");
    case '@': {
      const char previous = before(text, at, 1);
      const bool isName =
          isAlphanumeric(previous) || (previous != '\0' && std::string_view("._-+").find(previous) != rest.npos);
      return isName && (isLast || isAlphanumeric(next));
    }
    default: return true;
  }
}

// Whether a character would make its line a block, at the beginning of it or after a number there.
bool Escaper::isMarkupAtStart(std::string_view text, std::size_t at) {
  const char c = text[at];
  const bool isLast = at + 1 == text.size();
  const auto comesBefore = [&](std::string_view characters) {
    return isLast || characters.find(text[at + 1]) != characters.npos;
  };
  if (isAsciiDigit(c)) {
    start_ = Start::Number;
    return false;
  }
  const bool isAfterNumber = start_ == Start::Number;
  start_ = Start::Past;
  if (isAfterNumber) {
    return (c == '.' || c == ')') && comesBefore(" ");
  }
  switch (c) {
    case '#': return comesBefore("# ");
    case '>':
    case '|': return true;
    case '=': return comesBefore("= ");
    case '-': return comesBefore("- :|");
    case ':': return comesBefore("-");
    case '+': return comesBefore(" ");
    default: return false;
  }
}

char* Escaper::put(char* out, std::string_view text, std::size_t size) {
  for (std::size_t at = 0; at < size; ++at) {
    const char c = text[at];
    bool isEscaped = false;
    if (start_ != Start::Past) {
      isEscaped = isMarkupAtStart(text, at);
    }
    if (kIsSpecial[static_cast<unsigned char>(c)]) {
      if (c == '\n') {
        std::memcpy(out, kBreak.data(), kBreak.size());
        out += kBreak.size();
        continue;
      }
      isEscaped = isEscaped || isMarkup(text, at, size);
    }
    if (isEscaped) {
      *out++ = '\\';
    }
    *out++ = c;
  }
  remember(text.substr(0, size));
  return out;
}

void Escaper::remember(std::string_view text) {
  if (text.size() >= kRemembered) {
    before_.assign(text.substr(text.size() - kRemembered));
  } else {
    before_.append(text);
    before_.erase(0, before_.size() - std::min(before_.size(), kRemembered));
  }
}

}  // namespace scrivalen::markdown
