#include "text/names/similar.h"

#include <gtest/gtest.h>

#include <string>

using scrivalen::mostSimilar;

namespace {

constexpr std::string_view kKnown[] = {"title", "template", "html", "pdf", "margin-top", "margin-left"};

}  // namespace

TEST(MostSimilar, FindsANameWithOneSlip) {
  EXPECT_EQ(mostSimilar("titl", kKnown), "title");
  EXPECT_EQ(mostSimilar("tittle", kKnown), "title");
  EXPECT_EQ(mostSimilar("tidle", kKnown), "title");
  EXPECT_EQ(mostSimilar("pfd", kKnown), "pdf");
  EXPECT_EQ(mostSimilar("htlm", kKnown), "html");
}

TEST(MostSimilar, AllowsMoreSlipsInALongerName) {
  EXPECT_EQ(mostSimilar("templatte", kKnown), "template");
  EXPECT_EQ(mostSimilar("margn_tp", kKnown), "");
  EXPECT_EQ(mostSimilar("margin_tp", kKnown), "margin-top");
  EXPECT_EQ(mostSimilar("marginleft", kKnown), "margin-left");
}

TEST(MostSimilar, PrefersTheNameWithTheFewestSlips) {
  EXPECT_EQ(mostSimilar("margin-lop", kKnown), "margin-top");
  EXPECT_EQ(mostSimilar("margin-lefp", kKnown), "margin-left");
}

TEST(MostSimilar, CompletesABeginning) {
  EXPECT_EQ(mostSimilar("temp", kKnown), "template");
  EXPECT_EQ(mostSimilar("ma", kKnown), "margin-top");
  constexpr std::string_view kBeginnings[] = {"table", "tab"};
  EXPECT_EQ(mostSimilar("TAB", kBeginnings), "tab");
}

TEST(MostSimilar, CutsAnEndThatIsTooMuch) {
  EXPECT_EQ(mostSimilar("titlepage", kKnown), "title");
  EXPECT_EQ(mostSimilar("pdfpage", kKnown), "");
}

TEST(MostSimilar, IgnoresCase) { EXPECT_EQ(mostSimilar("TITEL", kKnown), "title"); }

TEST(MostSimilar, FindsNothingForOtherWords) {
  for (const std::string_view other : {"", "t", "doc", "xyz", "headline", "pages"}) {
    EXPECT_EQ(mostSimilar(other, kKnown), "") << other;
  }
  EXPECT_EQ(mostSimilar(std::string(100000, 't'), kKnown), "");
}

TEST(MostSimilar, FindsNoNameThatIsTooLongToBeMeant) {
  const std::string longest = "abc" + std::string(61, 'd');
  const std::string tooLong = longest + "d";
  const std::string_view known[] = {tooLong, longest};
  EXPECT_EQ(mostSimilar("abc", known), longest);
}
