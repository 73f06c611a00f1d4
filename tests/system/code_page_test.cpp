#include "system/code_page.h"

#include <gtest/gtest.h>

using namespace scrivalen;

namespace {

struct Converted {
  std::optional<std::string> bytes;
  LossCounter loss;
};

Converted convert(std::wstring_view text, std::size_t capacity = 64) {
  char out[64];
  Converted result;
  if (const auto size = toCodePage(text, out, capacity, result.loss)) {
    result.bytes = std::string(out, *size);
  }
  return result;
}

std::wstring letters(std::size_t count) { return std::wstring(count, L'x'); }
std::wstring unit(unsigned value) { return std::wstring(1, static_cast<wchar_t>(value)); }

}  // namespace

TEST(CodePage, HoldsLatinLettersAndTypographicSigns) {
  EXPECT_EQ(convert(L"Az \u00E9\u00FF \u20AC\u201E\u201C\u2122\u0178").bytes, "Az \xE9\xFF \x80\x84\x93\x99\x9F");
}

TEST(CodePage, MapsItsFiveUnusedBytesToThemselves) {
  EXPECT_EQ(convert(L"\u0081\u008D\u008F\u0090\u009D").bytes, "\x81\x8D\x8F\x90\x9D");
}

TEST(CodePage, WritesAQuestionMarkForAMissingCharacter) {
  const Converted converted = convert(L"a\u0141\u4E2Db");
  EXPECT_EQ(converted.bytes, "a??b");
  EXPECT_EQ(converted.loss.count(), 2u);
  EXPECT_EQ(converted.loss.first(), 0x141u);
}

TEST(CodePage, DoesNotSubstituteLookAlikeLetters) { EXPECT_EQ(convert(L"\u0100\uFF21\u221E").bytes, "???"); }

TEST(CodePage, WritesTwoQuestionMarksForASurrogatePair) {
  EXPECT_EQ(convert(unit(0xD83D) + unit(0xDE00)).bytes, "??");
  EXPECT_EQ(convert(unit(0xD83D) + unit(0xDE00)).loss.count(), 1u);
  EXPECT_EQ(convert(unit(0xD83D)).bytes, "?");
}

TEST(CodePage, FillsTheBufferAndNoMore) {
  EXPECT_EQ(convert(L"abcd", 4).bytes, "abcd");
  EXPECT_EQ(convert(L"abcde", 4).bytes, std::nullopt);
  EXPECT_EQ(convert(L"abc" + unit(0xD83D) + unit(0xDE00), 4).bytes, std::nullopt);
  EXPECT_EQ(convert(L"", 0).bytes, "");
}

TEST(CodePage, ReportsWhetherItHoldsAText) {
  EXPECT_TRUE(isInCodePage(L"caf\u00E9 \u20AC"));
  EXPECT_FALSE(isInCodePage(L"\u0141"));
  EXPECT_FALSE(isInCodePage(unit(0xD83D) + unit(0xDE00)));
}

TEST(CodePage, ConvertsSpecialCharactersAtEveryPositionInAText) {
  struct Special {
    std::wstring text;
    std::string bytes;
    std::uint64_t lost;
  };
  const Special specials[] = {{L"\u20AC", "\x80", 0},
                              {L"\u00E9", "\xE9", 0},
                              {L"\u0141", "?", 1},
                              {L"\u4E2D", "?", 1},
                              {unit(0xD83D) + unit(0xDE00), "??", 1},
                              {unit(0xD83D), "?", 1}};
  for (const Special& special : specials) {
    for (std::size_t length = 7; length <= 17; ++length) {
      for (std::size_t place = 0; place < length; ++place) {
        const Converted converted = convert(letters(place) + special.text + letters(length - place - 1));
        EXPECT_EQ(converted.bytes, std::string(place, 'x') + special.bytes + std::string(length - place - 1, 'x'));
        EXPECT_EQ(converted.loss.count(), special.lost);
      }
    }
  }
}

TEST(CodePage, FillsABufferThatEndsWithABlock) {
  for (const std::size_t room : {8u, 16u, 24u}) {
    EXPECT_EQ(convert(letters(room), room).bytes, std::string(room, 'x'));
    EXPECT_EQ(convert(letters(room + 1), room).bytes, std::nullopt);
    EXPECT_EQ(convert(letters(room + 8), room).bytes, std::nullopt);
    EXPECT_EQ(convert(letters(room - 1) + L"\u4E2D", room).bytes, std::string(room - 1, 'x') + "?");
    EXPECT_EQ(convert(letters(room) + L"\u4E2D", room).bytes, std::nullopt);
    EXPECT_EQ(convert(letters(room - 1) + unit(0xD83D) + unit(0xDE00), room).bytes, std::nullopt);
  }
}

TEST(CodePage, TouchesNothingBeyondTheBuffer) {
  for (std::size_t room = 0; room <= 24; ++room) {
    for (const std::wstring& text :
         {letters(40), letters(room) + L"\u20AC", letters(room) + unit(0xD83D) + unit(0xDE00)}) {
      std::string out(64, '#');
      LossCounter loss;
      EXPECT_EQ(toCodePage(text, out.data(), room, loss), std::nullopt);
      EXPECT_EQ(out.substr(room), std::string(64 - room, '#'));
    }
  }
}
