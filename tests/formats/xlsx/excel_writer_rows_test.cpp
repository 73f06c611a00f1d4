#include "formats/xlsx/excel_writer.h"

#include "support/captured_log.h"
#include "support/documents/workbook.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

using namespace scrivalen::test;

namespace {

constexpr int kRowsOfASheet = 1048576;

// How often a text occurs in a part that is read in pieces, and the end of the part.
struct Occurrences {
  std::size_t count = 0;
  std::string tail;
};

Occurrences occurrencesOf(std::string_view wanted, const std::wstring& path, std::string_view part) {
  constexpr std::size_t kTail = 1000;
  Occurrences found;
  readWorkbookPart(path, part, [&](std::string_view piece) {
    const std::size_t kept = std::min(found.tail.size(), wanted.size() - 1);
    std::string text = found.tail.substr(found.tail.size() - kept);
    text += piece;
    for (std::size_t at = text.find(wanted); at != std::string::npos; at = text.find(wanted, at + 1)) {
      ++found.count;
    }
    found.tail += piece;
    found.tail.erase(0, found.tail.size() - std::min(found.tail.size(), kTail));
  });
  return found;
}

void writeRow(ExcelWriter& writer, std::initializer_list<const wchar_t*> cells) {
  writer.Row(true);
  for (const wchar_t* const cell : cells) {
    writer.SetCellValue(L"String", cell, false);
  }
  writer.Row(false);
}

void leaveRows(ExcelWriter& writer, int count) {
  for (int row = 0; row < count; ++row) {
    writeRow(writer, {});
  }
}

// Writes two sheets with wide texts in different columns.
void writeTwoSheets(const std::wstring& path, const wchar_t* styles) {
  ExcelWriter writer;
  ASSERT_TRUE(writer.Begin(path.c_str(), styles));
  writeRow(writer, {L"a text that is wide", L"b"});
  leaveRows(writer, kRowsOfASheet - 1);
  writeRow(writer, {L"x", L"another that is wide"});
  writeRow(writer, {std::wstring(40000, L'x').c_str(), L""});
  ASSERT_TRUE(writer.End());
}

bool contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

std::wstring secondSheetLine(const std::wstring& path) {
  return L"'" + path + L"': a sheet holds 1,048,576 rows, the others are on Sheet2.";
}

}  // namespace

TEST(ExcelWriterRows, ContinueOnAnotherSheetWhenOneIsFull) {
  const CapturedLog log;
  const TemporaryFolder folder;
  ExcelWriter writer;
  ASSERT_TRUE(writer.Begin((folder / L"a.xlsx").c_str(), L"sheet { freeze-rows: 1 }"));
  for (int row = 1; row <= kRowsOfASheet + 2; ++row) {
    writer.Row(true);
    writer.SetCellValue(L"String", std::to_wstring(row).c_str(), row == kRowsOfASheet + 1);
    writer.Row(false);
  }
  ASSERT_TRUE(writer.End());
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{secondSheetLine(folder / L"a.xlsx")});
  const Occurrences first = occurrencesOf("<row ", folder / L"a.xlsx", "xl/worksheets/sheet1.xml");
  EXPECT_EQ(first.count, std::size_t{kRowsOfASheet});
  EXPECT_NE(first.tail.find(
                "<row r=\"1048576\"><c r=\"A1048576\" t=\"inlineStr\"><is><t>1048576</t></is></c></row></sheetData>"),
            std::string::npos);
  EXPECT_TRUE(first.tail.ends_with("</worksheet>"));
  const std::string second = workbookPart(folder / L"a.xlsx", "xl/worksheets/sheet2.xml");
  EXPECT_NE(second.find("<sheetData><row r=\"1\"><c r=\"A1\" s=\"1\" t=\"inlineStr\"><is><t>1048577</t></is></c></row>"
                        "<row r=\"2\"><c r=\"A2\" t=\"inlineStr\"><is><t>1048578</t></is></c></row></sheetData>"),
            std::string::npos);
  EXPECT_FALSE(contains(second, "<pane"));
  const std::string names = workbookPart(folder / L"a.xlsx", "xl/workbook.xml");
  EXPECT_NE(
      names.find(
          "<sheet name=\"Sheet1\" sheetId=\"1\" r:id=\"rId1\"/><sheet name=\"Sheet2\" sheetId=\"2\" r:id=\"rId2\"/>"),
      std::string::npos);
}

TEST(ExcelWriterRows, GiveEachSheetItsOwnWidths) {
  const CapturedLog log;
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.xlsx";
  writeTwoSheets(path, nullptr);
  EXPECT_TRUE(contains(workbookPart(path, "xl/worksheets/sheet1.xml"),
                       "<cols><col min=\"1\" max=\"1\" width=\"19.71\" customWidth=\"1\"/></cols>"));
  EXPECT_TRUE(contains(workbookPart(path, "xl/worksheets/sheet2.xml"),
                       "<cols><col min=\"1\" max=\"1\" width=\"60.71\" customWidth=\"1\"/>"
                       "<col min=\"2\" max=\"2\" width=\"20.71\" customWidth=\"1\"/></cols>"));
  EXPECT_EQ(log.lines(),
            (std::vector<std::wstring>{secondSheetLine(path),
                                       L"'" + path + L"': 1 cell cut at 32,767 characters, the first at Sheet2!A2."}));
}

TEST(ExcelWriterRows, HaveTheStylesWidthOnEachSheet) {
  const CapturedLog log;
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.xlsx";
  writeTwoSheets(path, L"sheet { column-width: 20 }");
  for (const char* const sheet : {"xl/worksheets/sheet1.xml", "xl/worksheets/sheet2.xml"}) {
    EXPECT_TRUE(contains(workbookPart(path, sheet),
                         "<cols><col min=\"1\" max=\"16384\" width=\"20.71\" customWidth=\"1\"/></cols>"))
        << sheet;
  }
}

TEST(ExcelWriterRows, AreFrozenOnlyOnTheFirstSheet) {
  const CapturedLog log;
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.xlsx";
  writeTwoSheets(path, L"sheet { freeze-rows: 1 }");
  EXPECT_TRUE(contains(workbookPart(path, "xl/worksheets/sheet1.xml"), "state=\"frozen\""));
  EXPECT_FALSE(contains(workbookPart(path, "xl/worksheets/sheet2.xml"), "<pane"));
}

TEST(ExcelWriterRows, LogTheSheetsTheyAreOn) {
  const CapturedLog log;
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a.xlsx";
  ExcelWriter writer;
  ASSERT_TRUE(writer.Begin(path.c_str(), nullptr));
  leaveRows(writer, 2 * kRowsOfASheet);
  writeRow(writer, {L"last"});
  ASSERT_TRUE(writer.End());
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{
                             L"'" + path + L"': a sheet holds 1,048,576 rows, the others are on Sheet2 to Sheet3."});
}

TEST(ExcelWriterRows, ThatExactlyFillASheetStartNoOther) {
  const CapturedLog log;
  const TemporaryFolder folder;
  ExcelWriter writer;
  ASSERT_TRUE(writer.Begin((folder / L"a.xlsx").c_str(), nullptr));
  leaveRows(writer, kRowsOfASheet - 1);
  writeRow(writer, {L"last"});
  ASSERT_TRUE(writer.End());
  EXPECT_EQ(readCells(folder / L"a.xlsx"), "A1048576 \"last\"\n");
  EXPECT_FALSE(contains(workbookPart(folder / L"a.xlsx", "xl/workbook.xml"), "Sheet2"));
  EXPECT_TRUE(log.lines().empty());
}
