#include "document/pictures/picture.h"
#include "formats/pdf/typeset/shown_document.h"
#include "support/documents/pictures.h"

#include <gtest/gtest.h>

#include <functional>

namespace scrivalen::test {
namespace {

// A document with a number of lines before what an action adds.
ShownPages pagesWith(int lines, const std::function<void(ShownDocument&)>& add) {
  ShownDocument document;
  document.addLines(lines);
  add(document);
  return document.pages();
}

// Moves what an action adds line by line down a page; "Heading" and "next" are to be on one page each time, and the
// page has to be left at last.
void expectTogether(const std::function<void(ShownDocument&)>& add) {
  bool isMoved = false;
  for (int lines = 30; lines < 40; ++lines) {
    const ShownPages pages = pagesWith(lines, add);
    const int heading = pages.pageOf("Heading");
    EXPECT_EQ(heading, pages.pageOf("next")) << lines;
    isMoved = isMoved || heading == 1;
  }
  EXPECT_TRUE(isMoved);
}

TEST(KeepRules, KeepAHeadingWithAParagraph) {
  expectTogether([](ShownDocument& document) {
    document.heading(1, "Heading");
    document.paragraph("next");
  });
}

TEST(KeepRules, KeepHeadingsWithEachOther) {
  expectTogether([](ShownDocument& document) {
    document.heading(1, "Heading");
    document.heading(2, "Another");
    document.heading(3, "Third");
    document.paragraph("next");
  });
}

TEST(KeepRules, KeepAHeadingWithATable) {
  expectTogether([](ShownDocument& document) {
    document.heading(1, "Heading");
    document.beginTable({}, {});
    document.addRow({"header"}, true);
    document.addRow({"next"});
    document.end();
  });
}

TEST(KeepRules, KeepAHeadingWithAList) {
  expectTogether([](ShownDocument& document) {
    document.heading(1, "Heading");
    document.beginList(true, 1, true);
    document.beginItem(document::Task::None);
    document.paragraph("next");
    document.end();
    document.end();
  });
}

TEST(KeepRules, KeepAHeadingWithCode) {
  expectTogether([](ShownDocument& document) {
    document.heading(1, "Heading");
    document.beginCode({});
    document.text("next\nline\nline");
    document.end();
  });
}

TEST(KeepRules, KeepAHeadingWithAQuote) {
  expectTogether([](ShownDocument& document) {
    document.heading(1, "Heading");
    document.beginQuote();
    document.paragraph("next");
    document.end();
  });
}

TEST(KeepRules, KeepTheLastHeadingOfAListWithWhatComesAfter) {
  expectTogether([](ShownDocument& document) {
    document.beginList(false, 1, false);
    document.beginItem(document::Task::None);
    document.heading(2, "Heading");
    document.end();
    document.end();
    document.paragraph("next");
  });
}

TEST(KeepRules, KeepAHeadingWithARule) {
  for (int lines = 30; lines < 40; ++lines) {
    const ShownPages pages = pagesWith(lines, [](ShownDocument& document) {
      document.heading(1, "Heading");
      document.rule();
    });
    EXPECT_EQ(static_cast<std::size_t>(pages.pageOf("Heading")), pages.count() - 1) << lines;
    EXPECT_EQ(pages.at(pages.count() - 1).areas().size(), 1u);
  }
}

TEST(KeepRules, KeepAHeadingAndARuleWithWhatComesAfter) {
  expectTogether([](ShownDocument& document) {
    document.heading(1, "Heading");
    document.rule();
    document.paragraph("next");
  });
  expectTogether([](ShownDocument& document) {
    document.heading(2, "Heading");
    document.rule();
    document.heading(2, "Another");
    document.paragraph("next");
  });
}

TEST(KeepRules, KeepManyHeadingsTogether) {
  bool isMoved = false;
  for (int lines = 10; lines < 30; ++lines) {
    const ShownPages pages = pagesWith(lines, [](ShownDocument& document) {
      document.heading(1, "Heading");
      for (int i = 0; i < 12; ++i) {
        document.heading(2, "Another");
      }
      document.paragraph("next");
    });
    EXPECT_EQ(pages.pageOf("Heading"), pages.pageOf("next")) << lines;
    isMoved = isMoved || pages.pageOf("Heading") == 1;
  }
  EXPECT_TRUE(isMoved);
}

TEST(KeepRules, DivideHeadingsThatNoPageHolds) {
  const ShownPages pages = pagesWith(20, [](ShownDocument& document) {
    for (int i = 0; i < 100; ++i) {
      document.heading(6, "Heading");
    }
    document.paragraph("next");
  });
  ASSERT_EQ(pages.count(), 4u);
  EXPECT_TRUE(pages.at(3).has("Heading Heading next"));
  std::size_t headings = 0;
  for (std::size_t page = 0; page < pages.count(); ++page) {
    for (const PdfText& text : pages.at(page).texts()) {
      headings += text.text == "Heading" ? 1 : 0;
    }
  }
  EXPECT_EQ(headings, 100u);
}

TEST(KeepRules, KeepAHeadingWithAPictureOfAnyHeight) {
  std::string reason;
  const auto picture = document::Picture::read(greyPng(1000, 3000), reason);
  ASSERT_NE(picture, nullptr) << reason;
  for (const int lines : {0, 5, 30}) {
    const ShownPages pages = pagesWith(lines, [&](ShownDocument& document) {
      document.heading(1, "Heading");
      document.heading(2, "Another");
      document.image(picture, "alternative", 0, {});
    });
    const int page = pages.pageOf("Heading");
    EXPECT_EQ(pages.at(static_cast<std::size_t>(page)).images().size(), 1u) << lines;
    EXPECT_GT(pages.at(static_cast<std::size_t>(page)).images().at(0).y, 56.0);
  }
}

TEST(KeepRules, LeaveNoLineAlone) {
  std::string words;
  for (int i = 0; i < 75; ++i) {
    words += "word ";
  }
  bool isDivided = false;
  for (int lines = 30; lines < 40; ++lines) {
    const ShownPages pages = pagesWith(lines, [&words](ShownDocument& document) { document.paragraph(words); });
    const auto linesOn = [&pages](std::size_t page) {
      int count = 0;
      for (const PdfText& text : page < pages.count() ? pages.at(page).texts() : std::vector<PdfText>()) {
        count += text.text.starts_with("word") ? 1 : 0;
      }
      return count;
    };
    EXPECT_EQ(linesOn(0) + linesOn(1), 4) << lines;
    EXPECT_NE(linesOn(0), 1) << lines;
    EXPECT_NE(linesOn(1), 1) << lines;
    isDivided = isDivided || linesOn(0) == 2;
  }
  EXPECT_TRUE(isDivided);
}

int linesOfCodeOn(const ShownPages& pages, std::size_t page) {
  int count = 0;
  for (const PdfText& text : page < pages.count() ? pages.at(page).texts() : std::vector<PdfText>()) {
    count += text.text.starts_with("code") ? 1 : 0;
  }
  return count;
}

// A blank line is no company.
TEST(KeepRules, LeaveNoLineOfCodeAlone) {
  bool isDivided = false;
  for (int lines = 30; lines < 40; ++lines) {
    const ShownPages pages = pagesWith(lines, [](ShownDocument& document) {
      document.beginCode({});
      document.text("code\n\ncode\n\n\ncode\n\ncode");
      document.end();
    });
    EXPECT_EQ(linesOfCodeOn(pages, 0) + linesOfCodeOn(pages, 1), 4) << lines;
    EXPECT_NE(linesOfCodeOn(pages, 0), 1) << lines;
    EXPECT_NE(linesOfCodeOn(pages, 1), 1) << lines;
    isDivided = isDivided || linesOfCodeOn(pages, 0) == 2;
  }
  EXPECT_TRUE(isDivided);
}

TEST(KeepRules, KeepAHeadingWithTheFirstTextsOfCode) {
  expectTogether([](ShownDocument& document) {
    document.heading(1, "Heading");
    document.beginCode({});
    document.text("next\n\nline\nline\nline");
    document.end();
  });
}

// The shade is as high as two lines.
TEST(KeepRules, DrawNoBlankLineOfCodeWhereAPageEndsOrBegins) {
  const ShownPages pages = pagesWith(30, [](ShownDocument& document) {
    document.beginCode({});
    document.text("code\ncode" + std::string(30, '\n') + "code\ncode");
    document.end();
  });
  ASSERT_EQ(pages.count(), 2u);
  constexpr std::uint32_t kShade = 0xF4F4F4;
  for (std::size_t page = 0; page < 2; ++page) {
    ASSERT_EQ(linesOfCodeOn(pages, page), 2);
    ASSERT_EQ(pages.at(page).areasOf(kShade).size(), 1u);
    EXPECT_NEAR(pages.at(page).areasOf(kShade)[0].height, 2 * 10.6 + 12, 0.5);
  }
}

TEST(KeepRules, FillAPageToItsEdge) {
  // 38 lines of 13 points with 6 points between them are 716 of the 728.5 points of the page.
  const ShownPages pages = pagesWith(39, [](ShownDocument&) {});
  EXPECT_EQ(pages.pageOf("Line 38"), 0);
  EXPECT_EQ(pages.pageOf("Line 39"), 1);
}

// How many pages have three paragraphs, 18 points, a heading of 21.6, 8 points and a paragraph: 111.6 points.
std::size_t pagesWithMargin(std::string_view margin) {
  ShownDocument document;
  document.set("paper", "210x100");
  document.set("margins", margin);
  document.addLines(3);
  document.heading(1, "Heading");
  document.paragraph("next");
  return document.pages().count();
}

TEST(KeepRules, PutAHeadingWhereItJustFits) {
  EXPECT_EQ(pagesWithMargin("85.93pt"), 1u);
  EXPECT_EQ(pagesWithMargin("85.94pt"), 2u);
}

}  // namespace
}  // namespace scrivalen::test
