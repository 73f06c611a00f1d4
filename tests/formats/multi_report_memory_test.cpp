#include "scrivalen/multi_report.h"
#include "support/documents/child_formats.h"
#include "support/faults/allocation_counter.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

namespace {

struct MultiReportMemory : testing::TestWithParam<ChildFormat> {
  void write(MultiReport& report) const {
    files.add(report, GetParam());
    report.AddProperty(L"%TITLE%", L"a title that is longer than what a string holds in itself");
    report.SetStyles(L"cell { color: red }");
    EXPECT_EQ(report.Open(), REPORT_OK);
    writeOneTwo(report, files);
    EXPECT_EQ(report.Close(), REPORT_OK);
  }

  // The number of allocations that an action leaves alive. It runs twice, because some allocations of the first run
  // live as long as the program.
  template <typename Action>
  static std::size_t leftBy(Action action) {
    action();
    const std::size_t before = livingAllocations();
    action();
    return livingAllocations() - before;
  }

  const ChildFiles files;
};

}  // namespace

TEST_P(MultiReportMemory, OfAClosedChildIsFreedByClear) {
  EXPECT_EQ(leftBy([this] {
              MultiReport report;
              write(report);
              report.Clear();
            }),
            0u);
}

TEST_P(MultiReportMemory, OfAChildThatWasNeverOpenIsFreedByClear) {
  EXPECT_EQ(leftBy([this] {
              MultiReport report;
              files.add(report, GetParam());
              report.Clear();
            }),
            0u);
}

TEST_P(MultiReportMemory, OfASharedChildIsFreedByClearOnOneCopy) {
  EXPECT_EQ(leftBy([this] {
              MultiReport report;
              write(report);
              const MultiReport copy = report;
              MultiReport assigned;
              assigned = copy;
              report.Clear();
            }),
            0u);
}

TEST_P(MultiReportMemory, OfAChildIsNotFreedWithoutClear) {
  EXPECT_GT(leftBy([this] {
              MultiReport report;
              write(report);
            }),
            0u);
}

INSTANTIATE_TEST_SUITE_P(Each, MultiReportMemory, testing::ValuesIn(childFormats()), nameOf);
