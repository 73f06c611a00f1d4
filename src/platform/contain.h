#pragma once

namespace scrivalen::platform {

/// Logs the exception being handled; for use in a catch clause.
void logRaised() noexcept;

/// Runs @p action; what it raises is logged and goes no further. Exported functions end here what they raise
/// themselves, which is little more than a lack of memory.
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

}  // namespace scrivalen::platform
