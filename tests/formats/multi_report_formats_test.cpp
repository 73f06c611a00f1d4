#include "scrivalen/multi_report.h"
#include "support/captured_log.h"
#include "support/documents/child_formats.h"
#include "support/documents/templates.h"
#include "support/documents/workbook.h"
#include "support/faults/open_errors.h"
#include "support/files.h"

#include "system/files/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>

using namespace scrivalen;
using namespace scrivalen::test;

// The test program's folder has a help compiler that writes down its input, and a template that puts
// "<title>%TITLE%</title>\n" before a page's text and "\n<hr>\n" after it.

namespace {

using Lines = std::vector<std::wstring>;

/// A child of each format in turn.
struct MultiReportChild : testing::TestWithParam<ChildFormat> {
  std::wstring path(const std::wstring& start = L"a") const { return files.path(GetParam(), start); }
  void add(MultiReport& report, const std::wstring& start = L"a") const { files.add(report, GetParam(), start); }
  std::string read(const std::wstring& start = L"a") const { return GetParam().read(path(start)); }

  // Opens a child of this format and writes a text that is not flushed, in a topic that is not ended.
  void openWithText(MultiReport& report) const {
    add(report);
    EXPECT_EQ(report.Open(), REPORT_OK);
    EXPECT_EQ(files.beginTopic(report), REPORT_OK);
    report.Text(L"not flushed", PARAGRAPH_NORMAL, L"", 0);
  }

  std::uintmax_t heldSize() const { return std::filesystem::file_size(asPath(files.heldPath(GetParam()))); }

  // Checks the size first, because isHeld empties a file that is not held.
  void expectHeldWithSize(std::uintmax_t size) const {
    EXPECT_EQ(heldSize(), size);
    EXPECT_TRUE(isHeld(files.heldPath(GetParam())));
    EXPECT_EQ(exists(path()), !GetParam().isHelp());
  }

  const ChildFiles files;
};

/// A child of each format whose Open creates its file.
struct MultiReportFileChild : MultiReportChild {};

void expectBytesLack(const std::wstring& path, std::string_view text) {
  EXPECT_EQ(bytesOf(path).find(text), std::string::npos) << bytesOf(path);
}

void expectBytesHave(const std::wstring& path, std::string_view text) {
  EXPECT_NE(bytesOf(path).find(text), std::string::npos) << bytesOf(path);
}

const ChildFormat& kindOf(REPORT_FORMAT wanted) {
  const auto all = childFormats();
  return *std::find_if(all.begin(), all.end(), [wanted](const ChildFormat& kind) { return kind.format() == wanted; });
}

}  // namespace

TEST_P(MultiReportChild, IsCreatedByItsFormatNumber) {
  MultiReport report;
  add(report);
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeOneTwo(report, files);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(read(), GetParam().oneTwo);
}

TEST_P(MultiReportChild, IsNotAddedWithoutAnOutputName) {
  const CapturedLog log;
  MultiReport report;
  report.AddReport(GetParam().format(), L"", L"default.htm");
  report.AddReport(GetParam().format(), nullptr, L"default.htm");
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeOneTwo(report, files);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_STREQ(report.GetError(), L"");
  EXPECT_FALSE(exists(files.topic()));
  EXPECT_EQ(log.lines(), Lines{});
}

TEST_P(MultiReportChild, OpensTheFilePassedToOpen) {
  MultiReport report;
  add(report);
  EXPECT_EQ(report.Open(path(L"given").c_str()), REPORT_OK);
  writeOneTwo(report, files);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(read(L"given"), GetParam().oneTwo);
  EXPECT_FALSE(exists(path()));
}

TEST_P(MultiReportFileChild, ThatFailsToOpenLeavesEarlierOnesOpenAndLaterOnesUntouched) {
  const std::wstring missing = files.folder / L"missing/a";
  MultiReport report;
  files.addAll(report, L"before");
  report.AddReport(GetParam().format(), missing.c_str(), nullptr);
  files.addAll(report, L"behind");
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(missing));
  for (const ChildFormat& before : fileFormats()) {
    EXPECT_TRUE(isHeld(files.path(before, L"before"))) << before.name;
  }
  EXPECT_EQ(files.beginTopic(report), REPORT_FILE_ERROR);  // from the help report, which is not open
  EXPECT_STREQ(report.GetError(), L"The report is not open.");
  report.Text(L"one", PARAGRAPH_NORMAL, L"", 0);
  report.Text(L"two", PARAGRAPH_NORMAL, L"", 0);
  report.EndSubDocument();
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  files.expectAllHaveOneTwo(L"before");
  files.expectNone(L"behind");
  EXPECT_FALSE(exists(files.folder / L"missing"));
}

TEST_P(MultiReportFileChild, ThatFailsToOpenAGivenFileLeavesTheErrorTextUnchanged) {
  MultiReport report;
  add(report, L"missing/a");
  EXPECT_EQ(report.Open(path(L"missing/b").c_str()), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), L"");
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(path(L"missing/a")));
  EXPECT_EQ(report.Open(path(L"missing/b").c_str()), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(path(L"missing/a")));
  report.Clear();
}

TEST_P(MultiReportFileChild, ThatIsOpenPreventsLaterOnesFromOpeningTheGivenFile) {
  MultiReport report;
  add(report);
  EXPECT_EQ(report.Open(), REPORT_OK);
  add(report, L"behind");
  EXPECT_EQ(report.Open(path(L"given").c_str()), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), L"");
  EXPECT_FALSE(exists(path(L"given")));
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(std::wstring(report.GetError()),
            L"File open/create error for '" + path() + L"'. The report is still open.");
  EXPECT_FALSE(exists(path(L"behind")));
  writeOneTwo(report, files);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(read(), GetParam().oneTwo);
}

TEST_P(MultiReportFileChild, WritesTheSameBytesAsAnotherOfItsFormat) {
  const FixedClock clock(1730815620);
  MultiReport report;
  for (const wchar_t* start : {L"b", L"a", L"c"}) {
    add(report, start);
  }
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeOneTwo(report, files);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(read(), GetParam().oneTwo);
  EXPECT_EQ(bytesOf(path(L"b")), bytesOf(path()));
  EXPECT_EQ(bytesOf(path(L"c")), bytesOf(path()));
}

TEST_P(MultiReportChild, IsSharedByCopies) {
  std::optional<MultiReport> source(std::in_place);
  add(*source);
  EXPECT_EQ(source->Open(), REPORT_OK);
  MultiReport copy(*source);
  MultiReport assigned;
  assigned = copy;
  EXPECT_EQ(files.beginTopic(assigned), REPORT_OK);
  source->Text(L"one", PARAGRAPH_NORMAL, L"", 0);
  source.reset();
  copy.Text(L"two", PARAGRAPH_NORMAL, L"", 0);
  assigned.EndSubDocument();
  EXPECT_EQ(copy.Close(), REPORT_OK);
  EXPECT_EQ(assigned.Close(), REPORT_OK);
  assigned.Clear();
  EXPECT_EQ(read(), GetParam().oneTwo);
}

TEST_P(MultiReportChild, GetsNoCallsAfterClear) {
  MultiReport report;
  add(report);
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeOneTwo(report, files);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeOneTwo(report, files);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(read(), GetParam().oneTwo);
  EXPECT_FALSE(exists(files.topic()));
  EXPECT_FALSE(isHeld(path()));
}

TEST_P(MultiReportChild, LeavesItsFileUnchangedWhenClearedWhileOpen) {
  MultiReport report;
  openWithText(report);
  const std::uintmax_t size = heldSize();
  report.Clear();
  EXPECT_EQ(report.Close(), REPORT_OK);
  expectHeldWithSize(size);
}

TEST_P(MultiReportChild, LeavesItsFileUnchangedWhenNotCleared) {
  std::uintmax_t size = 0;
  {
    MultiReport report;
    openWithText(report);
    size = heldSize();
  }
  expectHeldWithSize(size);
}

TEST_P(MultiReportChild, LeavesItsFileUnchangedWhenAllCopiesAreCleared) {
  MultiReport report;
  openWithText(report);
  const std::uintmax_t size = heldSize();
  MultiReport copy = report;
  report.Clear();
  copy.Clear();
  expectHeldWithSize(size);
}

INSTANTIATE_TEST_SUITE_P(Each, MultiReportChild, testing::ValuesIn(childFormats()), nameOf);
INSTANTIATE_TEST_SUITE_P(Each, MultiReportFileChild, testing::ValuesIn(fileFormats()), nameOf);

TEST(MultiReportChildren, AreClosedInTheOrderTheyWereAdded) {
  const CapturedLog log;
  const ChildFiles files;
  const REPORT_FORMAT order[] = {FORMAT_PDF, FORMAT_HTML, FORMAT_CHM, FORMAT_TEXT, FORMAT_XML, FORMAT_RTF};
  MultiReport report;
  for (const REPORT_FORMAT format : order) {
    files.add(report, kindOf(format));
  }
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  report.AddProperty(L"%TITLE%", L"\u0141");
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(files.beginTopic(report), REPORT_OK);
  report.Text(L"\u0001\u0141", PARAGRAPH_NORMAL, L"", 0);
  report.EndSubDocument();
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  Lines starts;
  for (const REPORT_FORMAT format : order) {
    starts.push_back(L"'" + files.path(kindOf(format)) + L"': ");
  }
  const Lines lines(log.lines().end() - std::min<std::ptrdiff_t>(6, std::ssize(log.lines())), log.lines().end());
  ASSERT_EQ(lines.size(), starts.size());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_TRUE(lines[i].starts_with(starts[i])) << i << " has another line";
  }
}

TEST(MultiReportAddProperty, GivesTheTitleOnlyToTheChildrenAddedSoFar) {
  const ChildFiles files;
  MultiReport report;
  report.AddProperty(L"%TITLE%", L"Early");
  files.addAll(report, L"a");
  report.AddProperty(L"%TITLE%", L"Sales");
  report.AddProperty(L"%TITLE%", L"Late");
  files.add(report, kindOf(FORMAT_HTML), L"b");
  files.add(report, kindOf(FORMAT_RTF), L"b");
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeOneTwo(report, files);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(report.GetProperty(L"%TITLE%"), nullptr);
  files.expectAllHaveOneTwo(L"a");
  expectBytesHave(files.folder / L"a.html", "<title>Sales</title>");
  expectBytesHave(files.folder / L"a.rtf", "{\\info{\\title Sales}}");
  expectBytesHave(files.folder / L"a.chm", "\nTitle=Sales\n");
  expectBytesLack(files.folder / L"b.html", "<title>");
  expectBytesHave(files.folder / L"b.rtf", "{\\info{\\title Report}}");
}

TEST(MultiReportAddProperty, DoesNotReachAHelpChildAddedLater) {
  const ChildFiles files;
  MultiReport report;
  report.AddProperty(L"%TITLE%", L"Early");
  files.add(report, kindOf(FORMAT_CHM));
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeOneTwo(report, files);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  expectBytesHave(files.folder / L"a.chm", "\nTitle=Report\n");
}

TEST(MultiReportSetStyles, ReachesOnlyTheSpreadsheetsAddedSoFar) {
  const ChildFiles files;
  const ChildFormat& sheet = kindOf(FORMAT_EXCEL);
  MultiReport report;
  report.SetStyles(L"cell { color: lime }");
  files.add(report, sheet, L"plain");
  EXPECT_EQ(report.Open(), REPORT_OK);
  report.Row2(L"a", L"b", 0, nullptr, nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.SetStyles(L"cell { color: red } bold { background-color: yellow }");
  for (const ChildFormat& format : childFormats()) {
    files.add(report, format, L"later");
  }
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeOneTwo(report, files);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(readCells(files.path(sheet, L"plain")), "A1 \"one\" bold fill=FFFF00\nA2 \"two\" bold fill=FFFF00\n");
  files.expectAllHaveOneTwo(L"later");
}

TEST(MultiReportSetStyles, BeforeAnyChildHasNoEffect) {
  const ChildFiles files;
  MultiReport report;
  report.SetStyles(L"cell { color: red } bold { color: red }");
  files.addAll(report, L"a");
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeOneTwo(report, files);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  files.expectAllHaveOneTwo(L"a");
}

TEST(MultiReportSetStyles, ReachesEverySpreadsheetAndIsUndoneByAnEmptyText) {
  const ChildFiles files;
  const ChildFormat& sheet = kindOf(FORMAT_EXCEL);
  MultiReport report;
  files.add(report, sheet, L"a");
  files.add(report, sheet, L"b");
  for (const wchar_t* styles : {L"cell { font-family: Arial; font-size: 12; color: red }", L""}) {
    report.SetStyles(styles);
    EXPECT_EQ(report.Open(), REPORT_OK);
    report.Row2(L"x", L"y", 0, nullptr, nullptr);
    EXPECT_EQ(report.Close(), REPORT_OK);
    const std::string style = *styles ? " 12 color=FF0000 Arial" : "";
    for (const wchar_t* start : {L"a", L"b"}) {
      EXPECT_EQ(readCells(files.path(sheet, start)), "A1 \"x\"" + style + "\nB1 \"y\"" + style + "\n");
    }
  }
  report.Clear();
}

TEST(MultiReportSetReportOption, MakesTheHelpChildrenAddedSoFarConform) {
  const ChildFiles files;
  MultiReport report;
  report.SetReportOption(OPTION_CONFORMING, 1);
  files.add(report, kindOf(FORMAT_CHM));
  for (const char* page : {"<title>%TITLE%</title>\n&lt;b&gt;\n", "<title>Topic</title>\n<b>\n"}) {
    EXPECT_EQ(report.Open(), REPORT_OK);
    EXPECT_EQ(files.beginTopic(report), REPORT_OK);
    report.Text(L"<b>", PARAGRAPH_NONE, L"", 1);
    report.EndSubDocument();
    EXPECT_EQ(report.Close(), REPORT_OK);
    expectBytesHave(files.folder / L"a.chm", page);
    report.SetReportOption(OPTION_CONFORMING, 1);
  }
  report.Clear();
}

TEST(MultiReportSetReportOption, MakesTheHtmlChildrenAddedSoFarConform) {
  const TemporaryTemplate page("\xC3\xA9:%BODY%:");
  const ChildFiles files;
  MultiReport report;
  report.AddReport(FORMAT_HTML, (files.folder / L"conforming").c_str(), page.name().c_str());
  report.SetReportOption(OPTION_CONFORMING, 1);
  report.AddReport(FORMAT_HTML, (files.folder / L"classic").c_str(), page.name().c_str());
  EXPECT_EQ(report.Open(), REPORT_OK);
  report.Text(L"x", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(bytesOf(files.folder / L"conforming"), "\xC3\xA9:x:");
  EXPECT_EQ(bytesOf(files.folder / L"classic"), "\xC3\x83\xC2\xA9:x:");
}

TEST(MultiReportSetReportOption, HasNoEffectOnFormatsThatDoNotKnowTheOption) {
  const ChildFiles files;
  MultiReport report;
  for (const REPORT_FORMAT format : {FORMAT_TEXT, FORMAT_XML, FORMAT_EXCEL}) {
    files.add(report, kindOf(format));
  }
  report.SetReportOption(OPTION_CONFORMING, 1);
  report.SetReportOption(OPTION_LANDSCAPE, 1);
  report.SetReportOption(static_cast<REPORT_OPTION>(-1), 1);
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeOneTwo(report, files);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  for (const REPORT_FORMAT format : {FORMAT_TEXT, FORMAT_XML, FORMAT_EXCEL}) {
    EXPECT_EQ(kindOf(format).read(files.path(kindOf(format))), kindOf(format).oneTwo) << format;
  }
}

TEST(MultiReportQuoting, PassesAValueUnescapedToSpreadsheetsAndHelp) {
  const ChildFiles files;
  MultiReport report;
  files.add(report, kindOf(FORMAT_EXCEL));
  files.add(report, kindOf(FORMAT_CHM));
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Quoting(L"a<b>&"), L"a<b>&");
  EXPECT_EQ(files.beginTopic(report), REPORT_OK);
  report.Row2NotEmptyWithQuote(L"name", L"<b>&");
  report.Row2NotEmptyWithQuote(L"lost", L"");
  report.EndSubDocument();
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(readCells(files.folder / L"a.xlsx"), "A1 \"name\"\nB1 \"<b>&\"\n");
  EXPECT_EQ(kindOf(FORMAT_CHM).read(files.folder / L"a.chm"), "<tr><td>name</td><td><b>&</td></tr>");
}

TEST(MultiReportSetReportOption, AllowsALinkWithAnAmpersandInEveryFormat) {
  const ChildFiles files;
  MultiReport report;
  for (const REPORT_FORMAT format : {FORMAT_HTML, FORMAT_CHM, FORMAT_RTF}) {
    files.add(report, kindOf(format));
  }
  report.SetReportOption(OPTION_CONFORMING, 1);
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(files.beginTopic(report), REPORT_OK);
  report.Link(L"Smith & Sons", L"#smith");
  report.EndSubDocument();
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  constexpr std::string_view kMarkup = "<a href=\"#smith\">Smith &amp; Sons</a>";
  EXPECT_EQ(kindOf(FORMAT_HTML).read(files.path(kindOf(FORMAT_HTML))), kMarkup);
  expectBytesHave(files.path(kindOf(FORMAT_CHM)), kMarkup);
  expectBytesHave(files.path(kindOf(FORMAT_RTF)), "Smith & Sons");
}

TEST_P(MultiReportFileChild, ReturnsSuccessForAnyTopic) {
  MultiReport report;
  add(report);
  EXPECT_EQ(report.BeginSubDocument(L"no such folder here/", L"a.htm", L"A"), REPORT_OK);
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.BeginSubDocument(L"no such folder here/", L"a.htm", L"A"), REPORT_OK);
  EXPECT_EQ(report.BeginSubDocument(nullptr, nullptr, nullptr), REPORT_OK);
  report.EndSubDocument();
  writeOneTwo(report, files);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_STREQ(report.GetError(), L"");
  report.Clear();
  EXPECT_EQ(read(), GetParam().oneTwo);
}

TEST(MultiReportBeginSubDocument, ReturnsTheResultOfTheHelpChild) {
  const CapturedLog log;
  const ChildFiles files;
  const std::wstring missing = files.folder / L"missing" + kPathSeparator;
  MultiReport report;
  files.addAll(report, L"a");
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.BeginSubDocument(missing.c_str(), L"b.htm", L"B"), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(missing + L"b.htm"));
  EXPECT_EQ(log.lines(), Lines{openingError(missing + L"b.htm")});
  writeOneTwo(report, files);
  EXPECT_EQ(report.GetError(), openingError(missing + L"b.htm"));
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(missing + L"b.htm"));
  report.Clear();
  for (const ChildFormat& format : fileFormats()) {
    EXPECT_EQ(format.read(files.path(format)), format.oneTwo) << format.name;
  }
  EXPECT_FALSE(exists(files.folder / L"a.chm"));
}

TEST(MultiReportBeginSubDocument, CallsTheChildrenAfterOneThatFails) {
  const CapturedLog log;
  const ChildFiles files;
  MultiReport first;
  files.add(first, kindOf(FORMAT_CHM), L"a");
  MultiReport report = first;  // shares the child
  files.add(report, kindOf(FORMAT_CHM), L"b");
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(first.BeginSubDocument(files.topicFolder().c_str(), L"not ended.htm", L"A"), REPORT_OK);
  EXPECT_EQ(files.beginTopic(report), REPORT_FILE_ERROR);
  EXPECT_EQ(std::wstring(report.GetError()),
            L"File open/create error for '" + files.topic() + L"'. The report is still open.");
  EXPECT_TRUE(isHeld(files.topic()));
  report.EndSubDocument();
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  report.Clear();
}

TEST(MultiReportBeginSubDocument, RefusesTheSecondHelpChildThePageOfTheFirst) {
  const CapturedLog log;
  const ChildFiles files;
  MultiReport report;
  files.add(report, kindOf(FORMAT_CHM), L"a");
  files.add(report, kindOf(FORMAT_CHM), L"b");
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(files.beginTopic(report), REPORT_FILE_ERROR);
  const std::wstring reason = openingError(files.topic());
  EXPECT_EQ(report.GetError(), reason);
  report.Text(L"one", PARAGRAPH_NORMAL, L"", 0);
  report.Text(L"two", PARAGRAPH_NORMAL, L"", 0);
  report.EndSubDocument();
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), reason);
  report.Clear();
  EXPECT_EQ(kindOf(FORMAT_CHM).read(files.folder / L"a.chm"), "<p>one</p><p>two</p>");
  EXPECT_FALSE(exists(files.topic()));
}

TEST(MultiReportClose, CompletesTheOtherChildrenWhenTheHelpChildFails) {
  const CapturedLog log;
  const ChildFiles files;
  writeBytes(files.topicFolder() + L"stand_in", "leaves nothing");
  const std::wstring reason =
      L"The help compiler left no '" + files.topicFolder() + L"report.chm'. It ended with status 0.";
  MultiReport report;
  files.add(report, kindOf(FORMAT_CHM));
  for (const ChildFormat& format : fileFormats()) {
    files.add(report, format);
  }
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeOneTwo(report, files);
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), reason);
  EXPECT_EQ(log.lines(), Lines{reason});
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.GetError(), reason);
  report.Clear();
  for (const ChildFormat& format : fileFormats()) {
    EXPECT_EQ(format.read(files.path(format)), format.oneTwo) << format.name;
  }
  EXPECT_FALSE(exists(files.folder / L"a.chm"));
}
