#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace scrivalen {

/// What a file holds, or why it was not read.
struct WholeFile {
  enum class Problem { None, SpecialFile, TooLarge, System };

  Problem problem = Problem::None;
  std::string bytes;        ///< none with a problem
  std::uint32_t error = 0;  ///< the system's, of Problem::System
};

/// Reads a file of at most @p most bytes. Devices and pipes are not opened, because that may wait without end.
WholeFile readWholeFile(const std::wstring& path, std::size_t most);

}  // namespace scrivalen
