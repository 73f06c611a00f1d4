#include "document/pictures/picture.h"
#include "made_docx.h"
#include "support/documents/pictures.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>

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

// The number of parts that are headers or footers.
std::ptrdiff_t headersOf(const std::string& docx) {
  const auto parts = partsOf(docx);
  return std::count_if(parts.begin(), parts.end(), [](const std::string& name) { return has(name, "word/header"); });
}

// A document of sections, with a paragraph each, whose header names them.
std::string docxOfSections(int count, const std::function<std::string(int)>& nameOf,
                           std::vector<Warning>* warnings = nullptr) {
  const auto content = [&](Document& document) {
    for (int i = 0; i < count; ++i) {
      document.beginSection(nameOf(i), {});
      document.paragraph("x");
      document.end();
    }
  };
  return docxOf(content, {{"header", "{title}||{section}"}, {"footer", "{page}"}}, warnings);
}

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

TEST(DocxParts, LeaveOutALanguageThatIsLongerThanWordTakes) {
  std::string longest = "deu";
  for (int i = 0; i < 9; ++i) {
    longest += "-abcdefgh";
  }
  const auto settingsOf = [](const std::string& language) {
    return partOf(docxOf([](Document&) {}, {{"language", language}}), "word/settings.xml");
  };
  EXPECT_TRUE(has(settingsOf(longest), "</w:compat><w:themeFontLang w:val=\"" + longest + "\"/></w:settings>"));
  EXPECT_TRUE(has(settingsOf(longest + "-a"), "</w:compat></w:settings>"));
}

TEST(DocxParts, NameEveryStyleThatAPersonLooksFor) {
  const std::string docx = docxOf([](Document&) {});
  for (const char* const id : {"Title", "Heading1", "Heading6", "Quote", "Code", "ListParagraph", "ListCompact",
                               "ListContinue", "QuoteList", "ListCode", "TableText"}) {
    EXPECT_TRUE(has(styleOf(docx, id), "<w:qFormat/>")) << id;
  }
  EXPECT_TRUE(has(styleOf(docx, "Heading3"), "<w:outlineLvl w:val=\"2\"/>"));
  EXPECT_TRUE(has(styleOf(docx, "Table"), "<w:tblStylePr w:type=\"firstRow\">"));
}

TEST(DocxParts, BaseHeadingsInQuotesOnHeadings) {
  const std::string docx = docxOf([](Document&) {});
  EXPECT_TRUE(has(styleOf(docx, "QuoteHeading1"), "<w:basedOn w:val=\"Heading1\"/>"));
  EXPECT_TRUE(has(styleOf(docx, "QuoteHeading6"), "<w:basedOn w:val=\"Heading6\"/>"));
}

TEST(DocxParts, ListRareStylesOnceTheyAreUsed) {
  const std::string used = docxOf([](Document& document) {
    document.beginQuote();
    document.heading(2, "x");
    document.end();
  });
  for (const char* const id : {"QuoteRightToLeft", "QuoteList", "QuoteHeading1", "ListQuote", "ListCode"}) {
    EXPECT_TRUE(has(styleOf(used, id), "<w:semiHidden/><w:unhideWhenUsed/><w:qFormat/>")) << id;
  }
  EXPECT_TRUE(has(styleOf(used, "QuoteHeading2"), "<w:unhideWhenUsed/><w:qFormat/>"));
  EXPECT_FALSE(has(styleOf(used, "QuoteHeading2"), "<w:semiHidden/>"));
}

// The number 0 is that of no list (ECMA-376, 17.9.18).
TEST(DocxParts, HaveNoMarkerInTheStylesOfQuotesAndCodeInAnItem) {
  const std::string docx = docxOf([](Document&) {});
  for (const char* const id : {"ListQuote", "ListCode"}) {
    EXPECT_TRUE(has(styleOf(docx, id), "<w:pPr><w:numPr><w:numId w:val=\"0\"/></w:numPr><w:ind ")) << id;
  }
}

TEST(DocxParts, HideStylesThatOnlyConvertersKnow) {
  const std::string docx = docxOf([](Document&) {});
  for (const char* const id : {"SourceCode", "Compact", "ListItemText"}) {
    EXPECT_TRUE(has(styleOf(docx, id), "<w:semiHidden/>")) << id;
    EXPECT_FALSE(has(styleOf(docx, id), "<w:pPr>")) << id;
  }
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

TEST(DocxParts, CutTheNameOfAFontThatWordRefuses) {
  std::vector<Warning> warnings;
  const std::string docx = docxOf([](Document&) {}, {{"font", "The name of a font, 31 letters, and more"}}, &warnings);
  const std::string styles = partOf(docx, "word/styles.xml");
  EXPECT_TRUE(has(styles, "w:ascii=\"The name of a font, 31 letters,\" w:hAnsi=\"The name of a font, 31 letters,\""));
  EXPECT_FALSE(has(styles, "and more"));
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_EQ(warnings[0].code, WarningCode::TextCut);
  EXPECT_EQ(warnings[0].message, "the name of a font cut at 31 characters");
}

TEST(DocxParts, CutTheDescriptionOfALinkThatWordRefuses) {
  const std::string longest = std::string(258, 'd') + "\U0001F600";
  for (const char* address : {"#place", "https://e.org/"}) {
    std::vector<Warning> warnings;
    const auto documentWith = [&](const std::string& title) {
      return partOf(docxOf(
                        [&](Document& document) {
                          document.anchor("place");
                          document.beginParagraph(Align::Auto);
                          document.beginLink(address, title);
                          document.text("x");
                          document.end();
                          document.end();
                        },
                        {}, &warnings),
                    "word/document.xml");
    };
    const std::string whole = documentWith(longest);
    EXPECT_TRUE(has(whole, longest + "\""));
    EXPECT_TRUE(warnings.empty());
    EXPECT_EQ(documentWith(longest + "d"), whole);
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_EQ(warnings[0].code, WarningCode::TextCut);
    EXPECT_EQ(warnings[0].message, "descriptions of links cut at 260 characters");
  }
}

// In tables LibreOffice shows code in the document's font unless that is also the font of a style.
TEST(DocxParts, HaveTheFontInTheStyleOfAllText) {
  const std::string styles = partOf(docxOf([](Document&) {}, {{"font", "serif"}}), "word/styles.xml");
  const std::string normal = styles.substr(styles.find("w:styleId=\"Normal\""));
  EXPECT_TRUE(has(normal.substr(0, normal.find("</w:style>")),
                  "<w:rPr><w:rFonts w:ascii=\"Times New Roman\" w:hAnsi=\"Times New Roman\" "
                  "w:cs=\"Times New Roman\"/></w:rPr>"));
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

TEST(DocxParts, HaveAHeaderFromRightToLeftInSuchALanguage) {
  const TemporaryFolder folder;
  writeBytes(folder / L"logo", greyPng(4, 2));
  const std::string logo = scrivalen::narrowPath(folder / L"logo");
  const std::string docx =
      docxOf([](Document& document) { document.paragraph("x"); },
             {{"language", "he"}, {"header", "\xD7\x90|b|c"}, {"header-image", logo}, {"footer", "d"}});
  const std::string header = partOf(docx, "word/header1.xml");
  EXPECT_TRUE(has(header,
                  "<w:p><w:pPr><w:pStyle w:val=\"Header\"/><w:bidi/></w:pPr><w:r><w:t>c</w:t></w:r><w:r><w:tab/></w:r>"
                  "<w:r><w:t>b</w:t></w:r><w:r><w:tab/></w:r>"
                  "<w:r><w:rPr><w:rtl/></w:rPr><w:t>\xD7\x90</w:t></w:r>"
                  "<w:r><w:t xml:space=\"preserve\"> </w:t><w:drawing>"))
      << header;
  EXPECT_TRUE(header.ends_with("</w:drawing></w:r></w:p></w:hdr>\n"));
  EXPECT_TRUE(has(partOf(docx, "word/header2.xml"),
                  "<w:pStyle w:val=\"Footer\"/><w:bidi/></w:pPr><w:r><w:tab/></w:r><w:r><w:tab/></w:r>"
                  "<w:r><w:t>d</w:t></w:r></w:p>"));
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
  EXPECT_EQ(headersOf(docx), 2);
}

TEST(DocxParts, ShareTheHeaderOfSectionsOfOneName) {
  const std::string docx = docxOfSections(60, [](int i) { return "Section " + std::to_string(i % 20); });
  EXPECT_EQ(headersOf(docx), 20 + 1);
  const std::string text = partOf(docx, "word/document.xml");
  EXPECT_TRUE(has(text,
                  "<w:headerReference w:type=\"default\" r:id=\"rIdHeader1\"/>"
                  "<w:footerReference w:type=\"default\" r:id=\"rIdHeader2\"/>"));
  EXPECT_EQ(text.find("rIdHeader22\""), std::string::npos);
}

// The headers wait until the text is written.
TEST(DocxParts, HaveNoMoreThanAThousandHeadersWithNames) {
  std::vector<Warning> warnings;
  const std::string docx = docxOfSections(
      1100, [](int i) { return i < 1099 ? "Section " + std::to_string(i) : "Section 7"; }, &warnings);
  EXPECT_EQ(headersOf(docx), 1001) << "999 that name a section, one that names none, and the footer";
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_EQ(warnings[0].message, "the name of a section in its header or footer, as too many differ");
  EXPECT_EQ(warnings[0].count, 100u);
  EXPECT_TRUE(has(partOf(docx, "word/header1000.xml"), "<w:t>Section 998</w:t>"));
  EXPECT_FALSE(has(partOf(docx, "word/header1001.xml"), "<w:t>"));
  EXPECT_TRUE(partOf(docx, "word/document.xml").ends_with("w:gutter=\"0\"/></w:sectPr>\n</w:body></w:document>\n"));
  EXPECT_TRUE(has(partOf(docx, "word/document.xml").substr(partOf(docx, "word/document.xml").rfind("<w:sectPr>")),
                  "r:id=\"rIdHeader9\""))
      << "a name that is known is still shown";
}

TEST(DocxParts, HaveNoMoreThanAMegabyteOfNamesInHeaders) {
  std::vector<Warning> warnings;
  const std::string docx = docxOfSections(
      12, [](int i) { return std::string(100000, static_cast<char>('a' + i)); }, &warnings);
  EXPECT_EQ(headersOf(docx), 10 + 1 + 1);
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_EQ(warnings[0].count, 2u);
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

// Word's limit is 22 inches, 558.8 millimetres.
TEST(DocxParts, HaveNoPaperThatWordRefuses) {
  const auto sizeOf = [](std::string_view paper, std::vector<Warning>& warnings) {
    const std::string text = partOf(docxOf([](Document& document) { document.paragraph("x"); },
                                           {{"paper", paper}, {"margins", "200mm"}}, &warnings),
                                    "word/document.xml");
    const std::size_t at = text.find("<w:pgSz");
    return text.substr(at, text.find(" w:header=", at) - at);
  };
  std::vector<Warning> warnings;
  EXPECT_EQ(sizeOf("558.8x558.8", warnings),
            "<w:pgSz w:w=\"31680\" w:h=\"31680\"/>"
            "<w:pgMar w:top=\"10560\" w:right=\"10560\" w:bottom=\"10560\" w:left=\"10560\"");
  EXPECT_TRUE(warnings.empty());
  EXPECT_EQ(sizeOf("1200x558.9", warnings), sizeOf("558.8x558.8", warnings));
  warnings.clear();
  sizeOf("1200x558.9", warnings);
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_EQ(warnings[0].message, "paper longer than 22 inches, Word's limit, is cut to that");
  EXPECT_EQ(warnings[0].count, 1u);
}
