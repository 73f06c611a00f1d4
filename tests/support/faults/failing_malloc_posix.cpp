#include "support/faults/allocation_counter.h"

#include <cerrno>

// Replaces the C library's functions in a program, so that FailingAllocations applies to libraries written in C too.
// The names of the originals are the C library's.

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

void* malloc(std::size_t size) {
  if (scrivalen::test::shouldMallocFail()) {
    errno = ENOMEM;
    return nullptr;
  }
  return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
  if (scrivalen::test::shouldMallocFail()) {
    errno = ENOMEM;
    return nullptr;
  }
  return __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) {
  if (scrivalen::test::shouldMallocFail()) {
    errno = ENOMEM;
    return nullptr;
  }
  return __libc_realloc(memory, size);
}
}
