#include "support/scenarios.h"

#include "formats/text_report.h"
#include "formats/xml_report.h"
#include "scrivalen/html_report.h"
#include "scrivalen/multi_report.h"
#include "scrivalen/text.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/decimal_comma.h"
#include "support/files.h"
#include "support/golden.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>

using namespace scrivalen::test;
using scrivalen::FromUtf8;

namespace {

// The fifth of November 2024, 14:07 UTC: a month whose short name English and German share.
constexpr std::int64_t kNow = 1730815620;

void play(const Scenario& scenario, AReport& report) {
  report.AddProperty(L"%TITLE%", FromUtf8(scenario.name).c_str());
  EXPECT_EQ(report.Open(), REPORT_OK);
  scenario.play(report);
  EXPECT_EQ(report.Close(), REPORT_OK);
}

template <typename Report>
std::string writtenAlone(const Scenario& scenario) {
  const TemporaryFolder folder;
  Report report;
  report.SetOutputFileName((folder / L"document").c_str());
  play(scenario, report);
  return bytesOf(folder / L"document");
}

struct Format {
  const char* folder;  // of the expected documents
  const char* extension;
  REPORT_FORMAT format;
  std::string (*writtenAlone)(const Scenario& scenario);
  std::string (*readable)(std::string_view bytes);
};

void PrintTo(const Format& format, std::ostream* out) { *out << format.folder; }

std::string asItStands(std::string_view bytes) { return std::string(bytes); }

constexpr Format kFormats[] = {{"text", "txt", FORMAT_TEXT, &writtenAlone<TextReport>, &fromMarkedUtf16},
                               {"html", "html", FORMAT_HTML, &writtenAlone<HtmlReport>, &asItStands},
                               {"xml", "xml", FORMAT_XML, &writtenAlone<XmlReport>, &asItStands}};

// One document for each format of one MultiReport, in the order of kFormats.
std::vector<std::string> writtenTogether(const Scenario& scenario) {
  const TemporaryFolder folder;
  MultiReport report;
  for (const Format& format : kFormats) {
    report.AddReport(format.format, (folder / FromUtf8(format.extension)).c_str(), nullptr);
  }
  play(scenario, report);
  report.Clear();
  std::vector<std::string> documents;
  for (const Format& format : kFormats) {
    documents.push_back(bytesOf(folder / FromUtf8(format.extension)));
  }
  return documents;
}

struct EveryScenario : testing::TestWithParam<Scenario> {
  const FixedClock clock{kNow};
};

struct EveryDocument : testing::TestWithParam<std::tuple<Format, Scenario>> {
  const FixedClock clock{kNow};
};

std::string nameOfScenario(const testing::TestParamInfo<Scenario>& test) { return test.param.name; }

std::string nameOfDocument(const testing::TestParamInfo<std::tuple<Format, Scenario>>& test) {
  const auto& [format, scenario] = test.param;
  return std::string(format.folder) + '_' + scenario.name;
}

}  // namespace

TEST_P(EveryDocument, IsTheExpectedOne) {
  const auto& [format, scenario] = GetParam();
  const std::string path = format.folder + ('/' + std::string(scenario.name)) + '.' + format.extension;
  EXPECT_TRUE(areSameBytes(golden(path), format.readable(format.writtenAlone(scenario))));
}

TEST_P(EveryDocument, IsTheSameEveryTime) {
  const auto& [format, scenario] = GetParam();
  EXPECT_TRUE(areSameBytes(format.writtenAlone(scenario), format.writtenAlone(scenario)));
}

TEST_P(EveryDocument, IsTheSameUnderADecimalComma) {
  const auto& [format, scenario] = GetParam();
  const std::string expected = format.writtenAlone(scenario);
  const DecimalComma comma;
  EXPECT_TRUE(areSameBytes(expected, format.writtenAlone(scenario)));
}

TEST_P(EveryScenario, GivesEqualFilesAloneAndTogether) {
  const std::vector<std::string> together = writtenTogether(GetParam());
  for (std::size_t i = 0; i < std::size(kFormats); ++i) {
    EXPECT_TRUE(areSameBytes(kFormats[i].writtenAlone(GetParam()), together[i])) << kFormats[i].extension;
  }
}

TEST_P(EveryScenario, GivesEqualFilesInSeveralThreads) {
  constexpr std::size_t kThreads = 4;
  const std::vector<std::string> expected = writtenTogether(GetParam());
  std::array<std::vector<std::string>, kThreads> written;
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (std::vector<std::string>& documents : written) {
    threads.emplace_back([&documents] { documents = writtenTogether(GetParam()); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (const std::vector<std::string>& documents : written) {
    EXPECT_EQ(documents, expected);
  }
}

INSTANTIATE_TEST_SUITE_P(Scenarios, EveryDocument,
                         testing::Combine(testing::ValuesIn(kFormats), testing::ValuesIn(scenarios())), nameOfDocument);
INSTANTIATE_TEST_SUITE_P(Scenarios, EveryScenario, testing::ValuesIn(scenarios()), nameOfScenario);
