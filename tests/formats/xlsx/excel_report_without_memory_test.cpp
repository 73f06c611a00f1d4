#include "formats/xlsx/excel_report.h"

#include "support/documents/workbook.h"
#include "support/faults/out_of_memory.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <tuple>
#include <vector>

using namespace scrivalen::test;

namespace {

using Names = std::vector<std::wstring>;

constexpr const char* kCells =
    "A1 \"a heading\" bold color=000080 Arial\n"
    "A2 \"a cell\" 9 Arial fill=FF0000\nB2 \"a cell that is longer than the others\" 9 Arial\n"
    "A3 \"_x0041_ and \xE4\xB8\xAD\xE6\x96\x87\" 9 color=FFFFFF Arial fill=00008B\n";

void play(AReport& report) {
  report.Cell(L"lost", 0, nullptr);
  report.Text(L"a heading", PARAGRAPH_HEADING1, L"", 0);
  report.BeginRow(L"row", nullptr, 2);
  report.SetCellColor(L"#FF0000");
  report.Cell(L"a cell", 0, nullptr);
  report.Cell(L"a cell that is longer than the others", 0, nullptr);
  report.EndRow(L"row");
  report.SetCellColor(L"white;darkblue");
  report.Text(L"_x0041_ and \u4E2D\u6587", PARAGRAPH_NONE, L"", 0);
}

struct Attempt {
  REPORT_ERRORS opened = REPORT_OK;
  REPORT_ERRORS closed = REPORT_OK;
  bool failed = false;
  std::wstring reason;
  std::size_t logLines = 0;
};

struct ExcelReportWithoutMemory : testing::TestWithParam<std::tuple<Extent, bool>> {
  void SetUp() override {
    report.SetStyles(L"sheet { font-family: Arial; freeze-rows: 1 } cell { font-size: 9 } bold { color: navy }");
  }

  Attempt attempt(std::size_t nth) {
    scrivalen::deleteFile(path);
    if (hasEarlier) {
      writeBytes(path, "earlier");
    }
    UnfailingLog::lines().clear();
    Attempt result;
    {
      const FailingAllocations memory(nth, extent);
      result.opened = report.Open(path.c_str());
      if (result.opened == REPORT_OK) {
        play(report);
      }
      result.closed = report.Close();
      result.failed = memory.hasFailed();
    }
    result.reason = report.GetError();
    result.logLines = UnfailingLog::lines().size();
    return result;
  }

  Names filesLeft() const { return scrivalen::filesEndingWith(folder.path(), L""); }

  // The one line in the log is about the dropped cell.
  void expectGood(const Attempt& made) const {
    EXPECT_EQ(made.opened, REPORT_OK);
    EXPECT_EQ(made.closed, REPORT_OK);
    EXPECT_EQ(made.logLines, 1u);
    EXPECT_EQ(filesLeft(), Names{L"a.xlsx"});
    EXPECT_EQ(readCells(path), kCells);
  }

  void expectFailure(const Attempt& made) const {
    EXPECT_TRUE(made.failed);
    EXPECT_NE(made.reason.find(L"emory"), made.reason.npos) << made.reason;
    EXPECT_EQ(made.closed, made.opened == REPORT_OK ? REPORT_FILE_ERROR : REPORT_OK);
    EXPECT_EQ(made.logLines, made.opened == REPORT_OK ? 2u : 0u);
    EXPECT_EQ(filesLeft(), hasEarlier ? Names{L"a.xlsx"} : Names());
    if (hasEarlier) {
      EXPECT_EQ(bytesOf(path), "earlier");
    }
  }

  const Extent extent = std::get<0>(GetParam());
  const bool hasEarlier = std::get<1>(GetParam());
  const UnfailingLog log;
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.xlsx";
  ExcelReport report;
};

std::string nameOf(const testing::TestParamInfo<ExcelReportWithoutMemory::ParamType>& test) {
  const auto& [extent, hasEarlier] = test.param;
  return std::string(extent == Extent::One ? "OneFails" : "AllFail") + (hasEarlier ? "OverAFile" : "InANewFile");
}

}  // namespace

TEST_P(ExcelReportWithoutMemory, IsCompleteOrReportsWhyNot) {
  expectGood(attempt(0));
  std::size_t nth = 1;
  for (bool hasFailed = true; hasFailed && !HasFailure(); ++nth) {
    SCOPED_TRACE(nth);
    const Attempt made = attempt(nth);
    if (made.opened == REPORT_OK && made.closed == REPORT_OK) {
      expectGood(made);
    } else {
      expectFailure(made);
    }
    hasFailed = made.failed;
  }
  EXPECT_GT(nth, 50u);
  expectGood(attempt(0));
}

INSTANTIATE_TEST_SUITE_P(Excel, ExcelReportWithoutMemory,
                         testing::Combine(testing::Values(Extent::One, Extent::AllFromThere),
                                          testing::Values(false, true)),
                         nameOf);

TEST(ExcelReportColourWithoutMemory, IsLoggedWhenNoFileIsOpen) {
  const UnfailingLog log;
  ExcelReport report;
  {
    const FailingAllocations memory(1, Extent::AllFromThere);
    report.SetCellColor(L"lightgoldenrodyellow");
  }
  EXPECT_EQ(UnfailingLog::lines(), Names{L"A report operation failed: there is not enough memory."});
}
