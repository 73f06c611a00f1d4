#pragma once

#include "host.h"

namespace scrivalen::command {

/// While it lives, an interrupt stops what the library, or a call of the system, takes long for; there is one at a
/// time.
class LibraryStop {
 public:
  /// @param host  not owned; must outlive this
  explicit LibraryStop(const Host& host);
  LibraryStop(const LibraryStop&) = delete;
  LibraryStop& operator=(const LibraryStop&) = delete;
  ~LibraryStop();
};

}  // namespace scrivalen::command
