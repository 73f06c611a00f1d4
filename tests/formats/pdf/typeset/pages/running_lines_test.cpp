#include "formats/pdf/typeset/shown_document.h"
#include "support/documents/pictures.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace scrivalen::test {
namespace {

// The texts of a line with bars between them.
std::string joined(const std::vector<PdfText>& line) {
  std::string result;
  for (const PdfText& text : line) {
    result += (result.empty() ? "" : "|") + text.text;
  }
  return result;
}

TEST(RunningLines, AreOnTheLeftInTheMiddleAndOnTheRight) {
  ShownDocument document;
  document.set("header", "left|middle|right");
  document.paragraph("text");
  const ShownPages pages = document.pages();
  const std::vector<PdfText> line = pages.at(0).lineOf("left");
  ASSERT_EQ(joined(line), "left|middle|right");
  EXPECT_NEAR(line[0].x, 56.7, 0.1);
  EXPECT_NEAR(line[1].x, 297.6 - 11.5, 1);
  EXPECT_LT(line[2].x, 595.3 - 56.7 - 10);
  EXPECT_GT(line[2].x, 595.3 - 56.7 - 20);
  EXPECT_EQ(line[0].size, 8);
}

TEST(RunningLines, HaveTheHeaderInTheTopMarginAndTheFooterInTheBottomMargin) {
  ShownDocument document;
  document.set("header", "header");
  document.set("footer", "footer");
  document.set("margins", "30mm 20mm 10mm 20mm");
  document.paragraph("text");
  const ShownPages pages = document.pages();
  EXPECT_NEAR(pages.at(0).find("header").y, 841.9 - 42.5, 0.1);
  EXPECT_NEAR(pages.at(0).find("footer").y, 14.2 - 4, 0.1);
}

TEST(RunningLines, ShowPageTitleDateAndSection) {
  ShownDocument document;
  document.set("title", "The title");
  document.set("header", "{page} {title} {date} {section}");
  document.beginSection("The section", "s");
  document.paragraph("text");
  document.end();
  EXPECT_TRUE(document.pages().at(0).has("1 The title 2026-01-31 The section"));
}

TEST(RunningLines, ShowTheDateThatIsSet) {
  ShownDocument document;
  document.set("date", "last winter");
  document.set("footer", "{date}");
  document.paragraph("text");
  EXPECT_TRUE(document.pages().at(0).has("last winter"));
}

TEST(RunningLines, ShowTheNumberOfPagesOnEachPage) {
  ShownDocument document;
  document.set("footer", "Page {page} of {pages} pages");
  for (int page = 0; page < 12; ++page) {
    document.paragraph("text");
    document.pageBreak();
  }
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.count(), 12u);
  EXPECT_EQ(joined(pages.at(0).lineOf("Page 1")), "Page 1 of|12 pages");
  EXPECT_EQ(joined(pages.at(11).lineOf("Page 12")), "Page 12 of|12 pages");
}

// The pages of a document with an empty line on each, whose footer has the number of pages on the right.
ShownPages numberedPages(std::string_view footer, int count, std::string_view margins = "20mm") {
  ShownDocument document;
  document.set("footer", footer);
  document.set("margins", margins);
  for (int page = 0; page < count; ++page) {
    document.paragraph("text");
    document.pageBreak();
  }
  return document.pages();
}

constexpr double kDigit = 4.45;  // wide in text of 8 points
constexpr double kRightEdge = 595.28 - 56.69;

TEST(RunningLines, EndTheNumberOfPagesOnTheRightAtTheMargin) {
  constexpr double kWord = 32.02;  // the width of "Page " and " of " in text of 8 points
  for (const auto& [count, digits] : {std::pair(9, 1), std::pair(12, 2), std::pair(120, 3)}) {
    const ShownPages pages = numberedPages("||Page {page} of {pages}", count);
    const std::vector<PdfText> line = pages.at(6).lineOf("Page 7");
    ASSERT_EQ(joined(line), "Page 7 of " + std::to_string(count));
    EXPECT_NEAR(line[0].x, kRightEdge - kWord - (1 + digits) * kDigit, 0.3) << count;
  }
}

TEST(RunningLines, CenterTheNumberOfPagesInTheMiddle) {
  for (const auto& [count, digits] : {std::pair(2, 1), std::pair(12, 2), std::pair(120, 3)}) {
    const ShownPages pages = numberedPages("|{page} / {pages}|", count);
    const std::vector<PdfText> line = pages.at(1).lineOf("2 / ");
    ASSERT_EQ(joined(line), "2 / " + std::to_string(count));
    EXPECT_NEAR(line[0].x, 595.28 / 2 - ((1 + digits) * kDigit + 6.67) / 2, 0.3) << count;
  }
}

TEST(RunningLines, EndTheNumberOfPagesAtTheMarginWhereThereAreMany) {
  const ShownPages pages = numberedPages("||{page} of {pages}", 120);
  const std::vector<PdfText> line = pages.at(110).lineOf("111");
  ASSERT_EQ(joined(line), "111| of|120");
  EXPECT_NEAR(line[2].x, kRightEdge - 3 * kDigit, 0.3);
  EXPECT_NEAR(line[0].x, kRightEdge - 11.12 - 6 * kDigit, 0.3);
}

TEST(RunningLines, CondenseANumberOfPagesThatHasNoRoomOnTheRight) {
  const ShownPages pages = numberedPages("||{page}/{pages}", 1000, "0mm");
  const auto at = [&](std::size_t page) { return pages.at(page).lineOf("/").back(); };
  EXPECT_EQ(at(6).text, "7/1000");
  EXPECT_NEAR(at(6).x, 595.28 - 4 - 5 * kDigit - 2.22, 0.3);
  EXPECT_EQ(at(499).text, "1000");
  // Three digits wide before page 1000, and 4 points from the edge of the paper.
  EXPECT_NEAR(at(499).x, 595.28 - 4 - 3 * kDigit, 0.3);
  EXPECT_NEAR(at(999).x, 595.28 - 4 - 4 * kDigit, 0.3);
}

TEST(RunningLines, StayOnThePaperWithoutMargins) {
  ShownDocument document;
  document.set("header", "left|middle|right");
  document.set("footer", "last");
  document.set("margins", "0mm");
  for (int line = 0; line < 60; ++line) {
    document.paragraph("text");
  }
  const ShownPages pages = document.pages();
  const ShownPage& page = pages.at(0);
  const PdfText left = page.find("left");
  EXPECT_NEAR(left.x, 4, 0.1);
  EXPECT_LT(left.y + 7.5, 841.9 - 3);
  EXPECT_LT(page.find("right").x + 16, 595.3 - 3);
  EXPECT_GT(page.find("last").y - 1.7, 3);
  EXPECT_LT(page.find("text").y + 9.5, left.y - 1.7);
  EXPECT_GT(page.texts().size(), 40u);
  double lowest = 841.9;
  for (const PdfText& text : page.texts()) {
    lowest = text.text == "text" ? std::min(lowest, text.y) : lowest;
  }
  EXPECT_GT(lowest - 2.2, page.find("last").y + 6);
}

TEST(RunningLines, DoNotShowASectionThatHasEnded) {
  ShownDocument document;
  document.set("header", "in {section}.");
  document.beginSection("One", {});
  document.paragraph("first");
  document.end();
  document.paragraph("after");
  document.pageBreak();
  document.paragraph("later");
  document.beginSection("Two", {});
  document.paragraph("second");
  document.pageBreak();
  document.end();
  document.heading(1, "Heading");
  document.paragraph("last");
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.count(), 4u);
  EXPECT_TRUE(pages.at(0).has("in One."));
  EXPECT_TRUE(pages.at(1).has("in ."));
  EXPECT_TRUE(pages.at(2).has("in Two."));
  EXPECT_TRUE(pages.at(3).has("in ."));
}

TEST(RunningLines, ShowTheMainHeadingsOfADocumentWithoutSections) {
  ShownDocument document;
  document.set("header", "in {section}.");
  document.paragraph("text");
  document.pageBreak();
  document.heading(1, "One");
  document.paragraph("text");
  document.heading(2, "Two");
  document.paragraph("text");
  document.heading(3, "Three");
  document.paragraph("text");
  document.pageBreak();
  document.paragraph("text");
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.count(), 3u);
  EXPECT_TRUE(pages.at(0).has("in ."));
  EXPECT_TRUE(pages.at(1).has("in Two."));
  EXPECT_TRUE(pages.at(2).has("in Two."));
}

TEST(RunningLines, NameTheFormOfTheNumberOfPagesOnceAPage) {
  ShownDocument document;
  document.set("header", "{pages}");
  document.set("footer", "{pages}");
  document.paragraph("text");
  const ShownPages pages = document.pages();
  const std::string page = pages.pageObject(0);
  const std::string resources = page.substr(page.find("/XObject<<"));
  EXPECT_EQ(resources.find("/T"), resources.rfind("/T"));
}

TEST(RunningLines, KeepUnknownPlacesAsTheyAre) {
  ShownDocument document;
  document.set("header", "{author} {PAGE} {page");
  document.paragraph("text");
  EXPECT_TRUE(document.pages().at(0).has("{author} {PAGE} {page"));
  EXPECT_EQ(document.warnings(), "");
}

TEST(RunningLines, MoveTheMiddlePartForALongLeftOne) {
  ShownDocument document;
  document.set("header", "A left part that reaches beyond the middle of the page and a little bit on|middle|right");
  document.paragraph("text");
  const std::vector<PdfText> line = document.pages().at(0).lineOf("left");
  ASSERT_EQ(line.size(), 3u);
  EXPECT_EQ(line[1].text, "middle");
  EXPECT_GT(line[1].x, 310);
  EXPECT_EQ(line[1].size, 8);
}

TEST(RunningLines, AreSmallerWhereTheyHaveNoRoom) {
  ShownDocument document;
  const std::string part = "A part that takes about two fifths of the whole line of text, ";
  document.set("header", part + "left|" + part + "middle|" + part + "right");
  document.paragraph("text");
  const ShownPages pages = document.pages();
  const std::vector<PdfText> line = pages.at(0).lineOf("left");
  ASSERT_EQ(joined(line), part + "left|" + part + "middle|" + part + "right");
  EXPECT_LT(line[0].size, 8);
  EXPECT_GE(line[0].size, 5);
  EXPECT_EQ(document.warnings(), "");
}

TEST(RunningLines, CutTextsThatAreStillTooLongAndWarn) {
  ShownDocument document;
  document.set("title", std::string(2000, 'W') + " end");
  document.set("header", "left|{title}, {page}|right");
  document.paragraph("text");
  const ShownPages pages = document.pages();
  const std::vector<PdfText> line = pages.at(0).lineOf("left");
  ASSERT_EQ(line.size(), 3u);
  EXPECT_EQ(line[0].size, 5);
  EXPECT_TRUE(line[1].text.ends_with("W\u2026, 1")) << line[1].text;
  EXPECT_LT(line[1].text.size(), 120u);
  EXPECT_GT(line[1].text.size(), 60u);
  EXPECT_EQ(document.warnings(), "1 x texts of the header or footer, which has no room for them, shortened\n");
}

TEST(RunningLines, DoNotWarnOfALongTitleThatTheyDoNotShow) {
  ShownDocument document;
  document.set("title", std::string(5000, 'W'));
  document.set("show-title", "no");
  document.set("header", "header");
  document.paragraph("text");
  EXPECT_EQ(document.warnings(), "");
}

TEST(RunningLines, CutBetweenCharacters) {
  ShownDocument document;
  std::string umlauts;
  for (int i = 0; i < 3000; ++i) {
    umlauts += "\u00FC";
  }
  document.set("header", umlauts);
  document.paragraph("text");
  const std::string line = document.pages().at(0).texts().back().text;
  ASSERT_TRUE(line.ends_with("\u00FC\u2026")) << line;
  EXPECT_EQ(umlauts.find(line.substr(0, line.size() - 3)), 0u) << line;
}

TEST(RunningLines, HaveThePictureBeforeTheLeftPart) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"logo.png";
  writeBytes(path, greyPng(120, 40));
  ShownDocument document;
  document.set("header-image", narrowPath(path));
  document.set("header", "left");
  document.paragraph("text");
  document.pageBreak();
  document.paragraph("text");
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.count(), 2u);
  for (std::size_t page = 0; page < 2; ++page) {
    ASSERT_EQ(pages.at(page).images().size(), 1u);
    const PdfImageBox& image = pages.at(page).images()[0];
    EXPECT_NEAR(image.x, 56.7, 0.1);
    EXPECT_GT(image.y, 841.9 - 56.7);
    EXPECT_LT(image.y + image.height, 841.9);
    EXPECT_NEAR(image.width / image.height, 3, 0.01);
    EXPECT_NEAR(pages.at(page).find("left").x, image.x + image.width + 6, 0.1);
  }
  EXPECT_EQ(document.warnings(), "");
}

TEST(RunningLines, WarnOfAPictureThatIsNone) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"logo.png";
  writeBytes(path, "no picture");
  ShownDocument document;
  document.set("header-image", narrowPath(path));
  document.paragraph("text");
  EXPECT_TRUE(document.pages().at(0).images().empty());
  EXPECT_NE(document.warnings().find("1 x cannot use the picture '"), std::string::npos);
}

TEST(RunningLines, WarnOfAPictureThatHasNoRoom) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"logo.png";
  writeBytes(path, greyPng(120, 40));
  ShownDocument document;
  document.set("header-image", narrowPath(path));
  document.set("margins", "0mm");
  document.paragraph("text");
  document.pageBreak();
  document.paragraph("text");
  EXPECT_TRUE(document.pages().at(0).images().empty());
  EXPECT_EQ(document.warnings(), "1 x the picture of the header, for which the page has no room, left out\n");
}

TEST(RunningLines, AreNotDrawnWithoutText) {
  ShownDocument document;
  document.paragraph("text");
  EXPECT_EQ(document.pages().at(0).all(), "text");
}

}  // namespace
}  // namespace scrivalen::test
