#pragma once

#include "output/reason.h"

#include <string_view>

namespace scrivalen {

/// How the line begins that tells of an operation that raised something. Unless another result says so too, the report
/// lacks what the operation was to do.
inline constexpr std::wstring_view kOperationFailed = L"A report operation failed: ";

/// Logs the exception being handled; for use in a catch clause.
void logRaised() noexcept;

/// Logs a message as one line; without memory for that, as it stands.
void logLine(const wchar_t* line) noexcept;

/// Runs @p action; what it raises is logged and goes no further. Exported functions end here what they raise
/// themselves, which is little more than running out of memory.
/// @return what the action answers, or @p fallback
template <typename Result, typename Action>
Result contained(Result fallback, Action&& action) noexcept {
  try {
    return action();
  } catch (...) {
    logRaised();
    return fallback;
  }
}

template <typename Action>
void contained(Action&& action) noexcept {
  try {
    action();
  } catch (...) {
    logRaised();
  }
}

/// Runs @p action; what it raises becomes the reason, unless there is one already, and goes no further.
template <typename Action>
void containedIn(Reason& reason, Action&& action) noexcept {
  try {
    action();
  } catch (...) {
    reason.keepRaised();
  }
}

}  // namespace scrivalen
