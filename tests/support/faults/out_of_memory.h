#pragma once

#include "scrivalen/host.h"
#include "support/faults/allocation_counter.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace scrivalen::test {

using Extent = FailingAllocations::Extent;

/// Repeats an attempt with memory that runs out at the first allocation, then at later ones, until none fails. The
/// steps grow, because an attempt makes thousands of allocations.
/// @param attempt  is called with the number of the first allocation to fail; returns whether one has failed
template <typename Attempt>
void runOutOfMemory(Attempt attempt) {
  std::size_t nth = 1;
  while (attempt(nth)) {
    nth += 1 + nth / 64;
  }
  EXPECT_GT(nth, 100u);
}

/// Captures the log for its lifetime, with memory that does not fail. One at a time.
class UnfailingLog {
 public:
  UnfailingLog() {
    lines().clear();
    SetLogHandler([](const wchar_t* message) {
      const UnfailingAllocations ownMemory;
      lines().emplace_back(message);
    });
  }
  UnfailingLog(const UnfailingLog&) = delete;
  UnfailingLog& operator=(const UnfailingLog&) = delete;
  ~UnfailingLog() { SetLogHandler(nullptr); }

  static std::vector<std::wstring>& lines() {
    static std::vector<std::wstring> all;
    return all;
  }
};

}  // namespace scrivalen::test
