#include "fixed_clock.h"

#include "errors.h"

#include <scrivalen/host.h>

#include <charconv>
#include <cstdint>

namespace scrivalen::command {
namespace {

// The library's handler is a plain function: it finds the time here.
std::int64_t fixedTime = 0;

std::int64_t parseSeconds(const std::string& text) {
  std::int64_t seconds = 0;
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, seconds);
  if (result.ec != std::errc() || result.ptr != end || seconds < 0) {
    throw UsageError("SOURCE_DATE_EPOCH is no number of seconds: '" + text + "'");
  }
  return seconds;
}

}  // namespace

FixedClock::FixedClock(const Host& host) {
  const auto value = host.variable("SOURCE_DATE_EPOCH");
  if (value && !value->empty()) {
    fixedTime = parseSeconds(*value);
    SetClockHandler([] { return fixedTime; });
  }
}

FixedClock::~FixedClock() { SetClockHandler(nullptr); }

}  // namespace scrivalen::command
