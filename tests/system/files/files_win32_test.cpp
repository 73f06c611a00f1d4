#include "system/files/files.h"

#include <gtest/gtest.h>

using namespace scrivalen;

TEST(Paths, AreTheSameWhateverTheirCase) {
  EXPECT_TRUE(isSamePath(L"C:\\Folder\\\u00C4.txt", L"c:\\folder\\\u00E4.TXT"));
  EXPECT_FALSE(isSamePath(L"C:\\a.txt", L"C:\\b.txt"));
  EXPECT_FALSE(isSamePath(L"C:\\a", L"C:\\a.txt"));
}

TEST(Paths, KeepLoneSurrogatesInNarrowForm) {
  const std::wstring high(1, static_cast<wchar_t>(0xD83D));
  const std::wstring low(1, static_cast<wchar_t>(0xDE00));
  EXPECT_EQ(narrowPath(L"a" + high + L"b"),
            "a\xED\xA0\xBD"
            "b");
  EXPECT_EQ(narrowPath(low), "\xED\xB8\x80");
  for (const std::wstring& path : {high, low, low + high, L"a" + high + L"\uD55C" + low, high + low}) {
    EXPECT_EQ(widePath(narrowPath(path)), path);
  }
}
