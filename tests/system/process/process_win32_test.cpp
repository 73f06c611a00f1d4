#include "system/process/process.h"

#include "support/files.h"
#include "system/windows_api.h"
#include "text/utf.h"

#include <gtest/gtest.h>

using namespace scrivalen;
using namespace scrivalen::test;

namespace {

std::wstring factsProgram() {
  std::wstring path;
  appendWide(path, SCRIVALEN_PROCESS_FACTS);
  return path;
}

// An open file whose handle a child process may inherit.
class InheritableFile {
 public:
  explicit InheritableFile(const std::wstring& path) {
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    file_ = CreateFileW(path.c_str(), GENERIC_WRITE, 0, &inheritable, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  }
  InheritableFile(const InheritableFile&) = delete;
  InheritableFile& operator=(const InheritableFile&) = delete;
  ~InheritableFile() { CloseHandle(file_); }

  std::wstring number() const { return std::to_wstring(reinterpret_cast<std::uintptr_t>(file_)); }

 private:
  HANDLE file_;
};

}  // namespace

TEST(RunProgram, GivesAProgramNormalPriorityNoWindowAndNoHandles) {
  const TemporaryFolder folder;
  const InheritableFile open(folder / L"open");
  const DWORD before = GetPriorityClass(GetCurrentProcess());
  EXPECT_TRUE(SetPriorityClass(GetCurrentProcess(), BELOW_NORMAL_PRIORITY_CLASS));  // which child processes inherit
  const ProcessResult result = runProgram({factsProgram(), folder / L"facts", open.number()});
  EXPECT_TRUE(SetPriorityClass(GetCurrentProcess(), before));
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_EQ(bytesOf(folder / L"facts"), "priority 32\nwindow no\nfile no\n");
  EXPECT_TRUE(result.messages.empty());
}
