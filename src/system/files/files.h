#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen {

/// A file of the operating system: a HANDLE, or a file descriptor carried in the pointer; null is no file.
using NativeFile = void*;

#ifdef _WIN32
inline constexpr wchar_t kPathSeparator = L'\\';
inline constexpr std::wstring_view kPathSeparators = L"\\/";
#else
inline constexpr wchar_t kPathSeparator = L'/';
inline constexpr std::wstring_view kPathSeparators = L"/";
#endif

// Paths are wide everywhere. On Linux they reach the system as UTF-8; a byte of a name that is not UTF-8 is U+DC00 plus
// the byte, so that every name the system knows has a wide form of its own. A call that fails leaves its reason in
// lastSystemError. Those that throw nothing need no memory either.

/// A path as a program's arguments and environment hold it: on Linux the name's own bytes; on Windows UTF-8, in which
/// lone surrogates are encoded too (WTF-8).
std::string narrowPath(std::wstring_view path);
/// The inverse of narrowPath.
std::wstring widePath(std::string_view path);

/// A file that is open, and is closed with this object.
class File {
 public:
  File() noexcept = default;
  explicit File(NativeFile file) noexcept : file_(file) {}
  File(File&& other) noexcept : file_(other.release()) {}
  File& operator=(File&& other) noexcept;
  /// Leaves lastSystemError as it is.
  ~File();

  explicit operator bool() const& noexcept { return file_ != nullptr; }
  explicit operator bool() && noexcept { return file_ != nullptr; }
  /// What the calls below take, which stays this object's.
  operator NativeFile() const& noexcept { return file_; }
  operator NativeFile() && = delete;

  /// @return false when the system reports that bytes were lost; true when no file is open
  bool close() noexcept;
  /// Hands the open file over.
  NativeFile release() noexcept { return std::exchange(file_, nullptr); }

 private:
  NativeFile file_ = nullptr;
};

/// Creates or truncates a file for writing that nobody else holds open for writing; one that is held is not touched.
File openExclusive(const std::wstring& path) noexcept;

/// A file that is held for writing, as openExclusive holds it, and still has the bytes it had.
struct HeldFile {
  File file;
  bool isNew = false;  ///< whether it was created by this
};

/// Takes hold of a file, which is created where there is none.
HeldFile holdExclusive(const std::wstring& path) noexcept;

/// Creates a file that does not exist yet, for writing.
File createNew(const std::wstring& path) noexcept;

/// Opens a file for reading, denying others to write where the system can.
File openForReading(const std::wstring& path) noexcept;

/// Writes all bytes, however many calls of the system that takes.
bool writeAll(NativeFile file, const void* data, std::size_t size) noexcept;

/// How far from its beginning a file is written next; nothing for what has no positions, such as a pipe.
std::optional<std::uint64_t> positionOf(NativeFile file);

/// Reads up to @p size bytes; 0 at the end, nothing on an error.
std::optional<std::size_t> readSome(NativeFile file, void* data, std::size_t size) noexcept;

/// How many bytes a file has; nothing for what has no size, such as a pipe.
std::optional<std::uint64_t> sizeOf(NativeFile file) noexcept;

/// Reads @p size bytes that stand at @p offset of a file.
bool readAt(NativeFile file, std::uint64_t offset, void* data, std::size_t size);

/// Writes all that @p from still has to be read behind what @p to has.
bool copyContents(NativeFile from, NativeFile to) noexcept;

/// Closes a file that no File has.
/// @return false when the system reports that bytes were lost
bool closeFile(NativeFile file) noexcept;

/// Whether there is a file or folder of this path.
bool pathExists(const std::wstring& path) noexcept;
bool isFolder(const std::wstring& path);
/// Whether nobody is allowed to write to a file that exists.
bool isReadOnly(const std::wstring& path) noexcept;
/// Whether both paths lead to one existing file.
bool isSameFile(const std::wstring& a, const std::wstring& b);

bool deleteFile(const std::wstring& path) noexcept;

/// Moves a file over another, which it replaces, also from one volume to another; the target is whole or untouched.
bool moveReplacing(const std::wstring& from, const std::wstring& to);

/// The names of a folder's files that end in @p suffix, in any ASCII case, in the order of the file system; none where
/// there is no such folder.
/// @return nothing when the folder cannot be read
std::optional<std::vector<std::wstring>> findFilesEndingWith(const std::wstring& folder, std::wstring_view suffix);
/// The same; none where the folder cannot be read.
std::vector<std::wstring> filesEndingWith(const std::wstring& folder, std::wstring_view suffix);

/// Creates a folder of a new name for this user alone, in the system's folder for temporary files.
/// @return its path without a separator at the end; nothing on an error
std::optional<std::wstring> createPrivateFolder();
bool deleteFolder(const std::wstring& path) noexcept;

/// How many bytes a folder's disk has room for; nothing where the system does not tell.
std::optional<std::uint64_t> freeSpaceIn(const std::wstring& folder) noexcept;

/// Creates an empty file of a new, hidden name in the folder of @p path.
/// @return its path; nothing on an error
std::optional<std::wstring> createFileBeside(const std::wstring& path);

/// The file that a path leads to: links are followed where there are any, also when there is nothing at their end.
/// Empty, with the reason in lastSystemError, when they have no end.
std::wstring resolvedPath(const std::wstring& path);

/// Whether a path names a file as a process has it open, as /dev/stdout does, rather than by its own name.
bool isOpenFilesName(const std::wstring& path);

/// Whether the path is a device or a pipe, which can be written to but not replaced.
bool isSpecialFile(const std::wstring& path) noexcept;

/// Twelve letters and digits by chance.
std::wstring randomName();

/// The path up to its last separator, that one included; empty without one.
std::wstring_view folderOf(std::wstring_view path);
/// The path behind its last separator.
std::wstring_view fileNameOf(std::wstring_view path);

}  // namespace scrivalen
