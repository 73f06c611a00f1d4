#include "formats/xlsx/excel_style.h"

#include <gtest/gtest.h>

#include <vector>

using namespace scrivalen;

namespace {

struct Reading {
  SheetStyle style;
  std::vector<std::wstring> problems;
};

Reading reading(std::wstring_view text) {
  Reading result;
  result.style = readStyle(text, [&result](const std::wstring& problem) { result.problems.push_back(problem); });
  return result;
}

SheetStyle cleanly(std::wstring_view text) {
  const Reading result = reading(text);
  EXPECT_TRUE(result.problems.empty()) << result.problems.size();
  return result.style;
}

std::vector<std::wstring> problemsOf(std::wstring_view text) { return reading(text).problems; }

}  // namespace

TEST(ExcelStyle, IsEmptyForAnEmptyText) {
  for (const wchar_t* text : {L"", L" \r\n", L"/* nothing */", L"cell{}bold { ; ;}"}) {
    const SheetStyle style = cleanly(text);
    EXPECT_FALSE(style.cell.fontFamily || style.cell.fontSize || style.cell.color || style.cell.background);
    EXPECT_FALSE(style.bold.fontFamily || style.bold.fontSize || style.bold.color || style.bold.background);
    EXPECT_FALSE(style.columnWidth);
    EXPECT_EQ(style.frozenRows, 0u);
  }
}

TEST(ExcelStyle, HasARuleForEachKindOfCell) {
  const SheetStyle style = cleanly(
      L"cell { font-family: Arial; font-size: 9.5pt; color: #102030; background-color: white }\n"
      L"bold { font-family: 'Courier New'; font-size: 12; color: white; background-color: navy; }");
  EXPECT_EQ(style.cell.fontFamily, L"Arial");
  EXPECT_EQ(style.cell.fontSize, 9.5);
  EXPECT_EQ(style.cell.color, Rgb{0x102030});
  EXPECT_EQ(style.cell.background, Rgb{0xFFFFFF});
  EXPECT_EQ(style.bold.fontFamily, L"Courier New");
  EXPECT_EQ(style.bold.fontSize, 12);
  EXPECT_EQ(style.bold.color, Rgb{0xFFFFFF});
  EXPECT_EQ(style.bold.background, Rgb{0x000080});
}

TEST(ExcelStyle, OfTheSheetIsTheDefaultForAllCells) {
  const SheetStyle style = cleanly(L"bold{font-size:14} sheet{font-family:\"Liberation Sans\", Arial; font-size:10}");
  EXPECT_EQ(style.cell.fontFamily, L"Liberation Sans");
  EXPECT_EQ(style.cell.fontSize, 10);
  EXPECT_EQ(style.bold.fontFamily, L"Liberation Sans");
  EXPECT_EQ(style.bold.fontSize, 14);
}

TEST(ExcelStyle, OfTheSheetSetsColumnWidthAndFrozenRows) {
  const SheetStyle style = cleanly(L"sheet { column-width: 12.5; freeze-rows: 2 }");
  EXPECT_EQ(style.columnWidth, 12.5);
  EXPECT_EQ(style.frozenRows, 2u);
}

TEST(ExcelStyle, UsesTheLastDeclaration) {
  const SheetStyle style = cleanly(L"cell{color:red;color:blue} cell{font-size:8}");
  EXPECT_EQ(style.cell.color, Rgb{0x0000FF});
  EXPECT_EQ(style.cell.fontSize, 8);
}

TEST(ExcelStyle, IgnoresCaseAndComments) {
  const SheetStyle style = cleanly(L"/* a { } */ CELL /* b */ { COLOR : /* c; } */ Red /* open");
  EXPECT_EQ(style.cell.color, Rgb{0xFF0000});
}

TEST(ExcelStyle, DoesNotSplitQuotedText) {
  EXPECT_EQ(cleanly(L"cell { font-family: \"A;B}C,D\", serif; font-size: 8 }").cell.fontFamily, L"A;B}C,D");
}

TEST(ExcelStyle, AppliesWhatItUnderstandsAndReportsTheRest) {
  const Reading result = reading(
      L"table { color: red } cell { border: 1px; color red; color: reddish; font-size: 0; background-color: yellow }"
      L" bold { column-width: 5; font-size: 500 } sheet { column-width: wide; freeze-rows: -1 } } tail");
  EXPECT_EQ(result.style.cell.background, Rgb{0xFFFF00});
  EXPECT_EQ(result.problems,
            (std::vector<std::wstring>{L"there is no rule 'table'", L"'cell' has no 'border'",
                                       L"'color red' is no declaration", L"'reddish' is no value for 'color'",
                                       L"'0' is no value for 'font-size'", L"'bold' has no 'column-width'",
                                       L"'500' is no value for 'font-size'", L"'wide' is no value for 'column-width'",
                                       L"'-1' is no value for 'freeze-rows'", L"'' is no rule", L"'tail' is no rule"}));
}

TEST(ExcelStyle, MayEndAnywhere) {
  const std::wstring text = L"cell { color: red; font-family: \"Arial\" }";
  for (std::size_t length = 0; length < text.size(); ++length) {
    const Reading result = reading(text.substr(0, length));
    EXPECT_EQ(result.style.cell.color.has_value(), length >= 17) << length;
  }
}

TEST(ExcelStyle, RefusesInvalidFontNames) {
  EXPECT_EQ(problemsOf(L"cell{font-family:}"), std::vector<std::wstring>{L"'' is no value for 'font-family'"});
  EXPECT_EQ(problemsOf(L"cell{font-family:<b>}"), std::vector<std::wstring>{L"'<b>' is no value for 'font-family'"});
  EXPECT_EQ(problemsOf(L"cell{font-family:" + std::wstring(31, L'x') + L"}").size(), 0u);
  EXPECT_EQ(problemsOf(L"cell{font-family:" + std::wstring(32, L'x') + L"}").size(), 1u);
  for (const std::wstring name : {L"A\x01Z", L"A\uFFFE", L"A\uFFFF", L"A\nB"}) {
    EXPECT_EQ(problemsOf(L"cell{font-family:" + name + L"}").size(), 1u) << name;
  }
}

TEST(ExcelStyle, RefusesInvalidNumbers) {
  for (const wchar_t* text : {L"cell{font-size:12px}", L"cell{font-size:nan}", L"cell{font-size:1e9}",
                              L"cell{font-size:12,5}", L"sheet{column-width:256}", L"sheet{column-width:inf}"}) {
    EXPECT_EQ(problemsOf(text).size(), 1u) << text;
  }
}

TEST(ExcelStyle, RefusesFractionsOfFrozenRows) {
  const Reading half = reading(L"sheet{freeze-rows:1.5; column-width:12.5} cell{font-size:8}");
  EXPECT_EQ(half.problems, std::vector<std::wstring>{L"'1.5' is no value for 'freeze-rows'"});
  EXPECT_EQ(half.style.frozenRows, 0u);
  EXPECT_EQ(half.style.columnWidth, 12.5);
  EXPECT_EQ(half.style.cell.fontSize, 8);
  EXPECT_EQ(reading(L"sheet{freeze-rows:2; freeze-rows:0.5}").style.frozenRows, 2u);
  EXPECT_EQ(cleanly(L"sheet{freeze-rows:1.0}").frozenRows, 1u);
  EXPECT_EQ(cleanly(L"sheet{freeze-rows:0}").frozenRows, 0u);
  EXPECT_EQ(cleanly(L"sheet{freeze-rows:1000}").frozenRows, 1000u);
  EXPECT_EQ(problemsOf(L"sheet{freeze-rows:1001}").size(), 1u);
}

TEST(ExcelStyle, IsAppliedDespiteByteOrderMarks) {
  const std::vector<std::wstring> problem{L"a byte-order mark is no part of a style sheet"};
  for (const wchar_t* text : {L"\uFEFFcell{color:red}", L" \uFEFF\r\ncell{color:red}", L"cell{\uFEFFcolor:\uFEFFred}",
                              L"bold{}\uFEFFcell{color:red}\uFEFF"}) {
    const Reading result = reading(text);
    EXPECT_EQ(result.problems, problem) << text;
    EXPECT_EQ(result.style.cell.color, Rgb{0xFF0000}) << text;
  }
  EXPECT_EQ(problemsOf(L"\uFEFF"), problem);
  EXPECT_EQ(problemsOf(L"/* \uFEFF */"), std::vector<std::wstring>{});
}

TEST(ExcelStyle, RefusesWidthsThatHideTheColumns) {
  EXPECT_EQ(problemsOf(L"sheet{column-width:0}"), std::vector<std::wstring>{L"'0' is no value for 'column-width'"});
  EXPECT_EQ(problemsOf(L"sheet{column-width:0.9}").size(), 1u);
  EXPECT_EQ(reading(L"sheet{column-width:0}").style.columnWidth, std::nullopt);
  EXPECT_EQ(cleanly(L"sheet{column-width:1}").columnWidth, 1);
}

TEST(CellColorText, FillsTheCell) {
  const CellColors colors = readColors(L"red");
  EXPECT_EQ(colors.color, std::nullopt);
  EXPECT_EQ(colors.background, Rgb{0xFF0000});
  EXPECT_TRUE(colors.isUnderstood);
}

TEST(CellColorText, SetsTheFontColourBeforeASemicolon) {
  const CellColors both = readColors(L" #112233 ; Yellow ");
  EXPECT_EQ(both.color, Rgb{0x112233});
  EXPECT_EQ(both.background, Rgb{0xFFFF00});
  const CellColors font = readColors(L"red;");
  EXPECT_EQ(font.color, Rgb{0xFF0000});
  EXPECT_EQ(font.background, std::nullopt);
  const CellColors fill = readColors(L";red");
  EXPECT_EQ(fill.color, std::nullopt);
  EXPECT_EQ(fill.background, Rgb{0xFF0000});
  EXPECT_TRUE(both.isUnderstood && font.isUnderstood && fill.isUnderstood);
}

TEST(CellColorText, IgnoresUnknownNames) {
  const CellColors one = readColors(L"blurple");
  EXPECT_FALSE(one.color || one.background || one.isUnderstood);
  const CellColors half = readColors(L"blurple;red");
  EXPECT_EQ(half.color, std::nullopt);
  EXPECT_EQ(half.background, Rgb{0xFF0000});
  EXPECT_FALSE(half.isUnderstood);
  EXPECT_FALSE(readColors(L"red;blue;green").background);
}
