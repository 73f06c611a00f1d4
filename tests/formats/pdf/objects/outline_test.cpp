#include "formats/pdf/objects/outline.h"
#include "formats/pdf/objects/sample.h"
#include "formats/pdf/objects/written.h"
#include "support/bytes.h"
#include "support/documents/pdf_structure.h"

#include <gtest/gtest.h>

using namespace PDFStuffer;
using namespace scrivalen::test;

namespace {

// Outline 3 and its entries 12, 13 and 14.
struct PdfOutline : testing::Test {
  std::uint32_t next = 3;
  CPDFOutLines outline{next};
  std::uint32_t nextEntry = 12;
  CPDFOutLine entry{nextEntry};
  CPDFOutLine second{nextEntry};
  CPDFOutLine third{nextEntry};
};

bool hasTitle(const std::string& bytes, const std::string& title) {
  return bytes.find("/Type /Outline\r\n/Title (" + title + ")\r\n") != std::string::npos;
}

}  // namespace

TEST_F(PdfOutline, TakesTheNextNumberAndIsEmpty) {
  EXPECT_EQ(outline.objectNumber, 3u);
  EXPECT_EQ(next, 4u);
  EXPECT_TRUE(outline.dictionaryFlag);
  EXPECT_EQ(outline.first, nullptr);
  EXPECT_EQ(outline.last, nullptr);
  EXPECT_EQ(outline.count, 0u);
}

TEST_F(PdfOutline, HasUnlinkedEntriesWithTheirOwnNumbers) {
  EXPECT_EQ(entry.objectNumber, 12u);
  EXPECT_EQ(second.objectNumber, 13u);
  EXPECT_FALSE(entry.dictionaryFlag);
  EXPECT_EQ(entry.parent, nullptr);
  EXPECT_EQ(entry.prev, nullptr);
  EXPECT_EQ(entry.next, nullptr);
  EXPECT_EQ(entry.title, nullptr);
}

TEST_F(PdfOutline, WritesNothingWithoutEntries) { EXPECT_EQ(written(outline), ""); }

TEST_F(PdfOutline, IsWrittenWithoutEntriesInConformingForm) {
  EXPECT_EQ(conforming(outline), "3 0 obj\r\n<<\r\n/Type /Outlines\r\n/Count 0\r\n>>\r\nendobj\r\n\r\n");
}

TEST_F(PdfOutline, RefersToItsFirstAndLastEntry) {
  entry.linkBelow(outline, outline);
  second.linkBelow(outline, outline);
  EXPECT_TRUE(
      areSameBytes("3 0 obj\r\n"
                   "<<\r\n"
                   "/Type /Outlines\r\n"
                   "/Count 2\r\n"
                   "/First 12 0 R\r\n"
                   "/Last 13 0 R\r\n"
                   ">>\r\n"
                   "endobj\r\n"
                   "\r\n",
                   written(outline)));
}

TEST_F(PdfOutline, WritesACountOfZero) {
  outline.first = outline.last = &entry;
  EXPECT_NE(written(outline).find("/Type /Outlines\r\n/Count 0\r\n/First 12 0 R\r\n"), std::string::npos);
}

TEST_F(PdfOutline, LinksEntriesOfOneLevel) {
  entry.linkBelow(outline, outline);
  second.linkBelow(outline, outline);
  third.linkBelow(outline, outline);
  EXPECT_EQ(outline.first, &entry);
  EXPECT_EQ(outline.last, &third);
  EXPECT_EQ(outline.count, 3u);
  EXPECT_EQ(entry.next, &second);
  EXPECT_EQ(second.prev, &entry);
  EXPECT_EQ(second.next, &third);
  EXPECT_EQ(third.prev, &second);
  EXPECT_EQ(second.parent, &outline);
  EXPECT_EQ(entry.count + second.count + third.count, 0u);
}

TEST_F(PdfOutline, CountsAllEntriesAndEachEntrysChildren) {
  entry.linkBelow(outline, outline);
  second.linkBelow(entry, outline);
  third.linkBelow(entry, outline);
  EXPECT_EQ(outline.count, 3u);
  EXPECT_EQ(entry.count, 2u);
  EXPECT_EQ(outline.last, &entry);
  EXPECT_EQ(entry.first, &second);
  EXPECT_EQ(entry.last, &third);
  EXPECT_EQ(second.next, &third);
  EXPECT_EQ(third.prev, &second);
  EXPECT_EQ(third.parent, &entry);
}

TEST_F(PdfOutline, CountsADeepEntryOnlyInTheOutlineAndItsParent) {
  entry.linkBelow(outline, outline);
  second.linkBelow(entry, outline);
  third.linkBelow(second, outline);
  EXPECT_EQ(outline.count, 3u);
  EXPECT_EQ(entry.count, 1u);
  EXPECT_EQ(second.count, 1u);
}

TEST_F(PdfOutline, WritesAnEntryWithTitleAndDestination) {
  CPDFDictionary page;
  page.objectNumber = 5;
  entry.title = std::make_unique<std::u16string>(u"Intro");
  entry.destination.target = &page;
  entry.destTop.intValue = 800;
  entry.linkBelow(outline, outline);
  third.linkBelow(outline, outline);
  EXPECT_TRUE(
      areSameBytes("12 0 obj\r\n"
                   "<<\r\n"
                   "/Type /Outline\r\n"
                   "/Title (Intro)\r\n"
                   "/Dest [5 0 R\r\n"
                   "/XYZ\r\n"
                   "0\r\n"
                   "800\r\n"
                   "0\r\n"
                   "]\r\n"
                   "\r\n"
                   "/Parent 3 0 R\r\n"
                   "/Next 14 0 R\r\n"
                   ">>\r\n"
                   "endobj\r\n"
                   "\r\n",
                   written(entry)));
}

TEST_F(PdfOutline, WritesTheLinksOfAnEntryInAFixedOrder) {
  CPDFOutLine below(nextEntry);
  entry.linkBelow(outline, outline);
  second.linkBelow(outline, outline);
  third.linkBelow(outline, outline);
  below.linkBelow(second, outline);
  EXPECT_TRUE(
      areSameBytes("13 0 obj\r\n"
                   "<<\r\n"
                   "/Type /Outline\r\n"
                   "/Count 1\r\n"
                   "/Dest [0 0 R\r\n"
                   "/XYZ\r\n"
                   "0\r\n"
                   "0\r\n"
                   "0\r\n"
                   "]\r\n"
                   "\r\n"
                   "/First 15 0 R\r\n"
                   "/Last 15 0 R\r\n"
                   "/Prev 12 0 R\r\n"
                   "/Parent 3 0 R\r\n"
                   "/Next 14 0 R\r\n"
                   ">>\r\n"
                   "endobj\r\n"
                   "\r\n",
                   written(second)));
}

TEST_F(PdfOutline, WritesAnUnlinkedEntryWithoutLinks) {
  EXPECT_TRUE(
      areSameBytes("12 0 obj\r\n"
                   "<<\r\n"
                   "/Type /Outline\r\n"
                   "/Dest [0 0 R\r\n"
                   "/XYZ\r\n"
                   "0\r\n"
                   "0\r\n"
                   "0\r\n"
                   "]\r\n"
                   "\r\n"
                   ">>\r\n"
                   "endobj\r\n"
                   "\r\n",
                   written(entry)));
}

TEST_F(PdfOutline, HasATitleAndNoDestinationByDefaultInConformingForm) {
  EXPECT_TRUE(
      areSameBytes("12 0 obj\r\n"
                   "<<\r\n"
                   "/Type /Outline\r\n"
                   "/Title ()\r\n"
                   ">>\r\n"
                   "endobj\r\n"
                   "\r\n",
                   conforming(entry)));
}

TEST_F(PdfOutline, WritesAnEmptyTitle) {
  entry.title = std::make_unique<std::u16string>();
  EXPECT_TRUE(hasTitle(written(entry), ""));
}

TEST_F(PdfOutline, EscapesBracketsOfATitleOnlyInConformingForm) {
  entry.title = std::make_unique<std::u16string>(u"a (b\\c) d)");
  EXPECT_TRUE(hasTitle(written(entry), "a (b\\c) d)"));
  second.title = std::make_unique<std::u16string>(u"a (b\\c) d)");
  EXPECT_TRUE(hasTitle(conforming(second), "a \\(b\\\\c\\) d\\)"));
}

TEST_F(PdfOutline, WritesTheLowBytesOfATitleUnlessConforming) {
  entry.title = std::make_unique<std::u16string>(u"\u20AC5");
  EXPECT_TRUE(hasTitle(written(entry),
                       "\xAC"
                       "5"));
  second.title = std::make_unique<std::u16string>(u"\u20AC5");
  EXPECT_TRUE(hasTitle(conforming(second), std::string("\xFE\xFF\x20\xAC\x00\x35", 6)));
}

TEST_F(PdfOutline, TruncatesACoordinateThatIsNoInteger) {
  entry.destLeft.isInteger = false;
  entry.destLeft.realValue = 0.99;
  entry.destTop.isInteger = false;
  entry.destTop.realValue = 801.5;
  EXPECT_NE(written(entry).find("/XYZ\r\n0\r\n801\r\n0\r\n]"), std::string::npos);
}

TEST_F(PdfOutline, SetsTheDictionaryFlagOfItsDestination) {
  written(entry);
  ASSERT_EQ(entry.entries.size(), 2u);
  EXPECT_TRUE(entry.entries[1].value->dictionaryFlag);
}

TEST(PdfOutlineOfAFile, IsListedInTheTableThoughItIsNotWritten) {
  FileOnDisk file;
  file.pdf.CreateOutlines();
  file.pdf.AddStandardFont(u"F1", PDF_TIMES_ROMAN);
  const std::string bytes = file.saved();
  EXPECT_NE(bytes.find("/Outlines 3 0 R\r\n"), std::string::npos);
  EXPECT_EQ(bytes.find("3 0 obj"), std::string::npos);
  const std::size_t next = bytes.find("4 0 obj");
  const std::string line = "0000000" + std::to_string(next) + " 00000 n\r\n";
  EXPECT_NE(bytes.find(line + line + "trailer\r\n"), std::string::npos);
  EXPECT_NE(bytes.find("\r\n0 5\r\n"), std::string::npos);
  EXPECT_EQ(PdfStructure(bytes, false).problems(), std::vector<std::string>());
}

TEST(PdfOutlineOfAFile, IsNotInTheCatalogInConformingFormWithoutEntries) {
  FileOnDisk file(Form::Conforming);
  file.pdf.CreateOutlines();
  file.pdf.AddStandardFont(u"F1", PDF_TIMES_ROMAN);
  const std::string bytes = file.saved();
  EXPECT_NE(bytes.find("1 0 obj\r\n<<\r\n/Type /Catalog\r\n/Pages 2 0 R\r\n>>\r\n"), std::string::npos);
  EXPECT_EQ(PdfStructure(bytes, true).problems(), std::vector<std::string>());
}
