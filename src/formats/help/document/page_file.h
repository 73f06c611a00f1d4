#pragma once

#include "formats/help/document/code_page.h"
#include "output/output_buffer.h"
#include "system/files/files.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace scrivalen::help {

/// A new file of a help project, whose folder is private. Each call raises ProjectFailure or bad_alloc when it fails.
class ProjectFile {
 public:
  explicit ProjectFile(const std::wstring& path);
  void write(std::string_view bytes);
  void close();

 private:
  File file_;
};

/// Why a file of a help project cannot be written or read; in UTF-8.
class ProjectFailure : public std::runtime_error {
  using runtime_error::runtime_error;
};

inline constexpr std::string_view kCannotWrite = "its topics cannot be written";

/// Raises what the system reports for the private folder or a file in it: bad_alloc if memory ran out, else a
/// ProjectFailure that names the folder for temporary files.
/// @param what  what failed
[[noreturn]] void raiseSystemError(std::string_view what);

/// A page in a code page. It takes UTF-8, and writes a character that is missing from the code page as a numeric
/// reference.
class PageFile : public ByteSink {
 public:
  /// @param page  not owned; must outlive this object
  PageFile(const std::wstring& path, const CodePage& page) : file_(path), page_(page) {}

  bool take(const char* data, std::size_t size) override;
  /// After the last bytes.
  void close();

 private:
  ProjectFile file_;
  const CodePage& page_;
  std::string bytes_;  // kept for its memory
  std::string rest_;   // the beginning of a character that is not complete
};

}  // namespace scrivalen::help
