#include "document/pictures/picture.h"
#include "made_docx.h"
#include "support/documents/pictures.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace scrivalen::document;
using namespace scrivalen::test;

namespace {

std::shared_ptr<const Picture> pictureOf(const std::string& bytes) {
  std::string reason;
  auto picture = Picture::read(bytes, reason);
  EXPECT_NE(picture, nullptr) << reason;
  return picture;
}

bool has(const std::string& text, std::string_view part) { return text.find(part) != std::string::npos; }

}  // namespace

TEST(DocxParts, ComeInTheOrderInWhichTheyAreKnown) {
  EXPECT_EQ(partsOf(docxOf([](Document& document) { document.paragraph("x"); }, {{"footer", "a"}})),
            (std::vector<std::string>{"_rels/.rels", "docProps/core.xml", "word/document.xml", "word/header1.xml",
                                      "word/styles.xml", "word/numbering.xml", "word/settings.xml",
                                      "word/_rels/document.xml.rels", "[Content_Types].xml"}));
}

TEST(DocxParts, AreTheSameForTheSameCalls) {
  const auto made = [] { return docxOf([](Document& document) { document.heading(1, "x"); }); };
  EXPECT_EQ(made(), made());
}

TEST(DocxParts, HaveTheDocumentsProperties) {
  const std::string docx = docxOf([](Document&) {}, {{"title", "A & B"},
                                                     {"author", "C"},
                                                     {"subject", "D"},
                                                     {"keywords", "E"},
                                                     {"language", "de"},
                                                     {"property:Order \"1\"", "F<"}});
  const std::string core = partOf(docx, "docProps/core.xml");
  EXPECT_TRUE(has(core,
                  "<dc:title>A &amp; B</dc:title><dc:subject>D</dc:subject><dc:creator>C</dc:creator>"
                  "<cp:keywords>E</cp:keywords>"))
      << core;
  EXPECT_TRUE(has(core, "<dcterms:created xsi:type=\"dcterms:W3CDTF\">2026-01-31T23:59:58Z</dcterms:created>"));
  EXPECT_TRUE(has(core, "<dc:language>de</dc:language>"));
  EXPECT_TRUE(has(partOf(docx, "docProps/custom.xml"),
                  "pid=\"2\" name=\"Order &quot;1&quot;\"><vt:lpwstr>F&lt;</vt:lpwstr></property>"));
  EXPECT_TRUE(has(partOf(docx, "[Content_Types].xml"), "PartName=\"/docProps/custom.xml\""));
}

TEST(DocxParts, HaveThePaperAndItsMargins) {
  EXPECT_EQ(
      lastSectionOf([](Document&) {}, {{"paper", "A5"}, {"margins", "10mm 20mm 30mm 40mm"}, {"landscape", "yes"}}),
      "<w:sectPr><w:type w:val=\"nextPage\"/><w:pgSz w:w=\"11906\" w:h=\"8391\" w:orient=\"landscape\"/>"
      "<w:pgMar w:top=\"567\" w:right=\"1134\" w:bottom=\"1701\" w:left=\"2268\" w:header=\"283\" w:footer=\"850\""
      " w:gutter=\"0\"/></w:sectPr>");
}

TEST(DocxParts, NameTheLanguageAndItsDirection) {
  const std::string docx = docxOf([](Document&) {}, {{"language", "ar-EG"}});
  EXPECT_TRUE(has(partOf(docx, "word/styles.xml"),
                  "<w:lang w:val=\"ar-EG\" w:eastAsia=\"ar-EG\" w:bidi=\"ar-EG\"/></w:rPr></w:rPrDefault>"));
  EXPECT_TRUE(lastSectionOf([](Document&) {}, {{"language", "ar-EG"}}).ends_with("<w:bidi/></w:sectPr>"));
}

TEST(DocxParts, NameEveryStyleThatAPersonLooksFor) {
  const std::string docx = docxOf([](Document&) {});
  for (const char* const id : {"Title", "Heading1", "Heading6", "Quote", "Code", "ListParagraph", "TableText"}) {
    EXPECT_TRUE(has(styleOf(docx, id), "<w:qFormat/>")) << id;
  }
  EXPECT_TRUE(has(styleOf(docx, "Heading3"), "<w:outlineLvl w:val=\"2\"/>"));
  EXPECT_TRUE(has(styleOf(docx, "Table"), "<w:tblStylePr w:type=\"firstRow\">"));
}

TEST(DocxParts, HaveTheFontOfTheSettings) {
  const auto fontsOf = [](std::string_view font) {
    const std::string styles = partOf(docxOf([](Document&) {}, {{"font", font}}), "word/styles.xml");
    const std::size_t at = styles.find("w:ascii=\"") + 9;
    return styles.substr(at, styles.find('"', at) - at);
  };
  EXPECT_EQ(fontsOf("serif"), "Times New Roman");
  EXPECT_EQ(fontsOf("Sans"), "Arial");
  EXPECT_EQ(fontsOf("mono"), "Courier New");
  EXPECT_EQ(fontsOf("A \"B\" & C"), "A &quot;B&quot; &amp; C");
}

TEST(DocxParts, HaveAHeaderAndAFooterWithFields) {
  const SettingValues settings{{"title", "T"}, {"header", "{title}||{date}"}, {"footer", "Page {page} of {pages}"}};
  const std::string docx = docxOf([](Document& document) { document.heading(1, "x"); }, settings);
  const std::string header = partOf(docx, "word/header1.xml");
  EXPECT_TRUE(
      header.ends_with("<w:p><w:pPr><w:pStyle w:val=\"Header\"/></w:pPr><w:r><w:t>T</w:t></w:r>"
                       "<w:r><w:tab/></w:r><w:r><w:tab/></w:r><w:r><w:t>2026-01-31</w:t></w:r></w:p></w:hdr>\n"))
      << header;
  EXPECT_TRUE(
      has(partOf(docx, "word/header2.xml"),
          "<w:r><w:t xml:space=\"preserve\">Page </w:t></w:r><w:fldSimple w:instr=\"PAGE\"><w:r><w:t>1</w:t></w:r>"
          "</w:fldSimple><w:r><w:t xml:space=\"preserve\"> of </w:t></w:r><w:fldSimple w:instr=\"NUMPAGES\">"));
  EXPECT_TRUE(has(partOf(docx, "word/document.xml"),
                  "<w:headerReference w:type=\"default\" r:id=\"rIdHeader1\"/>"
                  "<w:footerReference w:type=\"default\" r:id=\"rIdHeader2\"/>"));
  EXPECT_TRUE(
      has(partOf(docx, "word/_rels/document.xml.rels"),
          "Id=\"rIdHeader2\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/footer\" "
          "Target=\"header2.xml\""));
}

TEST(DocxParts, NameTheSectionInItsHeader) {
  const std::string docx = docxOf(
      [](Document& document) {
        for (const char* const name : {"One", "Two"}) {
          document.beginSection(name, {});
          document.paragraph("x");
          document.end();
        }
      },
      {{"header", "{section}"}});
  EXPECT_TRUE(has(partOf(docx, "word/header1.xml"), "<w:t>One</w:t>"));
  EXPECT_TRUE(has(partOf(docx, "word/header2.xml"), "<w:t>Two</w:t>"));
  EXPECT_TRUE(has(partOf(docx, "word/document.xml"), "<w:pStyle w:val=\"SectionEnd\"/><w:sectPr>"));
}

TEST(DocxParts, ShareAHeaderThatNamesNoSection) {
  const std::string docx = docxOf(
      [](Document& document) {
        for (int i = 0; i < 20; ++i) {
          document.beginSection("s", {});
          document.paragraph("x");
          document.end();
        }
      },
      {{"header", "a"}, {"footer", "b"}});
  const auto parts = partsOf(docx);
  EXPECT_EQ(std::count_if(parts.begin(), parts.end(), [](const std::string& name) { return has(name, "header"); }), 2);
}

TEST(DocxParts, BeginAPageBeforeATable) {
  EXPECT_TRUE(has(bodyOf([](Document& document) {
                    document.paragraph("x");
                    document.pageBreak();
                    document.paragraph("y");
                  }),
                  "<w:p><w:pPr><w:pageBreakBefore/></w:pPr><w:r><w:t>y</w:t></w:r></w:p>\n"));
  EXPECT_TRUE(has(bodyOf([](Document& document) {
                    document.paragraph("x");
                    document.pageBreak();
                    document.beginTable({}, "t");
                    document.beginRow(false);
                    document.cell("y");
                    document.end();
                    document.end();
                  }),
                  "<w:pStyle w:val=\"SectionEnd\"/><w:pageBreakBefore/></w:pPr></w:p>\n<w:tbl>"));
}

TEST(DocxParts, EmbedAPictureOnceAndUnchanged) {
  const std::string png = greyPng(96, 48);
  const auto picture = pictureOf(png);
  const std::string docx = docxOf([&](Document& document) {
    document.image(picture, "a \"b\"", 0, {});
    document.image(pictureOf(png), "again", 36, {});
    document.image(pictureOf(greyJpeg(8, 8)), {}, 0, {});
  });
  EXPECT_TRUE(has(docx, png));
  const auto parts = partsOf(docx);
  EXPECT_EQ(std::count(parts.begin(), parts.end(), "word/media/image1.png"), 1);
  EXPECT_EQ(std::count(parts.begin(), parts.end(), "word/media/image2.jpeg"), 1);
  const std::string text = partOf(docx, "word/document.xml");
  EXPECT_TRUE(has(text,
                  "<wp:extent cx=\"914400\" cy=\"457200\"/><wp:docPr id=\"1\" name=\"Picture 1\" "
                  "descr=\"a &quot;b&quot;\"/>"))
      << text;
  EXPECT_TRUE(has(text, "<wp:extent cx=\"457200\" cy=\"228600\"/><wp:docPr id=\"2\""));
  EXPECT_TRUE(has(text, "<a:blip r:embed=\"rIdPicture2\"/>"));
}

TEST(DocxParts, ReduceAPictureToThePage) {
  const auto picture = pictureOf(greyPng(10000, 100));
  const std::string text =
      partOf(docxOf([&](Document& document) { document.image(picture, "x", 0, {}); }), "word/document.xml");
  EXPECT_TRUE(has(text, "<wp:extent cx=\"6120130\"")) << text;
}

TEST(DocxParts, HaveAPictureInTheHeader) {
  const TemporaryFolder folder;
  writeBytes(folder / L"logo.png", greyPng(40, 20));
  const std::string path = scrivalen::narrowPath(folder / L"logo.png");
  const std::string docx = docxOf([](Document& document) { document.paragraph("x"); }, {{"header-image", path}});
  EXPECT_TRUE(has(partOf(docx, "word/header1.xml"), "<a:blip r:embed=\"rIdPicture1\"/>"));
  EXPECT_TRUE(has(partOf(docx, "word/_rels/header1.xml.rels"), "Target=\"media/image1.png\""));
}

TEST(DocxParts, ReduceATurnedPictureByWhatItShows) {
  const auto picture = pictureOf(turnedJpeg(10, 1000, 8));  // shown 1,000 pixels wide
  const std::string text =
      partOf(docxOf([&](Document& document) { document.image(picture, "x", 0, {}); }), "word/document.xml");
  EXPECT_TRUE(has(text, "cy=\"6120130\"/><wp:effectExtent l=\"3029464\" t=\"0\"")) << text;
  EXPECT_TRUE(has(text, "<a:xfrm rot=\"16200000\">"));
}

TEST(DocxParts, TurnAPictureOnItsSide) {
  std::vector<scrivalen::document::Warning> warnings;
  const auto picture = pictureOf(turnedJpeg(40, 20, 6));
  const std::string text = partOf(
      docxOf([&](Document& document) { document.image(picture, "x", 0, {}); }, {}, &warnings), "word/document.xml");
  EXPECT_TRUE(has(text,
                  "<wp:extent cx=\"381000\" cy=\"190500\"/>"
                  "<wp:effectExtent l=\"0\" t=\"95250\" r=\"0\" b=\"95250\"/>"));
  EXPECT_TRUE(has(text, "<a:xfrm rot=\"5400000\"><a:off x=\"0\" y=\"0\"/><a:ext cx=\"381000\" cy=\"190500\"/>"));
  EXPECT_TRUE(warnings.empty());
}
