#include "system/files/work_folder.h"

#include "system/windows_api.h"

#include <sddl.h>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <memory>
#include <string_view>
#include <utility>

namespace scrivalen {
namespace {

template <typename T>
using Local = std::unique_ptr<T, HLOCAL (*)(HLOCAL)>;

// A security identifier of the process: its user, or the owner of what it creates.
class OwnSid {
 public:
  explicit OwnSid(TOKEN_INFORMATION_CLASS kind) noexcept {
    HANDLE token = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) {
      DWORD size = 0;
      isKnown_ = GetTokenInformation(token, kind, bytes_, sizeof bytes_, &size) != 0;
      CloseHandle(token);
    }
  }

  /// Null when it is unknown.
  PSID get() const noexcept {
    // TOKEN_USER and TOKEN_OWNER both begin with it.
    return isKnown_ ? reinterpret_cast<const TOKEN_OWNER*>(bytes_)->Owner : nullptr;
  }
  bool equals(PSID other) const noexcept { return isKnown_ && other && EqualSid(get(), other); }

 private:
  alignas(TOKEN_USER) char bytes_[256];
  bool isKnown_ = false;
};

// The process's user in the notation of security descriptors; empty when it is unknown.
std::wstring ownUser() {
  const OwnSid user(TokenUser);
  wchar_t* text = nullptr;
  if (!user.get() || !ConvertSidToStringSidW(user.get(), &text)) {
    return {};
  }
  const Local<wchar_t> owned(text, &LocalFree);
  return text;
}

bool createPrivate(const std::wstring& path) {
  const std::wstring user = ownUser();
  const std::wstring description = L"D:P(A;OICI;FA;;;" + user + L")";  // inherited by everything created in it
  void* descriptor = nullptr;
  if (user.empty() || !ConvertStringSecurityDescriptorToSecurityDescriptorW(description.c_str(), SDDL_REVISION_1,
                                                                            &descriptor, nullptr)) {
    return false;
  }
  const Local<void> owned(descriptor, &LocalFree);
  SECURITY_ATTRIBUTES attributes{sizeof attributes, descriptor, FALSE};
  return CreateDirectoryW(path.c_str(), &attributes) != 0;
}

constexpr std::size_t kLongestPath = 32767;  // that the system accepts

// A path that is assembled without allocating, so that cleaning up works even without memory.
class Path {
 public:
  explicit Path(std::wstring_view start) noexcept { add(start); }

  void add(std::wstring_view text) noexcept {
    const std::size_t count = std::min(text.size(), kLongestPath - size_);
    std::copy_n(text.begin(), count, text_ + size_);
    cutTo(size_ + count);
  }

  void cutTo(std::size_t size) noexcept {
    size_ = size;
    text_[size] = L'\0';
  }

  std::size_t size() const noexcept { return size_; }
  const wchar_t* c_str() const noexcept { return text_; }

 private:
  std::size_t size_ = 0;
  wchar_t text_[kLongestPath + 1];
};

// Calls a function with the name of each entry that matches a pattern, except "." and "..", and whether it is a folder
// and not a link to one.
template <class Call>
void forEachEntry(const wchar_t* pattern, Call call) {
  WIN32_FIND_DATAW data{};
  const HANDLE search = FindFirstFileW(pattern, &data);
  if (search == INVALID_HANDLE_VALUE) {
    return;
  }
  // An open search would prevent the folder from being removed.
  const std::unique_ptr<void, decltype(&FindClose)> closed(search, &FindClose);
  do {
    const std::wstring_view name = data.cFileName;
    const DWORD kind = data.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT);
    if (name != L"." && name != L"..") {
      call(name, kind == FILE_ATTRIBUTE_DIRECTORY);
    }
  } while (FindNextFileW(search, &data));
}

// Changes the path while it runs, and restores it.
void removeContents(Path& folder) noexcept {
  const std::size_t size = folder.size();
  folder.add(L"\\*");
  forEachEntry(folder.c_str(), [&](std::wstring_view name, bool isFolder) noexcept {
    folder.cutTo(size + 1);
    folder.add(name);
    if (isFolder) {
      removeContents(folder);
    }
    if (isFolder || !DeleteFileW(folder.c_str())) {
      RemoveDirectoryW(folder.c_str());
    }
  });
  folder.cutTo(size);
}

// Whether this user, or the group that owns what the user creates, owns a folder.
bool isOwn(const std::wstring& path) noexcept {
  alignas(SECURITY_DESCRIPTOR) char descriptor[512];
  DWORD size = 0;
  PSID owner = nullptr;
  BOOL isDefault = FALSE;
  return GetFileSecurityW(path.c_str(), OWNER_SECURITY_INFORMATION, descriptor, sizeof descriptor, &size) &&
         GetSecurityDescriptorOwner(descriptor, &owner, &isDefault) &&
         (OwnSid(TokenUser).equals(owner) || OwnSid(TokenOwner).equals(owner));
}

}  // namespace

bool createFolder(const std::wstring& path, bool isPrivate) noexcept {
  try {
    return isPrivate ? createPrivate(path) : CreateDirectoryW(path.c_str(), nullptr) != 0;
  } catch (const std::exception&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return false;
  }
}

// The lock is a file in the folder that nobody else can open and that disappears with the process.
File holdFolder(const std::wstring& path) noexcept {
  try {
    const std::wstring lock = path + kPathSeparator + L".scrivalen-lock";
    const HANDLE file = CreateFileW(lock.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    return File(file == INVALID_HANDLE_VALUE ? nullptr : file);
  } catch (const std::exception&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return {};
  }
}

void removeHeldFolder(File held, const std::wstring& path) noexcept {
  Path folder(path);
  removeContents(folder);
  held.close();
  RemoveDirectoryW(path.c_str());
}

void removeAbandonedFolders(const std::wstring& folder, std::wstring_view prefix) noexcept {
  try {
    forEachEntry((folder + std::wstring(prefix) + L"*").c_str(), [&](std::wstring_view name, bool isFolder) {
      const std::wstring path = folder + std::wstring(name);
      if (File held = isFolder && isOwn(path) ? holdFolder(path) : File()) {
        removeHeldFolder(std::move(held), path);
      }
    });
  } catch (const std::exception&) {
    // The folders are left for the next run.
  }
}

}  // namespace scrivalen
