#include "formats/pdf/objects/font.h"

#include "formats/pdf/objects/values.h"
#include "formats/pdf/objects/written.h"
#include "support/bytes.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

using namespace PDFStuffer;
using scrivalen::test::areSameBytes;
using scrivalen::test::conforming;
using scrivalen::test::written;

namespace {

// The bytes of font 1 after an action has changed it.
template <typename Font = CPDFFont, typename Action>
std::string fontWith(Action change) {
  std::uint32_t next = 1;
  Font font(next);
  change(font);
  return written(font);
}

// The bytes of a font object with some entries after its type.
std::string font(const std::string& entries) {
  return "1 0 obj\r\n<<\r\n/Type /Font\r\n" + entries + ">>\r\nendobj\r\n\r\n";
}

std::string ofSubtype(std::int32_t subtype) {
  return fontWith([subtype](CPDFFont& changed) {
    changed.subtype = subtype;
    changed.baseFont = u"Base";
  });
}

std::string ofFace(int face) {
  return fontWith<CPDFStandardFont>(
      [face](CPDFStandardFont& changed) { changed.face = static_cast<PDF_STANDARD_FONT_FACE>(face); });
}

std::string standard(const std::string& baseFont) { return font("/Subtype /Type1\r\n/BaseFont /" + baseFont + "\r\n"); }

}  // namespace

TEST(PdfFontBase, IsADictionaryWithAResourceName) {
  CPDFFontBase base;
  base.name = u"F7";
  EXPECT_EQ(base.resourceName(), u"F7");
  EXPECT_TRUE(base.dictionaryFlag);
  EXPECT_EQ(base.objectNumber, 0u);
  EXPECT_EQ(written(base), "<<\r\n>>\r\n");
}

TEST(PdfFontBase, RefersToItsToUnicodeMap) {
  CPDFFontBase base;
  base.addName(u"Type", u"Font");
  base.toUnicode = 9;
  EXPECT_EQ(written(base), "<<\r\n/Type /Font\r\n/ToUnicode 9 0 R\r\n>>\r\n");
}

TEST(PdfFont, TakesTheNextNumberAndHasItsType) {
  std::uint32_t next = 4;
  const CPDFFont made(next);
  EXPECT_EQ(made.objectNumber, 4u);
  EXPECT_EQ(next, 5u);
  EXPECT_EQ(made.entries.size(), 1u);
}

TEST(PdfFont, HasNothingSetByDefault) {
  std::uint32_t next = 1;
  const CPDFFont made(next);
  EXPECT_EQ(made.subtype, 0);
  EXPECT_EQ(made.firstChar, 0xFFFFFFFF);
  EXPECT_EQ(made.lastChar, 0xFFFFFFFF);
  EXPECT_EQ(made.widths, nullptr);
  EXPECT_EQ(made.fontDescriptor, 0u);
  EXPECT_EQ(made.encodingName, u"");
  EXPECT_EQ(made.encoding, nullptr);
  EXPECT_EQ(made.toUnicode, 0u);
}

TEST(PdfFont, WritesOnlyItsSubtypeWhenNothingElseIsSet) {
  EXPECT_EQ(fontWith([](CPDFFont&) {}), font("/Subtype /Type0\r\n"));
}

TEST(PdfFont, WritesEachSubtypeAndTheBaseFontOfSome) {
  EXPECT_EQ(ofSubtype(0), font("/Subtype /Type0\r\n"));
  EXPECT_EQ(ofSubtype(1), font("/Subtype /Type1\r\n/BaseFont /Base\r\n"));
  EXPECT_EQ(ofSubtype(3), font("/Subtype /MMType1\r\n"));
  EXPECT_EQ(ofSubtype(4), font("/Subtype /Type3\r\n"));
  EXPECT_EQ(ofSubtype(5), font("/Subtype /TrueType\r\n/BaseFont /Base\r\n"));
  EXPECT_EQ(ofSubtype(6), font("/Subtype /CIDFontType0\r\n/BaseFont /Base\r\n"));
  EXPECT_EQ(ofSubtype(7), font("/Subtype /CIDFontType2\r\n/BaseFont /Base\r\n"));
}

TEST(PdfFont, WritesSubtypeTwoAndUnknownOnesAsBad) {
  for (const std::int32_t subtype : {2, 8, 1000, -1}) {
    EXPECT_EQ(ofSubtype(subtype), font("/Subtype /BADFont\r\n")) << subtype;
  }
}

TEST(PdfFont, WritesAnEmptyBaseFont) {
  EXPECT_EQ(fontWith([](CPDFFont& changed) { changed.subtype = 5; }), font("/Subtype /TrueType\r\n/BaseFont /\r\n"));
}

TEST(PdfFont, WritesItsRangeOfCharacters) {
  const std::string ranged = fontWith([](CPDFFont& changed) {
    changed.firstChar = 0;
    changed.lastChar = 255;
  });
  EXPECT_EQ(ranged, font("/Subtype /Type0\r\n/FirstChar 0\r\n/LastChar 255\r\n"));
}

TEST(PdfFont, WritesNoIncompleteRange) {
  EXPECT_EQ(fontWith([](CPDFFont& changed) { changed.firstChar = 32; }), font("/Subtype /Type0\r\n"));
  EXPECT_EQ(fontWith([](CPDFFont& changed) { changed.lastChar = 255; }), font("/Subtype /Type0\r\n"));
}

TEST(PdfFont, WritesItsWidths) {
  const std::string wide = fontWith([](CPDFFont& changed) {
    changed.widths = std::make_unique<CPDFArray>();
    changed.widths->Append(std::make_unique<CPDFNumber>(500));
    changed.widths->Append(std::make_unique<CPDFNumber>(600));
  });
  EXPECT_EQ(wide, font("/Subtype /Type0\r\n/Widths [500 600 ]\r\n\r\n"));
}

TEST(PdfFont, RefersToItsDescriptor) {
  EXPECT_EQ(fontWith([](CPDFFont& changed) { changed.fontDescriptor = 8; }),
            font("/Subtype /Type0\r\n/FontDescriptor 8 0 R\r\n"));
}

TEST(PdfFont, PrefersTheNameOfAnEncodingToItsObject) {
  const std::string named = fontWith([](CPDFFont& changed) {
    changed.encodingName = u"MacRomanEncoding";
    changed.encoding = std::make_unique<CPDFDictionary>();
  });
  EXPECT_EQ(named, font("/Subtype /Type0\r\n/Encoding /MacRomanEncoding\r\n"));
}

TEST(PdfFont, WritesTheObjectOfAnUnnamedEncoding) {
  const std::string described = fontWith([](CPDFFont& changed) {
    auto encoding = std::make_unique<CPDFDictionary>();
    encoding->addName(u"Type", u"Encoding");
    changed.encoding = std::move(encoding);
  });
  EXPECT_EQ(described, font("/Subtype /Type0\r\n/Encoding <<\r\n/Type /Encoding\r\n>>\r\n\r\n"));
}

TEST(PdfFont, WritesAllItsEntriesInOrder) {
  const std::string whole = fontWith([](CPDFFont& changed) {
    changed.toUnicode = 10;
    changed.encodingName = u"WinAnsiEncoding";
    changed.fontDescriptor = 9;
    changed.widths = std::make_unique<CPDFArray>();
    changed.widths->Append(std::make_unique<CPDFNumber>(500));
    changed.firstChar = 32;
    changed.lastChar = 32;
    changed.baseFont = u"Georgia";
    changed.name = u"F3";
    changed.subtype = 5;
  });
  EXPECT_TRUE(
      areSameBytes("1 0 obj\r\n"
                   "<<\r\n"
                   "/Type /Font\r\n"
                   "/Subtype /TrueType\r\n"
                   "/Name /F3\r\n"
                   "/BaseFont /Georgia\r\n"
                   "/FirstChar 32\r\n"
                   "/LastChar 32\r\n"
                   "/Widths [500 ]\r\n"
                   "\r\n"
                   "/FontDescriptor 9 0 R\r\n"
                   "/Encoding /WinAnsiEncoding\r\n"
                   "/ToUnicode 10 0 R\r\n"
                   ">>\r\n"
                   "endobj\r\n"
                   "\r\n",
                   whole));
}

TEST(PdfStandardFont, IsWrittenWithNameBaseFontAndEncoding) {
  const std::string asInDocuments = fontWith<CPDFStandardFont>([](CPDFStandardFont& changed) {
    changed.name = u"F1";
    changed.face = PDF_TIMES_ROMAN;
    changed.encodingName = u"WinAnsiEncoding";
  });
  EXPECT_TRUE(
      areSameBytes("1 0 obj\r\n"
                   "<<\r\n"
                   "/Type /Font\r\n"
                   "/Subtype /Type1\r\n"
                   "/Name /F1\r\n"
                   "/BaseFont /Times-Roman\r\n"
                   "/Encoding /WinAnsiEncoding\r\n"
                   ">>\r\n"
                   "endobj\r\n"
                   "\r\n",
                   asInDocuments));
}

TEST(PdfStandardFont, IsHelveticaByDefault) {
  EXPECT_EQ(fontWith<CPDFStandardFont>([](CPDFStandardFont&) {}), standard("Helvetica"));
}

TEST(PdfStandardFont, HasABaseFontForEachFace) {
  EXPECT_EQ(ofFace(0), standard("Times-Roman"));
  EXPECT_EQ(ofFace(1), standard("Times-Bold"));
  EXPECT_EQ(ofFace(2), standard("Times-Italic"));
  EXPECT_EQ(ofFace(3), standard("Times-BoldItalic"));
  EXPECT_EQ(ofFace(4), standard("Helvetica"));
  EXPECT_EQ(ofFace(5), standard("Helvetica-Bold"));
  EXPECT_EQ(ofFace(6), standard("Helvetica-Oblique"));
  EXPECT_EQ(ofFace(7), standard("Helvetica-BoldOblique"));
  EXPECT_EQ(ofFace(8), standard("Courier"));
  EXPECT_EQ(ofFace(9), standard("Courier-Bold"));
  EXPECT_EQ(ofFace(10), standard("Courier-Oblique"));
  EXPECT_EQ(ofFace(11), standard("Courier-BoldOblique"));
  EXPECT_EQ(ofFace(12), standard("Symbol"));
  EXPECT_EQ(ofFace(13), standard("ZapfDingbats"));
  EXPECT_EQ(ofFace(14), standard("Arial"));
  EXPECT_EQ(ofFace(15), standard("Helvetica-Italic"));
  EXPECT_EQ(ofFace(16), standard("Helvetica-BoldItalic"));
  EXPECT_EQ(ofFace(17), standard("Courier-Italic"));
  EXPECT_EQ(ofFace(18), standard("Courier-BoldItalic"));
}

TEST(PdfStandardFont, IsHelveticaForAnUnknownFace) {
  for (const int face : {19, 20, 1000, -1}) {
    EXPECT_EQ(ofFace(face), standard("Helvetica")) << face;
  }
}

TEST(PdfStandardFont, KeepsItsSubtypeAndBaseFontAndHasNoDescriptor) {
  const std::string changed = fontWith<CPDFStandardFont>([](CPDFStandardFont& standardFont) {
    standardFont.subtype = 5;
    standardFont.baseFont = u"Georgia";
    standardFont.fontDescriptor = 8;
    standardFont.face = PDF_SYMBOL;
  });
  EXPECT_EQ(changed, standard("Symbol"));
}

// PDF 1.4, 5.5.1: any other font must have the widths of its characters.
TEST(PdfStandardFont, IsOneOfTheFourteenInConformingForm) {
  const char* const names[] = {"Times-Roman",
                               "Times-Bold",
                               "Times-Italic",
                               "Times-BoldItalic",
                               "Helvetica",
                               "Helvetica-Bold",
                               "Helvetica-Oblique",
                               "Helvetica-BoldOblique",
                               "Courier",
                               "Courier-Bold",
                               "Courier-Oblique",
                               "Courier-BoldOblique",
                               "Symbol",
                               "ZapfDingbats",
                               "Helvetica",
                               "Helvetica-Oblique",
                               "Helvetica-BoldOblique",
                               "Courier-Oblique",
                               "Courier-BoldOblique",
                               "Helvetica"};
  for (int face = 0; face < 20; ++face) {
    std::uint32_t next = 1;
    CPDFStandardFont made(next);
    made.face = static_cast<PDF_STANDARD_FONT_FACE>(face);
    EXPECT_EQ(conforming(made), standard(names[face])) << face;
  }
}

TEST(PdfStandardFont, HasNoEncodingForSymbolFontsInConformingForm) {
  for (const PDF_STANDARD_FONT_FACE face : {PDF_SYMBOL, PDF_ZAPFDINGBATS, PDF_ARIAL}) {
    std::uint32_t next = 1;
    CPDFStandardFont classic(next);
    CPDFStandardFont other(next);
    classic.face = other.face = face;
    classic.encodingName = other.encodingName = u"WinAnsiEncoding";
    EXPECT_NE(written(classic).find("/Encoding /WinAnsiEncoding\r\n"), std::string::npos);
    EXPECT_EQ(conforming(other).find("/Encoding") == std::string::npos, face != PDF_ARIAL);
  }
}

TEST(PdfStandardFont, EscapesItsNamesInConformingForm) {
  std::uint32_t next = 1;
  CPDFStandardFont made(next);
  made.name = u"F 1";
  EXPECT_EQ(conforming(made), font("/Subtype /Type1\r\n/Name /F#201\r\n/BaseFont /Helvetica\r\n"));
}
