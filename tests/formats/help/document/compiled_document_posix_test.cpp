#include "scrivalen/document.h"
#include "scrivalen/multi_report.h"
#include "support/documents/pictures.h"
#include "support/files.h"
#include "system/files/files.h"
#include "system/process/process.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace scrivalen;
using namespace scrivalen::test;

// Documents compiled by the library's own help compiler and unpacked by another program.

namespace {

std::string extracted(const std::wstring& help, const std::wstring& name) {
  const TemporaryFolder folder;
  EXPECT_EQ(
      runProgram({L"sh", L"-c", L"extract_chmLib \"$1\" \"$2\" >/dev/null", L"sh", help, folder / L"out"}).exitStatus,
      0);
  const std::wstring path = folder / L"out/" + name;
  return exists(path) ? bytesOf(path) : "none";
}

std::string write(const std::wstring& path) {
  const std::string picture = greyPng(2, 2);
  scrivalen_document* const document = scrivalen_new();
  scrivalen_add_file(document, narrowPath(path).c_str(), nullptr);
  scrivalen_set(document, "title", "Größe");
  scrivalen_set(document, "language", "de");
  scrivalen_set(document, "clock", "2026-01-31 23:59:59");
  scrivalen_begin_paragraph(document, nullptr);
  scrivalen_begin_link(document, "#ende", nullptr);
  scrivalen_text(document, "zum Ende", SCRIVALEN_NUL);
  scrivalen_end(document);
  scrivalen_end(document);
  scrivalen_heading(document, 1, "Ende", SCRIVALEN_NUL);
  scrivalen_image(document, picture.data(), picture.size(), "grau", 0);
  EXPECT_EQ(scrivalen_close(document), SCRIVALEN_OK) << scrivalen_error(document);
  scrivalen_warning warning{};
  warning.size = sizeof warning;
  EXPECT_EQ(scrivalen_next_warning(document, &warning), 0) << warning.message;
  scrivalen_free(document);
  return bytesOf(path);
}

}  // namespace

TEST(CompiledDocument, HoldsItsTopicsPicturesAndContents) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.chm";
  write(path);
  EXPECT_NE(extracted(path, L"topic1.htm").find("<p><a href=\"topic2.htm#ende\">zum Ende</a></p>"), std::string::npos);
  EXPECT_NE(extracted(path, L"topic2.htm").find("<img src=\"picture1.png\" alt=\"grau\""), std::string::npos);
  EXPECT_EQ(extracted(path, L"picture1.png"), greyPng(2, 2));
  EXPECT_NE(extracted(path, L"report.hhc")
                .find("value=\"Gr\xF6\xDF"
                      "e\">"),
            std::string::npos);
  EXPECT_NE(extracted(path, L"#SYSTEM").find(std::string("\x04\0\x24\0\x07\x04\0\0", 8)), std::string::npos)
      << "the language";
}

TEST(CompiledDocument, HasTheSameBytesForTheSameCalls) {
  const TemporaryFolder folder;
  EXPECT_EQ(write(folder / L"a.chm"), write(folder / L"b.chm"));
}

TEST(CompiledDocument, IsMadeByClassicHostsToo) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.chm";
  MultiReport report;
  report.AddReport(FORMAT_DOCUMENT_CHM, path.c_str(), nullptr);
  report.AddProperty(L"%TITLE%", L"T");
  EXPECT_EQ(report.Open(), REPORT_OK) << report.GetError();
  EXPECT_EQ(report.BeginSubDocument(L"", L"x.htm", L"Sales"), REPORT_OK);
  report.Text(L"text", PARAGRAPH_NORMAL, L"", 0);
  report.EndSubDocument();
  EXPECT_EQ(report.Close(), REPORT_OK) << report.GetError();
  EXPECT_NE(
      extracted(path, L"topic1.htm")
          .find("<section id=\"x.htm\" aria-label=\"Sales\">\n<h1 class=\"title\">T</h1>\n<p>text</p>\n</section>\n"),
      std::string::npos);
  EXPECT_NE(extracted(path, L"report.hhc").find("value=\"Sales\""), std::string::npos);
}
