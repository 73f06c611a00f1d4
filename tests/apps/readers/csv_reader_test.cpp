#include "readers/csv/csv_reader.h"

#include "command_support.h"
#include "errors.h"
#include "recorded_parts.h"
#include "texts.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace scrivalen::command::test {
namespace {

Lines partsOf(std::string text, char separator = ',', std::size_t pieces = 1 << 20) {
  TestEnvironment environment;
  environment.input = std::move(text);
  const auto whole = environment.get().readInput;
  environment.get().readInput = [=](void* data, std::size_t size) { return whole(data, std::min(pieces, size)); };
  TextInput input(environment.get(), "-");
  RecordedParts parts;
  readCsv(input, separator, parts);
  return parts.lines();
}

// One line for each row, its cells between bars, their line ends as slashes.
Lines rowsOf(const std::string& text, char separator = ',', std::size_t pieces = 1 << 20) {
  Lines rows;
  for (const std::string& part : partsOf(text, separator, pieces)) {
    if (part.starts_with("BeginRow")) {
      rows.push_back("|");
    } else if (part.starts_with("Cell ")) {
      std::string cell = part.substr(6, part.size() - 7) + "|";
      for (const char* const lineEnd : {"\r\\n", "\\n", "\r"}) {
        cell = replacedAll<char>(cell, lineEnd, "/");
      }
      rows.back() += cell;
    }
  }
  return rows;
}

std::string errorOf(const std::string& text, std::size_t pieces = 1 << 20) {
  try {
    partsOf(text, ',', pieces);
    return "";
  } catch (const InputError& error) {
    return error.what();
  }
}

TEST(CsvReader, TreatsTheFirstRowAsTheHeader) {
  EXPECT_EQ(partsOf("a,b\r\n1,2\r\n"), (Lines{"BeginTable", "BeginRow header", "Cell 'a'", "Cell 'b'", "EndRow",
                                              "BeginRow", "Cell '1'", "Cell '2'", "EndRow", "EndTable"}));
}

TEST(CsvReader, EmitsNothingForAnEmptyFile) {
  EXPECT_EQ(partsOf(""), Lines());
  EXPECT_EQ(partsOf("\r\n\r\n"), Lines());
}

TEST(CsvReader, NeedsNoFinalLineEnd) { EXPECT_EQ(rowsOf("a,b\n1,2"), (Lines{"|a|b|", "|1|2|"})); }

TEST(CsvReader, AcceptsTheLineEndsOfEverySystem) {
  EXPECT_EQ(rowsOf("a\r\nb\nc\n"), (Lines{"|a|", "|b|", "|c|"}));
  EXPECT_EQ(rowsOf("a\rb\rc"), (Lines{"|a|", "|b|", "|c|"}));
}

TEST(CsvReader, RemovesQuotes) { EXPECT_EQ(rowsOf("\"a,b\",\"say \"\"hi\"\"\",\"\"\n"), (Lines{"|a,b|say \"hi\"||"})); }

TEST(CsvReader, TurnsALineEndInACellIntoALineBreak) {
  EXPECT_EQ(rowsOf("\"one\r\ntwo\nthree\rfour\n\",x\n"), (Lines{"|one/two/three/four/|x|"}));
}

TEST(CsvReader, KeepsAQuoteInAnUnquotedCell) {
  EXPECT_EQ(rowsOf("size\n3.5\" disk\n5\" and 3\"\n"), (Lines{"|size|", "|3.5\" disk|", "|5\" and 3\"|"}));
}

TEST(CsvReader, TrimsBlanksAroundACell) { EXPECT_EQ(rowsOf(" a , \"b, c\" , d e \n"), (Lines{"|a|b, c|d e|"})); }

TEST(CsvReader, KeepsTheCellsOfShortAndLongRows) {
  EXPECT_EQ(rowsOf("a,b,c\n1\n1,2,3,4\n,,\n"), (Lines{"|a|b|c|", "|1|", "|1|2|3|4|", "||||"}));
}

TEST(CsvReader, SkipsEmptyLines) { EXPECT_EQ(rowsOf("a,b\n\n1,2\n\n\n"), (Lines{"|a|b|", "|1|2|"})); }

TEST(CsvReader, ReadsAnEmptyLineAsAnEmptyValueOfASingleColumn) {
  const Lines rows = {"|a|", "|1|", "||", "|2|", "||", "||"};
  for (const std::string end : {"\n", "\r\n", "\r"}) {
    const std::string text = replacedAll<char>("a\n1\n\n2\n \t\n\n", "\n", end);
    EXPECT_EQ(rowsOf(text), rows);
    EXPECT_EQ(rowsOf(text, ',', 1), rows);
  }
  EXPECT_EQ(rowsOf("a\n\n\"\"\n", '\t'), (Lines{"|a|", "||", "||"}));
}

TEST(CsvReader, SkipsEmptyLinesBeforeTheHeaderAndAfterTheLastLineEnd) {
  EXPECT_EQ(rowsOf("\n\na\n1\n"), (Lines{"|a|", "|1|"}));
  EXPECT_EQ(rowsOf("a\n1"), (Lines{"|a|", "|1|"}));
}

TEST(CsvReader, KeepsAnEmptyLineWithinQuotesInItsCell) {
  EXPECT_EQ(rowsOf("a\n\"1\n\n2\"\n3\n"), (Lines{"|a|", "|1//2|", "|3|"}));
  EXPECT_EQ(rowsOf("a\n\"1\n\n2\"\n3\n", ',', 1), (Lines{"|a|", "|1//2|", "|3|"}));
}

TEST(CsvReader, ReadsALineOfSeparatorsAsEmptyCells) { EXPECT_EQ(rowsOf("a\n\t\n", '\t'), (Lines{"|a|", "|||"})); }

TEST(CsvReader, SeparatesCellsByTabsOnRequest) {
  EXPECT_EQ(rowsOf("a,b\tc\n\"x\ty\"\t \n", '\t'), (Lines{"|a,b|c|", "|x\ty||"}));
}

TEST(CsvReader, ReadsTheSameHoweverTheInputIsSplit) {
  const std::string table = "\xEF\xBB\xBFn,\"text\"\r\n1,\"a \"\"q\"\" €,\r\n\r\nb\"\r\n2,5\" x\r\n\r\n3,é\r\n";
  const Lines whole = partsOf(table);
  for (std::size_t pieces = 1; pieces < 20; ++pieces) {
    EXPECT_EQ(partsOf(table, ',', pieces), whole) << pieces;
  }
}

TEST(CsvReader, ReportsTheLineOfTextAfterAClosingQuote) {
  EXPECT_EQ(errorOf("a,b\n1,2\n\"x\"y,3\n"), "'-', line 3: text after the closing quote of a cell");
  EXPECT_EQ(errorOf("a,b\n\"one\ntwo\" three,\n"), "'-', line 3: text after the closing quote of a cell");
}

TEST(CsvReader, ReportsTheLineWhereAnUnclosedQuoteBegins) {
  const std::string reason = ": a quoted cell begins here but never ends";
  EXPECT_EQ(errorOf("a,b\n1,2\n3,\"open\n4,5\n6,7\n"), "'-', line 3" + reason);
  EXPECT_EQ(errorOf("\"open"), "'-', line 1" + reason);
  EXPECT_EQ(errorOf("a,b\n\n\n\"open\n"), "'-', line 4" + reason);
  EXPECT_EQ(errorOf("\"a\nb\",\"open\n\n\n"), "'-', line 2" + reason);
  EXPECT_EQ(errorOf("a\r\"open\rb\r"), "'-', line 2" + reason);
}

TEST(CsvReader, ReportsTheSameLineHoweverTheInputIsSplit) {
  const std::string table = "a,b\n\"x\ny\",1\n\n2,\"open, \"\"\nc\n";
  for (std::size_t pieces = 1; pieces < 20; ++pieces) {
    EXPECT_EQ(errorOf(table, pieces), "'-', line 5: a quoted cell begins here but never ends") << pieces;
  }
}

TEST(CsvReader, PropagatesExceptionsFromItsSink) {
  struct Throwing : RecordedParts {
    void cell(std::string_view) override { throw std::runtime_error("enough"); }
  } sink;
  TestEnvironment environment;
  environment.input = "a\nb\nc\n";
  TextInput input(environment.get(), "-");
  EXPECT_THROW(readCsv(input, ',', sink), std::runtime_error);
}

}  // namespace
}  // namespace scrivalen::command::test
