#include "formats/pdf/typeset/text/glyph_array.h"

#include <gtest/gtest.h>

namespace scrivalen::typeset {
namespace {

template <typename Write>
std::string written(Write write) {
  std::string out;
  GlyphArray array(out);
  write(array);
  array.end();
  return out;
}

TEST(GlyphArray, PutsGlyphsTogetherIntoAString) {
  EXPECT_EQ(written([](GlyphArray& array) {
              array.add("ab");
              array.add("c");
            }),
            "(abc)");
}

TEST(GlyphArray, EscapesWhatEndsAString) {
  EXPECT_EQ(written([](GlyphArray& array) { array.add("(\\)"); }), "(\\(\\\\\\))");
}

TEST(GlyphArray, MovesToTheRightByNegativeNumbers) {
  EXPECT_EQ(written([](GlyphArray& array) {
              array.add("A");
              array.move(-74);
              array.add("V");
              array.move(0);
              array.add("A");
            }),
            "(A)74 (VA)");
}

TEST(GlyphArray, EndsBeforeOperatorsAndBeginsAgain) {
  EXPECT_EQ(written([](GlyphArray& array) {
              array.add("a");
              array.operators(" 2 Ts");
              array.add("b");
            }),
            "(a)]TJ 2 Ts[(b)");
}

}  // namespace
}  // namespace scrivalen::typeset
