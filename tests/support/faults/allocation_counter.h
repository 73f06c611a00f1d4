#pragma once

#include <cstddef>

namespace scrivalen::test {

/// How often this program has asked operator new for memory, in any of its forms and in any thread. The counter takes
/// the place of the program's operators, so its source belongs to the programs that count and not to a library.
std::size_t allocationCount();

/// How many of these pieces of memory have not been given back yet.
std::size_t livingAllocations();

/// Lets memory run out while it lives. One at a time, while no other thread runs.
class FailingAllocations {
 public:
  enum class Extent { One, AllFromThere };
  enum class Functions { All, OperatorNew };

  /// @param nth        which allocation from now on is the first that fails; 1 is the next, 0 none
  /// @param functions  which functions fail, in a program that lets those of C fail too
  FailingAllocations(std::size_t nth, Extent extent, Functions functions = Functions::All);
  FailingAllocations(const FailingAllocations&) = delete;
  FailingAllocations& operator=(const FailingAllocations&) = delete;
  ~FailingAllocations();

  /// Whether one has failed.
  bool hasFailed() const;
};

/// Lets the program have its memory all the same while it lives, for what belongs to the test itself.
class UnfailingAllocations {
 public:
  UnfailingAllocations();
  UnfailingAllocations(const UnfailingAllocations&) = delete;
  UnfailingAllocations& operator=(const UnfailingAllocations&) = delete;
  ~UnfailingAllocations();
};

/// For whatever else asks for memory in the program: whether this allocation is to fail.
bool shallFail();
/// The same for the functions of C.
bool shallMallocFail();

/// How often an action asks for memory.
template <typename Action>
std::size_t allocationsOf(Action action) {
  const std::size_t before = allocationCount();
  action();
  return allocationCount() - before;
}

}  // namespace scrivalen::test
