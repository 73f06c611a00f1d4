#include "output/host_handlers.h"

#include "output/clog.h"
#include "output/exception_barrier.h"
#include "scrivalen/host.h"
#include "system/files/files.h"
#include "system/messages.h"
#include "system/module_path.h"
#include "system/process/stop.h"
#include "text/fmt.h"
#include "text/utf.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <mutex>
#include <string>
#include <utility>

namespace scrivalen {
namespace {

void logToStandardError(const wchar_t* message) {
  std::string line = "scrivalen: ";
  scrivalen::appendUtf8(line, message);
  line += '\n';
  std::fwrite(line.data(), 1, line.size(), stderr);
}

void showBoxOrLog(const wchar_t* title, const wchar_t* text) {
  if constexpr (scrivalen::kHasMessageBox) {
    scrivalen::showMessageBox(title, text);
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
thread_local HostStandIn* hostStandIn = nullptr;

// Constructed on first use, which may be in a static constructor of the host.
struct DataFolder {
  static DataFolder& get() {
    static DataFolder folder;
    return folder;
  }

  std::mutex mutex;
  std::wstring path;  // ends in a separator; empty for the folder of the library's own file
};

}  // namespace

void SetLogHandler(LogHandler handler) { logHandler = handler ? handler : &logToStandardError; }

void SetErrorBoxHandler(ErrorBoxHandler handler) { errorBoxHandler = handler ? handler : &showBoxOrLog; }

void SetClockHandler(ClockHandler handler) { clockHandler = handler ? handler : &systemTime; }

void SetStopHandler(StopHandler handler) { setStopQuery(handler); }

void SetDataFolder(const wchar_t* folder) {
  contained([&] {
    std::wstring path = folder ? folder : L"";
    if (!path.empty() && kPathSeparators.find(path.back()) == std::wstring_view::npos) {
      path += kPathSeparator;
    }
    DataFolder& data = DataFolder::get();
    const std::lock_guard lock(data.mutex);
    data.path.swap(path);
  });
}

HostScope::HostScope(HostStandIn& standIn) noexcept : before_(std::exchange(hostStandIn, &standIn)) {}
HostScope::~HostScope() { hostStandIn = before_; }

void sendToLog(const wchar_t* line) {
  if (hostStandIn) {
    hostStandIn->log(line);
  } else {
    logHandler.load()(line);
  }
}

void showErrorBox(const wchar_t* title, const wchar_t* text) { errorBoxHandler.load()(title, text); }

bool isErrorBoxLogged() { return !kHasMessageBox && errorBoxHandler.load() == &showBoxOrLog; }

std::int64_t currentTime() { return hostStandIn ? hostStandIn->time() : clockHandler.load()(); }

std::wstring homePath() {
  DataFolder& data = DataFolder::get();
  const std::lock_guard lock(data.mutex);
  return data.path.empty() ? modulePath() : data.path;
}

}  // namespace scrivalen
