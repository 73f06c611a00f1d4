#pragma once

#include <string>
#include <utility>
#include <vector>

namespace scrivalen::test {

using ArchiveContent = std::vector<std::pair<std::string, std::string>>;  ///< names and contents

enum class Numbers { Plain, Large };  ///< Large: in the extra fields of archives beyond 4 GiB (ZIP64)

/// The bytes of an archive (ZIP) of deflated members.
std::string archiveOf(const ArchiveContent& content, Numbers numbers = Numbers::Plain);

}  // namespace scrivalen::test
