#pragma once

#include "environment.h"

#include <string>
#include <vector>

// The library's handlers, each set as long as an object lives. There is one object of each class at a time.
namespace scrivalen::command {

/// Sets the library's clock to what SOURCE_DATE_EPOCH says, so that equal inputs give equal bytes, while this object
/// lives. Raises UsageError when that is no number of seconds.
class FixedClock {
 public:
  explicit FixedClock(const Environment& environment);
  FixedClock(const FixedClock&) = delete;
  FixedClock& operator=(const FixedClock&) = delete;
  ~FixedClock();
};

/// Keeps what the library logs while this object lives.
class LibraryLog {
 public:
  LibraryLog();
  LibraryLog(const LibraryLog&) = delete;
  LibraryLog& operator=(const LibraryLog&) = delete;
  ~LibraryLog();

  /// Raises std::bad_alloc when memory ran out for one of them.
  const std::vector<std::wstring>& lines() const;

 private:
  static void receive(const wchar_t* message);

  std::vector<std::wstring> lines_;
  bool isComplete_ = true;
};

/// While it lives, an interrupt stops what the library, or a call of the system, takes long for.
class LibraryStop {
 public:
  /// @param environment  not owned; must outlive this
  explicit LibraryStop(const Environment& environment);
  LibraryStop(const LibraryStop&) = delete;
  LibraryStop& operator=(const LibraryStop&) = delete;
  ~LibraryStop();
};

}  // namespace scrivalen::command
