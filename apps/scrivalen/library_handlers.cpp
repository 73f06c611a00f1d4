#include "library_handlers.h"

#include "errors.h"
#include "system/process/stop.h"

#include <scrivalen/host.h>

#include <charconv>
#include <cstdint>
#include <new>

namespace scrivalen::command {
namespace {

// The handlers are plain functions and take no context pointer.
std::int64_t fixedTime = 0;
LibraryLog* currentLog = nullptr;
const Environment* currentEnvironment = nullptr;

std::int64_t parseSeconds(const std::string& text) {
  std::int64_t seconds = 0;
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, seconds);
  if (result.ec != std::errc() || result.ptr != end || seconds < 0) {
    throw UsageError("SOURCE_DATE_EPOCH is not a number of seconds: '" + text + "'");
  }
  return seconds;
}

bool isStopWanted() { return currentEnvironment->wasInterrupted(); }

}  // namespace

FixedClock::FixedClock(const Environment& environment) {
  const auto value = environment.variable("SOURCE_DATE_EPOCH");
  if (value && !value->empty()) {
    fixedTime = parseSeconds(*value);
    SetClockHandler([] { return fixedTime; });
  }
}

FixedClock::~FixedClock() { SetClockHandler(nullptr); }

LibraryLog::LibraryLog() {
  currentLog = this;
  SetLogHandler(&LibraryLog::receive);
  SetErrorBoxHandler([](const wchar_t*, const wchar_t*) {});
}

LibraryLog::~LibraryLog() {
  SetErrorBoxHandler(nullptr);
  SetLogHandler(nullptr);
  currentLog = nullptr;
}

const std::vector<std::wstring>& LibraryLog::lines() const {
  if (!isComplete_) {
    throw std::bad_alloc();
  }
  return lines_;
}

void LibraryLog::receive(const wchar_t* message) {
  try {
    if (currentLog) {
      currentLog->lines_.emplace_back(message);
    }
  } catch (const std::bad_alloc&) {
    currentLog->isComplete_ = false;
  }
}

LibraryStop::LibraryStop(const Environment& environment) {
  currentEnvironment = &environment;
  SetStopHandler(&isStopWanted);
  scrivalen::setStopQuery(&isStopWanted);
}

LibraryStop::~LibraryStop() {
  scrivalen::setStopQuery(nullptr);
  SetStopHandler(nullptr);
  currentEnvironment = nullptr;
}

}  // namespace scrivalen::command
