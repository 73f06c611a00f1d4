#include "formats/document_formats.h"
#include "formats/document_report.h"
#include "support/captured_log.h"
#include "support/documents/recording_writer.h"
#include "support/documents/templates.h"
#include "support/faults/open_errors.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace scrivalen;
using namespace scrivalen::test;

namespace {

struct DocumentReportFile : testing::Test {
  std::wstring path(const wchar_t* name = L"a") const { return folder / name; }
  std::string bytes() const { return bytesOf(path()); }
  bool hasOnlyTheFile() const {
    const std::filesystem::directory_iterator first(asPath(folder / L""));
    return exists(path()) && std::distance(begin(first), end(first)) == 1;
  }

  const TemporaryFolder folder;
  const CapturedLog log;
};

void writeParagraph(AReport& report, const wchar_t* text) { report.Text(text, PARAGRAPH_NORMAL, L"", 0); }

/// Fails at its end, like a disk that is full.
class FailingWriter : public document::DocumentWriter {
 public:
  void begin() override {}
  void write(const document::Event&) override {}
  void beginTable(const document::Table&) override {}
  void row(const document::Row&) override {}
  void endTable() override {}
  void finish() override { throw document::OutputFailure(document::Status::FileError, "no space left"); }
};

const document::Format kFailingFormat{"text",
                                      [](const document::WriterContext&) -> std::unique_ptr<document::DocumentWriter> {
                                        return std::make_unique<FailingWriter>();
                                      }};

const document::Format& text() { return *documentFormatOf("text"); }
const document::Format& html() { return *documentFormatOf("html"); }

}  // namespace

TEST_F(DocumentReportFile, IsReplacedByClose) {
  writeBytes(path(), "before");
  DocumentReport report(text());
  report.SetOutputFileName(path().c_str());
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeParagraph(report, L"one");
  EXPECT_EQ(std::filesystem::file_size(asPath(path())), 6u);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytes(), "one\n");
  EXPECT_STREQ(report.GetError(), L"");
}

TEST_F(DocumentReportFile, IsUntouchedWhenNotClosed) {
  writeBytes(path(), "before");
  {
    DocumentReport report(text());
    EXPECT_EQ(report.Open(path().c_str()), REPORT_OK);
    writeParagraph(report, L"one");
  }
  EXPECT_EQ(bytes(), "before");
  EXPECT_TRUE(hasOnlyTheFile());
}

TEST_F(DocumentReportFile, ThatCannotBeCreatedFailsToOpen) {
  DocumentReport report(text());
  const std::wstring missing = path(L"missing/a");
  EXPECT_EQ(report.Open(missing.c_str()), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(missing));
  writeParagraph(report, L"dropped");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.Open(nullptr), REPORT_FILE_ERROR);
  EXPECT_EQ(report.Open(L""), REPORT_FILE_ERROR);
}

TEST_F(DocumentReportFile, IsNotOpenedTwice) {
  DocumentReport report(text());
  EXPECT_EQ(report.Open(path().c_str()), REPORT_OK);
  EXPECT_EQ(report.Open(path(L"b").c_str()), REPORT_FILE_ERROR);
  EXPECT_EQ(std::wstring(report.GetError()),
            L"File open/create error for '" + path(L"b") + L"'. The report is still open.");
  writeParagraph(report, L"one");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytes(), "one\n");
}

TEST_F(DocumentReportFile, TakesNothingBeforeOpenAndAfterClose) {
  DocumentReport report(text());
  for (int i = 0; i < 2; ++i) {
    writeParagraph(report, L"stray");
    report.BeginStyle(STYLE_BOLD, 0);
    report.Cell(L"stray", 0, nullptr);
    EXPECT_EQ(report.BeginSubDocument(L"", L"a", L"A"), REPORT_OK);
    EXPECT_EQ(report.Close(), REPORT_OK);
    EXPECT_EQ(report.Open(path().c_str()), REPORT_OK);
    EXPECT_EQ(report.Close(), REPORT_OK);
    EXPECT_EQ(bytes(), "");
  }
}

TEST_F(DocumentReportFile, ThatIsNotWrittenWholeFailsAtClose) {
  writeBytes(path(), "before");
  DocumentReport report(kFailingFormat);
  EXPECT_EQ(report.Open(path().c_str()), REPORT_OK);
  writeParagraph(report, L"one");
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), L"no space left");
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"no space left"});
  EXPECT_EQ(bytes(), "before");
  EXPECT_EQ(report.Close(), REPORT_OK);
}

TEST_F(DocumentReportFile, LogsItsWarningsAtClose) {
  DocumentReport report(text());
  EXPECT_EQ(report.Open(path().c_str()), REPORT_OK);
  report.Link(L"x", L"#nowhere");
  report.Text(L"\x01\x02", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{});
  EXPECT_EQ(report.Close(), REPORT_OK);
  const std::wstring start = L"'" + path() + L"': ";
  const std::vector<std::wstring> expected{start + L"control characters, replaced by U+FFFD (2 times).",
                                           start + L"a link leads to '#nowhere', which is nowhere in the document."};
  EXPECT_EQ(log.lines(), expected);
}

TEST_F(DocumentReportFile, HasTheTitleAndPropertiesOfTheReport) {
  const TemporaryTemplate page("%TITLE%|%AUTHOR%|%LANGUAGE%|%OTHER%|%BODY%|");
  DocumentReport report(html());
  report.SetTemplateFileName(page.name().c_str());
  report.AddProperty(L"%TITLE%", L"R&amp;D");
  report.AddProperty(L"%TITLE%", L"second");
  report.AddProperty(L"%title%", L"third");
  report.AddProperty(L"%AUTHOR%", L"A & B");
  report.AddProperty(L"%LANGUAGE%", L"de-AT");
  report.AddProperty(L"%OTHER%", L"<x>");
  EXPECT_EQ(report.Open(path().c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytes(), "R&amp;D|A &amp; B|de-AT|&lt;x&gt;||");
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{});
}

TEST_F(DocumentReportFile, ShowsTheTitleWhereNoHeadingDoes) {
  DocumentReport report(text());
  report.AddProperty(L"%TITLE%", L"Sales");
  EXPECT_EQ(report.Open(path().c_str()), REPORT_OK);
  writeParagraph(report, L"one");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytes(), "Sales\n=====\n\none\n");
}

TEST_F(DocumentReportFile, LeavesOutAPropertyThatDocumentsDoNotTake) {
  DocumentReport report(text());
  report.AddProperty(L"%LANGUAGE%", L"no language");
  report.AddProperty(L"", L"x");
  EXPECT_EQ(report.Open(path().c_str()), REPORT_OK);
  writeParagraph(report, L"one");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytes(), "one\n");
  ASSERT_EQ(log.lines().size(), 2u);
  EXPECT_TRUE(log.lines()[0].starts_with(L"'" + path() + L"': The setting \"language\" does not take"))
      << log.lines()[0];
}

TEST_F(DocumentReportFile, ThatLacksItsTemplateFailsToOpen) {
  DocumentReport report(html());
  report.SetTemplateFileName(L"no-such-template.htm");
  EXPECT_EQ(report.Open(path().c_str()), REPORT_TEMPLATE_NOT_FOUND);
  EXPECT_NE(std::wstring(report.GetError()).find(L"no-such-template.htm"), std::wstring::npos);
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{report.GetError()});
  EXPECT_FALSE(exists(path()));
}

TEST_F(DocumentReportFile, IsHeldFromOpenToClose) {
  DocumentReport report(text());
  DocumentReport other(text());
  EXPECT_EQ(report.Open(path().c_str()), REPORT_OK);
  EXPECT_EQ(std::filesystem::file_size(asPath(path())), 0u);
  EXPECT_EQ(other.Open(path().c_str()), REPORT_FILE_ERROR);
  EXPECT_TRUE(std::wstring(other.GetError()).starts_with(L"File open/create error for '" + path() + L"'. "));
  writeParagraph(report, L"one");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(other.Open(path().c_str()), REPORT_OK);
  EXPECT_EQ(other.Close(), REPORT_OK);
  EXPECT_EQ(bytes(), "");
}

TEST_F(DocumentReportFile, TakesSettingsUntilTheFirstContent) {
  DocumentReport report(text());
  EXPECT_EQ(report.Open(path().c_str()), REPORT_OK);
  report.AddProperty(L"%TITLE%", L"Caf\u00E9");
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  writeParagraph(report, L"one");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytes(), "Caf\xE9\n====\n\none\n");
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{});
  EXPECT_TRUE(hasOnlyTheFile());
}

TEST_F(DocumentReportFile, TakesSettingsAfterTheFirstContentForTheNextDocument) {
  DocumentReport report(text());
  EXPECT_EQ(report.Open(path().c_str()), REPORT_OK);
  writeParagraph(report, L"one");
  report.AddProperty(L"%TITLE%", L"Late");
  report.SetReportOption(OPTION_LANDSCAPE, 1);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytes(), "one\n");
  EXPECT_EQ(
      log.lines(),
      std::vector<std::wstring>{
          L"'" + path() + L"': a property or an option came too late; it counts from the next document on (2 times)."});
  EXPECT_EQ(report.Open(path().c_str()), REPORT_OK);
  writeParagraph(report, L"two");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytes(), "Late\n====\n\ntwo\n");
}

TEST_F(DocumentReportFile, HasLandscapePaperOnRequest) {
  DocumentReport report(html());
  report.SetReportOption(OPTION_LANDSCAPE, 1);
  report.SetReportOption(OPTION_CONFORMING, 1);
  report.SetStyles(L"cell { color: red }");
  report.SetColumnSeparator(L";");
  EXPECT_EQ(report.Open(path().c_str()), REPORT_OK);
  report.Row2(L"a", L"b", 0, nullptr, nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_NE(bytes().find("landscape"), std::string::npos) << bytes();
  EXPECT_NE(bytes().find("<tr><td>a</td><td>b</td></tr>"), std::string::npos) << bytes();
}

TEST_F(DocumentReportFile, HasTheWidthsOfTheFirstRow) {
  DocumentReport report(html());
  EXPECT_EQ(report.Open(path().c_str()), REPORT_OK);
  report.BeginTable(L"shares", nullptr);
  report.AttributeRowHeader();
  report.EndTable(L"shares");
  report.BeginTable(L"lengths", nullptr);
  report.Row2(L"a", L"b", 0, L" width=\"100\"", L" style=\"width:225pt\"");
  report.EndTable(L"lengths");
  report.BeginTable(L"one length", nullptr);
  report.Row2(L"a", L"b", 0, L" width=\"100\"", nullptr);
  report.EndTable(L"one length");
  EXPECT_EQ(report.Close(), REPORT_OK);
  const std::string page = bytes();
  const std::string quarter = "<colgroup><col style=\"width:25%\"><col style=\"width:75%\"></colgroup>";
  const std::size_t first = page.find(quarter);
  ASSERT_NE(first, std::string::npos) << page;
  const std::size_t second = page.find(quarter, first + 1);
  ASSERT_NE(second, std::string::npos) << page;
  EXPECT_EQ(page.find("<colgroup>", second + 1), std::string::npos) << page;
}

TEST_F(DocumentReportFile, NamesTheElementsOfXml) {
  DocumentReport report(*documentFormatOf("xml"));
  EXPECT_EQ(report.Open(path().c_str()), REPORT_OK);
  report.BeginTable(L"ledger", nullptr);
  report.BeginRow(L"row", nullptr, 2);
  for (const wchar_t* name : {L"customer", L"amount"}) {
    report.BeginCell(name, 0, nullptr);
    report.Text(L"x", PARAGRAPH_NONE, L"", 0);
    report.EndCell(name, 0);
  }
  report.EndRow(L"row");
  report.EndTable(L"ledger");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_NE(bytes().find("<customer>x</customer><amount>x</amount>"), std::string::npos) << bytes();
  EXPECT_NE(bytes().find("ledger"), std::string::npos) << bytes();
}
