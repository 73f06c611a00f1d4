#include "document/tables/number_text.h"

#include <gtest/gtest.h>

#include <initializer_list>

using scrivalen::document::NumberText;
using scrivalen::document::numberTextOf;

namespace {

void expect(NumberText kind, std::initializer_list<const char*> texts) {
  for (const char* const text : texts) {
    EXPECT_EQ(numberTextOf(text), kind) << text;
  }
}

}  // namespace

TEST(NumberTexts, HaveSignsFractionsAndExponents) {
  expect(NumberText::Number,
         {"0", "-0", "7", "-12", "+7", "0.5", "0,5", ".5", "-.25", "1234,50", "\u22123.5", "\u20135", "- 5", " 12 ",
          "1e5", "1.5E-10", "-2.5e+300", "123456789012345678901234567890.1"});
}

TEST(NumberTexts, HaveGroupsOfThreeDigitsOrThoseOfIndia) {
  expect(NumberText::Number, {"1,234", "1,001.50", "1.234,50", "1 234,50", "1\u00A0234", "12\u202F345,6", "1'234.50",
                              "1\u2019234", "1.234.567", "12,34,567.00", "-1,234,567", "612 345 678.00", "12 345 678"});
}

TEST(NumberTexts, HavePercentSignsAndCurrencies) {
  expect(NumberText::Number,
         {"5%", "-3.5 %", "12,5\u00A0%", "3\u2030", "$1,234", "-$5", "$-5", "$ 5", "\u20AC5.00", "5 \u20AC",
          "1.234,50 \u20AC", "\u00A35", "\u00A5100", "\u20B912,34,567", "US$5", "R$ 1.234,50", "+3.5%"});
}

TEST(NumberTexts, AreNegativeInBrackets) {
  expect(NumberText::Number, {"(12.00)", "($1,234.50)", "(5%)", "(1,234)"});
  expect(NumberText::Other, {"(12.00", "12.00)", "()", "(555) 1234"});
}

TEST(NumberTexts, MayBeLabelsAddressesAndTelephoneNumbers) {
  expect(NumberText::Perhaps, {"(3)", "(12)", "612 345 678", "110 001", "192.168.100.101"});
}

TEST(NumberTexts, AreNoTelephoneNumbersOrIds) {
  expect(NumberText::Other, {"555-1234", "(555) 123-4567", "+49 301 234 567", "+4915123456789", "030 123 456", "007",
                             "00", "01.5", "-01", "4111 1111 1111 1111", "123 45", "978-3-16", "#5", "A12", "12b"});
}

TEST(NumberTexts, AreNoDatesTimesVersionsOrLists) {
  expect(NumberText::Other, {"2024-01-31", "31.12.2024", "12/31/2024", "12:30", "1.2.3", "10.0.0.1", "1,2,3", "10, 20",
                             "5-10", "5\u201310", "1/2", "1.", "5.", "1,", "1,234.", "1.234.56", "0 123", "0,123,456"});
}

TEST(NumberTexts, AreNoWordsOrUnitsOfLetters) {
  expect(NumberText::Other,
         {"",    " ",   "+",   "$",   "%",    "e5",     "1e",     "1e5000", "five",  "5 kg",     "EUR 5", "--1",
          "-+1", "5%%", "$5%", "0x1", "1\n2", "\u0661", "\u20AC", "AB5",    "USD$5", "\xE2\x82", "- -"});
}

TEST(NumberTexts, MayBeMissing) {
  expect(NumberText::Placeholder, {"-", "\u2013", "\u2014", "n/a", "N/A", "NaN", "NULL", "?", "\u2026"});
  expect(NumberText::Other, {"nullify", "none of them", "n/a x"});
}
