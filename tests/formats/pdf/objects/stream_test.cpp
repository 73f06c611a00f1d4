#include "formats/pdf/objects/containers.h"
#include "formats/pdf/objects/values.h"
#include "formats/pdf/objects/written.h"
#include "support/bytes.h"

#include <gtest/gtest.h>

using namespace PDFStuffer;
using scrivalen::test::areSameBytes;
using scrivalen::test::conforming;
using scrivalen::test::written;

namespace {

// A stream with the number 3.
struct NumberedStream {
  std::uint32_t next = 3;
  CPDFStream stream{next};
};

}  // namespace

TEST(PdfStream, TakesTheNextNumber) {
  std::uint32_t next = 5;
  const CPDFStream first(next);
  const CPDFStream second(next);
  EXPECT_EQ(first.objectNumber, 5u);
  EXPECT_EQ(second.objectNumber, 6u);
  EXPECT_EQ(next, 7u);
  EXPECT_EQ(first.generation, 0u);
}

TEST(PdfStream, HasADirectDictionary) {
  const NumberedStream numbered;
  EXPECT_EQ(numbered.stream.dictionary.objectNumber, 0u);
  EXPECT_TRUE(numbered.stream.dictionary.dictionaryFlag);
}

TEST(PdfStream, StatesTwiceItsLength) {
  NumberedStream numbered;
  numbered.stream.data.Append("BT\r\nET");
  EXPECT_TRUE(
      areSameBytes("3 0 obj\r\n"
                   "<<\r\n"
                   "/Length 12\r\n"
                   ">>\r\n"
                   "stream\r\n"
                   "BT\r\nET"
                   "\r\nendstream\r\n"
                   "endobj\r\n"
                   "\r\n",
                   written(numbered.stream)));
}

TEST(PdfStream, StatesItsLengthInConformingForm) {
  NumberedStream numbered;
  numbered.stream.data.Append("BT\r\nET");
  EXPECT_TRUE(
      areSameBytes("3 0 obj\r\n"
                   "<<\r\n"
                   "/Length 6\r\n"
                   ">>\r\n"
                   "stream\r\n"
                   "BT\r\nET"
                   "\r\nendstream\r\n"
                   "endobj\r\n"
                   "\r\n",
                   conforming(numbered.stream)));
}

TEST(PdfStream, CountsAByteForEachCodeUnit) {
  NumberedStream numbered;
  numbered.stream.data.Append(u"\u20AC\U0001F601");
  EXPECT_EQ(conforming(numbered.stream),
            "3 0 obj\r\n<<\r\n/Length 3\r\n>>\r\nstream\r\n\xAC\x3D\x01\r\nendstream\r\nendobj\r\n\r\n");
}

TEST(PdfStream, CanBeEmpty) {
  NumberedStream numbered;
  EXPECT_EQ(written(numbered.stream), "3 0 obj\r\n<<\r\n/Length 0\r\n>>\r\nstream\r\n\r\nendstream\r\nendobj\r\n\r\n");
}

TEST(PdfStream, PutsTheLengthAfterTheEntriesOfItsDictionary) {
  NumberedStream numbered;
  numbered.stream.dictionary.addName(u"Type", u"XObject");
  numbered.stream.data.Append("q");
  EXPECT_EQ(written(numbered.stream),
            "3 0 obj\r\n<<\r\n/Type /XObject\r\n/Length 2\r\n>>\r\nstream\r\nq\r\nendstream\r\nendobj\r\n\r\n");
}

TEST(PdfStream, AddsALengthEachTimeItIsWritten) {
  NumberedStream numbered;
  numbered.stream.data.Append("q");
  written(numbered.stream);
  numbered.stream.data.Append(" Q");
  EXPECT_EQ(written(numbered.stream),
            "3 0 obj\r\n<<\r\n/Length 2\r\n/Length 6\r\n>>\r\nstream\r\nq Q\r\nendstream\r\nendobj\r\n\r\n");
}

TEST(PdfStream, WritesItsDictionaryInItsOwnForm) {
  NumberedStream numbered;
  numbered.stream.dictionary.addName(u"Name", u"a b");
  EXPECT_EQ(conforming(numbered.stream),
            "3 0 obj\r\n<<\r\n/Name /a#20b\r\n/Length 0\r\n>>\r\nstream\r\n\r\nendstream\r\nendobj\r\n\r\n");
}
