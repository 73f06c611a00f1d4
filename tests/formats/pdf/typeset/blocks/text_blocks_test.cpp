#include "document/pictures/picture.h"
#include "formats/pdf/typeset/shown_document.h"
#include "support/documents/pictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace scrivalen::test {
namespace {

using document::Align;
using document::Span;
using document::Task;

constexpr double kLeft = 56.7;
constexpr double kRight = 595.28 - 56.7;

ShownPages pagesOf(Span span) {
  ShownDocument document;
  document.beginParagraph(Align::Auto);
  document.text("usual ");
  document.addSpan(span, "span");
  document.end();
  return document.pages();
}

// The box of a picture with so many pixels an inch.
PdfImageBox boxOf(std::uint32_t width, std::uint32_t height, std::uint32_t xPerMetre, std::uint32_t yPerMetre,
                  double widthPt) {
  std::string reason;
  const std::string resolution = pngChunk("pHYs", bigEndian(xPerMetre, 4) + bigEndian(yPerMetre, 4) + '\1');
  const auto picture = document::Picture::read(greyPng(width, height, resolution), reason);
  EXPECT_NE(picture, nullptr) << reason;
  ShownDocument document;
  document.image(picture, "alternative", widthPt, {});
  const ShownPages pages = document.pages();
  EXPECT_EQ(pages.count(), 1u);
  EXPECT_EQ(pages.at(0).images().size(), 1u);
  return pages.at(0).images().empty() ? PdfImageBox() : pages.at(0).images()[0];
}

constexpr std::uint32_t kFewPerMetre = 394;       // 10 an inch, as few as count
constexpr std::uint32_t kManyPerMetre = 393'700;  // 10,000 an inch, as many as count

TEST(PictureBlocks, AreOnThePageHoweverTallTheyAre) {
  for (const double width : {0.0, 14'400.0}) {
    const PdfImageBox box = boxOf(1, 65'535, kManyPerMetre, kFewPerMetre, width);
    EXPECT_NEAR(box.height, 655.7, 1) << width;  // nine tenths of the page's text
    EXPECT_GT(box.width, 0) << width;
    EXPECT_LT(box.width, 0.01) << width;
    EXPECT_NEAR(box.x, kLeft, 0.1) << width;
  }
}

TEST(PictureBlocks, AreOnThePageHoweverWideTheyAre) {
  for (const double width : {0.0, 14'400.0}) {
    const PdfImageBox box = boxOf(65'535, 1, kFewPerMetre, kManyPerMetre, width);
    EXPECT_NEAR(box.width, kRight - kLeft, 0.1) << width;
    EXPECT_GT(box.height, 0) << width;
    EXPECT_LT(box.height, 0.01) << width;
  }
}

// A width in thousandths of a point would be rounded.
TEST(PictureBlocks, KeepTheHeightOfAPageWhereTheyAreNarrow) {
  const PdfImageBox box = boxOf(1, 60'000, 0, 0, 0);
  EXPECT_NEAR(box.height, 655.7, 1);
  EXPECT_NEAR(box.width, 0.0105, 0.001);
}

TEST(Title, IsShownAboveTheFirstBlock) {
  ShownDocument document;
  document.set("title", "The title");
  document.paragraph("text");
  const ShownPages pages = document.pages();
  EXPECT_EQ(pages.at(0).all(), "The title text");
  EXPECT_EQ(pages.at(0).texts()[0].size, 24);
  EXPECT_EQ(pages.outline(), "");
}

TEST(Title, IsNotShownBeforeAHeadingOrWhenItShouldNotBe) {
  ShownDocument document;
  document.set("title", "The title");
  document.heading(1, "Heading");
  EXPECT_EQ(document.pages().at(0).all(), "Heading");
  ShownDocument hidden;
  hidden.set("title", "The title");
  hidden.set("show-title", "no");
  hidden.paragraph("text");
  EXPECT_EQ(hidden.pages().at(0).all(), "text");
}

TEST(Headings, AreInProportionToTheText) {
  ShownDocument document;
  for (int level = 1; level <= 6; ++level) {
    document.heading(level, "Level " + std::to_string(level));
  }
  document.paragraph("text");
  const ShownPages pages = document.pages();
  const std::vector<double> sizes = {18, 14, 12, 11, 10, 10};
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    EXPECT_EQ(pages.at(0).texts()[i].size, sizes[i]) << i;
  }
  EXPECT_EQ(pages.at(0).find("text").size, 10);
  EXPECT_NE(pages.at(0).find("Level 5").font, pages.at(0).find("Level 6").font);
}

TEST(Headings, AreSmallerOnSmallPaper) {
  ShownDocument document;
  document.set("paper", "60x90");
  document.set("margins", "5mm");
  document.heading(1, "Recommendations");
  document.heading(3, "third");
  document.paragraph("text");
  const ShownPages pages = document.pages();
  EXPECT_LT(pages.at(0).find("Recommendations").size, 14);
  EXPECT_GT(pages.at(0).find("Recommendations").size, pages.at(0).find("third").size);
  EXPECT_GT(pages.at(0).find("third").size, pages.at(0).find("text").size);
}

TEST(Headings, AreSmallerRatherThanDividingAWord) {
  ShownDocument document;
  document.set("paper", "A5");
  document.heading(1, "Rechtsschutzversicherungsgesellschaften");
  document.heading(1, std::string(100, 'x'));
  const ShownPages pages = document.pages();
  const PdfText word = pages.at(0).find("Rechtsschutzversicherungsgesellschaften");
  EXPECT_LT(word.size, 18);
  EXPECT_GT(word.size, 14);
  EXPECT_EQ(pages.at(0).find("xxx").size, 18) << "too long in any size";
}

TEST(Paragraphs, KeepLettersOfAnySizeOnTheirPage) {
  for (const double size : {300.0, 2000.0}) {
    ShownDocument document;
    for (int list = 0; list < 2; ++list) {
      document.beginParagraph(Align::Auto);
      document.beginSized(size);
      document.text("WW");
      document.end();
      document.end();
      document.beginList(false, 1, true);
      document.beginItem(Task::None);
    }
    for (int i = 0; i < 4; ++i) {
      document.end();
    }
    const ShownPages pages = document.pages();
    int letters = 0;
    for (std::size_t page = 0; page < pages.count(); ++page) {
      for (const PdfText& text : pages.at(page).texts()) {
        letters += static_cast<int>(std::count(text.text.begin(), text.text.end(), 'W'));
        EXPECT_LE(text.x + 0.944 * text.size, kRight + 0.1);
        EXPECT_GT(text.y - 0.2 * text.size, 56.6);
      }
    }
    EXPECT_EQ(letters, 4);
  }
}

TEST(Paragraphs, HaveThirteenPointsFromLineToLine) {
  ShownDocument document;
  document.beginParagraph(Align::Auto);
  document.text("first");
  document.lineBreak();
  document.text("second");
  document.end();
  const ShownPages pages = document.pages();
  EXPECT_NEAR(pages.at(0).find("first").y - pages.at(0).find("second").y, 13, 0.01);
}

TEST(Paragraphs, AreAligned) {
  ShownDocument document;
  for (const Align align : {Align::Left, Align::Center, Align::Right}) {
    document.beginParagraph(align);
    document.text(align == Align::Left ? "left" : align == Align::Center ? "center" : "right");
    document.end();
  }
  const ShownPages pages = document.pages();
  EXPECT_NEAR(pages.at(0).find("left").x, kLeft, 0.1);
  EXPECT_NEAR(pages.at(0).find("center").x, (kLeft + kRight) / 2 - 14, 2);
  EXPECT_NEAR(pages.at(0).find("right").x, kRight - 20.6, 2);
}

TEST(Spans, ChangeTheFont) {
  for (const Span span : {Span::Strong, Span::Emphasis, Span::Code}) {
    const ShownPages pages = pagesOf(span);
    const ShownPage& page = pages.at(0);
    EXPECT_NE(page.find("span").font, page.find("usual").font);
    EXPECT_EQ(page.find("span").y, page.find("usual").y);
  }
}

TEST(Spans, OfCodeLeaveTheLinesEquallyHigh) {
  ShownDocument document;
  for (const bool isCode : {false, true}) {
    document.beginParagraph(Align::Auto);
    document.beginSpan(isCode ? Span::Code : Span::Emphasis);
    document.text(isCode ? "code" : "text");
    document.lineBreak();
    document.text(isCode ? "second" : "another");
    document.end();
    document.end();
  }
  const ShownPages pages = document.pages();
  const auto y = [&](std::string_view text) { return pages.at(0).find(text).y; };
  EXPECT_NEAR(y("code") - y("second"), y("text") - y("another"), 0.11);
  EXPECT_NEAR(y("another") - y("code"), 19, 0.11);
}

TEST(Spans, AreStruckOutOrUnderlined) {
  const ShownPages deleted = pagesOf(Span::Deleted);
  const PdfText through = deleted.at(0).find("span");
  ASSERT_EQ(deleted.at(0).areas().size(), 1u);
  EXPECT_NEAR(deleted.at(0).areas()[0].x, through.x, 0.1);
  EXPECT_GT(deleted.at(0).areas()[0].y, through.y + 1);
  EXPECT_LT(deleted.at(0).areas()[0].y, through.y + 5);
  const ShownPages underlined = pagesOf(Span::Underlined);
  ASSERT_EQ(underlined.at(0).areas().size(), 1u);
  EXPECT_LT(underlined.at(0).areas()[0].y, underlined.at(0).find("span").y);
  EXPECT_GT(underlined.at(0).areas()[0].y, underlined.at(0).find("span").y - 3);
}

TEST(Spans, HaveAStraightLineBelowThem) {
  ShownDocument document;
  document.beginParagraph(Align::Auto);
  document.addSpan(Span::Underlined, "other");
  document.text(" ");
  document.beginSpan(Span::Underlined);
  document.addSpan(Span::Superscript, "1");
  document.addSpan(Span::Strong, "bold");
  document.text("usual");
  document.addSpan(Span::Code, "code");
  document.end();
  document.end();
  const ShownPages pages = document.pages();
  std::vector<PdfArea> lines;
  for (const PdfArea& area : pages.at(0).areas()) {
    if (area.height < 3) {
      lines.push_back(area);
    }
  }
  ASSERT_GE(lines.size(), 5u);
  for (const PdfArea& line : lines) {
    EXPECT_NEAR(line.y, lines[0].y, 0.35) << line.x;
  }
  EXPECT_NEAR(lines[1].height, lines[2].height, 0.01);
  EXPECT_NEAR(lines[2].height, lines[3].height, 0.01);
}

TEST(Spans, AreRaisedOrLowered) {
  const ShownPages above = pagesOf(Span::Superscript);
  EXPECT_NEAR(above.at(0).find("span").y, above.at(0).find("usual").y + 3.5, 0.01);
  EXPECT_EQ(above.at(0).find("span").size, 6.5);
  const ShownPages below = pagesOf(Span::Subscript);
  EXPECT_NEAR(below.at(0).find("span").y, below.at(0).find("usual").y - 1.5, 0.01);
}

TEST(Spans, HaveColorsAndSizes) {
  ShownDocument document;
  document.beginParagraph(Align::Auto);
  document.beginColored(Rgb{0xFF0000}, Rgb{0x0000FF});
  document.text("red");
  document.end();
  document.beginSized(20);
  document.text("large");
  document.end();
  document.text("usual");
  document.end();
  const ShownPages pages = document.pages();
  EXPECT_EQ(pages.at(0).find("red").color, 0xFF0000u);
  ASSERT_EQ(pages.at(0).areasOf(0x0000FF).size(), 1u);
  EXPECT_NEAR(pages.at(0).areasOf(0x0000FF)[0].width, 14.45, 0.2);
  EXPECT_EQ(pages.at(0).find("large").size, 20);
  EXPECT_EQ(pages.at(0).find("large").color, 0u);
  EXPECT_EQ(pages.at(0).find("usual").size, 10);
}

TEST(Quotes, HaveABarAsHighAsTheirText) {
  ShownDocument document;
  document.beginQuote();
  document.paragraph("first");
  document.paragraph("last");
  document.end();
  document.paragraph("after");
  const ShownPages pages = document.pages();
  const ShownPage& page = pages.at(0);
  ASSERT_EQ(page.areas().size(), 1u);
  EXPECT_EQ(page.areas()[0].width, 2);
  EXPECT_GT(page.areas()[0].y + page.areas()[0].height, page.find("first").y + 7);
  EXPECT_LT(page.areas()[0].y, page.find("last").y);
  EXPECT_GT(page.areas()[0].y, page.find("after").y + 7);
  EXPECT_NEAR(page.find("first").x, kLeft + 14, 0.1);
  EXPECT_NEAR(page.find("after").x, kLeft, 0.1);
}

TEST(Quotes, HaveABarForEachLevelAndPage) {
  ShownDocument document;
  document.beginQuote();
  document.paragraph("outer");
  document.beginQuote();
  document.addLines(50);
  document.end();
  document.end();
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.count(), 2u);
  for (std::size_t page = 0; page < 2; ++page) {
    ASSERT_EQ(pages.at(page).areas().size(), 2u);
    EXPECT_NE(pages.at(page).areas()[0].x, pages.at(page).areas()[1].x);
  }
}

TEST(Quotes, DoNotReachToAHeadingBeforeThem) {
  ShownDocument document;
  document.heading(1, "Heading");
  document.beginQuote();
  document.paragraph("text");
  document.end();
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.at(0).areas().size(), 1u);
  EXPECT_LT(pages.at(0).areas()[0].y + pages.at(0).areas()[0].height, pages.at(0).find("Heading").y);
}

TEST(Lists, HaveMarkersBesideTheirItems) {
  ShownDocument document;
  document.beginList(true, 9, true);
  for (const char* text : {"nine", "ten"}) {
    document.beginItem(Task::None);
    document.text(text);
    document.end();
  }
  document.end();
  const ShownPages pages = document.pages();
  EXPECT_EQ(pages.at(0).all(), "9. nine 10. ten");
  const std::vector<PdfText> line = pages.at(0).lineOf("ten");
  ASSERT_EQ(line.size(), 2u);
  EXPECT_LT(line[0].x, line[1].x);
  EXPECT_EQ(pages.at(0).find("nine").x, line[1].x);
}

TEST(Lists, KeepNumbersOfThreeDigitsWithinTheMargin) {
  for (const int first : {98, 998, 9998}) {
    ShownDocument document;
    document.beginList(true, first, true);
    for (const char* text : {"before", "last", "wide", "after"}) {
      document.beginItem(Task::None);
      document.text(text);
      document.end();
    }
    document.end();
    document.paragraph("paragraph");
    const ShownPages pages = document.pages();
    for (const char* text : {"before", "last", "wide", "after"}) {
      const std::vector<PdfText> line = pages.at(0).lineOf(text);
      ASSERT_EQ(line.size(), 2u) << text;
      EXPECT_GE(line[0].x, kLeft - 0.1) << line[0].text;
    }
    EXPECT_EQ(pages.at(0).find("wide").x, pages.at(0).find("after").x);
    EXPECT_NEAR(pages.at(0).find("paragraph").x, kLeft, 0.1);
  }
}

TEST(Lists, HaveTheFullStopOfTheirNumbersBesideTextFromRightToLeft) {
  ShownDocument document;
  document.beginList(true, 98, true);
  for (int i = 0; i < 3; ++i) {
    document.beginItem(i == 1 ? Task::Open : Task::None);
    document.text("\u05E9\u05DC\u05D5\u05DD");
    document.end();
  }
  document.end();
  const ShownPages pages = document.pages();
  constexpr double kDigit = 5.56;
  EXPECT_NEAR(pages.at(0).find("98").x, kRight - 17 + 2.8, 0.2);
  for (const char* number : {"98", "99", "100"}) {
    const std::vector<PdfText> line = pages.at(0).lineOf(number);
    EXPECT_EQ(line.back().text, number) << "further right than anything else of the line";
    const bool hasBox = number == std::string_view("99");
    EXPECT_EQ(line[line.size() - 2].text, hasBox ? " ." : ".");
  }
  EXPECT_LT(pages.at(0).find("\u2610").x, pages.at(0).find("99").x - 2.7);
  EXPECT_LE(pages.at(0).find("100").x, kRight - 3 * kDigit);
}

TEST(Lists, HangTheLinesOfAnItem) {
  ShownDocument document;
  document.beginList(false, 1, true);
  document.beginItem(Task::None);
  for (int i = 0; i < 50; ++i) {
    document.text("word ");
  }
  document.end();
  document.end();
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.at(0).texts().size(), 4u);
  EXPECT_EQ(pages.at(0).texts()[0].text, "\u2022");
  EXPECT_EQ(pages.at(0).texts()[1].x, pages.at(0).texts()[3].x);
}

TEST(Lists, NestWithOtherMarkers) {
  ShownDocument document;
  for (const char* text : {"outer", "inner", "innermost"}) {
    document.beginList(false, 1, true);
    document.beginItem(Task::None);
    document.text(text);
  }
  for (int i = 0; i < 6; ++i) {
    document.end();
  }
  const ShownPages pages = document.pages();
  EXPECT_EQ(pages.at(0).all(), "\u2022 outer \u2013 inner \u2022 innermost");
  EXPECT_NEAR(pages.at(0).find("inner").x - pages.at(0).find("outer").x, 16, 0.1);
}

TEST(Lists, MarkItemsWithoutText) {
  ShownDocument document;
  document.beginList(true, 1, true);
  for (int i = 0; i < 2; ++i) {
    document.beginItem(Task::None);
    document.end();
  }
  document.end();
  EXPECT_EQ(document.pages().at(0).all(), "1. 2.");
}

constexpr const char* kHebrew = "\u05E9\u05DC\u05D5\u05DD";

TEST(Lists, AreOnTheRightInTextFromRightToLeft) {
  ShownDocument document;
  document.beginList(true, 1, true);
  document.beginItem(Task::None);
  document.text(kHebrew);
  document.end();
  document.end();
  const ShownPages pages = document.pages();
  const PdfText marker = pages.at(0).find("1");
  EXPECT_NEAR(pages.at(0).find(".").x, kRight - 17, 0.2);
  EXPECT_NEAR(marker.x, kRight - 17 + 2.8, 0.2);
  for (const PdfText& text : pages.at(0).texts()) {
    EXPECT_LE(text.x, marker.x);
    EXPECT_GT(text.x, kRight - 70);
  }
}

TEST(Quotes, HaveTheirBarOnTheRightInTextFromRightToLeft) {
  ShownDocument document;
  document.beginQuote();
  document.paragraph(kHebrew);
  document.end();
  document.beginQuote();
  document.paragraph("left");
  document.end();
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.at(0).areas().size(), 2u);
  EXPECT_NEAR(pages.at(0).areas()[0].x, kRight - 4, 0.1);
  EXPECT_NEAR(pages.at(0).areas()[1].x, kLeft + 2, 0.1);
}

TEST(Lists, KeepWideMarkersOnThePaper) {
  ShownDocument document;
  document.set("margins", "20mm 20mm 20mm 0mm");
  document.beginList(true, 1000000, true);
  document.beginItem(Task::None);
  document.text("text");
  document.end();
  document.end();
  const ShownPages pages = document.pages();
  EXPECT_GE(pages.at(0).find("1000000.").x, 0);
  EXPECT_GT(pages.at(0).find("1000000.").y, pages.at(0).find("text").y);
}

// The text of a file's fonts for a code: what a reader copies.
TEST(Lists, HaveBoxesForTasks) {
  ShownDocument document;
  document.beginList(false, 1, true);
  for (const Task task : {Task::Done, Task::Open}) {
    document.beginItem(task);
    document.text("task");
    document.end();
  }
  document.end();
  const ShownPages pages = document.pages();
  std::string maps;
  for (std::size_t i = 1; i < pages.objects().size(); ++i) {
    const std::string stream = pages.objects().stream(static_cast<int>(i));
    maps += stream.find("beginbfchar") == stream.npos && stream.find("beginbfrange") == stream.npos ? "" : stream;
  }
  EXPECT_NE(maps.find("<2611>"), maps.npos);
  EXPECT_NE(maps.find("<2610>"), maps.npos);
  EXPECT_EQ(document.warnings(), "");
}

constexpr std::uint32_t kShade = 0xF4F4F4;

TEST(Code, IsOnAShadeInAMonospacedFont) {
  ShownDocument document;
  document.paragraph("iiii");
  document.beginCode("c");
  document.text("int i;\n\n\tj");
  document.end();
  const ShownPages pages = document.pages();
  const ShownPage& page = pages.at(0);
  ASSERT_EQ(page.areasOf(kShade).size(), 1u);
  const PdfArea shade = page.areasOf(kShade)[0];
  EXPECT_NEAR(shade.width, kRight - kLeft, 0.2);
  EXPECT_NEAR(shade.height, 3 * 10.6 + 12, 0.5);
  EXPECT_GT(page.find("j").y, shade.y);
  EXPECT_NE(page.find("int i;").font, page.find("iiii").font);
  EXPECT_NEAR(page.find("int i;").y - page.find("j").y, 2 * 10.6, 0.2);
  EXPECT_EQ(page.find("j").text, "    j");
}

TEST(Code, HasAShadeOnEachPage) {
  ShownDocument document;
  document.beginCode({});
  for (int i = 1; i <= 150; ++i) {
    document.text("line " + std::to_string(i) + "\n");
  }
  document.end();
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.count(), 3u);
  for (std::size_t i = 0; i < pages.count(); ++i) {
    const ShownPage& page = pages.at(i);
    ASSERT_EQ(page.areasOf(kShade).size(), 1u);
    const PdfArea shade = page.areasOf(kShade)[0];
    EXPECT_GT(shade.y + shade.height, page.texts().front().y + 6 + 6);
    EXPECT_LT(shade.y, page.texts().back().y - 6);
    EXPECT_GE(shade.y, 56.6);
  }
}

TEST(Code, WrapsLinesWhereWordsEnd) {
  ShownDocument document;
  document.beginCode({});
  std::string line;
  for (int i = 0; i < 40; ++i) {
    line += "word" + std::to_string(i) + " ";
  }
  document.text(line + "end");
  document.end();
  const ShownPages pages = document.pages();
  ASSERT_GT(pages.at(0).texts().size(), 2u);
  std::string joined;
  for (const PdfText& text : pages.at(0).texts()) {
    EXPECT_TRUE(text.text.starts_with("word") || text.text.starts_with("end")) << text.text;
    joined += text.text + " ";
  }
  EXPECT_EQ(joined, line + "end ");
}

TEST(Code, KeepsALongWordBesideItsIndentation) {
  ShownDocument document;
  document.beginCode({});
  document.text("first\n    " + std::string(150, 'x'));
  document.end();
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.at(0).texts().size(), 3u);
  EXPECT_TRUE(pages.at(0).texts()[1].text.starts_with("    xxx"));
  EXPECT_NEAR(pages.at(0).texts()[0].y - pages.at(0).texts()[1].y, 10.6, 0.2);
  EXPECT_EQ(pages.at(0).texts()[1].text.size() + pages.at(0).texts()[2].text.size(), 154u);
}

TEST(Code, DropsAnIndentationThatLeavesNoRoom) {
  ShownDocument document;
  document.beginCode({});
  document.text(std::string(500, ' ') + "word");
  document.end();
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.at(0).texts().size(), 1u);
  EXPECT_EQ(pages.at(0).texts()[0].text, "word");
}

TEST(Rules, AreAsWideAsTheText) {
  ShownDocument document;
  document.paragraph("before");
  document.rule();
  document.paragraph("after");
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.at(0).areas().size(), 1u);
  EXPECT_NEAR(pages.at(0).areas()[0].width, kRight - kLeft, 0.2);
  EXPECT_LT(pages.at(0).areas()[0].y, pages.at(0).find("before").y);
  EXPECT_GT(pages.at(0).areas()[0].y, pages.at(0).find("after").y);
}

TEST(Sections, BeginPages) {
  ShownDocument document;
  document.set("header", "{section}");
  for (const char* name : {"one", "two"}) {
    document.beginSection(name, {});
    document.paragraph(std::string("text of ") + name);
    document.end();
  }
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.count(), 2u);
  EXPECT_EQ(pages.at(0).all(), "text of one one");
  EXPECT_EQ(pages.at(1).all(), "text of two two");
}

TEST(PageBreaks, AddNoEmptyPages) {
  ShownDocument document;
  document.pageBreak();
  document.paragraph("one");
  document.pageBreak();
  document.pageBreak();
  document.paragraph("two");
  document.pageBreak();
  EXPECT_EQ(document.pages().count(), 2u);
}

TEST(DeepNesting, LeavesRoomForTextAndMarkers) {
  ShownDocument document;
  for (int i = 0; i < 100; ++i) {
    document.beginQuote();
    document.beginList(true, 1, true);
    document.beginItem(Task::None);
  }
  document.text("innermost");
  for (int i = 0; i < 300; ++i) {
    document.end();
  }
  const ShownPages pages = document.pages();
  const int last = pages.pageOf("innermost");
  ASSERT_GE(last, 0);
  EXPECT_LT(pages.at(static_cast<std::size_t>(last)).find("innermost").x, 400);
  int markers = 0;
  for (std::size_t page = 0; page < pages.count(); ++page) {
    for (const PdfText& text : pages.at(page).texts()) {
      markers += text.text == "1." ? 1 : 0;
      EXPECT_GT(text.x, 0);
    }
  }
  EXPECT_EQ(markers, 100);
}

}  // namespace
}  // namespace scrivalen::test
