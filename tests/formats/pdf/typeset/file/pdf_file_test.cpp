#include "formats/pdf/typeset/file/pdf_file.h"
#include "formats/pdf/typeset/made_pdf_file.h"
#include "formats/pdf/typeset/pdf_objects.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace scrivalen::typeset;
using namespace scrivalen::test;

namespace {

bool contains(const std::string& text, const std::string& part) { return text.find(part) != text.npos; }

}  // namespace

TEST(PdfFile, BeginsWithItsVersionAndEndsWithThePlaceToReadFrom) {
  MadePdfFile made;
  const int catalog = made.file.newNumber();
  made.file.writeObject(catalog, "<</Type/Catalog>>");
  const std::string bytes = made.finished({catalog, 7});
  EXPECT_EQ(bytes.substr(0, 15), "%PDF-1.7\n%\xE2\xE3\xCF\xD3\n");
  const std::size_t table = bytes.find("3 0 obj\n");
  EXPECT_EQ(bytes.substr(bytes.rfind("startxref")), "startxref\n" + std::to_string(table) + "\n%%EOF\n");
  EXPECT_TRUE(contains(PdfObjects(bytes).trailer(), "/Root 1 0 R/Info 7 0 R"));
}

TEST(PdfFile, WritesAStreamAsItIs) {
  MadePdfFile made;
  made.file.writeEncodedStream(made.file.newNumber(), "/Type/Metadata", "as it is");
  EXPECT_TRUE(contains(made.finished(), "\n1 0 obj\n<</Type/Metadata/Length 8>>stream\nas it is\nendstream\nendobj\n"));
}

TEST(PdfFile, CompressesAStream) {
  MadePdfFile made;
  const std::string data(10'000, 'x');
  made.file.writeStream(made.file.newNumber(), "/Type/Any", data);
  const std::string bytes = made.finished();
  EXPECT_LT(bytes.size(), 1000u);
  const PdfObjects objects(bytes);
  EXPECT_TRUE(contains(objects.object(1), "<</Type/Any/Filter/FlateDecode/Length "));
  EXPECT_EQ(objects.stream(1), data);
}

TEST(PdfFile, CollectsObjectsInAStream) {
  MadePdfFile made;
  const int first = made.file.newNumber();
  const int second = made.file.newNumber();
  made.file.writeObject(second, "[1 2]");
  made.file.writeObject(first, "<</A 1>>");
  const PdfObjects objects(made.finished());
  EXPECT_EQ(objects.object(first), "<</A 1>>");
  EXPECT_EQ(objects.object(second), "[1 2]");
  EXPECT_EQ(objects.holderOf(first), 3);
  EXPECT_EQ(objects.stream(3), "2 0 1 6 [1 2]\n<</A 1>>\n");
}

TEST(PdfFile, BeginsAnotherObjectStreamWhenOneIsFull) {
  MadePdfFile made;
  std::vector<int> numbers;
  for (int i = 0; i < 300; ++i) {
    numbers.push_back(made.file.newNumber());
    made.file.writeObject(numbers.back(), std::to_string(i));
  }
  const PdfObjects objects(made.finished());
  for (int i = 0; i < 300; ++i) {
    EXPECT_EQ(objects.object(numbers[static_cast<std::size_t>(i)]), std::to_string(i));
  }
  EXPECT_EQ(objects.holderOf(numbers[127]), objects.holderOf(numbers[0]));
  EXPECT_NE(objects.holderOf(numbers[128]), objects.holderOf(numbers[0]));
  EXPECT_EQ(objects.size(), 1 + 300 + 3 + 1u);  // no object, 300, their streams, the table
}

TEST(PdfFile, KeepsObjectStreamsSmall) {
  MadePdfFile made;
  const std::string large(20'000, 'x');
  for (int i = 0; i < 4; ++i) {
    made.file.writeObject(made.file.newNumber(), "(" + large + ")");
  }
  const PdfObjects objects(made.finished());
  EXPECT_EQ(objects.holderOf(1), objects.holderOf(3));  // object 2 is their stream
  EXPECT_NE(objects.holderOf(4), objects.holderOf(1));
  EXPECT_EQ(objects.object(4), "(" + large + ")");
}

TEST(PdfFile, ListsAnObjectThatWasNeverWrittenAsFree) {
  MadePdfFile made;
  const int lost = made.file.newNumber();
  const int written = made.file.newNumber();
  made.file.writeObject(written, "null");
  const PdfObjects objects(made.finished());
  EXPECT_FALSE(objects.has(lost));
  EXPECT_TRUE(objects.has(written));
}

TEST(PdfFile, CountsItsBytes) {
  MadePdfFile made;
  EXPECT_EQ(made.file.size(), 15u);
  made.file.writeEncodedStream(made.file.newNumber(), "", "12345");
  EXPECT_EQ(made.file.size(), 15u + std::string("1 0 obj\n<</Length 5>>stream\n12345\nendstream\nendobj\n").size());
}

TEST(PdfFile, FindsObjectsFarIntoTheFile) {
  MadePdfFile made;
  const std::string large(300'000, 'x');
  made.file.writeEncodedStream(made.file.newNumber(), "", large);
  const int last = made.file.newNumber();
  made.file.writeEncodedStream(last, "", "last");
  const PdfObjects objects(made.finished());
  EXPECT_EQ(objects.stream(1), large);
  EXPECT_EQ(objects.stream(last), "last");
}
