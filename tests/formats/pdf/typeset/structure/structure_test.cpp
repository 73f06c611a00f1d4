#include "document/pictures/picture.h"
#include "formats/pdf/typeset/shown_document.h"
#include "formats/pdf/typeset/structure/shown_structure.h"
#include "support/documents/pictures.h"

#include <gtest/gtest.h>

namespace scrivalen::test {
namespace {

using document::Align;
using document::Span;
using document::Task;

/// A document with tags.
struct TaggedDocument : ShownDocument {
  TaggedDocument() { set("pdf.tagged", "yes"); }

  ShownStructure structure() { return ShownStructure(bytes()); }
  std::string tags() { return structure().all(); }
};

std::size_t countOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

TEST(PdfTags, AreOnlyMadeOnRequest) {
  ShownDocument document;
  document.paragraph("Text");
  const ShownStructure structure(document.bytes());
  EXPECT_FALSE(structure.catalog().has("StructTreeRoot"));
  EXPECT_FALSE(structure.catalog().has("MarkInfo"));
  EXPECT_FALSE(structure.pages().at(0).has("Tabs"));
}

TEST(PdfTags, AreAnnouncedByTheDocument) {
  TaggedDocument document;
  document.set("language", "de");
  document.set("title", "T");
  document.paragraph("Text");
  const ShownStructure structure = document.structure();
  EXPECT_EQ(structure.catalog().at("MarkInfo").at("Marked").text, "true");
  EXPECT_EQ(structure.catalog().at("Lang").text, "de");
  EXPECT_EQ(structure.catalog().at("ViewerPreferences").at("DisplayDocTitle").text, "true");
  EXPECT_TRUE(structure.pages().at(0).at("Tabs").isName("S"));
}

TEST(PdfTags, NameHeadingsAndParagraphs) {
  TaggedDocument document;
  document.set("title", "Title");
  document.paragraph("Before");
  document.heading(1, "One");
  document.heading(6, "Six");
  document.paragraph("After");
  EXPECT_EQ(document.tags(), "Document(Title('Title') P('Before') H1('One') H6('Six') P('After'))");
}

TEST(PdfTags, NameSections) {
  TaggedDocument document;
  document.beginSection("first", "");
  document.heading(1, "One");
  document.end();
  document.beginSection("second", "");
  document.paragraph("Two");
  document.end();
  EXPECT_EQ(document.tags(), "Document(Sect(H1('One')) Sect(P('Two')))");
}

TEST(PdfTags, NameListsWithTheirMarkers) {
  TaggedDocument document;
  document.beginList(true, 3, true);
  document.beginItem(Task::None);
  document.paragraph("Three");
  document.beginList(false, 1, true);
  document.beginItem(Task::None);
  document.paragraph("inner");
  document.end();
  document.end();
  document.end();
  document.end();
  EXPECT_EQ(document.tags(),
            "Document(L[Decimal](LI(Lbl('3.') LBody(P('Three') L(LI(Lbl('\x96') LBody(P('inner'))))))))");
}

TEST(PdfTags, NameQuotesAndCode) {
  TaggedDocument document;
  document.beginQuote();
  document.paragraph("Quoted");
  document.end();
  document.beginCode("c");
  document.text("int x;\nint y;");
  document.end();
  EXPECT_EQ(document.tags(), "Document(BlockQuote(P('Quoted')) Code[Block]('int x; int y;'))");
}

TEST(PdfTags, NameLinksWithTheirAreas) {
  TaggedDocument document;
  document.beginParagraph(Align::Auto);
  document.text("See ");
  document.beginLink("https://example.org/", "");
  document.text("there");
  document.end();
  document.text(" now");
  document.end();
  EXPECT_EQ(document.tags(), "Document(P('See ' Link('there' @) ' now'))");
}

TEST(PdfTags, HaveOneLinkForSeveralLines) {
  TaggedDocument document;
  document.beginParagraph(Align::Auto);
  document.beginLink("https://example.org/", "");
  document.text("one");
  document.lineBreak();
  document.text("two");
  document.end();
  document.end();
  EXPECT_EQ(document.tags(), "Document(P(Link('one two' @ @)))");
}

// What the links of the first page say, one a line.
std::string descriptionsIn(const ShownStructure& structure) {
  std::string all;
  for (const PdfValue& annotation : structure.pages().at(0).at("Annots").items) {
    const PdfValue link = pdfValueOf(structure.objects().object(annotation.reference()));
    all += link.at("Contents").text + "\n";
  }
  return all;
}

TEST(PdfTags, DescribeLinks) {
  TaggedDocument document;
  document.beginParagraph(Align::Auto);
  document.text("See ");
  document.beginLink("https://example.org/", "");
  document.text("this (");
  document.addSpan(Span::Strong, "here");
  document.text(")");
  document.lineBreak();
  document.text("and there");
  document.end();
  document.beginLink("#place", "");
  document.text("or this");
  document.end();
  document.text(" now");
  document.end();
  EXPECT_EQ(descriptionsIn(document.structure()), "this (here) and there\nthis (here) and there\nor this\n");
}

TEST(PdfTags, DescribeLinksOfPicturesByTheirTexts) {
  TaggedDocument document;
  std::string reason;
  const auto picture = document::Picture::read(greyPng(10, 10), reason);
  document.beginParagraph(Align::Auto);
  document.beginLink("https://example.org/", "");
  document.image(picture, "A square", 0, "");
  document.text(" of grey");
  document.end();
  document.beginLink("https://example.org/decoration", "");
  document.image(picture, "", 0, "");
  document.end();
  document.end();
  EXPECT_EQ(descriptionsIn(document.structure()), "A square of grey\nhttps://example.org/decoration\n");
}

TEST(PdfTags, DescribeLongLinksByTheirBeginning) {
  TaggedDocument document;
  std::string text;
  for (int i = 0; i < 40; ++i) {
    text += "123456789 ";
  }
  document.beginParagraph(Align::Auto);
  document.beginLink("https://example.org/", "");
  document.text(text.substr(0, 255) + "\xC3\xA9" + text.substr(255));
  document.end();
  document.end();
  const std::string all = descriptionsIn(document.structure());
  EXPECT_EQ(all.substr(0, all.find('\n')), text.substr(0, 255));
}

TEST(PdfTags, DescribeTheLinksOfTheContents) {
  TaggedDocument document;
  document.beginContents();
  document.contentsItem(1, "x", "The first chapter");
  document.end();
  document.heading(1, "The first chapter");
  EXPECT_EQ(descriptionsIn(document.structure()), "The first chapter\nThe first chapter\n");
}

TEST(PdfTags, AreNeededForDescriptionsOfLinks) {
  ShownDocument document;
  document.beginParagraph(Align::Auto);
  document.beginLink("https://example.org/", "");
  document.text("there");
  document.end();
  document.end();
  const ShownStructure structure(document.bytes());
  const PdfValue& annotation = structure.pages().at(0).at("Annots").items.at(0);
  EXPECT_FALSE(pdfValueOf(structure.objects().object(annotation.reference())).has("Contents"));
}

TEST(PdfTags, NameCodeAndOtherLanguagesInALine) {
  TaggedDocument document;
  document.beginParagraph(Align::Auto);
  document.text("a ");
  document.addSpan(Span::Code, "b");
  document.addSpan(Span::Strong, " c ");
  document.beginLanguage("fr");
  document.text("d");
  document.end();
  document.end();
  EXPECT_EQ(document.tags(), "Document(P('a ' Code('b') ' c ' Span[fr]('d')))");
}

TEST(PdfTags, GivePicturesTheirTexts) {
  TaggedDocument document;
  std::string reason;
  const auto picture = document::Picture::read(greyPng(10, 10), reason);
  document.beginParagraph(Align::Auto);
  document.image(picture, "A grey square", 0, "");
  document.text(" x");
  document.image(picture, "", 0, "");
  document.end();
  const ShownStructure structure = document.structure();
  EXPECT_EQ(structure.all(), "Document(P(Figure[A grey square]('#') ' x'))");
  EXPECT_EQ(structure.artifacts(), "#");  // a picture without a text is decoration
}

TEST(PdfTags, NameTablesWithTheirHeaders) {
  TaggedDocument document;
  document.beginTable({{}, {}}, "");
  document.addRow({"A", "B"}, true);
  document.beginRow(false);
  document::CellStyle header;
  header.header = true;
  document.beginCell(header);
  document.text("row");
  document.end();
  document.cell("");
  document.end();
  document.beginRow(false);
  document::CellStyle wide;
  wide.span = 2;
  document.beginCell(wide);
  document.text("both");
  document.end();
  document.end();
  document.end();
  EXPECT_EQ(document.tags(),
            "Document(Table(THead(TR(TH[Column]('A') TH[Column]('B'))) "
            "TBody(TR(TH[Row]('row') TD) TR(TD[2]('both')))))");
}

TEST(PdfTags, NameWhatIsInACell) {
  TaggedDocument document;
  document.beginTable({{}}, "");
  document.beginRow(false);
  document.beginCell({});
  document.text("a ");
  document.beginLink("#x", "");
  document.text("b");
  document.end();
  document.end();
  document.end();
  document.end();
  EXPECT_EQ(document.tags(), "Document(Table(TBody(TR(TD('a ' Link('b' @))))))");
}

TEST(PdfTags, LeaveOutTheHeaderRowsOfFurtherPages) {
  TaggedDocument document;
  document.beginTable({{}}, "");
  document.addRow({"Head"}, true);
  for (int i = 0; i < 100; ++i) {
    document.addRow({"x"});
  }
  document.end();
  const ShownStructure structure = document.structure();
  ASSERT_GT(structure.pages().size(), 1u);
  EXPECT_EQ(countOf(structure.all(), "TH[Column]('Head')"), 1u);
  EXPECT_EQ(countOf(structure.all(), "TD('x')"), 100u);
  EXPECT_EQ(countOf(structure.artifacts(), "Head"), structure.pages().size() - 1);
}

// 64 rows a group, so that no list has all rows.
TEST(PdfTags, GroupTheRowsOfATable) {
  TaggedDocument document;
  document.beginTable({{}}, "");
  for (int i = 0; i < 130; ++i) {
    document.addRow({"x"});
  }
  document.end();
  const std::string tags = document.tags();
  EXPECT_EQ(countOf(tags, "TBody("), 3u);
  EXPECT_EQ(countOf(tags.substr(tags.rfind("TBody(")), "TR("), 2u);
}

TEST(PdfTags, GroupVeryManyParagraphs) {
  TaggedDocument document;
  document.addLines(2100);
  const std::string tags = document.tags();
  EXPECT_EQ(countOf(tags, " P("), 2100 - 3u);
  EXPECT_EQ(countOf(tags, "NonStruct(P("), 2u);
}

// Each part of a wide table is a table of its own, in the order in which they are drawn.
TEST(PdfTags, MakeATableOfEachPart) {
  TaggedDocument document;
  std::vector<document::Column> columns(30);
  document.beginTable(columns, "");
  for (const bool isHeader : {true, false}) {
    document.beginRow(isHeader);
    for (int i = 0; i < 30; ++i) {
      document.cell((isHeader ? "Heading" : "content") + std::to_string(i) + "MMMMMMMM");
    }
    document.end();
  }
  document.end();
  const std::string tags = document.tags();
  EXPECT_GT(countOf(tags, "Table("), 1u);
  EXPECT_EQ(countOf(tags, "Table("), countOf(tags, "'content0MMMMMMMM'"));
  EXPECT_EQ(countOf(tags, "THead("), countOf(tags, "TBody("));
  EXPECT_LT(tags.find("'content1MMMMMMMM'"), tags.find("'Heading29MMMMMMMM'"));
}

TEST(PdfTags, HaveOneElementForAParagraphOnTwoPages) {
  TaggedDocument document;
  document.addLines(35);
  document.beginParagraph(Align::Auto);
  for (int i = 0; i < 8; ++i) {
    document.text("line");
    document.lineBreak();
  }
  document.text("end");
  document.end();
  const ShownStructure structure = document.structure();
  ASSERT_EQ(structure.pages().size(), 2u);
  const std::string tags = structure.all();
  const std::string last = tags.substr(tags.rfind("P("));
  EXPECT_EQ(countOf(last, "line"), 8u);
  EXPECT_EQ(countOf(last, "' '"), 1u) << last;
}

TEST(PdfTags, HaveOneElementForACellOnTwoPages) {
  TaggedDocument document;
  document.beginTable({{}}, "");
  document.beginRow(false);
  document.beginCell({});
  for (int i = 0; i < 100; ++i) {
    document.text("line");
    document.lineBreak();
  }
  document.end();
  document.end();
  document.end();
  const ShownStructure structure = document.structure();
  ASSERT_EQ(structure.pages().size(), 2u);
  EXPECT_EQ(countOf(structure.all(), "TD("), 1u);
  EXPECT_EQ(countOf(structure.all(), "line"), 100u);
}

TEST(PdfTags, NameTheEntriesOfTheContents) {
  TaggedDocument document;
  document.beginContents();
  document.contentsItem(1, "one", "One");
  document.end();
  document.beginHeading(1, "one", Align::Auto);
  document.text("One");
  document.end();
  const ShownStructure structure = document.structure();
  EXPECT_EQ(structure.all(), "Document(TOC(TOCI(Link('One' @ '#' @))) H1('One'))");
  EXPECT_EQ(structure.artifacts().substr(0, 4), ". . ");
  EXPECT_EQ(structure.artifacts().back(), '#');  // the dots beside the number, which are written last
}

TEST(PdfTags, LeaveOutHeadersAndFooters) {
  TaggedDocument document;
  document.set("header", "Above");
  document.set("footer", "{page} / {pages}");
  document.paragraph("Text");
  document.rule();
  const ShownStructure structure = document.structure();
  EXPECT_EQ(structure.all(), "Document(P('Text'))");
  EXPECT_EQ(structure.artifacts(), "Above1 /#");
}

// Readers would read the structure around a page with it.
TEST(PdfTags, AreNotInTheObjectStreamsOfPages) {
  TaggedDocument document;
  document.addLines(200);
  const PdfObjects objects(document.bytes());
  std::map<int, bool> hasPages;
  for (std::size_t number = 1; number < objects.size(); ++number) {
    const int holder = objects.holderOf(static_cast<int>(number));
    const std::string object = objects.object(static_cast<int>(number));
    if (holder != 0 && object.find("/Type/Page/") != object.npos) {
      hasPages[holder] = true;
    }
  }
  EXPECT_FALSE(hasPages.empty());
  for (std::size_t number = 1; number < objects.size(); ++number) {
    const std::string object = objects.object(static_cast<int>(number));
    if (object.substr(0, 5) == "<</S/") {
      EXPECT_EQ(hasPages.count(objects.holderOf(static_cast<int>(number))), 0u);
    }
  }
}

TEST(PdfTags, AreLeftOutOfAnArchiveOfLevel1) {
  TaggedDocument document;
  document.set("pdf.standard", "a-1b");
  document.paragraph("Text");
  EXPECT_EQ(document.bytes().find("StructTreeRoot"), std::string::npos);
  EXPECT_EQ(document.warnings(), "1 x the tags, which a file for PDF/A-1b does not have\n");
}

TEST(PdfTags, MayBeInAnArchiveOfLevel2) {
  TaggedDocument document;
  document.set("pdf.standard", "a-2u");
  document.paragraph("Text");
  EXPECT_EQ(document.tags(), "Document(P('Text'))");
}

}  // namespace
}  // namespace scrivalen::test
