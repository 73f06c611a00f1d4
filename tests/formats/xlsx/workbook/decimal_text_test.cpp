#include "formats/xlsx/workbook/decimal_text.h"

#include "support/decimal_comma.h"

#include <gtest/gtest.h>

using namespace scrivalen::xlsx;

TEST(DecimalText, HasAllItsDecimals) {
  EXPECT_EQ(decimalText(0, 2), "0.00");
  EXPECT_EQ(decimalText(0.05, 2), "0.05");
  EXPECT_EQ(decimalText(0.714, 2), "0.71");
  EXPECT_EQ(decimalText(21 + 5.0 / 7, 2), "21.71");
  EXPECT_EQ(decimalText(254, 4), "254.0000");
}

TEST(DecimalText, IsRoundedHalfUp) {
  EXPECT_EQ(decimalText(20.625, 2), "20.63");
  EXPECT_EQ(decimalText(0.999, 2), "1.00");
  EXPECT_EQ(decimalText(9.99996, 4), "10.0000");
}

TEST(DecimalText, EndsWithoutZerosIfShort) {
  EXPECT_EQ(shortDecimalText(0, 4), "0");
  EXPECT_EQ(shortDecimalText(10, 2), "10");
  EXPECT_EQ(shortDecimalText(9.5, 2), "9.5");
  EXPECT_EQ(shortDecimalText(0.7875, 4), "0.7875");
}

TEST(DecimalText, HasAPointUnderADecimalComma) {
  const scrivalen::test::DecimalComma comma;
  EXPECT_EQ(decimalText(1.5, 2), "1.50");
}
