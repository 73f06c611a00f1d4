#include "formats/pdf/layout/pdf_report.h"
#include "output/log_loss.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/documents/pdf_structure.h"
#include "support/faults/out_of_memory.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

using namespace scrivalen::test;

namespace {

using Lines = std::vector<std::wstring>;

constexpr const wchar_t* kLongLink =
    L"A link\n\n\n\n\n\n\nthat goes\n\n\n\n\n\n\nover the end\n\n\n\n\n\n\nof the page";

void playTable(AReport& report) {
  report.BeginTable(L"stock", nullptr);
  report.Row2(L"Part", L"Stock", 1, nullptr, nullptr);
  report.Row2(
      L"A bolt with a name so long that it does not fit into one line of a cell as narrow as this one is, "
      L"whatever its size",
      L"120", 0, nullptr, nullptr);
  report.BeginRow(L"row", nullptr, 2);
  report.BeginCell(nullptr, 0, L"yellow");
  report.Link(L"to the end", L"end");
  report.EndCell(nullptr, 0);
  report.Cell(L"80\n20 on order", 0, nullptr);
  report.EndRow(L"row");
  report.EndTable(L"stock");
}

// A report of two pages, with a link that crosses the page break.
void play(AReport& report) {
  report.TocItem(L"begin", L"Begin", 0);
  report.TocItem(L"end", L"End", 1);
  report.BeginParagraph(PARAGRAPH_HEADING1, L"");
  report.BeginAncor(L"begin");
  report.BeginStyle(STYLE_BOLD, 0);
  report.Text(L"Begin", PARAGRAPH_NONE, L"", 0);
  report.EndStyle(STYLE_BOLD, 0);
  report.EndAncor();
  report.EndParagraph(PARAGRAPH_HEADING1);
  playTable(report);
  report.BeginStyle(STYLE_FONT_SIZE, 20);
  report.Text(L"A text of some words.", PARAGRAPH_NONE, L"", 0);
  report.BeginParagraph(PARAGRAPH_HEADING1, L"");
  report.Link(kLongLink, L"end");
  report.Link(kLongLink, L"begin");
  report.EndParagraph(PARAGRAPH_HEADING1);
  report.Ancor(L"end");
  report.Text(L"End", PARAGRAPH_HEADING2, L"", 0);
}

struct Attempt {
  REPORT_ERRORS opened = REPORT_OK;
  REPORT_ERRORS closed = REPORT_OK;
  bool failed = false;
  std::wstring reason;
  Lines log;
  std::string bytes;
};

struct PdfReportWithoutMemory : testing::TestWithParam<std::tuple<Extent, int>> {
  Attempt attempt(std::size_t nth) {
    UnfailingLog::lines().clear();
    report.SetReportOption(OPTION_CONFORMING, conforming);
    Attempt result;
    {
      const FailingAllocations memory(nth, extent);
      result.opened = report.Open(path.c_str());
      play(report);
      result.closed = report.Close();
      result.failed = memory.hasFailed();
    }
    result.reason = report.GetError();
    result.log = UnfailingLog::lines();
    result.bytes = exists(path) ? bytesOf(path) : "";
    return result;
  }

  // A classic report of two pages logs one line, which is shorter when memory runs out.
  void expectGood(const Attempt& made) const {
    EXPECT_EQ(made.opened, REPORT_OK);
    EXPECT_EQ(made.closed, REPORT_OK);
    EXPECT_EQ(made.log.size(), conforming ? 0u : 1u);
    for (const std::wstring& line : made.log) {
      EXPECT_NE(line.find(L"OPTION_CONFORMING"), line.npos) << line;
    }
    EXPECT_TRUE(areSameBytes(good, made.bytes));
  }

  void expectFailure(const Attempt& made) const {
    EXPECT_TRUE(made.failed);
    EXPECT_NE(made.reason.find(L"There is not enough memory"), made.reason.npos) << made.reason;
    if (made.opened == REPORT_OK) {
      EXPECT_EQ(made.closed, REPORT_FILE_ERROR);
      EXPECT_EQ(made.log, Lines{made.reason});
      EXPECT_LT(made.bytes.size(), good.size());
      EXPECT_TRUE(areSameBytes(good.substr(0, made.bytes.size()), made.bytes));
    } else {
      EXPECT_EQ(made.opened, REPORT_FILE_ERROR);
      EXPECT_EQ(made.closed, REPORT_OK);
      EXPECT_EQ(made.log, Lines());
    }
  }

  const Extent extent = std::get<0>(GetParam());
  const int conforming = std::get<1>(GetParam());
  const FixedClock clock{0};
  const UnfailingLog log;
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.pdf";
  PDFReport report;
  const std::string good = attempt(0).bytes;
};

std::string nameOf(const testing::TestParamInfo<PdfReportWithoutMemory::ParamType>& test) {
  const auto& [extent, conforming] = test.param;
  return std::string(extent == Extent::One ? "OneFails" : "AllFail") + (conforming ? "Conforming" : "Classic");
}

}  // namespace

TEST_P(PdfReportWithoutMemory, IsCompleteOrReportsWhyNot) {
  EXPECT_EQ(PdfStructure(good, conforming != 0).problems(), std::vector<std::string>());
  EXPECT_EQ(PdfStructure(good, conforming != 0).pageCount(), 2u);
  runOutOfMemory([this](std::size_t nth) {
    SCOPED_TRACE(nth);
    const Attempt made = attempt(nth);
    if (made.opened == REPORT_OK && made.closed == REPORT_OK) {
      expectGood(made);
    } else {
      expectFailure(made);
    }
    expectGood(attempt(0));
    return made.failed && !HasFailure();
  });
}

TEST(PdfReportOpenWithoutMemory, MayLeaveTheFailureForCloseToReport) {
  const UnfailingLog log;
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.pdf";
  PDFReport report;
  bool failed = true;
  int emptyFiles = 0;
  for (std::size_t nth = 1; failed && !testing::Test::HasFailure(); ++nth) {
    SCOPED_TRACE(nth);
    REPORT_ERRORS opened = REPORT_OK;
    {
      const FailingAllocations memory(nth, Extent::One);
      opened = report.Open(path.c_str());
      failed = memory.hasFailed();
    }
    report.Text(L"a", PARAGRAPH_NORMAL, L"", 0);
    EXPECT_EQ(report.Close(), failed && opened == REPORT_OK ? REPORT_FILE_ERROR : REPORT_OK);
    if (failed && opened == REPORT_OK && bytesOf(path).empty()) {
      EXPECT_EQ(report.GetError(), L"File write error for '" + path + L"'. There is not enough memory");
      ++emptyFiles;
    }
  }
  EXPECT_GT(emptyFiles, 0);
}

INSTANTIATE_TEST_SUITE_P(Pdf, PdfReportWithoutMemory,
                         testing::Combine(testing::Values(Extent::One, Extent::AllFromThere), testing::Values(0, 1)),
                         nameOf);

TEST(PdfReportLossWithoutMemory, IsAlwaysLoggedAndIsNoFailure) {
  const UnfailingLog log;
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.pdf";
  PDFReport report;
  ASSERT_EQ(report.Open(path.c_str()), REPORT_OK);
  report.Text(L"\x20AC", PARAGRAPH_NORMAL, L"", 0);
  ASSERT_EQ(report.Close(), REPORT_OK);
  ASSERT_EQ(UnfailingLog::lines().size(), 1u);
  {
    const FailingAllocations memory(1, Extent::AllFromThere);
    scrivalen::logLoss(L"a", scrivalen::LossCounter(2, U'\x20AC'));
  }
  ASSERT_EQ(UnfailingLog::lines().size(), 2u);
  EXPECT_EQ(UnfailingLog::lines().back(), L"A report has characters that could not be written as they were given.");
}
