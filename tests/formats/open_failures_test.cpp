#include "support/captured_log.h"
#include "support/documents/file_reports.h"
#include "support/faults/open_errors.h"
#include "support/files.h"

#include "system/files/files.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

namespace {

template <typename Report>
struct OpenFailure : testing::Test {
  // Opens the path as the output name and as an argument. Both calls fail with the reason, and later calls are
  // harmless.
  static void expectRefused(const std::wstring& path) {
    const CapturedLog log;
    Report report;
    report.SetOutputFileName(path.c_str());
    EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
    EXPECT_EQ(report.GetError(), openingError(path));
    Report another;
    EXPECT_EQ(another.Open(path.c_str()), REPORT_FILE_ERROR);
    EXPECT_EQ(another.GetError(), openingError(path));
    another.Row2(L"a", L"b", 0, nullptr, nullptr);
    EXPECT_EQ(another.Close(), REPORT_OK);
    EXPECT_TRUE(log.lines().empty());
  }
};

TYPED_TEST_SUITE(OpenFailure, FileReports, FileReportName);

}  // namespace

TYPED_TEST(OpenFailure, OfAPathInAMissingFolder) {
  const TemporaryFolder folder;
  this->expectRefused(folder / L"missing/a");
  EXPECT_FALSE(exists(folder / L"missing"));
}

TYPED_TEST(OpenFailure, OfAFolder) {
  const TemporaryFolder folder;
  this->expectRefused(folder.path());
}

TYPED_TEST(OpenFailure, OfAPathUnderAFile) {
  const TemporaryFolder folder;
  writeBytes(folder / L"file", "kept");
  this->expectRefused(folder / L"file/a");
  EXPECT_EQ(bytesOf(folder / L"file"), "kept");
}

TYPED_TEST(OpenFailure, OfAnEmptyPath) { this->expectRefused(L""); }

TYPED_TEST(OpenFailure, OfAFileHeldByAnotherReport) {
  const TemporaryFolder folder;
  TextReport holder;
  holder.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  EXPECT_EQ(holder.Open((folder / L"a").c_str()), REPORT_OK);
  holder.Text(L"kept", PARAGRAPH_NONE, L"", 0);
  this->expectRefused(folder / L"a");
  holder.Text(L" whole", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(holder.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a"), "kept whole");
}

TYPED_TEST(OpenFailure, OfAFileThatIsBeingRead) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a", "kept");
  scrivalen::File reader = scrivalen::openForReading(folder / L"a");
  ASSERT_NE(reader, nullptr);
  this->expectRefused(folder / L"a");
  EXPECT_TRUE(reader.close());
  EXPECT_EQ(bytesOf(folder / L"a"), "kept");
}

TYPED_TEST(OpenFailure, DoesNotHappenForAPathWithAnyLetters) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"r\u00E9sum\u00E9 \u4E2D\u6587 & 'x' 100%s.out";
  TypeParam report;
  EXPECT_EQ(report.Open(path.c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(exists(path));
}
