#include "document/document.h"

#include "support/documents/recording_writer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace scrivalen::document;
using scrivalen::test::RecordedDocument;

namespace {

void addRow(Document& document, std::initializer_list<const char*> cells, bool header = false) {
  document.beginRow(header);
  for (const char* cell : cells) {
    document.cell(cell);
  }
  document.end();
}

std::vector<Column> columnsOfType(std::initializer_list<ValueType> types) {
  std::vector<Column> columns;
  for (const ValueType type : types) {
    columns.emplace_back().type = type;
  }
  return columns;
}

}  // namespace

TEST(DocumentTable, MeasuresItsColumns) {
  RecordedDocument document;
  document.beginTable({}, "stock");
  addRow(document, {"Item", "Count"}, true);
  addRow(document, {"a long name", "12"});
  addRow(document, {"two\nlines here", "7.50"});
  document.end();
  EXPECT_EQ(document.content(),
            "table 'stock' left 5/11 right 5/5\nheader 'Item' 'Count'\n"
            "row 'a long name' '12'\nrow 'two\\nlines here' '7.50'\nend table\n");
}

TEST(DocumentTable, CountsWideCharactersTwice) {
  RecordedDocument document;
  document.beginTable({}, {});
  addRow(document, {"\xE4\xB8\xAD\xE6\x96\x87", "e\xCC\x81"});
  document.end();
  EXPECT_EQ(document.content().substr(0, 24), "table left 2/4 left 1/1\n");
}

TEST(DocumentTable, AlignsNumbersToTheRight) {
  RecordedDocument document;
  document.beginTable({}, {});
  addRow(document, {"1", "1", "2024-01-01", "007", ""});
  addRow(document, {"-2.5", "x", "2024-01-02", "8", ""});
  document.end();
  EXPECT_EQ(document.content().substr(0, 57), "table right 4/4 left 1/1 left 10/10 left 3/3 left 0/0\nrow");
}

TEST(DocumentTable, TakesTheAlignmentOfItsColumns) {
  RecordedDocument document;
  std::vector<Column> columns = columnsOfType({ValueType::Text, ValueType::Number, ValueType::Date, ValueType::Text});
  columns[3].align = Align::Center;
  document.beginTable(columns, {});
  addRow(document, {"1", "x", "x", "x"});
  document.end();
  EXPECT_EQ(document.content().substr(0, 45), "table left 1/1 right 1/1 left 1/1 center 1/1\n");
}

TEST(DocumentTable, FillsShortRowsAndJoinsWhatIsTooMuch) {
  RecordedDocument document;
  document.beginTable(columnsOfType({ValueType::Auto, ValueType::Auto}), {});
  addRow(document, {"a"});
  addRow(document, {"a", "b", "c", "d"});
  addRow(document, {});
  document.end();
  EXPECT_EQ(document.content(), "table left 1/1 left 1/1\nrow 'a' ''\nrow 'a' text:'b c d'\nrow '' ''\nend table\n");
  EXPECT_EQ(document.warnings(),
            "2 x rows with fewer cells than their table has columns\n"
            "2 x cells past the last column of their table, joined to it\n");
}

TEST(DocumentTable, HasAsManyColumnsAsItsWidestRow) {
  RecordedDocument document;
  document.beginTable({}, {});
  addRow(document, {"a"});
  addRow(document, {"a", "b", "c"});
  document.end();
  EXPECT_EQ(document.content(), "table left 1/1 left 1/1 left 1/1\nrow 'a' '' ''\nrow 'a' 'b' 'c'\nend table\n");
}

// A column that no cell is in costs the host nothing, but memory in each format.
TEST(DocumentTable, GetsAtMost16384ColumnsFromTheSpansOfARow) {
  RecordedDocument document;
  document.beginTable({}, {});
  document.beginRow(false);
  for (const char* text : {"a", "b", "c"}) {
    document.beginCell({.span = 16384});
    document.text(text);
    document.end();
  }
  document.end();
  document.end();
  const std::string content = document.content();
  const std::size_t row = content.find('\n') + 1;
  EXPECT_EQ(std::count(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(row), '/'), 16387);
  EXPECT_EQ(content.substr(row), "row 16384x'a' text:3x'b c'\nend table\n");
  EXPECT_EQ(document.warnings(),
            "1 x cells past the last column of their table, joined to it\n"
            "1 x cells that span columns past the last one of their table\n");
}

TEST(DocumentTable, HasAColumnForEachCellOfARowWithSpans) {
  RecordedDocument document;
  document.beginTable({}, {});
  document.beginRow(false);
  for (int i = 0; i < 20000; ++i) {
    document.beginCell({.span = i == 7 ? 2 : 1});
    document.end();
  }
  document.end();
  document.end();
  const std::string content = document.content();
  EXPECT_EQ(std::count(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(content.find('\n')), '/'), 20001);
  EXPECT_EQ(document.warnings(), "");
}

TEST(DocumentTable, HasAColumnEvenWithoutRows) {
  RecordedDocument document;
  document.beginTable({}, {});
  document.end();
  EXPECT_EQ(document.content(), "table left 0/0\nend table\n");
}

TEST(DocumentTable, RepeatsItsFirstHeaderRowsOnly) {
  RecordedDocument document;
  document.beginTable({}, {});
  addRow(document, {"a"}, true);
  addRow(document, {"b"}, true);
  addRow(document, {"c"});
  addRow(document, {"d"}, true);
  document.end();
  EXPECT_EQ(document.content(), "table left 1/1\nheader 'a'\nheader 'b'\nrow 'c'\nlate header 'd'\nend table\n");
}

TEST(DocumentTable, RepeatsAtMostTwentyHeaderRows) {
  RecordedDocument document;
  document.beginTable({}, {});
  for (int i = 0; i < 21; ++i) {
    addRow(document, {"h"}, true);
  }
  document.end();
  std::string expected = "table left 1/1\n";
  for (int i = 0; i < 20; ++i) {
    expected += "header 'h'\n";
  }
  EXPECT_EQ(document.content(), expected + "late header 'h'\nend table\n");
}

TEST(DocumentTable, GivesACellItsStyle) {
  RecordedDocument document;
  document.beginTable({}, {});
  document.beginRow(false);
  document.beginCell({true, Align::Center, 2, 0xFF0000, std::nullopt});
  document.text("wide");
  document.end();
  document.cell("x");
  document.end();
  document.end();
  EXPECT_EQ(document.content(),
            "table left 0/0 left 0/0 left 1/1\nrow header:2xalign2:#FF0000:'wide' 'x'\nend table\n");
}

TEST(DocumentTable, CutsASpanAtTheLastColumn) {
  RecordedDocument document;
  document.beginTable(columnsOfType({ValueType::Auto, ValueType::Auto}), {});
  document.beginRow(false);
  document.cell("a");
  document.beginCell({false, Align::Auto, 9, std::nullopt, std::nullopt});
  document.text("wide");
  document.end();
  document.cell("more");
  document.end();
  document.end();
  EXPECT_EQ(document.content(), "table left 1/1 left 0/0\nrow 'a' text:'wide more'\nend table\n");
  EXPECT_EQ(document.warnings(),
            "1 x cells past the last column of their table, joined to it\n"
            "1 x cells that span columns past the last one of their table\n");
}

TEST(DocumentTable, KeepsTheContentOfARichCell) {
  RecordedDocument document;
  document.beginTable({}, {});
  document.beginRow(false);
  document.beginCell({});
  document.text("see ");
  document.beginLink("https://example.org/", {});
  document.text("there");
  document.end();
  document.end();
  document.cell("x");
  document.end();
  document.end();
  EXPECT_EQ(document.content(),
            "table left 5/9 left 1/1\nrow 'see there' 'x'\n[\ntext 'see '\n"
            "link ->https://example.org/\ntext 'there'\nend link\n]\nend table\n");
}

TEST(DocumentTable, JoinsRichCellsPastItsLastColumn) {
  RecordedDocument document;
  document.beginTable(columnsOfType({ValueType::Auto}), {});
  document.beginRow(false);
  document.cell("a");
  document.beginCell({});
  document.beginSpan(Span::Strong);
  document.text("b");
  document.end();
  document.end();
  document.end();
  document.end();
  EXPECT_EQ(document.content(),
            "table left 1/1\nrow text:'a b'\n[\ntext 'a'\ntext ' '\nspan kind 1\ntext 'b'\n"
            "end span kind 1\n]\nend table\n");
}

TEST(DocumentTable, WritesValuesAsText) {
  RecordedDocument document;
  document.beginTable({}, {});
  document.beginRow(false);
  document.value(ValueType::Number, 0.1, 0);
  document.value(ValueType::Integer, 0, -42);
  document.value(ValueType::Date, 0, 19723);
  document.value(ValueType::Time, 0, 86399);
  document.value(ValueType::Boolean, 0, 1);
  document.end();
  document.end();
  EXPECT_EQ(document.content(),
            "table right 3/3 right 3/3 left 10/10 left 10/19 left 4/4\n"
            "row number:'0.1' integer:'-42' date:'2024-01-01' time:'1970-01-01 23:59:59' boolean:'true'\nend table\n");
}

TEST(DocumentTable, LeavesANumberThatIsNotFiniteEmpty) {
  RecordedDocument document;
  document.beginTable({}, {});
  document.beginRow(false);
  document.value(ValueType::Number, std::nan(""), 0);
  document.value(ValueType::Number, std::numeric_limits<double>::infinity(), 0);
  document.end();
  document.end();
  EXPECT_EQ(document.content(), "table left 0/0 left 0/0\nrow '' ''\nend table\n");
  EXPECT_EQ(document.warnings(), "2 x numbers that are not finite, written as empty cells\n");
}

TEST(DocumentTable, ShowsNumbersAsItsColumnSays) {
  RecordedDocument document;
  std::vector<Column> columns = columnsOfType({ValueType::Number, ValueType::Number});
  columns[0].format = ValueFormat(2);
  columns[1].format = *ValueFormat::of("0%");
  document.set("numbers", "1.234,5");
  document.beginTable(columns, {});
  document.beginRow(false);
  document.value(ValueType::Number, 1234.5, 0);
  document.value(ValueType::Number, 0.25, 0);
  document.end();
  document.end();
  EXPECT_EQ(document.content(), "table right 8/8 right 3/3\nrow number:'1.234,50' number:'25%'\nend table\n");
}

TEST(DocumentTable, ShowsAValueAfterASpanAsItsColumnSays) {
  RecordedDocument document;
  std::vector<Column> columns = columnsOfType({ValueType::Number, ValueType::Number, ValueType::Number});
  columns[1].format = ValueFormat(2);
  columns[2].format = *ValueFormat::of("#,##0");
  document.beginTable(columns, {});
  document.beginRow(false);
  document.beginCell({false, Align::Auto, 2, std::nullopt, std::nullopt});
  document.value(ValueType::Number, 0.5, 0);
  document.end();
  document.value(ValueType::Number, 1234, 0);
  document.end();
  document.end();
  EXPECT_EQ(document.content(), "table right 0/0 right 0/0 right 5/5\nrow number:2x'0.5' number:'1,234'\nend table\n");
}

TEST(DocumentTable, JoinsManyCellsInProportion) {
  RecordedDocument document;
  document.beginTable(columnsOfType({ValueType::Auto}), {});
  document.beginRow(false);
  std::string joined;
  for (int i = 0; i < 20000; ++i) {
    document.cell("0123456789");
    joined += i == 0 ? "0123456789" : " 0123456789";
  }
  document.end();
  document.end();
  EXPECT_TRUE(document.content() == "table left 10/10\nrow text:'" + joined + "'\nend table\n");
}

TEST(DocumentTable, EndsItsSampleAtManyEmptyCells) {
  RecordedDocument document;
  document.beginTable(std::vector<Column>(4096), {});
  for (int row = 0; row < 20; ++row) {
    document.beginRow(false);
    for (int column = 0; column < 4096; ++column) {
      document.cell(row < 16 ? "" : "late");
    }
    document.end();
  }
  document.end();
  EXPECT_EQ(document.content().find("4/4"), std::string::npos);
}

TEST(DocumentTable, GivesACellThatWasBegunOneValue) {
  RecordedDocument document;
  document.beginTable({}, {});
  document.beginRow(false);
  document.beginCell({false, Align::Auto, 1, std::nullopt, 0x00FF00});
  EXPECT_EQ(document.value(ValueType::Integer, 0, 7), Status::Ok);
  EXPECT_EQ(document.value(ValueType::Integer, 0, 8), Status::Misuse);
  EXPECT_STREQ(document.error(), "a cell has one value, and no text");
  EXPECT_EQ(document.text("x"), Status::Misuse);
  EXPECT_EQ(document.lineBreak(), Status::Misuse);
  EXPECT_EQ(document.beginSpan(Span::Strong), Status::Misuse);
  EXPECT_EQ(document.anchor("x"), Status::Misuse);
  document.end();
  document.beginCell({});
  document.text("x");
  EXPECT_EQ(document.cell("y"), Status::Misuse);
  document.end();
  document.end();
  document.end();
  EXPECT_EQ(document.content(), "table right 1/1 left 1/1\nrow integer:'7' 'x'\nend table\n");
}

TEST(DocumentTable, TakesRowsByColumns) {
  RecordedDocument document;
  const double numbers[] = {9, 1.5, 2.5};
  const std::int64_t offsets[] = {0, 1, 3, 3};
  const std::uint8_t validity[] = {0b101};
  const std::uint8_t truths[] = {0b10};
  ColumnData columns[3];
  columns[0] = {ValueType::Number, numbers, nullptr, nullptr, 1};
  columns[1] = {ValueType::Text, "abc", offsets, nullptr, 0};
  columns[2] = {ValueType::Boolean, truths, nullptr, validity, 0};
  document.beginTable({}, {});
  EXPECT_EQ(document.rows(columns, 3, 2), Status::Ok);
  document.end();
  EXPECT_EQ(document.content(),
            "table right 3/3 left 2/2 left 5/5\nrow number:'1.5' 'a' boolean:'false'\n"
            "row number:'2.5' 'bc' ''\nend table\n");
}

TEST(DocumentTable, IsTheSameRowByRowAndByColumnsPastItsSample) {
  std::string texts;
  std::vector<std::int64_t> offsets = {0};
  std::vector<std::int64_t> integers;
  RecordedDocument single;
  single.beginTable({}, {});
  for (int i = 0; i < 1200; ++i) {
    const std::string text = "row\t" + std::to_string(i);
    texts += text;
    offsets.push_back(static_cast<std::int64_t>(texts.size()));
    integers.push_back(i);
    single.beginRow(false);
    single.cell(text);
    single.value(ValueType::Integer, 0, i);
    single.end();
  }
  single.end();
  RecordedDocument columns;
  columns.beginTable({}, {});
  const ColumnData data[] = {{ValueType::Text, texts.data(), offsets.data(), nullptr, 0},
                             {ValueType::Integer, integers.data(), nullptr, nullptr, 0}};
  columns.rows(data, 2, 1200);
  columns.end();
  EXPECT_EQ(single.lines(), columns.lines());
}

TEST(DocumentTable, KeepsItsSampleTogetherOverFiveHundredRows) {
  RecordedDocument document;
  document.beginTable({}, {});
  for (int i = 0; i < 499; ++i) {
    addRow(document, {"a"});
  }
  addRow(document, {"longer"});
  addRow(document, {"longest of all"});
  document.end();
  EXPECT_EQ(document.content().substr(0, 15), "table left 6/6\n");
}

TEST(DocumentTable, LeavesSpaceForLongerNumbersPastItsSample) {
  RecordedDocument document;
  document.beginTable({}, {});
  for (int i = 1; i <= 501; ++i) {
    addRow(document, {std::to_string(i).c_str(), "a"});
  }
  document.end();
  EXPECT_EQ(document.content().substr(0, 25), "table right 7/7 left 1/1\n");
}

TEST(DocumentTable, EndsItsSampleAt256KiB) {
  RecordedDocument document;
  const std::string text(100000, 'x');
  document.beginTable({}, {});
  for (int i = 0; i < 3; ++i) {
    addRow(document, {text.c_str()});
  }
  addRow(document, {(text + "y").c_str()});
  document.end();
  EXPECT_EQ(document.content().substr(0, 25), "table left 100000/100000\n");
}

TEST(DocumentTable, RefusesASpanOutOfRange) {
  RecordedDocument document;
  document.beginTable({}, {});
  document.beginRow(false);
  EXPECT_EQ(document.beginCell({false, Align::Auto, 0, std::nullopt, std::nullopt}), Status::Misuse);
  EXPECT_EQ(document.beginCell({false, Align::Auto, 16385, std::nullopt, std::nullopt}), Status::Misuse);
  EXPECT_STREQ(document.error(), "a cell spans 1 to 16,384 columns");
}

TEST(DocumentTable, LearnsAtTheEndOfARowThatItIsAHeaderRow) {
  RecordedDocument document;
  document.beginTable({}, {});
  document.beginRow(false);
  document.cell("Item");
  document.markRow(true);
  document.end();
  addRow(document, {"rice"});
  EXPECT_EQ(document.markRow(true), Status::Misuse);
  document.end();
  EXPECT_EQ(document.content(), "table left 4/4\nheader 'Item'\nrow 'rice'\nend table\n");
}

TEST(DocumentTable, LearnsFromItsRowsWhatItsColumnsAre) {
  RecordedDocument document;
  document.beginTable({}, {});
  document.beginRow(false);
  document.describeColumn(1, columnsOfType({ValueType::Number}).front());
  document.cell("a");
  document.cell("n/a");
  document.cell("b");
  document.end();
  document.end();
  EXPECT_EQ(document.describeColumn(0, {}), Status::Misuse);
  EXPECT_EQ(document.content(), "table left 1/1 right 3/3 left 1/1\nrow 'a' 'n/a' 'b'\nend table\n");
}

TEST(DocumentTable, KeepsItsColumnsWhenTheyAreDescribedPastItsSample) {
  RecordedDocument document;
  document.beginTable({}, {});
  for (int i = 0; i < 500; ++i) {
    addRow(document, {"a"});
  }
  EXPECT_EQ(document.describeColumn(0, columnsOfType({ValueType::Number}).front()), Status::Ok);
  EXPECT_EQ(document.describeColumn(7, columnsOfType({ValueType::Number}).front()), Status::Ok);
  document.end();
  EXPECT_EQ(document.content().substr(0, 23), "table left 1/1\nrow 'a'\n");
}

TEST(DocumentTable, KeepsItsNumberOfColumnsWhenItWasGiven) {
  RecordedDocument document;
  document.beginTable(columnsOfType({ValueType::Auto}), {});
  document.describeColumn(1, columnsOfType({ValueType::Number}).front());
  addRow(document, {"a"});
  document.end();
  EXPECT_EQ(document.content(), "table left 1/1\nrow 'a'\nend table\n");
}

TEST(DocumentTable, TakesACellForATextThatMustNotBecomeAValue) {
  RecordedDocument document;
  document.beginTable({}, {});
  document.beginRow(false);
  document.beginCell({.type = ValueType::Text});
  document.text("12");
  document.end();
  document.beginCell({.type = ValueType::Number});
  document.text("12");
  document.end();
  document.end();
  document.end();
  EXPECT_EQ(document.content(), "table left 2/2 right 2/2\nrow text:'12' '12'\nend table\n");
}
