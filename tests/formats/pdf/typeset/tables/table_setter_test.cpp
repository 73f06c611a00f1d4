#include "document/pictures/picture.h"
#include "formats/pdf/typeset/pdf_objects.h"
#include "formats/pdf/typeset/tables/made_table.h"
#include "support/documents/pictures.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace scrivalen;
using namespace scrivalen::test;
using document::Align;
using document::Column;

namespace {

// Points that differ by less than what a content's numbers are rounded to.
constexpr double kRounding = 0.11;

// The advances of Liberation Sans, of 9 points; of a figure also in bold.
constexpr double kFigure = 9 * 0.556;

std::vector<Column> aligned(std::initializer_list<Align> aligns) {
  std::vector<Column> columns;
  for (const Align align : aligns) {
    columns.emplace_back().align = align;
  }
  return columns;
}

std::string repeated(std::string_view text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) {
    all += text;
  }
  return all;
}

std::size_t occurrences(const std::string& text, std::string_view part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

std::shared_ptr<const document::Picture> pictureOf(const std::string& bytes) {
  std::string reason;
  auto picture = document::Picture::read(bytes, reason);
  EXPECT_NE(picture, nullptr) << reason;
  return picture;
}

void addCell(MadeDocument& document, const document::CellStyle& style, std::string_view text) {
  document.beginCell(style);
  document.text(text);
  document.end();
}

}  // namespace

TEST(TableSetter, DrawsRowsUnderTheirHeader) {
  MadeTable table;
  table.addRow({"Name", "Amount"}, true);
  table.addRow({"Anna", "12.00"});
  table.addRow({"Ben", "7.50"});
  EXPECT_EQ(table.lines(), "--- 595x842\nName | Amount\nAnna | 12.00\nBen | 7.50\n");
}

TEST(TableSetter, SetsHeadersInBold) {
  MadeTable table;
  table.addRow({"Name"}, true);
  table.addRow({"Anna"});
  const DrawnPage page = table.pages().front();
  EXPECT_EQ(textOn(page, "Name").font, "LiberationSans-Bold");
  EXPECT_EQ(textOn(page, "Anna").font, "LiberationSans");
}

TEST(TableSetter, EndsNumbersAtTheRightOfTheirColumn) {
  MadeTable table;
  table.addRow({"Name", "Count"}, true);
  table.addRow({"Anna", "1"});
  table.addRow({"Ben", "12345"});
  const DrawnPage page = table.pages().front();
  EXPECT_NEAR(textOn(page, "1").x + kFigure, textOn(page, "12345").x + 5 * kFigure, kRounding);
  EXPECT_NEAR(textOn(page, "Anna").x, textOn(page, "Ben").x, kRounding);
}

// The paddings of two cells are 8 points.
TEST(TableSetter, SeparatesNumbersFromTheTextBesideThem) {
  MadeTable table(aligned({Align::Right, Align::Left}));
  table.addRow({"12345", "Anna"});
  const DrawnPage page = table.pages().front();
  const double endOfNumber = textOn(page, "12345").x + 5 * kFigure;
  EXPECT_NEAR(textOn(page, "Anna").x - endOfNumber, 13, 2 * kRounding);
}

// The area of a cell has no gap on its right.
TEST(TableSetter, ColoursCellsUpToTheTextBesideTheirNumbers) {
  MadeTable table(aligned({Align::Right, Align::Left}));
  table.beginRow(false);
  addCell(table, {.background = 0x00FF00}, "12345");
  addCell(table, {}, "Anna");
  table.end();
  const DrawnPage page = table.pages().front();
  ASSERT_FALSE(page.areas.empty());
  EXPECT_EQ(page.areas[0].color, 0x00FF00u);
  EXPECT_NEAR(page.areas[0].left + page.areas[0].width, textOn(page, "Anna").x - 4, kRounding);
}

TEST(TableSetter, AlignsCellsAsTheirColumnOrTheySay) {
  MadeTable table(aligned({Align::Left, Align::Center, Align::Right}));
  table.addRow({"00000", "00000", "00000"});
  table.addRow({"0", "0", "0"});
  table.beginRow(false);
  addCell(table, {.align = Align::Right}, "1");
  addCell(table, {.align = Align::Left}, "1");
  addCell(table, {.align = Align::Center}, "1");
  table.end();
  const std::vector<DrawnText> texts = table.pages().front().texts;
  ASSERT_EQ(texts.size(), 9u);
  const auto offset = [&](std::size_t cell) { return (texts[cell].x - texts[cell % 3].x) / kFigure; };
  EXPECT_NEAR(offset(3), 0, kRounding);
  EXPECT_NEAR(offset(4), 2, kRounding);
  EXPECT_NEAR(offset(5), 4, kRounding);
  EXPECT_GT(offset(6), 3.9);
  EXPECT_LT(offset(7), 0.1);
  EXPECT_LT(offset(8), 2.1);
}

TEST(TableSetter, RepeatsHeaderRowsOnEachPage) {
  MadeTable table;
  table.addRow({"Group", ""}, true);
  table.addRow({"Number", "Name"}, true);
  for (int i = 1; i <= 150; ++i) {
    table.addRow({std::to_string(i), "somebody"});
  }
  const std::vector<DrawnPage> pages = table.pages();
  ASSERT_EQ(pages.size(), 3u);
  int next = 1;
  for (const DrawnPage& page : pages) {
    const std::string lines = linesOf(page);
    const std::string begin = "Group\nNumber | Name\n" + std::to_string(next) + " | somebody\n";
    EXPECT_EQ(lines.substr(0, begin.size()), begin);
    next += static_cast<int>(occurrences(lines, "somebody"));
  }
  EXPECT_EQ(next, 151);
}

TEST(TableSetter, MovesARowToTheNextPageRatherThanBreakingIt) {
  MadeTable table;
  const std::string tenLines = repeated("line\n", 9) + "last";
  for (int i = 0; i < 9; ++i) {
    table.addRow({tenLines});
  }
  for (const DrawnPage& page : table.pages()) {
    const std::string lines = linesOf(page);
    EXPECT_EQ(lines.substr(0, 4), "line");
    EXPECT_EQ(lines.substr(lines.size() - 4), "last");
  }
}

TEST(TableSetter, BreaksARowThatNoPageHolds) {
  MadeTable table;
  table.addRow({"H", "Text"}, true);
  table.addRow({"1", repeated("line\n", 149) + "last"});
  table.addRow({"2", "after"});
  const std::vector<DrawnPage> pages = table.pages();
  ASSERT_EQ(pages.size(), 3u);
  std::size_t lines = 0;
  for (const DrawnPage& page : pages) {
    EXPECT_EQ(linesOf(page).substr(0, 8), "H | Text");
    lines += occurrences(linesOf(page), "line");
  }
  EXPECT_EQ(lines, 149u);
  EXPECT_EQ(occurrences(linesOf(pages), "1 | line"), 1u) << "a short cell is on the row's first page";
  EXPECT_EQ(linesOf(pages.back()).substr(linesOf(pages.back()).find("last")), "last\n2 | after");
}

TEST(TableSetter, SetsARowAfterABrokenOneOnTheSamePage) {
  MadeTable table;
  table.addRow({repeated("line\n", 70)});
  table.addRow({"after"});
  const std::vector<DrawnPage> pages = table.pages();
  ASSERT_EQ(pages.size(), 2u);
  EXPECT_LT(textOn(pages[1], "after").baseline, 250);
}

TEST(TableSetter, GivesASpanTheSpaceOfItsColumns) {
  MadeTable table;
  table.addRow({"aaaa", "bbbb", "cccc"});
  table.beginRow(false);
  addCell(table, {.span = 2}, "over two");
  addCell(table, {}, "one");
  table.end();
  table.beginRow(false);
  addCell(table, {.align = Align::Right, .span = 3}, "over all");
  table.end();
  const DrawnPage page = table.pages().front();
  EXPECT_EQ(linesOf(page), "aaaa | bbbb | cccc\nover two | one\nover all");
  EXPECT_NEAR(textOn(page, "one").x, textOn(page, "cccc").x, kRounding);
  EXPECT_GT(textOn(page, "over all").x, textOn(page, "bbbb").x);
}

TEST(TableSetter, ColoursCellsOverTheirWholeArea) {
  MadeTable table(aligned({Align::Left, Align::Left}), {{"widths", "equal"}});
  table.beginRow(false);
  addCell(table, {.color = 0xFF0000, .background = 0x00FF00}, "red on green");
  addCell(table, {}, "plain");
  table.end();
  const DrawnPage page = table.pages().front();
  EXPECT_EQ(textOn(page, "red on green").color, 0xFF0000u);
  EXPECT_EQ(textOn(page, "plain").color, 0u);
  ASSERT_EQ(page.areas.size(), 2u);
  EXPECT_EQ(page.areas[0].color, 0x00FF00u);
  EXPECT_NEAR(page.areas[0].left, 56.7, kRounding);
  EXPECT_NEAR(page.areas[0].width, 240.9, kRounding);
  EXPECT_NEAR(page.areas[1].width, 481.9, kRounding) << "the rule below the row";
  EXPECT_NEAR(page.areas[1].top + page.areas[1].height, page.areas[0].top + page.areas[0].height, kRounding);
}

TEST(TableSetter, DrawsRowsOfFewerCellsAndJoinsThoseThatAreTooMany) {
  MadeTable table(aligned({Align::Left, Align::Left}));
  table.addRow({"a"});
  table.addRow({"b", "c", "d"});
  table.addRow({});
  table.addRow({"e", "f"});
  EXPECT_EQ(table.lines(), "--- 595x842\na\nb | c\nd\ne | f\n");
}

TEST(TableSetter, DrawsNothingOfATableWithoutRows) {
  MadeTable table;
  table.end();
  table.paragraph("after");
  EXPECT_EQ(table.lines(), "--- 595x842\nafter\n");
}

TEST(TableSetter, DoesNotEndAPageForAWideTableWithoutRows) {
  MadeTable table{std::vector<Column>(500)};
  table.end();
  table.paragraph("after");
  EXPECT_EQ(table.lines(), "--- 595x842\nafter\n");
}

TEST(TableSetter, DrawsATableOfHeadersAlone) {
  MadeTable table;
  table.addRow({"Name", "Amount"}, true);
  EXPECT_EQ(table.lines(), "--- 595x842\nName | Amount\n");
}

TEST(TableSetter, KeepsAHeaderWithTheFirstRowAndTheHeadingBeforeThem) {
  MadeDocument document(*documentFormatOf("pdf"));
  for (int i = 0; i < 36; ++i) {
    document.paragraph("text");
  }
  document.heading(1, "Heading");
  document.beginTable({}, "");
  document.addRow({"Header"}, true);
  document.addRow({repeated("line\n", 5) + "last"});
  const std::vector<DrawnPage> pages = drawnPages(document.bytes());
  ASSERT_EQ(pages.size(), 2u);
  EXPECT_EQ(linesOf(pages[1]), "Heading\nHeader\nline\nline\nline\nline\nline\nlast");
}

TEST(TableSetter, KeepsAHeaderWithTwoRowsIfThereAreTwo) {
  const auto lastLinesOfFirstPage = [](const std::vector<std::string>& rows) {
    MadeDocument document(*documentFormatOf("pdf"));
    for (int i = 0; i < 36; ++i) {
      document.paragraph("text");
    }
    document.beginTable({}, "");
    document.addRow({"Header\nof two lines"}, true);
    for (const std::string& row : rows) {
      document.addRow({row});
    }
    const std::string lines = linesOf(drawnPages(document.bytes()).front());
    return lines.substr(lines.rfind("text"));
  };
  EXPECT_EQ(lastLinesOfFirstPage({"one"}), "text\nHeader\nof two lines\none");
  EXPECT_EQ(lastLinesOfFirstPage({"one", "two"}), "text");
  EXPECT_EQ(lastLinesOfFirstPage({"one", repeated("line\n", 50) + "last"}), "text\nHeader\nof two lines\none")
      << "a second row that takes much of a page is not waited for";
}

TEST(TableSetter, SetsATextAfterTheSampleInWhatOtherColumnsLeave) {
  MadeTable table;
  table.addRow({"Id", "Date", "Note"}, true);
  for (int i = 0; i < 650; ++i) {
    table.addRow({std::to_string(i), "2026-01-31", ""});
  }
  table.addRow({"650", "2026-01-31", "Customer called about the refund, which had not come."});
  const std::string lines = linesOf(table.pages().back());
  EXPECT_NE(lines.find("650 | 2026-01-31 | Customer called about the refund, which had not come."), lines.npos)
      << lines;
}

TEST(TableSetter, GivesAnEmptyColumnSpaceBesideLongTexts) {
  MadeTable table;
  table.addRow({"Text", "N"}, true);
  for (int i = 0; i < 600; ++i) {
    table.addRow({repeated("word ", 60), ""});
  }
  table.addRow({"last", "Customer called"});
  const std::string lines = linesOf(table.pages().back());
  EXPECT_NE(lines.find("last | Customer called"), lines.npos) << lines;
}

TEST(TableSetter, GivesTheRowsOfEachPartTheirOwnHeights) {
  MadeTable table;
  for (int row = 1; row <= 2; ++row) {
    table.beginRow(false);
    table.cell("row" + std::to_string(row));
    table.cell(repeated("line\n", 20) + "last");
    for (int i = 2; i < 100; ++i) {
      table.cell("column" + std::to_string(i));
    }
    table.end();
  }
  std::vector<double> distances;
  for (const DrawnPage& page : table.pages()) {
    double before = 0;
    for (const DrawnText& text : page.texts) {
      before = text.text == "row1" ? text.baseline : before;
      if (text.text == "row2") {
        distances.push_back(text.baseline - before);
      }
    }
  }
  ASSERT_GT(distances.size(), 3u);
  EXPECT_GT(distances.front(), 140);
  for (std::size_t part = 1; part < distances.size(); ++part) {
    EXPECT_LT(distances[part], 12) << part;
  }
}

TEST(TableSetter, IndentsATableInAQuoteAndBesideTheMarkerOfAnItem) {
  MadeDocument document(*documentFormatOf("pdf"));
  document.beginQuote();
  document.beginTable({}, "");
  document.addRow({"quoted"});
  document.end();
  document.end();
  document.beginList(true, 1, true);
  document.beginItem(document::Task::None);
  document.beginTable({}, "");
  document.addRow({"listed"});
  document.end();
  document.end();
  document.end();
  const DrawnPage page = drawnPages(document.bytes()).front();
  EXPECT_EQ(linesOf(page), "quoted\n1. | listed");
  EXPECT_NEAR(textOn(page, "quoted").x, 56.7 + 14 + 4, kRounding);
  EXPECT_GT(textOn(page, "listed").x, textOn(page, "1.").x + 10);
}

TEST(TableSetter, BreaksLinesInCells) {
  MadeTable table;
  table.beginRow(false);
  table.beginCell({});
  table.text("one");
  table.lineBreak();
  table.text("two");
  table.end();
  table.cell("beside");
  table.end();
  EXPECT_EQ(table.lines(), "--- 595x842\none | beside\ntwo\n");
}

TEST(TableSetter, WrapsTextAtWordsInItsColumn) {
  MadeTable table(aligned({Align::Left, Align::Left}), {{"widths", "equal"}});
  table.addRow({repeated("word ", 20), "beside"});
  EXPECT_EQ(table.lines(),
            "--- 595x842\n" + repeated("word ", 9) + "word | beside\n" + repeated("word ", 9) + "word\n");
}

TEST(TableSetter, DrawsSpansAndLinksInCells) {
  MadeTable table;
  table.beginRow(false);
  table.beginCell({});
  table.text("plain ");
  table.addSpan(document::Span::Strong, "strong");
  table.end();
  table.beginCell({});
  table.beginLink("https://example.org/", "");
  table.text("link");
  table.end();
  table.end();
  table.end();
  const DrawnPage page = table.pages().front();
  EXPECT_EQ(textOn(page, "strong").font, "LiberationSans-Bold");
  EXPECT_EQ(linesOf(page), "plain  | strong | link");
  ASSERT_EQ(page.links.size(), 1u);
  EXPECT_EQ(page.links[0].address, "https://example.org/");
  EXPECT_NEAR(page.links[0].left, textOn(page, "link").x, kRounding);
}

TEST(TableSetter, ScalesAPictureToItsColumn) {
  MadeTable table(aligned({Align::Left, Align::Left}), {{"widths", "equal"}});
  table.beginRow(false);
  table.beginCell({});
  table.image(pictureOf(greyPng(1000, 500)), "wide", 0, "");
  table.end();
  table.cell("beside");
  table.end();
  table.end();
  const PdfObjects objects(table.bytes());
  std::string contents;
  for (std::size_t number = 1; number < objects.size(); ++number) {
    const std::string content = objects.stream(static_cast<int>(number));
    contents += content.starts_with(".1 0 0 .1 0 0 cm") ? content : "";
  }
  // 240.95 points less the padding on both sides.
  EXPECT_NE(contents.find("q 2329.45 0 0 1164.72 "), std::string::npos) << contents;
}

TEST(TableSetter, MeasuresPicturesInPointsWhateverTheSizeOfTheText) {
  MadeTable table;
  table.beginRow(false);
  table.beginCell({});
  table.image(pictureOf(greyPng(40, 40)), "small", 30, "");
  table.end();
  table.cell("x");
  table.end();
  EXPECT_LT(textOn(table.pages().front(), "x").x, 56.7 + 1.15 * (30 + 8) + 5) << "the column is as wide as its picture";
}

TEST(TableSetter, EndsRightToLeftTextsAtTheRightOfTheirColumn) {
  MadeTable table(aligned({Align::Left, Align::Left}), {{"widths", "equal"}});
  table.addRow({"start", "end"});
  table.addRow({"\xD7\x90\xD7\x91", "end"});  // alef, bet
  const DrawnPage page = table.pages().front();
  ASSERT_EQ(page.texts.size(), 4u);
  EXPECT_EQ(page.texts[2].text, "\xD7\x91\xD7\x90") << "drawn from left to right";
  EXPECT_GT(page.texts[2].x, 250);
  EXPECT_LT(page.texts[2].x, 56.7 + 240.9 - 4);
}

// Where a row of a table has its texts, from left to right, and what it colours.
DrawnPage pageOfDirection(std::string_view language, std::string_view header) {
  MadeTable table({}, {{"language", language}});
  table.addRow({header, "2"}, true);
  table.beginRow(false);
  addCell(table, {.background = Rgb{0xEEEEEE}}, "one");
  table.beginCell({});
  table.text("many words in a cell ");
  table.addSpan(document::Span::Strong, "bold");
  table.end();
  table.end();
  table.addRow({"two", "22"});
  return table.pages().front();
}

TEST(TableSetter, PutsTheFirstColumnOnTheRightInTablesFromRightToLeft) {
  constexpr double kRight = 538.6;
  for (const auto& [language, header] : {std::pair("en", "\xD7\x90\xD7\x91"), std::pair("he-IL", "1")}) {
    const DrawnPage page = pageOfDirection(language, header);
    const DrawnText one = textOn(page, "one");
    EXPECT_NEAR(one.x + kFigure * 3, kRight - 4, 0.3);
    EXPECT_NEAR(textOn(page, "two").x, one.x, 3) << "both end at the right";
    EXPECT_LT(textOn(page, "bold").x, one.x);
    EXPECT_NEAR(textOn(page, "22").x + kFigure * 2, textOn(page, "bold").x + 19.5, 0.5);
    for (const DrawnArea& area : page.areas) {
      EXPECT_NEAR(area.left + area.width, kRight, kRounding) << area.color;
    }
  }
  const DrawnPage page = pageOfDirection("en", "1");
  EXPECT_NEAR(textOn(page, "one").x, 60.7, kRounding);
  EXPECT_NEAR(page.areas.front().left, 56.7, kRounding);
}

// The header decides if it has a letter, whatever the rows have.
TEST(TableSetter, SetsATableWithoutLettersInItsHeaderAsItsRowsAreRead) {
  const auto isMirrored = [](bool hasHeader, std::string_view first, std::string_view second) {
    MadeTable table;
    table.addRow({"1", "2", first}, hasHeader);
    table.addRow({"3", "4", second});
    const DrawnPage page = table.pages().front();
    return textOn(page, "1").x > textOn(page, "2").x;
  };
  constexpr std::string_view kHebrew = "\xD7\x90\xD7\x91";
  EXPECT_TRUE(isMirrored(false, kHebrew, ""));
  EXPECT_TRUE(isMirrored(true, "", kHebrew));
  EXPECT_FALSE(isMirrored(true, "Name", kHebrew));
  EXPECT_FALSE(isMirrored(false, "Name", kHebrew));
}

TEST(TableSetter, PutsTheMarkerOfATableFromRightToLeftOnTheRight) {
  MadeDocument document(*documentFormatOf("pdf"));
  document.set("language", "ar");
  document.beginList(false, 1, true);
  document.beginItem(document::Task::None);
  document.beginTable({}, "");
  document.addRow({"cell", "x"});
  document.end();
  document.end();
  document.end();
  const DrawnPage page = drawnPages(document.bytes()).front();
  EXPECT_GT(textOn(page, "\u2022").x, textOn(page, "cell").x);
  EXPECT_LT(textOn(page, "cell").x, 538.6 - 16);
  EXPECT_GT(textOn(page, "\u2022").x, 538.6 - 16);
}

TEST(TableSetter, TurnsThePagesOfAWideTableAndTheNextOnesBack) {
  MadeDocument document(*documentFormatOf("pdf"));
  document.paragraph("before");
  document.beginTable({}, "");
  document.beginRow(false);
  for (int i = 0; i < 12; ++i) {
    document.cell("0123456789abcdef");
  }
  document.end();
  document.end();
  document.paragraph("after");
  EXPECT_EQ(linesOf(drawnPages(document.bytes())), "--- 595x842\nbefore\n--- 842x595\n" +
                                                       repeated("0123456789abcdef | ", 11) +
                                                       "0123456789abcdef\n--- 595x842\nafter\n");
}

namespace {

// A table that no page holds.
constexpr int kWideColumns = 24;

void addWideRow(MadeDocument& document, const std::string& name, bool isHeader = false) {
  document.beginRow(isHeader);
  for (int i = 0; i < kWideColumns; ++i) {
    document.cell(name + std::to_string(100 + i) + "_abcdefghijklmnop");
  }
  document.end();
}

}  // namespace

TEST(TableSetter, DrawsAllPartsOfAPageOfRowsBeforeTheNextRows) {
  MadeTable table;
  addWideRow(table, "H", true);
  for (int row = 0; row < 110; ++row) {
    addWideRow(table, std::string(1, static_cast<char>('a' + row / 26)) + static_cast<char>('a' + row % 26));
  }
  const std::vector<DrawnPage> pages = table.pages();
  std::string order;
  for (const DrawnPage& page : pages) {
    std::string first = linesOf(page);
    first = first.substr(first.find('\n') + 1);
    order += first.substr(0, 5) + first.substr(first.find(" | "), 8) + "\n";
    EXPECT_EQ(linesOf(page).substr(0, 4), "H100") << "the first column, with its header, is in each part";
  }
  EXPECT_EQ(order,
            "aa100 | aa101\naa100 | aa109\naa100 | aa117\n"
            "ca100 | ca101\nca100 | ca109\nca100 | ca117\n"
            "ea100 | ea101\n");
}

TEST(TableSetter, DrawsAShortTableInPartsOnOnePage) {
  MadeTable table;
  addWideRow(table, "H", true);
  addWideRow(table, "a");
  const std::vector<DrawnPage> pages = table.pages();
  ASSERT_EQ(pages.size(), 1u);
  EXPECT_EQ(occurrences(linesOf(pages[0]), "H100"), 3u);
  EXPECT_EQ(occurrences(linesOf(pages[0]), "a123"), 1u);
}

TEST(TableSetter, ShowsAHeaderOverColumnsOfSeveralPartsInEachOfThem) {
  MadeTable table;
  table.beginRow(true);
  addCell(table, {.header = true}, "first");
  addCell(table, {.header = true, .span = 10, .background = 0x00FF00}, "ten");
  addCell(table, {.header = true, .span = kWideColumns - 11}, "others");
  table.end();
  addWideRow(table, "a");
  const DrawnPage page = table.pages().front();
  const std::string lines = linesOf(page);
  EXPECT_EQ(occurrences(lines, "first | ten\n"), 1u);
  EXPECT_EQ(occurrences(lines, "first | ten | others\n"), 1u);
  EXPECT_EQ(occurrences(lines, "first | others\n"), 1u);
  std::size_t green = 0;
  for (const DrawnArea& area : page.areas) {
    green += area.color == 0x00FF00 ? 1 : 0;
  }
  EXPECT_EQ(green, 2u);
}

TEST(TableSetter, SetsTextsOfTheFirstColumnForItsNarrowestPart) {
  MadeTable table;
  table.beginRow(false);
  addCell(table, {.span = 3},
          "a text that is over the first three columns and no wider than the first where it is alone");
  for (int i = 3; i < kWideColumns; ++i) {
    table.cell("cell" + std::to_string(i));
  }
  table.end();
  addWideRow(table, "a");
  for (const DrawnPage& page : table.pages()) {
    for (const DrawnText& text : page.texts) {
      if (text.text.find("first") != std::string::npos) {
        EXPECT_LT(text.x + static_cast<double>(text.text.size()) * text.size * 0.5, 56.7 + 120) << text.text;
      }
    }
  }
}
