#include "system/files/work_folder.h"

#include "system/windows_api.h"

#include <sddl.h>

#include <exception>
#include <memory>
#include <vector>

namespace scrivalen {
namespace {

template <typename T>
using Local = std::unique_ptr<T, HLOCAL (*)(HLOCAL)>;

// The user that this process runs as, as a security descriptor names users; empty when the system does not tell.
std::wstring ownUser() {
  HANDLE token = nullptr;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) {
    return {};
  }
  char bytes[256];
  DWORD size = 0;
  const bool isKnown = GetTokenInformation(token, TokenUser, bytes, sizeof bytes, &size) != 0;
  CloseHandle(token);
  wchar_t* text = nullptr;
  if (!isKnown || !ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(bytes)->User.Sid, &text)) {
    return {};
  }
  const Local<wchar_t> owned(text, &LocalFree);
  return text;
}

bool createPrivate(const std::wstring& path) {
  const std::wstring user = ownUser();
  const std::wstring description = L"D:P(A;OICI;FA;;;" + user + L")";  // handed down to what is made in it
  void* descriptor = nullptr;
  if (user.empty() || !ConvertStringSecurityDescriptorToSecurityDescriptorW(description.c_str(), SDDL_REVISION_1,
                                                                            &descriptor, nullptr)) {
    return false;
  }
  const Local<void> owned(descriptor, &LocalFree);
  SECURITY_ATTRIBUTES attributes{sizeof attributes, descriptor, FALSE};
  return CreateDirectoryW(path.c_str(), &attributes) != 0;
}

struct Entry {
  std::wstring name;
  bool isFolder;  // and no link to one
};

std::vector<Entry> entriesOf(const std::wstring& pattern) {
  std::vector<Entry> entries;
  WIN32_FIND_DATAW data{};
  const HANDLE search = FindFirstFileW(pattern.c_str(), &data);
  if (search == INVALID_HANDLE_VALUE) {
    return entries;
  }
  // An open search would keep the folder from being removed.
  const std::unique_ptr<void, decltype(&FindClose)> closed(search, &FindClose);
  do {
    const std::wstring_view name = data.cFileName;
    const DWORD kind = data.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT);
    if (name != L"." && name != L"..") {
      entries.push_back({std::wstring(name), kind == FILE_ATTRIBUTE_DIRECTORY});
    }
  } while (FindNextFileW(search, &data));
  return entries;
}

void removeContents(const std::wstring& folder) {
  for (const Entry& entry : entriesOf(folder + L"\\*")) {
    const std::wstring path = folder + kPathSeparator + entry.name;
    if (entry.isFolder) {
      removeContents(path);
      RemoveDirectoryW(path.c_str());
    } else if (!DeleteFileW(path.c_str())) {
      RemoveDirectoryW(path.c_str());
    }
  }
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

// A file in it that nobody else can open meanwhile, and that goes away with the process that has it.
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
  try {
    removeContents(path);
  } catch (const std::exception&) {
    // Without memory for the list of its files the folder stays, for the next run to remove.
  }
  held.close();
  RemoveDirectoryW(path.c_str());
}

void removeAbandonedFolders(const std::wstring& folder, std::wstring_view namesBegin) noexcept {
  try {
    for (const Entry& entry : entriesOf(folder + std::wstring(namesBegin) + L"*")) {
      const std::wstring path = folder + entry.name;
      if (File held = entry.isFolder ? holdFolder(path) : File()) {
        removeHeldFolder(std::move(held), path);
      }
    }
  } catch (const std::exception&) {
    // They stay for the next run.
  }
}

}  // namespace scrivalen
