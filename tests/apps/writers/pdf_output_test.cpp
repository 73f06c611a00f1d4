#include "command_support.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace scrivalen::command::test {
namespace {

std::string documentOf(const std::string& name, std::string_view input, const std::vector<std::string>& options = {}) {
  CommandRun run;
  std::vector<std::string> arguments = {"@/" + name, "-o", "@/out.pdf"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const Result result = run.with(name, input).run(arguments);
  EXPECT_EQ(result.status, 0) << result.error;
  return run.bytes("out.pdf");
}

// Font, size and text of each line on the pages, as in "/F1 8 (a)".
std::vector<std::string> linesOf(std::string_view markdown) {
  const std::string pdf = documentOf("in.md", markdown);
  std::vector<std::string> lines;
  std::string font;
  for (std::size_t at = 0; at < pdf.size();) {
    const std::size_t end = std::min(pdf.find("\r\n", at), pdf.size());
    const std::string line = pdf.substr(at, end - at);
    if (line.ends_with(" Tf")) {
      font = line.substr(0, line.size() - 2);
    } else if (line.ends_with("Tj")) {
      lines.push_back(font + line.substr(0, line.size() - 2));
    }
    at = end + 2;
  }
  return lines;
}

using Lines = std::vector<std::string>;

bool holds(const std::string& text, std::string_view part) { return text.find(part) != std::string::npos; }

TEST(PdfOutput, SetsTheSizeAndWeightOfHeadings) {
  EXPECT_EQ(linesOf("# A\n\n## B\n\n### C\n\n#### D\n\n##### E\n\n###### F\n\ng"),
            (Lines{"/F2 20 (A)", "/F2 18 (B)", "/F2 16 (C)", "/F2 15 (D)", "/F2 14 (E)", "/F2 12 (F)", "/F1 8 (g)"}));
}

TEST(PdfOutput, DrawsAParagraphInTheStyleOfMostOfItsText) {
  EXPECT_EQ(linesOf("plain text with **bold** at its **end**\n\n**bold text** a"),
            (Lines{"/F1 8 (plain text with bold at its end)", "/F2 8 (bold text a)"}));
}

TEST(PdfOutput, KeepsBulletsNumbersAndDepth) {
  EXPECT_EQ(
      linesOf("- a\n  1. b\n  2. c\n- [x] d\n\n> e"),
      (Lines{"/F1 8 (\x95 a)", "/F1 8 (      1. b)", "/F1 8 (      2. c)", "/F1 8 (\x95 [x] d)", "/F1 8 (      e)"}));
}

TEST(PdfOutput, PutsAnItemsMarkerBeforeALink) { EXPECT_EQ(linesOf("- [a](#b)"), (Lines{"/F1 8 (\x95 a)"})); }

TEST(PdfOutput, KeepsTheMarkersOfItemsThatBeginTogether) {
  EXPECT_EQ(linesOf("- - a\n  - b"), (Lines{"/F1 8 (\x95 \x95 a)", "/F1 8 (      \x95 b)"}));
}

TEST(PdfOutput, KeepsAnEmptyItem) { EXPECT_EQ(linesOf("-\n- b"), (Lines{"/F1 8 (\x95)", "/F1 8 (\x95 b)"})); }

TEST(PdfOutput, KeepsTheLinesOfCode) {
  EXPECT_EQ(linesOf("```\nif (a) {\n\n    b();\n}\n```"),
            (Lines{"/F1 8 (if \\(a\\) {)", "/F1 8 ( )", "/F1 8 (    b\\(\\);)", "/F1 8 (})"}));
}

TEST(PdfOutput, WritesRulesImagesAndDeletedTextAsText) {
  EXPECT_EQ(linesOf("***"), (Lines{"/F1 8 (" + std::string(40, '_') + ")"}));
  EXPECT_EQ(linesOf("![a](b.png) ~~c~~"), (Lines{"/F1 8 (a ~~c~~)"}));
}

TEST(PdfOutput, SpellsOutExternalAddresses) {
  EXPECT_EQ(linesOf("[a](https://x.org) and <https://y.org>"),
            (Lines{"/F1 8 (a \\(https://x.org\\) and https://y.org)"}));
}

TEST(PdfOutput, LinksToHeadings) {
  const std::string pdf = documentOf("in.md", "[to b](#b)\n\n# B");
  EXPECT_TRUE(holds(pdf, "/Subtype /Link\r\n/Rect [50 795 565 805]\r\n/Dest [5 0 R\r\n/XYZ\r\n50\r\n782\r\n0\r\n]"))
      << pdf;
  EXPECT_FALSE(holds(documentOf("in.md", "[to b](#c)\n\n# B"), "/Link"));
}

TEST(PdfOutput, SkipsNoLevelInTheOutline) {
  const std::string pdf = documentOf("in.md", "# A\n\n### B\n\n## C\n\n# D");
  EXPECT_TRUE(holds(pdf, "/Type /Outlines\r\n/Count 4\r\n"));
  EXPECT_TRUE(holds(pdf, "/Type /Outline\r\n/Count 2\r\n/Title (A)\r\n"));
  EXPECT_TRUE(holds(pdf, "/Type /Outline\r\n/Title (B)\r\n"));
  EXPECT_TRUE(holds(pdf, "/Type /Outline\r\n/Title (C)\r\n"));
  EXPECT_TRUE(holds(pdf, "/Type /Outline\r\n/Title (D)\r\n"));
}

TEST(PdfOutput, HasItsContentsOnThePage) {
  const std::string pdf = documentOf("in.md", "# A\n\n## B {x}\n\n### C", {"--toc"});
  EXPECT_TRUE(holds(pdf, "(      B {x})Tj"));
  EXPECT_TRUE(holds(pdf, "(            C)Tj"));
  EXPECT_TRUE(holds(pdf, "/Subtype /Link"));
}

TEST(PdfOutput, HasTablesWithABoldHeaderOnGrey) {
  const std::string pdf = documentOf("in.csv", "a,b\n1,2\n");
  EXPECT_TRUE(holds(pdf, "0.750000 0.750000 0.750000 rg\r\n50 779 257 10 re\r\nF\r\n")) << pdf;
  EXPECT_TRUE(holds(pdf, "/F2 8 Tf\r\n0.000000 0.000000 0.000000 rg\r\n(a)Tj\r\n"));
  EXPECT_TRUE(holds(pdf, "1.000000 1.000000 1.000000 rg\r\n50 769 257 10 re\r\nF\r\n"));
  EXPECT_TRUE(holds(pdf, "/F1 8 Tf\r\n0.000000 0.000000 0.000000 rg\r\n(1)Tj\r\n"));
}

TEST(PdfOutput, DrawsABoldCellBold) {
  EXPECT_EQ(linesOf("| a |\n|---|\n| **b** |\n| *c* |"), (Lines{"/F2 8 (a)", "/F2 8 (b)", "/F1 8 (c)"}));
}

TEST(PdfOutput, IsLandscapeOnRequest) {
  EXPECT_TRUE(holds(documentOf("in.md", "a", {"--landscape"}), "/MediaBox [0 0 840 595]"));
}

TEST(PdfOutput, EscapesSpecialCharacters) {
  EXPECT_EQ(linesOf("(a) \\\\ \xE2\x82\xAC"), (Lines{"/F1 8 (\\(a\\) \\\\ \x80)"}));
}

TEST(PdfOutput, WarnsOfCharactersItCannotWrite) {
  CommandRun run;
  const Result result = run.with("in.md", "\xCE\xA9 \xE2\x86\x92").run({"@/in.md", "-o", "@/out.pdf"});
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.error.find("2 characters could not be written as they were given, the first is U+03A9."),
            std::string::npos);
  EXPECT_TRUE(holds(run.bytes("out.pdf"), "(? ->)Tj"));
}

TEST(PdfOutput, HoldsAParagraphOfAnyLength) {
  std::size_t letters = 0;
  for (const std::string& line : linesOf(std::string(100000, 'x'))) {
    letters += static_cast<std::size_t>(std::count(line.begin(), line.end(), 'x'));
  }
  EXPECT_EQ(letters, 100000u);
}

TEST(PdfOutput, EscapesClassicTitlesInTheOutline) {
  const std::string pdf = documentOf("in.md", "# x) /A << /S /JavaScript >>\n\n# (a) \\\\", {"--classic"});
  EXPECT_TRUE(holds(pdf, "/Title (x\\) /A << /S /JavaScript >>)\r\n")) << pdf;
  EXPECT_TRUE(holds(pdf, "/Title (\\(a\\) \\\\)\r\n")) << pdf;
}

// The low byte of U+0129 is a parenthesis, as is that of the second surrogate of U+10429.
TEST(PdfOutput, EscapesClassicTitlesWhoseLowBytesEndAString) {
  const std::string pdf = documentOf("in.md", "# a\xC4\xA9 \xE6\x84\xA8 \xF0\x90\x90\xA9 \xE6\x85\x9C", {"--classic"});
  EXPECT_TRUE(holds(pdf, "/Title (a\\) \\( \xFD \\\\)\r\n")) << pdf;
}

TEST(PdfOutput, KeepsOtherClassicTitlesAsTheyAre) {
  const std::string pdf = documentOf("in.md", "# \xC3\xA9 \xC4\x80 \xF0\x9F\x98\x80", {"--classic"});
  EXPECT_TRUE(holds(pdf, std::string_view("/Title (\xE9 \0 \x3D\0)\r\n", 17))) << pdf;
}

TEST(PdfOutput, DeclaresTwiceTheLengthWhenClassic) {
  EXPECT_TRUE(holds(documentOf("in.md", "a", {"--classic"}), "/Length 276\r\n"));
}

}  // namespace
}  // namespace scrivalen::command::test
