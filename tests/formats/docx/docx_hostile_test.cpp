#include "../../../fuzz/markup_check.h"
#include "document/pictures/picture.h"
#include "formats/document_formats.h"
#include "formats/document_report.h"
#include "made_docx.h"
#include "support/captured_log.h"
#include "support/documents/pictures.h"
#include "support/files.h"

#include <gtest/gtest.h>

using namespace scrivalen::document;
using namespace scrivalen::test;

namespace {

// Puts a text into every place that takes one.
void putEverywhere(Document& document, std::string_view text) {
  document.beginSection(text, {});
  document.beginContents();
  document.contentsItem(1, "place", text);
  document.end();
  document.heading(1, text);
  document.beginParagraph(Align::Auto);
  document.anchor(text);
  document.beginLink(std::string("https://e.org/").append(text), text);
  document.text(text);
  document.end();
  document.beginLink(std::string("#").append(text), text);
  document.text(text);
  document.end();
  document.beginLanguage(text);
  document.text(text);
  document.end();
  std::string reason;
  document.image(Picture::read(greyPng(1, 1), reason), text, 0, {});
  document.end();
  document.beginCode(text);
  document.text(text);
  document.end();
  document.beginList(true, 1, true);
  document.beginItem(Task::Open);
  document.text(text);
  document.end();
  document.end();
  document.beginTable({}, "t");
  for (const bool isHeader : {true, false}) {
    document.beginRow(isHeader);
    document.cell(text);
    document.end();
  }
  document.end();
  document.end();
}

void expectWellFormed(std::string_view text, const SettingValues& settings) {
  const std::string docx = docxOf([&](Document& document) { putEverywhere(document, text); }, settings);
  for (const std::string& name : partsOf(docx)) {
    if (!name.ends_with(".png")) {
      EXPECT_EQ(scrivalen::fuzz::problemOfDocumentXml(partOf(docx, name)), "") << name << " of " << text.substr(0, 60);
    }
  }
}

}  // namespace

TEST(DocxHostile, TextsLeaveEveryPartWellFormed) {
  for (const std::string& text :
       {std::string("</w:t></w:r><w:p>"), std::string("a\" b='c' <!-- & &amp; &#0; ]]> <?x?>"), std::string(1, '\0'),
        std::string("\x01\x08\x0B\x0C\x0E\x1F\x7F\r\r\n\t"),
        std::string("\xED\xA0\x80 \xED\xBF\xBF \xC3 \xF4\x90\x80\x80"),
        std::string("\xEF\xBF\xBE\xEF\xBF\xBF\xEF\xB7\x90\xC2\x85\xE2\x80\xA8"),
        std::string("\xE2\x80\xAE\xE2\x81\xA6 \xD7\x90 x \xE2\x81\xA9"), std::string("\" \\o \"x\" \\* MERGEFORMAT"),
        std::string(100000, '<'), std::string(30000, ' ')}) {
    expectWellFormed(text, {});
  }
}

TEST(DocxHostile, SettingsLeaveEveryPartWellFormed) {
  const std::string_view text = "</w:t> \"a\" & ' <b> \xD7\x90";
  expectWellFormed("x", {{"title", text},
                         {"author", text},
                         {"subject", text},
                         {"keywords", text},
                         {"header", text},
                         {"footer", "{title}|{section}|\"<&>\""},
                         {"font", text},
                         {"property:a \"b\" <c>", text}});
}

TEST(DocxHostile, DepthLeavesRoomForText) {
  const std::string body = bodyOf([](Document& document) {
    for (int i = 0; i < 400; ++i) {
      document.beginList(false, 0, true);
      document.beginItem(Task::None);
    }
    document.text("x");
    for (int i = 0; i < 800; ++i) {
      document.end();
    }
  });
  EXPECT_NE(
      body.find("<w:ilvl w:val=\"8\"/><w:numId w:val=\"1\"/></w:numPr><w:ind w:left=\"4819\" w:hanging=\"440\"/>"),
      std::string::npos)
      << body.substr(body.size() - 400);
}

// Wide texts may have halves of surrogate pairs, which UTF-8 cannot.
TEST(DocxHostile, WideTextsOfAReportAreMended) {
  const std::wstring half(1, static_cast<wchar_t>(0xD83D));
  const std::wstring otherHalf(1, static_cast<wchar_t>(0xDE00));
  const std::wstring text = L"a" + half + L"b" + otherHalf + half + L"\x1 { PAGE } _x0041_ <&>";
  const std::wstring longText(100000, L'x');
  const TemporaryFolder folder;
  const CapturedLog log;
  scrivalen::DocumentReport report(*scrivalen::documentFormatOf("docx"));
  ASSERT_EQ(report.Open((folder / L"a").c_str()), REPORT_OK);
  report.Text(text.c_str(), PARAGRAPH_HEADING1, L"", 0);
  report.Text(longText.c_str(), PARAGRAPH_NORMAL, L"", 0);
  report.BeginTable(L"t", nullptr);
  report.BeginRow(L"r", nullptr, 2);
  report.Cell(text.c_str(), 0, nullptr);
  report.Cell(longText.c_str(), 0, nullptr);
  report.EndRow(L"r");
  report.EndTable(L"t");
  ASSERT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(log.lines().size(), 1u) << "control characters";
  const std::string xml = partOf(bytesOf(folder / L"a"), "word/document.xml");
  EXPECT_EQ(scrivalen::fuzz::problemOfDocumentXml(xml), "");
  EXPECT_NE(xml.find("a\uFFFDb\uFFFD\uFFFD\uFFFD { PAGE } _x0041_ &lt;&amp;&gt;"), xml.npos) << xml.substr(0, 1500);
  EXPECT_NE(xml.find("<w:t>" + std::string(100000, 'x') + "</w:t></w:r></w:p></w:tc>"), xml.npos);
}
