#include "html_page_maker.h"

#include "support/documents/pictures.h"
#include "support/files.h"
#include "system/files/files.h"

namespace scrivalen::document {
namespace {

using test::greyJpeg;
using test::greyPng;
using test::TemporaryFolder;
using test::writeBytes;

std::string pageOf(const SettingList& list) {
  return htmlOf([](DocumentWriter& writer) { writer.write({.kind = EventKind::Rule}); }, list).page;
}

// The page with a template.
std::string filled(std::string_view page, SettingList list = {}) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"page.htm";
  writeBytes(path, page);
  list.emplace_back("template", narrowPath(path));
  return pageOf(list);
}

TEST(HtmlPages, BeginWithTheirLanguageTitleAndProperties) {
  const std::string page = pageOf({{"title", "A < B"},
                                   {"author", "\"Jane\""},
                                   {"subject", "S"},
                                   {"keywords", "k, l"},
                                   {"language", "de"},
                                   {"date", "2026-01-31"}});
  const std::string start =
      "<!DOCTYPE html>\n"
      "<html lang=\"de\">\n"
      "<head>\n"
      "<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      "<title>A &lt; B</title>\n"
      "<meta name=\"author\" content=\"&quot;Jane&quot;\">\n"
      "<meta name=\"description\" content=\"S\">\n"
      "<meta name=\"keywords\" content=\"k, l\">\n"
      "<meta name=\"dcterms.date\" content=\"2026-01-31\">\n"
      "<style>\n";
  EXPECT_EQ(page.substr(0, start.size()), start);
  EXPECT_TRUE(page.ends_with("</style>\n</head>\n<body>\n<main>\n<hr>\n</main>\n</body>\n</html>\n"));
}

TEST(HtmlPages, AreReadFromTheRightInSuchALanguage) {
  for (const std::string_view language : {"ar", "he-IL", "fa", "ur-PK", "az-Arab", "ku-Arab"}) {
    EXPECT_NE(pageOf({{"language", std::string(language)}}).find(" dir=\"rtl\">\n<head>"), std::string::npos);
  }
  for (const std::string_view language : {"en", "ar-Latn", "ku", "zh-Hant-TW", "arn", "en-x-arab"}) {
    EXPECT_EQ(pageOf({{"language", std::string(language)}}).find("rtl"), std::string::npos) << language;
  }
}

TEST(HtmlPages, HaveATitleThatIsNotEmpty) { EXPECT_NE(pageOf({}).find("<title>-</title>"), std::string::npos); }

TEST(HtmlPages, ArePrintedOnThePaperOfTheSettings) {
  EXPECT_NE(pageOf({}).find("@page{size:A4;margin:20mm 20mm 20mm 20mm;"), std::string::npos);
  EXPECT_NE(pageOf({{"paper", "letter"}, {"landscape", "yes"}, {"margins", "1in 10mm 15.5mm 2cm"}})
                .find("@page{size:Letter landscape;margin:25.4mm 10mm 15.5mm 20mm;"),
            std::string::npos);
  EXPECT_NE(pageOf({{"paper", "100x150"}, {"landscape", "yes"}}).find("@page{size:150mm 100mm;"), std::string::npos);
}

TEST(HtmlPages, PrintHeaderAndFooterInTheMargins) {
  const std::string page = pageOf({{"title", "A \"</style>\\"},
                                   {"clock", "2026-01-31 12:00:00"},
                                   {"dates", "dd.mm.yyyy"},
                                   {"header", "{title}||{date}"},
                                   {"footer", "{section}|{page} of {pages}|x {section}"}});
  EXPECT_NE(page.find("@top-left{content:\"A \\22 \\3C /style>\\5C \"}\n"
                      "@top-right{content:\"31.01.2026\"}\n"
                      "@bottom-left{content:string(section)}\n"
                      "@bottom-center{content:counter(page) \" of \" counter(pages)}\n"
                      "@bottom-right{content:\"x \";content:\"x \" string(section)}\n"
                      "}\n"
                      "section{string-set:section attr(aria-label)}\n"
                      "</style>\n"),
            std::string::npos)
      << page;
}

// The rules of the page with a picture in its header.
std::string marginsWith(const std::string& picture, SettingList list) {
  const TemporaryFolder folder;
  writeBytes(folder / L"logo", picture);
  list.emplace_back("header-image", narrowPath(folder / L"logo"));
  const std::string page = pageOf(list);
  const std::size_t begin = page.find("@top-left");
  return page.substr(begin, page.find("</style>") - begin);
}

TEST(HtmlPages, PrintAPictureInTheHeader) {
  const std::string pixel = "\x89PNG\r\n\x1A\n" +
                            std::string("\0\0\0\rIHDR\0\0\0\x01\0\0\0\x01\x08\0\0\0\0\x3A\x7E\x9B\x55", 25) +
                            std::string("\0\0\0\nIDAT\x78\x9C\x63\x60\0\0\0\x02\0\x01\x48\xAF\xA4\x71", 22) +
                            std::string("\0\0\0\0IEND\xAE\x42\x60\x82", 12);
  EXPECT_EQ(marginsWith(pixel, {}),
            "@top-left{content:url(\"data:image/svg+xml,"
            "%3Csvg xmlns='http://www.w3.org/2000/svg' width='0.75pt' height='0.75pt'%3E"
            "%3Cimage width='100%25' height='100%25' href='data:image/png;base64,"
            "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAAAAAA6fptVAAAACklEQVR4nGNgAAAAAgABSK+kcQAAAABJRU5ErkJggg=='/%3E"
            "%3C/svg%3E\")}\n"
            "}\n");
}

TEST(HtmlPages, PutThePictureBeforeTheLeftPartOfTheHeader) {
  const std::string margins = marginsWith(greyJpeg(8, 8), {{"header", "{section} x|y"}});
  EXPECT_NE(margins.find(";base64,/9j/"), std::string::npos) << margins;
  EXPECT_NE(margins.find("'/%3E%3C/svg%3E\") \" \" \" x\";content:url("), std::string::npos) << margins;
  EXPECT_NE(margins.find("'/%3E%3C/svg%3E\") \" \" string(section) \" x\"}\n@top-center{content:\"y\"}\n"),
            std::string::npos)
      << margins;
}

TEST(HtmlPages, KeepThePictureInBrowsersThatKnowNoSections) {
  const std::string margins = marginsWith(greyPng(4, 2), {{"header", "{section}"}});
  EXPECT_NE(margins.find("'/%3E%3C/svg%3E\");content:url("), std::string::npos) << margins;
  EXPECT_NE(margins.find("'/%3E%3C/svg%3E\") \" \" string(section)}\n"), std::string::npos) << margins;
}

TEST(HtmlPages, FitThePictureIntoTheTopMargin) {
  const SettingList list = {{"margins", "60pt 50pt 50pt 50pt"}, {"paper", "Letter"}};
  EXPECT_NE(marginsWith(greyPng(400, 200), list).find(" width='72pt' height='36pt'%3E"), std::string::npos);
  EXPECT_NE(marginsWith(greyPng(2048, 8), list).find(" width='256pt' height='1pt'%3E"), std::string::npos);
}

TEST(HtmlPages, AreWrittenWithAWarningWithoutThePictureOfTheHeader) {
  const TemporaryFolder folder;
  const std::string path = narrowPath(folder / L"none.png");
  const HtmlResult result = htmlOf([](DocumentWriter&) {}, {{"header-image", path}});
  EXPECT_EQ(result.page, htmlOf([](DocumentWriter&) {}).page);
  ASSERT_EQ(result.warnings.size(), 1U);
  EXPECT_EQ(result.warnings[0].code, WarningCode::SomethingLeftOut);
  EXPECT_TRUE(result.warnings[0].message.starts_with("cannot use the picture '" + path + "' of the header: "))
      << result.warnings[0].message;
}

TEST(HtmlPages, SetEachParagraphInTheDirectionOfItsFirstLetter) {
  EXPECT_NE(pageOf({}).find("\np,h1,h2,h3,h4,h5,h6{unicode-bidi:plaintext}\n"), std::string::npos);
}

TEST(HtmlPages, PrintAPictureOnOnePage) {
  EXPECT_NE(pageOf({}).find("img{max-height:95vh;object-fit:contain;object-position:left}\n"), std::string::npos);
}

TEST(HtmlPages, SpaceTheItemsOfNestedListsEvenly) {
  const std::string page = pageOf({});
  EXPECT_NE(page.find("\nli{margin-bottom:.25em}\n"), std::string::npos);
  EXPECT_NE(page.find("\nli>ul,li>ol{margin:.25em 0 .2em}\n"), std::string::npos);
}

TEST(HtmlPages, PreferTheFontOfTheSettings) {
  EXPECT_NE(pageOf({{"font", "My \"Font\""}}).find("body{font-family:\"My \\22 Font\\22 \",system-ui"),
            std::string::npos);
}

TEST(HtmlTemplates, HaveTheDocumentInTheirBody) {
  EXPECT_EQ(filled("<html>%BODY%</html>\r\n"), "<html><hr>\n</html>\r\n");
  EXPECT_EQ(filled("<html><body>x</body></html>\n"), "<html><body>x<hr>\n</body></html>\n");
  EXPECT_EQ(filled("x"), "x<hr>\n");
}

TEST(HtmlTemplates, AreFilledWithEscapedPropertiesInOnePass) {
  EXPECT_EQ(filled("%TITLE%|%AUTHOR%|%SUBJECT%|%KEYWORDS%|%LANGUAGE%|%DATE%|%X%|%Y%|%Z%|100%|%BODY%%TITLE%",
                   {{"title", "<%AUTHOR%>"},
                    {"author", "a"},
                    {"subject", "s"},
                    {"keywords", "k"},
                    {"language", "de"},
                    {"date", "today"},
                    {"property:X", "1 & 2"},
                    {"property:%Y%", "3"}}),
            "&lt;%AUTHOR%&gt;|a|s|k|de|today|1 &amp; 2|3|%Z%|100%|<hr>\n&lt;%AUTHOR%&gt;");
}

TEST(HtmlTemplates, LoseTheirByteOrderMark) { EXPECT_EQ(filled("\xEF\xBB\xBFx%BODY%"), "x<hr>\n"); }

TEST(HtmlTemplates, AreReadAsUtf8) {
  const TemporaryFolder folder;
  writeBytes(folder / L"page.htm", "\xC3\xA4\xE4\xE4%BODY%");
  const HtmlResult result = htmlOf([](DocumentWriter&) {}, {{"template", narrowPath(folder / L"page.htm")}});
  EXPECT_EQ(result.page, "\xC3\xA4\xEF\xBF\xBD\xEF\xBF\xBD");
  ASSERT_EQ(result.warnings.size(), 1U);
  EXPECT_EQ(result.warnings[0].code, WarningCode::CharactersReplaced);
  EXPECT_EQ(result.warnings[0].count, 2U);
}

TEST(HtmlTemplates, FailWithTheirNameWhenTheyAreMissing) {
  const TemporaryFolder folder;
  const std::string name = narrowPath(folder / L"none.htm");
  try {
    pageOf({{"template", name}});
    FAIL() << "no failure";
  } catch (const OutputFailure& failure) {
    EXPECT_EQ(failure.status(), Status::TemplateNotFound);
    EXPECT_TRUE(std::string_view(failure.what()).starts_with("The template '" + name + "' cannot be read. "))
        << failure.what();
  }
}

}  // namespace
}  // namespace scrivalen::document
