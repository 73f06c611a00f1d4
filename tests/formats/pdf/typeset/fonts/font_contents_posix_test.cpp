#include "formats/pdf/typeset/fonts/font_contents.h"

#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <string>

#include <sys/stat.h>

using namespace scrivalen::test;

namespace scrivalen::typeset {
namespace {

// Nobody writes into the pipe: to open it would wait without end.
TEST(FontContents, AreNotThoseOfAPipeOrDevice) {
  const TemporaryFolder folder;
  const std::wstring pipe = folder / L"font.ttf";
  ASSERT_EQ(::mkfifo(narrowPath(pipe).c_str(), 0600), 0);
  for (const std::wstring& path : {pipe, std::wstring(L"/dev/zero")}) {
    std::string reason;
    EXPECT_EQ(readFontFile(path, reason), "");
    EXPECT_EQ(reason, "it is a device or a pipe");
  }
}

}  // namespace
}  // namespace scrivalen::typeset
