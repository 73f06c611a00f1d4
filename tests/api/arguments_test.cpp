#include "api/api_support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

using namespace scrivalen::test;

namespace {

// A struct of a later version of the interface.
template <typename Struct>
struct Longer {
  Struct known;
  std::uint64_t further[2];
};

scrivalen_column column() {
  scrivalen_column result{};
  result.size = sizeof result;
  return result;
}

// What begin_table says about a column.
template <typename Change>
std::string refusedColumn(Change change) {
  const Written document;
  scrivalen_column columns[] = {column(), column()};
  change(columns[1]);
  EXPECT_EQ(scrivalen_begin_table(document, columns, 2, nullptr), SCRIVALEN_MISUSE);
  return std::string(document.error());
}

scrivalen_cell_style cellStyle() {
  scrivalen_cell_style result{};
  result.size = sizeof result;
  return result;
}

template <typename Change>
std::string refusedCell(Change change) {
  const Written document;
  scrivalen_begin_table(document, nullptr, 2, nullptr);
  scrivalen_begin_row(document, 0);
  scrivalen_cell_style style = cellStyle();
  change(style);
  EXPECT_EQ(scrivalen_begin_cell(document, &style), SCRIVALEN_MISUSE);
  return std::string(document.error());
}

}  // namespace

TEST(DocumentArguments, NullTextsAreEmpty) {
  Written document;
  EXPECT_EQ(scrivalen_set(document, "title", nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_set(document, nullptr, nullptr), SCRIVALEN_UNKNOWN_SETTING);
  EXPECT_EQ(scrivalen_begin_section(document, nullptr, nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_heading(document, 1, nullptr, kNul), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_paragraph(document, nullptr, 7), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_begin_paragraph(document, nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_text(document, nullptr, kNul), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_begin_colored(document, nullptr, nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_begin_link(document, nullptr, nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_begin_language(document, nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_anchor(document, nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_image(document, nullptr, 0, nullptr, 0), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_image(document, nullptr, 1, nullptr, 0), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_image_file(document, nullptr, nullptr, 0), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_raw(document, "html", nullptr, kNul), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_raw(document, nullptr, nullptr, kNul), SCRIVALEN_UNKNOWN_FORMAT);
  document.closed();
  EXPECT_EQ(document.result, SCRIVALEN_OK);
}

TEST(DocumentArguments, ALengthMayEndATextBeforeItsNul) {
  Written document;
  scrivalen_paragraph(document, "abcdef", 3);
  scrivalen_paragraph(document, "abc\0def", 7);
  EXPECT_EQ(document.closed(),
            "abc\n\nabc\xEF\xBF\xBD"
            "def\n");
}

TEST(DocumentArguments, AnOutputNeedsAPathAFormatAndAFunction) {
  Written document;
  EXPECT_EQ(scrivalen_add_file(document, nullptr, "text"), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "the path of an output is empty");
  EXPECT_EQ(scrivalen_add_file(document, "", nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_add_file(document, "a.txt", "word"), SCRIVALEN_UNKNOWN_FORMAT);
  EXPECT_EQ(document.error().substr(0, 44), "the format 'word' is unknown; the formats ar");
  EXPECT_EQ(scrivalen_add_file(document, "folder.txt/a", nullptr), SCRIVALEN_UNKNOWN_FORMAT);
  EXPECT_EQ(document.error().substr(0, 55), "the extension of 'folder.txt/a' is not that of a format");
  EXPECT_EQ(scrivalen_add_stream(document, "text", nullptr, nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "the function of a stream is null");
  EXPECT_EQ(scrivalen_add_stream(document, nullptr, MemoryStream::write, nullptr), SCRIVALEN_UNKNOWN_FORMAT);
  EXPECT_EQ(scrivalen_output_count(document), 1u);
  EXPECT_EQ(scrivalen_output_result(document, 1), SCRIVALEN_MISUSE);
  EXPECT_STREQ(scrivalen_output_error(document, 1), "");
}

TEST(DocumentArguments, NumbersOutOfRangeAreRefused) {
  Written document;
  EXPECT_EQ(scrivalen_heading(document, 0, "text", kNul), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_begin_heading(document, 7, nullptr, nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "the level of a heading is 1 to 6");
  EXPECT_EQ(scrivalen_begin_list(document, 1, -1, 0), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_begin_list(document, 0, -1, 0), SCRIVALEN_OK);
  for (const int task : {-1, 3}) {
    EXPECT_EQ(scrivalen_begin_item(document, task), SCRIVALEN_MISUSE);
  }
  EXPECT_EQ(document.error(), "the task of an item is 0, 1 or 2");
  EXPECT_EQ(scrivalen_begin_item(document, 0), SCRIVALEN_OK);
  for (const int kind : {-1, 0, 8, 256 + SCRIVALEN_STRONG}) {
    EXPECT_EQ(scrivalen_begin_span(document, kind), SCRIVALEN_MISUSE);
  }
  EXPECT_EQ(document.error(), "the kind of a span is 1 to 7");
  for (const double points : {0.0, -1.0, 1000.5, std::nan(""), std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(scrivalen_begin_sized(document, points), SCRIVALEN_MISUSE);
  }
  EXPECT_EQ(scrivalen_image(document, nullptr, 0, nullptr, std::nan("")), SCRIVALEN_MISUSE);
  document.closed();
  EXPECT_EQ(document.result, SCRIVALEN_OK);
}

TEST(DocumentArguments, AnUnknownColourIsNamed) {
  const Written document;
  scrivalen_begin_paragraph(document, nullptr);
  EXPECT_EQ(scrivalen_begin_colored(document, "reddish", nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "the colour 'reddish' is unknown");
  EXPECT_EQ(scrivalen_begin_colored(document, "red", "#12345"), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "the colour '#12345' is unknown");
  EXPECT_EQ(scrivalen_begin_colored(document, "bad \xFF", nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "the colour 'bad \xEF\xBF\xBD' is unknown");
  EXPECT_EQ(refusedCell([](scrivalen_cell_style& style) { style.color = "x"; }), "the colour 'x' is unknown");
  EXPECT_EQ(refusedCell([](scrivalen_cell_style& style) { style.background = "y"; }), "the colour 'y' is unknown");
}

TEST(DocumentArguments, TheStyleOfACellIsChecked) {
  EXPECT_EQ(refusedCell([](scrivalen_cell_style& style) { style.align = 5; }), "an alignment is 0 to 4");
  EXPECT_EQ(refusedCell([](scrivalen_cell_style& style) { style.align = -1; }), "an alignment is 0 to 4");
  EXPECT_EQ(refusedCell([](scrivalen_cell_style& style) { style.span = -1; }), "a cell spans 1 to 16,384 columns");
  EXPECT_EQ(refusedCell([](scrivalen_cell_style& style) { style.span = 16385; }), "a cell spans 1 to 16,384 columns");
}

TEST(DocumentArguments, TheColumnsOfATableAreChecked) {
  EXPECT_EQ(refusedColumn([](scrivalen_column& of) { of.type = 7; }), "column 1: the type of a column is 0 to 6");
  EXPECT_EQ(refusedColumn([](scrivalen_column& of) { of.align = 5; }), "column 1: an alignment is 0 to 4");
  for (const double width : {-1.0, 5e-324, 1.1e6, 1e300, std::nan(""), std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(refusedColumn([&](scrivalen_column& of) { of.width = width; }),
              "column 1: the width of a column is 0, or from 0.000001 to 1,000,000");
  }
  for (const int decimals : {-2, 16}) {
    EXPECT_EQ(refusedColumn([&](scrivalen_column& of) { of.decimals = decimals; }),
              "column 1: the decimals of a column are -1 to 15");
  }
  EXPECT_EQ(refusedColumn([](scrivalen_column& of) { of.format = "0.0 EUR?"; }),
            "column 1: the format '0.0 EUR?' of a column is unknown");
}

TEST(DocumentArguments, ATableHasAtMostAMillionColumns) {
  const Written document;
  EXPECT_EQ(scrivalen_begin_table(document, nullptr, kNul, nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_begin_table(document, nullptr, 1000001, nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "a table has at most 1,000,000 columns");
  EXPECT_EQ(scrivalen_result(document), SCRIVALEN_OK);
}

TEST(DocumentArguments, AStructTellsItsSize) {
  const Written document;
  scrivalen_paragraph_style style{0, SCRIVALEN_LEFT};
  for (const std::size_t size : {std::size_t{0}, sizeof style - 1}) {
    style.size = size;
    EXPECT_EQ(scrivalen_begin_paragraph(document, &style), SCRIVALEN_MISUSE);
    EXPECT_EQ(scrivalen_begin_heading(document, 1, nullptr, &style), SCRIVALEN_MISUSE);
  }
  EXPECT_EQ(document.error(), "the size of a struct is not set, or is out of range");
  EXPECT_EQ(refusedCell([](scrivalen_cell_style& cell) { cell.size = 0; }), document.error());
  EXPECT_EQ(refusedColumn([](scrivalen_column& of) { of.size = 0; }), document.error());
  EXPECT_EQ(refusedColumn([](scrivalen_column& of) { of.size += 8; }), document.error());
}

// A size that was never set must not lead to a second element far away.
TEST(DocumentArguments, AStructHasAtMost4096Bytes) {
  const Written document;
  scrivalen_column columns[] = {column(), column()};
  for (const std::uint64_t size : {std::uint64_t{4097}, std::uint64_t{1} << 46, ~std::uint64_t{0}}) {
    columns[0].size = static_cast<std::size_t>(size);
    EXPECT_EQ(scrivalen_begin_table(document, columns, 2, nullptr), SCRIVALEN_MISUSE);
    EXPECT_EQ(document.error(), "the size of a struct is not set, or is out of range");
  }
  struct {
    scrivalen_column known;
    char further[4096 - sizeof(scrivalen_column)];
  } largest{};
  largest.known.size = sizeof largest;
  EXPECT_EQ(scrivalen_begin_table(document, &largest.known, 1, nullptr), SCRIVALEN_OK);
}

TEST(DocumentArguments, AStructOfALaterVersionIsTaken) {
  Written document;
  Longer<scrivalen_column> columns[2] = {};
  columns[0].known.size = columns[1].known.size = sizeof columns[0];
  columns[1].known.decimals = 2;
  std::memset(columns[0].further, 0xFF, sizeof columns[0].further);
  EXPECT_EQ(scrivalen_begin_table(document, &columns[0].known, 2, nullptr), SCRIVALEN_OK);
  scrivalen_begin_row(document, 0);
  Longer<scrivalen_cell_style> style{};
  style.known.size = sizeof style;
  EXPECT_EQ(scrivalen_begin_cell(document, &style.known), SCRIVALEN_OK);
  scrivalen_cell(document, "a", kNul);
  scrivalen_end(document);
  scrivalen_cell_number(document, 1);
  EXPECT_EQ(document.closed(), "a  1.00\n");
}

TEST(DocumentArguments, AStyleOfALaterVersionIsTaken) {
  Written document("html");
  Longer<scrivalen_paragraph_style> style{};
  std::memset(style.further, 0xFF, sizeof style.further);
  style.known = {sizeof style, SCRIVALEN_CENTER};
  EXPECT_EQ(scrivalen_begin_heading(document, 1, "id", &style.known), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_end(document), SCRIVALEN_OK);
  style.known.align = SCRIVALEN_RIGHT;
  EXPECT_EQ(scrivalen_begin_paragraph(document, &style.known), SCRIVALEN_OK);
  const std::string& page = document.closed();
  EXPECT_NE(page.find("<h1 id=\"id\" style=\"text-align:center\">"), std::string::npos) << page;
  EXPECT_NE(page.find("<p style=\"text-align:right\">"), std::string::npos) << page;
}

TEST(DocumentArguments, ColumnDataOfALaterVersionIsTaken) {
  Written document;
  const std::int64_t numbers[] = {1, 2};
  const std::uint8_t valid = 2;
  Longer<scrivalen_column_data> columns[2] = {};
  for (Longer<scrivalen_column_data>& column : columns) {
    std::memset(column.further, 0xFF, sizeof column.further);
    column.known.size = sizeof column;
    column.known.type = SCRIVALEN_INTEGER;
    column.known.values = numbers;
  }
  columns[1].known.validity = &valid;
  scrivalen_begin_table(document, nullptr, 2, nullptr);
  EXPECT_EQ(scrivalen_rows(document, &columns[0].known, 2, 2), SCRIVALEN_OK) << document.error();
  columns[1].known.size = sizeof columns[1].known;
  EXPECT_EQ(scrivalen_rows(document, &columns[0].known, 2, 2), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.closed(), "1\n2  2\n");
}

TEST(DocumentArguments, AWarningHasNoMoreBytesThanTheCallersStruct) {
  Written document;
  scrivalen_paragraph(document, "\x01", 1);
  document.closed();
  Longer<scrivalen_warning> warning{};
  std::memset(&warning, 0xAB, sizeof warning);
  warning.known.size = sizeof warning.known - 1;
  EXPECT_EQ(scrivalen_next_warning(document, &warning.known), 0);
  EXPECT_EQ(scrivalen_next_warning(document, nullptr), 0);
  warning.known.size = sizeof warning;
  EXPECT_EQ(scrivalen_next_warning(document, &warning.known), 1);
  EXPECT_EQ(warning.known.size, sizeof warning);
  EXPECT_EQ(warning.known.output, kNul);
  EXPECT_EQ(warning.known.code, 1);
  EXPECT_STREQ(warning.known.message, "control characters, replaced by U+FFFD");
  EXPECT_EQ(warning.further[0], 0xABABABABABABABAB);
  EXPECT_EQ(scrivalen_next_warning(document, &warning.known), 0);
}

TEST(DocumentArguments, MarkupIsForAFormatThatHasIt) {
  Written document;
  scrivalen_begin_paragraph(document, nullptr);
  for (const char* format : {"html", "xml", "rtf", "markdown"}) {
    EXPECT_EQ(scrivalen_raw(document, format, "<b>", kNul), SCRIVALEN_OK);
  }
  for (const char* format : {"text", "pdf", "HTML"}) {
    EXPECT_EQ(scrivalen_raw(document, format, "<b>", kNul), SCRIVALEN_UNKNOWN_FORMAT);
  }
  scrivalen_text(document, "text", kNul);
  EXPECT_EQ(document.closed(), "text\n");
}

TEST(DocumentArguments, APictureThatCannotBeReadLeavesItsTextAndAWarning) {
  Written document;
  EXPECT_EQ(scrivalen_image_file(document, "no such \xFF picture.png", "the logo", 0), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_image(document, "GIF89a", 6, "the plan", 0), SCRIVALEN_OK);
  EXPECT_NE(document.closed().find("the logo"), std::string::npos);
  EXPECT_NE(document.closed().find("the plan"), std::string::npos);
  const std::string warnings = warningsOf(document);
  EXPECT_EQ(warnings.find("input 4 1 cannot use the picture 'no such \xEF\xBF\xBD picture.png': "), 0u) << warnings;
  EXPECT_NE(warnings.find("; its text takes its place\ninput 4 1 cannot use a picture: "), std::string::npos)
      << warnings;
  EXPECT_NE(warnings.find("input 4 1 cannot use a picture: it is neither PNG nor JPEG; its text takes its place\n"),
            std::string::npos)
      << warnings;
}

TEST(DocumentArguments, APictureWithoutATextThatCannotBeReadLeavesAWarning) {
  Written document;
  EXPECT_EQ(scrivalen_image(document, "GIF89a", 6, "", 0), SCRIVALEN_OK);
  document.closed();
  EXPECT_EQ(warningsOf(document),
            "input 4 1 cannot use a picture: it is neither PNG nor JPEG; nothing takes its place\n");
}
