#include "formats/markup/xml_report.h"
#include "formats/pdf/layout/pdf_report.h"
#include "formats/rtf/rtf_report.h"
#include "formats/text/text_report.h"
#include "formats/xlsx/excel_report.h"
#include "output/file_error.h"
#include "scrivalen/html_report.h"
#include "scrivalen/multi_report.h"
#include "scrivalen/pdf_doc.h"
#include "scrivalen/text.h"
#include "support/bytes.h"
#include "support/faults/out_of_memory.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

using namespace scrivalen::test;
using namespace scrivalen;

namespace {

constexpr const wchar_t* kNoMemory = L"There is not enough memory";
constexpr const wchar_t* kLong = L"a text that is longer than what a string holds in itself";

template <typename Action>
void withoutMemory(Action action) {
  const FailingAllocations memory(1, Extent::AllFromThere);
  action();
}

// A report of any class. The pointer destroys it as that class, which AReport without a virtual destructor cannot.
using AnyReport = std::shared_ptr<AReport>;

template <typename Report>
AnyReport make() {
  return std::make_shared<Report>();
}

struct Setting {
  const char* name;
  void (*set)(AReport& report);
};

constexpr Setting kSettings[] = {
    {"AddProperty", [](AReport& report) { report.AddProperty(kLong, kLong); }},
    {"SetStyles", [](AReport& report) { report.SetStyles(kLong); }},
    {"SetOutputFileName", [](AReport& report) { report.SetOutputFileName(kLong); }},
    {"SetTemplateFileName", [](AReport& report) { report.SetTemplateFileName(kLong); }},
};

struct Format {
  const char* name;
  AnyReport (*make)();
};

constexpr Format kFormats[] = {{"Rtf", &make<RTFReport>},   {"Html", &make<HtmlReport>}, {"Xml", &make<XmlReport>},
                               {"Text", &make<TextReport>}, {"Pdf", &make<PDFReport>},   {"Excel", &make<ExcelReport>}};

struct LostSetting : testing::TestWithParam<std::tuple<Format, Setting>> {};
struct LostSettingOfAPage : testing::TestWithParam<Setting> {};

std::string nameOf(const testing::TestParamInfo<LostSetting::ParamType>& test) {
  return std::string(std::get<0>(test.param).name) + "_" + std::get<1>(test.param).name;
}

void PrintTo(const Format& format, std::ostream* out) { *out << format.name; }
void PrintTo(const Setting& setting, std::ostream* out) { *out << setting.name; }

struct ReportWithoutMemory : testing::Test {
  const UnfailingLog log;
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.out";
};

}  // namespace

TEST_P(LostSetting, FailsEveryOpenAndCreatesNoFile) {
  const auto& [format, setting] = GetParam();
  const UnfailingLog log;
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.out";
  const AnyReport report = format.make();
  withoutMemory([&] { setting.set(*report); });
  EXPECT_EQ(UnfailingLog::lines().size(), 1u);
  EXPECT_STREQ(report->GetError(), kNoMemory);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(report->Open(path.c_str()), REPORT_FILE_ERROR);
    EXPECT_STREQ(report->GetError(), kNoMemory);
    EXPECT_EQ(report->Close(), REPORT_OK);
    EXPECT_FALSE(exists(path));
  }
}

TEST_P(LostSettingOfAPage, FailsTheOpenOfACopy) {
  const UnfailingLog log;
  const TemporaryFolder folder;
  HtmlReport report;
  withoutMemory([&] { GetParam().set(report); });
  HtmlReport copy(report);
  EXPECT_EQ(copy.Open((folder / L"a.html").c_str()), REPORT_FILE_ERROR);
  copy = HtmlReport();
  EXPECT_EQ(copy.Open((folder / L"a.html").c_str()), REPORT_OK);
  EXPECT_EQ(copy.Close(), REPORT_OK);
}

INSTANTIATE_TEST_SUITE_P(Each, LostSetting, testing::Combine(testing::ValuesIn(kFormats), testing::ValuesIn(kSettings)),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Each, LostSettingOfAPage, testing::ValuesIn(kSettings),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(ReportWithoutMemory, DoesNotOpenATextReportThatLostItsSeparator) {
  TextReport report;
  const std::wstring separator(100, L';');
  withoutMemory([&] { report.SetColumnSeparator(separator); });
  EXPECT_EQ(report.Open(path.c_str()), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), kNoMemory);
}

TEST_F(ReportWithoutMemory, FailsAtCloseWhenTheSeparatorIsLostWhileOpen) {
  TextReport report;
  const std::wstring separator(100, L';');
  ASSERT_EQ(report.Open(path.c_str()), REPORT_OK);
  withoutMemory([&] { report.SetColumnSeparator(separator); });
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), kNoMemory);
}

TEST_F(ReportWithoutMemory, OpensNothingWhenAChildIsMissing) {
  MultiReport report;
  report.AddReport(FORMAT_TEXT, path.c_str(), nullptr);
  withoutMemory([&] { report.AddReport(FORMAT_HTML, path.c_str(), nullptr); });
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), kNoMemory);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_FALSE(exists(path));
  EXPECT_EQ(report.Open(path.c_str()), REPORT_FILE_ERROR);
  EXPECT_FALSE(exists(path));
}

TEST_F(ReportWithoutMemory, RecoversWhenTheChildrenAreCleared) {
  MultiReport report;
  withoutMemory([&] { report.AddReport(FORMAT_HTML, path.c_str(), nullptr); });
  report.Clear();
  report.AddReport(FORMAT_TEXT, path.c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
}

TEST_F(ReportWithoutMemory, ReportsWhyItDoesNotOpenWithoutAllocating) {
  MultiReport report;
  report.AddReport(FORMAT_TEXT, path.c_str(), nullptr);
  withoutMemory([&] {
    report.AddProperty(kLong, kLong);
    EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
    EXPECT_STREQ(report.GetError(), kNoMemory);
  });
  report.Clear();
}

TEST_F(ReportWithoutMemory, ReturnsEmptyTextFromQuotingAndFailsAtClose) {
  const std::wstring text = kLong;
  for (const auto& make : {&make<RTFReport>, &make<HtmlReport>, &make<XmlReport>, &make<TextReport>, &make<PDFReport>,
                           &make<ExcelReport>}) {
    const AnyReport report = make();
    ASSERT_EQ(report->Open(path.c_str()), REPORT_OK);
    withoutMemory([&] { EXPECT_EQ(report->Quoting(text), L""); });
    EXPECT_EQ(report->Close(), REPORT_FILE_ERROR);
    EXPECT_NE(std::wstring(report->GetError()).find(kNoMemory), std::wstring::npos) << report->GetError();
    EXPECT_EQ(report->Open(path.c_str()), REPORT_OK);
    EXPECT_EQ(report->Close(), REPORT_OK);
  }
}

TEST_F(ReportWithoutMemory, OmitsARowWhoseValueItCannotQuote) {
  HtmlReport report;
  ASSERT_EQ(report.Open(path.c_str()), REPORT_OK);
  withoutMemory([&] { report.Row2NotEmptyWithQuote(L"name", kLong); });
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), kNoMemory);
  EXPECT_EQ(bytesOf(path), "</body></html>\n");
}

TEST_F(ReportWithoutMemory, FailsAtCloseWhenACompositeRowIsIncomplete) {
  MultiReport report;
  report.AddReport(FORMAT_TEXT, path.c_str(), nullptr);
  for (const auto write : {+[](AReport& to) { to.ProductRow(L"product"); },
                           +[](AReport& to) { to.Row2NotEmptyWithQuote(L"name", kLong); }}) {
    ASSERT_EQ(report.Open(), REPORT_OK);
    withoutMemory([&] { write(report); });
    EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
    EXPECT_STREQ(report.GetError(), kNoMemory);
  }
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
}

TEST_F(ReportWithoutMemory, DeliversNoWorkbookThatLacksARow) {
  ExcelReport report;
  writeBytes(path, "earlier");
  ASSERT_EQ(report.Open(path.c_str()), REPORT_OK);
  withoutMemory([&] { report.ProductRow(L"product"); });
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(bytesOf(path), "earlier");
}

TEST_F(ReportWithoutMemory, FailsAtCloseWhenAValueOfAPageIsLost) {
  struct OpenedUp : HtmlReport {
    using HtmlReport::ValueToHtml;
  } report;
  ASSERT_EQ(report.Open(path.c_str()), REPORT_OK);
  withoutMemory([&] { report.ValueToHtml(L"%s", kLong); });
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  EXPECT_STREQ(report.GetError(), kNoMemory);
}

// A copy equals its source or does not open.
TEST_F(ReportWithoutMemory, CopiesAPageCompletelyOrRefusesToOpenTheCopy) {
  HtmlReport source;
  source.AddProperty(L"%TITLE%", kLong);
  source.SetOutputFileName(path.c_str());
  source.SetStyles(kLong);
  int failures = 0;
  for (const Extent extent : {Extent::One, Extent::AllFromThere}) {
    bool hasFailed = true;
    for (std::size_t nth = 1; hasFailed; ++nth) {
      SCOPED_TRACE(nth);
      std::optional<HtmlReport> copy;
      HtmlReport assigned;
      {
        const FailingAllocations memory(nth, extent);
        copy.emplace(source);
        assigned = source;
        hasFailed = memory.hasFailed();
      }
      for (HtmlReport* report : {&*copy, &assigned}) {
        if (report->Open() == REPORT_OK) {
          EXPECT_EQ(report->Close(), REPORT_OK);
          EXPECT_STREQ(report->GetProperty(L"%TITLE%"), kLong);
          EXPECT_NE(bytesOf(path).find(scrivalen::ToUtf8(kLong)), std::string::npos);
        } else {
          EXPECT_TRUE(hasFailed);
          EXPECT_STREQ(report->GetError(), kNoMemory);
          report->BeginParagraph(PARAGRAPH_HEADING1, L"");
          report->Cell(kLong, 1, kLong);
          EXPECT_EQ(report->Quoting(L"<"), L"&lt;");
          EXPECT_EQ(report->Close(), REPORT_OK);
          ++failures;
        }
      }
    }
  }
  EXPECT_GT(failures, 10);
}

TEST_F(ReportWithoutMemory, CopiesAllChildrenOrOpensNone) {
  MultiReport source;
  source.AddReport(FORMAT_TEXT, path.c_str(), nullptr);
  int failures = 0;
  for (const Extent extent : {Extent::One, Extent::AllFromThere}) {
    bool hasFailed = true;
    for (std::size_t nth = 1; hasFailed; ++nth) {
      SCOPED_TRACE(nth);
      std::optional<MultiReport> copy;
      MultiReport assigned;
      {
        const FailingAllocations memory(nth, extent);
        copy.emplace(source);
        assigned = source;
        hasFailed = memory.hasFailed();
      }
      for (MultiReport* report : {&*copy, &assigned}) {
        const REPORT_ERRORS opened = report->Open();
        report->Text(L"a", PARAGRAPH_NONE, L"", 0);
        EXPECT_EQ(report->Close(), REPORT_OK);
        if (opened == REPORT_OK) {
          EXPECT_EQ(bytesOf(path), std::string("\xFF\xFE"
                                               "a\0",
                                               4));
        } else {
          EXPECT_TRUE(hasFailed);
          EXPECT_STREQ(report->GetError(), kNoMemory);
          ++failures;
        }
      }
    }
  }
  EXPECT_GT(failures, 3);
  source.Clear();
}

TEST_F(ReportWithoutMemory, RefusesToOpenWhenConstructedWithoutMemory) {
  std::optional<MultiReport> multi;
  std::optional<HtmlReport> page;
  withoutMemory([&] {
    multi.emplace();
    page.emplace();
  });
  multi->AddReport(FORMAT_TEXT, path.c_str(), nullptr);
  multi->Text(kLong, PARAGRAPH_NORMAL, L"", 0);
  multi->Clear();
  page->SetReportOption(OPTION_CONFORMING, 1);
  page->Text(kLong, PARAGRAPH_NORMAL, L"", 0);
  for (AReport* report : {static_cast<AReport*>(&*multi), static_cast<AReport*>(&*page)}) {
    EXPECT_EQ(report->Open(path.c_str()), REPORT_FILE_ERROR);
    EXPECT_STREQ(report->GetError(), kNoMemory);
    EXPECT_EQ(report->Close(), REPORT_OK);
  }
}

TEST_F(ReportWithoutMemory, BeginsNoPdfDocumentThatIsMadeSo) {
  ReportFile file;
  ASSERT_TRUE(file.Open(path.c_str()));
  std::optional<CPDFdoc> document;
  withoutMemory([&] { document.emplace(); });
  document->SetConforming(1);
  document->FontNo(1);
  document->FontSize(10);
  document->BoldOn();
  document->ColorOff();
  EXPECT_EQ(document->BegDoc(file.Handle(), 0), -3);
  EXPECT_STREQ(document->WriteError(), kNoMemory);
  document->Paragraf(0);
  document->write(kLong);
  EXPECT_EQ(document->GetNextID(), 0u);
  EXPECT_EQ(document->GetCurrentPage(), nullptr);
  EXPECT_EQ(document->GetFontIdx(3, true, false), 3);
  EXPECT_EQ(document->EndDoc(nullptr), 0);
  EXPECT_EQ(document->LostCharacters(), 0u);
}

TEST_F(ReportWithoutMemory, OpensAFileOrReportsWhyNot) {
  for (const Extent extent : {Extent::One, Extent::AllFromThere}) {
    bool hasFailed = true;
    for (std::size_t nth = 1; hasFailed; ++nth) {
      SCOPED_TRACE(nth);
      bool isOpen = false;
      std::optional<ReportFile> file;
      {
        const FailingAllocations memory(nth, extent);
        file.emplace();
        isOpen = file->Open(path.c_str());
        file->Write("a", 1);
        hasFailed = memory.hasFailed();
      }
      EXPECT_EQ(isOpen, file->IsOpen());
      EXPECT_STREQ(file->Error(), isOpen ? L"" : kNoMemory);
      EXPECT_EQ(file->Handle() != nullptr, isOpen);
      EXPECT_EQ(file->Position(), isOpen ? 1u : 0u);
      EXPECT_TRUE(file->Flush());
      EXPECT_TRUE(file->Close());
      EXPECT_STREQ(file->WriteError(), L"");
      EXPECT_TRUE(isOpen || hasFailed);
    }
  }
}

TEST_F(ReportWithoutMemory, ConvertsTextToAnEmptyText) {
  withoutMemory([] {
    EXPECT_EQ(scrivalen::FromUtf8("a text that is longer than what a string holds"), L"");
    EXPECT_EQ(scrivalen::ToUtf8(kLong), "");
  });
  EXPECT_EQ(UnfailingLog::lines().size(), 2u);
}

TEST_F(ReportWithoutMemory, LogsOnlyTheReasonOfAFileError) {
  const std::wstring file(100, L'f');
  withoutMemory([&] { logFileError(FileError::Write, file, L"Disk full"); });
  EXPECT_EQ(UnfailingLog::lines(), std::vector<std::wstring>{L"Disk full"});
}
