#include "addresses.h"

#include <gtest/gtest.h>

namespace scrivalen::command {
namespace {

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
