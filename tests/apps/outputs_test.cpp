#include "command_support.h"
#include "support/documents/workbook.h"
#include "support/pdf/pdf_pages.h"

#include <gtest/gtest.h>

namespace scrivalen::command::test {
namespace {

using scrivalen::test::PdfPages;

bool holds(const std::string& text, std::string_view part) { return text.find(part) != std::string::npos; }

// The only output of a run with these options.
std::string bytesOf(std::string_view markdown, const std::string& name, const std::vector<std::string>& options = {}) {
  CommandRun run;
  run.environment.variables["SOURCE_DATE_EPOCH"] = "86400";
  std::vector<std::string> arguments = {"@/in.md", "-o", "@/" + name};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const Result result = run.with("in.md", markdown).run(arguments);
  EXPECT_EQ(result.error, "");
  return run.bytes(name);
}

constexpr std::string_view kMarkdown =
    "# Stock\n"
    "\n"
    "What *is* **on** the ~~old~~ `shelves`, see [below](#tea) or\n"
    "<https://example.org>.\n"
    "\n"
    "1. first\n"
    "2. second\n"
    "   - [x] inner\n"
    "\n"
    "> quoted\n"
    "\n"
    "```c\n"
    "int x;\n"
    "```\n"
    "\n"
    "## Tea\n"
    "\n"
    "| Item | Price |\n"
    "|:----:|------:|\n"
    "| Tea  |   4.5 |\n"
    "\n"
    "---\n";

TEST(Outputs, HaveEveryPartInText) {
  EXPECT_EQ(bytesOf(kMarkdown, "a.txt"),
            "Stock\n"
            "=====\n"
            "\n"
            "What is on the old shelves, see below or https://example.org.\n"
            "\n"
            "1. first\n"
            "2. second\n"
            "   - [x] inner\n"
            "\n"
            "> quoted\n"
            "\n"
            "    int x;\n"
            "\n"
            "Tea\n"
            "---\n"
            "\n"
            "Item  Price\n"
            "----  -----\n"
            "Tea     4.5\n"
            "\n"
            "--------------------------------------------------------------------------------\n");
}

TEST(Outputs, HaveEveryPartInHtml) {
  EXPECT_EQ(
      htmlOf(kMarkdown),
      "<h1 id=\"stock\">Stock</h1>\n"
      "<p>What <em>is</em> <strong>on</strong> the <del>old</del> <code>shelves</code>, see <a href=\"#tea\">below</a>"
      " or <a href=\"https://example.org\">https://example.org</a>.</p>\n"
      "<ol>\n"
      "<li>first</li>\n"
      "<li>second\n<ul>\n"
      "<li class=\"task\"><input type=\"checkbox\" checked disabled> inner</li>\n"
      "</ul>\n"
      "</li>\n"
      "</ol>\n"
      "<blockquote>\n"
      "<p>quoted</p>\n"
      "</blockquote>\n"
      "<pre><code class=\"language-c\">int x;\n"
      "</code></pre>\n"
      "<h2 id=\"tea\">Tea</h2>\n"
      "<table>\n"
      "<thead>\n"
      "<tr><th scope=\"col\" style=\"text-align:center\">Item</th><th scope=\"col\" "
      "style=\"text-align:right\">Price</th></tr>\n"
      "</thead>\n"
      "<tbody>\n"
      "<tr><td style=\"text-align:center\">Tea</td><td style=\"text-align:right\">4.5</td></tr>\n"
      "</tbody>\n"
      "</table>\n"
      "<hr>");
}

TEST(Outputs, HaveEveryPartInMarkdown) {
  EXPECT_EQ(bytesOf(kMarkdown, "a.md"),
            "# Stock\n"
            "\n"
            "What _is_ **on** the ~~old~~ `shelves`, see [below](#tea) or <https://example.org>.\n"
            "\n"
            "1. first\n"
            "2. second\n"
            "   - [x] inner\n"
            "\n"
            "> quoted\n"
            "\n"
            "```c\n"
            "int x;\n"
            "```\n"
            "\n"
            "## Tea\n"
            "\n"
            "| Item  | Price |\n"
            "| :---: | ----: |\n"
            "|  Tea  |   4.5 |\n"
            "\n"
            "***\n");
}

TEST(Outputs, HaveEveryPartInXml) {
  EXPECT_EQ(
      bytesOf(kMarkdown, "a.xml"),
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<document xmlns=\"urn:scrivalen:document:1\" title=\"Stock\" language=\"en\" created=\"1970-01-02T00:00:00Z\">\n"
      "<heading level=\"1\" id=\"stock\">Stock</heading>\n"
      "<paragraph>What <emphasis>is</emphasis> <strong>on</strong> the <deleted>old</deleted> "
      "<inlinecode>shelves</inlinecode>, see <link address=\"#tea\">below</link> or "
      "<link address=\"https://example.org\">https://example.org</link>.</paragraph>\n"
      "<list ordered=\"true\" first=\"1\" tight=\"true\">\n"
      "<item>first</item>\n"
      "<item>second<list tight=\"true\">\n"
      "<item task=\"done\">inner</item>\n"
      "</list>\n"
      "</item>\n"
      "</list>\n"
      "<quote>\n"
      "<paragraph>quoted</paragraph>\n"
      "</quote>\n"
      "<code language=\"c\">int x;\n"
      "</code>\n"
      "<heading level=\"2\" id=\"tea\">Tea</heading>\n"
      "<table>\n"
      "<column element=\"cell\" align=\"center\"/>\n"
      "<column element=\"cell\" align=\"right\"/>\n"
      "<row header=\"true\"><cell>Item</cell><cell>Price</cell></row>\n"
      "<row><cell>Tea</cell><cell>4.5</cell></row>\n"
      "</table>\n"
      "<rule/>\n"
      "</document>\n");
}

TEST(Outputs, HaveEveryTextInRtf) {
  const std::string rtf = bytesOf(kMarkdown, "a.rtf", {"--landscape"});
  for (const std::string_view text : {"Stock", "{\\i is}", "{\\b on}", "{\\strike old}", "shelves", "below", "first",
                                      "second", "inner", "quoted", "int x;", "Tea", "Price", "4.5", "\\landscape"}) {
    EXPECT_TRUE(holds(rtf, text)) << text << '\n' << rtf;
  }
}

TEST(Outputs, HaveEveryPartInPdf) {
  const PdfPages pdf(bytesOf(kMarkdown, "a.pdf", {"--landscape"}));
  EXPECT_EQ(pdf.problems(), std::vector<std::string>());
  EXPECT_EQ(pdf.lines(), (std::vector<std::string>{
                             "Stock", "What is on the old shelves, see below or https://example.org.", "1.first",
                             "2.second", "\u2611inner", "quoted", "int x;", "Tea", "ItemPrice", "Tea4.5"}));
  ASSERT_EQ(pdf.links().size(), 2u);
  EXPECT_EQ(pdf.links()[0].address, "#tea");
  EXPECT_EQ(pdf.links()[1].address, "https://example.org");
  EXPECT_EQ(pdf.places().count("tea"), 1u);
  ASSERT_EQ(pdf.outline().size(), 2u);
  EXPECT_EQ(pdf.outline()[1].title, "Tea");
  EXPECT_GT(pdf.pages()[0].width, pdf.pages()[0].height);
}

TEST(Outputs, HaveEveryTextInAWordDocument) {
  CommandRun run;
  const Result result = run.with("in.md", kMarkdown).run({"@/in.md", "--landscape", "-o", "@/a.docx"});
  EXPECT_EQ(result.error, "");
  const std::string text = scrivalen::test::workbookPart(run.widePath("a.docx"), "word/document.xml");
  for (const std::string_view part :
       {"Stock", "<w:i/><w:iCs/></w:rPr><w:t>is<", "<w:strike/></w:rPr><w:t>old<", "shelves", "below", "first",
        "second", "inner", "quoted", "int x;", "Tea", "Price", "4.5", "w:orient=\"landscape\""}) {
    EXPECT_TRUE(holds(text, part)) << part << '\n' << text;
  }
}

TEST(Outputs, HaveEveryTextInASpreadsheetWithItsStyleSheet) {
  CommandRun run;
  const Result result = run.with("in.csv", "a,b\n1,x\n")
                            .with("s.css", "sheet { name: Rows }")
                            .run({"@/in.csv", "--styles", "@/s.css", "-o", "@/a.xlsx"});
  EXPECT_EQ(result.error, "scrivalen: warning: '@/a.xlsx': the style sheet is not understood: 'sheet' has no 'name'\n");
  EXPECT_EQ(scrivalen::test::readCells(run.widePath("a.xlsx")),
            "A1 \"a\" bold fill=F2F2F2\nB1 \"b\" bold fill=F2F2F2\nA2 1 0\nB2 \"x\"\n");
}

TEST(Outputs, TakeTheOptionsOfText) {
  EXPECT_EQ(bytesOf("caf\xC3\xA9\n", "a.txt", {"--single-byte"}), "caf\xE9\n");
  EXPECT_EQ(bytesOf("| a | b |\n|---|---|\n| 1 | |\n", "a.txt", {"--separator", "\\t|"}), "a\t|b\n1\t|\n");
}

TEST(Outputs, HaveTheTableOfContentsAfterAHeadingThatComesFirst) {
  EXPECT_EQ(
      htmlOf("# T\n\n## A\n\n### B\n\n# C\n", {"--toc"}),
      "<h1 id=\"t\">T</h1>\n<nav>\n<ol>\n<li><a href=\"#a\">A</a>\n<ol>\n<li><a href=\"#b\">B</a></li>\n</ol>\n</li>\n"
      "<li><a href=\"#c\">C</a></li>\n</ol>\n</nav>\n"
      "<h2 id=\"a\">A</h2>\n<h3 id=\"b\">B</h3>\n<h1 id=\"c\">C</h1>");
}

TEST(Outputs, HaveTheTableOfContentsBeforeOtherContent) {
  EXPECT_EQ(bytesOf("intro\n\n# A\n\n# A\n", "a.md", {"--toc"}), "- [A](#a)\n- [A](#a-1)\n\nintro\n\n# A\n\n# A\n");
}

TEST(Outputs, HaveNoEmptyTableOfContents) {
  EXPECT_EQ(bytesOf("# A\n\nb\n", "a.md", {"--toc"}), "# A\n\nb\n");
  EXPECT_EQ(bytesOf("#\n\nb\n", "b.md", {"--toc"}), bytesOf("#\n\nb\n", "b.md"));
}

TEST(Outputs, LinkToPlacesWhoseLettersAreEncoded) {
  EXPECT_EQ(htmlOf("# Caf\xC3\xA9\n\n[a](#caf%C3%A9)\n"),
            "<h1 id=\"caf\xC3\xA9\">Caf\xC3\xA9</h1>\n<p><a href=\"#caf\xC3\xA9\">a</a></p>");
}

// Deeper ones would be refused by the library; the parser has no limit of its own.
TEST(Outputs, ShowAllTextOfDeepNesting) {
  CommandRun run;
  const Result quotes = run.with("in.md", std::string(10000, '>') + " deep\n\nend").run({"@/in.md", "-o", "@/a.txt"});
  EXPECT_EQ(quotes.status, 0);
  EXPECT_TRUE(holds(quotes.error, "quotes and lists are nested more than 900 levels deep")) << quotes.error;
  EXPECT_TRUE(holds(run.bytes("a.txt"), "> deep\n")) << run.bytes("a.txt").size();
  EXPECT_TRUE(run.bytes("a.txt").ends_with("\n\nend\n"));
  std::string lists;
  for (std::size_t depth = 0; depth < 1000; ++depth) {
    lists += std::string(2 * depth, ' ') + "- item" + std::to_string(depth) + "\n";
  }
  EXPECT_EQ(run.with("in.md", lists + "\nend").run({"@/in.md", "-o", "@/a.xml"}).status, 0);
  for (const std::string_view item :
       {"<item>item0<", "<item>item449<", "<paragraph>item450</paragraph>", "<paragraph>item999</paragraph>"}) {
    EXPECT_TRUE(holds(run.bytes("a.xml"), item)) << item;
  }
}

TEST(Outputs, WarnOnceOfRowsThatDiffer) {
  CommandRun run;
  const Result result = run.with("in.csv", "a,b\n1\n2\n1,2,3\n").run({"@/in.csv", "-o", "@/a.txt"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error,
            "scrivalen: warning: '@/in.csv': 1 row has more cells than the header, in line 4\n"
            "scrivalen: warning: '@/in.csv': 2 rows have fewer cells than the header, the first in line 2\n");
  EXPECT_EQ(run.bytes("a.txt"), "a  b\n-  -  -\n1\n2\n1  2  3\n");
}

}  // namespace
}  // namespace scrivalen::command::test
