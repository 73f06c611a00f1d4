#pragma once

#include <string>
#include <vector>

namespace scrivalen::command {

/// Keeps what the library logs while this object lives; there is one at a time.
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

}  // namespace scrivalen::command
