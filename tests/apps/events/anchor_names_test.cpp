#include "events/anchor_names.h"

#include "texts.h"

#include <gtest/gtest.h>

namespace scrivalen::command {
namespace {

std::string nameOf(std::string_view heading) { return toUtf8(AnchorNames().next(toWide(heading))); }

TEST(AnchorNames, AreLowerCaseWithHyphensForBlanks) { EXPECT_EQ(nameOf("First Steps Here"), "first-steps-here"); }

TEST(AnchorNames, DropPunctuationAndKeepHyphensAndUnderscores) {
  EXPECT_EQ(nameOf("What's new in 2.0? (re-built, my_name)"), "whats-new-in-20-re-built-my_name");
}

TEST(AnchorNames, KeepTheBlanksAroundDroppedPunctuation) { EXPECT_EQ(nameOf("R & D"), "r--d"); }

TEST(AnchorNames, KeepLettersOfEveryScript) {
  EXPECT_EQ(nameOf("Größe ÄRGER"), "größe-ärger");
  EXPECT_EQ(nameOf("ΑΒΓ ПРИВЕТ Ё"), "αβγ-привет-ё");
  EXPECT_EQ(nameOf("Łódź ŽIŽKOV"), "łódź-žižkov");
  EXPECT_EQ(nameOf("Ștefan ΆΛΦΑ Ա"), "ștefan-άλφα-ա");
  EXPECT_EQ(nameOf("日本語 見出し"), "日本語-見出し");
}

TEST(AnchorNames, DropTypographicPunctuationAndEmoji) { EXPECT_EQ(nameOf("“Quoted” — ok… 😀→"), "quoted--ok-"); }

TEST(AnchorNames, DefaultToSectionForAHeadingWithoutLetters) { EXPECT_EQ(nameOf("!?"), "section"); }

TEST(AnchorNames, AreUnique) {
  AnchorNames names;
  EXPECT_EQ(names.next(L"List"), L"list");
  EXPECT_EQ(names.next(L"List"), L"list-1");
  EXPECT_EQ(names.next(L"list"), L"list-2");
}

TEST(AnchorNames, StayUniqueWhenAHeadingLooksLikeANumberedName) {
  AnchorNames names;
  EXPECT_EQ(names.next(L"a-1"), L"a-1");
  EXPECT_EQ(names.next(L"a"), L"a");
  EXPECT_EQ(names.next(L"a"), L"a-2");
  EXPECT_EQ(names.next(L"a-1"), L"a-1-1");
}

}  // namespace
}  // namespace scrivalen::command
