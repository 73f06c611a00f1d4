#include "support/captured_log.h"

#include "scrivalen/host.h"

namespace scrivalen::test {
namespace {

std::vector<std::wstring> captured;
std::int64_t fixedTime = 0;

}  // namespace

CapturedLog::CapturedLog() {
  captured.clear();
  SetLogHandler([](const wchar_t* message) { captured.emplace_back(message); });
}

CapturedLog::~CapturedLog() { SetLogHandler(nullptr); }

const std::vector<std::wstring>& CapturedLog::lines() const { return captured; }

FixedClock::FixedClock(std::int64_t seconds) {
  fixedTime = seconds;
  SetClockHandler([] { return fixedTime; });
}

FixedClock::~FixedClock() { SetClockHandler(nullptr); }

}  // namespace scrivalen::test
