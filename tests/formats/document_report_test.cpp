#include "formats/document_report.h"

#include "formats/recorded_report.h"
#include "support/captured_log.h"
#include "support/files.h"

#include <gtest/gtest.h>

using namespace scrivalen;
using namespace scrivalen::test;

namespace {

void writeParagraph(AReport& report, const wchar_t* text) { report.Text(text, PARAGRAPH_NORMAL, L"", 0); }
void writeInline(AReport& report, const wchar_t* text) { report.Text(text, PARAGRAPH_NONE, L"", 0); }

}  // namespace

TEST(DocumentReportText, IsAHeadingAParagraphOrInline) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.Text(L"One", PARAGRAPH_HEADING1, L"", 0);
              report.Text(L"Six", PARAGRAPH_HEADING6, nullptr, 0);
              report.Text(L"text", PARAGRAPH_NORMAL, nullptr, 0);
              report.Text(nullptr, PARAGRAPH_NORMAL, nullptr, 0);
              report.Text(L"other", static_cast<PARAGRAPH_TYPE>(9), nullptr, 0);
            }),
            "heading 1 'One' @one\ntext 'One'\nend heading 1\n"
            "heading 6 'Six' @six\ntext 'Six'\nend heading 6\n"
            "paragraph\ntext 'text'\nend paragraph\n"
            "paragraph\nend paragraph\n"
            "paragraph\ntext 'other'\nend paragraph\n");
}

TEST(DocumentReportText, OutsideParagraphsIsOneUpToTheNextBlock) {
  EXPECT_EQ(recorded([](AReport& report) {
              writeInline(report, L"a");
              writeInline(report, L"b");
              writeParagraph(report, L"c");
              writeInline(report, L"d");
            }),
            "paragraph\ntext 'a'\ntext 'b'\nend paragraph\n"
            "paragraph\ntext 'c'\nend paragraph\n"
            "paragraph\ntext 'd'\nend paragraph\n");
}

TEST(DocumentReportText, ThatIsWhiteSpaceBetweenBlocksIsDropped) {
  EXPECT_EQ(recorded([](AReport& report) {
              writeInline(report, L"\r\n");
              report.Space();
              report.EndOfLine();
              writeParagraph(report, L"a");
              report.Space();
              writeInline(report, L" \t");
            }),
            "paragraph\ntext 'a'\nend paragraph\n");
}

TEST(DocumentReportText, TakesTheAlignmentColorsAndIdOfItsAttributes) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.Text(L"One", PARAGRAPH_HEADING2, L"id=\"first\" style=\"text-align:center;color:red\"", 0);
              report.Text(L"two", PARAGRAPH_NORMAL, L"align=right id=second", 0);
            }),
            "heading 2 align 2 'One' @first\ncolored #FF0000\ntext 'One'\nend colored #FF0000\nend heading 2 align 2\n"
            "paragraph align 3\nanchor @second\ntext 'two'\nend paragraph align 3\n");
}

TEST(DocumentReportText, IsNotTakenForMarkup) {
  EXPECT_EQ(recorded([](AReport& report) { writeParagraph(report, L"<b>&amp;</b>"); }),
            "paragraph\ntext '<b>&amp;</b>'\nend paragraph\n");
}

TEST(DocumentReportRawText, IsUnchangedInHtml) {
  EXPECT_EQ(recordedAsHtml([](AReport& report) {
              report.Text(L"<b>a</b>", PARAGRAPH_NORMAL, L"", 1);
              report.Text(L"<i>b</i>", PARAGRAPH_NONE, L"", 1);
              report.Text(L"<hr>", PARAGRAPH_NONE, L"", 1);
            }),
            "paragraph\nraw '<b>a</b>' ->html\nend paragraph\n"
            "paragraph\nraw '<i>b</i>' ->html\nend paragraph\nraw '<hr>' ->html\n");
}

TEST(DocumentReportRawText, IsOutsideParagraphsInHtmlWhereItBeginsWithABlock) {
  EXPECT_EQ(recordedAsHtml([](AReport& report) {
              report.Text(L"<div>a</div>", PARAGRAPH_NONE, L"", 1);
              report.Text(L" ", PARAGRAPH_NONE, L"", 1);
              writeParagraph(report, L"b");
            }),
            "raw '<div>a</div>' ->html\nparagraph\ntext 'b'\nend paragraph\n");
}

TEST(DocumentReportRawText, IsItsTextInOtherFormats) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.Text(L"<p>R&amp;D</p><p><b>a</b>&nbsp;b</p>", PARAGRAPH_NORMAL, L"", 1);
              report.Text(L"<div>c</div>", PARAGRAPH_NONE, L"", 1);
              report.Text(L"<div>d</div>", PARAGRAPH_NONE, L"", 1);
              report.Text(L"<hr>", PARAGRAPH_NONE, L"", 1);
            }),
            "paragraph\ntext 'R&D\\na\xC2\xA0"
            "b'\nend paragraph\nparagraph\ntext 'c'\nend paragraph\nparagraph\ntext 'd'\nend paragraph\n");
}

TEST(DocumentReportParagraphs, HoldSeveralTexts) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginParagraph(PARAGRAPH_HEADING3, L"align=\"right\"");
              writeInline(report, L"a");
              report.EndOfLine();
              writeInline(report, L"b");
              report.EndParagraph(PARAGRAPH_HEADING3);
            }),
            "heading 3 align 3 'a b' @a-b\ntext 'a'\ntext '\\n'\ntext 'b'\nend heading 3 align 3\n");
}

TEST(DocumentReportParagraphs, EndWhereTheNextBegins) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.EndParagraph(PARAGRAPH_NORMAL);
              report.BeginParagraph(PARAGRAPH_NORMAL, nullptr);
              writeInline(report, L"a");
              report.BeginParagraph(PARAGRAPH_NORMAL, nullptr);
              writeInline(report, L"b");
              report.EndParagraph(PARAGRAPH_NORMAL);
              writeInline(report, L"c");
              report.EndParagraph(PARAGRAPH_NORMAL);
              report.EndParagraph(PARAGRAPH_NORMAL);
              report.BeginParagraph(PARAGRAPH_NONE, nullptr);
              writeInline(report, L"d");
            }),
            "paragraph\ntext 'a'\nend paragraph\nparagraph\ntext 'b'\nend paragraph\n"
            "paragraph\ntext 'c'\nend paragraph\nparagraph\ntext 'd'\nend paragraph\n");
}

TEST(DocumentReportLines, BreakInParagraphsAndEndOpenText) {
  EXPECT_EQ(recorded([](AReport& report) {
              writeInline(report, L"a");
              report.EndOfLine();
              report.EndOfLine();
              writeInline(report, L"b");
              report.BeginParagraph(PARAGRAPH_NORMAL, nullptr);
              report.EndOfLine();
              writeInline(report, L"c");
              report.EndOfLine();
              report.EndOfLine();
              writeInline(report, L"d");
              report.EndOfLine();
              report.EndParagraph(PARAGRAPH_NORMAL);
            }),
            "paragraph\ntext 'a'\nend paragraph\nparagraph\ntext 'b'\nend paragraph\n"
            "paragraph\ntext 'c'\ntext '\\n\\n'\ntext 'd'\nend paragraph\n");
}

TEST(DocumentReportBlanks, AreNoBreakSpacesWhereBlanksWouldDisappear) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginParagraph(PARAGRAPH_NORMAL, nullptr);
              report.Space();
              writeInline(report, L"a");
              report.Space();
              report.Space();
              writeInline(report, L"b");
              report.Space();
              report.EndOfLine();
              report.Space();
              writeInline(report, L"c");
              report.Space();
              report.EndParagraph(PARAGRAPH_NORMAL);
            }),
            "paragraph\ntext '\xC2\xA0'\ntext 'a'\ntext ' \xC2\xA0'\ntext 'b'\ntext '\\n\xC2\xA0'\ntext 'c'\n"
            "end paragraph\n");
}

TEST(DocumentReportStyles, NestInAnyOrderOfTheirEnds) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginParagraph(PARAGRAPH_NORMAL, nullptr);
              report.BeginStyle(STYLE_BOLD, 0);
              writeInline(report, L"a");
              report.BeginStyle(STYLE_ITALIC, 0);
              writeInline(report, L"b");
              report.EndStyle(STYLE_BOLD, 0);
              writeInline(report, L"c");
              report.EndStyle(STYLE_ITALIC, 0);
              report.EndStyle(STYLE_ITALIC, 0);
              writeInline(report, L"d");
              report.EndParagraph(PARAGRAPH_NORMAL);
            }),
            "paragraph\nspan kind 1\ntext 'a'\nspan kind 2\ntext 'b'\nend span kind 2\nend span kind 1\n"
            "span kind 2\ntext 'c'\nend span kind 2\ntext 'd'\nend paragraph\n");
}

TEST(DocumentReportStyles, GoOnInTheNextParagraph) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginStyle(STYLE_BOLD, 0);
              writeParagraph(report, L"a");
              writeParagraph(report, L"b");
              report.EndStyle(STYLE_BOLD, 0);
              writeParagraph(report, L"c");
            }),
            "paragraph\nspan kind 1\ntext 'a'\nend span kind 1\nend paragraph\n"
            "paragraph\nspan kind 1\ntext 'b'\nend span kind 1\nend paragraph\n"
            "paragraph\ntext 'c'\nend paragraph\n");
}

TEST(DocumentReportStyles, GoOnInTheNextCell) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginTable(L"t", nullptr);
              report.BeginRow(L"row", nullptr, 2);
              report.BeginStyle(STYLE_BOLD, 0);
              report.Cell(L"a", 0, nullptr);
              report.BeginCell(L"c", 0, nullptr);
              writeInline(report, L"b");
              report.EndStyle(STYLE_BOLD, 0);
              writeInline(report, L"c");
              report.EndCell(L"c", 0);
              report.EndRow(L"row");
              report.EndTable(L"t");
            }),
            "table 't' left 1/1 left 2/2\nrow 'a' 'bc'\n[\nspan kind 1\ntext 'a'\nend span kind 1\n]\n"
            "[\nspan kind 1\ntext 'b'\nend span kind 1\ntext 'c'\n]\nend table\n");
}

TEST(DocumentReportStyles, HaveSizesInPoints) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginParagraph(PARAGRAPH_NORMAL, nullptr);
              report.BeginStyle(STYLE_FONT_SIZE, 18);
              writeInline(report, L"a");
              report.BeginStyle(STYLE_FONT_SIZE, 0);
              writeInline(report, L"b");
              report.EndStyle(STYLE_FONT_SIZE, 0);
              writeInline(report, L"c");
              report.BeginStyle(STYLE_FONT_SIZE, 5000);
              writeInline(report, L"d");
              report.EndStyle(STYLE_FONT_SIZE, 0);
              report.EndStyle(STYLE_FONT_SIZE, 0);
              report.BeginStyle(static_cast<REPORT_STYLE>(7), 1);
              writeInline(report, L"e");
              report.EndParagraph(PARAGRAPH_NORMAL);
            }),
            "paragraph\nsized 18pt\ntext 'a'\nend sized 18pt\ntext 'b'\nsized 18pt\ntext 'c'\nend sized 18pt\n"
            "sized 1000pt\ntext 'd'\nend sized 1000pt\ntext 'e'\nend paragraph\n");
}

TEST(DocumentReportStyles, ThatNeverEndNeedNoMoreMemoryForEach) {
  EXPECT_EQ(recorded([](AReport& report) {
              for (int i = 0; i < 100000; ++i) {
                report.BeginStyle(STYLE_BOLD, 0);
                report.BeginStyle(STYLE_FONT_SIZE, 12);
              }
              writeParagraph(report, L"a");
            }),
            "paragraph\nsized 12pt\nspan kind 1\ntext 'a'\nend span kind 1\nend sized 12pt\nend paragraph\n");
}

TEST(DocumentReportAnchors, AreInWhatComesAfterThem) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginAncor(L"#top");
              report.Ancor(L"also");
              report.Text(L"Top", PARAGRAPH_HEADING1, L"", 0);
              report.EndAncor();
              writeInline(report, L"a");
              report.Ancor(L"point");
              writeParagraph(report, L"b");
              report.Ancor(nullptr);
              report.Ancor(L"R&amp;D");
            }),
            "heading 1 'Top' @top\nanchor @also\ntext 'Top'\nend heading 1\n"
            "paragraph\ntext 'a'\nend paragraph\nparagraph\nanchor @point\ntext 'b'\nend paragraph\nanchor @R&D\n");
}

TEST(DocumentReportAnchors, StayInAParagraphThatTheyEnd) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginParagraph(PARAGRAPH_NORMAL, nullptr);
              writeInline(report, L"a");
              report.Ancor(L"x");
              report.EndParagraph(PARAGRAPH_NORMAL);
            }),
            "paragraph\ntext 'a'\nanchor @x\nend paragraph\n");
}

TEST(DocumentReportLinks, LeadToPlacesAndAddresses) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginParagraph(PARAGRAPH_NORMAL, nullptr);
              report.Link(L"Smith &amp; Sons", L"#smith");
              report.Link(L"R & D", L"one.two");
              report.Link(L"topic", L"second.htm#part");
              report.Link(L"page", L"https://example.org/a?b=1&amp;c=2#d");
              report.Link(L"file", L"docs/manual.pdf");
              report.Link(L"", L"mailto:a@example.org");
              report.Link(L"no target", nullptr);
              report.Link(nullptr, nullptr);
              report.EndParagraph(PARAGRAPH_NORMAL);
            }),
            "paragraph\nlink ->#smith\ntext 'Smith & Sons'\nend link\nlink ->#one.two\ntext 'R & D'\nend link\n"
            "link ->#part\ntext 'topic'\nend link\n"
            "link ->https://example.org/a?b=1&c=2#d\ntext 'page'\nend link\n"
            "link ->docs/manual.pdf\ntext 'file'\nend link\n"
            "link ->mailto:a@example.org\ntext 'mailto:a@example.org'\nend link\ntext 'no target'\nend paragraph\n");
}

TEST(DocumentReportContents, AreTheirItems) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.TocItem(L"x", L"dropped", 1);
              report.BeginToc();
              report.TocItem(L"one", L"One &lt;1&gt;", 1);
              report.TocItem(L"#two", nullptr, 2);
              report.TocItem(L"three", L"Three", 99);
              report.EndToc();
              report.TocItem(L"x", L"dropped", 1);
              report.BeginToc();
              report.EndToc();
            }),
            "contents\nitem 1 'One <1>' @one\nitem 2 'two' @two\nitem 6 'Three' @three\nend contents\n");
}

TEST(DocumentReportContents, CountTheirLevelsFromZeroAsTheFirstItemDoes) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginToc();
              report.TocItem(L"one", L"One", 0);
              report.TocItem(L"two", L"Two", 1);
              report.TocItem(L"three", L"Three", -7);
              report.TocItem(L"four", L"Four", 6);
              report.EndToc();
            }),
            "contents\nitem 1 'One' @one\nitem 2 'Two' @two\nitem 1 'Three' @three\nitem 6 'Four' @four\n"
            "end contents\n");
}

TEST(DocumentReportContents, AreInterruptedByText) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginToc();
              report.Text(L"Contents", PARAGRAPH_HEADING2, L"", 0);
              report.TocItem(L"one", L"One", 1);
              writeInline(report, L"more");
              report.TocItem(L"two", L"Two", 1);
            }),
            "heading 2 'Contents' @contents\ntext 'Contents'\nend heading 2\ncontents\nitem 1 'One' @one\n"
            "end contents\nparagraph\ntext 'more'\nend paragraph\ncontents\nitem 1 'Two' @two\nend contents\n");
}

TEST(DocumentReportSections, AreSubDocuments) {
  EXPECT_EQ(recorded([](AReport& report) {
              EXPECT_EQ(report.BeginSubDocument(L"folder/", L"first.htm", L"First"), REPORT_OK);
              writeInline(report, L"a");
              EXPECT_EQ(report.BeginSubDocument(nullptr, nullptr, nullptr), REPORT_OK);
              report.Link(L"back", L"first.htm");
              report.EndSubDocument();
              report.EndSubDocument();
              writeParagraph(report, L"b");
            }),
            "section 'First' @first.htm\nparagraph\ntext 'a'\nend paragraph\nend section\n"
            "section\nparagraph\nlink ->#first.htm\ntext 'back'\nend link\nend paragraph\nend section\n"
            "paragraph\ntext 'b'\nend paragraph\n");
}

TEST(DocumentReport, EndsWhatIsOpen) {
  EXPECT_EQ(recorded([](AReport& report) {
              report.BeginSubDocument(L"", L"a", L"A");
              report.BeginTable(L"t", nullptr);
              report.BeginRow(L"row", nullptr, 1);
              report.BeginCell(L"c", 0, nullptr);
              report.BeginStyle(STYLE_BOLD, 0);
              writeInline(report, L"x");
            }),
            "section 'A' @a\ntable 't' left 1/1\nrow 'x'\n[\nspan kind 1\ntext 'x'\nend span kind 1\n]\nend table\n"
            "end section\n");
}
