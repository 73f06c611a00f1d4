#include "command_support.h"

#include <gtest/gtest.h>

namespace scrivalen::command::test {
namespace {

// The content of the root element.
std::string contentOf(std::string_view markdown) {
  const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report>\n";
  const std::string tail = "</report>";
  const std::string xml = xmlOf(markdown);
  EXPECT_TRUE(xml.starts_with(head) && xml.ends_with(tail)) << xml;
  return xml.substr(head.size(), xml.size() - head.size() - tail.size());
}

TEST(XmlOutput, IsADocumentEvenForAnEmptyText) { EXPECT_EQ(contentOf(""), ""); }

TEST(XmlOutput, HasHeadingsAndParagraphs) {
  EXPECT_EQ(contentOf("# A & *B*\n\nc <d>x</d> **e**"), "<text>A &amp; B</text>\n<paragraph>c x e</paragraph>\n");
}

TEST(XmlOutput, KeepsWhatLooksLikeMarkup) {
  EXPECT_EQ(contentOf("`&lt;` 1 < 2 \\<a> ]]> \"q\""),
            "<paragraph>&amp;lt; 1 &lt; 2 &lt;a&gt; ]]&gt; &quot;q&quot;</paragraph>\n");
}

TEST(XmlOutput, BeginsItemsWithTheirBulletOrNumber) {
  EXPECT_EQ(contentOf("- a\n  1. b\n- [x] c\n\n  d\n-"),
            "<paragraph>- a</paragraph>\n<paragraph>1. b</paragraph>\n<paragraph>- [x] c</paragraph>\n"
            "<paragraph>d</paragraph>\n<paragraph>- </paragraph>\n");
}

TEST(XmlOutput, WritesCodeAsOneText) { EXPECT_EQ(contentOf("```\na <\n\n  b\n```"), "<text>a &lt;\n\n  b</text>\n"); }

TEST(XmlOutput, WritesHeaderCellsInAnElementOfItsOwn) {
  EXPECT_EQ(contentOf("| a | b |\n|---|---|\n| 1 & 2 | [x](http://y) |\n| 3 |"),
            "<table>\n<header><cell>a</cell><cell>b</cell></header>\n"
            "<row><cell>1 &amp; 2</cell><cell>x (http://y)</cell></row>\n"
            "<row><cell>3</cell><cell></cell></row>\n</table>\n");
}

TEST(XmlOutput, EscapesReferencesTypedInCells) {
  CommandRun run;
  run.with("in.csv", "a\n&lt;&amp;<b>\n\"x\ny\"\n").run({"@/in.csv", "-o", "@/out.xml"});
  EXPECT_NE(run.bytes("out.xml").find("<row><cell>&amp;lt;&amp;amp;&lt;b&gt;</cell></row>\r\n"
                                      "<row><cell>x\r\ny</cell></row>\r\n"),
            std::string::npos);
}

TEST(XmlOutput, ReplacesForbiddenCharactersAndWarns) {
  CommandRun run;
  const Result result = run.with("in.md",
                                 "a\x01"
                                 "b \x0C c")
                            .run({"@/in.md", "-o", "@/out.xml"});
  EXPECT_NE(run.bytes("out.xml").find("<paragraph>a\uFFFDb \uFFFD c</paragraph>"), std::string::npos);
  EXPECT_EQ(result.error,
            "scrivalen: warning: '@/out.xml': 2 characters could not be written as they were given, the first is "
            "U+0001.\n");
}

}  // namespace
}  // namespace scrivalen::command::test
