#include "formats/pdf/typeset/file/syntax.h"

#include "text/calendar.h"
#include "text/utf.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

namespace scrivalen::typeset {
namespace {

constexpr std::string_view kHexDigits = "0123456789ABCDEF";
constexpr std::string_view kDelimiters = "()<>[]{}/%#";

void appendEscaped(std::string& out, unsigned char byte) {
  switch (byte) {
    case '(': out += "\\("; return;
    case ')': out += "\\)"; return;
    case '\\': out += "\\\\"; return;
    case '\r':
      out += "\\r";
      return;  // a reader takes it for a line feed
    // Ghostscript reads one of two line feeds.
    case '\n': out += out.ends_with('\n') ? "\\n" : "\n"; return;
    default: out += static_cast<char>(byte);
  }
}

// As many bytes at a time are looked at together.
constexpr std::size_t kPlainBlock = 16;

bool isEscaped(char c) { return c == '(' || c == ')' || c == '\\' || c == '\r' || c == '\n'; }

bool isPlainBlock(const char* at) {
  unsigned char escaped = 0;
  for (std::size_t i = 0; i < kPlainBlock; ++i) {
    const auto byte = static_cast<unsigned char>(at[i]);
    escaped = static_cast<unsigned char>(escaped | (byte == '(') | (byte == ')') | (byte == '\\') | (byte == '\r') |
                                         (byte == '\n'));
  }
  return escaped == 0;
}

const char* endOfPlain(const char* at, const char* end) {
  while (static_cast<std::size_t>(end - at) >= kPlainBlock && isPlainBlock(at)) {
    at += kPlainBlock;
  }
  return std::find_if(at, end, isEscaped);
}

void appendTwoDigits(std::string& out, int value) {
  out += static_cast<char>('0' + value / 10 % 10);
  out += static_cast<char>('0' + value % 10);
}

bool isPrintable(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

}  // namespace

void appendInteger(std::string& out, std::int64_t value) {
  char digits[24];
  out.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

void appendThousandths(std::string& out, std::int64_t value) {
  if (value < 0) {
    out += '-';
    value = -value;
  }
  const std::int64_t fraction = value % 1000;
  if (value >= 1000 || fraction == 0) {
    appendInteger(out, value / 1000);
  }
  if (fraction != 0) {
    const char digits[] = {'.', static_cast<char>('0' + fraction / 100), static_cast<char>('0' + fraction / 10 % 10),
                           static_cast<char>('0' + fraction % 10)};
    out.append(digits, fraction % 100 == 0 ? 2u : fraction % 10 == 0 ? 3u : 4u);
  }
}

void appendEscaped(std::string& out, std::string_view bytes) {
  const char* at = bytes.data();
  const char* const end = at + bytes.size();
  while (true) {
    const char* const plain = endOfPlain(at, end);
    out.append(at, static_cast<std::size_t>(plain - at));
    if (plain == end) {
      return;
    }
    appendEscaped(out, static_cast<unsigned char>(*plain));
    at = plain + 1;
  }
}

void appendString(std::string& out, std::string_view bytes) {
  out += '(';
  appendEscaped(out, bytes);
  out += ')';
}

void appendText(std::string& out, std::string_view utf8) {
  if (isPrintable(utf8)) {
    return appendString(out, utf8);
  }
  out += "(\xFE\xFF";
  const char* at = utf8.data();
  const char* const end = at + utf8.size();
  while (at != end) {
    char32_t c = kReplacement;
    if (!nextUtf8(at, end, c)) {
      c = kReplacement;
    }
    forEachUnit(c, [&out](char16_t unit) {
      appendEscaped(out, static_cast<unsigned char>(unit >> 8));
      appendEscaped(out, static_cast<unsigned char>(unit & 0xFF));
    });
  }
  out += ')';
}

std::string_view fittingText(std::string_view utf8, std::size_t bytes) {
  if (utf8.size() <= bytes / 2 - 1) {
    return utf8;
  }
  if (isPrintable(utf8)) {
    return utf8.substr(0, bytes);
  }
  std::size_t left = bytes / 2 - 1;  // units of UTF-16, after the mark
  const char* at = utf8.data();
  const char* const end = at + utf8.size();
  for (const char* next = at; at != end; at = next) {
    char32_t c = kReplacement;
    nextUtf8(next, end, c);
    const std::size_t units = c > 0xFFFF ? 2 : 1;
    if (units > left) {
      break;
    }
    left -= units;
  }
  return utf8.substr(0, static_cast<std::size_t>(at - utf8.data()));
}

void appendHex(std::string& out, std::uint64_t value, int digits) {
  for (int digit = digits - 1; digit >= 0; --digit) {
    out += kHexDigits[value >> (4 * digit) & 0xF];
  }
}

void appendName(std::string& out, std::string_view name) {
  out += '/';
  for (const char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte <= ' ' || byte > '~' || kDelimiters.find(c) != kDelimiters.npos) {
      out += '#';
      out += kHexDigits[byte >> 4];
      out += kHexDigits[byte & 0xF];
    } else {
      out += c;
    }
  }
}

void appendReference(std::string& out, int number) { Operators(out, kMostOfReference).reference(number); }

void appendDate(std::string& out, std::int64_t time) {
  const CalendarTime moment = calendarTimeOf(time);
  const auto year = static_cast<int>(moment.date.year);
  out += "(D:";
  for (const int part :
       {year / 100, year % 100, moment.date.month, moment.date.day, moment.hour, moment.minute, moment.second}) {
    appendTwoDigits(out, part);
  }
  out += "Z)";
}

}  // namespace scrivalen::typeset
