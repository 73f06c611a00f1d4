#pragma once

#include <functional>
#include <string>

namespace scrivalen::test {

/// A disk of a few pages, mounted in a process of its own.
class SmallDisk {
 public:
  explicit SmallDisk(std::wstring folder) : folder_(std::move(folder)) {}

  /// Empties the disk and sets its size.
  /// @return false when the system refuses
  bool resize(std::size_t kib) const;
  const std::wstring& folder() const { return folder_; }
  std::wstring operator/(const std::wstring& name) const { return folder_ + L"/" + name; }

 private:
  std::wstring folder_;
};

/// Runs an action in a child process that may mount a disk. Expectations have no effect there: the action reports by
/// its result.
/// @return the action's result, or why there is no such disk
std::string onSmallDisk(const std::function<std::string(const SmallDisk&)>& action);

}  // namespace scrivalen::test
