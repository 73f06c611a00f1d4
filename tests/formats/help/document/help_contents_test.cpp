#include "formats/help/document/made_help.h"

using namespace scrivalen::test;

TEST(HelpContents, HaveATopicForEachHeadingOfLevelOneOrTwo) {
  MadeHelp help;
  help.heading(1, "First");
  help.paragraph("one");
  help.heading(2, "Inside");
  help.heading(3, "Deeper");
  help.heading(1, "Second");
  EXPECT_EQ(help.contents(),
            "  topic1.htm: First\n"
            "    topic2.htm: Inside\n"
            "  topic3.htm: Second\n");
  EXPECT_EQ(help.body("topic1.htm"), "<h1 id=\"first\">First</h1>\n<p>one</p>\n");
  EXPECT_EQ(help.body("topic2.htm"), "<h2 id=\"inside\">Inside</h2>\n<h3 id=\"deeper\">Deeper</h3>\n");
  EXPECT_EQ(help.body("topic3.htm"), "<h1 id=\"second\">Second</h1>\n");
}

TEST(HelpContents, HaveATopicWithTheDocumentsTitleForWhatComesFirst) {
  MadeHelp help;
  help.setting("title", "A & B");
  help.paragraph("before");
  help.heading(2, "First");
  EXPECT_EQ(help.contents(), "  topic1.htm: A &amp; B\n    topic2.htm: First\n");
  EXPECT_EQ(help.body("topic1.htm"), "<h1 class=\"title\">A &amp; B</h1>\n<p>before</p>\n");
}

TEST(HelpContents, NameTheTitleOnceIfItIsTheFirstHeadingsToo) {
  MadeHelp help;
  help.setting("title", "Stock");
  help.setting("show-title", "no");
  help.paragraph("before");
  help.heading(1, "Stock");
  help.paragraph("after");
  help.heading(1, "Stock");
  EXPECT_EQ(help.contents(), "  topic1.htm: Stock\n  topic2.htm: Stock\n");
  EXPECT_EQ(help.body("topic1.htm"), "<p>before</p>\n<h1 id=\"stock\">Stock</h1>\n<p>after</p>\n");
}

TEST(HelpContents, HaveATopicForEachSectionWithItsHeadingsInside) {
  MadeHelp help;
  help.section("Sales", "sales");
  help.paragraph("text");
  help.heading(1, "North");
  help.heading(2, "Towns");
  help.end();
  help.section("Costs");
  help.end();
  help.heading(1, "Outside");
  EXPECT_EQ(help.contents(),
            "  topic1.htm: Sales\n"
            "    topic2.htm: North\n"
            "      topic3.htm: Towns\n"
            "  topic4.htm: Costs\n"
            "  topic5.htm: Outside\n");
  EXPECT_EQ(help.body("topic1.htm"), "<section id=\"sales\" aria-label=\"Sales\">\n<p>text</p>\n</section>\n");
  EXPECT_EQ(help.body("topic2.htm"), "<h1 id=\"north\">North</h1>\n");
  EXPECT_EQ(help.body("topic4.htm"), "<section aria-label=\"Costs\">\n</section>\n");
}

TEST(HelpContents, NameTheHeadingThatBeginsASectionUnlessItHasTheSectionsName) {
  MadeHelp help;
  help.section("Sales");
  help.heading(1, "Sales of May");
  help.heading(1, "Sales of June");
  help.end();
  help.section("Costs");
  help.heading(1, "Costs");
  help.end();
  EXPECT_EQ(help.contents(),
            "  topic1.htm: Sales\n"
            "    topic1.htm: Sales of May\n"
            "    topic2.htm: Sales of June\n"
            "  topic3.htm: Costs\n");
}

TEST(HelpContents, HaveATopicForASectionWithoutANameByItsHeading) {
  MadeHelp help;
  help.section("", "one");
  help.heading(2, "Sales");
  help.end();
  help.section("");
  help.end();
  help.section("");
  help.paragraph("text");
  help.end();
  EXPECT_EQ(help.contents(), "  topic1.htm: Sales\n  topic2.htm: -\n");
  EXPECT_EQ(help.body("topic1.htm"), "<section id=\"one\">\n<h2 id=\"sales\">Sales</h2>\n</section>\n");
}

TEST(HelpContents, ContinueTheTopicAfterASection) {
  MadeHelp help;
  help.section("Sales");
  help.end();
  help.paragraph("after");
  EXPECT_EQ(help.body("topic1.htm"), "<section aria-label=\"Sales\">\n</section>\n<p>after</p>\n");
}

TEST(HelpContents, HaveNoTopicForHeadingsInsideListsAndQuotesOrWithoutText) {
  MadeHelp help;
  help.heading(1, "Only");
  EXPECT_EQ(scrivalen_begin_quote(help), SCRIVALEN_OK);
  help.heading(1, "Quoted");
  help.end();
  help.heading(1, "");
  EXPECT_EQ(help.contents(), "  topic1.htm: Only\n");
}

TEST(HelpContents, AreThoseOfTheHelpFileRatherThanTheDocuments) {
  MadeHelp help;
  EXPECT_EQ(scrivalen_begin_contents(help), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_contents_item(help, 1, "a", "A", kNul), SCRIVALEN_OK);
  help.end();
  help.heading(1, "A");
  EXPECT_EQ(help.contents(), "  topic1.htm: A\n");
  EXPECT_EQ(help.body("topic1.htm"), "<h1 id=\"a\">A</h1>\n");
}

TEST(HelpContents, OfAnEmptyDocumentHaveOneTopic) {
  MadeHelp help;
  EXPECT_EQ(help.contents(), "  topic1.htm: -\n");
  EXPECT_EQ(help.body("topic1.htm"), "");
}

TEST(HelpContents, AreNotBrokenByHostileNames) {
  MadeHelp help;
  help.setting("title", "[FILES]\n/etc/passwd");
  help.section("\n[OPTIONS]\"><OBJECT>", "\"><x");
  help.heading(1, "\xE6\x97\xA5 ../../x\"\r\n</UL>");
  help.end();
  EXPECT_EQ(help.contents(),
            "  topic1.htm:  [OPTIONS]&quot;&gt;&lt;OBJECT&gt;\n"
            "    topic1.htm: &#26085; ../../x&quot; &lt;/UL&gt;\n");
  const std::string project = help.file("report.hhp");
  EXPECT_NE(project.find("\nTitle=[FILES] /etc/passwd\n[FILES]\ntopic1.htm\n"), std::string::npos) << project;
}
