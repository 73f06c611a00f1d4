#include "readers/csv/csv_delimiter.h"

#include <gtest/gtest.h>

namespace scrivalen::command {
namespace {

TEST(CsvDelimiter, IsWhatSeparatesTheCellsOfTheFirstRows) {
  EXPECT_EQ(csvDelimiterOf("a,b\n1,2\n"), ',');
  EXPECT_EQ(csvDelimiterOf("a;b\n1;2\n"), ';');
  EXPECT_EQ(csvDelimiterOf("a\tb\r\n1\t2\r\n"), '\t');
  EXPECT_EQ(csvDelimiterOf("a|b\r1|2\r"), '|');
}

TEST(CsvDelimiter, IsACommaWhereNothingSeparates) {
  EXPECT_EQ(csvDelimiterOf(""), ',');
  EXPECT_EQ(csvDelimiterOf("one\ntwo\n"), ',');
}

TEST(CsvDelimiter, IsNoCommaOfANumberWhereAnotherOneFits) {
  EXPECT_EQ(csvDelimiterOf("M\xC3\xBCller;1.234,56"), ';');
  EXPECT_EQ(csvDelimiterOf("a;b;c\n1;2,5;x\n2;3,5;y\n"), ';');
  EXPECT_EQ(csvDelimiterOf("1,2\n3,4\n"), ',');
}

TEST(CsvDelimiter, IsNotInAQuotedCell) {
  EXPECT_EQ(csvDelimiterOf("\"a,b,c\";d\n\"1,2\n3,4\";5\n"), ';');
  EXPECT_EQ(csvDelimiterOf("\"say \"\"a;b\"\"\",c\n"), ',');
}

TEST(CsvDelimiter, IsTheOneThatMostRowsHaveAlike) {
  EXPECT_EQ(csvDelimiterOf("name, first;city\nA, B;X\nC;Y\nD, E, F;Z\n"), ';');
  EXPECT_EQ(csvDelimiterOf("a,b;c,d\n1,2;3,4\n1,2,3\n1,2,3\n"), ',');
}

}  // namespace
}  // namespace scrivalen::command
