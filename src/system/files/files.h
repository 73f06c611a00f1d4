#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen {

/// An operating-system file: a HANDLE, or a file descriptor stored in the pointer; null is no file.
using NativeFile = void*;

#ifdef _WIN32
inline constexpr wchar_t kPathSeparator = L'\\';
inline constexpr std::wstring_view kPathSeparators = L"\\/";
#else
inline constexpr wchar_t kPathSeparator = L'/';
inline constexpr std::wstring_view kPathSeparators = L"/";
#endif

// Paths are wide everywhere. On Linux they are passed to the system as UTF-8; a byte of a name that is not UTF-8 is
// U+DC00 plus the byte, so that every name has a wide form of its own. A call that fails leaves the reason in
// lastSystemError. Functions that are noexcept do not allocate either.

/// A path as narrow text: on Linux the name's own bytes; on Windows UTF-8 in which lone surrogates are encoded too
/// (WTF-8).
std::string narrowPath(std::wstring_view path);
/// The inverse of narrowPath.
std::wstring widePath(std::string_view path);

/// An open file, which is closed with this object.
class File {
 public:
  File() noexcept = default;
  explicit File(NativeFile file) noexcept : file_(file) {}
  File(File&& other) noexcept : file_(other.release()) {}
  File& operator=(File&& other) noexcept;
  /// Preserves lastSystemError.
  ~File();

  explicit operator bool() const& noexcept { return file_ != nullptr; }
  explicit operator bool() && noexcept { return file_ != nullptr; }
  /// For the calls below; the file remains this object's.
  operator NativeFile() const& noexcept { return file_; }
  operator NativeFile() && = delete;

  /// @return false when the system reports that bytes were lost; true when no file is open
  bool close() noexcept;
  /// Gives up the open file.
  NativeFile release() noexcept { return std::exchange(file_, nullptr); }

 private:
  NativeFile file_ = nullptr;
};

/// Creates or truncates a file for writing, and locks it against other writers; a file that is already locked is not
/// touched.
File openExclusive(const std::wstring& path) noexcept;

/// A file that is locked as by openExclusive, with its content unchanged.
struct HeldFile {
  File file;
  bool isNew = false;  ///< whether the call created it
};

/// Locks a file, and creates it if there is none.
HeldFile holdExclusive(const std::wstring& path) noexcept;

/// Creates a new file for writing; fails if there is one.
File createNew(const std::wstring& path) noexcept;

/// Opens a file for reading, and denies writing to others where the system can.
File openForReading(const std::wstring& path) noexcept;

/// Writes all bytes, in as many system calls as that takes.
bool writeAll(NativeFile file, const void* data, std::size_t size) noexcept;

/// A file's position; nothing for a file without positions, such as a pipe.
std::optional<std::uint64_t> positionOf(NativeFile file);

/// Reads up to @p size bytes; 0 at the end, nothing on an error.
std::optional<std::size_t> readSome(NativeFile file, void* data, std::size_t size) noexcept;

/// A file's size in bytes; nothing for a file without a size, such as a pipe.
std::optional<std::uint64_t> sizeOf(NativeFile file) noexcept;

/// Reads exactly @p size bytes at @p offset of a file.
bool readAt(NativeFile file, std::uint64_t offset, void* data, std::size_t size);

/// Calls @p take with the unread rest of a file, piece by piece, until it returns false.
/// @return false when it did, or on an error
template <typename Take>
bool readRest(NativeFile file, Take take) {
  char bytes[16384];
  for (;;) {
    const auto size = readSome(file, bytes, sizeof bytes);
    if (!size) {
      return false;
    }
    if (*size == 0) {
      return true;
    }
    if (!take(std::string_view(bytes, *size))) {
      return false;
    }
  }
}

/// Copies the unread rest of @p from to @p to, at its position.
bool copyContents(NativeFile from, NativeFile to) noexcept;

/// Closes a file that no File owns.
/// @return false when the system reports that bytes were lost
bool closeFile(NativeFile file) noexcept;

/// Whether there is a file or folder at this path.
bool pathExists(const std::wstring& path) noexcept;
bool isFolder(const std::wstring& path);
/// Whether a file exists and has no write permission for anybody.
bool isReadOnly(const std::wstring& path) noexcept;
/// What tells an existing file or folder from all others.
struct FileIdentity {
  std::uint64_t volume = 0;
  std::uint64_t file = 0;

  friend auto operator<=>(const FileIdentity&, const FileIdentity&) = default;
};

/// Nothing if there is no file or folder at this path.
std::optional<FileIdentity> identityOf(const std::wstring& path);

/// Whether both paths lead to the same existing file.
bool isSameFile(const std::wstring& a, const std::wstring& b);

bool deleteFile(const std::wstring& path) noexcept;

/// Moves a file, also to another volume, and replaces any file at the target, which is either complete or untouched.
bool moveReplacing(const std::wstring& from, const std::wstring& to);

/// The names of a folder's files that end in @p suffix, ignoring ASCII case, in the order of the file system; none if
/// there is no such folder.
/// @return nothing when the folder cannot be read
std::optional<std::vector<std::wstring>> findFilesEndingWith(const std::wstring& folder, std::wstring_view suffix);
/// The same, but none when the folder cannot be read.
std::vector<std::wstring> filesEndingWith(const std::wstring& folder, std::wstring_view suffix);

/// The system's folder for temporary files, with a trailing separator.
std::wstring temporaryFolder();
/// The same for messages: without a trailing separator, except that of a root.
std::wstring temporaryFolderName();
bool deleteFolder(const std::wstring& path) noexcept;

/// Creates an empty file with a new, hidden name in the folder of @p path.
/// @return its path; nothing on an error
std::optional<std::wstring> createFileBeside(const std::wstring& path);

/// A path with all links resolved, even if the last one leads to nothing. Empty, with the reason in lastSystemError,
/// when the links form a loop.
std::wstring resolvedPath(const std::wstring& path);

/// Orders resolved paths. Those that would lead to the same file, which need not exist, are equal: on Windows whatever
/// their case.
/// @return negative, zero or positive
int comparePaths(const std::wstring& a, const std::wstring& b) noexcept;
inline bool isSamePath(const std::wstring& a, const std::wstring& b) { return comparePaths(a, b) == 0; }

/// Whether names in the folder of @p path are the same whatever their case. Creates a file beside it for a moment;
/// false if it cannot.
bool ignoresCase(const std::wstring& path);

/// Whether a path names a process's open file, as /dev/stdout does, rather than a file by its own name.
bool isOpenFilesName(const std::wstring& path);

/// Whether the path is a device or a pipe, which can be written to but not replaced.
bool isSpecialFile(const std::wstring& path) noexcept;

/// Twelve random letters and digits.
std::wstring randomName();

/// The beginning of the names that the library makes up beside its targets.
inline constexpr std::wstring_view kOwnPrefix = L".scrivalen-";

enum class Creation { Done, Failed, NameTaken };

/// Calls @p create with a new path, @p start and a random name, up to 100 times, until it does not return NameTaken.
/// @return whether it returned Done; if not, lastSystemError has the last attempt's reason
template <typename Create>
bool createWithRandomName(const std::wstring& start, Create create) {
  constexpr int kAttempts = 100;
  Creation result = Creation::NameTaken;
  for (int attempt = 0; attempt < kAttempts && result == Creation::NameTaken; ++attempt) {
    result = create(start + randomName());
  }
  return result == Creation::Done;
}

/// What a failed attempt to create something at @p path means; preserves lastSystemError.
Creation failedCreation(const std::wstring& path) noexcept;

/// The path up to and including its last separator; empty without one.
std::wstring_view folderOf(std::wstring_view path);
/// The path after its last separator.
std::wstring_view fileNameOf(std::wstring_view path);

}  // namespace scrivalen
