#include "command_support.h"
#include "readers/markdown_parts.h"
#include "support/documents/workbook.h"
#include "support/pdf/pdf_pages.h"

#include <gtest/gtest.h>

namespace scrivalen::command::test {
namespace {

using scrivalen::test::PdfPages;

TEST(SafeMarkdown, DropsTagsAndKeepsTheTextBetweenThem) {
  EXPECT_EQ(partsOf("a <b onclick=\"x\">b</b> <input src=x onerror=y> *c*"),
            paragraph({"Text 'a b  '", "BeginEmphasis", "Text 'c'", "EndEmphasis"}));
}

TEST(SafeMarkdown, BreaksTheLineAtABreak) {
  EXPECT_EQ(partsOf("a<br>b<BR/>c<br />d"), paragraph({"Text 'a\\nb\\nc\\nd'"}));
  EXPECT_EQ(partsOf("a<br>\nb"), paragraph({"Text 'a\\nb'"}));
  EXPECT_EQ(partsOf("# a<br>b"), (Lines{"BeginHeading 1", "Text 'a\\nb'", "EndHeading"}));
  EXPECT_EQ(partsOf("![a<br>b](c)"), paragraph({"Image 'a b' @c"}));
}

TEST(SafeMarkdown, SeparatesTheWordsOfBlocksInALine) {
  EXPECT_EQ(partsOf("see <ul><li>a<li>b</ul>c, d.<id>.e"), paragraph({"Text 'see a b c, d..e'"}));
  EXPECT_EQ(partsOf("<h2>a</h2>"), paragraph({"Text 'a'"}));
}

TEST(SafeMarkdown, KeepsThePicturesOfRawHtml) {
  EXPECT_EQ(partsOf("a <img alt=\"b &amp; c\" src='d e.png' onerror=x> f"),
            paragraph({"Text 'a '", "Image 'b & c' @d e.png", "Text ' f'"}));
  EXPECT_EQ(partsOf("<img src=d.png/>\n"), paragraph({"Image '' @d.png/"}));
  EXPECT_EQ(partsOf("# <IMG SRC = d.png ALT = b>"), (Lines{"BeginHeading 1", "Image 'b' @d.png", "EndHeading"}));
  EXPECT_EQ(partsOf("a <img alt='b\nc' src=d>"), paragraph({"Text 'a '", "Image 'b c' @d"}));
  EXPECT_EQ(partsOf("a <img alt=b>"), paragraph({"Text 'a b'"}));
  EXPECT_EQ(partsOf("![a <img alt=b src=c>](d)"), paragraph({"Image 'a b' @d"}));
  EXPECT_EQ(partsOf("<img alt=a src=java&#115;cript:b>"), paragraph({"Text 'a (javascript:b)'"}));
  EXPECT_EQ(partsOf("a <script> <img alt=b src=c> </script>"), paragraph({"Text 'a '"}));
}

TEST(SafeMarkdown, KeepsThePicturesOfHtmlBlocks) {
  EXPECT_EQ(partsOf("<p align=center>\n  <img src=a alt=b>\n  <img src=c>\n</p>\n<p>d</p>\n"),
            paragraph({"Image 'b' @a", "Text ' '", "Image '' @c", "Text '\\nd'"}));
  EXPECT_EQ(partsOf("<div>a\n<p><img src=b></p></div>"), paragraph({"Text 'a\\n'", "Image '' @b"}));
}

TEST(SafeMarkdown, KeepsTheLinksOfRawHtml) {
  EXPECT_EQ(partsOf("a <a title=t target=x href=\"b?c&amp;d\">e *f*</a> g"),
            paragraph({"Text 'a '", "BeginLink @b?c&d title 't'", "Text 'e '", "BeginEmphasis", "Text 'f'",
                       "EndEmphasis", "EndLink", "Text ' g'"}));
  EXPECT_EQ(partsOf("<div>\n<a href=' a '>b</a> <a name=c>d</a><br><a href=e>f</div>"),
            paragraph({"BeginLink @a", "Text 'b'", "EndLink", "Text ' d\\n'", "BeginLink @e", "Text 'f'", "EndLink"}));
  EXPECT_EQ(partsOf("<a href=a><img src=b alt=c></a>"), paragraph({"BeginLink @a", "Image 'c' @b", "EndLink"}));
}

TEST(SafeMarkdown, KeepsWordsAroundTheLinksOfRawHtmlApart) {
  EXPECT_EQ(partsOf("<div>a <a href=b>c </a>d</div>"),
            paragraph({"Text 'a '", "BeginLink @b", "Text 'c '", "EndLink", "Text 'd'"}));
  EXPECT_EQ(partsOf("<div><a href=b><img src=c> </a>d</div>"),
            paragraph({"BeginLink @b", "Image '' @c", "Text ' '", "EndLink", "Text 'd'"}));
  EXPECT_EQ(partsOf("a<li><a href=b>c</a><li>d"),
            paragraph({"Text 'a '", "BeginLink @b", "Text 'c'", "EndLink", "Text ' d'"}));
  EXPECT_EQ(partsOf("a<div><img src=b></div>c"), paragraph({"Text 'a '", "Image '' @b", "Text ' c'"}));
}

TEST(SafeMarkdown, KeepsLinkedPicturesOfAnHtmlBlockApart) {
  EXPECT_EQ(partsOf("<p><br>\n<a href=a><img src=b alt=c></a>\n<a href=d>e</a></p>"),
            paragraph({"BeginLink @a", "Image 'c' @b", "EndLink", "Text ' '", "BeginLink @d", "Text 'e'", "EndLink"}));
}

TEST(SafeMarkdown, BreaksTheLineAfterALinkThatEndsABlock) {
  EXPECT_EQ(partsOf("<p><a href=a>\n<img src=b alt=c>\n</a>\n</p>\n<p>d</p>"),
            paragraph({"BeginLink @a", "Image 'c' @b", "EndLink", "Text '\\nd'"}));
}

TEST(SafeMarkdown, ShowsAddressesOfRawHtmlThatRunAProgram) {
  EXPECT_EQ(partsOf("<a href=' JavaScript:a'>b</a> c"), paragraph({"Text 'b (JavaScript:a) c'"}));
  EXPECT_EQ(partsOf("<div><a href=data:text/html,a>b</a></div>"), paragraph({"Text 'b (data:text/html,a)'"}));
}

TEST(SafeMarkdown, BalancesTheLinksOfRawHtml) {
  EXPECT_EQ(partsOf("*a <a href=b>c* d</a> e</a>"), paragraph({"BeginEmphasis", "Text 'a '", "BeginLink @b", "Text 'c'",
                                                               "EndLink", "EndEmphasis", "Text ' d e'"}));
  EXPECT_EQ(partsOf("<a href=a>[b](c) <a href=d>e</a> f</a> g\n\nh")[1], "BeginLink @a");
  EXPECT_EQ(partsOf("[a <a href=b>c</a>](d) e"), paragraph({"BeginLink @d", "Text 'a c'", "EndLink", "Text ' e'"}));
  EXPECT_EQ(partsOf("<a href=a>b\n\nc"), (Lines{"BeginParagraph", "BeginLink @a", "Text 'b'", "EndLink", "EndParagraph",
                                                "BeginParagraph", "Text 'c'", "EndParagraph"}));
}

TEST(SafeMarkdown, EndsALinkOfRawHtmlWhereTheNextBegins) {
  EXPECT_EQ(partsOf("<p>[<a href=a>b]\n[<a href=c>d</a>]</p>"),
            paragraph({"Text '['", "BeginLink @a", "Text 'b] ['", "EndLink", "BeginLink @c", "Text 'd'", "EndLink",
                       "Text ']'"}));
}

TEST(SafeMarkdown, KeepsRowsAndItemsOfRawHtmlApart) {
  EXPECT_EQ(partsOf("<table><tr><td>a</td><td>b</td></tr><tr><td>c</td></tr></table>"), paragraph({"Text 'a b\\nc'"}));
  EXPECT_EQ(partsOf("<ul><li>a</li><li>b<ol><li>c</ol></ul>"), paragraph({"Text 'a\\nb\\nc'"}));
}

TEST(SafeMarkdown, KeepsTheTextOfATagThatNeverEnds) {
  EXPECT_EQ(partsOf("<div\nall of this"), paragraph({"Text '<div all of this'"}));
  EXPECT_EQ(partsOf("<?php all\n\nof this"), paragraph({"Text '<?php all of this'"}));
  EXPECT_EQ(partsOf("<p title=\"a>b</p>"), paragraph({"Text '<p title=\"a>b'"}));
}

TEST(SafeMarkdown, TurnsAnHtmlBlockIntoAParagraph) {
  EXPECT_EQ(partsOf("<div>\n<p>a &lt; <b>*b*</b><br>c</p>\n<p>d</p></div>"), paragraph({"Text 'a < *b*\\nc\\nd'"}));
}

TEST(SafeMarkdown, DropsHtmlWithoutText) {
  EXPECT_EQ(partsOf("<div>\n</div>\n\n<!-- a -->\n\n<br>\n\n<a name=\"x\"></a> <b></b>\n\n# <a id=\"y\"></a>"),
            Lines());
}

TEST(SafeMarkdown, KeepsTextThatOnlyLooksLikeHtml) {
  EXPECT_EQ(partsOf("1 < 2 &lt;b> \\<script>x `<script>`"),
            paragraph({"Text '1 < 2 <b> <script>x '", "BeginCode", "Text '<script>'", "EndCode"}));
}

TEST(SafeMarkdown, DropsInlineCommentsAndInstructions) {
  EXPECT_EQ(partsOf("a<!-- b <c> --><?d e?><!F g>h<![CDATA[i]]>j"), paragraph({"Text 'ahj'"}));
}

TEST(SafeMarkdown, DropsTheContentOfInlineScripts) {
  EXPECT_EQ(partsOf("a <script>alert(*1*) `c` [d](e) ![f](g) <br> &amp;  \nh</SCRIPT > i"),
            paragraph({"Text 'a '", "Text ' i'"}));
  EXPECT_EQ(partsOf("a <style>b</script>c</style> d"), paragraph({"Text 'a  d'"}));
}

TEST(SafeMarkdown, BalancesStylesThatAScriptOverlaps) {
  EXPECT_EQ(partsOf("*a <script> b* **c </script> d** e"),
            paragraph({"BeginEmphasis", "Text 'a '", "EndEmphasis", "Text ' d e'"}));
}

TEST(SafeMarkdown, DropsAScriptThatEndsInAnotherBlock) {
  EXPECT_EQ(partsOf("<div><script>\n\na *b*\n\n# c\n\n---\n\n    d\n\n<p>e</p>\n\nf </script> g\n\nh"),
            (Lines{"BeginParagraph", "Text ' g'", "EndParagraph", "BeginParagraph", "Text 'h'", "EndParagraph"}));
}

TEST(SafeMarkdown, KeepsTheStructureInWhichAScriptEnds) {
  EXPECT_EQ(partsOf("a <script>\n\n- b\n- c </script> d"),
            (Lines{"BeginParagraph", "Text 'a '", "EndParagraph", "BeginList tight", "BeginItem", "EndItem",
                   "BeginItem", "Text ' d'", "EndItem", "EndList"}));
}

TEST(SafeMarkdown, DropsACommentThatEndsInAnotherBlock) {
  EXPECT_EQ(partsOf("<div>a<!-- b\n\nc\n\nd --> e\n\n<p>f</p>"),
            (Lines{"BeginParagraph", "Text 'a'", "EndParagraph", "BeginParagraph", "Text ' e'", "EndParagraph",
                   "BeginParagraph", "Text 'f'", "EndParagraph"}));
}

// Otherwise a document that only mentions a tag would lose the rest of its text.
TEST(SafeMarkdown, KeepsTheTextAfterAnUnclosedScript) {
  const Lines lines = partsOf("Use <script> here:\n\n```\n<script>a</script>\n```\n\nb <style> c");
  EXPECT_EQ(lines,
            (Lines{"BeginParagraph", "Text 'Use  here:'", "EndParagraph", "BeginCodeBlock",
                   "Text '<script>a</script>\\n'", "EndCodeBlock", "BeginParagraph", "Text 'b  c'", "EndParagraph"}));
}

TEST(SafeMarkdown, EndsAnUnclosedScriptWithItsHtmlBlock) {
  EXPECT_EQ(partsOf("<div>a<script>b\n\nc"),
            (Lines{"BeginParagraph", "Text 'a'", "EndParagraph", "BeginParagraph", "Text 'c'", "EndParagraph"}));
  EXPECT_EQ(partsOf("<div>a<!-- b\n\nc"),
            (Lines{"BeginParagraph", "Text 'a'", "EndParagraph", "BeginParagraph", "Text 'c'", "EndParagraph"}));
}

TEST(SafeMarkdown, ShowsAddressesThatRunAProgramInsteadOfLinkingToThem) {
  EXPECT_EQ(partsOf("[a *b*](javascript:c 'd') e"),
            paragraph({"Text 'a '", "BeginEmphasis", "Text 'b'", "EndEmphasis", "Text ' (javascript:c) e'"}));
  EXPECT_EQ(partsOf("[a](vnd.sun.star.script:b)"), paragraph({"Text 'a (vnd.sun.star.script:b)'"}));
  EXPECT_EQ(partsOf("<ms-msdt:a>"), paragraph({"Text 'ms-msdt:a'"}));
  EXPECT_EQ(partsOf("[](vbscript:c)"), paragraph({"Text 'vbscript:c'"}));
  EXPECT_EQ(partsOf("<javascript:a>"), paragraph({"Text 'javascript:a'"}));
  EXPECT_EQ(partsOf("[a]\n\n[a]: data:text/html,b"), paragraph({"Text 'a (data:text/html,b)'"}));
  EXPECT_EQ(partsOf("[![a](b)](javascript:c)"), paragraph({"Image 'a' @b", "Text ' (javascript:c)'"}));
}

TEST(SafeMarkdown, FindsSchemesWrittenWithReferencesAndEscapes) {
  EXPECT_EQ(partsOf("[a](&#106;ava&#x0A;script&colon;b)"), paragraph({"Text 'a (java\\nscript:b)'"}));
  EXPECT_EQ(partsOf("[a](javascript\\:b)"), paragraph({"Text 'a (javascript:b)'"}));
  EXPECT_EQ(partsOf("[a](<  JavaScript:b>)"), paragraph({"Text 'a (  JavaScript:b)'"}));
}

TEST(SafeMarkdown, AllowsDataUrlsInImages) {
  EXPECT_EQ(partsOf("![a](data:image/png;base64,AA)"), paragraph({"Image 'a' @data:image/png;base64,AA"}));
  EXPECT_EQ(partsOf("![a](javascript:b)"), paragraph({"Text 'a (javascript:b)'"}));
}

TEST(SafeMarkdown, IncludesAShownAddressInItsHeading) {
  EXPECT_EQ(partsOf("# [a](javascript:b)")[0], "BeginHeading 1");
}

TEST(SafeMarkdown, LeavesOtherAddressesAlone) {
  EXPECT_EQ(partsOf("[a](x/javascript:b) <mailto:c@d.org>"),
            paragraph({"BeginLink @x/javascript:b", "Text 'a'", "EndLink", "Text ' '", "BeginLink @mailto:c@d.org",
                       "Text 'mailto:c@d.org'", "EndLink"}));
}

// The same text in every output.
constexpr std::string_view kHostile =
    "a <b onclick=\"evil()\">b</b><br>c<script>evil()</script> [d](javascript:evil)\n\n"
    "<div style=\"evil\"><p>f</p>\n<style>evil {}</style><!-- evil --></div>\n";

std::string bytesOf(const std::string& name, const std::vector<std::string>& options = {}) {
  CommandRun run;
  std::vector<std::string> arguments = {"@/in.md", "--title", "t", "-o", "@/" + name};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const Result result = run.with("in.md", kHostile).run(arguments);
  EXPECT_EQ(result.status, 0) << result.error;
  EXPECT_EQ(result.error, "");
  return run.bytes(name);
}

bool holds(const std::string& text, std::string_view part) { return text.find(part) != std::string::npos; }

TEST(SafeMarkdown, IsTextInHtml) { EXPECT_EQ(htmlOf(kHostile), "<p>a b<br>\nc d (javascript:evil)</p>\n<p>f</p>"); }

TEST(SafeMarkdown, IsTextInText) { EXPECT_EQ(textOf(kHostile), "a b\nc d (javascript:evil)\n\nf\n"); }

TEST(SafeMarkdown, IsTextInXml) {
  EXPECT_TRUE(
      holds(xmlOf(kHostile), "<paragraph>a b<br/>c d (javascript:evil)</paragraph>\n<paragraph>f</paragraph>\n"))
      << xmlOf(kHostile);
}

TEST(SafeMarkdown, IsTextInRtf) {
  const std::string rtf = bytesOf("out.rtf");
  EXPECT_TRUE(holds(rtf, " a b\\line c d (javascript:evil)\\par")) << rtf;
  EXPECT_TRUE(holds(rtf, " f\\par")) << rtf;
  EXPECT_FALSE(holds(rtf, "HYPERLINK")) << rtf;
}

TEST(SafeMarkdown, IsTextInPdf) {
  const PdfPages pdf(bytesOf("out.pdf"));
  EXPECT_EQ(pdf.problems(), std::vector<std::string>());
  EXPECT_EQ(pdf.lines(), (std::vector<std::string>{"t", "a b", "c d (javascript:evil)", "f"}));
  EXPECT_TRUE(pdf.links().empty());
}

TEST(SafeMarkdown, IsTextInASpreadsheet) {
  CommandRun run;
  EXPECT_EQ(run.with("in.md", kHostile).run({"@/in.md", "-o", "@/out.xlsx"}).status, 0);
  EXPECT_EQ(scrivalen::test::readCells(run.widePath("out.xlsx")), "A1 \"a b\nc d (javascript:evil)\"\nA2 \"f\"\n");
}

TEST(UnsafeMarkdown, PassesThroughIntoHtml) {
  EXPECT_EQ(htmlOf(kHostile, {"--unsafe"}),
            "<p>a <b onclick=\"evil()\">b</b><br> c<script>evil()</script> <a href=\"javascript:evil\">d</a></p>\n"
            "<div style=\"evil\"><p>f</p>\n<style>evil {}</style><!-- evil --></div>");
}

TEST(UnsafeMarkdown, PassesAnImageWithAnyAddressIntoHtml) {
  EXPECT_EQ(htmlOf("![a\"<](javascript:b)", {"--unsafe"}), "<p><img src=\"javascript:b\" alt=\"a&quot;&lt;\"></p>");
}

TEST(UnsafeMarkdown, PassesThroughIntoMarkdown) {
  CommandRun run;
  EXPECT_EQ(run.with("in.md", "a <b>b</b>\n\n<div>\nc</div>\n").run({"@/in.md", "--unsafe", "-o", "@/out.md"}).status,
            0);
  EXPECT_EQ(run.bytes("out.md"), "a <b>b</b>\n\n<div>\nc</div>\n");
}

TEST(UnsafeMarkdown, IsTextInFormatsWithoutTags) {
  EXPECT_EQ(textOf("a <b>b</b><br>c [d](javascript:e)\n\n<div>\n<p>f</p>\ng</div>", {"--unsafe"}),
            "a b\nc d (javascript:e)\n\nf\ng\n");
  const std::string rtf = bytesOf("out.rtf", {"--unsafe"});
  EXPECT_TRUE(holds(rtf, " a b\\line c")) << rtf;
  EXPECT_TRUE(holds(rtf, " f\\par")) << rtf;
  const PdfPages pdf(bytesOf("out.pdf", {"--unsafe"}));
  EXPECT_EQ(pdf.lines(), (std::vector<std::string>{"t", "a b", "c d (javascript:evil)", "f"}));
  EXPECT_TRUE(pdf.links().empty());
}

TEST(UnsafeMarkdown, IsTextInOneFormatAndMarkupInAnother) {
  CommandRun run;
  const Result result = run.with("in.md", "# a <i>b</i>\n\n<div>c</div>\n")
                            .run({"@/in.md", "--unsafe", "-o", "@/a.html", "-o", "@/a.txt", "-o", "@/no/a.xml"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(run.body("a.html"), "<h1 id=\"a-b\">a <i>b</i></h1>\n<div>c</div>");
  EXPECT_EQ(run.bytes("a.txt"), "a b\n===\n\nc\n");
}

TEST(UnsafeMarkdown, WarnsOnceOfItsInput) {
  CommandRun run;
  const Result result =
      run.with("in.md", "[a](#b) ![c](http://d/e.png)").run({"@/in.md", "--unsafe", "-o", "@/a.html", "-o", "@/a.txt"});
  EXPECT_EQ(result.error,
            "scrivalen: warning: '@/in.md': pictures on other computers are links\n"
            "scrivalen: warning: '@/in.md': a link leads to '#b', which is nowhere in the document\n");
}

constexpr std::string_view kInlineScript =
    "a<style>p {}</style> <script>evil() *evil* [evil](evil) ![evil](e) ~~evil~~</script><b>b</b>\n\nc\n";

TEST(UnsafeMarkdown, DropsTheContentOfInlineScriptsInFormatsWithoutTags) {
  EXPECT_EQ(textOf(kInlineScript, {"--unsafe"}), "a b\n\nc\n");
}

TEST(UnsafeMarkdown, PassesTheContentOfInlineScriptsOnAsMarkup) {
  EXPECT_EQ(partsOf("a<script>b < *c* &amp;</script>d", Safety::Unsafe),
            paragraph({"Text 'a'", "Markup '<script>'", "Markup 'b < '", "Markup 'c'", "Markup ' '", "Markup '&amp;'",
                       "Markup '</script>'", "Text 'd'"}));
}

TEST(UnsafeMarkdown, EndsTheStylesAndLinksThatAScriptOverlaps) {
  EXPECT_EQ(partsOf("~~a [b <script>c](d) e~~ f</script> g", Safety::Unsafe),
            paragraph({"BeginDeleted", "Text 'a '", "BeginLink @d", "Text 'b '", "Markup '<script>'", "Markup 'c'",
                       "EndLink", "Markup ' e'", "EndDeleted", "Markup ' f'", "Markup '</script>'", "Text ' g'"}));
  EXPECT_EQ(partsOf("a <script>[b</script>c](d) e", Safety::Unsafe),
            paragraph({"Text 'a '", "Markup '<script>'", "Markup 'b'", "Markup '</script>'", "Text 'c e'"}));
}

}  // namespace
}  // namespace scrivalen::command::test
