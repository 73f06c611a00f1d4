#include "formats/pdf/typeset/tables/made_table.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <vector>

using namespace scrivalen;
using namespace scrivalen::test;
using document::Column;

namespace {

// Fails the test for a text that is not between the margins, as far as the place where it begins tells.
void expectOnPaper(const std::vector<DrawnPage>& pages) {
  constexpr double kMargin = 56.6;  // 20 mm
  for (const DrawnPage& page : pages) {
    for (const DrawnText& text : page.texts) {
      EXPECT_GE(text.x, kMargin) << text.text;
      EXPECT_LT(text.x, page.width - kMargin) << text.text;
      EXPECT_GT(text.baseline, kMargin) << text.text;
      EXPECT_LT(text.baseline, page.height - kMargin) << text.text;
    }
  }
}

std::set<std::string> wordsOf(const std::vector<DrawnPage>& pages) {
  std::set<std::string> all;
  for (const DrawnPage& page : pages) {
    for (const DrawnText& text : page.texts) {
      std::istringstream words(text.text);
      for (std::string word; words >> word;) {
        all.insert(word);
      }
    }
  }
  return all;
}

std::string numbered(const std::string& name, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    text += name + std::to_string(i) + " ";
  }
  return text;
}

}  // namespace

TEST(TableLimits, BreaksAWordThatNoLineHolds) {
  MadeTable table;
  table.addRow({"a", std::string(3000, 'W')});
  table.addRow({"b", "after"});
  const std::vector<DrawnPage> pages = table.pages();
  expectOnPaper(pages);
  std::size_t letters = 0;
  for (const DrawnText& text : pages.front().texts) {
    letters += text.text.front() == 'W' ? text.text.size() : 0;
    EXPECT_LE(static_cast<double>(text.text.size()) * 9 * 0.944, 482) << "no line is wider than the page's text";
  }
  EXPECT_EQ(letters, 3000u);
}

TEST(TableLimits, SetsARowOverTenPages) {
  MadeTable table;
  table.addRow({"H", "Text"}, true);
  table.addRow({"1", numbered("w", 11000)});
  table.addRow({"2", "after"});
  const std::vector<DrawnPage> pages = table.pages();
  EXPECT_GT(pages.size(), 10u);
  expectOnPaper(pages);
  EXPECT_EQ(wordsOf(pages).size(), 11000u + 5);
}

TEST(TableLimits, DoesNotRepeatHeadersThatLeaveTheRowsNoSpace) {
  MadeTable table;
  table.addRow({"H", numbered("h", 5000)}, true);
  table.addRow({"1", "row"});
  table.addRow({"2", "after"});
  const std::vector<DrawnPage> pages = table.pages();
  EXPECT_GT(pages.size(), 3u);
  expectOnPaper(pages);
  EXPECT_EQ(wordsOf(pages).size(), 5000u + 5);
  EXPECT_EQ(linesOf(pages.back()).find("h0 "), std::string::npos);
}

TEST(TableLimits, SplitsTenThousandColumns) {
  constexpr int kColumns = 10000;
  MadeTable table;
  for (int row = 0; row < 2; ++row) {
    table.beginRow(row == 0);
    for (int i = 0; i < kColumns; ++i) {
      table.cell((row == 0 ? "h" : "c") + std::to_string(i));
    }
    table.end();
  }
  const std::vector<DrawnPage> pages = table.pages();
  expectOnPaper(pages);
  EXPECT_EQ(wordsOf(pages).size(), 2u * kColumns);
  EXPECT_LE(pages.size(), 20u) << "short parts share pages";
}

TEST(TableLimits, DoesNotKeepAPageOfRowsOfVeryManyColumns) {
  constexpr int kColumns = 70000;
  MadeTable table{std::vector<Column>(kColumns)};
  for (int row = 0; row < 6; ++row) {
    table.addRow({"r" + std::to_string(row)});
  }
  const std::string lines = table.lines();
  EXPECT_LT(lines.find("r3"), lines.find("r4"));
  EXPECT_GT(lines.rfind("r3"), lines.find("r1"));
  EXPECT_LT(lines.rfind("r3"), lines.find("r4")) << "four rows have more cells than wait";
}

TEST(TableLimits, DrawsSpansOverAllColumns) {
  MadeTable table;
  table.addRow({"a", "b", "c"});
  table.beginRow(false);
  table.beginCell({.span = document::kWidestSpan});
  table.text("wide");
  table.end();
  table.end();
  const std::vector<DrawnPage> pages = table.pages();
  expectOnPaper(pages);
  EXPECT_EQ(wordsOf(pages), (std::set<std::string>{"a", "b", "c", "wide"}));
}

TEST(TableLimits, SetsWidthsThatAreFarApart) {
  std::vector<Column> columns(3);
  columns[0].width = 1e-6;
  columns[1].width = 1e6;
  columns[2].width = 1;
  MadeTable table(columns);
  table.addRow({"narrow", "wide", "also narrow"});
  const std::vector<DrawnPage> pages = table.pages();
  expectOnPaper(pages);
  EXPECT_EQ(linesOf(pages.front()), "narrow | wide | also\nnarrow");
}

TEST(TableLimits, KeepsLettersOfAnySizeInTheirCell) {
  MadeTable table;
  table.addRow({"a", "b"});
  for (int i = 0; i < 600; ++i) {
    table.addRow({std::to_string(i), "2026"});
  }
  for (const double size : {20.0, 300.0, 1000.0}) {
    table.beginRow(false);
    table.cell("sized");
    table.beginCell({});
    table.beginSized(size);
    table.text("WWW");
    table.end();
    table.end();
    table.end();
  }
  const std::vector<DrawnPage> pages = table.pages();
  expectOnPaper(pages);
  int letters = 0;
  for (const DrawnPage& page : pages) {
    for (const DrawnText& text : page.texts) {
      if (text.text.front() == 'W') {
        letters += static_cast<int>(text.text.size());
        EXPECT_LE(text.x + static_cast<double>(text.text.size()) * text.size * 0.944, 538.7) << text.size;
      }
    }
  }
  EXPECT_EQ(letters, 9);
}

TEST(TableLimits, FitsTheSmallestPaper) {
  MadeTable table({}, {{"paper", "50x50"}, {"margins", "200mm"}});
  table.addRow({"Header", "Other"}, true);
  for (int i = 0; i < 20; ++i) {
    table.addRow({"word" + std::to_string(i), numbered("x", 6)});
  }
  const std::vector<DrawnPage> pages = table.pages();
  for (const DrawnPage& page : pages) {
    for (const DrawnText& text : page.texts) {
      EXPECT_GT(text.x, 0) << text.text;
      EXPECT_LT(text.x, page.width) << text.text;
      EXPECT_GT(text.baseline, 0) << text.text;
      EXPECT_LT(text.baseline, page.height) << text.text;
    }
  }
  std::string letters;
  for (const DrawnPage& page : pages) {
    for (const DrawnText& text : page.texts) {
      letters += text.text;
    }
  }
  for (int i = 0; i < 20; ++i) {
    EXPECT_NE(letters.find(std::to_string(i)), std::string::npos) << i;
  }
}

TEST(TableLimits, KeepsTheColumnsOfADeeplyNestedTableOnThePaper) {
  MadeDocument document(*documentFormatOf("pdf"));
  constexpr int kDepth = 50;
  for (int i = 0; i < kDepth; ++i) {
    document.beginQuote();
  }
  document.beginTable({}, "");
  document.beginRow(false);
  for (int i = 0; i < 30; ++i) {
    document.cell("cell" + std::to_string(i));
  }
  document.end();
  document.end();
  const std::vector<DrawnPage> pages = drawnPages(document.bytes());
  expectOnPaper(pages);
  EXPECT_EQ(wordsOf(pages).size(), 30u);
}
