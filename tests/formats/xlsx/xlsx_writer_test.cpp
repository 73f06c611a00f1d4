#include "api/api_support.h"
#include "support/captured_log.h"
#include "support/documents/workbook.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <initializer_list>

using namespace scrivalen::test;

namespace {

const std::string kFrozen = "<pane ySplit=\"1\" topLeftCell=\"A2\" activePane=\"bottomLeft\" state=\"frozen\"/>";

struct XlsxDocument : Written {
  XlsxDocument() : Written("xlsx") {}

  std::wstring file() {
    const std::wstring path = folder / L"made.xlsx";
    writeBytes(path, closed());
    EXPECT_EQ(result, SCRIVALEN_OK) << error();
    return path;
  }
  /// The cells, one a line, as in `A1 "text" bold`.
  std::string cells() { return readCells(file()); }
  /// The part of the file that holds the sheet and how it is shown.
  std::string sheet() { return workbookPart(file(), "xl/worksheets/sheet1.xml"); }
  /// Gives it a style sheet.
  void styles(std::string_view text) {
    const std::wstring path = folder / L"styles";
    writeBytes(path, text);
    EXPECT_EQ(scrivalen_set(get(), "styles", scrivalen::narrowPath(path).c_str()), SCRIVALEN_OK);
  }

  void end(int count = 1) {
    for (; count > 0; --count) {
      EXPECT_EQ(scrivalen_end(get()), SCRIVALEN_OK) << error();
    }
  }
  void text(const char* text) { EXPECT_EQ(scrivalen_text(get(), text, kNul), SCRIVALEN_OK) << error(); }
  void paragraph(const char* text) { EXPECT_EQ(scrivalen_paragraph(get(), text, kNul), SCRIVALEN_OK); }
  void heading(int level, const char* text) { EXPECT_EQ(scrivalen_heading(get(), level, text, kNul), SCRIVALEN_OK); }
  void span(int kind, const char* content) {
    scrivalen_begin_span(get(), kind);
    text(content);
    end();
  }
  void item(const char* content, int task = 0) {
    scrivalen_begin_item(get(), task);
    text(content);
    end();
  }
  void row(std::initializer_list<const char*> cells, int header = 0) {
    scrivalen_begin_row(get(), header);
    for (const char* cell : cells) {
      scrivalen_cell(get(), cell, kNul);
    }
    end();
  }
  void table(std::initializer_list<const char*> header, std::initializer_list<const char*> row1) {
    scrivalen_begin_table(get(), nullptr, 0, nullptr);
    row(header, 1);
    row(row1);
    end();
  }

  const TemporaryFolder folder;
};

}  // namespace

TEST(XlsxDocument, HasARowForEachBlockAndBoldHeadings) {
  XlsxDocument document;
  document.heading(1, "A & B");
  scrivalen_begin_paragraph(document, nullptr);
  document.text("one ");
  document.span(SCRIVALEN_EMPHASIS, "two");
  document.text(" ");
  document.span(SCRIVALEN_STRONG, "three");
  document.text("\nfour");
  document.end();
  document.heading(2, "C");
  EXPECT_EQ(document.cells(), "A1 \"A & B\" bold\nA2 \"one two three\nfour\"\nA3 \"C\" bold\n");
}

TEST(XlsxDocument, HasOneCellForACellOfSeveralStyles) {
  XlsxDocument document;
  scrivalen_begin_table(document, nullptr, 0, nullptr);
  document.row({"a b", "c"}, 1);
  scrivalen_begin_row(document, 0);
  scrivalen_begin_cell(document, nullptr);
  document.text("1 ");
  document.span(SCRIVALEN_CODE, "3");
  document.text(" ");
  scrivalen_begin_link(document, "https://x.org", nullptr);
  document.text("4");
  document.end(3);
  EXPECT_EQ(document.cells(), "A1 \"a b\" bold\nB1 \"c\" bold\nA2 \"1 3 4 (https://x.org)\"\n");
}

TEST(XlsxDocument, KeepsWhatLooksLikeANumberOrAFormula) {
  XlsxDocument document;
  document.table({"a", "b"}, {"007", "=1+2"});
  EXPECT_EQ(document.cells(), "A1 \"a\" bold\nB1 \"b\" bold\nA2 \"007\"\nB2 \"=1+2\"\n");
}

TEST(XlsxDocument, ShowsValuesAsTexts) {
  XlsxDocument document;
  scrivalen_begin_table(document, nullptr, 0, nullptr);
  scrivalen_begin_row(document, 0);
  scrivalen_cell_number(document, 0.5);
  scrivalen_cell_date(document, 1);
  scrivalen_cell_boolean(document, 1);
  EXPECT_EQ(document.cells(), "A1 \"0.5\"\nB1 \"1970-01-02\"\nC1 \"true\"\n");
}

TEST(XlsxDocument, IndentsListsAndQuotesByTheirDepth) {
  XlsxDocument document;
  scrivalen_begin_list(document, 0, 0, 1);
  scrivalen_begin_item(document, 0);
  document.text("a");
  scrivalen_begin_list(document, 1, 1, 1);
  scrivalen_begin_item(document, 0);
  document.text("b");
  scrivalen_begin_quote(document);
  document.paragraph("c");
  document.end(4);
  document.item("d", 2);
  document.end();
  scrivalen_begin_quote(document);
  document.paragraph("e");
  EXPECT_EQ(document.cells(), "A1 \"- a\"\nA2 \"    1. b\"\nA3 \"        c\"\nA4 \"- [x] d\"\nA5 \"e\"\n");
}

TEST(XlsxDocument, IndentsTheDeepestQuotesAlike) {
  XlsxDocument document;
  for (int i = 0; i < 900; ++i) {
    scrivalen_begin_quote(document);
  }
  document.paragraph("a");
  EXPECT_EQ(document.cells(), "A1 \"" + std::string(32, ' ') + "a\"\n");
}

TEST(XlsxDocument, KeepsAnEmptyItemAndTheMarkerBeforeATable) {
  XlsxDocument document;
  scrivalen_begin_list(document, 0, 0, 1);
  document.item("");
  scrivalen_begin_item(document, 0);
  document.table({"a"}, {"b"});
  document.end(2);
  EXPECT_EQ(document.cells(), "A1 \"- \"\nA2 \"- \"\nA3 \"a\" bold\nA4 \"b\"\n");
}

TEST(XlsxDocument, HasARowForEachLineOfCode) {
  XlsxDocument document;
  scrivalen_begin_code(document, nullptr);
  document.text("a\n\n  b\n");
  document.end();
  document.paragraph("c");
  EXPECT_EQ(document.cells(), "A1 \"a\"\nA3 \"  b\"\nA4 \"c\"\n");
}

TEST(XlsxDocument, LeavesOutRulesContentsAndSections) {
  XlsxDocument document;
  scrivalen_set(document, "title", "never shown");
  scrivalen_begin_section(document, "s", nullptr);
  scrivalen_begin_contents(document);
  scrivalen_contents_item(document, 1, "a", "A", kNul);
  document.end();
  scrivalen_rule(document);
  scrivalen_page_break(document);
  scrivalen_begin_heading(document, 1, "a", nullptr);
  document.text("A");
  document.end();
  EXPECT_EQ(document.cells(), "A1 \"A\" bold\n");
  EXPECT_EQ(warningsOf(document),
            "0 4 1 sections, which begin no sheet\n0 4 1 lines of a table of contents, which are left out\n");
}

TEST(XlsxDocument, ColoursCellsAndDividesThoseThatSpanColumns) {
  XlsxDocument document;
  scrivalen_begin_table(document, nullptr, 3, nullptr);
  scrivalen_begin_row(document, 0);
  const scrivalen_cell_style wide{sizeof wide, 0, 0, 2, "#010203", "blue"};
  scrivalen_begin_cell(document, &wide);
  document.text("a");
  document.end();
  const scrivalen_cell_style red{sizeof red, 0, 0, 1, "red", nullptr};
  scrivalen_begin_cell(document, &red);
  document.text("b");
  document.end();
  EXPECT_EQ(document.cells(), "A1 \"a\" color=010203 fill=0000FF\nC1 \"b\" color=FF0000\n");
  EXPECT_EQ(warningsOf(document), "0 4 1 cells that span columns, which became one cell and empty ones\n");
}

TEST(XlsxDocument, FreezesAHeaderRowThatBeginsIt) {
  XlsxDocument frozen;
  frozen.table({"a"}, {"1"});
  EXPECT_NE(frozen.sheet().find(kFrozen), std::string::npos);

  XlsxDocument later;
  later.paragraph("b");
  later.table({"a"}, {"1"});
  EXPECT_EQ(later.sheet().find("<pane"), std::string::npos);

  XlsxDocument headless;
  scrivalen_begin_table(headless, nullptr, 0, nullptr);
  headless.row({"1"});
  EXPECT_EQ(headless.sheet().find("<pane"), std::string::npos);
}

TEST(XlsxDocument, LetsTheStyleSheetOverrideTheFrozenRow) {
  XlsxDocument document;
  document.styles("sheet { freeze-rows: 0 }");
  document.table({"a"}, {"1"});
  EXPECT_EQ(document.sheet().find("<pane"), std::string::npos);
}

TEST(XlsxDocument, HasTheFormatsOfItsStyleSheet) {
  XlsxDocument document;
  document.styles("cell { color: red } bold { font-size: 14 }");
  document.table({"a"}, {"1"});
  EXPECT_EQ(document.cells(), "A1 \"a\" bold 14\nA2 \"1\" color=FF0000\n");
}

TEST(XlsxDocument, WarnsOfWhatItsStyleSheetHasAndLogsNothing) {
  const CapturedLog log;
  XlsxDocument document;
  document.styles(
      "\xEF\xBB\xBF"
      "cell { margin: 1; font-size: 9 }");
  document.table({"a"}, {"1"});
  EXPECT_EQ(document.cells(), "A1 \"a\" bold\nA2 \"1\" 9\n");
  EXPECT_EQ(warningsOf(document),
            "0 4 1 the style sheet is not understood: a byte-order mark is no part of a style sheet\n"
            "0 4 1 the style sheet is not understood: 'cell' has no 'margin'\n");
  EXPECT_TRUE(log.lines().empty());
}

TEST(XlsxDocument, FailsAtOpenWithoutItsStyleSheet) {
  XlsxDocument document;
  EXPECT_EQ(scrivalen_set(document, "styles", "no such file.css"), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_open(document), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(document.error().find("cannot read the style sheet 'no such file.css': "), 0u) << document.error();
}

TEST(XlsxDocument, WarnsOfCellsThatItCutsOrDrops) {
  const CapturedLog log;
  XlsxDocument document;
  document.paragraph(std::string(32768, 'x').c_str());
  scrivalen_begin_table(document, nullptr, 0, nullptr);
  scrivalen_begin_row(document, 0);
  for (int i = 0; i < 16386; ++i) {
    scrivalen_cell(document, "", 0);
  }
  document.closed();
  EXPECT_EQ(document.result, SCRIVALEN_OK) << document.error();
  EXPECT_EQ(warningsOf(document),
            "0 2 1 a cell cut at 32,767 characters, the first at Sheet1!A1\n"
            "0 3 2 cells dropped beyond column 16,384, the first at Sheet1!XFE2\n");
  EXPECT_TRUE(log.lines().empty());
}

TEST(XlsxDocument, SaysThatItWasMadeAtTheClocksTime) {
  XlsxDocument document;
  document.paragraph("a");
  EXPECT_NE(workbookPart(document.file(), "docProps/core.xml").find("2026-01-31T23:59:59Z"), std::string::npos);
}

TEST(XlsxDocument, IsComplete) {
  XlsxDocument document;
  ASSERT_EQ(writeContent(document), SCRIVALEN_OK) << document.error();
  const std::string cells = document.cells();
  for (const char* word : {"A heading", "Prices", "A paragraph.", "gro\xC3\x9F", "a pixel", "none", "done", "return x;",
                           "what", "2024-10-04", "plum"}) {
    EXPECT_NE(cells.find(word), std::string::npos) << word;
  }
}
