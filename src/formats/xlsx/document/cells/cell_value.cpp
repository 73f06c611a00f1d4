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
constexpr std::size_t kMostDigits = 15;  // that are significant
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
  std::size_t length;       // as shown, with point and minus
  std::size_t significant;  // without the zeros at the end of a whole number
  std::size_t decimals;
};

Digits digitsOf(std::string_view number) {
  const std::size_t point = number.find('.');
  const std::size_t first = number.find_first_of("123456789");
  const std::size_t end = point == number.npos ? number.find_last_not_of('0') + 1 : number.size();
  std::size_t significant = first == number.npos ? 0 : end - first;
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
      isoDate_(own("yyyy-mm-dd")),
      date_(own(dateCode(settings.text("dates")))),
      time_(own(dateCode(settings.text("dates")).append(" hh:mm:ss"))) {}

// These few have room before and after those of columns.
NumberFormat NumberFormats::own(std::string_view code) { return formats_.addNumber(code).value_or(kGeneral); }

NumberFormat NumberFormats::decimals(int count, bool isGrouped) {
  NumberFormat& known = decimals_[isGrouped ? 1 : 0][std::clamp(count, 0, kMostDecimals)];
  if (known == kGeneral) {
    std::string code(isGrouped ? "#,##0" : "0");
    if (count > 0) {
      code.append(".").append(static_cast<std::size_t>(count), '0');
    }
    known = own(code);
  }
  return known;
}

NumberFormat NumberFormats::allOf(std::string_view digits) {
  const Digits shown = digitsOf(digits);
  const bool isPlain = digits.find('e') == digits.npos;
  return isPlain && shown.significant <= kMostDigits && shown.decimals <= kMostDecimals
             ? decimals(static_cast<int>(shown.decimals), false)
             : kGeneral;
}

// Excel needs none, but LibreOffice shows the 1 or 0 of a boolean that is aligned.
NumberFormat NumberFormats::boolean() {
  if (boolean_ == kGeneral) {
    boolean_ = own("\"TRUE\";\"TRUE\";\"FALSE\"");
  }
  return boolean_;
}

std::optional<NumberFormat> NumberFormats::pattern(std::string_view pattern) {
  constexpr std::size_t kOwn = std::size_t{2} * (kMostDecimals + 1) + 1;  // of decimals and booleans
  const auto known = formats_.addNumber(isDatePattern(pattern) ? dateCode(pattern) : std::string(pattern), kOwn);
  refused_ += known ? 0u : 1u;
  return known;
}

ColumnValues::ColumnValues(const document::Column& column, NumberFormats& formats)
    : formats_(formats), type_(column.type), isGrouped_(formats.isGrouped()), decimals_(column.format.decimals()) {
  const std::string_view pattern = column.format.pattern();
  if (const auto known = pattern.empty() ? std::nullopt : formats.pattern(pattern)) {
    hasDatePattern_ = isDatePattern(pattern);
    hasNumberPattern_ = !hasDatePattern_;
    pattern_ = *known;
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
    case ValueType::Boolean: return {CellValue::Kind::Boolean, formats_.boolean(), cell.integer != 0 ? "1" : "0"};
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
    return {CellValue::Kind::Boolean, formats_.boolean(), text == "TRUE" ? "1" : "0"};
  }
  return {};
}

// Without a format of its column, a number is shown with all of its decimals, as far as a sheet shows them. The general
// format shows ten characters, and has no groups.
NumberFormat ColumnValues::formatOf(std::string_view digits) {
  constexpr std::size_t kShownInGeneral = 10;
  Digits shown = digitsOf(digits);
  if (isGrouped_ && shown.significant > kMostDigits) {
    shown.decimals -= std::min(shown.significant - kMostDigits, shown.decimals);
    shown.significant = kMostDigits;
  }
  const bool isGeneral = shown.significant > kMostDigits || shown.decimals > kMostDigits ||
                         (shown.length <= kShownInGeneral && !isGrouped_);
  return isGeneral ? kGeneral : formats_.decimals(static_cast<int>(shown.decimals), isGrouped_);
}

CellValue ColumnValues::ofNumber(const Cell& cell, char* buffer) {
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
  return number(isPlain ? formatOf(digits) : kGeneral);
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
