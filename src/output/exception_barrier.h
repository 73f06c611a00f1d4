#pragma once

#include "output/clog.h"
#include "output/failure_reason.h"

#include <string_view>

namespace scrivalen {

/// The beginning of the log line for an operation that threw an exception. Its effect is missing from the report, and
/// possibly no result says so.
inline constexpr std::wstring_view kOperationFailed = L"A report operation failed: ";

/// Logs the exception being handled; call it in a catch clause.
void logException() noexcept;

/// Logs a message as one line, or unchanged when memory runs out.
void logLine(const wchar_t* line) noexcept;

/// Runs @p log, which logs messages; when memory runs out for one, @p line is logged.
template <typename Log>
void logMessages(Log log, const wchar_t* line) noexcept {
  try {
    log();
  } catch (...) {
    logLine(line);
  }
}

/// Logs the message that @p make returns, or @p line when memory runs out for it.
template <typename Make>
void logMessage(Make make, const wchar_t* line) noexcept {
  logMessages([&] { CLog::Bug2(make()); }, line);
}

/// Runs @p action; an exception is logged and not propagated. Exported functions contain their own exceptions with
/// this, which are little more than std::bad_alloc.
/// @return the action's result, or @p fallback after an exception
template <typename Result, typename Action>
Result contained(Result fallback, Action&& action) noexcept {
  try {
    return action();
  } catch (...) {
    logException();
    return fallback;
  }
}

template <typename Action>
void contained(Action&& action) noexcept {
  try {
    action();
  } catch (...) {
    logException();
  }
}

/// Runs @p action; an exception is not propagated, and becomes the reason unless there is one already.
template <typename Action>
void containedIn(Reason& reason, Action&& action) noexcept {
  try {
    action();
  } catch (...) {
    reason.keepException();
  }
}

}  // namespace scrivalen
