#pragma once

#include <cstddef>

namespace scrivalen::test {

/// The number of calls of operator new, in any form and any thread. The counter replaces the program's operators, so
/// its source belongs to the programs that count and not to a library.
std::size_t allocationCount();

/// The bytes of these calls together, whether or not they were freed.
std::size_t allocatedBytes();

/// The number of these blocks not freed yet.
std::size_t livingAllocations();

/// Makes allocations fail for its lifetime. One at a time, while no other thread runs.
class FailingAllocations {
 public:
  enum class Extent { One, AllFromThere };
  enum class Functions { All, OperatorNew };

  /// @param nth        the first allocation to fail, counted from now: 1 is the next, 0 none
  /// @param functions  which functions fail, in a program where those of C can fail too
  FailingAllocations(std::size_t nth, Extent extent, Functions functions = Functions::All);
  FailingAllocations(const FailingAllocations&) = delete;
  FailingAllocations& operator=(const FailingAllocations&) = delete;
  ~FailingAllocations();

  /// Whether an allocation has failed.
  bool hasFailed() const;
};

/// Lets allocations succeed for its lifetime, for the test's own memory.
class UnfailingAllocations {
 public:
  UnfailingAllocations();
  UnfailingAllocations(const UnfailingAllocations&) = delete;
  UnfailingAllocations& operator=(const UnfailingAllocations&) = delete;
  ~UnfailingAllocations();
};

/// Counts an allocation by other functions of the program. @return whether it has to fail
bool shouldFail();
/// The same for the C functions.
bool shouldMallocFail();

/// The number of allocations that an action makes.
template <typename Action>
std::size_t allocationsOf(Action action) {
  const std::size_t before = allocationCount();
  action();
  return allocationCount() - before;
}

}  // namespace scrivalen::test
