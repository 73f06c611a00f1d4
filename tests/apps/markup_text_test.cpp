#include "readers/markup_text.h"

#include "texts.h"

#include <gtest/gtest.h>

namespace scrivalen::command {
namespace {

std::string textOfMarkup(std::string_view markup) {
  std::wstring text;
  appendTextOfMarkupBlock(text, wide(markup));
  return utf8(text);
}

TEST(MarkupText, HasNoTags) { EXPECT_EQ(textOfMarkup("a <b class='x'>bold</b> <i>word</i>"), "a bold word"); }

TEST(MarkupText, BreaksTheLineAtABreak) { EXPECT_EQ(textOfMarkup("a<br>b<BR/>c<br />d"), "a\nb\nc\nd"); }

TEST(MarkupText, BreaksTheLineOnceWhereBlocksMeet) {
  EXPECT_EQ(textOfMarkup("<div>\n<p>one</p>\n<p>two</p>\n</div>"), "one\ntwo\n");
}

TEST(MarkupText, DrawsBlanksTogether) { EXPECT_EQ(textOfMarkup("a \n\t b"), "a b"); }

TEST(MarkupText, ResolvesCharacterReferences) {
  EXPECT_EQ(textOfMarkup("R&amp;D &#8364; & &unknown"), "R&D € & &unknown");
}

TEST(MarkupText, HasNoCommentsDeclarationsScriptsAndStyleSheets) {
  EXPECT_EQ(textOfMarkup("a<!-- <b>no</b> --><!DOCTYPE x><?php no ?>b"), "ab");
  EXPECT_EQ(textOfMarkup("a<script>if (1 < 2) no();</script><STYLE>p {}</style>b"), "ab");
}

TEST(MarkupText, KnowsThatAQuotedAttributeMayHoldATagsEnd) {
  EXPECT_EQ(textOfMarkup("<a title=\"1 > 0\" rel='>'>text</a>"), "text");
}

TEST(MarkupText, KeepsAnAngleThatBeginsNoTag) { EXPECT_EQ(textOfMarkup("1 < 2 <3"), "1 < 2 <3"); }

TEST(MarkupText, EndsWithATagThatDoesNotEnd) { EXPECT_EQ(textOfMarkup("a<b class=\"x"), "a"); }

TEST(MarkupText, EndsWithACommentOrAScriptThatDoesNotEnd) {
  EXPECT_EQ(textOfMarkup("a<!-- b"), "a");
  EXPECT_EQ(textOfMarkup("a<script>b </scrap>"), "a");
}

TEST(MarkupText, WithinALineIsNothingButItsBreaks) {
  std::wstring text = L"a ";
  appendTextOfInlineMarkup(text, L"<kbd><!-- x --><br/></custom>");
  EXPECT_EQ(text, L"a \n");
}

}  // namespace
}  // namespace scrivalen::command
