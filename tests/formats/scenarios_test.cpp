#include "support/documents/scenarios.h"

#include "formats/markup/xml_report.h"
#include "formats/pdf/layout/pdf_report.h"
#include "formats/rtf/rtf_report.h"
#include "formats/text/text_report.h"
#include "formats/xlsx/excel_report.h"
#include "scrivalen/html_report.h"
#include "scrivalen/multi_report.h"
#include "scrivalen/text.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/decimal_comma.h"
#include "support/documents/golden.h"
#include "support/documents/workbook.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>
#include <thread>

using namespace scrivalen::test;
using scrivalen::FromUtf8;

namespace {

// 5 November 2024, 14:07 UTC: the month has the same short name in English and German.
constexpr std::int64_t kNow = 1730815620;

enum Form { CLASSIC, CONFORMING };

void play(const Scenario& scenario, Form form, AReport& report) {
  report.SetReportOption(OPTION_CONFORMING, form);
  report.AddProperty(L"%TITLE%", FromUtf8(scenario.name).c_str());
  EXPECT_EQ(report.Open(), REPORT_OK);
  scenario.play(report);
  EXPECT_EQ(report.Close(), REPORT_OK);
}

template <typename Report>
std::string writtenAlone(const Scenario& scenario, Form form) {
  const TemporaryFolder folder;
  Report report;
  report.SetOutputFileName((folder / L"document").c_str());
  play(scenario, form, report);
  return bytesOf(folder / L"document");
}

struct Format {
  const char* folder;  // with the expected documents
  const char* extension;
  REPORT_FORMAT format;
  std::string (*writtenAlone)(const Scenario& scenario, Form form);
  std::string (*readable)(std::string_view bytes);
};

void PrintTo(const Format& format, std::ostream* out) { *out << format.folder; }

std::string unchanged(std::string_view bytes) { return std::string(bytes); }

std::string asCells(std::string_view bytes) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a.xlsx", bytes);
  return readWorkbook(folder / L"a.xlsx");
}

constexpr Format kFormats[] = {{"text", "txt", FORMAT_TEXT, &writtenAlone<TextReport>, &fromMarkedUtf16},
                               {"html", "html", FORMAT_HTML, &writtenAlone<HtmlReport>, &unchanged},
                               {"xml", "xml", FORMAT_XML, &writtenAlone<XmlReport>, &unchanged},
                               {"rtf", "rtf", FORMAT_RTF, &writtenAlone<RTFReport>, &unchanged},
                               {"pdf", "pdf", FORMAT_PDF, &writtenAlone<PDFReport>, &unchanged},
                               {"excel", "txt", FORMAT_EXCEL, &writtenAlone<ExcelReport>, &asCells}};

// A conforming PDF always differs from the classic one, an RTF only when it has characters to escape or links; the
// other formats never differ.
bool differsWhenConforming(const Format& format, const Scenario& scenario) {
  const std::string_view name = scenario.name;
  return format.format == FORMAT_PDF ||
         (format.format == FORMAT_RTF && (name == "anchors_and_links" || name == "characters"));
}

std::string expected(const Format& format, const Scenario& scenario, Form form) {
  const bool another = form == CONFORMING && differsWhenConforming(format, scenario);
  return golden(std::string(format.folder) + '/' + scenario.name + (another ? "_conforming." : ".") + format.extension);
}

// The documents that one MultiReport writes, in the order of kFormats.
std::vector<std::string> writtenTogether(const Scenario& scenario, Form form) {
  const TemporaryFolder folder;
  MultiReport report;
  for (const Format& format : kFormats) {
    report.AddReport(format.format, (folder / FromUtf8(format.folder)).c_str(), nullptr);
  }
  play(scenario, form, report);
  report.Clear();
  std::vector<std::string> documents;
  for (const Format& format : kFormats) {
    documents.push_back(bytesOf(folder / FromUtf8(format.folder)));
  }
  return documents;
}

struct EveryScenario : testing::TestWithParam<std::tuple<Scenario, Form>> {
  const FixedClock clock{kNow};
};

struct EveryDocument : testing::TestWithParam<std::tuple<Format, Scenario, Form>> {
  const FixedClock clock{kNow};
};

std::string nameOf(const Scenario& scenario, Form form) {
  return scenario.name + std::string(form == CONFORMING ? "_conforming" : "");
}

std::string nameOfScenario(const testing::TestParamInfo<EveryScenario::ParamType>& test) {
  const auto& [scenario, form] = test.param;
  return nameOf(scenario, form);
}

std::string nameOfDocument(const testing::TestParamInfo<EveryDocument::ParamType>& test) {
  const auto& [format, scenario, form] = test.param;
  return std::string(format.folder) + '_' + nameOf(scenario, form);
}

}  // namespace

TEST_P(EveryDocument, MatchesTheExpectedOne) {
  const auto& [format, scenario, form] = GetParam();
  EXPECT_TRUE(areSameBytes(expected(format, scenario, form), format.readable(format.writtenAlone(scenario, form))));
}

TEST_P(EveryDocument, IsTheSameEveryTime) {
  const auto& [format, scenario, form] = GetParam();
  EXPECT_TRUE(areSameBytes(format.writtenAlone(scenario, form), format.writtenAlone(scenario, form)));
}

TEST_P(EveryDocument, IsTheSameUnderADecimalComma) {
  const auto& [format, scenario, form] = GetParam();
  const std::string before = format.writtenAlone(scenario, form);
  const DecimalComma comma;
  EXPECT_TRUE(areSameBytes(before, format.writtenAlone(scenario, form)));
}

TEST_P(EveryScenario, WritesTheSameFilesAloneAndTogether) {
  const auto& [scenario, form] = GetParam();
  const std::vector<std::string> together = writtenTogether(scenario, form);
  for (std::size_t i = 0; i < std::size(kFormats); ++i) {
    EXPECT_TRUE(areSameBytes(kFormats[i].writtenAlone(scenario, form), together[i])) << kFormats[i].folder;
  }
}

TEST_P(EveryScenario, WritesTheSameFilesInSeveralThreads) {
  constexpr std::size_t kThreads = 4;
  const Scenario& scenario = std::get<Scenario>(GetParam());
  const Form form = std::get<Form>(GetParam());
  const std::vector<std::string> inOneThread = writtenTogether(scenario, form);
  std::array<std::vector<std::string>, kThreads> written;
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (std::vector<std::string>& documents : written) {
    threads.emplace_back([&] { documents = writtenTogether(scenario, form); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (const std::vector<std::string>& documents : written) {
    EXPECT_EQ(documents, inOneThread);
  }
}

INSTANTIATE_TEST_SUITE_P(Scenarios, EveryDocument,
                         testing::Combine(testing::ValuesIn(kFormats), testing::ValuesIn(scenarios()),
                                          testing::Values(CLASSIC, CONFORMING)),
                         nameOfDocument);
INSTANTIATE_TEST_SUITE_P(Scenarios, EveryScenario,
                         testing::Combine(testing::ValuesIn(scenarios()), testing::Values(CLASSIC, CONFORMING)),
                         nameOfScenario);
