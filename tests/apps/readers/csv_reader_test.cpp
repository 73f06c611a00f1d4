#include "readers/csv/csv_reader.h"

#include "command_support.h"
#include "errors.h"
#include "recorded_parts.h"
#include "texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <optional>

namespace scrivalen::command::test {
namespace {

// Every cell as a text, which is what most of these tests are about.
struct Texts : RecordedParts {
  void describeColumn(std::size_t, const TableColumn&) override {}
};

Lines partsOf(std::string text, std::optional<char> separator = ',', std::size_t pieces = 1 << 20) {
  TestEnvironment environment;
  environment.input = std::move(text);
  const auto whole = environment.get().readInput;
  environment.get().readInput = [=](void* data, std::size_t size) { return whole(data, std::min(pieces, size)); };
  TextInput input(environment.get(), "-");
  Texts parts;
  readCsv(input, separator, {.isText = true}, parts);
  return parts.lines();
}

// One line for each row, its cells between bars, their line ends as slashes.
Lines rowsOf(const std::string& text, std::optional<char> separator = ',', std::size_t pieces = 1 << 20) {
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

Lines linesOf(const std::string& text, const CsvOptions& options) {
  TestEnvironment environment;
  environment.input = text;
  TextInput input(environment.get(), "-");
  RecordedParts parts;
  readCsv(input, ',', options, parts);
  return parts.lines();
}

Lines linesWith(const char* start, const Lines& all) {
  Lines lines;
  std::copy_if(all.begin(), all.end(), std::back_inserter(lines),
               [start](const std::string& line) { return line.starts_with(start); });
  return lines;
}

// The cells of a row with these texts.
Lines valuesOf(const Lines& texts) {
  std::string table = "header\n";
  for (const std::string& text : texts) {
    table.append(table.ends_with('\n') ? "\"" : ",\"").append(text).append("\"");
  }
  Lines lines = linesOf(table + "\n", {});
  std::erase_if(lines, [](const std::string& line) { return line.starts_with("Warning"); });
  return {lines.begin() + 5, lines.end() - 2};
}

Lines warningsOf(const std::string& table) {
  Lines warnings = linesWith("Warning ''-': ", linesOf(table, {}));
  for (std::string& warning : warnings) {
    warning = warning.substr(14, warning.size() - 15);
  }
  return warnings;
}

Lines chosenFrom(const std::string& table, const std::vector<std::string>& columns) {
  Lines rows;
  for (const std::string& part : linesOf(table, {.isText = true, .columns = columns})) {
    if (part.starts_with("BeginRow")) {
      rows.push_back("|");
    } else if (part.starts_with("Cell ")) {
      rows.back() += part.substr(6, part.size() - 7) + "|";
    }
  }
  return rows;
}

// How the columns of a table of three are described.
Lines columnsOf(const CsvOptions& options) { return linesWith("Column", linesOf("a,b,c\n", options)); }

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
    EXPECT_EQ(partsOf(table, std::nullopt, pieces), whole) << pieces;
  }
}

TEST(CsvReader, FindsTheSameDelimiterHoweverTheInputIsSplit) {
  const std::string table = "Report, 2024\n\nname;value\na;1,5\nb;2,5\n";
  const Lines whole = partsOf(table, ';');
  for (std::size_t pieces = 1; pieces < table.size(); ++pieces) {
    EXPECT_EQ(partsOf(table, std::nullopt, pieces), whole) << pieces;
  }
}

TEST(CsvReader, ReportsTheLineOfTextAfterAClosingQuote) {
  const std::string twice = "; inside quotes, a quote is written twice";
  EXPECT_EQ(errorOf("a,b\n1,2\n\"x\"y,3\n"), "'-', line 3: text after the closing quote of a cell" + twice);
  EXPECT_EQ(errorOf("a,b\n\"one\ntwo\" three,\n"), "'-', line 3: text after the closing quote of a cell" + twice);
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

TEST(CsvReader, CountsTheLinesOfEachCellForItself) {
  EXPECT_EQ(errorOf("\"a\r\",\"\nb\"\n\"open\n"), "'-', line 4: a quoted cell begins here but never ends");
  EXPECT_EQ(errorOf("a\r\n\r\n\"b\r\n\"\r\"c\rd\" e"),
            "'-', line 6: text after the closing quote of a cell; inside quotes, a quote is written twice");
}

TEST(CsvReader, ReadsTheRowsBeforeAMistake) {
  struct Kept : RecordedParts {
    void cell(std::string_view text) override { texts.emplace_back(text); }
    Lines texts;
  } sink;
  TestEnvironment environment;
  environment.input = "a\nb\n\"c\"d\n";
  TextInput input(environment.get(), "-");
  EXPECT_THROW(readCsv(input, ',', {}, sink), InputError);
  EXPECT_EQ(sink.texts, (Lines{"a", "b"}));
}

TEST(CsvReader, TurnsPlainNumbersAndDatesIntoValues) {
  EXPECT_EQ(valuesOf({"7", "-12.50", "0.000", "2024-02-29"}),
            (Lines{"Number '7'", "Number '-1250e-2'", "Number '0e-3'", "Date '19782'"}));
}

TEST(CsvReader, LeavesOtherTextsAsTheyAre) {
  for (const std::string text : {"007", "+7", "1e5", "12%", "1,234.50", "=1+1", " 7", "-0", "1900-02-28", "2023-02-29",
                                 "7 8", "1234567890123456", "a", ""}) {
    EXPECT_EQ(valuesOf({text}), Lines{"Cell '" + text + "'"});
  }
}

TEST(CsvReader, LeavesTheHeaderAsTexts) {
  EXPECT_EQ(linesOf("2023,1\n", {}),
            (Lines{"BeginTable", "BeginRow header", "Cell '2023'", "Cell '1'", "EndRow", "EndTable"}));
}

TEST(CsvReader, TurnsNothingIntoAValueOnRequest) {
  EXPECT_EQ(linesOf("a\n7\n1,2024-02-29\n", {.isText = true}),
            (Lines{"BeginTable", "Column 0 text", "BeginRow header", "Cell 'a'", "EndRow", "BeginRow", "Cell '7'",
                   "EndRow", "Column 1 text", "BeginRow", "Cell '1'", "Cell '2024-02-29'", "EndRow", "EndTable",
                   "Warning ''-': 1 row has more cells than the header, in line 3'"}));
}

TEST(CsvReader, WarnsOfRowsThatAreUnlikeTheHeader) {
  EXPECT_EQ(warningsOf("a,b\n1,2\n"), Lines());
  EXPECT_EQ(warningsOf("a,b\n1,2\n\n3\n\"4\n\"\n5\n6,7,8\n"),
            (Lines{"3 rows have fewer cells than the header, the first in line 4",
                   "1 row has more cells than the header, in line 8"}));
}

TEST(CsvReader, ShowsTheChosenColumnsInTheirOrder) {
  const std::string table = "id,name,2,\"a, b\"\n1,x,y,z\n1,x,y\n1,x,y,z,more\n";
  EXPECT_EQ(chosenFrom(table, {"name", "1"}), (Lines{"|name|id|", "|x|1|", "|x|1|", "|x|1|"}));
  EXPECT_EQ(chosenFrom(table, {"a, b", "2", "2"}), (Lines{"|a, b|2|2|", "|z|y|y|", "||y|y|", "|z|y|y|"}));
  EXPECT_EQ(chosenFrom(table, {"3-4", "2-1"}), (Lines{"|2|a, b|name|id|", "|y|z|x|1|", "|y||x|1|", "|y|z|x|1|"}));
}

TEST(CsvReader, NamesTheColumnsThatThereAre) {
  const auto complaint = [](const std::string& column) {
    try {
      linesOf("id,name\n", {.columns = {column}});
      return std::string();
    } catch (const UsageError& error) {
      return std::string(error.what());
    }
  };
  EXPECT_EQ(complaint("nmae"), "--columns: there is no column 'nmae'; did you mean 'name'?");
  for (const std::string column : {"other", "0", "3", "1-3", "-1", "1-", "99999999999999999999"}) {
    EXPECT_EQ(complaint(column), "--columns: there is no column '" + column + "'; the columns are 'id', 'name'");
  }
}

TEST(CsvReader, ShortensLongNamesOfColumns) {
  std::string accents;
  for (int i = 0; i < 61; ++i) {
    accents += "\xC3\xA9";
  }
  const std::string first(60, 'a');
  const std::string header = first + "," + first + "b," + accents + "," + std::string(1000, 'c') + "\n";
  try {
    linesOf(header, {.columns = {std::string(61, 'd')}});
    ADD_FAILURE() << "the column is unknown";
  } catch (const UsageError& error) {
    EXPECT_EQ(error.what(), "--columns: there is no column '" + std::string(60, 'd') + "...'; the columns are '" +
                                first + "', '" + first + "...', '" + accents.substr(0, 120) + "...', '" +
                                std::string(60, 'c') + "...'");
  }
}

TEST(CsvReader, DescribesTheColumnsThatAreShown) {
  EXPECT_EQ(columnsOf({.columns = {"3", "1"}, .aligns = {Align::Center}, .widths = {0, 2}}),
            (Lines{"Column 0 center", "Column 1 width 2.000000"}));
  EXPECT_EQ(columnsOf({.aligns = {Align::Default, Align::Right, Align::Left}}),
            (Lines{"Column 0", "Column 1 right", "Column 2 left"}));
}

TEST(CsvReader, SharesWhatPercentsLeave) {
  EXPECT_EQ(columnsOf({.widths = {50}, .arePercent = true}),
            (Lines{"Column 0 width 50.000000", "Column 1 width 25.000000", "Column 2 width 25.000000"}));
  for (const std::vector<double>& widths : {std::vector<double>{50, 50}, {50, 40, 11}}) {
    EXPECT_THROW(columnsOf({.widths = widths, .arePercent = true}), UsageError);
  }
  EXPECT_EQ(columnsOf({.widths = {50, 40, 5}, .arePercent = true}).size(), 3u);
}

TEST(CsvReader, AddsPercentsUpAsTheyAreWritten) {
  EXPECT_EQ(linesWith("Column", linesOf("a,b,c,d\n", {.widths = {24.8, 22.1, 19.9, 33.2}, .arePercent = true})).size(),
            4u);
  EXPECT_THROW(linesOf("a,b,c,d\n", {.widths = {33.4, 33.3, 33.3}, .arePercent = true}), UsageError);
}

TEST(CsvReader, RefusesMoreAlignmentsAndWidthsThanColumns) {
  const std::vector<double> widths(4, 1);
  const std::vector<Align> aligns(4, Align::Left);
  EXPECT_THROW(columnsOf({.widths = widths}), UsageError);
  EXPECT_THROW(columnsOf({.aligns = aligns}), UsageError);
  EXPECT_THROW(columnsOf({.columns = {"1"}, .aligns = {Align::Left, Align::Left}}), UsageError);
}

TEST(CsvReader, JoinsTheCellsOfARowThatIsFarLongerThanTheHeader) {
  std::string table = "a,b\n";
  for (int i = 1; i < 1005; ++i) {
    table += std::to_string(i) + ",";
  }
  const Lines parts = partsOf(table + "1005\n");
  EXPECT_EQ(parts[parts.size() - 6], "Cell '1001'");
  EXPECT_EQ(parts[parts.size() - 5], "Cell '1002 1003 1004 1005'");
  EXPECT_EQ(parts.back(),
            "Warning ''-': 1 row has more than 1,000 cells more than the header, which are joined to the last of "
            "these, in line 2'");
}

TEST(CsvReader, ReadsAMillionCellsOfARowAndNoMore) {
  const std::string commas(999999, ',');
  EXPECT_EQ(errorOf("a\n" + commas + "\n"), "");
  EXPECT_EQ(errorOf("a\n" + commas + ",\n"), "'-', line 2: a row has at most 1,000,000 cells");
}

TEST(CsvReader, ReadsRowsThatAreLongerThanThePiecesOfTheInput) {
  std::string quoted = "a\n\"";
  std::string cell = "Cell '";
  for (int i = 0; i < 100000; ++i) {
    quoted += i % 7 == 0 ? "\"\"" : "x";
    cell += i % 7 == 0 ? "\"" : "x";
  }
  const Lines parts = partsOf(quoted + "\"\n", ',', 1000);
  ASSERT_EQ(parts.size(), 8u);
  EXPECT_EQ(parts[5], cell + "'");
  EXPECT_EQ(partsOf(std::string(10000, ',') + "\n", ',', 1000).size(), 10005u);
}

TEST(CsvReader, PropagatesExceptionsFromItsSink) {
  struct Throwing : RecordedParts {
    void cell(std::string_view) override { throw std::runtime_error("enough"); }
  } sink;
  TestEnvironment environment;
  environment.input = "a\nb\nc\n";
  TextInput input(environment.get(), "-");
  EXPECT_THROW(readCsv(input, ',', {}, sink), std::runtime_error);
}

}  // namespace
}  // namespace scrivalen::command::test
