#include "formats/pdf/typeset/shown_document.h"

#include <gtest/gtest.h>

namespace scrivalen::test {
namespace {

using document::Align;

TEST(OutlineOfADocument, HasTheHeadingsInTheirOrderAndLevels) {
  ShownDocument document;
  document.heading(1, "One");
  document.heading(2, "One one");
  document.heading(3, "One one one");
  document.heading(2, "One two");
  document.pageBreak();
  document.heading(1, "Two");
  document.paragraph("text");
  EXPECT_EQ(document.pages().outline(),
            "One @0\n"
            "  One one @0\n"
            "    One one one @0\n"
            "  One two @0\n"
            "Two @1\n");
}

TEST(OutlineOfADocument, NestsByOneLevelWhereLevelsAreMissing) {
  ShownDocument document;
  document.heading(3, "Three");
  document.heading(6, "Six");
  document.heading(1, "One");
  document.heading(4, "Four");
  document.heading(2, "Two");
  EXPECT_EQ(document.pages().outline(),
            "Three @0\n"
            "  Six @0\n"
            "One @0\n"
            "  Four @0\n"
            "  Two @0\n");
}

TEST(OutlineOfADocument, HasTheWholeTextOfAHeading) {
  ShownDocument document;
  document.beginHeading(1, {}, Align::Auto);
  document.text("a ");
  document.addSpan(document::Span::Strong, "b");
  document.lineBreak();
  document.addSpan(document::Span::Code, "c");
  document.end();
  EXPECT_EQ(document.pages().outline(), "a b c @0\n");
}

TEST(OutlineOfADocument, HasTheHeadingsOfQuotesAndItems) {
  ShownDocument document;
  document.beginQuote();
  document.heading(1, "In a quote");
  document.end();
  document.beginList(false, 1, false);
  document.beginItem(document::Task::None);
  document.heading(2, "In an item");
  document.end();
  document.end();
  EXPECT_EQ(document.pages().outline(),
            "In a quote @0\n"
            "  In an item @0\n");
}

TEST(OutlineOfADocument, IsNotThereWithoutHeadings) {
  ShownDocument document;
  document.paragraph("text");
  EXPECT_EQ(document.pages().catalog().find("/Outlines"), std::string::npos);
}

TEST(NamedPlacesOfADocument, AreWhereHeadingsAnchorsAndSectionsAre) {
  ShownDocument document;
  document.beginHeading(1, "heading", Align::Auto);
  document.text("Heading");
  document.end();
  document.beginParagraph(Align::Auto);
  document.anchor("anchor");
  document.text("text");
  document.end();
  document.beginSection("name", "section");
  document.paragraph("text");
  document.end();
  const ShownPages pages = document.pages();
  EXPECT_EQ(pages.place("heading"), "0 785");
  EXPECT_EQ(pages.place("anchor"), "0 755");
  EXPECT_EQ(pages.place("section"), "1 785");
  EXPECT_EQ(pages.place("nowhere"), "");
}

TEST(NamedPlacesOfADocument, AreOnThePageOfTheLineThatHasThem) {
  ShownDocument document;
  document.beginParagraph(Align::Auto);
  for (int i = 0; i < 5000; ++i) {
    document.text("word ");
  }
  document.anchor("late");
  document.text("end");
  document.end();
  const ShownPages pages = document.pages();
  ASSERT_GT(pages.count(), 2u);
  EXPECT_EQ(std::stoi(pages.place("late")), pages.pageOf("end"));
}

TEST(NamedPlacesOfADocument, BeforeATableAreAtTheTable) {
  ShownDocument document;
  document.paragraph("text");
  document.anchor("table");
  document.beginTable({}, {});
  document.addRow({"cell"});
  document.end();
  document.paragraph("after");
  const ShownPages pages = document.pages();
  const std::string place = pages.place("table");
  ASSERT_TRUE(place.starts_with("0 ")) << place;
  EXPECT_GT(std::stoi(place.substr(2)), pages.at(0).find("cell").y);
}

TEST(NamedPlacesOfADocument, BeforeATableOnTheNextPageAreThere) {
  ShownDocument document;
  document.addLines(38);
  document.anchor("table");
  document.beginTable({}, {});
  document.addRow({"cell"});
  document.end();
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.pageOf("cell"), 1);
  EXPECT_TRUE(pages.place("table").starts_with("1 "));
}

TEST(NamedPlacesOfADocument, AfterTheLastTextAreAtItsEnd) {
  ShownDocument document;
  document.paragraph("text");
  document.anchor("end");
  EXPECT_TRUE(document.pages().place("end").starts_with("0 "));
}

TEST(NamedPlacesOfADocument, OfAnEmptyLastSectionAddNoPage) {
  ShownDocument document;
  document.paragraph("text");
  document.beginSection("name", "section");
  document.end();
  const ShownPages pages = document.pages();
  EXPECT_EQ(pages.count(), 1u);
  EXPECT_TRUE(pages.place("section").starts_with("0 "));
}

// A link in a paragraph of its own.
void addLink(ShownDocument& document, std::string_view address) {
  document.beginParagraph(Align::Auto);
  document.beginLink(address, {});
  document.text("link");
  document.end();
  document.end();
}

TEST(LinksOfADocument, WithoutAddressAreText) {
  ShownDocument document;
  addLink(document, "");
  const ShownPages pages = document.pages();
  EXPECT_TRUE(pages.at(0).links.empty());
  EXPECT_EQ(pages.pageObject(0).find("/Annots"), std::string::npos);
  EXPECT_EQ(pages.at(0).find("link").color, 0u);
}

TEST(LinksOfADocument, LeadToEarlierAndLaterPlaces) {
  ShownDocument document;
  document.anchor("early");
  document.paragraph("text");
  addLink(document, "#early");
  addLink(document, "#late");
  document.pageBreak();
  document.anchor("late");
  document.paragraph("text");
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.at(0).links.size(), 2u);
  EXPECT_EQ(pages.at(0).links[0].address, "#early");
  EXPECT_EQ(pages.at(0).links[1].address, "#late");
  EXPECT_TRUE(pages.place("early").starts_with("0 "));
  EXPECT_TRUE(pages.place("late").starts_with("1 "));
  EXPECT_EQ(document.warnings(), "");
}

TEST(LinksOfADocument, ToAMissingPlaceAreAWarning) {
  ShownDocument document;
  addLink(document, "#nowhere");
  EXPECT_NE(document.warnings().find("nowhere"), std::string::npos);
}

// Pages are written before it is known which places come, so the link stays, with a name that leads nowhere.
TEST(LinksOfADocument, ToAMissingPlaceKeepTheirLookAndDoNothing) {
  ShownDocument document;
  document.anchor("somewhere");
  addLink(document, "#somewhere");
  addLink(document, "#nowhere");
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.at(0).links.size(), 2u);
  EXPECT_EQ(pages.at(0).links[1].address, "#nowhere");
  EXPECT_EQ(pages.place("nowhere"), "");
  ASSERT_EQ(pages.at(0).texts().size(), 2u);
  EXPECT_EQ(pages.at(0).texts()[1].color, pages.at(0).texts()[0].color);
}

TEST(LinksOfADocument, LeadToAddressesByActions) {
  ShownDocument document;
  addLink(document, "https://example.com/a(b)?c=\\d");
  const ShownPages pages = document.pages();
  ASSERT_EQ(pages.at(0).links.size(), 1u);
  EXPECT_EQ(pages.at(0).links[0].address, "https://example.com/a(b)?c=\\d");
}

TEST(LinksOfADocument, CoverTheirText) {
  ShownDocument document;
  document.beginParagraph(Align::Auto);
  document.text("before ");
  document.beginLink("https://example.com", {});
  document.text("link");
  document.end();
  document.text(" after");
  document.end();
  const ShownPages pages = document.pages();
  const ShownPage& page = pages.at(0);
  ASSERT_EQ(page.links.size(), 1u);
  const PdfLink& link = page.links[0];
  EXPECT_NEAR(link.left, page.find("link").x, 0.1);
  EXPECT_NEAR(link.right, page.find(" after").x, 0.1);
  EXPECT_LT(link.bottom, page.find("link").y);
  EXPECT_GT(link.top, page.find("link").y + 7);
}

TEST(LinksOfADocument, HaveABoxOnEachLine) {
  ShownDocument document;
  document.beginParagraph(Align::Auto);
  document.beginLink("https://example.com", {});
  for (int i = 0; i < 50; ++i) {
    document.text("word ");
  }
  document.end();
  document.end();
  const ShownPages pages = document.pages();
  EXPECT_EQ(pages.at(0).links.size(), pages.at(0).texts().size());
  EXPECT_GT(pages.at(0).links.size(), 1u);
}

}  // namespace
}  // namespace scrivalen::test
