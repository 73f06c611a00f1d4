#pragma once

#include "environment.h"

#include <string>
#include <vector>

// Each object sets a handler of the library for its lifetime. Only one object of each class may exist at a time.
namespace scrivalen::command {

/// Sets the library's clock to SOURCE_DATE_EPOCH, if it is set, so that equal inputs give equal bytes. Raises
/// UsageError when the value is not a number of seconds.
class FixedClock {
 public:
  explicit FixedClock(const Environment& environment);
  FixedClock(const FixedClock&) = delete;
  FixedClock& operator=(const FixedClock&) = delete;
  ~FixedClock();
};

/// Collects the lines that the library logs, and keeps it from showing error boxes: each repeats a line of the log, and
/// a modal box would hold up a script.
class LibraryLog {
 public:
  LibraryLog();
  LibraryLog(const LibraryLog&) = delete;
  LibraryLog& operator=(const LibraryLog&) = delete;
  ~LibraryLog();

  /// Raises std::bad_alloc if memory ran out for one of the lines.
  const std::vector<std::wstring>& lines() const;

 private:
  static void receive(const wchar_t* message);

  std::vector<std::wstring> lines_;
  bool isComplete_ = true;
};

/// Lets an interrupt stop long operations of the library and of the system.
class LibraryStop {
 public:
  /// @param environment  not owned; must outlive this object
  explicit LibraryStop(const Environment& environment);
  LibraryStop(const LibraryStop&) = delete;
  LibraryStop& operator=(const LibraryStop&) = delete;
  ~LibraryStop();
};

}  // namespace scrivalen::command
