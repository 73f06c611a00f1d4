#include "made_reference.h"

#include "formats/docx/docx_writer.h"
#include "output/archive/zip_writer.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace scrivalen::test {
namespace {

struct ReferenceBytes : ByteSink {
  bool take(const char* data, std::size_t size) override {
    bytes.append(data, size);
    return true;
  }
  std::string bytes;
};

constexpr std::string_view kTypes = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";

std::string relationsOf(std::string_view type, std::string_view target) {
  return std::string("<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">")
      .append("<Relationship Id=\"a\" Type=\"")
      .append(kTypes)
      .append(type)
      .append("\" Target=\"")
      .append(target)
      .append("\"/></Relationships>");
}

std::string startOf(std::string_view id) { return std::string("w:styleId=\"").append(id).append("\""); }

}  // namespace

std::string referenceOfParts(const ReferenceParts& parts) {
  ReferenceBytes sink;
  OutputBuffer out(sink);
  ZipWriter zip(out, 0);
  for (const auto& [name, content] : parts) {
    zip.addEntry(name, content);
  }
  zip.finish();
  out.flush();
  return sink.bytes;
}

ReferenceParts partsWithStyles(std::string_view styles) {
  std::string part = "<w:styles xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\">";
  return {{"_rels/.rels", relationsOf("officeDocument", "a/doc.xml")},
          {"a/doc.xml", "<x/>"},
          {"a/_rels/doc.xml.rels", relationsOf("styles", "../looks.xml")},
          {"looks.xml", part.append(styles).append("</w:styles>")}};
}

std::string docxWithReference(const std::string& reference, const Content& content, SettingValues settings,
                              std::vector<document::Warning>* warnings) {
  const TemporaryFolder folder;
  writeBytes(folder / L"reference.docx", reference);
  const std::string path = narrowPath(folder / L"reference.docx");
  settings.emplace_back("reference", path);
  return docxOf(
      content ? content : [](document::Document&) {}, settings, warnings);
}

std::string partWithReference(const std::string& reference, const Content& content, std::string_view part,
                              SettingValues settings, std::vector<document::Warning>* warnings) {
  return partOf(docxWithReference(reference, content, std::move(settings), warnings), part);
}

std::string errorWithReference(const std::string& reference) {
  const document::Format format{"docx", &document::createDocxDocumentWriter};
  const TemporaryFolder folder;
  writeBytes(folder / L"reference.docx", reference);
  const std::string path = narrowPath(folder / L"reference.docx");
  MadeDocument document(format);
  document.set("reference", path);
  document.paragraph("x");
  const std::string bytes = document.bytes();
  std::string error = document.error();
  EXPECT_EQ(bytes.empty(), !error.empty());
  if (const std::size_t at = error.find(path); at != std::string::npos) {
    error.replace(at, path.size(), 1, '@');
  }
  return error;
}

std::string styleIn(const std::string& part, std::string_view id) {
  const std::size_t at = part.find(startOf(id));
  EXPECT_NE(at, std::string::npos) << id;
  EXPECT_EQ(part.find(startOf(id), at + 1), std::string::npos) << id;
  if (at == std::string::npos) {
    return {};
  }
  const std::size_t begin = part.rfind("<w:style ", at);
  return part.substr(begin, part.find('\n', at) - begin);
}

bool hasStyle(const std::string& part, std::string_view id) { return part.find(startOf(id)) != std::string::npos; }

}  // namespace scrivalen::test
