#pragma once

#include <memory>

namespace scrivalen {

/// The base of objects that may be left behind: it links them, so that leaving one behind needs no memory.
struct LeftBehind {
  std::shared_ptr<LeftBehind> nextLeftBehind;
};

/// Keeps an object until the process ends: a file that its report left open stays open, and a leak checker can still
/// reach it. Safe to call from any thread.
/// @param object  not null; left behind once only
void leaveBehind(std::shared_ptr<LeftBehind> object) noexcept;

}  // namespace scrivalen
