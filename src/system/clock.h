#pragma once

#include <cstdint>
#include <ctime>
#include <optional>

namespace scrivalen {

/// Converts seconds since 1970-01-01 UTC to local time, or to UTC; nothing for a time that the system cannot convert.
std::optional<std::tm> localTime(std::int64_t seconds);
std::optional<std::tm> utcTime(std::int64_t seconds);

}  // namespace scrivalen
