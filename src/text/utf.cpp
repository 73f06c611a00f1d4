#include "text/utf.h"

#include <algorithm>

namespace scrivalen {
namespace {

constexpr std::size_t kAsciiBlock = 16;

bool isAsciiBlock(const char* at) {
  unsigned char all = 0;
  for (std::size_t i = 0; i < kAsciiBlock; ++i) {
    all = static_cast<unsigned char>(all | static_cast<unsigned char>(at[i]));
  }
  return all < 0x80;
}

struct LeadByte {
  int trailing;            // the number of bytes that follow; -1 for a byte that cannot begin a sequence
  char32_t bits;           // the byte's part of the code point
  unsigned char firstLow;  // the range of the first trailing byte (Unicode 15, table 3-7)
  unsigned char firstHigh;
};

LeadByte leadByte(unsigned char c) {
  if (c >= 0xC2 && c <= 0xDF) return {1, c & 0x1Fu, 0x80, 0xBF};
  if (c == 0xE0) return {2, 0, 0xA0, 0xBF};
  if (c == 0xED) return {2, 0xD, 0x80, 0x9F};
  if (c >= 0xE1 && c <= 0xEF) return {2, c & 0xFu, 0x80, 0xBF};
  if (c == 0xF0) return {3, 0, 0x90, 0xBF};
  if (c >= 0xF1 && c <= 0xF3) return {3, c & 0x7u, 0x80, 0xBF};
  if (c == 0xF4) return {3, 4, 0x80, 0x8F};
  return {-1, 0, 0, 0};
}

// Decodes the non-ASCII sequence at `at` and moves past it, or, if it is ill-formed, past its maximal subpart.
bool decodeSequence(const char*& at, const char* end, char32_t& result) {
  const LeadByte lead = leadByte(static_cast<unsigned char>(*at++));
  if (lead.trailing < 0) {
    return false;
  }
  result = lead.bits;
  unsigned char low = lead.firstLow;
  unsigned char high = lead.firstHigh;
  for (int i = 0; i < lead.trailing; ++i) {
    if (at == end) {
      return false;
    }
    const auto c = static_cast<unsigned char>(*at);
    if (c < low || c > high) {
      return false;
    }
    result = (result << 6) | (c & 0x3Fu);
    ++at;
    low = 0x80;
    high = 0xBF;
  }
  return true;
}

}  // namespace

std::size_t utf8Length(char lead) {
  const auto byte = static_cast<unsigned char>(lead);
  return byte < 0x80 ? 1 : static_cast<std::size_t>(leadByte(byte).trailing + 1);
}

const char* endOfAscii(const char* at, const char* end) {
  while (static_cast<std::size_t>(end - at) >= kAsciiBlock && isAsciiBlock(at)) {
    at += kAsciiBlock;
  }
  while (at != end && static_cast<unsigned char>(*at) < 0x80) {
    ++at;
  }
  return at;
}

bool nextUtf8(const char*& at, const char* end, char32_t& c) {
  const auto first = static_cast<unsigned char>(*at);
  if (first >= 0x80) {
    return decodeSequence(at, end, c);
  }
  c = first;
  ++at;
  return true;
}

void appendCharacter(std::wstring& wide, char32_t c) {
  if (sizeof(wchar_t) > 2) {
    wide.push_back(static_cast<wchar_t>(c));
  } else {
    forEachUnit(c, [&wide](char16_t unit) { wide.push_back(static_cast<wchar_t>(unit)); });
  }
}

std::size_t appendWide(std::wstring& wide, std::string_view utf8) {
  std::size_t replaced = 0;
  const char* at = utf8.data();
  const char* const end = at + utf8.size();
  while (at != end) {
    const char* const start = at;
    at = endOfAscii(at, end);
    const std::size_t before = wide.size();
    wide.resize(before + static_cast<std::size_t>(at - start));
    std::copy(start, at, wide.begin() + static_cast<std::ptrdiff_t>(before));
    if (at == end) {
      break;
    }
    char32_t c = 0;
    if (!decodeSequence(at, end, c)) {
      c = kReplacement;
      ++replaced;
    }
    appendCharacter(wide, c);
  }
  return replaced;
}

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

void appendUtf8(std::string& utf8, std::wstring_view wide) {
  const wchar_t* at = wide.data();
  const wchar_t* const end = at + wide.size();
  while (at != end) {
    char bytes[4];
    utf8.append(bytes, putUtf8(nextCharacter(at, end), bytes));
  }
}

std::wstring toWide(std::string_view utf8) {
  std::wstring wide;
  wide.reserve(utf8.size());
  appendWide(wide, utf8);
  return wide;
}

std::string toUtf8(std::wstring_view wide) {
  std::string utf8;
  utf8.reserve(wide.size());
  appendUtf8(utf8, wide);
  return utf8;
}

}  // namespace scrivalen
