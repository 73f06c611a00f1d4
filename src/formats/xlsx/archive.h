#pragma once

#include "system/files/files.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace scrivalen {

/// A member as described in the archive's directory (ZIP, APPNOTE 4.3.12).
struct ArchiveMember {
  std::string name;
  std::uint64_t offset = 0;  ///< of its local header
  std::uint64_t packedSize = 0;
  std::uint64_t size = 0;
};

/// Reads the directory of an archive without a comment; nothing when it has none that can be read.
std::optional<std::vector<ArchiveMember>> membersOf(NativeFile archive);

/// Unpacks a member of at most 64 MiB; nothing when that fails or the size is not the stated one.
std::optional<std::string> unpacked(NativeFile archive, const ArchiveMember& member);

}  // namespace scrivalen
