#pragma once

#include "system/files/files.h"
#include "system/files/work_folder.h"

#include <string>

namespace scrivalen {

/// A file that gets new content in one step once that is whole. Until then it has what it had, and the new content is
/// made beside it, where nobody else can read it. A file that is replaced hands its rights on; other names that it has
/// (hard links) keep the old content. A device, a pipe or an open file's name (/dev/stdout) cannot be replaced: the
/// content is made elsewhere and written into it.
class TargetFile {
 public:
  TargetFile() = default;
  TargetFile(const TargetFile&) = delete;
  TargetFile& operator=(const TargetFile&) = delete;
  ~TargetFile() { release(); }

  /// Finds out what the path leads to, and makes place for new content.
  /// @return false, with the reason in lastSystemError, when no content can be made for it
  bool prepare(const std::wstring& path);

  /// The same for a file that is created where there is none, and held from now on, so that nobody else writes it. It
  /// goes away again when the new content does not come.
  bool hold(const std::wstring& path);

  /// The folder in which the new content is made, without a separator at its end.
  const std::wstring& folder() const { return work_.path(); }
  /// Where to make the new content: no file yet, in that folder and with the target's name.
  std::wstring newFile() const;

  /// Lets the target have the content of a finished file, which may be anywhere and is gone then.
  /// @return false, with the reason in lastSystemError, when that failed; the finished file stays
  bool replaceBy(const std::wstring& finished);

  /// Lets go of the target and removes what was made for it; lastSystemError stays as it is.
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
