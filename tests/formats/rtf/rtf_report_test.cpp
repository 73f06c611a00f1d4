#include "formats/rtf/rtf_report.h"

#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/files.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

namespace {

// The bytes that an action writes to the body of a report.
template <typename Action>
std::string body(Action action, int conforming = 0) {
  const TemporaryFolder folder;
  RTFReport report;
  report.SetReportOption(OPTION_CONFORMING, conforming);
  EXPECT_EQ(report.Open((folder / L"a.rtf").c_str()), REPORT_OK);
  action(report);
  EXPECT_EQ(report.Close(), REPORT_OK);
  const std::string bytes = bytesOf(folder / L"a.rtf");
  const std::string_view paper = "\\paperw11906\\paperh16838\r\n{";
  const std::size_t begin = bytes.find(paper);
  EXPECT_NE(begin, std::string::npos);
  EXPECT_TRUE(bytes.ends_with("}}"));
  return bytes.substr(begin + paper.size(), bytes.size() - begin - paper.size() - 2);
}

std::string headOf(RTFReport& report) {
  const TemporaryFolder folder;
  EXPECT_EQ(report.Open((folder / L"a.rtf").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  return bytesOf(folder / L"a.rtf");
}

bool logsTheLoss(const CapturedLog& log, std::wstring_view loss) {
  return log.lines().size() == 1 && log.lines()[0].ends_with(loss);
}

std::string hyperLink(const std::string& text, const std::string& bookmark) {
  return " {\\field{\\*\\fldinst {HYPERLINK \\\\l \"" + bookmark + "\" }}{\\fldrslt {\\cs15\\ul\\cf2 " + text + "}}} ";
}

}  // namespace

TEST(RtfReport, TakesItsTitleFromTheFirstTitleProperty) {
  RTFReport report;
  EXPECT_TRUE(headOf(report).starts_with("{\\rtf\\ansi{\\info{\\title Report}} \r\n"));
  report.AddProperty(L"%TITLE%", L"Sales");
  report.AddProperty(L"%TITLE%", L"Later");
  EXPECT_TRUE(headOf(report).starts_with("{\\rtf\\ansi{\\info{\\title Sales}} \r\n"));
}

TEST(RtfReport, IsInLandscapeFromTheNextOpen) {
  const TemporaryFolder folder;
  RTFReport report;
  EXPECT_EQ(report.Open((folder / L"a.rtf").c_str()), REPORT_OK);
  report.SetReportOption(OPTION_LANDSCAPE, 1);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_NE(bytesOf(folder / L"a.rtf").find("}\\paperw11906\\paperh16838\r\n{"), std::string::npos);
  EXPECT_NE(headOf(report).find("}\\landscape\\paperw16838\\paperh11906\r\n{"), std::string::npos);
  report.SetReportOption(OPTION_LANDSCAPE, 0);
  EXPECT_NE(headOf(report).find("}\\paperw11906\\paperh16838\r\n{"), std::string::npos);
}

TEST(RtfReport, IgnoresOtherOptions) {
  RTFReport report;
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  EXPECT_NE(headOf(report).find("}\\paperw11906\\paperh16838\r\n{"), std::string::npos);
}

TEST(RtfReport, OpensTheOutputFileName) {
  const TemporaryFolder folder;
  RTFReport report;
  report.SetOutputFileName((folder / L"b.rtf").c_str());
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(exists(folder / L"b.rtf"));
}

TEST(RtfReport, ReturnsAnErrorWhenItsFileCannotBeOpened) {
  const TemporaryFolder folder;
  RTFReport report;
  EXPECT_EQ(report.Open((folder / L"missing/a.rtf").c_str()), REPORT_FILE_ERROR);
  EXPECT_TRUE(std::wstring_view(report.GetError()).starts_with(L"File open/create error for '"));
  report.Text(L"lost", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_FALSE(exists(folder / L"missing"));
}

TEST(RtfReport, CanBeOpenedAgain) {
  RTFReport report;
  const std::string first = headOf(report);
  EXPECT_EQ(headOf(report), first);
}

TEST(RtfReportText, WritesOnlyItsInlineText) {
  EXPECT_EQ(body([](RTFReport& r) { r.Text(L"a {b} \u20AC", PARAGRAPH_NONE, L"style", 0); }), "a {b} \x80");
  EXPECT_EQ(body([](RTFReport& r) { r.Text(L"\\b x", PARAGRAPH_NONE, nullptr, 1); }), "\\b x");
  EXPECT_EQ(body([](RTFReport& r) { r.Text(nullptr, PARAGRAPH_NONE, nullptr, 0); }), "");
}

TEST(RtfReportText, EndsAHeadingInItsStyle) {
  EXPECT_EQ(body([](RTFReport& r) { r.Text(L"x", PARAGRAPH_HEADING3, L"", 0); }), "x\\s3\\ql\\par\\pard\\plain ");
}

TEST(RtfReportText, EndsAnOrdinaryParagraphInStyleZero) {
  EXPECT_EQ(body([](RTFReport& r) { r.Text(L"x", PARAGRAPH_NORMAL, L"", 0); }), "x\\s0\\ql\\par\\pard\\plain ");
}

TEST(RtfReportParagraph, EndsInTheStyleOfItsType) {
  for (int type = 1; type <= 6; ++type) {
    EXPECT_EQ(body([type](RTFReport& r) { r.EndParagraph(static_cast<PARAGRAPH_TYPE>(type)); }),
              "\\s" + std::to_string(type) + "\\ql\\par\\pard\\plain ");
  }
  EXPECT_EQ(body([](RTFReport& r) { r.EndParagraph(PARAGRAPH_NONE); }), "\\s0\\ql\\par\\pard\\plain ");
}

TEST(RtfReportAnchors, AreEmptyBookmarks) {
  EXPECT_EQ(body([](RTFReport& r) { r.BeginAncor(L"a"); }), "{\\*\\bkmkstart a}{\\*\\bkmkend a}");
  EXPECT_EQ(body([](RTFReport& r) { r.Ancor(L"a"); }), "{\\*\\bkmkstart a}{\\*\\bkmkend a}");
  EXPECT_EQ(body([](RTFReport& r) { r.EndAncor(); }), "");
}

TEST(RtfReportBreaks, AreALineControlWordAndABlank) {
  EXPECT_EQ(body([](RTFReport& r) { r.EndOfLine(); }), "\\line ");
  EXPECT_EQ(body([](RTFReport& r) { r.Space(); }), " ");
}

TEST(RtfReportStyles, AreBoldAndItalicGroups) {
  EXPECT_EQ(body([](RTFReport& r) {
              r.BeginStyle(STYLE_BOLD, 0);
              r.EndStyle(STYLE_BOLD, 0);
              r.BeginStyle(STYLE_ITALIC, 0);
              r.EndStyle(STYLE_ITALIC, 0);
            }),
            "\\b{}\\b0 \\i{}\\i0 ");
}

TEST(RtfReportStyles, SetTheSizeInHalfPointsAndResetItToTen) {
  EXPECT_EQ(body([](RTFReport& r) { r.BeginStyle(STYLE_FONT_SIZE, 28); }), "\\fs28 ");
  EXPECT_EQ(body([](RTFReport& r) { r.EndStyle(STYLE_FONT_SIZE, 28); }), "\\fs10 ");
}

TEST(RtfReportStyles, TruncateTheSizeToASignedByte) {
  EXPECT_EQ(body([](RTFReport& r) { r.BeginStyle(STYLE_FONT_SIZE, 200); }), "");
  EXPECT_EQ(body([](RTFReport& r) { r.BeginStyle(STYLE_FONT_SIZE, 256 + 20); }), "\\fs20 ");
}

TEST(RtfReportStyles, WriteNothingWhenUnknown) {
  EXPECT_EQ(body([](RTFReport& r) {
              r.BeginStyle(static_cast<REPORT_STYLE>(3), 20);
              r.EndStyle(static_cast<REPORT_STYLE>(3), 20);
            }),
            "");
}

TEST(RtfReportToc, IsAParagraphOfLinks) {
  EXPECT_EQ(body([](RTFReport& r) {
              r.BeginToc();
              r.TocItem(L"sec1", L"Chapter", 2);
              r.EndToc();
            }),
            hyperLink("Chapter", "sec1") + "\\line \\s0\\ql\\par\\pard\\plain ");
}

TEST(RtfReportLink, KeepsTheTargetUnchanged) {
  EXPECT_EQ(body([](RTFReport& r) { r.Link(L"See", L"#sec1"); }), hyperLink("See", "#sec1"));
}

TEST(RtfReportTable, WritesRowsAndCells) {
  const std::string bytes = body([](RTFReport& r) {
    r.BeginTable(L"name", L"class=\"x\"");
    r.BeginRow(L"row", L"attributes", 4);
    r.EndRow(L"row");
    r.EndTable(L"name");
  });
  EXPECT_TRUE(bytes.starts_with("\\par {\\trowd"));
  EXPECT_TRUE(bytes.ends_with("\\row\\pard}\r\n"));
  std::string ends;
  for (std::size_t at = bytes.find("\\cellx"); at != std::string::npos; at = bytes.find("\\cellx", at + 1)) {
    ends += bytes.substr(at, 10);
  }
  EXPECT_EQ(ends, "\\cellx1000\\cellx2000\\cellx3000\\cellx4000");
  EXPECT_EQ(bytes.find("\\clcbpat"), std::string::npos);
}

TEST(RtfReportCell, IsWrittenWhole) {
  EXPECT_EQ(body([](RTFReport& r) { r.Cell(L"x", 0, nullptr); }), "\\intbl x\\cell \r\n");
  EXPECT_EQ(body([](RTFReport& r) { r.Cell(L"x", 0, L""); }), "\\intbl x\\cell \r\n");
  EXPECT_EQ(body([](RTFReport& r) { r.Cell(L"x", 1, nullptr); }), "\\intbl \\b{x}\\b0 \\cell \r\n");
}

TEST(RtfReportCell, TakesForegroundAndBackgroundFromItsAttributes) {
  EXPECT_EQ(body([](RTFReport& r) { r.Cell(L"x", 1, L"red;yellow"); }),
            "\\intbl \\cf6 \\highlight7 \\b{x}\\b0 \\highlight0 \\cf0 \\cell \r\n");
}

TEST(RtfReportCell, UsesASingleNameForBoth) {
  EXPECT_EQ(body([](RTFReport& r) {
              r.BeginCell(L"", 0, L"Blue");
              r.EndCell(L"", 0);
            }),
            "\\intbl \\cf2 \\highlight2 \\highlight0 \\cf0 \\cell \r\n");
}

TEST(RtfReportCell, ColoursEndWithTheirCell) {
  EXPECT_EQ(body([](RTFReport& r) {
              r.BeginCell(L"", 1, L"red");
              r.EndCell(L"", 1);
              r.BeginCell(L"", 1, nullptr);
              r.EndCell(L"", 1);
            }),
            "\\intbl \\cf6 \\highlight6 \\highlight0 \\cf0 \\cell \r\n\\intbl \\cell \r\n");
}

TEST(RtfReportCell, KeepsItsColourWhenAWholeCellIsInside) {
  EXPECT_EQ(body([](RTFReport& r) {
              r.BeginCell(L"", 0, L"red");
              r.Cell(L"x", 0, L"blue");
              r.EndCell(L"", 0);
            }),
            "\\intbl \\cf6 \\highlight6 \\intbl \\cf2 \\highlight2 x\\highlight0 \\cf0 \\cell \r\n"
            "\\highlight0 \\cf0 \\cell \r\n");
}

TEST(RtfReportCell, WritesTheFixedNumbersOfColours) {
  const std::pair<const wchar_t*, int> colors[] = {
      {L"black", 1},  {L"blue", 2},       {L"cyan", 3},         {L"lightgreen", 4}, {L"magenta", 5},
      {L"red", 6},    {L"yellow", 7},     {L"white", 8},        {L"darkblue", 8},   {L"darkcyan", 10},
      {L"green", 11}, {L"DARKBLUE", 8},   {L"darkmagenta", 13}, {L"DarkRed", 14},   {L"darkyellow", 15},
      {L"gray", 16},  {L"lightgray", 17}, {L"puce", 0},         {L" red", 0},       {L";", 0}};
  for (const auto& [name, index] : colors) {
    const std::string number = std::to_string(index);
    EXPECT_EQ(body([name = name](RTFReport& r) { r.Cell(L"", 0, name); }),
              "\\intbl \\cf" + number + " \\highlight" + number + " \\highlight0 \\cf0 \\cell \r\n");
  }
}

TEST(RtfReportCell, SplitsItsColoursAtTheFirstSemicolon) {
  EXPECT_EQ(body([](RTFReport& r) { r.Cell(L"", 0, L"red;blue;green"); }),
            "\\intbl \\cf6 \\highlight0 \\highlight0 \\cf0 \\cell \r\n");
  EXPECT_EQ(body([](RTFReport& r) { r.Cell(L"", 0, L";yellow"); }),
            "\\intbl \\cf0 \\highlight7 \\highlight0 \\cf0 \\cell \r\n");
}

TEST(RtfReport, IgnoresUnsupportedCalls) {
  EXPECT_EQ(body([](RTFReport& r) {
              r.SetColumnSeparator(L";");
              r.BeginSubDocument(L"a", L"b", L"c");
              r.EndSubDocument();
              r.EndAncor();
              r.BeginParagraph(PARAGRAPH_HEADING1, L"x");
              r.EndTable(L"t");
              r.SetCellColor(L"red");
            }),
            "");
}

TEST(RtfReport, QuotesNothing) {
  RTFReport report;
  EXPECT_EQ(report.Quoting(L"a<{\\}"), L"a<{\\}");
}

TEST(RtfReport, LogsCharactersOutsideTheCodePage) {
  const CapturedLog log;
  const std::string bytes = body([](RTFReport& r) { r.Text(L"\u0141\u4E2D", PARAGRAPH_NONE, L"", 0); });
  EXPECT_EQ(bytes, "??");
  ASSERT_EQ(log.lines().size(), 1u);
  EXPECT_TRUE(
      log.lines()[0].ends_with(L"a.rtf': 2 characters could not be written as they were given, the first is U+0141."));
}

TEST(ConformingRtfReport, EscapesEveryText) {
  EXPECT_EQ(body(
                [](RTFReport& r) {
                  r.Text(L"{\u03A9}", PARAGRAPH_NORMAL, L"", 0);
                  r.Cell(L"a\\b", 0, nullptr);
                },
                1),
            "\\{\\u937?\\}\\s0\\ql\\par\\pard\\plain \\intbl a\\\\b\\cell \r\n");
}

TEST(ConformingRtfReport, JumpsToABookmarkOfTheSameDocument) {
  EXPECT_EQ(body([](RTFReport& r) { r.Link(L"See", L"#sec1"); }, 1), hyperLink("See", "sec1"));
  EXPECT_EQ(body([](RTFReport& r) { r.Link(L"See", L"sec1"); }, 1), hyperLink("See", "sec1"));
}

TEST(ConformingRtfReport, LinksToOutsideAddresses) {
  EXPECT_EQ(body([](RTFReport& r) { r.Link(L"{See}", L"https://example.com/?a=\"1\"&b=\\"); }, 1),
            "{\\field{\\*\\fldinst {HYPERLINK \"https://example.com/?a=%221%22&b=\\\\\" }}"
            "{\\fldrslt {\\ul \\cf2 \\{See\\}\\cf0 \\ul0 }}}\n");
}

TEST(ConformingRtfReport, DoesNotMistakeADriveLetterForAScheme) {
  EXPECT_EQ(body([](RTFReport& r) { r.Link(L"x", L"C:name"); }, 1), hyperLink("x", "C:name"));
}

TEST(ConformingRtfReport, HoldsATextOfAnyLength) {
  EXPECT_EQ(body([](RTFReport& r) { r.Text(std::wstring(100000, L'x').c_str(), PARAGRAPH_NONE, L"", 0); }, 1),
            std::string(100000, 'x'));
}

TEST(ConformingRtfReport, BeginsWithTheNextOpen) {
  const TemporaryFolder folder;
  RTFReport report;
  EXPECT_EQ(report.Open((folder / L"a.rtf").c_str()), REPORT_OK);
  report.SetReportOption(OPTION_CONFORMING, 1);
  report.Text(L"{}", PARAGRAPH_NONE, L"", 0);
  report.Link(L"x", L"#y");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(bytesOf(folder / L"a.rtf").ends_with("{{}" + hyperLink("x", "#y") + "}}"));
}

TEST(RtfReportCell, IgnoresTheTextsAndHeaderFlagsOfBeginAndEnd) {
  EXPECT_EQ(body([](RTFReport& r) {
              r.BeginCell(L"begin", 1, nullptr);
              r.Text(L"x", PARAGRAPH_NONE, L"", 0);
              r.EndCell(L"end", 1);
            }),
            "\\intbl x\\cell \r\n");
}

TEST(RtfReportCell, TreatsEmptyAttributesAsNone) {
  EXPECT_EQ(body([](RTFReport& r) {
              r.BeginCell(L"x", 0, L"");
              r.EndCell(L"x", 0);
            }),
            "\\intbl \\cell \r\n");
}

TEST(RtfReportCell, LeavesNoColourForTheNextEnd) {
  EXPECT_EQ(body([](RTFReport& r) {
              r.Cell(L"x", 0, L"red");
              r.EndCell(L"", 0);
            }),
            "\\intbl \\cf6 \\highlight6 x\\highlight0 \\cf0 \\cell \r\n\\cell \r\n");
}

TEST(RtfReportCell, IsEmptyForATextOfMoreThan4096Bytes) {
  const CapturedLog log;
  EXPECT_EQ(body([](RTFReport& r) { r.Cell(longText(4097).c_str(), 1, nullptr); }), "\\intbl \\b{}\\b0 \\cell \r\n");
  EXPECT_EQ(body([](RTFReport& r) { r.Cell(longText(4096).c_str(), 0, nullptr); }),
            "\\intbl " + std::string(4096, 'x') + "\\cell \r\n");
  EXPECT_TRUE(
      logsTheLoss(log, L"a.rtf': 4097 characters could not be written as they were given, the first is U+0078."));
}

TEST(RtfReportLink, TreatsAnOutsideAddressAsABookmark) {
  EXPECT_EQ(body([](RTFReport& r) { r.Link(L"See", L"https://example.com/"); }),
            hyperLink("See", "https://example.com/"));
}

TEST(RtfReportLink, MayHaveNoTarget) {
  EXPECT_EQ(body([](RTFReport& r) { r.Link(L"See", nullptr); }), hyperLink("See", ""));
  EXPECT_EQ(body([](RTFReport& r) { r.Link(L"See", L""); }), hyperLink("See", ""));
  EXPECT_EQ(body([](RTFReport& r) { r.Link(L"See", L"#"); }), hyperLink("See", "#"));
  EXPECT_EQ(body([](RTFReport& r) { r.Link(nullptr, nullptr); }), hyperLink("", ""));
}

TEST(RtfReportLink, OfMoreThan4096BytesIsDropped) {
  const CapturedLog log;
  EXPECT_EQ(body([](RTFReport& r) { r.Link(longText(4096).c_str(), L"#sec1"); }), "");
  EXPECT_EQ(body([](RTFReport& r) { r.Link(L"See", longText(4096).c_str()); }), "");
  ASSERT_EQ(log.lines().size(), 2u);
  EXPECT_TRUE(log.lines()[0].ends_with(
      L"a.rtf': 4101 characters could not be written as they were given, the first is U+0023."));
  EXPECT_TRUE(log.lines()[1].ends_with(
      L"a.rtf': 4099 characters could not be written as they were given, the first is U+0078."));
}

TEST(RtfReport, WritesTheClosingWordsOfUnmatchedEnds) {
  EXPECT_EQ(body([](RTFReport& r) {
              r.EndStyle(STYLE_BOLD, 0);
              r.EndStyle(STYLE_ITALIC, 0);
              r.EndStyle(STYLE_FONT_SIZE, 0);
              r.EndCell(L"", 0);
              r.EndRow(L"");
            }),
            "}\\b0 }\\i0 \\fs10 \\cell \r\n\\pard \\nowidctlpar\\widctlpar\\adjustright\\row\\pard}\r\n");
}

TEST(RtfReport, MayHaveAnEmptyTitle) {
  RTFReport report;
  report.AddProperty(L"%TITLE%", L"");
  report.AddProperty(L"%TITLE%", L"Later");
  EXPECT_TRUE(headOf(report).starts_with("{\\rtf\\ansi{\\info{\\title }} \r\n{\\colortbl;"));
}

TEST(RtfReport, IsInLandscapeForEveryNonZeroValue) {
  for (const int value : {2, -1, 256}) {
    RTFReport report;
    report.SetReportOption(OPTION_LANDSCAPE, value);
    EXPECT_NE(headOf(report).find("}\\landscape\\paperw16838\\paperh11906\r\n{"), std::string::npos);
  }
}

TEST(RtfReport, RefusesASecondOpenAndContinuesTheFirstDocument) {
  const TemporaryFolder folder;
  RTFReport report;
  EXPECT_EQ(report.Open((folder / L"a.rtf").c_str()), REPORT_OK);
  report.Text(L"one ", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Open((folder / L"b.rtf").c_str()), REPORT_FILE_ERROR);
  EXPECT_NE(std::wstring_view(report.GetError()), L"");
  report.Text(L"two", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(bytesOf(folder / L"a.rtf").ends_with("\\paperw11906\\paperh16838\r\n{one two}}"));
  EXPECT_FALSE(exists(folder / L"b.rtf"));
}

TEST(RtfReport, WritesNothingAfterAFailedOpen) {
  const TemporaryFolder folder;
  RTFReport report;
  EXPECT_EQ(report.Open((folder / L"a.rtf").c_str()), REPORT_OK);
  report.Text(L"kept", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.Open((folder / L"missing/b.rtf").c_str()), REPORT_FILE_ERROR);
  report.Text(L"late", PARAGRAPH_NORMAL, L"", 0);
  report.Cell(L"late", 1, L"red");
  report.Link(L"late", L"#late");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(bytesOf(folder / L"a.rtf").ends_with("\r\n{kept}}"));
  EXPECT_FALSE(exists(folder / L"missing"));
}

TEST(RtfReportLoss, IsLoggedOnceForADroppedText) {
  const CapturedLog log;
  EXPECT_EQ(body([](RTFReport& r) { r.Text((L"a" + longText(4096)).c_str(), PARAGRAPH_NONE, L"", 0); }), "");
  EXPECT_TRUE(
      logsTheLoss(log, L"a.rtf': 4097 characters could not be written as they were given, the first is U+0061."));
}

TEST(RtfReportLoss, RestartsWithTheNextOpen) {
  const TemporaryFolder folder;
  const CapturedLog log;
  RTFReport report;
  for (const wchar_t* const text : {L"\u4E2D\u4E2D", L"plain", L"\u0141\u4E2D\u0142"}) {
    EXPECT_EQ(report.Open((folder / L"a.rtf").c_str()), REPORT_OK);
    report.Text(text, PARAGRAPH_NONE, L"", 0);
    EXPECT_EQ(report.Close(), REPORT_OK);
  }
  ASSERT_EQ(log.lines().size(), 2u);
  EXPECT_TRUE(
      log.lines()[0].ends_with(L"a.rtf': 2 characters could not be written as they were given, the first is U+4E2D."));
  EXPECT_TRUE(
      log.lines()[1].ends_with(L"a.rtf': 3 characters could not be written as they were given, the first is U+0141."));
}

TEST(ConformingRtfReport, LogsNoLoss) {
  const CapturedLog log;
  EXPECT_EQ(body([](RTFReport& r) { r.Text((L"\u4E2D" + longText(5000)).c_str(), PARAGRAPH_NONE, L"", 0); }, 1),
            "\\u20013?" + std::string(5000, 'x'));
  EXPECT_TRUE(log.lines().empty());
}

TEST(ConformingRtfReport, EscapesAnchorsAndContents) {
  EXPECT_EQ(body([](RTFReport& r) { r.Ancor(L"a{\"b"); }, 1), "{\\*\\bkmkstart a\\{'b}{\\*\\bkmkend a\\{'b}");
  EXPECT_EQ(body([](RTFReport& r) { r.BeginAncor(L"a}\u03A9"); }, 1),
            "{\\*\\bkmkstart a\\}\\u937?}{\\*\\bkmkend a\\}\\u937?}");
  EXPECT_EQ(body([](RTFReport& r) { r.TocItem(L"a{\"b", L"{Chapter}", 1); }, 1),
            hyperLink("\\{Chapter\\}", "a\\{'b") + "\\line ");
}

TEST(ConformingRtfReport, EscapesItsTitle) {
  RTFReport report;
  report.SetReportOption(OPTION_CONFORMING, 1);
  report.AddProperty(L"%TITLE%", L"{\u4E2D}");
  EXPECT_TRUE(headOf(report).starts_with("{\\rtf\\ansi{\\info{\\title \\{\\u20013?\\}}} \r\n{\\colortbl;"));
}

TEST(ConformingRtfReport, MayHaveLinksWithoutATarget) {
  EXPECT_EQ(body([](RTFReport& r) { r.Link(L"See", nullptr); }, 1), hyperLink("See", ""));
  EXPECT_EQ(body([](RTFReport& r) { r.Link(L"See", L""); }, 1), hyperLink("See", ""));
  EXPECT_EQ(body([](RTFReport& r) { r.Link(L"See", L"#"); }, 1), hyperLink("See", ""));
}

TEST(ConformingRtfReport, HoldsCellsAndLinksOfAnyLength) {
  const std::string text(5000, 'x');
  EXPECT_EQ(body([](RTFReport& r) { r.Cell(longText(5000).c_str(), 0, nullptr); }, 1),
            "\\intbl " + text + "\\cell \r\n");
  EXPECT_EQ(body([](RTFReport& r) { r.Link(longText(5000).c_str(), (L"#" + longText(5000)).c_str()); }, 1),
            hyperLink(text, text));
  EXPECT_EQ(
      body([](RTFReport& r) { r.Link(longText(5000).c_str(), (L"https:" + longText(5000)).c_str()); }, 1),
      "{\\field{\\*\\fldinst {HYPERLINK \"https:" + text + "\" }}{\\fldrslt {\\ul \\cf2 " + text + "\\cf0 \\ul0 }}}\n");
}

TEST(ConformingRtfReport, EndsWithTheNextOpen) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.rtf";
  RTFReport report;
  report.SetReportOption(OPTION_CONFORMING, 1);
  EXPECT_EQ(report.Open(path.c_str()), REPORT_OK);
  report.SetReportOption(OPTION_CONFORMING, 0);
  report.Text(L"{", PARAGRAPH_NONE, L"", 0);
  report.Link(L"x", L"#y");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(bytesOf(path).ends_with("{\\{" + hyperLink("x", "y") + "}}"));
  EXPECT_EQ(report.Open(path.c_str()), REPORT_OK);
  report.Text(L"{", PARAGRAPH_NONE, L"", 0);
  report.Link(L"x", L"#y");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(bytesOf(path).ends_with("{{" + hyperLink("x", "#y") + "}}"));
}

TEST(ConformingRtfReport, HoldsAParagraphOf100Kilobytes) {
  std::wstring text;
  std::string bytes;
  for (int sentence = 1; text.size() < 102400; ++sentence) {
    text += L"Sentence " + std::to_wstring(sentence) + L" costs 5 \u20AC in {\u4E2D} and C:\\" + grin() + L".\n";
    bytes += "Sentence " + std::to_string(sentence) +
             " costs 5 \x80 in \\{\\u20013?\\} and C:\\\\\\u-10179?\\u-8704?.\\line ";
  }
  const CapturedLog log;
  EXPECT_TRUE(areSameBytes("before\\s1\\ql\\par\\pard\\plain " + bytes + "\\s0\\ql\\par\\pard\\plain \\intbl \\b{" +
                               bytes + "}\\b0 \\cell \r\nbehind",
                           body(
                               [&text](RTFReport& r) {
                                 r.Text(L"before", PARAGRAPH_HEADING1, L"", 0);
                                 r.Text(text.c_str(), PARAGRAPH_NORMAL, L"", 0);
                                 r.Cell(text.c_str(), 1, nullptr);
                                 r.Text(L"behind", PARAGRAPH_NONE, L"", 0);
                               },
                               1)));
  EXPECT_TRUE(log.lines().empty());
}

TEST(ConformingRtfReport, EscapesQuotesAnywhereInAnAddress) {
  const std::pair<const wchar_t*, std::string> addresses[] = {
      {L"https:\"", "https:%22"},
      {L"https:\"\"\"", "https:%22%22%22"},
      {L"https:\"{a}\"b\u4E2D", "https:%22\\{a\\}%22b\\u20013?"},
      {L"mailto:a@example.org", "mailto:a@example.org"}};
  for (const auto& [address, bytes] : addresses) {
    EXPECT_EQ(body([address = address](RTFReport& r) { r.Link(L"See", address); }, 1),
              "{\\field{\\*\\fldinst {HYPERLINK \"" + bytes + "\" }}{\\fldrslt {\\ul \\cf2 See\\cf0 \\ul0 }}}\n");
  }
}
