#pragma once

#include "system/files/files.h"

#include <string>
#include <string_view>

namespace scrivalen {

/// A folder for the new content of a file. It is for this user alone, so that nobody reads the content before it has
/// the file's rights, and it is locked while it is in use: a folder left by a killed run is removed by the next run for
/// the same file, and one among the temporary files by the next run that needs one there.
class WorkFolder {
 public:
  WorkFolder() = default;
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  ~WorkFolder() { remove(); }

  /// Creates it beside a file, and so on the same volume.
  /// @return false, with the reason in lastSystemError, when that fails
  bool createBeside(const std::wstring& file);
  /// Creates it in the system's temporary folder.
  bool createElsewhere();

  /// Removes it and its contents; preserves lastSystemError.
  void remove() noexcept;

  /// Without a trailing separator.
  const std::wstring& path() const { return path_; }

 private:
  bool create(const std::wstring& folder, const std::wstring& prefix, bool isPrivate);
  bool hold();

  std::wstring path_;
  File held_;
};

/// Creates a folder for this user alone. On Windows that is only done if @p isPrivate is set, because files created in
/// the folder inherit its rights.
bool createFolder(const std::wstring& path, bool isPrivate) noexcept;

/// Locks a folder, which must not be a link, and checks that it still exists. Where the system cannot lock folders it
/// is only opened.
/// @return no file, with the reason in lastSystemError, when that fails, for example because another process holds the
///         lock
File holdFolder(const std::wstring& path) noexcept;

/// Removes a locked folder and its contents, and releases the lock.
void removeHeldFolder(File held, const std::wstring& path) noexcept;

/// Removes the subfolders whose names have the prefix, that this user has created and that are known to be unlocked.
/// @param folder  empty: the current one
void removeAbandonedFolders(const std::wstring& folder, std::wstring_view prefix) noexcept;

}  // namespace scrivalen
