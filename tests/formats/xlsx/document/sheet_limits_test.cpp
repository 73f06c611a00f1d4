#include "document/document.h"
#include "formats/xlsx/document/workbook_writer.h"
#include "support/documents/workbook.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

using namespace scrivalen;
using namespace scrivalen::test;

namespace {

constexpr std::uint64_t kSmallSheet = 100000;

constexpr document::Format kOfTenRows{"xlsx", [](const document::WriterContext& context) {
                                        return xlsx::createXlsxDocumentWriter(context, {.rows = 10});
                                      }};
constexpr document::Format kOfFewBytes{"xlsx", [](const document::WriterContext& context) {
                                         return xlsx::createXlsxDocumentWriter(context, {.bytes = kSmallSheet});
                                       }};

/// A workbook whose sheets end early.
class LimitedWorkbook : public document::Document {
 public:
  explicit LimitedWorkbook(const document::Format& format) { addFile(format, narrowPath(path_)); }

  void table(const std::string& header) {
    beginTable({}, {});
    if (!header.empty()) {
      row({header}, true);
    }
  }
  void row(std::initializer_list<std::string_view> cells, bool header = false) {
    beginRow(header);
    for (const std::string_view text : cells) {
      cell(text);
    }
    end();
  }

  std::string cells() {
    EXPECT_EQ(close(), document::Status::Ok) << error();
    return readCells(path_);
  }
  std::string sheet(int number) {
    close();
    return workbookPart(path_, "xl/worksheets/sheet" + std::to_string(number) + ".xml");
  }
  bool sheetHas(int number, std::string_view xml) { return sheet(number).find(xml) != std::string::npos; }
  std::string book() { return workbookPart(path_, "xl/workbook.xml"); }
  std::string warnings() {
    std::string lines;
    while (const document::Warning* warning = nextWarning()) {
      lines += std::to_string(warning->count) + " " + warning->message + "\n";
    }
    return lines;
  }

 private:
  const TemporaryFolder folder_;
  const std::wstring path_ = folder_ / L"a.xlsx";
};

constexpr std::string_view kPane = "<pane ";

// A table with a header and as many rows as there are on a sheet.
void fillSheet(LimitedWorkbook& workbook) {
  workbook.table("head");
  for (int i = 0; i < 9; ++i) {
    workbook.row({"1"});
  }
  workbook.end();
}

}  // namespace

TEST(SheetLimits, ProseAfterTheLastRowIsOnAnotherSheetWithoutFrozenRows) {
  LimitedWorkbook workbook(kOfTenRows);
  fillSheet(workbook);
  workbook.paragraph("after");
  EXPECT_TRUE(workbook.cells().ends_with("A10 1 0\nA1 \"after\"\n")) << workbook.cells();
  EXPECT_TRUE(workbook.sheetHas(1, kPane));
  EXPECT_FALSE(workbook.sheetHas(2, kPane));
}

TEST(SheetLimits, ATableAfterTheLastRowIsTheFirstOfAnotherSheet) {
  LimitedWorkbook workbook(kOfTenRows);
  fillSheet(workbook);
  workbook.table("other");
  workbook.row({"2"});
  workbook.end();
  EXPECT_TRUE(workbook.cells().ends_with("A10 1 0\nA1 \"other\" bold fill=F2F2F2\nA2 2 0\n")) << workbook.cells();
  EXPECT_TRUE(workbook.sheetHas(2, "<pane ySplit=\"1\""));
  EXPECT_TRUE(workbook.sheetHas(2, "<autoFilter ref=\"A1:A2\"/>"));
  EXPECT_NE(workbook.book().find("'Sheet1 (2)'!$1:$1</definedName>"), std::string::npos);
}

TEST(SheetLimits, ATableWithoutAHeaderFreezesNothingOnItsSheets) {
  LimitedWorkbook workbook(kOfTenRows);
  fillSheet(workbook);
  workbook.table("");
  for (int i = 0; i < 11; ++i) {
    workbook.row({"2"});
  }
  EXPECT_FALSE(workbook.sheetHas(2, kPane));
  EXPECT_FALSE(workbook.sheetHas(3, kPane));
}

TEST(SheetLimits, ARowThatHasNoRoomIsOnAnotherSheetWithTheHeader) {
  const std::string text(10000, 'x');
  LimitedWorkbook workbook(kOfFewBytes);
  workbook.table("head");
  for (int i = 0; i < 12; ++i) {
    workbook.row({text});
  }
  EXPECT_TRUE(workbook.sheetHas(1, "<autoFilter ref=\"A1:A5\"/>"));
  EXPECT_LT(workbook.sheet(1).size(), kSmallSheet);
  EXPECT_TRUE(workbook.sheetHas(2, "<t>head</t></is></c></row><row r=\"2\""));
  EXPECT_TRUE(workbook.sheetHas(3, "<row r=\"5\""));
  EXPECT_EQ(workbook.warnings(), "");
}

TEST(SheetLimits, CellsThatNoSheetHasRoomForAreLeftOut) {
  const std::string text(10000, '&');
  LimitedWorkbook workbook(kOfFewBytes);
  workbook.table("");
  workbook.row({text, text, text, "short"});
  workbook.row({"next", "", "", ""});
  const std::string cells = workbook.cells();
  EXPECT_TRUE(cells.find("A1 \"" + text + "\"") != std::string::npos);
  EXPECT_TRUE(cells.find("\"short\"") != std::string::npos);
  EXPECT_TRUE(cells.find("\"next\"") != std::string::npos);
  EXPECT_EQ(workbook.warnings(), "2 cells without their text, beyond the 4 GiB of a sheet\n");
}

TEST(SheetLimits, TextOfManyFontsIsLeftOutToo) {
  LimitedWorkbook workbook(kOfFewBytes);
  workbook.table("");
  workbook.beginRow(false);
  workbook.beginCell({});
  for (int i = 0; i < 300; ++i) {
    workbook.text("a");
    workbook.beginSpan(document::Span::Strong);
    workbook.text("b");
    workbook.end();
  }
  workbook.end();
  workbook.cell("short");
  workbook.end();
  EXPECT_TRUE(workbook.cells().find("B1 \"short\"") != std::string::npos);
  EXPECT_FALSE(workbook.sheetHas(1, "<r>"));
  EXPECT_EQ(workbook.warnings(), "1 cells without their text, beyond the 4 GiB of a sheet\n");
}

// What comes after the rows needs its room, too.
TEST(SheetLimits, ManyJoinedCellsEndASheet) {
  LimitedWorkbook workbook(kOfFewBytes);
  document::CellStyle wide;
  wide.span = 2;
  workbook.table("");
  for (int i = 0; i < 1000; ++i) {
    workbook.beginRow(false);
    workbook.beginCell(wide);
    workbook.text("a");
    workbook.end();
    workbook.end();
  }
  EXPECT_TRUE(workbook.sheetHas(2, "<mergeCell"));
  EXPECT_LT(workbook.sheet(1).size(), kSmallSheet + 2000);
}
