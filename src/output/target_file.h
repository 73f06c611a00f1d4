#pragma once

#include "system/files.h"

#include <optional>
#include <string>

namespace scrivalen::platform {

/// A file that is held from the beginning of the work on it, so that nobody else writes it and a bad path is known at
/// once, and that gets its new content in one step at the end. Until then it has what it had; one that was created for
/// this goes away when the new content does not come.
class TargetFile {
 public:
  TargetFile() = default;
  TargetFile(const TargetFile&) = delete;
  TargetFile& operator=(const TargetFile&) = delete;
  ~TargetFile() { release(); }

  /// @return false, with the reason in lastSystemError, when the file or files beside it cannot be written
  bool hold(const std::wstring& path);

  /// Where files for the time of the work belong, without a separator at its end: beside the target, so that they are
  /// on its volume; for a device or a pipe a folder of its own.
  std::wstring folder() const;

  /// Creates an empty file of a new name in that folder.
  std::optional<std::wstring> createTemporary() const;

  /// Lets the target have the content of a finished file, which is gone then.
  /// @return false, with the reason in lastSystemError, when that failed; the finished file stays
  bool replaceBy(const std::wstring& finished);

  /// Lets go of the target.
  void release() noexcept;

 private:
  bool prepareFolder();
  bool moveFrom(const std::wstring& finished);

  std::wstring path_;  // with links resolved
  NativeFile file_ = nullptr;
  bool isNew_ = false;
  std::wstring privateFolder_;  // for a target that files can not be moved over
};

}  // namespace scrivalen::platform
