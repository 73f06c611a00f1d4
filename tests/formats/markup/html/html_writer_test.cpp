#include "html_page_maker.h"

#include "document/pictures/picture.h"

#include <utility>

namespace scrivalen::document {
namespace {

using K = EventKind;

Event text(std::string_view text) { return {.kind = K::Text, .text = text}; }

std::string paragraph(const std::vector<Event>& inside, const SettingList& list = {}) {
  std::vector<Event> events = {{.kind = K::BeginParagraph}};
  events.insert(events.end(), inside.begin(), inside.end());
  events.push_back({.kind = K::EndParagraph});
  return htmlBodyOf(events, list);
}

std::string linkTo(std::string_view address) {
  const std::string body = paragraph({{.kind = K::BeginLink, .address = address}, text("x"), {.kind = K::EndLink}});
  return body.substr(3, body.size() - 3 - 5);
}

TEST(HtmlWriter, WritesParagraphsAndHeadings) {
  EXPECT_EQ(htmlBodyOf({{.kind = K::Title, .text = "A & B"},
                        {.kind = K::BeginHeading, .number = 2, .text = "One", .id = "one"},
                        text("One"),
                        {.kind = K::EndHeading, .number = 2},
                        {.kind = K::BeginParagraph},
                        text("a < b\nc"),
                        {.kind = K::EndParagraph}}),
            "<h1 class=\"title\">A &amp; B</h1>\n"
            "<h2 id=\"one\">One</h2>\n"
            "<p>a &lt; b<br>\nc</p>\n");
}

TEST(HtmlWriter, AlignsParagraphsAndHeadings) {
  EXPECT_EQ(htmlBodyOf({{.kind = K::BeginHeading, .align = Align::Center, .number = 1, .id = "a"},
                        text("a"),
                        {.kind = K::EndHeading, .align = Align::Center, .number = 1},
                        {.kind = K::BeginParagraph, .align = Align::Right},
                        text("b"),
                        {.kind = K::EndParagraph, .align = Align::Right},
                        {.kind = K::BeginParagraph, .align = Align::Justify},
                        text("c"),
                        {.kind = K::EndParagraph, .align = Align::Justify},
                        {.kind = K::BeginParagraph, .align = Align::Left},
                        text("d"),
                        {.kind = K::EndParagraph, .align = Align::Left}}),
            "<h1 id=\"a\" style=\"text-align:center\">a</h1>\n"
            "<p style=\"text-align:right\">b</p>\n"
            "<p style=\"text-align:justify\">c</p>\n"
            "<p>d</p>\n");
}

TEST(HtmlWriter, AlignsFromTheRightInALanguageThatBeginsThere) {
  EXPECT_EQ(htmlBodyOf({{.kind = K::BeginParagraph, .align = Align::Right},
                        text("a"),
                        {.kind = K::EndParagraph},
                        {.kind = K::BeginParagraph, .align = Align::Left},
                        text("b"),
                        {.kind = K::EndParagraph}},
                       {{"language", "ar"}}),
            "<p>a</p>\n"
            "<p style=\"text-align:left\">b</p>\n");
}

TEST(HtmlWriter, WritesTheSpansOfText) {
  const auto span = [](Span kind, std::string_view element) {
    const std::string expected = "<p><" + std::string(element) + ">x</" + std::string(element) + "></p>\n";
    EXPECT_EQ(paragraph({{.kind = K::BeginSpan, .span = kind}, text("x"), {.kind = K::EndSpan, .span = kind}}),
              expected);
  };
  span(Span::Strong, "strong");
  span(Span::Emphasis, "em");
  span(Span::Code, "code");
  span(Span::Deleted, "del");
  span(Span::Underlined, "u");
  span(Span::Superscript, "sup");
  span(Span::Subscript, "sub");
}

TEST(HtmlWriter, WritesColorsAndSizesAsStyles) {
  EXPECT_EQ(paragraph({{.kind = K::BeginColored, .color = 0x12AB00, .background = 0xFFFFFF},
                       text("x"),
                       {.kind = K::EndColored},
                       {.kind = K::BeginColored, .background = 0},
                       text("y"),
                       {.kind = K::EndColored},
                       {.kind = K::BeginSized, .points = 10.5},
                       text("z"),
                       {.kind = K::EndSized}}),
            "<p><span style=\"color:#12ab00;background-color:#ffffff\">x</span>"
            "<span style=\"background-color:#000000\">y</span>"
            "<span style=\"font-size:10.5pt\">z</span></p>\n");
}

TEST(HtmlWriter, WritesLinksAndAnchors) {
  EXPECT_EQ(paragraph({{.kind = K::Anchor, .id = "here"},
                       {.kind = K::BeginLink, .address = "https://example.org/?a=1&b=2", .title = "\"A\""},
                       text("x"),
                       {.kind = K::EndLink}}),
            "<p><span id=\"here\"></span>"
            "<a href=\"https://example.org/?a=1&amp;b=2\" title=\"&quot;A&quot;\">x</a></p>\n");
}

TEST(HtmlWriter, EncodesWhatAnAddressMayNotContain) {
  EXPECT_EQ(linkTo("a b\"<>\\^`{|}"), "<a href=\"a%20b%22%3C%3E%5C%5E%60%7B%7C%7D\">x</a>");
  EXPECT_EQ(linkTo("100%?a=%20&%zz"), "<a href=\"100%25?a=%20&amp;%25zz\">x</a>");
  EXPECT_EQ(linkTo("http://[::1]/[a]?b[]#c#d"), "<a href=\"http://[::1]/%5Ba%5D?b%5B%5D#c%23d\">x</a>");
  EXPECT_EQ(linkTo(" http://x.org/\ny "), "<a href=\"http://x.org/y\">x</a>");
  EXPECT_EQ(linkTo("/stra\xC3\x9F"
                   "e"),
            "<a href=\"/stra\xC3\x9F"
            "e\">x</a>");
}

TEST(HtmlWriter, MendsIdsAndTheLinksToThemAlike) {
  EXPECT_EQ(htmlBodyOf({{.kind = K::BeginHeading, .number = 1, .id = "a b\tc"}, {.kind = K::EndHeading, .number = 1}}),
            "<h1 id=\"a~20b~09c\"></h1>\n");
  EXPECT_EQ(linkTo("#a b\tc"), "<a href=\"#a~20b~09c\">x</a>");
  EXPECT_EQ(paragraph({{.kind = K::Anchor, .id = "<50%>"}}), "<p><span id=\"&lt;50%&gt;\"></span></p>\n");
  EXPECT_EQ(linkTo("#<50%>"), "<a href=\"#%3C50%25%3E\">x</a>");
}

// Also in a browser, which decodes "%25" where no id is equal to the fragment.
TEST(HtmlWriter, KeepsDifferentIdsDifferent) {
  const auto anchor = [](std::string_view id) { return paragraph({{.kind = K::Anchor, .id = id}}); };
  const std::pair<std::string_view, std::string> ids[] = {
      {"a b", "a~20b"},   {"a_b", "a_b"},       {"a~20b", "a~7E20b"}, {"a~7E20b", "a~7E7E20b"},
      {"~", "~"},         {"50%", "50%"},       {"50%25", "50~2525"}, {"50~2525", "50~7E2525"},
      {"~2 0", "~2~200"}, {"%2~0a", "%2~7E0a"}, {"~~20", "~~7E20"},   {"%%20", "%~2520"},
  };
  for (const auto& [id, written] : ids) {
    EXPECT_EQ(anchor(id), "<p><span id=\"" + written + "\"></span></p>\n");
  }
  EXPECT_EQ(linkTo("#a b"), "<a href=\"#a~20b\">x</a>");
  EXPECT_EQ(linkTo("#50%"), "<a href=\"#50%25\">x</a>");
  EXPECT_EQ(linkTo("#50%25"), "<a href=\"#50~2525\">x</a>");
}

TEST(HtmlWriter, LeavesOutAddressesThatRunPrograms) {
  const HtmlResult result = htmlOf([](DocumentWriter& writer) {
    writer.write({.kind = K::BeginParagraph});
    for (const std::string_view address : {"javascript:alert(1)", "java\nscript:x", "data:text/html,x", "ms-msdt:x"}) {
      writer.write({.kind = K::BeginLink, .address = address});
      writer.write(text("x"));
      writer.write({.kind = K::EndLink});
    }
    writer.write({.kind = K::EndParagraph});
  });
  EXPECT_EQ(result.body(), "<p>xxxx</p>\n");
  ASSERT_EQ(result.warnings.size(), 1U);
  EXPECT_EQ(result.warnings[0].code, WarningCode::SomethingLeftOut);
  EXPECT_EQ(result.warnings[0].count, 4U);
  EXPECT_EQ(result.warnings[0].message, "the address of a link that may run a program");
}

TEST(HtmlWriter, NamesTheLanguageOfASpanAndItsDirectionWhereItTurns) {
  EXPECT_EQ(paragraph({{.kind = K::BeginLanguage, .text = "fr"},
                       text("a"),
                       {.kind = K::EndLanguage},
                       {.kind = K::BeginLanguage, .text = "he"},
                       text("b"),
                       {.kind = K::BeginLanguage, .text = "en"},
                       text("c"),
                       {.kind = K::EndLanguage},
                       {.kind = K::EndLanguage}}),
            "<p><span lang=\"fr\">a</span>"
            "<span lang=\"he\" dir=\"rtl\">b<span lang=\"en\" dir=\"ltr\">c</span></span></p>\n");
}

TEST(HtmlWriter, WritesSectionsRulesAndPageBreaks) {
  EXPECT_EQ(htmlBodyOf({{.kind = K::BeginSection, .text = "\"One\"", .id = "s 1"},
                        {.kind = K::Rule},
                        {.kind = K::EndSection},
                        {.kind = K::BeginSection},
                        {.kind = K::PageBreak},
                        {.kind = K::EndSection}}),
            "<section id=\"s~201\" aria-label=\"&quot;One&quot;\">\n"
            "<hr>\n"
            "</section>\n"
            "<section>\n"
            "<div style=\"break-after:page\"></div>\n"
            "</section>\n");
}

TEST(HtmlWriter, WritesCodeWithItsLinesAndTabs) {
  EXPECT_EQ(htmlBodyOf({{.kind = K::BeginCode, .text = "c++ title=\"x\""},
                        text("\n\ta < b\n  c\n"),
                        {.kind = K::EndCode},
                        {.kind = K::BeginCode},
                        text("x"),
                        {.kind = K::EndCode}}),
            "<pre><code class=\"language-c++\">\n\ta &lt; b\n  c\n</code></pre>\n"
            "<pre><code>x</code></pre>\n");
}

TEST(HtmlWriter, WritesCodeFromTheLeftInEveryLanguage) {
  EXPECT_EQ(htmlBodyOf({{.kind = K::BeginCode},
                        text("x = 1;"),
                        {.kind = K::EndCode},
                        {.kind = K::BeginParagraph},
                        {.kind = K::BeginSpan, .span = Span::Code},
                        text("f(x)"),
                        {.kind = K::EndSpan, .span = Span::Code},
                        {.kind = K::EndParagraph}},
                       {{"language", "he"}}),
            "<pre dir=\"ltr\"><code>x = 1;</code></pre>\n"
            "<p><code dir=\"ltr\">f(x)</code></p>\n");
}

TEST(HtmlWriter, WritesTheItemsOfATightListWithoutParagraphs) {
  EXPECT_EQ(htmlBodyOf({{.kind = K::BeginList, .tight = true},
                        {.kind = K::BeginItem},
                        text("a"),
                        {.kind = K::EndItem},
                        {.kind = K::BeginItem},
                        {.kind = K::BeginParagraph},
                        text("b"),
                        {.kind = K::EndParagraph},
                        {.kind = K::BeginParagraph},
                        text("c"),
                        {.kind = K::EndParagraph},
                        {.kind = K::BeginList, .ordered = true, .tight = true, .number = 3},
                        {.kind = K::BeginItem},
                        text("d"),
                        {.kind = K::EndItem},
                        {.kind = K::EndList, .ordered = true},
                        {.kind = K::EndItem},
                        {.kind = K::EndList}}),
            "<ul>\n"
            "<li>a</li>\n"
            "<li>b<br>\nc\n"
            "<ol start=\"3\">\n"
            "<li>d</li>\n"
            "</ol>\n"
            "</li>\n"
            "</ul>\n");
}

TEST(HtmlWriter, WritesTheItemsOfALooseListAsParagraphs) {
  EXPECT_EQ(htmlBodyOf({{.kind = K::BeginList, .ordered = true, .number = 1},
                        {.kind = K::BeginItem},
                        {.kind = K::BeginParagraph},
                        text("a"),
                        {.kind = K::EndParagraph},
                        {.kind = K::BeginQuote},
                        {.kind = K::BeginParagraph},
                        text("b"),
                        {.kind = K::EndParagraph},
                        {.kind = K::EndQuote},
                        {.kind = K::EndItem},
                        {.kind = K::BeginItem},
                        text("c"),
                        {.kind = K::Rule},
                        text("d"),
                        {.kind = K::EndItem},
                        {.kind = K::EndList, .ordered = true}}),
            "<ol>\n"
            "<li><p>a</p>\n"
            "<blockquote>\n<p>b</p>\n</blockquote>\n"
            "</li>\n"
            "<li><p>c</p>\n<hr>\n<p>d</p></li>\n"
            "</ol>\n");
}

TEST(HtmlWriter, WritesTasksAsBoxesInFrontOfTheirText) {
  EXPECT_EQ(htmlBodyOf({{.kind = K::BeginList, .tight = true},
                        {.kind = K::BeginItem, .task = Task::Open},
                        text("a"),
                        {.kind = K::EndItem},
                        {.kind = K::BeginItem, .task = Task::Done},
                        {.kind = K::EndItem},
                        {.kind = K::EndList},
                        {.kind = K::BeginList},
                        {.kind = K::BeginItem, .task = Task::Done},
                        {.kind = K::BeginParagraph},
                        text("b"),
                        {.kind = K::EndParagraph},
                        {.kind = K::EndItem},
                        {.kind = K::EndList}}),
            "<ul>\n"
            "<li class=\"task\"><input type=\"checkbox\" disabled> a</li>\n"
            "<li class=\"task\"><input type=\"checkbox\" checked disabled> </li>\n"
            "</ul>\n"
            "<ul>\n"
            "<li class=\"task\"><p><input type=\"checkbox\" checked disabled> b</p>\n</li>\n"
            "</ul>\n");
}

TEST(HtmlWriter, NestsTheItemsOfContentsByLevel) {
  EXPECT_EQ(htmlBodyOf({{.kind = K::BeginContents},
                        {.kind = K::ContentsItem, .number = 1, .text = "A & B", .id = "a"},
                        {.kind = K::ContentsItem, .number = 3, .text = "b", .id = "b c"},
                        {.kind = K::ContentsItem, .number = 2, .text = "c", .id = "c"},
                        {.kind = K::ContentsItem, .number = 1, .text = "d", .id = "d"},
                        {.kind = K::EndContents}}),
            "<nav>\n"
            "<ol>\n"
            "<li><a href=\"#a\">A &amp; B</a>\n"
            "<ol>\n"
            "<li><a href=\"#b~20c\">b</a></li>\n"
            "<li><a href=\"#c\">c</a></li>\n"
            "</ol>\n"
            "</li>\n"
            "<li><a href=\"#d\">d</a></li>\n"
            "</ol>\n"
            "</nav>\n");
}

TEST(HtmlWriter, ClosesTheListsOfContentsThatEndInside) {
  EXPECT_EQ(htmlBodyOf({{.kind = K::BeginContents},
                        {.kind = K::ContentsItem, .number = 2, .text = "a", .id = "a"},
                        {.kind = K::ContentsItem, .number = 1, .text = "b", .id = "b"},
                        {.kind = K::ContentsItem, .number = 2, .text = "c", .id = "c"},
                        {.kind = K::EndContents},
                        {.kind = K::BeginContents},
                        {.kind = K::EndContents}}),
            "<nav>\n"
            "<ol>\n"
            "<li><a href=\"#a\">a</a></li>\n"
            "<li><a href=\"#b\">b</a>\n"
            "<ol>\n"
            "<li><a href=\"#c\">c</a></li>\n"
            "</ol>\n"
            "</li>\n"
            "</ol>\n"
            "</nav>\n"
            "<nav>\n"
            "</nav>\n");
}

TEST(HtmlWriter, EmbedsPictures) {
  const std::string bytes = "\x89PNG\r\n\x1A\n" +
                            std::string("\0\0\0\rIHDR\0\0\0\x01\0\0\0\x01\x08\0\0\0\0\x3A\x7E\x9B\x55", 25) +
                            std::string("\0\0\0\nIDAT\x78\x9C\x63\x60\0\0\0\x02\0\x01\x48\xAF\xA4\x71", 22) +
                            std::string("\0\0\0\0IEND\xAE\x42\x60\x82", 12);
  std::string reason;
  const auto picture = Picture::read(bytes, reason);
  ASSERT_TRUE(picture) << reason;
  EXPECT_EQ(paragraph({{.kind = K::Image, .points = 30, .text = "a \"dot\"", .picture = picture.get()},
                       {.kind = K::Image, .picture = picture.get()}}),
            "<p><img src=\"data:image/png;base64,"
            "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAAAAAA6fptVAAAACklEQVR4nGNgAAAAAgABSK+kcQAAAABJRU5ErkJggg==\""
            " alt=\"a &quot;dot&quot;\" width=\"40\">"
            "<img src=\"data:image/png;base64,"
            "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAAAAAA6fptVAAAACklEQVR4nGNgAAAAAgABSK+kcQAAAABJRU5ErkJggg==\""
            " alt=\"\" width=\"1\"></p>\n");
}

TEST(HtmlWriter, LeavesTheTextOfAPictureThatIsMissing) {
  EXPECT_EQ(paragraph({{.kind = K::Image, .text = "a < b", .picture = nullptr}}), "<p>a &lt; b</p>\n");
}

TEST(HtmlWriter, LeavesOutMarkupOfOtherFormats) {
  EXPECT_EQ(paragraph({{.kind = K::Raw, .text = "\\par", .address = "rtf"}}), "<p></p>\n");
}

TEST(HtmlWriter, PassesMarkupUnchanged) {
  EXPECT_EQ(paragraph({{.kind = K::Raw, .text = "<kbd>&amp;</kbd>", .address = "html"}}), "<p><kbd>&amp;</kbd></p>\n");
}

TEST(HtmlWriter, TakesMarkupInAnItemForABlock) {
  EXPECT_EQ(htmlBodyOf({{.kind = K::BeginList},
                        {.kind = K::BeginItem},
                        {.kind = K::Raw, .text = "<div>a</div>", .address = "html"},
                        text("b"),
                        {.kind = K::EndItem},
                        {.kind = K::EndList}}),
            "<ul>\n<li><div>a</div><p>b</p></li>\n</ul>\n");
}

TEST(HtmlWriter, CountsTheCharactersThatNoPageMayContain) {
  const HtmlResult result = htmlOf([](DocumentWriter& writer) { writer.write(text("\xEF\xBF\xBF")); });
  EXPECT_EQ(result.body(), "\xEF\xBF\xBD");
  ASSERT_EQ(result.warnings.size(), 1U);
  EXPECT_EQ(result.warnings[0].code, WarningCode::CharactersReplaced);
}

}  // namespace
}  // namespace scrivalen::document
