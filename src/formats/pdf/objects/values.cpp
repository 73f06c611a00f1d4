#include "formats/pdf/objects/values.h"

#include "formats/pdf/objects/piece.h"
#include "system/clock.h"
#include "text/ascii.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <limits>
#include <string_view>

namespace PDFStuffer {
namespace {

constexpr std::size_t kNumberUnits = 127;  // a longer number is truncated

// PDF 1.4, 3.2.4: characters other than regular ones are written as their numbers; a name cannot contain NUL.
void appendNameCharacter(std::u16string& name, char16_t unit) {
  constexpr std::u16string_view kDelimiters = u"()<>[]{}/%#";
  if (unit > 0x20 && unit < 0x7F && kDelimiters.find(unit) == std::u16string_view::npos) {
    name += unit;
  } else if ((unit & 0xFF) != 0) {
    const auto digit = [unit](unsigned shift) {
      return static_cast<char16_t>(scrivalen::kHexDigits[unit >> shift & 0xF]);
    };
    name += {u'#', digit(4), digit(0)};
  }
}

void appendStringByte(std::u16string& text, char16_t byte) {
  switch (byte) {
    case u'(':
    case u')':
    case u'\\': text += {u'\\', byte}; break;
    case u'\r': text += u"\\r"; break;
    case u'\n': text += u"\\n"; break;
    default: text += byte; break;
  }
}

bool isPlain(char16_t unit) { return unit == u'\n' || unit == u'\r' || unit == u'\t' || (unit >= 0x20 && unit < 0x7F); }

std::u16string escaped(std::u16string_view text) {
  std::u16string result;
  if (std::all_of(text.begin(), text.end(), isPlain)) {
    for (const char16_t unit : text) {
      appendStringByte(result, unit);
    }
    return result;
  }
  result = u"\u00FE\u00FF";
  for (const char16_t unit : text) {
    appendStringByte(result, static_cast<char16_t>(unit >> 8));
    appendStringByte(result, static_cast<char16_t>(unit & 0xFF));
  }
  return result;
}

std::int32_t truncated(double value) {
  constexpr double kMin = std::numeric_limits<std::int32_t>::min();
  constexpr double kMax = std::numeric_limits<std::int32_t>::max();
  return std::isnan(value) ? 0 : static_cast<std::int32_t>(std::clamp(value, kMin, kMax));
}

}  // namespace

void CPDFName::Write(CPDFMemBlock& out) {
  out.Append("/");
  if (!out.isConforming()) {
    out.Append(name);
    return;
  }
  std::u16string written;
  for (const char16_t unit : name) {
    appendNameCharacter(written, unit);
  }
  out.Append(written);
}

// A copy of a real number is an integer: the positions of links have always been written this way.
CPDFNumber::CPDFNumber(const CPDFNumber& other)
    : intValue(other.isInteger ? other.intValue : truncated(other.realValue)),
      realValue(other.isInteger ? static_cast<std::uint32_t>(other.intValue) : other.realValue) {}

void CPDFNumber::Write(CPDFMemBlock& out) {
  if (isInteger) {
    out.Append(Piece().number(intValue).view());
    return;
  }
  constexpr std::size_t kWidth = 10;
  const std::string digits = fixed(realValue, 2);
  const std::string blanks(kWidth > digits.size() ? kWidth - digits.size() : 0, ' ');
  out.Append(std::string_view(blanks + digits).substr(0, kNumberUnits));
}

void CPDFString::Write(CPDFMemBlock& out) {
  const std::u16string_view words = rawLength != 0 ? std::u16string_view(raw.get(), rawLength) : text;
  out.Append("(");
  if (out.isConforming()) {
    out.Append(escaped(words));
  } else {
    out.Append(words);
  }
  out.Append(")");
}

void CPDFIndirectRef::Write(CPDFMemBlock& out) {
  const std::uint32_t number = target ? target->objectNumber : 0;
  const std::uint32_t generationOfTarget = target ? target->generation : 0;
  out.Append(Piece().number(number).text(" ").number(generationOfTarget).text(" R").view());
}

void CPDFRect::Write(CPDFMemBlock& out) {
  Piece piece;
  piece.text("[").number(left).text(" ").number(bottom).text(" ").number(right).text(" ").number(top).text("]");
  out.Append(piece.view());
}

void CPDFDate::Write(CPDFMemBlock& out) {
  const auto date = out.isConforming() ? scrivalen::utcTime(time) : scrivalen::localTime(time);
  if (!date) {
    return;
  }
  char digits[128];
  const std::size_t size =
      std::strftime(digits, sizeof digits, out.isConforming() ? "(D:%Y%m%d%H%M%SZ)" : "(D%Y%m%d%H%M%SZ)", &*date);
  out.Append(std::string_view(digits, size));
}

}  // namespace PDFStuffer
