#include "readers/markdown/entities.h"

#include "readers/markdown/entity_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace scrivalen::command {
namespace {

std::string resolved(std::string_view reference) {
  std::string text = "<";
  appendEntity(text, reference);
  return text.substr(1);
}

TEST(Entities, NamesStandForTheirCharacters) {
  EXPECT_EQ(resolved("&amp;"), "&");
  EXPECT_EQ(resolved("&copy;"), "©");
  EXPECT_EQ(resolved("&AElig;"), "Æ");
  EXPECT_EQ(resolved("&zwnj;"), "\u200C");
  EXPECT_EQ(resolved("&Afr;"), "𝔄");
  EXPECT_EQ(resolved("&CounterClockwiseContourIntegral;"), "∳");
}

TEST(Entities, ANameMayStandForTwoCharacters) { EXPECT_EQ(resolved("&ngE;"), "≧\u0338"); }

TEST(Entities, NamesAreCaseSensitive) {
  EXPECT_EQ(resolved("&Eacute;"), "É");
  EXPECT_EQ(resolved("&eacute;"), "é");
  EXPECT_EQ(resolved("&EACUTE;"), "&EACUTE;");
}

TEST(Entities, AnUnknownNameStaysAsTyped) { EXPECT_EQ(resolved("&nosuchname;"), "&nosuchname;"); }

TEST(Entities, NumbersStandForTheirCharacters) {
  EXPECT_EQ(resolved("&#35;"), "#");
  EXPECT_EQ(resolved("&#x22;"), "\"");
  EXPECT_EQ(resolved("&#X1F600;"), "😀");
}

TEST(Entities, AnInvalidNumberBecomesTheReplacementCharacter) {
  EXPECT_EQ(resolved("&#0;"), "\uFFFD");
  EXPECT_EQ(resolved("&#xD800;"), "\uFFFD");
  EXPECT_EQ(resolved("&#x110000;"), "\uFFFD");
  EXPECT_EQ(resolved("&#99999999999;"), "\uFFFD");
}

TEST(Entities, TheTableIsSorted) {
  const auto before = [](const Entity& a, const Entity& b) { return std::string_view(a.name) < b.name; };
  EXPECT_TRUE(std::is_sorted(std::begin(kEntities), std::end(kEntities), before));
}

}  // namespace
}  // namespace scrivalen::command
