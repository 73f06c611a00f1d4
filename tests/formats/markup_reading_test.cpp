#include "formats/markup_reading.h"

#include <gtest/gtest.h>

using namespace scrivalen;

namespace {

std::string decoded(std::string text) {
  decodeReferences(text);
  return text;
}

}  // namespace

TEST(DecodedReferences, AreThoseOfXml) {
  EXPECT_EQ(decoded("Smith &amp; Sons &lt;&gt;&quot;&apos; &#65;&#x42; &#8364;"), "Smith & Sons <>\"' AB \xE2\x82\xAC");
  EXPECT_EQ(decoded("&amp;amp;"), "&amp;");
}

TEST(DecodedReferences, LeaveEverythingElse) {
  for (const char* text : {"Smith & Sons", "a&b;c", "&nbsp;", "&#0;", "&#xD800;", "&#X41;", "&#;", "&#x;", "&", "&amp",
                           "&#1114112;", "&#99999999999999999999;"}) {
    EXPECT_EQ(decoded(text), text);
  }
}

TEST(TextOfMarkup, HasNoTags) {
  EXPECT_EQ(textOfMarkup("a <b class=\"x>y\">bold</b> word<img src='1.png'>"), "a bold word");
  EXPECT_EQ(textOfMarkup("a<!-- <b>hidden</b> -->b<!DOCTYPE html>c<?php x ?>d"), "abcd");
}

TEST(TextOfMarkup, HasNoScriptsAndStyles) {
  EXPECT_EQ(textOfMarkup("a<script>if (a < b) { x('</b>'); }</script>b<STYLE>p{}</STYLE>c"), "abc");
  EXPECT_EQ(textOfMarkup("a<script>never ended"), "a");
}

TEST(TextOfMarkup, DecodesReferences) {
  EXPECT_EQ(textOfMarkup("R&amp;D &copy; 2024&nbsp;&ndash; &Auml;&yuml;&#x20AC; &unknown; &"),
            "R&D \xC2\xA9 2024\xC2\xA0\xE2\x80\x93 \xC3\x84\xC3\xBF\xE2\x82\xAC &unknown; &");
}

TEST(TextOfMarkup, BreaksLinesAtBlocks) {
  EXPECT_EQ(textOfMarkup("<h1>One</h1>\n<p>two<br>three</p>\n<ul>\n <li>four</li>\n</ul>"), "One\ntwo\nthree\nfour");
  EXPECT_EQ(textOfMarkup("<table><tr><td>a</td><td>b</td></tr><tr><td>c</td></tr></table>"), "a b\nc");
}

TEST(TextOfMarkup, HasOneBlankForWhiteSpace) {
  EXPECT_EQ(textOfMarkup("a \n\t b <i> c</i> d"), "a b c d");
  EXPECT_EQ(textOfMarkup(" a "), " a ");
}

TEST(TextOfMarkup, KeepsASignThatBeginsNoTag) {
  EXPECT_EQ(textOfMarkup("1 < 2 <3 < "), "1 < 2 <3 < ");
  EXPECT_EQ(textOfMarkup("a<b"), "a");
}

TEST(MarkupOfABlock, BeginsWithATagThatParagraphsCannotContain) {
  for (const char* block :
       {"<p>x", " \n<DIV class=a>", "</div>", "<table>", "<!-- x -->", "<h2>", "<hr/>", "<style>"}) {
    EXPECT_TRUE(beginsWithBlock(block)) << block;
  }
  for (const char* text : {"", "x<p>", "<b>x</b>", "<br>", "<a href=\"x\">", "< p", "&lt;p", "<img src=1>"}) {
    EXPECT_FALSE(beginsWithBlock(text)) << text;
  }
}
