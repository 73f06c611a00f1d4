#include "formats/pdf/typeset/text/bidi.h"

#include "text/direction.h"
#include "text/utf.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace scrivalen::typeset {
namespace {

using Levels = std::vector<std::uint8_t>;
using Order = std::vector<std::size_t>;

Levels levelsIn(std::string_view text, bool isRightToLeft) {
  Levels levels;
  levelsOf(text, isRightToLeft, levels);
  return levels;
}

Order ordered(const Levels& levels) {
  Order order;
  orderOf(levels, order);
  return order;
}

TEST(Bidi, GivesEachByteTheLevelOfItsCharacter) {
  EXPECT_EQ(levelsIn("a א", false), (Levels{0, 0, 1, 1}));
  EXPECT_EQ(levelsIn("א 1", true), (Levels{1, 1, 1, 2}));
  EXPECT_EQ(levelsIn("", true), Levels());
}

TEST(Bidi, PutsPartsOfALineIntoTheOrderFromLeftToRight) {
  EXPECT_EQ(ordered({0, 0, 0}), (Order{0, 1, 2}));
  EXPECT_EQ(ordered({0, 1, 1, 0}), (Order{0, 2, 1, 3}));
  EXPECT_EQ(ordered({1, 2, 2, 1}), (Order{3, 1, 2, 0}));
  EXPECT_EQ(ordered({}), Order());
}

struct Line {
  std::string text;
  int direction = 0;
  int paragraphLevel = 0;
  std::vector<int> levels;        // of each character; -1: it is removed
  std::vector<std::size_t> ends;  // of each character, in bytes
  Order order;                    // of the characters that are not removed
};

std::string fieldOf(std::istream& line) {
  std::string field;
  std::getline(line, field, ';');
  return field;
}

Line lineOf(const std::string& content) {
  std::istringstream fields(content);
  Line line;
  std::istringstream characters(fieldOf(fields));
  for (std::uint32_t c = 0; characters >> std::hex >> c;) {
    char utf8[4];
    line.text.append(utf8, putUtf8(c, utf8));
    line.ends.push_back(line.text.size());
  }
  line.direction = std::stoi(fieldOf(fields));
  line.paragraphLevel = std::stoi(fieldOf(fields));
  std::istringstream levels(fieldOf(fields));
  for (std::string level; levels >> level;) {
    line.levels.push_back(level == "x" ? -1 : std::stoi(level));
  }
  std::istringstream order(fieldOf(fields));
  for (std::size_t place = 0; order >> place;) {
    line.order.push_back(place);
  }
  return line;
}

// Whether the levels and the order are those of the test.
bool isRight(const Line& line) {
  const bool isRightToLeft =
      line.direction == 2 ? firstDirection(line.text) == Direction::RightToLeft : line.direction == 1;
  const Levels levels = levelsIn(line.text, isRightToLeft);
  Levels kept;
  Order places;
  for (std::size_t i = 0; i < line.levels.size(); ++i) {
    if (line.levels[i] >= 0) {
      kept.push_back(levels[line.ends[i] - 1]);
      places.push_back(i);
      if (kept.back() != line.levels[i]) {
        return false;
      }
    }
  }
  Order order = ordered(kept);
  for (std::size_t& place : order) {
    place = places[place];
  }
  return isRightToLeft == (line.paragraphLevel == 1) && order == line.order;
}

// BidiCharacterTest.txt of Unicode 15.0. FriBidi 1.0.8 knows Unicode 13.0, and differs in none of its lines.
TEST(Bidi, OrdersTheTestsOfUnicode) {
  std::ifstream file(SCRIVALEN_BIDI_TESTS);
  ASSERT_TRUE(file) << SCRIVALEN_BIDI_TESTS;
  std::size_t count = 0;
  std::size_t number = 0;
  std::vector<std::size_t> wrong;
  for (std::string content; std::getline(file, content);) {
    ++number;
    if (content.empty() || content.front() == '#') {
      continue;
    }
    ++count;
    if (!isRight(lineOf(content))) {
      wrong.push_back(number);
    }
  }
  EXPECT_GT(count, 90000u);
  EXPECT_EQ(wrong, std::vector<std::size_t>());
}

}  // namespace
}  // namespace scrivalen::typeset
