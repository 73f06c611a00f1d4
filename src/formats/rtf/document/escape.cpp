#include "formats/rtf/document/escape.h"

#include "document/word/bookmark_name.h"
#include "text/ascii.h"
#include "text/utf.h"
#include "text/windows_1252.h"

#include <algorithm>
#include <bit>

namespace scrivalen::document::rtf {
namespace {

// LibreOffice puts a sixth of an em into each pair of blanks unless something is between them.
constexpr std::string_view kBetweenBlanks = "{}";

constexpr std::uint64_t inEachByte(std::uint64_t byte) { return byte * 0x0101010101010101; }

// Marks the top bit of the first of eight bytes, from the lowest, that is a character, and perhaps of later ones.
constexpr std::uint64_t markFirst(std::uint64_t bytes, unsigned char character) {
  const std::uint64_t other = bytes ^ inEachByte(character);
  return (other - inEachByte(1)) & ~other & inEachByte(0x80);
}

// Marks the top bit of each of eight bytes that is a blank.
constexpr std::uint64_t markBlanks(std::uint64_t bytes) {
  const std::uint64_t other = bytes ^ inEachByte(' ');
  return ~(((other & inEachByte(0x7F)) + inEachByte(0x7F)) | other | inEachByte(0x7F));
}

constexpr bool isPlain(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 0x20 && byte < 0x80 && c != '\\' && c != '{' && c != '}';
}

constexpr bool isPlainAfter(char previous, char c) { return isPlain(c) && !(c == ' ' && previous == ' '); }

// The number of plain bytes that eight bytes begin with.
std::size_t countPlain(char previous, const char* from) {
  if constexpr (std::endian::native != std::endian::little) {
    std::size_t count = 0;
    for (; count < 8 && isPlainAfter(previous, from[count]); ++count) {
      previous = from[count];
    }
    return count;
  }
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, from, sizeof bytes);
  const std::uint64_t blanks = markBlanks(bytes);
  const std::uint64_t afterBlanks = blanks << 8 | (previous == ' ' ? 0x80 : 0);
  const std::uint64_t special = (blanks & afterBlanks) | (bytes & inEachByte(0x80)) |
                                ((bytes - inEachByte(0x20)) & ~bytes & inEachByte(0x80)) | markFirst(bytes, '\\') |
                                markFirst(bytes, '{') | markFirst(bytes, '}');
  return static_cast<std::size_t>(std::countr_zero(special)) / 8;
}

char* putWord(char* out, std::string_view word) {
  std::memcpy(out, word.data(), word.size());
  return out + word.size();
}

char* putUnit(char* out, char16_t unit) {
  out = putWord(out, "\\u");
  out = std::to_chars(out, out + 6, static_cast<std::int16_t>(unit)).ptr;
  *out++ = '?';
  return out;
}

char* putCharacter(char* out, char32_t c) {
  constexpr char32_t kNoBreakSpace = 0xA0;
  const auto byte = toWindows1252(c);
  // The five bytes that Windows-1252 leaves unassigned stand for control characters.
  if (byte && (c >= kNoBreakSpace || c < 0x80)) {
    out = putWord(out, "\\'");
    *out++ = kHexDigits[*byte >> 4];
    *out++ = kHexDigits[*byte & 0xF];
    return out;
  }
  forEachUnit(c, [&out](char16_t unit) { out = putUnit(out, unit); });
  return out;
}

char* putSpecial(char* out, const char*& at, const char* end) {
  switch (*at) {
    case '\n': ++at; return putWord(out, "\\line ");
    case '\t': ++at; return putWord(out, "\\tab ");
    case ' ': ++at; return putWord(putWord(out, kBetweenBlanks), " ");
    case '\\':
    case '{':
    case '}':
      *out++ = '\\';
      *out++ = *at++;
      return out;
    default: break;
  }
  char32_t c = 0;
  if (!nextUtf8(at, end, c) || c < 0x20) {
    c = kReplacement;
  }
  return putCharacter(out, c);
}

// The end of a piece, between two characters.
std::size_t pieceOf(std::string_view text) {
  if (text.size() <= kLongestInPlace) {
    return text.size();
  }
  std::size_t end = kLongestInPlace;
  for (int i = 0; i < 3 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80; ++i) {
    --end;
  }
  return end;
}

void writeBookmark(OutputBuffer& out, std::string_view word, std::string_view id) {
  put(out, word);
  writeText(out, bookmarkName(id));
  out.put('}');
}

}  // namespace

char* putText(char* out, std::string_view text) {
  const char* at = text.data();
  const char* const end = at + text.size();
  const auto previous = [&at, begin = at] { return at == begin ? '\0' : at[-1]; };
  while (at != end) {
    while (end - at >= 8) {
      const std::size_t plain = countPlain(previous(), at);
      std::memcpy(out, at, 8);
      at += plain;
      out += plain;
      if (plain < 8) {
        break;
      }
    }
    while (at != end && isPlainAfter(previous(), *at)) {
      *out++ = *at++;
    }
    while (at != end && !isPlainAfter(previous(), *at)) {
      out = putSpecial(out, at, end);
    }
  }
  return out;
}

void writeText(OutputBuffer& out, std::string_view text) {
  while (!text.empty()) {
    const std::size_t piece = pieceOf(text);
    out.advance(putText(out.reserve(spaceForText(piece)), text.substr(0, piece)));
    if (piece < text.size() && text[piece - 1] == ' ' && text[piece] == ' ') {
      put(out, kBetweenBlanks);
    }
    text.remove_prefix(piece);
  }
}

// In instructions a backslash begins a switch unless it is doubled.
void writeArgument(OutputBuffer& out, std::string_view text, std::string_view quote) {
  while (!text.empty()) {
    const std::size_t plain = std::min(text.find_first_of("\"\\"), text.size());
    writeText(out, text.substr(0, plain));
    if (plain < text.size()) {
      put(out, text[plain] == '"' ? quote : "\\\\\\\\");
    }
    text.remove_prefix(std::min(plain + 1, text.size()));
  }
}

void writeBookmarkBegin(OutputBuffer& out, std::string_view id) { writeBookmark(out, "{\\*\\bkmkstart ", id); }
void writeBookmarkEnd(OutputBuffer& out, std::string_view id) { writeBookmark(out, "{\\*\\bkmkend ", id); }

}  // namespace scrivalen::document::rtf
