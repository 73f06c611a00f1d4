#include "formats/pdf/fonts/fonts.h"

#include <gtest/gtest.h>

namespace {

using namespace scrivalen::pdf;
using PDFStuffer::CPDFFile;
using PDFStuffer::Form;

// Fonts of a file that is never written.
struct Fonts : testing::Test {
  CPDFFile file{nullptr, Form::Classic};
  FontTable table;

  int boldIdOf(std::size_t index) const { return table.entries()[table.entries().size() / 2 + index].id; }
};

TEST_F(Fonts, GiveTheirVariantsTheNextNumbersThatNoFontHas) {
  for (const int id : {5, 6, 9}) {
    table.add(file, id, PDF_TIMES_ROMAN);
  }
  table.addBoldVariants(file);
  // Behind three fonts 4 is free; behind four 7 is, behind 5 and 6; behind five it is 8.
  EXPECT_EQ(boldIdOf(0), 4);
  EXPECT_EQ(boldIdOf(1), 7);
  EXPECT_EQ(boldIdOf(2), 8);
  EXPECT_EQ(table.nextUnusedId(), 10);
}

// Each number behind that of the fonts is taken, so that every search has a long way to go.
TEST_F(Fonts, AreTwentyThousandInAMoment) {
  constexpr int kCount = 20000;
  for (int i = 1; i <= kCount; ++i) {
    table.add(file, kCount + i, static_cast<PDF_STANDARD_FONT_FACE>(i % 19));
  }
  EXPECT_EQ(table.nextUnusedId(), 2 * kCount + 1);
  table.addBoldVariants(file);
  ASSERT_EQ(table.entries().size(), 2u * kCount);
  EXPECT_EQ(boldIdOf(0), 2 * kCount + 1);
  EXPECT_EQ(boldIdOf(kCount - 1), 3 * kCount);
  EXPECT_EQ(table.variantOf(2 * kCount, true, false), 2 * kCount + kCount % 19);
}

TEST_F(Fonts, CountTheFirstOfTwoWithOneNumber) {
  table.add(file, 1, PDF_HELVETICA);
  table.add(file, 1, PDF_COURIER);
  table.addBoldVariants(file);
  EXPECT_EQ(table.averageWidth(1, 9, false), 4.0f);
  EXPECT_EQ(table.variantOf(1, true, false), 3);
}

TEST_F(Fonts, KnowWhatIsDrawnInSigns) {
  EXPECT_FALSE(table.isSymbolic(1, false));
  table.add(file, 1, PDF_ZAPFDINGBATS);
  table.add(file, 2, PDF_SYMBOL);
  table.add(file, 3, PDF_TIMES_ROMAN);
  EXPECT_TRUE(table.isSymbolic(1, false));
  EXPECT_FALSE(table.isSymbolic(1, true));
  EXPECT_TRUE(table.isSymbolic(2, true));
  EXPECT_FALSE(table.isSymbolic(3, false));
  EXPECT_TRUE(table.isSymbolic(77, false));
}

}  // namespace
