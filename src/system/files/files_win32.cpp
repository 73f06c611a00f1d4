#include "system/files/files.h"

#include "system/windows_api.h"
#include "text/ascii.h"
#include "text/utf.h"

#include <algorithm>
#include <memory>

namespace scrivalen {
namespace {

constexpr DWORD kNoSharing = 0;

File openFile(const std::wstring& path, DWORD access, DWORD sharing, DWORD disposition,
              DWORD flags = FILE_ATTRIBUTE_NORMAL) noexcept {
  const HANDLE file = CreateFileW(path.c_str(), access, sharing, nullptr, disposition, flags, nullptr);
  return File(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

// A file or folder whatever others do with it, which needs no access to it.
File openToAsk(const std::wstring& path) noexcept {
  return openFile(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING,
                  FILE_FLAG_BACKUP_SEMANTICS);
}

bool isFileOnDisk(HANDLE file) { return GetFileType(file) == FILE_TYPE_DISK; }

// A path with all links resolved; empty if it does not exist.
std::wstring realPath(const std::wstring& path) {
  const File file = openToAsk(path);
  if (!file) {
    return {};
  }
  std::wstring real(32768, L'\0');
  const DWORD length = GetFinalPathNameByHandleW(file, real.data(), static_cast<DWORD>(real.size()), 0);
  real.resize(length < real.size() ? length : 0);
  return real;
}

}  // namespace

std::string narrowPath(std::wstring_view path) {
  std::string utf8;
  const wchar_t* const end = path.data() + path.size();
  for (const wchar_t* at = path.data(); at != end;) {
    const char32_t c = nextCharacter(at, end);
    char bytes[4];
    if (isSurrogate(c)) {
      utf8 += static_cast<char>(0xE0 | (c >> 12));
      utf8 += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      utf8 += static_cast<char>(0x80 | (c & 0x3F));
    } else {
      utf8.append(bytes, putUtf8(c, bytes));
    }
  }
  return utf8;
}

std::wstring widePath(std::string_view path) {
  constexpr std::size_t kSurrogateSize = 3;
  std::wstring wide;
  std::size_t done = 0;
  for (std::size_t at = path.find('\xED'); at < path.size(); at = path.find('\xED', at)) {
    const std::string_view bytes = path.substr(at, kSurrogateSize);
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    if (bytes.size() < kSurrogateSize || byte(1) < 0xA0 || byte(1) > 0xBF || byte(2) < 0x80 || byte(2) > 0xBF) {
      ++at;
      continue;
    }
    appendWide(wide, path.substr(done, at - done));
    wide += static_cast<wchar_t>(0xD000 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F));
    at += kSurrogateSize;
    done = at;
  }
  appendWide(wide, path.substr(done));
  return wide;
}

// An existing file is opened and then truncated, which keeps its attributes and also works for a hidden file.
File openExclusive(const std::wstring& path) noexcept {
  File file = openFile(path, GENERIC_WRITE, kNoSharing, OPEN_ALWAYS);
  if (file && isFileOnDisk(file) && !SetEndOfFile(file)) {
    return {};
  }
  return file;
}

HeldFile holdExclusive(const std::wstring& path) noexcept {
  File file = openFile(path, GENERIC_WRITE, kNoSharing, OPEN_ALWAYS);
  const bool isNew = file && GetLastError() != ERROR_ALREADY_EXISTS;
  return {std::move(file), isNew};
}

File createNew(const std::wstring& path) noexcept { return openFile(path, GENERIC_WRITE, kNoSharing, CREATE_NEW); }

File openForReading(const std::wstring& path) noexcept {
  return openFile(path, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
}

bool writeAll(NativeFile file, const void* data, std::size_t size) noexcept {
  constexpr std::size_t kMaxChunk = 1u << 30;
  const char* at = static_cast<const char*>(data);
  while (size > 0) {
    DWORD written = 0;
    if (!WriteFile(file, at, static_cast<DWORD>(std::min(size, kMaxChunk)), &written, nullptr)) {
      return false;
    }
    if (written == 0) {
      SetLastError(ERROR_DISK_FULL);
      return false;
    }
    at += written;
    size -= written;
  }
  return true;
}

std::optional<std::uint64_t> positionOf(NativeFile file) {
  LARGE_INTEGER position{};
  if (!isFileOnDisk(file) || !SetFilePointerEx(file, LARGE_INTEGER{}, &position, FILE_CURRENT)) {
    return std::nullopt;
  }
  return static_cast<std::uint64_t>(position.QuadPart);
}

std::optional<std::size_t> readSome(NativeFile file, void* data, std::size_t size) noexcept {
  constexpr std::size_t kMaxChunk = 1u << 30;
  DWORD count = 0;
  if (!ReadFile(file, data, static_cast<DWORD>(std::min(size, kMaxChunk)), &count, nullptr)) {
    return GetLastError() == ERROR_BROKEN_PIPE ? std::optional<std::size_t>(0) : std::nullopt;
  }
  return count;
}

std::optional<std::uint64_t> sizeOf(NativeFile file) noexcept {
  LARGE_INTEGER size{};
  if (!isFileOnDisk(file) || !GetFileSizeEx(file, &size)) {
    return std::nullopt;
  }
  return static_cast<std::uint64_t>(size.QuadPart);
}

bool readAt(NativeFile file, std::uint64_t offset, void* data, std::size_t size) {
  constexpr std::size_t kMaxChunk = 1u << 30;
  char* at = static_cast<char*>(data);
  while (size > 0) {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset & 0xFFFFFFFF);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    DWORD count = 0;
    if (!ReadFile(file, at, static_cast<DWORD>(std::min(size, kMaxChunk)), &count, &place) || count == 0) {
      return false;
    }
    at += count;
    offset += count;
    size -= count;
  }
  return true;
}

bool closeFile(NativeFile file) noexcept { return CloseHandle(file) != 0; }

bool pathExists(const std::wstring& path) noexcept {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool isFolder(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool isReadOnly(const std::wstring& path) noexcept {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

bool isSpecialFile(const std::wstring& path) noexcept {
  if (isFolder(path) || !pathExists(path)) {
    return false;
  }
  const File file = openFile(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
  return file && !isFileOnDisk(file);
}

std::optional<FileIdentity> identityOf(const std::wstring& path) {
  const File file = openToAsk(path);
  BY_HANDLE_FILE_INFORMATION found{};
  if (!file || GetFileInformationByHandle(file, &found) == 0) {
    return std::nullopt;
  }
  return FileIdentity{found.dwVolumeSerialNumber,
                      static_cast<std::uint64_t>(found.nFileIndexHigh) << 32 | found.nFileIndexLow};
}

bool deleteFile(const std::wstring& path) noexcept { return DeleteFileW(path.c_str()) != 0; }

bool moveReplacing(const std::wstring& from, const std::wstring& to) {
  return MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED) != 0;
}

std::optional<std::vector<std::wstring>> findFilesEndingWith(const std::wstring& folder, std::wstring_view suffix) {
  std::vector<std::wstring> names;
  const bool isSeparated = !folder.empty() && kPathSeparators.find(folder.back()) != std::wstring_view::npos;
  WIN32_FIND_DATAW entry{};
  const HANDLE search = FindFirstFileW((folder + (isSeparated ? L"*" : L"\\*")).c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) {
    const DWORD error = GetLastError();
    const bool isNone = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    return isNone ? std::optional(names) : std::nullopt;
  }
  const std::unique_ptr<void, decltype(&FindClose)> closed(search, &FindClose);
  do {
    // The system's own patterns match short names too, so "*.htm" would find "page.html".
    if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 && endsWithIgnoringCase(entry.cFileName, suffix)) {
      names.emplace_back(entry.cFileName);
    }
  } while (FindNextFileW(search, &entry));
  return names;
}

std::wstring temporaryFolder() {
  wchar_t folder[MAX_PATH + 2];
  const DWORD length = GetTempPathW(static_cast<DWORD>(std::size(folder)), folder);
  return std::wstring(folder, length < std::size(folder) ? length : 0);
}

bool deleteFolder(const std::wstring& path) noexcept { return RemoveDirectoryW(path.c_str()) != 0; }

std::wstring resolvedPath(const std::wstring& path) {
  const std::wstring real = realPath(path);
  if (!real.empty()) {
    return real;
  }
  const std::wstring_view folder = folderOf(path);
  const std::wstring realFolder = realPath(folder.empty() ? L"." : std::wstring(folder));
  const std::wstring_view separator = realFolder.ends_with(kPathSeparator) ? L"" : L"\\";
  return realFolder.empty() ? path : (realFolder + std::wstring(separator)).append(fileNameOf(path));
}

// As file systems compare names: by a table of the system, in no language.
int comparePaths(const std::wstring& a, const std::wstring& b) noexcept {
  return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()), TRUE) -
         CSTR_EQUAL;
}

bool isOpenFilesName(const std::wstring&) { return false; }

}  // namespace scrivalen
