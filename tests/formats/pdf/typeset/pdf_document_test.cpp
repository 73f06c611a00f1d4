#include "api/api_support.h"
#include "support/captured_log.h"
#include "support/pdf/pdf_pages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

using namespace scrivalen::test;

namespace {

using Lines = std::vector<std::string>;

bool holds(std::string_view text, std::string_view part) { return text.find(part) != text.npos; }

// Font, size and text, as in "Sans-Bold 18 (a)".
std::string described(const PdfText& text) {
  constexpr std::string_view kFamily = "Liberation";
  const std::string font = text.font.starts_with(kFamily) ? text.font.substr(kFamily.size()) : text.font;
  std::string size = std::to_string(text.size);
  size.erase(size.find_last_not_of('0') + 1);
  size.erase(size.find_last_not_of('.') + 1);
  return font + " " + size + " (" + text.text + ")";
}

struct PdfDocument : Written {
  PdfDocument() : Written("pdf") {}

  /// Closes the document and reads it, a correct PDF.
  const PdfPages& pdf() {
    if (!made) {
      closed();
      EXPECT_EQ(result, SCRIVALEN_OK) << error();
      made.emplace(stream.bytes);
      EXPECT_EQ(made->problems(), Lines());
    }
    return *made;
  }
  Lines texts() {
    Lines all;
    for (const PdfText& text : pdf().texts()) {
      all.push_back(described(text));
    }
    return all;
  }
  /// The first text that is this one.
  PdfText find(std::string_view text) {
    const std::vector<PdfText> all = pdf().texts();
    const auto found = std::find_if(all.begin(), all.end(), [text](const PdfText& each) { return each.text == text; });
    EXPECT_NE(found, all.end()) << text;
    return found == all.end() ? PdfText() : *found;
  }
  /// The areas of a colour.
  std::vector<PdfArea> areas(std::uint32_t color) {
    std::vector<PdfArea> found;
    for (const PdfPage& page : pdf().pages()) {
      for (const PdfArea& area : page.content.areas) {
        if (area.color == color) {
          found.push_back(area);
        }
      }
    }
    return found;
  }
  std::string warnings() {
    pdf();
    return warningsOf(get());
  }

  std::optional<PdfPages> made;
};

// Whether a link's box is around the beginning of a text.
bool covers(const PdfLink& link, const PdfText& text) {
  return link.left <= text.x + 0.1 && text.x < link.right && link.bottom < text.y && text.y + text.size / 2 < link.top;
}

bool covers(const PdfArea& area, const PdfText& text) {
  return area.x <= text.x + 0.1 && text.x < area.x + area.width && area.y < text.y &&
         text.y + text.size / 2 < area.y + area.height;
}

}  // namespace

TEST(PdfDocument, SetsTheSizeAndWeightOfHeadings) {
  PdfDocument document;
  const char* const texts[] = {"A", "B", "C", "D", "E", "F"};
  for (int level = 1; level <= 6; ++level) {
    document.heading(level, texts[level - 1]);
  }
  document.paragraph("g");
  EXPECT_EQ(document.texts(), (Lines{"Sans-Bold 18 (A)", "Sans-Bold 14 (B)", "Sans-Bold 12 (C)", "Sans-Bold 11 (D)",
                                     "Sans-Bold 10 (E)", "Sans-BoldItalic 10 (F)", "Sans 10 (g)"}));
}

TEST(PdfDocument, DrawsEachSpanInItsStyle) {
  PdfDocument document;
  scrivalen_begin_paragraph(document, nullptr);
  document.text("plain ");
  document.span(SCRIVALEN_STRONG, "bold");
  document.text(" and ");
  scrivalen_begin_span(document, SCRIVALEN_EMPHASIS);
  document.text("a ");
  document.span(SCRIVALEN_STRONG, "b");
  document.end();
  document.span(SCRIVALEN_CODE, "c");
  document.span(SCRIVALEN_SUPERSCRIPT, "d");
  document.span(SCRIVALEN_SUBSCRIPT, "e");
  document.end();
  EXPECT_EQ(document.texts(),
            (Lines{"Sans 10 (plain )", "Sans-Bold 10 (bold)", "Sans 10 ( and )", "Sans-Italic 10 (a )",
                   "Sans-BoldItalic 10 (b)", "Mono 9 (c)", "Sans 6.5 (d)", "Sans 6.5 (e)"}));
  EXPECT_EQ(document.find("bold").y, document.find("plain ").y);
  EXPECT_GT(document.find("d").y, document.find("plain ").y);
  EXPECT_LT(document.find("e").y, document.find("plain ").y);
}

TEST(PdfDocument, UnderlinesAndStrikesThrough) {
  PdfDocument document;
  scrivalen_begin_paragraph(document, nullptr);
  document.span(SCRIVALEN_DELETED, "a");
  document.span(SCRIVALEN_UNDERLINED, "b");
  const std::vector<PdfArea> lines = document.areas(0);
  ASSERT_EQ(lines.size(), 2u);
  const double baseline = document.find("a").y;
  EXPECT_GT(lines[0].y, baseline + 1);
  EXPECT_LT(lines[0].y, baseline + 5);
  EXPECT_LT(lines[1].y, baseline);
  EXPECT_NEAR(lines[0].x, document.find("a").x, 0.1);
  EXPECT_NEAR(lines[1].x, document.find("b").x, 0.1);
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
  EXPECT_EQ(document.texts(), (Lines{"Sans 10 (\u2022)", "Sans 10 (a)", "Sans 10 (1.)", "Sans 10 (b)", "Sans 10 (2.)",
                                     "Sans 10 (c)", "DejaVuSans 10 (\u2611)", "Sans 10 (d)", "Sans 10 (e)"}));
  for (const auto& [marker, item] : {std::pair("\u2022", "a"), std::pair("1.", "b"), std::pair("\u2611", "d")}) {
    EXPECT_EQ(document.find(marker).y, document.find(item).y);
    EXPECT_LT(document.find(marker).x, document.find(item).x);
  }
  EXPECT_GT(document.find("1.").x, document.find("a").x);
  EXPECT_EQ(document.find("a").x, document.find("d").x);
}

TEST(PdfDocument, PutsABarBesideQuotes) {
  PdfDocument document;
  document.paragraph("a");
  scrivalen_begin_quote(document);
  document.paragraph("b");
  const std::vector<PdfArea> bars = document.areas(0xC2CAD2);
  ASSERT_EQ(bars.size(), 1u);
  EXPECT_GE(bars[0].x, document.find("a").x);
  EXPECT_LT(bars[0].x + bars[0].width, document.find("b").x);
  EXPECT_LT(bars[0].y, document.find("b").y);
  EXPECT_GT(bars[0].y + bars[0].height, document.find("b").y);
}

TEST(PdfDocument, IndentsTheDeepestQuotesAlike) {
  PdfDocument document;
  for (int i = 0; i < 900; ++i) {
    scrivalen_begin_quote(document);
  }
  document.paragraph("a word that fits into a third of the width");
  EXPECT_EQ(document.texts(), (Lines{"Sans 10 (a word that fits into a third of the)", "Sans 10 (width)"}));
  EXPECT_LT(document.find("width").x, document.pdf().pages()[0].width * 2 / 3);
}

TEST(PdfDocument, PutsAnItemsMarkerBeforeALink) {
  PdfDocument document;
  scrivalen_begin_list(document, 0, 0, 1);
  scrivalen_begin_item(document, 0);
  document.link("#b", "a");
  EXPECT_EQ(document.texts(), (Lines{"Sans 10 (\u2022)", "Sans 10 (a)"}));
  EXPECT_LT(document.find("\u2022").x, document.find("a").x);
}

TEST(PdfDocument, KeepsTheMarkersOfItemsThatBeginTogether) {
  PdfDocument document;
  scrivalen_begin_list(document, 0, 0, 1);
  scrivalen_begin_item(document, 0);
  scrivalen_begin_list(document, 0, 0, 1);
  document.item("a");
  document.item("b");
  EXPECT_EQ(document.texts(),
            (Lines{"Sans 10 (\u2022)", "Sans 10 (\u2013)", "Sans 10 (a)", "Sans 10 (\u2013)", "Sans 10 (b)"}));
  EXPECT_EQ(document.pdf().lines(), (Lines{"\u2022\u2013a", "\u2013b"}));
}

TEST(PdfDocument, KeepsAnEmptyItemAndTheMarkerBeforeATable) {
  PdfDocument document;
  scrivalen_begin_list(document, 0, 0, 1);
  document.item("");
  scrivalen_begin_item(document, 0);
  scrivalen_begin_table(document, nullptr, 0, nullptr);
  document.row({"a"});
  EXPECT_EQ(document.texts(), (Lines{"Sans 10 (\u2022)", "Sans 10 (\u2022)", "Sans 9 (a)"}));
}

TEST(PdfDocument, KeepsTheLinesOfCodeOnAShade) {
  PdfDocument document;
  scrivalen_begin_code(document, "c");
  document.text("if (a) {\n\n\tb();\n}\n");
  EXPECT_EQ(document.texts(), (Lines{"Mono 8.5 (if (a) {)", "Mono 8.5 (    b();)", "Mono 8.5 (})"}));
  const double line = document.find("    b();").y - document.find("}").y;
  EXPECT_NEAR(document.find("if (a) {").y - document.find("    b();").y, 2 * line, 0.2);
  const std::vector<PdfArea> shades = document.areas(0xF4F4F4);
  ASSERT_EQ(shades.size(), 1u);
  EXPECT_TRUE(covers(shades[0], document.find("if (a) {")) && covers(shades[0], document.find("}")));
}

TEST(PdfDocument, DrawsARuleAcrossThePage) {
  PdfDocument document;
  document.paragraph("a");
  scrivalen_rule(document);
  document.paragraph("b");
  const std::vector<PdfArea> rules = document.areas(0xB0B0B0);
  ASSERT_EQ(rules.size(), 1u);
  EXPECT_LT(rules[0].y, document.find("a").y);
  EXPECT_GT(rules[0].y, document.find("b").y);
  EXPECT_GT(rules[0].width, document.pdf().pages()[0].width * 3 / 4);
}

TEST(PdfDocument, LinksToAddresses) {
  PdfDocument document;
  scrivalen_begin_paragraph(document, nullptr);
  document.link("https://x.org/(1)", "a");
  document.text(" and ");
  document.link("https://y.org", "y.org");
  EXPECT_EQ(document.texts(), (Lines{"Sans 10 (a)", "Sans 10 ( and )", "Sans 10 (y.org)"}));
  const std::vector<PdfLink> links = document.pdf().links();
  ASSERT_EQ(links.size(), 2u);
  EXPECT_EQ(links[0].address, "https://x.org/(1)");
  EXPECT_EQ(links[1].address, "https://y.org");
  EXPECT_TRUE(covers(links[0], document.find("a")) && covers(links[1], document.find("y.org")));
  EXPECT_FALSE(covers(links[0], document.find(" and ")));
  EXPECT_EQ(document.find("a").color, 0x0B4F9Eu);
}

TEST(PdfDocument, LinksToHeadings) {
  PdfDocument document;
  scrivalen_begin_paragraph(document, nullptr);
  document.link("#b", "to b");
  document.end();
  scrivalen_page_break(document);
  document.heading(1, "B");
  const std::vector<PdfLink> links = document.pdf().links();
  ASSERT_EQ(links.size(), 1u);
  EXPECT_EQ(links[0].address, "#b");
  EXPECT_TRUE(covers(links[0], document.find("to b")));
  const PdfPlace place = document.pdf().places().at("b");
  EXPECT_EQ(place.page, 1u);
  const PdfText heading = document.find("B");
  EXPECT_NEAR(place.top, heading.y + heading.size, 6);
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
  EXPECT_EQ(document.pdf().links().size(), 4u);
  const std::map<std::string, PdfPlace>& places = document.pdf().places();
  for (const char* name : {"section", "paragraph", "cell", "last"}) {
    EXPECT_EQ(places.count(name), 1u) << name;
  }
  EXPECT_GT(places.at("section").top, document.find("#section").y);
  EXPECT_NEAR(places.at("paragraph").top, document.find("here").y + 10, 4);
  EXPECT_NEAR(places.at("cell").top, document.find("there").y + 10, 4);
  EXPECT_LT(places.at("last").top, document.find("there").y);
}

TEST(PdfDocument, SkipsNoLevelInTheOutline) {
  PdfDocument document;
  document.heading(1, "A");
  document.heading(3, "B");
  document.heading(2, "C \u03A9");
  document.heading(1, "D");
  Lines outline;
  for (const PdfOutlineEntry& entry : document.pdf().outline()) {
    outline.push_back(std::to_string(entry.depth) + " " + entry.title);
  }
  EXPECT_EQ(outline, (Lines{"0 A", "1 B", "1 C \u03A9", "0 D"}));
  EXPECT_NEAR(document.pdf().outline()[1].place.top, document.find("B").y + 12, 6);
}

TEST(PdfDocument, HasItsContentsWithPageNumbers) {
  PdfDocument document;
  scrivalen_begin_contents(document);
  scrivalen_contents_item(document, 1, "a", "A", kNul);
  scrivalen_contents_item(document, 2, "b", "B {x}", kNul);
  document.end();
  scrivalen_begin_heading(document, 1, "a", nullptr);
  document.text("A");
  document.end();
  scrivalen_page_break(document);
  scrivalen_begin_heading(document, 2, "b", nullptr);
  document.text("B {x}");
  document.end();
  const PdfText first = document.find("A");
  const PdfText second = document.find("B {x}");
  EXPECT_EQ(described(first), "Sans-Bold 10 (A)");
  EXPECT_EQ(described(second), "Sans 10 (B {x})");
  EXPECT_GT(second.x, first.x);
  EXPECT_NEAR(document.find("1").y, first.y, 0.1);
  EXPECT_NEAR(document.find("2").y, second.y, 0.1);
  EXPECT_GT(document.find("2").x, second.x + 300);
  const Lines all = document.texts();
  EXPECT_EQ(std::count_if(all.begin(), all.end(), [](const auto& text) { return holds(text, ". . . . ."); }), 2);
  const std::vector<PdfLink> links = document.pdf().links();
  EXPECT_TRUE(std::any_of(links.begin(), links.end(),
                          [&](const PdfLink& link) { return link.address == "#b" && covers(link, second); }));
}

TEST(PdfDocument, HasTablesWithABoldHeaderOverALine) {
  PdfDocument document;
  scrivalen_begin_table(document, nullptr, 0, nullptr);
  document.row({"a", "b"}, 1);
  document.row({"1", "2"});
  EXPECT_EQ(document.texts(), (Lines{"Sans-Bold 9 (a)", "Sans-Bold 9 (b)", "Sans 9 (1)", "Sans 9 (2)"}));
  EXPECT_EQ(document.find("a").y, document.find("b").y);
  EXPECT_LT(document.find("a").x, document.find("b").x);
  const std::vector<PdfArea> lines = document.areas(0x808080);
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_LT(lines[0].y, document.find("a").y);
  EXPECT_GT(lines[0].y, document.find("1").y);
  EXPECT_LE(lines[0].x, document.find("a").x);
  EXPECT_GT(lines[0].x + lines[0].width, document.find("b").x);
}

TEST(PdfDocument, DrawsSpansAndLinksInACell) {
  PdfDocument document;
  scrivalen_begin_table(document, nullptr, 0, nullptr);
  scrivalen_begin_row(document, 0);
  scrivalen_begin_cell(document, nullptr);
  document.span(SCRIVALEN_STRONG, "b");
  document.end();
  scrivalen_begin_cell(document, nullptr);
  document.link("https://x.org", "x");
  EXPECT_EQ(document.texts(), (Lines{"Sans-Bold 9 (b)", "Sans 9 (x)"}));
  ASSERT_EQ(document.pdf().links().size(), 1u);
  EXPECT_EQ(document.pdf().links()[0].address, "https://x.org");
  EXPECT_TRUE(covers(document.pdf().links()[0], document.find("x")));
}

TEST(PdfDocument, ColoursCellsAndKeepsThoseThatSpanColumns) {
  PdfDocument document;
  scrivalen_begin_table(document, nullptr, 2, nullptr);
  scrivalen_begin_row(document, 0);
  const scrivalen_cell_style style{sizeof style, 0, 0, 2, "#FF0000", "blue"};
  scrivalen_begin_cell(document, &style);
  document.text("a");
  document.end(2);
  document.row({"b", "c"});
  const std::vector<PdfArea> backgrounds = document.areas(0x0000FF);
  ASSERT_EQ(backgrounds.size(), 1u);
  EXPECT_TRUE(covers(backgrounds[0], document.find("a")));
  EXPECT_GT(backgrounds[0].x + backgrounds[0].width, document.find("c").x);
  EXPECT_GT(backgrounds[0].y, document.find("b").y);
  EXPECT_EQ(document.find("a").color, 0xFF0000u);
  EXPECT_EQ(document.find("b").color, 0u);
  EXPECT_EQ(document.warnings(), "");
}

TEST(PdfDocument, ShowsValuesAsEveryFormatDoes) {
  PdfDocument document;
  scrivalen_begin_table(document, nullptr, 0, nullptr);
  scrivalen_begin_row(document, 0);
  scrivalen_cell_number(document, 0.1);
  scrivalen_cell_date(document, 0);
  EXPECT_EQ(document.texts(), (Lines{"Sans 9 (0.1)", "Sans 9 (1970-01-01)"}));
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
  const std::vector<PdfPage>& pages = document.pdf().pages();
  ASSERT_EQ(pages.size(), 3u);
  EXPECT_EQ(pages[0].lines(), Lines{"a"});
  EXPECT_EQ(pages[1].lines(), Lines{"b"});
  EXPECT_EQ(pages[2].lines(), Lines{"c"});
}

TEST(PdfDocument, ShowsItsTitleUnlessAHeadingTakesItsPlace) {
  PdfDocument shown;
  scrivalen_set(shown, "title", "T (1)");
  shown.paragraph("a");
  EXPECT_EQ(shown.texts(), (Lines{"Sans-Bold 24 (T (1))", "Sans 10 (a)"}));
  EXPECT_EQ(shown.pdf().information("Title"), "T (1)");
  PdfDocument replaced;
  scrivalen_set(replaced, "title", "T");
  replaced.heading(1, "H");
  EXPECT_EQ(replaced.texts(), Lines{"Sans-Bold 18 (H)"});
  EXPECT_EQ(replaced.pdf().information("Title"), "T");
}

// Readers that keep the order of the content would join it with the first word.
TEST(PdfDocument, HasTheNumberOfPagesAfterItsText) {
  PdfDocument document;
  scrivalen_set(document, "pdf.footer", "{page} of {pages}");
  document.paragraph("a");
  const std::vector<PdfText> texts = document.pdf().texts();
  ASSERT_GE(texts.size(), 3u);
  EXPECT_EQ(texts.front().text, "a");
  EXPECT_EQ(texts.back().text, "1");
  EXPECT_EQ(texts.back().color, 0x555555u);
}

TEST(PdfDocument, IsLandscapeOnRequest) {
  PdfDocument document;
  scrivalen_set(document, "pdf.landscape", "yes");
  const PdfPage& page = document.pdf().pages()[0];
  EXPECT_NEAR(page.width, 841.89, 0.01);
  EXPECT_NEAR(page.height, 595.276, 0.01);
}

TEST(PdfDocument, HoldsCharactersOutsideWinAnsi) {
  PdfDocument document;
  document.paragraph("\u03A9 \u2192");
  EXPECT_EQ(document.pdf().lines(), Lines{"\u03A9 \u2192"});
  EXPECT_EQ(document.warnings(), "");
}

TEST(PdfDocument, WarnsOfCharactersThatNoFontHasAndLogsNothing) {
  const CapturedLog log;
  PdfDocument document;
  document.paragraph("a \u6F22\u5B57");
  EXPECT_EQ(document.pdf().lines(), Lines{"a \u6F22\u5B57"});
  const std::string warnings = document.warnings();
  EXPECT_TRUE(warnings.starts_with("0 1 2 ")) << warnings;
  EXPECT_TRUE(holds(warnings, "script Han ") && holds(warnings, "\"font-file\"")) << warnings;
  EXPECT_TRUE(log.lines().empty());
}

TEST(PdfDocument, HoldsAParagraphOfAnyLength) {
  PdfDocument document;
  document.paragraph(std::string(100000, 'x').c_str());
  std::size_t letters = 0;
  for (const PdfText& text : document.pdf().texts()) {
    letters += static_cast<std::size_t>(std::count(text.text.begin(), text.text.end(), 'x'));
  }
  EXPECT_EQ(letters, 100000u);
}

TEST(PdfDocument, IsComplete) {
  PdfDocument document;
  ASSERT_EQ(writeContent(document), SCRIVALEN_OK) << document.error();
  std::string all;
  for (const std::string& line : document.pdf().lines()) {
    all += line + "\n";
  }
  for (const char* word : {"A heading", "Prices", "A paragraph.", "gro\u00DF", "none", "done", "return x;", "what",
                           "2024-10-04", "plum"}) {
    EXPECT_TRUE(holds(all, word)) << word << '\n' << all;
  }
  EXPECT_FALSE(document.pdf().pages()[0].content.images.empty() &&
               document.pdf().pages().back().content.images.empty());
}
