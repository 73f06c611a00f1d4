#include "readers/utf8_check.h"

#include <gtest/gtest.h>

#include <string>

namespace scrivalen::command {
namespace {

using namespace std::string_view_literals;

TEST(Utf8Check, AcceptsWellFormedText) {
  EXPECT_TRUE(isCleanUtf8(""));
  EXPECT_TRUE(isCleanUtf8("plain text that is longer than two blocks of sixteen bytes"));
  EXPECT_TRUE(isCleanUtf8("é € 😀 \u0080 \u07FF \u0800 \uD7FF \uE000 \uFFFF \U00010000 \U0010FFFF \x7F"));
}

TEST(Utf8Check, RejectsMalformedText) {
  for (const std::string_view bad :
       {"\x80"sv, "\xC0\x80"sv, "\xC1\xBF"sv, "\xC3"sv, "\xC3("sv, "\xE0\x9F\xBF"sv, "\xE2\x82"sv, "\xED\xA0\x80"sv,
        "\xF0\x8F\xBF\xBF"sv, "\xF4\x90\x80\x80"sv, "\xF0\x9F\x98"sv, "\xF5\x80\x80\x80"sv, "\xFE"sv, "\xFF"sv}) {
    EXPECT_FALSE(isCleanUtf8(bad)) << testing::PrintToString(std::string(bad));
  }
}

TEST(Utf8Check, RejectsANul) { EXPECT_FALSE(isCleanUtf8("a\0b"sv)); }

TEST(Utf8Check, FindsABadByteAtEveryPositionInABlock) {
  for (std::size_t at = 0; at < 40; ++at) {
    for (const char bad : {'\0', '\x80', '\xFF'}) {
      std::string text(40, 'a');
      text[at] = bad;
      EXPECT_FALSE(isCleanUtf8(text)) << at;
    }
  }
}

TEST(Utf8Check, CountsTheBytesOfAnUnfinishedCharacter) {
  EXPECT_EQ(incompleteSequence(""), 0u);
  EXPECT_EQ(incompleteSequence("abc"), 0u);
  EXPECT_EQ(incompleteSequence("abc\xC3"), 1u);
  EXPECT_EQ(incompleteSequence("abc\xE2\x82"), 2u);
  EXPECT_EQ(incompleteSequence("abc\xF0\x9F\x98"), 3u);
  EXPECT_EQ(incompleteSequence("abc\xF0\x9F\x98\x80"), 0u);
  EXPECT_EQ(incompleteSequence("\x80\x80\x80\x80"), 0u);
}

}  // namespace
}  // namespace scrivalen::command
