#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace scrivalen::test {

/// A folder for one test, removed with all its files at the end.
class TemporaryFolder {
 public:
  TemporaryFolder();
  /// A folder of this path, which does not exist yet.
  explicit TemporaryFolder(const std::wstring& path);
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  /// The path of a file in the folder.
  std::wstring operator/(std::wstring_view name) const;
  const std::wstring& path() const { return path_; }

 private:
  std::wstring path_;
};

/// A path for the standard library, which would convert wide text by the locale on some systems.
std::filesystem::path asPath(const std::wstring& path);
/// The bytes of a file; fails the test when it cannot be read.
std::string bytesOf(const std::wstring& path);
void writeBytes(const std::wstring& path, std::string_view bytes);
bool exists(const std::wstring& path);
/// Creates a folder and its parents.
void makeFolder(const std::wstring& path);

}  // namespace scrivalen::test
