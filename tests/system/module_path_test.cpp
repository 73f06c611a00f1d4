#include "system/module_path.h"

#include "system/files/files.h"

#include <gtest/gtest.h>

using namespace scrivalen;

TEST(ModulePath, IsTheFullNameOfAnExistingFile) {
  const std::wstring path = modulePath();
  EXPECT_TRUE(pathExists(path));
  EXPECT_FALSE(isFolder(path));
  EXPECT_FALSE(folderOf(path).empty());
  EXPECT_NE(fileNameOf(path).find(L"scrivalen_base_tests"), std::wstring_view::npos);
}
