#include "document/pictures/picture.h"
#include "made_docx.h"
#include "support/documents/pictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

using namespace scrivalen::document;
using namespace scrivalen::test;

namespace {

void putRow(Document& document, std::initializer_list<std::string_view> cells, bool header = false) {
  document.beginRow(header);
  for (const std::string_view cell : cells) {
    document.cell(cell);
  }
  document.end();
}

std::string tableOf(const Content& rows, const SettingValues& settings = {}) {
  return bodyOf(
      [&](Document& document) {
        document.beginTable({}, "t");
        rows(document);
        document.end();
      },
      settings);
}

std::size_t countOf(std::string_view part, std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + part.size())) {
    ++count;
  }
  return count;
}

// A cell with a picture; its width in points, 0 for its own.
void putPicture(Document& document, std::uint32_t width, std::uint32_t height, double widthPt = 0, int span = 1) {
  std::string reason;
  document.beginCell({.span = span});
  document.image(Picture::read(greyPng(width, height), reason), std::string(100, 'x'), widthPt, {});
  document.end();
}

std::vector<int> numbersAfter(std::string_view part, const std::string& text) {
  std::vector<int> numbers;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
    numbers.push_back(std::stoi(text.substr(at + part.size())));
  }
  return numbers;
}

std::vector<int> columnsOf(const std::string& table) { return numbersAfter("<w:gridCol w:w=\"", table); }

constexpr int kEmusPerPoint = 12700;
constexpr double kWithSlack = 1.1;  // of columns that fit

// The widths of the pictures in points.
std::vector<int> picturesOf(const std::string& table) {
  std::vector<int> widths = numbersAfter("<wp:extent cx=\"", table);
  for (int& width : widths) {
    width /= kEmusPerPoint;
  }
  return widths;
}

constexpr std::string_view kSpace = "<w:p><w:pPr><w:pStyle w:val=\"TableSpace\"/></w:pPr></w:p>\n";

// Too wide for a page that is upright.
void writeWideTable(Document& document) {
  document.beginTable({}, "t");
  document.beginRow(true);
  for (int column = 0; column < 18; ++column) {
    document.cell("Column" + std::to_string(column));
  }
  document.end();
  document.end();
}

}  // namespace

TEST(DocxTables, HaveWidthsAStyleAndRowsThatAreNotDivided) {
  EXPECT_EQ(tableOf([](Document& document) {
              putRow(document, {"a", "12"});
            }),
            "<w:tbl><w:tblPr><w:tblStyle w:val=\"Table\"/><w:tblW w:w=\"761\" w:type=\"dxa\"/>"
            "<w:tblInd w:w=\"0\" w:type=\"dxa\"/><w:tblLayout w:type=\"fixed\"/>"
            "<w:tblLook w:val=\"0600\" w:firstRow=\"0\" w:lastRow=\"0\" w:firstColumn=\"0\" w:lastColumn=\"0\""
            " w:noHBand=\"1\" w:noVBand=\"1\"/></w:tblPr><w:tblGrid><w:gridCol w:w=\"312\"/><w:gridCol w:w=\"449\"/>"
            "</w:tblGrid>\n"
            "<w:tr><w:trPr><w:cantSplit/></w:trPr>"
            "<w:tc><w:tcPr><w:tcW w:w=\"312\" w:type=\"dxa\"/></w:tcPr><w:p><w:pPr><w:pStyle w:val=\"TableText\"/>"
            "</w:pPr><w:r><w:t>a</w:t></w:r></w:p></w:tc>"
            "<w:tc><w:tcPr><w:tcW w:w=\"449\" w:type=\"dxa\"/></w:tcPr><w:p><w:pPr><w:pStyle w:val=\"TableText\"/>"
            "<w:jc w:val=\"right\"/></w:pPr><w:r><w:t>12</w:t></w:r></w:p></w:tc></w:tr>\n"
            "</w:tbl>\n" +
                std::string(kSpace));
}

TEST(DocxTables, RepeatTheirHeaderRows) {
  const std::string table = tableOf([](Document& document) {
    putRow(document, {"A"}, true);
    putRow(document, {"B"}, true);
    putRow(document, {"c"});
  });
  EXPECT_EQ(countOf("<w:tblLook w:val=\"0620\" w:firstRow=\"1\"", table), 1u);
  EXPECT_EQ(countOf("<w:trPr><w:cantSplit/><w:tblHeader/></w:trPr>", table), 2u);
  EXPECT_EQ(countOf("<w:pStyle w:val=\"TableHeading\"/><w:keepNext/>", table), 2u);
}

TEST(DocxTables, LeaveTheShadeOfRepeatedRowsToTheirStyle) {
  const std::string table = tableOf([](Document& document) {
    putRow(document, {"A"}, true);
    putRow(document, {"B"}, true);
    putRow(document, {"c"});
    putRow(document, {"D"}, true);
  });
  const std::size_t shade = table.find("w:fill=\"E6EAEE\"");
  EXPECT_EQ(countOf("w:fill=\"E6EAEE\"", table), 1u);
  EXPECT_GT(shade, table.find("<w:t>c</w:t>"));
  EXPECT_LT(shade, table.find("<w:t>D</w:t>"));
}

TEST(DocxTables, SpanAndColorCells) {
  const std::string table = tableOf([](Document& document) {
    putRow(document, {"a", "b", "c"});
    document.beginRow(false);
    document.beginCell({.span = 2, .color = 0x0000FF, .background = 0xFFFF00});
    document.text("x");
    document.end();
    document.cell("y");
    document.end();
  });
  EXPECT_EQ(countOf("<w:gridSpan w:val=\"2\"/><w:shd w:val=\"clear\" w:color=\"auto\" w:fill=\"FFFF00\"/></w:tcPr>"
                    "<w:p><w:pPr><w:pStyle w:val=\"TableText\"/></w:pPr><w:r><w:rPr><w:color w:val=\"0000FF\"/></w:rPr>"
                    "<w:t>x</w:t></w:r></w:p></w:tc>",
                    table),
            1u)
      << table;
}

TEST(DocxTables, HaveContentInCells) {
  const std::string table = tableOf([](Document& document) {
    document.beginRow(false);
    document.beginCell({.align = Align::Center});
    document.text("a\n");
    document.beginSpan(Span::Strong);
    document.text("b");
    document.end();
    document.end();
    document.end();
  });
  EXPECT_EQ(countOf("<w:pStyle w:val=\"TableText\"/><w:jc w:val=\"center\"/></w:pPr><w:r><w:t>a</w:t><w:br/></w:r>"
                    "<w:r><w:rPr><w:b/><w:bCs/></w:rPr><w:t>b</w:t></w:r></w:p></w:tc>",
                    table),
            1u)
      << table;
}

TEST(DocxTables, HaveAParagraphInEmptyCells) {
  const std::string table = tableOf([](Document& document) { putRow(document, {"", "b"}); });
  EXPECT_EQ(countOf("<w:p><w:pPr><w:pStyle w:val=\"TableText\"/></w:pPr><w:r></w:r></w:p></w:tc>", table), 1u) << table;
}

TEST(DocxTables, AreSetSmallerInAStyleOfThatSize) {
  const std::string docx = docxOf([](Document& document) {
    document.beginTable({}, "t");
    for (int row = 0; row < 2; ++row) {
      document.beginRow(row == 0);
      for (int column = 0; column < 14; ++column) {
        document.cell("Column" + std::to_string(column));
      }
      document.end();
    }
    document.end();
  });
  const std::string text = partOf(docx, "word/document.xml");
  const std::size_t at = text.find("TableHeading") + 12;
  const std::string size = text.substr(at, 2);
  EXPECT_NE(styleOf(docx, "TableText" + size).find("<w:sz w:val=\"" + size + "\"/>"), std::string::npos);
  EXPECT_NE(text.find("<w:tblCellMar>"), std::string::npos);
}

TEST(DocxTables, HaveAtMost63ColumnsInAPart) {
  const std::string table = tableOf([](Document& document) {
    for (int row = 0; row < 45; ++row) {
      document.beginRow(row == 0);
      for (int column = 0; column < 200; ++column) {
        document.cell(std::to_string(row) + "/" + std::to_string(column));
      }
      document.end();
    }
  });
  const std::size_t parts = countOf("<w:tbl>", table);
  EXPECT_GE(parts, 8u);
  EXPECT_EQ(countOf("<w:t>0/150</w:t>", table), 2u) << "the header is in the part of each 40 rows";
  EXPECT_EQ(countOf("<w:t>44/0</w:t>", table), parts / 2) << "the first column is in all parts";
  for (int row = 1; row < 45; ++row) {
    EXPECT_EQ(countOf("<w:t>" + std::to_string(row) + "/199</w:t>", table), 1u);
  }
  for (std::size_t at = table.find("<w:tblGrid>"); at != std::string::npos; at = table.find("<w:tblGrid>", at + 1)) {
    EXPECT_LE(countOf("<w:gridCol", table.substr(at, table.find("</w:tblGrid>", at) - at)), 63u);
  }
}

// Bookmarks of one name, or of one number, are an error of the file.
TEST(DocxTables, HaveThePlacesOfTheirHeaderOnlyInTheFirstPart) {
  const std::string table = tableOf([](Document& document) {
    for (int row = 0; row < 95; ++row) {
      document.beginRow(row == 0);
      for (int column = 0; column < 70; ++column) {
        document.beginCell({});
        document.anchor("r" + std::to_string(row) + "c" + std::to_string(column));
        document.text("t" + std::to_string(row));
        document.end();
      }
      document.end();
    }
  });
  ASSERT_GE(countOf("<w:tbl>", table), 6u) << "three times in two parts or more";
  EXPECT_EQ(countOf("<w:t>t0</w:t>", table), 3 * 70u + countOf("<w:tbl>", table) - 3) << "the header is in all";
  for (const int row : {0, 1, 94}) {
    for (const int column : {0, 1, 69}) {
      const std::string name = "r" + std::to_string(row) + "c" + std::to_string(column);
      EXPECT_EQ(countOf("w:name=\"" + name + "\"", table), 1u) << name;
    }
  }
}

TEST(DocxTables, TurnThePageWhenThatGivesThemRoom) {
  const std::string body = bodyOf([](Document& document) {
    document.paragraph("before");
    document.heading(1, "Wide");
    document.beginTable({}, "t");
    for (int row = 0; row < 2; ++row) {
      document.beginRow(row == 0);
      for (int column = 0; column < 18; ++column) {
        document.cell("Column" + std::to_string(column));
      }
      document.end();
    }
    document.end();
    document.paragraph("after");
  });
  const std::size_t upright = body.find("<w:pgSz w:w=\"11906\" w:h=\"16838\"/>");
  const std::size_t turned = body.find("<w:pgSz w:w=\"16838\" w:h=\"11906\" w:orient=\"landscape\"/>");
  EXPECT_LT(body.find("before"), upright);
  EXPECT_LT(upright, body.find("Wide"));
  EXPECT_LT(body.find("</w:tbl>"), turned);
  EXPECT_LT(turned, body.find("after"));
}

// Headings in a row do not wait for a table without limit.
TEST(DocxTables, TurnOnlyThePagesOfTheLastHeadings) {
  const std::string body = bodyOf([](Document& document) {
    for (int i = 1; i <= 2000; ++i) {
      document.heading(1, "Heading " + std::to_string(i));
    }
    writeWideTable(document);
  });
  const std::size_t upright = body.find("<w:pgSz w:w=\"11906\" w:h=\"16838\"/>");
  ASSERT_NE(upright, std::string::npos);
  EXPECT_LT(body.find("<w:t>Heading 1800</w:t>"), upright);
  EXPECT_LT(upright, body.find("<w:t>Heading 2000</w:t>"));
  EXPECT_EQ(countOf("<w:sectPr>", body), 1u);
  EXPECT_EQ(countOf("<w:pStyle w:val=\"Heading1\"/>", body), 2000u);
}

TEST(DocxTables, AreBelowTheTitleOnTheTurnedPage) {
  const std::string body = bodyOf([](Document& document) { writeWideTable(document); }, {{"title", "Wide"}});
  EXPECT_NE(body.find("Wide"), std::string::npos);
  EXPECT_EQ(body.find("<w:sectPr>"), std::string::npos) << "no page before that of the table";
}

// "Number" in bold Arial takes 3.78 times the font's size, beside the padding of 160 twips.
TEST(DocxTables, HaveRoomForTheBoldWordsOfTheirHeader) {
  const std::string table = tableOf([](Document& document) {
    putRow(document, {"Number", "Text"}, true);
    putRow(document, {"1", std::string(50, 'x').append(" ").append(std::string(300, 'x'))});
  });
  const std::string_view kFirstColumn = "<w:gridCol w:w=\"";
  const std::size_t at = table.find(kFirstColumn);
  ASSERT_NE(at, std::string::npos);
  EXPECT_GE(std::stoi(table.substr(at + kFirstColumn.size())), 756 + 160);
}

TEST(DocxTables, GoFromRightToLeftInSuchALanguage) {
  const std::string table = tableOf(
      [](Document& document) {
        putRow(document, {"\xD7\x90", "b"});
      },
      {{"language", "he"}});
  EXPECT_EQ(countOf("<w:tblStyle w:val=\"Table\"/><w:bidiVisual/>", table), 1u);
  EXPECT_EQ(countOf("<w:pStyle w:val=\"TableText\"/><w:bidi/><w:jc w:val=\"left\"/>", table), 1u) << table;
}

TEST(DocxTables, InAnItemAreIndented) {
  const std::string body = bodyOf([](Document& document) {
    document.beginList(false, 0, true);
    document.beginItem(Task::None);
    document.beginTable({}, "t");
    putRow(document, {"a"});
    document.end();
    document.end();
    document.end();
  });
  EXPECT_EQ(countOf("<w:tblInd w:w=\"440\" w:type=\"dxa\"/>", body), 1u) << body;
}

// 300 pixels of a 96th of an inch are 225 points; the padding of a cell is 160 twips.
TEST(DocxTables, AreWideEnoughForTheirPictures) {
  const std::string table = tableOf([](Document& document) {
    document.beginRow(false);
    document.cell("a");
    putPicture(document, 300, 200);
    document.cell("b");
    document.end();
  });
  EXPECT_EQ(picturesOf(table), std::vector<int>{225}) << table;
  EXPECT_GE(columnsOf(table).at(1), 225 * 20 + 160);
  EXPECT_LE(columnsOf(table).at(1), kWithSlack * (225 * 20 + 160)) << "the picture's text is not seen";
}

TEST(DocxTables, GiveAPictureTheWidthThatIsAskedFor) {
  const std::string table = tableOf([](Document& document) {
    document.beginRow(false);
    document.cell("a");
    putPicture(document, 300, 200, 100);
    document.end();
  });
  EXPECT_EQ(picturesOf(table), std::vector<int>{100});
  EXPECT_LE(columnsOf(table).at(1), kWithSlack * (100 * 20 + 160));
}

TEST(DocxTables, ShrinkAPictureRatherThanTheirText) {
  const std::string table = tableOf([](Document& document) {
    document.beginRow(false);
    document.cell("short");
    putPicture(document, 2000, 1000);
    putPicture(document, 2000, 1000);
    document.end();
  });
  const std::vector<int> columns = columnsOf(table);
  EXPECT_EQ(countOf("<w:t>short</w:t>", table), 1u) << "it is in one part";
  EXPECT_EQ(countOf("<w:pStyle w:val=\"TableText\"/>", table), 3u) << "in the usual size";
  EXPECT_GE(columns[0] + columns[1] + columns[2], 9630) << "the page's width";
  EXPECT_GE(picturesOf(table).at(0), 200);
  EXPECT_EQ(picturesOf(table).at(0), picturesOf(table).at(1));
}

TEST(DocxTables, AreWideEnoughForPicturesInOneLine) {
  const std::string table = tableOf([](Document& document) {
    std::string reason;
    document.beginRow(false);
    document.beginCell({});
    for (int i = 0; i < 2; ++i) {
      document.image(Picture::read(greyPng(200, 100), reason), {}, 0, {});
      document.text("\n");
      document.image(Picture::read(greyPng(100, 100), reason), {}, 0, {});
    }
    document.end();
    document.end();
  });
  EXPECT_EQ(picturesOf(table), (std::vector<int>{150, 75, 150, 75}));
  EXPECT_GE(columnsOf(table).at(0), (75 + 150) * 20 + 160);
  EXPECT_LE(columnsOf(table).at(0), kWithSlack * ((75 + 150) * 20 + 160));
}

TEST(DocxTables, AreWideEnoughForAPictureAboveSeveralColumns) {
  const std::string table = tableOf([](Document& document) {
    document.beginRow(false);
    putPicture(document, 300, 200, 0, 2);
    document.end();
    putRow(document, {"a", "b"});
  });
  EXPECT_EQ(picturesOf(table), std::vector<int>{225});
  EXPECT_NEAR(columnsOf(table).at(0), columnsOf(table).at(1), 1);
}

TEST(DocxTables, ShrinkAPictureAfterTheSampleToItsColumn) {
  const std::string table = tableOf([](Document& document) {
    for (int row = 0; row < 500; ++row) {
      putRow(document, {"text"});
    }
    document.beginRow(false);
    putPicture(document, 300, 200);
    document.end();
  });
  EXPECT_EQ(picturesOf(table).at(0), (columnsOf(table).at(0) - 160) / 20);
}

// A row is not divided, so what is too high for the rest of a page below the header is cut off.
TEST(DocxTables, LeaveRoomForTheirHeaderAboveATallPicture) {
  const std::string table = tableOf([](Document& document) {
    document.beginRow(true);
    document.cell("header");
    document.end();
    document.beginRow(false);
    putPicture(document, 100, 2000);
    document.end();
  });
  constexpr int kPagePt = 728;  // between the margins
  constexpr int kHeaderPt = 100;
  const int width = picturesOf(table).at(0);
  EXPECT_GE(width, 30);
  EXPECT_LE((width + 1) * 20, kPagePt - kHeaderPt) << "its height is 20 times as much";
}

TEST(DocxTables, HavePicturesInTheirParts) {
  const std::string table = tableOf([](Document& document) {
    document.beginRow(false);
    for (int column = 0; column < 70; ++column) {
      if (column == 66) {
        putPicture(document, 300, 200);
      } else {
        document.cell("v");
      }
    }
    document.end();
  });
  EXPECT_EQ(countOf("<w:tbl>", table), 2u);
  EXPECT_EQ(picturesOf(table), std::vector<int>{225});
}

TEST(DocxTables, NumberThePicturesOfARepeatedHeaderAnew) {
  const std::string table = tableOf([](Document& document) {
    for (int row = 0; row < 125; ++row) {
      document.beginRow(row == 0);
      for (int column = 0; column < 70; ++column) {
        if (row == 0 && column < 2) {
          putPicture(document, 8, 8);
        } else {
          document.cell("v");
        }
      }
      document.end();
    }
  });
  ASSERT_GE(countOf("<w:tbl>", table), 8u) << "four times in two parts or more";
  const std::vector<int> ids = numbersAfter("<wp:docPr id=\"", table);
  EXPECT_GE(ids.size(), 12u) << "two pictures in the first part of each 40 rows, one in the others";
  EXPECT_EQ(std::set<int>(ids.begin(), ids.end()).size(), ids.size());
  EXPECT_EQ(numbersAfter("<pic:cNvPr id=\"", table), ids);
  EXPECT_EQ(numbersAfter(" name=\"Picture ", table).size(), 2 * ids.size());
  for (const int id : ids) {
    const std::string number = std::to_string(id);
    std::string identity = std::string(" id=\"").append(number).append("\" name=\"Picture ").append(number);
    EXPECT_EQ(countOf(identity.append("\""), table), 2u);
  }
}
