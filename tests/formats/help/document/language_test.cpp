#include "formats/help/document/language.h"

#include <gtest/gtest.h>

namespace scrivalen::help {

TEST(HelpLanguage, IsThatOfTheTag) {
  EXPECT_EQ(languageOf("de").identifier, 0x407);
  EXPECT_EQ(languageOf("de").codePage, 1252);
  EXPECT_EQ(languageOf("de").name, "German (Germany)");
  EXPECT_EQ(languageOf("ru").identifier, 0x419);
  EXPECT_EQ(languageOf("ru").codePage, 1251);
}

TEST(HelpLanguage, MayHaveARegionOrAScriptInAnyCase) {
  EXPECT_EQ(languageOf("de-AT").identifier, 0xC07);
  EXPECT_EQ(languageOf("zh-Hant-TW").codePage, 950);
  EXPECT_EQ(languageOf("ZH-cn").codePage, 936);
  EXPECT_EQ(languageOf("sr-Latn-RS").codePage, 1250);
}

TEST(HelpLanguage, IsTheSameAsInRtf) {
  EXPECT_EQ(languageOf("sr").identifier, 10266);
  EXPECT_EQ(languageOf("ta").identifier, 1097);
}

TEST(HelpLanguage, IsKnownByTheFirstSubtags) {
  EXPECT_EQ(languageOf("de-AT-1996-x-private").identifier, 0xC07);
  EXPECT_EQ(languageOf("pl-UA").identifier, 0x415);
}

TEST(HelpLanguage, IsEnglishIfItIsUnknown) {
  EXPECT_EQ(languageOf("tlh").identifier, 0x409);
  EXPECT_EQ(languageOf("d").identifier, 0x409);
}

TEST(HelpLanguage, HasACharset) {
  EXPECT_EQ(charsetOf(languageOf("ru")), "windows-1251");
  EXPECT_EQ(charsetOf(languageOf("ja")), "shift_jis");
  EXPECT_EQ(charsetOf(languageOf("th")), "windows-874");
}

}  // namespace scrivalen::help
