#include "formats/pdf/layout/made_pdf.h"
#include "formats/pdf/layout/pdf_report.h"
#include "scrivalen/multi_report.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/documents/golden.h"
#include "support/documents/pdf_structure.h"
#include "support/documents/scenarios.h"
#include "support/faults/open_errors.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

using namespace scrivalen::test;

namespace {

constexpr std::int64_t kNow = 1730815620;  // 2024-11-05 14:07 UTC

// A paragraph of one letter so large that little is left of the page.
void writeLarge(AReport& report, int size) {
  report.BeginParagraph(PARAGRAPH_NORMAL, L"");
  report.BeginStyle(STYLE_FONT_SIZE, size);
  report.Text(L"1", PARAGRAPH_NONE, L"", 0);
  report.EndStyle(STYLE_FONT_SIZE, size);
  report.EndParagraph(PARAGRAPH_NORMAL);
}

void writeLink(AReport& report, const wchar_t* text, const wchar_t* target) {
  report.BeginParagraph(PARAGRAPH_NORMAL, L"");
  report.Link(text, target);
  report.EndParagraph(PARAGRAPH_NORMAL);
}

void writeHeading(AReport& report, PARAGRAPH_TYPE type, const wchar_t* text, const wchar_t* anchor) {
  report.BeginParagraph(type, L"");
  report.BeginAncor(anchor);
  report.Text(text, PARAGRAPH_NONE, L"", 0);
  report.EndAncor();
  report.EndParagraph(type);
}

void playOneParagraph(AReport& report) {
  report.Text(
      L"A paragraph that is longer than its line (and has brackets, a back\\slash and a hy-phen in it) goes on below, "
      L"at the left margin, where the words that did not fit above begin anew.",
      PARAGRAPH_NORMAL, L"", 0);
}

void playTableOverPages(AReport& report) {
  writeLarge(report, 366);
  report.BeginTable(L"stock", nullptr);
  report.Row2(L"Part", L"Stock", 1, nullptr, nullptr);
  report.Row2(L"Bolt", L"120", 0, nullptr, nullptr);
  report.BeginRow(L"row", nullptr, 2);
  report.BeginCell(nullptr, 0, L"yellow");
  report.Text(L"Nut", PARAGRAPH_NONE, L"", 0);
  report.EndCell(nullptr, 0);
  report.Cell(L"80\n20 on order", 0, nullptr);
  report.EndRow(L"row");
  report.BeginRow(L"row", nullptr, 3);
  report.Cell(L"Washer", 0, nullptr);
  report.Cell(L"40", 0, nullptr);
  report.EndRow(L"row");
  report.EndTable(L"stock");
  report.Text(L"Below the table.", PARAGRAPH_NORMAL, L"", 0);
}

void playLinksOverPages(AReport& report) {
  writeHeading(report, PARAGRAPH_HEADING1, L"Begin", L"begin");
  writeLink(report, L"To the end", L"end");
  writeLarge(report, 348);
  writeLink(report, L"A link\nthat goes over\nthe end of the page", L"end");
  report.Ancor(L"end");
  report.Text(L"End", PARAGRAPH_HEADING2, L"", 0);
  writeLink(report, L"Back to the beginning", L"#begin");
  writeLink(report, L"Back as well", L"begin");
  writeLink(report, L"Nowhere", L"missing");
  report.BeginTable(L"t", nullptr);
  report.BeginRow(L"row", nullptr, 2);
  report.Cell(L"left", 0, nullptr);
  report.BeginCell(nullptr, 0, nullptr);
  report.Link(L"right", L"begin");
  report.EndCell(nullptr, 0);
  report.EndRow(L"row");
  report.EndTable(L"t");
}

void playThreeLevelOutline(AReport& report) {
  report.BeginToc();
  report.TocItem(L"one", L"One", 0);
  report.TocItem(L"one.first", L"First half (of two)", 1);
  report.TocItem(L"one.first.deepest", L"Deepest", 2);
  report.TocItem(L"one.second", L"Second half", 1);
  report.TocItem(L"two", L"Two", 0);
  report.TocItem(L"two.deep", L"Too deep", 2);
  report.TocItem(L"missing", L"Without a place", 1);
  report.EndToc();
  writeHeading(report, PARAGRAPH_HEADING1, L"One", L"one");
  writeHeading(report, PARAGRAPH_HEADING2, L"First half", L"one.first");
  writeHeading(report, PARAGRAPH_HEADING3, L"Deepest", L"one.first.deepest");
  writeHeading(report, PARAGRAPH_HEADING2, L"Second half", L"one.second");
  writeHeading(report, PARAGRAPH_HEADING1, L"Two", L"two");
  writeHeading(report, PARAGRAPH_HEADING2, L"Deep", L"two.deep");
}

void playLandscape(AReport& report) {
  report.Text(L"Across", PARAGRAPH_HEADING1, L"", 0);
  report.Text(L"A page on its side.", PARAGRAPH_NORMAL, L"", 0);
  report.BeginTable(L"disks", nullptr);
  report.Row3(L"Name", L"Size", L"State", 1);
  report.BeginRow(L"row", nullptr, 3);
  report.BeginCell(nullptr, 0, L"bLUE");
  report.Text(L"sda", PARAGRAPH_NONE, L"", 0);
  report.EndCell(nullptr, 0);
  report.BeginCell(nullptr, 0, L"Blue");
  report.Text(L"2000", PARAGRAPH_NONE, L"", 0);
  report.EndCell(nullptr, 0);
  report.Cell(L"well", 0, nullptr);
  report.EndRow(L"row");
  report.EndTable(L"disks");
}

struct Document {
  const char* name;
  void (*play)(AReport& report);
  int landscape;
};

void PrintTo(const Document& document, std::ostream* out) { *out << document.name; }

constexpr Document kDocuments[] = {{"one_paragraph", &playOneParagraph, 0},
                                   {"table_over_pages", &playTableOverPages, 0},
                                   {"links_over_pages", &playLinksOverPages, 0},
                                   {"three_level_outline", &playThreeLevelOutline, 0},
                                   {"landscape", &playLandscape, 1}};

// Writes a part of a report. All parts take several pages, with links, an outline and tables.
void writePart(AReport& report, int part) {
  const std::wstring name = L"part " + std::to_wstring(part);
  report.TocItem(name.c_str(), name.c_str(), part % 3);
  writeHeading(report, PARAGRAPH_HEADING2, name.c_str(), name.c_str());
  writeLink(report, L"back", (L"part " + std::to_wstring(part / 2)).c_str());
  report.BeginTable(L"t", nullptr);
  report.Row2(L"name", L"value", 1, nullptr, nullptr);
  report.Row3(name.c_str(), longText(static_cast<std::size_t>(part) + 50).c_str(), L"c", 0);
  report.EndTable(L"t");
}

struct Kind {
  int landscape;
  int conforming;
};

constexpr Kind kPortrait{0, 0};
constexpr Kind kWidePaper{1, 0};
constexpr Kind kWideConforming{1, 1};
constexpr int kParts = 60;

void open(AReport& report, const std::wstring& path, const Kind& kind) {
  report.SetReportOption(OPTION_LANDSCAPE, kind.landscape);
  report.SetReportOption(OPTION_CONFORMING, kind.conforming);
  EXPECT_EQ(report.Open(path.c_str()), REPORT_OK);
}

void writeParts(AReport& report) {
  for (int part = 0; part < kParts; ++part) {
    writePart(report, part);
  }
}

// The bytes of a report written on its own, with their structure checked.
template <typename Play>
std::string writtenAlone(const Kind& kind, Play play) {
  const TemporaryFolder folder;
  PDFReport report;
  open(report, folder / L"a.pdf", kind);
  play(report);
  EXPECT_EQ(report.Close(), REPORT_OK);
  const std::string bytes = bytesOf(folder / L"a.pdf");
  EXPECT_EQ(PdfStructure(bytes, kind.conforming != 0).problems(), std::vector<std::string>());
  return bytes;
}

std::string writtenAlone(const Kind& kind) { return writtenAlone(kind, &writeParts); }

struct PdfReportDocument : testing::TestWithParam<std::tuple<Document, int>> {
  const FixedClock clock{kNow};
};

std::string nameOf(const testing::TestParamInfo<PdfReportDocument::ParamType>& test) {
  const auto& [document, conforming] = test.param;
  return document.name + std::string(conforming ? "_conforming" : "");
}

struct PdfReportsAtOnce : testing::Test {
  const FixedClock clock{kNow};
  const TemporaryFolder folder;
};

struct MultiReportWithPdf : PdfReportsAtOnce {};

}  // namespace

TEST_P(PdfReportDocument, MatchesTheExpectedOne) {
  const auto& [document, conforming] = GetParam();
  const std::string expected = golden(std::string("pdf/") + document.name + (conforming ? "_conforming.pdf" : ".pdf"));
  EXPECT_TRUE(areSameBytes(expected, writtenAlone({document.landscape, conforming}, document.play)));
}

INSTANTIATE_TEST_SUITE_P(Whole, PdfReportDocument,
                         testing::Combine(testing::ValuesIn(kDocuments), testing::Values(0, 1)), nameOf);

TEST(PdfReportOfEveryScenario, HasAConsistentStructure) {
  for (const Scenario& scenario : scenarios()) {
    for (const Kind& kind : {kPortrait, kWideConforming}) {
      EXPECT_FALSE(writtenAlone(kind, scenario.play).empty()) << scenario.name;
    }
  }
}

TEST_F(MultiReportWithPdf, WritesChildrenOfDifferentPaperAndForm) {
  MultiReport report;
  report.AddReport(FORMAT_PDF, (folder / L"wide conforming.pdf").c_str(), nullptr);
  report.SetReportOption(OPTION_CONFORMING, 1);
  report.AddReport(FORMAT_PDF, (folder / L"wide.pdf").c_str(), nullptr);
  report.SetReportOption(OPTION_LANDSCAPE, 1);
  report.AddReport(FORMAT_PDF, (folder / L"upright.pdf").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  writeParts(report);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_TRUE(areSameBytes(writtenAlone(kWideConforming), bytesOf(folder / L"wide conforming.pdf")));
  EXPECT_TRUE(areSameBytes(writtenAlone(kWidePaper), bytesOf(folder / L"wide.pdf")));
  EXPECT_TRUE(areSameBytes(writtenAlone(kPortrait), bytesOf(folder / L"upright.pdf")));
}

TEST_F(MultiReportWithPdf, DoesNotPassOnEarlierSettings) {
  MultiReport report;
  report.SetReportOption(OPTION_LANDSCAPE, 1);
  report.AddProperty(L"%TITLE%", L"Title");
  report.AddReport(FORMAT_PDF, (folder / L"a.pdf").c_str(), L"no such template.htm");
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_TRUE(areSameBytes(golden("pdf/empty.pdf"), bytesOf(folder / L"a.pdf")));
}

TEST_F(MultiReportWithPdf, OpensItsOnlyChildOnTheGivenFile) {
  MultiReport report;
  report.AddReport(FORMAT_PDF, (folder / L"a.pdf").c_str(), nullptr);
  EXPECT_EQ(report.Open((folder / L"b.pdf").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_FALSE(exists(folder / L"a.pdf"));
  EXPECT_TRUE(areSameBytes(golden("pdf/empty.pdf"), bytesOf(folder / L"b.pdf")));
}

TEST_F(MultiReportWithPdf, StopsOpeningWhenThePdfChildFailsFirst) {
  MultiReport report;
  report.AddReport(FORMAT_PDF, (folder / L"missing/a.pdf").c_str(), nullptr);
  report.AddReport(FORMAT_HTML, (folder / L"a.html").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(folder / L"missing/a.pdf"));
  EXPECT_FALSE(exists(folder / L"a.html"));
  report.Text(L"lost", PARAGRAPH_NORMAL, L"", 0);
  report.TocItem(L"lost", L"Lost", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
}

TEST_F(MultiReportWithPdf, LeavesThePdfChildOpenWhenALaterOneFails) {
  MultiReport report;
  report.AddReport(FORMAT_PDF, (folder / L"a.pdf").c_str(), nullptr);
  report.AddReport(FORMAT_XML, (folder / L"missing/a.xml").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  report.Text(L"kept", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(MadePdf(bytesOf(folder / L"a.pdf")).texts(1), std::vector<std::string>{"kept"});
}

TEST_F(MultiReportWithPdf, LeavesAQuotedValueUnchanged) {
  MultiReport report;
  report.AddReport(FORMAT_PDF, (folder / L"a.pdf").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  report.BeginTable(L"t", nullptr);
  report.Row2NotEmptyWithQuote(L"name", L"<b> & {c}");
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(MadePdf(bytesOf(folder / L"a.pdf")).texts(1), (std::vector<std::string>{"name", "<b> & {c}"}));
}

TEST_F(PdfReportsAtOnce, DoNotInterfereWhenTheirCallsAlternate) {
  PDFReport upright;
  PDFReport wide;
  open(upright, folder / L"upright.pdf", kPortrait);
  for (int part = 0; part < kParts; ++part) {
    if (part == 1) {
      open(wide, folder / L"wide.pdf", kWideConforming);
      writePart(wide, 0);
    }
    writePart(upright, part);
    if (part > 0) {
      writePart(wide, part);
    }
  }
  EXPECT_EQ(upright.Close(), REPORT_OK);
  EXPECT_EQ(wide.Close(), REPORT_OK);
  EXPECT_TRUE(areSameBytes(writtenAlone(kPortrait), bytesOf(folder / L"upright.pdf")));
  EXPECT_TRUE(areSameBytes(writtenAlone(kWideConforming), bytesOf(folder / L"wide.pdf")));
}

TEST_F(PdfReportsAtOnce, DoNotInterfereWhenTheFirstIsClosedLast) {
  PDFReport wide;
  PDFReport upright;
  open(wide, folder / L"wide.pdf", kWidePaper);
  open(upright, folder / L"upright.pdf", kPortrait);
  writeParts(upright);
  EXPECT_EQ(upright.Close(), REPORT_OK);
  writeParts(wide);
  EXPECT_EQ(wide.Close(), REPORT_OK);
  EXPECT_TRUE(areSameBytes(writtenAlone(kPortrait), bytesOf(folder / L"upright.pdf")));
  EXPECT_TRUE(areSameBytes(writtenAlone(kWidePaper), bytesOf(folder / L"wide.pdf")));
}

TEST_F(PdfReportsAtOnce, DoNotInterfereInTwoThreads) {
  constexpr int kRounds = 10;
  constexpr std::array kKinds = {kPortrait, kWideConforming};
  std::array<std::vector<std::string>, kKinds.size()> written;
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < kKinds.size(); ++i) {
    threads.emplace_back([&, i] {
      for (int round = 0; round < kRounds; ++round) {
        written[i].push_back(writtenAlone(kKinds[i]));
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (std::size_t i = 0; i < kKinds.size(); ++i) {
    const std::string alone = writtenAlone(kKinds[i]);
    for (const std::string& bytes : written[i]) {
      EXPECT_TRUE(areSameBytes(alone, bytes));
    }
  }
}
