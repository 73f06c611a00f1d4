#include "text/calendar.h"

#include "text/ascii.h"

#include <cstddef>

namespace scrivalen {
namespace {

// Whether a text has the shape of a sample, where 0 is any digit and every other character is itself.
bool hasShape(std::string_view text, std::string_view sample) {
  if (text.size() != sample.size()) {
    return false;
  }
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (sample[i] == '0' ? !isAsciiDigit(text[i]) : text[i] != sample[i]) {
      return false;
    }
  }
  return true;
}

int digits(std::string_view text, std::size_t at, std::size_t count) {
  int value = 0;
  for (const char c : text.substr(at, count)) {
    value = value * 10 + (c - '0');
  }
  return value;
}

}  // namespace

std::optional<std::int64_t> daysOfIsoDate(std::string_view text) {
  if (!hasShape(text, "0000-00-00")) {
    return std::nullopt;
  }
  const CalendarDate date{digits(text, 0, 4), digits(text, 5, 2), digits(text, 8, 2)};
  if (date.month < 1 || date.month > 12 || date.day < 1) {
    return std::nullopt;
  }
  const std::int64_t days = daysOf(date);
  return dateOf(days) == date ? std::optional(days) : std::nullopt;
}

std::optional<std::int64_t> secondsOfIsoTime(std::string_view text) {
  constexpr std::size_t kDateSize = 10;
  if (text.ends_with('Z')) {
    text.remove_suffix(1);
  }
  const auto days = daysOfIsoDate(text.substr(0, kDateSize));
  const std::string_view time = text.substr(days.has_value() ? kDateSize : 0);
  if (!days || !(hasShape(time, " 00:00:00") || hasShape(time, "T00:00:00"))) {
    return std::nullopt;
  }
  const int hour = digits(time, 1, 2);
  const int minute = digits(time, 4, 2);
  const int second = digits(time, 7, 2);
  if (hour > 23 || minute > 59 || second > 59) {
    return std::nullopt;
  }
  return *days * kSecondsPerDay + hour * 3600 + minute * 60 + second;
}

}  // namespace scrivalen
