#include "formats/xlsx/document/made_workbook.h"
#include "support/documents/pictures.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <string>

using scrivalen::test::kHeaderLook;
using scrivalen::test::MadeWorkbook;
using scrivalen::test::warningsOf;

namespace {

void section(MadeWorkbook& workbook, const char* name, const char* text) {
  scrivalen_begin_section(workbook, name, nullptr);
  workbook.paragraph(text);
  workbook.end();
}

std::string namesOf(MadeWorkbook& workbook) {
  const std::string xml = workbook.part("xl/workbook.xml");
  std::string names;
  for (std::size_t at = xml.find("<sheet name=\""); at != std::string::npos; at = xml.find("<sheet name=\"", at + 1)) {
    const std::size_t begin = at + 13;
    names += xml.substr(begin, xml.find('"', begin) - begin) + "|";
  }
  return names;
}

}  // namespace

TEST(WorkbookSheets, AreSectionsAndWhatIsBetweenThem) {
  MadeWorkbook workbook;
  workbook.paragraph("before");
  section(workbook, "First", "a");
  scrivalen_begin_section(workbook, "Empty", nullptr);
  workbook.end();
  section(workbook, "Last", "b");
  workbook.paragraph("after");
  EXPECT_EQ(namesOf(workbook), "Sheet1|First|Empty|Last|Sheet5|");
  EXPECT_EQ(workbook.cells(), "A1 \"before\"\nA1 \"a\"\nA1 \"b\"\nA1 \"after\"\n");
}

TEST(WorkbookSheets, HaveLegalNamesThatDiffer) {
  MadeWorkbook workbook;
  for (const char* name :
       {"a/b", "A B", "'quoted'", "[x]:*?\\", "History", "", "0123456789012345678901234567890123456789",
        "0123456789012345678901234567890123", "\xC3\x84", "\xC3\xA4", "<&>"}) {
    section(workbook, name, "x");
  }
  EXPECT_EQ(namesOf(workbook),
            "a b|A B (2)|quoted|x|History (2)|Sheet6|0123456789012345678901234567890|"
            "012345678901234567890123456 (2)|\xC3\x84|\xC3\xA4 (2)|&lt;&amp;&gt;|");
}

// Some readers take "_x0041_" in a name for "A", others do not.
TEST(WorkbookSheets, HaveNamesThatEveryReaderTakesForTheSame) {
  MadeWorkbook workbook;
  for (const char* name : {"a_x0041_b", "_x0A_ _x_ _xyz_", "_x000D_"}) {
    section(workbook, name, "x");
  }
  EXPECT_EQ(namesOf(workbook), "a x0041_b|x0A_ _x_ _xyz_|x000D_|");
}

TEST(WorkbookSheets, OfAnEmptyDocumentIsOne) {
  MadeWorkbook workbook;
  EXPECT_EQ(namesOf(workbook), "Sheet1|");
  EXPECT_EQ(workbook.cells(), "");
}

TEST(WorkbookSheets, FreezeTheHeaderFilterTheRowsAndRepeatItInPrint) {
  MadeWorkbook workbook;
  workbook.heading(1, "T");
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  workbook.row({"a", "b"}, 1);
  workbook.row({"c", "d"}, 1);
  workbook.row({"1", "2"});
  workbook.row({"3", "4"});
  workbook.end();
  workbook.paragraph("after");
  EXPECT_TRUE(workbook.sheetHas("<pane ySplit=\"3\" topLeftCell=\"A4\" activePane=\"bottomLeft\" state=\"frozen\"/>"));
  EXPECT_TRUE(workbook.sheetHas("<autoFilter ref=\"A3:B5\"/>"));
  const std::string book = workbook.part("xl/workbook.xml");
  EXPECT_NE(book.find("<definedName name=\"_xlnm._FilterDatabase\" localSheetId=\"0\" hidden=\"1\">"
                      "'Sheet1'!$A$3:$B$5</definedName>"),
            std::string::npos);
  EXPECT_NE(book.find("<definedName name=\"_xlnm.Print_Titles\" localSheetId=\"0\">'Sheet1'!$2:$3</definedName>"),
            std::string::npos);
  EXPECT_EQ(workbook.cells(), "A1 \"T\" bold 16\nA2 \"a\"" + kHeaderLook + "\nB2 \"b\"" + kHeaderLook + "\nA3 \"c\"" +
                                  kHeaderLook + "\nB3 \"d\"" + kHeaderLook +
                                  "\nA4 1 0\nB4 2 0\nA5 3 0\nB5 4 0\nA7 \"after\"\n");
}

TEST(WorkbookSheets, FreezeNothingWithoutAHeaderOrFarBelow) {
  MadeWorkbook headless;
  scrivalen_begin_table(headless, nullptr, 0, nullptr);
  headless.row({"1"});
  EXPECT_FALSE(headless.sheetHas("<pane"));
  EXPECT_FALSE(headless.sheetHas("<autoFilter"));

  MadeWorkbook late;
  for (int i = 0; i < 12; ++i) {
    late.paragraph("p");
  }
  late.table({"a"}, {"1"});
  EXPECT_FALSE(late.sheetHas("<pane"));
  EXPECT_TRUE(late.sheetHas("<autoFilter ref=\"A14:A15\"/>"));
}

TEST(WorkbookSheets, BeginBeforeTheirTableWhenAMebibyteWaits) {
  MadeWorkbook workbook;
  const std::string text(1000, 'x');
  for (int i = 0; i < 900; ++i) {
    workbook.paragraph(text.c_str());
  }
  workbook.table({"a"}, {"1"});
  EXPECT_EQ(workbook.all().substr(0, 16), "[Sheet1]\nA 90.7\n");
  EXPECT_FALSE(workbook.sheetHas("<mergeCell"));
}

TEST(WorkbookSheets, HaveTheFilterOfTheFirstTableOnly) {
  MadeWorkbook workbook;
  workbook.table({"a"}, {"1"});
  workbook.table({"b"}, {"2"});
  EXPECT_TRUE(workbook.sheetHas("<autoFilter ref=\"A1:A2\"/>"));
  EXPECT_EQ(workbook.cells(), "A1 \"a\"" + kHeaderLook + "\nA2 1 0\nA4 \"b\"" + kHeaderLook + "\nA5 2 0\n");
}

TEST(WorkbookSheets, AreAsWideAsTheSample) {
  MadeWorkbook workbook;
  workbook.table({"id", "name"}, {"1", "some twenty characters"});
  EXPECT_EQ(workbook.all().substr(0, 24), "[Sheet1]\nA 7.4\nB 24.6\nA1");

  MadeWorkbook fixed;
  fixed.styles("sheet { column-width: 20 }");
  fixed.table({"id", "name"}, {"1", "some twenty characters"});
  EXPECT_EQ(fixed.all().substr(0, 18), "[Sheet1]\nA:B 20.7\n");
}

TEST(WorkbookSheets, WrapLongTextsAndStateTheHeightOfTheirRows) {
  MadeWorkbook workbook;
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  workbook.row({"a", "word word word word word word word word word word word word word word word word"});
  workbook.row({"two\nlines", "b"});
  EXPECT_TRUE(workbook.sheetHas("<row r=\"1\" ht=\"30.00\">"));
  EXPECT_TRUE(workbook.sheetHas("<row r=\"2\" ht=\"30.00\">"));
  EXPECT_NE(workbook.part("xl/styles.xml").find("<alignment vertical=\"top\" wrapText=\"1\"/>"), std::string::npos);
}

TEST(WorkbookSheets, GiveNoHeightForLinesThatSmallLettersDoNotFill) {
  MadeWorkbook workbook;
  workbook.table({"a"}, {"a text of small letters that is just too long for sixty digits"});
  EXPECT_TRUE(workbook.sheetHas("<row r=\"2\"><c r=\"A2\""));
}

TEST(WorkbookSheets, JoinColumnsForLongParagraphs) {
  MadeWorkbook workbook;
  workbook.paragraph(std::string(200, 'x').replace(50, 1, " ").replace(120, 1, " ").c_str());
  workbook.table({"a"}, {"1"});
  EXPECT_TRUE(workbook.sheetHas("<mergeCells count=\"1\"><mergeCell ref=\"A1:L1\"/></mergeCells>"));
}

TEST(WorkbookSheets, HaveThePageOfTheSettings) {
  MadeWorkbook workbook;
  workbook.setting("paper", "A5");
  workbook.setting("margins", "1in");
  workbook.setting("landscape", "yes");
  workbook.setting("title", "A & B");
  workbook.setting("header", "{title}|&|{section}");
  workbook.setting("footer", "||{page} / {pages}");
  workbook.paragraph("a");
  EXPECT_TRUE(workbook.sheetHas("<sheetPr><pageSetUpPr fitToPage=\"1\"/></sheetPr>"));
  EXPECT_TRUE(
      workbook.sheetHas("<pageMargins left=\"1\" right=\"1\" top=\"1\" bottom=\"1\" header=\"0.4\" footer=\"0.4\"/>"
                        "<pageSetup paperSize=\"11\" fitToHeight=\"0\" orientation=\"landscape\"/>"
                        "<headerFooter><oddHeader>&amp;LA &amp;&amp; B&amp;C&amp;&amp;&amp;R&amp;A</oddHeader>"
                        "<oddFooter>&amp;R&amp;P / &amp;N</oddFooter></headerFooter>"));
}

TEST(WorkbookSheets, HaveThePictureOfTheHeader) {
  MadeWorkbook workbook;
  const std::string png = scrivalen::test::greyPng(40, 20);
  const std::wstring path = workbook.folder / L"logo.png";
  scrivalen::test::writeBytes(path, png);
  workbook.setting("header-image", scrivalen::narrowPath(path).c_str());
  workbook.setting("header", "left||right");
  section(workbook, "A", "a");
  section(workbook, "B", "b");
  EXPECT_TRUE(workbook.sheetHas("<oddHeader>&amp;L&amp;G left&amp;Rright</oddHeader>", 2));
  EXPECT_TRUE(workbook.sheetHas("<legacyDrawingHF r:id=\"rId1\"/></worksheet>", 2));
  EXPECT_NE(workbook.part("xl/drawings/vmlDrawing2.vml").find("width:30.00pt;height:15.00pt"), std::string::npos);
  EXPECT_NE(workbook.part("xl/drawings/_rels/vmlDrawing2.vml.rels").find("../media/image1.png"), std::string::npos);
  EXPECT_EQ(workbook.part("xl/media/image1.png"), png);
  EXPECT_EQ(warningsOf(workbook), "");
}

TEST(WorkbookSheets, AreLandscapeWhenWide) {
  MadeWorkbook workbook;
  const std::string text(50, 'x');
  workbook.table({"a", "b", "c"}, {text.c_str(), text.c_str(), text.c_str()});
  EXPECT_TRUE(workbook.sheetHas("orientation=\"landscape\""));

  MadeWorkbook upright;
  upright.setting("landscape", "no");
  upright.table({"a", "b", "c"}, {text.c_str(), text.c_str(), text.c_str()});
  EXPECT_TRUE(upright.sheetHas("orientation=\"portrait\""));
}

TEST(WorkbookSheets, BreakPagesAndRunFromRightToLeft) {
  MadeWorkbook workbook;
  workbook.setting("language", "ar");
  workbook.paragraph("a");
  scrivalen_page_break(workbook);
  workbook.paragraph("b");
  EXPECT_TRUE(
      workbook.sheetHas("<rowBreaks count=\"1\" manualBreakCount=\"1\"><brk id=\"1\" max=\"16383\" man=\"1\"/>"));
  EXPECT_TRUE(workbook.sheetHas("<sheetView rightToLeft=\"1\" tabSelected=\"1\""));
}

TEST(WorkbookSheets, HaveTheDocumentsProperties) {
  MadeWorkbook workbook;
  workbook.setting("title", "T & U");
  workbook.setting("author", "A");
  workbook.setting("property:Order", "12");
  workbook.paragraph("a");
  const std::string core = workbook.part("docProps/core.xml");
  EXPECT_NE(core.find("<dc:title>T &amp; U</dc:title><dc:creator>A</dc:creator>"), std::string::npos);
  EXPECT_NE(core.find("2026-01-31T23:59:59Z"), std::string::npos);
  EXPECT_NE(workbook.part("docProps/custom.xml").find("name=\"Order\"><vt:lpwstr>12</vt:lpwstr>"), std::string::npos);
  EXPECT_EQ(workbook.cells(), "A1 \"a\"\n");
}
