#include "command_support.h"
#include "support/documents/workbook.h"

#include <gtest/gtest.h>

namespace scrivalen::command::test {
namespace {

// The cells of a sheet, one per line, as in `A1 "text" bold`.
std::string cellsOf(const std::string& name, std::string_view input, const std::vector<std::string>& options = {}) {
  CommandRun run;
  std::vector<std::string> arguments = {"@/" + name, "-o", "@/out.xlsx"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  const Result result = run.with(name, input).run(arguments);
  EXPECT_EQ(result.status, 0) << result.error;
  EXPECT_EQ(result.error, "");
  return scrivalen::test::readCells(run.widePath("out.xlsx"));
}

std::string cellsOf(std::string_view markdown) { return cellsOf("in.md", markdown); }

// The part of the file that holds the sheet and how it is shown.
std::string sheetOf(const std::string& name, std::string_view input, const std::vector<std::string>& options = {}) {
  CommandRun run;
  std::vector<std::string> arguments = {"@/" + name, "-o", "@/out.xlsx"};
  arguments.insert(arguments.end(), options.begin(), options.end());
  EXPECT_EQ(run.with(name, input).with("styles", "sheet { freeze-rows: 0 }").run(arguments).status, 0);
  return scrivalen::test::workbookPart(run.widePath("out.xlsx"), "xl/worksheets/sheet1.xml");
}

TEST(XlsxOutput, HasARowForEachBlockAndBoldHeadings) {
  EXPECT_EQ(cellsOf("# A & B\n\none *two* **three**\nfour\n\n## C"),
            "A1 \"A & B\" bold\nA2 \"one two three four\"\nA3 \"C\" bold\n");
}

TEST(XlsxOutput, HasOneCellForACellOfSeveralStyles) {
  EXPECT_EQ(cellsOf("| a **b** | c |\n|---|---|\n| 1 *2* `3` [4](https://x.org) | |"),
            "A1 \"a b\" bold\nB1 \"c\" bold\nA2 \"1 2 3 4 (https://x.org)\"\n");
}

TEST(XlsxOutput, KeepsWhatLooksLikeANumberOrAFormula) {
  EXPECT_EQ(cellsOf("in.csv", "a,b\n007,=1+2\n"), "A1 \"a\" bold\nB1 \"b\" bold\nA2 \"007\"\nB2 \"=1+2\"\n");
}

TEST(XlsxOutput, IndentsListsAndQuotesByTheirDepth) {
  EXPECT_EQ(cellsOf("- a\n  1. b\n\n     > c\n- [x] d\n\n> e"),
            "A1 \"- a\"\nA2 \"    1. b\"\nA3 \"        c\"\nA4 \"- [x] d\"\nA5 \"e\"\n");
}

TEST(XlsxOutput, KeepsAnEmptyItemAndTheMarkerBeforeATable) {
  EXPECT_EQ(cellsOf("-\n- b"), "A1 \"- \"\nA2 \"- b\"\n");
  EXPECT_EQ(cellsOf("- | a |\n  |---|"), "A1 \"- \"\nA2 \"a\" bold\n");
}

TEST(XlsxOutput, HasARowForEachLineOfCode) {
  EXPECT_EQ(cellsOf("```\na\n\n  b\n```\nc"), "A1 \"a\"\nA3 \"  b\"\nA4 \"c\"\n");
}

TEST(XlsxOutput, OmitsRulesAndContents) {
  EXPECT_EQ(cellsOf("in.md", "# A\n\n***\n\n## B", {"--toc"}), "A1 \"A\" bold\nA2 \"B\" bold\n");
}

TEST(XlsxOutput, FreezesAHeaderRowThatBeginsTheInput) {
  const std::string frozen = "<pane ySplit=\"1\" topLeftCell=\"A2\" activePane=\"bottomLeft\" state=\"frozen\"/>";
  EXPECT_NE(sheetOf("in.csv", "a\n1\n").find(frozen), std::string::npos);
  EXPECT_NE(sheetOf("in.md", "| a |\n|---|\n| 1 |").find(frozen), std::string::npos);
  EXPECT_EQ(sheetOf("in.md", "b\n\n| a |\n|---|\n| 1 |").find("<pane"), std::string::npos);
}

TEST(XlsxOutput, LetsTheStyleSheetOverrideTheFrozenRow) {
  EXPECT_EQ(sheetOf("in.csv", "a\n1\n", {"--styles", "@/styles"}).find("<pane"), std::string::npos);
}

TEST(XlsxOutput, WarnsOfUnknownStyleSheetProperties) {
  CommandRun run;
  const Result result = run.with("in.csv", "a\n1\n")
                            .with("styles", "cell { margin: 1; font-size: 9 }")
                            .run({"@/in.csv", "-o", "@/out.xlsx", "--styles", "@/styles"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.error,
            "scrivalen: warning: '@/out.xlsx': the style sheet is not understood: 'cell' has no 'margin'.\n");
}

TEST(XlsxOutput, WarnsOfAByteOrderMarkInAStyleSheetAndAppliesTheRest) {
  const std::string sheet = "sheet{freeze-rows:0}";
  std::string wideSheet = "\xFF\xFE";
  for (const char c : sheet) {
    wideSheet.append({c, '\0'});
  }
  for (const std::string& styles : {"\xEF\xBB\xBF" + sheet, wideSheet}) {
    CommandRun run;
    const Result result = run.with("in.csv", "a\n1\n")
                              .with("styles", styles)
                              .run({"@/in.csv", "-o", "@/out.xlsx", "--styles", "@/styles"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error,
              "scrivalen: warning: '@/out.xlsx': the style sheet is not understood: a byte-order mark is no part of a "
              "style sheet.\n");
    const std::string page = scrivalen::test::workbookPart(run.widePath("out.xlsx"), "xl/worksheets/sheet1.xml");
    EXPECT_NE(page.find("<sheetView"), std::string::npos) << page;
    EXPECT_EQ(page.find("<pane"), std::string::npos) << page;
  }
}

TEST(XlsxOutput, IsTheSameInClassicForm) {
  EXPECT_EQ(cellsOf("in.md", "# A\n\nb", {"--classic"}), "A1 \"A\" bold\nA2 \"b\"\n");
}

}  // namespace
}  // namespace scrivalen::command::test
