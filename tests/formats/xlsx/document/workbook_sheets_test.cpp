#include "formats/xlsx/document/made_workbook.h"
#include "formats/xlsx/document/sheet/links.h"
#include "formats/xlsx/document/sheet/sheet_names.h"
#include "support/documents/pictures.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <algorithm>
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

// A cell's format, as the element that its number stands for.
std::string formatOf(MadeWorkbook& workbook, int number) {
  const std::string styles = workbook.part("xl/styles.xml");
  std::size_t at = styles.find("<cellXfs");
  for (; number >= 0; --number) {
    at = styles.find("<xf ", at + 1);
  }
  return styles.substr(at, std::min(styles.find("<xf ", at + 1), styles.find("</cellXfs>")) - at);
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

// Spreadsheet programs refuse a file with two such names.
TEST(WorkbookSheets, HaveNamesThatDifferInMoreThanCase) {
  MadeWorkbook workbook;
  for (const char* name : {"ΟΔΟΣ", "οδος", "ǅ", "ǆ", "STRAẞE", "straße", "К", "к", "\u212A", "k", "𐐀", "𐐨", "STRASSE",
                           "ﬁ", "FI", "ı", "i"}) {
    section(workbook, name, "x");
  }
  EXPECT_EQ(namesOf(workbook),
            "ΟΔΟΣ|οδος (2)|ǅ|ǆ (2)|STRAẞE|straße (2)|К|к (2)|\u212A|k (2)|𐐀|𐐨 (2)|STRASSE (3)|ﬁ|FI (2)|ı|i (2)|");
}

// East Asian versions of spreadsheet programs refuse full-width forms of what no name may have, and do not tell others
// from the usual ones.
TEST(WorkbookSheets, HaveNamesThatAreLegalInFullWidth) {
  MadeWorkbook workbook;
  for (const char* name :
       {"第一章：概要", "［x］＊／＼？￥", "’quoted＇", "it’s", "Ａ～１", "a~1", "Ｈｉｓｔｏｒｙ", "’"}) {
    section(workbook, name, "x");
  }
  EXPECT_EQ(namesOf(workbook), "第一章 概要|x|quoted|it’s|Ａ～１|a~1 (2)|Ｈｉｓｔｏｒｙ (2)|Sheet8|");
}

// Trying all numbers again for each would take minutes.
TEST(WorkbookSheets, HaveNamesAndPlacesHoweverManyWishTheSame) {
  constexpr int kMany = 50000;
  scrivalen::xlsx::SheetNames names;
  scrivalen::xlsx::NamedPlaces places;
  std::string name;
  std::string place;
  for (int i = 1; i <= kMany; ++i) {
    name = names.next(i % 2 == 0 ? "Same" : "SAME");
    std::string id = std::to_string(100000 + i);
    std::transform(id.begin(), id.end(), id.begin(), [](char digit) { return static_cast<char>(digit - '0' + '!'); });
    place = places.nameOf(id);
  }
  EXPECT_EQ(name, "Same (50000)");
  EXPECT_EQ(names.next("same (50000)"), "same (50000) (2)");
  EXPECT_EQ(place, "________50000");
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

// Rows that do not scroll leave room for others in a low window.
TEST(WorkbookSheets, FreezeNothingThatIsHigh) {
  const auto freezes = [](double pictureHeight, const char* name) {
    MadeWorkbook workbook;
    const std::string png = scrivalen::test::greyPng(4, static_cast<unsigned>(pictureHeight / 0.75));
    scrivalen_image(workbook, png.data(), png.size(), "", 0);
    workbook.table({name}, {"1"});
    return workbook.sheetHas("<pane ySplit=\"3\"");
  };
  EXPECT_TRUE(freezes(150, "a"));
  EXPECT_FALSE(freezes(210, "a"));
  EXPECT_FALSE(freezes(150, "a\nb\nc\nd"));

  MadeWorkbook titled;
  const std::string text(1400, 'x');
  titled.paragraph(text.c_str());
  titled.table({"a"}, {"1"});
  EXPECT_TRUE(titled.sheetHas("<row r=\"1\" ht=\"210.00\">"));
  EXPECT_FALSE(titled.sheetHas("<pane"));
}

TEST(WorkbookSheets, FreezeAndRepeatTheHeaderOfTheFirstOfTheirTables) {
  MadeWorkbook workbook;
  workbook.table({"a"}, {"1"});
  workbook.paragraph("between");
  workbook.table({"b"}, {"2"});
  EXPECT_TRUE(workbook.sheetHas("<pane ySplit=\"1\""));
  EXPECT_TRUE(workbook.sheetHas("<autoFilter ref=\"A1:A2\"/>"));
  EXPECT_NE(workbook.part("xl/workbook.xml").find("'Sheet1'!$1:$1</definedName>"), std::string::npos);
}

// It would be above rows that it says nothing about.
TEST(WorkbookSheets, RepeatNoHeaderThatIsFarBelowAndBeforeOtherThings) {
  const auto repeats = [](int rowsAfter, bool hasOtherTable) {
    MadeWorkbook workbook;
    for (int i = 0; i < 12; ++i) {
      workbook.paragraph("before");
    }
    workbook.table({"a"}, {"1"});
    for (int i = 0; i < rowsAfter; ++i) {
      workbook.paragraph("after");
    }
    if (hasOtherTable) {
      workbook.table({"b"}, {"2"});
    }
    EXPECT_TRUE(workbook.sheetHas("<autoFilter ref=\"A14:A15\"/>"));
    return workbook.part("xl/workbook.xml").find("'Sheet1'!$14:$14</definedName>") != std::string::npos;
  };
  EXPECT_TRUE(repeats(10, false));
  EXPECT_FALSE(repeats(11, false));
  EXPECT_FALSE(repeats(1, true));
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

// Texts have most cells, so it is numbers that pay for a format.
TEST(WorkbookSheets, IndentNumbersBesideTexts) {
  MadeWorkbook workbook;
  workbook.table({"id", "name", "sum"}, {"1", "a", "2"});
  EXPECT_TRUE(workbook.sheetHas("<c r=\"A1\" s=\"6\" t="));
  EXPECT_TRUE(workbook.sheetHas("<c r=\"A2\" s=\"9\"><v>1</v></c><c r=\"B2\" t="));
  for (const int number : {6, 9}) {
    EXPECT_NE(formatOf(workbook, number).find("<alignment horizontal=\"right\" indent=\"1\"/>"), std::string::npos);
  }
  EXPECT_EQ(formatOf(workbook, 10).find("<alignment"), std::string::npos);

  MadeWorkbook mirrored;
  mirrored.setting("language", "ar");
  mirrored.table({"id", "name"}, {"1", "a"});
  EXPECT_EQ(mirrored.part("xl/styles.xml").find("indent="), std::string::npos);
}

TEST(WorkbookSheets, HaveTheFirstLinesOfARowBesideEachOther) {
  MadeWorkbook workbook;
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  for (int i = 0; i < 500; ++i) {
    workbook.row({"a", "1"});
  }
  workbook.row({"a text that is long", "2"});
  EXPECT_TRUE(workbook.sheetHas("<c r=\"A501\" s=\"1\""));
  EXPECT_TRUE(workbook.sheetHas("<c r=\"B501\" s=\"5\""));
  EXPECT_NE(formatOf(workbook, 1).find("<alignment vertical=\"top\" wrapText=\"1\"/>"), std::string::npos);
  EXPECT_NE(formatOf(workbook, 5).find("<alignment vertical=\"top\"/>"), std::string::npos);
}

TEST(WorkbookSheets, HaveABlankRowAfterContents) {
  MadeWorkbook workbook;
  scrivalen_begin_contents(workbook);
  scrivalen_contents_item(workbook, 1, "a", "A", scrivalen::test::kNul);
  scrivalen_contents_item(workbook, 1, "b", "B", scrivalen::test::kNul);
  workbook.end();
  workbook.paragraph("text");
  EXPECT_NE(workbook.cells().find("\nA4 \"text\"\n"), std::string::npos);
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

TEST(WorkbookSheets, CountThePiecesOfLongWordsAsLines) {
  MadeWorkbook workbook;
  workbook.styles("sheet { column-width: 10 }");
  workbook.table({"a"}, {"XXXXXXXXXXXXXXXXXXXXXXXXX"});
  EXPECT_TRUE(workbook.sheetHas("<row r=\"2\" ht=\"60.00\">"));
}

TEST(WorkbookSheets, StateTheHeightOfLargeText) {
  MadeWorkbook workbook;
  scrivalen_begin_paragraph(workbook, nullptr);
  workbook.text("a ");
  scrivalen_begin_sized(workbook, 22);
  workbook.text("b");
  workbook.end();
  workbook.text(" c\nd");
  workbook.end();
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  scrivalen_begin_row(workbook, 0);
  scrivalen_begin_cell(workbook, nullptr);
  scrivalen_begin_sized(workbook, 22);
  workbook.text("e");
  workbook.end(4);
  EXPECT_TRUE(workbook.sheetHas("<row r=\"1\" ht=\"45.00\">"));
  EXPECT_TRUE(workbook.sheetHas("<row r=\"3\" ht=\"30.00\">"));
}

// A line has room for 16 digits. LibreOffice shows "as of every report:", "File", "open/create", "error for",
// "'...'. ...,", "File write", "error for" and "'...'. ...".
TEST(WorkbookSheets, StateTheHeightOfTextWithCodeInANarrowColumn) {
  MadeWorkbook workbook;
  workbook.styles("sheet { column-width: 16 }");
  scrivalen_begin_table(workbook, nullptr, 0, nullptr);
  scrivalen_begin_row(workbook, 0);
  scrivalen_begin_cell(workbook, nullptr);
  workbook.text("as of every report: ");
  workbook.span(SCRIVALEN_CODE, "File open/create error for '...'. ...");
  workbook.text(", ");
  workbook.span(SCRIVALEN_CODE, "File write error for '...'. ...");
  workbook.end(3);
  EXPECT_TRUE(workbook.sheetHas("<row r=\"1\" ht=\"120.00\">")) << workbook.sheet();
}

// Its characters are wider than digits, however narrow they are in other fonts.
TEST(WorkbookSheets, StateTheHeightOfLongLinesOfCode) {
  MadeWorkbook workbook;
  scrivalen_begin_code(workbook, nullptr);
  workbook.text((std::string(70, 'i') + "\n" + std::string(60, 'i') + " " + std::string(14, 'i') + "\n").c_str());
  workbook.end();
  EXPECT_TRUE(workbook.sheetHas("<row r=\"1\"><c"));
  EXPECT_TRUE(workbook.sheetHas("<row r=\"2\" ht=\"30.00\"><c"));
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

// Beyond the edge of the sheet they would be cut.
TEST(WorkbookSheets, JoinColumnsForTextThatDoesNotBeginAtTheEdge) {
  MadeWorkbook workbook;
  const scrivalen_paragraph_style center{sizeof center, SCRIVALEN_CENTER};
  scrivalen_begin_heading(workbook, 1, nullptr, &center);
  workbook.text("centred");
  workbook.end();
  workbook.paragraph("left");
  workbook.paragraph("\u05e9\u05dc\u05d5\u05dd");
  scrivalen_begin_list(workbook, 0, 0, 1);
  workbook.item("\u05e9\u05dc\u05d5\u05dd", 2);
  workbook.end();
  workbook.table({"a"}, {"1"});
  EXPECT_TRUE(
      workbook.sheetHas("<mergeCells count=\"3\"><mergeCell ref=\"A1:L1\"/><mergeCell ref=\"A3:L3\"/>"
                        "<mergeCell ref=\"A4:L4\"/></mergeCells>"));
  const std::string styles = workbook.part("xl/styles.xml");
  for (const char* alignment : {"horizontal=\"center\"", "horizontal=\"right\" readingOrder=\"2\"",
                                "horizontal=\"right\" indent=\"1\" readingOrder=\"2\""}) {
    EXPECT_NE(styles.find(std::string("<alignment ").append(alignment).append("/>")), std::string::npos) << alignment;
  }
}

TEST(WorkbookSheets, HaveListsOnTheSideFromWhichTheyAreRead) {
  MadeWorkbook workbook;
  workbook.setting("language", "he");
  scrivalen_begin_list(workbook, 0, 0, 1);
  workbook.item("\u05e9\u05dc\u05d5\u05dd");
  workbook.item("left");
  workbook.end();
  scrivalen_begin_code(workbook, nullptr);
  workbook.text("}");
  workbook.end();
  workbook.table({"a"}, {"1"});
  EXPECT_TRUE(
      workbook.sheetHas("<mergeCells count=\"2\"><mergeCell ref=\"A2:L2\"/><mergeCell ref=\"A3:L3\"/></mergeCells>"));
  const std::string styles = workbook.part("xl/styles.xml");
  EXPECT_NE(styles.find("<alignment horizontal=\"right\" indent=\"1\" readingOrder=\"2\"/>"), std::string::npos);
  EXPECT_NE(styles.find("<alignment horizontal=\"left\" indent=\"1\" readingOrder=\"1\"/>"), std::string::npos);
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

namespace {

// What is in the footer, and the warnings.
std::string footerOf(const std::string& footer) {
  MadeWorkbook workbook;
  workbook.setting("footer", footer.c_str());
  workbook.paragraph("a");
  const std::string xml = workbook.sheet();
  const std::string_view begin = "<oddFooter>";
  const std::size_t at = xml.find(begin) + begin.size();
  return xml.substr(at, xml.find("</oddFooter>") - at) + " " + warningsOf(workbook);
}

const std::string kCut = " 0 2 1 a footer cut at 255 characters\n";

}  // namespace

TEST(WorkbookSheets, CutAFooterBetweenCharactersAndCodes) {
  const std::string most(253, 'x');
  const std::string last(252, 'x');
  EXPECT_EQ(footerOf(most), "&amp;L" + most + " ");
  EXPECT_EQ(footerOf(most + "y"), "&amp;L" + most + kCut);
  EXPECT_EQ(footerOf(last + "&y"), "&amp;L" + last + kCut);
  EXPECT_EQ(footerOf(last + "{page}"), "&amp;L" + last + kCut);
  EXPECT_EQ(footerOf(last + "|y"), "&amp;L" + last + kCut);
  EXPECT_EQ(footerOf(last + "\U0001F600"), "&amp;L" + last + kCut);
  EXPECT_EQ(footerOf(last.substr(1) + "\U0001F600"), "&amp;L" + last.substr(1) + "\U0001F600 ");
}

// Spreadsheet programs add a number with a sign to that of the page, and a sign to that of the pages.
TEST(WorkbookSheets, KeepASignFromTheNumberOfThePage) {
  EXPECT_EQ(footerOf("{page}-2026"), "&amp;L&amp;P -2026 ");
  EXPECT_EQ(footerOf("{pages}+x"), "&amp;L&amp;N +x ");
  EXPECT_EQ(footerOf("{page}-{pages}"), "&amp;L&amp;P -&amp;N ");
  EXPECT_EQ(footerOf("{page}{title}-1"), "&amp;L&amp;P -1 ");
  EXPECT_EQ(footerOf("{page}|-1"), "&amp;L&amp;P&amp;C-1 ");
  EXPECT_EQ(footerOf("{page} -1 {page}/-"), "&amp;L&amp;P -1 &amp;P/- ");
}

// ECMA-376, 22.9.2.19. An escape counts as the character for which it stands.
TEST(WorkbookSheets, EscapeWhatReadersTakeForEscapesInTheFooter) {
  EXPECT_EQ(footerOf("_x0041_ {page}"), "&amp;L_x005F_x0041_ &amp;P ");
  const std::string before(248, 'x');
  EXPECT_EQ(footerOf(before + "_x0041_"), "&amp;L" + before + "_x004" + kCut);
  EXPECT_EQ(footerOf(before.substr(2) + "_x0041_"), "&amp;L" + before.substr(2) + "_x005F_x0041_ ");
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

// Photographs that a camera stored on their sides.
TEST(WorkbookSheets, ShowAPictureOfTheHeaderAsItIsStored) {
  const auto drawn = [](std::uint32_t width, std::uint32_t height) {
    MadeWorkbook workbook;
    const std::wstring path = workbook.folder / L"photo.jpg";
    scrivalen::test::writeBytes(path, scrivalen::test::turnedJpeg(width, height, 6));
    workbook.setting("header-image", scrivalen::narrowPath(path).c_str());
    workbook.paragraph("a");
    const std::string vml = workbook.part("xl/drawings/vmlDrawing1.vml");
    EXPECT_EQ(warningsOf(workbook), "0 4 1 the turn of the header's picture, which is shown as stored\n");
    const std::size_t begin = vml.find("width:");
    return vml.substr(begin, vml.find(';', vml.find("height:")) - begin);
  };
  EXPECT_EQ(drawn(40, 20), "width:30.00pt;height:15.00pt");
  EXPECT_EQ(drawn(20, 40), "width:7.50pt;height:15.00pt");
  EXPECT_EQ(drawn(800, 400), "width:34.02pt;height:17.01pt");
  EXPECT_EQ(drawn(400, 800), "width:17.01pt;height:34.02pt");
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

TEST(WorkbookSheets, BreakPagesBeforeTables) {
  const auto table = [](MadeWorkbook& workbook, int rows) {
    scrivalen_page_break(workbook);
    scrivalen_begin_table(workbook, nullptr, 0, nullptr);
    for (int i = 0; i < rows; ++i) {
      workbook.row({"1"});
    }
    workbook.end();
  };
  MadeWorkbook held;
  held.paragraph("a");
  table(held, 1);
  table(held, 1);
  held.paragraph("b");
  EXPECT_TRUE(
      held.sheetHas("<brk id=\"2\" max=\"16383\" man=\"1\"/><brk id=\"4\" max=\"16383\" man=\"1\"/></rowBreaks>"));

  MadeWorkbook streamed;
  table(streamed, 1000);
  table(streamed, 1);
  EXPECT_TRUE(streamed.sheetHas("<rowBreaks count=\"1\" manualBreakCount=\"1\"><brk id=\"1001\" "));
}

TEST(WorkbookSheets, WarnOfTooManyPageBreaks) {
  MadeWorkbook workbook;
  for (int i = 0; i < 1026; ++i) {
    scrivalen_page_break(workbook);
    scrivalen_page_break(workbook);
    workbook.paragraph("a");
  }
  EXPECT_TRUE(workbook.sheetHas("<rowBreaks count=\"1022\" manualBreakCount=\"1022\"><brk id=\"1\""));
  EXPECT_EQ(warningsOf(workbook), "0 4 3 page breaks beyond those that a sheet takes\n");
}

TEST(WorkbookSheets, HaveTheDocumentsProperties) {
  MadeWorkbook workbook;
  workbook.setting("title", "T & U");
  workbook.setting("author", "A");
  workbook.setting("subject", "S > 1");
  workbook.setting("keywords", "one, two");
  workbook.setting("language", "de-AT");
  workbook.setting("property:Order", "12 _x0041_");
  workbook.paragraph("a");
  const std::string core = workbook.part("docProps/core.xml");
  EXPECT_NE(core.find("<dc:title>T &amp; U</dc:title><dc:subject>S &gt; 1</dc:subject><dc:creator>A</dc:creator>"
                      "<cp:keywords>one, two</cp:keywords>"),
            std::string::npos);
  EXPECT_NE(core.find("<dc:language>de-AT</dc:language></cp:coreProperties>"), std::string::npos);
  EXPECT_NE(core.find("2026-01-31T23:59:59Z"), std::string::npos);
  EXPECT_NE(workbook.part("docProps/custom.xml").find("name=\"Order\"><vt:lpwstr>12 _x005F_x0041_</vt:lpwstr>"),
            std::string::npos);
  EXPECT_EQ(workbook.cells(), "A1 \"a\"\n");
}
