#include "text/fmt.h"

#include "text/ascii.h"
#include "text/utf.h"

#include <algorithm>
#include <charconv>

namespace scrivalen {
namespace {

struct Conversion {
  bool left = false;
  bool zeros = false;
  bool plus = false;
  std::size_t width = 0;
  std::size_t precision = std::wstring_view::npos;
  wchar_t type = 0;
};

// Formats come from literals and from hosts; a larger width is a mistake.
constexpr std::size_t kLargestWidth = 4096;

std::size_t parseNumber(std::wstring_view format, std::size_t& at) {
  std::size_t number = 0;
  for (; at < format.size() && format[at] >= L'0' && format[at] <= L'9'; ++at) {
    number = std::min(kLargestWidth, number * 10 + static_cast<std::size_t>(format[at] - L'0'));
  }
  return number;
}

void parseFlags(std::wstring_view format, std::size_t& at, Conversion& conversion) {
  for (; at < format.size(); ++at) {
    switch (format[at]) {
      case L'-': conversion.left = true; break;
      case L'0': conversion.zeros = true; break;
      case L'+': conversion.plus = true; break;
      default: return;
    }
  }
}

void skipSizeModifiers(std::wstring_view format, std::size_t& at) {
  if (format.substr(at, 3) == L"I64") {
    at += 3;
  }
  while (at < format.size() && (format[at] == L'h' || format[at] == L'l')) {
    ++at;
  }
}

// Parses the conversion after a percent sign and moves past it; the type is 0 when the format ends first.
Conversion parseConversion(std::wstring_view format, std::size_t& at) {
  Conversion conversion;
  parseFlags(format, at, conversion);
  conversion.width = parseNumber(format, at);
  if (at < format.size() && format[at] == L'.') {
    ++at;
    conversion.precision = parseNumber(format, at);
  }
  skipSizeModifiers(format, at);
  if (at < format.size()) {
    conversion.type = format[at++];
  }
  return conversion;
}

bool isSigned(wchar_t type) { return type == L'd' || type == L'i'; }
bool isNumeric(wchar_t type) {
  return isSigned(type) || std::wstring_view(L"uxX").find(type) != std::wstring_view::npos;
}

bool hasPrecision(const Conversion& conversion) { return conversion.precision != std::wstring_view::npos; }

struct Number {
  bool isNegative;
  std::uint64_t magnitude;
};

// %u and %x print a negative number as the unsigned number with the same bits.
Number numberOf(const FormatValue& value, wchar_t type) {
  const bool isNegative = value.kind == FormatValue::Kind::Signed && static_cast<std::int64_t>(value.number) < 0;
  if (isNegative && isSigned(type)) {
    return {true, 0 - value.number};
  }
  return {false, isNegative && !value.isLong ? static_cast<std::uint32_t>(value.number) : value.number};
}

std::wstring digitsOf(std::uint64_t magnitude, const Conversion& conversion) {
  char buffer[32];
  const int base = conversion.type == L'x' || conversion.type == L'X' ? 16 : 10;
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, magnitude, base).ptr;
  std::wstring digits(buffer, end);
  if (conversion.type == L'X') {
    std::transform(digits.begin(), digits.end(), digits.begin(), [](wchar_t c) { return asciiUpper(c); });
  }
  if (!hasPrecision(conversion)) {
    return digits;
  }
  if (magnitude == 0) {
    digits.clear();
  }
  const std::size_t least = conversion.precision;
  return std::wstring(least > digits.size() ? least - digits.size() : 0, L'0') + digits;
}

void appendPadded(std::wstring& out, const Conversion& conversion, std::wstring_view sign, std::wstring_view body) {
  const std::size_t length = sign.size() + body.size();
  const std::size_t fill = conversion.width > length ? conversion.width - length : 0;
  const bool zeros = conversion.zeros && !conversion.left && isNumeric(conversion.type) && !hasPrecision(conversion);
  if (!conversion.left && !zeros) {
    out.append(fill, L' ');
  }
  out += sign;
  if (zeros) {
    out.append(fill, L'0');
  }
  out += body;
  if (conversion.left) {
    out.append(fill, L' ');
  }
}

void appendNumber(std::wstring& out, const Conversion& conversion, const FormatValue& value) {
  const Number number = numberOf(value, conversion.type);
  const wchar_t* const positive = conversion.plus && isSigned(conversion.type) ? L"+" : L"";
  appendPadded(out, conversion, number.isNegative ? L"-" : positive, digitsOf(number.magnitude, conversion));
}

bool appendValue(std::wstring& out, const Conversion& conversion, const FormatValue& value) {
  if (conversion.type == L's' && value.kind == FormatValue::Kind::Text) {
    appendPadded(out, conversion, L"", value.text.substr(0, conversion.precision));
    return true;
  }
  if (conversion.type == L'c' && value.kind == FormatValue::Kind::Text) {
    appendPadded(out, conversion, L"", value.text.substr(0, 1));
    return true;
  }
  if (conversion.type == L'c') {
    std::wstring character;
    appendCharacter(character, static_cast<char32_t>(value.number));
    appendPadded(out, conversion, L"", character);
    return true;
  }
  if (isNumeric(conversion.type) && value.kind != FormatValue::Kind::Text) {
    appendNumber(out, conversion, value);
    return true;
  }
  return false;
}

}  // namespace

std::wstring FMT::format_(std::wstring_view format, std::span<const FormatValue> values) {
  std::wstring out;
  std::size_t next = 0;
  for (std::size_t at = 0; at < format.size();) {
    const std::size_t percent = std::min(format.find(L'%', at), format.size());
    out += format.substr(at, percent - at);
    if (percent == format.size()) {
      break;
    }
    at = percent + 1;
    const Conversion conversion = parseConversion(format, at);
    if (conversion.type == L'%') {
      out += L'%';
    } else if (next < values.size() && appendValue(out, conversion, values[next])) {
      ++next;
    } else {
      out += format.substr(percent, at - percent);
    }
  }
  return out;
}

}  // namespace scrivalen
