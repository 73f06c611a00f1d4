#include "formats/text/text_report.h"

#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/documents/report_state.h"
#include "support/faults/open_errors.h"
#include "support/files.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;
using namespace std::string_view_literals;

namespace {

// The bytes of a report written as single bytes, which are readable in the tests.
template <typename Action>
std::string written(Action action) {
  const TemporaryFolder folder;
  TextReport report;
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  EXPECT_EQ(report.Open((folder / L"a.txt").c_str()), REPORT_OK);
  action(report);
  EXPECT_EQ(report.Close(), REPORT_OK);
  return bytesOf(folder / L"a.txt");
}

// The bytes of a report with default options.
template <typename Action>
std::string writtenWide(Action action) {
  const TemporaryFolder folder;
  TextReport report;
  EXPECT_EQ(report.Open((folder / L"a.txt").c_str()), REPORT_OK);
  action(report);
  EXPECT_EQ(report.Close(), REPORT_OK);
  return bytesOf(folder / L"a.txt");
}

std::string writtenText(const std::wstring& text) {
  return written([&](AReport& report) { report.Text(text.c_str(), PARAGRAPH_NONE, L"", 0); });
}

std::string writtenWideText(const std::wstring& text) {
  return writtenWide([&](AReport& report) { report.Text(text.c_str(), PARAGRAPH_NONE, L"", 0); });
}

}  // namespace

TEST(TextReport, WritesUtf16WithAByteOrderMark) { EXPECT_EQ(writtenWideText(L"A"), "\xFF\xFE\x41\x00"sv); }

TEST(TextReport, HasOnlyTheMarkWhenNothingIsWritten) {
  EXPECT_EQ(writtenWide([](AReport&) {}), "\xFF\xFE");
  EXPECT_EQ(written([](AReport&) {}), "");
}

TEST(TextReport, WritesSingleBytesWithoutAMark) {
  EXPECT_EQ(writtenText(L"A"), "A");
  EXPECT_EQ(writtenText(L"\u00E9"), "\xE9");
  EXPECT_EQ(writtenText(L"\u0141"), "A");
}

TEST(TextReport, WritesTheLowByteOfEachCodeUnit) {
  EXPECT_EQ(writtenText(L"\u00FF\u0100\u20AC"), "\xFF\x00\xAC"sv);
  EXPECT_EQ(writtenText(grin()), "\x3D\x00"sv);
}

TEST(TextReport, WritesSupplementaryCharactersAsTwoUnits) {
  EXPECT_EQ(writtenWideText(grin()), "\xFF\xFE\x3D\xD8\x00\xDE"sv);
  EXPECT_EQ(writtenWideText(wideUnit(0xD83D) + wideUnit(0xDE00)), "\xFF\xFE\x3D\xD8\x00\xDE"sv);
}

TEST(TextReport, LeavesALoneSurrogateUnchanged) {
  EXPECT_EQ(writtenWideText(L"a" + wideUnit(0xD83D) + L"b"), "\xFF\xFE\x61\x00\x3D\xD8\x62\x00"sv);
  EXPECT_EQ(writtenWideText(wideUnit(0xDE00)), "\xFF\xFE\x00\xDE"sv);
}

TEST(TextReport, WritesSingleBytesForEveryNonZeroValue) {
  const TemporaryFolder folder;
  for (const int value : {1, -1, 256}) {
    TextReport report;
    report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, value);
    EXPECT_EQ(report.Open((folder / L"a.txt").c_str()), REPORT_OK);
    EXPECT_EQ(report.Close(), REPORT_OK);
    EXPECT_EQ(bytesOf(folder / L"a.txt"), "") << value;
  }
}

TEST(TextReport, TurnsSingleBytesOffAgain) {
  const TemporaryFolder folder;
  TextReport report;
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 0);
  EXPECT_EQ(report.Open((folder / L"a.txt").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.txt"), "\xFF\xFE");
}

TEST(TextReport, MixesTheEncodingsWhenTheOptionChangesInAFile) {
  EXPECT_EQ(writtenWide([](AReport& report) {
              report.Text(L"A", PARAGRAPH_NONE, L"", 0);
              report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
              report.Text(L"B", PARAGRAPH_NONE, L"", 0);
            }),
            "\xFF\xFE\x41\x00\x42"sv);
  EXPECT_EQ(written([](AReport& report) {
              report.Text(L"A", PARAGRAPH_NONE, L"", 0);
              report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 0);
              report.Text(L"B", PARAGRAPH_NONE, L"", 0);
            }),
            "\x41\x42\x00"sv);
}

TEST(TextReport, IgnoresOtherOptions) {
  const TemporaryFolder folder;
  TextReport report;
  report.SetReportOption(OPTION_LANDSCAPE, 1);
  report.SetReportOption(OPTION_CONFORMING, 1);
  report.SetReportOption(static_cast<REPORT_OPTION>(2), 1);
  EXPECT_EQ(report.Open((folder / L"a.txt").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.txt"), "\xFF\xFE");
}

TEST(TextReport, EndsALineAfterEveryTypeOfParagraph) {
  for (const int type : {1, 2, 3, 4, 5, 6, 7, 42, -1}) {
    EXPECT_EQ(written([&](AReport& report) { report.Text(L"abc", static_cast<PARAGRAPH_TYPE>(type), L"", 0); }),
              "abc\r\n")
        << type;
  }
}

TEST(TextReport, EndsNoLineAfterInlineText) { EXPECT_EQ(writtenText(L"abc"), "abc"); }

TEST(TextReport, IgnoresTheStyleAndTheRawFlag) {
  EXPECT_EQ(written([](AReport& report) {
              report.Text(L"<b>", PARAGRAPH_HEADING1, L"class=x", 1);
              report.Text(L"<b>", PARAGRAPH_HEADING1, nullptr, 0);
            }),
            "<b>\r\n<b>\r\n");
}

TEST(TextReport, WritesNothingForANullText) {
  EXPECT_EQ(written([](AReport& report) { report.Text(nullptr, PARAGRAPH_NONE, nullptr, 0); }), "");
  EXPECT_EQ(written([](AReport& report) { report.Text(nullptr, PARAGRAPH_NORMAL, nullptr, 0); }), "\r\n");
}

TEST(TextReport, EscapesNothing) {
  EXPECT_EQ(writtenText(L"\"q\" 'a' <b> & 100% %s %n {\\}\ttab\nline\r\n"),
            "\"q\" 'a' <b> & 100% %s %n {\\}\ttab\nline\r\n");
}

TEST(TextReport, WritesLongTextsInFull) {
  EXPECT_TRUE(areSameBytes(std::string(100000, 'x'), writtenText(longText(100000))));
  std::string wide = "\xFF\xFE";
  for (int i = 0; i < 100000; ++i) {
    wide += "x\0"sv;
  }
  EXPECT_TRUE(areSameBytes(wide, writtenWideText(longText(100000))));
}

TEST(TextReport, EndsALineWithCarriageReturnAndLineFeed) {
  EXPECT_EQ(written([](AReport& report) { report.EndOfLine(); }), "\r\n");
  EXPECT_EQ(writtenWide([](AReport& report) { report.EndOfLine(); }), "\xFF\xFE\r\0\n\0"sv);
}

TEST(TextReport, WritesABlankForASpace) {
  EXPECT_EQ(written([](AReport& report) { report.Space(); }), " ");
}

TEST(TextReport, EndsALineOnlyAtTheEndOfAParagraph) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginParagraph(PARAGRAPH_NORMAL, L"class=x");
              report.Text(L"abc", PARAGRAPH_NONE, L"", 0);
              report.EndParagraph(PARAGRAPH_NORMAL);
              report.EndParagraph(PARAGRAPH_NONE);
            }),
            "abc\r\n\r\n");
}

TEST(TextReport, WritesARowAsALineOfCellsWithTabsBetween) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginRow(L"row", nullptr, 3);
              report.Cell(L"a", 0, nullptr);
              report.Cell(L"b", 0, nullptr);
              report.Cell(L"c", 0, nullptr);
              report.EndRow(L"row");
            }),
            "a\tb\tc\r\n");
}

TEST(TextReport, KeepsTheColumnOfAnEmptyCell) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginRow(L"row", nullptr, 3);
              report.Cell(L"", 0, nullptr);
              report.Cell(nullptr, 0, nullptr);
              report.Cell(L"c", 0, nullptr);
              report.EndRow(L"row");
            }),
            "\t\tc\r\n");
}

TEST(TextReport, WritesBegunAndEndedCellsLikeWholeOnes) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginRow(L"row", nullptr, 3);
              report.BeginCell(L"ignored", 1, L" width=1");
              report.Text(L"a", PARAGRAPH_NONE, L"", 0);
              report.EndCell(L"ignored", 1);
              report.BeginCell(nullptr, 0, nullptr);
              report.EndCell(nullptr, 0);
              report.BeginCell(nullptr, 0, nullptr);
              report.Text(L"c", PARAGRAPH_NONE, L"", 0);
              report.EndCell(nullptr, 0);
              report.EndRow(L"row");
            }),
            "a\t\tc\r\n");
}

TEST(TextReport, StartsEveryRowWithoutASeparator) {
  EXPECT_EQ(written([](AReport& report) {
              for (const wchar_t* text : {L"1", L"2"}) {
                report.BeginRow(nullptr, nullptr, 0);
                report.Cell(text, 0, nullptr);
                report.Cell(text, 0, nullptr);
                report.EndRow(nullptr);
              }
            }),
            "1\t1\r\n2\t2\r\n");
}

TEST(TextReport, TreatsItsFirstCellAsTheFirstOfARow) {
  EXPECT_EQ(written([](AReport& report) {
              report.Cell(L"a", 0, nullptr);
              report.Cell(L"b", 0, nullptr);
            }),
            "a\tb");
}

TEST(TextReport, IgnoresTheHeaderFlagAndTheAttributesOfACell) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginRow(L"row", L"class=x", 2);
              report.Cell(L"a", 1, L" width=1");
              report.Cell(L"b", 0, L" width=2");
              report.EndRow(L"row");
            }),
            "a\tb\r\n");
}

TEST(TextReport, AcceptsASeparatorOfAnyLength) {
  const auto rowWith = [](const std::wstring& separator) {
    return written([&](AReport& report) {
      report.SetColumnSeparator(separator);
      report.Row3(L"a", L"b", L"c", 0);
    });
  };
  EXPECT_EQ(rowWith(L";"), "a;b;c\r\n");
  EXPECT_EQ(rowWith(L" | "), "a | b | c\r\n");
  EXPECT_EQ(rowWith(L""), "abc\r\n");
  EXPECT_EQ(rowWith(L"%s%d"), "a%s%db%s%dc\r\n");
}

TEST(TextReport, LeavesSeparatorsInsideACellUnchanged) {
  EXPECT_EQ(written([](AReport& report) { report.Row2(L"a\tb", L"c\r\nd", 0, nullptr, nullptr); }), "a\tb\tc\r\nd\r\n");
}

TEST(TextReport, WritesNoSubDocuments) {
  EXPECT_EQ(written([](AReport& report) {
              EXPECT_EQ(report.BeginSubDocument(L"folder", L"file", L"title"), REPORT_OK);
              report.EndSubDocument();
            }),
            "");
}

TEST(TextReport, WritesNoAnchors) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginAncor(L"name");
              report.EndAncor();
              report.Ancor(L"name");
            }),
            "");
}

TEST(TextReport, WritesNoStyles) {
  EXPECT_EQ(written([](AReport& report) {
              for (const int style : {0, 1, 2, 3}) {
                report.BeginStyle(static_cast<REPORT_STYLE>(style), 14);
                report.EndStyle(static_cast<REPORT_STYLE>(style), 14);
              }
            }),
            "");
}

TEST(TextReport, WritesNoTableOfContents) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginToc();
              report.TocItem(L"anchor", L"text", 1);
              report.EndToc();
            }),
            "");
}

TEST(TextReport, WritesNoFrameOfATableAndNoColour) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginTable(L"name", nullptr);
              report.SetCellColor(L"red");
              report.EndTable(L"name");
            }),
            "");
}

TEST(TextReport, WritesNeitherTheTextNorTheTargetOfALink) {
  EXPECT_EQ(written([](AReport& report) { report.Link(L"text", L"#target"); }), "");
}

TEST(TextReport, KeepsPropertiesAndDoesNotWriteThem) {
  EXPECT_EQ(written([](AReport& report) {
              report.AddProperty(L"name", L"value");
              EXPECT_STREQ(report.GetProperty(L"name"), L"value");
            }),
            "");
}

TEST(TextReport, QuotesNothing) {
  TextReport report;
  EXPECT_EQ(report.Quoting(L"a<b>&\""), L"a<b>&\"");
}

TEST(TextReport, OpensItsOutputName) {
  const TemporaryFolder folder;
  TextReport report;
  report.SetOutputFileName((folder / L"a.txt").c_str());
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.txt"), "\xFF\xFE");
}

TEST(TextReport, LeavesTheOpenFlagAlone) {
  const TemporaryFolder folder;
  TextReport report;
  EXPECT_EQ(report.Open((folder / L"a.txt").c_str()), REPORT_OK);
  EXPECT_EQ(ReportState::openFlag(report), 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
}

TEST(TextReport, ReportsWhyItCannotBeOpened) {
  const TemporaryFolder folder;
  TextReport report;
  report.SetOutputFileName((folder / L"missing/a.txt").c_str());
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(folder / L"missing/a.txt"));
  EXPECT_EQ(report.Open(nullptr), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(L""));
}

TEST(TextReport, RefusesAnotherFileWhileItIsOpen) {
  const TemporaryFolder folder;
  TextReport report;
  EXPECT_EQ(report.Open((folder / L"a.txt").c_str()), REPORT_OK);
  report.Text(L"A", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Open((folder / L"b.txt").c_str()), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), L"File open/create error for '" + (folder / L"b.txt") + L"'. The report is still open.");
  report.Text(L"B", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.txt"), "\xFF\xFE\x41\x00\x42\x00"sv);
  EXPECT_FALSE(exists(folder / L"b.txt"));
}

TEST(TextReport, WritesNothingWhileItIsClosed) {
  const CapturedLog log;
  const TemporaryFolder folder;
  TextReport report;
  report.Text(L"before", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.Open((folder / L"missing/a.txt").c_str()), REPORT_FILE_ERROR);
  report.Row2(L"a", L"b", 0, nullptr, nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.Open((folder / L"a.txt").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Text(L"after", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.txt"), "\xFF\xFE");
  EXPECT_TRUE(log.lines().empty());
}

TEST(TextReport, CanBeOpenedAgain) {
  const TemporaryFolder folder;
  TextReport report;
  for (const wchar_t* text : {L"first and long", L"B"}) {
    EXPECT_EQ(report.Open((folder / L"a.txt").c_str()), REPORT_OK);
    report.Text(text, PARAGRAPH_NONE, L"", 0);
    EXPECT_EQ(report.Close(), REPORT_OK);
  }
  EXPECT_EQ(bytesOf(folder / L"a.txt"), "\xFF\xFE\x42\x00"sv);
}

TEST(TextReport, LogsCharactersThatSingleBytesLost) {
  const CapturedLog log;
  const TemporaryFolder folder;
  TextReport report;
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  EXPECT_EQ(report.Open((folder / L"a.txt").c_str()), REPORT_OK);
  report.Text(L"caf\u00E9 \u0141\u20AC", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_TRUE(log.lines().empty());
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"'" + (folder / L"a.txt") +
                                                   L"': 2 characters could not be written as they were given, the "
                                                   L"first is U+0141."});
}

TEST(TextReport, StartsCountingLossesAnewForEachFile) {
  const TemporaryFolder folder;
  TextReport report;
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  for (const wchar_t* text : {L"\u0141", L"A"}) {
    const CapturedLog log;
    EXPECT_EQ(report.Open((folder / L"a.txt").c_str()), REPORT_OK);
    report.Text(text, PARAGRAPH_NORMAL, L"", 0);
    EXPECT_EQ(report.Close(), REPORT_OK);
    EXPECT_EQ(log.lines().size(), text[0] == L'A' ? 0u : 1u);
  }
}

TEST(TextReport, CountsALostSupplementaryCharacterOnce) {
  const CapturedLog log;
  const TemporaryFolder folder;
  TextReport report;
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  EXPECT_EQ(report.Open((folder / L"a.txt").c_str()), REPORT_OK);
  report.Text(grin().c_str(), PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"'" + (folder / L"a.txt") +
                                                   L"': 1 character could not be written as it was given: U+1F600."});
}

TEST(TextReport, LosesNothingInUtf16) {
  const CapturedLog log;
  writtenWideText(L"\u0141\u20AC" + grin());
  EXPECT_TRUE(log.lines().empty());
}
