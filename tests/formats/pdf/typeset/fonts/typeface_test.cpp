#include "formats/pdf/typeset/fonts/typeface.h"

#include "formats/pdf/typeset/fonts/sample_fonts.h"
#include "formats/pdf/typeset/made_pdf_file.h"
#include "formats/pdf/typeset/pdf_objects.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

namespace scrivalen::typeset {
namespace {

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
  EXPECT_EQ(hyphen.number, 1);
  EXPECT_EQ(typeface.codeOf(16, "\u00AD").number, 2);
  EXPECT_EQ(typeface.codeOf(17, "-").number, 3);
  EXPECT_EQ(typeface.codeOf(16, "-").number, 1);
}

TEST(Typeface, BeginsAnotherFontAfterTheLastNumber) {
  Typeface typeface(readFont(bundledFont(kSansFont)), 2);
  EXPECT_EQ(typeface.codeOf(16, "a").font, 0);
  EXPECT_EQ(typeface.codeOf(16, "b").font, 0);
  const Code third = typeface.codeOf(16, "c");
  EXPECT_EQ(third.font, 1);
  EXPECT_EQ(third.number, 1);
}

TEST(Typeface, SetsPlainTextOfTheFirstFontOnly) {
  Typeface typeface(readFont(bundledFont(kSansFont)), 2);
  std::string bytes;
  std::int64_t width = 0;
  EXPECT_TRUE(typeface.appendPlain(bytes, "да", width));
  EXPECT_EQ(bytes, std::string("\0\1\0\2", 4));
  EXPECT_FALSE(typeface.appendPlain(bytes, "в", width));
}

TEST(Typeface, SetsNoTextPlainlyThatIsShaped) {
  Typeface typeface(readFont(bundledFont(kDejaVuFont)));
  std::string bytes;
  std::int64_t width = 0;
  EXPECT_FALSE(typeface.appendPlain(bytes, "سلام", width));
  EXPECT_FALSE(typeface.appendPlain(bytes, "e\u0301", width));
}

// The fonts that were written, in the order of the file.
struct WrittenFile {
  explicit WrittenFile(const Typeface& typeface) : written(typeface.write(made.file)), objects(made.finished()) {}
  MadePdfFile made;
  WrittenFonts written;
  PdfObjects objects;
};

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
  EXPECT_NE(file.objects.stream(numberAfter(second, "/ToUnicode ")).find("<0001><0043>"), std::string::npos);
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
  EXPECT_NE(file.objects.stream(numberAfter(font, "/Encoding ")).find("2 begincidchar\n<0001>1\n<0002>1\nendcidchar"),
            std::string::npos);
  const std::string descriptor = file.objects.object(numberAfter(descendant, "/FontDescriptor "));
  EXPECT_NE(file.objects.object(numberAfter(descriptor, "/FontFile3 ")).find("/Subtype/CIDFontType0C"),
            std::string::npos);
}

}  // namespace
}  // namespace scrivalen::typeset
