#include "document/model/event_log.h"
#include "made_text.h"

#include <gtest/gtest.h>

#include <string>

using scrivalen::document::Align;
using scrivalen::document::DocumentWriter;
using scrivalen::document::EventKind;
using scrivalen::test::bytes;
using scrivalen::test::MadeTable;
using scrivalen::test::putLink;
using scrivalen::test::putParagraph;
using scrivalen::test::writtenTable;
using scrivalen::test::writtenText;

TEST(TextTable, AlignsItsColumns) {
  EXPECT_EQ(writtenTable(MadeTable({{"Name", "City"}, {"Ada", "London"}, {"Konrad", "Berlin"}}, 1)),
            "Name    City\n"
            "------  ------\n"
            "Ada     London\n"
            "Konrad  Berlin\n");
}

TEST(TextTable, WritesEachRowOnOneLineWithASeparator) {
  MadeTable table({{"Item", "Price", "Note"}, {"Tea", "4", "loose\nleaf"}, {"", "", ""}, {"all", "", "x"}}, 1);
  table.span(3, 0, 2);
  EXPECT_EQ(writtenTable(table, {{"separator", "\t"}}),
            "Item\tPrice\tNote\n"
            "Tea\t4\tloose leaf\n"
            "\t\t\n"
            "all\t\tx\n");
}

TEST(TextTable, AlignsTextInItsColumns) {
  MadeTable table({{"left", "center", "right"}, {"a", "b", "c"}, {"12", "12", "12"}}, 0);
  table.column(1).align = Align::Center;
  table.column(2).align = Align::Right;
  table.cell(2, 0).align = Align::Right;
  EXPECT_EQ(writtenTable(table),
            "left  center  right\n"
            "a       b         c\n"
            "  12    12       12\n");
}

TEST(TextTable, CountsWideCharactersAsTwoColumns) {
  EXPECT_EQ(writtenTable(MadeTable({{bytes(u8"漢字"), "x"}, {"abcd", "x"}, {bytes(u8"Größe"), "x"}}, 0)),
            bytes(u8"漢字   x\n"
                  u8"abcd   x\n"
                  u8"Größe  x\n"));
}

TEST(TextTable, HasNoBlanksAtTheEndOfALine) {
  EXPECT_EQ(writtenTable(MadeTable({{"a", "b", "c"}, {"a", "", ""}, {"", "", ""}, {"a ", "b  ", "c "}}, 0)),
            "a  b  c\n"
            "a\n"
            "\n"
            "a  b  c\n");
}

TEST(TextTable, WrapsItsCellsWhereItIsTooWide) {
  EXPECT_EQ(writtenTable(MadeTable({{"Key", "Meaning"}, {"a", "the first letter of all"}, {"b", "the second"}}, 1),
                         {{"width", "20"}}),
            "Key  Meaning\n"
            "---  ---------------\n"
            "a    the first\n"
            "     letter of all\n"
            "\n"
            "b    the second\n");
}

TEST(TextTable, WrapsAllCellsOfARowTogether) {
  MadeTable table({{"one two three four", "five six seven eight nine"}}, 0);
  table.column(1).align = Align::Right;
  EXPECT_EQ(writtenTable(table, {{"width", "24"}}),
            "one two         five six\n"
            "three four   seven eight\n"
            "                    nine\n");
}

TEST(TextTable, BreaksLinesAtLineFeeds) {
  EXPECT_EQ(writtenTable(MadeTable({{"1", "one\ntwo", "x"}, {"2", "three", "y\n"}}, 0)),
            "1  one    x\n"
            "   two\n"
            "\n"
            "2  three  y\n");
}

// The words need 45 columns; a quarter of the line more is enough for the first column's text.
TEST(TextTable, GrowsWhereItsLongestWordsDoNotFit) {
  EXPECT_EQ(
      writtenTable(MadeTable({{"a few words", "0123456789012345678901234567890123456789"}}, 0), {{"width", "40"}}),
      "a few words  0123456789012345678901234567890123456789\n");
}

TEST(TextTable, MovesWhatComesAfterAWordThatTheSampleDidNotHave) {
  MadeTable table({{"1", "2", "3"}, {"a", "much-longer", "c"}, {"1", "2", "3"}}, 0);
  table.column(1).longestWord = 4;
  table.column(1).longestLine = 4;
  EXPECT_EQ(writtenTable(table),
            "1  2     3\n"
            "a  much-longer  c\n"
            "1  2     3\n");
}

// A wide number takes the blanks of a number beside it before it pushes it to the right.
TEST(TextTable, FindsBackToItsColumnsAfterALongWord) {
  MadeTable table({{"1234", "1000", "x"}, {"12345", "12", "x"}, {"1234567890", "12", "x"}}, 0);
  for (std::size_t column = 0; column < 2; ++column) {
    table.column(column).align = Align::Right;
    table.column(column).longestWord = 4;
    table.column(column).longestLine = 4;
  }
  EXPECT_EQ(writtenTable(table),
            "1234  1000  x\n"
            "12345   12  x\n"
            "1234567890  12  x\n");
}

TEST(TextTable, WritesACellOverSeveralColumns) {
  MadeTable table({{"all of them", "", ""}, {"aaaa", "bbbb", "cccc"}, {"x", "right", ""}}, 0);
  table.column(0).longestWord = 4;
  table.column(0).longestLine = 4;
  table.span(0, 0, 3);
  table.span(2, 1, 2);
  table.cell(2, 1).align = Align::Right;
  table.column(1).longestWord = 4;
  table.column(1).longestLine = 4;
  EXPECT_EQ(writtenTable(table),
            "all of them\n"
            "aaaa  bbbb  cccc\n"
            "x          right\n");
}

TEST(TextTable, HasEqualColumnsOnRequest) {
  EXPECT_EQ(writtenTable(MadeTable({{"a", "b"}, {"c", "d"}}, 1), {{"width", "22"}, {"widths", "equal"}}),
            "a           b\n"
            "----------  ----------\n"
            "c           d\n");
}

TEST(TextTable, DividesTheLineByTheSharesOfItsColumns) {
  MadeTable table({{"a", "b"}}, 1);
  table.column(0).width = 1;
  table.column(1).width = 3;
  EXPECT_EQ(writtenTable(table, {{"width", "22"}}),
            "a      b\n"
            "-----  ---------------\n");
}

TEST(TextTable, MayHaveSeveralHeaderRows) {
  EXPECT_EQ(writtenTable(MadeTable({{"2026", ""}, {"Q1", "Q2"}, {"1", "2"}}, 2)),
            "2026\n"
            "Q1    Q2\n"
            "----  --\n"
            "1     2\n");
}

TEST(TextTable, HasABlankLineOnEachSide) {
  const std::string text = writtenText([](DocumentWriter& writer) {
    putParagraph(writer, "before");
    MadeTable({{"a"}}, 0).write(writer);
    MadeTable({{"b"}}, 0).write(writer);
    putParagraph(writer, "after");
  });
  EXPECT_EQ(text, "before\n\na\n\nb\n\nafter\n");
}

TEST(TextTable, IsIndentedInAnItemAndAQuote) {
  const std::string text = writtenText(
      [](DocumentWriter& writer) {
        scrivalen::test::put(writer, EventKind::BeginQuote);
        scrivalen::test::put(writer, EventKind::BeginList);
        scrivalen::test::put(writer, EventKind::BeginItem);
        MadeTable({{"a", "b"}, {"one two three", "d"}, {"", ""}}, 1).write(writer);
      },
      {{"width", "24"}});
  EXPECT_EQ(text,
            "> - a              b\n"
            ">   -------------  -\n"
            ">   one two three  d\n"
            ">\n");
}

TEST(TextTable, ListsTheAddressesOfItsLinksAfterIt) {
  scrivalen::document::EventLog log;
  putLink(log, "the site", "https://example.com/");
  putLink(log, "above", "#above");
  putLink(log, "the site", "https://example.com/");
  MadeTable table({{"the site, above, the site", "b"}}, 0);
  table.cell(0, 0).content = &log;
  table.cell(0, 0).contentEnd = log.size();
  EXPECT_EQ(writtenTable(table),
            "the site, above, the site  b\n"
            "\n"
            "the site (https://example.com/)\n");
}

// Rows of more than 8,192 columns are not written in place.
TEST(TextTable, AlignsColumnsOfAnyWidth) {
  const std::string wide(9000, 'w');
  EXPECT_EQ(writtenTable(MadeTable({{wide, "a"}, {"b", "c"}}, 0)), wide + "  a\nb" + std::string(9001, ' ') + "c\n");
}

TEST(TextTable, KeepsTextsOfEveryLengthWhole) {
  for (std::size_t size = 1; size <= 40; ++size) {
    std::string text;
    for (std::size_t i = 0; i < size; ++i) {
      text += static_cast<char>('!' + i);
    }
    EXPECT_EQ(writtenTable(MadeTable({{text, "x"}}, 0)), text + "  x\n");
    text += "\xC3\xA9";
    EXPECT_EQ(writtenTable(MadeTable({{text, "x"}}, 0)), text + "  x\n");
  }
}
