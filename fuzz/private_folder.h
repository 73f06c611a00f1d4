#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace scrivalen::fuzz {

/// A folder for the files of one process, in memory if the system has a folder for that. It is removed at the end.
class PrivateFolder {
 public:
  PrivateFolder() {
    namespace fs = std::filesystem;
    const fs::path memory = "/dev/shm";
    std::string name = (fs::is_directory(memory) ? memory : fs::temp_directory_path()) / "scrivalen-fuzz-XXXXXX";
    if (!mkdtemp(name.data())) {
      std::abort();
    }
    path_ = name + '/';
  }
  PrivateFolder(const PrivateFolder&) = delete;
  PrivateFolder& operator=(const PrivateFolder&) = delete;
  ~PrivateFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  /// The path in ASCII, with a trailing slash.
  const std::string& path() const { return path_; }
  std::wstring widePath() const { return {path_.begin(), path_.end()}; }

  bool isEmpty() const { return std::filesystem::is_empty(path_); }

  /// Returns the bytes of a file and removes it.
  std::string take(const std::string& name) const {
    std::string bytes;
    {
      std::ifstream file(path_ + name, std::ios::binary);
      bytes.assign(std::istreambuf_iterator<char>(file), {});
    }
    std::filesystem::remove(path_ + name);
    return bytes;
  }

 private:
  std::string path_;
};

}  // namespace scrivalen::fuzz
