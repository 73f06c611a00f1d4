#include "document/pictures/picture.h"
#include "formats/docx/parts/numbering.h"
#include "made_docx.h"

#include <gtest/gtest.h>

using namespace scrivalen::document;
using namespace scrivalen::test;

namespace {

std::string spanOf(Span kind, std::string_view text) {
  return paragraphOf([&](Document& document) {
    document.beginSpan(kind);
    document.text(text);
    document.end();
  });
}

void putItem(Document& document, std::string_view text, Task task = Task::None) {
  document.beginItem(task);
  document.text(text);
  document.end();
}

void putCode(Document& document, std::string_view text) {
  document.beginCode({});
  document.text(text);
  document.end();
}

std::string numbered(int level, int list, std::string_view text) {
  return "<w:p><w:pPr><w:pStyle w:val=\"ListCompact\"/><w:numPr><w:ilvl w:val=\"" + std::to_string(level) +
         "\"/><w:numId w:val=\"" + std::to_string(list) + "\"/></w:numPr></w:pPr><w:r><w:t>" + std::string(text) +
         "</w:t></w:r></w:p>\n";
}

std::string styled(std::string_view style, std::string_view properties, std::string_view text) {
  return "<w:p><w:pPr><w:pStyle w:val=\"" + std::string(style) + "\"/>" + std::string(properties) +
         "</w:pPr><w:r><w:t>" + std::string(text) + "</w:t></w:r></w:p>\n";
}

std::string inList(std::string_view properties, std::string_view text) {
  return styled("ListParagraph", properties, text);
}

}  // namespace

TEST(DocxText, IsAParagraphWithoutContent) {
  EXPECT_EQ(bodyOf([](Document&) {}), "<w:p></w:p>\n");
}

TEST(DocxText, WritesParagraphsInTheUsualStyle) {
  EXPECT_EQ(bodyOf([](Document& document) { document.paragraph("a"); }), "<w:p><w:r><w:t>a</w:t></w:r></w:p>\n");
}

TEST(DocxText, QuotesMarkup) {
  EXPECT_EQ(bodyOf([](Document& document) { document.paragraph("<w:p> & \"a\" ]]>"); }),
            "<w:p><w:r><w:t>&lt;w:p&gt; &amp; \"a\" ]]&gt;</w:t></w:r></w:p>\n");
}

TEST(DocxText, ReplacesWhatXmlExcludes) {
  EXPECT_EQ(bodyOf([](Document& document) { document.paragraph("\x01\x1F\xEF\xBF\xBE"); }),
            "<w:p><w:r><w:t>\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD</w:t></w:r></w:p>\n");
}

TEST(DocxText, ReplacesTheBytesOfALoneSurrogate) {
  EXPECT_EQ(bodyOf([](Document& document) { document.paragraph("\xED\xA0\x80"); }),
            "<w:p><w:r><w:t>\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD</w:t></w:r></w:p>\n");
}

TEST(DocxText, KeepsBlanksAtTheEndsOfARun) {
  EXPECT_EQ(bodyOf([](Document& document) { document.paragraph(" a  b "); }),
            "<w:p><w:r><w:t xml:space=\"preserve\"> a  b </w:t></w:r></w:p>\n");
}

TEST(DocxText, BreaksLines) {
  EXPECT_EQ(bodyOf([](Document& document) { document.paragraph("a\nb\n\nc"); }),
            "<w:p><w:r><w:t>a</w:t><w:br/><w:t>b</w:t><w:br/><w:br/><w:t>c</w:t></w:r></w:p>\n");
}

TEST(DocxText, AlignsParagraphs) {
  const auto aligned = [](Align align) {
    return bodyOf([&](Document& document) {
      document.beginParagraph(align);
      document.end();
    });
  };
  EXPECT_EQ(aligned(Align::Left), "<w:p><w:pPr><w:jc w:val=\"left\"/></w:pPr></w:p>\n");
  EXPECT_EQ(aligned(Align::Center), "<w:p><w:pPr><w:jc w:val=\"center\"/></w:pPr></w:p>\n");
  EXPECT_EQ(aligned(Align::Right), "<w:p><w:pPr><w:jc w:val=\"right\"/></w:pPr></w:p>\n");
  EXPECT_EQ(aligned(Align::Justify), "<w:p><w:pPr><w:jc w:val=\"both\"/></w:pPr></w:p>\n");
}

TEST(DocxText, FormatsSpans) {
  const auto run = [](std::string_view properties) {
    return "<w:p><w:r><w:rPr>" + std::string(properties) + "</w:rPr><w:t>x</w:t></w:r></w:p>\n";
  };
  EXPECT_EQ(spanOf(Span::Strong, "x"), run("<w:b/><w:bCs/>"));
  EXPECT_EQ(spanOf(Span::Emphasis, "x"), run("<w:i/><w:iCs/>"));
  EXPECT_EQ(spanOf(Span::Code, "x"), run("<w:rStyle w:val=\"InlineCode\"/>"));
  EXPECT_EQ(spanOf(Span::Deleted, "x"), run("<w:strike/>"));
  EXPECT_EQ(spanOf(Span::Underlined, "x"), run("<w:u w:val=\"single\"/>"));
  EXPECT_EQ(spanOf(Span::Superscript, "x"), run("<w:vertAlign w:val=\"superscript\"/>"));
  EXPECT_EQ(spanOf(Span::Subscript, "x"), run("<w:vertAlign w:val=\"subscript\"/>"));
}

TEST(DocxText, NestsSpansAndEndsThem) {
  EXPECT_EQ(paragraphOf([](Document& document) {
              document.beginSpan(Span::Strong);
              document.beginSpan(Span::Emphasis);
              document.text("a");
              document.end();
              document.text("b");
              document.end();
              document.text("c");
            }),
            "<w:p><w:r><w:rPr><w:b/><w:bCs/><w:i/><w:iCs/></w:rPr><w:t>a</w:t></w:r>"
            "<w:r><w:rPr><w:b/><w:bCs/></w:rPr><w:t>b</w:t></w:r><w:r><w:t>c</w:t></w:r></w:p>\n");
}

TEST(DocxText, HasColorsSizesAndLanguages) {
  EXPECT_EQ(paragraphOf([](Document& document) {
              document.beginColored(0xC0FFEE, 0x000001);
              document.beginSized(10.5);
              document.beginLanguage("fr");
              document.text("a");
              document.end();
              document.end();
              document.end();
            }),
            "<w:p><w:r><w:rPr><w:color w:val=\"C0FFEE\"/><w:sz w:val=\"21\"/><w:szCs w:val=\"21\"/>"
            "<w:shd w:val=\"clear\" w:color=\"auto\" w:fill=\"000001\"/>"
            "<w:lang w:val=\"fr\" w:eastAsia=\"fr\" w:bidi=\"fr\"/></w:rPr><w:t>a</w:t></w:r></w:p>\n");
}

TEST(DocxText, HasNoLanguageThatIsNoTag) {
  EXPECT_EQ(paragraphOf([](Document& document) {
              document.beginLanguage("\"fr\"");
              document.text("a");
              document.end();
            }),
            "<w:p><w:r><w:t>a</w:t></w:r></w:p>\n");
}

TEST(DocxText, MarksThePlaceOfAHeading) {
  EXPECT_EQ(bodyOf([](Document& document) { document.heading(2, "Prices per year"); }),
            "<w:p><w:pPr><w:pStyle w:val=\"Heading2\"/></w:pPr><w:bookmarkStart w:id=\"0\" w:name=\"prices_per_year\"/>"
            "<w:bookmarkEnd w:id=\"0\"/><w:r><w:t>Prices per year</w:t></w:r></w:p>\n");
}

// A quotation mark would end the title for LibreOffice, which makes a field of it.
TEST(DocxText, LeadsToPlacesOfTheDocument) {
  EXPECT_EQ(paragraphOf([](Document& document) {
              document.anchor("a");
              document.beginLink("#a", "a \"tip\"");
              document.text("x");
              document.end();
            }),
            "<w:p><w:bookmarkStart w:id=\"0\" w:name=\"a\"/><w:bookmarkEnd w:id=\"0\"/>"
            "<w:hyperlink w:anchor=\"a\" w:tooltip=\"a 'tip'\" w:history=\"1\">"
            "<w:r><w:rPr><w:rStyle w:val=\"Hyperlink\"/></w:rPr><w:t>x</w:t></w:r></w:hyperlink></w:p>\n");
}

TEST(DocxText, LeadsToAddressesThroughFields) {
  EXPECT_EQ(paragraphOf([](Document& document) {
              document.beginLink("https://e.org/?a=\"b\"&c=\\d", "a \"tip\"");
              document.text("x");
              document.end();
            }),
            "<w:p><w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:instrText xml:space=\"preserve\"> HYPERLINK "
            "\"https://e.org/?a=%22b%22&amp;c=\\\\d\" </w:instrText></w:r>"
            "<w:r><w:instrText xml:space=\"preserve\"> \\o \"a 'tip'\" \\t \"_self\" </w:instrText></w:r>"
            "<w:r><w:fldChar w:fldCharType=\"separate\"/></w:r>"
            "<w:r><w:rPr><w:rStyle w:val=\"Hyperlink\"/></w:rPr><w:t>x</w:t></w:r>"
            "<w:r><w:fldChar w:fldCharType=\"end\"/></w:r></w:p>\n");
}

TEST(DocxText, LeavesOutAddressesThatRunPrograms) {
  std::vector<scrivalen::document::Warning> warnings;
  const std::string docx = docxOf(
      [](Document& document) {
        document.beginParagraph(Align::Auto);
        document.beginLink("javascript:alert(1)", {});
        document.text("x");
        document.end();
        document.end();
      },
      {}, &warnings);
  EXPECT_EQ(partOf(docx, "word/document.xml").find("javascript"), std::string::npos);
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_EQ(warnings[0].message, "the address of a link that may run a program");
}

TEST(DocxText, HasTheNumberOfThePageInContents) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginContents();
              document.contentsItem(2, "a", "Part A");
              document.contentsItem(1, "", "B");
              document.end();
              document.anchor("a");
            }),
            "<w:p><w:pPr><w:pStyle w:val=\"TOC2\"/></w:pPr><w:hyperlink w:anchor=\"a\" w:history=\"1\">"
            "<w:r><w:t>Part A</w:t></w:r><w:r><w:tab/></w:r>"
            "<w:r><w:fldChar w:fldCharType=\"begin\" w:dirty=\"true\"/></w:r>"
            "<w:r><w:instrText xml:space=\"preserve\"> PAGEREF a \\h </w:instrText></w:r>"
            "<w:r><w:fldChar w:fldCharType=\"separate\"/></w:r><w:r><w:fldChar w:fldCharType=\"end\"/></w:r>"
            "</w:hyperlink></w:p>\n"
            "<w:p><w:pPr><w:pStyle w:val=\"TOC1\"/><w:spacing w:after=\"200\"/></w:pPr><w:r><w:t>B</w:t></w:r></w:p>\n"
            "<w:p><w:bookmarkStart w:id=\"0\" w:name=\"a\"/><w:bookmarkEnd w:id=\"0\"/></w:p>\n");
}

TEST(DocxText, WritesCodeAsOneParagraphWithItsTabs) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginCode("c");
              document.text("if (a)\n\tb;\n");
              document.end();
            }),
            "<w:p><w:pPr><w:pStyle w:val=\"Code\"/></w:pPr><w:r><w:t>if (a)</w:t><w:br/><w:tab/><w:t>b;</w:t></w:r>"
            "</w:p>\n");
}

TEST(DocxText, DrawsRulesByAStyle) {
  EXPECT_EQ(bodyOf([](Document& document) { document.rule(); }),
            "<w:p><w:pPr><w:pStyle w:val=\"HorizontalLine\"/></w:pPr></w:p>\n");
}

TEST(DocxText, IndentsNestedQuotes) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginQuote();
              document.paragraph("a");
              document.beginQuote();
              document.paragraph("b");
              document.end();
              document.end();
            }),
            "<w:p><w:pPr><w:pStyle w:val=\"Quote\"/></w:pPr><w:r><w:t>a</w:t></w:r></w:p>\n"
            "<w:p><w:pPr><w:pStyle w:val=\"Quote\"/><w:ind w:left=\"720\"/></w:pPr><w:r><w:t>b</w:t></w:r></w:p>\n");
}

TEST(DocxText, NumbersNestedLists) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginList(true, 1, true);
              document.beginItem(Task::None);
              document.text("one");
              document.beginList(false, 0, true);
              putItem(document, "a");
              document.end();
              document.beginList(true, 1, true);
              putItem(document, "i");
              document.end();
              document.end();
              putItem(document, "two");
              document.end();
            }),
            numbered(0, 3, "one") + numbered(1, 1, "a") + numbered(1, 4, "i") + numbered(0, 3, "two"));
}

TEST(DocxText, BeginsEachNumberedListAtItsNumber) {
  const std::string numbering = partOf(docxOf([](Document& document) {
                                         for (const int first : {1, 1, 7}) {
                                           document.beginList(true, first, true);
                                           putItem(document, "x");
                                           document.end();
                                         }
                                       }),
                                       "word/numbering.xml");
  const auto list = [](int number, int first) {
    return "<w:num w:numId=\"" + std::to_string(number) +
           "\"><w:abstractNumId w:val=\"2\"/><w:lvlOverride w:ilvl=\"0\"><w:startOverride w:val=\"" +
           std::to_string(first) + "\"/></w:lvlOverride></w:num>\n";
  };
  EXPECT_TRUE(numbering.ends_with(list(3, 1) + list(4, 1) + list(5, 7) + "</w:numbering>\n")) << numbering;
}

TEST(DocxText, CountsListsBelowTheNinthLevelByThemselves) {
  const std::string numbering = partOf(docxOf([](Document& document) {
                                         for (int depth = 0; depth < 11; ++depth) {
                                           document.beginList(true, depth + 1, true);
                                           document.beginItem(Task::None);
                                         }
                                         for (int depth = 0; depth < 11; ++depth) {
                                           document.end();
                                           document.end();
                                         }
                                       }),
                                       "word/numbering.xml");
  const auto list = [](int number, int kind, int level) {
    return "<w:num w:numId=\"" + std::to_string(number) + "\"><w:abstractNumId w:val=\"" + std::to_string(kind) +
           "\"/><w:lvlOverride w:ilvl=\"" + std::to_string(level) + "\"><w:startOverride w:val=\"" +
           std::to_string(number - 2) + "\"/></w:lvlOverride></w:num>\n";
  };
  EXPECT_TRUE(
      numbering.ends_with(list(10, 2, 7) + list(11, 2, 8) + list(12, 3, 8) + list(13, 4, 8) + "</w:numbering>\n"))
      << numbering;
  EXPECT_NE(numbering.find("<w:abstractNum w:abstractNumId=\"4\">"), std::string::npos);
  EXPECT_EQ(numbering.find("<w:abstractNum w:abstractNumId=\"5\">"), std::string::npos);
}

TEST(DocxText, NumbersByTextWhenThereAreTooManyLists) {
  const std::string body = bodyOf([](Document& document) {
    for (std::size_t i = 0; i <= docx::Numbering::kMostLists; ++i) {
      document.beginList(true, 5, true);
      putItem(document, "x");
      document.end();
    }
  });
  EXPECT_TRUE(body.ends_with(numbered(0, 2002, "x") +
                             "<w:p><w:pPr><w:pStyle w:val=\"ListCompact\"/><w:ind w:left=\"440\" w:hanging=\"440\"/>"
                             "</w:pPr><w:r><w:t>5.</w:t><w:tab/></w:r><w:r><w:t>x</w:t></w:r></w:p>\n"))
      << body.substr(body.size() - 600);
}

TEST(DocxText, NumbersByTextFromWhereWordProcessorsBeginNoList) {
  const std::string body = bodyOf([](Document& document) {
    for (const int first : {32767, 32768}) {
      document.beginList(true, first, true);
      putItem(document, "x");
      putItem(document, "y");
      document.end();
    }
  });
  const auto byText = [](const std::string& number, const std::string& text) {
    return "<w:p><w:pPr><w:pStyle w:val=\"ListCompact\"/><w:ind w:left=\"440\" w:hanging=\"440\"/></w:pPr><w:r><w:t>" +
           number + "</w:t><w:tab/></w:r><w:r><w:t>" + text + "</w:t></w:r></w:p>\n";
  };
  EXPECT_EQ(body, numbered(0, 3, "x") + numbered(0, 3, "y") + byText("32768.", "x") + byText("32769.", "y"));
}

TEST(DocxText, MarksTasksWithBoxes) {
  const std::string body = bodyOf([](Document& document) {
    document.beginList(false, 0, true);
    putItem(document, "x", Task::Open);
    putItem(document, "y", Task::Done);
    document.end();
  });
  const std::string start =
      "<w:p><w:pPr><w:pStyle w:val=\"ListCompact\"/><w:numPr><w:ilvl w:val=\"0\"/><w:numId w:val=\"2\"/></w:numPr>"
      "</w:pPr><w:r><w:t>";
  EXPECT_EQ(body, start + "\xE2\x98\x90</w:t><w:tab/></w:r><w:r><w:t>x</w:t></w:r></w:p>\n" + start +
                      "\xE2\x98\x92</w:t><w:tab/></w:r><w:r><w:t>y</w:t></w:r></w:p>\n");
}

TEST(DocxText, HasAStyleForFurtherParagraphsOfAnItem) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginList(false, 0, false);
              document.beginItem(Task::None);
              document.paragraph("a");
              document.paragraph("b");
              document.beginList(false, 0, false);
              document.beginItem(Task::None);
              document.paragraph("c");
              document.paragraph("d");
              document.end();
              document.end();
              document.end();
              document.end();
            }),
            inList("<w:numPr><w:ilvl w:val=\"0\"/><w:numId w:val=\"1\"/></w:numPr>", "a") +
                styled("ListItemText", "", "b") +
                inList("<w:numPr><w:ilvl w:val=\"1\"/><w:numId w:val=\"1\"/></w:numPr>", "c") +
                styled("ListItemText", "<w:ind w:left=\"880\"/>", "d"));
}

TEST(DocxText, HasAStyleForCodeAndQuotesInAnItem) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginList(false, 0, false);
              document.beginItem(Task::None);
              document.paragraph("a");
              putCode(document, "b");
              document.beginQuote();
              document.paragraph("c");
              document.paragraph("\xD7\x90");
              document.end();
              document.end();
              document.end();
            }),
            inList("<w:numPr><w:ilvl w:val=\"0\"/><w:numId w:val=\"1\"/></w:numPr>", "a") +
                styled("ListCode", "", "b") + styled("ListQuote", "", "c") +
                "<w:p><w:pPr><w:pStyle w:val=\"QuoteRightToLeft\"/><w:bidi/><w:ind w:left=\"800\"/></w:pPr>"
                "<w:r><w:rPr><w:rtl/></w:rPr><w:t>\xD7\x90</w:t></w:r></w:p>\n");
}

TEST(DocxText, HasStylesForListsAndCodeInAQuote) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginQuote();
              putCode(document, "a");
              document.beginList(false, 0, false);
              document.beginItem(Task::None);
              document.paragraph("b");
              document.paragraph("c");
              document.end();
              document.end();
              document.end();
            }),
            styled("Code", "<w:ind w:left=\"360\"/>", "a") +
                styled("QuoteList",
                       "<w:numPr><w:ilvl w:val=\"0\"/><w:numId w:val=\"1\"/></w:numPr>"
                       "<w:ind w:left=\"800\" w:hanging=\"440\"/>",
                       "b") +
                styled("QuoteList", "<w:ind w:left=\"800\"/>", "c"));
}

TEST(DocxText, HasStylesForHeadingsInAQuote) {
  const std::string body = bodyOf([](Document& document) {
    document.beginQuote();
    document.heading(3, "a");
    document.beginQuote();
    document.heading(6, "\xD7\x90");
    document.end();
    document.end();
  });
  EXPECT_NE(body.find("<w:p><w:pPr><w:pStyle w:val=\"QuoteHeading3\"/></w:pPr>"), std::string::npos) << body;
  EXPECT_NE(body.find("<w:pStyle w:val=\"QuoteHeading6\"/><w:pBdr><w:left w:val=\"nil\"/><w:right w:val=\"single\""
                      " w:sz=\"16\" w:space=\"9\" w:color=\"B8C0C8\"/></w:pBdr><w:bidi/><w:ind w:left=\"720\"/>"),
            std::string::npos)
      << body;
}

TEST(DocxText, HasTheBorderOfAQuoteFromRightToLeftInItsStyle) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginQuote();
              document.paragraph("\xD7\x90");
              document.end();
            }),
            "<w:p><w:pPr><w:pStyle w:val=\"QuoteRightToLeft\"/><w:bidi/></w:pPr>"
            "<w:r><w:rPr><w:rtl/></w:rPr><w:t>\xD7\x90</w:t></w:r></w:p>\n");
}

TEST(DocxText, MarksAnItemWithoutText) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginList(false, 0, true);
              document.beginItem(Task::None);
              document.end();
              document.end();
            }),
            "<w:p><w:pPr><w:pStyle w:val=\"ListCompact\"/><w:numPr><w:ilvl w:val=\"0\"/><w:numId w:val=\"1\"/>"
            "</w:numPr></w:pPr></w:p>\n");
}

TEST(DocxText, IsWrittenFromRightToLeftAfterSuchALetter) {
  EXPECT_EQ(bodyOf([](Document& document) { document.paragraph("1 \xD7\x90 b"); }),
            "<w:p><w:pPr><w:bidi/></w:pPr><w:r><w:rPr><w:rtl/></w:rPr><w:t xml:space=\"preserve\">1 \xD7\x90 </w:t>"
            "</w:r><w:r><w:t>b</w:t></w:r></w:p>\n");
}

TEST(DocxText, SwapsTheSidesOfAParagraphFromRightToLeft) {
  EXPECT_EQ(bodyOf([](Document& document) {
              document.beginParagraph(Align::Left);
              document.text("\xD7\x90");
              document.end();
            }),
            "<w:p><w:pPr><w:bidi/><w:jc w:val=\"right\"/></w:pPr><w:r><w:rPr><w:rtl/></w:rPr><w:t>\xD7\x90</w:t></w:r>"
            "</w:p>\n");
}

TEST(DocxText, HasNoMarkupOfOtherFormats) {
  EXPECT_EQ(paragraphOf([](Document& document) {
              document.raw("html", "<b>");
              document.text("x");
            }),
            "<w:p><w:r><w:t>x</w:t></w:r></w:p>\n");
}
