#pragma once

#include <cstddef>

// A program that is linked with --wrap=realloc asks this for memory wherever its own sources call realloc, so that
// FailingAllocations holds for those calls too. The names are the linker's.
extern "C" void* __wrap_realloc(void* memory, std::size_t size);
