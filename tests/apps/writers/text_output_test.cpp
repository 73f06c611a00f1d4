#include "command_support.h"

#include <gtest/gtest.h>

namespace scrivalen::command::test {
namespace {

std::string tableText(const std::vector<std::string>& options, std::string_view csv) {
  CommandRun run;
  std::vector<std::string> arguments = {"@/in.csv", "-o", "@/out.txt"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const Result result = run.with("in.csv", csv).run(arguments);
  EXPECT_EQ(result.status, 0) << result.error;
  return run.text("out.txt");
}

TEST(TextOutput, SeparatesBlocksByAnEmptyLine) { EXPECT_EQ(textOf("a\nb\n\nc  \nd"), "a b\n\nc\nd\n"); }

TEST(TextOutput, UnderlinesTheTopTwoHeadingLevels) {
  EXPECT_EQ(textOf("# One *two*\n\ntext\n\n## Three\n\n### Four\n\ntext"),
            "One two\n=======\n\ntext\n\nThree\n-----\n\nFour\n\ntext\n");
}

TEST(TextOutput, PutsALinksAddressAfterItsText) {
  EXPECT_EQ(textOf("[a *b*](http://x) <http://y> <me@z.org> www.w.org [in](#here) [](http://e)"),
            "a b (http://x) http://y me@z.org www.w.org in http://e\n");
}

TEST(TextOutput, WritesAnImagesText) { EXPECT_EQ(textOf("a ![the *cat*](c.png) b"), "a the cat b\n"); }

TEST(TextOutput, MarksDeletedText) { EXPECT_EQ(textOf("~~old~~ new"), "~~old~~ new\n"); }

TEST(TextOutput, WritesTheItemsOfATightListOnConsecutiveLines) {
  EXPECT_EQ(textOf("text\n\n- a\n- b\n  - c\n    1. d\n- e\n\ntext"),
            "text\n\n- a\n- b\n  - c\n    1. d\n- e\n\ntext\n");
}

TEST(TextOutput, SeparatesTheItemsOfALooseList) {
  EXPECT_EQ(textOf("9. a\n\n   b\n10. c\n\ntext"), "9. a\n\n   b\n\n10. c\n\ntext\n");
}

TEST(TextOutput, KeepsEmptyItems) { EXPECT_EQ(textOf("-\n- a\n-"), "-\n- a\n-\n"); }

TEST(TextOutput, HasTasks) { EXPECT_EQ(textOf("- [ ] a\n- [x] b"), "- [ ] a\n- [x] b\n"); }

TEST(TextOutput, MarksEveryLineOfAQuote) {
  EXPECT_EQ(textOf("> a  \n> b\n>\n> - c\n>\n> > d\n\ne"), "> a\n> b\n>\n> - c\n>\n> > d\n\ne\n");
}

TEST(TextOutput, PutsAQuoteIntoAnItem) { EXPECT_EQ(textOf("- > a\n  > b\n\n  c"), "- > a b\n\n  c\n"); }

TEST(TextOutput, IndentsCode) {
  EXPECT_EQ(textOf("```\nif (a)\n  b <c>\n\nd\n```\n\n- x\n\n      y"),
            "    if (a)\n      b <c>\n\n    d\n\n- x\n\n      y\n");
}

TEST(TextOutput, HasRules) {
  EXPECT_EQ(textOf("a\n\n---\n\nb"), "a\n\n----------------------------------------\n\nb\n");
}

TEST(TextOutput, WritesEachRowOnALine) {
  EXPECT_EQ(textOf("t\n\n| a | b |\n|---|---|\n| *1* | [l](http://x) |\n| 2 |\n\nt"),
            "t\n\na\tb\n1\tl (http://x)\n2\t\n\nt\n");
}

TEST(TextOutput, KeepsARowOnOneLineWhateverItsCellsHold) {
  EXPECT_EQ(tableText({}, "a,b\n\"x\ny\",\"p\tq\"\n"), "a\tb\nx y\tp q\n");
}

TEST(TextOutput, SeparatesCellsByTheGivenText) {
  EXPECT_EQ(tableText({"--separator", ";"}, "a,b\n1;2,\"x;\ty\"\n"), "a;b\n1 2;x \ty\n");
  EXPECT_EQ(tableText({"--separator", " | "}, "a,b\n1 | 2 | 3,x\n"), "a | b\n1 2 3 | x\n");
  EXPECT_EQ(tableText({"--separator", " "}, "a,b\n1 2,x\n"), "a b\n1 2 x\n");
  EXPECT_EQ(tableText({"--separator", ""}, "a,b\n1,2\n"), "ab\n12\n");
}

TEST(TextOutput, KeepsTheTextOfHtmlAndDropsItsTags) {
  EXPECT_EQ(textOf("a <b>b</b><br>c\n\n<div>\n<p>d &amp; e</p>\nf</div>\n\n<!-- g -->\n\nh"),
            "a b\nc\n\nd & e\nf\n\nh\n");
}

TEST(TextOutput, WritesEveryCharacterAsUtf16) {
  CommandRun run;
  run.with("in.md", "é€😀").run({"@/in.md", "-o", "@/out.txt"});
  EXPECT_EQ(run.bytes("out.txt"), std::string("\xFF\xFE\xE9\x00\xAC\x20\x3D\xD8\x00\xDE\r\0\n\0", 14));
}

TEST(TextOutput, WritesSingleBytesOnRequestAndWarnsOfLostCharacters) {
  CommandRun run;
  const Result result = run.with("in.md", "aé €").run({"@/in.md", "--single-byte", "-o", "@/out.txt"});
  EXPECT_EQ(run.bytes("out.txt"), "a\xE9 \xAC\r\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error,
            "scrivalen: warning: '@/out.txt': 1 character could not be written as it was given: U+20AC.\n");
}

TEST(TextOutput, TurnsALineBreakInACellIntoABlank) { EXPECT_EQ(textOf("| a<br>b |\n|---|\n| c<br>d |"), "a b\nc d\n"); }

TEST(TextOutput, BreaksTheLineInALink) { EXPECT_EQ(textOf("[a<br>b](c)"), "a\nb (c)\n"); }

}  // namespace
}  // namespace scrivalen::command::test
