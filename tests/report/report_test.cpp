#include "scrivalen/report.h"

#include "scrivalen/version.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/documents/recording_report.h"
#include "support/documents/templates.h"
#include "support/faults/open_errors.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

using namespace scrivalen::test;
using scrivalen::kPathSeparator;

namespace {

// Implements only the operations that a format must supply, all empty, so that tests reach those of the base.
struct BareReport : AReport {
  using AReport::LoadTemplate;
  using AReport::OpenReportFile;
  using AReport::PrepareTemplate;

  using AReport::error_;
  using AReport::openFlag_;
  using AReport::reserved_;
  using AReport::styles_;

  REPORT_ERRORS Open() override { return REPORT_OK; }
  REPORT_ERRORS Open(const wchar_t*) override { return REPORT_OK; }
  REPORT_ERRORS Close() override { return REPORT_OK; }
  void Text(const wchar_t*, PARAGRAPH_TYPE, const wchar_t*, int) override {}
  void BeginAncor(const wchar_t*) override {}
  void EndAncor() override {}
  void Ancor(const wchar_t*) override {}
  void EndOfLine() override {}
  void BeginStyle(REPORT_STYLE, int) override {}
  void EndStyle(REPORT_STYLE, int) override {}
  void Space() override {}
  void BeginToc() override {}
  void TocItem(const wchar_t*, const wchar_t*, int) override {}
  void EndToc() override {}
  void BeginTable(const wchar_t*, const wchar_t*) override {}
  void EndTable(const wchar_t*) override {}
  void BeginRow(const wchar_t*, const wchar_t*, int) override {}
  void EndRow(const wchar_t*) override {}
  void BeginCell(const wchar_t*, int, const wchar_t*) override {}
  void EndCell(const wchar_t*, int) override {}
  void Cell(const wchar_t*, int, const wchar_t*) override {}
  void Link(const wchar_t*, const wchar_t*) override {}
};

// A report with a text in each of its fields.
BareReport filledReport() {
  BareReport report;
  report.reserved_ = L"reserved";
  report.SetOutputFileName(L"output");
  report.SetTemplateFileName(L"template");
  report.SetStyles(L"styles");
  report.error_ = L"error";
  report.openFlag_ = 1;
  report.AddProperty(L"name", L"value");
  return report;
}

void expectFilled(const BareReport& report) {
  EXPECT_EQ(report.reserved_, L"reserved");
  EXPECT_STREQ(report.GetOutputFileName(), L"output");
  EXPECT_STREQ(report.GetTemplateFileName(), L"template");
  EXPECT_EQ(report.styles_, L"styles");
  EXPECT_STREQ(report.GetError(), L"error");
  EXPECT_EQ(report.openFlag_, 1);
  EXPECT_STREQ(report.GetProperty(L"name"), L"value");
}

std::wstring prepared(const BareReport& report, std::wstring text) {
  BareReport copy = report;
  copy.PrepareTemplate(text);
  return text;
}

// The text loaded from a template file of these bytes.
std::wstring loaded(std::string_view bytes) {
  const TemporaryFolder folder;
  writeBytes(folder / L"page.htm", bytes);
  BareReport report;
  std::wstring text;
  EXPECT_EQ(report.LoadTemplate(&text, (folder / L"page.htm").c_str(), 1), REPORT_OK);
  return text;
}

using Calls = std::vector<std::string>;

std::string dateRow(const char* date) { return std::string("Cell(\"") + date + "\", 0, null)"; }

}  // namespace

TEST(ReportProperties, AreNotFoundInANewReport) {
  const BareReport report;
  EXPECT_EQ(report.GetProperty(L"name"), nullptr);
  EXPECT_EQ(report.GetProperty(L""), nullptr);
}

TEST(ReportProperties, AreFoundByName) {
  BareReport report;
  report.AddProperty(L"one", L"1");
  report.AddProperty(L"two", L"");
  EXPECT_STREQ(report.GetProperty(L"one"), L"1");
  EXPECT_STREQ(report.GetProperty(L"two"), L"");
  EXPECT_EQ(report.GetProperty(L"three"), nullptr);
}

TEST(ReportProperties, OfTheSameNameResolveToTheFirst) {
  BareReport report;
  report.AddProperty(L"name", L"first");
  report.AddProperty(L"name", L"second");
  EXPECT_STREQ(report.GetProperty(L"name"), L"first");
}

TEST(ReportProperties, AreFoundOnlyByTheExactName) {
  BareReport report;
  report.AddProperty(L"%TITLE%", L"value");
  EXPECT_EQ(report.GetProperty(L"%Title%"), nullptr);
  EXPECT_EQ(report.GetProperty(L"%TITLE"), nullptr);
  EXPECT_EQ(report.GetProperty(L"%TITLE% "), nullptr);
}

TEST(ReportProperties, MayHaveAnEmptyName) {
  BareReport report;
  report.AddProperty(L"", L"value");
  EXPECT_STREQ(report.GetProperty(L""), L"value");
}

TEST(ReportProperties, TreatANullTextAsEmpty) {
  BareReport report;
  report.AddProperty(nullptr, nullptr);
  EXPECT_STREQ(report.GetProperty(L""), L"");
  EXPECT_STREQ(report.GetProperty(nullptr), L"");
}

TEST(ReportProperties, KeepCopiesOfTheTexts) {
  BareReport report;
  std::wstring name = L"name";
  std::wstring value = L"value";
  report.AddProperty(name.c_str(), value.c_str());
  name[0] = L'x';
  value[0] = L'x';
  EXPECT_STREQ(report.GetProperty(L"name"), L"value");
}

TEST(ReportProperties, MayBeLong) {
  BareReport report;
  report.AddProperty(longText(100000).c_str(), (L"\"<%s>\n" + longText(100000)).c_str());
  EXPECT_EQ(report.GetProperty(longText(100000).c_str()), L"\"<%s>\n" + longText(100000));
}

TEST(ReportNames, AreEmptyAtFirstAndNeverNull) {
  const BareReport report;
  EXPECT_STREQ(report.GetOutputFileName(), L"");
  EXPECT_STREQ(report.GetTemplateFileName(), L"");
  EXPECT_STREQ(report.GetError(), L"");
}

TEST(ReportNames, AreReplacedByNewOnes) {
  BareReport report;
  report.SetOutputFileName(L"a.txt");
  report.SetOutputFileName(L"b.txt");
  report.SetTemplateFileName(L"a.htm");
  report.SetTemplateFileName(L"b.htm");
  EXPECT_STREQ(report.GetOutputFileName(), L"b.txt");
  EXPECT_STREQ(report.GetTemplateFileName(), L"b.htm");
}

TEST(ReportNames, OfTheOutputAreClearedByAnEmptyText) {
  BareReport report;
  report.SetOutputFileName(L"a.txt");
  report.SetOutputFileName(L"");
  EXPECT_STREQ(report.GetOutputFileName(), L"");
}

TEST(ReportNames, OfTheTemplateIgnoreANullOrEmptyText) {
  BareReport report;
  report.SetTemplateFileName(L"a.htm");
  report.SetTemplateFileName(nullptr);
  EXPECT_STREQ(report.GetTemplateFileName(), L"a.htm");
  report.SetTemplateFileName(L"");
  EXPECT_STREQ(report.GetTemplateFileName(), L"a.htm");
}

TEST(ReportNames, TreatANullTextAsEmpty) {
  BareReport report = filledReport();
  report.SetOutputFileName(nullptr);
  report.SetStyles(nullptr);
  EXPECT_STREQ(report.GetOutputFileName(), L"");
  EXPECT_EQ(report.styles_, L"");
}

TEST(ReportStyles, AreKeptUnchangedAndReplaced) {
  BareReport report;
  EXPECT_EQ(report.styles_, L"");
  report.SetStyles(L"cell { color: red }\n");
  EXPECT_EQ(report.styles_, L"cell { color: red }\n");
  report.SetStyles(L"");
  EXPECT_EQ(report.styles_, L"");
}

TEST(Report, IsClosedAtFirst) {
  const BareReport report;
  EXPECT_EQ(report.openFlag_, 0);
  EXPECT_EQ(report.reserved_, L"");
}

TEST(ReportCopy, HasTheStringsAndTheOpenFlagOfItsSource) {
  const BareReport copy = filledReport();
  BareReport another;
  another = copy;
  expectFilled(copy);
  expectFilled(another);
}

TEST(ReportCopy, SharesThePropertyRecords) {
  const BareReport source = filledReport();
  const BareReport copy = source;
  BareReport another;
  another = source;
  EXPECT_EQ(copy.GetProperty(L"name"), source.GetProperty(L"name"));
  EXPECT_EQ(another.GetProperty(L"name"), source.GetProperty(L"name"));
}

TEST(ReportCopy, HasAListOfItsOwn) {
  BareReport source = filledReport();
  BareReport copy = source;
  source.AddProperty(L"of the source", L"1");
  copy.AddProperty(L"of the copy", L"2");
  EXPECT_EQ(copy.GetProperty(L"of the source"), nullptr);
  EXPECT_EQ(source.GetProperty(L"of the copy"), nullptr);
}

TEST(ReportCopy, OutlivesItsSource) {
  auto source = std::make_unique<BareReport>(filledReport());
  const BareReport copy = *source;
  source.reset();
  expectFilled(copy);
}

TEST(ReportCopy, DropsThePropertiesItHad) {
  BareReport report;
  report.AddProperty(L"old", L"1");
  report = filledReport();
  EXPECT_EQ(report.GetProperty(L"old"), nullptr);
}

TEST(ReportCopy, ToItselfChangesNothing) {
  BareReport report = filledReport();
  const BareReport& same = report;
  report = same;
  expectFilled(report);
}

TEST(ReportBase, DoesNothingInOptionalOperations) {
  BareReport report = filledReport();
  report.SetColumnSeparator(L";");
  EXPECT_EQ(report.BeginSubDocument(L"folder", L"file", L"title"), REPORT_OK);
  report.EndSubDocument();
  report.BeginParagraph(PARAGRAPH_NORMAL, L"attributes");
  report.EndParagraph(PARAGRAPH_NORMAL);
  report.SetCellColor(L"red");
  report.SetReportOption(OPTION_LANDSCAPE, 1);
  expectFilled(report);
}

TEST(ReportBase, QuotesNothing) {
  BareReport report;
  EXPECT_EQ(report.Quoting(L"a<b> & \"c\" {\\}"), L"a<b> & \"c\" {\\}");
  EXPECT_EQ(report.Quoting(L""), L"");
  EXPECT_EQ(report.Quoting(std::wstring(L"a\0b", 3)), std::wstring(L"a\0b", 3));
}

TEST(OpenReportFile, CreatesTheFileOrTruncatesAnExistingOne) {
  const TemporaryFolder folder;
  writeBytes(folder / L"old.txt", "old and long");
  BareReport report;
  ReportFile created;
  ReportFile cut;
  EXPECT_EQ(report.OpenReportFile(created, (folder / L"new.txt").c_str()), 1);
  EXPECT_EQ(report.OpenReportFile(cut, (folder / L"old.txt").c_str()), 1);
  EXPECT_TRUE(created.Close());
  EXPECT_TRUE(cut.Close());
  EXPECT_EQ(bytesOf(folder / L"new.txt"), "");
  EXPECT_EQ(bytesOf(folder / L"old.txt"), "");
}

TEST(OpenReportFile, LeavesTheErrorTextAndTheOpenFlagAloneOnSuccess) {
  const TemporaryFolder folder;
  BareReport report = filledReport();
  ReportFile file;
  EXPECT_EQ(report.OpenReportFile(file, (folder / L"a.txt").c_str()), 1);
  EXPECT_STREQ(report.GetError(), L"error");
  EXPECT_EQ(report.openFlag_, 1);
}

TEST(OpenReportFile, ReportsTheFileAndTheSystemsReason) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"missing/a.txt";
  BareReport report = filledReport();
  ReportFile file;
  EXPECT_EQ(report.OpenReportFile(file, path.c_str()), 0);
  EXPECT_EQ(report.GetError(), openingError(path));
  EXPECT_EQ(report.openFlag_, 1);
}

TEST(OpenReportFile, ReportsAPathWithPercentSignsUnchanged) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"100%s %d %n/a.txt";
  BareReport report;
  ReportFile file;
  EXPECT_EQ(report.OpenReportFile(file, path.c_str()), 0);
  EXPECT_EQ(report.GetError(), openingError(path));
}

TEST(OpenReportFile, RefusesAMissingName) {
  BareReport report;
  ReportFile file;
  EXPECT_EQ(report.OpenReportFile(file, nullptr), 0);
  EXPECT_EQ(report.GetError(), openingError(L""));
  EXPECT_EQ(report.OpenReportFile(file, L""), 0);
  EXPECT_EQ(report.GetError(), openingError(L""));
}

TEST(OpenReportFile, LocksTheFileAgainstReadersAndWriters) {
  const TemporaryFolder folder;
  BareReport report;
  ReportFile first;
  ReportFile second;
  EXPECT_EQ(report.OpenReportFile(first, (folder / L"a.txt").c_str()), 1);
  EXPECT_EQ(report.OpenReportFile(second, (folder / L"a.txt").c_str()), 0);
  EXPECT_EQ(report.LoadTemplate(nullptr, (folder / L"a.txt").c_str(), 1), REPORT_FILE_ERROR);
}

TEST(ReportError, KeepsTheLastFailureUntilTheNext) {
  const TemporaryFolder folder;
  BareReport report;
  ReportFile file;
  EXPECT_EQ(report.OpenReportFile(file, (folder / L"missing/a").c_str()), 0);
  EXPECT_EQ(report.OpenReportFile(file, (folder / L"good").c_str()), 1);
  EXPECT_EQ(report.GetError(), openingError(folder / L"missing/a"));
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(report.OpenReportFile(file, folder.path().c_str()), 0);
  EXPECT_EQ(report.GetError(), openingError(folder.path()));
}

TEST(MakeTemplateName, LooksInTheFolderBesideTheLibrarysFile) {
  const CapturedLog log;
  BareReport report;
  std::wstring path;
  EXPECT_EQ(report.MakeTemplateName(path, L"default.htm"), 1);
  EXPECT_EQ(path, templateFolder() + kPathSeparator + L"default.htm");
  EXPECT_TRUE(log.lines().empty());
}

TEST(MakeTemplateName, LogsAMissAndLeavesTheErrorTextAlone) {
  const CapturedLog log;
  BareReport report = filledReport();
  std::wstring path;
  EXPECT_EQ(report.MakeTemplateName(path, L"no such template.htm"), 0);
  EXPECT_EQ(path, templateFolder() + kPathSeparator + L"no such template.htm");
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"Template '" + path + L"' not found."});
  EXPECT_STREQ(report.GetError(), L"error");
}

TEST(MakeTemplateName, ReturnsTheFolderWithoutAName) {
  const CapturedLog log;
  BareReport report;
  std::wstring path;
  EXPECT_EQ(report.MakeTemplateName(path, L""), 1);
  EXPECT_EQ(path, templateFolder() + kPathSeparator);
  EXPECT_EQ(report.MakeTemplateName(path, nullptr), 1);
  EXPECT_EQ(path, templateFolder() + kPathSeparator);
  EXPECT_TRUE(log.lines().empty());
}

TEST(LoadTemplate, FindsATemplateByName) {
  const TemporaryTemplate page("head %BODY% tail");
  BareReport report;
  std::wstring text;
  EXPECT_EQ(report.LoadTemplate(&text, page.name().c_str(), 0), REPORT_OK);
  EXPECT_EQ(text, L"head %BODY% tail");
}

TEST(LoadTemplate, LogsAMissingNameAndLeavesTheErrorTextAlone) {
  const CapturedLog log;
  BareReport report = filledReport();
  std::wstring text = L"kept";
  EXPECT_EQ(report.LoadTemplate(&text, L"no such template.htm", 0), REPORT_TEMPLATE_NOT_FOUND);
  EXPECT_EQ(text, L"kept");
  EXPECT_STREQ(report.GetError(), L"error");
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"Template '" + templateFolder() + kPathSeparator +
                                                   L"no such template.htm' not found."});
}

TEST(LoadTemplate, ReportsWhyAPathCannotBeOpened) {
  const CapturedLog log;
  const TemporaryFolder folder;
  BareReport report;
  std::wstring text;
  EXPECT_EQ(report.LoadTemplate(&text, (folder / L"missing.htm").c_str(), 1), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), readingError(folder / L"missing.htm"));
  EXPECT_EQ(report.LoadTemplate(&text, folder.path().c_str(), 1), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), readingError(folder.path()));
  EXPECT_TRUE(log.lines().empty());
}

TEST(LoadTemplate, ReportsWhyATemplateCannotBeOpened) {
  const TemporaryTemplate unreadable{TemporaryTemplate::Unreadable()};
  BareReport report;
  std::wstring text;
  EXPECT_EQ(report.LoadTemplate(&text, unreadable.name().c_str(), 0), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), readingError(unreadable.path()));
}

TEST(LoadTemplate, RefusesATemplateThatIsBeingWritten) {
  const TemporaryFolder folder;
  BareReport report;
  ReportFile writer;
  ASSERT_TRUE(writer.Open((folder / L"page.htm").c_str()));
  std::wstring text;
  EXPECT_EQ(report.LoadTemplate(&text, (folder / L"page.htm").c_str(), 1), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), readingError(folder / L"page.htm"));
}

TEST(LoadTemplate, ProbesWithoutAText) {
  const TemporaryFolder folder;
  writeBytes(folder / L"page.htm", "text");
  BareReport report;
  EXPECT_EQ(report.LoadTemplate(nullptr, (folder / L"page.htm").c_str(), 1), REPORT_OK);
  EXPECT_EQ(report.LoadTemplate(nullptr, (folder / L"missing.htm").c_str(), 1), REPORT_FILE_ERROR);
  EXPECT_EQ(report.LoadTemplate(nullptr, L"default.htm", 0), REPORT_OK);
}

TEST(LoadTemplate, RefusesAMissingPath) {
  BareReport report;
  std::wstring text;
  EXPECT_EQ(report.LoadTemplate(&text, nullptr, 1), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), readingError(L""));
}

TEST(LoadTemplate, ClosesTheFile) {
  const TemporaryFolder folder;
  writeBytes(folder / L"page.htm", "text");
  BareReport report;
  std::wstring text;
  EXPECT_EQ(report.LoadTemplate(&text, (folder / L"page.htm").c_str(), 1), REPORT_OK);
  EXPECT_EQ(report.LoadTemplate(nullptr, (folder / L"page.htm").c_str(), 1), REPORT_OK);
  ReportFile writer;
  EXPECT_TRUE(writer.Open((folder / L"page.htm").c_str()));
}

TEST(LoadTemplate, AppendsToTheExistingText) {
  const TemporaryFolder folder;
  writeBytes(folder / L"page.htm", "two");
  BareReport report;
  std::wstring text = L"one ";
  EXPECT_EQ(report.LoadTemplate(&text, (folder / L"page.htm").c_str(), 1), REPORT_OK);
  EXPECT_EQ(text, L"one two");
}

TEST(LoadTemplate, ConvertsEachByteToACharacter) {
  std::string bytes;
  std::wstring characters;
  for (int value = 0; value < 256; ++value) {
    bytes += static_cast<char>(static_cast<unsigned char>(value));
    characters += static_cast<wchar_t>(value);
  }
  EXPECT_EQ(loaded(bytes), characters);
}

TEST(LoadTemplate, ReadsAByteOrderMarkAndUtf8AsBytes) {
  EXPECT_EQ(loaded("\xEF\xBB\xBF\xC3\xA9\r\n"), L"\u00EF\u00BB\u00BF\u00C3\u00A9\r\n");
}

TEST(LoadTemplate, ReadsLargeFilesCompletely) {
  for (const std::size_t size : {8191u, 8192u, 8193u, 16384u, 100000u}) {
    std::string bytes;
    while (bytes.size() < size) {
      bytes += std::to_string(bytes.size()) + ' ';
    }
    bytes.resize(size);
    EXPECT_EQ(loaded(bytes), std::wstring(bytes.begin(), bytes.end())) << size;
  }
}

TEST(LoadTemplate, ReadsAnEmptyFile) { EXPECT_EQ(loaded(""), L""); }

TEST(PrepareTemplate, ReplacesEveryOccurrence) {
  BareReport report;
  report.AddProperty(L"%TITLE%", L"Q1");
  EXPECT_EQ(prepared(report, L"%TITLE%: %TITLE%%TITLE% %Title%"), L"Q1: Q1Q1 %Title%");
}

TEST(PrepareTemplate, LeavesATextWithoutPropertiesAlone) {
  EXPECT_EQ(prepared(BareReport(), L"<p>%TITLE%</p>"), L"<p>%TITLE%</p>");
}

TEST(PrepareTemplate, LetsALaterPropertyReplaceNamesInAnEarlierValue) {
  BareReport report;
  report.AddProperty(L"%A%", L"%B% and %B%");
  report.AddProperty(L"%B%", L"b");
  EXPECT_EQ(prepared(report, L"%A%"), L"b and b");
}

TEST(PrepareTemplate, DoesNotGoBackToAnEarlierProperty) {
  BareReport report;
  report.AddProperty(L"%B%", L"b");
  report.AddProperty(L"%A%", L"%B%");
  EXPECT_EQ(prepared(report, L"%A%"), L"%B%");
}

TEST(PrepareTemplate, IgnoresASecondPropertyOfTheSameName) {
  BareReport report;
  report.AddProperty(L"%A%", L"first");
  report.AddProperty(L"%A%", L"second");
  EXPECT_EQ(prepared(report, L"%A%"), L"first");
}

TEST(PrepareTemplate, TreatsNamesLiterally) {
  BareReport report;
  report.AddProperty(L".*", L"dot star");
  report.AddProperty(L"a", L"A");
  EXPECT_EQ(prepared(report, L"x.*a"),
            L"xdot stAr"
            L"A");
}

TEST(PrepareTemplate, DoesNotSearchAValueForItsOwnName) {
  BareReport report;
  report.AddProperty(L"x", L"xx");
  EXPECT_EQ(prepared(report, L"x-x"), L"xx-xx");
}

TEST(PrepareTemplate, ReplacesNothingForAnEmptyName) {
  BareReport report;
  report.AddProperty(L"", L"value");
  EXPECT_EQ(prepared(report, L"abc"), L"abc");
}

TEST(PrepareTemplate, RemovesANameWithAnEmptyValue) {
  BareReport report;
  report.AddProperty(L"%A%", L"");
  EXPECT_EQ(prepared(report, L"[%A%]"), L"[]");
}

TEST(PrepareTemplate, GoesFromLeftToRight) {
  BareReport report;
  report.AddProperty(L"aa", L"X");
  EXPECT_EQ(prepared(report, L"aaaaa"), L"XXa");
}

TEST(CompositeRow, OfTwoCellsHasTheirAttributes) {
  RecordingReport report;
  report.Row2(L"name", L"value", 1, L" a=1", nullptr);
  EXPECT_EQ(report.calls(), (Calls{"BeginRow(\"row\", null, 2)", "Cell(\"name\", 1, \" a=1\")",
                                   "Cell(\"value\", 1, null)", "EndRow(\"row\")"}));
}

TEST(CompositeRow, OfTwoCellsPassesNullTextsOn) {
  RecordingReport report;
  report.Row2(nullptr, nullptr, 0, nullptr, L" b=2");
  EXPECT_EQ(report.calls(),
            (Calls{"BeginRow(\"row\", null, 2)", "Cell(null, 0, null)", "Cell(null, 0, \" b=2\")", "EndRow(\"row\")"}));
}

TEST(CompositeRow, OfThreeCellsHasNoAttributes) {
  RecordingReport report;
  report.Row3(L"a", L"b", L"c", 1);
  EXPECT_EQ(report.calls(), (Calls{"BeginRow(\"row\", null, 3)", "Cell(\"a\", 1, null)", "Cell(\"b\", 1, null)",
                                   "Cell(\"c\", 1, null)", "EndRow(\"row\")"}));
}

TEST(CompositeRow, WithAnEmptyOrNullValueIsNotWritten) {
  RecordingReport report;
  report.Row2NotEmptyWithQuote(L"name", L"");
  report.Row2NotEmptyWithQuote(L"name", nullptr);
  EXPECT_EQ(report.calls(), Calls{});
}

TEST(CompositeRow, QuotesItsValueAndNotItsName) {
  RecordingReport report;
  report.Row2NotEmptyWithQuote(L"a<b", L"c<d");
  EXPECT_EQ(report.calls(), (Calls{"Quoting(\"c<d\")", "BeginRow(\"row\", null, 2)", "Cell(\"a<b\", 0, null)",
                                   "Cell(\"[c<d]\", 0, null)", "EndRow(\"row\")"}));
}

TEST(CompositeRow, WritesTheHeaderOfATableOfAttributes) {
  RecordingReport report;
  report.AttributeRowHeader();
  EXPECT_EQ(report.calls(), (Calls{"BeginRow(\"row\", null, 2)", "Cell(\"Report Attribute\", 1, \" width=\"25%\"\")",
                                   "Cell(\"Value\", 1, null)", "EndRow(\"row\")"}));
}

TEST(CompositeRow, ShowsWhenTheReportWasCreated) {
  const FixedClock clock(1709647620);
  RecordingReport report;
  report.ReportCreated();
  EXPECT_EQ(report.calls(), (Calls{"BeginRow(\"row\", null, 2)", "Cell(\"Report Created\", 0, null)",
                                   "Cell(\"05-Mar-2024 14:07\", 0, null)", "EndRow(\"row\")"}));
}

TEST(CompositeRow, WritesTheDateWithTwoDigitsForTheDayHoursAndMinutes) {
  RecordingReport report;
  {
    const FixedClock clock(0);
    report.ReportCreated();
  }
  {
    const FixedClock clock(951868799);
    report.ReportCreated();
  }
  EXPECT_EQ(report.calls()[2], dateRow("01-Jan-1970 00:00"));
  EXPECT_EQ(report.calls()[6], dateRow("29-Feb-2000 23:59"));
}

TEST(CompositeRowDeathTest, EndsTheProgramWhenTheTimeHasNoDate) {
  const FixedClock clock(std::numeric_limits<std::int64_t>::max());
  RecordingReport report;
  EXPECT_DEATH(report.ReportCreated(), "Invalid argument: the current time cannot be converted to local time.");
}

TEST(CompositeRow, NamesTheProductAndItsVersion) {
  RecordingReport report;
  report.ProductRow(L"Created by");
  EXPECT_EQ(report.calls(),
            (Calls{"BeginRow(\"row\", null, 2)", "Cell(\"Created by\", 0, null)",
                   "Cell(\"Scrivalen " SCRIVALEN_VERSION ", Unicode, x64\", 0, null)", "EndRow(\"row\")"}));
}
