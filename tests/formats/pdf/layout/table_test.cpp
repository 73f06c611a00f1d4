#include "formats/pdf/layout/made_pdf.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

using namespace scrivalen::test;

using Strings = std::vector<std::string>;

// This number of lines, "1\n2\n...".
std::wstring numberedLines(int count) {
  std::wstring text = L"1";
  for (int i = 2; i <= count; ++i) {
    text += L"\n" + std::to_wstring(i);
  }
  return text;
}

MadePdf withTable(const std::function<void(CPDFdoc&)>& rows, int paragraphsAbove = 0) {
  return madeInTimes([&](CPDFdoc& doc) {
    paragraphs(doc, paragraphsAbove);
    doc.BeginTable();
    rows(doc);
    doc.EndTable();
  });
}

TEST(PdfTable, DrawsItsFramesBeforeItsTexts) {
  const MadePdf pdf = withTable([](CPDFdoc& doc) { row(doc, {L"a", L"b"}); });
  EXPECT_EQ(pdf.content(1),
            "BT\n"
            "50 810 Td\n"
            "1 0 0 1 0 0 Tm\n"
            "0 802 Td\n"
            "ET\n"
            "0.0 0.0 0.0 RG\n"
            "1.000000 1.000000 1.000000 rg\n"
            "50 789 257 16 re\n"
            "F\n"
            "50 789 257 16 re\n"
            "S\n"
            "1.000000 1.000000 1.000000 rg\n"
            "307 789 257 16 re\n"
            "F\n"
            "307 789 257 16 re\n"
            "S\n"
            "BT\n"
            "1 0 0 1 0 0 Tm\n"
            "51 802 Td\n"
            "0 -8 Td\n"
            "/F1 12 Tf\n"
            "0.000000 0.000000 0.000000 rg\n"
            "(a)Tj\n"
            "0 -8 Td\n"
            "1 0 0 1 0 0 Tm\n"
            "308 802 Td\n"
            "0 -8 Td\n"
            "/F1 12 Tf\n"
            "0.000000 0.000000 0.000000 rg\n"
            "(b)Tj\n"
            "0 -8 Td\n"
            "ET\n");
}

TEST(PdfTable, FillsEachCellWithItsColour) {
  const MadePdf pdf = withTable([](CPDFdoc& doc) {
    doc.BeginRow(2);
    doc.BeginCell({0.25, 0.5, 0.75});
    doc.EndCell();
    doc.BeginCell({1, 0, 1.0 / 3});
    doc.EndCell();
    doc.EndRow();
  });
  EXPECT_EQ(pdf.content(1),
            "BT\n50 810 Td\n1 0 0 1 0 0 Tm\n0 802 Td\n"
            "ET\n0.0 0.0 0.0 RG\n"
            "0.250000 0.500000 0.750000 rg\n50 805 257 0 re\nF\n50 805 257 0 re\nS\n"
            "1.000000 0.000000 0.333333 rg\n307 805 257 0 re\nF\n307 805 257 0 re\nS\n"
            "BT\nET\n");
}

TEST(PdfTable, DrawsOnlyAFrameForColumnsWithoutACell) {
  const MadePdf pdf = withTable([](CPDFdoc& doc) {
    doc.BeginRow(3);
    doc.BeginCell({0, 0, 1});
    doc.write(L"");
    doc.EndCell();
    doc.EndRow();
  });
  EXPECT_EQ(pdf.content(1),
            "BT\n50 810 Td\n1 0 0 1 0 0 Tm\n0 802 Td\n"
            "ET\n0.0 0.0 0.0 RG\n"
            "0.000000 0.000000 1.000000 rg\n50 789 171 16 re\nF\n50 789 171 16 re\nS\n"
            "221 789 171 16 re\nS\n"
            "392 789 171 16 re\nS\n"
            "BT\n"
            "1 0 0 1 0 0 Tm\n51 802 Td\n0 -8 Td\n/F1 12 Tf\n0.000000 0.000000 0.000000 rg\n()Tj\n0 -8 Td\n"
            "ET\n");
}

TEST(PdfTable, IsAsTallAsItsTallestCell) {
  const MadePdf pdf = withTable([](CPDFdoc& doc) {
    row(doc, {L"a", L"b\nc\nd", L"e\nf"});
    row(doc, {L"g"});
  });
  // 802 - 3 x 16 = 754.
  EXPECT_EQ(pdf.frames(1), (Strings{"50 757 171 48", "221 757 171 48", "392 757 171 48", "50 741 515 16"}));
  EXPECT_EQ(pdf.texts(1), (Strings{"a", "b", "c", "d", "e", "f", "g"}));
}

TEST(PdfTable, UsesTheStyleOfEachCell) {
  const MadePdf pdf = withTable([](CPDFdoc& doc) {
    doc.BeginRow(2);
    doc.BeginCell(kWhiteCell);
    doc.FontSize(20);
    doc.write(L"a");
    doc.EndCell();
    doc.BeginCell(kWhiteCell);
    doc.BoldOn();
    doc.FontSize(8);
    doc.ColorOn({1, 0, 0});
    doc.write(L"b");
  });
  EXPECT_EQ(pdf.frames(1), (Strings{"50 779 257 26", "307 779 257 26"}));
  EXPECT_TRUE(pdf.content(1).ends_with(
      "BT\n"
      "1 0 0 1 0 0 Tm\n51 802 Td\n0 -13 Td\n/F1 20 Tf\n0.000000 0.000000 0.000000 rg\n(a)Tj\n0 -13 Td\n"
      "1 0 0 1 0 0 Tm\n308 802 Td\n0 -5 Td\n/F2 8 Tf\n1.000000 0.000000 0.000000 rg\n(b)Tj\n0 -5 Td\n"
      "ET\n"));
}

TEST(PdfTable, DrawsManyColoursAndStylesInTheRightCells) {
  const MadePdf pdf = withTable([](CPDFdoc& doc) {
    for (int i = 0; i < 40; ++i) {
      doc.BeginRow(2);
      for (const int k : {i, 39 - i}) {
        doc.FontSize(3 + k % 20);
        doc.BeginCell({k / 64.0, 0, 0});
        doc.write(std::to_wstring(k).c_str());
        doc.EndCell();
      }
      doc.EndRow();
    }
  });
  std::string all;
  for (std::size_t page = 1; page <= pdf.pageCount(); ++page) {
    all += pdf.content(page);
  }
  for (int k = 0; k < 40; ++k) {
    const std::string text =
        "/F1 " + std::to_string(3 + k % 20) + " Tf\n0.000000 0.000000 0.000000 rg\n(" + std::to_string(k) + ")Tj\n";
    EXPECT_NE(all.find(text), std::string::npos) << text;
  }
  // The first row is that of 0 and 39, the last that of 39 and 0; 39/64 is 0.609375.
  EXPECT_LT(all.find("0.000000 0.000000 0.000000 rg\n50 "), all.find("0.609375 0.000000 0.000000 rg\n307 "));
  EXPECT_LT(all.find("0.609375 0.000000 0.000000 rg\n50 "), all.rfind("0.000000 0.000000 0.000000 rg\n307 "));
}

TEST(PdfTable, HasOnlyAGapWithoutRows) {
  const MadePdf pdf = withTable([](CPDFdoc&) {});
  EXPECT_EQ(pdf.content(1), "BT\n50 810 Td\n1 0 0 1 0 0 Tm\n0 802 Td\nET\n");
}

TEST(PdfTable, HasAGapOfTheDefaultStyle) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.FontSize(40);
    doc.BeginTable();
  });
  EXPECT_EQ(pdf.content(1), "BT\n50 810 Td\n1 0 0 1 0 0 Tm\n0 802 Td\nET\n");
}

TEST(PdfTable, DrawsARowWithoutCells) {
  const MadePdf pdf = withTable([](CPDFdoc& doc) {
    doc.BeginRow(1);
    doc.EndRow();
  });
  EXPECT_EQ(pdf.content(1),
            "BT\n50 810 Td\n1 0 0 1 0 0 Tm\n0 802 Td\n"
            "ET\n0.0 0.0 0.0 RG\n50 805 515 0 re\nS\nBT\nET\n");
}

TEST(PdfTable, GivesARowOfNullTextsNoHeight) {
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    doc.BeginTable();
    row(doc, {nullptr, nullptr});
    row(doc, {L"", nullptr});
  });
  EXPECT_EQ(pdf.frames(1),
            (std::vector<std::string>{"50 805 257 0", "307 805 257 0", "50 789 257 16", "307 789 257 16"}));
}

TEST(PdfTable, DrawsNoColumnsWhenARowHasNone) {
  for (const int columns : {0, -1, -5}) {
    const MadePdf pdf = withTable([&](CPDFdoc& doc) {
      doc.BeginRow(columns);
      doc.BeginCell(kWhiteCell);
      doc.write(L"dropped");
    });
    EXPECT_EQ(pdf.content(1), "BT\n50 810 Td\n1 0 0 1 0 0 Tm\n0 802 Td\nET\n0.0 0.0 0.0 RG\nBT\nET\n") << columns;
  }
}

TEST(PdfTable, MayHaveOneColumnOfTheFullWidth) {
  EXPECT_EQ(withTable([](CPDFdoc& doc) { row(doc, {L"a"}); }).frames(1), Strings{"50 789 515 16"});
}

TEST(PdfTable, MayHaveTwoHundredColumnsOfTwoPoints) {
  const MadePdf pdf = withTable([](CPDFdoc& doc) {
    doc.BeginRow(200);
    for (int i = 0; i < 200; ++i) {
      doc.BeginCell(kWhiteCell);
      doc.write(L"ab");
      doc.EndCell();
    }
  });
  ASSERT_EQ(pdf.frames(1).size(), 200u);
  // Two letters and the empty rest take three lines.
  EXPECT_EQ(pdf.frames(1).front(), "50 757 2 48");
  EXPECT_EQ(pdf.frames(1).back(), "448 757 2 48");
  EXPECT_EQ(pdf.texts(1).size(), 600u);
  EXPECT_NE(pdf.content(1).find("449 802 Td\n"), std::string::npos);
}

TEST(PdfTable, MayHaveSixHundredColumnsWithoutWidth) {
  const MadePdf pdf = withTable([](CPDFdoc& doc) {
    doc.BeginRow(600);
    doc.BeginCell(kWhiteCell);
    doc.write(L"a");
    doc.EndCell();
    doc.BeginCell(kWhiteCell);
    doc.write(L"b");
  });
  EXPECT_EQ(pdf.frames(1), Strings(600, "50 773 0 32"));
  EXPECT_EQ(pdf.texts(1), (Strings{"a", "", "b", ""}));
}

TEST(PdfTable, IsWiderInLandscape) {
  const MadePdf pdf = madeInTimes(
      [](CPDFdoc& doc) {
        doc.BeginTable();
        row(doc, {L"a", L"b", L"c"});
      },
      kWide);
  EXPECT_EQ(pdf.frames(1), (Strings{"50 544 253 16", "303 544 253 16", "556 544 253 16"}));
  EXPECT_NE(pdf.content(1).find("557 557 Td\n"), std::string::npos);
}

// 31 paragraphs end at 66, the table's gap at 58.
TEST(PdfTable, BeginsARowOnTheNextPageWhenItDoesNotFit) {
  const MadePdf pdf = withTable(
      [](CPDFdoc& doc) {
        row(doc, {L"first"});
        row(doc, {L"second"});
      },
      31);
  ASSERT_EQ(pdf.pageCount(), 2u);
  EXPECT_TRUE(pdf.content(1).ends_with(
      "(31)Tj\n0 -8 Td\n"
      "1 0 0 1 0 0 Tm\n0 58 Td\n"
      "ET\n0.0 0.0 0.0 RG\n1.000000 1.000000 1.000000 rg\n50 45 515 16 re\nF\n50 45 515 16 re\nS\nBT\n"
      "1 0 0 1 0 0 Tm\n51 58 Td\n0 -8 Td\n/F1 12 Tf\n0.000000 0.000000 0.000000 rg\n(first)Tj\n0 -8 Td\n"
      "ET\n"));
  EXPECT_EQ(pdf.content(2),
            "BT\n50 810 Td\n"
            "ET\n0.0 0.0 0.0 RG\n1.000000 1.000000 1.000000 rg\n50 797 515 16 re\nF\n50 797 515 16 re\nS\nBT\n"
            "1 0 0 1 0 0 Tm\n51 810 Td\n0 -8 Td\n/F1 12 Tf\n0.000000 0.000000 0.000000 rg\n(second)Tj\n0 -8 Td\n"
            "ET\n");
}

TEST(PdfTable, MovesAWholeRowWhenItsLastCellOverflows) {
  const MadePdf pdf = withTable([](CPDFdoc& doc) { row(doc, {L"a", L"b\nc"}); }, 31);
  ASSERT_EQ(pdf.pageCount(), 2u);
  EXPECT_EQ(pdf.frames(1), Strings{});
  EXPECT_TRUE(pdf.content(1).ends_with("0 58 Td\nET\n"));
  EXPECT_EQ(pdf.frames(2), (Strings{"50 781 257 32", "307 781 257 32"}));
  EXPECT_EQ(pdf.texts(2), (Strings{"a", "b", "c"}));
}

TEST(PdfTable, MovesAWholeRowWhenItsFirstCellOverflows) {
  const MadePdf pdf = withTable([](CPDFdoc& doc) { row(doc, {L"b\nc", L"a"}); }, 31);
  ASSERT_EQ(pdf.pageCount(), 2u);
  EXPECT_TRUE(pdf.content(1).ends_with("0 58 Td\nET\n"));
  EXPECT_EQ(pdf.texts(2), (Strings{"b", "c", "a"}));
}

TEST(PdfTable, ContinuesBelowAMovedRow) {
  const MadePdf pdf = withTable(
      [](CPDFdoc& doc) {
        row(doc, {L"a\nb"});
        row(doc, {L"c"});
      },
      31);
  EXPECT_EQ(pdf.frames(2), (Strings{"50 781 515 32", "50 765 515 16"}));
}

TEST(PdfTable, BreaksThePageInsteadOfAGapBelowTheLimit) {
  // 48 lines end at 34.
  const MadePdf pdf = madeInTimes([](CPDFdoc& doc) {
    paragraph(doc, numberedLines(48).c_str());
    doc.BeginTable();
    row(doc, {L"a"});
  });
  ASSERT_EQ(pdf.pageCount(), 2u);
  EXPECT_TRUE(pdf.content(1).ends_with("(48)Tj\n0 -8 Td\nET\n"));
  EXPECT_TRUE(pdf.content(2).starts_with("BT\n50 810 Td\nET\n0.0 0.0 0.0 RG\n"));
  EXPECT_EQ(pdf.frames(2), Strings{"50 797 515 16"});
}

// From 802 there is room for 48 lines. The first trial ends on page 2 at 810 - 12 x 16 = 618, which is not above 802
// and so goes unnoticed; the second trial continues from page 2 to page 3, and the row itself from page 3 to page 4.
TEST(PdfTable, LeavesPagesFromTrialsOfARowTallerThanAPage) {
  const MadePdf pdf = withTable([](CPDFdoc& doc) {
    row(doc, {numberedLines(60).c_str()});
    row(doc, {L"next"});
  });
  ASSERT_EQ(pdf.pageCount(), 4u);
  EXPECT_EQ(pdf.content(1), "BT\n50 810 Td\n1 0 0 1 0 0 Tm\n0 802 Td\nET\n");
  EXPECT_EQ(pdf.content(2), "BT\n50 810 Td\nET\n");
  EXPECT_TRUE(pdf.content(3).starts_with(
      "BT\n50 810 Td\n"
      "ET\n0.0 0.0 0.0 RG\n1.000000 1.000000 1.000000 rg\n50 621 515 184 re\nF\n50 621 515 184 re\nS\nBT\n"
      "1 0 0 1 0 0 Tm\n51 802 Td\n0 -8 Td\n/F1 12 Tf\n0.000000 0.000000 0.000000 rg\n(1)Tj\n0 -8 Td\n"
      "1 0 0 1 0 0 Tm\n51 786 Td\n"));
  EXPECT_EQ(pdf.texts(3).size(), 48u);
  EXPECT_TRUE(pdf.content(4).starts_with(
      "BT\n50 810 Td\n"
      "1 0 0 1 0 0 Tm\n51 810 Td\n0 -8 Td\n/F1 12 Tf\n0.000000 0.000000 0.000000 rg\n(49)Tj\n0 -8 Td\n"));
  EXPECT_EQ(pdf.texts(4).size(), 13u);
  EXPECT_EQ(pdf.frames(4), Strings{"50 605 515 16"});
}

// 17 paragraphs end at 402, the gap at 394. There is room for 22 lines, and the first trial ends on page 2 at 810 - 38
// x 16 = 202, which is not above 394.
TEST(PdfTable, DoesNotMoveATallRowThatEndsLower) {
  const MadePdf pdf = withTable([](CPDFdoc& doc) { row(doc, {numberedLines(60).c_str()}); }, 17);
  ASSERT_EQ(pdf.pageCount(), 4u);
  EXPECT_EQ(pdf.content(2), "BT\n50 810 Td\nET\n");
  EXPECT_EQ(pdf.frames(3), Strings{"50 205 515 192"});
  EXPECT_EQ(pdf.texts(3).size(), 22u);
  EXPECT_EQ(pdf.texts(4).size(), 38u);
}

// Seven lines fit below 154. The first trial ends on page 2 at 810 - 31 x 16 = 314, above 154, so the row is moved.
TEST(PdfTable, MovesATallRowThatEndsHigher) {
  const MadePdf pdf = withTable([](CPDFdoc& doc) { row(doc, {numberedLines(38).c_str()}); }, 27);
  ASSERT_EQ(pdf.pageCount(), 2u);
  EXPECT_EQ(pdf.frames(2), Strings{"50 205 515 608"});
  EXPECT_EQ(pdf.texts(2).size(), 38u);
}

// The second cell begins at the height of the first, but on the page where the first ended.
TEST(PdfTable, LaysOutEachCellFromTheSameHeightOnTheCurrentPage) {
  const MadePdf pdf = withTable([](CPDFdoc& doc) { row(doc, {numberedLines(49).c_str(), L"b"}); });
  // Each trial and the row itself break the page once.
  ASSERT_EQ(pdf.pageCount(), 4u);
  // The bottom is that of the second cell: 802 - 16.
  EXPECT_EQ(pdf.frames(3), (Strings{"50 789 257 16", "307 789 257 16"}));
  EXPECT_EQ(pdf.texts(3).size(), 48u);
  EXPECT_EQ(pdf.content(4),
            "BT\n50 810 Td\n"
            "1 0 0 1 0 0 Tm\n51 810 Td\n0 -8 Td\n/F1 12 Tf\n0.000000 0.000000 0.000000 rg\n(49)Tj\n0 -8 Td\n"
            "1 0 0 1 0 0 Tm\n308 802 Td\n0 -8 Td\n/F1 12 Tf\n0.000000 0.000000 0.000000 rg\n(b)Tj\n0 -8 Td\n"
            "ET\n");
}

TEST(PdfTable, MovesARowThatEndsHigherToTheTopWithoutAPageBreak) {
  const MadePdf pdf = withTable(
      [](CPDFdoc& doc) {
        doc.FontSize(-12);
        row(doc, {L"a"});
      },
      1);
  EXPECT_EQ(pdf.pageCount(), 1u);
  EXPECT_TRUE(pdf.content(1).ends_with(
      "1 0 0 1 0 0 Tm\n0 778 Td\n"
      "ET\n0.0 0.0 0.0 RG\n1.000000 1.000000 1.000000 rg\n50 813 515 0 re\nF\n50 813 515 0 re\nS\nBT\n"
      "1 0 0 1 0 0 Tm\n51 810 Td\n0 --8 Td\n/F1 -12 Tf\n0.000000 0.000000 0.000000 rg\n(a)Tj\n0 --8 Td\n"
      "ET\n"));
}

// A first trial of the third cell, which is as tall as page 2, would have broken that page.
TEST(PdfTable, StopsTheFirstTrialAtTheCellThatOverflows) {
  const MadePdf pdf = withTable([](CPDFdoc& doc) { row(doc, {L"a", L"b\nc", numberedLines(48).c_str()}); }, 31);
  ASSERT_EQ(pdf.pageCount(), 2u);
  EXPECT_EQ(pdf.frames(2).front(), "50 45 171 768");
}

}  // namespace
