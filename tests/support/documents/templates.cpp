#include "support/documents/templates.h"

#include "support/files.h"
#include "system/files/files.h"
#include "system/module_path.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace scrivalen;

namespace scrivalen::test {

std::wstring templateFolder() {
  const std::wstring module = modulePath();
  return std::wstring(folderOf(module)) + L"tmpl";
}

TemporaryTemplate::TemporaryTemplate() : name_(L"test-" + randomName() + L".htm") {}

TemporaryTemplate::TemporaryTemplate(std::string_view bytes) : TemporaryTemplate() { writeBytes(path(), bytes); }

TemporaryTemplate::~TemporaryTemplate() {
  std::error_code ignored;
  std::filesystem::remove(asPath(path()), ignored);
}

TemporaryTemplate::TemporaryTemplate(Unreadable) : TemporaryTemplate() {
  EXPECT_TRUE(std::filesystem::create_directory(asPath(path())));
}

std::wstring TemporaryTemplate::path() const { return templateFolder() + kPathSeparator + name_; }

}  // namespace scrivalen::test
