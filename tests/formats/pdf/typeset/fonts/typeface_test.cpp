#include "formats/pdf/typeset/fonts/typeface.h"

#include "formats/pdf/typeset/fonts/sample_fonts.h"
#include "formats/pdf/typeset/made_pdf_file.h"
#include "formats/pdf/typeset/pdf_objects.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

namespace scrivalen::typeset {
namespace {

// The fonts that were written, in the order of the file.
struct WrittenFile {
  explicit WrittenFile(const Typeface& typeface) : written(typeface.write(made.file)), objects(made.finished()) {}
  MadePdfFile made;
  WrittenFonts written;
  PdfObjects objects;
};

TEST(Typeface, MeasuresWinAnsiByATable) {
  const Typeface typeface(readFont(bundledFont(kSansFont)));
  EXPECT_EQ(typeface.widthOf("A"), 667);
  EXPECT_EQ(typeface.widthOf("no"), 556 + 556);
  EXPECT_EQ(typeface.widthOf("no", 10 * kPoint), 11120);
}

TEST(Typeface, HasNoSimpleFontOfPostScript) {
  Typeface typeface(readFont(postScriptFont()));
  EXPECT_FALSE(typeface.has(std::string_view("A")));
  EXPECT_TRUE(typeface.has(U'A'));
}

TEST(Typeface, GivesANumberToEachPairOfGlyphAndText) {
  Typeface typeface(readFont(bundledFont(kSansFont)));
  const Code hyphen = typeface.codeOf(16, "-");
  EXPECT_EQ(hyphen.number, kFirstNumber);
  EXPECT_EQ(typeface.codeOf(16, "\u00AD").number, kFirstNumber + 1);
  EXPECT_EQ(typeface.codeOf(17, "-").number, kFirstNumber + 2);
  EXPECT_EQ(typeface.codeOf(16, "-").number, kFirstNumber);
}

TEST(Typeface, BeginsAnotherFontAfterTheLastNumber) {
  Typeface typeface(readFont(bundledFont(kSansFont)), 2);
  EXPECT_EQ(typeface.codeOf(16, "a").font, 0);
  EXPECT_EQ(typeface.codeOf(16, "b").font, 0);
  const Code third = typeface.codeOf(16, "c");
  EXPECT_EQ(third.font, 1);
  EXPECT_EQ(third.number, kFirstNumber);
}

TEST(Typeface, SetsPlainTextOfTheFirstFontOnly) {
  Typeface typeface(readFont(bundledFont(kSansFont)), 2);
  std::string bytes;
  std::int64_t width = 0;
  EXPECT_TRUE(typeface.appendPlain(bytes, "да", width));
  EXPECT_EQ(bytes, "@A");
  EXPECT_FALSE(typeface.appendPlain(bytes, "в", width));
}

TEST(Typeface, HasTwoBytesForTheNumbersThatOneByteDoesNotHold) {
  Typeface typeface(readFont(bundledFont(kDejaVuFont)));
  for (char32_t c = 0x400; c < 0x400 + kFirstOfTwoBytes - kFirstNumber; ++c) {
    EXPECT_LT(typeface.characterOf(c).code.number, kFirstOfTwoBytes);
  }
  std::string bytes;
  std::int64_t width = 0;
  EXPECT_TRUE(typeface.appendPlain(bytes, "аЀω", width));
  EXPECT_TRUE(typeface.appendPlain(bytes, "ωа", width));
  EXPECT_EQ(bytes, std::string("p@\1\0\1\0p", 7));
  const std::int64_t expected = 2 * (typeface.characterOf(U'а').advance + typeface.characterOf(U'ω').advance);
  EXPECT_EQ(width, expected + typeface.characterOf(U'Ѐ').advance);
}

TEST(Typeface, WritesWhichCodesAreWhichGlyphs) {
  Typeface typeface(readFont(bundledFont(kDejaVuFont)));
  for (char32_t c = 0x400; c < 0x500; ++c) {
    typeface.characterOf(c);
  }
  const WrittenFile file(typeface);
  const std::string font = file.objects.object(file.written.composites.at(0));
  const std::string codes = file.objects.stream(numberAfter(font, "/Encoding "));
  EXPECT_NE(codes.find("begincodespacerange\n<40><FF>\n<0100><3FFF>\nend"), std::string::npos);
  EXPECT_NE(codes.find("2 begincidrange\n<40><FF>64\n<0100><01FF>256\nend"), std::string::npos);
  const std::string texts = file.objects.stream(numberAfter(font, "/ToUnicode "));
  EXPECT_NE(texts.find("<FF><04BF>\n<0100><04C0>\n"), std::string::npos);
}

TEST(Typeface, SetsNoTextPlainlyThatIsShaped) {
  Typeface typeface(readFont(bundledFont(kDejaVuFont)));
  std::string bytes;
  std::int64_t width = 0;
  EXPECT_FALSE(typeface.appendPlain(bytes, "سلام", width));
  EXPECT_FALSE(typeface.appendPlain(bytes, "e\u0301", width));
}

TEST(Typeface, WritesNoFontThatIsNotDrawnWith) {
  Typeface typeface(readFont(bundledFont(kSansFont)));
  EXPECT_TRUE(typeface.has(U'Ж'));
  const WrittenFile file(typeface);
  EXPECT_EQ(file.written.simple, 0);
  EXPECT_TRUE(file.written.composites.empty());
}

TEST(Typeface, WritesTheWidthsOfTheSimpleFont) {
  Typeface typeface(readFont(bundledFont(kSansFont)));
  typeface.use("AC");
  const WrittenFile file(typeface);
  const std::string font = file.objects.object(file.written.simple);
  EXPECT_NE(font.find("/Subtype/TrueType"), std::string::npos);
  EXPECT_NE(font.find("/FirstChar 65/LastChar 67/Widths[667 667 722]"), std::string::npos) << font;
}

TEST(Typeface, WritesACompositeFontForEachRangeOfNumbers) {
  Typeface typeface(readFont(bundledFont(kSansFont)), 2);
  for (const char32_t c : {U'A', U'B', U'C'}) {
    typeface.characterOf(c);
  }
  const WrittenFile file(typeface);
  ASSERT_EQ(file.written.composites.size(), 2u);
  const std::string second = file.objects.object(file.written.composites[1]);
  EXPECT_NE(file.objects.stream(numberAfter(second, "/ToUnicode ")).find("<40><0043>"), std::string::npos);
}

TEST(Typeface, WritesTheOutlinesOfPostScriptWithTheirNumbers) {
  Typeface typeface(readFont(postScriptFont()));
  typeface.codeOf(typeface.glyphOf('A'), "A");
  typeface.codeOf(typeface.glyphOf('A'), "\u0391");
  const WrittenFile file(typeface);
  ASSERT_EQ(file.written.composites.size(), 1u);
  const std::string font = file.objects.object(file.written.composites[0]);
  const std::string descendant = file.objects.object(referencesAfter(font, "/DescendantFonts").at(0));
  EXPECT_NE(descendant.find("/Subtype/CIDFontType0"), std::string::npos);
  EXPECT_NE(descendant.find("/W[1[722]]"), std::string::npos) << descendant;
  EXPECT_NE(file.objects.stream(numberAfter(font, "/Encoding ")).find("2 begincidchar\n<0100>1\n<0101>1\nendcidchar"),
            std::string::npos);
  const std::string descriptor = file.objects.object(numberAfter(descendant, "/FontDescriptor "));
  EXPECT_NE(file.objects.object(numberAfter(descriptor, "/FontFile3 ")).find("/Subtype/CIDFontType0C"),
            std::string::npos);
}

}  // namespace
}  // namespace scrivalen::typeset
