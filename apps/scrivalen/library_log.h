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

  const std::vector<std::wstring>& lines() const { return lines_; }

 private:
  static void receive(const wchar_t* message);

  std::vector<std::wstring> lines_;
};

}  // namespace scrivalen::command
