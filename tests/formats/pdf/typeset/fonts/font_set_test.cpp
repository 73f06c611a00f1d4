#include "formats/pdf/typeset/fonts/font_set.h"

#include "formats/pdf/typeset/fonts/sample_fonts.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

namespace scrivalen::typeset {
namespace {

FontSet setOf(std::initializer_list<std::string> files) {
  std::vector<std::unique_ptr<FontFile>> fonts;
  for (const std::string& file : files) {
    fonts.push_back(readFont(file));
  }
  return FontSet(std::move(fonts));
}

std::string fontWith(FontSet& fonts, FontId font, char32_t c) {
  bool found = false;
  const FontId used = fonts.fontFor(font, c, found);
  return found ? fonts.at(used).file().names().postScript : "none";
}

constexpr FontId kSans = fontOf(Family::Sans, false, false);
constexpr FontId kSansBold = fontOf(Family::Sans, true, false);
constexpr FontId kSansItalic = fontOf(Family::Sans, false, true);

TEST(FontSet, KnowsItsFamiliesInAnyCase) {
  const FontSet fonts;
  EXPECT_EQ(fonts.familyOf("liberation serif"), Family::Serif);
  EXPECT_EQ(fonts.familyOf("DejaVu Sans"), Family::DejaVu);
  EXPECT_EQ(fonts.familyOf("Comic Sans"), std::nullopt);
}

TEST(FontSet, KnowsFontsOfTheSameWidthsAsItsOwn) {
  const FontSet fonts;
  EXPECT_EQ(fonts.familyOf("Times New Roman"), Family::Serif);
  EXPECT_EQ(fonts.familyOf("Arial"), Family::Sans);
  EXPECT_EQ(fonts.familyOf("Courier New"), Family::Mono);
}

TEST(FontSet, FindsTheFamilyOfAFileByItsNames) {
  const FontSet fonts = setOf({postScriptFont()});
  const auto family = fonts.familyOf("nimbus roman");
  ASSERT_TRUE(family);
  EXPECT_EQ(fonts.familyOf("NimbusRoman-Regular"), family);
  EXPECT_EQ(fonts.familyNames(),
            "'Liberation Serif', 'Liberation Sans', 'Liberation Mono', 'DejaVu Sans', 'Nimbus Roman'");
}

TEST(FontSet, DrawsInTheFontThatIsAskedForWhatItHas) {
  FontSet fonts = setOf({postScriptFont()});
  EXPECT_EQ(fontWith(fonts, kSansBold, 'A'), "LiberationSans-Bold");
}

TEST(FontSet, LooksIntoFilesInTheirOrderBeforeDejaVu) {
  FontSet fonts = setOf({postScriptFont(), bundledFont("DejaVuSans-Bold.ttf")});
  EXPECT_EQ(fontWith(fonts, kSans, U'Ա'), "DejaVuSans-Bold");
  FontSet none;
  EXPECT_EQ(fontWith(none, kSans, U'Ա'), "DejaVuSans");
}

TEST(FontSet, KeepsWeightAndSlopeWhereItCan) {
  FontSet fonts;
  EXPECT_EQ(fontWith(fonts, kSansBold, U'Ա'), "DejaVuSans-Bold");
  EXPECT_EQ(fontWith(fonts, kSansItalic, U'Ա'), "DejaVuSans-Oblique");
}

TEST(FontSet, DrawsUprightWhatNoSlantedFontHas) {
  FontSet fonts;
  EXPECT_EQ(fontWith(fonts, kSansItalic, U'ش'), "DejaVuSans");
}

TEST(FontSet, UsesTheNearestFontOfAFamilyThatIsNotWhole) {
  FontSet fonts = setOf({bundledFont("LiberationSerif-Bold.ttf"), bundledFont(kSerifFont)});
  const Family family = *fonts.familyOf("Liberation Serif");
  EXPECT_EQ(fontWith(fonts, fontOf(family, false, false), 'A'), "LiberationSerif");
  EXPECT_EQ(fontWith(fonts, fontOf(family, false, true), 'A'), "LiberationSerif");
  EXPECT_EQ(fontWith(fonts, fontOf(family, true, true), 'A'), "LiberationSerif-Bold");
}

TEST(FontSet, DrawsTheMissingGlyphOfAFontThatShowsIt) {
  FontSet fonts = setOf({postScriptFont()});
  bool found = true;
  const FontId host = fontOf(*fonts.familyOf("Nimbus Roman"), false, false);
  EXPECT_EQ(fonts.fontFor(host, U'漢', found), fontOf(Family::DejaVu, false, false));
  EXPECT_FALSE(found);
  EXPECT_EQ(fonts.fontFor(kSans, U'漢', found), kSans);
  EXPECT_EQ(fonts.fontFor(kSansItalic, U'漢', found), fontOf(Family::DejaVu, false, false));
  EXPECT_EQ(fonts.fontFor(fontOf(Family::Serif, false, false), U'漢', found), fontOf(Family::DejaVu, false, false));
}

}  // namespace
}  // namespace scrivalen::typeset
