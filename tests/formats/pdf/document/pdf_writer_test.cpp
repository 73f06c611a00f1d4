#include "api/api_support.h"
#include "support/captured_log.h"
#include "support/documents/pdf_structure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>

using namespace scrivalen::test;

namespace {

using Lines = std::vector<std::string>;

bool holds(std::string_view text, std::string_view part) { return text.find(part) != text.npos; }

// Font, size and text of each line on the pages, as in "/F1 8 (a)".
Lines linesIn(const std::string& pdf) {
  Lines lines;
  std::string font;
  for (std::size_t at = 0; at < pdf.size();) {
    const std::size_t end = std::min(pdf.find("\r\n", at), pdf.size());
    const std::string line = pdf.substr(at, end - at);
    if (line.ends_with(" Tf")) {
      font = line.substr(0, line.size() - 2);
    } else if (line.ends_with("Tj")) {
      lines.push_back(font + line.substr(0, line.size() - 2));
    }
    at = end + 2;
  }
  return lines;
}

struct PdfDocument : Written {
  PdfDocument() : Written("pdf") {}

  /// Closes the document and returns its bytes, a correct PDF.
  const std::string& pdf() {
    closed();
    EXPECT_EQ(result, SCRIVALEN_OK) << error();
    EXPECT_EQ(PdfStructure(stream.bytes, true).problems(), Lines());
    return stream.bytes;
  }
  Lines lines() { return linesIn(pdf()); }
  std::string warnings() {
    pdf();
    return warningsOf(get());
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
  void link(const char* address, const char* content) {
    scrivalen_begin_link(get(), address, nullptr);
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
};

}  // namespace

TEST(PdfDocument, SetsTheSizeAndWeightOfHeadings) {
  PdfDocument document;
  const char* const texts[] = {"A", "B", "C", "D", "E", "F"};
  for (int level = 1; level <= 6; ++level) {
    document.heading(level, texts[level - 1]);
  }
  document.paragraph("g");
  EXPECT_EQ(document.lines(),
            (Lines{"/F2 20 (A)", "/F2 18 (B)", "/F2 16 (C)", "/F2 15 (D)", "/F2 14 (E)", "/F2 12 (F)", "/F1 8 (g)"}));
}

TEST(PdfDocument, DrawsAParagraphInTheStyleOfMostOfItsText) {
  PdfDocument document;
  scrivalen_begin_paragraph(document, nullptr);
  document.text("plain text with ");
  document.span(SCRIVALEN_STRONG, "bold");
  document.text(" at its ");
  document.span(SCRIVALEN_STRONG, "end");
  document.end();
  scrivalen_begin_paragraph(document, nullptr);
  document.span(SCRIVALEN_STRONG, "bold text");
  document.text(" a");
  document.end();
  EXPECT_EQ(document.lines(), (Lines{"/F1 8 (plain text with bold at its end)", "/F2 8 (bold text a)"}));
}

TEST(PdfDocument, KeepsBulletsNumbersAndDepth) {
  PdfDocument document;
  scrivalen_begin_list(document, 0, 0, 1);
  scrivalen_begin_item(document, 0);
  document.text("a");
  scrivalen_begin_list(document, 1, 1, 1);
  document.item("b");
  document.item("c");
  document.end(2);
  document.item("d", 2);
  document.end();
  scrivalen_begin_quote(document);
  document.paragraph("e");
  EXPECT_EQ(document.lines(), (Lines{"/F1 8 (\x95 a)", "/F1 8 (      1. b)", "/F1 8 (      2. c)", "/F1 8 (\x95 [x] d)",
                                     "/F1 8 (      e)"}));
}

TEST(PdfDocument, IndentsTheDeepestQuotesAlike) {
  PdfDocument document;
  for (int i = 0; i < 900; ++i) {
    scrivalen_begin_quote(document);
  }
  document.paragraph("a");
  EXPECT_EQ(document.lines(), (Lines{"/F1 8 (" + std::string(60, ' ') + "a)"}));
}

TEST(PdfDocument, PutsAnItemsMarkerBeforeALink) {
  PdfDocument document;
  scrivalen_begin_list(document, 0, 0, 1);
  scrivalen_begin_item(document, 0);
  document.link("#b", "a");
  EXPECT_EQ(document.lines(), (Lines{"/F1 8 (\x95 a)"}));
}

TEST(PdfDocument, KeepsTheMarkersOfItemsThatBeginTogether) {
  PdfDocument document;
  scrivalen_begin_list(document, 0, 0, 1);
  scrivalen_begin_item(document, 0);
  scrivalen_begin_list(document, 0, 0, 1);
  document.item("a");
  document.item("b");
  EXPECT_EQ(document.lines(), (Lines{"/F1 8 (\x95 \x95 a)", "/F1 8 (      \x95 b)"}));
}

TEST(PdfDocument, KeepsAnEmptyItemAndTheMarkerBeforeATable) {
  PdfDocument document;
  scrivalen_begin_list(document, 0, 0, 1);
  document.item("");
  scrivalen_begin_item(document, 0);
  scrivalen_begin_table(document, nullptr, 0, nullptr);
  document.row({"a"});
  EXPECT_EQ(document.lines(), (Lines{"/F1 8 (\x95)", "/F1 8 (\x95)", "/F1 8 (a)"}));
}

TEST(PdfDocument, KeepsTheLinesOfCode) {
  PdfDocument document;
  scrivalen_begin_code(document, "c");
  document.text("if (a) {\n\n\tb();\n}\n");
  EXPECT_EQ(document.lines(), (Lines{"/F1 8 (if \\(a\\) {)", "/F1 8 ( )", "/F1 8 (    b\\(\\);)", "/F1 8 (})"}));
}

TEST(PdfDocument, WritesRulesAndDeletedTextAsText) {
  PdfDocument document;
  scrivalen_rule(document);
  scrivalen_begin_paragraph(document, nullptr);
  document.span(SCRIVALEN_DELETED, "a");
  EXPECT_EQ(document.lines(), (Lines{"/F1 8 (" + std::string(40, '_') + ")", "/F1 8 (~~a~~)"}));
}

TEST(PdfDocument, SpellsOutExternalAddresses) {
  PdfDocument document;
  scrivalen_begin_paragraph(document, nullptr);
  document.link("https://x.org", "a");
  document.text(" and ");
  document.link("https://y.org", "y.org");
  EXPECT_EQ(document.lines(), (Lines{"/F1 8 (a \\(https://x.org\\) and y.org)"}));
}

TEST(PdfDocument, LinksToHeadings) {
  PdfDocument document;
  scrivalen_begin_paragraph(document, nullptr);
  document.link("#b", "to b");
  document.end();
  document.heading(1, "B");
  EXPECT_TRUE(
      holds(document.pdf(), "/Subtype /Link\r\n/Rect [50 795 565 805]\r\n/Dest [5 0 R\r\n/XYZ\r\n50\r\n782\r\n0\r\n]"));
}

TEST(PdfDocument, LinksToAnchorsSectionsAndCells) {
  PdfDocument document;
  scrivalen_begin_section(document, "s", "section");
  for (const char* id : {"#section", "#paragraph", "#cell", "#last"}) {
    scrivalen_begin_paragraph(document, nullptr);
    document.link(id, id);
    document.end();
  }
  scrivalen_begin_paragraph(document, nullptr);
  document.text("here");
  scrivalen_anchor(document, "paragraph");
  document.end();
  scrivalen_begin_table(document, nullptr, 0, nullptr);
  scrivalen_begin_row(document, 0);
  scrivalen_begin_cell(document, nullptr);
  scrivalen_anchor(document, "cell");
  document.text("there");
  document.end(4);
  scrivalen_anchor(document, "last");
  const std::string& pdf = document.pdf();
  std::size_t links = 0;
  for (std::size_t at = pdf.find("/Subtype /Link"); at != pdf.npos; at = pdf.find("/Subtype /Link", at + 1)) {
    ++links;
  }
  EXPECT_EQ(links, 4u) << pdf;
}

TEST(PdfDocument, SkipsNoLevelInTheOutline) {
  PdfDocument document;
  document.heading(1, "A");
  document.heading(3, "B");
  document.heading(2, "C");
  document.heading(1, "D");
  const std::string& pdf = document.pdf();
  EXPECT_TRUE(holds(pdf, "/Type /Outlines\r\n/Count 4\r\n"));
  EXPECT_TRUE(holds(pdf, "/Type /Outline\r\n/Count 2\r\n/Title (A)\r\n"));
  EXPECT_TRUE(holds(pdf, "/Type /Outline\r\n/Title (D)\r\n"));
}

TEST(PdfDocument, HasItsContentsOnThePage) {
  PdfDocument document;
  scrivalen_begin_contents(document);
  scrivalen_contents_item(document, 1, "a", "A", kNul);
  scrivalen_contents_item(document, 2, "b", "B {x}", kNul);
  document.end();
  scrivalen_begin_heading(document, 1, "a", nullptr);
  document.text("A");
  document.end();
  const std::string& pdf = document.pdf();
  EXPECT_EQ(linesIn(pdf), (Lines{"/F1 8 (A)", "/F1 8 (      B {x})", "/F2 20 (A)"}));
  EXPECT_TRUE(holds(pdf, "/Subtype /Link"));
}

TEST(PdfDocument, HasTablesWithABoldHeaderOnGrey) {
  PdfDocument document;
  scrivalen_begin_table(document, nullptr, 0, nullptr);
  document.row({"a", "b"}, 1);
  document.row({"1", "2"});
  const std::string& pdf = document.pdf();
  EXPECT_TRUE(holds(pdf, "0.750000 0.750000 0.750000 rg\r\n50 779 257 10 re\r\nF\r\n")) << pdf;
  EXPECT_TRUE(holds(pdf, "/F2 8 Tf\r\n0.000000 0.000000 0.000000 rg\r\n(a)Tj\r\n"));
  EXPECT_TRUE(holds(pdf, "1.000000 1.000000 1.000000 rg\r\n50 769 257 10 re\r\nF\r\n"));
  EXPECT_TRUE(holds(pdf, "/F1 8 Tf\r\n0.000000 0.000000 0.000000 rg\r\n(1)Tj\r\n"));
}

TEST(PdfDocument, DrawsABoldCellBoldAndSpellsOutTheAddressInACell) {
  PdfDocument document;
  scrivalen_begin_table(document, nullptr, 0, nullptr);
  scrivalen_begin_row(document, 0);
  scrivalen_begin_cell(document, nullptr);
  document.span(SCRIVALEN_STRONG, "b");
  document.end();
  scrivalen_begin_cell(document, nullptr);
  document.link("https://x.org", "x");
  EXPECT_EQ(document.lines(), (Lines{"/F2 8 (b)", "/F1 8 (x \\(https://x.org\\))"}));
}

TEST(PdfDocument, ColoursCellsAndDividesThoseThatSpanColumns) {
  PdfDocument document;
  scrivalen_begin_table(document, nullptr, 2, nullptr);
  scrivalen_begin_row(document, 0);
  const scrivalen_cell_style style{sizeof style, 0, 0, 2, "#FF0000", "blue"};
  scrivalen_begin_cell(document, &style);
  document.text("a");
  document.end(2);
  document.row({"b", "c"});
  const std::string& pdf = document.pdf();
  EXPECT_TRUE(holds(pdf, "0.000000 0.000000 1.000000 rg\r\n50 779 257 10 re\r\nF\r\n")) << pdf;
  EXPECT_TRUE(holds(pdf, "0.000000 0.000000 1.000000 rg\r\n307 779 257 10 re\r\nF\r\n"));
  EXPECT_TRUE(holds(pdf, "/F1 8 Tf\r\n1.000000 0.000000 0.000000 rg\r\n(a)Tj\r\n"));
  EXPECT_TRUE(holds(pdf, "/F1 8 Tf\r\n0.000000 0.000000 0.000000 rg\r\n(b)Tj\r\n"));
  EXPECT_EQ(warningsOf(document), "0 4 1 cells that span columns, which became one cell and empty ones\n");
}

TEST(PdfDocument, ShowsValuesAsEveryFormatDoes) {
  PdfDocument document;
  scrivalen_begin_table(document, nullptr, 0, nullptr);
  scrivalen_begin_row(document, 0);
  scrivalen_cell_number(document, 0.1);
  scrivalen_cell_date(document, 0);
  EXPECT_EQ(document.lines(), (Lines{"/F1 8 (0.1)", "/F1 8 (1970-01-01)"}));
}

TEST(PdfDocument, BeginsAPageAtABreakAndAtASectionButNoEmptyOne) {
  PdfDocument document;
  scrivalen_page_break(document);
  scrivalen_begin_section(document, "one", nullptr);
  document.paragraph("a");
  scrivalen_page_break(document);
  scrivalen_page_break(document);
  document.paragraph("b");
  document.end();
  scrivalen_begin_section(document, "two", nullptr);
  document.paragraph("c");
  const PdfStructure made(document.pdf(), true);
  ASSERT_EQ(made.pageCount(), 3u);
  EXPECT_TRUE(holds(made.content(0), "(a)Tj"));
  EXPECT_TRUE(holds(made.content(1), "(b)Tj"));
  EXPECT_TRUE(holds(made.content(2), "(c)Tj"));
}

TEST(PdfDocument, ShowsItsTitleUnlessAHeadingTakesItsPlace) {
  PdfDocument document;
  scrivalen_set(document, "title", "T (1)");
  document.paragraph("a");
  EXPECT_EQ(document.lines(), (Lines{"/F2 20 (T \\(1\\))", "/F1 8 (a)"}));
  EXPECT_TRUE(holds(document.stream.bytes, "/Title (T \\(1\\))"));
}

TEST(PdfDocument, IsLandscapeOnRequest) {
  PdfDocument document;
  scrivalen_set(document, "pdf.landscape", "yes");
  EXPECT_TRUE(holds(document.pdf(), "/MediaBox [0 0 840 595]"));
}

TEST(PdfDocument, WarnsOfWhatItCannotHoldAndLogsNothing) {
  const CapturedLog log;
  PdfDocument document;
  document.paragraph("\xCE\xA9 \xE2\x86\x92");
  EXPECT_TRUE(holds(document.pdf(), "(? ->)Tj"));
  EXPECT_EQ(warningsOf(document), "0 1 2 characters could not be written as they were given, the first is U+03A9\n");
  EXPECT_TRUE(log.lines().empty());
}

TEST(PdfDocument, WarnsOfOneCharacter) {
  PdfDocument document;
  document.paragraph("\xCE\xA9");
  EXPECT_EQ(document.warnings(), "0 1 1 a character could not be written as it was given: U+03A9\n");
}

TEST(PdfDocument, HoldsAParagraphOfAnyLength) {
  PdfDocument document;
  document.paragraph(std::string(100000, 'x').c_str());
  std::size_t letters = 0;
  for (const std::string& line : document.lines()) {
    letters += static_cast<std::size_t>(std::count(line.begin(), line.end(), 'x'));
  }
  EXPECT_EQ(letters, 100000u);
}

TEST(PdfDocument, IsComplete) {
  PdfDocument document;
  ASSERT_EQ(writeContent(document), SCRIVALEN_OK) << document.error();
  const std::string& pdf = document.pdf();
  for (const char* word : {"A heading", "Prices", "A paragraph.", "gro\xDF", "a pixel", "none", "done", "return x;",
                           "what", "2024-10-04", "plum"}) {
    EXPECT_TRUE(holds(pdf, word)) << word;
  }
}
