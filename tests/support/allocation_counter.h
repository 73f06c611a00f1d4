#pragma once

#include <cstddef>

namespace scrivalen::test {

/// How often this program has asked operator new for memory, in any of its forms and in any thread. The counter takes
/// the place of the program's operators, so its source belongs to the programs that count and not to a library.
std::size_t allocationCount();

/// How often an action asks for memory.
template <typename Action>
std::size_t allocationsOf(Action action) {
  const std::size_t before = allocationCount();
  action();
  return allocationCount() - before;
}

}  // namespace scrivalen::test
