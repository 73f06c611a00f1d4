#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace scrivalen {

inline constexpr char32_t kReplacement = 0xFFFD;

constexpr bool isSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }
/// Whether a number is a Unicode scalar value.
constexpr bool isCharacter(char32_t c) { return !isSurrogate(c) && c <= 0x10FFFF; }
constexpr bool isHighSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDBFF; }
constexpr bool isLowSurrogate(char32_t c) { return c >= 0xDC00 && c <= 0xDFFF; }

/// The surrogates of a character above U+FFFF.
constexpr char32_t highSurrogate(char32_t c) { return 0xD800 + ((c - 0x10000) >> 10); }
constexpr char32_t lowSurrogate(char32_t c) { return 0xDC00 + ((c - 0x10000) & 0x3FF); }

/// The character that a surrogate pair encodes.
constexpr char32_t fromSurrogates(char32_t high, char32_t low) {
  return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

/// The number of UTF-16 code units of a character.
constexpr std::size_t unitsOf(char32_t c) { return c > 0xFFFF ? 2 : 1; }

/// Calls @p take with each UTF-16 code unit of a character; a lone surrogate is one unit.
template <typename Take>
void forEachUnit(char32_t c, Take take) {
  if (unitsOf(c) == 1) {
    take(static_cast<char16_t>(c));
    return;
  }
  take(static_cast<char16_t>(highSurrogate(c)));
  take(static_cast<char16_t>(lowSurrogate(c)));
}

/// U+FFFD for a number above 0x10FFFF; anything else, surrogates included, is returned unchanged.
constexpr char32_t asCharacter(char32_t c) { return c > 0x10FFFF ? kReplacement : c; }

/// Returns the character at @p at and moves past it. A surrogate pair is one character, even where wide characters have
/// 32 bits; a lone surrogate or a number above 0x10FFFF is returned as is.
inline char32_t nextCharacter(const wchar_t*& at, const wchar_t* end) {
  const auto c = static_cast<char32_t>(*at++);
  if (isHighSurrogate(c) && at != end && isLowSurrogate(static_cast<char32_t>(*at))) {
    return fromSurrogates(c, static_cast<char32_t>(*at++));
  }
  return c;
}

/// Writes one character as UTF-8; a surrogate or a number above 0x10FFFF becomes U+FFFD.
/// @param out  must have space for 4 bytes
/// @return the number of bytes written
inline std::size_t putUtf8(char32_t c, char* out) {
  const auto byte = [](char32_t value) { return static_cast<char>(static_cast<unsigned char>(value)); };
  if (c < 0x80) {
    out[0] = byte(c);
    return 1;
  }
  if (c < 0x800) {
    out[0] = byte(0xC0 | (c >> 6));
    out[1] = byte(0x80 | (c & 0x3F));
    return 2;
  }
  if (!isCharacter(c)) {
    c = kReplacement;
  }
  if (c < 0x10000) {
    out[0] = byte(0xE0 | (c >> 12));
    out[1] = byte(0x80 | ((c >> 6) & 0x3F));
    out[2] = byte(0x80 | (c & 0x3F));
    return 3;
  }
  out[0] = byte(0xF0 | (c >> 18));
  out[1] = byte(0x80 | ((c >> 12) & 0x3F));
  out[2] = byte(0x80 | ((c >> 6) & 0x3F));
  out[3] = byte(0x80 | (c & 0x3F));
  return 4;
}

/// Appends UTF-8 to wide text; every maximal ill-formed sequence becomes one U+FFFD.
/// @return how many sequences were replaced
std::size_t appendWide(std::wstring& wide, std::string_view utf8);

/// Converts UTF-8 to a new wide text.
std::wstring toWide(std::string_view utf8);

/// The length in bytes of a sequence with this lead byte; 0 for a byte that cannot begin one.
std::size_t utf8Length(char lead);

/// The end of the ASCII characters that begin at @p at: the first other byte, or @p end.
const char* endOfAscii(const char* at, const char* end);

/// Decodes the UTF-8 sequence at @p at, which is before @p end, and moves past it. Returns false after moving past a
/// maximal ill-formed sequence.
bool nextUtf8(const char*& at, const char* end, char32_t& c);

/// The beginning of a text that has at most so many UTF-16 code units, in whole characters.
/// @param utf8  well-formed
std::string_view cutToUnits(std::string_view utf8, std::size_t units);

/// Appends wide text to UTF-8; lone surrogates become U+FFFD.
void appendUtf8(std::string& utf8, std::wstring_view wide);
std::string toUtf8(std::wstring_view wide);

/// Appends one character to wide text, as a surrogate pair if it needs one and wide characters have 16 bits.
void appendCharacter(std::wstring& wide, char32_t c);

}  // namespace scrivalen
