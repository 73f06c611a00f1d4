#include "scrivalen/multi_report.h"

#include "scrivalen/html_report.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/documents/report_state.h"
#include "support/documents/templates.h"
#include "support/faults/open_errors.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace scrivalen::test;

namespace {

constexpr std::string_view kXmlStart = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report>";

// The output of a text, an HTML and an XML child for one stream of calls: the text in single bytes, the page without
// its head.
struct Written {
  std::string text;
  std::string html;
  std::string xml;

  bool operator==(const Written&) const = default;
};

void PrintTo(const Written& written, std::ostream* out) {
  *out << "text: " << written.text << "\nhtml: " << written.html << "\nxml: " << written.xml;
}

std::string between(std::string_view start, const std::string& bytes, std::string_view end) {
  const bool framed = bytes.size() >= start.size() + end.size() && bytes.starts_with(start) && bytes.ends_with(end);
  EXPECT_TRUE(framed) << bytes;
  return framed ? bytes.substr(start.size(), bytes.size() - start.size() - end.size()) : bytes;
}

std::string afterHead(const std::string& page) {
  const std::size_t body = page.find("<body>\n");
  EXPECT_NE(body, std::string::npos) << page;
  return body == std::string::npos ? page : page.substr(body + 7);
}

template <typename Action>
Written written(Action action) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_TEXT, (folder / L"a.txt").c_str(), nullptr);
  report.AddReport(FORMAT_HTML, (folder / L"a.html").c_str(), nullptr);
  report.AddReport(FORMAT_XML, (folder / L"a.xml").c_str(), nullptr);
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  EXPECT_EQ(report.Open(), REPORT_OK);
  action(report);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  return {bytesOf(folder / L"a.txt"), between("", afterHead(bytesOf(folder / L"a.html")), "</body></html>\n"),
          between(kXmlStart, bytesOf(folder / L"a.xml"), "</report>")};
}

// Whether a report holds a file: opening it a second time is refused.
bool isHeld(const std::wstring& path) {
  ReportFile file;
  return !file.Open(path.c_str());
}

void addText(MultiReport& report, const std::wstring& path) { report.AddReport(FORMAT_TEXT, path.c_str(), nullptr); }

constexpr std::string_view kEmptyPage = "</body></html>\n";
const std::string kEmptyText = "\xFF\xFE";

}  // namespace

TEST(MultiReportAddReport, IgnoresAChildWithoutAnOutputName) {
  const CapturedLog log;
  MultiReport report;
  report.AddReport(FORMAT_HTML, L"", L"default.htm");
  report.AddReport(FORMAT_HTML, nullptr, nullptr);
  report.AddReport(static_cast<REPORT_FORMAT>(99), L"", nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_STREQ(report.GetError(), L"");
  EXPECT_TRUE(log.lines().empty());
}

TEST(MultiReportAddReport, CreatesAPageForHtml) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_HTML, (folder / L"a").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_TRUE(bytesOf(folder / L"a").starts_with("<!DOCTYPE html>\n"));
}

TEST(MultiReportAddReport, CreatesADocumentForXml) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_XML, (folder / L"a").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(bytesOf(folder / L"a"), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report></report>");
}

TEST(MultiReportAddReport, CreatesATextFileForText) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_TEXT, (folder / L"a").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(bytesOf(folder / L"a"), "\xFF\xFE");
}

TEST(MultiReportAddReport, CreatesARichTextDocumentForFormatZero) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(static_cast<REPORT_FORMAT>(0), (folder / L"a").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  const std::string bytes = bytesOf(folder / L"a");
  EXPECT_TRUE(bytes.starts_with("{\\rtf\\ansi{\\info{\\title Report}} \r\n{\\colortbl;")) << bytes;
  EXPECT_TRUE(bytes.ends_with("\\paperw11906\\paperh16838\r\n{}}")) << bytes;
}

TEST(MultiReportAddReport, RefusesAnUnknownFormatWithOneLineInTheLog) {
  const TemporaryFolder folder;
  for (const int format : {7, 99, 109, -1}) {
    const CapturedLog log;
    MultiReport report;
    report.AddReport(static_cast<REPORT_FORMAT>(format), (folder / L"a").c_str(), nullptr);
    EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"Report format " + std::to_wstring(format) +
                                                     L" is not available; '" + (folder / L"a") + L"' was not added."});
    EXPECT_EQ(report.Open(), REPORT_OK);
    EXPECT_EQ(report.Close(), REPORT_OK);
    EXPECT_FALSE(exists(folder / L"a"));
  }
}

TEST(MultiReportAddReport, GivesTheChildItsTemplate) {
  const TemporaryFolder folder;
  const TemporaryTemplate page("<%BODY%>");
  MultiReport report;
  report.AddReport(FORMAT_HTML, (folder / L"a.html").c_str(), page.name().c_str());
  EXPECT_EQ(report.Open(), REPORT_OK);
  report.Text(L"body", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(bytesOf(folder / L"a.html"), "<body>");
}

TEST(MultiReportAddReport, GivesTheChildNoTemplateForAnEmptyName) {
  const CapturedLog log;
  const TemporaryFolder folder;
  MultiReport report;
  report.SetTemplateFileName(L"no such template.htm");
  report.AddReport(FORMAT_HTML, (folder / L"a.html").c_str(), L"");
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(afterHead(bytesOf(folder / L"a.html")), kEmptyPage);
  EXPECT_TRUE(log.lines().empty());
}

TEST(MultiReportAddReport, DoesNotPassOnEarlierSettings) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddProperty(L"%TITLE%", L"before");
  report.SetColumnSeparator(L";");
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  report.AddReport(FORMAT_HTML, (folder / L"a.html").c_str(), nullptr);
  addText(report, folder / L"a.txt");
  EXPECT_EQ(report.Open(), REPORT_OK);
  report.Row2(L"a", L"b", 0, nullptr, nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(bytesOf(folder / L"a.html").find("<title>"), std::string::npos);
  EXPECT_EQ(fromMarkedUtf16(bytesOf(folder / L"a.txt")), "a\tb\r\n");
}

TEST(MultiReportAddProperty, ReachesEveryChildAddedSoFarButNotItself) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_HTML, (folder / L"a.html").c_str(), nullptr);
  report.AddReport(FORMAT_HTML, (folder / L"b.html").c_str(), nullptr);
  report.AddProperty(L"%TITLE%", L"after");
  report.AddReport(FORMAT_HTML, (folder / L"c.html").c_str(), nullptr);
  EXPECT_EQ(report.GetProperty(L"%TITLE%"), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_NE(bytesOf(folder / L"a.html").find("<title>after</title>"), std::string::npos);
  EXPECT_NE(bytesOf(folder / L"b.html").find("<title>after</title>"), std::string::npos);
  EXPECT_EQ(bytesOf(folder / L"c.html").find("<title>"), std::string::npos);
}

TEST(MultiReportSetStyles, StoresNoStylesItself) {
  const TemporaryFolder folder;
  MultiReport report;
  report.SetStyles(L"cell { color: red }");
  addText(report, folder / L"a.txt");
  report.SetStyles(L"cell { color: red }");
  report.SetStyles(nullptr);
  EXPECT_EQ(ReportState::styles(report), L"");
}

TEST(MultiReportForwarding, ReachesText) {
  EXPECT_EQ(written([](AReport& report) { report.Text(L"a<b", PARAGRAPH_HEADING2, L"id=x", 0); }),
            (Written{"a<b\r\n", "<h2 id=x>a&lt;b</h2>", "<text>a&lt;b</text>"}));
  EXPECT_EQ(written([](AReport& report) { report.Text(L"<i/>", PARAGRAPH_NONE, nullptr, 1); }),
            (Written{"<i/>", "<i/>", "<i/>"}));
}

TEST(MultiReportForwarding, ReachesParagraphs) {
  EXPECT_EQ(written([](AReport& report) { report.BeginParagraph(PARAGRAPH_HEADING1, L"id=x"); }),
            (Written{"", "<h1 id=x>", "<paragraph>"}));
  EXPECT_EQ(written([](AReport& report) { report.EndParagraph(PARAGRAPH_HEADING1); }),
            (Written{"\r\n", "</h1>", "</paragraph>"}));
}

TEST(MultiReportForwarding, ReachesEndOfLineAndSpace) {
  EXPECT_EQ(written([](AReport& report) { report.EndOfLine(); }), (Written{"\r\n", "<br>", "\r\n"}));
  EXPECT_EQ(written([](AReport& report) { report.Space(); }), (Written{" ", "&nbsp;", ""}));
}

TEST(MultiReportForwarding, ReachesStyles) {
  EXPECT_EQ(written([](AReport& report) { report.BeginStyle(STYLE_ITALIC, 0); }), (Written{"", "<i>", ""}));
  EXPECT_EQ(written([](AReport& report) { report.EndStyle(STYLE_BOLD, 0); }), (Written{"", "</b>", ""}));
}

TEST(MultiReportForwarding, ReachesAnchorsAndLinks) {
  EXPECT_EQ(written([](AReport& report) { report.BeginAncor(L"x"); }), (Written{"", "<a name=\"x\">", ""}));
  EXPECT_EQ(written([](AReport& report) { report.EndAncor(); }), (Written{"", "</a>", ""}));
  EXPECT_EQ(written([](AReport& report) { report.Ancor(L"x"); }), (Written{"", "<a name=\"x\"> </a>", ""}));
  EXPECT_EQ(written([](AReport& report) { report.Link(L"text", L"#x"); }),
            (Written{"", "<a href=\"#x\">text</a>", ""}));
}

TEST(MultiReportForwarding, ReachesTheTableOfContents) {
  EXPECT_EQ(written([](AReport& report) { report.BeginToc(); }), (Written{"", "<ul>", ""}));
  EXPECT_EQ(written([](AReport& report) { report.TocItem(L"x", L"text", 1); }),
            (Written{"", "<li><a href=\"#x\">text</a></li>", ""}));
  EXPECT_EQ(written([](AReport& report) { report.EndToc(); }), (Written{"", "</ul>", ""}));
}

TEST(MultiReportForwarding, ReachesTables) {
  EXPECT_EQ(written([](AReport& report) { report.BeginTable(L"t", L"id=x"); }), (Written{"", "<table id=x>", "<t>"}));
  EXPECT_EQ(written([](AReport& report) { report.BeginTable(L"t", nullptr); }),
            (Written{"", "<table class=\"table table-hover table-bordered\">", "<t>"}));
  EXPECT_EQ(written([](AReport& report) { report.EndTable(L"t"); }), (Written{"", "</table>", "</t>"}));
}

TEST(MultiReportForwarding, ReachesRows) {
  EXPECT_EQ(written([](AReport& report) {
              report.Cell(L"a", 0, nullptr);
              report.BeginRow(L"r", L"id=x", 1);
              report.Cell(L"b", 0, nullptr);
            }),
            (Written{"ab", "<td>a</td><tr id=x><td>b</td>", "<cell>a</cell><r><cell>b</cell>"}));
  EXPECT_EQ(written([](AReport& report) { report.EndRow(L"r"); }), (Written{"\r\n", "</tr>", "</r>"}));
}

TEST(MultiReportForwarding, ReachesCells) {
  EXPECT_EQ(written([](AReport& report) { report.Cell(L"a", 1, L" id=x"); }), (Written{"a", "<th id=x>a</th>", ""}));
  EXPECT_EQ(written([](AReport& report) {
              report.Cell(L"a", 0, nullptr);
              report.BeginCell(L"c", 0, L" id=x");
            }),
            (Written{"a\t", "<td>a</td><td id=x>", "<cell>a</cell><c>"}));
  EXPECT_EQ(written([](AReport& report) { report.EndCell(L"c", 0); }), (Written{"", "</td>", "</c>"}));
}

TEST(MultiReportForwarding, ReachesTheColumnSeparator) {
  EXPECT_EQ(written([](AReport& report) {
              report.SetColumnSeparator(L"; ");
              report.Row2(L"a", L"b", 0, nullptr, nullptr);
            }),
            (Written{"a; b\r\n", "<tr><td>a</td><td>b</td></tr>", "<row><cell>a</cell><cell>b</cell></row>"}));
}

TEST(MultiReportForwarding, ReachesOptions) {
  EXPECT_EQ(written([](AReport& report) {
              report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 0);
              report.Text(L"a", PARAGRAPH_NONE, L"", 0);
            }),
            (Written{std::string("a\0", 2), "a", "a"}));
}

TEST(MultiReportForwarding, PassesOnCallsThatTheseFormatsIgnore) {
  EXPECT_EQ(written([](AReport& report) {
              EXPECT_EQ(report.BeginSubDocument(L"folder", L"file", L"title"), REPORT_OK);
              report.SetCellColor(L"red");
              report.EndSubDocument();
            }),
            (Written{"", "", ""}));
}

TEST(MultiReportForwarding, ReachesCompositeRows) {
  EXPECT_EQ(written([](AReport& report) {
              report.AttributeRowHeader();
              report.Row3(L"a", L"b", L"c", 0);
            }),
            (Written{"Report Attribute\tValue\r\na\tb\tc\r\n",
                     "<tr><th width=\"25%\">Report Attribute</th><th>Value</th></tr>"
                     "<tr><td>a</td><td>b</td><td>c</td></tr>",
                     "<row></row><row><cell>a</cell><cell>b</cell><cell>c</cell></row>"}));
}

TEST(MultiReportForwarding, DoesNothingWithoutChildren) {
  const CapturedLog log;
  MultiReport report;
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Open(L"no such folder here/a"), REPORT_OK);
  report.Row2(L"a", L"b", 0, nullptr, nullptr);
  EXPECT_EQ(report.BeginSubDocument(L"folder", L"file", L"title"), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_TRUE(log.lines().empty());
}

TEST(MultiReportForwarding, ReachesEveryChildOfOneFormatInOrder) {
  const CapturedLog log;
  const TemporaryFolder folder;
  MultiReport report;
  for (const wchar_t* name : {L"b.txt", L"a.txt", L"c.txt"}) {
    addText(report, folder / name);
  }
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  EXPECT_EQ(report.Open(), REPORT_OK);
  report.Text(L"\u0141", PARAGRAPH_NONE, L"", 0);
  report.Row2(L"1", L"2", 0, nullptr, nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  std::vector<std::wstring> expected;
  for (const wchar_t* name : {L"b.txt", L"a.txt", L"c.txt"}) {
    EXPECT_EQ(bytesOf(folder / name), "A1\t2\r\n");
    expected.push_back(L"'" + (folder / name) + L"': 1 character could not be written as it was given: U+0141.");
  }
  EXPECT_EQ(log.lines(), expected);
}

TEST(MultiReportQuoting, ReturnsItsTextUnchanged) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_HTML, (folder / L"a.html").c_str(), nullptr);
  EXPECT_EQ(report.Quoting(L"a<b> & \"c\""), L"a<b> & \"c\"");
}

TEST(MultiReportQuoting, PassesAValueUnescaped) {
  EXPECT_EQ(written([](AReport& report) { report.Row2NotEmptyWithQuote(L"name", L"<b>"); }),
            (Written{"name\t<b>\r\n", "<tr><td>name</td><td><b></td></tr>",
                     "<row><cell>name</cell><cell>&lt;b></cell></row>"}));
}

TEST(MultiReportOpen, StopsAtTheFirstFailureAndTakesItsErrorText) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_XML, (folder / L"missing/a.xml").c_str(), nullptr);
  report.AddReport(FORMAT_HTML, (folder / L"a.html").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(folder / L"missing/a.xml"));
  EXPECT_FALSE(exists(folder / L"a.html"));
  report.Clear();
}

TEST(MultiReportOpen, LeavesTheChildrenBeforeAFailureOpen) {
  const TemporaryFolder folder;
  MultiReport report;
  addText(report, folder / L"a.txt");
  report.AddReport(FORMAT_HTML, folder.path().c_str(), nullptr);
  report.AddReport(FORMAT_XML, (folder / L"a.xml").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(folder.path()));
  EXPECT_TRUE(isHeld(folder / L"a.txt"));
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_FALSE(exists(folder / L"a.xml"));
}

TEST(MultiReportOpen, MakesAFailedChildIgnoreEveryLaterCall) {
  const CapturedLog log;
  const TemporaryFolder folder;
  MultiReport report;
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  addText(report, folder / L"a.txt");
  report.AddReport(FORMAT_XML, (folder / L"missing/a.xml").c_str(), nullptr);
  report.AddReport(FORMAT_HTML, (folder / L"missing/a.html").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  report.Text(L"text", PARAGRAPH_NORMAL, L"", 0);
  report.BeginTable(L"t", nullptr);
  report.Row2(L"a", L"b", 0, nullptr, nullptr);
  report.EndTable(L"t");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.GetError(), openingError(folder / L"missing/a.xml"));
  report.Clear();
  EXPECT_EQ(fromMarkedUtf16(bytesOf(folder / L"a.txt")), "text\r\na\tb\r\n");
  EXPECT_TRUE(log.lines().empty());
}

TEST(MultiReportOpen, ReturnsAFileErrorForAnyFailureOfAChild) {
  const TemporaryFolder folder;
  const TemporaryTemplate unreadable{TemporaryTemplate::Unreadable()};
  MultiReport report;
  report.AddReport(FORMAT_HTML, (folder / L"a.html").c_str(), unreadable.name().c_str());
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), readingError(unreadable.path()));
  report.Clear();
}

TEST(MultiReportOpen, RefusesASecondChildWithTheSamePath) {
  const TemporaryFolder folder;
  MultiReport report;
  addText(report, folder / L"a");
  report.AddReport(FORMAT_HTML, (folder / L"a").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(folder / L"a"));
  report.Text(L"A", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(fromMarkedUtf16(bytesOf(folder / L"a")), "A");
}

TEST(MultiReportOpen, KeepsItsErrorTextThroughASuccess) {
  const TemporaryFolder folder;
  MultiReport report;
  addText(report, folder / L"missing/a.txt");
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  report.Clear();
  addText(report, folder / L"a.txt");
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.GetError(), openingError(folder / L"missing/a.txt"));
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
}

TEST(MultiReportOpen, IgnoresItsOwnOutputName) {
  const TemporaryFolder folder;
  MultiReport report;
  report.SetOutputFileName((folder / L"own.txt").c_str());
  addText(report, folder / L"child.txt");
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_FALSE(exists(folder / L"own.txt"));
  EXPECT_EQ(bytesOf(folder / L"child.txt"), kEmptyText);
}

TEST(MultiReportOpenOfAFile, GivesTheChildThatFile) {
  const TemporaryFolder folder;
  MultiReport report;
  addText(report, folder / L"child.txt");
  EXPECT_EQ(report.Open((folder / L"given.txt").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(bytesOf(folder / L"given.txt"), kEmptyText);
  EXPECT_FALSE(exists(folder / L"child.txt"));
}

TEST(MultiReportOpenOfAFile, SetsNoErrorTextWhenItFails) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_XML, (folder / L"a.xml").c_str(), nullptr);
  report.AddReport(FORMAT_HTML, (folder / L"a.html").c_str(), nullptr);
  EXPECT_EQ(report.Open((folder / L"missing/a").c_str()), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), L"");
  EXPECT_EQ(report.Open(nullptr), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), L"");
  report.Clear();
}

TEST(MultiReportOpenOfAFile, KeepsTheEarlierErrorText) {
  const TemporaryFolder folder;
  MultiReport report;
  addText(report, folder / L"missing/a.txt");
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.Open(folder.path().c_str()), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(folder / L"missing/a.txt"));
  report.Clear();
}

TEST(MultiReportOpenOfAFile, RefusesTheFileToASecondChild) {
  const TemporaryFolder folder;
  MultiReport report;
  addText(report, folder / L"a.txt");
  report.AddReport(FORMAT_HTML, (folder / L"a.html").c_str(), nullptr);
  EXPECT_EQ(report.Open((folder / L"given").c_str()), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), L"");
  report.Text(L"A", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(fromMarkedUtf16(bytesOf(folder / L"given")), "A");
}

TEST(MultiReportClose, LeavesReportsThatCanBeOpenedAgain) {
  const TemporaryFolder folder;
  MultiReport report;
  addText(report, folder / L"a.txt");
  for (const wchar_t* text : {L"first", L"B"}) {
    EXPECT_EQ(report.Open(), REPORT_OK);
    report.Text(text, PARAGRAPH_NONE, L"", 0);
    EXPECT_EQ(report.Close(), REPORT_OK);
    EXPECT_EQ(report.Close(), REPORT_OK);
  }
  report.Clear();
  EXPECT_EQ(fromMarkedUtf16(bytesOf(folder / L"a.txt")), "B");
}

TEST(MultiReportClear, ReleasesChildrenThatAreClosed) {
  const TemporaryFolder folder;
  MultiReport report;
  addText(report, folder / L"a.txt");
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_FALSE(isHeld(folder / L"a.txt"));
  EXPECT_EQ(report.Open(), REPORT_OK);
  report.Text(L"no child", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.txt"), "");
}

TEST(MultiReportClear, WritesAndClosesNothing) {
  const TemporaryFolder folder;
  MultiReport report;
  addText(report, folder / L"a.txt");
  report.AddReport(FORMAT_HTML, (folder / L"a.html").c_str(), nullptr);
  report.AddReport(FORMAT_XML, (folder / L"a.xml").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  report.Text(L"not flushed", PARAGRAPH_NORMAL, L"", 0);
  report.Clear();
  for (const wchar_t* name : {L"a.txt", L"a.html", L"a.xml"}) {
    EXPECT_TRUE(isHeld(folder / name)) << name;
    EXPECT_EQ(std::filesystem::file_size(asPath(folder / name)), 0u);
  }
}

TEST(MultiReportClear, LeavesAReportThatCanBeFilledAgain) {
  const TemporaryFolder folder;
  MultiReport report;
  addText(report, folder / L"a.txt");
  report.Clear();
  report.Clear();
  addText(report, folder / L"b.txt");
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_FALSE(exists(folder / L"a.txt"));
  EXPECT_EQ(bytesOf(folder / L"b.txt"), kEmptyText);
}

TEST(MultiReport, DestroyedWithoutClearLeavesItsChildren) {
  const TemporaryFolder folder;
  {
    MultiReport report;
    addText(report, folder / L"a.txt");
    EXPECT_EQ(report.Open(), REPORT_OK);
    report.Text(L"not flushed", PARAGRAPH_NORMAL, L"", 0);
  }
  EXPECT_TRUE(isHeld(folder / L"a.txt"));
  EXPECT_EQ(std::filesystem::file_size(asPath(folder / L"a.txt")), 0u);
}

TEST(MultiReport, OverwrittenWithoutClearLeavesItsChildren) {
  const TemporaryFolder folder;
  MultiReport report;
  addText(report, folder / L"a.txt");
  EXPECT_EQ(report.Open(), REPORT_OK);
  report = MultiReport();
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(isHeld(folder / L"a.txt"));
}

TEST(MultiReportCopy, SharesTheChildren) {
  const TemporaryFolder folder;
  MultiReport report;
  addText(report, folder / L"a.txt");
  EXPECT_EQ(report.Open(), REPORT_OK);
  MultiReport copy = report;
  MultiReport assigned;
  assigned = report;
  report.Text(L"one ", PARAGRAPH_NONE, L"", 0);
  copy.Text(L"two ", PARAGRAPH_NONE, L"", 0);
  assigned.Text(L"three", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(assigned.Close(), REPORT_OK);
  assigned.Clear();
  EXPECT_EQ(fromMarkedUtf16(bytesOf(folder / L"a.txt")), "one two three");
}

TEST(MultiReportCopy, HasItsOwnList) {
  const TemporaryFolder folder;
  MultiReport report;
  MultiReport copy = report;
  addText(copy, folder / L"a.txt");
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_FALSE(exists(folder / L"a.txt"));
}

TEST(MultiReportCopy, CopiesTheBase) {
  const TemporaryFolder folder;
  MultiReport report;
  report.SetOutputFileName(L"name");
  addText(report, folder / L"missing/a.txt");
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  const MultiReport copy = report;
  EXPECT_STREQ(copy.GetOutputFileName(), L"name");
  EXPECT_EQ(copy.GetError(), openingError(folder / L"missing/a.txt"));
}

TEST(MultiReportCopy, ToItselfKeepsItsChildren) {
  const TemporaryFolder folder;
  MultiReport report;
  addText(report, folder / L"a.txt");
  EXPECT_EQ(report.Open(), REPORT_OK);
  const MultiReport& same = report;
  report = same;
  report.Text(L"A", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(fromMarkedUtf16(bytesOf(folder / L"a.txt")), "A");
}
