#include "command_support.h"
#include "readers/markdown/code_indentation.h"
#include "readers/markdown_parts.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace scrivalen::command::test {
namespace {

Lines heading(const std::string& id, const std::string& text) {
  return {"BeginHeading 1" + (id.empty() ? std::string() : " #" + id), "Text '" + text + "'", "EndHeading"};
}

// ---- Ids of headings

TEST(HeadingIds, AreTakenFromTheEndOfAHeading) {
  EXPECT_EQ(partsOf("# A title {#a-1}"), heading("a-1", "A title"));
  EXPECT_EQ(partsOf("# A title   {#\xC3\xA9:x.y_z} ##"), heading("\xC3\xA9:x.y_z", "A title"));
  EXPECT_EQ(partsOf("A title {#a}\n======"), heading("a", "A title"));
  EXPECT_EQ(partsOf("# `a` *b* {#c}"), (Lines{"BeginHeading 1 #c", "BeginCode", "Text 'a'", "EndCode", "Text ' '",
                                              "BeginEmphasis", "Text 'b'", "EndEmphasis", "EndHeading"}));
}

TEST(HeadingIds, AreTextWhereTheyAreNotOneIdAtTheEnd) {
  for (const char* const text : {"a {#b c}", "a {#}", "a{#b}", "{#b}", "a {#b} c", "a {b}", "a {#b .c}", "a {#{#b}}"}) {
    EXPECT_EQ(partsOf(std::string("# ") + text), heading("", text));
  }
  EXPECT_EQ(partsOf("# a \\{#b}"), heading("", "a {#b}"));
  EXPECT_EQ(partsOf("# a *{#b}*")[1], "Text 'a '");
  EXPECT_EQ(partsOf("# a {#b&amp;c}"), heading("", "a {#b&c}"));
  EXPECT_EQ(partsOf("a {#b}"), paragraph({"Text 'a {#b}'"}));
}

TEST(HeadingIds, AreTextAfterAHeadingTooLongToKeep) {
  const std::string words(20000, 'a');
  EXPECT_EQ(partsOf("# `" + words + "` {#b}").back(), "EndHeading");
  EXPECT_EQ(partsOf("# `" + words + "` {#b}").front(), "BeginHeading 1");
  EXPECT_EQ(partsOf("# `" + words + "` {#b}").at(4), "Text ' {#b}'");
}

TEST(HeadingIds, AreWhereLinksAndTheContentsLead) {
  EXPECT_EQ(htmlOf("# A b {#c}\n\n## A b\n\n[d](#c) [e](#a-b)\n", {"--toc"}),
            "<h1 id=\"c\">A b</h1>\n<nav>\n<ol>\n<li><a href=\"#a-b\">A b</a></li>\n</ol>\n</nav>\n"
            "<h2 id=\"a-b\">A b</h2>\n<p><a href=\"#c\">d</a> <a href=\"#a-b\">e</a></p>");
  EXPECT_EQ(htmlOf("## A {#b}\n\n## B\n"), "<h2 id=\"b\">A</h2>\n<h2 id=\"b-1\">B</h2>");
}

TEST(HeadingIds, ThatAreGivenTwiceAreAWarning) {
  CommandRun run;
  const Result result =
      run.with("in.md", "## A {#c}\n\n## B {#c}\n\n[d](#b)\n").run({"@/in.md", "--toc", "-o", "@/a.html"});
  EXPECT_EQ(result.error, "scrivalen: warning: '@/in.md': the id 'c' is in use already; the first place counts\n");
  EXPECT_NE(run.body("a.html").find("<h2 id=\"b\">B</h2>"), std::string::npos) << run.body("a.html");
  EXPECT_NE(run.body("a.html").find("<li><a href=\"#b\">B</a></li>"), std::string::npos) << run.body("a.html");
}

TEST(HeadingIds, AreNotMadeOfTextInOurMarkdown) {
  CommandRun run;
  EXPECT_EQ(run.with("in.md", "# a \\{#b}\n").run({"@/in.md", "-o", "@/a.md"}).error, "");
  EXPECT_EQ(run.bytes("a.md"), "# a \\{#b}\n");
}

// ---- Alerts

Lines alert(const std::string& title, const Lines& content) {
  Lines lines = {"BeginQuote", "BeginParagraph", "BeginStrong", "Text '" + title + "'", "EndStrong", "EndParagraph"};
  lines.insert(lines.end(), content.begin(), content.end());
  lines.push_back("EndQuote");
  return lines;
}

TEST(Alerts, BeginWithTheirTitleInBold) {
  EXPECT_EQ(partsOf("> [!NOTE]\n> a *b*"),
            alert("Note", paragraph({"Text 'a '", "BeginEmphasis", "Text 'b'", "EndEmphasis"})));
  EXPECT_EQ(partsOf("> [!tip]  \n> a"), alert("Tip", paragraph({"Text 'a'"})));
  EXPECT_EQ(partsOf("> [!IMPORTANT]\n>\n> a"), alert("Important", paragraph({"Text 'a'"})));
  EXPECT_EQ(partsOf("> [!WARNING]\n> ***"), alert("Warning", {"Rule"}));
  EXPECT_EQ(partsOf("> [!CAUTION]"), alert("Caution", {}));
}

TEST(Alerts, AreTextWhereTheirMarkIsNotTheFirstLine) {
  const auto quote = [](const std::string& text) {
    return Lines{"BeginQuote", "BeginParagraph", "Text '" + text + "'", "EndParagraph", "EndQuote"};
  };
  EXPECT_EQ(partsOf("> [!NOTE] a"), quote("[!NOTE] a"));
  EXPECT_EQ(partsOf("> a\n> [!NOTE]"), quote("a [!NOTE]"));
  EXPECT_EQ(partsOf("> \\[!NOTE]\n> a"), quote("[!NOTE] a"));
  EXPECT_EQ(partsOf("> [!OTHER]\n> a"), quote("[!OTHER] a"));
  EXPECT_EQ(partsOf("[!NOTE]\na"), paragraph({"Text '[!NOTE] a'"}));
  EXPECT_EQ(partsOf("> [!NOTE]&amp;"), quote("[!NOTE]&"));
  EXPECT_EQ(partsOf("> [!NOTE]`a`")[2], "Text '[!NOTE]'");
  EXPECT_EQ(partsOf("> - [!NOTE]\n>   a")[3], "Text '[!NOTE] a'");
  EXPECT_EQ(partsOf("> <script>\n>\n> [!NOTE]\n> </script> a\n")[1], "BeginParagraph");
}

TEST(Alerts, AreNoEntriesOfTheContents) {
  EXPECT_EQ(htmlOf("# a\n\n> [!NOTE]\n> b\n", {"--toc"}),
            "<h1 id=\"a\">a</h1>\n<blockquote>\n<p><strong>Note</strong></p>\n<p>b</p>\n</blockquote>");
}

// ---- Tildes

TEST(Tildes, StrikeTextOutInPairsOnly) {
  EXPECT_EQ(partsOf("~a~"), paragraph({"Text '~a~'"}));
  EXPECT_EQ(partsOf("~~a~~"), paragraph({"BeginDeleted", "Text 'a'", "EndDeleted"}));
  EXPECT_EQ(partsOf("~~a~b~~ ~c~"), paragraph({"BeginDeleted", "Text 'a~b'", "EndDeleted", "Text ' ~c~'"}));
  EXPECT_EQ(partsOf("*~a~* ~*b*~"), paragraph({"BeginEmphasis", "Text '~a~'", "EndEmphasis", "Text ' ~'",
                                               "BeginEmphasis", "Text 'b'", "EndEmphasis", "Text '~'"}));
  EXPECT_EQ(partsOf("\\~~a~ \\~b~"), paragraph({"Text '~~a~ ~b~'"}));
  EXPECT_EQ(partsOf("\\\\~~a~~"), paragraph({"Text '\\'", "BeginDeleted", "Text 'a'", "EndDeleted"}));
}

TEST(Tildes, StayInCodeAndAddresses) {
  EXPECT_EQ(partsOf("`~a~` ~"), paragraph({"BeginCode", "Text '~a~'", "EndCode", "Text ' ~'"}));
  EXPECT_EQ(partsOf("``` c~d\n~a~\n```"), (Lines{"BeginCodeBlock 'c~d'", "Text '~a~\\n'", "EndCodeBlock"}));
  EXPECT_EQ(partsOf("~~~\n~a~\n~~~"), (Lines{"BeginCodeBlock", "Text '~a~\\n'", "EndCodeBlock"}));
  for (const std::string address : {"http://a.b/~c", "/~c", "/~\\(d", "/~c?a&amp;b~"}) {
    const std::string read = address == "/~\\(d" ? "/~(d" : address == "/~c?a&amp;b~" ? "/~c?a&b~" : address;
    EXPECT_EQ(partsOf("[a](" + address + " 't~\\\\') ^"),
              paragraph({"BeginLink @" + read + " title 't~\\'", "Text 'a'", "EndLink", "Text ' ^'"}));
    EXPECT_EQ(partsOf("![~a](" + address + ")"), paragraph({"Image '~a' @" + read}));
  }
  EXPECT_EQ(partsOf("www.a.bc/~d"), paragraph({"BeginLink @http://www.a.bc/~d", "Text 'www.a.bc/~d'", "EndLink"}));
  EXPECT_EQ(partsOf("<http://a/~b> <i title='~c'> ~", Safety::Unsafe),
            paragraph({"BeginLink @http://a/~b", "Text 'http://a/~b'", "EndLink", "Text ' '", "Markup '<i title='~c'>'",
                       "Text ' ~'"}));
}

TEST(Tildes, StayAmongAllOtherPunctuation) {
  EXPECT_EQ(partsOf("~a~ ^ { } $ % ; [b](/^~{\\}c '~&amp;^{') ~~d~~ ``` e\n"),
            paragraph({"Text '~a~ ^ { } $ % ; '", "BeginLink @/^~{}c title '~&^{'", "Text 'b'", "EndLink", "Text ' '",
                       "BeginDeleted", "Text 'd'", "EndDeleted", "Text ' ``` e'"}));
}

// ---- Tabs

Lines code(const std::string& text) { return {"BeginCodeBlock", "Text '" + text + "'", "EndCodeBlock"}; }

TEST(Tabs, StayInCode) {
  EXPECT_EQ(partsOf("```\n\ta\n\t\tb\tc\n \td\n```"), code("\ta\\n\t\tb\tc\\n \td\\n"));
  EXPECT_EQ(partsOf("\ta\n\t\tb\n\n\t  \tc"), code("a\\n\tb\\n\\n  \tc\\n"));
  EXPECT_EQ(partsOf("> ```\n> \ta\n> ```").at(2), "Text '\ta\\n'");
}

TEST(Tabs, BecomeBlanksWhereOnlyAPartOfOneBelongsToTheCode) {
  EXPECT_EQ(partsOf("- a\n\n\t\tb").at(6), "Text '  b\\n'");
  EXPECT_EQ(partsOf("- a\n\n\t\t\tb").at(6), "Text '  \tb\\n'");
  EXPECT_EQ(partsOf(" ```\n\ta\n```"), code("   a\\n"));
}

TEST(CodeIndentation, EndsBeforeTheLine) {
  EXPECT_EQ(codeIndentation("\t\ta", 2, 8), "\t\t");
  EXPECT_EQ(codeIndentation("x\n  \t\ta", 6, 4), "\t");
  EXPECT_EQ(codeIndentation("  \ta", 3, 3), " \t");
  EXPECT_EQ(codeIndentation("    a", 4, 2), "  ");
  EXPECT_EQ(codeIndentation("> \ta", 3, 1), " ");
}

}  // namespace
}  // namespace scrivalen::command::test
