#pragma once

#include <functional>
#include <string>

namespace scrivalen::test {

/// A disk of a few pages that a process of its own has mounted.
class SmallDisk {
 public:
  explicit SmallDisk(std::wstring folder) : folder_(std::move(folder)) {}

  /// Empties the disk and lets it have a size.
  /// @return false when the system refuses
  bool resize(std::size_t kib) const;
  const std::wstring& folder() const { return folder_; }
  std::wstring operator/(const std::wstring& name) const { return folder_ + L"/" + name; }

 private:
  std::wstring folder_;
};

/// Runs an action in a process of its own in which anyone may mount a disk. It has no display and none of the test's
/// expectations: what it finds, it answers.
/// @return what the action answers, or why there is no such disk
std::string onSmallDisk(const std::function<std::string(const SmallDisk&)>& action);

}  // namespace scrivalen::test
