#include "platform/excel_writer.h"

#include "support/captured_log.h"
#include "support/files.h"
#include "support/workbook.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

TEST(ExcelWriter, WritesRowsOfCells) {
  const TemporaryFolder folder;
  ExcelWriter writer;
  ASSERT_TRUE(writer.Begin((folder / L"a.xlsx").c_str(), nullptr));
  writer.Row(true);
  writer.SetCellValue(L"String", L"plain", false);
  writer.SetCellValue(L"String", L"bold", true);
  writer.SetCellValue(L"String", L"red", L"red");
  writer.Row(false);
  EXPECT_TRUE(writer.End());
  EXPECT_EQ(readWorkbook(folder / L"a.xlsx"),
            "[Sheet1]\n"
            "A1 \"plain\"\n"
            "B1 \"bold\" bold\n"
            "C1 \"red\" fill=FF0000\n");
}
