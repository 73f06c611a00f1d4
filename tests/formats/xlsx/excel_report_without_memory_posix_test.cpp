#include "formats/xlsx/excel_report.h"

#include "support/faults/out_of_memory.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <string>

using namespace scrivalen::test;

namespace {

std::size_t entriesOf(const std::filesystem::path& folder) {
  const std::filesystem::directory_iterator entries(folder);
  return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

// Redirects temporary files to a folder for as long as it lives.
class TemporaryFilesIn {
 public:
  explicit TemporaryFilesIn(const std::filesystem::path& folder) { ::setenv("TMPDIR", folder.c_str(), 1); }
  TemporaryFilesIn(const TemporaryFilesIn&) = delete;
  TemporaryFilesIn& operator=(const TemporaryFilesIn&) = delete;
  ~TemporaryFilesIn() {
    if (hadOne_) {
      ::setenv("TMPDIR", before_.c_str(), 1);
    } else {
      ::unsetenv("TMPDIR");
    }
  }

 private:
  const bool hadOne_ = std::getenv("TMPDIR") != nullptr;
  const std::string before_ = hadOne_ ? std::getenv("TMPDIR") : "";
};

struct ExcelReportOfADevice : testing::TestWithParam<Extent> {
  bool attempt(std::size_t nth) {
    const FailingAllocations memory(nth, GetParam());
    report.Open(L"/dev/null");
    report.Text(L"a", PARAGRAPH_NONE, L"", 0);
    report.Close();
    return memory.hasFailed();
  }

  const UnfailingLog log;
  const TemporaryFolder folder;
  const TemporaryFilesIn temporaryFiles{asPath(folder.path())};
  ExcelReport report;
};

}  // namespace

TEST_P(ExcelReportOfADevice, LeavesNoFilesOrDescriptorsWhenMemoryRunsOut) {
  EXPECT_FALSE(attempt(0));
  const std::size_t descriptors = entriesOf("/proc/self/fd");
  std::size_t nth = 1;
  for (bool hasFailed = true; hasFailed && !HasFailure(); ++nth) {
    SCOPED_TRACE(nth);
    hasFailed = attempt(nth);
    EXPECT_EQ(entriesOf("/proc/self/fd"), descriptors);
    EXPECT_EQ(entriesOf(asPath(folder.path())), 0u);
  }
  EXPECT_GT(nth, 50u);
}

INSTANTIATE_TEST_SUITE_P(Excel, ExcelReportOfADevice, testing::Values(Extent::One, Extent::AllFromThere),
                         [](const auto& test) { return test.param == Extent::One ? "OneFails" : "AllFail"; });
