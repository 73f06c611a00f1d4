#include "formats/help/document/made_help.h"

using namespace scrivalen::test;

TEST(HelpLinks, LeadToOtherTopicsForwardsAndBackwards) {
  MadeHelp help;
  help.heading(1, "First");
  help.linkParagraph("#second");
  help.linkParagraph("#first");
  help.heading(1, "Second");
  help.linkParagraph("#first");
  help.linkParagraph("https://x.org/#first");
  EXPECT_EQ(help.body("topic1.htm"),
            "<h1 id=\"first\">First</h1>\n"
            "<p><a href=\"topic2.htm#second\">link</a></p>\n"
            "<p><a href=\"#first\">link</a></p>\n");
  EXPECT_EQ(help.body("topic2.htm"),
            "<h1 id=\"second\">Second</h1>\n"
            "<p><a href=\"topic1.htm#first\">link</a></p>\n"
            "<p><a href=\"https://x.org/#first\">link</a></p>\n");
}

TEST(HelpLinks, ThatLeadNowhereStayOnTheirPage) {
  MadeHelp help;
  help.linkParagraph("#nowhere");
  help.heading(1, "Second");
  EXPECT_EQ(help.body("topic1.htm"), "<p><a href=\"#nowhere\">link</a></p>\n");
}

TEST(HelpLinks, LeadToSectionsAndAnchorsOfAnyName) {
  MadeHelp help;
  help.linkParagraph("#s");
  help.linkParagraph("#a \"&%41\xE6\x97\xA5");
  help.section("S", "s");
  EXPECT_EQ(scrivalen_anchor(help, "a \"&%41\xE6\x97\xA5"), SCRIVALEN_OK);
  help.heading(1, "In it");
  help.end();
  EXPECT_EQ(help.body("topic1.htm"),
            "<p><a href=\"topic2.htm#s\">link</a></p>\n"
            "<p><a href=\"topic2.htm#a~20%22&amp;~2541&#26085;\">link</a></p>\n");
  EXPECT_EQ(help.body("topic2.htm"),
            "<section id=\"s\" aria-label=\"S\">\n"
            "<span id=\"a~20&quot;&amp;~2541&#26085;\"></span><h1 id=\"in-it\">In it</h1>\n"
            "</section>\n");
}

TEST(HelpLinks, LeadFromAndToCellsOfTables) {
  MadeHelp help;
  EXPECT_EQ(scrivalen_begin_table(help, nullptr, 0, nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_begin_row(help, 0), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_begin_cell(help, nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_anchor(help, "cell"), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_begin_link(help, "#second", nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_text(help, "t", kNul), SCRIVALEN_OK);
  for (int i = 0; i < 4; ++i) {
    help.end();
  }
  help.heading(1, "Second");
  help.linkParagraph("#cell");
  EXPECT_NE(help.body("topic1.htm").find("<td><span id=\"cell\"></span><a href=\"topic2.htm#second\">t</a></td>"),
            std::string::npos);
  EXPECT_NE(help.body("topic2.htm").find("<a href=\"topic1.htm#cell\">"), std::string::npos);
}

TEST(HelpLinks, LeadFromAndToMarkup) {
  MadeHelp help;
  EXPECT_EQ(scrivalen_raw(help, "html", "<p id=\"raw\"><a href=\"#second\">a</a>\x01</p>\n", kNul), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_raw(help, "xml", "<x/>", kNul), SCRIVALEN_OK);
  help.heading(1, "Second");
  help.linkParagraph("#raw");
  EXPECT_EQ(help.body("topic1.htm"), "<p id=\"raw\"><a href=\"topic2.htm#second\">a</a></p>\n");
  EXPECT_NE(help.body("topic2.htm").find("<a href=\"topic1.htm#raw\">"), std::string::npos);
}

TEST(HelpLinks, InCodeStayAsTheyAre) {
  MadeHelp help;
  EXPECT_EQ(scrivalen_begin_code(help, "html"), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_text(help, "<a href=\"#second\">", kNul), SCRIVALEN_OK);
  help.end();
  help.heading(1, "Second");
  EXPECT_EQ(help.body("topic1.htm"), "<pre><code class=\"language-html\">&lt;a href=\"#second\"&gt;</code></pre>\n");
}
