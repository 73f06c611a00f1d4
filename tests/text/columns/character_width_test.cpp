#include "text/columns/character_width.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

using scrivalen::columnsOf;

namespace {

std::size_t columns(const char8_t* text) { return columnsOf(std::string_view(reinterpret_cast<const char*>(text))); }

}  // namespace

TEST(CharacterWidth, IsOneColumnForLetters) {
  EXPECT_EQ(columns(u8""), 0u);
  EXPECT_EQ(columns(u8"a"), 1u);
  EXPECT_EQ(columns(u8"a line of text that is longer than one word of memory"), 53u);
  EXPECT_EQ(columns(u8"Größe"), 5u);
  EXPECT_EQ(columns(u8"Ελλάδα"), 6u);
  EXPECT_EQ(columns(u8"Привет"), 6u);
  EXPECT_EQ(columns(u8"€ — …"), 5u);
  EXPECT_EQ(columns(u8"ｱｲｳ"), 3u);
}

TEST(CharacterWidth, IsTwoColumnsForEastAsianWideCharacters) {
  EXPECT_EQ(columns(u8"漢字"), 4u);
  EXPECT_EQ(columns(u8"ひらがな"), 8u);
  EXPECT_EQ(columns(u8"한국어"), 6u);
  EXPECT_EQ(columns(u8"ＡＢＣ"), 6u);
  EXPECT_EQ(columns(u8"、。"), 4u);
  EXPECT_EQ(columns(u8"𠮷"), 2u);
  EXPECT_EQ(columns(u8"a漢b"), 4u);
}

TEST(CharacterWidth, IsNothingForMarksAndFormatCharacters) {
  EXPECT_EQ(columns(u8"e\u0301"), 1u);
  EXPECT_EQ(columns(u8"\u0301"), 0u);
  EXPECT_EQ(columns(u8"กี่"), 1u);
  EXPECT_EQ(columns(u8"か\u3099"), 2u);
  EXPECT_EQ(columns(u8"a\u200Bb\u200Dc\u2060d\uFEFF"), 4u);
  EXPECT_EQ(columns(u8"\u1112\u1161\u11AB"), 2u);
}

TEST(CharacterWidth, IsOneColumnForASoftHyphen) { EXPECT_EQ(columns(u8"a\u00ADb"), 3u); }

TEST(CharacterWidth, IsTwoColumnsForAnEmojiOfAnyLength) {
  EXPECT_EQ(columns(u8"😀"), 2u);
  EXPECT_EQ(columns(u8"👍🏽"), 2u);
  EXPECT_EQ(columns(u8"👨\u200D👩\u200D👧"), 2u);
  EXPECT_EQ(columns(u8"🏴\u200D☠\uFE0F"), 2u);
  EXPECT_EQ(columns(u8"🇩🇪🇫🇷"), 4u);
  EXPECT_EQ(columns(u8"✅ done"), 7u);
}

TEST(CharacterWidth, DependsOnTheVariantOfASign) {
  EXPECT_EQ(columns(u8"❤"), 1u);
  EXPECT_EQ(columns(u8"❤\uFE0F"), 2u);
  EXPECT_EQ(columns(u8"Key 1\uFE0F\u20E3"), 6u);
  EXPECT_EQ(columns(u8"a\uFE0F"), 1u);
}

TEST(CharacterWidth, IsOneColumnForAnIllFormedSequence) {
  EXPECT_EQ(columnsOf(std::string_view("a\xFF"
                                       "b")),
            3u);
  EXPECT_EQ(columnsOf(std::string_view("a\xC3")), 2u);
  EXPECT_EQ(columnsOf(std::string_view("\xE6\xBC")), 1u);
}

TEST(CharacterWidth, KnowsTheBordersOfItsRanges) {
  EXPECT_EQ(columnsOf(U'\u02FF'), 1u);
  EXPECT_EQ(columnsOf(U'\u0300'), 0u);
  EXPECT_EQ(columnsOf(U'\u036F'), 0u);
  EXPECT_EQ(columnsOf(U'\u0370'), 1u);
  EXPECT_EQ(columnsOf(U'\u10FF'), 1u);
  EXPECT_EQ(columnsOf(U'\u1100'), 2u);
  EXPECT_EQ(columnsOf(U'\uD7A3'), 2u);
  EXPECT_EQ(columnsOf(U'\U0002FFFD'), 2u);
  EXPECT_EQ(columnsOf(U'\U000E0FFF'), 0u);
  EXPECT_EQ(columnsOf(U'\U000F0000'), 1u);
  EXPECT_EQ(columnsOf(U'\U0010FFFF'), 1u);
}

// A byte after a run of ASCII is reached by words of eight or sixteen bytes first, then by single bytes.
TEST(CharacterWidth, IsTheSameAtEveryPlaceOfALine) {
  for (std::size_t before = 0; before < 40; ++before) {
    const std::string line = std::string(before, 'x') + "\xE6\xBC\xA2" + std::string(before, 'y') + "\xC3\xA9";
    EXPECT_EQ(columnsOf(std::string_view(line)), 2 * before + 3);
  }
}

TEST(VisibleCharacter, IsALetterWithItsMarks) {
  const std::string text = "e\xCC\x81x";
  const char* at = text.data();
  const auto character = scrivalen::nextVisibleCharacter(at, text.data() + text.size());
  EXPECT_EQ(character.first, U'e');
  EXPECT_EQ(character.last, U'\u0301');
  EXPECT_EQ(character.columns, 1u);
  EXPECT_EQ(at, text.data() + 3);
}
