#include "formats/pdf/objects/containers.h"

#include "formats/pdf/objects/tagged.h"
#include "formats/pdf/objects/values.h"
#include "formats/pdf/objects/written.h"
#include "support/bytes.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace PDFStuffer;
using scrivalen::test::areSameBytes;
using scrivalen::test::conforming;
using scrivalen::test::Tagged;
using scrivalen::test::written;

namespace {

// Writes a given text and may fail after it.
class Words : public CPDFObject {
 public:
  explicit Words(std::string text, bool fails = false) : text_(std::move(text)), fails_(fails) {}
  void Write(CPDFMemBlock& out) override {
    WriteHeader(out);
    out.Append(text_);
    if (fails_) {
      throw std::runtime_error("cannot go on");
    }
    WriteFooter(out);
  }

 private:
  std::string text_;
  bool fails_;
};

std::unique_ptr<Words> words(const char* text) { return std::make_unique<Words>(text); }
std::unique_ptr<Words> failing(const char* text) { return std::make_unique<Words>(text, true); }

// Throws a type that is not derived from std::exception.
class ThrowsInt final : public CPDFObject {
 public:
  void Write(CPDFMemBlock& out) override {
    out.Append("ha");
    throw 1;
  }
};

// Counts its destruction.
class Counted final : public Words {
 public:
  explicit Counted(int& deleted) : Words("c"), deleted_(deleted) {}
  ~Counted() override { ++deleted_; }

 private:
  int& deleted_;
};

void addNumbers(CPDFArray& array) {
  for (const std::int32_t value : {1, 2, 3}) {
    array.Append(std::make_unique<CPDFNumber>(value));
  }
}

}  // namespace

TEST(PdfObject, HasAHeaderAndAFooterOnlyWithANumber) {
  Words object("text\r\n");
  EXPECT_EQ(written(object), "text\r\n");
  object.objectNumber = 12;
  EXPECT_EQ(written(object), "12 0 obj\r\ntext\r\nendobj\r\n\r\n");
}

TEST(PdfObject, WritesTheLargestNumberAndGeneration) {
  Words object("");
  object.objectNumber = object.generation = 4294967295;
  CPDFMemBlock out;
  object.WriteHeader(out);
  EXPECT_EQ(out.text(), "4294967295 4294967295 obj\r\n");
}

TEST(PdfObject, WritesItsChildrenInOrder) {
  Words parent("parent");
  Words first("first ");
  Words second("second");
  parent.children = {&first, &second};
  CPDFMemBlock out;
  parent.WriteChildren(out);
  EXPECT_EQ(out.text(), "first second");
}

TEST(PdfObject, WritesItsChildrenWithoutItsNumber) {
  CPDFDictionary parent;
  parent.objectNumber = 4;
  Words first("1");
  Words second("2");
  parent.children = {&first, &second};
  CPDFMemBlock out;
  parent.WriteChildren(out);
  EXPECT_EQ(out.text(), "12");
}

TEST(PdfObject, WritesNothingWithoutChildren) {
  Words parent("parent");
  CPDFMemBlock out;
  parent.WriteChildren(out);
  EXPECT_EQ(out.text(), "");
}

TEST(PdfObject, DoesNotOwnItsChildren) {
  int deleted = 0;
  Counted child(deleted);
  { Words("parent").children.push_back(&child); }
  EXPECT_EQ(deleted, 0);
}

TEST(PdfArray, PutsABlankAfterEachElement) {
  CPDFArray array;
  addNumbers(array);
  EXPECT_EQ(written(array), "[1 2 3 ]\r\n");
  EXPECT_EQ(conforming(array), "[1 2 3 ]\r\n");
}

TEST(PdfArray, IsAPairOfBracketsWhenEmpty) {
  CPDFArray array;
  EXPECT_EQ(written(array), "[]\r\n");
  array.SetLineBreaks(true);
  EXPECT_EQ(written(array), "[]\r\n");
}

TEST(PdfArray, PutsALineEndAfterEachElementOnRequest) {
  CPDFArray array;
  addNumbers(array);
  array.SetLineBreaks(true);
  EXPECT_EQ(written(array), "[1\r\n2\r\n3\r\n]\r\n");
  array.SetLineBreaks(false);
  EXPECT_EQ(written(array), "[1 2 3 ]\r\n");
}

TEST(PdfArray, KeepsTheLineEndOfANestedArray) {
  CPDFArray array;
  auto inner = std::make_unique<CPDFArray>();
  addNumbers(*inner);
  array.Append(std::move(inner));
  EXPECT_EQ(written(array), "[[1 2 3 ]\r\n ]\r\n");
}

TEST(PdfArray, PutsTheSeparatorAfterAnElementThatWritesNothing) {
  CPDFArray array;
  array.Append(words(""));
  array.Append(words("x"));
  EXPECT_EQ(written(array), "[ x ]\r\n");
}

TEST(PdfArray, WritesItsElementsInItsOwnForm) {
  CPDFArray array;
  array.Append(std::make_unique<CPDFName>(u"a b"));
  EXPECT_EQ(written(array), "[/a b ]\r\n");
  EXPECT_EQ(conforming(array), "[/a#20b ]\r\n");
}

TEST(PdfArray, OwnsItsElements) {
  int deleted = 0;
  {
    CPDFArray array;
    array.Append(std::make_unique<Counted>(deleted));
    array.Append(std::make_unique<Counted>(deleted));
    EXPECT_EQ(deleted, 0);
  }
  EXPECT_EQ(deleted, 2);
}

TEST(PdfDictionary, HasTheDictionaryFlagAndIsDirect) {
  const CPDFDictionary dictionary;
  EXPECT_TRUE(dictionary.dictionaryFlag);
  EXPECT_EQ(dictionary.objectNumber, 0u);
}

TEST(PdfDictionary, IsAPairOfBracketsWhenEmpty) {
  CPDFDictionary dictionary;
  EXPECT_EQ(written(dictionary), "<<\r\n>>\r\n");
  dictionary.objectNumber = 4;
  EXPECT_EQ(written(dictionary), "4 0 obj\r\n<<\r\n>>\r\nendobj\r\n\r\n");
}

TEST(PdfDictionary, WritesItsEntriesInOrder) {
  CPDFName pages;
  pages.objectNumber = 2;
  CPDFDictionary dictionary;
  dictionary.objectNumber = 7;
  dictionary.addName(u"Type", u"Catalog");
  dictionary.addReference(u"Pages", &pages);
  EXPECT_TRUE(
      areSameBytes("7 0 obj\r\n"
                   "<<\r\n"
                   "/Type /Catalog\r\n"
                   "/Pages 2 0 R\r\n"
                   ">>\r\n"
                   "endobj\r\n"
                   "\r\n",
                   written(dictionary)));
}

TEST(PdfDictionary, PutsAnEmptyLineAfterAnArrayAndADictionary) {
  CPDFDictionary dictionary;
  addNumbers(dictionary.add(u"Kids", std::make_unique<CPDFArray>()));
  dictionary.add(u"Font", std::make_unique<CPDFDictionary>()).addNumber(u"Count", -3);
  EXPECT_TRUE(
      areSameBytes("<<\r\n"
                   "/Kids [1 2 3 ]\r\n"
                   "\r\n"
                   "/Font <<\r\n"
                   "/Count -3\r\n"
                   ">>\r\n"
                   "\r\n"
                   ">>\r\n",
                   written(dictionary)));
}

TEST(PdfDictionary, WritesARepeatedKeyTwice) {
  CPDFDictionary dictionary;
  dictionary.addNumber(u"Size", 1);
  dictionary.addNumber(u"Size", 2);
  EXPECT_EQ(written(dictionary), "<<\r\n/Size 1\r\n/Size 2\r\n>>\r\n");
}

TEST(PdfDictionary, WritesEmptyNamesAndStrings) {
  CPDFDictionary dictionary;
  dictionary.addName(u"Name", u"");
  dictionary.add(u"Title", std::make_unique<CPDFString>());
  dictionary.addName(u"", u"V");
  EXPECT_EQ(written(dictionary), "<<\r\n/Name /\r\n/Title ()\r\n/ /V\r\n>>\r\n");
}

TEST(PdfDictionary, SkipsAnEntryWhoseKeyOrValueWritesNothing) {
  CPDFDictionary dictionary;
  dictionary.add(u"Empty", words(""));
  dictionary.AddEntry(words(""), words("keyless"));
  dictionary.add(u"Full", words("value"));
  EXPECT_EQ(written(dictionary), "<<\r\n/Full value\r\n>>\r\n");
}

TEST(PdfDictionary, SkipsAnEntryWithoutKeyOrValue) {
  CPDFDictionary dictionary;
  dictionary.AddEntry(nullptr, words("keyless"));
  dictionary.AddEntry(words("/Valueless"), nullptr);
  EXPECT_EQ(written(dictionary), "<<\r\n>>\r\n");
}

TEST(PdfDictionary, KeepsTheBytesOfAFailingValue) {
  CPDFDictionary dictionary;
  dictionary.add(u"Half", failing("ha"));
  dictionary.add(u"None", failing(""));
  dictionary.addNumber(u"Next", 1);
  EXPECT_EQ(written(dictionary), "<<\r\n/Half ha\r\n/Next 1\r\n>>\r\n");
}

TEST(PdfDictionary, IsIncompleteWithAFailingValue) {
  const auto isWhole = [](std::unique_ptr<CPDFObject> value) {
    CPDFDictionary dictionary;
    dictionary.add(u"In", std::make_unique<CPDFDictionary>()).add(u"Key", std::move(value));
    dictionary.addNumber(u"Next", 1);
    CPDFMemBlock out;
    dictionary.Write(out);
    return out.isWhole();
  };
  EXPECT_TRUE(isWhole(words("all")));
  EXPECT_TRUE(isWhole(words("")));
  EXPECT_FALSE(isWhole(failing("")));
  EXPECT_FALSE(isWhole(failing("ha")));
}

TEST(PdfArray, IsIncompleteWithAnElementThatContainsAFailingOne) {
  CPDFArray array;
  array.Append(std::make_unique<CPDFDictionary>());
  static_cast<CPDFDictionary&>(*array.elements.front()).add(u"Key", failing(""));
  CPDFMemBlock out;
  array.Write(out);
  EXPECT_EQ(out.text(), "[<<\r\n>>\r\n ]\r\n");
  EXPECT_FALSE(out.isWhole());
}

TEST(PdfDictionary, KeepsTheElementsBeforeAFailingOne) {
  CPDFDictionary dictionary;
  auto& array = dictionary.add(u"Kids", std::make_unique<CPDFArray>());
  addNumbers(array);
  array.Append(failing("ha"));
  EXPECT_EQ(written(dictionary), "<<\r\n/Kids [1 2 3 \r\n>>\r\n");
}

TEST(PdfDictionary, WritesItsKeysAndValuesInItsOwnForm) {
  CPDFDictionary dictionary;
  dictionary.add(u"In", std::make_unique<CPDFDictionary>()).addName(u"a b", u"c/d");
  EXPECT_EQ(written(dictionary), "<<\r\n/In <<\r\n/a b /c/d\r\n>>\r\n\r\n>>\r\n");
  EXPECT_EQ(conforming(dictionary), "<<\r\n/In <<\r\n/a#20b /c#2Fd\r\n>>\r\n\r\n>>\r\n");
}

TEST(PdfDictionary, WritesTheSameEachTime) {
  CPDFDictionary dictionary;
  dictionary.addNumber(u"Count", 1);
  const std::string first = written(dictionary);
  EXPECT_EQ(written(dictionary), first);
}

TEST(PdfDictionary, OwnsItsKeysAndValues) {
  int deleted = 0;
  {
    CPDFDictionary dictionary;
    dictionary.AddEntry(std::make_unique<Counted>(deleted), std::make_unique<Counted>(deleted));
    dictionary.add(u"Key", std::make_unique<Counted>(deleted));
    EXPECT_EQ(deleted, 0);
  }
  EXPECT_EQ(deleted, 3);
}

TEST(PdfDictionary, DeletesEachKeyBeforeItsValue) {
  std::string ends;
  {
    CPDFDictionary dictionary;
    dictionary.AddEntry(std::make_unique<Tagged>('k', ends), std::make_unique<Tagged>('v', ends));
    dictionary.AddEntry(std::make_unique<Tagged>('K', ends), std::make_unique<Tagged>('V', ends));
  }
  EXPECT_EQ(ends, "kvKV");
}

TEST(PdfDictionary, ContinuesAfterAValueThatThrowsAnything) {
  CPDFDictionary dictionary;
  dictionary.AddEntry(words("/Half"), std::make_unique<ThrowsInt>());
  EXPECT_EQ(written(dictionary), "<<\r\n/Half ha\r\n>>\r\n");
}

TEST(PdfDictionary, WritesNothingWhenAKeyFails) {
  CPDFDictionary dictionary;
  dictionary.objectNumber = 7;
  dictionary.AddEntry(failing("/Ke"), words("1"));
  CPDFMemBlock out;
  EXPECT_THROW(dictionary.Write(out), std::runtime_error);
  EXPECT_EQ(out.text(), "");
}

TEST(PdfDictionary, DoesNotOwnTheTargetsOfReferences) {
  int deleted = 0;
  Counted target(deleted);
  { CPDFDictionary().addReference(u"Pages", &target); }
  EXPECT_EQ(deleted, 0);
}
