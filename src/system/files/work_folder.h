#pragma once

#include "system/files/files.h"

#include <string>
#include <string_view>

namespace scrivalen {

/// A folder in which new content for a file is made. It is for this user alone, so that nobody reads the content before
/// it has the file's rights, and it is held as long as it is in use: what a run that was killed has left is removed by
/// the next one for the same file.
class WorkFolder {
 public:
  WorkFolder() = default;
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  ~WorkFolder() { remove(); }

  /// Creates it beside a file, on whose volume it is then.
  /// @return false, with the reason in lastSystemError
  bool createBeside(const std::wstring& file);
  /// Creates it in the system's folder for temporary files.
  bool createElsewhere();

  /// Removes it with all in it, and leaves lastSystemError as it is.
  void remove() noexcept;

  /// Without a separator at its end.
  const std::wstring& path() const { return path_; }

 private:
  bool hold();

  std::wstring path_;
  File held_;
};

/// Creates a folder for this user alone. On Windows that is so only where @p isPrivate says so, because what is made in
/// it has its rights.
bool createFolder(const std::wstring& path, bool isPrivate) noexcept;

/// Takes hold of a folder, which is no link, and looks that it is still there. Where the system has no locks for
/// folders it is only opened.
/// @return no file, with the reason in lastSystemError, when somebody else holds it
File holdFolder(const std::wstring& path) noexcept;

/// Removes a folder that is held with all in it, and lets go of it.
void removeHeldFolder(File held, const std::wstring& path) noexcept;

/// Removes the folders in a folder whose names begin so, which this user has made and which certainly nobody holds.
/// @param folder  empty: the current one
void removeAbandonedFolders(const std::wstring& folder, std::wstring_view prefix) noexcept;

}  // namespace scrivalen
