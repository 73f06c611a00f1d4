#pragma once

#include "system/files/files.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace scrivalen {

/// What an archive states of one of its members (ZIP, APPNOTE 4.3.12).
struct ArchiveMember {
  std::string name;
  std::uint64_t offset = 0;  ///< of its local header
  std::uint64_t packedSize = 0;
  std::uint64_t size = 0;
};

/// Reads the directory of an archive without a comment; nothing when there is none.
std::optional<std::vector<ArchiveMember>> membersOf(NativeFile archive);

/// Unpacks a member that is small enough for memory; nothing when that fails or its size is another one than stated.
std::optional<std::string> unpacked(NativeFile archive, const ArchiveMember& member);

}  // namespace scrivalen
