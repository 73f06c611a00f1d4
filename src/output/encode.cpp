#include "output/encode.h"

#include "text/ascii.h"
#include "text/plain_text.h"
#include "text/utf.h"
#include "text/xml_characters.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace scrivalen {
namespace {

constexpr std::size_t kChunk = 4096;       // characters per request for buffer space
constexpr std::size_t kLongestEscape = 6;  // bytes of the longest escape, which is longer than any UTF-8 sequence

// The escape of each character below 0x80; empty for a character that is written as is.
constexpr std::array<std::string_view, 128> makeEscapes(std::string_view escaped) {
  std::array<std::string_view, 128> table{};
  for (const char c : escaped) {
    table[static_cast<unsigned char>(c)] = c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : "&quot;";
  }
  return table;
}

constexpr auto kQuoteEscapes = makeEscapes("&<>\"");
constexpr auto kContentEscapes = makeEscapes("&<>");

using PlainUtf8 = PlainBelow<char, 0x80>;
using PlainLowByte = PlainBelow<char, 0x100>;
using PlainUtf16 = PlainBelow<char16_t, 0x10000>;

// Quotes are not plain in content either: they are rare there, and one test serves both.
struct PlainMarkup : PlainBelow<char, 0x80> {
  static bool isPlain(unsigned c) { return c >= 0x20 && c < kEnd && c != '&' && c != '<' && c != '>' && c != '"'; }

  // '<' and '>' differ in one bit, and so do '"' and '&'.
  static bool arePlain(std::uint64_t bytes) {
    const std::uint64_t printable = bytes + eightTimes(0x80 - 0x20);
    return allMarked(printable & differFrom(bytes, '<', '<' ^ '>') & differFrom(bytes, '"', '"' ^ '&'));
  }
};

template <typename Unit>
char* putUnit(unsigned c, char* out) {
  const Unit unit = storedUnit<Unit>(c);
  std::memcpy(out, &unit, sizeof unit);
  return out + sizeof unit;
}

char* copyText(std::string_view text, char* out) {
  std::memcpy(out, text.data(), text.size());
  return out + text.size();
}

char* putReplacement(char32_t lost, char* out, LossCounter& loss) {
  loss.note(lost);
  return out + putUtf8(kReplacement, out);
}

// The letters of many alphabets: two bytes in UTF-8, never escaped.
template <typename Plain>
constexpr bool isTwoByteUtf8(unsigned c) {
  return Plain::kEnd == 0x80 && c >= 0x80 && c < 0x800;
}

// Writes a character and moves `at` past it. One that is not plain goes to `writeSpecial(at, end, out)`, which moves
// past it too; a surrogate pair may extend past the end of the block.
template <typename Plain, typename WriteSpecial>
char* putCharacter(const wchar_t*& at, const wchar_t* end, char* out, WriteSpecial writeSpecial) {
  const unsigned c = characterValue(*at);
  if (Plain::isPlain(c)) {
    ++at;
    return putUnit<typename Plain::Unit>(c, out);
  }
  if (isTwoByteUtf8<Plain>(c)) {
    ++at;
    return out + putUtf8(c, out);
  }
  return writeSpecial(at, end, out);
}

template <typename Plain, typename WriteSpecial>
void putText(OutputBuffer& buffer, std::wstring_view text, WriteSpecial writeSpecial) {
  const wchar_t* at = text.data();
  const wchar_t* const end = at + text.size();
  while (at < end) {
    const wchar_t* const stop = at + std::min(kChunk, static_cast<std::size_t>(end - at));
    char* out = buffer.reserve(static_cast<std::size_t>(stop - at) * kLongestEscape);
    at = transcode(
        at, stop,
        [&](const wchar_t* from, std::size_t length) {
          const std::size_t plain = copyPlainBlocks<Plain>(from, length, out);
          out += plain * sizeof(typename Plain::Unit);
          return plain;
        },
        [&](const wchar_t*& from) {
          out = putCharacter<Plain>(from, end, out, writeSpecial);
          return true;
        });
    buffer.advance(out);
  }
}

bool isNamedReference(std::wstring_view name) {
  constexpr std::wstring_view kNames[] = {L"amp", L"lt", L"gt", L"quot", L"apos"};
  return std::find(std::begin(kNames), std::end(kNames), name) != std::end(kNames);
}

bool isCharacterReference(std::wstring_view digits) {
  const int base = digits.starts_with(L'x') ? 16 : 10;
  digits.remove_prefix(base == 16 ? 1 : 0);
  char32_t number = 0;
  for (const wchar_t c : digits) {
    const int digit = hexValue(c);
    if (digit < 0 || digit >= base) {
      return false;
    }
    number = std::min<char32_t>(0x110000, number * static_cast<char32_t>(base) + static_cast<char32_t>(digit));
  }
  return !digits.empty() && isXmlCharacter(number);
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
  putText<PlainUtf8>(buffer, text, [&loss](const wchar_t*& at, const wchar_t* end, char* out) {
    const char32_t c = nextCharacter(at, end);
    return isCharacter(c) ? out + putUtf8(c, out) : putReplacement(c, out, loss);
  });
}

void putQuoted(OutputBuffer& buffer, std::wstring_view text, LossCounter& loss) {
  putText<PlainMarkup>(buffer, text, [&loss](const wchar_t*& at, const wchar_t* end, char* out) {
    const char32_t c = nextCharacter(at, end);
    if (!isXmlCharacter(c)) {
      return putReplacement(c, out, loss);
    }
    return c < 0x80 && !kQuoteEscapes[c].empty() ? copyText(kQuoteEscapes[c], out) : out + putUtf8(c, out);
  });
}

void putQuotedOnce(OutputBuffer& buffer, std::wstring_view text, LossCounter& loss) {
  putText<PlainMarkup>(buffer, text, [&loss](const wchar_t*& at, const wchar_t* end, char* out) {
    const wchar_t* const start = at;
    const char32_t c = nextCharacter(at, end);
    if (!isXmlCharacter(c)) {
      return putReplacement(c, out, loss);
    }
    const bool stays = c >= 0x80 || kQuoteEscapes[c].empty() || (c == '&' && isReference(start, end));
    return stays ? out + putUtf8(c, out) : copyText(kQuoteEscapes[c], out);
  });
}

void putElementContent(OutputBuffer& buffer, std::wstring_view text, LossCounter& loss) {
  const wchar_t* const begin = text.data();
  putText<PlainMarkup>(buffer, text, [&loss, begin](const wchar_t*& at, const wchar_t* end, char* out) {
    const wchar_t* const start = at;
    const char32_t c = nextCharacter(at, end);
    if (!isXmlCharacter(c)) {
      return putReplacement(c, out, loss);
    }
    const bool stays = c >= 0x80 || kContentEscapes[c].empty() || (c == '&' && isReference(start, end)) ||
                       (c == '>' && !(start - begin >= 2 && start[-1] == L']' && start[-2] == L']'));
    return stays ? out + putUtf8(c, out) : copyText(kContentEscapes[c], out);
  });
}

void putLowBytes(OutputBuffer& buffer, std::wstring_view text, LossCounter& loss) {
  putText<PlainLowByte>(buffer, text, [&loss](const wchar_t*& at, const wchar_t* end, char* out) {
    const char32_t c = asCharacter(nextCharacter(at, end));
    loss.note(c);
    forEachUnit(c, [&out](char16_t unit) { out = putUnit<char>(unit & 0xFFu, out); });
    return out;
  });
}

void putUtf16(OutputBuffer& buffer, std::wstring_view text) {
  putText<PlainUtf16>(buffer, text, [](const wchar_t*& at, const wchar_t*, char* out) {
    forEachUnit(asCharacter(static_cast<char32_t>(*at++)),
                [&out](char16_t unit) { out = putUnit<char16_t>(unit, out); });
    return out;
  });
}

std::wstring quotedText(std::wstring_view text, LossCounter& loss) {
  std::wstring result;
  result.reserve(text.size());
  const wchar_t* at = text.data();
  const wchar_t* const end = at + text.size();
  while (at != end) {
    const wchar_t* const start = at;
    const char32_t c = nextCharacter(at, end);
    if (!isXmlCharacter(c)) {
      loss.note(c);
      result += static_cast<wchar_t>(kReplacement);
    } else if (c < 0x80 && !kQuoteEscapes[c].empty()) {
      result.append(kQuoteEscapes[c].begin(), kQuoteEscapes[c].end());
    } else {
      result.append(start, at);
    }
  }
  return result;
}

}  // namespace scrivalen
