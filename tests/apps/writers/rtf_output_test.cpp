#include "command_support.h"

#include <gtest/gtest.h>

namespace scrivalen::command::test {
namespace {

// The body of the document.
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

TEST(RtfOutput, SetsTheSizeAndWeightOfHeadings) {
  EXPECT_EQ(bodyOf("# A\n\n## B"),
            "{\\*\\bkmkstart a}{\\*\\bkmkend a}\\b{\\fs36 A}\\b0 \\s1\\ql\\par\\pard\\plain " + kEnd +
                "{\\*\\bkmkstart b}{\\*\\bkmkend b}\\b{\\fs30 B}\\b0 \\s2\\ql\\par\\pard\\plain ");
}

TEST(RtfOutput, SeparatesParagraphsAndKeepsStyles) {
  EXPECT_EQ(bodyOf("a *b **c*** d\n\n**e**"), "a \\i{b \\b{c}\\b0 }\\i0  d" + kEnd + kEnd + "\\b{e}\\b0 " + kEnd);
}

TEST(RtfOutput, DoesNotRepeatBoldInABoldHeading) {
  EXPECT_NE(bodyOf("# A **b** c").find("\\b{\\fs36 A b c}\\b0 "), std::string::npos);
}

TEST(RtfOutput, EscapesSpecialCharacters) {
  EXPECT_EQ(bodyOf("{x} \\\\ \xE2\x82\xAC \xCE\xA9 \xF0\x9F\x98\x80"),
            "\\{x\\} \\\\ \x80 \\u937? \\u-10179?\\u-8704?" + kEnd);
}

TEST(RtfOutput, KeepsBulletsNumbersAndDepth) {
  EXPECT_EQ(bodyOf("- a\n  1. b\n- [x] c"), "\x95\ta" + kEnd + "\t1.\tb" + kEnd + "\x95\t[x] c" + kEnd);
}

TEST(RtfOutput, PutsTheMarkersOfItemsThatBeginTogetherOnOneLine) {
  EXPECT_EQ(bodyOf("- - a\n  - b"), "\x95\t\x95\ta" + kEnd + "\t\x95\tb" + kEnd);
  EXPECT_EQ(bodyOf("- > a"), "\x95\ta" + kEnd);
}

TEST(RtfOutput, PutsAnItemsMarkerBeforeItsTable) {
  EXPECT_TRUE(bodyOf("- | a |\n  |---|\n  | 1 |").starts_with("\x95\t" + kEnd + "\\par {\\trowd"));
}

TEST(RtfOutput, KeepsAnEmptyItem) { EXPECT_EQ(bodyOf("-\n- b"), "\x95\t" + kEnd + "\x95\tb" + kEnd); }

TEST(RtfOutput, SeparatesTheItemsOfALooseList) {
  EXPECT_EQ(bodyOf("- a\n\n- b"), "\x95\ta" + kEnd + kEnd + "\x95\tb" + kEnd);
}

TEST(RtfOutput, IndentsCodeAndQuotes) {
  EXPECT_EQ(bodyOf("- a\n\n      x\n      y"), "\x95\ta" + kEnd + kEnd + "\tx\\line \ty" + kEnd);
  EXPECT_EQ(bodyOf("> a"), "\ta" + kEnd);
}

TEST(RtfOutput, HasASizeForEveryLevel) {
  EXPECT_NE(bodyOf("### a").find("\\b{\\fs26 a}\\b0 \\s3"), std::string::npos);
  EXPECT_NE(bodyOf("#### a").find("\\b{\\fs24 a}\\b0 \\s4"), std::string::npos);
  EXPECT_NE(bodyOf("##### a").find("\\b{\\fs22 a}\\b0 \\s5"), std::string::npos);
  EXPECT_NE(bodyOf("###### a").find("\\b{\\fs20 a}\\b0 \\s6"), std::string::npos);
}

TEST(RtfOutput, WritesRulesImagesAndDeletedTextAsText) {
  EXPECT_EQ(bodyOf("***"), std::string(40, '_') + kEnd);
  EXPECT_EQ(bodyOf("![a](b.png) ~~c~~"), "a ~~c~~" + kEnd);
}

TEST(RtfOutput, LeavesNoGroupOpenInACell) {
  const std::string table = bodyOf("| a |\n|---|\n| **b *c* [d](https://x.org) [e](#a)** ~~f~~ `{` <br> g |");
  int depth = 0;
  for (std::size_t at = table.find("\\intbl"); at != std::string::npos; at = table.find("\\intbl", at + 1)) {
    const std::string cell = table.substr(at, table.find("\\cell ", at) - at);
    for (std::size_t i = 0; i < cell.size(); ++i) {
      if (cell[i] == '\\') {
        ++i;
      } else if (cell[i] == '{' || cell[i] == '}') {
        depth += cell[i] == '{' ? 1 : -1;
      }
    }
    EXPECT_EQ(depth, 0) << cell;
  }
}

// The whole document for an input file and options.
std::string documentOf(const std::string& name, std::string_view input, const std::vector<std::string>& options) {
  CommandRun run;
  std::vector<std::string> arguments = {"@/" + name, "-o", "@/out.rtf"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const Result result = run.with(name, input).run(arguments);
  EXPECT_EQ(result.status, 0) << result.error;
  return run.bytes("out.rtf");
}

TEST(RtfOutput, HasTheTitleOfItsFirstHeading) {
  EXPECT_TRUE(documentOf("in.md", "# A {b}", {}).starts_with("{\\rtf\\ansi{\\info{\\title A \\{b\\}}} \r\n"));
}

TEST(RtfOutput, TurnsALineBreakInTheTitleIntoABlank) {
  EXPECT_TRUE(documentOf("in.md", "a  \nb\n---", {}).starts_with("{\\rtf\\ansi{\\info{\\title a b}} \r\n"));
}

TEST(RtfOutput, IsLandscapeOnRequest) {
  EXPECT_NE(documentOf("in.md", "a", {"--landscape"}).find("\\landscape\\paperw16838\\paperh11906\r\n{a"),
            std::string::npos);
}

TEST(RtfOutput, LinksItsContentsToTheHeadings) {
  EXPECT_NE(documentOf("in.md", "# A\n\n## B\n\n### C", {"--toc"})
                .find("\t {\\field{\\*\\fldinst {HYPERLINK \\\\l \"b\" }}{\\fldrslt {\\cs15\\ul\\cf2 B}}} \\line "
                      "\t\t {\\field{\\*\\fldinst {HYPERLINK \\\\l \"c\" }}{\\fldrslt {\\cs15\\ul\\cf2 C}}} \\line " +
                      kEnd),
            std::string::npos);
}

TEST(RtfOutput, BreaksTheLineInACsvCell) {
  EXPECT_NE(documentOf("in.csv", "h\n\"a\nb\"\n", {}).find("\\intbl a\\line b\\cell \r\n"), std::string::npos);
}

TEST(RtfOutput, IsNotEscapedWhenClassic) {
  EXPECT_NE(documentOf("in.md", "{x}", {"--classic"}).find("\r\n{{x}" + kEnd), std::string::npos);
}

TEST(RtfOutput, WarnsOfTextThatTheClassicFormDrops) {
  CommandRun run;
  const Result result = run.with("in.md", std::string(5000, 'x')).run({"@/in.md", "-o", "@/out.rtf", "--classic"});
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.error.find("5000 characters could not be written as they were given, the first is U+0078."),
            std::string::npos)
      << result.error;
}

TEST(RtfOutput, KeepsTheLinesOfCode) { EXPECT_EQ(bodyOf("```\na\n\n  b\n```"), "a\\line \\line   b" + kEnd); }

TEST(RtfOutput, HasInternalAndExternalLinks) {
  EXPECT_EQ(bodyOf("[a](#b)"),
            " {\\field{\\*\\fldinst {HYPERLINK \\\\l \"b\" }}{\\fldrslt {\\cs15\\ul\\cf2 a}}} " + kEnd);
  EXPECT_EQ(bodyOf("[*a*](https://x.org)"),
            "{\\field{\\*\\fldinst {HYPERLINK \"https://x.org\" }}{\\fldrslt {\\ul \\cf2 a\\cf0 \\ul0 }}}\n" + kEnd);
  EXPECT_EQ(bodyOf("[a](b.md)"), "a (b.md)" + kEnd);
}

TEST(RtfOutput, BreaksTheLineInALink) {
  for (const std::string lineBreak : {"<br>", "  \n"}) {
    EXPECT_EQ(bodyOf("[a" + lineBreak + "b](https://x.org)"),
              "{\\field{\\*\\fldinst {HYPERLINK \"https://x.org\" }}{\\fldrslt {\\ul \\cf2 a\\line b\\cf0 \\ul0 }}}\n" +
                  kEnd);
    EXPECT_EQ(bodyOf("[a" + lineBreak + "b](#c)"),
              " {\\field{\\*\\fldinst {HYPERLINK \\\\l \"c\" }}{\\fldrslt {\\cs15\\ul\\cf2 a\\line b}}} " + kEnd);
    EXPECT_EQ(bodyOf("[a" + lineBreak + "b](c.md)"), "a\\line b (c.md)" + kEnd);
  }
}

// The classic form writes a line feed as it is, and readers ignore it.
TEST(RtfOutput, TurnsALineBreakInAClassicLinkIntoABlank) {
  EXPECT_NE(documentOf("in.md", "[a<br>b](c.md)", {"--classic"}).find("{a b (c.md)" + kEnd), std::string::npos);
}

TEST(RtfOutput, HasTablesWithABoldHeaderOnGrey) {
  const std::string table = bodyOf("| a | b |\n|---|---|\n| 1 | *2* |");
  EXPECT_TRUE(table.starts_with("\\par {\\trowd"));
  EXPECT_NE(table.find("\\intbl \\cf1 \\highlight16 \\b{a}\\b0 \\highlight0 \\cf0 \\cell \r\n"
                       "\\intbl \\cf1 \\highlight16 \\b{b}\\b0 \\highlight0 \\cf0 \\cell \r\n"),
            std::string::npos);
  EXPECT_NE(table.find("\\intbl 1\\cell \r\n\\intbl \\i{2}\\i0 \\cell \r\n"), std::string::npos);
}

TEST(RtfOutput, HoldsAParagraphOfAnyLength) {
  EXPECT_EQ(bodyOf(std::string(100000, 'x')), std::string(100000, 'x') + kEnd);
}

}  // namespace
}  // namespace scrivalen::command::test
