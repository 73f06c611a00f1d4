#include "formats/pdf/fonts/fonts.h"

#include <gtest/gtest.h>

namespace {

using namespace scrivalen::pdf;
using PDFStuffer::CPDFFile;
using PDFStuffer::Form;

// The fonts of a file that is never written.
struct Fonts : testing::Test {
  CPDFFile file{nullptr, Form::Classic};
  FontTable table;

  int boldIdOf(std::size_t index) const { return table.entries()[table.entries().size() / 2 + index].id; }
};

TEST_F(Fonts, GiveTheirVariantsTheNextUnusedNumbers) {
  for (const int id : {5, 6, 9}) {
    table.add(file, id, PDF_TIMES_ROMAN);
  }
  table.addBoldVariants(file);
  // With three fonts the next free number is 4; with four it is 7, since 5 and 6 are taken; with five it is 8.
  EXPECT_EQ(boldIdOf(0), 4);
  EXPECT_EQ(boldIdOf(1), 7);
  EXPECT_EQ(boldIdOf(2), 8);
  EXPECT_EQ(table.nextUnusedId(), 10);
}

// The numbers after that of the fonts are all taken, so that every search is long.
TEST_F(Fonts, FindUnusedNumbersForTwentyThousandQuickly) {
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

TEST_F(Fonts, UseTheFirstOfTwoWithTheSameNumber) {
  table.add(file, 1, PDF_HELVETICA);
  table.add(file, 1, PDF_COURIER);
  table.addBoldVariants(file);
  EXPECT_EQ(table.averageWidth(1, 9, false), 4.0f);
  EXPECT_EQ(table.variantOf(1, true, false), 3);
}

TEST_F(Fonts, KnowWhichOfThemAreSymbolic) {
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
