#include "command_support.h"

#include <gtest/gtest.h>

namespace scrivalen::command::test {
namespace {

TEST(HtmlOutput, HasParagraphsWithStyles) {
  EXPECT_EQ(htmlOf("**a** *b* `c<d` ~~e~~ f & g"),
            "<p><b>a</b> <i>b</i> <code>c&lt;d</code> <del>e</del> f &amp; g</p>");
}

TEST(HtmlOutput, GivesHeadingsAnIdForLinks) {
  EXPECT_EQ(htmlOf("# A *B* & C\n\n[up](#a-b--c)"),
            "<h1 id=\"a-b--c\">A <i>B</i> &amp; C</h1>\n<p><a href=\"#a-b--c\">up</a></p>");
}

TEST(HtmlOutput, HasLinksWithStylesAndTitles) {
  EXPECT_EQ(htmlOf("[a **b**](http://x/?p=1&q=2 \"T \\\"q\\\"\")"),
            "<p><a href=\"http://x/?p=1&amp;q=2\" title=\"T &quot;q&quot;\">a <b>b</b></a></p>");
}

TEST(HtmlOutput, PercentEncodesInvalidCharactersOfAddresses) {
  EXPECT_EQ(htmlOf("[a](<b c\"{}|^`\\\\é%20>)"), "<p><a href=\"b%20c%22%7B%7D%7C%5E%60%5Cé%20\">a</a></p>");
}

TEST(HtmlOutput, HasImages) {
  EXPECT_EQ(htmlOf("![a \"b\" <](c.png 'T')"), "<p><img src=\"c.png\" alt=\"a &quot;b&quot; &lt;\" title=\"T\"></p>");
}

TEST(HtmlOutput, BreaksLinesOnlyAtHardBreaks) { EXPECT_EQ(htmlOf("a\nb  \nc\\\nd"), "<p>a b<br>c<br>d</p>"); }

TEST(HtmlOutput, HasNestedLists) {
  EXPECT_EQ(htmlOf("- a\n- b\n  1. c\n- d\n\ntext"),
            "<ul>\n<li>a</li>\n<li>b\n<ol>\n<li>c</li>\n</ol>\n</li>\n<li>d</li>\n</ul>\n<p>text</p>");
}

TEST(HtmlOutput, HasLooseListsThatStartAtAnyNumber) {
  EXPECT_EQ(htmlOf("3. a\n\n   b\n4. c"),
            "<ol start=\"3\">\n<li><p>a</p>\n<p>b</p>\n</li>\n<li><p>c</p>\n</li>\n</ol>");
}

TEST(HtmlOutput, HasTasks) {
  EXPECT_EQ(htmlOf("- [ ] a\n- [X] b"),
            "<ul>\n<li><input type=\"checkbox\" disabled> a</li>\n"
            "<li><input type=\"checkbox\" checked disabled> b</li>\n</ul>");
}

TEST(HtmlOutput, KeepsCodeUnchanged) {
  EXPECT_EQ(htmlOf("```c++ x\nif (a < b)\n\n  \"c\";\n```"),
            "<pre><code class=\"language-c++\">if (a &lt; b)\n\n  &quot;c&quot;;\n</code></pre>");
  EXPECT_EQ(htmlOf("    a\n      b"), "<pre><code>a\n  b\n</code></pre>");
}

TEST(HtmlOutput, HasQuotesAndRules) {
  EXPECT_EQ(htmlOf("> a\n>\n> > b\n\n***"),
            "<blockquote>\n<p>a</p>\n<blockquote>\n<p>b</p>\n</blockquote>\n</blockquote>\n<hr>");
}

TEST(HtmlOutput, HasTablesWithHeadAndAlignment) {
  EXPECT_EQ(htmlOf("| a | b | c | d |\n|---|:--|:-:|--:|\n| 1 | *2* | 3 |"),
            "<table class=\"table table-hover table-bordered\">\n<thead>\n"
            "<tr><th>a</th><th style=\"text-align:left\">b</th><th style=\"text-align:center\">c</th>"
            "<th style=\"text-align:right\">d</th></tr>\n</thead>\n<tbody>\n"
            "<tr><td>1</td><td style=\"text-align:left\"><i>2</i></td><td style=\"text-align:center\">3</td>"
            "<td style=\"text-align:right\"></td></tr>\n</tbody>\n</table>");
}

TEST(HtmlOutput, OmitsAnEmptyTableBody) {
  EXPECT_EQ(htmlOf("| a |\n|---|"),
            "<table class=\"table table-hover table-bordered\">\n<thead>\n<tr><th>a</th></tr>\n</thead>\n</table>");
}

TEST(HtmlOutput, PassesHtmlThroughOnRequest) {
  EXPECT_EQ(htmlOf("a <kbd>K</kbd><br/>\n\n<div class='x'>\n*a*\n</div>", {"--unsafe"}),
            "<p>a <kbd>K</kbd><br/></p>\n<div class='x'>\n*a*\n</div>");
}

TEST(HtmlOutput, HoldsAnyCharacter) { EXPECT_EQ(htmlOf("\\\\ {x} € “q” 😀 日本"), "<p>\\ {x} € “q” 😀 日本</p>"); }

TEST(HtmlOutput, ReplacesControlCharactersAndWarns) {
  CommandRun run;
  const Result result = run.with("in.md",
                                 "a\x01"
                                 "b")
                            .run({"@/in.md", "-o", "@/out.html"});
  EXPECT_EQ(run.body("out.html"), "<p>a\uFFFDb</p>");
  EXPECT_EQ(result.error,
            "scrivalen: warning: '@/out.html': 1 character could not be written as it was given: U+0001.\n");
}

TEST(HtmlOutput, SurvivesDeepNesting) {
  std::string markdown;
  for (int i = 0; i < 200; ++i) {
    markdown += "> ";
  }
  const std::string body = htmlOf(markdown + "a");
  EXPECT_TRUE(body.starts_with("<blockquote>\n<blockquote>\n"));
  EXPECT_TRUE(body.ends_with("</blockquote>\n</blockquote>"));
  EXPECT_NE(body.find("<p>a</p>"), std::string::npos);
}

}  // namespace
}  // namespace scrivalen::command::test
