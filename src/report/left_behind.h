#pragma once

#include <memory>

namespace scrivalen {

/// Keeps an object until the process ends: a file that its report left open stays open, and a leak checker can still
/// reach it. Safe to call from any thread.
void leaveBehind(std::shared_ptr<void> object) noexcept;

}  // namespace scrivalen
