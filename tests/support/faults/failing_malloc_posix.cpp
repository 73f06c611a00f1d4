#include "support/faults/allocation_counter.h"

#include <cerrno>

// Takes the place of the C library's functions in a program, so that FailingAllocations holds for libraries written in
// C too. The names behind them are the C library's.

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

void* malloc(std::size_t size) {
  if (scrivalen::test::shallMallocFail()) {
    errno = ENOMEM;
    return nullptr;
  }
  return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
  if (scrivalen::test::shallMallocFail()) {
    errno = ENOMEM;
    return nullptr;
  }
  return __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) {
  if (scrivalen::test::shallMallocFail()) {
    errno = ENOMEM;
    return nullptr;
  }
  return __libc_realloc(memory, size);
}
}
