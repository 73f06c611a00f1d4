#include "formats/xlsx/document/cells/cell_value.h"

#include "text/calendar.h"
#include "text/values/plain_values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace scrivalen::xlsx {
namespace {

using document::Cell;
using document::ValueType;

constexpr std::int64_t kFirstLong = 1'000'000'000'000'000;  // of 16 digits
constexpr std::int64_t kSerialOfEpoch = 25569;
constexpr std::int64_t kFirstDay = daysOf({1900, 3, 1});
constexpr std::int64_t kLastDay = daysOf({9999, 12, 31});
constexpr double kGreatest = 9.99999999999999e307;
constexpr double kLeast = 2.2250738585072014e-308;  // the smallest normal number

// In a pattern of a date: characters that stand for something else in some locale.
std::string dateCode(std::string_view pattern) {
  std::string code;
  for (const char c : pattern) {
    code.append(c == '/' || c == ',' || c == '.' ? "\\" : "").push_back(c);
  }
  return code;
}

bool isDatePattern(std::string_view pattern) {
  return !pattern.empty() && pattern.front() != '0' && pattern.front() != '#';
}

std::string_view digitsFrom(const char* begin, const char* end) {
  return {begin, static_cast<std::size_t>(end - begin)};
}

struct Digits {
  std::size_t length;  // as shown, with point and minus
  std::size_t significant;
  std::size_t decimals;
};

Digits digitsOf(std::string_view number) {
  const std::size_t point = number.find('.');
  const std::size_t first = number.find_first_of("123456789");
  std::size_t significant = first == number.npos ? 0 : number.size() - first;
  if (point != number.npos && first < point) {
    --significant;
  }
  return {number.size(), significant, point == number.npos ? 0 : number.size() - point - 1};
}

// The number digits / 10^decimals, with just so many decimals, at the end of a buffer.
std::string_view decimalDigits(std::int64_t digits, int decimals, char* buffer) {
  char* const end = buffer + ColumnValues::kLongest;
  char* at = end;
  std::int64_t rest = digits < 0 ? -digits : digits;
  for (int written = 0; rest > 0 || written <= decimals; ++written, rest /= 10) {
    if (written == decimals) {
      *--at = '.';
    }
    *--at = static_cast<char>('0' + rest % 10);
  }
  if (digits < 0) {
    *--at = '-';
  }
  return digitsFrom(at, end);
}

}  // namespace

NumberFormats::NumberFormats(const document::FormatSettings& settings, CellFormats& formats)
    : formats_(formats),
      isGrouped_(!document::NumberStyle::of(settings.text("numbers")).value_or(document::NumberStyle()).group.empty()),
      isoDate_(formats.addNumber("yyyy-mm-dd")),
      date_(formats.addNumber(dateCode(settings.text("dates")))),
      time_(formats.addNumber(dateCode(settings.text("dates")).append(" hh:mm:ss"))) {}

NumberFormat NumberFormats::decimals(int count, bool isGrouped) {
  NumberFormat& known = decimals_[isGrouped ? 1 : 0][std::clamp(count, 0, kMostDecimals)];
  if (known == kGeneral) {
    std::string code(isGrouped ? "#,##0" : "0");
    if (count > 0) {
      code.append(".").append(static_cast<std::size_t>(count), '0');
    }
    known = formats_.addNumber(code);
  }
  return known;
}

NumberFormat NumberFormats::pattern(std::string_view pattern) {
  return formats_.addNumber(isDatePattern(pattern) ? dateCode(pattern) : std::string(pattern));
}

ColumnValues::ColumnValues(const document::Column& column, NumberFormats& formats)
    : formats_(formats), type_(column.type), isGrouped_(formats.isGrouped()), decimals_(column.format.decimals()) {
  if (const std::string_view pattern = column.format.pattern(); !pattern.empty()) {
    hasDatePattern_ = isDatePattern(pattern);
    hasNumberPattern_ = !hasDatePattern_;
    pattern_ = formats.pattern(pattern);
  }
}

CellValue ColumnValues::of(const Cell& cell, char* buffer) {
  switch (cell.type) {
    case ValueType::Auto: return ofText(cell.text, buffer);
    case ValueType::Text: return {};
    case ValueType::Number: return ofNumber(cell, buffer);
    case ValueType::Integer: return ofInteger(cell.integer, buffer);
    case ValueType::Date: return ofDate(cell.integer, hasDatePattern_ ? pattern_ : formats_.date(), buffer);
    case ValueType::Time: return ofTime(cell.integer, hasDatePattern_ ? pattern_ : formats_.time(), buffer);
    case ValueType::Boolean: return {CellValue::Kind::Boolean, kGeneral, cell.integer != 0 ? "1" : "0"};
  }
  return {};
}

CellValue ColumnValues::ofText(std::string_view text, char* buffer) {
  const bool isAny = type_ == ValueType::Auto;
  if (isAny || type_ == ValueType::Number || type_ == ValueType::Integer) {
    const auto number = plainNumber(text);
    if (number && (type_ != ValueType::Integer || number->decimals == 0)) {
      return {CellValue::Kind::Number, formats_.decimals(number->decimals, false), text};
    }
  }
  if (isAny || type_ == ValueType::Date) {
    if (const auto days = plainDate(text)) {
      return ofDate(*days, formats_.isoDate(), buffer);
    }
  }
  if (type_ == ValueType::Boolean && (text == "TRUE" || text == "FALSE")) {
    return {CellValue::Kind::Boolean, kGeneral, text == "TRUE" ? "1" : "0"};
  }
  return {};
}

// Without a format of its column, a number is shown with all of its decimals. The general format shows ten characters.
CellValue ColumnValues::ofNumber(const Cell& cell, char* buffer) {
  constexpr std::size_t kMostDigits = 15;
  constexpr std::size_t kShownInGeneral = 10;
  constexpr double kPlainFrom = 1e-7;
  constexpr double kPlainBelow = 1e21;
  if (cell.decimals > 0 && (cell.integer >= kFirstLong || cell.integer <= -kFirstLong)) {
    return {};
  }
  const double magnitude = std::abs(cell.number);
  if (magnitude > kGreatest || (magnitude > 0 && magnitude < kLeast)) {
    return {};
  }
  if (cell.decimals > 0 && !hasNumberPattern_ && decimals_ == 0) {
    return {CellValue::Kind::Number, formats_.decimals(cell.decimals, isGrouped_),
            decimalDigits(cell.integer, cell.decimals, buffer)};
  }
  const bool isPlain = magnitude == 0 || (magnitude >= kPlainFrom && magnitude < kPlainBelow);
  const char* const end = formats_.putPlain(buffer, cell.number);
  const std::string_view digits = digitsFrom(buffer, end);
  const auto number = [&](NumberFormat format) { return CellValue{CellValue::Kind::Number, format, digits}; };
  if (hasNumberPattern_) {
    return number(pattern_);
  }
  if (decimals_ != 0) {
    return number(formats_.decimals(decimals_, isGrouped_));
  }
  const Digits shown = digitsOf(digits);
  if (!isPlain || shown.significant > kMostDigits || shown.decimals > kMostDigits ||
      (shown.length <= kShownInGeneral && !isGrouped_)) {
    return number(kGeneral);
  }
  return number(formats_.decimals(static_cast<int>(shown.decimals), isGrouped_));
}

CellValue ColumnValues::ofInteger(std::int64_t value, char* buffer) {
  if (value >= kFirstLong || value <= -kFirstLong) {
    return {};
  }
  const char* const end = std::to_chars(buffer, buffer + kLongest, value).ptr;
  const NumberFormat format = hasNumberPattern_ ? pattern_ : formats_.decimals(decimals_, isGrouped_);
  return {CellValue::Kind::Number, format, digitsFrom(buffer, end)};
}

CellValue ColumnValues::ofDate(std::int64_t days, NumberFormat format, char* buffer) const {
  if (days < kFirstDay || days > kLastDay) {
    return {};
  }
  const char* const end = std::to_chars(buffer, buffer + kLongest, days + kSerialOfEpoch).ptr;
  return {CellValue::Kind::Number, format, digitsFrom(buffer, end)};
}

CellValue ColumnValues::ofTime(std::int64_t seconds, NumberFormat format, char* buffer) const {
  if (seconds < kFirstDay * kSecondsPerDay || seconds >= (kLastDay + 1) * kSecondsPerDay) {
    return {};
  }
  const auto exact = static_cast<double>(seconds + kSerialOfEpoch * kSecondsPerDay);
  double serial = exact / kSecondsPerDay;
  // Some readers cut the seconds of the quotient, which may be a little less than the time.
  if (std::fma(serial, kSecondsPerDay, -exact) < 0) {
    serial = std::nextafter(serial, std::numeric_limits<double>::infinity());
  }
  const char* const end = std::to_chars(buffer, buffer + kLongest, serial, std::chars_format::fixed).ptr;
  return {CellValue::Kind::Number, format, digitsFrom(buffer, end)};
}

}  // namespace scrivalen::xlsx
