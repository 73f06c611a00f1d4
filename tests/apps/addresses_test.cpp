#include "addresses.h"

#include <gtest/gtest.h>

namespace scrivalen::command {
namespace {

TEST(Addresses, FollowTheirTextInParentheses) {
  EXPECT_EQ(withAddress("a", "http://x"), "a (http://x)");
  EXPECT_EQ(withAddress("", "http://x"), "http://x");
}

TEST(Addresses, AreOmittedWhenTheyRepeatTheTextOrStayInTheDocument) {
  EXPECT_EQ(withAddress("x.org", "https://x.org"), "x.org");
  EXPECT_EQ(withAddress("a", "#a"), "a");
}

}  // namespace
}  // namespace scrivalen::command
