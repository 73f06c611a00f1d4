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

// Whether access control lists mean anything on a file's volume.
bool hasAccessLists(const std::wstring& path) {
  wchar_t root[MAX_PATH + 1];
  DWORD flags = 0;
  return !GetVolumePathNameW(path.c_str(), root, MAX_PATH + 1) ||
         !GetVolumeInformationW(root, nullptr, 0, nullptr, nullptr, &flags, nullptr, 0) ||
         (flags & FILE_PERSISTENT_ACLS) != 0;
}

// Admits only this user. It does not allocate.
bool restrictToUser(const std::wstring& path) {
  alignas(TOKEN_USER) char user[sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE];
  HANDLE token = nullptr;
  DWORD size = 0;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) {
    return false;
  }
  const bool isKnown = GetTokenInformation(token, TokenUser, user, sizeof user, &size) != 0;
  CloseHandle(token);
  alignas(ACL) char list[sizeof(ACL) + sizeof(ACCESS_ALLOWED_ACE) + SECURITY_MAX_SID_SIZE];
  SECURITY_DESCRIPTOR descriptor;
  return isKnown && InitializeAcl(reinterpret_cast<ACL*>(list), sizeof list, ACL_REVISION) &&
         AddAccessAllowedAce(reinterpret_cast<ACL*>(list), ACL_REVISION, FILE_ALL_ACCESS,
                             reinterpret_cast<TOKEN_USER*>(user)->User.Sid) &&
         InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) &&
         SetSecurityDescriptorDacl(&descriptor, TRUE, reinterpret_cast<ACL*>(list), FALSE) &&
         SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION, &descriptor);
}

}  // namespace

// Attributes grant nothing, so they may stay unset.
bool copyRights(const std::wstring& from, const std::wstring& to) noexcept {
  const DWORD attributes = GetFileAttributesW(from.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    return false;
  }
  SetFileAttributesW(to.c_str(), (attributes & kInheritedAttributes) | FILE_ATTRIBUTE_NORMAL);
  return copyAccessList(from, to) || !hasAccessLists(to) || restrictToUser(to);
}

// ReplaceFileW also preserves other properties, such as the creation time. Where it fails, the new file keeps the
// rights that it has by then.
bool replaceFile(const std::wstring& finished, const std::wstring& target) noexcept {
  const DWORD attributes = GetFileAttributesW(target.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES) {
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
      SetLastError(ERROR_ACCESS_DENIED);
      return false;
    }
    if (!copyRights(target, finished)) {
      return false;
    }
    if (ReplaceFileW(target.c_str(), finished.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr)) {
      return true;
    }
  }
  return MoveFileExW(finished.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}

}  // namespace scrivalen
