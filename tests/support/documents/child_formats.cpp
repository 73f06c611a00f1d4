#include "support/documents/child_formats.h"

#include "support/bytes.h"
#include "support/documents/pdf_structure.h"
#include "support/documents/workbook.h"
#include "system/files/files.h"

#include <sstream>

namespace scrivalen::test {
namespace {

std::string between(const std::string& bytes, std::string_view start, std::string_view end) {
  const std::size_t found = bytes.find(start);
  EXPECT_TRUE(found != std::string::npos && bytes.ends_with(end)) << bytes;
  const std::size_t at = found == std::string::npos ? 0 : found + start.size();
  return bytes.substr(at, bytes.size() - at - end.size());
}

std::string readRtf(const std::wstring& path) {
  return between(bytesOf(path), "\\paperw11906\\paperh16838\r\n{", "}}");
}

// A page that was opened by a file's name has no head.
std::string readHtml(const std::wstring& path) {
  const std::string bytes = bytesOf(path);
  return between(bytes, bytes.starts_with("<!DOCTYPE html>\n") ? "<body>\n" : "", "</body></html>\n");
}

// The section that is the topic, without its tags and the document's title.
std::string readDocument(const std::wstring& path) {
  const std::string bytes = bytesOf(path);
  const std::size_t start = bytes.find("<p>");
  const std::size_t end = bytes.find("</section>", start);
  EXPECT_NE(end, std::string::npos) << bytes;
  return end == std::string::npos ? bytes : bytes.substr(start, end - start);
}

std::string readXml(const std::wstring& path) {
  return between(bytesOf(path), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report>", "</report>");
}

std::string readText(const std::wstring& path) { return fromMarkedUtf16(bytesOf(path)); }

// The topic's page in the stand-in compiler's record, without the template around the text.
std::string readHelp(const std::wstring& path) {
  return between(bytesOf(path), "topic.htm]\n<title>%TITLE%</title>\n", "\n<hr>\n");
}

// The text shown on the only page.
std::string readPdf(const std::wstring& path) {
  const std::string bytes = bytesOf(path);
  const PdfStructure structure(bytes, false);
  EXPECT_EQ(structure.problems(), std::vector<std::string>{});
  EXPECT_EQ(structure.pageCount(), 1u);
  std::istringstream content{std::string(structure.content(0))};
  std::string shown;
  for (std::string line; std::getline(content, line);) {
    if (line.ends_with("Tj\r")) {
      shown += line.substr(0, line.size() - 1) + '\n';
    }
  }
  return shown;
}

constexpr ChildFormat kFormats[] = {
    {0, "rtf", &readRtf, "one\\s0\\ql\\par\\pard\\plain two\\s0\\ql\\par\\pard\\plain "},
    {1, "html", &readHtml, "<p>one</p><p>two</p>"},
    {2, "xml", &readXml, "<text>one</text><text>two</text>"},
    {3, "txt", &readText, "one\r\ntwo\r\n"},
    {5, "pdf", &readPdf, "(one)Tj\n(two)Tj\n"},
    {6, "xlsx", &readCells, "A1 \"one\" bold\nA2 \"two\" bold\n"},
    {101, "document", &readDocument, "<p>one</p>\n<p>two</p>\n"},
    {4, "chm", &readHelp, "<p>one</p><p>two</p>"},
};

}  // namespace

void PrintTo(const ChildFormat& format, std::ostream* out) { *out << format.name; }
std::string nameOf(const testing::TestParamInfo<ChildFormat>& test) { return test.param.name; }

std::span<const ChildFormat> childFormats() { return kFormats; }
std::span<const ChildFormat> fileFormats() { return std::span(kFormats).first(std::size(kFormats) - 1); }

ChildFiles::ChildFiles() : topicFolder_(topics.path() + scrivalen::kPathSeparator) {}

std::wstring ChildFiles::path(const ChildFormat& format, const std::wstring& start) const {
  const std::string_view name = format.name;
  return folder / (start + L"." + std::wstring(name.begin(), name.end()));
}

void ChildFiles::add(MultiReport& report, const ChildFormat& format, const std::wstring& start) const {
  report.AddReport(format.format(), path(format, start).c_str(), nullptr);
}

void ChildFiles::addAll(MultiReport& report, const std::wstring& start) const {
  for (const ChildFormat& format : kFormats) {
    add(report, format, start);
  }
}

REPORT_ERRORS ChildFiles::beginTopic(AReport& report) const {
  return report.BeginSubDocument(topicFolder_.c_str(), L"topic.htm", L"Topic");
}

void ChildFiles::expectAllHaveOneTwo(const std::wstring& start) const {
  for (const ChildFormat& format : kFormats) {
    EXPECT_EQ(format.read(path(format, start)), format.oneTwo) << format.name;
  }
}

void ChildFiles::expectNone(const std::wstring& start) const {
  for (const ChildFormat& format : kFormats) {
    EXPECT_FALSE(exists(path(format, start))) << format.name;
  }
}

void writeOneTwo(AReport& report, const ChildFiles& files) {
  EXPECT_EQ(files.beginTopic(report), REPORT_OK);
  report.Text(L"one", PARAGRAPH_NORMAL, L"", 0);
  report.Text(L"two", PARAGRAPH_NORMAL, L"", 0);
  report.EndSubDocument();
}

bool isHeld(const std::wstring& path) {
  ReportFile file;
  return !file.Open(path.c_str());
}

}  // namespace scrivalen::test
