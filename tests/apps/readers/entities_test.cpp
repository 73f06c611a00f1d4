#include "readers/entities.h"

#include "readers/entity_table.h"
#include "texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace scrivalen::command {
namespace {

std::string meant(std::string_view reference) {
  std::wstring text = L"<";
  appendEntity(text, reference);
  return toUtf8(text.substr(1));
}

TEST(Entities, NamesStandForTheirCharacters) {
  EXPECT_EQ(meant("&amp;"), "&");
  EXPECT_EQ(meant("&copy;"), "©");
  EXPECT_EQ(meant("&AElig;"), "Æ");
  EXPECT_EQ(meant("&zwnj;"), "\u200C");
  EXPECT_EQ(meant("&Afr;"), "𝔄");
  EXPECT_EQ(meant("&CounterClockwiseContourIntegral;"), "∳");
}

TEST(Entities, ANameMayStandForTwoCharacters) { EXPECT_EQ(meant("&ngE;"), "≧\u0338"); }

TEST(Entities, NamesKnowTheCaseOfTheirLetters) {
  EXPECT_EQ(meant("&Eacute;"), "É");
  EXPECT_EQ(meant("&eacute;"), "é");
  EXPECT_EQ(meant("&EACUTE;"), "&EACUTE;");
}

TEST(Entities, AnUnknownNameStaysAsItWasTyped) { EXPECT_EQ(meant("&nosuchname;"), "&nosuchname;"); }

TEST(Entities, NumbersStandForTheirCharacters) {
  EXPECT_EQ(meant("&#35;"), "#");
  EXPECT_EQ(meant("&#x22;"), "\"");
  EXPECT_EQ(meant("&#X1F600;"), "😀");
}

TEST(Entities, ANumberThatIsNoCharacterBecomesTheReplacementCharacter) {
  EXPECT_EQ(meant("&#0;"), "\uFFFD");
  EXPECT_EQ(meant("&#xD800;"), "\uFFFD");
  EXPECT_EQ(meant("&#x110000;"), "\uFFFD");
  EXPECT_EQ(meant("&#99999999999;"), "\uFFFD");
}

TEST(Entities, TheTableIsInTheOrderThatItIsSearchedIn) {
  const auto before = [](const Entity& a, const Entity& b) { return std::string_view(a.name) < b.name; };
  EXPECT_TRUE(std::is_sorted(std::begin(kEntities), std::end(kEntities), before));
}

}  // namespace
}  // namespace scrivalen::command
