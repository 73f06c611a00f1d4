// A host application as its author would write it, with only the installed package.
#include <scrivalen/scrivalen.h>
#include <scrivalen/document.hpp>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>

#if defined(EXPECT_STATIC) != defined(SCRIVALEN_STATIC)
#error "The package takes a static library for a shared one, or a shared one for a static one."
#endif

namespace {

const char* const kText = "consumer.txt";
const char* const kHtml = "consumer.html";
const char* const kXml = "consumer.xml";

int failures = 0;

void expect(bool holds, std::string_view what) {
  if (!holds) {
    std::cerr << "consumer: failed: " << what << '\n';
    ++failures;
  }
}

std::string contentOf(const char* name) {
  std::ifstream in(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

bool contains(const std::string& text, std::string_view part) { return text.find(part) != std::string::npos; }

std::wstring wide(const char* ascii) { return scrivalen::FromUtf8(ascii); }

// On some systems the standard library would convert wide text by the locale.
std::filesystem::path asPath(const std::wstring& path) { return std::filesystem::u8path(scrivalen::ToUtf8(path)); }

/// ASCII text as UTF-16LE.
std::string utf16(std::string_view ascii) {
  std::string bytes;
  for (const char c : ascii) {
    bytes += c;
    bytes += '\0';
  }
  return bytes;
}

void writeContent(AReport& report) {
  report.Text(L"Summary", PARAGRAPH_HEADING1, L"", 0);
  report.BeginTable(L"people", nullptr);
  report.BeginRow(L"row", nullptr, 2);
  report.Cell(L"Name", 0, nullptr);
  report.Cell(L"Gr\u00FC\u00DFe", 0, nullptr);
  report.EndRow(L"row");
  report.EndTable(L"people");
}

void writeReports() {
  MultiReport report;
  report.AddReport(FORMAT_TEXT, wide(kText).c_str(), nullptr);
  report.AddReport(FORMAT_HTML, wide(kHtml).c_str(), L"default.htm");
  report.AddReport(FORMAT_XML, wide(kXml).c_str(), nullptr);
  report.AddProperty(L"%TITLE%", L"A consumer's report");
  expect(report.Open() == REPORT_OK, "the reports open");
  writeContent(report);
  expect(report.Close() == REPORT_OK, "the reports close without a loss");
  expect(std::wstring(report.GetError()).empty(), "there is no error text");
  report.Clear();
}

void checkReports() {
  const std::string text = contentOf(kText);
  expect(text == "\xFF\xFE" + utf16("Summary\r\nName\tGr") + std::string("\xFC\0\xDF\0", 4) + utf16("e\r\n"),
         "the text report holds the heading and the row as UTF-16");
  const std::string html = contentOf(kHtml);
  expect(contains(html, "<title>A consumer's report</title>"), "the page uses the shipped template");
  expect(contains(html,
                  "<h1>Summary</h1><table class=\"table table-hover table-bordered\">"
                  "<tr><td>Name</td><td>Gr\xC3\xBC\xC3\x9F"
                  "e</td></tr></table>"),
         "the page holds the heading and the table as UTF-8");
  const std::string xml = contentOf(kXml);
  expect(xml.rfind("<?xml", 0) == 0, "the XML report starts with its declaration");
  expect(contains(xml,
                  "<report><text>Summary</text><people><row><cell>Name</cell><cell>Gr\xC3\xBC\xC3\x9F"
                  "e</cell></row></people></report>"),
         "the XML report holds the heading and the table as UTF-8");
}

void checkDocument() {
  const std::filesystem::path path = std::filesystem::u8path(
      "Gr\xC3\xBC\xC3\x9F"
      "e.md");
  scrivalen::Document document;
  document.addFile(path);
  document.heading(1, "Prices");
  document.beginTable().row("Tea", 4.5);
  document.close();
  std::ifstream in(path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  expect(contains(text, "# Prices") && contains(text, "Tea"), "the document has its heading and its table");
}

// Without its fonts the library writes no such document.
void checkFonts() {
  const std::filesystem::path path = "consumer.pdf";
  scrivalen::Document document;
  document.addFile(path);
  document.paragraph("Prices");
  document.close();
  expect(contentOf("consumer.pdf").rfind("%PDF-1.7", 0) == 0, "the fonts are beside the library");
}

void checkTemplates() {
  MultiReport report;
  std::wstring path;
  expect(report.MakeTemplateName(path, L"default.htm") == 1, "the template folder is beside the library");
  expect(std::filesystem::is_regular_file(asPath(path)), "the template's path is that of a file");
}

void checkVersion() {
  expect(std::string_view(SCRIVALEN_VERSION) == EXPECTED_VERSION, "the headers have the package's version");
}

}  // namespace

int main() {
  writeReports();
  checkReports();
  checkDocument();
  checkFonts();
  checkTemplates();
  checkVersion();
  std::cout << "consumer: " << (failures == 0 ? "all is well" : "something is wrong") << '\n';
  return failures == 0 ? 0 : 1;
}
