#include "document/model/values.h"

#include "text/ascii.h"
#include "text/calendar.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <iterator>

namespace scrivalen::document {
namespace {

struct NumberSample {
  std::string_view sample;
  NumberStyle style;
};

constexpr NumberSample kNumberSamples[] = {
    {"1234.5", {".", ""}}, {"1,234.5", {".", ","}}, {"1.234,5", {",", "."}}, {"1 234,5", {",", "\u00A0"}}};

constexpr std::string_view kIsoDate = "yyyy-mm-dd";
constexpr std::string_view kTime = "hh:mm:ss";
constexpr int kMostDecimals = 15;

// ---- Patterns

bool take(std::string_view& text, std::string_view part) {
  if (!text.starts_with(part)) {
    return false;
  }
  text.remove_prefix(part.size());
  return true;
}

// Removes a part of a date from the beginning of a pattern; 'y', 'm' or 'd', or 0 if there is none.
char takeDatePart(std::string_view& pattern) {
  for (const std::string_view part : {"yyyy", "mm", "m", "dd", "d"}) {
    if (take(pattern, part)) {
      return part.front();
    }
  }
  return 0;
}

// Removes the separator of two parts: one or two characters.
bool takeDateSeparator(std::string_view& pattern) {
  const std::size_t size = std::min(pattern.find_first_not_of("-./, "), pattern.size());
  pattern.remove_prefix(size);
  return size == 1 || size == 2;
}

// Removes the parts of a date, each at most once, with a separator between two.
// @return the number of parts; 0 if one comes twice
std::size_t takeDateParts(std::string_view& pattern) {
  std::string parts;
  std::string_view rest = pattern;
  for (char part = takeDatePart(rest); part != 0; part = takeDatePart(rest)) {
    if (parts.find(part) != std::string::npos) {
      return 0;
    }
    parts += part;
    pattern = rest;
    if (!takeDateSeparator(rest)) {
      break;
    }
  }
  return parts.size();
}

bool isDatePattern(std::string_view pattern) {
  const bool hasDate = takeDateParts(pattern) > 0;
  if (hasDate && pattern.empty()) {
    return true;
  }
  return (!hasDate || take(pattern, " ")) && (pattern == kTime || pattern == "hh:mm");
}

// ---- Numbers

// The digits of a whole number, which is the value times ten to the power of `places`. There are more digits than
// places.
struct Decimal {
  std::string_view digits;
  std::size_t places;

  bool isZero() const { return digits.find_first_not_of('0') == std::string_view::npos; }
};

constexpr double kPowersOfTen[] = {1e0, 1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,
                                   1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17};

// The digits, with zeros before them where there are no more than places.
Decimal decimalOf(char* buffer, std::uint64_t scaled, std::size_t places) {
  constexpr std::size_t kMostDigits = 20;
  constexpr std::size_t kZeros = 18;
  std::memset(buffer, '0', kZeros);
  char* const first = buffer + kZeros;
  const char* const end = std::to_chars(first, first + kMostDigits, scaled).ptr;
  const auto size = std::max(static_cast<std::size_t>(end - first), places + 1);
  return {{end - size, size}, places};
}

// Removes the point from digits such as "1234.50", and leading zeros that do not stand directly before the places.
Decimal decimalOf(char* first, char* end, std::size_t shift) {
  char* const point = std::find(first, end, '.');
  if (point == end) {
    return {{first, static_cast<std::size_t>(end - first)}, 0};
  }
  std::memmove(point, point + 1, static_cast<std::size_t>(end - point - 1));
  const std::size_t places = static_cast<std::size_t>(end - point - 1) - shift;
  std::string_view digits(first, static_cast<std::size_t>(end - first - 1));
  const std::size_t zeros = std::min(digits.find_first_not_of('0'), digits.size());
  digits.remove_prefix(std::min(zeros, digits.size() - places - 1));
  return {digits, places};
}

// Rounds half to even at some places. A percentage has its point `shift` places further right.
Decimal rounded(char* buffer, double magnitude, std::size_t places, std::size_t shift) {
  const double product = magnitude * kPowersOfTen[places + shift];
  // The product's error is at most 2^-53 of it, below 2^-9 here: a fraction that is further than that from one half is
  // on the same side of it as that of the exact product.
  if (product < 0x1p44) {
    const auto whole = static_cast<std::uint64_t>(product);
    const double fromHalf = product - static_cast<double>(whole) - 0.5;
    if (std::abs(fromHalf) > 0x1p-8) {
      return decimalOf(buffer, whole + (fromHalf > 0 ? 1 : 0), places);
    }
  }
  const auto precision = static_cast<int>(places + shift);
  char* const end =
      std::to_chars(buffer, buffer + Values::kLongest, magnitude, std::chars_format::fixed, precision).ptr;
  return decimalOf(buffer, end, shift);
}

// The fewest digits that are read back as the same number.
Decimal shortest(char* buffer, double magnitude) {
  // The quotient of two exact numbers is the number nearest to that decimal, so the decimal is read back as it. Of
  // decimals with up to 15 digits no two are read as the same number, so none is shorter once the zeros are gone.
  for (std::size_t places = 0; places <= 6; places += 3) {
    const double scale = kPowersOfTen[places];
    if (magnitude * scale >= 1e15) {
      break;
    }
    auto scaled = static_cast<std::uint64_t>(magnitude * scale + 0.5);
    if (static_cast<double>(scaled) / scale == magnitude) {
      for (; places > 0 && scaled % 10 == 0; --places) {
        scaled /= 10;
      }
      return decimalOf(buffer, scaled, places);
    }
  }
  char* const end = std::to_chars(buffer, buffer + Values::kLongest, magnitude, std::chars_format::fixed).ptr;
  return decimalOf(buffer, end, 0);
}

char* put(char* out, std::string_view text) {
  std::memcpy(out, text.data(), text.size());
  return out + text.size();
}

char* putGrouped(char* out, std::string_view digits, std::string_view group) {
  constexpr std::size_t kGroup = 3;
  if (group.empty() || digits.size() <= kGroup) {
    return put(out, digits);
  }
  const std::size_t first = (digits.size() - 1) % kGroup + 1;
  out = put(out, digits.substr(0, first));
  for (std::size_t at = first; at < digits.size(); at += kGroup) {
    out = put(put(out, group), digits.substr(at, kGroup));
  }
  return out;
}

char* putDecimal(char* out, const Decimal& decimal, std::string_view point, std::string_view group) {
  const std::size_t whole = decimal.digits.size() - decimal.places;
  out = putGrouped(out, decimal.digits.substr(0, whole), group);
  if (decimal.places == 0) {
    return out;
  }
  return put(put(out, point), decimal.digits.substr(whole));
}

// A number such as 1.5e+300, whose zeros nobody would count.
char* putScientific(char* out, double value, std::string_view point) {
  char buffer[32];
  const char* const end = std::to_chars(buffer, std::end(buffer), value, std::chars_format::scientific).ptr;
  const char* const dot = std::find(static_cast<const char*>(buffer), end, '.');
  out = put(out, {buffer, static_cast<std::size_t>(dot - buffer)});
  return dot == end ? out : put(put(out, point), {dot + 1, static_cast<std::size_t>(end - dot - 1)});
}

// ---- Dates

char* putTwoDigits(char* out, int number) {
  *out++ = static_cast<char>('0' + number / 10);
  *out++ = static_cast<char>('0' + number % 10);
  return out;
}

// The pattern that nearly all dates have.
char* putIsoDate(char* out, const CalendarDate& date) {
  const auto year = static_cast<int>(date.year);
  out = putTwoDigits(putTwoDigits(out, year / 100), year % 100);
  *out++ = '-';
  out = putTwoDigits(out, date.month);
  *out++ = '-';
  return putTwoDigits(out, date.day);
}

char* putDayOrMonth(char* out, int number, bool isPadded) {
  if (isPadded || number > 9) {
    return putTwoDigits(out, number);
  }
  *out++ = static_cast<char>('0' + number);
  return out;
}

char* putYear(char* out, std::int64_t year) {
  constexpr std::size_t kDigits = 4;
  if (year >= 0 && year <= 9999) {
    return putTwoDigits(putTwoDigits(out, static_cast<int>(year) / 100), static_cast<int>(year) % 100);
  }
  if (year < 0) {
    *out++ = '-';
  }
  char buffer[40];
  return put(out, decimalOf(buffer, static_cast<std::uint64_t>(year < 0 ? -year : year), kDigits - 1).digits);
}

// Writes a point of time as a pattern says. What follows "hh" is that of a time: "mm" are minutes there.
char* putTime(char* out, std::string_view pattern, std::int64_t days, int secondOfDay) {
  const CalendarDate date = dateOf(days);
  if (pattern == kIsoDate && date.year >= 0 && date.year <= 9999) {
    return putIsoDate(out, date);
  }
  bool isTime = false;
  while (!pattern.empty()) {
    const char letter = pattern.front();
    std::size_t size = 1;
    while (size < pattern.size() && pattern[size] == letter) {
      ++size;
    }
    switch (letter) {
      case 'y': out = putYear(out, date.year); break;
      case 'm':
        out = isTime ? putTwoDigits(out, secondOfDay / 60 % 60) : putDayOrMonth(out, date.month, size > 1);
        break;
      case 'd': out = putDayOrMonth(out, date.day, size > 1); break;
      case 'h':
        isTime = true;
        out = putTwoDigits(out, secondOfDay / 3600);
        break;
      case 's': out = putTwoDigits(out, secondOfDay % 60); break;
      default: out = put(out, pattern.substr(0, size));
    }
    pattern.remove_prefix(size);
  }
  return out;
}

std::size_t digitsAt(std::string_view text) {
  const auto end = std::find_if_not(text.begin(), text.end(), [](char c) { return isAsciiDigit(c); });
  return static_cast<std::size_t>(end - text.begin());
}

}  // namespace

std::optional<NumberStyle> NumberStyle::of(std::string_view sample) {
  for (const NumberSample& known : kNumberSamples) {
    if (known.sample == sample) {
      return known.style;
    }
  }
  return std::nullopt;
}

std::optional<DateStyle> DateStyle::of(std::string_view pattern) {
  DateStyle style;
  style.pattern_ = pattern;
  const bool isWhole = takeDateParts(pattern) == 3;
  return isWhole && (pattern.empty() || pattern == ".") ? std::optional(style) : std::nullopt;
}

std::optional<ValueFormat> ValueFormat::of(std::string_view pattern) {
  ValueFormat format(-1);
  format.pattern_ = pattern;
  if (isDatePattern(pattern)) {
    format.decimals_ = 0;
    format.isDate_ = true;
    return format;
  }
  format.grouped_ = take(pattern, "#,##");
  if (!take(pattern, "0")) {
    return std::nullopt;
  }
  if (take(pattern, ".")) {
    const std::size_t zeros = std::min(pattern.find_first_not_of('0'), pattern.size());
    format.decimals_ = static_cast<int>(std::min<std::size_t>(zeros, kMostDecimals + 1));
    if (format.decimals_ == 0 || format.decimals_ > kMostDecimals) {
      return std::nullopt;
    }
    pattern.remove_prefix(zeros);
  }
  format.percent_ = take(pattern, "%");
  return pattern.empty() ? std::optional(format) : std::nullopt;
}

std::string_view Values::groupOf(const ValueFormat& format) const {
  if (format.pattern_.empty() || format.isDate_) {
    return numbers_.group;
  }
  if (!format.grouped_) {
    return {};
  }
  return numbers_.group.empty() ? std::string_view(",") : numbers_.group;
}

char* Values::number(char* out, double value, const ValueFormat& format) const {
  constexpr double kTooLong = 1e21;
  constexpr double kTooShort = 1e-7;
  const double magnitude = std::abs(value);
  if (!std::isfinite(value)) {
    return out;
  }
  const bool isShortest = format.decimals_ == 0;
  if (isShortest && (magnitude >= kTooLong || (magnitude < kTooShort && magnitude > 0))) {
    return putScientific(out, value, numbers_.point);
  }
  char buffer[kLongest];
  const auto places = static_cast<std::size_t>(std::clamp(format.decimals_, 0, kMostDecimals));
  const Decimal decimal =
      isShortest ? shortest(buffer, magnitude) : rounded(buffer, magnitude, places, format.percent_ ? 2 : 0);
  if (value < 0 && !decimal.isZero()) {
    *out++ = '-';
  }
  out = putDecimal(out, decimal, numbers_.point, groupOf(format));
  return format.percent_ ? put(out, "%") : out;
}

char* Values::decimal(char* out, std::int64_t digits, int decimals, const ValueFormat& format) const {
  if (format.decimals_ != 0) {
    return number(out, decimalValue(digits, decimals), format);
  }
  char buffer[64];
  const auto bits = static_cast<std::uint64_t>(digits);
  if (digits < 0) {
    *out++ = '-';
  }
  const Decimal decimal = decimalOf(buffer, digits < 0 ? 0 - bits : bits, static_cast<std::size_t>(decimals));
  return putDecimal(out, decimal, numbers_.point, groupOf(format));
}

char* Values::integer(char* out, std::int64_t value, const ValueFormat& format) const {
  const std::string_view group = groupOf(format);
  if (format.decimals_ <= 0 && !format.percent_ && group.empty()) {
    return std::to_chars(out, out + kLongest, value).ptr;
  }
  char buffer[64];
  const auto bits = static_cast<std::uint64_t>(value);
  Decimal decimal = decimalOf(buffer, value < 0 ? 0 - bits : bits, 0);
  if (value < 0) {
    *out++ = '-';
  }
  char digits[64];
  decimal.places = static_cast<std::size_t>(std::max(format.decimals_, 0));
  if (const std::size_t zeros = decimal.places + (format.percent_ && value != 0 ? 2 : 0); zeros > 0) {
    char* const end = put(digits, decimal.digits);
    std::memset(end, '0', zeros);
    decimal.digits = {digits, decimal.digits.size() + zeros};
  }
  out = putDecimal(out, decimal, numbers_.point, group);
  return format.percent_ ? put(out, "%") : out;
}

char* Values::date(char* out, std::int32_t days, const ValueFormat& format) const {
  return putTime(out, format.isDate_ ? format.pattern() : dates_.pattern(), days, 0);
}

char* Values::time(char* out, std::int64_t seconds, const ValueFormat& format) const {
  std::int64_t days = seconds / kSecondsPerDay;
  auto secondOfDay = static_cast<int>(seconds % kSecondsPerDay);
  if (secondOfDay < 0) {
    --days;
    secondOfDay += static_cast<int>(kSecondsPerDay);
  }
  if (format.isDate_) {
    return putTime(out, format.pattern(), days, secondOfDay);
  }
  out = putTime(out, dates_.pattern(), days, 0);
  return putTime(put(out, " "), kTime, days, secondOfDay);
}

char* Values::boolean(char* out, bool value) { return put(out, value ? "true" : "false"); }

double decimalValue(std::int64_t digits, int decimals) { return static_cast<double>(digits) / kPowersOfTen[decimals]; }

bool isPlainNumber(std::string_view text) {
  take(text, "-");
  const std::size_t whole = digitsAt(text);
  if (whole == 0 || (whole > 1 && text.front() == '0')) {
    return false;
  }
  text.remove_prefix(whole);
  return text.empty() || (take(text, ".") && !text.empty() && digitsAt(text) == text.size());
}

bool isIsoDate(std::string_view text) { return daysOfIsoDate(text).has_value(); }

}  // namespace scrivalen::document
