#include "support/faults/allocation_counter.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> count{0};
std::atomic<std::size_t> bytes{0};
std::atomic<std::size_t> living{0};

std::atomic<std::size_t> toGo{0};  // allocations up to and including the first that fails; 0: none fails
std::atomic<bool> failsOn{false};  // after the first failure
std::atomic<bool> mallocFails{false};
std::atomic<bool> failed{false};
std::atomic<int> unfailing{0};

void* allocate(std::size_t size) noexcept {
  ++count;
  bytes += size;
  if (scrivalen::test::shouldFail()) {
    return nullptr;
  }
  const scrivalen::test::UnfailingAllocations failsOnce;  // keeps a replaced malloc from failing the same one again
  void* const memory = std::malloc(size > 0 ? size : 1);
  living += memory ? 1 : 0;
  return memory;
}

// Stores the address of malloc's block before the aligned one: not every system has aligned_alloc.
void* allocate(std::size_t size, std::align_val_t alignment) noexcept {
  const auto step = static_cast<std::size_t>(alignment);
  void* const block = allocate(size + step + sizeof(void*));
  if (!block) {
    return nullptr;
  }
  const auto first = reinterpret_cast<std::uintptr_t>(block) + sizeof(void*);
  const auto aligned = static_cast<char*>(block) + sizeof(void*) + (step - first % step) % step;
  reinterpret_cast<void**>(aligned)[-1] = block;
  return aligned;
}

void release(void* memory) noexcept {
  living -= memory ? 1 : 0;
  std::free(memory);
}

void release(void* memory, std::align_val_t) noexcept {
  if (memory) {
    release(static_cast<void**>(memory)[-1]);
  }
}

// At a thread's first exception a runtime may allocate memory that it keeps for the thread. If that fails, it ends the
// program.
void throwOnce() {
  try {
    throw std::bad_alloc();
  } catch (const std::bad_alloc&) {
  }
}

void* orThrow(void* memory) {
  if (!memory) {
    throw std::bad_alloc();
  }
  return memory;
}

}  // namespace

namespace scrivalen::test {

std::size_t allocationCount() { return count; }
std::size_t allocatedBytes() { return bytes; }
std::size_t livingAllocations() { return living; }

bool shouldFail() {
  if (toGo == 0 || unfailing > 0) {
    return false;
  }
  if (toGo > 1) {
    --toGo;
    return false;
  }
  toGo = failsOn ? 1 : 0;
  failed = true;
  return true;
}

bool shouldMallocFail() { return mallocFails && shouldFail(); }

FailingAllocations::FailingAllocations(std::size_t nth, Extent extent, Functions functions) {
  throwOnce();
  failed = false;
  mallocFails = functions == Functions::All;
  failsOn = extent == Extent::AllFromThere;
  toGo = nth;
}

FailingAllocations::~FailingAllocations() { toGo = 0; }

bool FailingAllocations::hasFailed() const { return failed; }

UnfailingAllocations::UnfailingAllocations() { ++unfailing; }
UnfailingAllocations::~UnfailingAllocations() { --unfailing; }

}  // namespace scrivalen::test

void* operator new(std::size_t size) { return orThrow(allocate(size)); }
void* operator new[](std::size_t size) { return orThrow(allocate(size)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new(std::size_t size, std::align_val_t to) { return orThrow(allocate(size, to)); }
void* operator new[](std::size_t size, std::align_val_t to) { return orThrow(allocate(size, to)); }
void* operator new(std::size_t size, std::align_val_t to, const std::nothrow_t&) noexcept { return allocate(size, to); }
void* operator new[](std::size_t size, std::align_val_t to, const std::nothrow_t&) noexcept {
  return allocate(size, to);
}

void operator delete(void* memory) noexcept { release(memory); }
void operator delete[](void* memory) noexcept { release(memory); }
void operator delete(void* memory, std::size_t) noexcept { release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { release(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { release(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { release(memory); }
void operator delete(void* memory, std::align_val_t to) noexcept { release(memory, to); }
void operator delete[](void* memory, std::align_val_t to) noexcept { release(memory, to); }
void operator delete(void* memory, std::size_t, std::align_val_t to) noexcept { release(memory, to); }
void operator delete[](void* memory, std::size_t, std::align_val_t to) noexcept { release(memory, to); }
void operator delete(void* memory, std::align_val_t to, const std::nothrow_t&) noexcept { release(memory, to); }
void operator delete[](void* memory, std::align_val_t to, const std::nothrow_t&) noexcept { release(memory, to); }
