#include "formats/pdf/layout/made_pdf.h"
#include "support/bytes.h"
#include "support/captured_log.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace {

using namespace scrivalen::test;

using Strings = std::vector<std::string>;

MadePdf conforming(const std::function<void(CPDFdoc&)>& fill) { return madeInTimes(fill, kConforming); }

Strings linesOf(const std::wstring& text) {
  return conforming([&](CPDFdoc& doc) { paragraph(doc, text.c_str()); }).texts(1);
}

TEST(ConformingPdf, HasTheSamePagesAsTheClassicOneForShortLines) {
  const auto fill = [](CPDFdoc& doc) {
    paragraphs(doc, 31);
    doc.BeginTable();
    row(doc, {L"a(b)", L"c\nd"});
    doc.EndTable();
    paragraph(doc, L"\\");
  };
  const MadePdf classic = madeInTimes(fill);
  const MadePdf pdf = conforming(fill);
  ASSERT_EQ(pdf.pageCount(), classic.pageCount());
  for (std::size_t page = 1; page <= pdf.pageCount(); ++page) {
    EXPECT_EQ(pdf.content(page), classic.content(page));
  }
}

TEST(ConformingPdf, StatesTheTrueLengthOfItsContents) {
  EXPECT_NE(made([](CPDFdoc&) {}, kConforming).bytes.find("/Length 19\r\n"), std::string::npos);
  EXPECT_NE(made([](CPDFdoc&) {}).bytes.find("/Length 38\r\n"), std::string::npos);
}

TEST(ConformingPdf, IsChosenAtBegDoc) {
  const MadePdf pdf = made(
      [](CPDFdoc& doc) {
        doc.SetConforming(0);
        paragraph(doc, L"\x20AC");
      },
      kConforming);
  EXPECT_EQ(pdf.texts(1), Strings{"\x80"});
}

TEST(ConformingPdf, HasDatesInTheStandardForm) {
  const FixedClock clock(1700000000);
  EXPECT_NE(made([](CPDFdoc&) {}, kConforming).bytes.find("/LastModified (D:20231114221320Z)\r\n"), std::string::npos);
}

TEST(ConformingPdf, HasWinAnsiText) {
  EXPECT_EQ(linesOf(L"\x201C"
                    L"caf\xE9\x201D \x2013 5 \x20AC\x2026 \x0160\xFF"),
            Strings{"\x93"
                    "caf\xE9\x94 \x96 5 \x80\x85 \x8A\xFF"});
}

TEST(ConformingPdf, HasSubstitutesForCharactersOutsideWinAnsi) {
  EXPECT_EQ(linesOf(L"\x2192\x2212\xFB01\x0141\x2713\x2260\x2264|\x200B|"), Strings{"->-fiLx!=<=||"});
  EXPECT_EQ(linesOf(L"\x4E2D" + grin() + L"\x85\x7F"), Strings{"????"});
  EXPECT_EQ(linesOf(L"a\tb\r\nc\x2028"
                    L"d"),
            (Strings{"a b", "c", "d"}));
}

TEST(ConformingPdf, CountsSubstitutes) {
  CPDFdoc doc;
  made(
      doc,
      [](CPDFdoc& open) {
        paragraph(open, L"\xE9\x20AC\t\r\n\x2192\x4E2D");
        open.write(grin().c_str());
      },
      kConforming);
  EXPECT_EQ(doc.LostCharacters(), 3u);
  EXPECT_EQ(doc.FirstLostCharacter(), U'\x2192');
}

TEST(ConformingPdf, MeasuresTheSubstitutesThatItWrites) {
  // 96 question marks of 5.328 points are 511.488; "->" is 3.996 + 6.768: 47 of them and "-" are 509.904.
  std::wstring faces;
  for (int i = 0; i < 97; ++i) {
    faces += grin();
  }
  EXPECT_EQ(linesOf(faces), (Strings{std::string(96, '?'), "?"}));
  const Strings arrows = linesOf(std::wstring(48, L'\x2192'));
  ASSERT_EQ(arrows.size(), 2u);
  EXPECT_EQ(arrows[1], ">");
}

TEST(ConformingPdf, EscapesItsTextsLikeTheClassicOne) {
  EXPECT_EQ(linesOf(L"a(b)\\c"), Strings{"a\\(b\\)\\\\c"});
  EXPECT_EQ(linesOf(L"\x0128("), Strings{"I\\("});
}

TEST(ConformingPdf, UsesTheFirstFontForAnUnknownNumber) {
  const MadePdf pdf = made(
      [](CPDFdoc& doc) {
        doc.AddFont(3, PDF_TIMES_ROMAN);
        doc.AddFont(1, PDF_COURIER);
        paragraph(doc, std::wstring(86, L'x').c_str());
        doc.FontNo(9);
        doc.BoldOn();
        paragraph(doc, L"bold");
      },
      kConforming);
  EXPECT_NE(pdf.content(1).find("/F3 12 Tf\n0.000000 0.000000 0.000000 rg\n(" + std::string(85, 'x') + ")Tj\n"),
            std::string::npos);
  EXPECT_NE(pdf.content(1).find("/F4 12 Tf\n0.000000 0.000000 0.000000 rg\n(bold)Tj\n"), std::string::npos);
}

TEST(ConformingPdf, UsesTimesWhenThereIsNoFont) {
  const MadePdf pdf = made([](CPDFdoc& doc) { paragraph(doc, L"a"); }, kConforming);
  EXPECT_NE(pdf.content(1).find("/F1 12 Tf\n"), std::string::npos);
  EXPECT_NE(pdf.object(3).find("/Name /F1\r\n/BaseFont /Times-Roman\r\n/Encoding /WinAnsiEncoding\r\n"),
            std::string_view::npos);
  EXPECT_NE(pdf.object(4).find("/Name /F2\r\n/BaseFont /Times-Bold\r\n"), std::string_view::npos);
}

TEST(ConformingPdf, ClampsItsColours) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) {
    const _RGB_COLOR odd{2, -1, std::numeric_limits<double>::quiet_NaN()};
    doc.ColorOn(odd);
    doc.BeginTable();
    doc.BeginRow(1);
    doc.BeginCell(odd);
    doc.write(L"a");
  });
  EXPECT_NE(pdf.content(1).find("RG\n1.000000 0.000000 0.000000 rg\n50 789 515 16 re\nF\n"), std::string::npos);
  EXPECT_NE(pdf.content(1).find("/F1 12 Tf\n1.000000 0.000000 0.000000 rg\n(a)Tj\n"), std::string::npos);
}

TEST(ConformingPdf, WritesNoSignBeforeAColour) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) {
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    doc.ColorOn({-0.0, -1e-9, -std::numeric_limits<double>::quiet_NaN()});
    doc.BeginTable();
    doc.BeginRow(1);
    doc.BeginCell({1e300, kInfinite, -kInfinite});
    doc.write(L"a");
  });
  EXPECT_NE(pdf.content(1).find("RG\n1.000000 1.000000 0.000000 rg\n50 789 515 16 re\nF\n"), std::string::npos);
  EXPECT_NE(pdf.content(1).find("/F1 12 Tf\n0.000000 0.000000 0.000000 rg\n(a)Tj\n"), std::string::npos);
}

TEST(ConformingPdf, WritesAtMostOneSignBeforeAStep) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) {
    doc.FontSize(-12);
    paragraph(doc, L"a");
    doc.FontSize(0);
    paragraph(doc, L"b");
  });
  EXPECT_EQ(pdf.content(1),
            "BT\n50 810 Td\n"
            "1 0 0 1 0 0 Tm\n0 818 Td\n"
            "1 0 0 1 0 0 Tm\n50 818 Td\n0 8 Td\n/F1 -12 Tf\n0.000000 0.000000 0.000000 rg\n(a)Tj\n0 8 Td\n"
            "1 0 0 1 0 0 Tm\n0 834 Td\n"
            "1 0 0 1 0 0 Tm\n50 834 Td\n0 0 Td\n/F1 0 Tf\n0.000000 0.000000 0.000000 rg\n(b)Tj\n0 0 Td\n"
            "ET\n");
}

TEST(ConformingPdf, OmitsAPageModeThatIsNotInTheStandard) {
  const auto catalogWith = [](const wchar_t* mode) {
    return std::string(made([](CPDFdoc&) {}, {0, 1, mode}).object(1));
  };
  EXPECT_NE(catalogWith(nullptr).find("/PageMode /UseNone\r\n"), std::string::npos);
  EXPECT_NE(catalogWith(L"UseOutlines").find("/PageMode /UseOutlines\r\n"), std::string::npos);
  EXPECT_EQ(catalogWith(L"Use None").find("/PageMode"), std::string::npos);
  EXPECT_EQ(catalogWith(L"").find("/PageMode"), std::string::npos);
}

struct FaceRow {
  int face;
  std::size_t regular;  // the number of 12-point x letters on a line
  std::size_t bold;
};

// 85 of 6 points are 510; 96 of 5.328 (italic Times) are 511.488; 77 of 6.672 (bold Helvetica) are 513.744; 71 of 7.2
// (Courier) are 511.2; 87 of 5.916 (Symbol) are 514.692; 310 of 1.656 (ZapfDingbats) are 513.36.
constexpr FaceRow kFaceRows[] = {{PDF_TIMES_ROMAN, 85, 85},
                                 {PDF_TIMES_BOLD, 85, 85},
                                 {PDF_TIMES_ITALIC, 96, 85},
                                 {PDF_TIMES_BOLDITALIC, 85, 85},
                                 {PDF_HELVETICA, 85, 77},
                                 {PDF_HELVETICA_BOLD, 77, 85},
                                 {PDF_HELVETICA_OBLIQUE, 85, 85},
                                 {PDF_HELVETICA_BOLDOBLIQUE, 77, 85},
                                 {PDF_COURIER, 71, 71},
                                 {PDF_COURIER_BOLD, 71, 85},
                                 {PDF_COURIER_OBLIQUE, 71, 85},
                                 {PDF_COURIER_BOLDOBLIQUE, 71, 85},
                                 {PDF_SYMBOL, 87, 87},
                                 {PDF_ZAPFDINGBATS, 310, 85},
                                 {PDF_ARIAL, 85, 77},
                                 {PDF_HELVETICA_ITALIC, 85, 85},
                                 {PDF_HELVETICA_BOLDITALIC, 77, 85},
                                 {PDF_COURIER_ITALIC, 71, 85},
                                 {PDF_COURIER_BOLDITALIC, 71, 85},
                                 {19, 85, 85}};

// Faces without a bold variant use Times-Bold, whose x is as wide as that of Times.
TEST(ConformingPdf, BreaksLinesByTheWidthsOfTheirFont) {
  for (const FaceRow& row : kFaceRows) {
    SCOPED_TRACE(row.face);
    const MadePdf pdf = made(
        [&](CPDFdoc& doc) {
          doc.AddFont(1, static_cast<PDF_STANDARD_FONT_FACE>(row.face));
          doc.FontNo(1);
          paragraph(doc, std::wstring(row.regular + 1, L'x').c_str());
          doc.BoldOn();
          paragraph(doc, std::wstring(row.bold + 1, L'x').c_str());
        },
        kConforming);
    EXPECT_EQ(pdf.texts(1), (Strings{std::string(row.regular, 'x'), "x", std::string(row.bold, 'x'), "x"}));
  }
}

TEST(ConformingPdf, BreaksTheLinesOfACellByTrueWidths) {
  // A column of five has 103 points: 8 dashes of 12 are 96, and a letter of less than 7 fits.
  const MadePdf pdf = conforming([](CPDFdoc& doc) {
    doc.BeginTable();
    row(doc, {L"\x2014\x2014\x2014\x2014\x2014\x2014\x2014\x2014x",
              L"\x2014\x2014\x2014\x2014\x2014\x2014\x2014\x2014W", L"", L"", L""});
  });
  const std::string dashes(8, '\x97');
  EXPECT_EQ(pdf.texts(1), (Strings{dashes + "x", dashes, "W", "", "", ""}));
}

TEST(ConformingPdf, HasOnlyStandardFonts) {
  const MadePdf pdf = made(
      [](CPDFdoc& doc) {
        doc.AddFont(1, PDF_ARIAL);
        doc.AddFont(2, PDF_ZAPFDINGBATS);
      },
      kConforming);
  const std::string head = "<<\r\n/Type /Font\r\n/Subtype /Type1\r\n/Name /F";
  EXPECT_NE(pdf.object(3).find(head + "1\r\n/BaseFont /Helvetica\r\n/Encoding /WinAnsiEncoding\r\n>>"),
            std::string_view::npos);
  EXPECT_NE(pdf.object(4).find(head + "2\r\n/BaseFont /ZapfDingbats\r\n>>"), std::string_view::npos);
  EXPECT_NE(pdf.object(6).find(head + "4\r\n/BaseFont /Times-Bold\r\n/Encoding /WinAnsiEncoding\r\n>>"),
            std::string_view::npos);
}

TEST(ConformingPdf, ListsAFontNumberOnceEvenIfRegisteredTwice) {
  const auto fill = [](CPDFdoc& doc) {
    doc.AddFont(1, PDF_TIMES_ROMAN);
    doc.AddFont(1, PDF_COURIER);
    doc.FontNo(1);
    paragraph(doc, std::wstring(86, L'x').c_str());
  };
  const MadePdf pdf = made(fill, kConforming);
  EXPECT_NE(pdf.object(5).find("/Font <<\r\n/F1 3 0 R\r\n/F2 4 0 R\r\n>>\r\n"), std::string_view::npos);
  EXPECT_NE(pdf.object(3).find("/BaseFont /Times-Roman\r\n"), std::string_view::npos);
  EXPECT_EQ(pdf.content(1), made(fill).content(1));
}

TEST(ConformingPdf, WritesTheBytesOfSymbolsUnchanged) {
  const auto textIn = [](PDF_STANDARD_FONT_FACE face, bool bold, const wchar_t* text) {
    return made(
               [&](CPDFdoc& doc) {
                 doc.AddFont(1, face);
                 doc.FontNo(1);
                 bold ? doc.BoldOn() : doc.BoldOff();
                 paragraph(doc, text);
               },
               kConforming)
        .texts(1);
  };
  const wchar_t* const symbols = L"a(\xA0\x80\x8D\x7F\x1B";
  EXPECT_EQ(textIn(PDF_SYMBOL, false, symbols), Strings{"a\\(\xA0\x80\x8D\x7F\x1B"});
  EXPECT_EQ(textIn(PDF_SYMBOL, true, symbols), Strings{"a\\(\xA0\x80\x8D\x7F\x1B"});
  EXPECT_EQ(textIn(PDF_ZAPFDINGBATS, false, symbols), Strings{"a\\(\xA0\x80\x8D\x7F\x1B"});
  // Its bold text is drawn in Times.
  EXPECT_EQ(textIn(PDF_ZAPFDINGBATS, true, symbols), Strings{"a\\(\xA0????"});
  EXPECT_EQ(textIn(PDF_SYMBOL, false, L"a\tb\r\n\x20AC"), (Strings{"a b", "?"}));
}

TEST(ConformingPdf, CountsCharactersThatAreNoSymbols) {
  CPDFdoc doc;
  const MadePdf pdf = made(
      doc,
      [](CPDFdoc& open) {
        open.AddFont(1, PDF_SYMBOL);
        paragraph(open, (L"\xFF\x0100\t\r\n" + grin()).c_str());  // an unknown number is the first font
      },
      kConforming);
  EXPECT_EQ(pdf.texts(1), (Strings{"\xFF? ", "?"}));
  EXPECT_EQ(doc.LostCharacters(), 2u);
  EXPECT_EQ(doc.FirstLostCharacter(), U'\x0100');
}

TEST(ConformingLink, HasItsLowerEdgeFirst) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) {
    doc.HyperLink(L"go", L"there");
    doc.BookMark(L"there");
  });
  EXPECT_EQ(pdf.links(), Strings{"page 1 [50 786 565 802] to page 1 at 50 802"});
}

TEST(ConformingLink, HasItsLowerEdgeFirstOnBothPages) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) {
    paragraphs(doc, 31);
    doc.Paragraf(0);
    doc.HyperLink(L"a\nb", L"there");
    doc.BookMark(L"there");
  });
  EXPECT_EQ(pdf.links(),
            (Strings{"page 1 [50 30 565 58] to page 1 at 50 58", "page 2 [50 794 565 810] to page 1 at 50 58"}));
}

TEST(ConformingLink, MayHaveANumberSignBeforeItsTarget) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) {
    doc.HyperLink(L"one", L"#there");
    doc.BookMark(L"there");
    doc.AddOutlineItem(L"entry", L"#there", 0);
    doc.Paragraf(0);
    doc.HyperLink(L"two", L"##there");
    doc.BookMark(L"#there");
  });
  EXPECT_EQ(pdf.links(),
            (Strings{"page 1 [50 786 565 802] to page 1 at 50 802", "page 1 [50 762 565 778] to page 1 at 50 778"}));
  EXPECT_EQ(pdf.outline(), "1 entries\nentry to page 1 at 50 802\n");
}

TEST(ConformingLink, OpensAnAddressWhenItHasAScheme) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) {
    doc.HyperLink(L"go", L"https://example.com/a_(b)?c=%20#d");
    paragraph(doc, L"a");
    doc.HyperLink(L"there", L"mailto:a@example.com");
  });
  EXPECT_EQ(pdf.objectWith("(https"),
            "7 0 obj\r\n<<\r\n/Type /Annot\r\n/Subtype /Link\r\n/Rect [50 786 565 802]\r\n"
            "/A <<\r\n/Type /Action\r\n/S /URI\r\n/URI (https://example.com/a_\\(b\\)?c=%20#d)\r\n>>\r\n\r\n"
            "/Border [0\r\n0\r\n0\r\n]\r\n\r\n>>\r\nendobj\r\n\r\n");
  EXPECT_NE(pdf.objectWith("(mailto").find("/URI (mailto:a@example.com)\r\n"), std::string_view::npos);
}

TEST(ConformingLink, WritesItsAddressInAscii) {
  const MadePdf pdf =
      conforming([](CPDFdoc& doc) { doc.HyperLink(L"go", (L"x-a:\xE9 <\x4E2D>\n\"" + grin()).c_str()); });
  EXPECT_NE(pdf.objectWith("/URI (").find("/URI (x-a:%C3%A9%20%3C%E4%B8%AD%3E%0A%22%F0%9F%98%80)\r\n"),
            std::string_view::npos);
}

TEST(ConformingLink, OpensAnAddressOnBothPages) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) {
    paragraphs(doc, 31);
    doc.Paragraf(0);
    doc.HyperLink(L"a\nb", L"https://example.com");
  });
  const std::string_view file = pdf.bytes;
  const std::size_t first = file.find("/URI (https://example.com)");
  EXPECT_NE(first, file.npos);
  EXPECT_NE(file.find("/URI (https://example.com)", first + 1), file.npos);
  EXPECT_EQ(pdf.links().size(), 2u);
}

TEST(ConformingLink, LeadsToABookmarkWhenANumberSignIsBeforeTheScheme) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) {
    doc.HyperLink(L"go", L"#fig:1");
    doc.BookMark(L"fig:1");
    doc.Paragraf(0);
    doc.HyperLink(L"nowhere", L"#fig:2");
  });
  EXPECT_EQ(pdf.links(), Strings{"page 1 [50 786 565 802] to page 1 at 50 802"});
  EXPECT_EQ(pdf.bytes.find("/URI"), std::string::npos);
}

TEST(ConformingLink, DoesNotMistakeADriveForAScheme) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) { doc.HyperLink(L"go", L"C:\\a.txt"); });
  EXPECT_EQ(pdf.bytes.find("/Annot"), std::string::npos);
}

TEST(ClassicLink, TreatsAnAddressAsABookmark) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.HyperLink(L"go", L"https://example.com");
    doc.BookMark(L"https://example.com");
  });
  EXPECT_EQ(pdf.links(), Strings{"page 1 [50 802 565 786] to page 1 at 50 802"});
  EXPECT_EQ(pdf.bytes.find("/URI"), std::string::npos);
}

TEST(ConformingLink, IsNotWrittenWithoutItsBookmark) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) { doc.HyperLink(L"go", L"there"); });
  EXPECT_EQ(pdf.texts(1), Strings{"go"});
  EXPECT_EQ(pdf.bytes.find("/Annot"), std::string::npos);
}

TEST(ConformingLink, BeginsWhereItsTextBegins) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) {
    paragraphs(doc, 32);
    doc.Paragraf(0);
    doc.HyperLink(L"a", L"there");
    doc.BookMark(L"there");
  });
  EXPECT_TRUE(pdf.content(1).ends_with("(32)Tj\n0 -8 Td\n1 0 0 1 0 0 Tm\n0 34 Td\nET\n"));
  EXPECT_EQ(pdf.links(), Strings{"page 2 [50 794 565 810] to page 2 at 50 810"});
}

TEST(ConformingLink, LeadsToThePositionOfAParagraphWithoutText) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) {
    doc.HyperLink(L"go", L"there");
    paragraphs(doc, 31);
    doc.Paragraf(0);
    doc.BookMark(L"there");
  });
  EXPECT_EQ(pdf.pageCount(), 1u);
  EXPECT_EQ(pdf.links(), Strings{"page 1 [50 786 565 802] to page 1 at 50 34"});
}

TEST(ConformingLink, MovesWithItsRow) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) {
    paragraphs(doc, 32);
    doc.BeginTable();
    doc.BeginRow(2);
    doc.BeginCell(kWhiteCell);
    doc.HyperLink(L"a", L"there");
    doc.BookMark(L"there");
  });
  // The 32nd paragraph ends at 42, the table's gap at 34.
  EXPECT_EQ(pdf.pageCount(), 2u);
  EXPECT_EQ(pdf.links(), Strings{"page 2 [50 794 307 810] to page 2 at 50 810"});
}

TEST(ConformingPdf, BreaksPagesLikeTheClassicOneForOversizedText) {
  const auto fill = [](CPDFdoc& doc) {
    doc.FontSize(700);
    paragraph(doc, L"a");
    doc.BeginTable();
    row(doc, {L"b"});
  };
  EXPECT_EQ(conforming(fill).pageCount(), madeInTimes(fill).pageCount());
}

TEST(ConformingPdf, TreatsNullTextsAsEmpty) {
  const auto withText = [](const wchar_t* text) {
    return conforming([text](CPDFdoc& doc) {
      paragraph(doc, text);
      doc.Paragraf(0);
      doc.HyperLink(text, L"there");
      doc.BookMark(L"there");
      doc.BeginTable();
      row(doc, {text, text});
    });
  };
  const MadePdf pdf = withText(nullptr);
  EXPECT_EQ(pdf.frames(1), (Strings{"50 741 257 16", "307 741 257 16"}));
  EXPECT_EQ(pdf.content(1), withText(L"").content(1));
  EXPECT_EQ(pdf.links(), withText(L"").links());
}

TEST(ConformingOutline, PutsAnEntryThatIsTooDeepBelowTheDeepestOne) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) {
    doc.HyperLink(L"go", L"there");
    doc.BookMark(L"there");
    doc.AddOutlineItem(L"first", L"there", 3);
    doc.AddOutlineItem(L"a", L"there", 2);
    doc.AddOutlineItem(L"b", L"there", 9);
    doc.AddOutlineItem(L"c", L"there", 1);
    doc.AddOutlineItem(L"second", L"there", 0);
  });
  // The counts include all entries below.
  EXPECT_EQ(pdf.outline(),
            "5 entries\n"
            "first (3) to page 1 at 50 802\n"
            "  a (1) to page 1 at 50 802\n"
            "    b to page 1 at 50 802\n"
            "  c to page 1 at 50 802\n"
            "second to page 1 at 50 802\n");
}

// Entries are created in another order, that of the first use of their target names.
TEST(ConformingOutline, IsInDocumentOrder) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) {
    doc.HyperLink(L"go", L"b");
    doc.BookMark(L"b");
    doc.AddOutlineItem(L"to a", L"a", 0);
    doc.AddOutlineItem(L"to b", L"b", 0);
    doc.AddOutlineItem(L"to a again", L"a", 1);
    doc.AddOutlineItem(L"to b again", L"b", 2);
    doc.AddOutlineItem(L"to c", L"c", 0);
  });
  EXPECT_EQ(pdf.outline(),
            "5 entries\n"
            "to a without a destination\n"
            "to b (2) to page 1 at 50 802\n"
            "  to a again (1) without a destination\n"
            "    to b again to page 1 at 50 802\n"
            "to c without a destination\n");
}

TEST(ConformingOutline, HasNoDestinationWithoutItsBookmark) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) { doc.AddOutlineItem(L"a", L"there", 0); });
  EXPECT_EQ(pdf.outline(), "1 entries\na without a destination\n");
}

TEST(ConformingOutline, OpensAnAddress) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) { doc.AddOutlineItem(L"a", L"https://example.com", 0); });
  EXPECT_EQ(pdf.outline(), "1 entries\na without a destination\n");
  EXPECT_NE(pdf.object(7).find("/Title (a)\r\n/A <<\r\n/Type /Action\r\n/S /URI\r\n/URI (https://example.com)\r\n"
                               ">>\r\n\r\n/Parent "),
            std::string_view::npos);
}

TEST(ConformingOutline, EscapesItsTitles) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) {
    doc.AddOutlineItem(L"f(x)\\", L"there", 0);
    doc.AddOutlineItem(nullptr, L"there", 0);
  });
  EXPECT_NE(pdf.object(7).find("/Title (f\\(x\\)\\\\)\r\n"), std::string_view::npos);
  EXPECT_NE(pdf.object(9).find("/Title ()\r\n"), std::string_view::npos);
}

TEST(ConformingOutline, HasTitlesInUnicode) {
  const MadePdf pdf = conforming([](CPDFdoc& doc) { doc.AddOutlineItem((L"\x4E2D(" + grin()).c_str(), L"", 0); });
  EXPECT_NE(pdf.object(7).find(std::string("/Title (\xFE\xFF\x4E\x2D\x00\\(\xD8\x3D\xDE\x00)\r\n", 22)),
            std::string_view::npos);
}

// An escape character would begin a language code (PDF 1.4, 3.8.1).
TEST(ConformingOutline, HasNoControlCharactersInItsTitles) {
  CPDFdoc doc;
  const MadePdf pdf = made(
      doc, [](CPDFdoc& open) { open.AddOutlineItem(L"\x1B\x65n\t\x7F\x85", L"", 0); }, kConforming);
  EXPECT_NE(pdf.object(7).find(std::string("/Title (\xFE\xFF\xFF\xFD\0e\0n\0\t\xFF\xFD\xFF\xFD)\r\n", 25)),
            std::string_view::npos);
  EXPECT_EQ(doc.LostCharacters(), 3u);
  EXPECT_EQ(doc.FirstLostCharacter(), U'\x1B');
}

TEST(ConformingOutline, LosesNoCharactersOfItsTitles) {
  CPDFdoc doc;
  made(
      doc, [](CPDFdoc& open) { open.AddOutlineItem(L"\x4E2D", L"", 0); }, kConforming);
  EXPECT_EQ(doc.LostCharacters(), 0u);
}

}  // namespace
