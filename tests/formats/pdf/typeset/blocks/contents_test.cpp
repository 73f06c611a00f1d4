#include "formats/pdf/typeset/shown_document.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace scrivalen::test {
namespace {

// Contents with an item for each text, whose places are on a page of their own each.
void addContents(ShownDocument& document, std::initializer_list<std::pair<int, std::string>> items) {
  document.beginContents();
  for (const auto& [level, text] : items) {
    document.contentsItem(level, text, text);
  }
  document.end();
  for (const auto& [level, text] : items) {
    document.pageBreak();
    document.beginHeading(level, text, document::Align::Auto);
    document.text(text);
    document.end();
  }
}

TEST(Contents, HaveTextLeaderAndPageNumber) {
  ShownDocument document;
  addContents(document, {{1, "First"}, {2, "Second"}});
  const ShownPages pages = document.pages();
  const std::vector<PdfText> line = pages.at(0).lineOf("First");
  ASSERT_EQ(line.size(), 4u);
  EXPECT_EQ(line[0].text, "First");
  EXPECT_EQ(line[1].text.substr(0, 8), ". . . . ");
  EXPECT_EQ(line[3].text, "2");
  EXPECT_EQ(pages.at(0).lineOf("Second").back().text, "3");
}

TEST(Contents, EndAllNumbersAtTheRightMargin) {
  ShownDocument document;
  document.beginContents();
  document.contentsItem(1, "near", "Near");
  document.contentsItem(1, "far", "Far");
  document.end();
  document.anchor("near");
  for (int i = 0; i < 11; ++i) {
    document.paragraph("text");
    document.pageBreak();
  }
  document.anchor("far");
  document.paragraph("text");
  const ShownPages pages = document.pages();
  const PdfText one = pages.at(0).lineOf("Near").back();
  const PdfText two = pages.at(0).lineOf("Far").back();
  EXPECT_EQ(one.text, "1");
  EXPECT_EQ(two.text, "12");
  constexpr double kDigit = 5.56;
  EXPECT_NEAR(one.x + kDigit, 595.3 - 56.7, 0.2);
  EXPECT_NEAR(two.x + 2 * kDigit, 595.3 - 56.7, 0.2);
}

TEST(Contents, PutTheDotsOfAllLinesBelowEachOther) {
  ShownDocument document;
  addContents(document, {{2, "Short"}, {2, "A longer one"}, {3, "i"}});
  const ShownPages pages = document.pages();
  const double first = pages.at(0).lineOf("Short")[1].x;
  for (const char* text : {"A longer one", "i"}) {
    const double steps = (pages.at(0).lineOf(text)[1].x - first) / 5.56;
    EXPECT_NEAR(steps, std::round(steps), 0.05) << text;
  }
}

// The dots go on to the number, which is known last: there is a gap of less than two dots and their blanks.
TEST(Contents, LeadToTheNumber) {
  ShownDocument document;
  addContents(document, {{2, "Short"}});
  const ShownPages pages = document.pages();
  const std::vector<PdfText> line = pages.at(0).lineOf("Short");
  ASSERT_EQ(line.size(), 4u);
  const auto dots = static_cast<double>(std::count(line[2].text.begin(), line[2].text.end(), '.'));
  EXPECT_GT(line[2].x + dots * 5.56, line[3].x - 2 * 5.56);
  EXPECT_LT(line[2].x + dots * 5.56, line[3].x);
  EXPECT_NEAR(line[2].x - line[1].x, 5.56 * std::round((line[2].x - line[1].x) / 5.56), 0.1);
}

TEST(Contents, IndentLevels) {
  ShownDocument document;
  addContents(document, {{1, "One"}, {2, "Two"}, {6, "Six"}});
  const ShownPages pages = document.pages();
  EXPECT_NEAR(pages.at(0).find("One").x, 56.7, 0.1);
  EXPECT_NEAR(pages.at(0).find("Two").x, 56.7 + 14, 0.1);
  EXPECT_NEAR(pages.at(0).find("Six").x, 56.7 + 5 * 14, 0.1);
}

TEST(Contents, BeginAtTheMarginWhateverTheirFirstLevelIs) {
  ShownDocument document;
  addContents(document, {{2, "Two"}, {3, "Three"}, {1, "One"}});
  const ShownPages pages = document.pages();
  EXPECT_NEAR(pages.at(0).find("Two").x, 56.7, 0.1);
  EXPECT_NEAR(pages.at(0).find("Three").x, 56.7 + 14, 0.1);
  EXPECT_NEAR(pages.at(0).find("One").x, 56.7, 0.1);
  EXPECT_EQ(pages.at(0).find("Two").font, pages.at(0).find("One").font);
  EXPECT_NE(pages.at(0).find("Two").font, pages.at(0).find("Three").font);
}

TEST(Contents, IndentTheFurtherLinesOfAnEntry) {
  ShownDocument document;
  std::string text = "first";
  for (int i = 0; i < 30; ++i) {
    text += " word";
  }
  addContents(document, {{1, text + " last"}});
  const ShownPages pages = document.pages();
  EXPECT_NEAR(pages.at(0).find("first").x, 56.7, 0.1);
  EXPECT_NEAR(pages.at(0).find("last").x, 56.7 + 7, 0.1);
  EXPECT_EQ(pages.at(0).lineOf("last").back().text, "2");
}

TEST(Contents, AreMirroredWhereTheyAreReadFromRightToLeft) {
  constexpr double kRight = 595.28 - 56.69;
  ShownDocument document;
  addContents(document, {{1, "\u05D0"}, {2, "\u05D1\u05D2"}});
  const ShownPages pages = document.pages();
  const PdfText outer = pages.at(0).find("\u05D0");
  const PdfText inner = pages.at(0).find("\u05D1");
  EXPECT_GT(outer.x, kRight - 10);
  EXPECT_NEAR(inner.x, kRight - 14 - 10, 4);
  for (const PdfText& text : {outer, inner}) {
    std::vector<PdfText> line;
    for (const PdfText& other : pages.at(0).texts()) {
      if (other.y == text.y) {
        line.push_back(other);
      }
    }
    std::sort(line.begin(), line.end(), [](const PdfText& a, const PdfText& b) { return a.x < b.x; });
    ASSERT_GE(line.size(), 4u);
    EXPECT_NEAR(line.front().x, 56.7, 0.1);
    EXPECT_EQ(line.front().text, text.y == outer.y ? "2" : "3");
    EXPECT_TRUE(line[1].text.starts_with(". ")) << "beside the number";
    EXPECT_LT(line[1].x, 56.7 + 5 * 5.56);
    const double dots = (line[2].x - line[1].x) / 5.56;
    EXPECT_NEAR(dots, std::round(dots), 0.05);
    EXPECT_LT(line[2].x, line.back().x);
  }
}

TEST(Contents, DoNotEndAPageAfterAnOuterEntry) {
  for (int before = 50; before < 57; ++before) {
    ShownDocument document;
    document.beginContents();
    for (int i = 0; i < before; ++i) {
      document.contentsItem(i == 0 ? 1 : 2, "", "entry");
    }
    document.contentsItem(1, "", "outer");
    document.contentsItem(2, "", "inner");
    document.end();
    const ShownPages pages = document.pages();
    EXPECT_EQ(pages.pageOf("outer"), pages.pageOf("inner")) << before;
    EXPECT_EQ(pages.pageOf("inner"), before < 52 ? 0 : 1) << before;
  }
}

TEST(Contents, WrapALongTextBeforeTheNumber) {
  ShownDocument document;
  std::string text;
  for (int i = 0; i < 40; ++i) {
    text += "word" + std::to_string(i) + " ";
  }
  addContents(document, {{1, text + "end"}});
  const ShownPages pages = document.pages();
  const std::vector<PdfText> first = pages.at(0).lineOf("word0");
  const std::vector<PdfText> last = pages.at(0).lineOf("end");
  EXPECT_EQ(first.size(), 1u);
  EXPECT_LT(last.front().y, first.front().y);
  EXPECT_EQ(last.back().text, "2");
}

TEST(Contents, LeadToTheirPlaces) {
  ShownDocument document;
  addContents(document, {{1, "First"}});
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.at(0).links.size(), 2u);
  EXPECT_EQ(pages.at(0).links[0].address, "#First");
  EXPECT_EQ(pages.at(0).links[1].address, "#First");
  EXPECT_NEAR(pages.at(0).links[1].right, 595.3 - 56.7, 0.1);
  EXPECT_TRUE(pages.place("First").starts_with("1 "));
}

TEST(Contents, HaveNoNumberForAMissingPlace) {
  ShownDocument document;
  document.beginContents();
  document.contentsItem(1, "nowhere", "Nowhere");
  document.end();
  document.paragraph("text");
  const ShownPages pages = document.pages();
  const std::vector<PdfText> line = pages.at(0).lineOf("Nowhere");
  ASSERT_EQ(line.size(), 3u);
  EXPECT_EQ(line[2].text.find_first_not_of(". "), std::string::npos) << line[2].text;
}

// A form begins with the colour of what was drawn before it.
TEST(Contents, HaveBlackNumbersAfterAShade) {
  ShownDocument document;
  document.beginCode({});
  document.text("code");
  document.end();
  addContents(document, {{1, "First"}});
  const ShownPages pages = document.pages();
  EXPECT_EQ(pages.at(0).lineOf("First").back().text, "2");
  EXPECT_EQ(pages.at(0).lineOf("First").back().color, 0u);
}

TEST(Contents, GoOnOverPages) {
  ShownDocument document;
  document.beginContents();
  for (int i = 1; i <= 200; ++i) {
    document.contentsItem(2, "place", "Item " + std::to_string(i));
  }
  document.end();
  document.anchor("place");
  document.paragraph("text");
  const ShownPages pages = document.pages();
  EXPECT_GT(pages.pageOf("Item 200"), 2);
  EXPECT_GT(pages.at(1).find("Item").y, 841.9 - 56.7 - 20);
}

}  // namespace
}  // namespace scrivalen::test
