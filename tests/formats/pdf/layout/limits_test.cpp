#include "formats/pdf/layout/made_pdf.h"
#include "formats/pdf/layout/text_buffer.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace {

using namespace scrivalen::test;

using Strings = std::vector<std::string>;

constexpr std::size_t kMillion = 1000000;

void textInColumn(CPDFdoc& doc, int columns, const std::wstring& text) {
  doc.BeginTable();
  doc.BeginRow(columns);
  doc.BeginCell(kWhiteCell);
  doc.write(text.c_str());
}

// 85 letters fit on a line and 48 lines on a page: 11,765 lines are 245 pages and 5 lines.
TEST(PdfLimits, AllowAMillionCharactersWithoutABlank) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { paragraph(doc, std::wstring(kMillion, L'x').c_str()); });
  ASSERT_EQ(pdf.pageCount(), 246u);
  EXPECT_EQ(pdf.texts(1), Strings(48, std::string(85, 'x')));
  EXPECT_EQ(pdf.texts(245), Strings(48, std::string(85, 'x')));
  EXPECT_EQ(pdf.texts(246).size(), 5u);
  EXPECT_EQ(pdf.texts(246).back(), std::string(60, 'x'));
}

// The buffer grows by a piece of the text at a time; a non-ASCII letter may be on either side of a boundary.
TEST(PdfLimits, AllowAMillionLettersOfAnotherAlphabet) {
  scrivalen::pdf::TextBuffer text;
  EXPECT_EQ(text.appendWinAnsi(std::wstring(kMillion, L'\x0416')).count(), kMillion);
  EXPECT_EQ(text.bytes(), std::string(kMillion, '?'));
  for (std::size_t place = 250; place < 262; ++place) {
    std::wstring given(600, L'a');
    std::string expected(600, 'a');
    given[place] = L'\xE9';
    expected[place] = '\xE9';
    text.clear();
    EXPECT_EQ(text.appendWinAnsi(given).count(), 0u);
    EXPECT_EQ(text.bytes(), expected) << place;
  }
}

// Both trials and the row itself break the page 245 times.
TEST(PdfLimits, AllowAMillionCharactersInACell) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { textInColumn(doc, 1, std::wstring(kMillion, L'x')); });
  EXPECT_EQ(pdf.pageCount(), 1 + 3 * 245u);
  EXPECT_EQ(pdf.texts(pdf.pageCount()).back(), std::string(60, 'x'));
}

// 20,001 lines, the last of them empty: 416 page breaks, three times.
TEST(PdfLimits, AllowALongTextInAColumnNarrowerThanACharacter) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) { textInColumn(doc, 200, std::wstring(20000, L'x')); });
  EXPECT_EQ(pdf.pageCount(), 1 + 3 * 416u);
  EXPECT_EQ(pdf.texts(pdf.pageCount()).size(), 20001u - 416 * 48);
}

TEST(PdfLimits, AllowTenThousandLineEnds) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.Paragraf(0);
    for (int i = 0; i < 10000; ++i) {
      doc.LineBreak();
    }
  });
  // 10,001 lines: 208 pages and 17 lines.
  ASSERT_EQ(pdf.pageCount(), 209u);
  EXPECT_EQ(pdf.texts(1), Strings(48, " "));
  Strings last(16, " ");
  last.push_back("");
  EXPECT_EQ(pdf.texts(209), last);
}

TEST(PdfLimits, AllowATableOfTwoHundredColumns) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.BeginTable();
    for (int i = 0; i < 30; ++i) {
      row(doc, std::vector<const wchar_t*>(200, L"abc"));
    }
  });
  // A row of four lines is 64 high: twelve on a page.
  ASSERT_EQ(pdf.pageCount(), 3u);
  EXPECT_EQ(pdf.frames(1).size(), 12 * 200u);
  EXPECT_EQ(pdf.frames(3).size(), 6 * 200u);
  EXPECT_EQ(pdf.texts(3).size(), 6 * 200 * 4u);
}

MadePdf rowOf(int columns, PdfSetting setting = kClassic) {
  return madeInTimes(
      [columns](CPDFdoc& doc) {
        doc.BeginTable();
        doc.BeginRow(columns);
        doc.BeginCell(kWhiteCell);
        doc.write(L"");
      },
      setting);
}

TEST(PdfLimits, AllowAsManyColumnsAsPoints) {
  EXPECT_EQ(rowOf(515).frames(1).size(), 515u);
  EXPECT_EQ(rowOf(515).frames(1).back(), "564 789 1 16");
  EXPECT_EQ(rowOf(760, kWide).frames(1).size(), 760u);
  EXPECT_EQ(rowOf(760, kWide).frames(1).back(), "809 544 1 16");
}

TEST(PdfLimits, PutColumnsWithoutWidthInOnePlace) {
  EXPECT_EQ(rowOf(516).frames(1), Strings(516, "50 789 0 16"));
  EXPECT_EQ(rowOf(761, kWide).frames(1), Strings(761, "50 544 0 16"));
  EXPECT_EQ(rowOf(1000).frames(1), Strings(1000, "50 789 0 16"));
}

TEST(PdfLimits, DrawAtMostAThousandEmptyColumns) {
  for (const int columns : {1001, 70000, std::numeric_limits<int>::max()}) {
    EXPECT_EQ(rowOf(columns).frames(1), Strings(1000, "50 789 0 16")) << columns;
    EXPECT_EQ(rowOf(columns, kConforming).frames(1), Strings(1000, "50 789 0 16")) << columns;
  }
}

TEST(PdfLimits, AllowARowWithoutColumns) {
  for (const int columns : {0, -1, -516, std::numeric_limits<int>::min()}) {
    const MadePdf pdf = rowOf(columns);
    EXPECT_EQ(pdf.content(1), "BT\n50 810 Td\n1 0 0 1 0 0 Tm\n0 802 Td\nET\n0.0 0.0 0.0 RG\nBT\nET\n") << columns;
  }
}

TEST(PdfLimits, AllowMoreCellsThanPoints) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.BeginTable();
    doc.BeginRow(70000);
    for (int i = 0; i < 66000; ++i) {
      doc.BeginCell(kWhiteCell);
      doc.EndCell();
    }
    doc.BeginCell(kWhiteCell);
    doc.write(L"");
  });
  EXPECT_EQ(pdf.frames(1), Strings(66001, "50 789 0 16"));
  EXPECT_TRUE(
      pdf.content(1).ends_with("BT\n1 0 0 1 0 0 Tm\n51 802 Td\n0 -8 Td\n/F1 12 Tf\n"
                               "0.000000 0.000000 0.000000 rg\n()Tj\n0 -8 Td\nET\n"));
}

// 97 gaps of 8 on the first page; every later page begins with a table without a gap.
TEST(PdfLimits, AllowAThousandEmptyTables) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    for (int i = 0; i < 1000; ++i) {
      doc.BeginTable();
      doc.EndTable();
    }
  });
  EXPECT_EQ(pdf.pageCount(), 11u);
}

TEST(PdfLimits, AllowTheLargestFont) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.FontSize(std::numeric_limits<int>::max());
    paragraph(doc, L"ab");
  });
  // Neither the gap nor a line fits on any page: one page is for the gap, and one for each letter and the empty rest.
  ASSERT_EQ(pdf.pageCount(), 5u);
  EXPECT_EQ(pdf.content(3),
            "BT\n50 810 Td\n1 0 0 1 0 0 Tm\n50 810 Td\n0 -1431655764 Td\n/F1 2147483647 Tf\n"
            "0.000000 0.000000 0.000000 rg\n(a)Tj\n0 -1431655764 Td\nET\n");
}

TEST(PdfLimits, AllowTheSmallestFont) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.FontSize(std::numeric_limits<int>::min());
    paragraph(doc, L"ab");
  });
  EXPECT_EQ(pdf.content(1),
            "BT\n50 810 Td\n1 0 0 1 0 0 Tm\n0 1431656575 Td\n"
            "1 0 0 1 0 0 Tm\n50 1431656575 Td\n0 --1431655765 Td\n/F1 -2147483648 Tf\n"
            "0.000000 0.000000 0.000000 rg\n(ab)Tj\n0 --1431655765 Td\nET\n");
}

TEST(PdfLimits, AllowColoursThatAreNotNumbers) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    doc.ColorOn({std::numeric_limits<double>::quiet_NaN(), kInfinite, -kInfinite});
    paragraph(doc, L"a");
    doc.ColorOn({-0.0, 1e300, -1e-9});
    paragraph(doc, L"b");
  });
  const std::string digits = std::to_string(1e300);
  EXPECT_EQ(digits.size(), 308u);
  EXPECT_NE(pdf.content(1).find("\nnan inf -inf rg\n(a)Tj\n"), std::string::npos);
  EXPECT_NE(pdf.content(1).find("\n-0.000000 " + digits + " -0.000000 rg\n(b)Tj\n"), std::string::npos);
}

// Each piece has a character of more than one byte, so that the text before it is stored as code units.
TEST(PdfLimits, AllowWideTextAroundOutlineEntries) {
  const auto fill = [](CPDFdoc& doc) {
    doc.Paragraf(0);
    for (int i = 0; i < 1000; ++i) {
      doc.write(L"a\x0141");
      doc.AddOutlineItem(i % 2 ? L"x" : L"\x0142", L"", 0);
      doc.write(L"b");
    }
    doc.AddOutlineItem(L"end", L"", 0);
  };
  const MadePdf pdf = madeInTimes(fill);
  std::string all;
  for (const std::string& line : pdf.texts(1)) {
    all += line;
  }
  std::string expected;
  for (int i = 0; i < 1000; ++i) {
    expected += "aAb";  // the low byte of U+0141
  }
  EXPECT_EQ(all, expected);
  EXPECT_TRUE(pdf.outline().starts_with("1001 entries\nB to object 0 at 0 0\nx to object 0 at 0 0\n"));
  EXPECT_EQ(madeInTimes(fill, kConforming).texts(1).front().substr(0, 6), "aLbaLb");
}

TEST(PdfLimits, AllowNullTexts) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.write(nullptr);
    doc.Paragraf(0);
    doc.write(nullptr);
    doc.BookMark(nullptr);
    doc.HyperLink(nullptr, nullptr);
    doc.AddOutlineItem(nullptr, nullptr, 0);
  });
  EXPECT_EQ(pdf.texts(1), Strings{});
  EXPECT_EQ(pdf.links(), Strings{"page 1 [50 802 565 802] to page 1 at 50 802"});
  EXPECT_EQ(pdf.outline(), "1 entries\nuntitled to page 1 at 50 802\n");
}

}  // namespace
