#pragma once

#include <cstddef>

// A program linked with --wrap=realloc calls this function wherever its own sources call realloc, so that
// FailingAllocations applies to those calls too. The names are the linker's.
extern "C" void* __wrap_realloc(void* memory, std::size_t size);
