#include "command_support.h"

#include <gtest/gtest.h>

namespace scrivalen::command::test {
namespace {

// What stands in the body of the document.
std::string bodyOf(std::string_view markdown) {
  CommandRun run;
  const Result result = run.with("in.md", markdown).run({"@/in.md", "-o", "@/out.rtf"});
  EXPECT_EQ(result.status, 0) << result.error;
  const std::string rtf = run.bytes("out.rtf");
  const std::string_view paper = "\\paperw11906\\paperh16838\r\n{";
  const std::size_t begin = rtf.find(paper);
  EXPECT_TRUE(begin != std::string::npos && rtf.ends_with("}}")) << rtf;
  return rtf.substr(begin + paper.size(), rtf.size() - begin - paper.size() - 2);
}

const std::string kEnd = "\\s0\\ql\\par\\pard\\plain ";

TEST(RtfOutput, HasHeadingsOfSizeAndWeight) {
  EXPECT_EQ(bodyOf("# A\n\n## B"),
            "{\\*\\bkmkstart a}{\\*\\bkmkend a}\\b{\\fs36 A}\\b0 \\s1\\ql\\par\\pard\\plain " + kEnd +
                "{\\*\\bkmkstart b}{\\*\\bkmkend b}\\b{\\fs30 B}\\b0 \\s2\\ql\\par\\pard\\plain ");
}

TEST(RtfOutput, SeparatesParagraphsAndKeepsStyles) {
  EXPECT_EQ(bodyOf("a *b **c*** d\n\n**e**"), "a \\i{b \\b{c}\\b0 }\\i0  d" + kEnd + kEnd + "\\b{e}\\b0 " + kEnd);
}

TEST(RtfOutput, IsBoldOnceInABoldHeading) {
  EXPECT_NE(bodyOf("# A **b** c").find("\\b{\\fs36 A b c}\\b0 "), std::string::npos);
}

TEST(RtfOutput, EscapesWhatMeansSomethingThere) {
  EXPECT_EQ(bodyOf("{x} \\\\ \xE2\x82\xAC \xCE\xA9 \xF0\x9F\x98\x80"),
            "\\{x\\} \\\\ \x80 \\u937? \\u-10179?\\u-8704?" + kEnd);
}

TEST(RtfOutput, KeepsBulletsNumbersAndDepth) {
  EXPECT_EQ(bodyOf("- a\n  1. b\n- [x] c"), "\x95\ta" + kEnd + "\t1.\tb" + kEnd + "\x95\t[x] c" + kEnd);
}

TEST(RtfOutput, KeepsTheLinesOfCode) { EXPECT_EQ(bodyOf("```\na\n\n  b\n```"), "a\\line \\line   b" + kEnd); }

TEST(RtfOutput, LinksInsideAndOutside) {
  EXPECT_EQ(bodyOf("[a](#b)"),
            " {\\field{\\*\\fldinst {HYPERLINK \\\\l \"b\" }}{\\fldrslt {\\cs15\\ul\\cf2 a}}} " + kEnd);
  EXPECT_EQ(bodyOf("[*a*](https://x.org)"),
            "{\\field{\\*\\fldinst {HYPERLINK \"https://x.org\" }}{\\fldrslt {\\ul \\cf2 a\\cf0 \\ul0 }}}\n" + kEnd);
  EXPECT_EQ(bodyOf("[a](b.md)"), "a (b.md)" + kEnd);
}

TEST(RtfOutput, HasTablesWithABoldHeader) {
  const std::string table = bodyOf("| a | b |\n|---|---|\n| 1 | *2* |");
  EXPECT_TRUE(table.starts_with("\\par {\\trowd"));
  EXPECT_NE(table.find("\\intbl \\b{a}\\b0 \\cell \r\n\\intbl \\b{b}\\b0 \\cell \r\n"), std::string::npos);
  EXPECT_NE(table.find("\\intbl 1\\cell \r\n\\intbl \\i{2}\\i0 \\cell \r\n"), std::string::npos);
}

TEST(RtfOutput, HoldsAParagraphOfAnyLength) {
  EXPECT_EQ(bodyOf(std::string(100000, 'x')), std::string(100000, 'x') + kEnd);
}

}  // namespace
}  // namespace scrivalen::command::test
