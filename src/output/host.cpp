#include "output/host.h"

#include "output/clog.h"
#include "scrivalen/host.h"
#include "system/messages.h"
#include "text/fmt.h"
#include "text/utf.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <string>

namespace scrivalen {
namespace {

void logToStandardError(const wchar_t* message) {
  std::string line = "scrivalen: ";
  platform::appendUtf8(line, message);
  line += '\n';
  std::fwrite(line.data(), 1, line.size(), stderr);
}

void showBoxOrLog(const wchar_t* title, const wchar_t* text) {
  if constexpr (platform::kHasMessageBox) {
    platform::showMessageBox(title, text);
  } else {
    CLog::Bug2(FMT::Format(L"%s %s", title, text));
  }
}

std::int64_t systemTime() {
  using namespace std::chrono;
  return duration_cast<seconds>(system_clock::now().time_since_epoch()).count();
}

std::atomic<LogHandler> logHandler = &logToStandardError;
std::atomic<ErrorBoxHandler> errorBoxHandler = &showBoxOrLog;
std::atomic<ClockHandler> clockHandler = &systemTime;

}  // namespace

void SetLogHandler(LogHandler handler) { logHandler = handler ? handler : &logToStandardError; }

void SetErrorBoxHandler(ErrorBoxHandler handler) { errorBoxHandler = handler ? handler : &showBoxOrLog; }

void SetClockHandler(ClockHandler handler) { clockHandler = handler ? handler : &systemTime; }

namespace platform {

void sendToLog(const wchar_t* line) { logHandler.load()(line); }

void showErrorBox(const wchar_t* title, const wchar_t* text) { errorBoxHandler.load()(title, text); }

bool isErrorBoxLogged() { return !kHasMessageBox && errorBoxHandler.load() == &showBoxOrLog; }

std::int64_t currentTime() { return clockHandler.load()(); }

}  // namespace platform
}  // namespace scrivalen
