#pragma once

#include "system/files/files.h"
#include "system/files/work_folder.h"

#include <string>

namespace scrivalen {

/// A file whose content is replaced in one step, when the new content is complete. Until then the file is unchanged,
/// and the new content is in a folder beside it, where nobody else can read it. The new file gets the old one's rights;
/// other hard links to the old file keep the old content. A device, a pipe or an open file's name (/dev/stdout) cannot
/// be replaced: the content is made elsewhere and written into it.
class TargetFile {
 public:
  TargetFile() = default;
  TargetFile(const TargetFile&) = delete;
  TargetFile& operator=(const TargetFile&) = delete;
  ~TargetFile() { release(); }

  /// Resolves the path and creates the folder for the new content.
  /// @return false, with the reason in lastSystemError, when that fails
  bool prepare(const std::wstring& path);

  /// The same, but creates the file if there is none, and holds it open, so that nobody else writes to it. A new file
  /// is deleted again unless it gets its content.
  bool hold(const std::wstring& path);

  /// Only holds the file like that, without a folder for new content.
  bool lock(const std::wstring& path);

  /// The folder for the new content, without a trailing separator.
  const std::wstring& folder() const { return work_.path(); }
  /// The path for the new content, in that folder and with the target's name; there is no file yet.
  std::wstring newFile() const;

  /// Replaces the target's content with that of a finished file, which may be anywhere and no longer exists afterwards.
  /// @return false, with the reason in lastSystemError, when that fails; the finished file is then kept
  bool replaceBy(const std::wstring& finished);

  /// Closes the target and removes the folder; preserves lastSystemError.
  void release() noexcept;

 private:
  bool createWorkFolder();
  bool writeInto(const std::wstring& finished);
  bool replaceThroughFolder(const std::wstring& finished);

  std::wstring path_;  // with links resolved
  File file_;
  bool isNew_ = false;
  bool isReplaceable_ = true;
  WorkFolder work_;
};

}  // namespace scrivalen
