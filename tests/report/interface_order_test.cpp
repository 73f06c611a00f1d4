#include "scrivalen/html_report.h"
#include "scrivalen/multi_report.h"
#include "support/documents/recording_report.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>

using scrivalen::test::RecordingReport;

namespace {

// How the Itanium C++ ABI (2.3) represents a pointer to a member function; a virtual one holds 1 + the offset of its
// slot in the table of virtual operations.
struct MemberPointer {
  std::ptrdiff_t function;
  std::ptrdiff_t adjustment;
};

constexpr std::ptrdiff_t kNotVirtual = -1;

template <typename Operation>
std::ptrdiff_t slotOf(Operation operation) {
  const auto pointer = std::bit_cast<MemberPointer>(operation);
  const bool isVirtual = (pointer.function & 1) != 0;
  return isVirtual ? (pointer.function - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)) : kNotVirtual;
}

template <typename... Operations>
std::vector<std::ptrdiff_t> slotsOf(Operations... operations) {
  return {slotOf(operations)...};
}

using OpenOutputName = REPORT_ERRORS (AReport::*)();
using OpenFile = REPORT_ERRORS (AReport::*)(const wchar_t*);

struct WithOneMoreOperation : AReport {
  virtual void oneMore() {}
};

void callEveryOperationInOrder(AReport& report) {
  report.Open();
  report.Open(L"file");
  report.Close();
  report.AddProperty(L"name", L"value");
  report.SetColumnSeparator(L";");
  report.Quoting(L"text");
  report.Text(L"text", PARAGRAPH_HEADING1, L"style", 1);
  report.BeginSubDocument(L"folder", L"file", L"title");
  report.EndSubDocument();
  report.BeginAncor(L"name");
  report.EndAncor();
  report.Ancor(L"name");
  report.EndOfLine();
  report.BeginStyle(STYLE_FONT_SIZE, 14);
  report.EndStyle(STYLE_FONT_SIZE, 14);
  report.Space();
  report.BeginParagraph(PARAGRAPH_NORMAL, L"attributes");
  report.EndParagraph(PARAGRAPH_NORMAL);
  report.BeginToc();
  report.TocItem(L"anchor", L"text", 3);
  report.EndToc();
  report.BeginTable(L"name", nullptr);
  report.EndTable(L"name");
  report.BeginRow(L"name", nullptr, 4);
  report.EndRow(L"name");
  report.BeginCell(L"text", 1, nullptr);
  report.EndCell(L"text", 1);
  report.Cell(L"text", 0, L"attributes");
  report.SetCellColor(L"red");
  report.Link(L"text", L"target");
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
}

}  // namespace

TEST(Interface, ReachesEachOverrideThroughTheBase) {
  RecordingReport report;
  callEveryOperationInOrder(report);
  const std::vector<std::string> expected = {"Open()",
                                             "Open(\"file\")",
                                             "Close()",
                                             "AddProperty(\"name\", \"value\")",
                                             "SetColumnSeparator(\";\")",
                                             "Quoting(\"text\")",
                                             "Text(\"text\", 1, \"style\", 1)",
                                             "BeginSubDocument(\"folder\", \"file\", \"title\")",
                                             "EndSubDocument()",
                                             "BeginAncor(\"name\")",
                                             "EndAncor()",
                                             "Ancor(\"name\")",
                                             "EndOfLine()",
                                             "BeginStyle(2, 14)",
                                             "EndStyle(2, 14)",
                                             "Space()",
                                             "BeginParagraph(7, \"attributes\")",
                                             "EndParagraph(7)",
                                             "BeginToc()",
                                             "TocItem(\"anchor\", \"text\", 3)",
                                             "EndToc()",
                                             "BeginTable(\"name\", null)",
                                             "EndTable(\"name\")",
                                             "BeginRow(\"name\", null, 4)",
                                             "EndRow(\"name\")",
                                             "BeginCell(\"text\", 1, null)",
                                             "EndCell(\"text\", 1)",
                                             "Cell(\"text\", 0, \"attributes\")",
                                             "SetCellColor(\"red\")",
                                             "Link(\"text\", \"target\")",
                                             "SetReportOption(1, 1)"};
  EXPECT_EQ(report.calls(), expected);
}

TEST(Interface, HasItsOperationsInTheirSlots) {
  const std::vector<std::ptrdiff_t> slots =
      slotsOf(static_cast<OpenOutputName>(&AReport::Open), static_cast<OpenFile>(&AReport::Open), &AReport::Close,
              &AReport::AddProperty, &AReport::SetColumnSeparator, &AReport::Quoting, &AReport::Text,
              &AReport::BeginSubDocument, &AReport::EndSubDocument, &AReport::BeginAncor, &AReport::EndAncor,
              &AReport::Ancor, &AReport::EndOfLine, &AReport::BeginStyle, &AReport::EndStyle, &AReport::Space,
              &AReport::BeginParagraph, &AReport::EndParagraph, &AReport::BeginToc, &AReport::TocItem, &AReport::EndToc,
              &AReport::BeginTable, &AReport::EndTable, &AReport::BeginRow, &AReport::EndRow, &AReport::BeginCell,
              &AReport::EndCell, &AReport::Cell, &AReport::SetCellColor, &AReport::Link, &AReport::SetReportOption);
  const std::vector<std::ptrdiff_t> inOrder = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15,
                                               16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30};
  EXPECT_EQ(slots, inOrder);
}

TEST(Interface, HasNoSlotForADestructor) {
  EXPECT_FALSE(std::has_virtual_destructor_v<AReport>);
  EXPECT_EQ(slotOf(&WithOneMoreOperation::oneMore), 31);
}

TEST(Interface, HasNoSlotsForCompositeRowsAndNames) {
  const std::vector<std::ptrdiff_t> slots =
      slotsOf(&AReport::GetProperty, &AReport::SetStyles, &AReport::SetOutputFileName, &AReport::SetTemplateFileName,
              &AReport::GetOutputFileName, &AReport::GetTemplateFileName, &AReport::GetError,
              &AReport::MakeTemplateName, &AReport::Row2, &AReport::Row3, &AReport::Row2NotEmptyWithQuote,
              &AReport::AttributeRowHeader, &AReport::ReportCreated, &AReport::ProductRow);
  EXPECT_EQ(slots, std::vector<std::ptrdiff_t>(14, kNotVirtual));
}

TEST(Interface, HasTheOnlySlotsOfMultiReportAndHtmlReport) {
  struct AfterHtml : HtmlReport {
    virtual void oneMore() {}
  };
  struct AfterMulti : MultiReport {
    virtual void oneMore() {}
  };
  EXPECT_EQ(slotOf(&AfterHtml::oneMore), 31);
  EXPECT_EQ(slotOf(&AfterMulti::oneMore), 31);
  EXPECT_FALSE(std::has_virtual_destructor_v<HtmlReport>);
  EXPECT_FALSE(std::has_virtual_destructor_v<MultiReport>);
}

TEST(Interface, NumbersTheFormats) {
  EXPECT_EQ(FORMAT_RTF, 0);
  EXPECT_EQ(FORMAT_HTML, 1);
  EXPECT_EQ(FORMAT_XML, 2);
  EXPECT_EQ(FORMAT_TEXT, 3);
  EXPECT_EQ(FORMAT_CHM, 4);
  EXPECT_EQ(FORMAT_PDF, 5);
  EXPECT_EQ(FORMAT_EXCEL, 6);
  EXPECT_EQ(FORMAT_DOCUMENT_RTF, 100);
  EXPECT_EQ(FORMAT_DOCUMENT_HTML, 101);
  EXPECT_EQ(FORMAT_DOCUMENT_XML, 102);
  EXPECT_EQ(FORMAT_DOCUMENT_TEXT, 103);
  EXPECT_EQ(FORMAT_DOCUMENT_CHM, 104);
  EXPECT_EQ(FORMAT_DOCUMENT_PDF, 105);
  EXPECT_EQ(FORMAT_DOCUMENT_EXCEL, 106);
  EXPECT_EQ(FORMAT_DOCUMENT_DOCX, 107);
  EXPECT_EQ(FORMAT_DOCUMENT_MARKDOWN, 108);
}

TEST(Interface, NumbersTheResults) {
  EXPECT_EQ(REPORT_OK, 0);
  EXPECT_EQ(REPORT_FILE_ERROR, 1);
  EXPECT_EQ(REPORT_TEMPLATE_NOT_FOUND, 2);
}

TEST(Interface, NumbersTheKindsOfParagraphs) {
  EXPECT_EQ(PARAGRAPH_NONE, 0);
  EXPECT_EQ(PARAGRAPH_HEADING1, 1);
  EXPECT_EQ(PARAGRAPH_HEADING2, 2);
  EXPECT_EQ(PARAGRAPH_HEADING3, 3);
  EXPECT_EQ(PARAGRAPH_HEADING4, 4);
  EXPECT_EQ(PARAGRAPH_HEADING5, 5);
  EXPECT_EQ(PARAGRAPH_HEADING6, 6);
  EXPECT_EQ(PARAGRAPH_NORMAL, 7);
}

TEST(Interface, NumbersTheStyles) {
  EXPECT_EQ(STYLE_BOLD, 0);
  EXPECT_EQ(STYLE_ITALIC, 1);
  EXPECT_EQ(STYLE_FONT_SIZE, 2);
}

TEST(Interface, NumbersTheOptions) {
  EXPECT_EQ(OPTION_LANDSCAPE, 0);
  EXPECT_EQ(OPTION_SINGLE_BYTE_TEXT, 1);
  EXPECT_EQ(OPTION_CONFORMING, 100);
}

TEST(Interface, AcceptsAnyNumberAsAValueOfItsEnumerations) {
  EXPECT_TRUE((std::is_same_v<std::underlying_type_t<REPORT_FORMAT>, int>));
  EXPECT_TRUE((std::is_same_v<std::underlying_type_t<REPORT_ERRORS>, int>));
  EXPECT_TRUE((std::is_same_v<std::underlying_type_t<PARAGRAPH_TYPE>, int>));
  EXPECT_TRUE((std::is_same_v<std::underlying_type_t<REPORT_STYLE>, int>));
  EXPECT_TRUE((std::is_same_v<std::underlying_type_t<REPORT_OPTION>, int>));
}
