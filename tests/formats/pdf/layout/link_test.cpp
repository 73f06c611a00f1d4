#include "formats/pdf/layout/made_pdf.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace scrivalen::test;

using Strings = std::vector<std::string>;

constexpr const char* kNowhere = " to object 0 at 0 0";

void linkParagraph(CPDFdoc& doc, const wchar_t* text, const wchar_t* target) {
  doc.Paragraf(0);
  doc.HyperLink(text, target);
}

void markedParagraph(CPDFdoc& doc, const wchar_t* text, const wchar_t* name) {
  paragraph(doc, text);
  doc.BookMark(name);
}

std::wstring lines(int count) {
  std::wstring text = L"1";
  for (int i = 2; i <= count; ++i) {
    text += L"\n" + std::to_wstring(i);
  }
  return text;
}

TEST(PdfLink, IsAnAnnotationOfItsPage) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    linkParagraph(doc, L"go", L"there");
    markedParagraph(doc, L"here", L"there");
  });
  // The page is object 5, its content object 6.
  EXPECT_NE(pdf.object(5).find("/Annots [7 0 R ]\r\n"), std::string_view::npos);
  EXPECT_EQ(pdf.object(7),
            "7 0 obj\r\n<<\r\n/Type /Annot\r\n/Subtype /Link\r\n/Rect [50 802 565 786]\r\n"
            "/Dest [5 0 R\r\n/XYZ\r\n50\r\n778\r\n0\r\n]\r\n\r\n"
            "/Border [0\r\n0\r\n0\r\n]\r\n\r\n>>\r\nendobj\r\n\r\n");
}

TEST(PdfLink, IsNotListedByAPageWithoutOne) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { markedParagraph(doc, L"here", L"there"); });
  EXPECT_EQ(pdf.object(5).find("/Annots"), std::string_view::npos);
}

TEST(PdfLink, DoesNotMatchANameByItsBeginning) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    markedParagraph(doc, L"here", L"a b");
    linkParagraph(doc, L"go", L"a c");
  });
  EXPECT_EQ(pdf.links(), Strings{std::string("page 1 [50 778 565 762]") + kNowhere});
}

TEST(PdfLink, CoversItsWholeParagraph) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    paragraph(doc, L"one\n");
    doc.HyperLink(L"two", L"there");
    doc.write(L"\nthree");
    markedParagraph(doc, L"here", L"there");
  });
  EXPECT_EQ(pdf.texts(1), (Strings{"one", "two", "three", "here"}));
  EXPECT_EQ(pdf.links(), Strings{"page 1 [50 802 565 754] to page 1 at 50 746"});
}

TEST(PdfLink, CoversItsColumnDownToTheEndOfItsText) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.BeginTable();
    doc.BeginRow(2);
    doc.BeginCell(kWhiteCell);
    doc.write(L"one\ntwo");
    doc.BookMark(L"left");
    doc.EndCell();
    doc.BeginCell(kWhiteCell);
    doc.HyperLink(L"go", L"left");
    doc.BookMark(L"right");
    doc.EndCell();
    doc.EndRow();
    doc.EndTable();
    linkParagraph(doc, L"go", L"right");
  });
  EXPECT_EQ(pdf.links(),
            (Strings{"page 1 [307 802 564 786] to page 1 at 50 802", "page 1 [50 762 565 746] to page 1 at 307 802"}));
}

TEST(PdfLink, IsWiderInLandscape) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { linkParagraph(doc, L"go", L"there"); }, kWide);
  EXPECT_EQ(pdf.links(), Strings{"page 1 [50 557 810 541]" + std::string(kNowhere)});
}

TEST(PdfLink, MayComeBeforeOrAfterItsBookmark) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    linkParagraph(doc, L"go", L"there");
    markedParagraph(doc, L"here", L"there");
    linkParagraph(doc, L"go", L"there");
  });
  EXPECT_EQ(pdf.links(),
            (Strings{"page 1 [50 802 565 786] to page 1 at 50 778", "page 1 [50 754 565 738] to page 1 at 50 778"}));
}

TEST(PdfLink, LeadsNowhereWithoutItsBookmark) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    linkParagraph(doc, L"go", L"There");
    markedParagraph(doc, L"here", L"there");
  });
  EXPECT_EQ(pdf.links(), Strings{"page 1 [50 802 565 786] to object 0 at 0 0"});
  EXPECT_NE(pdf.object(7).find("/Dest [0 0 R\r\n/XYZ\r\n0\r\n0\r\n0\r\n]\r\n"), std::string_view::npos);
}

TEST(PdfLink, LeadsToTheLastBookmarkOfItsName) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    markedParagraph(doc, L"first", L"there");
    linkParagraph(doc, L"go", L"there");
    markedParagraph(doc, L"second", L"there");
  });
  EXPECT_EQ(pdf.links(), Strings{"page 1 [50 778 565 762] to page 1 at 50 754"});
}

TEST(PdfLink, ComparesAllCharactersOfNames) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    markedParagraph(doc, L"a", L"\x20AC");
    markedParagraph(doc, L"b", L"\xAC");
    markedParagraph(doc, L"c", L"#x");
    linkParagraph(doc, L"go", L"\x20AC");
    linkParagraph(doc, L"go", L"\xAC");
    linkParagraph(doc, L"go", L"#x");
    linkParagraph(doc, L"go", L"x");
  });
  EXPECT_EQ(
      pdf.links(),
      (Strings{"page 1 [50 730 565 714] to page 1 at 50 802", "page 1 [50 706 565 690] to page 1 at 50 778",
               "page 1 [50 682 565 666] to page 1 at 50 754", "page 1 [50 658 565 642]" + std::string(kNowhere)}));
}

TEST(PdfLink, TreatsANullNameAsEmpty) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    markedParagraph(doc, L"here", L"");
    doc.HyperLink(nullptr, nullptr);
  });
  EXPECT_EQ(pdf.links(), Strings{"page 1 [50 802 565 786] to page 1 at 50 802"});
}

TEST(PdfLink, IsInTheOrderOfNamesAndThenOfSources) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    linkParagraph(doc, L"go", L"b");
    markedParagraph(doc, L"here", L"c");
    linkParagraph(doc, L"go", L"a");
    linkParagraph(doc, L"go", L"b");
    linkParagraph(doc, L"go", L"c");
  });
  const std::string toC = "page 1 [50 706 565 690] to page 1 at 50 778";
  EXPECT_EQ(pdf.links(), (Strings{"page 1 [50 802 565 786]" + std::string(kNowhere),
                                  "page 1 [50 730 565 714]" + std::string(kNowhere), toC,
                                  "page 1 [50 754 565 738]" + std::string(kNowhere)}));
}

TEST(PdfLink, IsWrittenForEachTimeItIsSet) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    linkParagraph(doc, L"go", L"a");
    doc.HyperLink(L"again", L"a");
  });
  EXPECT_EQ(pdf.links(), Strings(2, "page 1 [50 802 565 786]" + std::string(kNowhere)));
}

TEST(PdfLink, HasNoHeightForAParagraphWithoutText) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.Paragraf(0);
    doc.BookMark(L"there");
    doc.HyperLink(nullptr, L"there");
  });
  EXPECT_EQ(pdf.links(), Strings{"page 1 [50 802 565 802] to page 1 at 50 802"});
}

// 31 paragraphs end at 66 and the gap of the next at 58. Its first line fits there, its second does not.
TEST(PdfLink, IsSplitByAPageBreak) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    paragraphs(doc, 31);
    linkParagraph(doc, L"a\nb", L"there");
    doc.BookMark(L"there");
  });
  EXPECT_EQ(pdf.texts(2), Strings{"b"});
  EXPECT_EQ(pdf.links(),
            (Strings{"page 1 [50 58 565 30] to page 1 at 50 58", "page 2 [50 810 565 794] to page 1 at 50 58"}));
}

TEST(PdfLink, CoversOnlyTheFirstAndLastOfThreePages) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { linkParagraph(doc, lines(100).c_str(), L"there"); });
  ASSERT_EQ(pdf.pageCount(), 3u);
  EXPECT_EQ(pdf.texts(3).size(), 4u);
  EXPECT_EQ(pdf.links(), (Strings{"page 1 [50 802 565 30]" + std::string(kNowhere),
                                  "page 3 [50 810 565 746]" + std::string(kNowhere)}));
}

// The gap ends at 34, where no line fits.
TEST(PdfLink, BeginsWhereItsTextWouldHaveBegun) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    paragraphs(doc, 32);
    linkParagraph(doc, L"a", L"there");
    doc.BookMark(L"there");
  });
  EXPECT_EQ(pdf.links(),
            (Strings{"page 1 [50 34 565 30] to page 1 at 50 34", "page 2 [50 810 565 794] to page 1 at 50 34"}));
}

TEST(PdfLink, IsSplitInLandscapeToo) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { linkParagraph(doc, lines(40).c_str(), L"there"); }, kWide);
  // From 557 to 45 there is room for 32 lines.
  EXPECT_EQ(pdf.links(), (Strings{"page 1 [50 557 810 30]" + std::string(kNowhere),
                                  "page 2 [50 565 810 437]" + std::string(kNowhere)}));
}

TEST(PdfLink, MovesWithItsRow) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    paragraphs(doc, 31);
    doc.BeginTable();
    doc.BeginRow(2);
    doc.BeginCell(kWhiteCell);
    doc.HyperLink(L"a", L"there");
    doc.BookMark(L"there");
    doc.EndCell();
    doc.BeginCell(kWhiteCell);
    doc.write(L"b\nc");
  });
  EXPECT_EQ(pdf.links(), Strings{"page 2 [50 810 307 794] to page 2 at 50 810"});
}

// The row's final layout begins on page 3 and ends on page 4.
TEST(PdfLink, IsAtTheFinalPlaceOfATallRow) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.BeginTable();
    doc.BeginRow(1);
    doc.BeginCell(kWhiteCell);
    doc.HyperLink(lines(60).c_str(), L"there");
    doc.BookMark(L"there");
  });
  EXPECT_EQ(pdf.links(),
            (Strings{"page 3 [50 802 565 30] to page 3 at 50 802", "page 4 [50 810 565 618] to page 3 at 50 802"}));
}

}  // namespace
