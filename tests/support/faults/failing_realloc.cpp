#include "support/faults/failing_realloc.h"

#include "support/faults/allocation_counter.h"

extern "C" void* __real_realloc(void* memory, std::size_t size);

extern "C" void* __wrap_realloc(void* memory, std::size_t size) {
  return scrivalen::test::shouldFail() ? nullptr : __real_realloc(memory, size);
}
