#include "made_docx.h"

#include "formats/docx/docx_writer.h"
#include "support/documents/workbook.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace scrivalen::test {
namespace {

const document::Format kFormat{"docx", &document::createDocxDocumentWriter};

std::size_t numberAt(std::string_view bytes, std::size_t at, std::size_t size) {
  std::size_t value = 0;
  for (std::size_t i = size; i-- > 0;) {
    value = value << 8 | static_cast<unsigned char>(bytes.at(at + i));
  }
  return value;
}

// What is between two texts; fails the test if they are not there.
std::string between(const std::string& text, std::string_view begin, std::string_view end) {
  const std::size_t from = text.find(begin);
  const std::size_t to = from == std::string::npos ? from : text.find(end, from + begin.size());
  EXPECT_NE(to, std::string::npos) << begin;
  return to == std::string::npos ? std::string() : text.substr(from + begin.size(), to - from - begin.size());
}

std::string textOf(const Content& content, const SettingValues& settings) {
  return between(partOf(docxOf(content, settings), "word/document.xml"), "<w:body>\n", "\n</w:body>");
}

constexpr std::string_view kLastSection = "<w:sectPr>";

}  // namespace

std::string docxOf(const Content& content, const SettingValues& settings, std::vector<document::Warning>* warnings) {
  return bytesOfDocument(kFormat, content, settings, warnings);
}

std::string partOf(const std::string& docx, std::string_view name) {
  const TemporaryFolder folder;
  writeBytes(folder / L"made.docx", docx);
  return workbookPart(folder / L"made.docx", name);
}

std::vector<std::string> partsOf(const std::string& docx) {
  const std::size_t end = docx.rfind("PK\x05\x06");
  std::size_t at = numberAt(docx, end + 16, 4);
  std::vector<std::string> names;
  for (std::size_t left = numberAt(docx, end + 10, 2); left > 0; --left) {
    const std::size_t size = numberAt(docx, at + 28, 2);
    names.push_back(docx.substr(at + 46, size));
    at += 46 + size + numberAt(docx, at + 30, 2) + numberAt(docx, at + 32, 2);
  }
  return names;
}

std::string bodyOf(const Content& content, const SettingValues& settings) {
  const std::string text = textOf(content, settings);
  return text.substr(0, text.rfind(kLastSection));
}

std::string paragraphOf(const Content& content, const SettingValues& settings) {
  return bodyOf(
      [&](document::Document& document) {
        document.beginParagraph(document::Align::Auto);
        content(document);
        document.end();
      },
      settings);
}

std::string lastSectionOf(const Content& content, const SettingValues& settings) {
  const std::string text = textOf(content, settings);
  return text.substr(text.rfind(kLastSection));
}

std::string styleOf(const std::string& docx, std::string_view id) {
  return between(partOf(docx, "word/styles.xml"), std::string("w:styleId=\"").append(id).append("\">"), "</w:style>");
}

}  // namespace scrivalen::test
