#include "formats/document_formats.h"
#include "scrivalen/multi_report.h"
#include "support/captured_log.h"
#include "support/documents/templates.h"
#include "support/documents/workbook.h"
#include "support/faults/open_errors.h"
#include "support/files.h"
#include "support/pdf/pdf_pages.h"
#include "text/utf.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <optional>

using namespace scrivalen;
using namespace scrivalen::test;

namespace {

struct DocumentNumber {
  int number;
  const char* name;
};

constexpr DocumentNumber kNumbers[] = {{100, "rtf"}, {101, "html"}, {102, "xml"},  {103, "text"},    {104, "chm"},
                                       {105, "pdf"}, {106, "xlsx"}, {107, "docx"}, {108, "markdown"}};

struct MultiReportDocument : testing::Test {
  void add(MultiReport& report, const wchar_t* templateFile = nullptr,
           REPORT_FORMAT format = FORMAT_DOCUMENT_TEXT) const {
    report.AddReport(format, path.c_str(), templateFile);
  }

  const TemporaryFolder folder;
  const std::wstring path = folder / L"a";
  const CapturedLog log;
};

void writeParagraph(AReport& report, const wchar_t* text) { report.Text(text, PARAGRAPH_NORMAL, L"", 0); }

}  // namespace

TEST_F(MultiReportDocument, HasTheNumberOfItsFormatIfThatIsWritten) {
  for (const DocumentNumber& known : kNumbers) {
    const CapturedLog lines;
    const std::wstring file = folder / std::wstring(known.name, known.name + std::strlen(known.name));
    MultiReport report;
    report.AddReport(static_cast<REPORT_FORMAT>(known.number), file.c_str(), nullptr);
    EXPECT_EQ(report.Open(), REPORT_OK);
    writeParagraph(report, L"one");
    const REPORT_ERRORS closed = report.Close();
    // Without a compiler there is no help, but its number is known.
    const bool lacksCompiler =
        known.number == 104 &&
        std::wstring(report.GetError()).find(L"the help compiler could not be started") != std::wstring::npos;
    EXPECT_EQ(closed, lacksCompiler ? REPORT_FILE_ERROR : REPORT_OK) << known.name;
    report.Clear();
    const bool isWritten = documentFormatOf(known.name) != nullptr && !lacksCompiler;
    EXPECT_EQ(exists(file), isWritten) << known.name;
    EXPECT_EQ(lines.lines().size(), isWritten ? 0u : 1u) << known.name;
  }
}

TEST_F(MultiReportDocument, IsWrittenAtClose) {
  MultiReport report;
  add(report);
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeParagraph(report, L"one");
  EXPECT_EQ(std::filesystem::file_size(asPath(path)), 0u);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(bytesOf(path), "one\n");
}

TEST_F(MultiReportDocument, GetsItsTemplate) {
  const TemporaryTemplate page("<%BODY%>");
  MultiReport report;
  add(report, page.name().c_str(), FORMAT_DOCUMENT_HTML);
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeParagraph(report, L"one");
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(bytesOf(path), "<<p>one</p>\n>");
}

TEST_F(MultiReportDocument, IsLeftBehindWhenClearedWhileOpen) {
  writeBytes(path, "before");
  MultiReport report;
  add(report);
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeParagraph(report, L"one");
  report.Clear();
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(std::filesystem::file_size(asPath(path)), 6u);
}

TEST_F(MultiReportDocument, IsLeftBehindWhenItsReportIsDestroyed) {
  {
    MultiReport report;
    add(report);
    EXPECT_EQ(report.Open(), REPORT_OK);
    writeParagraph(report, L"one");
  }
  EXPECT_EQ(std::filesystem::file_size(asPath(path)), 0u);
}

TEST_F(MultiReportDocument, IsSharedByCopies) {
  std::optional<MultiReport> source(std::in_place);
  add(*source);
  EXPECT_EQ(source->Open(), REPORT_OK);
  writeParagraph(*source, L"one");
  MultiReport copy(*source);
  source.reset();
  writeParagraph(copy, L"two");
  EXPECT_EQ(copy.Close(), REPORT_OK);
  copy.Clear();
  EXPECT_EQ(bytesOf(path), "one\n\ntwo\n");
}

TEST_F(MultiReportDocument, ThatFailsGivesItsErrorText) {
  MultiReport report;
  const std::wstring missing = folder / L"missing/a";
  report.AddReport(FORMAT_DOCUMENT_TEXT, missing.c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(missing));
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
}

namespace {

void writeRow(AReport& report) {
  report.BeginTable(L"table", nullptr);
  report.BeginRow(L"row", nullptr, 2);
  report.Cell(L"one", 1, nullptr);
  report.SetCellColor(L"red;yellow");
  report.Cell(L"two", 0, nullptr);
  report.EndRow(L"row");
  report.EndTable(L"table");
}

}  // namespace

TEST_F(MultiReportDocument, OfPdfAndSpreadsheetIsWrittenBesideTheirReports) {
  const FixedClock clock(86400);
  const std::wstring classic = folder / L"classic";
  const std::wstring beside = folder / L"beside";
  const auto writeBoth = [&](const std::wstring& start, bool hasDocuments) {
    MultiReport report;
    report.AddReport(FORMAT_PDF, (start + L".pdf").c_str(), nullptr);
    report.AddReport(FORMAT_EXCEL, (start + L".xlsx").c_str(), nullptr);
    if (hasDocuments) {
      report.AddReport(FORMAT_DOCUMENT_PDF, (path + L".pdf").c_str(), nullptr);
      report.AddReport(FORMAT_DOCUMENT_EXCEL, (path + L".xlsx").c_str(), nullptr);
    }
    EXPECT_EQ(report.Open(), REPORT_OK);
    writeRow(report);
    EXPECT_EQ(report.Close(), REPORT_OK);
    report.Clear();
  };
  writeBoth(classic, false);
  writeBoth(beside, true);
  EXPECT_TRUE(bytesOf(classic + L".pdf") == bytesOf(beside + L".pdf"));
  EXPECT_TRUE(bytesOf(classic + L".xlsx") == bytesOf(beside + L".xlsx"));
  EXPECT_EQ(readCells(path + L".xlsx"), "A1 \"one\" bold\nB1 \"two\" color=FF0000 fill=FFFF00\n");
  const PdfPages pdf(bytesOf(path + L".pdf"));
  EXPECT_EQ(pdf.lines(), std::vector<std::string>{"onetwo"});
  EXPECT_EQ(pdf.texts().back().color, 0xFF0000u);
  EXPECT_TRUE(log.lines().empty());
}

// What a document cannot hold is logged as a warning of its own file.
TEST_F(MultiReportDocument, OfPdfLogsItsWarningsWithItsOwnName) {
  MultiReport report;
  add(report, nullptr, FORMAT_DOCUMENT_PDF);
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeParagraph(report, L"\u03A9 \u6F22");
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(PdfPages(bytesOf(path)).lines(), std::vector<std::string>{"\u03A9 \u6F22"});
  ASSERT_EQ(log.lines().size(), 1u);
  EXPECT_TRUE(log.lines()[0].starts_with(L"'" + path + L"': ")) << toUtf8(log.lines()[0]);
  EXPECT_NE(log.lines()[0].find(L"script Han "), std::wstring::npos) << toUtf8(log.lines()[0]);
}
