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
  EXPECT_EQ(csvDelimiterOf("Report, 2024\n\nName;Wert\nA;1\nB;2\nC;3"), ';');
  EXPECT_EQ(csvDelimiterOf("year,month,tags\n2024,1,3|4\n2024,2,5|6\n"), ',');
}

TEST(CsvDelimiter, IsNoCommaThatIsAlsoInTheHeaderWhereAnotherOneFits) {
  EXPECT_EQ(csvDelimiterOf("Datum;Betrag, netto\n2024;1,5\n2025;2,5"), ';');
  EXPECT_EQ(csvDelimiterOf("Datum;Kurs, EUR;Menge\n01.02.2024;1,5;2\n"), ';');
}

TEST(CsvDelimiter, IsRatherTheOneThatNoBlankFollows) {
  EXPECT_EQ(csvDelimiterOf("Name;Ort, Land\nM\xC3\xBCller;Berlin, DE\nX;Y, Z"), ';');
  EXPECT_EQ(csvDelimiterOf("name,place; country\nA,B; C\n"), ',');
  EXPECT_EQ(csvDelimiterOf("a, b, c\n1, 2, 3\n"), ',');
}

TEST(CsvDelimiter, IsNotHiddenByAQuoteInsideACell) {
  EXPECT_EQ(csvDelimiterOf("A 3\";B;C\n1;2;3\n4;5;6"), ';');
  EXPECT_EQ(csvDelimiterOf("a; \"1,2\"\"\n3,4\"\nb;\"5,6\"\n"), ';');
}

TEST(CsvDelimiter, IsReadFromFiftyRowsAndNoMore) {
  std::string rows;
  for (int row = 0; row < 50; ++row) {
    rows += "a,b\r\n";
  }
  std::string further;
  for (int row = 0; row < 60; ++row) {
    further += "a;b\r\n";
  }
  EXPECT_EQ(csvDelimiterOf(rows + further), ',');
  EXPECT_EQ(csvDelimiterOf(rows.substr(5) + further), ',');
  EXPECT_EQ(csvDelimiterOf(rows.substr(rows.size() / 2) + further), ',');
  EXPECT_EQ(csvDelimiterOf(rows.substr(rows.size() / 2 + 5) + further), ';');
}

TEST(CsvDelimiter, IsReadFromSixtyFourKibibytesAndNoMore) {
  const std::string row = std::string(40000, 'a') + ";b\n";
  EXPECT_EQ(csvDelimiterOf(row + std::string(20000, 'a') + ",b\nc,d\ne,f\n"), ',');
  EXPECT_EQ(csvDelimiterOf(row + row + "a,b\nc,d\ne,f\n"), ';');
}

}  // namespace
}  // namespace scrivalen::command
