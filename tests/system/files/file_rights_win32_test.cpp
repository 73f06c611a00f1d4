#include "system/files/file_rights.h"

#include "output/target_file.h"
#include "support/files.h"
#include "system/windows_api.h"

#include <gtest/gtest.h>

#include <sddl.h>

using namespace scrivalen;
using namespace scrivalen::test;

namespace {

void setAccess(const std::wstring& path, const wchar_t* text) {
  void* descriptor = nullptr;
  ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(text, SDDL_REVISION_1, &descriptor, nullptr));
  EXPECT_TRUE(
      SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION, descriptor));
  LocalFree(descriptor);
}

std::wstring accessOf(const std::wstring& path) {
  char descriptor[4096];
  DWORD size = 0;
  EXPECT_TRUE(GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, descriptor, sizeof descriptor, &size));
  wchar_t* text = nullptr;
  EXPECT_TRUE(ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor, SDDL_REVISION_1,
                                                                   DACL_SECURITY_INFORMATION, &text, nullptr));
  const std::wstring result = text;
  LocalFree(text);
  return result;
}

void replace(const std::wstring& path) {
  TargetFile target;
  ASSERT_TRUE(target.prepare(path));
  writeBytes(target.newFile(), "new");
  ASSERT_TRUE(target.replaceBy(target.newFile()));
  EXPECT_EQ(bytesOf(path), "new");
}

}  // namespace

TEST(FileRights, StayWithAFileThatIsReplaced) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "old");
  writeBytes(folder / L"b", "old");
  setAccess(folder / L"a", L"D:P(A;;FA;;;BA)(A;;FA;;;SY)");
  const std::wstring access = accessOf(folder / L"a");
  ASSERT_NE(access, accessOf(folder / L"b"));
  replace(folder / L"a");
  EXPECT_EQ(accessOf(folder / L"a"), access);
}

TEST(FileRights, StayWithAHiddenFile) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "old");
  ASSERT_TRUE(SetFileAttributesW((folder / L"a").c_str(), FILE_ATTRIBUTE_HIDDEN));
  replace(folder / L"a");
  EXPECT_NE(GetFileAttributesW((folder / L"a").c_str()) & FILE_ATTRIBUTE_HIDDEN, 0u);
}

TEST(FileRights, OfANewFileAreThoseOfAnyFileInItsFolder) {
  const TemporaryFolder folder;
  writeBytes(folder / L"b", "");
  replace(folder / L"a");
  EXPECT_EQ(accessOf(folder / L"a"), accessOf(folder / L"b"));
}

TEST(FileRights, OfNewContentDoNotAdmitEveryone) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "old");
  setAccess(folder.path(), L"D:P(A;OICI;FA;;;WD)");
  TargetFile target;
  ASSERT_TRUE(target.prepare(folder / L"a"));
  EXPECT_NE(accessOf(folder.path()).find(L";WD)"), std::wstring::npos);
  EXPECT_EQ(accessOf(target.folder()).find(L";WD)"), std::wstring::npos);
}
