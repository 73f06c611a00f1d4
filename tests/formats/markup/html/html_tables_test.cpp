#include "html_page_maker.h"

#include "document/model/event_log.h"

namespace scrivalen::document {
namespace {

using Rows = std::vector<std::pair<std::vector<Cell>, Row>>;

Column column(Align align = Align::Left, double width = 0) {
  Column result;
  result.align = align;
  result.width = width;
  return result;
}

Rows rowsOf(std::vector<Cell> cells) { return {{std::move(cells), {}}}; }

std::string tableOf(const std::vector<Column>& columns, const Rows& rows, const SettingList& list = {}) {
  return htmlOf(
             [&](DocumentWriter& writer) {
               writer.beginTable({"", columns});
               for (auto [cells, row] : rows) {
                 row.cells = cells;
                 writer.row(row);
               }
               writer.endTable();
             },
             list)
      .body();
}

TEST(HtmlTables, HaveAHeadOfRepeatedRowsAndABody) {
  const Row head = {.cells = {}, .header = true, .repeated = true};
  EXPECT_EQ(tableOf({column(), column(Align::Right)}, {{{{.text = "Name"}, {.text = "Sum"}}, head},
                                                       {{{.text = "a & b"}, {.text = "1.5"}}, {}},
                                                       {{{.text = "c\nd"}, {.text = ""}}, {}}}),
            "<table>\n"
            "<thead>\n"
            "<tr><th scope=\"col\">Name</th><th scope=\"col\" style=\"text-align:right\">Sum</th></tr>\n"
            "</thead>\n"
            "<tbody>\n"
            "<tr><td>a &amp; b</td><td style=\"text-align:right\">1.5</td></tr>\n"
            "<tr><td>c<br>\nd</td><td style=\"text-align:right\"></td></tr>\n"
            "</tbody>\n"
            "</table>\n");
}

TEST(HtmlTables, MayBeEmptyOrHaveNothingButAHead) {
  EXPECT_EQ(tableOf({column()}, {}), "<table>\n</table>\n");
  EXPECT_EQ(tableOf({column()}, {{{{.text = "a"}}, {.cells = {}, .header = true, .repeated = true}}}),
            "<table>\n<thead>\n<tr><th scope=\"col\">a</th></tr>\n</thead>\n</table>\n");
}

TEST(HtmlTables, HaveHeadersOfRowsAndHeaderRowsAmongTheOthers) {
  EXPECT_EQ(tableOf({column(), column()}, {{{{.text = "a", .header = true}, {.text = "b"}}, {}},
                                           {{{.text = "c"}, {.text = "d"}}, {.cells = {}, .header = true}}}),
            "<table>\n"
            "<tbody>\n"
            "<tr><th scope=\"row\">a</th><td>b</td></tr>\n"
            "<tr><th scope=\"col\">c</th><th scope=\"col\">d</th></tr>\n"
            "</tbody>\n"
            "</table>\n");
}

TEST(HtmlTables, HaveCellsWithSpansColorsAndAlignment) {
  EXPECT_EQ(tableOf({column(), column(), column(Align::Right)},
                    rowsOf({{.text = "a", .align = Align::Center, .span = 2, .color = 0xFF0000},
                            {.text = "b", .background = 0x00FF00}})),
            "<table>\n"
            "<tbody>\n"
            "<tr><td colspan=\"2\" style=\"text-align:center;color:#ff0000\">a</td>"
            "<td style=\"text-align:right;background-color:#00ff00\">b</td></tr>\n"
            "</tbody>\n"
            "</table>\n");
}

TEST(HtmlTables, TakeTheAlignmentOfTheColumnWhereACellBegins) {
  EXPECT_EQ(tableOf({column(), column(), column(Align::Right)}, rowsOf({{.text = "a", .span = 2}, {.text = "b"}})),
            "<table>\n"
            "<tbody>\n"
            "<tr><td colspan=\"2\">a</td><td style=\"text-align:right\">b</td></tr>\n"
            "</tbody>\n"
            "</table>\n");
}

TEST(HtmlTables, BeginColumnsOfTextsAtTheRightWhereTheLanguageDoes) {
  EXPECT_EQ(tableOf({column(), column(Align::Right)}, rowsOf({{.text = "a"}, {.text = "1"}}), {{"language", "fa"}}),
            "<table>\n<tbody>\n<tr><td>a</td><td>1</td></tr>\n</tbody>\n</table>\n");
}

TEST(HtmlTables, MarkDatesSoThatTheyAreNotDivided) {
  EXPECT_EQ(tableOf({column(), column(), column(), column(Align::Center)},
                    rowsOf({{.text = "2026-01-31"},
                            {.text = "2026-01-32"},
                            {.text = "31.1.2026", .type = ValueType::Date},
                            {.text = "2026-01-31 10:00:00", .type = ValueType::Time, .color = 0xFF0000}})),
            "<table>\n"
            "<tbody>\n"
            "<tr><td class=\"date\">2026-01-31</td><td>2026-01-32</td><td class=\"date\">31.1.2026</td>"
            "<td class=\"date\" style=\"text-align:center;color:#ff0000\">2026-01-31 10:00:00</td></tr>\n"
            "</tbody>\n"
            "</table>\n");
}

TEST(HtmlTables, HaveWidthsWhereTheHostGaveThem) {
  EXPECT_EQ(tableOf({column(Align::Left, 1), column(Align::Left, 2)}, {}),
            "<table style=\"width:100%\">\n"
            "<colgroup><col style=\"width:33.33%\"><col style=\"width:66.67%\"></colgroup>\n"
            "</table>\n");
  EXPECT_EQ(tableOf({column(Align::Left, 3), column()}, {}),
            "<table style=\"width:100%\">\n"
            "<colgroup><col style=\"width:50%\"><col></colgroup>\n"
            "</table>\n");
}

// The start tag of a table of so many columns.
std::string wideTable(std::size_t columns, std::size_t longestWord, const SettingList& list = {}) {
  Column column;
  column.align = Align::Left;
  column.longestWord = longestWord;
  const std::string table = tableOf(std::vector<Column>(columns, column), {}, list);
  return table.substr(0, table.find('\n'));
}

TEST(HtmlTables, ArePrintedSmallerWhereTheirWordsNeedIt) {
  EXPECT_EQ(wideTable(8, 8), "<table>");
  EXPECT_EQ(wideTable(10, 8), "<table class=\"wide\" style=\"--print:8.9pt\">");
  EXPECT_EQ(wideTable(10, 8, {{"landscape", "yes"}}), "<table>");
  EXPECT_EQ(wideTable(100, 8), "<table class=\"wide crowded\" style=\"--print:5pt\">");
}

TEST(HtmlTables, ArePrintedWithSpaceForWideFontsWhereTextBeginsAtTheRight) {
  EXPECT_EQ(wideTable(8, 8, {{"language", "ar"}}), "<table class=\"wide\" style=\"--print:9pt\">");
  EXPECT_EQ(wideTable(10, 8, {{"language", "ar"}}), "<table class=\"wide\" style=\"--print:7.8pt\">");
}

TEST(HtmlTables, HaveCellsWithSpansOfText) {
  EventLog log;
  log.write({.kind = EventKind::BeginSpan, .span = Span::Strong});
  log.write({.kind = EventKind::Text, .text = "a < b"});
  log.write({.kind = EventKind::EndSpan, .span = Span::Strong});
  EXPECT_EQ(
      tableOf({column()}, rowsOf({{.text = "a < b", .content = &log, .contentBegin = 0, .contentEnd = log.size()}})),
      "<table>\n<tbody>\n<tr><td><strong>a &lt; b</strong></td></tr>\n</tbody>\n</table>\n");
}

TEST(HtmlTables, MayBeInTheItemOfALooseList) {
  const std::string body =
      htmlOf([](DocumentWriter& writer) {
        EventLog log;
        log.write({.kind = EventKind::Text, .text = "b"});
        const std::vector<Cell> cells = {{.text = "b", .content = &log, .contentBegin = 0, .contentEnd = log.size()}};
        writer.write({.kind = EventKind::BeginList});
        writer.write({.kind = EventKind::BeginItem});
        writer.write({.kind = EventKind::Text, .text = "a"});
        writer.beginTable({"", {column()}});
        writer.row({.cells = cells});
        writer.endTable();
        writer.write({.kind = EventKind::EndItem});
        writer.write({.kind = EventKind::EndList});
      }).body();
  EXPECT_EQ(body,
            "<ul>\n"
            "<li><p>a</p>\n"
            "<table>\n<tbody>\n<tr><td>b</td></tr>\n</tbody>\n</table>\n"
            "</li>\n"
            "</ul>\n");
}

TEST(HtmlTables, HaveCellsOfAnyLength) {
  for (const std::size_t size : {8000U, 8100U, 8190U, 8200U, 200'000U}) {
    const std::string text(size, '&');
    std::string escaped;
    for (std::size_t i = 0; i < size; ++i) {
      escaped += "&amp;";
    }
    EXPECT_EQ(tableOf({column()}, rowsOf({{.text = text}})),
              "<table>\n<tbody>\n<tr><td>" + escaped + "</td></tr>\n</tbody>\n</table>\n");
  }
}

}  // namespace
}  // namespace scrivalen::document
