#include "formats/document_formats.h"
#include "formats/document_report.h"
#include "formats/help/chm_report.h"
#include "formats/markup/xml_report.h"
#include "formats/pdf/layout/pdf_report.h"
#include "formats/rtf/rtf_report.h"
#include "formats/text/text_report.h"
#include "formats/xlsx/excel_report.h"
#include "scrivalen/host.h"
#include "scrivalen/html_report.h"
#include "scrivalen/multi_report.h"
#include "support/captured_log.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <random>
#include <span>
#include <vector>

using namespace scrivalen::test;

namespace {

constexpr std::int64_t kNow = 1'790'000'000;

// The error box of the help report must not wait for a user.
class NoBoxes {
 public:
  NoBoxes() {
    scrivalen::SetErrorBoxHandler([](const wchar_t*, const wchar_t*) {});
  }
  NoBoxes(const NoBoxes&) = delete;
  NoBoxes& operator=(const NoBoxes&) = delete;
  ~NoBoxes() { scrivalen::SetErrorBoxHandler(nullptr); }
};

constexpr const wchar_t* kTexts[] = {L"",
                                     L"plain",
                                     L"two words",
                                     L"<b>&amp; \"q\" {\\b} (x)",
                                     L"caf\u00E9 \u20AC \u03A9 \u65E5 \U0001F600",
                                     L"line\nbreak\ttab",
                                     L"=1+2",
                                     L"#a",
                                     L"a",
                                     L"red;yellow",
                                     L"yellow",
                                     L"#12AB34",
                                     L"a text that is long enough to be broken into several lines by a narrow column"};

/// A random stream of calls; the same seed makes the same calls on every report.
class RandomStream {
 public:
  /// @param folder  for the topics, ends with a separator
  RandomStream(unsigned seed, std::wstring folder) : random_(seed), folder_(std::move(folder)) {}

  void play(AReport& report, int calls) {
    for (int i = 0; i < calls; ++i) {
      call(report);
    }
  }

 private:
  void call(AReport& report);
  void callText(AReport& report, int which);
  void callTable(AReport& report, int which);
  void changeTopic(AReport& report);

  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  const wchar_t* text() { return kTexts[below(static_cast<int>(std::size(kTexts)))]; }
  PARAGRAPH_TYPE type() { return static_cast<PARAGRAPH_TYPE>(below(8)); }
  REPORT_STYLE style() { return static_cast<REPORT_STYLE>(below(4)); }

  std::mt19937 random_;
  std::wstring folder_;
  int topics_ = 0;
};

void RandomStream::call(AReport& report) {
  const int which = below(30);
  if (which < 16) {
    callText(report, which);
  } else if (which < 29) {
    callTable(report, which - 16);
  } else {
    changeTopic(report);
  }
}

// The arguments are drawn first because a compiler may evaluate them in any order.
void RandomStream::callText(AReport& report, int which) {
  const wchar_t* const first = text();
  const wchar_t* const second = text();
  const PARAGRAPH_TYPE paragraph = type();
  const REPORT_STYLE what = style();
  const int number = below(40);
  switch (which) {
    case 0:
    case 1:
    case 2: return report.Text(first, paragraph, second, number % 2);
    case 3: return report.BeginAncor(first);
    case 4: return report.EndAncor();
    case 5: return report.Ancor(first);
    case 6: return report.EndOfLine();
    case 7: return report.BeginStyle(what, number);
    case 8: return report.EndStyle(what, number);
    case 9: return report.Space();
    case 10: return report.BeginParagraph(paragraph, second);
    case 11: return report.EndParagraph(paragraph);
    case 12: return report.Link(first, second);
    case 13: return report.BeginToc();
    case 14: return report.TocItem(first, second, number % 4);
    default: return report.EndToc();
  }
}

void RandomStream::callTable(AReport& report, int which) {
  const wchar_t* const first = text();
  const wchar_t* const second = text();
  const int number = below(12);
  const int header = below(2);
  switch (which) {
    case 0: return report.BeginTable(first, second);
    case 1: return report.EndTable(first);
    case 2:
    case 3: return report.BeginRow(first, second, number);
    case 4: return report.EndRow(first);
    case 5: return report.BeginCell(first, header, second);
    case 6: return report.EndCell(first, header);
    case 7:
    case 8:
    case 9: return report.Cell(first, header, second);
    case 10: return report.SetCellColor(first);
    case 11: return report.Row2(first, second, header, nullptr, nullptr);
    default: return report.SetReportOption(number < 6 ? OPTION_LANDSCAPE : OPTION_CONFORMING, header);
  }
}

void RandomStream::changeTopic(AReport& report) {
  if (topics_ > 0) {
    report.EndSubDocument();
  }
  const std::wstring file = L"topic" + std::to_wstring(++topics_) + L".htm";
  report.BeginSubDocument(folder_.c_str(), file.c_str(), text());
}

struct Output {
  REPORT_FORMAT format;
  const wchar_t* file;
};

constexpr std::array<Output, 7> kOutputs = {{{FORMAT_TEXT, L"a.txt"},
                                             {FORMAT_HTML, L"a.html"},
                                             {FORMAT_XML, L"a.xml"},
                                             {FORMAT_RTF, L"a.rtf"},
                                             {FORMAT_PDF, L"a.pdf"},
                                             {FORMAT_EXCEL, L"a.xlsx"},
                                             {FORMAT_CHM, L"a.chm"}}};

constexpr std::array<Output, 2> kDocuments = {{{FORMAT_DOCUMENT_TEXT, L"d.txt"}, {FORMAT_DOCUMENT_HTML, L"d.html"}}};

using Files = std::map<std::wstring, std::string>;

constexpr int kCalls = 400;

// The topics of a help report, which its Close deletes.
Files topicsIn(const TemporaryFolder& folder) {
  Files topics;
  for (int i = 1; i <= kCalls && exists(folder / (L"topic" + std::to_wstring(i) + L".htm")); ++i) {
    const std::wstring name = L"topic" + std::to_wstring(i) + L".htm";
    topics[name] = bytesOf(folder / name);
  }
  return topics;
}

template <typename Report>
void prepare(Report& report, unsigned seed) {
  report.AddProperty(L"%TITLE%", L"All");
  report.SetColumnSeparator(L"; ");
  report.SetReportOption(OPTION_CONFORMING, static_cast<int>(seed % 2));
  report.SetStyles(L"bold { color: red }");
}

// Plays the stream into an open report and closes it. A program of others makes the help file, so the report's topics
// are compared instead.
void stream(AReport& report, unsigned seed, const TemporaryFolder& topics, Files& files) {
  const std::wstring folder = topics / L"";
  RandomStream(seed, folder).play(report, kCalls);
  report.EndSubDocument();
  files.merge(topicsIn(topics));
  report.Close();
}

template <typename Report, typename... Arguments>
void writeAlone(const wchar_t* file, unsigned seed, Files& files, const Arguments&... arguments) {
  const TemporaryFolder folder;
  const TemporaryFolder topics;
  Report report(arguments...);
  report.SetOutputFileName((folder / file).c_str());
  prepare(report, seed);
  ASSERT_EQ(report.Open(), REPORT_OK);
  stream(report, seed, topics, files);
  if (exists(folder / file)) {
    files[file] = bytesOf(folder / file);
  }
}

Files writeEachAlone(unsigned seed) {
  Files files;
  writeAlone<TextReport>(L"a.txt", seed, files);
  writeAlone<HtmlReport>(L"a.html", seed, files);
  writeAlone<XmlReport>(L"a.xml", seed, files);
  writeAlone<RTFReport>(L"a.rtf", seed, files);
  writeAlone<PDFReport>(L"a.pdf", seed, files);
  writeAlone<ExcelReport>(L"a.xlsx", seed, files);
  writeAlone<CHMReport>(L"a.chm", seed, files);
  files.erase(L"a.chm");
  return files;
}

Files writeDocumentsAlone(unsigned seed) {
  Files files;
  writeAlone<scrivalen::DocumentReport>(L"d.txt", seed, files, *scrivalen::documentFormatOf("text"));
  writeAlone<scrivalen::DocumentReport>(L"d.html", seed, files, *scrivalen::documentFormatOf("html"));
  return files;
}

Files writeAllAtOnce(unsigned seed, std::span<const Output> documents = {}) {
  const TemporaryFolder folder;
  const TemporaryFolder topics;
  Files files;
  MultiReport report;
  std::vector<Output> outputs(documents.begin(), documents.end());
  outputs.insert(outputs.end(), kOutputs.begin(), kOutputs.end());
  for (const Output& output : outputs) {
    report.AddReport(output.format, (folder / output.file).c_str(), nullptr);
  }
  prepare(report, seed);
  EXPECT_EQ(report.Open(), REPORT_OK);
  stream(report, seed, topics, files);
  report.Clear();
  for (const Output& output : outputs) {
    if (output.format != FORMAT_CHM && exists(folder / output.file)) {
      files[output.file] = bytesOf(folder / output.file);
    }
  }
  return files;
}

class AllFormats : public testing::TestWithParam<unsigned> {};

}  // namespace

TEST_P(AllFormats, WriteTheSameFilesTogetherAsAlone) {
  const FixedClock clock(kNow);
  const CapturedLog log;
  const NoBoxes boxes;
  const Files alone = writeEachAlone(GetParam());
  const Files together = writeAllAtOnce(GetParam());
  for (const Output& output : kOutputs) {
    EXPECT_TRUE(output.format == FORMAT_CHM || alone.contains(output.file)) << GetParam();
  }
  EXPECT_TRUE(alone.contains(L"topic1.htm"));
  ASSERT_EQ(together.size(), alone.size());
  for (const auto& [name, bytes] : alone) {
    EXPECT_TRUE(together.contains(name) && together.at(name) == bytes)
        << std::string(name.begin(), name.end()) << " differs for seed " << GetParam();
  }
}

TEST_P(AllFormats, WriteTheSameFilesBesideDocuments) {
  const FixedClock clock(kNow);
  const CapturedLog log;
  const NoBoxes boxes;
  Files expected = writeAllAtOnce(GetParam());
  expected.merge(writeDocumentsAlone(GetParam()));
  const Files together = writeAllAtOnce(GetParam(), kDocuments);
  ASSERT_EQ(together.size(), expected.size());
  for (const auto& [name, bytes] : expected) {
    EXPECT_TRUE(together.contains(name) && together.at(name) == bytes)
        << std::string(name.begin(), name.end()) << " differs for seed " << GetParam();
  }
  EXPECT_FALSE(together.at(L"d.txt").empty());
}

INSTANTIATE_TEST_SUITE_P(OfManySeeds, AllFormats, testing::Range(1u, 13u));
