#include "formats/xlsx/excel_writer.h"

#include "support/captured_log.h"
#include "support/documents/workbook.h"
#include "support/faults/open_errors.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

namespace {

void writeCell(ExcelWriter& writer, const wchar_t* text) {
  writer.Row(true);
  writer.SetCellValue(L"String", text, false);
  writer.Row(false);
}

// All files in a folder, including hidden ones.
std::vector<std::wstring> filesIn(const TemporaryFolder& folder) {
  return scrivalen::filesEndingWith(folder.path(), L"");
}

using Names = std::vector<std::wstring>;

}  // namespace

TEST(ExcelWriterFile, IsCreatedAtBeginAndFilledAtEnd) {
  const TemporaryFolder folder;
  ExcelWriter writer;
  ASSERT_TRUE(writer.Begin((folder / L"a.xlsx").c_str(), nullptr));
  EXPECT_TRUE(exists(folder / L"a.xlsx"));
  writeCell(writer, L"a");
  EXPECT_TRUE(writer.End());
  EXPECT_EQ(readCells(folder / L"a.xlsx"), "A1 \"a\"\n");
  EXPECT_EQ(filesIn(folder), Names{L"a.xlsx"});
}

TEST(ExcelWriterFile, KeepsItsEarlierContentUntilEnd) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a.xlsx", "an earlier report");
  {
    ExcelWriter abandoned;
    ASSERT_TRUE(abandoned.Begin((folder / L"a.xlsx").c_str(), nullptr));
    writeCell(abandoned, L"a");
  }
  EXPECT_EQ(bytesOf(folder / L"a.xlsx"), "an earlier report");
  ExcelWriter writer;
  ASSERT_TRUE(writer.Begin((folder / L"a.xlsx").c_str(), nullptr));
  writeCell(writer, L"b");
  EXPECT_TRUE(writer.End());
  EXPECT_EQ(readCells(folder / L"a.xlsx"), "A1 \"b\"\n");
  EXPECT_EQ(filesIn(folder), Names{L"a.xlsx"});
}

TEST(ExcelWriterFile, IsDeletedWithoutEnd) {
  const TemporaryFolder folder;
  {
    ExcelWriter writer;
    ASSERT_TRUE(writer.Begin((folder / L"a.xlsx").c_str(), nullptr));
    for (int i = 0; i < 10000; ++i) {
      writeCell(writer, L"a");
    }
  }
  EXPECT_EQ(filesIn(folder), Names());
}

TEST(ExcelWriterFile, IsHeldUntilEnd) {
  const CapturedLog log;
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.xlsx";
  ExcelWriter writer;
  ExcelWriter second;
  ASSERT_TRUE(writer.Begin(path.c_str(), nullptr));
  EXPECT_FALSE(second.Begin(path.c_str(), nullptr));
  EXPECT_EQ(second.Error(), openingError(path));
  writeCell(writer, L"a");
  EXPECT_TRUE(writer.End());
  EXPECT_TRUE(second.Begin(path.c_str(), nullptr));
  EXPECT_EQ(second.Error(), L"");
  writeCell(second, L"b");
  EXPECT_TRUE(second.End());
  EXPECT_EQ(readCells(path), "A1 \"b\"\n");
  EXPECT_TRUE(log.lines().empty());
}

TEST(ExcelWriterFile, IsRefusedWithAReason) {
  const CapturedLog log;
  const TemporaryFolder folder;
  writeBytes(folder / L"file", "kept");
  for (const std::wstring& path :
       {folder / L"missing/a.xlsx", folder.path(), folder / L"file/a.xlsx", std::wstring()}) {
    ExcelWriter writer;
    EXPECT_FALSE(writer.Begin(path.c_str(), nullptr));
    EXPECT_EQ(writer.Error(), openingError(path));
    writeCell(writer, L"a");
    EXPECT_TRUE(writer.End());
  }
  ExcelWriter writer;
  EXPECT_FALSE(writer.Begin(nullptr, nullptr));
  EXPECT_EQ(writer.Error(), openingError(L""));
  EXPECT_EQ(filesIn(folder), Names{L"file"});
  EXPECT_TRUE(log.lines().empty());
}

TEST(ExcelWriterFile, IsTheOnlyOneAtATime) {
  const TemporaryFolder folder;
  ExcelWriter writer;
  ASSERT_TRUE(writer.Begin((folder / L"a.xlsx").c_str(), nullptr));
  writeCell(writer, L"a");
  EXPECT_FALSE(writer.Begin((folder / L"b.xlsx").c_str(), nullptr));
  EXPECT_EQ(writer.Error(), L"File open/create error for '" + (folder / L"b.xlsx") + L"'. The report is still open.");
  writeCell(writer, L"b");
  EXPECT_TRUE(writer.End());
  EXPECT_EQ(readCells(folder / L"a.xlsx"), "A1 \"a\"\nA2 \"b\"\n");
  EXPECT_EQ(filesIn(folder), Names{L"a.xlsx"});
}

TEST(ExcelWriterFile, IsNotNeededToEnd) {
  const CapturedLog log;
  ExcelWriter writer;
  writeCell(writer, L"a");
  writer.SetCellValue(L"String", L"b", L"red");
  EXPECT_TRUE(writer.End());
  EXPECT_TRUE(writer.End());
  EXPECT_EQ(writer.Error(), L"");
  EXPECT_TRUE(log.lines().empty());
}

TEST(ExcelWriterFile, MayBeOneOfMany) {
  const TemporaryFolder folder;
  ExcelWriter writer;
  for (const wchar_t* name : {L"a.xlsx", L"b.xlsx", L"a.xlsx"}) {
    ASSERT_TRUE(writer.Begin((folder / name).c_str(), nullptr));
    writeCell(writer, name);
    writer.Row(true);
    EXPECT_TRUE(writer.End());
    EXPECT_EQ(readCells(folder / name), "A1 \"" + std::string(name, name + 6) + "\"\n");
  }
  EXPECT_EQ(filesIn(folder).size(), 2u);
}

TEST(ExcelWriterFile, MayHaveAnyLettersInItsName) {
  const TemporaryFolder folder;
  for (const wchar_t* name : {L"r\u00E9sum\u00E9 \u20AC.xlsx", L"\u4E2D\u6587 \u0416.xlsx", L"a & 'b' 100%s.xlsx"}) {
    ExcelWriter writer;
    ASSERT_TRUE(writer.Begin((folder / name).c_str(), nullptr)) << name;
    writeCell(writer, L"a");
    EXPECT_TRUE(writer.End());
    EXPECT_EQ(readCells(folder / name), "A1 \"a\"\n");
  }
  EXPECT_EQ(filesIn(folder).size(), 3u);
}

TEST(ExcelWriterFile, MayBeInAFolderWithAnyLetters) {
  const TemporaryFolder folder;
  const TemporaryFolder inner(folder / L"\u4E2D\u6587 caf\u00E9");
  ExcelWriter writer;
  ASSERT_TRUE(writer.Begin((inner / L"a.xlsx").c_str(), nullptr));
  writeCell(writer, L"a");
  EXPECT_TRUE(writer.End());
  EXPECT_EQ(readCells(inner / L"a.xlsx"), "A1 \"a\"\n");
  EXPECT_EQ(filesIn(inner), Names{L"a.xlsx"});
}
