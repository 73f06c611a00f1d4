#include "addresses.h"

#include <gtest/gtest.h>

namespace scrivalen::command {
namespace {

bool runsAsLink(std::wstring_view address) { return runsProgram(address, AddressUse::Link); }

TEST(Addresses, RunAProgramByTheirScheme) {
  EXPECT_TRUE(runsAsLink(L"javascript:alert(1)"));
  EXPECT_TRUE(runsAsLink(L"vbscript:x"));
  EXPECT_TRUE(runsAsLink(L"data:text/html,x"));
}

TEST(Addresses, RunAProgramInAnyCaseOfTheirScheme) { EXPECT_TRUE(runsAsLink(L"jAvAsCrIpT:x")); }

TEST(Addresses, RunAProgramDespiteCharactersThatBrowsersIgnore) {
  for (const std::wstring_view address :
       {L" javascript:x", L"\tjavascript:x", L"\x01\x1F javascript:x", L"java\nscript:x", L"java\r\n\tscript\t:x",
        L"\u00A0javascript:x", L"\uFEFFjavascript:x", L"java\u200Bscript:x"}) {
    EXPECT_TRUE(runsAsLink(address));
  }
}

TEST(Addresses, RunNoProgramOtherwise) {
  for (const std::wstring_view address :
       {L"", L"javascript", L"x/javascript:y", L"#javascript:", L"javascripts:x", L"javascript%3Ax",
        L"https://x.org/data:", L"mailto:a@b.org", L"\u0130avascript:x", L"\u212Aavascript:x", L"data"}) {
    EXPECT_FALSE(runsAsLink(address));
  }
}

TEST(Addresses, OfImagesMayBeDataUrls) {
  EXPECT_FALSE(runsProgram(L"data:image/png;base64,AA", AddressUse::Image));
  EXPECT_TRUE(runsProgram(L"javascript:x", AddressUse::Image));
  EXPECT_TRUE(runsProgram(L"vbscript:x", AddressUse::Image));
}

TEST(Addresses, FollowTheirTextInParentheses) {
  EXPECT_EQ(withAddress(L"a", L"http://x"), L"a (http://x)");
  EXPECT_EQ(withAddress(L"", L"http://x"), L"http://x");
}

TEST(Addresses, AreOmittedWhenTheyRepeatTheTextOrStayInTheDocument) {
  EXPECT_EQ(withAddress(L"x.org", L"https://x.org"), L"x.org");
  EXPECT_EQ(withAddress(L"a", L"#a"), L"a");
}

}  // namespace
}  // namespace scrivalen::command
