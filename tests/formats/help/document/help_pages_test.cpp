#include "formats/help/document/made_help.h"
#include "support/documents/pictures.h"
#include "support/files.h"
#include "system/files/files.h"

using namespace scrivalen::test;

TEST(HelpPages, SayTheirLanguageCodePageAndTitle) {
  MadeHelp help;
  help.setting("language", "ru");
  help.setting("author", "A & B");
  help.heading(1, "Увод <1> é");
  help.paragraph("Ёж é");
  const std::string page = help.file("topic1.htm");
  constexpr std::string_view kHead =
      "<!DOCTYPE html>\n"
      "<html lang=\"ru\">\n"
      "<head>\n"
      "<meta charset=\"windows-1251\">\n"
      "<meta http-equiv=\"X-UA-Compatible\" content=\"IE=edge\">\n"
      "<title>\xD3\xE2\xEE\xE4 &lt;1&gt; &#233;</title>\n"
      "<meta name=\"author\" content=\"A &amp; B\">\n"
      "<style>\n";
  EXPECT_EQ(page.substr(0, kHead.size()), kHead);
  EXPECT_TRUE(page.ends_with("<p>\xA8\xE6 &#233;</p>\n</main>\n</body>\n</html>\n")) << page;
  EXPECT_NE(help.file("report.hhp").find("\nLanguage=0x419 Russian\n"), std::string::npos);
}

TEST(HelpPages, HaveTheFontButNoPaperHeaderOrFooter) {
  MadeHelp help;
  help.setting("font", "Größe");
  help.setting("header", "{title}||{page}");
  help.setting("paper", "A5");
  help.paragraph("text");
  const std::string page = help.file("topic1.htm");
  EXPECT_NE(page.find("body{font-family:\"Gr\\f6 \\df e\","), std::string::npos) << page;
  EXPECT_EQ(page.find("@page"), std::string::npos);
}

TEST(HelpPages, HoldWholeTablesThatNoPaperNarrows) {
  MadeHelp help;
  help.setting("paper", "50x50");
  EXPECT_EQ(scrivalen_begin_table(help, nullptr, 0, nullptr), SCRIVALEN_OK);
  for (int i = 0; i < 600; ++i) {
    EXPECT_EQ(scrivalen_begin_row(help, i == 0 ? 1 : 0), SCRIVALEN_OK);
    EXPECT_EQ(scrivalen_cell(help, "a word of a table that is wider than the paper", kNul), SCRIVALEN_OK);
    EXPECT_EQ(scrivalen_cell_integer(help, i), SCRIVALEN_OK);
    help.end();
  }
  help.end();
  const std::string body = help.body("topic1.htm");
  EXPECT_TRUE(body.starts_with("<table>\n<thead>\n<tr><th scope=\"col\">a word")) << body.substr(0, 200);
  EXPECT_NE(body.find(">599</td></tr>\n</tbody>\n</table>\n"), std::string::npos);
  EXPECT_EQ(help.contents(), "  topic1.htm: -\n");
}

TEST(HelpPages, ReferToPicturesInTheProject) {
  MadeHelp help;
  const std::string png = greyPng(2, 2);
  const std::string jpeg = greyJpeg(3, 3);
  for (const std::string* picture : {&png, &jpeg, &png}) {
    EXPECT_EQ(scrivalen_image(help, picture->data(), picture->size(), "a \"grey\"", 0), SCRIVALEN_OK);
  }
  EXPECT_EQ(help.body("topic1.htm"),
            "<p><img src=\"picture1.png\" alt=\"a &quot;grey&quot;\" width=\"2\"></p>\n"
            "<p><img src=\"picture2.jpg\" alt=\"a &quot;grey&quot;\" width=\"3\"></p>\n"
            "<p><img src=\"picture1.png\" alt=\"a &quot;grey&quot;\" width=\"2\"></p>\n");
  EXPECT_TRUE(help.file("report.hhp").ends_with("[FILES]\ntopic1.htm\npicture1.png\npicture2.jpg\n"));
  EXPECT_EQ(help.file("picture1.png"), png);
  EXPECT_EQ(help.file("picture2.jpg"), jpeg);
}

TEST(HelpPages, AreMadeFromATemplateInTheCodePage) {
  const TemporaryFolder folder;
  writeBytes(
      folder / L"t.htm",
      "<html><head><META Charset='UTF-8'><title>%TITLE%</title></head><body>%NAME% é 日 %BODY%<hr></body></html>");
  MadeHelp help;
  help.setting("template", scrivalen::narrowPath(folder / L"t.htm").c_str());
  help.setting("property:NAME", "v & w");
  help.setting("title", "The title");
  help.heading(1, "One %TITLE%");
  help.heading(1, "Two");
  EXPECT_EQ(help.file("topic1.htm"),
            "<html><head><META Charset='windows-1252'><title>One %TITLE%</title></head>"
            "<body>v &amp; w \xE9 &#26085; <h1 id=\"one-title\">One %TITLE%</h1>\n<hr></body></html>");
  EXPECT_NE(help.file("topic2.htm").find("<title>Two</title>"), std::string::npos);
}

TEST(HelpPages, SayTheirCodePageInATemplateThatSaysNone) {
  const TemporaryFolder folder;
  writeBytes(folder / L"t.htm", "<head><title>charset=x</title></head>%BODY%");
  MadeHelp help;
  help.setting("template", scrivalen::narrowPath(folder / L"t.htm").c_str());
  help.paragraph("text");
  EXPECT_EQ(help.file("topic1.htm"),
            "<head><meta charset=\"windows-1252\"><title>charset=x</title></head><p>text</p>\n");
}

TEST(HelpPages, HoldLettersThatAreDividedBetweenBlocks) {
  const std::string text = "xy" + std::string(65536, '.');
  for (std::size_t shift = 0; shift < 4; ++shift) {
    std::string letters = text.substr(shift);
    for (int i = 0; i < 40000; ++i) {
      letters += "日";
    }
    MadeHelp help;
    help.paragraph(letters.c_str());
    std::string expected = "<p>" + text.substr(shift);
    for (int i = 0; i < 40000; ++i) {
      expected += "&#26085;";
    }
    ASSERT_TRUE(help.body("topic1.htm") == expected + "</p>\n") << shift;
  }
}

TEST(HelpPages, TakeEveryCall) {
  MadeHelp help;
  for (const Step& step : contentSteps()) {
    EXPECT_EQ(step.call(help), SCRIVALEN_OK) << step.name << ": " << help.error();
  }
  EXPECT_NE(help.file("topic1.htm"), "none");
}

TEST(HelpPages, AreTheSameForTheSameCalls) {
  std::string first;
  for (int i = 0; i < 2; ++i) {
    MadeHelp help;
    EXPECT_EQ(writeContent(help), SCRIVALEN_OK);
    EXPECT_EQ(help.warnings().find("compiler"), std::string::npos);
    first = first.empty() ? help.stream.bytes : first;
    EXPECT_EQ(help.stream.bytes, first);
  }
}
