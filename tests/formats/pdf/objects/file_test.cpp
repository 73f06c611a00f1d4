#include "formats/pdf/objects/file.h"
#include "formats/pdf/objects/sample.h"
#include "formats/pdf/objects/tagged.h"
#include "formats/pdf/objects/written.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/documents/pdf_structure.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>

using namespace PDFStuffer;
using namespace scrivalen::test;

namespace {

using Problems = std::vector<std::string>;

scrivalen::NativeFile invalidHandle() { return reinterpret_cast<scrivalen::NativeFile>(std::intptr_t{-1}); }

// A file that is never saved.
CPDFFile unsaved(Form form = Form::Classic) { return CPDFFile(nullptr, form); }

// An object that records the file's position when it is written.
class Probe final : public CPDFObject {
 public:
  Probe(CPDFFile& file, std::vector<std::uint64_t>& seen) : file_(file), seen_(seen) {
    objectNumber = file.nextObjectNumber++;
  }
  void Write(CPDFMemBlock& out) override {
    seen_.push_back(scrivalen::positionOf(file_.handle).value_or(0));
    WriteHeader(out);
    WriteFooter(out);
  }

 private:
  CPDFFile& file_;
  std::vector<std::uint64_t>& seen_;
};

// An object that fails after writing a part.
class Broken final : public CPDFObject {
 public:
  explicit Broken(std::uint32_t& nextObjectNumber) { objectNumber = nextObjectNumber++; }
  void Write(CPDFMemBlock& out) override {
    WriteHeader(out);
    throw std::runtime_error("broken");
  }
};

// An object that is only used for its line in the table.
class Plain final : public CPDFObject {
 public:
  explicit Plain(std::uint64_t offset, std::uint32_t itsGeneration = 0) {
    fileOffset = offset;
    generation = itsGeneration;
  }
  void Write(CPDFMemBlock&) override {}
};

bool canBeOpened(const std::wstring& path) {
  scrivalen::File file = scrivalen::openExclusive(path);
  return file && file.close();
}

}  // namespace

TEST(PdfFile, WithoutPagesIsACatalogAndAnEmptyPageTree) {
  FileOnDisk file;
  EXPECT_TRUE(
      areSameBytes("%PDF-1.4\n"
                   "%\xE2\xE3\xCF\xD3\n"
                   "1 0 obj\r\n"
                   "<<\r\n"
                   "/Type /Catalog\r\n"
                   "/Pages 2 0 R\r\n"
                   ">>\r\n"
                   "endobj\r\n"
                   "\r\n"
                   "2 0 obj\r\n"
                   "<<\r\n"
                   "/Type /Pages\r\n"
                   "/Count 0\r\n"
                   "/Kids []\r\n"
                   "\r\n"
                   ">>\r\n"
                   "endobj\r\n"
                   "\r\n"
                   "xref\r\n"
                   "0 3\r\n"
                   "0000000000 65535 f\r\n"
                   "0000000015 00000 n\r\n"
                   "0000000072 00000 n\r\n"
                   "trailer\r\n"
                   "<<\r\n"
                   "/Size 3\r\n"
                   "/Root 1 0 R\r\n"
                   ">>\r\n"
                   "startxref\r\n"
                   "135\r\n"
                   "%%EOF",
                   file.saved()));
}

TEST(PdfFile, BeginsWithTheVersionAndSixBytesThatMarkItAsBinary) {
  FileOnDisk file;
  const std::string bytes = file.saved();
  EXPECT_EQ(bytes.substr(0, 9), "%PDF-1.4\n");
  EXPECT_EQ(bytes.substr(9, 6), "\x25\xE2\xE3\xCF\xD3\x0A");
}

TEST(PdfFile, EndsWithTheEndMark) {
  FileOnDisk file;
  EXPECT_TRUE(file.saved().ends_with("\r\n%%EOF"));
}

TEST(PdfFile, HasEachObjectAtItsOffsetInTheTableInBothForms) {
  for (const Form form : {Form::Classic, Form::Conforming}) {
    FileOnDisk file(form);
    fillSample(file.pdf);
    const std::string bytes = file.saved();
    EXPECT_EQ(PdfStructure(bytes, form == Form::Conforming).problems(), Problems());
    EXPECT_EQ(file.pdf.writeError(), L"");
  }
}

TEST(PdfFile, WritesTheLowByteOfEachCodeUnitOfItsHead) {
  FileOnDisk file;
  file.pdf.header = u"%\u20AC\n";
  file.pdf.markComment = u"\U0001F601";
  EXPECT_EQ(file.saved().substr(0, 5), "%\xAC\n\x3D\x01");
}

TEST(PdfFile, StartsWithItsCatalogAndItsPageTree) {
  const CPDFFile pdf = unsaved();
  ASSERT_EQ(pdf.objects.size(), 2u);
  EXPECT_EQ(pdf.objects[0].get(), pdf.catalog);
  EXPECT_EQ(pdf.objects[1].get(), pdf.pages);
  EXPECT_EQ(pdf.catalog->objectNumber, 1u);
  EXPECT_EQ(pdf.pages->objectNumber, 2u);
  EXPECT_EQ(pdf.xrefs->objectNumber, 0u);
  EXPECT_EQ(pdf.trailer->objectNumber, 0u);
  EXPECT_TRUE(pdf.trailer->dictionaryFlag);
  EXPECT_TRUE(pdf.catalog->dictionaryFlag);
  EXPECT_EQ(pdf.nextObjectNumber, 3u);
  EXPECT_EQ(pdf.outlines, nullptr);
  EXPECT_TRUE(pdf.fonts.empty());
  EXPECT_TRUE(pdf.callerOwnsHandle);
  EXPECT_TRUE(std::has_virtual_destructor_v<CPDFFile>);
}

TEST(PdfFile, NumbersAPageAndThenItsContent) {
  CPDFFile pdf(nullptr, Form::Classic);
  CPDFPage* const page = pdf.AddPage(u"a name");
  EXPECT_EQ(page->objectNumber, 3u);
  EXPECT_EQ(page->content().objectNumber, 4u);
  EXPECT_EQ(page->name, u"a name");
  EXPECT_EQ(page->parent, pdf.pages);
  EXPECT_EQ(page->owner, &pdf);
  ASSERT_EQ(pdf.objects.size(), 4u);
  EXPECT_EQ(pdf.objects[2].get(), page);
  EXPECT_EQ(pdf.objects[3].get(), &page->content());
  EXPECT_EQ(pdf.pages->children, std::vector<CPDFObject*>{page});
}

TEST(PdfFile, RegistersItsObjectsInTheOrderOfTheirNumbers) {
  CPDFFile pdf(nullptr, Form::Classic);
  fillSample(pdf);
  for (std::size_t i = 0; i < pdf.objects.size(); ++i) {
    EXPECT_EQ(pdf.objects[i]->objectNumber, i + 1);
  }
  EXPECT_EQ(pdf.objects.size() + 1, pdf.nextObjectNumber);
}

TEST(PdfFile, RecordsItsFonts) {
  CPDFFile pdf(nullptr, Form::Classic);
  CPDFStandardFont* const font = pdf.AddStandardFont(u"F7", PDF_COURIER);
  ASSERT_EQ(pdf.fonts.size(), 1u);
  EXPECT_EQ(pdf.fonts[0].objectNumber, 3u);
  EXPECT_EQ(pdf.fonts[0].generation, 0u);
  EXPECT_EQ(pdf.fonts[0].name, u"F7");
  EXPECT_EQ(pdf.fonts[0].font, font);
  EXPECT_EQ(font->resourceName(), u"F7");
  EXPECT_EQ(font->face, PDF_COURIER);
}

TEST(PdfFile, RefersToItsOutlineInTheCatalog) {
  CPDFFile pdf(nullptr, Form::Classic);
  EXPECT_FALSE(pdf.catalog->hasOutlines);
  pdf.CreateOutlines();
  EXPECT_EQ(pdf.outlines->objectNumber, 3u);
  EXPECT_EQ(pdf.catalog->outlines, pdf.outlines);
  EXPECT_TRUE(pdf.catalog->hasOutlines);
}

TEST(PdfFile, SetsTheCatalogsOutlineWhenItIsSaved) {
  FileOnDisk file;
  file.pdf.CreateOutlines();
  file.pdf.catalog->outlines = nullptr;
  EXPECT_NE(file.saved().find("/Outlines 3 0 R\r\n"), std::string::npos);
}

TEST(PdfFile, KeepsACopyOfThePageModeUntilItIsReset) {
  CPDFFile pdf(nullptr, Form::Classic);
  EXPECT_FALSE(pdf.catalog->pageMode.has_value());
  std::u16string mode = u"UseNone";
  pdf.SetPageMode(&mode);
  mode.clear();
  EXPECT_EQ(pdf.catalog->pageMode, u"UseNone");
  pdf.SetPageMode(nullptr);
  EXPECT_FALSE(pdf.catalog->pageMode.has_value());
}

TEST(PdfFile, DeletesItsObjectsInOrder) {
  std::string ends;
  {
    CPDFFile pdf(nullptr, Form::Classic);
    for (const char tag : {'1', '2', '3'}) {
      pdf.AddObject(std::make_unique<Tagged>(tag, ends));
    }
    EXPECT_EQ(ends, "");
  }
  EXPECT_EQ(ends, "123");
}

TEST(PdfFile, DoesNotWriteToTheInvalidHandle) {
  CPDFFile pdf(invalidHandle(), Form::Classic);
  EXPECT_FALSE(pdf.Save());
  EXPECT_NE(pdf.writeError(), L"");
  EXPECT_EQ(pdf.writeError(), L"The file's handle is the invalid one");
  EXPECT_EQ(pdf.catalog->entries.size(), 1u);
  EXPECT_EQ(pdf.catalog->fileOffset, 0u);
}

TEST(PdfFile, FlushesBeforeEvery50thObject) {
  FileOnDisk file;
  std::vector<std::uint64_t> seen;
  for (int i = 2; i < 120; ++i) {
    file.pdf.AddObject(std::make_unique<Probe>(file.pdf, seen));
  }
  EXPECT_TRUE(file.pdf.Save());
  ASSERT_EQ(seen.size(), 118u);
  for (std::size_t index = 2; index < 120; ++index) {
    const std::uint64_t flushed = file.pdf.objects[index / 50 * 50]->fileOffset;
    EXPECT_EQ(seen[index - 2], flushed) << index;
  }
  EXPECT_EQ(file.pdf.objects[0]->fileOffset, 15u);
  EXPECT_GT(file.pdf.objects[50]->fileOffset, 1000u);
}

TEST(PdfFile, WritesOtherObjectsWhenOneFails) {
  const FixedClock clock(0);
  FileOnDisk file;
  file.pdf.AddObject(std::make_unique<Broken>(file.pdf.nextObjectNumber));
  file.pdf.AddAnnotation();
  EXPECT_TRUE(file.pdf.Save());
  EXPECT_NE(file.pdf.writeError(), L"");
  EXPECT_EQ(file.pdf.writeError(), L"An object could not be made");
  const std::string bytes = file.closed();
  const std::uint64_t broken = file.pdf.objects[2]->fileOffset;
  EXPECT_TRUE(bytes.substr(broken).starts_with("3 0 obj\r\n4 0 obj\r\n<<\r\n/Type /Annot\r\n"));
  EXPECT_EQ(file.pdf.objects[3]->fileOffset, broken + 9);
  EXPECT_TRUE(bytes.ends_with("%%EOF"));
}

TEST(PdfFile, ReportsWritesThatFail) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.pdf";
  writeBytes(path, "kept");
  scrivalen::File forReading = scrivalen::openForReading(path);
  {
    CPDFFile pdf(forReading, Form::Classic);
    EXPECT_TRUE(pdf.Save());
    EXPECT_NE(pdf.writeError(), L"");
    EXPECT_FALSE(pdf.writeError().empty());
  }
  EXPECT_TRUE(forReading.close());
  EXPECT_EQ(bytesOf(path), "kept");
}

TEST(PdfFile, CountsItsOffsetsFromTheStartOfTheFile) {
  FileOnDisk file;
  const std::string before = "before the document\n";
  EXPECT_TRUE(scrivalen::writeAll(file.handle, before.data(), before.size()));
  const std::string bytes = file.saved();
  EXPECT_TRUE(bytes.starts_with("before the document\n%PDF-1.4\n"));
  EXPECT_EQ(bytes.substr(35, 7), "1 0 obj");
  EXPECT_EQ(bytes.substr(92, 7), "2 0 obj");
  EXPECT_TRUE(
      areSameBytes("xref\r\n"
                   "0 3\r\n"
                   "0000000000 65535 f\r\n"
                   "0000000035 00000 n\r\n"
                   "0000000092 00000 n\r\n"
                   "trailer\r\n"
                   "<<\r\n"
                   "/Size 3\r\n"
                   "/Root 1 0 R\r\n"
                   ">>\r\n"
                   "startxref\r\n"
                   "155\r\n"
                   "%%EOF",
                   bytes.substr(155)));
}

TEST(PdfFile, LeavesTheHandleToItsOwner) {
  FileOnDisk file;
  EXPECT_TRUE(file.pdf.Save());
  EXPECT_EQ(file.pdf.handle, file.handle);
  EXPECT_FALSE(canBeOpened(file.path));
  EXPECT_EQ(file.closed().substr(0, 9), "%PDF-1.4\n");
}

TEST(PdfFile, ClosesItsOwnHandleWhenSaved) {
  FileOnDisk file;
  file.pdf.callerOwnsHandle = false;
  EXPECT_TRUE(file.pdf.Save());
  file.handle.release();
  EXPECT_EQ(file.pdf.handle, nullptr);
  EXPECT_EQ(file.pdf.writeError(), L"");
  EXPECT_TRUE(bytesOf(file.path).ends_with("%%EOF"));
  EXPECT_TRUE(canBeOpened(file.path));
}

TEST(PdfFile, ClosesItsOwnHandleEvenWhenNotSaved) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.pdf";
  scrivalen::File handle = scrivalen::openExclusive(path);
  {
    CPDFFile pdf(handle.release(), Form::Classic);
    pdf.callerOwnsHandle = false;
    EXPECT_FALSE(canBeOpened(path));
  }
  EXPECT_TRUE(canBeOpened(path));
}

TEST(PdfFile, DoesNotCloseTheInvalidHandle) {
  CPDFFile pdf(invalidHandle(), Form::Classic);
  pdf.callerOwnsHandle = false;
  EXPECT_FALSE(pdf.Save());
  EXPECT_EQ(pdf.handle, invalidHandle());
}

TEST(PdfFile, NumbersItsObjectsIndependentlyOfAnotherFile) {
  const FixedClock clock(0);
  FileOnDisk alone;
  fillSample(alone.pdf);
  FileOnDisk one;
  FileOnDisk other;
  EXPECT_EQ(one.pdf.AddPage(u"")->objectNumber, 3u);
  fillSample(other.pdf);
  EXPECT_EQ(one.pdf.AddPage(u"")->objectNumber, 5u);
  EXPECT_EQ(one.pdf.nextObjectNumber, 7u);
  const std::string bytes = one.saved();
  EXPECT_EQ(PdfStructure(bytes, false).problems(), Problems());
  EXPECT_TRUE(areSameBytes(alone.saved(), other.saved()));
}

TEST(PdfFile, CanBeSavedInParts) {
  const FixedClock clock(0);
  FileOnDisk whole;
  fillSample(whole.pdf);
  FileOnDisk inParts;
  fillSample(inParts.pdf);
  EXPECT_TRUE(inParts.pdf.beginSave());
  const auto saveThroughStream = [&](std::size_t index) {
    auto& stream = static_cast<CPDFStream&>(*inParts.pdf.objects[index]);
    const std::string content(stream.data.text());
    stream.data.Rewind();
    inParts.pdf.saveThrough(stream, content);
  };
  saveThroughStream(4);
  EXPECT_NE(inParts.pdf.objects[4]->fileOffset, 0u);
  EXPECT_EQ(inParts.pdf.objects[5]->fileOffset, 0u);
  saveThroughStream(6);
  inParts.pdf.endSave();
  EXPECT_TRUE(areSameBytes(whole.saved(), inParts.closed()));
}

TEST(PdfCatalog, HasItsTypeFromTheStart) {
  std::uint32_t next = 9;
  CPDFCatalog catalog(next);
  EXPECT_EQ(catalog.objectNumber, 9u);
  EXPECT_EQ(catalog.entries.size(), 1u);
  EXPECT_EQ(written(catalog), "9 0 obj\r\n<<\r\n/Type /Catalog\r\n/Pages 0 0 R\r\n>>\r\nendobj\r\n\r\n");
}

TEST(PdfCatalog, WritesPagesOutlineAndPageModeInThisOrder) {
  std::uint32_t next = 1;
  CPDFCatalog catalog(next);
  CPDFPages pages(next);
  CPDFOutLines outline(next);
  catalog.pages = &pages;
  catalog.outlines = &outline;
  catalog.hasOutlines = true;
  catalog.pageMode = u"UseNone";
  EXPECT_TRUE(
      areSameBytes("1 0 obj\r\n"
                   "<<\r\n"
                   "/Type /Catalog\r\n"
                   "/Pages 2 0 R\r\n"
                   "/Outlines 3 0 R\r\n"
                   "/PageMode /UseNone\r\n"
                   ">>\r\n"
                   "endobj\r\n"
                   "\r\n",
                   written(catalog)));
  EXPECT_EQ(catalog.children, std::vector<CPDFObject*>{&pages});
}

TEST(PdfCatalog, WritesThePageModeUnchanged) {
  std::uint32_t next = 1;
  CPDFCatalog catalog(next);
  catalog.pageMode = u"Use (it)";
  EXPECT_NE(written(catalog).find("/PageMode /Use (it)\r\n"), std::string::npos);
}

// PDF 1.4, table 3.16.
TEST(PdfCatalog, HasOnlyThePageModesOfTheStandardInConformingForm) {
  std::uint32_t next = 1;
  for (const char16_t* const mode : {u"UseNone", u"UseOutlines", u"UseThumbs", u"FullScreen"}) {
    CPDFCatalog catalog(next);
    catalog.pageMode = mode;
    const std::string name(catalog.pageMode->begin(), catalog.pageMode->end());
    EXPECT_NE(conforming(catalog).find("/PageMode /" + name + "\r\n"), std::string::npos);
  }
  for (const char16_t* const mode : {u"", u"usenone", u"UseNone ", u"UseOC", u"Use (it)"}) {
    CPDFCatalog catalog(next);
    catalog.pageMode = mode;
    EXPECT_EQ(conforming(catalog).find("PageMode"), std::string::npos);
  }
}

TEST(PdfCatalog, MayHaveAnEmptyPageMode) {
  std::uint32_t next = 1;
  CPDFCatalog catalog(next);
  catalog.pageMode = u"";
  EXPECT_NE(written(catalog).find("/PageMode /\r\n"), std::string::npos);
}

TEST(PdfCatalog, DoesNotReferToAnEmptyOutlineInConformingForm) {
  for (const bool hasEntry : {false, true}) {
    std::uint32_t next = 1;
    CPDFCatalog catalog(next);
    CPDFOutLines outline(next);
    CPDFOutLine entry(next);
    catalog.outlines = &outline;
    catalog.hasOutlines = true;
    if (hasEntry) {
      entry.linkBelow(outline, outline);
    }
    EXPECT_EQ(conforming(catalog).find("/Outlines 2 0 R\r\n") != std::string::npos, hasEntry);
  }
}

TEST(PdfCrossReferences, AreLinesOf20BytesAfterAFreeEntry) {
  ObjectRegistry objects;
  objects.push_back(std::make_unique<Plain>(15));
  objects.push_back(std::make_unique<Plain>(1234567890));
  objects.push_back(std::make_unique<Plain>(0, 7));
  CPDFXRefs table;
  table.objects = &objects;
  EXPECT_TRUE(
      areSameBytes("xref\r\n"
                   "0 4\r\n"
                   "0000000000 65535 f\r\n"
                   "0000000015 00000 n\r\n"
                   "1234567890 00000 n\r\n"
                   "0000000000 00007 n\r\n",
                   written(table)));
}

TEST(PdfCrossReferences, ReachBeyond4Gigabytes) {
  ObjectRegistry objects;
  objects.push_back(std::make_unique<Plain>(5000000000));
  CPDFXRefs table;
  table.objects = &objects;
  EXPECT_EQ(written(table), "xref\r\n0 2\r\n0000000000 65535 f\r\n5000000000 00000 n\r\n");
}

TEST(PdfTrailer, WritesSizeRootAndTheOffsetOfTheTable) {
  std::uint32_t next = 1;
  const CPDFCatalog catalog(next);
  ObjectRegistry objects(17);
  CPDFXRefs table;
  table.objects = &objects;
  table.fileOffset = 4711;
  CPDFTrailer trailer;
  trailer.xrefs = &table;
  trailer.root = &catalog;
  EXPECT_TRUE(
      areSameBytes("trailer\r\n"
                   "<<\r\n"
                   "/Size 18\r\n"
                   "/Root 1 0 R\r\n"
                   ">>\r\n"
                   "startxref\r\n"
                   "4711\r\n",
                   written(trailer)));
}

TEST(PdfTrailer, HasSize1WithoutObjects) {
  const CPDFXRefs table;
  CPDFTrailer trailer;
  trailer.xrefs = &table;
  constexpr std::string_view kEmpty = "trailer\r\n<<\r\n/Size 1\r\n/Root 0 0 R\r\n>>\r\nstartxref\r\n0\r\n";
  EXPECT_EQ(written(trailer), kEmpty);
  CPDFTrailer withoutTable;
  EXPECT_EQ(written(withoutTable), kEmpty);
}
