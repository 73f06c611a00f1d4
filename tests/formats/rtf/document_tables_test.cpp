#include "made_rtf.h"

#include "document/pictures/picture.h"
#include "support/documents/pictures.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace scrivalen::document;
using namespace scrivalen::test;

namespace {

// A table's rows, without the words that all rows of its size have in common.
std::string tableOf(const Content& content, const SettingValues& settings = {}) {
  std::string body = rtfBodyOf(content, settings);
  body = replaced(std::move(body), "\\trowd\\trgaph80\\trleft0\\trkeep", "ROW");
  body = replaced(std::move(body), "\\clbrdrb\\brdrs\\brdrw5\\brdrcf2", "");
  body = replaced(std::move(body), "\\pard\\plain\\intbl\\sb30\\sa30\\fs20", " CELLS");
  return replaced(std::move(body), "\\pard\\plain\\sl-160\\slmult0\\fs12\\par\n", "AFTER\n");
}

void putRow(Document& document, const std::vector<std::string>& cells, bool header = false) {
  document.beginRow(header);
  for (const std::string& cell : cells) {
    document.cell(cell);
  }
  document.end();
}

std::vector<std::string> cellsOf(const std::string& prefix, int count) {
  std::vector<std::string> cells;
  for (int i = 0; i < count; ++i) {
    cells.push_back(prefix + std::to_string(i));
  }
  return cells;
}

std::size_t countOf(const std::string& text, std::string_view part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
    ++count;
  }
  return count;
}

// Paper whose width is A4's; turning it gains nothing.
const SettingValues kSquare = {{"paper", "210x210"}};

// The right edge of a table's last column in each row.
std::vector<int> lastEdges(const std::string& rtf) {
  std::vector<int> edges;
  for (std::size_t row = rtf.find("\\trowd"); row != std::string::npos; row = rtf.find("\\trowd", row + 1)) {
    const std::size_t end = rtf.find("\\pard", row);
    edges.push_back(std::stoi(rtf.substr(rtf.rfind("\\cellx", end) + 6)));
  }
  return edges;
}

}  // namespace

TEST(RtfTable, RepeatsItsHeaderRowsAndAlignsNumbers) {
  EXPECT_EQ(tableOf([](Document& document) {
              document.beginTable({}, {});
              putRow(document, {"Article", "Price"}, true);
              putRow(document, {"Tea", "2.50"});
              document.end();
            }),
            "ROW\\trhdr\\clcbpat4\\cellx1131\\clcbpat4\\cellx1989 CELLS\\keepn\\b\\ql Article\\cell\n\\qr Price\\cell\n"
            "\\row\n"
            "ROW\\cellx1131\\cellx1989 CELLS\\ql Tea\\cell\n\\qr 2.50\\cell\n\\row\nAFTER\n");
}

TEST(RtfTable, WritesTextsOfCellsAsOtherTexts) {
  EXPECT_EQ(tableOf([](Document& document) {
              document.beginTable({}, {});
              putRow(document, {"{a}\nb", "", "\xC3\xA9"});
              document.end();
            }),
            "ROW\\cellx585\\cellx898\\cellx1210 CELLS\\ql \\{a\\}\\line b\\cell\n\\cell\n\\'E9\\cell\n\\row\nAFTER\n");
}

TEST(RtfTable, BreaksALongWordRatherThanSetAllTextSmaller) {
  const std::string longWord(20000, 'x');
  const std::string rtf = tableOf([&](Document& document) {
    document.beginTable({}, {});
    putRow(document, {longWord, "short"});
    document.end();
  });
  EXPECT_EQ(countOf(rtf, longWord + "\\cell"), 1u);
  EXPECT_EQ(countOf(rtf, " CELLS\\ql "), 1u);
}

TEST(RtfTable, MakesRoomForWordsInCapitals) {
  const auto widthOf = [](const std::string& text) {
    const Content content = [&](Document& document) {
      document.beginTable({}, {});
      putRow(document, {text}, true);
      document.end();
    };
    return lastEdges(rtfBodyOf(content, {})).at(0);
  };
  EXPECT_EQ(widthOf("Per_hundred"), widthOf("Price_total"));
  EXPECT_GT(widthOf("PER_HUNDRED"), widthOf("Per_hundred") + 200);
}

TEST(RtfTable, MergesTheWidthsOfColumns) {
  EXPECT_EQ(tableOf([](Document& document) {
              document.beginTable({}, {});
              putRow(document, {"a", "b", "c"});
              document.beginRow(false);
              document.beginCell({.span = 2});
              document.text("d");
              document.end();
              document.cell("e");
              document.end();
              document.end();
            }),
            "ROW\\cellx312\\cellx625\\cellx937 CELLS\\ql a\\cell\nb\\cell\nc\\cell\n\\row\n"
            "ROW\\cellx625\\cellx937 CELLS\\ql d\\cell\n\\ql e\\cell\n\\row\nAFTER\n");
}

TEST(RtfTable, FormatsCells) {
  EXPECT_EQ(
      tableOf([](Document& document) {
        document.beginTable({}, {});
        document.beginRow(false);
        for (const CellStyle& style :
             {CellStyle{.header = true}, {.align = Align::Center}, {.color = 0x000000}, {.background = 0xFFFFFF}}) {
          document.beginCell(style);
          document.text("x");
          document.end();
        }
        document.end();
        document.end();
      }),
      "ROW\\cellx312\\cellx625\\cellx937\\clcbpat252\\cellx1250 CELLS"
      "\\ql {\\b x}\\cell\n\\qc x\\cell\n\\ql {\\cf5 x}\\cell\n\\ql x\\cell\n\\row\nAFTER\n");
}

TEST(RtfTable, WritesSpansAndLinksInCells) {
  const std::string rtf = tableOf([](Document& document) {
    document.beginTable({}, {});
    document.beginRow(false);
    document.beginCell({});
    document.text("a ");
    document.beginSpan(Span::Strong);
    document.text("b");
    document.end();
    document.anchor("here");
    document.end();
    document.end();
    document.end();
  });
  EXPECT_NE(rtf.find("\\ql a {\\b b}{\\*\\bkmkstart here}{\\*\\bkmkend here}\\cell\n"), std::string::npos) << rtf;
}

TEST(RtfTable, MakesPicturesFitTheirCells) {
  std::string reason;
  const auto picture = Picture::read(greyPng(2000, 1000), reason);
  const std::string rtf = tableOf([&](Document& document) {
    std::vector<Column> columns(2);
    columns[0].width = 1;
    columns[1].width = 3;
    document.beginTable(columns, {});
    document.beginRow(false);
    document.cell("x");
    document.beginCell({});
    document.image(picture, "a box", 0, reason);
    document.end();
    document.end();
    document.end();
  });
  EXPECT_NE(rtf.find("\\cellx2410\\cellx9638 "), std::string::npos);
  EXPECT_NE(rtf.find("\\picwgoal7068\\pichgoal3534\n"), std::string::npos);
}

// 300 pixels of a 96th of an inch are 225 points; the padding of a cell is 160 twips.
TEST(RtfTable, IsWideEnoughForItsPictures) {
  std::string reason;
  const auto picture = Picture::read(greyPng(300, 200), reason);
  const std::string rtf = tableOf([&](Document& document) {
    document.beginTable({}, {});
    document.beginRow(false);
    document.cell("x");
    document.beginCell({});
    document.image(picture, "a long text for readers who do not see it", 0, reason);
    document.end();
    document.end();
    document.end();
  });
  EXPECT_NE(rtf.find("\\picwgoal4500\\pichgoal3000\n"), std::string::npos) << rtf;
  EXPECT_NE(rtf.find("ROW\\cellx312\\cellx5438 "), std::string::npos) << rtf;
}

TEST(RtfTable, HoldsAPlaceBeforeItForItsFirstCell) {
  const std::string rtf = tableOf([](Document& document) {
    document.anchor("here");
    document.beginTable({}, {});
    putRow(document, {"a"});
    putRow(document, {"b"});
    document.end();
  });
  EXPECT_NE(rtf.find("\\ql {\\*\\bkmkstart here}{\\*\\bkmkend here}a\\cell"), std::string::npos) << rtf;
  EXPECT_EQ(countOf(rtf, "bkmkstart"), 1u);
}

TEST(RtfTable, IsIndentedInAnItem) {
  const std::string rtf = rtfBodyOf([](Document& document) {
    document.beginList(false, 0, true);
    document.beginItem(Task::None);
    document.beginTable({}, {});
    putRow(document, {"a"});
  });
  EXPECT_NE(rtf.find("{\\listtext \\'95\\tab}\\par\n\\trowd\\trgaph80\\trleft440\\"), std::string::npos) << rtf;
  EXPECT_NE(rtf.find("\\cellx752\\"), std::string::npos) << rtf;
}

TEST(RtfTable, HasEqualColumnsOnRequest) {
  const std::string rtf = tableOf(
      [](Document& document) {
        document.beginTable({}, {});
        putRow(document, {"a", "longer"});
        document.end();
      },
      {{"widths", "equal"}});
  EXPECT_NE(rtf.find("ROW\\cellx4819\\cellx9638 "), std::string::npos) << rtf;
}

TEST(RtfTable, IsSetSmallerUntilItFits) {
  const std::string rtf = rtfBodyOf([](Document& document) {
    document.beginTable({}, {});
    putRow(document, cellsOf("Column", 12));
    document.end();
  });
  EXPECT_EQ(countOf(rtf, "\\trowd"), 1u);
  EXPECT_NE(rtf.find("\\fs15\\ql Column0\\cell"), std::string::npos) << rtf;
  EXPECT_LE(lastEdges(rtf).front(), 9638);
}

TEST(RtfTable, IsSplitIntoPartsThatRepeatTheFirstColumnAndTheHeader) {
  const std::string rtf = rtfBodyOf(
      [](Document& document) {
        document.beginTable({}, {});
        putRow(document, cellsOf("Heading", 20), true);
        for (int row = 0; row < 41; ++row) {
          putRow(document, cellsOf("r" + std::to_string(row) + "c", 20));
        }
        document.end();
      },
      kSquare);
  // Two parts of 40 rows, then two of the last row, each with its header.
  EXPECT_EQ(countOf(rtf, "\\trhdr"), 4u);
  EXPECT_EQ(countOf(rtf, "\\trowd"), 4u + 2 * 41);
  EXPECT_EQ(countOf(rtf, "Heading0\\cell"), 4u);
  EXPECT_EQ(countOf(rtf, "Heading19\\cell"), 2u);
  EXPECT_EQ(countOf(rtf, " r7c0\\cell"), 2u);
  for (int column = 1; column < 20; ++column) {
    EXPECT_EQ(countOf(rtf, "r40c" + std::to_string(column) + "\\cell"), 1u) << column;
  }
  EXPECT_LT(rtf.find("r39c19\\cell"), rtf.find("r40c1\\cell"));
  const std::vector<int> edges = lastEdges(rtf);
  EXPECT_LE(*std::max_element(edges.begin(), edges.end()), 9638);
}

TEST(RtfTable, IsOnTurnedPagesRatherThanInParts) {
  const std::string rtf = rtfBodyOf(
      [](Document& document) {
        document.paragraph("before");
        document.beginTable({}, {});
        putRow(document, cellsOf("Column", 20), true);
        document.end();
        document.beginTable({}, {});
        putRow(document, cellsOf("Column", 20), true);
        document.end();
        document.paragraph("after");
      },
      {{"footer", "x"}});
  const std::string kTurned =
      "\\pard\\plain\\sl-20\\slmult0\\fs2\\sect\\sectd\\sbkpage\\pgwsxn16838\\pghsxn11906\\headery567\\footery567"
      "\\lndscpsxn\n{\\footer\\pard\\plain\\s13\\widctlpar\\fs18\\tqc\\tx7285\\tqr\\tx14570 x\\tab \\tab "
      "\\par}\n\\trowd";
  const std::string kUpright =
      "\\pard\\plain\\sl-20\\slmult0\\fs2\\sect\\sectd\\sbkpage\\headery567\\footery567\n"
      "{\\footer\\pard\\plain\\s13\\widctlpar\\fs18\\tqc\\tx4819\\tqr\\tx9638 x\\tab \\tab \\par}\n\\pard";
  EXPECT_NE(rtf.find(kTurned), std::string::npos) << rtf;
  EXPECT_NE(rtf.find(kUpright), std::string::npos) << rtf;
  EXPECT_EQ(countOf(rtf, "\\sect\\"), 2u);
  EXPECT_LT(rtf.find(kTurned), rtf.find(kUpright));
  const std::vector<int> edges = lastEdges(rtf);
  ASSERT_EQ(edges.size(), 2u);
  EXPECT_GT(edges[0], 9638);
  EXPECT_LE(edges[0], 14570);
}

TEST(RtfTable, TakesTheHeadingsBeforeItToTurnedPages) {
  const std::string rtf = rtfBodyOf([](Document& document) {
    document.paragraph("before");
    document.pageBreak();
    document.heading(1, "One");
    document.anchor("here");
    document.heading(2, "Two");
    document.beginTable({}, {});
    putRow(document, cellsOf("Column", 20), true);
    document.end();
    document.heading(1, "Last");
  });
  const std::size_t turned = rtf.find("\\lndscpsxn\n");
  EXPECT_LT(rtf.find("before\\par"), turned);
  EXPECT_LT(turned, rtf.find("{\\*\\bkmkend one}One\\par\n"));
  EXPECT_LT(rtf.find("One\\par"), rtf.find("{\\*\\bkmkend two}Two\\par\n\\trowd"));
  EXPECT_NE(rtf.find("{\\*\\bkmkstart here}{\\*\\bkmkend here}{\\*\\bkmkstart two}"), std::string::npos) << rtf;
  EXPECT_EQ(rtf.find("\\pagebb"), std::string::npos);
  EXPECT_LT(rtf.rfind("\\sectd"), rtf.find("Last\\par"));
  EXPECT_EQ(countOf(rtf, "\\sectd"), 2u);
}

TEST(RtfTable, TakesOnlyTheLastOfManyHeadingsToTurnedPages) {
  const std::string rtf = rtfBodyOf([](Document& document) {
    for (int i = 1; i <= 2000; ++i) {
      document.heading(1, "Heading " + std::to_string(i));
      document.anchor("place" + std::to_string(i));
    }
    document.beginTable({}, {});
    putRow(document, cellsOf("Column", 20), true);
    document.end();
  });
  const std::size_t turned = rtf.find("\\lndscpsxn\n");
  EXPECT_LT(rtf.find("Heading 1800\\par"), turned);
  EXPECT_LT(turned, rtf.find("Heading 2000\\par"));
  EXPECT_NE(rtf.find("{\\*\\bkmkend place2000}"), std::string::npos);
  EXPECT_EQ(countOf(rtf, "\\sectd"), 1u) << "beyond the first";
}

TEST(RtfTable, BeginsItsSectionOnATurnedPage) {
  const std::string rtf = rtfOf([](Document& document) {
    document.beginSection("Wide", {});
    document.beginTable({}, {});
    putRow(document, cellsOf("Column", 20), true);
    document.end();
    document.end();
  });
  EXPECT_EQ(countOf(rtf, "\\sectd"), 1u);
  EXPECT_EQ(countOf(rtf, "\\pard\\plain\\sl-20"), 0u);
  EXPECT_NE(rtf.find("\\sectd\\sbkpage\\pgwsxn16838\\pghsxn11906\\"), std::string::npos);
}

TEST(RtfTable, IsOnTurnedPagesInFewerParts) {
  const auto turnedWith = [](int columns, std::string_view paper) {
    const std::string rtf = rtfOf(
        [columns](Document& document) {
          document.beginTable({}, {});
          putRow(document, cellsOf("Heading", columns), true);
          document.end();
        },
        {{"paper", paper}});
    return countOf(rtf, "\\pgwsxn") == 1u;
  };
  EXPECT_TRUE(turnedWith(35, "A4"));
  EXPECT_FALSE(turnedWith(22, "A4"));       // two parts either way
  EXPECT_FALSE(turnedWith(35, "210x210"));  // no wider
}

TEST(RtfTable, HasNoMoreThan63ColumnsInAPart) {
  const std::string rtf = rtfBodyOf(
      [](Document& document) {
        document.beginTable({}, {});
        putRow(document, std::vector<std::string>(130, "x"));
        document.end();
      },
      {{"paper", "1200x1200"}});
  std::vector<std::size_t> columns;
  for (std::size_t row = rtf.find("\\trowd"); row != std::string::npos; row = rtf.find("\\trowd", row + 1)) {
    columns.push_back(countOf(rtf.substr(row, rtf.find("\\pard", row) - row), "\\cellx"));
  }
  EXPECT_EQ(columns, (std::vector<std::size_t>{63, 63, 6}));
}

TEST(RtfTable, WritesASpanOfTwoPartsInBothOfThem) {
  const std::string rtf = rtfBodyOf(
      [](Document& document) {
        document.beginTable({}, {});
        putRow(document, cellsOf("Heading", 20), true);
        document.beginRow(false);
        document.cell("first");
        document.beginCell({.span = 19});
        document.text("over all");
        document.end();
        document.end();
        document.end();
      },
      kSquare);
  EXPECT_EQ(countOf(rtf, "over all\\cell"), 1u);
  EXPECT_EQ(countOf(rtf, "first\\cell"), 2u);
  EXPECT_EQ(countOf(rtf, "\\row\n"), 4u);
}

TEST(RtfTable, KeepsAWordThatIsWiderThanThePaper) {
  const std::string word(500, 'x');
  const std::string rtf = rtfBodyOf([&](Document& document) {
    document.beginTable({}, {});
    putRow(document, {word, "b", word});
    document.end();
  });
  EXPECT_EQ(countOf(rtf, word + "\\cell"), 3u);
  EXPECT_EQ(countOf(rtf, " b\\cell"), 1u);
  const std::vector<int> edges = lastEdges(rtf);
  EXPECT_LE(*std::max_element(edges.begin(), edges.end()), 9638);
}

TEST(RtfTable, WithoutRowsIsNotWritten) {
  EXPECT_EQ(countOf(rtfBodyOf([](Document& document) {
                      document.beginTable({}, {});
                      document.end();
                    }),
                    "\\trowd"),
            0u);
}
