#include "readers/markdown_reader.h"

#include "recorded_events.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace scrivalen::command::test {
namespace {

Lines eventsOf(std::string_view markdown, Safety safety = Safety::Safe) {
  RecordedEvents events;
  readMarkdown(markdown, safety, events);
  return events.lines();
}

TEST(MarkdownReader, EmitsNothingForAnEmptyText) { EXPECT_EQ(eventsOf(""), Lines()); }

TEST(MarkdownReader, JoinsSoftBreaksEscapesAndReferencesIntoOneText) {
  EXPECT_EQ(eventsOf("one\ntwo \\* &amp; &euro; &nosuch; 5 < 6"),
            (Lines{"BeginParagraph", "Text 'one two * & € &nosuch; 5 < 6'", "EndParagraph"}));
}

TEST(MarkdownReader, BeginsAHeadingWithItsTextAndAnchorName) {
  EXPECT_EQ(eventsOf("## The *big* `one`"),
            (Lines{"BeginHeading 2 'The big one' @the-big-one", "Text 'The '", "BeginEmphasis", "Text 'big'",
                   "EndEmphasis", "Text ' '", "BeginCode", "Text 'one'", "EndCode", "EndHeading 2"}));
}

TEST(MarkdownReader, IncludesAnImagesTextInItsHeading) {
  EXPECT_EQ(eventsOf("# A ![logo](l.png)")[0], "BeginHeading 1 'A logo' @a-logo");
}

TEST(MarkdownReader, BeginsAnUnsafeHeadingWithItsVisibleText) {
  const auto beginningOf = [](std::string_view heading) { return eventsOf(heading, Safety::Unsafe)[0]; };
  EXPECT_EQ(beginningOf("# a<br>b <kbd>c</kbd>"), "BeginHeading 1 'a b c' @a-b-c");
  EXPECT_EQ(beginningOf("# a<script>x()</script><!-- y --> b"), "BeginHeading 1 'a b' @a-b");
  EXPECT_EQ(beginningOf("# a<style>x *y* ![z](z)</style>b"), "BeginHeading 1 'ab' @ab");
  EXPECT_EQ(beginningOf("a<script>x  \ny</script>b\n==="), "BeginHeading 1 'ab' @ab");
  EXPECT_EQ(beginningOf("# ![a<br>b](c)"), "BeginHeading 1 'a b' @a-b");
}

TEST(MarkdownReader, EndsTheHiddenContentOfAnUnsafeHeadingWithTheHeading) {
  const Lines events = eventsOf("# a <script>x\n\n# b", Safety::Unsafe);
  EXPECT_EQ(events[0], "BeginHeading 1 'a ' @a-");
  EXPECT_EQ(events[5], "BeginHeading 1 'b' @b");
}

TEST(MarkdownReader, GivesHeadingsUniqueAnchorNames) {
  const Lines events = eventsOf("# A\n\n# A");
  EXPECT_EQ(events[0], "BeginHeading 1 'A' @a");
  EXPECT_EQ(events[3], "BeginHeading 1 'A' @a-1");
}

TEST(MarkdownReader, EmitsSpans) {
  EXPECT_EQ(eventsOf("***a*** ~~b~~ `c`"),
            (Lines{"BeginParagraph", "BeginEmphasis", "BeginStrong", "Text 'a'", "EndStrong", "EndEmphasis", "Text ' '",
                   "BeginDeleted", "Text 'b'", "EndDeleted", "Text ' '", "BeginCode", "Text 'c'", "EndCode",
                   "EndParagraph"}));
}

TEST(MarkdownReader, EmitsLinksWithAddressAndTitle) {
  EXPECT_EQ(eventsOf("[a *b*](x?y=1&amp;z \"T &quot;1&quot;\")"),
            (Lines{"BeginParagraph", "BeginLink @x?y=1&z title 'T \"1\"'", "Text 'a '", "BeginEmphasis", "Text 'b'",
                   "EndEmphasis", "EndLink", "EndParagraph"}));
}

TEST(MarkdownReader, TurnsBareAddressesIntoLinks) {
  EXPECT_EQ(eventsOf("see https://example.org/a."),
            (Lines{"BeginParagraph", "Text 'see '", "BeginLink @https://example.org/a", "Text 'https://example.org/a'",
                   "EndLink", "Text '.'", "EndParagraph"}));
}

TEST(MarkdownReader, DoesNotNestLinks) {
  EXPECT_EQ(eventsOf("[see www.x.org now](y)"),
            (Lines{"BeginParagraph", "BeginLink @y", "Text 'see www.x.org now'", "EndLink", "EndParagraph"}));
}

// The parser pairs an emphasis mark with one in the address, then reports only one of the two.
TEST(MarkdownReader, BalancesStylesThatALinkAddressSplits) {
  EXPECT_EQ(eventsOf("[a](x*y \"t\")b* c"),
            (Lines{"BeginParagraph", "BeginLink @x*y title 't'", "Text 'a'", "EndLink", "Text 'b c'", "EndParagraph"}));
  EXPECT_EQ(eventsOf("- *a [b](x*y) c\n- d"),
            (Lines{"BeginList tight", "BeginItem", "BeginEmphasis", "Text 'a '", "BeginLink @x*y", "Text 'b'",
                   "EndLink", "Text ' c'", "EndEmphasis", "EndItem", "BeginItem", "Text 'd'", "EndItem", "EndList"}));
}

TEST(MarkdownReader, EmitsAnImageAsOneEvent) {
  EXPECT_EQ(eventsOf("a ![the *old* `cat` ![in](x) <b>one</b>](cat.png \"Cat\") b"),
            (Lines{"BeginParagraph", "Text 'a '", "Image 'the old cat in one' @cat.png title 'Cat'", "Text ' b'",
                   "EndParagraph"}));
}

TEST(MarkdownReader, EmitsHardBreaksAndUnsafeTagsInPlace) {
  EXPECT_EQ(eventsOf("a  \nb <kbd>x</kbd><br>\nc", Safety::Unsafe),
            (Lines{"BeginParagraph", "Text 'a'", "LineBreak", "Text 'b '", "Markup '<kbd>'", "Text 'x'",
                   "Markup '</kbd><br>'", "Text ' c'", "EndParagraph"}));
}

TEST(MarkdownReader, EmitsATightListWithoutParagraphs) {
  EXPECT_EQ(eventsOf("- a\n- b\n  1. c"), (Lines{"BeginList tight", "BeginItem", "Text 'a'", "EndItem", "BeginItem",
                                                 "Text 'b'", "BeginList ordered tight 1", "BeginItem", "Text 'c'",
                                                 "EndItem", "EndList ordered", "EndItem", "EndList"}));
}

TEST(MarkdownReader, EmitsALooseListWithParagraphsAndItsFirstNumber) {
  EXPECT_EQ(eventsOf("7. a\n\n8. b"),
            (Lines{"BeginList ordered 7", "BeginItem", "BeginParagraph", "Text 'a'", "EndParagraph", "EndItem",
                   "BeginItem", "BeginParagraph", "Text 'b'", "EndParagraph", "EndItem", "EndList ordered"}));
}

TEST(MarkdownReader, EmitsTasks) {
  EXPECT_EQ(eventsOf("- [ ] a\n- [x] b"), (Lines{"BeginList tight", "BeginItem open", "Text 'a'", "EndItem",
                                                 "BeginItem done", "Text 'b'", "EndItem", "EndList"}));
}

TEST(MarkdownReader, KeepsLineBreaksAndIndentationOfCode) {
  EXPECT_EQ(eventsOf("```c++ more\nif (a < b)\n  &amp;\n\n  x\n```"),
            (Lines{"BeginCodeBlock 'c++'", "Text 'if (a < b)\\n  &amp;\\n\\n  x\\n'", "EndCodeBlock"}));
  EXPECT_EQ(eventsOf("    a\n\n      b"), (Lines{"BeginCodeBlock", "Text 'a\\n\\n  b\\n'", "EndCodeBlock"}));
}

TEST(MarkdownReader, EmitsAnUnsafeHtmlBlockAsOneEvent) {
  EXPECT_EQ(eventsOf("<div>\n*a* &amp;\n</div>", Safety::Unsafe),
            (Lines{"MarkupBlock '<div>\\n*a* &amp;\\n</div>\\n'"}));
}

TEST(MarkdownReader, EmitsQuotesAndRules) {
  EXPECT_EQ(eventsOf("> a\n\n---"),
            (Lines{"BeginQuote", "BeginParagraph", "Text 'a'", "EndParagraph", "EndQuote", "Rule"}));
}

TEST(MarkdownReader, ReadsAnEscapedBarInTheCodeOfACell) {
  EXPECT_EQ(eventsOf("| `a\\|b` |\n| --- |\n\n`c\\|d`"),
            (Lines{"BeginTable", "BeginRow header 1", "BeginCell header", "BeginCode", "Text 'a|b'", "EndCode",
                   "EndCell header", "EndRow header", "EndTable", "BeginParagraph", "BeginCode", "Text 'c\\|d'",
                   "EndCode", "EndParagraph"}));
}

TEST(MarkdownReader, EmitsTablesWithHeaderAlignmentAndEveryCell) {
  EXPECT_EQ(eventsOf("| a | b |\n|:-:|--:|\n| c |"),
            (Lines{"BeginTable", "BeginRow header 2", "BeginCell header center", "Text 'a'", "EndCell header",
                   "BeginCell header right", "Text 'b'", "EndCell header", "EndRow header", "BeginRow 2",
                   "BeginCell center", "Text 'c'", "EndCell", "BeginCell right", "EndCell", "EndRow", "EndTable"}));
}

TEST(MarkdownReader, SplitsALongTextIntoSeveralEvents) {
  const std::string code = "```\n" + std::string(50000, 'x') + "\n" + std::string(50000, 'y') + "\n```";
  const Lines events = eventsOf(code);
  EXPECT_GT(events.size(), 3u);
  std::string text;
  for (const std::string& event : events) {
    if (event.starts_with("Text '")) {
      text += event.substr(6, event.size() - 7);
    }
  }
  EXPECT_TRUE(text == std::string(50000, 'x') + "\\n" + std::string(50000, 'y') + "\\n");
}

TEST(MarkdownReader, PropagatesExceptionsFromItsSink) {
  struct Throwing : EventSink {
    void write(const Event&) override { throw std::runtime_error("enough"); }
  } sink;
  EXPECT_THROW(readMarkdown("text", Safety::Safe, sink), std::runtime_error);
}

TEST(MarkdownReader, StopsWhenItsSinkThrows) {
  struct Throwing : EventSink {
    void write(const Event&) override {
      ++events;
      throw std::runtime_error("enough");
    }
    int events = 0;
  } sink;
  for (const std::string_view text : {"a\n\nb", "# a\n\nb", "- a\n- b", "| a |\n|---|\n| b |", "`a` *b*\n\n[c](d)"}) {
    sink.events = 0;
    EXPECT_THROW(readMarkdown(text, Safety::Safe, sink), std::runtime_error);
    EXPECT_EQ(sink.events, 1) << text;
  }
}

}  // namespace
}  // namespace scrivalen::command::test
