#include "system/files/file_rights.h"

#include "system/windows_api.h"

#include <memory>

namespace scrivalen {
namespace {

constexpr DWORD kInheritedAttributes =
    FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_SYSTEM;

bool copyAccessList(const std::wstring& from, const std::wstring& to) {
  constexpr DWORD kMaxSize = 65536;  // an access control list is shorter
  const auto bytes = std::unique_ptr<char[]>(new (std::nothrow) char[kMaxSize]);
  DWORD needed = 0;
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  if (!bytes || !GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, bytes.get(), kMaxSize, &needed) ||
      !GetSecurityDescriptorControl(bytes.get(), &control, &revision)) {
    return false;
  }
  const SECURITY_INFORMATION protection =
      (control & SE_DACL_PROTECTED) != 0 ? PROTECTED_DACL_SECURITY_INFORMATION : UNPROTECTED_DACL_SECURITY_INFORMATION;
  return SetFileSecurityW(to.c_str(), DACL_SECURITY_INFORMATION | protection, bytes.get()) != 0;
}

}  // namespace

bool copyRights(const std::wstring& from, const std::wstring& to) noexcept {
  const DWORD attributes = GetFileAttributesW(from.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES &&
         SetFileAttributesW(to.c_str(), (attributes & kInheritedAttributes) | FILE_ATTRIBUTE_NORMAL) &&
         copyAccessList(from, to);
}

// ReplaceFileW also preserves other properties, such as the creation time. Where it fails, the new file keeps the
// rights that it got in the work folder, which is private to this user.
bool replaceFile(const std::wstring& finished, const std::wstring& target) noexcept {
  const DWORD attributes = GetFileAttributesW(target.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) {
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
      SetLastError(ERROR_ACCESS_DENIED);
      return false;
    }
    copyRights(target, finished);
    if (ReplaceFileW(target.c_str(), finished.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr)) {
      return true;
    }
  }
  return MoveFileExW(finished.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}

}  // namespace scrivalen
