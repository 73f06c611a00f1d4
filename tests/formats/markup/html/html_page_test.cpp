#include "html_page_maker.h"

#include "support/files.h"
#include "system/files/files.h"

namespace scrivalen::document {
namespace {

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
