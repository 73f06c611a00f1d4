#include "system/clock.h"

#include <time.h>

namespace scrivalen {

std::optional<std::tm> localTime(std::int64_t seconds) {
  const std::time_t time = seconds;
  std::tm result{};
  return ::localtime_r(&time, &result) ? std::optional<std::tm>(result) : std::nullopt;
}

std::optional<std::tm> utcTime(std::int64_t seconds) {
  const std::time_t time = seconds;
  std::tm result{};
  return ::gmtime_r(&time, &result) ? std::optional<std::tm>(result) : std::nullopt;
}

}  // namespace scrivalen
