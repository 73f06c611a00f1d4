// Eight threads, each with reports of its own in every format, for a sanitizer that finds shared data. The handlers and
// the data folder, which all threads do share, are set again and again meanwhile. All threads write the same content,
// so all files of a format must have the same bytes.
//
//   threads_test FOLDER DATA_FOLDER OTHER_DATA_FOLDER
//
// The data folders hold the same templates and help compiler.
#include <scrivalen/scrivalen.h>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <latch>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 3;

struct Output {
  REPORT_FORMAT format;
  const char* name;
};

constexpr Output kOutputs[] = {
    {FORMAT_TEXT, "report.txt"},
    {FORMAT_HTML, "report.html"},
    {FORMAT_XML, "report.xml"},
    {FORMAT_RTF, "report.rtf"},
    {FORMAT_PDF, "report.pdf"},
    {FORMAT_EXCEL, "report.xlsx"},
    {FORMAT_CHM, "report.chm"},
    {FORMAT_DOCUMENT_TEXT, "document.txt"},
    {FORMAT_DOCUMENT_HTML, "document.html"},
    {FORMAT_DOCUMENT_XML, "document.xml"},
    {FORMAT_DOCUMENT_RTF, "document.rtf"},
    {FORMAT_DOCUMENT_PDF, "document.pdf"},
    {FORMAT_DOCUMENT_EXCEL, "document.xlsx"},
    {FORMAT_DOCUMENT_DOCX, "document.docx"},
    {FORMAT_DOCUMENT_CHM, "document.chm"},
    {FORMAT_DOCUMENT_MARKDOWN, "document.md"},
};

std::atomic<int> failures = 0;
std::atomic<int> logged = 0;

void expect(bool holds, const std::string& what) {
  if (!holds) {
    std::fprintf(stderr, "threads_test: failed: %s\n", what.c_str());
    ++failures;
  }
}

std::wstring wide(const std::filesystem::path& path) { return scrivalen::FromUtf8(path.string()); }

std::string bytesOf(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class Memory : public OutputFile {
 public:
  void Write(const void* data, std::size_t size) override { bytes.append(static_cast<const char*>(data), size); }

  std::string bytes;
};

class PageInMemory : public HtmlReport {
 public:
  using HtmlReport::Open;
  using HtmlReport::ValueToHtml;
};

void countLine(const wchar_t*) { ++logged; }
void countOtherLine(const wchar_t*) { ++logged; }
void showNothing(const wchar_t*, const wchar_t*) {}
std::int64_t aDate() { return 1'790'000'000; }
std::int64_t theSameDate() { return 1'790'000'000; }
bool goOn() { return false; }

void setHandlers(bool others, const std::filesystem::path& dataFolder) {
  scrivalen::SetLogHandler(others ? &countOtherLine : &countLine);
  scrivalen::SetClockHandler(others ? &theSameDate : &aDate);
  scrivalen::SetErrorBoxHandler(others ? &showNothing : nullptr);
  scrivalen::SetStopHandler(others ? &goOn : nullptr);
  scrivalen::SetDataFolder(wide(dataFolder).c_str());
}

void writeTable(AReport& report) {
  report.BeginTable(L"people", nullptr);
  report.AttributeRowHeader();
  report.ReportCreated();
  report.ProductRow(L"Written by");
  for (int row = 0; row < 40; ++row) {
    report.BeginRow(L"person", nullptr, 3);
    report.Cell(L"Name", row == 0, nullptr);
    report.SetCellColor(L"yellow");
    report.Cell(L"Gr\u00FC\u00DFe \u4F60\u597D", 0, nullptr);  // not every format can hold it, which is logged
    report.Cell(L"12.5", 0, nullptr);
    report.EndRow(L"person");
  }
  report.EndTable(L"people");
}

void writeContent(AReport& report, const std::wstring& topics) {
  report.BeginSubDocument(topics.c_str(), L"first.htm", L"First");
  report.BeginToc();
  report.TocItem(L"summary", L"Summary", 0);
  report.EndToc();
  report.BeginParagraph(PARAGRAPH_HEADING1, nullptr);
  report.BeginAncor(L"summary");
  report.Text(L"Summary", PARAGRAPH_NONE, L"", 0);
  report.EndAncor();
  report.EndParagraph(PARAGRAPH_HEADING1);
  report.Text(L"Words that are wrapped where a line of the page ends, and that are not few.", PARAGRAPH_NORMAL, L"", 0);
  report.BeginStyle(STYLE_BOLD, 0);
  report.Link(L"back", L"#summary");
  report.EndStyle(STYLE_BOLD, 0);
  writeTable(report);
  report.EndSubDocument();
}

void addReports(MultiReport& report, const std::filesystem::path& folder) {
  for (const Output& output : kOutputs) {
    report.AddReport(output.format, wide(folder / output.name).c_str(), L"default.htm");
  }
  report.AddProperty(L"%TITLE%", L"Threads");
  report.SetStyles(L"sheet { freeze-rows: 1 } bold { color: #1F3864 } cell { font-size: 11 }");
}

void writeReports(const std::filesystem::path& folder, int conforming) {
  std::filesystem::create_directories(folder);
  MultiReport report;
  addReports(report, folder);
  report.SetReportOption(OPTION_CONFORMING, conforming);
  expect(report.Open() == REPORT_OK, "the reports open");
  writeContent(report, wide(folder / ""));
  const bool closed = report.Close() == REPORT_OK;
  expect(closed, "the reports close without a loss: " + scrivalen::ToUtf8(report.GetError()));
  report.Clear();
}

void abandonReports(const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  MultiReport report;
  addReports(report, folder);
  expect(report.Open() == REPORT_OK, "the abandoned reports open");
  writeContent(report, wide(folder / ""));
}

std::string writtenToMemory(int conforming) {
  Memory page;
  PageInMemory report;
  report.SetReportOption(OPTION_CONFORMING, conforming);
  expect(report.Open(&page) == REPORT_OK, "a page in memory opens");
  report.ValueToHtml(L"%05d", 42);
  writeTable(report);
  expect(report.Close() == REPORT_OK, "a page in memory closes");
  RTFdoc document;
  document.SetConforming(conforming);
  document.BegDoc(&page, L"Threads", 0);
  document.write(L"\u4F60", 0);
  document.EndDoc();
  return page.bytes;
}

struct Written {
  std::filesystem::path folder;
  std::vector<std::string> inMemory;
};

std::filesystem::path roundFolder(const Written& own, int round) { return own.folder / std::to_string(round); }

void work(Written& own, const std::vector<std::filesystem::path>& dataFolders) {
  for (int round = 0; round < kRounds; ++round) {
    setHandlers(round % 2 != 0, dataFolders[static_cast<std::size_t>(round) % dataFolders.size()]);
    writeReports(roundFolder(own, round), round % 2);
    own.inMemory.push_back(writtenToMemory(round % 2));
    std::vector<std::wstring> templates;
    expect(HtmlReport::GetTemplatesList(wide(dataFolders[0] / "tmpl").c_str(), &templates) == 1, "there is a template");
  }
  abandonReports(own.folder / "left");
}

void expectTheSame(const Written& first, const Written& other) {
  expect(first.inMemory == other.inMemory, "two threads write the same to memory");
  for (int round = 0; round < kRounds; ++round) {
    for (const Output& output : kOutputs) {
      const std::string bytes = bytesOf(roundFolder(first, round) / output.name);
      expect(!bytes.empty(), std::string(output.name) + " is written");
      expect(bytes == bytesOf(roundFolder(other, round) / output.name),
             std::string(output.name) + " of two threads is the same");
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "threads_test FOLDER DATA_FOLDER OTHER_DATA_FOLDER\n");
    return 2;
  }
  std::vector<Written> written(kThreads);
  const std::vector<std::filesystem::path> dataFolders = {argv[2], argv[3]};
  std::latch start(kThreads);
  std::vector<std::thread> threads;
  for (Written& own : written) {
    own.folder = std::filesystem::path(argv[1]) / std::to_string(&own - written.data());
    threads.emplace_back([&] {
      start.arrive_and_wait();
      work(own, dataFolders);
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (const Written& own : written) {
    expectTheSame(written.front(), own);
  }
  expect(logged > 0, "something is logged");
  std::printf("threads_test: %s\n", failures == 0 ? "all is well" : "something is wrong");
  return failures == 0 ? 0 : 1;
}
