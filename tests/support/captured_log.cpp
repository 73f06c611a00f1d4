#include "support/captured_log.h"

#include "scrivalen/host.h"

namespace scrivalen::test {
namespace {

std::vector<std::wstring> captured;
std::vector<CapturedErrorBox::Shown> boxes;
std::int64_t fixedTime = 0;

}  // namespace

CapturedLog::CapturedLog() {
  captured.clear();
  SetLogHandler([](const wchar_t* message) { captured.emplace_back(message); });
}

CapturedLog::~CapturedLog() { SetLogHandler(nullptr); }

const std::vector<std::wstring>& CapturedLog::lines() const { return captured; }

CapturedErrorBox::CapturedErrorBox() {
  boxes.clear();
  SetErrorBoxHandler([](const wchar_t* title, const wchar_t* text) { boxes.push_back({title, text}); });
}

CapturedErrorBox::~CapturedErrorBox() { SetErrorBoxHandler(nullptr); }

const std::vector<CapturedErrorBox::Shown>& CapturedErrorBox::shown() const { return boxes; }

FixedClock::FixedClock(std::int64_t seconds) {
  fixedTime = seconds;
  SetClockHandler([] { return fixedTime; });
}

FixedClock::~FixedClock() { SetClockHandler(nullptr); }

}  // namespace scrivalen::test
