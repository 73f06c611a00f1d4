#include "formats/markup/xml_writer.h"

#include "document/pictures/picture.h"
#include "support/documents/made_document.h"
#include "support/documents/pictures.h"

#include <gtest/gtest.h>
#include <unistd.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>

using namespace scrivalen;
using namespace scrivalen::document;
using scrivalen::test::MadeDocument;

namespace {

const Format kXml{"xml", &createXmlDocumentWriter};

constexpr std::string_view kHostile = "]]> <!-- &amp; \"'\x01\x7F\xFF\xED\xA0\x80\xEF\xBF\xBE\r\n\t</document><?x?>";

std::string contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The schema with elements for the cells of some tables, as its documentation recommends.
std::string schemaFor(std::initializer_list<std::string_view> names) {
  std::string schema = contentOf(SCRIVALEN_DOCUMENT_SCHEMA);
  constexpr std::string_view kWildcard =
      "<xs:any namespace=\"##targetNamespace\" processContents=\"skip\" minOccurs=\"0\" maxOccurs=\"unbounded\"/>";
  std::string elements = "<xs:choice minOccurs=\"0\" maxOccurs=\"unbounded\">";
  for (const std::string_view name : names) {
    elements.append("<xs:element name=\"").append(name).append("\" type=\"cell\"/>");
  }
  const std::size_t place = schema.find(kWildcard);
  EXPECT_NE(place, std::string::npos);
  return schema.replace(place, kWildcard.size(), elements + "</xs:choice>");
}

class XmlSchema : public testing::Test {
 protected:
  XmlSchema() : folder_(std::filesystem::temp_directory_path() / ("xml_schema_" + std::to_string(::getpid()))) {
    std::filesystem::create_directories(folder_);
  }
  ~XmlSchema() override { std::filesystem::remove_all(folder_); }

  void put(const char* name, const std::string& bytes) { std::ofstream(folder_ / name, std::ios::binary) << bytes; }

  // What the validator says against a document; empty if it is valid.
  std::string errorsOf(const std::string& xml, const std::string& schema) {
    put("document.xml", xml);
    put("document.xsd", schema);
    const std::string command =
        "cd '" + folder_.string() + "' && xmllint --huge --noout --schema document.xsd document.xml > messages 2>&1";
    const int result = std::system(command.c_str());
    return result == 0 ? std::string() : contentOf((folder_ / "messages").string());
  }

 private:
  std::filesystem::path folder_;
};

void addTexts(Document& document, std::string_view text) {
  document.text(text);
  for (const Span span : {Span::Strong, Span::Emphasis, Span::Code, Span::Deleted, Span::Underlined, Span::Superscript,
                          Span::Subscript}) {
    document.beginSpan(span);
    document.text(text);
  }
  for (int i = 0; i < 7; ++i) {
    document.end();
  }
  document.beginColored(0x123456, 0xABCDEF);
  document.beginSized(7.25);
  document.beginLanguage("de");
  document.beginLink("https://example.org/" + std::string(text), text);
  document.lineBreak();
  document.text(text);
  document.anchor(std::string(text) + std::to_string(reinterpret_cast<std::uintptr_t>(text.data())));
  std::string reason;
  document.image(Picture::read(test::greyJpeg(2, 2), reason), text, 30, {});
  document.image(nullptr, text, 0, "missing");
  document.end();
  document.end();
  document.end();
  document.end();
}

void addTable(Document& document, std::string_view text) {
  std::vector<Column> columns(4);
  columns[0].name = text;
  columns[1].name = "amount";
  columns[1].type = ValueType::Number;
  columns[1].format = ValueFormat::of("#,##0.00").value();
  columns[1].width = 1.5;
  columns[2].name = "strong";
  document.beginTable(columns, text);
  document.beginRow(true);
  document.cell(text);
  document.beginCell({.header = true, .align = Align::Justify, .span = 3, .color = 0, .background = 0xFFFFFF});
  addTexts(document, text);
  document.end();
  document.end();
  document.beginRow(false);
  document.value(ValueType::Boolean, 0, 1);
  document.value(ValueType::Number, 1234.5, 0);
  document.value(ValueType::Date, 0, -800000);
  document.value(ValueType::Time, 0, 1769903999);
  document.end();
  document.end();
}

void addBlocks(Document& document, std::string_view text) {
  document.beginHeading(6, text, Align::Center);
  addTexts(document, text);
  document.end();
  document.beginParagraph(Align::Justify);
  addTexts(document, text);
  document.raw("xml", "<own:mark xmlns:own=\"urn:own\"><any/></own:mark>");
  document.end();
  document.beginList(true, 0, false);
  document.beginItem(Task::Open);
  document.text(text);
  addTable(document, text);
  document.text(text);
  document.beginQuote();
  document.rule();
  document.pageBreak();
  document.anchor("block-" + std::string(text));
  document.raw("xml", "<own:mark xmlns:own=\"urn:own\"/>");
  document.beginCode(text);
  document.text(text);
  document.end();
  document.end();
  document.end();
  document.end();
  document.beginContents();
  document.contentsItem(1, text, text);
  document.end();
}

std::string richDocument(std::string_view text, std::string_view numbers) {
  MadeDocument document(kXml);
  for (const char* name : {"title", "author", "subject", "keywords", "date", "property:Project"}) {
    document.set(name, text);
  }
  document.set("language", "sr-Latn-RS");
  document.set("numbers", numbers);
  document.set("dates", "d.m.yyyy");
  document.rule();
  addBlocks(document, text);
  document.beginSection(text, "section-" + std::string(text));
  addBlocks(document, text);
  return document.bytes();
}

}  // namespace

TEST_F(XmlSchema, AcceptsAnEmptyDocument) {
  EXPECT_EQ(errorsOf(MadeDocument(kXml).bytes(), contentOf(SCRIVALEN_DOCUMENT_SCHEMA)), "");
}

TEST_F(XmlSchema, AcceptsEverythingThatADocumentMayHold) {
  EXPECT_EQ(errorsOf(richDocument("text", "1234.5"), contentOf(SCRIVALEN_DOCUMENT_SCHEMA)), "");
}

TEST_F(XmlSchema, AcceptsHostileTexts) {
  EXPECT_EQ(errorsOf(richDocument(kHostile, "1 234,5"), contentOf(SCRIVALEN_DOCUMENT_SCHEMA)), "");
}

TEST_F(XmlSchema, ChecksTheCellsThatAHostListsInIt) {
  const std::string schema = schemaFor({"name", "amount", "strong", "cell"});
  EXPECT_EQ(errorsOf(richDocument("name", "1.234,5"), schema), "");
  EXPECT_NE(errorsOf(richDocument("other", "1.234,5"), schema).find("Element '{urn:scrivalen:document:1}other'"),
            std::string::npos);
}

TEST_F(XmlSchema, RefusesWhatADocumentMayNotHold) {
  std::string xml = richDocument("text", "1234.5");
  xml.replace(xml.find("level=\"6\""), 9, "level=\"7\"");
  EXPECT_NE(errorsOf(xml, contentOf(SCRIVALEN_DOCUMENT_SCHEMA)).find("'7' is greater than the maximum"),
            std::string::npos);
}
