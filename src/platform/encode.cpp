#include "platform/encode.h"

#include "platform/utf.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace scrivalen::platform {
namespace {

constexpr std::size_t kBlock = 16;
constexpr std::size_t kChunk = 4096;       // characters that are written between two looks at the buffer's room
constexpr std::size_t kLongest = 6;        // bytes of the longest escape, which is longer than any UTF-8 sequence
constexpr std::size_t kUnitsPerCharacter = 2;

// What a character below 0x80 becomes; an empty text is the character itself, a blank one is forbidden by XML 1.0.
constexpr std::string_view kForbidden = " ";

constexpr std::array<std::string_view, 128> makeEscapes(std::string_view escaped) {
  std::array<std::string_view, 128> table{};
  for (std::size_t c = 0; c < 0x20; ++c) {
    table[c] = kForbidden;
  }
  table['\t'] = table['\n'] = table['\r'] = {};
  for (const char c : escaped) {
    table[static_cast<std::size_t>(c)] = c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : "&quot;";
  }
  return table;
}

constexpr auto kQuoteEscapes = makeEscapes("&<>\"");
constexpr auto kContentEscapes = makeEscapes("&<>");

constexpr bool isForbiddenByXml(char32_t c) {
  return c < 0x20 ? c != '\t' && c != '\n' && c != '\r' : isSurrogate(c) || c == 0xFFFE || c == 0xFFFF || c > 0x10FFFF;
}

unsigned value(wchar_t c) { return static_cast<unsigned>(c); }

struct PlainUtf8 {
  static unsigned needsCare(unsigned c) { return c >= 0x80u; }
};

// Quotes are looked at in content too: they are rare there, and one test serves both.
struct PlainMarkup {
  static unsigned needsCare(unsigned c) {
    return static_cast<unsigned>(c - 0x20u >= 0x60u) | static_cast<unsigned>(c == '&') |
           static_cast<unsigned>(c == '<') | static_cast<unsigned>(c == '>') | static_cast<unsigned>(c == '"');
  }
};

struct PlainUtf16 {
  static unsigned needsCare(unsigned c) { return c >= 0x10000u; }
};

struct PlainLowByte {
  static unsigned needsCare(unsigned c) { return c >= 0x100u; }
};

template <typename Plain>
bool isPlainBlock(const wchar_t* at) {
  unsigned care = 0;
  for (std::size_t i = 0; i < kBlock; ++i) {
    care |= Plain::needsCare(value(at[i]));
  }
  return care == 0;
}

char* copyBytes(const wchar_t* from, std::size_t count, char* out) {
  for (std::size_t i = 0; i < count; ++i) {
    out[i] = static_cast<char>(from[i]);
  }
  return out + count;
}

char* copyText(std::string_view text, char* out) {
  std::memcpy(out, text.data(), text.size());
  return out + text.size();
}

char* putReplacement(char32_t lost, char* out, LossCounter& loss) {
  loss.note(lost);
  return out + putUtf8(kReplacement, out);
}

// Calls `careful(at, end, out)` for each character of a block that is not plain; it moves `at` past the character and
// answers where the next byte goes.
template <typename Plain, typename Careful>
void putBytes(OutputBuffer& buffer, std::wstring_view text, Careful careful) {
  const wchar_t* at = text.data();
  const wchar_t* const end = at + text.size();
  while (at < end) {
    const wchar_t* const stop = at + std::min(kChunk, static_cast<std::size_t>(end - at));
    char* out = buffer.room(static_cast<std::size_t>(stop - at) * kLongest);
    while (at < stop) {
      if (static_cast<std::size_t>(stop - at) >= kBlock && isPlainBlock<Plain>(at)) {
        out = copyBytes(at, kBlock, out);
        at += kBlock;
        continue;
      }
      const wchar_t* const blockEnd = at + std::min(kBlock, static_cast<std::size_t>(stop - at));
      while (at < blockEnd) {
        if (Plain::needsCare(value(*at)) == 0) {
          *out++ = static_cast<char>(*at++);
        } else {
          out = careful(at, end, out);
        }
      }
    }
    buffer.advance(out);
  }
}

bool isNamedReference(std::wstring_view name) {
  constexpr std::wstring_view kNames[] = {L"amp", L"lt", L"gt", L"quot", L"apos"};
  return std::find(std::begin(kNames), std::end(kNames), name) != std::end(kNames);
}

int digitValue(wchar_t c, int base) {
  if (c >= L'0' && c <= L'9') return static_cast<int>(c - L'0');
  if (base == 16 && c >= L'a' && c <= L'f') return static_cast<int>(c - L'a') + 10;
  if (base == 16 && c >= L'A' && c <= L'F') return static_cast<int>(c - L'A') + 10;
  return -1;
}

bool isCharacterReference(std::wstring_view digits) {
  const int base = digits.starts_with(L'x') ? 16 : 10;
  digits.remove_prefix(base == 16 ? 1 : 0);
  char32_t number = 0;
  for (const wchar_t c : digits) {
    const int digit = digitValue(c, base);
    if (digit < 0) {
      return false;
    }
    number = std::min<char32_t>(0x110000, number * static_cast<char32_t>(base) + static_cast<char32_t>(digit));
  }
  return !digits.empty() && !isForbiddenByXml(number);
}

// Whether the ampersand at `at` begins a reference that XML allows.
bool isReference(const wchar_t* at, const wchar_t* end) {
  constexpr std::ptrdiff_t kFarthest = 64;  // leading zeros aside, no reference is longer than ten characters
  const wchar_t* const limit = end - at > kFarthest ? at + kFarthest : end;
  const wchar_t* const semicolon = std::find(at, limit, L';');
  if (semicolon == limit) {
    return false;
  }
  const std::wstring_view body(at + 1, static_cast<std::size_t>(semicolon - at - 1));
  return body.starts_with(L'#') ? isCharacterReference(body.substr(1)) : isNamedReference(body);
}

}  // namespace

void putUtf8Text(OutputBuffer& buffer, std::wstring_view text, LossCounter& loss) {
  putBytes<PlainUtf8>(buffer, text, [&loss](const wchar_t*& at, const wchar_t* end, char* out) {
    const char32_t c = nextCharacter(at, end);
    return isSurrogate(c) || c > 0x10FFFF ? putReplacement(c, out, loss) : out + putUtf8(c, out);
  });
}

void putQuoted(OutputBuffer& buffer, std::wstring_view text, LossCounter& loss) {
  putBytes<PlainMarkup>(buffer, text, [&loss](const wchar_t*& at, const wchar_t* end, char* out) {
    const char32_t c = nextCharacter(at, end);
    if (isForbiddenByXml(c)) {
      return putReplacement(c, out, loss);
    }
    return c < 0x80 && !kQuoteEscapes[c].empty() ? copyText(kQuoteEscapes[c], out) : out + putUtf8(c, out);
  });
}

void putElementContent(OutputBuffer& buffer, std::wstring_view text, LossCounter& loss) {
  const wchar_t* const begin = text.data();
  putBytes<PlainMarkup>(buffer, text, [&loss, begin](const wchar_t*& at, const wchar_t* end, char* out) {
    const wchar_t* const start = at;
    const char32_t c = nextCharacter(at, end);
    if (isForbiddenByXml(c)) {
      return putReplacement(c, out, loss);
    }
    const bool stays = c >= 0x80 || kContentEscapes[c].empty() || (c == '&' && isReference(start, end)) ||
                       (c == '>' && !(start - begin >= 2 && start[-1] == L']' && start[-2] == L']'));
    return stays ? out + putUtf8(c, out) : copyText(kContentEscapes[c], out);
  });
}

void putLowBytes(OutputBuffer& buffer, std::wstring_view text, LossCounter& loss) {
  putBytes<PlainLowByte>(buffer, text, [&loss](const wchar_t*& at, const wchar_t*, char* out) {
    const auto c = static_cast<char32_t>(*at++);
    loss.note(c);
    if (c > 0xFFFF) {
      *out++ = static_cast<char>((0xD800 + ((c - 0x10000) >> 10)) & 0xFF);
    }
    *out++ = static_cast<char>(c & 0xFF);
    return out;
  });
}

namespace {

char* putUnit(unsigned unit, char* out) {
  out[0] = static_cast<char>(unit & 0xFF);
  out[1] = static_cast<char>((unit >> 8) & 0xFF);
  return out + 2;
}

// Where the machine's own order is the file's, whole units are stored, which the compiler turns into wide moves.
char* copyUnits(const wchar_t* from, std::size_t count, char* out) {
  if constexpr (std::endian::native == std::endian::little) {
    char16_t units[kBlock];
    for (std::size_t i = 0; i < count; ++i) {
      units[i] = static_cast<char16_t>(from[i]);
    }
    std::memcpy(out, units, count * sizeof(char16_t));
    return out + count * sizeof(char16_t);
  } else {
    for (std::size_t i = 0; i < count; ++i) {
      out = putUnit(value(from[i]), out);
    }
    return out;
  }
}

char* putCharacterAsUtf16(unsigned c, char* out) {
  if (c < 0x10000) {
    return putUnit(c, out);
  }
  out = putUnit(0xD800 + ((c - 0x10000) >> 10), out);
  return putUnit(0xDC00 + ((c - 0x10000) & 0x3FF), out);
}

}  // namespace

void putUtf16(OutputBuffer& buffer, std::wstring_view text) {
  const wchar_t* at = text.data();
  const wchar_t* const end = at + text.size();
  while (at < end) {
    const wchar_t* const stop = at + std::min(kChunk, static_cast<std::size_t>(end - at));
    char* out = buffer.room(static_cast<std::size_t>(stop - at) * kUnitsPerCharacter * sizeof(char16_t));
    while (at < stop) {
      if (static_cast<std::size_t>(stop - at) >= kBlock && isPlainBlock<PlainUtf16>(at)) {
        out = copyUnits(at, kBlock, out);
        at += kBlock;
      } else {
        out = putCharacterAsUtf16(value(*at++), out);
      }
    }
    buffer.advance(out);
  }
}

std::wstring quotedText(std::wstring_view text) {
  std::wstring result;
  result.reserve(text.size());
  const wchar_t* at = text.data();
  const wchar_t* const end = at + text.size();
  while (at != end) {
    const wchar_t* const start = at;
    const char32_t c = nextCharacter(at, end);
    if (isForbiddenByXml(c)) {
      result += static_cast<wchar_t>(kReplacement);
    } else if (c < 0x80 && !kQuoteEscapes[c].empty()) {
      result.append(kQuoteEscapes[c].begin(), kQuoteEscapes[c].end());
    } else {
      result.append(start, at);
    }
  }
  return result;
}

}  // namespace scrivalen::platform
