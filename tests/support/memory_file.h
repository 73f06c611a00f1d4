#pragma once

#include "scrivalen/output_file.h"

#include <string>

namespace scrivalen::test {

/// A host's own file, which keeps its bytes in memory.
struct MemoryFile : OutputFile {
  void Write(const void* data, std::size_t size) override { bytes.append(static_cast<const char*>(data), size); }

  std::string bytes;
};

}  // namespace scrivalen::test
