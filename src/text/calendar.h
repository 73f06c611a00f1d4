#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// Dates of the proleptic Gregorian calendar, without time zones, for any year. Year 0 is 1 BC.
namespace scrivalen {

struct CalendarDate {
  std::int64_t year;
  int month;  // 1 to 12
  int day;    // 1 to 31

  friend constexpr bool operator==(const CalendarDate&, const CalendarDate&) = default;
};

inline constexpr std::int64_t kSecondsPerDay = 86400;

// A year that begins in March has its leap day at its end. The calendar repeats after an era of 400 such years.
inline constexpr std::int64_t kDaysPerEra = 146097;
inline constexpr std::int64_t kDaysToEpoch = 719468;  // from 0000-03-01 to 1970-01-01

/// Days since 1970-01-01.
constexpr std::int64_t daysOf(const CalendarDate& date) {
  const std::int64_t year = date.month > 2 ? date.year : date.year - 1;
  const std::int64_t era = (year >= 0 ? year : year - 399) / 400;
  const std::int64_t yearOfEra = year - era * 400;
  const std::int64_t dayOfYear = (153 * ((date.month + 9) % 12) + 2) / 5 + date.day - 1;
  const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * kDaysPerEra + dayOfEra - kDaysToEpoch;
}

constexpr CalendarDate dateOf(std::int64_t days) {
  const std::int64_t shifted = days + kDaysToEpoch;
  const std::int64_t era = (shifted >= 0 ? shifted : shifted - (kDaysPerEra - 1)) / kDaysPerEra;
  const auto dayOfEra = static_cast<unsigned>(shifted - era * kDaysPerEra);
  const unsigned yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const unsigned dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const unsigned monthFromMarch = (5 * dayOfYear + 2) / 153;
  const auto day = static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
  const auto month = static_cast<int>(monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9);
  return {static_cast<std::int64_t>(yearOfEra) + era * 400 + (month <= 2 ? 1 : 0), month, day};
}

/// A moment of UTC.
struct CalendarTime {
  CalendarDate date;
  int hour;
  int minute;
  int second;
};

/// @param seconds  since 1970-01-01 00:00
constexpr CalendarTime calendarTimeOf(std::int64_t seconds) {
  const std::int64_t days = seconds / kSecondsPerDay - (seconds % kSecondsPerDay < 0 ? 1 : 0);
  const auto second = static_cast<int>(seconds - days * kSecondsPerDay);
  return {dateOf(days), second / 3600, second / 60 % 60, second % 60};
}

/// The days since 1970-01-01 of a date "yyyy-mm-dd"; nothing for any other text or a day that does not exist.
std::optional<std::int64_t> daysOfIsoDate(std::string_view text);

/// The seconds since 1970-01-01 00:00 of "yyyy-mm-dd hh:mm:ss", also with a T between and a Z after. Nothing for any
/// other text or a time that does not exist; a leap second does not.
std::optional<std::int64_t> secondsOfIsoTime(std::string_view text);

}  // namespace scrivalen
