#include "text/direction.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using namespace scrivalen;

namespace {

using Runs = std::vector<std::pair<std::string, char>>;

// The runs of a text, each with l or r.
Runs runsOf(std::string_view text, Direction base) {
  Runs runs;
  while (!text.empty()) {
    Direction direction = Direction::Neutral;
    const std::size_t length = runLength(text, base, direction);
    runs.emplace_back(text.substr(0, length), direction == Direction::RightToLeft ? 'r' : 'l');
    text.remove_prefix(length);
  }
  return runs;
}

constexpr Direction kLeft = Direction::LeftToRight;
constexpr Direction kRight = Direction::RightToLeft;

}  // namespace

TEST(Directions, AreThoseOfTheScript) {
  for (const char32_t c : {U'A', U'z', U'\u00E9', U'\u03A9', U'\u0416', U'\u4E2D', U'\u0905', U'\u200E'}) {
    EXPECT_EQ(directionOf(c), kLeft) << static_cast<std::uint32_t>(c);
  }
  for (const char32_t c :
       {U'\u05D0', U'\u0628', U'\u0710', U'\u0788', U'\uFB1D', U'\uFEFC', U'\u200F', U'\U0001E900'}) {
    EXPECT_EQ(directionOf(c), kRight) << static_cast<std::uint32_t>(c);
  }
  for (const char32_t c : {U'0', U' ', U'-', U'\u00A0', U'\u0660', U'\u060C', U'\u2014', U'\u20AC', U'\U0001F600'}) {
    EXPECT_EQ(directionOf(c), Direction::Neutral) << static_cast<std::uint32_t>(c);
  }
}

TEST(Directions, OfTextsAreThatOfTheFirstLetter) {
  EXPECT_EQ(firstDirection(""), Direction::Neutral);
  EXPECT_EQ(firstDirection("2024 - (!)"), Direction::Neutral);
  EXPECT_EQ(firstDirection("1. a \u05D0"), kLeft);
  EXPECT_EQ(firstDirection("(1) \u05D0 a"), kRight);
}

TEST(Directions, AreFoundAnywhereInAText) {
  EXPECT_FALSE(hasRightToLeft(""));
  EXPECT_FALSE(hasRightToLeft("plain, \u00E9, \u4E2D, \U0001F600"));
  EXPECT_TRUE(hasRightToLeft("\u4E2D and \u0628"));
  EXPECT_TRUE(hasRightToLeft("\U0001E900"));
}

TEST(Directions, DivideATextIntoRuns) {
  EXPECT_EQ(runsOf("a, \u05D0 \u05D1! b", kLeft), (Runs{{"a, ", 'l'}, {"\u05D0 \u05D1", 'r'}, {"! b", 'l'}}));
  EXPECT_EQ(runsOf("\u05D0 (a b) \u05D1.", kRight), (Runs{{"\u05D0 (", 'r'}, {"a b", 'l'}, {") \u05D1.", 'r'}}));
  EXPECT_EQ(runsOf("\u05D0 1.", kLeft), (Runs{{"\u05D0", 'r'}, {" 1.", 'l'}}));
  EXPECT_EQ(runsOf("1. a", kRight), (Runs{{"1. ", 'r'}, {"a", 'l'}}));
  EXPECT_EQ(runsOf("1. \u05D0", kRight), (Runs{{"1. \u05D0", 'r'}}));
  EXPECT_EQ(runsOf("a.", kRight), (Runs{{"a", 'l'}, {".", 'r'}}));
  EXPECT_EQ(runsOf("12", kRight), (Runs{{"12", 'r'}}));
  EXPECT_EQ(runsOf("12", kLeft), (Runs{{"12", 'l'}}));
}
