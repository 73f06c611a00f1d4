#include "readers/markdown_parts.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace scrivalen::command::test {
namespace {

// The parser decided by the position of the last line of the code.
TEST(MarkdownReader, KeepsCodeInItsListWhereverItIs) {
  const auto partsAt = [](std::size_t position, const std::string& lineEnd) {
    std::string text = std::string(position, 'x') +
                       "\n\n* a\n\n    ```c\n    b\n    ```\n\n    d\n\n    ~~~\n    e\n    ~~~\n\n    f\n";
    for (std::size_t at = text.find('\n'); at != text.npos; at = text.find('\n', at + lineEnd.size())) {
      text.replace(at, 1, lineEnd);
    }
    Lines parts = partsOf(text);
    parts.erase(parts.begin(), parts.begin() + 3);
    return parts;
  };
  const Lines expected = partsAt(1, "\n");
  EXPECT_EQ(expected.back(), "EndList");
  for (std::size_t position = 2; position < 700; ++position) {
    ASSERT_EQ(partsAt(position, "\n"), expected) << position;
    ASSERT_EQ(partsAt(position, "\r\n"), expected) << position;
  }
}

TEST(MarkdownReader, EmitsNothingForAnEmptyText) { EXPECT_EQ(partsOf(""), Lines()); }

TEST(MarkdownReader, JoinsSoftBreaksEscapesAndReferencesIntoOneText) {
  EXPECT_EQ(partsOf("one\ntwo \\* &amp; &euro; &nosuch; 5 < 6"),
            (Lines{"BeginParagraph", "Text 'one two * & € &nosuch; 5 < 6'", "EndParagraph"}));
}

TEST(MarkdownReader, BeginsAHeadingWithItsTextAndAnchorName) {
  EXPECT_EQ(partsOf("## The *big* `one`"),
            (Lines{"BeginHeading 2", "Text 'The '", "BeginEmphasis", "Text 'big'", "EndEmphasis", "Text ' '",
                   "BeginCode", "Text 'one'", "EndCode", "EndHeading"}));
}

TEST(MarkdownReader, IncludesAnImagesTextInItsHeading) {
  EXPECT_EQ(partsOf("# A ![logo](l.png)")[0], "BeginHeading 1");
}

TEST(MarkdownReader, BeginsAnUnsafeHeadingWithItsVisibleText) {
  const auto beginningOf = [](std::string_view heading) { return partsOf(heading, Safety::Unsafe)[0]; };
  EXPECT_EQ(beginningOf("# a<br>b <kbd>c</kbd>"), "BeginHeading 1");
  EXPECT_EQ(beginningOf("# a<script>x()</script><!-- y --> b"), "BeginHeading 1");
  EXPECT_EQ(beginningOf("# a<style>x *y* ![z](z)</style>b"), "BeginHeading 1");
  EXPECT_EQ(beginningOf("a<script>x  \ny</script>b\n==="), "BeginHeading 1");
  EXPECT_EQ(beginningOf("# ![a<br>b](c)"), "BeginHeading 1");
}

TEST(MarkdownReader, EndsTheHiddenContentOfAnUnsafeHeadingWithTheHeading) {
  const Lines parts = partsOf("# a <script>x\n\n# b", Safety::Unsafe);
  EXPECT_EQ(parts[0], "BeginHeading 1");
  EXPECT_EQ(parts[5], "BeginHeading 1");
}

TEST(MarkdownReader, GivesHeadingsUniqueAnchorNames) {
  const Lines parts = partsOf("# A\n\n# A");
  EXPECT_EQ(parts[0], "BeginHeading 1");
  EXPECT_EQ(parts[3], "BeginHeading 1");
}

TEST(MarkdownReader, EmitsSpans) {
  EXPECT_EQ(partsOf("***a*** ~~b~~ `c`"),
            (Lines{"BeginParagraph", "BeginEmphasis", "BeginStrong", "Text 'a'", "EndStrong", "EndEmphasis", "Text ' '",
                   "BeginDeleted", "Text 'b'", "EndDeleted", "Text ' '", "BeginCode", "Text 'c'", "EndCode",
                   "EndParagraph"}));
}

TEST(MarkdownReader, EmitsLinksWithAddressAndTitle) {
  EXPECT_EQ(partsOf("[a *b*](x?y=1&amp;z \"T &quot;1&quot;\")"),
            (Lines{"BeginParagraph", "BeginLink @x?y=1&z title 'T \"1\"'", "Text 'a '", "BeginEmphasis", "Text 'b'",
                   "EndEmphasis", "EndLink", "EndParagraph"}));
}

TEST(MarkdownReader, TurnsBareAddressesIntoLinks) {
  EXPECT_EQ(partsOf("see https://example.org/a."),
            (Lines{"BeginParagraph", "Text 'see '", "BeginLink @https://example.org/a", "Text 'https://example.org/a'",
                   "EndLink", "Text '.'", "EndParagraph"}));
}

TEST(MarkdownReader, DoesNotNestLinks) {
  EXPECT_EQ(partsOf("[see www.x.org now](y)"),
            (Lines{"BeginParagraph", "BeginLink @y", "Text 'see www.x.org now'", "EndLink", "EndParagraph"}));
}

// The parser pairs an emphasis mark with one in the address, then reports only one of the two.
TEST(MarkdownReader, BalancesStylesThatALinkAddressSplits) {
  EXPECT_EQ(partsOf("[a](x*y \"t\")b* c"),
            (Lines{"BeginParagraph", "BeginLink @x*y title 't'", "Text 'a'", "EndLink", "Text 'b c'", "EndParagraph"}));
  EXPECT_EQ(partsOf("- *a [b](x*y) c\n- d"),
            (Lines{"BeginList tight", "BeginItem", "BeginEmphasis", "Text 'a '", "BeginLink @x*y", "Text 'b'",
                   "EndLink", "Text ' c'", "EndEmphasis", "EndItem", "BeginItem", "Text 'd'", "EndItem", "EndList"}));
}

TEST(MarkdownReader, EmitsAnImageAsOneEvent) {
  EXPECT_EQ(partsOf("a ![the *old* `cat` ![in](x) <b>one</b>](cat.png \"Cat\") b"),
            (Lines{"BeginParagraph", "Text 'a '", "Image 'the old cat in one' @cat.png", "Text ' b'", "EndParagraph"}));
}

TEST(MarkdownReader, EmitsHardBreaksAndUnsafeTagsInPlace) {
  EXPECT_EQ(partsOf("a  \nb <kbd>x</kbd><br>\nc", Safety::Unsafe),
            (Lines{"BeginParagraph", "Text 'a\\nb '", "Markup '<kbd>'", "Text 'x'", "Markup '</kbd><br>'", "Text '  c'",
                   "EndParagraph"}));
}

TEST(MarkdownReader, EmitsATightListWithoutParagraphs) {
  EXPECT_EQ(partsOf("- a\n- b\n  1. c"),
            (Lines{"BeginList tight", "BeginItem", "Text 'a'", "EndItem", "BeginItem", "Text 'b'",
                   "BeginList from 1 tight", "BeginItem", "Text 'c'", "EndItem", "EndList", "EndItem", "EndList"}));
}

TEST(MarkdownReader, EmitsALooseListWithParagraphsAndItsFirstNumber) {
  EXPECT_EQ(partsOf("7. a\n\n8. b"),
            (Lines{"BeginList from 7", "BeginItem", "BeginParagraph", "Text 'a'", "EndParagraph", "EndItem",
                   "BeginItem", "BeginParagraph", "Text 'b'", "EndParagraph", "EndItem", "EndList"}));
}

TEST(MarkdownReader, EmitsTasks) {
  EXPECT_EQ(partsOf("- [ ] a\n- [x] b"), (Lines{"BeginList tight", "BeginItem open", "Text 'a'", "EndItem",
                                                "BeginItem done", "Text 'b'", "EndItem", "EndList"}));
}

TEST(MarkdownReader, KeepsLineBreaksAndIndentationOfCode) {
  EXPECT_EQ(partsOf("```c++ more\nif (a < b)\n  &amp;\n\n  x\n```"),
            (Lines{"BeginCodeBlock 'c++'", "Text 'if (a < b)\\n  &amp;\\n\\n  x\\n'", "EndCodeBlock"}));
  EXPECT_EQ(partsOf("    a\n\n      b"), (Lines{"BeginCodeBlock", "Text 'a\\n\\n  b\\n'", "EndCodeBlock"}));
}

TEST(MarkdownReader, EmitsAnUnsafeHtmlBlockAsOneEvent) {
  EXPECT_EQ(partsOf("<div>\n*a* &amp;\n</div>", Safety::Unsafe), (Lines{"Markup '<div>\\n*a* &amp;\\n</div>\\n'"}));
}

TEST(MarkdownReader, EmitsQuotesAndRules) {
  EXPECT_EQ(partsOf("> a\n\n---"),
            (Lines{"BeginQuote", "BeginParagraph", "Text 'a'", "EndParagraph", "EndQuote", "Rule"}));
}

TEST(MarkdownReader, ReadsAnEscapedBarInTheCodeOfACell) {
  EXPECT_EQ(partsOf("| `a\\|b` |\n| --- |\n\n`c\\|d`"),
            (Lines{"BeginTable", "BeginRow header", "BeginCell", "BeginCode", "Text 'a|b'", "EndCode", "EndCell",
                   "EndRow", "EndTable", "BeginParagraph", "BeginCode", "Text 'c\\|d'", "EndCode", "EndParagraph"}));
}

TEST(MarkdownReader, EmitsTablesWithHeaderAlignmentAndEveryCell) {
  EXPECT_EQ(partsOf("| a | b |\n|:-:|--:|\n| c |"),
            (Lines{"BeginTable", "BeginRow header", "BeginCell center", "Text 'a'", "EndCell", "BeginCell right",
                   "Text 'b'", "EndCell", "EndRow", "BeginRow", "BeginCell center", "Text 'c'", "EndCell",
                   "BeginCell right", "EndCell", "EndRow", "EndTable"}));
}

TEST(MarkdownReader, SplitsALongTextIntoSeveral) {
  const std::string code = "```\n" + std::string(50000, 'x') + "\n" + std::string(50000, 'y') + "\n```";
  const Lines parts = partsOf(code);
  EXPECT_GT(parts.size(), 3u);
  std::string text;
  for (const std::string& part : parts) {
    if (part.starts_with("Text '")) {
      text += part.substr(6, part.size() - 7);
    }
  }
  EXPECT_TRUE(text == std::string(50000, 'x') + "\\n" + std::string(50000, 'y') + "\\n");
}

TEST(MarkdownReader, PropagatesExceptionsFromItsSink) {
  struct Throwing : RecordedParts {
    void text(std::string_view) override { throw std::runtime_error("enough"); }
  } sink;
  EXPECT_THROW(readMarkdown("text", Safety::Safe, sink), std::runtime_error);
}

TEST(MarkdownReader, StopsWhenItsSinkThrows) {
  struct Throwing : RecordedParts {
    void text(std::string_view) override {
      ++texts;
      throw std::runtime_error("enough");
    }
    int texts = 0;
  } sink;
  for (const std::string_view text : {"a\n\nb", "# a\n\nb", "- a\n- b", "| a |\n|---|\n| b |", "`a` *b*\n\n[c](d)"}) {
    sink.texts = 0;
    EXPECT_THROW(readMarkdown(text, Safety::Safe, sink), std::runtime_error);
    EXPECT_EQ(sink.texts, 1) << text;
  }
}

}  // namespace
}  // namespace scrivalen::command::test
