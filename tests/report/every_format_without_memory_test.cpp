#include "scrivalen/html_report.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/documents/child_formats.h"
#include "support/documents/workbook.h"
#include "support/faults/out_of_memory.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

using namespace scrivalen::test;

namespace {

constexpr const wchar_t* kTitle = L"a title that is longer than what a string holds in itself";
constexpr const wchar_t* kText = L"a text, <quoted> & of more than a few letters, \u4E2D";

// The outcome of a whole report. The reason is that of the first operation that fails.
struct Attempt {
  void note(REPORT_ERRORS result, const AReport& report) {
    if (isGood && result != REPORT_OK) {
      const UnfailingAllocations ownMemory;
      reason = report.GetError();
      isGood = false;
    }
  }

  bool isGood = true;
  bool hasFailed = false;
  std::wstring reason;
  std::string bytes;
};

void play(AReport& report) {
  report.Text(kText, PARAGRAPH_HEADING1, L"", 0);
  report.BeginTable(L"table", nullptr);
  report.AttributeRowHeader();
  report.Row2NotEmptyWithQuote(L"name", kText);
  report.ProductRow(L"product");
  report.ReportCreated();
  report.EndTable(L"table");
  report.Link(kText, L"#anchor");
}

struct EveryFormatWithoutMemory : testing::TestWithParam<std::tuple<ChildFormat, Extent>> {
  Attempt attempt(std::size_t nth) const {
    Attempt result;
    {
      const FailingAllocations memory(nth, extent);
      MultiReport report;
      report.AddReport(format.format(), path.c_str(), nullptr);
      report.SetReportOption(OPTION_CONFORMING, 1);
      report.AddProperty(L"%TITLE%", kTitle);
      report.AddProperty(L"%A NAME THAT A STRING DOES NOT HOLD IN ITSELF%", kText);
      report.SetStyles(L"sheet { font-family: Arial } cell { font-size: 9 }");
      report.SetColumnSeparator(separator);
      result.note(report.Open(), report);
      result.note(report.BeginSubDocument(files.topicFolder().c_str(), L"topic.htm", kTitle), report);
      play(report);
      report.EndSubDocument();
      result.note(report.Close(), report);
      report.Clear();
      result.hasFailed = memory.hasFailed();
    }
    result.bytes = result.isGood ? (format.format() == FORMAT_EXCEL ? readCells(path) : bytesOf(path)) : "";
    return result;
  }

  const ChildFormat format = std::get<0>(GetParam());
  const Extent extent = std::get<1>(GetParam());
  const UnfailingLog log;
  const FixedClock clock{0};
  const ChildFiles files;
  const std::wstring path = files.path(format);
  const std::wstring separator = std::wstring(20, L'|');
};

constexpr ChildFormat kDocuments[] = {{FORMAT_DOCUMENT_TEXT, "document_text", &bytesOf, ""}};

std::string name(const testing::TestParamInfo<EveryFormatWithoutMemory::ParamType>& test) {
  const auto& [format, extent] = test.param;
  return std::string(format.name) + (extent == Extent::One ? "_OneFails" : "_AllFail");
}

}  // namespace

TEST_P(EveryFormatWithoutMemory, IsCompleteOrReportsTheFailure) {
  const Attempt good = attempt(0);
  ASSERT_TRUE(good.isGood);
  std::size_t nth = 1;
  for (bool hasFailed = true; hasFailed && !HasFailure(); ++nth) {
    SCOPED_TRACE(nth);
    const Attempt made = attempt(nth);
    hasFailed = made.hasFailed;
    if (made.isGood) {
      EXPECT_TRUE(areSameBytes(good.bytes, made.bytes));
    } else {
      EXPECT_TRUE(made.hasFailed);
      EXPECT_NE(made.reason.find(L"emory"), made.reason.npos) << made.reason;
    }
  }
  EXPECT_GT(nth, 20u);
}

INSTANTIATE_TEST_SUITE_P(Each, EveryFormatWithoutMemory,
                         testing::Combine(testing::ValuesIn(childFormats()),
                                          testing::Values(Extent::One, Extent::AllFromThere)),
                         name);
INSTANTIATE_TEST_SUITE_P(EachDocument, EveryFormatWithoutMemory,
                         testing::Combine(testing::ValuesIn(kDocuments),
                                          testing::Values(Extent::One, Extent::AllFromThere)),
                         name);
