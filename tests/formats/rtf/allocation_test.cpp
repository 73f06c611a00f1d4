#include "support/faults/allocation_counter.h"

#include "formats/rtf/rtf_report.h"
#include "scrivalen/multi_report.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <new>
#include <span>

using namespace scrivalen::test;

namespace {

// Enough calls for even the shortest fragments to fill the file's buffer several times.
constexpr int kCalls = 20000;
constexpr int kCallsOfLongTexts = 200;

// A host's file that discards its bytes and counts them.
struct CountingFile : OutputFile {
  void Write(const void*, std::size_t count) override { size += count; }

  std::size_t size = 0;
};

struct DocumentOperation {
  const char* name;
  void (*run)(RTFdoc& doc, const wchar_t* text);
};

constexpr DocumentOperation kDocumentOperations[] = {
    {"AddFont", [](RTFdoc& doc, const wchar_t* text) { doc.AddFont(1, text, RTFdoc::ITEM_FIRST); }},
    {"AddStyle", [](RTFdoc& doc, const wchar_t* text) { doc.AddStyle(1, text, text, 20, 1, text, RTFdoc::ITEM_LAST); }},
    {"CharOf8Bits",
     [](RTFdoc& doc, const wchar_t*) {
       for (int c = 0; c < 256; ++c) {
         doc.Char(static_cast<char>(c));
       }
     }},
    {"CharOfWideText", [](RTFdoc& doc, const wchar_t* text) { doc.Char(*text); }},
    {"SpecChar",
     [](RTFdoc& doc, const wchar_t*) {
       for (wchar_t c = 0; c < 16; ++c) {
         doc.SpecChar(c);
       }
     }},
    {"write", [](RTFdoc& doc, const wchar_t* text) { doc.write(text, 0); }},
    {"writeOfALength", [](RTFdoc& doc, const wchar_t* text) { doc.write(text, 3); }},
    {"writeT", [](RTFdoc& doc, const wchar_t* text) { doc.writeT(text, 0); }},
    {"BoldOn", [](RTFdoc& doc, const wchar_t*) { doc.BoldOn(); }},
    {"BoldOff", [](RTFdoc& doc, const wchar_t*) { doc.BoldOff(); }},
    {"ItalicOn", [](RTFdoc& doc, const wchar_t*) { doc.ItalicOn(); }},
    {"ItalicOff", [](RTFdoc& doc, const wchar_t*) { doc.ItalicOff(); }},
    {"StrikeOn", [](RTFdoc& doc, const wchar_t*) { doc.StrikeOn(); }},
    {"StrikeOff", [](RTFdoc& doc, const wchar_t*) { doc.StrikeOff(); }},
    {"OutlineOn", [](RTFdoc& doc, const wchar_t*) { doc.OutlineOn(); }},
    {"OutlineOff", [](RTFdoc& doc, const wchar_t*) { doc.OutlineOff(); }},
    {"ShadowOn", [](RTFdoc& doc, const wchar_t*) { doc.ShadowOn(); }},
    {"ShadowOff", [](RTFdoc& doc, const wchar_t*) { doc.ShadowOff(); }},
    {"SmallOn", [](RTFdoc& doc, const wchar_t*) { doc.SmallOn(); }},
    {"SmallOff", [](RTFdoc& doc, const wchar_t*) { doc.SmallOff(); }},
    {"CapsOn", [](RTFdoc& doc, const wchar_t*) { doc.CapsOn(); }},
    {"CapsOff", [](RTFdoc& doc, const wchar_t*) { doc.CapsOff(); }},
    {"FontSize", [](RTFdoc& doc, const wchar_t*) { doc.FontSize(20); }},
    {"UnderLineOn", [](RTFdoc& doc, const wchar_t*) { doc.UnderLineOn(0); }},
    {"UnderLineOff",
     [](RTFdoc& doc, const wchar_t*) {
       doc.underlineDepth = 1;
       doc.UnderLineOff(0);
     }},
    {"ScriptOn", [](RTFdoc& doc, const wchar_t*) { doc.ScriptOn(1); }},
    {"ScriptOff", [](RTFdoc& doc, const wchar_t*) { doc.ScriptOff(); }},
    {"FontColorOn", [](RTFdoc& doc, const wchar_t*) { doc.FontColorOn(16); }},
    {"FontColorOff", [](RTFdoc& doc, const wchar_t*) { doc.FontColorOff(); }},
    {"BackgroundColorOn", [](RTFdoc& doc, const wchar_t*) { doc.BackgroundColorOn(16); }},
    {"BackgroundColorOff", [](RTFdoc& doc, const wchar_t*) { doc.BackgroundColorOff(); }},
    {"FontNo", [](RTFdoc& doc, const wchar_t*) { doc.FontNo(1); }},
    {"Style", [](RTFdoc& doc, const wchar_t*) { doc.Style(1); }},
    {"NextParJ", [](RTFdoc& doc, const wchar_t*) { doc.NextParJ(RTFdoc::PAR_CENTER); }},
    {"Paragraf", [](RTFdoc& doc, const wchar_t*) { doc.Paragraf(RTFdoc::PAR_RIGHT, 3); }},
    {"PageBreak", [](RTFdoc& doc, const wchar_t*) { doc.PageBreak(); }},
    {"Tab", [](RTFdoc& doc, const wchar_t*) { doc.Tab(); }},
    {"LineBreak", [](RTFdoc& doc, const wchar_t*) { doc.LineBreak(); }},
    {"NumbersOn", [](RTFdoc& doc, const wchar_t*) { doc.Numbers(1); }},
    {"NumbersOff", [](RTFdoc& doc, const wchar_t*) { doc.Numbers(0); }},
    {"List", [](RTFdoc& doc, const wchar_t*) { doc.List(1); }},
    {"HyperLink", [](RTFdoc& doc, const wchar_t* text) { doc.HyperLink(text, text); }},
    {"BookMark", [](RTFdoc& doc, const wchar_t* text) { doc.BookMark(text); }},
    {"BeginField", [](RTFdoc& doc, const wchar_t*) { doc.BeginField(); }},
    {"MiddleField", [](RTFdoc& doc, const wchar_t*) { doc.MiddleField(); }},
    {"EndField", [](RTFdoc& doc, const wchar_t*) { doc.EndField(); }},
    {"BeginTable", [](RTFdoc& doc, const wchar_t*) { doc.BeginTable(); }},
    {"EndTable", [](RTFdoc& doc, const wchar_t*) { doc.EndTable(); }},
    {"BeginRow", [](RTFdoc& doc, const wchar_t*) { doc.BeginRow(3, 6); }},
    {"BeginCell", [](RTFdoc& doc, const wchar_t*) { doc.BeginCell(); }},
    {"EndCell", [](RTFdoc& doc, const wchar_t*) { doc.EndCell(); }},
    {"EndRow", [](RTFdoc& doc, const wchar_t*) { doc.EndRow(); }},
    {"SetConforming", [](RTFdoc& doc, const wchar_t*) { doc.SetConforming(1); }},
    {"BegDocAndEndDoc", [](RTFdoc& doc, const wchar_t* text) {
       OutputFile* const file = doc.file;
       doc.BeginField();
       doc.EndDoc();
       doc.BegDoc(file, text, 1);
     }}};

struct ReportOperation {
  const char* name;
  void (*run)(AReport& report, const wchar_t* text);
};

constexpr ReportOperation kReportOperations[] = {
    {"Text", [](AReport& report, const wchar_t* text) { report.Text(text, PARAGRAPH_NONE, text, 0); }},
    {"TextOfAParagraph", [](AReport& report, const wchar_t* text) { report.Text(text, PARAGRAPH_NORMAL, text, 1); }},
    {"BeginParagraph", [](AReport& report, const wchar_t* text) { report.BeginParagraph(PARAGRAPH_NORMAL, text); }},
    {"EndParagraph", [](AReport& report, const wchar_t*) { report.EndParagraph(PARAGRAPH_HEADING1); }},
    {"BeginAncor", [](AReport& report, const wchar_t* text) { report.BeginAncor(text); }},
    {"EndAncor", [](AReport& report, const wchar_t*) { report.EndAncor(); }},
    {"Ancor", [](AReport& report, const wchar_t* text) { report.Ancor(text); }},
    {"EndOfLine", [](AReport& report, const wchar_t*) { report.EndOfLine(); }},
    {"Space", [](AReport& report, const wchar_t*) { report.Space(); }},
    {"Styles",
     [](AReport& report, const wchar_t*) {
       for (const REPORT_STYLE style : {STYLE_BOLD, STYLE_ITALIC, STYLE_FONT_SIZE}) {
         report.BeginStyle(style, 20);
         report.EndStyle(style, 20);
       }
     }},
    {"Contents",
     [](AReport& report, const wchar_t* text) {
       report.BeginToc();
       report.TocItem(text, text, 1);
       report.EndToc();
     }},
    {"LinkToABookmark", [](AReport& report, const wchar_t* text) { report.Link(text, L"#bookmark"); }},
    {"LinkToALongBookmark", [](AReport& report, const wchar_t* text) { report.Link(text, text); }},
    {"LinkToTheOutside",
     [](AReport& report, const wchar_t* text) {
       report.Link(text, L"https://example.org/a/rather/long/path/to/a/page?with=\"quotes\"&in=it\"");
     }},
    {"Table",
     [](AReport& report, const wchar_t* text) {
       report.BeginTable(text, text);
       report.EndTable(text);
     }},
    {"Row",
     [](AReport& report, const wchar_t* text) {
       report.BeginRow(text, text, 3);
       report.EndRow(text);
     }},
    {"BeginCellAndEndCell",
     [](AReport& report, const wchar_t* text) {
       report.BeginCell(text, 1, L"DarkYellow;lightgray");
       report.EndCell(text, 1);
     }},
    {"Cell", [](AReport& report, const wchar_t* text) { report.Cell(text, 0, nullptr); }},
    {"ColouredHeaderCell", [](AReport& report, const wchar_t* text) { report.Cell(text, 1, L"DarkYellow;lightgray"); }},
    {"CellWithOtherAttributes", [](AReport& report, const wchar_t* text) { report.Cell(text, 0, text); }},
    {"SetCellColor", [](AReport& report, const wchar_t*) { report.SetCellColor(L"red"); }},
    {"SubDocument",
     [](AReport& report, const wchar_t* text) {
       report.BeginSubDocument(text, text, text);
       report.EndSubDocument();
     }},
    {"CompositeRows",
     [](AReport& report, const wchar_t* text) {
       report.AttributeRowHeader();
       report.Row2(text, text, 1, L"red", nullptr);
       report.Row3(text, text, text, 0);
     }},
    {"SetReportOption", [](AReport& report, const wchar_t*) {
       report.SetReportOption(OPTION_LANDSCAPE, 1);
       report.SetReportOption(OPTION_CONFORMING, 1);
     }}};

void PrintTo(const DocumentOperation& operation, std::ostream* out) { *out << operation.name; }
void PrintTo(const ReportOperation& operation, std::ostream* out) { *out << operation.name; }

struct Sample {
  std::wstring text;
  int calls;
};

// Plain and special characters, inside and outside the code page.
std::span<const Sample> samples() {
  static const std::wstring mixed = L"plain {\\} \u20AC \u0141\u4E2D \"quoted\" line\nbreak " + grin();
  static const Sample all[] = {{L"short", kCalls},
                               {mixed, kCalls},
                               {longText(4096), kCallsOfLongTexts},
                               {longText(4097), kCallsOfLongTexts},
                               {longText(4080) + mixed + longText(20000) + mixed, kCallsOfLongTexts}};
  return all;
}

template <typename Operation, typename Target>
void expectNoAllocation(const Operation& operation, Target& target) {
  for (const Sample& sample : samples()) {
    const wchar_t* const text = sample.text.c_str();
    EXPECT_EQ(allocationsOf([&] {
                for (int call = 0; call < sample.calls; ++call) {
                  operation.run(target, text);
                }
              }),
              0u)
        << sample.text.size() << " characters";
  }
}

template <typename Operation>
std::string nameOf(const testing::TestParamInfo<std::tuple<Operation, int>>& test) {
  const auto& [operation, conforming] = test.param;
  return std::string(operation.name) + (conforming ? "_conforming" : "");
}

struct RtfDocOperation : testing::TestWithParam<std::tuple<DocumentOperation, int>> {};

struct RtfReportOperation : testing::TestWithParam<std::tuple<ReportOperation, int>> {
  const CapturedLog log;
};

}  // namespace

TEST(AllocationCounter, CountsEveryFormOfNew) {
  EXPECT_EQ(allocationsOf([] { operator delete(operator new(1)); }), 1u);
  EXPECT_EQ(allocationsOf([] { operator delete[](operator new[](1)); }), 1u);
  EXPECT_EQ(allocationsOf([] { operator delete(operator new(1, std::nothrow)); }), 1u);
  EXPECT_EQ(allocationsOf([] { operator delete[](operator new[](1, std::nothrow)); }), 1u);
  constexpr std::align_val_t kLine{64};
  EXPECT_EQ(allocationsOf([=] { operator delete(operator new(1, kLine), kLine); }), 1u);
  EXPECT_EQ(allocationsOf([=] { operator delete[](operator new[](1, kLine), kLine); }), 1u);
  EXPECT_EQ(allocationsOf([] {}), 0u);
}

TEST(AllocationCounter, CountsAllocationsInTheLibrary) {
  RTFReport report;
  EXPECT_GT(allocationsOf([&] { report.AddProperty(L"%TITLE%", L"a title of more than a few letters"); }), 0u);
}

TEST_P(RtfDocOperation, AllocatesNothingForAHostsFile) {
  const auto& [operation, conforming] = GetParam();
  CountingFile file;
  RTFdoc doc;
  doc.SetConforming(conforming);
  EXPECT_EQ(allocationsOf([&] { doc.BegDoc(&file, L"title", 0); }), 0u);
  EXPECT_GT(file.size, 0u);
  expectNoAllocation(operation, doc);
  EXPECT_EQ(allocationsOf([&] { doc.EndDoc(); }), 0u);
}

TEST_P(RtfDocOperation, AllocatesNothingForAFileOnDisk) {
  const auto& [operation, conforming] = GetParam();
  const TemporaryFolder folder;
  ReportFile file;
  ASSERT_TRUE(file.Open((folder / L"a.rtf").c_str()));
  RTFdoc doc;
  doc.SetConforming(conforming);
  EXPECT_EQ(allocationsOf([&] { doc.BegDoc(&file, L"title", 0); }), 0u);
  expectNoAllocation(operation, doc);
  EXPECT_EQ(allocationsOf([&] { doc.EndDoc(); }), 0u);
  EXPECT_TRUE(file.Close());
}

TEST_P(RtfDocOperation, AllocatesNothingWithoutAFile) {
  const auto& [operation, conforming] = GetParam();
  RTFdoc doc;
  doc.SetConforming(conforming);
  doc.BegDoc(nullptr, L"title", 0);
  expectNoAllocation(operation, doc);
}

TEST_P(RtfReportOperation, AllocatesNothingBetweenOpenAndClose) {
  const auto& [operation, conforming] = GetParam();
  const TemporaryFolder folder;
  RTFReport report;
  report.SetReportOption(OPTION_CONFORMING, conforming);
  ASSERT_EQ(report.Open((folder / L"a.rtf").c_str()), REPORT_OK);
  expectNoAllocation(operation, static_cast<AReport&>(report));
  EXPECT_EQ(report.Close(), REPORT_OK);
}

TEST_P(RtfReportOperation, AllocatesNothingThroughAMultiReport) {
  const auto& [operation, conforming] = GetParam();
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_RTF, (folder / L"a.rtf").c_str(), nullptr);
  report.SetReportOption(OPTION_CONFORMING, conforming);
  ASSERT_EQ(report.Open(), REPORT_OK);
  expectNoAllocation(operation, static_cast<AReport&>(report));
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
}

INSTANTIATE_TEST_SUITE_P(Each, RtfDocOperation,
                         testing::Combine(testing::ValuesIn(kDocumentOperations), testing::Values(0, 1)),
                         nameOf<DocumentOperation>);
INSTANTIATE_TEST_SUITE_P(Each, RtfReportOperation,
                         testing::Combine(testing::ValuesIn(kReportOperations), testing::Values(0, 1)),
                         nameOf<ReportOperation>);
