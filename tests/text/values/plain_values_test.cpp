#include "text/values/plain_values.h"

#include <gtest/gtest.h>

namespace scrivalen {
namespace {

TEST(PlainNumber, IsReadWithItsDecimals) {
  EXPECT_EQ(plainNumber("0"), (DecimalNumber{0, 0}));
  EXPECT_EQ(plainNumber("-7"), (DecimalNumber{-7, 0}));
  EXPECT_EQ(plainNumber("12.50"), (DecimalNumber{1250, 2}));
  EXPECT_EQ(plainNumber("0.000"), (DecimalNumber{0, 3}));
  EXPECT_EQ(plainNumber("-0.000000001"), (DecimalNumber{-1, 9}));
}

TEST(PlainNumber, HasUpTo15DigitsThatCount) {
  EXPECT_EQ(plainNumber("999999999999999"), (DecimalNumber{999999999999999, 0}));
  EXPECT_EQ(plainNumber("-999999.999999999"), (DecimalNumber{-999999999999999, 9}));
  for (const char* const text : {"1000000000000000", "100000000000000.0", "1234567.123456789", "999999999999999.9"}) {
    EXPECT_FALSE(plainNumber(text)) << text;
  }
}

TEST(PlainNumber, IsNoOtherText) {
  for (const char* const text :
       {"",         "-",    ".5", "5.", "007", "00",    "-0",           "-0.00", "+7",       "1e5",  "12%",
        "1,234.50", "=1+1", " 7", "7 ", "--1", "1.2.3", "0.0000000001", "1.-2",  "\xD9\xA1", "0x10", "inf"}) {
    EXPECT_FALSE(plainNumber(text)) << text;
  }
}

TEST(PlainDate, IsADayThatExistsFromMarch1900On) {
  EXPECT_EQ(plainDate("1970-01-02"), 1);
  EXPECT_EQ(plainDate("1900-03-01"), -25508);
  EXPECT_EQ(plainDate("2024-02-29"), 19782);
  EXPECT_EQ(plainDate("9999-12-31"), 2932896);
  for (const char* const text : {"1900-02-28", "0000-01-01", "2023-02-29", "2024-2-29", "2024-13-01", "2024-01-00",
                                 "20240101", "2024/01/01", "2024-01-01 ", "2024-01-01T00:00:00", "+024-01-01"}) {
    EXPECT_FALSE(plainDate(text)) << text;
  }
}

}  // namespace
}  // namespace scrivalen
