#include "scrivalen/html_report.h"

#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/decimal_comma.h"
#include "support/documents/report_state.h"
#include "support/faults/open_errors.h"
#include "support/files.h"
#include "support/memory_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>

using namespace scrivalen::test;

namespace {

constexpr std::string_view kEnd = "</body></html>\n";

constexpr std::string_view kHeadBeforeTitle =
    "<!DOCTYPE html>\n"
    "<html lang=\"en\">\n"
    "<head>\n"
    "<meta charset=\"utf-8\">\n"
    "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n";

constexpr std::string_view kHeadAfterTitle =
    "<style>\n"
    "body { font-family: sans-serif; line-height: 1.4; margin: 2em; }\n"
    "table { border-collapse: collapse; margin: 1em 0; }\n"
    "th, td { border: 1px solid #bbb; padding: 0.25em 0.6em; text-align: left; vertical-align: top; }\n"
    "th { background: #eee; }\n"
    "</style>\n"
    "</head>\n"
    "<body>\n";

std::string page(std::string_view title, std::string_view body) {
  std::string text(kHeadBeforeTitle);
  return ((((text += title) += kHeadAfterTitle) += body) += kEnd);
}

// A report whose protected members are public.
struct ExposedReport : HtmlReport {
  using HtmlReport::Open;
  using HtmlReport::OpenWithHeader;
  using HtmlReport::ValueToHtml;
};

// The bytes that an action writes to a host's file, which gets no head, without the end of the page.
template <typename Action>
std::string written(Action action, bool conforming = false) {
  MemoryFile file;
  ExposedReport report;
  report.SetReportOption(OPTION_CONFORMING, conforming);
  EXPECT_EQ(report.Open(&file), REPORT_OK);
  action(report);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(file.bytes.ends_with(kEnd));
  return file.bytes.substr(0, file.bytes.size() - std::min(file.bytes.size(), kEnd.size()));
}

template <typename Action>
std::string writtenConforming(Action action) {
  return written(action, true);
}

std::string writtenText(const std::wstring& text, PARAGRAPH_TYPE type, int raw) {
  return written([&](AReport& report) { report.Text(text.c_str(), type, L"", raw); });
}

}  // namespace

TEST(HtmlReport, EscapesATextUnlessItIsRaw) {
  EXPECT_EQ(writtenText(L"a<b & \"c\" 'd' >", PARAGRAPH_NONE, 0), "a&lt;b &amp; &quot;c&quot; 'd' &gt;");
  EXPECT_EQ(writtenText(L"<em>a & b</em>", PARAGRAPH_NONE, 1), "<em>a & b</em>");
  EXPECT_EQ(writtenText(L"<br>", PARAGRAPH_NONE, -1), "<br>");
}

TEST(HtmlReport, WritesAHeadingOfEachLevel) {
  for (const int level : {1, 2, 3, 4, 5, 6}) {
    const std::string number = std::to_string(level);
    EXPECT_EQ(writtenText(L"Q1 & Q2", static_cast<PARAGRAPH_TYPE>(level), 0),
              "<h" + number + ">Q1 &amp; Q2</h" + number + ">");
  }
}

TEST(HtmlReport, WritesAParagraph) {
  EXPECT_EQ(writtenText(L"text", PARAGRAPH_NORMAL, 0), "<p>text</p>");
  EXPECT_EQ(writtenText(L"<i>text</i>", PARAGRAPH_NORMAL, 1), "<p><i>text</i></p>");
}

TEST(HtmlReport, WritesAttributesOnAHeadingButNotOnAParagraph) {
  EXPECT_EQ(written([](AReport& report) { report.Text(L"a", PARAGRAPH_HEADING1, L"class=\"x\"", 0); }),
            "<h1 class=\"x\">a</h1>");
  EXPECT_EQ(written([](AReport& report) { report.Text(L"a", PARAGRAPH_NORMAL, L"class=\"x\"", 0); }), "<p>a</p>");
}

TEST(HtmlReport, UsesAnyOtherParagraphTypeAsAHeadingLevel) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginParagraph(PARAGRAPH_NONE, L"");
              report.EndParagraph(PARAGRAPH_NONE);
            }),
            "<h0></h0>");
  EXPECT_EQ(writtenText(L"a", static_cast<PARAGRAPH_TYPE>(42), 0), "<h42>a</h42>");
  EXPECT_EQ(writtenText(L"a", static_cast<PARAGRAPH_TYPE>(-1), 0), "<h-1>a</h-1>");
}

TEST(HtmlReport, BeginsAndEndsParagraphs) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginParagraph(PARAGRAPH_NORMAL, L"class=x");
              report.EndParagraph(PARAGRAPH_NORMAL);
              report.BeginParagraph(PARAGRAPH_HEADING2, L"");
              report.EndParagraph(PARAGRAPH_HEADING2);
              report.BeginParagraph(PARAGRAPH_HEADING6, L"id=y");
              report.EndParagraph(PARAGRAPH_HEADING6);
            }),
            "<p></p><h2></h2><h6 id=y></h6>");
}

TEST(HtmlReport, TreatsNullTextsAsEmpty) {
  EXPECT_EQ(written([](AReport& report) {
              report.Text(nullptr, PARAGRAPH_HEADING1, nullptr, 0);
              report.Text(nullptr, PARAGRAPH_NONE, nullptr, 1);
              report.BeginParagraph(PARAGRAPH_HEADING2, nullptr);
              report.Cell(nullptr, 0, nullptr);
              report.Link(nullptr, nullptr);
              report.TocItem(nullptr, nullptr, 0);
              report.Ancor(nullptr);
            }),
            "<h1></h1><h2><td></td><a href=\"\"></a><li><a href=\"#\"></a></li><a name=\"\"> </a>");
}

TEST(HtmlReport, WritesBoldAndItalic) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginStyle(STYLE_BOLD, 0);
              report.BeginStyle(STYLE_ITALIC, 0);
              report.EndStyle(STYLE_ITALIC, 0);
              report.EndStyle(STYLE_BOLD, 0);
            }),
            "<b><i></i></b>");
}

TEST(HtmlReport, IgnoresTheFontSize) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginStyle(STYLE_FONT_SIZE, 14);
              report.EndStyle(STYLE_FONT_SIZE, 14);
            }),
            "");
}

TEST(HtmlReport, WritesTagsWithoutANameForAnUnknownStyle) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginStyle(static_cast<REPORT_STYLE>(3), 0);
              report.EndStyle(static_cast<REPORT_STYLE>(3), 0);
            }),
            "<></>");
}

TEST(HtmlReport, BreaksALine) {
  EXPECT_EQ(written([](AReport& report) { report.EndOfLine(); }), "<br>");
}

TEST(HtmlReport, WritesANonBreakingSpace) {
  EXPECT_EQ(written([](AReport& report) { report.Space(); }), "&nbsp;");
}

TEST(HtmlReport, WritesAnchors) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginAncor(L"one");
              report.Text(L"text", PARAGRAPH_NONE, L"", 0);
              report.EndAncor();
              report.Ancor(L"two");
            }),
            "<a name=\"one\">text</a><a name=\"two\"> </a>");
}

TEST(HtmlReport, WritesALinkWithItsTargetFirst) {
  EXPECT_EQ(written([](AReport& report) { report.Link(L"text", L"#one"); }), "<a href=\"#one\">text</a>");
}

TEST(HtmlReport, DoesNotEscapeAnchorsAndLinks) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginAncor(L"a&b");
              report.Link(L"<b>text</b>", L"http://x/?a=1&b=2");
              report.TocItem(L"a&b", L"<b>text</b>", 1);
            }),
            "<a name=\"a&b\"><a href=\"http://x/?a=1&b=2\"><b>text</b></a>"
            "<li><a href=\"#a&b\"><b>text</b></a></li>");
}

TEST(HtmlReport, WritesTheTableOfContentsAsAFlatList) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginToc();
              report.TocItem(L"one", L"One", 1);
              report.TocItem(L"two", L"Two", 5);
              report.EndToc();
            }),
            "<ul><li><a href=\"#one\">One</a></li><li><a href=\"#two\">Two</a></li></ul>");
}

TEST(HtmlReport, GivesATableItsDefaultClass) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginTable(L"name", nullptr);
              report.EndTable(L"name");
            }),
            "<table class=\"table table-hover table-bordered\"></table>");
}

TEST(HtmlReport, WritesTheAttributesOfATable) {
  EXPECT_EQ(written([](AReport& report) { report.BeginTable(L"name", L"id=\"t\" border=1"); }),
            "<table id=\"t\" border=1>");
}

TEST(HtmlReport, WritesATableWithEmptyAttributes) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginTable(nullptr, L"");
              report.EndTable(nullptr);
            }),
            "<table></table>");
}

TEST(HtmlReport, PutsABlankBeforeTheAttributesOfARow) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginRow(L"ignored", L"class=x", 9);
              report.EndRow(L"ignored");
              report.BeginRow(nullptr, L"", 0);
              report.EndRow(nullptr);
              report.BeginRow(nullptr, nullptr, 0);
            }),
            "<tr class=x></tr><tr></tr><tr>");
}

TEST(HtmlReport, PutsNoBlankBeforeTheAttributesOfACell) {
  EXPECT_EQ(written([](AReport& report) { report.BeginCell(L"ignored", 0, L"a=1"); }), "<tda=1>");
  EXPECT_EQ(written([](AReport& report) { report.BeginCell(L"ignored", 1, L" a=1"); }), "<th a=1>");
  EXPECT_EQ(written([](AReport& report) { report.Cell(L"x", 0, L"a=1"); }), "<tda=1>x</td>");
}

TEST(HtmlReport, BeginsAndEndsCells) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginCell(L"ignored", 0, L"");
              report.EndCell(L"ignored", 0);
              report.BeginCell(nullptr, 1, nullptr);
              report.EndCell(nullptr, 1);
              report.BeginCell(nullptr, -1, nullptr);
              report.EndCell(nullptr, -1);
            }),
            "<td></td><th></th><th></th>");
}

TEST(HtmlReport, WritesWholeCellsUnescaped) {
  EXPECT_EQ(written([](AReport& report) {
              report.Cell(L"a<b", 0, nullptr);
              report.Cell(L"a<b", 1, L" width=\"25%\"");
              report.Cell(L"", 0, L"");
            }),
            "<td>a<b</td><th width=\"25%\">a<b</th><td></td>");
}

TEST(HtmlReport, QuotesAText) {
  HtmlReport report;
  EXPECT_EQ(report.Quoting(L"a<b> & \"c\" 'd'"), L"a&lt;b&gt; &amp; &quot;c&quot; 'd'");
  EXPECT_EQ(report.Quoting(L"&amp;"), L"&amp;amp;");
  EXPECT_EQ(report.Quoting(L""), L"");
}

TEST(HtmlReport, QuotesTheValueOfARow) {
  EXPECT_EQ(written([](AReport& report) { report.Row2NotEmptyWithQuote(L"<b>", L"<b>"); }),
            "<tr><td><b></td><td>&lt;b&gt;</td></tr>");
}

TEST(HtmlReport, WritesNeitherSubDocumentsNorColoursNorSeparators) {
  EXPECT_EQ(written([](AReport& report) {
              EXPECT_EQ(report.BeginSubDocument(L"folder", L"file", L"title"), REPORT_OK);
              report.EndSubDocument();
              report.SetCellColor(L"red");
              report.SetColumnSeparator(L";");
              report.SetReportOption(OPTION_LANDSCAPE, 1);
              report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
              report.Row2(L"a", L"b", 0, nullptr, nullptr);
            }),
            "<tr><td>a</td><td>b</td></tr>");
}

TEST(HtmlReport, WritesPercentSignsUnchanged) {
  EXPECT_EQ(written([](AReport& report) {
              report.Text(L"100% %s %d %n", PARAGRAPH_HEADING1, L"title=%s", 0);
              report.Cell(L"%s", 0, L" width=\"25%\"");
              report.BeginRow(L"row", L"%d", 1);
              report.Link(L"%s", L"%20");
              report.TocItem(L"%d", L"%x", 1);
              report.BeginTable(L"t", L"%s");
            }),
            "<h1 title=%s>100% %s %d %n</h1><td width=\"25%\">%s</td><tr %d><a href=\"%20\">%s</a>"
            "<li><a href=\"#%d\">%x</a></li><table %s>");
}

TEST(HtmlReport, LeavesLineEndsInATextUnchanged) {
  EXPECT_EQ(writtenText(L"one\ntwo\r\nthree\t!", PARAGRAPH_NONE, 0), "one\ntwo\r\nthree\t!");
}

TEST(HtmlReport, WritesUtf8) {
  EXPECT_EQ(writtenText(L"\u00E9\u20AC", PARAGRAPH_NONE, 0), "\xC3\xA9\xE2\x82\xAC");
  EXPECT_EQ(writtenText(grin(), PARAGRAPH_NONE, 0), "\xF0\x9F\x98\x80");
  EXPECT_EQ(writtenText(wideUnit(0xD83D) + wideUnit(0xDE00), PARAGRAPH_NONE, 1), "\xF0\x9F\x98\x80");
}

TEST(HtmlReport, NeverSplitsASurrogatePair) {
  for (const std::size_t before : {6u, 7u, 8u, 15u, 16u, 4094u, 4095u, 4096u, 65535u}) {
    const std::wstring text = longText(before) + wideUnit(0xD83D) + wideUnit(0xDE00) + L"<y>" + longText(20);
    const std::string expected = std::string(before, 'x') + "\xF0\x9F\x98\x80&lt;y&gt;" + std::string(20, 'x');
    EXPECT_TRUE(areSameBytes(expected, writtenText(text, PARAGRAPH_NONE, 0))) << before;
  }
}

TEST(HtmlReport, ReplacesLoneSurrogates) {
  EXPECT_EQ(writtenText(L"a" + wideUnit(0xD83D) + L"b", PARAGRAPH_NONE, 0),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(writtenText(wideUnit(0xDE00) + wideUnit(0xD83D), PARAGRAPH_NONE, 1), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(HtmlReport, ReplacesControlCharactersInEscapedText) {
  EXPECT_EQ(writtenText(L"a\x01"
                        L"b\x1F"
                        L"c",
                        PARAGRAPH_NONE, 0),
            "a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD"
            "c");
}

TEST(HtmlReport, WritesLongTextsInFull) {
  EXPECT_TRUE(areSameBytes(std::string(100000, 'x'), writtenText(longText(100000), PARAGRAPH_NONE, 0)));
  std::string escaped;
  for (int i = 0; i < 100000; ++i) {
    escaped += "&quot;";
  }
  EXPECT_TRUE(areSameBytes(escaped, writtenText(std::wstring(100000, L'"'), PARAGRAPH_NONE, 0)));
}

TEST(HtmlReport, WritesAValueThroughAFormat) {
  EXPECT_EQ(written([](ExposedReport& report) {
              report.ValueToHtml(L"<td>%s</td>", L"a<b");
              report.ValueToHtml(L"<td>%d</td>", -1234567);
              report.ValueToHtml(L"<td width=\"25%%\">%5d|</td>", 42);
            }),
            "<td>a<b</td><td>-1234567</td><td width=\"25%\">   42|</td>");
}

TEST(HtmlReport, TreatsANullFormatOrValueAsEmpty) {
  EXPECT_EQ(written([](ExposedReport& report) {
              report.ValueToHtml(nullptr, L"text");
              report.ValueToHtml(nullptr, 42);
              report.ValueToHtml(L"[%s]", nullptr);
            }),
            "[]");
}

TEST(HtmlReport, WritesNumbersWithoutTheLocale) {
  const DecimalComma comma;
  EXPECT_EQ(written([](ExposedReport& report) {
              report.ValueToHtml(L"%d", 1234567);
              report.BeginParagraph(static_cast<PARAGRAPH_TYPE>(1234567), L"");
            }),
            "1234567<h1234567>");
}

TEST(HtmlReport, LogsCharactersThatItReplaced) {
  const CapturedLog log;
  const TemporaryFolder folder;
  HtmlReport report;
  EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
  report.Text(wideUnit(0xD83D).c_str(), PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"'" + (folder / L"a.html") +
                                                   L"': 1 character could not be written as it was given: U+D83D."});
}

TEST(HtmlReport, CountsCharactersThatQuotingReplaced) {
  const CapturedLog log;
  const TemporaryFolder folder;
  HtmlReport report;
  EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
  report.Row2NotEmptyWithQuote(L"name", L"\x01");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"'" + (folder / L"a.html") +
                                                   L"': 1 character could not be written as it was given: U+0001."});
}

TEST(HtmlReport, StartsCountingLossesAnewForEachFile) {
  const TemporaryFolder folder;
  HtmlReport report;
  for (const wchar_t* text : {L"\x01", L"A"}) {
    const CapturedLog log;
    EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
    report.Text(text, PARAGRAPH_NORMAL, L"", 0);
    EXPECT_EQ(report.Close(), REPORT_OK);
    EXPECT_EQ(log.lines().size(), text[0] == L'A' ? 0u : 1u);
  }
}

TEST(HtmlReportOpen, WritesAHeadWithTheTitleProperty) {
  const TemporaryFolder folder;
  HtmlReport report;
  report.AddProperty(L"%TITLE%", L"Q1 & <Q2>");
  report.AddProperty(L"%TITLE%", L"second");
  report.SetOutputFileName((folder / L"a.html").c_str());
  EXPECT_EQ(report.Open(), REPORT_OK);
  report.Text(L"text", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(areSameBytes(page("<title>Q1 &amp; &lt;Q2&gt;</title>\n", "<p>text</p>"), bytesOf(folder / L"a.html")));
}

TEST(HtmlReportOpen, WritesNoTitleWithoutTheProperty) {
  const TemporaryFolder folder;
  HtmlReport report;
  report.AddProperty(L"%Title%", L"other case");
  report.SetOutputFileName((folder / L"a.html").c_str());
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(areSameBytes(page("", ""), bytesOf(folder / L"a.html")));
}

TEST(HtmlReportOpen, LogsNothingWithoutATemplateName) {
  const CapturedLog log;
  const TemporaryFolder folder;
  HtmlReport report;
  report.SetOutputFileName((folder / L"a.html").c_str());
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(log.lines().empty());
}

TEST(HtmlReportOpen, CallsTheOverrideThatOpensAFile) {
  struct Overriding : HtmlReport {
    using HtmlReport::Open;
    using HtmlReport::OpenWithHeader;
    using HtmlReport::OpenWithTemplate;
    REPORT_ERRORS Open(const wchar_t* file) override {
      opened.emplace_back(file);
      return REPORT_FILE_ERROR;
    }
    std::vector<std::wstring> opened;
  } report;
  report.SetOutputFileName(L"a.html");
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.OpenWithHeader(L"b.html", L"title"), REPORT_FILE_ERROR);
  EXPECT_EQ(report.OpenWithTemplate(L"c.html", L"default.htm"), REPORT_FILE_ERROR);
  EXPECT_EQ(report.opened, (std::vector<std::wstring>{L"a.html", L"b.html", L"c.html"}));
}

TEST(HtmlReportOpen, WritesNoHeadForAFileName) {
  const TemporaryFolder folder;
  HtmlReport report;
  report.AddProperty(L"%TITLE%", L"title");
  EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
  report.Text(L"text", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.html"), "<p>text</p></body></html>\n");
}

TEST(HtmlReportOpen, SetsTheOpenFlagUntilItCloses) {
  const TemporaryFolder folder;
  HtmlReport report;
  EXPECT_EQ(ReportState::openFlag(report), 0);
  EXPECT_EQ(report.Open((folder / L"missing/a.html").c_str()), REPORT_FILE_ERROR);
  EXPECT_EQ(ReportState::openFlag(report), 0);
  EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
  EXPECT_EQ(ReportState::openFlag(report), 1);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(ReportState::openFlag(report), 0);
}

TEST(HtmlReportOpen, ReportsWhyTheFileCannotBeCreated) {
  const TemporaryFolder folder;
  HtmlReport report;
  report.SetOutputFileName((folder / L"missing/a.html").c_str());
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(folder / L"missing/a.html"));
  EXPECT_EQ(report.Open(folder.path().c_str()), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(folder.path()));
  EXPECT_EQ(report.Open(static_cast<const wchar_t*>(nullptr)), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(L""));
}

TEST(HtmlReportOpen, CanBeRetriedAfterAFailure) {
  const TemporaryFolder folder;
  HtmlReport report;
  EXPECT_EQ(report.Open((folder / L"missing/a.html").c_str()), REPORT_FILE_ERROR);
  EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
  EXPECT_EQ(report.GetError(), openingError(folder / L"missing/a.html"));
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.html"), "</body></html>\n");
}

TEST(HtmlReportOpen, RefusesAnotherFileWhileItIsOpen) {
  const TemporaryFolder folder;
  HtmlReport report;
  EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
  report.Text(L"A", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Open((folder / L"b.html").c_str()), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(),
            L"File open/create error for '" + (folder / L"b.html") + L"'. The report is still open.");
  report.Text(L"B", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.html"), "AB</body></html>\n");
  EXPECT_FALSE(exists(folder / L"b.html"));
}

TEST(HtmlReportOpen, WithAHeaderWritesTheGivenTitle) {
  const TemporaryFolder folder;
  ExposedReport report;
  report.AddProperty(L"%TITLE%", L"not this one");
  EXPECT_EQ(report.OpenWithHeader((folder / L"a.html").c_str(), L"title"), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(areSameBytes(page("<title>title</title>\n", ""), bytesOf(folder / L"a.html")));
  EXPECT_EQ(report.OpenWithHeader((folder / L"a.html").c_str(), nullptr), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(areSameBytes(page("", ""), bytesOf(folder / L"a.html")));
}

TEST(HtmlReportOpen, WithAHeaderReportsWhyTheFileCannotBeCreated) {
  const TemporaryFolder folder;
  ExposedReport report;
  EXPECT_EQ(report.OpenWithHeader((folder / L"missing/a.html").c_str(), L"title"), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(folder / L"missing/a.html"));
}

TEST(HtmlReportClose, IsHarmlessOnAClosedReport) {
  const TemporaryFolder folder;
  HtmlReport report;
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.html"), "</body></html>\n");
}

TEST(HtmlReportClose, ReleasesTheFile) {
  const TemporaryFolder folder;
  HtmlReport first;
  HtmlReport second;
  EXPECT_EQ(first.Open((folder / L"a.html").c_str()), REPORT_OK);
  EXPECT_EQ(second.Open((folder / L"a.html").c_str()), REPORT_FILE_ERROR);
  EXPECT_EQ(first.Close(), REPORT_OK);
  EXPECT_EQ(second.Open((folder / L"a.html").c_str()), REPORT_OK);
  EXPECT_EQ(second.Close(), REPORT_OK);
}

TEST(HtmlReportClose, LeavesAReportThatCanBeOpenedAgain) {
  const TemporaryFolder folder;
  HtmlReport report;
  for (const wchar_t* name : {L"a.html", L"b.html", L"a.html"}) {
    EXPECT_EQ(report.Open((folder / name).c_str()), REPORT_OK);
    report.Text(name, PARAGRAPH_NONE, L"", 0);
    EXPECT_EQ(report.Close(), REPORT_OK);
  }
  EXPECT_EQ(bytesOf(folder / L"a.html"), "a.html</body></html>\n");
  EXPECT_EQ(bytesOf(folder / L"b.html"), "b.html</body></html>\n");
}

TEST(HtmlReport, WritesNothingWhileItIsClosed) {
  const CapturedLog log;
  const TemporaryFolder folder;
  HtmlReport report;
  report.Text(L"before", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Open((folder / L"missing/a.html").c_str()), REPORT_FILE_ERROR);
  report.Row2(L"a", L"b", 0, nullptr, nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Text(L"after", PARAGRAPH_NORMAL, L"", 0);
  report.BeginTable(L"name", nullptr);
  EXPECT_EQ(bytesOf(folder / L"a.html"), "</body></html>\n");
  EXPECT_TRUE(log.lines().empty());
}

TEST(HtmlReport, DestroyedWhileOpenLeavesItsFileHeld) {
  const TemporaryFolder folder;
  {
    HtmlReport report;
    EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
    report.Text(L"lost", PARAGRAPH_NORMAL, L"", 0);
  }
  HtmlReport another;
  EXPECT_EQ(another.Open((folder / L"a.html").c_str()), REPORT_FILE_ERROR);
  EXPECT_EQ(std::filesystem::file_size(asPath(folder / L"a.html")), 0u);
}

TEST(HtmlReportCopy, WritesToTheSameFile) {
  const TemporaryFolder folder;
  HtmlReport report;
  EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
  report.Text(L"one ", PARAGRAPH_NONE, L"", 0);
  HtmlReport copy = report;
  HtmlReport assigned;
  assigned = report;
  EXPECT_EQ(ReportState::openFlag(copy), 1);
  copy.Text(L"two ", PARAGRAPH_NONE, L"", 0);
  assigned.Text(L"three ", PARAGRAPH_NONE, L"", 0);
  report.Text(L"four", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(copy.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.html"), "one two three four</body></html>\n");
}

TEST(HtmlReportCopy, MayOutliveItsSource) {
  const TemporaryFolder folder;
  HtmlReport copy;
  {
    HtmlReport report;
    EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
    report.Text(L"one ", PARAGRAPH_NONE, L"", 0);
    copy = report;
  }
  copy.Text(L"two", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(copy.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.html"), "one two</body></html>\n");
}

TEST(HtmlReportCopy, ToItselfChangesNothing) {
  const TemporaryFolder folder;
  HtmlReport report;
  EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
  const HtmlReport& same = report;
  report = same;
  report.Text(L"text", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.html"), "text</body></html>\n");
}

TEST(HtmlReportOnAHostsFile, WritesNothingAtOpenAndTheEndOfThePageAtClose) {
  MemoryFile file;
  ExposedReport report;
  EXPECT_EQ(report.Open(&file), REPORT_OK);
  EXPECT_EQ(ReportState::openFlag(report), 1);
  EXPECT_EQ(file.bytes, "");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(ReportState::openFlag(report), 0);
  EXPECT_EQ(file.bytes, "</body></html>\n");
}

TEST(HtmlReportOnAHostsFile, NeitherClosesNorOwnsIt) {
  MemoryFile file;
  {
    ExposedReport report;
    for (const wchar_t* text : {L"one", L"two"}) {
      EXPECT_EQ(report.Open(&file), REPORT_OK);
      report.Text(text, PARAGRAPH_NONE, L"", 0);
      EXPECT_EQ(report.Close(), REPORT_OK);
    }
    report.Text(L"closed", PARAGRAPH_NONE, L"", 0);
  }
  file.Write("!", 1);
  EXPECT_EQ(file.bytes, "one</body></html>\ntwo</body></html>\n!");
}

TEST(HtmlReportOnAHostsFile, MayThenOpenItsOwnFile) {
  const TemporaryFolder folder;
  MemoryFile file;
  ExposedReport report;
  EXPECT_EQ(report.Open(&file), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
  report.Text(L"own", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(file.bytes, "</body></html>\n");
  EXPECT_EQ(bytesOf(folder / L"a.html"), "own</body></html>\n");
}

TEST(HtmlReportOnAHostsFile, IsSharedByACopy) {
  MemoryFile file;
  ExposedReport report;
  EXPECT_EQ(report.Open(&file), REPORT_OK);
  report.Text(L"one ", PARAGRAPH_NONE, L"", 0);
  HtmlReport copy = report;
  copy.Text(L"two ", PARAGRAPH_NONE, L"", 0);
  report.Text(L"three", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(copy.Close(), REPORT_OK);
  EXPECT_EQ(file.bytes, "one two three</body></html>\n");
}

TEST(HtmlReportOnAHostsFile, ReplacesAnOpenFileWithoutLosingItsBytes) {
  const TemporaryFolder folder;
  MemoryFile file;
  ExposedReport report;
  EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
  report.Text(L"one", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Open(&file), REPORT_OK);
  report.Text(L"two", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(std::filesystem::file_size(asPath(folder / L"a.html")), 3u);
  EXPECT_EQ(file.bytes, "two</body></html>\n");
  EXPECT_EQ(report.Open((folder / L"b.html").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"b.html"), "</body></html>\n");
}

TEST(HtmlReportOnAHostsFile, WritesLongReportsInFull) {
  MemoryFile file;
  ExposedReport report;
  EXPECT_EQ(report.Open(&file), REPORT_OK);
  for (int i = 0; i < 3; ++i) {
    report.Text(longText(100000).c_str(), PARAGRAPH_NONE, L"", 0);
  }
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(areSameBytes(std::string(300000, 'x') + "</body></html>\n", file.bytes));
}

TEST(HtmlReportOnAHostsFile, RefusesANullFile) {
  ExposedReport report;
  EXPECT_EQ(report.Open(static_cast<OutputFile*>(nullptr)), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), L"There is no output file.");
  EXPECT_EQ(ReportState::openFlag(report), 0);
}

TEST(HtmlReportOnAHostsFile, ReportsItsExceptionAtClose) {
  struct Raising : OutputFile {
    void Write(const void*, std::size_t) override {
      ++calls;
      throw std::runtime_error("socket closed");
    }
    int calls = 0;
  } file;
  const CapturedLog log;
  ExposedReport report;
  report.SetOutputFileName(L"socket");
  EXPECT_EQ(report.Open(&file), REPORT_OK);
  report.Text(longText(100000).c_str(), PARAGRAPH_NONE, L"", 0);
  report.Text(longText(100000).c_str(), PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), L"File write error for 'socket'. socket closed");
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"File write error for 'socket'. socket closed"});
  EXPECT_EQ(file.calls, 1);
  EXPECT_EQ(report.Close(), REPORT_OK);
}

TEST(HtmlReportOnAHostsFile, SurvivesAnyException) {
  struct Raising : OutputFile {
    void Write(const void*, std::size_t) override { throw 42; }
  } file;
  const CapturedLog log;
  ExposedReport report;
  EXPECT_EQ(report.Open(&file), REPORT_OK);
  report.Text(L"text", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), L"File write error for ''. The output file failed.");
  EXPECT_EQ(log.lines().size(), 1u);
}

TEST(HtmlReportOnAHostsFile, WorksAgainWithAGoodFile) {
  struct Raising : OutputFile {
    void Write(const void*, std::size_t) override { throw std::runtime_error("socket closed"); }
  } broken;
  MemoryFile good;
  const CapturedLog log;
  ExposedReport report;
  EXPECT_EQ(report.Open(&broken), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.Open(&good), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(good.bytes, "</body></html>\n");
}

TEST(ConformingHtmlReport, QuotesTheTextsOfCellsLinksAnchorsAndContents) {
  EXPECT_EQ(writtenConforming([](AReport& report) {
              report.Cell(L"a < b", 0, nullptr);
              report.Cell(L"\"x\"", 1, nullptr);
              report.Link(L"Smith & Sons", L"https://x.org/?a=1&b=\"2\"");
              report.BeginAncor(L"a&b");
              report.EndAncor();
              report.Ancor(L"<c>");
              report.TocItem(L"a&b", L"A > B", 1);
            }),
            "<td>a &lt; b</td><th>&quot;x&quot;</th>"
            "<a href=\"https://x.org/?a=1&amp;b=&quot;2&quot;\">Smith &amp; Sons</a>"
            "<a name=\"a&amp;b\"></a><a name=\"&lt;c&gt;\"> </a>"
            "<li><a href=\"#a&amp;b\">A &gt; B</a></li>");
}

TEST(ConformingHtmlReport, QuotesTheTextsOfCompositeRows) {
  const std::string rows = writtenConforming([](AReport& report) {
    report.Row2(L"R&D", L"<none>", 1, L" width=1", nullptr);
    report.Row3(L"&", L"<", L">", 0);
    report.Row2NotEmptyWithQuote(L"R&D", L"a & b");
    report.AttributeRowHeader();
    report.ProductRow(L"Made & sold by");
  });
  constexpr std::string_view kStart =
      "<tr><th width=1>R&amp;D</th><th>&lt;none&gt;</th></tr>"
      "<tr><td>&amp;</td><td>&lt;</td><td>&gt;</td></tr>"
      "<tr><td>R&amp;D</td><td>a &amp; b</td></tr>"
      "<tr><th width=\"25%\">Report Attribute</th><th>Value</th></tr>"
      "<tr><td>Made &amp; sold by</td><td>";
  EXPECT_EQ(rows.substr(0, kStart.size()), kStart);
}

TEST(ConformingHtmlReport, DoesNotQuoteTwice) {
  EXPECT_EQ(writtenConforming([](AReport& report) {
              report.Cell(report.Quoting(L"a < b & \"c\"").c_str(), 0, nullptr);
              report.Link(L"Smith &amp; &#83;ons &apos;", L"?a=1&amp;b=2");
              report.TocItem(L"a&amp;b", L"&lt;A&gt;", 1);
            }),
            "<td>a &lt; b &amp; &quot;c&quot;</td><a href=\"?a=1&amp;b=2\">Smith &amp; &#83;ons &apos;</a>"
            "<li><a href=\"#a&amp;b\">&lt;A&gt;</a></li>");
}

TEST(ConformingHtmlReport, TreatsReferencesUnknownToXmlAsText) {
  EXPECT_EQ(writtenConforming([](AReport& report) { report.Cell(L"&nbsp;&copy &#1;", 0, nullptr); }),
            "<td>&amp;nbsp;&amp;copy &amp;#1;</td>");
}

TEST(ConformingHtmlReport, LeavesTheHostsAttributesAndMarkupUnchanged) {
  EXPECT_EQ(writtenConforming([](AReport& report) {
              report.Cell(L"x", 0, L" title=\"&copy;\"");
              report.BeginCell(L"<", 0, L" a=\"b\"");
              report.Text(L"<b>&copy;</b>", PARAGRAPH_NONE, L"", 1);
              report.EndCell(L"<", 0);
              report.Text(L"&amp;", PARAGRAPH_NONE, L"", 0);
            }),
            "<td title=\"&copy;\">x</td><td a=\"b\"><b>&copy;</b></td>&amp;amp;");
}

TEST(ConformingHtmlReport, CountsCharactersLostInCells) {
  const CapturedLog log;
  writtenConforming([](AReport& report) { report.Cell(L"a\x01", 0, nullptr); });
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"'': 1 character could not be written as it was given: U+0001."});
}

TEST(ConformingHtmlReport, TakesEffectAtTheNextOpen) {
  MemoryFile first;
  MemoryFile second;
  ExposedReport report;
  EXPECT_EQ(report.Open(&first), REPORT_OK);
  report.SetReportOption(OPTION_CONFORMING, 1);
  report.Cell(L"&", 0, nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.Open(&second), REPORT_OK);
  report.SetReportOption(OPTION_CONFORMING, 0);
  report.Cell(L"&", 0, nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(first.bytes, "<td>&</td>" + std::string(kEnd));
  EXPECT_EQ(second.bytes, "<td>&amp;</td>" + std::string(kEnd));
}

TEST(ConformingHtmlReport, QuotesWhenOpenedByNameToo) {
  const TemporaryFolder folder;
  HtmlReport report;
  report.SetReportOption(OPTION_CONFORMING, 1);
  EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
  report.Link(L"Smith & Sons", L"#a");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.html"), "<a href=\"#a\">Smith &amp; Sons</a>" + std::string(kEnd));
}
