#include "formats/pdf/objects/page.h"
#include "formats/pdf/objects/file_on_disk.h"
#include "formats/pdf/objects/written.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/documents/pdf_structure.h"

#include <gtest/gtest.h>

using namespace PDFStuffer;
using namespace scrivalen::test;

namespace {

constexpr std::int64_t kNoon = 1730808000;  // 2024-11-05 12:00:00 UTC

// Page 3 of a portrait file, with its content 4.
struct PdfPage : testing::Test {
  PdfPage() { file.mediaBox = {0, 0, 595, 840}; }

  const FixedClock clock{kNoon};
  CPDFFile file{nullptr, Form::Classic};
  CPDFPage& page = *file.AddPage(u"a name");
};

}  // namespace

TEST_F(PdfPage, HasTheFewestEntriesWithoutFontsAndLinks) {
  EXPECT_TRUE(
      areSameBytes("3 0 obj\r\n"
                   "<<\r\n"
                   "/Type /Page\r\n"
                   "/Contents 4 0 R\r\n"
                   "/Resources <<\r\n"
                   "/ProcSet [/PDF /Text /ImageB /ImageC /ImageI ]\r\n"
                   "\r\n"
                   ">>\r\n"
                   "\r\n"
                   "/Parent 2 0 R\r\n"
                   "/LastModified (D20241105120000Z)\r\n"
                   "/MediaBox [0 0 595 840]\r\n"
                   ">>\r\n"
                   "endobj\r\n"
                   "\r\n",
                   written(page)));
}

TEST_F(PdfPage, ListsFontsInItsResourcesAndLinksAfterThem) {
  page.AddFont(*file.AddStandardFont(u"F1", PDF_TIMES_ROMAN));
  page.AddFont(*file.AddStandardFont(u"F20", PDF_COURIER));
  page.AddAnnotation(*file.AddAnnotation());
  page.AddAnnotation(*file.AddAnnotation());
  EXPECT_TRUE(
      areSameBytes("3 0 obj\r\n"
                   "<<\r\n"
                   "/Type /Page\r\n"
                   "/Contents 4 0 R\r\n"
                   "/Resources <<\r\n"
                   "/ProcSet [/PDF /Text /ImageB /ImageC /ImageI ]\r\n"
                   "\r\n"
                   "/Font <<\r\n"
                   "/F1 5 0 R\r\n"
                   "/F20 6 0 R\r\n"
                   ">>\r\n"
                   "\r\n"
                   ">>\r\n"
                   "\r\n"
                   "/Annots [7 0 R 8 0 R ]\r\n"
                   "\r\n"
                   "/Parent 2 0 R\r\n"
                   "/LastModified (D20241105120000Z)\r\n"
                   "/MediaBox [0 0 595 840]\r\n"
                   ">>\r\n"
                   "endobj\r\n"
                   "\r\n",
                   written(page)));
}

TEST_F(PdfPage, HasADateWithItsColonInConformingForm) {
  EXPECT_NE(conforming(page).find("/LastModified (D:20241105120000Z)\r\n"), std::string::npos);
}

TEST_F(PdfPage, TakesTheNextNumberForItsContent) {
  std::uint32_t next = 20;
  CPDFPage other(next);
  EXPECT_EQ(other.objectNumber, 20u);
  EXPECT_EQ(other.content().objectNumber, 21u);
  EXPECT_EQ(next, 22u);
  EXPECT_TRUE(other.dictionaryFlag);
}

TEST_F(PdfPage, ListsAFontEachTimeItIsAdded) {
  const CPDFStandardFont& font = *file.AddStandardFont(u"F1", PDF_TIMES_ROMAN);
  page.AddFont(font);
  page.AddFont(font);
  EXPECT_NE(written(page).find("/Font <<\r\n/F1 5 0 R\r\n/F1 5 0 R\r\n>>\r\n"), std::string::npos);
}

// All pages of a document exist before the first is written, so their entries would take much memory.
TEST_F(PdfPage, HasItsEntriesOnlyWhileItIsWritten) {
  page.AddFont(*file.AddStandardFont(u"F1", PDF_TIMES_ROMAN));
  page.AddAnnotation(*file.AddAnnotation());
  EXPECT_EQ(page.entries.capacity(), 0u);
  const std::string once = written(page);
  EXPECT_EQ(page.entries.capacity(), 0u);
  EXPECT_TRUE(areSameBytes(once, written(page)));
}

TEST_F(PdfPage, DoesNotWriteItsName) { EXPECT_EQ(written(page).find("a name"), std::string::npos); }

TEST_F(PdfPage, HasTheMediaBoxAtTheTimeOfWriting) {
  file.AddPage(u"");
  file.mediaBox = {0, 0, 840, 595};
  EXPECT_NE(written(page).find("/MediaBox [0 0 840 595]\r\n"), std::string::npos);
}

TEST(PdfPages, AreListedInThePageTreeInOrder) {
  CPDFFile file(nullptr, Form::Classic);
  file.AddPage(u"");
  file.AddAnnotation();
  file.AddPage(u"");
  file.AddPage(u"");
  EXPECT_TRUE(
      areSameBytes("2 0 obj\r\n"
                   "<<\r\n"
                   "/Type /Pages\r\n"
                   "/Count 3\r\n"
                   "/Kids [3 0 R 6 0 R 8 0 R ]\r\n"
                   "\r\n"
                   ">>\r\n"
                   "endobj\r\n"
                   "\r\n",
                   written(*file.pages)));
}

TEST(PdfPages, HaveTheTimeOfWriting) {
  CPDFFile file(nullptr, Form::Classic);
  CPDFPage* page = nullptr;
  {
    const FixedClock clock(kNoon - 3600);
    page = file.AddPage(u"");
  }
  const FixedClock clock(kNoon);
  EXPECT_NE(written(*page).find("/LastModified (D20241105120000Z)\r\n"), std::string::npos);
}

TEST(PdfPages, HaveNoMediaBoxOutsideAFile) {
  const FixedClock clock(kNoon);
  std::uint32_t next = 20;
  CPDFPage page(next);
  EXPECT_TRUE(written(page).ends_with("/Parent 0 0 R\r\n/LastModified (D20241105120000Z)\r\n>>\r\nendobj\r\n\r\n"));
}

TEST(PdfPages, AreFollowedByTheirContentInTheFile) {
  FileOnDisk file;
  for (const char* const text : {"BT\r\n(one) Tj\r\nET\r\n", ""}) {
    file.pdf.AddPage(u"")->content().data.Append(text);
  }
  const std::string bytes = file.saved();
  const PdfStructure structure(bytes, false);
  EXPECT_EQ(structure.problems(), std::vector<std::string>());
  EXPECT_EQ(structure.pages(), (std::vector<std::size_t>{3, 5}));
  EXPECT_EQ(structure.content(0), "BT\r\n(one) Tj\r\nET\r\n");
  EXPECT_EQ(structure.content(1), "");
  EXPECT_EQ(structure.entry(4, "Length"), "36");
}
