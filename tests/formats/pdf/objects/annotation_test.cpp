#include "formats/pdf/objects/annotation.h"
#include "formats/pdf/objects/written.h"
#include "support/bytes.h"

#include <gtest/gtest.h>

using namespace PDFStuffer;
using namespace scrivalen::test;

namespace {

// Annotation 9, and an object with the number 5 as its target.
struct PdfAnnotation : testing::Test {
  PdfAnnotation() { page.objectNumber = 5; }

  std::uint32_t next = 9;
  CPDFAnnot annotation{next};
  CPDFDictionary page;
};

}  // namespace

TEST_F(PdfAnnotation, TakesTheNextNumberAndIsEmpty) {
  EXPECT_EQ(annotation.objectNumber, 9u);
  EXPECT_EQ(next, 10u);
  EXPECT_TRUE(annotation.dictionaryFlag);
  EXPECT_TRUE(annotation.entries.empty());
  EXPECT_EQ(annotation.destination.target, nullptr);
  EXPECT_TRUE(annotation.destLeft.isInteger);
  EXPECT_TRUE(annotation.destTop.isInteger);
}

TEST_F(PdfAnnotation, LinksARectangleToAPositionOnAPage) {
  annotation.setRectangle(72, 700, 200, 712);
  annotation.destination.target = &page;
  annotation.destLeft.intValue = 72;
  annotation.destTop.intValue = 712;
  const std::string expected =
      "9 0 obj\r\n"
      "<<\r\n"
      "/Type /Annot\r\n"
      "/Subtype /Link\r\n"
      "/Rect [72 700 200 712]\r\n"
      "/Dest [5 0 R\r\n"
      "/XYZ\r\n"
      "72\r\n"
      "712\r\n"
      "0\r\n"
      "]\r\n"
      "\r\n"
      "/Border [0\r\n"
      "0\r\n"
      "0\r\n"
      "]\r\n"
      "\r\n"
      ">>\r\n"
      "endobj\r\n"
      "\r\n";
  EXPECT_TRUE(areSameBytes(expected, written(annotation)));
}

TEST_F(PdfAnnotation, OpensAnAddressInsteadOfAPage) {
  annotation.address = u"https://example.com/(a)";
  annotation.destination.target = &page;
  const std::string bytes = conforming(annotation);
  EXPECT_NE(bytes.find("/A <<\r\n/Type /Action\r\n/S /URI\r\n/URI (https://example.com/\\(a\\))\r\n>>\r\n"),
            std::string::npos);
  EXPECT_EQ(bytes.find("/Dest"), std::string::npos);
}

TEST_F(PdfAnnotation, IsTheSameInConformingForm) {
  CPDFAnnot other(next);
  other.objectNumber = annotation.objectNumber;
  for (CPDFAnnot* const each : {&annotation, &other}) {
    each->setRectangle(72, 700, 200, 712);
    each->destination.target = &page;
  }
  EXPECT_TRUE(areSameBytes(written(annotation), conforming(other)));
}

TEST_F(PdfAnnotation, LeadsToObject0ByDefault) {
  EXPECT_TRUE(
      areSameBytes("9 0 obj\r\n"
                   "<<\r\n"
                   "/Type /Annot\r\n"
                   "/Subtype /Link\r\n"
                   "/Rect [0 0 0 0]\r\n"
                   "/Dest [0 0 R\r\n"
                   "/XYZ\r\n"
                   "0\r\n"
                   "0\r\n"
                   "0\r\n"
                   "]\r\n"
                   "\r\n"
                   "/Border [0\r\n"
                   "0\r\n"
                   "0\r\n"
                   "]\r\n"
                   "\r\n"
                   ">>\r\n"
                   "endobj\r\n"
                   "\r\n",
                   written(annotation)));
}

TEST_F(PdfAnnotation, HasNoDestinationByDefaultInConformingForm) {
  EXPECT_TRUE(
      areSameBytes("9 0 obj\r\n"
                   "<<\r\n"
                   "/Type /Annot\r\n"
                   "/Subtype /Link\r\n"
                   "/Rect [0 0 0 0]\r\n"
                   "/Border [0\r\n"
                   "0\r\n"
                   "0\r\n"
                   "]\r\n"
                   "\r\n"
                   ">>\r\n"
                   "endobj\r\n"
                   "\r\n",
                   conforming(annotation)));
}

TEST_F(PdfAnnotation, TruncatesACoordinateThatIsNoInteger) {
  annotation.destLeft.isInteger = false;
  annotation.destLeft.realValue = 72.9;
  annotation.destTop.isInteger = false;
  annotation.destTop.realValue = -3.9;
  EXPECT_NE(written(annotation).find("/XYZ\r\n72\r\n-3\r\n0\r\n]"), std::string::npos);
}

TEST_F(PdfAnnotation, WritesItsRectangleUnchanged) {
  annotation.setRectangle(-1, 2147483647, -2147483647 - 1, 0);
  EXPECT_NE(written(annotation).find("/Rect [-1 2147483647 -2147483648 0]\r\n"), std::string::npos);
}

TEST_F(PdfAnnotation, SetsTheDictionaryFlagOfItsArrays) {
  annotation.destination.target = &page;
  written(annotation);
  ASSERT_EQ(annotation.entries.size(), 5u);
  EXPECT_FALSE(annotation.entries[2].value->dictionaryFlag);
  EXPECT_TRUE(annotation.entries[3].value->dictionaryFlag);
  EXPECT_TRUE(annotation.entries[4].value->dictionaryFlag);
}

TEST_F(PdfAnnotation, AddsItsEntriesEachTimeItIsWritten) {
  const std::string once = written(annotation);
  const std::string twice = written(annotation);
  const std::string entries = once.substr(13, once.size() - 13 - 14);
  EXPECT_EQ(twice, "9 0 obj\r\n<<\r\n" + entries + entries + ">>\r\nendobj\r\n\r\n");
}
