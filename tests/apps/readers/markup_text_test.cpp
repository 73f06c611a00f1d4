#include "readers/markdown/markup_text.h"

#include <gtest/gtest.h>

namespace scrivalen::command {
namespace {

std::string textOfMarkup(std::string_view markup) {
  std::string text;
  MarkupText().appendBlock(text, markup);
  return text;
}

TEST(MarkupText, DropsTags) { EXPECT_EQ(textOfMarkup("a <b class='x'>bold</b> <i>word</i>"), "a bold word"); }

TEST(MarkupText, BreaksTheLineAtABreak) { EXPECT_EQ(textOfMarkup("a<br>b<BR/>c<br />d"), "a\nb\nc\nd"); }

TEST(MarkupText, BreaksTheLineOnceBetweenBlocks) {
  EXPECT_EQ(textOfMarkup("<div>\n<p>one</p>\n<p>two</p>\n</div>"), "one\ntwo\n");
}

TEST(MarkupText, KeepsTheCellsOfARowInALine) {
  EXPECT_EQ(textOfMarkup("<table>\n<tr>\n<th>a</th>\n<th>b</th></tr><tr><td>c<td>d</table>"), "a b\nc d\n");
}

TEST(MarkupText, CollapsesBlanks) { EXPECT_EQ(textOfMarkup("a \n\t b"), "a b"); }

TEST(MarkupText, ResolvesCharacterReferences) {
  EXPECT_EQ(textOfMarkup("R&amp;D &#8364; & &unknown"), "R&D € & &unknown");
}

TEST(MarkupText, DropsCommentsDeclarationsScriptsAndStyleSheets) {
  EXPECT_EQ(textOfMarkup("a<!-- <b>no</b> --><!DOCTYPE x><?php no ?>b"), "ab");
  EXPECT_EQ(textOfMarkup("a<script>if (1 < 2) no();</script><STYLE>p {}</style>b"), "ab");
}

TEST(MarkupText, IgnoresATagsEndInAQuotedAttribute) {
  EXPECT_EQ(textOfMarkup("<a title=\"1 > 0\" rel='>'>text</a>"), "text");
}

TEST(MarkupText, KeepsAnAngleBracketThatBeginsNoTag) { EXPECT_EQ(textOfMarkup("1 < 2 <3"), "1 < 2 <3"); }

TEST(MarkupText, KeepsATagThatNeverEnds) { EXPECT_EQ(textOfMarkup("a<b class=\"x"), "a<b class=\"x"); }

TEST(MarkupText, EndsAtAnUnclosedCommentOrScript) {
  EXPECT_EQ(textOfMarkup("a<!-- b"), "a");
  EXPECT_EQ(textOfMarkup("a<script>b </scrap>"), "a");
}

TEST(MarkupText, IgnoresAQuoteOutsideAnAttributeValue) {
  EXPECT_EQ(textOfMarkup("a<b it's>c</b it's> d<i title = '>'>e"), "ac de");
}

TEST(MarkupText, KeepsElementsWhoseNameOnlyBeginsWithScript) {
  EXPECT_EQ(textOfMarkup("a<script_x>b</script_x>c<style-x>d</style-x>"), "a\nb\nc\nd\n");
  EXPECT_EQ(textOfMarkup("a<script>b</scripts>c</script\n>d"), "ad");
}

TEST(MarkupText, DoesNotReadAReferenceAcrossATag) { EXPECT_EQ(textOfMarkup("a &<b>c</b>; d"), "a &c; d"); }

TEST(MarkupText, FindsTheEndOfEmptyCommentsAndMarkedSections) {
  EXPECT_EQ(textOfMarkup("a<!-->b<!--->c<![CDATA[ > ]]>d"), "abcd");
}

TEST(MarkupText, CarriesHiddenContentFromPieceToPiece) {
  MarkupText markup;
  std::string text;
  markup.appendBlock(text, "a<SCRIPT>b");
  EXPECT_EQ(markup.hidden(), HiddenContent::Script);
  markup.appendInline(text, "</style><br>");
  markup.appendBlock(text, "</Script >c<style x>d");
  EXPECT_EQ(markup.hidden(), HiddenContent::StyleSheet);
  markup.appendBlock(text, "</style>e<!-- f");
  EXPECT_EQ(markup.hidden(), HiddenContent::Comment);
  markup.appendBlock(text, "g -->h");
  EXPECT_EQ(markup.hidden(), HiddenContent::None);
  EXPECT_EQ(text, "aceh");
}

TEST(MarkupText, KeepsOnlyLineBreaksWithinALine) {
  std::string text = "a ";
  MarkupText().appendInline(text, "<kbd><!-- x --><br/></custom>");
  EXPECT_EQ(text, "a \n");
}

}  // namespace
}  // namespace scrivalen::command
