#pragma once

#include <cstdint>
#include <string>

namespace scrivalen {

/// Stands in for the host where a part of the library writes a file for another part.
class HostStandIn {
 public:
  virtual ~HostStandIn() = default;
  virtual void log(const wchar_t* line) = 0;
  /// Seconds since 1970-01-01 UTC.
  virtual std::int64_t time() const = 0;
};

/// While it exists, this thread's log lines and times are a stand-in's rather than the host's.
class HostScope {
 public:
  /// @param standIn  not owned; must outlive the scope
  explicit HostScope(HostStandIn& standIn) noexcept;
  HostScope(const HostScope&) = delete;
  HostScope& operator=(const HostScope&) = delete;
  ~HostScope();

 private:
  HostStandIn* before_;
};

// Each calls the host's handler, or the default if the host has set none.
void sendToLog(const wchar_t* line);
void showErrorBox(const wchar_t* title, const wchar_t* text);
/// Whether an error box is only a log line: the host has set no handler, and the system has no message boxes.
bool isErrorBoxLogged();
/// Seconds since 1970-01-01 UTC.
std::int64_t currentTime();

/// A path in the folder that contains the templates and the help compiler: the host's data folder if it has set one,
/// otherwise the library's own file; empty when the path of that file is unknown.
std::wstring homePath();

}  // namespace scrivalen
