#include "support/faults/open_errors.h"

#include "output/clog.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

using namespace scrivalen;

namespace scrivalen::test {
namespace {

std::wstring errorOf(const std::wstring& path, const File& file) {
  std::wstring reason;
  CLog::FormatLastError(reason);
  EXPECT_EQ(file, nullptr);
  EXPECT_FALSE(reason.empty());
  return L"File open/create error for '" + path + L"'. " + reason;
}

}  // namespace

std::wstring openingError(const std::wstring& path) { return errorOf(path, openExclusive(path)); }

std::wstring readingError(const std::wstring& path) { return errorOf(path, openForReading(path)); }

}  // namespace scrivalen::test
