#include "support/files.h"

#include "system/files/files.h"
#include "system/files/work_folder.h"

#include <gtest/gtest.h>

using namespace scrivalen;

namespace scrivalen::test {

std::filesystem::path asPath(const std::wstring& path) {
  const std::string bytes = narrowPath(path);
  return std::u8string(bytes.begin(), bytes.end());
}

TemporaryFolder::TemporaryFolder() {
  EXPECT_TRUE(createWithRandomName(temporaryFolder() + L"scrivalen-", [this](std::wstring path) {
    path_ = std::move(path);
    return createFolder(path_, false) ? Creation::Done : failedCreation(path_);
  }));
}

TemporaryFolder::TemporaryFolder(const std::wstring& path) : path_(path) {
  EXPECT_TRUE(std::filesystem::create_directory(asPath(path)));
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(asPath(path_), ignored);
}

std::wstring TemporaryFolder::operator/(std::wstring_view name) const {
  return path_ + kPathSeparator + std::wstring(name);
}

std::string bytesOf(const std::wstring& path) {
  std::string bytes;
  const File file = openForReading(path);
  EXPECT_NE(file, nullptr);
  char chunk[4096];
  for (;;) {
    const auto size = file ? readSome(file, chunk, sizeof chunk) : 0;
    if (!size || *size == 0) {
      break;
    }
    bytes.append(chunk, *size);
  }
  return bytes;
}

void writeBytes(const std::wstring& path, std::string_view bytes) {
  File file = openExclusive(path);
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(writeAll(file, bytes.data(), bytes.size()));
  EXPECT_TRUE(file.close());
}

bool exists(const std::wstring& path) { return pathExists(path); }

void makeFolder(const std::wstring& path) {
  std::error_code error;
  std::filesystem::create_directories(asPath(path), error);
  EXPECT_FALSE(error) << asPath(path);
}

}  // namespace scrivalen::test
