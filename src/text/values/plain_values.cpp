#include "text/values/plain_values.h"

#include "text/ascii.h"
#include "text/calendar.h"

#include <cstddef>

namespace scrivalen {
namespace {

constexpr std::size_t kMostWholeDigits = 15;
constexpr std::size_t kMostDecimals = 9;
constexpr std::int64_t kTooGreat = 1'000'000'000'000'000;  // 16 digits
constexpr std::int64_t kFirstDay = daysOf({1900, 3, 1});

std::size_t digitsAt(std::string_view text, std::size_t at) {
  std::size_t end = at;
  while (end < text.size() && isAsciiDigit(text[end])) {
    ++end;
  }
  return end - at;
}

}  // namespace

std::optional<DecimalNumber> plainNumber(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  const std::size_t first = isNegative ? 1 : 0;
  const std::size_t whole = digitsAt(text, first);
  if (whole == 0 || whole > kMostWholeDigits || (whole > 1 && text[first] == '0')) {
    return std::nullopt;
  }
  std::size_t decimals = 0;
  if (const std::size_t point = first + whole; point < text.size()) {
    decimals = digitsAt(text, point + 1);
    if (text[point] != '.' || decimals == 0 || decimals > kMostDecimals || point + 1 + decimals != text.size()) {
      return std::nullopt;
    }
  }
  std::int64_t digits = 0;
  for (const char c : text.substr(first)) {
    if (c != '.') {
      digits = digits * 10 + (c - '0');
      if (digits >= kTooGreat) {
        return std::nullopt;
      }
    }
  }
  if (isNegative && digits == 0) {
    return std::nullopt;
  }
  return DecimalNumber{isNegative ? -digits : digits, static_cast<int>(decimals)};
}

std::optional<std::int32_t> plainDate(std::string_view text) {
  const auto days = daysOfIsoDate(text);
  return days && *days >= kFirstDay ? std::optional(static_cast<std::int32_t>(*days)) : std::nullopt;
}

}  // namespace scrivalen
