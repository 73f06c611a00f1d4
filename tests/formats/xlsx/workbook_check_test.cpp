#include "formats/xlsx/workbook_check.h"

#include "support/documents/archive_maker.h"
#include "support/files.h"

#include <gtest/gtest.h>

using namespace scrivalen;
using namespace scrivalen::test;

namespace {

const std::string kXml = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";

std::wstring defect(const ArchiveContent& content, const std::vector<std::uint64_t>& sheetSizes) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a.xlsx", archiveOf(content));
  return workbookDefect(folder / L"a.xlsx", sheetSizes);
}

std::wstring defectOfPart(const std::string& xml) { return defect({{"part.xml", xml}}, {}); }

}  // namespace

TEST(WorkbookCheck, FindsNothingWrongInACompleteWorkbook) {
  EXPECT_EQ(defect({{"xl/worksheets/sheet1.xml", "12345"},
                    {"xl/worksheets/sheet2.xml", "1234567"},
                    {"xl/workbook.xml", kXml + "<workbook a=\"b\"><x/></workbook>"},
                    {"docProps/core.xml", kXml + "<cp:core></cp:core>\r\n"},
                    {"empty.xml", kXml + "<x a=\"b\"/>"}},
                   {5, 7}),
            L"");
}

TEST(WorkbookCheck, FindsASheetOfTheWrongSize) {
  EXPECT_EQ(defect({{"xl/worksheets/sheet1.xml", "1234"}}, {5}), L"Sheet 1 has 4 of 5 bytes.");
  EXPECT_EQ(defect({{"xl/worksheets/sheet1.xml", "123456"}}, {5}), L"Sheet 1 has 6 of 5 bytes.");
}

TEST(WorkbookCheck, FindsAMissingSheet) {
  EXPECT_EQ(defect({{"xl/worksheets/sheet1.xml", "12345"}}, {5, 7}), L"Sheet 2 has 0 of 7 bytes.");
}

TEST(WorkbookCheck, FindsATruncatedPart) {
  const std::string whole = kXml + "<workbook a=\"b\"><x/></workbook>";
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(defectOfPart(whole.substr(0, size)), L"Its part 'part.xml' is cut.") << size;
    if (size > 0) {
      EXPECT_EQ(defectOfPart(whole.substr(size)), L"Its part 'part.xml' is cut.") << size;
    }
  }
}

TEST(WorkbookCheck, FindsAnElementThatIsNotClosed) {
  EXPECT_EQ(defectOfPart(kXml + "<a><b/>"), L"Its part 'part.xml' is cut.");
}

TEST(WorkbookCheck, FindsAFileThatIsNoArchive) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a.xlsx", "no archive");
  EXPECT_EQ(workbookDefect(folder / L"a.xlsx", {}), L"Its directory is missing.");
  EXPECT_EQ(workbookDefect(folder / L"missing", {}), L"It cannot be read again.");
}
