#include "scrivalen/pdf_doc.h"

#include "formats/pdf/layout/made_pdf.h"
#include "formats/pdf/objects/page.h"
#include "scrivalen/output_file.h"
#include "support/captured_log.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory_resource>
#include <string>
#include <vector>

namespace {

using namespace scrivalen::test;

// Makes the steps for derived classes public.
class OpenSteps : public CPDFdoc {
 public:
  using CPDFdoc::CreateFonts;
  using CPDFdoc::Delete;
  using CPDFdoc::FinishPage;
  using CPDFdoc::GeneratePages;
  using CPDFdoc::GetNextUnusedFontIdx;
  using CPDFdoc::Init;
  using CPDFdoc::StartPage;
};

// A file on disk for a document.
struct DiskFile {
  DiskFile() { EXPECT_TRUE(file.Open(path.c_str())); }
  std::string closedBytes() {
    EXPECT_TRUE(file.Close());
    return bytesOf(path);
  }

  TemporaryFolder folder;
  std::wstring path = folder / L"a.pdf";
  ReportFile file;
};

struct OpenDocument : DiskFile {
  explicit OpenDocument(int landscape = 0) { EXPECT_EQ(doc.BegDoc(file.Handle(), landscape), 0); }

  OpenSteps doc;
};

// Makes every allocation from the default resource fail for as long as it lives.
class UnusableDefaultResource {
 public:
  UnusableDefaultResource() : old_(std::pmr::set_default_resource(std::pmr::null_memory_resource())) {}
  UnusableDefaultResource(const UnusableDefaultResource&) = delete;
  UnusableDefaultResource& operator=(const UnusableDefaultResource&) = delete;
  ~UnusableDefaultResource() { std::pmr::set_default_resource(old_); }

 private:
  std::pmr::memory_resource* old_;
};

constexpr const char* kEmptyPage = "BT\n50 810 Td\nET\n";

TEST(PdfDocBegDoc, ReportsAMissingFile) {
  CPDFdoc doc;
  EXPECT_EQ(doc.GetNextID(), 1u);
  EXPECT_EQ(doc.BegDoc(nullptr, 0), -2);
  EXPECT_FALSE(doc.IsOpen());
  EXPECT_EQ(doc.GetNextID(), 2u);
}

TEST(PdfDocBegDoc, UsesLandscapeForEveryNonZeroValue) {
  for (const int landscape : {-1, 2}) {
    EXPECT_EQ(made([](CPDFdoc&) {}, {landscape}).content(1), "BT\n50 565 Td\nET\n");
  }
}

TEST(PdfDocBegDoc, ReportsThatADocumentIsOpen) {
  OpenDocument open;
  EXPECT_EQ(open.doc.BegDoc(open.file.Handle(), 0), -1);
  EXPECT_EQ(open.doc.BegDoc(nullptr, 0), -1);
  EXPECT_TRUE(open.doc.IsOpen());
}

TEST(PdfDocBegDoc, DoesNotChangeAnOpenDocument) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.FontSize(20);
    doc.Paragraf(0);
    EXPECT_EQ(doc.BegDoc(nullptr, 1), -1);
    doc.write(L"a");
  });
  EXPECT_EQ(pdf.pageCount(), 1u);
  EXPECT_NE(pdf.content(1).find("50 810 Td"), std::string::npos);
  EXPECT_NE(pdf.content(1).find("/F1 20 Tf"), std::string::npos);
  EXPECT_NE(pdf.objectWith("/Type /Page\r\n").find("[0 0 595 840]"), std::string::npos);
}

TEST(PdfDocBegDoc, CanBeginAgainAfterEndDoc) {
  CPDFdoc doc;
  const auto once = [&] {
    return made(doc, [](CPDFdoc& open) {
      open.AddFont(1, PDF_TIMES_ROMAN);
      open.FontNo(1);
      paragraph(open, L"a");
    });
  };
  const FixedClock clock(0);
  const std::string first = once().bytes;
  EXPECT_EQ(once().bytes, first);
}

TEST(PdfDocBegDoc, ResetsTheSizeAndKeepsTheRestOfTheStyle) {
  CPDFdoc doc;
  made(doc, [](CPDFdoc& open) {
    open.FontNo(7);
    open.FontSize(30);
    open.ColorOn({1, 0, 0.5});
  });
  const MadePdf second = made(doc, [](CPDFdoc& open) { paragraph(open, L"a"); });
  EXPECT_NE(second.content(1).find("/F7 12 Tf\n1.000000 0.000000 0.500000 rg\n"), std::string::npos);
}

TEST(PdfDocBegDoc, KeepsBold) {
  CPDFdoc doc;
  made(doc, [](CPDFdoc& open) { open.BoldOn(); });
  const MadePdf second = made(doc, [](CPDFdoc& open) {
    open.AddFont(1, PDF_TIMES_ROMAN);
    open.FontNo(1);
    paragraph(open, L"a");
  });
  EXPECT_NE(second.content(1).find("/F2 12 Tf\n"), std::string::npos);
}

TEST(PdfDocBegDoc, WritesAfterTheFilesContent) {
  DiskFile disk;
  disk.file.Write("front", 5);
  ASSERT_TRUE(disk.file.Flush());
  CPDFdoc doc;
  ASSERT_EQ(doc.BegDoc(disk.file.Handle(), 0), 0);
  EXPECT_EQ(doc.EndDoc(nullptr), 0);
  EXPECT_EQ(disk.closedBytes().substr(0, 14), "front%PDF-1.4\n");
}

TEST(PdfDoc, WritesNothingWhenDestroyedWhileOpen) {
  DiskFile disk;
  {
    CPDFdoc doc;
    ASSERT_EQ(doc.BegDoc(disk.file.Handle(), 0), 0);
    paragraph(doc, L"a");
  }
  EXPECT_EQ(disk.closedBytes(), "");
}

TEST(PdfDoc, IsDroppedByInitAndDelete) {
  for (const bool init : {true, false}) {
    OpenDocument open;
    paragraph(open.doc, L"a");
    init ? open.doc.Init() : open.doc.Delete();
    EXPECT_FALSE(open.doc.IsOpen());
    EXPECT_EQ(open.doc.GetNextID(), 1u);
    EXPECT_EQ(open.doc.EndDoc(nullptr), 0);
    EXPECT_EQ(open.closedBytes(), "");
  }
}

TEST(PdfDoc, IgnoresEveryCallBeforeBegDoc) {
  OpenSteps doc;
  doc.AddFont(1, PDF_TIMES_ROMAN);
  doc.Paragraf(0);
  doc.write(L"a");
  doc.LineBreak();
  doc.BeginTable();
  doc.BeginRow(1);
  doc.BeginCell(kWhiteCell);
  doc.EndCell();
  doc.EndRow();
  doc.EndTable();
  doc.BookMark(L"b");
  doc.HyperLink(L"a", L"b");
  doc.AddOutlineItem(L"a", L"b", 0);
  doc.PageBreak();
  doc.CreateFonts();
  doc.GeneratePages();
  doc.StartPage();
  doc.FinishPage();
  doc.Delete();
  EXPECT_EQ(doc.GetCurrentPage(), nullptr);
  EXPECT_EQ(doc.EndDoc(nullptr), 0);
  EXPECT_EQ(doc.GetNextUnusedFontIdx(), 1);
  const MadePdf pdf = made(doc, [](CPDFdoc&) {});
  EXPECT_EQ(pdf.content(1), kEmptyPage);
  EXPECT_EQ(pdf.objectCount(), 4u);  // the catalog, the tree, the page and its content
}

TEST(PdfDoc, HasOneEmptyPageWithoutItems) {
  const MadePdf pdf = made([](CPDFdoc&) {});
  EXPECT_EQ(pdf.result, 0);
  EXPECT_EQ(pdf.pageCount(), 1u);
  EXPECT_NE(pdf.bytes.find("stream\r\nBT\r\n50 810 Td\r\nET\r\n\r\nendstream\r\n"), std::string::npos);
}

TEST(PdfDoc, IsWiderInLandscape) {
  const MadePdf pdf = made([](CPDFdoc&) {}, kWide);
  EXPECT_EQ(pdf.content(1), "BT\n50 565 Td\nET\n");
  EXPECT_NE(pdf.objectWith("/Type /Page\r\n").find("/MediaBox [0 0 840 595]\r\n"), std::string::npos);
}

TEST(PdfDoc, WritesAParagraph) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { paragraph(doc, L"Hello"); });
  EXPECT_EQ(pdf.content(1),
            "BT\n"
            "50 810 Td\n"
            "1 0 0 1 0 0 Tm\n"
            "0 802 Td\n"
            "1 0 0 1 0 0 Tm\n"
            "50 802 Td\n"
            "0 -8 Td\n"
            "/F1 12 Tf\n"
            "0.000000 0.000000 0.000000 rg\n"
            "(Hello)Tj\n"
            "0 -8 Td\n"
            "ET\n");
}

TEST(PdfDoc, AllowsTwoDocumentsWithDifferentPaper) {
  OpenDocument tall(0);
  OpenDocument wide(1);
  paragraph(tall.doc, L"t");
  paragraph(wide.doc, L"w");
  EXPECT_EQ(tall.doc.EndDoc(nullptr), 0);
  EXPECT_EQ(wide.doc.EndDoc(nullptr), 0);
  const MadePdf tallPdf(tall.closedBytes());
  const MadePdf widePdf(wide.closedBytes());
  EXPECT_NE(tallPdf.content(1).find("50 810 Td\n"), std::string::npos);
  EXPECT_NE(tallPdf.objectWith("/Type /Page\r\n").find("[0 0 595 840]"), std::string::npos);
  EXPECT_NE(widePdf.content(1).find("50 565 Td\n"), std::string::npos);
  EXPECT_NE(widePdf.objectWith("/Type /Page\r\n").find("[0 0 840 595]"), std::string::npos);
}

TEST(PdfDoc, DoesNotUseTheHostsDefaultMemoryResource) {
  const FixedClock clock(0);
  const auto fill = [](CPDFdoc& doc, const wchar_t* text) {
    paragraph(doc, text);
    doc.HyperLink(text, text);
  };
  const std::string one = made([&](CPDFdoc& doc) { fill(doc, L"one"); }).bytes;
  const std::string other = made([&](CPDFdoc& doc) { fill(doc, L"other"); }, kWide).bytes;
  OpenDocument first(0);
  const UnusableDefaultResource unusable;
  OpenDocument second(1);
  fill(first.doc, L"one");
  fill(second.doc, L"other");
  EXPECT_EQ(first.doc.EndDoc(nullptr), 0);
  EXPECT_EQ(second.doc.EndDoc(nullptr), 0);
  EXPECT_EQ(first.closedBytes(), one);
  EXPECT_EQ(second.closedBytes(), other);
}

TEST(PdfDocStyle, OfTheLastWriteAppliesToTheWholeItem) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.Paragraf(0);
    doc.write(L"one ");
    doc.BoldOn();
    doc.FontSize(9);
    doc.ColorOn({0.25, 0.5, 1});
    doc.write(L"two");
    doc.BoldOff();
    doc.FontSize(40);
    doc.ColorOff();
  });
  EXPECT_EQ(pdf.content(1),
            "BT\n50 810 Td\n"
            "1 0 0 1 0 0 Tm\n0 804 Td\n"
            "1 0 0 1 0 0 Tm\n50 804 Td\n0 -6 Td\n/F2 9 Tf\n0.250000 0.500000 1.000000 rg\n(one two)Tj\n0 -6 Td\n"
            "ET\n");
}

TEST(PdfDocStyle, MayComeFromAnEmptyWrite) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    paragraph(doc, L"a");
    doc.FontSize(9);
    doc.write(L"");
  });
  EXPECT_NE(pdf.content(1).find("/F1 9 Tf\n0.000000 0.000000 0.000000 rg\n(a)Tj\n"), std::string::npos);
}

TEST(PdfDocStyle, DrawsItalicUpright) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.ItalicOn();
    paragraph(doc, L"a");
    doc.BoldOn();
    paragraph(doc, L"b");
    doc.ItalicOff();
    paragraph(doc, L"c");
  });
  EXPECT_NE(pdf.content(1).find("/F1 12 Tf\n0.000000 0.000000 0.000000 rg\n(a)Tj\n"), std::string::npos);
  EXPECT_NE(pdf.content(1).find("/F2 12 Tf\n0.000000 0.000000 0.000000 rg\n(b)Tj\n"), std::string::npos);
  EXPECT_NE(pdf.content(1).find("/F2 12 Tf\n0.000000 0.000000 0.000000 rg\n(c)Tj\n"), std::string::npos);
}

TEST(PdfDocStyle, KeepsAnUnknownFontNumber) {
  const MadePdf pdf = made([](CPDFdoc& doc) {
    doc.AddFont(1, PDF_TIMES_ROMAN);
    paragraph(doc, L"a");
    doc.FontNo(9);
    doc.BoldOn();
    paragraph(doc, L"b");
  });
  EXPECT_NE(pdf.content(1).find("/F0 12 Tf\n0.000000 0.000000 0.000000 rg\n(a)Tj\n"), std::string::npos);
  EXPECT_NE(pdf.content(1).find("/F9 12 Tf\n0.000000 0.000000 0.000000 rg\n(b)Tj\n"), std::string::npos);
}

TEST(PdfDocWrite, AppendsToTheCurrentItem) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    paragraph(doc, L"a");
    doc.write(L"b");
    doc.LineBreak();
    doc.write(L"c");
    doc.write(nullptr);
  });
  EXPECT_EQ(pdf.texts(1), (std::vector<std::string>{"ab", "c"}));
}

TEST(PdfDocWrite, DoesNothingWithoutAnItemThatAcceptsText) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.write(L"nothing is current");
    doc.BeginTable();
    doc.write(L"a table");
    doc.BeginRow(1);
    doc.write(L"a row");
    doc.EndRow();
    doc.write(L"a table again");
    doc.EndTable();
    doc.write(L"nothing again");
  });
  EXPECT_EQ(pdf.texts(1), std::vector<std::string>{});
}

TEST(PdfDocWrite, DistinguishesAnEmptyTextFromNoText) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.Paragraf(0);
    doc.write(nullptr);
    paragraph(doc, L"");
  });
  EXPECT_EQ(pdf.content(1),
            "BT\n50 810 Td\n"
            "1 0 0 1 0 0 Tm\n0 802 Td\n"
            "1 0 0 1 0 0 Tm\n0 794 Td\n"
            "1 0 0 1 0 0 Tm\n50 794 Td\n0 -8 Td\n/F1 12 Tf\n0.000000 0.000000 0.000000 rg\n()Tj\n0 -8 Td\n"
            "ET\n");
}

TEST(PdfDocWrite, PutsABackslashBeforeBracketsAndBackslashes) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { paragraph(doc, L"a(b)\\c"); });
  EXPECT_EQ(pdf.texts(1), std::vector<std::string>{"a\\(b\\)\\\\c"});
}

TEST(PdfDocWrite, WritesControlCharactersUnchanged) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { paragraph(doc, L"a\rb\001c\177\200"); });
  EXPECT_EQ(pdf.texts(1), std::vector<std::string>{"a\rb\001c\177\200"});
}

TEST(PdfDocWrite, EscapesAnywhereInALongText) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.FontSize(4);
    paragraph(doc, L"0123456(89abcdefghij\\lmno)((tuvwxyz01234\xE9(6789)");
  });
  EXPECT_EQ(pdf.texts(1),
            std::vector<std::string>{"0123456\\(89abcdefghij\\\\lmno\\)\\(\\(tuvwxyz01234\xE9\\(6789\\)"});
}

TEST(PdfDocWrite, WritesTheLowByteOfEachCodeUnit) {
  // U+0141, U+20AC, U+0128 and the surrogates of U+1F600: 41, AC, 28 without a backslash, 3D 00.
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    paragraph(doc, L"\xE4\x0141\x20AC\x0128(");
    paragraph(doc, L"\U0001F600");
  });
  EXPECT_EQ(pdf.texts(1), (std::vector<std::string>{"\xE4\x41\xAC\x28\\(", std::string("\x3D\0", 2)}));
}

TEST(PdfDocWrite, CountsCharactersLostByTheLowBytes) {
  CPDFdoc doc;
  made(doc, [](CPDFdoc& open) {
    paragraph(open, L"\xE4\x0141");
    open.write(L"\x20AC\U0001F600");
  });
  EXPECT_EQ(doc.LostCharacters(), 3u);
  EXPECT_EQ(doc.FirstLostCharacter(), U'\x0141');
}

TEST(PdfDocParagraf, IsIgnoredInsideATable) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.BeginTable();
    doc.Paragraf(0);
    doc.BeginRow(1);
    doc.Paragraf(0);
    doc.BeginCell(kWhiteCell);
    doc.Paragraf(0);
    doc.write(L"in the cell");
    doc.EndCell();
    doc.EndRow();
    doc.EndTable();
    paragraph(doc, L"behind it");
  });
  EXPECT_EQ(pdf.texts(1), (std::vector<std::string>{"in the cell", "behind it"}));
  EXPECT_NE(pdf.content(1).find("51 802 Td\n"), std::string::npos);
  EXPECT_NE(pdf.content(1).find("50 778 Td\n"), std::string::npos);
}

TEST(PdfDocParagraf, FollowsTheOneBefore) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { paragraphs(doc, 3); });
  EXPECT_EQ(pdf.texts(1), (std::vector<std::string>{"1", "2", "3"}));
  // Each takes a gap of 8 and a line of 16.
  EXPECT_NE(pdf.content(1).find("50 802 Td\n"), std::string::npos);
  EXPECT_NE(pdf.content(1).find("50 778 Td\n"), std::string::npos);
  EXPECT_NE(pdf.content(1).find("50 754 Td\n"), std::string::npos);
}

TEST(PdfDocTable, IsIgnoredInsideATable) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.BeginTable();
    doc.BeginTable();
    row(doc, {L"a"});
    doc.EndTable();
    doc.BeginRow(1);
  });
  EXPECT_EQ(pdf.frames(1), std::vector<std::string>{"50 789 515 16"});
}

TEST(PdfDocTable, EndsOnlyWhenItIsCurrent) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.EndTable();
    doc.BeginTable();
    doc.EndRow();
    doc.EndCell();
    doc.BeginRow(1);
    doc.EndTable();
    doc.EndCell();
    doc.BeginCell(kWhiteCell);
    doc.EndTable();
    doc.EndRow();
    doc.write(L"a");
  });
  EXPECT_EQ(pdf.frames(1), std::vector<std::string>{"50 789 515 16"});
  EXPECT_EQ(pdf.texts(1), std::vector<std::string>{"a"});
}

TEST(PdfDocTable, IgnoresRowsOutsideATableAndInsideARow) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.BeginRow(1);
    doc.Paragraf(0);
    doc.BeginRow(1);
    doc.BeginTable();
    doc.BeginRow(2);
    doc.BeginRow(3);
    doc.BeginCell(kWhiteCell);
    doc.BeginRow(4);
    doc.BeginCell(kWhiteCell);
    doc.write(L"a");
  });
  EXPECT_EQ(pdf.frames(1), (std::vector<std::string>{"50 781 257 16", "307 781 257 16"}));
}

TEST(PdfDocTable, DropsCellsBeyondTheColumnsWithTheirText) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.BeginTable();
    doc.BeginRow(2);
    for (const wchar_t* const text : {L"a", L"b", L"c"}) {
      doc.BeginCell(kWhiteCell);
      doc.write(text);
      doc.EndCell();
    }
    doc.EndRow();
  });
  EXPECT_EQ(pdf.texts(1), (std::vector<std::string>{"a", "b"}));
}

TEST(PdfDocTable, IgnoresCellsWithoutARow) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.BeginCell(kWhiteCell);
    doc.write(L"a");
    doc.BeginTable();
    doc.BeginCell(kWhiteCell);
    doc.write(L"b");
  });
  EXPECT_EQ(pdf.texts(1), std::vector<std::string>{});
}

TEST(PdfDocBookMark, IsIgnoredOutsideParagraphsAndCells) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.BookMark(L"there");
    doc.BeginTable();
    doc.BookMark(L"there");
    doc.BeginRow(1);
    doc.BookMark(L"there");
    doc.EndRow();
    doc.EndTable();
    doc.BookMark(L"there");
    doc.HyperLink(L"a", L"there");
  });
  // A gap of 8, a row without cells and without height, and another gap of 8.
  EXPECT_EQ(pdf.links(), std::vector<std::string>{"page 1 [50 794 565 778] to object 0 at 0 0"});
}

TEST(PdfDocHyperLink, BeginsAParagraphWhenThereIsNoItem) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { doc.HyperLink(L"a", L"there"); });
  EXPECT_EQ(pdf.texts(1), std::vector<std::string>{"a"});
  EXPECT_EQ(pdf.links(), std::vector<std::string>{"page 1 [50 802 565 786] to object 0 at 0 0"});
}

TEST(PdfDocHyperLink, IsIgnoredInTablesAndRows) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.BeginTable();
    doc.HyperLink(L"a", L"there");
    doc.BeginRow(1);
    doc.HyperLink(L"b", L"there");
  });
  EXPECT_EQ(pdf.texts(1), std::vector<std::string>{});
  EXPECT_EQ(pdf.links(), std::vector<std::string>{});
}

TEST(PdfDocHyperLink, LinksAnItemThatAlreadyHasText) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    paragraph(doc, L"a");
    doc.HyperLink(nullptr, L"there");
  });
  EXPECT_EQ(pdf.texts(1), std::vector<std::string>{"a"});
  EXPECT_EQ(pdf.links().size(), 1u);
}

TEST(PdfDocAddOutlineItem, KeepsTheCurrentItem) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    paragraph(doc, L"before ");
    doc.AddOutlineItem(L"entry", L"there", 0);
    doc.write(L"after");
  });
  EXPECT_EQ(pdf.texts(1), std::vector<std::string>{"before after"});
  EXPECT_EQ(pdf.outline(), "1 entries\nentry to object 0 at 0 0\n");
}

TEST(PdfDocAddOutlineItem, DoesNotBecomeTheCurrentItem) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.AddOutlineItem(L"entry", L"there", 0);
    doc.write(L"nowhere");
  });
  EXPECT_EQ(pdf.content(1), kEmptyPage);
}

TEST(PdfDocGetNextID, CountsUp) {
  CPDFdoc doc;
  EXPECT_EQ(doc.GetNextID(), 1u);
  EXPECT_EQ(doc.GetNextID(), 2u);
}

TEST(PdfDocGetNextID, IsUsedByEachItem) {
  OpenDocument open;
  CPDFdoc& doc = open.doc;
  doc.Paragraf(0);                            // 1
  doc.BeginTable();                           // 2
  doc.Paragraf(0);                            // none: ignored
  doc.BeginRow(1);                            // 3
  doc.BeginCell(kWhiteCell);                  // 4
  doc.EndCell();                              //
  doc.BeginCell(kWhiteCell);                  // none: dropped
  doc.AddOutlineItem(L"entry", L"there", 0);  // 5
  EXPECT_EQ(doc.GetNextID(), 6u);
  doc.EndRow();
  doc.EndTable();
  doc.HyperLink(L"begins a paragraph", L"there");  // 7
  EXPECT_EQ(doc.GetNextID(), 8u);
}

TEST(PdfDocGetNextID, RestartsWithEachDocument) {
  OpenDocument open;
  open.doc.Paragraf(0);
  EXPECT_EQ(open.doc.EndDoc(nullptr), 0);
  EXPECT_EQ(open.doc.GetNextID(), 1u);
  EXPECT_EQ(open.doc.BegDoc(open.file.Handle(), 0), 0);
  EXPECT_EQ(open.doc.GetNextID(), 1u);
}

TEST(PdfDocFonts, AreListedWithABoldVariantEach) {
  const MadePdf pdf = made([](CPDFdoc& doc) { doc.AddFont(1, PDF_TIMES_ROMAN); });
  EXPECT_EQ(pdf.object(3),
            "3 0 obj\r\n<<\r\n/Type /Font\r\n/Subtype /Type1\r\n/Name /F1\r\n/BaseFont /Times-Roman\r\n"
            "/Encoding /WinAnsiEncoding\r\n>>\r\nendobj\r\n\r\n");
  EXPECT_EQ(pdf.object(4),
            "4 0 obj\r\n<<\r\n/Type /Font\r\n/Subtype /Type1\r\n/Name /F2\r\n/BaseFont /Times-Bold\r\n"
            "/Encoding /WinAnsiEncoding\r\n>>\r\nendobj\r\n\r\n");
}

TEST(PdfDocFonts, AreListedByEveryPageInOrder) {
  const MadePdf pdf = made([](CPDFdoc& doc) {
    doc.AddFont(3, PDF_TIMES_ROMAN);
    doc.AddFont(1, PDF_HELVETICA);
    paragraphs(doc, 60);
  });
  ASSERT_EQ(pdf.pageCount(), 2u);
  // Objects 3 to 6 are the two fonts and their variants F4 and F5.
  const std::string fonts = "/Font <<\r\n/F3 3 0 R\r\n/F1 4 0 R\r\n/F4 5 0 R\r\n/F5 6 0 R\r\n>>\r\n";
  EXPECT_NE(pdf.object(7).find(fonts), std::string_view::npos);
  EXPECT_NE(pdf.object(9).find(fonts), std::string_view::npos);
}

struct BoldRow {
  int face;
  const char* base;
  const char* bold;
};

constexpr BoldRow kBoldRows[] = {{0, "Times-Roman", "Times-Bold"},
                                 {1, "Times-Bold", "Times-Bold"},
                                 {2, "Times-Italic", "Times-Bold"},
                                 {3, "Times-BoldItalic", "Times-Bold"},
                                 {4, "Helvetica", "Helvetica-Bold"},
                                 {5, "Helvetica-Bold", "Times-Bold"},
                                 {6, "Helvetica-Oblique", "Times-Bold"},
                                 {7, "Helvetica-BoldOblique", "Times-Bold"},
                                 {8, "Courier", "Courier-Bold"},
                                 {9, "Courier-Bold", "Times-Bold"},
                                 {10, "Courier-Oblique", "Times-Bold"},
                                 {11, "Courier-BoldOblique", "Times-Bold"},
                                 {12, "Symbol", "Symbol"},
                                 {13, "ZapfDingbats", "Times-Bold"},
                                 {14, "Arial", "Helvetica-Bold"},
                                 {15, "Helvetica-Italic", "Times-Bold"},
                                 {16, "Helvetica-BoldItalic", "Times-Bold"},
                                 {17, "Courier-Italic", "Times-Bold"},
                                 {18, "Courier-BoldItalic", "Times-Bold"},
                                 {19, "Helvetica", "Times-Bold"},
                                 {-1, "Helvetica", "Times-Bold"}};

TEST(PdfDocFonts, HaveTheBoldVariantOfTheirFace) {
  for (const BoldRow& expected : kBoldRows) {
    const MadePdf pdf = made([&](CPDFdoc& doc) { doc.AddFont(1, static_cast<PDF_STANDARD_FONT_FACE>(expected.face)); });
    const std::string suffix = "\r\n/Encoding /WinAnsiEncoding\r\n>>";
    EXPECT_NE(pdf.object(3).find("/BaseFont /" + (expected.base + suffix)), std::string_view::npos) << expected.face;
    EXPECT_NE(pdf.object(4).find("/BaseFont /" + (expected.bold + suffix)), std::string_view::npos) << expected.face;
  }
}

TEST(PdfDocFonts, MayHaveNegativeNumbers) {
  const MadePdf pdf = made([](CPDFdoc& doc) { doc.AddFont(-4, PDF_TIMES_ROMAN); });
  EXPECT_NE(pdf.object(3).find("/Name /F-4\r\n"), std::string_view::npos);
  EXPECT_NE(pdf.objectWith("/Type /Page\r\n").find("/Font <<\r\n/F-4 3 0 R\r\n/F2 4 0 R\r\n>>\r\n"),
            std::string_view::npos);
}

TEST(PdfDocFonts, GiveTheirVariantsUnusedNumbers) {
  OpenDocument open;
  EXPECT_EQ(open.doc.GetNextUnusedFontIdx(), 1);
  open.doc.AddFont(1, PDF_TIMES_ROMAN);
  open.doc.AddFont(2, PDF_HELVETICA);
  EXPECT_EQ(open.doc.GetNextUnusedFontIdx(), 3);
  open.doc.AddFont(5, PDF_COURIER);
  open.doc.AddFont(6, PDF_SYMBOL);
  EXPECT_EQ(open.doc.GetNextUnusedFontIdx(), 7);
  open.doc.AddFont(-4, PDF_ARIAL);
  EXPECT_EQ(open.doc.GetNextUnusedFontIdx(), 7);
  open.doc.CreateFonts();
  // The variants are 7, 8, 9, 10 and 11: each search begins after the number of fonts.
  EXPECT_EQ(open.doc.GetFontIdx(1, true, false), 7);
  EXPECT_EQ(open.doc.GetFontIdx(2, true, false), 8);
  EXPECT_EQ(open.doc.GetFontIdx(5, true, false), 9);
  EXPECT_EQ(open.doc.GetFontIdx(6, true, false), 10);
  EXPECT_EQ(open.doc.GetFontIdx(-4, true, false), 11);
}

TEST(PdfDocFonts, AreChosenByFaceAndFlags) {
  OpenDocument open;
  open.doc.AddFont(1, PDF_TIMES_ROMAN);
  EXPECT_EQ(open.doc.GetFontIdx(1, true, false), 1);
  open.doc.CreateFonts();
  EXPECT_EQ(open.doc.GetFontIdx(1, false, false), 1);
  EXPECT_EQ(open.doc.GetFontIdx(1, true, false), 2);
  EXPECT_EQ(open.doc.GetFontIdx(1, false, true), 1);
  EXPECT_EQ(open.doc.GetFontIdx(1, true, true), 1);
  EXPECT_EQ(open.doc.GetFontIdx(2, true, false), 2);
  EXPECT_EQ(open.doc.GetFontIdx(2, false, false), 2);
  EXPECT_EQ(open.doc.GetFontIdx(77, true, false), 77);
}

TEST(PdfDocFonts, ShareTheFirstVariantOfAFace) {
  OpenDocument open;
  open.doc.AddFont(1, PDF_TIMES_ROMAN);
  open.doc.AddFont(2, PDF_TIMES_ROMAN);
  open.doc.CreateFonts();
  EXPECT_EQ(open.doc.GetFontIdx(1, true, false), 3);
  EXPECT_EQ(open.doc.GetFontIdx(2, true, false), 3);
}

TEST(PdfDocFonts, AreReturnedUnchangedWithoutADocument) {
  CPDFdoc doc;
  EXPECT_EQ(doc.GetFontIdx(5, true, false), 5);
  OpenDocument open;
  EXPECT_EQ(open.doc.GetFontIdx(5, true, true), 5);
}

struct WidthRow {
  int face;
  int size;
  double regular;
  double bold;
};

constexpr WidthRow kWidthRows[] = {{0, 12, 2.01, 1.93}, {0, 13, 2.01, 1.93}, {0, 14, 2.01, 2.0},   {0, 40, 2.01, 2.0},
                                   {0, -3, 2.01, 1.93}, {4, 12, 2.25, 2.09}, {14, 20, 2.25, 2.09}, {8, 12, 1.45, 1.35},
                                   {12, 12, 2.2, 2.2},  {1, 12, 1.6, 1.5},   {2, 12, 1.6, 1.5},    {13, 14, 1.6, 1.5},
                                   {18, 9, 1.6, 1.5},   {99, 9, 1.6, 1.5}};

TEST(PdfDocGetAvrCharWidth, DividesTheSizeByTheDivisorOfTheFace) {
  for (const WidthRow& expected : kWidthRows) {
    OpenDocument open;
    open.doc.AddFont(1, static_cast<PDF_STANDARD_FONT_FACE>(expected.face));
    EXPECT_EQ(open.doc.GetAvrCharWidth(1, expected.size, 0), static_cast<float>(expected.size / expected.regular))
        << expected.face;
    EXPECT_EQ(open.doc.GetAvrCharWidth(1, expected.size, 1), static_cast<float>(expected.size / expected.bold))
        << expected.face;
  }
}

TEST(PdfDocGetAvrCharWidth, TreatsEveryNonZeroValueAsBold) {
  OpenDocument open;
  open.doc.AddFont(1, PDF_TIMES_ROMAN);
  EXPECT_EQ(open.doc.GetAvrCharWidth(1, 14, -1), 7.0f);
}

TEST(PdfDocGetAvrCharWidth, IsTwoThirdsOfTheSizeForAnUnknownFont) {
  CPDFdoc closed;
  EXPECT_EQ(closed.GetAvrCharWidth(1, 10, 0), 20.0f / 3.0f);
  OpenDocument open;
  EXPECT_EQ(open.doc.GetAvrCharWidth(1, 10, 1), 20.0f / 3.0f);
  open.doc.AddFont(1, PDF_TIMES_ROMAN);
  EXPECT_EQ(open.doc.GetAvrCharWidth(2, 12, 0), 8.0f);
  EXPECT_EQ(open.doc.GetAvrCharWidth(2, 0, 0), 0.0f);
  EXPECT_EQ(open.doc.GetAvrCharWidth(2, -12, 0), -8.0f);
}

TEST(PdfDocPages, AreNotGeneratedWhileTheDocumentIsFilled) {
  OpenDocument open;
  paragraph(open.doc, L"a");
  open.doc.PageBreak();
  open.doc.StartPage();
  open.doc.FinishPage();
  EXPECT_EQ(open.doc.GetCurrentPage(), nullptr);
  EXPECT_EQ(open.doc.EndDoc(nullptr), 0);
  EXPECT_EQ(open.doc.GetCurrentPage(), nullptr);
  EXPECT_EQ(MadePdf(open.closedBytes()).pageCount(), 1u);
}

TEST(PdfDocPages, AreGeneratedByGeneratePages) {
  OpenDocument open;
  open.doc.AddFont(1, PDF_TIMES_ROMAN);
  open.doc.FontNo(1);
  paragraph(open.doc, L"a");
  open.doc.CreateFonts();
  open.doc.GeneratePages();
  EXPECT_NE(open.doc.GetCurrentPage(), nullptr);
}

// The two fonts are objects 3 and 4, the pages 5 and 7, each followed by its content.
TEST(PdfDocPages, LeaveTheLastOneCurrent) {
  OpenDocument open;
  open.doc.AddFont(1, PDF_TIMES_ROMAN);
  open.doc.FontNo(1);
  paragraphs(open.doc, 60);
  open.doc.GeneratePages();
  ASSERT_NE(open.doc.GetCurrentPage(), nullptr);
  EXPECT_EQ(open.doc.GetCurrentPage()->objectNumber, 7u);
}

TEST(PdfDocPages, IgnoreCallsOnceGenerated) {
  const FixedClock clock(0);
  const auto bytesOfDocument = [](bool continues, int conforming) {
    DiskFile disk;
    OpenSteps doc;
    doc.SetConforming(conforming);
    EXPECT_EQ(doc.BegDoc(disk.file.Handle(), 0), 0);
    doc.AddFont(1, PDF_TIMES_ROMAN);
    doc.FontNo(2);
    doc.BoldOn();
    paragraph(doc, L"a");
    doc.GeneratePages();
    if (continues) {
      doc.AddFont(2, PDF_COURIER);
      doc.write(L"lost");
      doc.HyperLink(L"lost", L"b");
      doc.BookMark(L"b");
      doc.AddOutlineItem(L"lost \x20AC", L"b", 0);
      paragraphs(doc, 40);
      doc.BeginTable();
      row(doc, {L"lost"});
      doc.EndTable();
      doc.CreateFonts();
      doc.GeneratePages();
    }
    EXPECT_EQ(doc.LostCharacters(), 0u);
    EXPECT_EQ(doc.EndDoc(nullptr), 0);
    return disk.closedBytes();
  };
  for (const int conforming : {0, 1}) {
    const MadePdf pdf(bytesOfDocument(true, conforming));
    EXPECT_EQ(pdf.bytes, bytesOfDocument(false, conforming));
    EXPECT_EQ(pdf.texts(1), std::vector<std::string>{"a"});
  }
}

TEST(PdfDocPages, ListTheBoldVariantsThatTheirTextsUse) {
  OpenDocument open;
  open.doc.AddFont(1, PDF_TIMES_ROMAN);
  open.doc.FontNo(1);
  open.doc.BoldOn();
  paragraph(open.doc, L"a");
  open.doc.GeneratePages();
  EXPECT_EQ(open.doc.EndDoc(nullptr), 0);
  const MadePdf pdf(open.closedBytes());
  EXPECT_NE(pdf.content(1).find("/F2 12 Tf\n"), std::string::npos);
  EXPECT_NE(pdf.objectWith("/Type /Page\r\n").find("/F2 "), std::string_view::npos);
}

TEST(PdfDocPages, BreakBeforeALineBelowTheLimit) {
  // 32 paragraphs of 24 points go from 810 down to 42. The next gap ends at 34, and its line is on a new page.
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { paragraphs(doc, 33); });
  ASSERT_EQ(pdf.pageCount(), 2u);
  EXPECT_EQ(pdf.texts(1).size(), 32u);
  EXPECT_TRUE(pdf.content(1).ends_with("(32)Tj\n0 -8 Td\n1 0 0 1 0 0 Tm\n0 34 Td\nET\n"));
  EXPECT_EQ(pdf.content(2),
            "BT\n50 810 Td\n"
            "1 0 0 1 0 0 Tm\n50 810 Td\n0 -8 Td\n/F1 12 Tf\n0.000000 0.000000 0.000000 rg\n(33)Tj\n0 -8 Td\n"
            "ET\n");
}

TEST(PdfDocPages, BeginWithoutAGapWhenThereIsNoRoomForIt) {
  // 48 lines of 16 points after a gap of 8: 810 - 8 - 768 = 34. Another gap of 8 would end at 26.
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.Paragraf(0);
    for (int i = 1; i < 48; ++i) {
      doc.LineBreak();
    }
    doc.write(L"last");
    paragraph(doc, L"next");
  });
  ASSERT_EQ(pdf.pageCount(), 2u);
  EXPECT_TRUE(
      pdf.content(1).ends_with("50 50 Td\n0 -8 Td\n/F1 12 Tf\n0.000000 0.000000 0.000000 rg\n"
                               "(last)Tj\n0 -8 Td\nET\n"));
  EXPECT_EQ(pdf.content(2),
            "BT\n50 810 Td\n"
            "1 0 0 1 0 0 Tm\n50 810 Td\n0 -8 Td\n/F1 12 Tf\n0.000000 0.000000 0.000000 rg\n(next)Tj\n0 -8 Td\n"
            "ET\n");
}

TEST(PdfDocPages, MayHaveAGapDownToTheLimit) {
  // 31 x 24, a line of 16 and 2 x 6 points in size 3 end at 38.
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    paragraphs(doc, 31);
    doc.write(L"\n");
    doc.FontSize(3);
    paragraphs(doc, 2);
    doc.Paragraf(0);
  });
  EXPECT_EQ(pdf.pageCount(), 1u);
  EXPECT_TRUE(pdf.content(1).ends_with("(2)Tj\n0 -2 Td\n1 0 0 1 0 0 Tm\n0 30 Td\nET\n"));
}

TEST(PdfDocPages, BreakEarlierInLandscape) {
  // 22 paragraphs of 24 points go from 565 down to 37; the gap of the 23rd would end at 29.
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { paragraphs(doc, 23); }, kWide);
  ASSERT_EQ(pdf.pageCount(), 2u);
  EXPECT_TRUE(pdf.content(1).ends_with("(22)Tj\n0 -8 Td\nET\n"));
  EXPECT_EQ(pdf.content(2),
            "BT\n50 565 Td\n"
            "1 0 0 1 0 0 Tm\n50 565 Td\n0 -8 Td\n/F1 12 Tf\n0.000000 0.000000 0.000000 rg\n(23)Tj\n0 -8 Td\n"
            "ET\n");
}

TEST(PdfDocEndDoc, DoesNothingWithoutADocument) {
  CPDFdoc doc;
  EXPECT_EQ(doc.EndDoc(L"UseOutlines"), 0);
}

TEST(PdfDocEndDoc, SetsThePageMode) {
  const auto catalogWith = [](const wchar_t* mode) {
    return std::string(made([](CPDFdoc&) {}, {0, 0, mode}).object(1));
  };
  const auto expected = [](const std::string& mode) {
    return "1 0 obj\r\n<<\r\n/Type /Catalog\r\n/Pages 2 0 R\r\n/PageMode /" + mode + "\r\n>>\r\nendobj\r\n\r\n";
  };
  EXPECT_EQ(catalogWith(nullptr), expected("UseNone"));
  EXPECT_EQ(catalogWith(L"UseOutlines"), expected("UseOutlines"));
  EXPECT_EQ(catalogWith(L""), expected(""));
}

TEST(PdfDocEndDoc, ClosesTheDocumentAndLeavesTheFileOpen) {
  OpenDocument open;
  EXPECT_EQ(open.doc.EndDoc(nullptr), 0);
  EXPECT_FALSE(open.doc.IsOpen());
  EXPECT_TRUE(open.file.IsOpen());
  EXPECT_EQ(open.doc.EndDoc(nullptr), 0);
  EXPECT_TRUE(open.closedBytes().ends_with("%%EOF"));
}

TEST(PdfDocEndDoc, ReportsAnInvalidHandle) {
  CPDFdoc doc;
  ASSERT_EQ(doc.BegDoc(reinterpret_cast<void*>(std::intptr_t{-1}), 0), 0);
  paragraph(doc, L"a");
  EXPECT_EQ(doc.EndDoc(nullptr), -1);
  EXPECT_STREQ(doc.WriteError(), L"The file's handle is the invalid one");
  EXPECT_FALSE(doc.IsOpen());
}

TEST(PdfDocEndDoc, DoesNotCarryAFailureOverToTheNextDocument) {
  const FixedClock clock(0);
  const auto fill = [](CPDFdoc& doc) { paragraph(doc, L"a"); };
  CPDFdoc doc;
  ASSERT_EQ(doc.BegDoc(reinterpret_cast<void*>(std::intptr_t{-1}), 0), 0);
  doc.HyperLink(L"lost", L"lost");
  doc.AddOutlineItem(L"lost", L"lost", 0);
  EXPECT_EQ(doc.EndDoc(nullptr), -1);
  const MadePdf next = made(doc, fill);
  EXPECT_EQ(next.result, 0);
  EXPECT_STREQ(doc.WriteError(), L"");
  EXPECT_EQ(next.bytes, made(fill).bytes);
}

TEST(PdfDocEndDoc, NumbersTheObjectsInTheOrderOfTheirCreation) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    paragraph(doc, L"a");
    doc.BookMark(L"a");
    doc.HyperLink(nullptr, L"a");
    doc.AddOutlineItem(L"entry", L"a", 0);
  });
  // Catalog, page tree, two fonts, page, its content, annotation, outline entry, outline.
  ASSERT_EQ(pdf.objectCount(), 9u);
  EXPECT_NE(pdf.object(5).find("/Type /Page\r\n"), std::string_view::npos);
  EXPECT_NE(pdf.object(6).find("stream\r\n"), std::string_view::npos);
  EXPECT_NE(pdf.object(7).find("/Type /Annot\r\n"), std::string_view::npos);
  EXPECT_NE(pdf.object(8).find("/Type /Outline\r\n"), std::string_view::npos);
  EXPECT_NE(pdf.object(9).find("/Type /Outlines\r\n"), std::string_view::npos);
}

}  // namespace
