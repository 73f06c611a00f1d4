#pragma once

#include "environment.h"

namespace scrivalen::command {

/// Sets the library's handlers for its lifetime: an interrupt stops long operations of the library and of the system,
/// such as the wait for a pipe, and the library's log and its error boxes are silent, because a document returns what
/// it has to report. Only one object may exist at a time.
class LibraryHandlers {
 public:
  /// @param environment  not owned; must outlive this object
  explicit LibraryHandlers(const Environment& environment);
  LibraryHandlers(const LibraryHandlers&) = delete;
  LibraryHandlers& operator=(const LibraryHandlers&) = delete;
  ~LibraryHandlers();
};

}  // namespace scrivalen::command
