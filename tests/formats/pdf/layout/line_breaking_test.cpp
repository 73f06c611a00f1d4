#include "formats/pdf/fonts/char_widths.h"
#include "formats/pdf/layout/made_pdf.h"
#include "support/bytes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace {

using namespace scrivalen::test;
using scrivalen::pdf::CharWidths;

using Texts = std::vector<std::string>;

// In 12-point Times an x is 6 points wide; an i, a blank, "," "." and "/" are 3, "-" is 4, a tab is 6, a J is 5. A line
// is narrower than 515 points.
std::string xs(std::size_t count) { return std::string(count, 'x'); }
std::wstring wideXs(std::size_t count) { return std::wstring(count, L'x'); }

// The lines of a paragraph. The lines must not change when a character of more than one byte comes after the text.
Texts linesOf(const std::wstring& text) {
  const auto written = [](const std::wstring& all) {
    return madeInTimes([&](CPDFdoc& doc) { paragraph(doc, all.c_str()); }).texts(1);
  };
  Texts lines = written(text);
  Texts expected = lines;
  if (expected.back().empty()) {
    expected.back() = " ";
  }
  expected.push_back("A");
  EXPECT_EQ(written(text + L"\n\x0141"), expected);
  return lines;
}

// The lines of the only cell with text in a row with this number of columns.
Texts linesInColumn(int columns, const wchar_t* text, int size = 12) {
  return madeInTimes([&](CPDFdoc& doc) {
           doc.FontSize(size);
           doc.BeginTable();
           doc.BeginRow(columns);
           doc.BeginCell(kWhiteCell);
           doc.write(text);
         })
      .texts(1);
}

struct WidthRow {
  const char* characters;
  std::vector<int> thousandths;
};

// The widths for an average of 1000 points.
const std::vector<WidthRow> kWidthRows = {{" !\"#$%&'", {523, 697, 854, 1047, 1047, 1744, 1629, 697}},
                                          {"()*+,-./", {697, 697, 1047, 1181, 523, 697, 523, 582}},
                                          {"0123456789", {1047, 1047, 1047, 1047, 1047, 1047, 1047, 1047, 1047, 1047}},
                                          {":;<=>?", {582, 582, 1181, 1181, 1181, 929}},
                                          {"@ABCDEFG", {1928, 1511, 1396, 1396, 1511, 1279, 1164, 1511}},
                                          {"HIJKLMNO", {1511, 697, 814, 1511, 1279, 1861, 1511, 1511}},
                                          {"PQRSTUVW", {1164, 1511, 1396, 1164, 1279, 1511, 1511, 1976}},
                                          {"XYZ[\\]^_", {1511, 1511, 1279, 697, 582, 697, 982, 1047}},
                                          {"`abcdefg", {697, 929, 1047, 929, 1047, 929, 697, 1047}},
                                          {"hijklmno", {1047, 582, 582, 1047, 582, 1629, 1047, 1047}},
                                          {"pqrstuvw", {1047, 1047, 697, 814, 582, 1047, 1047, 1511}},
                                          {"xyz{|}~", {1047, 1047, 929, 1005, 419, 1005, 1132}}};

TEST(CharWidthsTest, AreTheFactorsOfTheAverage) {
  const CharWidths widths(1000.0f);
  std::size_t checked = 0;
  for (const WidthRow& row : kWidthRows) {
    for (std::size_t i = 0; i < row.thousandths.size(); ++i, ++checked) {
      EXPECT_EQ(widths.of(row.characters[i]), row.thousandths[i]) << row.characters[i];
      EXPECT_EQ(widths.of(static_cast<char16_t>(row.characters[i])), row.thousandths[i]) << row.characters[i];
    }
  }
  EXPECT_EQ(checked, 95u);
  EXPECT_EQ(widths.perPoint(), 1);
}

TEST(CharWidthsTest, AreTrueWidthsInThousandthsOfAPoint) {
  scrivalen::pdf::AdvanceWidths advances{};
  advances.front() = 250;
  advances.back() = 500;
  const CharWidths widths(advances, 12);
  EXPECT_EQ(widths.perPoint(), 1000);
  EXPECT_EQ(widths.of(' '), 3000);
  EXPECT_EQ(widths.of('\xFF'), 6000);
  EXPECT_EQ(widths.of('!'), 0);
  EXPECT_EQ(widths.of('\x1F'), 0);
  EXPECT_EQ(CharWidths(advances, -12).of(' '), -3000);
  EXPECT_EQ(CharWidths(advances, 2147483647).of(' '), 2147483647);
}

TEST(CharWidthsTest, AreTheAverageForAllOtherCodes) {
  const CharWidths widths(1000.0f);
  for (const char16_t unit :
       {u'\t', u'\n', u'\x1F', u'\x7F', u'\x80', u'\xE9', u'\xFF', u'\x100', u'\x20AC', u'\xD83D'}) {
    EXPECT_EQ(widths.of(unit), 1000) << static_cast<int>(unit);
  }
  EXPECT_EQ(widths.of('\xE9'), 1000);
}

TEST(CharWidthsTest, AreTruncatedAfterAHalfIsAdded) {
  // 12 / 2.01 = 5.97: x 6.25, i 3.47, a 5.55, @ 11.51, | 2.50.
  const CharWidths widths(static_cast<float>(12 / 2.01));
  EXPECT_EQ(widths.of('x'), 6);
  EXPECT_EQ(widths.of('i'), 3);
  EXPECT_EQ(widths.of('a'), 6);
  EXPECT_EQ(widths.of('@'), 12);
  EXPECT_EQ(widths.of('|'), 3);
}

TEST(CharWidthsTest, AreTruncatedTowardsZeroWhenNegative) {
  // -5.97: x -6.25 + 0.5 is -5.75, i -3.47 + 0.5 is -2.97, | -2.50 + 0.5 is -2.0015.
  const CharWidths widths(static_cast<float>(-12 / 2.01));
  EXPECT_EQ(widths.of('x'), -5);
  EXPECT_EQ(widths.of('i'), -2);
  EXPECT_EQ(widths.of('|'), -2);
  EXPECT_EQ(CharWidths(0.0f).of('x'), 0);
}

TEST(CharWidthsTest, UseAFloatAverageAndADoubleProduct) {
  // 1.005 / 2.01 is a half: 15 times that is 7.5, but less with the average as a float.
  EXPECT_EQ(CharWidths(static_cast<float>(15 / 2.01)).of('{'), 7);
}

TEST(LineBreaking, MeasuresBracesInOddSizes) {
  const auto lines = [](int size, const std::wstring& text) {
    return madeInTimes([&](CPDFdoc& doc) {
             doc.FontSize(size);
             paragraph(doc, text.c_str());
           })
        .texts(1);
  };
  // 73 x 7 = 511, 102 x 5 = 510.
  EXPECT_EQ(lines(15, std::wstring(80, L'{')), (Texts{std::string(73, '{'), std::string(7, '{')}));
  EXPECT_EQ(lines(11, std::wstring(110, L'}')), (Texts{std::string(102, '}'), std::string(8, '}')}));
}

TEST(LineBreaking, KeepsTextThatFitsOnOneLine) { EXPECT_EQ(linesOf(wideXs(85)), Texts{xs(85)}); }

TEST(LineBreaking, CutsAWordThatIsLongerThanTheLine) {
  EXPECT_EQ(linesOf(wideXs(86)), (Texts{xs(85), "x"}));
  EXPECT_EQ(linesOf(wideXs(200)), (Texts{xs(85), xs(85), xs(30)}));
}

TEST(LineBreaking, WrapsACharacterThatReachesTheFullWidth) {
  // 103 x 5 = 515.
  const std::string js(102, 'J');
  EXPECT_EQ(linesOf(std::wstring(102, L'J')), Texts{js});
  EXPECT_EQ(linesOf(std::wstring(103, L'J')), (Texts{js, "J"}));
}

TEST(LineBreaking, MeasuresByTheFontAndItsSize) {
  const auto lines = [](const std::function<void(CPDFdoc&)>& choose) {
    return madeInTimes([&](CPDFdoc& doc) {
             choose(doc);
             paragraph(doc, wideXs(90).c_str());
           })
        .texts(1);
  };
  // 12 / 1.93 x 1.047 + 0.5 = 7.01: 73 x 7 = 511.
  EXPECT_EQ(lines([](CPDFdoc& doc) { doc.BoldOn(); }), (Texts{xs(73), xs(17)}));
  // 40 / 2.01 x 1.047 + 0.5 = 21.3: 24 x 21 = 504.
  EXPECT_EQ(lines([](CPDFdoc& doc) { doc.FontSize(40); }), (Texts{xs(24), xs(24), xs(24), xs(18)}));
  // An unknown font: 12 x 2 / 3 x 1.047 + 0.5 = 8.88: 64 x 8 = 512.
  EXPECT_EQ(lines([](CPDFdoc& doc) { doc.FontNo(9); }), (Texts{xs(64), xs(26)}));
  // Courier: 12 / 1.45 x 1.047 + 0.5 = 9.16: 57 x 9 = 513.
  EXPECT_EQ(lines([](CPDFdoc& doc) {
              doc.AddFont(2, PDF_COURIER);
              doc.FontNo(2);
            }),
            (Texts{xs(57), xs(33)}));
}

TEST(LineBreaking, HasALongerLineInLandscape) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { paragraph(doc, wideXs(130).c_str()); }, kWide);
  EXPECT_EQ(pdf.texts(1), (Texts{xs(126), xs(4)}));
}

TEST(LineBreaking, MeasuresEachHalfOfASurrogatePair) {
  // 42 pairs are 504 points, half a pair more is 510, the other half does not fit.
  std::wstring text;
  std::string shown;
  for (int i = 0; i < 43; ++i) {
    text += grin();
    shown += std::string("\x3D\0", 2);
  }
  const MadePdf pdf = madeInTimes([&](CPDFdoc& doc) { paragraph(doc, text.c_str()); });
  EXPECT_EQ(pdf.texts(1), (Texts{shown.substr(0, 85), shown.substr(85)}));
}

TEST(LineBreaking, PositionsEachLineSeparately) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { paragraph(doc, L"one\ntwo"); });
  EXPECT_EQ(pdf.content(1),
            "BT\n50 810 Td\n"
            "1 0 0 1 0 0 Tm\n0 802 Td\n"
            "1 0 0 1 0 0 Tm\n50 802 Td\n0 -8 Td\n/F1 12 Tf\n0.000000 0.000000 0.000000 rg\n(one)Tj\n0 -8 Td\n"
            "1 0 0 1 0 0 Tm\n50 786 Td\n0 -8 Td\n/F1 12 Tf\n0.000000 0.000000 0.000000 rg\n(two)Tj\n0 -8 Td\n"
            "ET\n");
}

TEST(LineBreaking, EndsALineAtALineFeed) {
  EXPECT_EQ(linesOf(L"a\nb"), (Texts{"a", "b"}));
  EXPECT_EQ(linesOf(L"a\n b"), (Texts{"a", " b"}));
  EXPECT_EQ(linesOf(L"a, b\nc d"), (Texts{"a, b", "c d"}));
}

TEST(LineBreaking, WritesABlankOnAnEmptyLine) {
  EXPECT_EQ(linesOf(L"\na"), (Texts{" ", "a"}));
  EXPECT_EQ(linesOf(L"a\n\nb"), (Texts{"a", " ", "b"}));
}

TEST(LineBreaking, WritesNothingAfterTheLastLineFeed) {
  EXPECT_EQ(linesOf(L"\n"), (Texts{" ", ""}));
  EXPECT_EQ(linesOf(L"a\n"), (Texts{"a", ""}));
  EXPECT_EQ(linesOf(L"\n\n"), (Texts{" ", " ", ""}));
}

TEST(LineBreaking, FindsALineFeedThatDoesNotFit) { EXPECT_EQ(linesOf(wideXs(85) + L"\ny"), (Texts{xs(85), "y"})); }

TEST(LineBreaking, WrapsBeforeALineFeedThatIsFurtherAway) {
  EXPECT_EQ(linesOf(wideXs(86) + L"\ny"), (Texts{xs(85), "x", "y"}));
  EXPECT_EQ(linesOf(L"a " + wideXs(85) + L"\ny"), (Texts{"a", xs(85), "y"}));
}

TEST(LineBreaking, EndsWithAnEmptyLineWhenNothingIsLeft) {
  // The blank does not fit (513 + 3), is left out, and nothing follows it.
  EXPECT_EQ(linesOf(wideXs(84) + L"iii "), (Texts{xs(84) + "iii", ""}));
}

struct Separator {
  wchar_t character;
  const char* atLineEnd;    // when it fits
  const char* atLineBegin;  // when it is the first character that does not fit
};

constexpr Separator kSeparators[] = {{L' ', "", ""},   {L'\t', "", "\t"}, {L',', ",", ","},
                                     {L'-', "-", "-"}, {L'.', ".", "."},  {L'/', "/", "/"}};

TEST(LineBreaking, BreaksAfterOrInsteadOfASeparator) {
  for (const Separator& separator : kSeparators) {
    EXPECT_EQ(linesOf(L"one" + std::wstring(1, separator.character) + wideXs(85)),
              (Texts{std::string("one") + separator.atLineEnd, xs(85)}))
        << separator.atLineBegin;
  }
}

TEST(LineBreaking, BreaksBeforeASeparatorThatDoesNotFit) {
  for (const Separator& separator : kSeparators) {
    EXPECT_EQ(linesOf(L"o n-e" + wideXs(80) + L"iii" + std::wstring(1, separator.character) + L"next"),
              (Texts{"o n-e" + xs(80) + "iii", separator.atLineBegin + std::string("next")}))
        << separator.atLineBegin;
  }
}

TEST(LineBreaking, DropsOneBlank) {
  const std::wstring full = wideXs(84) + L"iii";
  EXPECT_EQ(linesOf(full + L"  next"), (Texts{xs(84) + "iii", " next"}));
  EXPECT_EQ(linesOf(L"one  " + wideXs(85)), (Texts{"one ", xs(85)}));
}

TEST(LineBreaking, BreaksAtTheLastSeparatorThatFits) {
  EXPECT_EQ(linesOf(L"a/b.c,d-e\tf " + wideXs(85)), (Texts{"a/b.c,d-e\tf", xs(85)}));
  EXPECT_EQ(linesOf(L"a b\tc-d,e.f/" + wideXs(85)), (Texts{"a b\tc-d,e.f/", xs(85)}));
  EXPECT_EQ(linesOf(L"a b,c" + wideXs(84)), (Texts{"a b,", "c" + xs(84)}));
}

TEST(LineBreaking, BreaksAtNoOtherCharacter) {
  const std::wstring others =
      L"a;b:c_d+e\xA0"
      L"f=g\\h";
  EXPECT_EQ(linesOf(others + wideXs(80)).size(), 2u);
  EXPECT_EQ(linesOf(others + wideXs(80)).back().find_first_not_of('x'), std::string::npos);
}

TEST(LineBreaking, CutsAWordAfterALeadingSeparator) {
  // A blank and 85 x are 513 points, "-" and 85 x are 514.
  EXPECT_EQ(linesOf(L" " + wideXs(86)), (Texts{" " + xs(85), "x"}));
  EXPECT_EQ(linesOf(L"-" + wideXs(86)), (Texts{"-" + xs(85), "x"}));
}

TEST(LineBreaking, BreaksAfterASeparatorThatJustFits) {
  // The blank ends at 514 and is the last character that fits; without it, "-" is.
  EXPECT_EQ(linesOf(wideXs(84) + L"i- next"), (Texts{xs(84) + "i-", "next"}));
  EXPECT_EQ(linesOf(wideXs(84) + L"i-next"), (Texts{xs(84) + "i-", "next"}));
}

TEST(LineBreaking, WrapsProse) {
  EXPECT_EQ(
      linesOf(L"The quick brown fox jumps over the lazy dog. The quick brown fox jumps over the lazy dog. "
              L"The quick brown fox jumps over the lazy dog."),
      (Texts{"The quick brown fox jumps over the lazy dog. The quick brown fox jumps over the lazy dog. The quick",
             "brown fox jumps over the lazy dog."}));
}

// Columns of 2 points, and of no width.
class NarrowColumn : public testing::TestWithParam<int> {};

TEST_P(NarrowColumn, HoldsOneCharacterPerLine) {
  EXPECT_EQ(linesInColumn(GetParam(), L"abc"), (Texts{"a", "b", "c", ""}));
  EXPECT_EQ(linesInColumn(GetParam(), L"\x0141\x0141"), (Texts{"A", "A", ""}));
}

TEST_P(NarrowColumn, DropsABlankAfterACharacter) {
  EXPECT_EQ(linesInColumn(GetParam(), L"a b"), (Texts{"a", "b", ""}));
  EXPECT_EQ(linesInColumn(GetParam(), L"a  b"), (Texts{"a", "", "b", ""}));
}

TEST_P(NarrowColumn, HasAnEmptyLineForALeadingBlank) {
  EXPECT_EQ(linesInColumn(GetParam(), L" a"), (Texts{"", "a", ""}));
  EXPECT_EQ(linesInColumn(GetParam(), L" "), (Texts{"", ""}));
}

TEST_P(NarrowColumn, TreatsOtherSeparatorsAsCharacters) {
  EXPECT_EQ(linesInColumn(GetParam(), L"\t,-./"), (Texts{"\t", ",", "-", ".", "/", ""}));
}

TEST_P(NarrowColumn, EndsALineAtALeadingLineFeed) {
  EXPECT_EQ(linesInColumn(GetParam(), L"\n"), (Texts{" ", ""}));
  EXPECT_EQ(linesInColumn(GetParam(), L"a\nb"), (Texts{"a", " ", "b", ""}));
}

TEST_P(NarrowColumn, HasOneLineForAnEmptyText) { EXPECT_EQ(linesInColumn(GetParam(), L""), Texts{""}); }

INSTANTIATE_TEST_SUITE_P(Columns, NarrowColumn, testing::Values(200, 515, 516, 600));

TEST(LineBreaking, BreaksInAColumn) {
  // 515 / 5 = 103 points: 17 x are 102.
  EXPECT_EQ(linesInColumn(5, wideXs(18).c_str()), (Texts{xs(17), "x"}));
  EXPECT_EQ(linesInColumn(5, L"xxxxx xxxxx xxxxx xxxxx"), (Texts{"xxxxx xxxxx xxxxx", "xxxxx"}));
}

TEST(LineBreaking, FitsEverythingInSizeZero) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.FontSize(0);
    paragraph(doc, (wideXs(300) + L"\n ").c_str());
  });
  EXPECT_EQ(pdf.content(1),
            "BT\n50 810 Td\n"
            "1 0 0 1 0 0 Tm\n0 810 Td\n"
            "1 0 0 1 0 0 Tm\n50 810 Td\n0 -0 Td\n/F1 0 Tf\n0.000000 0.000000 0.000000 rg\n(" +
                xs(300) +
                ")Tj\n0 -0 Td\n"
                "1 0 0 1 0 0 Tm\n50 810 Td\n0 -0 Td\n/F1 0 Tf\n0.000000 0.000000 0.000000 rg\n( )Tj\n"
                "0 -0 Td\nET\n");
}

TEST(LineBreaking, FitsNothingOfSizeZeroInAColumnWithoutWidth) {
  EXPECT_EQ(linesInColumn(600, L"ab", 0), (Texts{"a", "b", ""}));
  EXPECT_EQ(linesInColumn(600, L"", 0), Texts{""});
}

TEST(LineBreaking, FitsEverythingOfNegativeSizeAndGrowsUpward) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.FontSize(-12);
    paragraph(doc, (wideXs(300) + L"\ny").c_str());
    doc.FontSize(-1);
    paragraph(doc, L"z");
  });
  EXPECT_EQ(pdf.content(1),
            "BT\n50 810 Td\n"
            "1 0 0 1 0 0 Tm\n0 818 Td\n"
            "1 0 0 1 0 0 Tm\n50 818 Td\n0 --8 Td\n/F1 -12 Tf\n0.000000 0.000000 0.000000 rg\n(" +
                xs(300) +
                ")Tj\n0 --8 Td\n"
                "1 0 0 1 0 0 Tm\n50 834 Td\n0 --8 Td\n/F1 -12 Tf\n0.000000 0.000000 0.000000 rg\n"
                "(y)Tj\n0 --8 Td\n"
                "1 0 0 1 0 0 Tm\n0 850 Td\n"
                "1 0 0 1 0 0 Tm\n50 850 Td\n0 -0 Td\n/F1 -1 Tf\n0.000000 0.000000 0.000000 rg\n"
                "(z)Tj\n0 -0 Td\nET\n");
}

TEST(LineBreaking, FitsEverythingOfNegativeSizeInAColumnWithoutWidth) {
  EXPECT_EQ(linesInColumn(600, L"abc", -12), Texts{"abc"});
  EXPECT_EQ(linesInColumn(600, L"", -12), Texts{""});
}

TEST(LineBreaking, TruncatesTheStepsTowardsZero) {
  // Two thirds of 1, 2, 8 and 20 are 0, 1, 5 and 13.
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    for (const int size : {1, 2, 8, 20}) {
      doc.FontSize(size);
      paragraph(doc, L"a");
    }
  });
  EXPECT_EQ(pdf.content(1),
            "BT\n50 810 Td\n"
            "1 0 0 1 0 0 Tm\n0 810 Td\n"
            "1 0 0 1 0 0 Tm\n50 810 Td\n0 -0 Td\n/F1 1 Tf\n0.000000 0.000000 0.000000 rg\n(a)Tj\n0 -0 Td\n"
            "1 0 0 1 0 0 Tm\n0 809 Td\n"
            "1 0 0 1 0 0 Tm\n50 809 Td\n0 -1 Td\n/F1 2 Tf\n0.000000 0.000000 0.000000 rg\n(a)Tj\n0 -1 Td\n"
            "1 0 0 1 0 0 Tm\n0 802 Td\n"
            "1 0 0 1 0 0 Tm\n50 802 Td\n0 -5 Td\n/F1 8 Tf\n0.000000 0.000000 0.000000 rg\n(a)Tj\n0 -5 Td\n"
            "1 0 0 1 0 0 Tm\n0 779 Td\n"
            "1 0 0 1 0 0 Tm\n50 779 Td\n0 -13 Td\n/F1 20 Tf\n0.000000 0.000000 0.000000 rg\n(a)Tj\n0 -13 Td\n"
            "ET\n");
}

TEST(LineBreaking, BreaksThePageAtFourThirdsOfTheSize) {
  // In size 8 a paragraph takes 5 + 10: 51 of them go from 810 to 45. The next gap ends at 40 and its line at 30.
  const auto written = [](int count) {
    return madeInTimes([&](CPDFdoc& doc) {
      doc.FontSize(8);
      paragraphs(doc, count);
    });
  };
  EXPECT_EQ(written(52).pageCount(), 1u);
  EXPECT_EQ(written(53).pageCount(), 2u);
}

}  // namespace
