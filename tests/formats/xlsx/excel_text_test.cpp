#include "formats/xlsx/excel_text.h"

#include "support/bytes.h"

#include <gtest/gtest.h>

#include <cwchar>

using scrivalen::ExcelText;
using namespace scrivalen::test;

namespace {

ExcelText made(const std::wstring& text) {
  ExcelText result;
  result.assign(text.c_str());
  return result;
}

std::string written(const std::wstring& text) { return made(text).utf8(); }

std::size_t width(const std::wstring& text) { return made(text).width(); }

}  // namespace

TEST(ExcelText, IsUtf8) {
  EXPECT_EQ(written(L""), "");
  EXPECT_EQ(written(L"a"), "a");
  EXPECT_EQ(written(L"plain text of some length"), "plain text of some length");
  EXPECT_EQ(written(L"12345678\u00E9\u20AC" + grin() + L"z"), "12345678\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z");
  EXPECT_EQ(written(wideUnit(0xD83D) + wideUnit(0xDE00)), "\xF0\x9F\x98\x80");
}

TEST(ExcelText, ReplacesItsEarlierText) {
  ExcelText text;
  text.assign(longText(40000).c_str());
  EXPECT_TRUE(text.isCut());
  text.assign(L"b");
  EXPECT_EQ(text.utf8(), "b");
  EXPECT_EQ(text.width(), 1u);
  EXPECT_FALSE(text.isCut());
  text.assign(L"");
  EXPECT_TRUE(text.isEmpty());
  EXPECT_EQ(text.width(), 0u);
}

TEST(ExcelText, ReplacesAndCountsCharactersThatXmlForbids) {
  const ExcelText text = made(L"a\uFFFE\uFFFF" + wideUnit(0xD83D) + L"b" + wideUnit(0xDE00));
  EXPECT_EQ(text.utf8(),
            "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"
            "b\xEF\xBF\xBD");
  EXPECT_EQ(text.loss().count(), 4u);
  EXPECT_EQ(text.loss().first(), char32_t{0xFFFE});
}

TEST(ExcelText, EscapesControlCharacters) {
  const ExcelText text = made(L"\x01\x1F\x7F\t\n\r");
  EXPECT_EQ(text.utf8(), "_x0001__x001F_\x7F\t\n_x000D_");
  EXPECT_EQ(text.loss().count(), 0u);
}

TEST(ExcelText, EscapesWhatLooksLikeAnEscape) {
  EXPECT_EQ(written(L"_x0041_"), "_x005F_x0041_");
  EXPECT_EQ(written(L"a _x005F_x00ff_ b"), "a _x005F_x005F_x005F_x00ff_ b");
  EXPECT_EQ(written(L"_x0041_x0042_"), "_x005F_x0041_x005F_x0042_");
  EXPECT_EQ(written(L"\u00E9_x0041_"), "\xC3\xA9_x005F_x0041_");
  EXPECT_EQ(written(L"_x004_ _x41_"), "_x005F_x004_ _x005F_x41_");
}

TEST(ExcelText, EscapesTextThatAControlCharacterWouldTurnIntoAnEscape) {
  EXPECT_EQ(written(L"_x0041\x01"), "_x005F_x0041_x0001_");
  EXPECT_EQ(written(L"_x0041\n"), "_x0041\n");
}

TEST(ExcelText, LeavesOtherUnderscoresUnchanged) {
  for (const wchar_t* text : {L"_", L"_x", L"_x0041", L"_x004G_", L"_X0041_", L"x0041_", L"__x__", L"a_xy"}) {
    EXPECT_EQ(written(text), std::string(text, text + std::wcslen(text))) << text;
  }
}

TEST(ExcelText, IsCutAtTheLongestCell) {
  EXPECT_FALSE(made(longText(32767)).isCut());
  const ExcelText text = made(longText(32768));
  EXPECT_TRUE(text.isCut());
  EXPECT_EQ(text.utf8(), std::string(32767, 'x'));
}

TEST(ExcelText, CountsUtf16AndSplitsNoCharacter) {
  const ExcelText fits = made(longText(32765) + grin());
  EXPECT_FALSE(fits.isCut());
  EXPECT_EQ(fits.utf8(), std::string(32765, 'x') + "\xF0\x9F\x98\x80");
  const ExcelText cut = made(longText(32766) + grin());
  EXPECT_TRUE(cut.isCut());
  EXPECT_EQ(cut.utf8(), std::string(32766, 'x'));
  const ExcelText pairs = made(longText(32766) + wideUnit(0xD83D) + wideUnit(0xDE00));
  EXPECT_EQ(pairs.utf8(), std::string(32766, 'x'));
}

TEST(ExcelText, IsNotCutForItsEscapes) {
  std::wstring escapes;
  std::string expected;
  for (int i = 0; i < 4681; ++i) {
    escapes += L"_x0041_";
    expected += "_x005F_x0041_";
  }
  const ExcelText text = made(escapes);
  EXPECT_FALSE(text.isCut());
  EXPECT_TRUE(areSameBytes(expected, text.utf8()));
}

TEST(ExcelText, IsAsWideAsItsLongestLine) {
  EXPECT_EQ(width(L"four"), 4u);
  EXPECT_EQ(width(L"one\nthree\n\ntwo"), 5u);
  EXPECT_EQ(width(L"caf\u00E9 \u20AC"), 6u);
  EXPECT_EQ(width(L"ab\u00E9\nabcde\u00E9"), 6u);
  EXPECT_EQ(width(L"a longer line\n\u00E9"), 13u);
}

TEST(ExcelText, CountsWideLettersTwice) {
  EXPECT_EQ(width(L"\u4E2D\u6587"), 4u);
  EXPECT_EQ(width(L"\uD55C a"), 4u);
  EXPECT_EQ(width(grin()), 2u);
}
