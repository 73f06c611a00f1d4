#include "document/anchor_names.h"

#include <gtest/gtest.h>

namespace scrivalen::document {
namespace {

std::string nameOf(std::string_view heading) { return std::string(AnchorNames().next(heading)); }

TEST(AnchorNames, AreLowerCaseWithHyphensForBlanks) { EXPECT_EQ(nameOf("First Steps Here"), "first-steps-here"); }

TEST(AnchorNames, DropPunctuationAndKeepHyphensAndUnderscores) {
  EXPECT_EQ(nameOf("What's new in 2.0? (re-built, my_name)"), "whats-new-in-20-re-built-my_name");
}

TEST(AnchorNames, KeepTheBlanksAroundDroppedPunctuation) { EXPECT_EQ(nameOf("R & D"), "r--d"); }

TEST(AnchorNames, KeepLettersOfEveryScript) {
  EXPECT_EQ(nameOf("Größe ÄRGER"), "größe-ärger");
  EXPECT_EQ(nameOf("ΑΒΓ ПРИВЕТ Ё"), "αβγ-привет-ё");
  EXPECT_EQ(nameOf("日本語 見出し"), "日本語-見出し");
}

TEST(AnchorNames, DropTypographicPunctuationAndEmoji) { EXPECT_EQ(nameOf("“Quoted” — ok… 😀→"), "quoted--ok-"); }

TEST(AnchorNames, DropBytesThatAreNotUtf8) { EXPECT_EQ(nameOf("a\xFF\xC3"), "a"); }

TEST(AnchorNames, DefaultToSectionForAHeadingWithoutLetters) {
  EXPECT_EQ(nameOf("!?"), "section");
  EXPECT_EQ(nameOf(""), "section");
}

TEST(AnchorNames, AreOfTheBeginningOfALongHeading) {
  AnchorNames names;
  const std::string start(1000, 'a');
  EXPECT_EQ(names.next(start + "b"), start);
  EXPECT_EQ(names.next(start + "c"), start + "-1");
  EXPECT_EQ(names.next(std::string(999, 'a') + "\xC3\xA9"
                                               "b"),
            std::string(999, 'a') + "\xC3\xA9");
}

TEST(AnchorNames, AreUnique) {
  AnchorNames names;
  EXPECT_EQ(names.next("List"), "list");
  EXPECT_EQ(names.next("List"), "list-1");
  EXPECT_EQ(names.next("list"), "list-2");
}

TEST(AnchorNames, StayUniqueWhenAHeadingLooksLikeANumberedName) {
  AnchorNames names;
  EXPECT_EQ(names.next("a-1"), "a-1");
  EXPECT_EQ(names.next("a"), "a");
  EXPECT_EQ(names.next("a"), "a-2");
  EXPECT_EQ(names.next("a-1"), "a-1-1");
}

TEST(AnchorNames, AvoidTheIdsOfTheHost) {
  AnchorNames names;
  EXPECT_TRUE(names.claim("list"));
  EXPECT_TRUE(names.claim("list-1"));
  EXPECT_EQ(names.next("List"), "list-2");
}

TEST(AnchorNames, RefuseAnIdThatIsUsed) {
  AnchorNames names;
  EXPECT_TRUE(names.claim("A"));
  EXPECT_FALSE(names.claim("A"));
  EXPECT_TRUE(names.claim("a"));
  names.next("Made");
  EXPECT_FALSE(names.claim("made"));
}

TEST(AnchorNames, KnowWhichIdsAreUsed) {
  AnchorNames names;
  EXPECT_FALSE(names.isUsed("made"));
  names.next("Made");
  EXPECT_TRUE(names.isUsed("made"));
  EXPECT_FALSE(names.isUsed("made-1"));
}

}  // namespace
}  // namespace scrivalen::document
