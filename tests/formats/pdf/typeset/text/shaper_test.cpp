#include "formats/pdf/typeset/text/shaper.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace scrivalen::typeset {
namespace {

constexpr FontId kSans = fontOf(Family::Sans, false, false);
constexpr FontId kDejaVu = fontOf(Family::DejaVu, false, false);
constexpr ShapeStyle kPlain{.font = kSans, .size = 10 * kPoint};
constexpr ShapeStyle kKerned{.font = kSans, .size = 10 * kPoint, .isKerned = true};
constexpr ShapeStyle kFromRight{.font = kSans, .size = 10 * kPoint, .isRightToLeft = true};

struct Shaping : testing::Test {
  /// The only run of a text.
  ShapedRun runOf(std::string_view text, const ShapeStyle& style) {
    const std::vector<ShapedRun>& runs = shaper.shape(text, style);
    EXPECT_EQ(runs.size(), 1u) << text;
    return runs.empty() ? ShapedRun() : runs.front();
  }
  FontSet fonts;
  Shaper shaper{fonts};
};

// The widths are those of Helvetica, in thousandths: A and V 667, f 278, i 222, o 556.
TEST_F(Shaping, SetsPlainTextWithoutKerning) {
  const ShapedRun run = runOf("AV", kPlain);
  EXPECT_EQ(run.content, "(AV)");
  EXPECT_EQ(run.font, (FontUse{kSans, 0}));
  EXPECT_EQ(run.width, 13340);
}

TEST_F(Shaping, KernsWhereItIsAskedTo) {
  const ShapedRun run = runOf("AV", kKerned);
  EXPECT_EQ(run.content, "(A)74 (V)");
  EXPECT_EQ(run.width, 12600);
}

TEST_F(Shaping, HasLigaturesWhereItIsAskedTo) {
  ShapeStyle style{.font = kDejaVu, .size = 10 * kPoint};
  EXPECT_EQ(runOf("fi", style).content, "(fi)");
  style.isKerned = true;
  const ShapedRun run = runOf("fi", style);
  EXPECT_EQ(run.font, (FontUse{kDejaVu, 1}));
  EXPECT_EQ(run.content, "(@)");
}

TEST_F(Shaping, SetsOtherSimpleScriptsByNumbers) {
  const ShapedRun run = runOf("ДА", kPlain);
  EXPECT_EQ(run.font, (FontUse{kSans, 1}));
  EXPECT_EQ(run.content, "(@A)");
}

TEST_F(Shaping, JoinsArabicLettersWithoutBeingAskedTo) {
  const ShapedRun lam = runOf("ل", kFromRight);
  const ShapedRun lamAlef = runOf("لا", kFromRight);
  EXPECT_EQ(lamAlef.content.size(), lam.content.size());  // one glyph
  EXPECT_NE(lamAlef.content, lam.content);
}

TEST_F(Shaping, MirrorsBracketsWithoutKerningToo) {
  Typeface& font = fonts.at(kSans);
  const Code code = font.codeOf(font.glyphOf(U'»'), "«");
  const char mirrored[] = {'(', static_cast<char>(code.number), ')'};
  EXPECT_EQ(runOf("«", kFromRight).content, std::string(mirrored, sizeof mirrored));
}

TEST_F(Shaping, SetsSignsFromRightToLeftInTheSameOrderWithAndWithoutKerning) {
  ShapeStyle kerned = kFromRight;
  kerned.isKerned = true;
  for (const std::string_view signs : {"...)", "!?", "א (", "«نص»", "(نص...)"}) {
    std::string contents[2];
    for (const bool isKerned : {false, true}) {
      for (const ShapedRun& run : shaper.shape(signs, isKerned ? kerned : kFromRight)) {
        contents[isKerned ? 1 : 0] += run.content;
      }
    }
    EXPECT_EQ(contents[0], contents[1]) << signs;
  }
}

TEST_F(Shaping, PlacesMarksOnTheirLetters) {
  const ShapedRun letter = runOf("x", kPlain);
  const ShapedRun run = runOf("x\u0323", kPlain);
  EXPECT_EQ(run.width, letter.width);
  EXPECT_NE(run.content.find("/ActualText"), std::string::npos);
}

// MuPDF reads a character past the basic plane only where it is all that a glyph stands for.
TEST_F(Shaping, SetsAJoinerOfCharactersPastTheBasicPlaneAsABlank) {
  const std::vector<ShapedRun> runs = shaper.shape("\U0001F600\u200D\U0001F601", kPlain);
  ASSERT_EQ(runs.size(), 3u);
  EXPECT_EQ(runs[1].width, 0);
  EXPECT_EQ(runs[1].content.size(), 3u);  // one glyph
  EXPECT_EQ(runs[0].width + runs[2].width, runOf("\U0001F600", kPlain).width + runOf("\U0001F601", kPlain).width);
}

// poppler takes a text beside glyphs to reach from the first to the last of them.
TEST_F(Shaping, BeginsALetterWithMarksFromRightToLeftAtItsEdge) {
  const ShapedRun run = runOf("\u05E2\u05B2", kFromRight);
  EXPECT_EQ(run.content.find("BDC[("), run.content.find("BDC["));  // no move, and no rise
  EXPECT_EQ(runOf("q\u0303", kPlain).content.find(")]TJ EMC"), runOf("q\u0303", kPlain).content.find("]TJ EMC") - 1);
}

TEST_F(Shaping, DividesATextWhereItsFontChanges) {
  const std::vector<ShapedRun> runs = shaper.shape("aԱb", kPlain);
  ASSERT_EQ(runs.size(), 3u);
  EXPECT_EQ(runs[0].font.typeface, kSans);
  EXPECT_EQ(runs[1].font.typeface, kDejaVu);
  EXPECT_EQ(runs[2].font.typeface, kSans);
}

TEST_F(Shaping, DrawsNoInvisibleCharacters) {
  EXPECT_EQ(runOf("a\u200Bb", kPlain).width, runOf("ab", kPlain).width);
  EXPECT_TRUE(shaper.shape("\u200B", kPlain).empty());
  for (const std::string_view filler : {"\u3164", "\uFFA0", "\u034F", "\U000E0041"}) {
    for (const ShapeStyle& style : {kPlain, kKerned}) {
      Length width = 0;
      for (const ShapedRun& run : shaper.shape("a" + std::string(filler) + "b", style)) {
        EXPECT_FALSE(run.missing);
        width += run.width;
      }
      EXPECT_EQ(width, runOf("ab", style).width);
    }
  }
}

TEST_F(Shaping, SaysWhichRunsAreMissingGlyphs) {
  const std::vector<ShapedRun> runs = shaper.shape("a漢b", kPlain);
  ASSERT_EQ(runs.size(), 3u);
  EXPECT_FALSE(runs[0].missing);
  EXPECT_EQ(runs[1].missing, U'漢');
  EXPECT_FALSE(runs[2].missing);
}

TEST_F(Shaping, CountsOnlyMissingGlyphsThatAreDrawn) {
  shaper.shape("漢", kPlain);
  EXPECT_TRUE(shaper.missing().empty());
  shaper.countMissing(U'漢');
  shaper.countMissing(U'字');
  EXPECT_EQ(shaper.missing().at(scriptOf(U'漢')).count, 2u);
  EXPECT_EQ(shaper.missing().at(scriptOf(U'漢')).first, U'漢');
}

TEST_F(Shaping, GivesTheSameRunsForAWordThatComesAgain) {
  const std::string first = runOf("AVATAR", kKerned).content;
  for (int i = 0; i < 10000; ++i) {
    shaper.shape("word " + std::to_string(i), kPlain);
  }
  EXPECT_EQ(runOf("AVATAR", kKerned).content, first);
}

// HarfBuzz keeps each language for good, and looks through all of them for one.
TEST_F(Shaping, KeepsFewLanguages) {
  ShapeStyle style = kKerned;
  for (int i = 0; i < 30000; ++i) {
    const std::string language = "x-" + std::to_string(i);
    style.language = language;
    shaper.shape("AV", style);
  }
  EXPECT_EQ(shaper.languageCount(), 256u);
}

TEST_F(Shaping, TellsStylesOfTheSameWordApart) {
  const Length width = runOf("word", kPlain).width;
  EXPECT_EQ(runOf("word", {.font = kSans, .size = 20 * kPoint}).width, 2 * width);
  EXPECT_EQ(runOf("word", {.font = kDejaVu, .size = 10 * kPoint}).font.typeface, kDejaVu);
  EXPECT_EQ(runOf("word", kPlain).width, width);
}

}  // namespace
}  // namespace scrivalen::typeset
