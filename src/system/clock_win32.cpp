#include "system/clock.h"

#include <time.h>

namespace scrivalen {

std::optional<std::tm> localTime(std::int64_t seconds) {
  std::tm result{};
  return ::_localtime64_s(&result, &seconds) == 0 ? std::optional<std::tm>(result) : std::nullopt;
}

std::optional<std::tm> utcTime(std::int64_t seconds) {
  std::tm result{};
  return ::_gmtime64_s(&result, &seconds) == 0 ? std::optional<std::tm>(result) : std::nullopt;
}

}  // namespace scrivalen
