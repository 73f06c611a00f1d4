#include "formats/pdf/typeset/fonts/font_file.h"

#include "formats/pdf/typeset/fonts/sample_fonts.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

using namespace scrivalen::test;

namespace scrivalen::typeset {
namespace {

std::string problemWith(std::string data, unsigned index = 0) {
  std::string reason;
  EXPECT_FALSE(FontFile::read(std::move(data), index, reason));
  return reason;
}

TEST(FontFile, SaysWhatTheFontIsCalled) {
  const auto font = readFont(bundledFont("LiberationSans-BoldItalic.ttf"));
  EXPECT_EQ(font->names().postScript, "LiberationSans-BoldItalic");
  EXPECT_EQ(font->names().family, "Liberation Sans");
  EXPECT_EQ(font->names().full, "Liberation Sans Bold Italic");
  EXPECT_TRUE(font->names().isBold);
  EXPECT_TRUE(font->names().isItalic);
}

TEST(FontFile, MeasuresInThousandths) {
  const auto font = readFont(bundledFont(kSansFont));
  EXPECT_EQ(font->advanceOf(font->glyphOf('A')), 667);  // Helvetica's
  EXPECT_EQ(font->measures().ascent, 905);
  EXPECT_EQ(font->measures().descent, -212);
}

TEST(FontFile, IsNoneWithoutTheDirectoryOfAFont) {
  EXPECT_EQ(problemWith("# a heading, and more text"), "it is no TrueType or OpenType font");
  EXPECT_EQ(problemWith(""), "the file is cut off");
}

TEST(FontFile, IsNoneWhenATableGoesOnPastTheEnd) {
  std::string font = bundledFont(kSansFont);
  font.resize(font.size() - 100);
  EXPECT_EQ(problemWith(font), "the file is cut off");
  font.resize(20);
  EXPECT_EQ(problemWith(font), "the file is cut off");
}

TEST(FontFile, IsNoneWithoutOutlinesThatPdfHas) {
  EXPECT_EQ(problemWith(withoutTable(bundledFont(kSansFont), "glyf")), "it has no outlines that PDF can have");
}

TEST(FontFile, IsTheChosenOneOfACollection) {
  const std::string collection = collectionOf({bundledFont(kSansFont), bundledFont(kSerifFont)});
  EXPECT_EQ(readFont(collection, 0)->names().family, "Liberation Sans");
  EXPECT_EQ(readFont(collection, 1)->names().family, "Liberation Serif");
  EXPECT_EQ(problemWith(collection, 2), "the collection has the fonts 0 to 1");
  EXPECT_EQ(problemWith(bundledFont(kSansFont), 1), "it is no collection and has no font 1");
}

TEST(FontFile, SaysWhatTheLicenceAllows) {
  const std::string font = bundledFont(kSansFont);
  const auto embedding = [&font](unsigned fsType) { return readFont(withEmbedding(font, fsType))->embedding(); };
  EXPECT_EQ(embedding(0), Embedding::Allowed);
  EXPECT_EQ(embedding(0x0002), Embedding::Forbidden);
  EXPECT_EQ(embedding(0x0004), Embedding::Allowed);  // for printing
  EXPECT_EQ(embedding(0x000A), Embedding::Allowed);  // the bit that allows more counts
  EXPECT_EQ(embedding(0x0108), Embedding::OnlyWhole);
  EXPECT_EQ(embedding(0x0208), Embedding::OnlyBitmaps);
}

TEST(FontFile, GivesASubsetThatIsASmallerFont) {
  const auto font = readFont(bundledFont(kSansFont));
  const std::uint32_t glyphs[] = {font->glyphOf('A'), font->glyphOf(U'Ж')};
  const FontFile::Subset subset = font->subsetOf({}, glyphs);
  const auto read = readFont(subset.file);
  ASSERT_TRUE(read);
  EXPECT_LT(subset.file.size(), 10000u);
  EXPECT_EQ(read->advanceOf(subset.glyphs[0]), 667);
  EXPECT_EQ(read->advanceOf(subset.glyphs[1]), font->advanceOf(glyphs[1]));
}

TEST(FontFile, GivesTheOutlinesOfPostScriptAlone) {
  const auto font = readFont(postScriptFont());
  ASSERT_TRUE(font->isPostScript());
  const std::uint32_t glyphs[] = {font->glyphOf('A')};
  const FontFile::Subset subset = font->subsetOf({}, glyphs);
  EXPECT_EQ(subset.file.substr(0, 2), std::string("\1\0", 2));  // the version of a table "CFF "
  EXPECT_TRUE(subset.cids.empty());
}

TEST(FontFile, GivesTheSubsetOfAFontOfACollection) {
  const auto font = readFont(collectionOf({bundledFont(kSansFont), bundledFont(kSerifFont)}), 1);
  const std::uint32_t glyphs[] = {font->glyphOf('A')};
  EXPECT_EQ(readFont(font->subsetOf({}, glyphs).file)->advanceOf(1), 722);  // that of Times
}

TEST(Scripts, HaveEnglishNames) {
  EXPECT_EQ(nameOf(scriptOf(U'ก')), "Thai");
  EXPECT_EQ(nameOf(scriptOf(U'漢')), "Han");
  EXPECT_EQ(nameOf(0x51616161), "Qaaa");
}

TEST(Scripts, AreNoneForDigitsMarksAndSigns) {
  EXPECT_EQ(scriptOf('1'), kNoScript);
  EXPECT_EQ(scriptOf(U'\u0301'), kNoScript);
  EXPECT_EQ(scriptOf(U'€'), kNoScript);
}

// DerivedCoreProperties.txt of Unicode 15.0, whose lines are "FIRST..LAST ; PROPERTY # NOTE".
std::vector<bool> ignorableOfUnicode() {
  constexpr std::size_t kCharacters = 0x110000;
  std::ifstream file(SCRIVALEN_CORE_PROPERTIES);
  EXPECT_TRUE(file) << SCRIVALEN_CORE_PROPERTIES;
  std::vector<bool> isIgnorable(kCharacters);
  for (std::string line; std::getline(file, line);) {
    std::istringstream words(line);
    std::string range;
    std::string semicolon;
    std::string property;
    if (words >> range >> semicolon >> property && property == "Default_Ignorable_Code_Point") {
      const std::size_t dots = range.find("..");
      const std::size_t first = std::stoul(range, nullptr, 16);
      const std::size_t last = dots == std::string::npos ? first : std::stoul(range.substr(dots + 2), nullptr, 16);
      for (std::size_t c = first; c <= last; ++c) {
        isIgnorable.at(c) = true;
      }
    }
  }
  return isIgnorable;
}

TEST(Characters, AreInvisibleWhereUnicodeSaysSo) {
  const std::vector<bool> isIgnorable = ignorableOfUnicode();
  std::size_t count = 0;
  for (std::size_t c = 0; c < isIgnorable.size(); ++c) {
    EXPECT_EQ(isInvisible(static_cast<char32_t>(c)), isIgnorable[c]) << std::hex << c;
    count += isIgnorable[c] ? 1 : 0;
  }
  EXPECT_EQ(count, 4174u);
}

}  // namespace
}  // namespace scrivalen::typeset
