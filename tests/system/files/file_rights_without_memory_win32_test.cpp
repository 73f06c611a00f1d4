#include "system/files/file_rights.h"

#include "support/faults/allocation_counter.h"
#include "support/files.h"
#include "system/windows_api.h"

#include <gtest/gtest.h>

#include <sddl.h>

using namespace scrivalen::test;

namespace {

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

}  // namespace

// The access control list cannot be copied, and everyone may read the new file before.
TEST(FileRightsWithoutMemory, OfTheNewFileAreNarrowed) {
  const TemporaryFolder folder;
  const std::wstring old = folder / L"old";
  const std::wstring made = folder / L"new";
  writeBytes(old, "old");
  writeBytes(made, "new");
  ASSERT_NE(accessOf(made).find(L";WD)"), std::wstring::npos);
  {
    const FailingAllocations failing(1, FailingAllocations::Extent::One);
    EXPECT_TRUE(scrivalen::replaceFile(made, old));
    EXPECT_TRUE(failing.hasFailed());
  }
  EXPECT_EQ(bytesOf(old), "new");
  EXPECT_EQ(accessOf(old).find(L";WD)"), std::wstring::npos);
}
