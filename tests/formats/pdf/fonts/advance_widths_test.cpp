#include "formats/pdf/fonts/advance_widths.h"

#include <gtest/gtest.h>

#include <numeric>

namespace {

using namespace scrivalen::pdf;

int widthOf(PDF_STANDARD_FONT_FACE face, unsigned char code) { return advanceWidths(face)[code - kFirstCode]; }

struct Metrics {
  PDF_STANDARD_FONT_FACE face;
  int w, i, x, bar, euro, adieresis;
  int sum;  // of all codes
};

// Taken from the built-in metrics of another PDF reader.
constexpr Metrics kMetrics[] = {{PDF_TIMES_ROMAN, 944, 278, 500, 200, 500, 722, 115160},
                                {PDF_TIMES_BOLD, 1000, 278, 500, 220, 500, 722, 119951},
                                {PDF_TIMES_ITALIC, 833, 278, 444, 275, 500, 611, 114393},
                                {PDF_TIMES_BOLDITALIC, 889, 278, 500, 220, 500, 667, 116587},
                                {PDF_HELVETICA, 944, 222, 500, 260, 556, 667, 120823},
                                {PDF_HELVETICA_BOLD, 944, 278, 556, 280, 556, 722, 125109},
                                {PDF_COURIER, 600, 600, 600, 600, 600, 600, 134400},
                                {PDF_SYMBOL, 768, 329, 493, 200, 0, 768, 110936},
                                {PDF_ZAPFDINGBATS, 776, 713, 138, 392, 390, 788, 150697}};

TEST(AdvanceWidthsTest, MatchTheStandardFonts) {
  for (const Metrics& font : kMetrics) {
    SCOPED_TRACE(font.face);
    EXPECT_EQ(widthOf(font.face, 'W'), font.w);
    EXPECT_EQ(widthOf(font.face, 'i'), font.i);
    EXPECT_EQ(widthOf(font.face, 'x'), font.x);
    EXPECT_EQ(widthOf(font.face, '|'), font.bar);
    EXPECT_EQ(widthOf(font.face, 0x80), font.euro);
    EXPECT_EQ(widthOf(font.face, 0xC4), font.adieresis);
    const AdvanceWidths& widths = advanceWidths(font.face);
    EXPECT_EQ(std::accumulate(widths.begin(), widths.end(), 0), font.sum);
  }
}

TEST(AdvanceWidthsTest, MatchTheFontThatReplacesAFace) {
  const auto hasTheWidthsOf = [](PDF_STANDARD_FONT_FACE face, PDF_STANDARD_FONT_FACE standard) {
    return advanceWidths(face) == advanceWidths(standard);
  };
  EXPECT_TRUE(hasTheWidthsOf(PDF_HELVETICA_OBLIQUE, PDF_HELVETICA));
  EXPECT_TRUE(hasTheWidthsOf(PDF_HELVETICA_BOLDOBLIQUE, PDF_HELVETICA_BOLD));
  EXPECT_TRUE(hasTheWidthsOf(PDF_ARIAL, PDF_HELVETICA));
  EXPECT_TRUE(hasTheWidthsOf(PDF_HELVETICA_ITALIC, PDF_HELVETICA));
  EXPECT_TRUE(hasTheWidthsOf(PDF_HELVETICA_BOLDITALIC, PDF_HELVETICA_BOLD));
  for (const auto face :
       {PDF_COURIER_BOLD, PDF_COURIER_OBLIQUE, PDF_COURIER_BOLDOBLIQUE, PDF_COURIER_ITALIC, PDF_COURIER_BOLDITALIC}) {
    EXPECT_TRUE(hasTheWidthsOf(face, PDF_COURIER)) << face;
  }
  EXPECT_TRUE(hasTheWidthsOf(static_cast<PDF_STANDARD_FONT_FACE>(19), PDF_HELVETICA));
  EXPECT_TRUE(hasTheWidthsOf(static_cast<PDF_STANDARD_FONT_FACE>(-1), PDF_HELVETICA));
}

}  // namespace
