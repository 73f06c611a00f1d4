#include "formats/xlsx/document/made_workbook.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

using scrivalen::test::MadeWorkbook;

namespace {

bool contains(const std::string& text, std::string_view part) { return text.find(part) != std::string::npos; }

}  // namespace

TEST(WorkbookLimits, ContinueATableOnAnotherSheetWithItsHeader) {
  MadeWorkbook workbook;
  scrivalen_begin_section(workbook, "Long", nullptr);
  scrivalen_begin_table(workbook, nullptr, 1, nullptr);
  workbook.row({"head"}, 1);
  for (int i = 0; i < 1'048'577; ++i) {
    workbook.row({"1"});
  }
  workbook.end(2);
  EXPECT_TRUE(workbook.sheetHas("<row r=\"1048576\">"));
  EXPECT_TRUE(workbook.sheetHas("<autoFilter ref=\"A1:A1048576\"/>"));
  const std::string second = workbook.sheet(2);
  EXPECT_TRUE(contains(second, "<t>head</t></is></c></row><row r=\"2\"><c r=\"A2\""));
  EXPECT_TRUE(contains(second, "<autoFilter ref=\"A1:A3\"/>"));
  EXPECT_TRUE(contains(second, "<pane ySplit=\"1\""));
  EXPECT_TRUE(contains(workbook.part("xl/workbook.xml"), "<sheet name=\"Long (2)\""));
}
