#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/documents/file_reports.h"
#include "support/documents/templates.h"
#include "support/files.h"
#include "support/memory_file.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace scrivalen::test;

namespace {

struct ExposedReport : HtmlReport {
  using HtmlReport::Open;
  using HtmlReport::OpenWithHeader;
  using HtmlReport::OpenWithTemplate;
};

bool isHeld(const std::wstring& path) {
  ReportFile file;
  return !file.Open(path.c_str());
}

std::uintmax_t sizeOf(const std::wstring& path) { return std::filesystem::file_size(asPath(path)); }

template <typename Report>
struct Lifecycle : testing::Test {
  const FixedClock clock{1730815620};  // a PDF contains its creation time
};

TYPED_TEST_SUITE(Lifecycle, FileReports, FileReportName);

}  // namespace

TYPED_TEST(Lifecycle, OpensAgainWithTheSameBytes) {
  const TemporaryFolder folder;
  TypeParam report;
  for (const wchar_t* name : {L"a", L"b", L"a"}) {
    EXPECT_EQ(report.Open((folder / name).c_str()), REPORT_OK);
    report.Text(L"text", PARAGRAPH_NORMAL, L"", 0);
    EXPECT_EQ(report.Close(), REPORT_OK);
  }
  EXPECT_FALSE(bytesOf(folder / L"b").empty());
  EXPECT_TRUE(areSameBytes(bytesOf(folder / L"b"), bytesOf(folder / L"a")));
}

TYPED_TEST(Lifecycle, ReplacesALongerFile) {
  const TemporaryFolder folder;
  TypeParam report;
  EXPECT_EQ(report.Open((folder / L"fresh").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  writeBytes(folder / L"a", std::string(100000, 'x'));
  EXPECT_EQ(report.Open((folder / L"a").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(areSameBytes(bytesOf(folder / L"fresh"), bytesOf(folder / L"a")));
}

TYPED_TEST(Lifecycle, ClosesTwiceWithoutWritingTwice) {
  const TemporaryFolder folder;
  TypeParam report;
  EXPECT_EQ(report.Open((folder / L"a").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  const std::string bytes = bytesOf(folder / L"a");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(areSameBytes(bytes, bytesOf(folder / L"a")));
}

TYPED_TEST(Lifecycle, WritesNothingBeforeOpenOrAfterClose) {
  const TemporaryFolder folder;
  TypeParam report;
  const auto writeSome = [&report] {
    report.Text(L"stray", PARAGRAPH_NORMAL, L"", 0);
    report.Row2(L"stray", L"stray", 1, L"red", nullptr);
    report.Link(L"stray", L"#stray");
    report.BeginStyle(STYLE_BOLD, 0);
    report.EndStyle(STYLE_BOLD, 0);
  };
  writeSome();
  EXPECT_EQ(report.Open((folder / L"a").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  const std::string bytes = bytesOf(folder / L"a");
  EXPECT_EQ(bytes.find("stray"), std::string::npos);
  writeSome();
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(areSameBytes(bytes, bytesOf(folder / L"a")));
}

TYPED_TEST(Lifecycle, HoldsItsFileFromOpenToClose) {
  const TemporaryFolder folder;
  TypeParam report;
  report.SetOutputFileName((folder / L"a").c_str());
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_TRUE(isHeld(folder / L"a"));
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_TRUE(isHeld(folder / L"a"));
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_FALSE(isHeld(folder / L"a"));
}

TEST(TextReportRows, OnlyBeginWithBeginRow) {
  const TemporaryFolder folder;
  TextReport report;
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  EXPECT_EQ(report.Open((folder / L"a.txt").c_str()), REPORT_OK);
  report.BeginTable(L"t", nullptr);
  report.BeginRow(L"row", nullptr, 1);
  report.Cell(L"a", 0, nullptr);
  report.EndRow(L"row");
  report.EndTable(L"t");
  report.BeginTable(L"t", nullptr);
  report.EndOfLine();
  report.Cell(L"b", 0, nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.txt"), "a\r\n\r\n\tb");
}

TEST(TextReportOptions, SetBeforeOpenApplyToEveryFile) {
  const TemporaryFolder folder;
  TextReport report;
  report.SetColumnSeparator(L"|");
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  for (const wchar_t* name : {L"a.txt", L"b.txt"}) {
    EXPECT_EQ(report.Open((folder / name).c_str()), REPORT_OK);
    report.BeginRow(L"row", nullptr, 2);
    report.Cell(L"1", 0, nullptr);
    report.Cell(L"2", 0, nullptr);
    report.EndRow(L"row");
    EXPECT_EQ(report.Close(), REPORT_OK);
    EXPECT_EQ(bytesOf(folder / name), "1|2\r\n");
  }
}

TEST(TextReportOptions, UseASeparatorUpToItsNul) {
  const TemporaryFolder folder;
  TextReport report;
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  report.SetColumnSeparator(std::wstring(L"a\0b", 3));
  EXPECT_EQ(report.Open((folder / L"a.txt").c_str()), REPORT_OK);
  report.Cell(L"1", 0, nullptr);
  report.Cell(L"2", 0, nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.txt"), "1a2");
}

TEST(Loss, OfQuotedTextsIsLogged) {
  const TemporaryFolder folder;
  const CapturedLog log;
  HtmlReport html;
  EXPECT_EQ(html.Quoting(L"t\u0001"), L"t\uFFFD");
  EXPECT_EQ(html.Open((folder / L"a.html").c_str()), REPORT_OK);
  html.Row2NotEmptyWithQuote(L"n", L"a\u0002");
  EXPECT_EQ(html.Close(), REPORT_OK);
  XmlReport xml;
  EXPECT_EQ(xml.Open((folder / L"a.xml").c_str()), REPORT_OK);
  xml.Row2NotEmptyWithQuote(L"n", L"a\u0003");
  EXPECT_EQ(xml.Close(), REPORT_OK);
  ASSERT_EQ(log.lines().size(), 2u);
  EXPECT_TRUE(
      log.lines()[0].ends_with(L"a.html': 2 characters could not be written as they were given, the first is U+0001."));
  EXPECT_TRUE(log.lines()[1].ends_with(L"a.xml': 1 character could not be written as it was given: U+0003."));
}

TEST(Loss, OfABadTemplateIsLogged) {
  const TemporaryFolder folder;
  const TemporaryTemplate page("\xFF%BODY%");
  const CapturedLog log;
  ExposedReport report;
  report.SetReportOption(OPTION_CONFORMING, 1);
  EXPECT_EQ(report.OpenWithTemplate((folder / L"a.html").c_str(), page.name().c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  ASSERT_EQ(log.lines().size(), 1u);
  EXPECT_TRUE(log.lines()[0].ends_with(L"U+FFFD."));
}

TEST(HtmlReportOverrides, OfBeginAndEndAreNotCalledForWholeCellsAndAnchors) {
  struct Overriding : HtmlReport {
    void BeginCell(const wchar_t*, int, const wchar_t*) override { ++calls; }
    void EndCell(const wchar_t*, int) override { ++calls; }
    void BeginAncor(const wchar_t*) override { ++calls; }
    int calls = 0;
  } report;
  report.Cell(L"x", 0, nullptr);
  report.Ancor(L"x");
  EXPECT_EQ(report.calls, 0);
}

TEST(HtmlReportOverrides, OfParagraphsAreCalledByText) {
  struct Overriding : HtmlReport {
    void BeginParagraph(PARAGRAPH_TYPE, const wchar_t*) override { ++calls; }
    void EndParagraph(PARAGRAPH_TYPE) override { ++calls; }
    int calls = 0;
  } report;
  report.Text(L"x", PARAGRAPH_NORMAL, L"", 0);
  report.Text(L"x", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.calls, 2);
}

TEST(HtmlReportOverrides, OfOpenDoNotChangeTheResultOfOpenWithHeader) {
  struct Overriding : HtmlReport {
    using HtmlReport::OpenWithHeader;
    REPORT_ERRORS Open(const wchar_t*) override { return REPORT_TEMPLATE_NOT_FOUND; }
  } report;
  EXPECT_EQ(report.OpenWithHeader(L"x", L"t"), REPORT_FILE_ERROR);
}

TEST(HtmlReportTitle, MayBeEmpty) {
  const TemporaryFolder folder;
  HtmlReport report;
  report.SetOutputFileName((folder / L"a.html").c_str());
  report.AddProperty(L"%TITLE%", L"");
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_NE(bytesOf(folder / L"a.html").find("<title></title>\n"), std::string::npos);
}

TEST(HtmlReportFile, StaysHeldWhenItsReportIsAssignedTo) {
  const TemporaryFolder folder;
  HtmlReport report;
  EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
  report.Text(L"lost", PARAGRAPH_NONE, L"", 0);
  report = HtmlReport();
  EXPECT_TRUE(isHeld(folder / L"a.html"));
  EXPECT_EQ(sizeOf(folder / L"a.html"), 0u);
}

TEST(HtmlReportFile, StaysHeldWhenAHostsFileTakesOver) {
  const TemporaryFolder folder;
  MemoryFile file;
  ExposedReport report;
  EXPECT_EQ(report.Open((folder / L"a.html").c_str()), REPORT_OK);
  EXPECT_EQ(report.Open(&file), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(isHeld(folder / L"a.html"));
}

TEST(HtmlReportTail, IsForgottenOnlyWhenAFileIsOpened) {
  const TemporaryFolder folder;
  const TemporaryTemplate page("head%BODY%tail");
  MemoryFile file;
  ExposedReport report;
  EXPECT_EQ(report.OpenWithTemplate((folder / L"a.html").c_str(), page.name().c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.Open(&file), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(file.bytes, "tail");
  EXPECT_EQ(report.Open((folder / L"b.html").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"b.html"), "</body></html>\n");
}

TEST(HtmlReportAssignment, CopiesTheTail) {
  const TemporaryFolder folder;
  const TemporaryTemplate page("head%BODY%tail");
  ExposedReport report;
  EXPECT_EQ(report.OpenWithTemplate((folder / L"a.html").c_str(), page.name().c_str()), REPORT_OK);
  HtmlReport copy;
  copy = report;
  EXPECT_EQ(copy.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.html"), "headtail");
}

TEST(HtmlReportAssignment, CopiesTheOwnershipOfTheFile) {
  MemoryFile file;
  ExposedReport report;
  EXPECT_EQ(report.Open(&file), REPORT_OK);
  HtmlReport copy;
  copy = report;
  EXPECT_EQ(copy.Close(), REPORT_OK);
  EXPECT_EQ(file.bytes, "</body></html>\n");
}

TEST(HtmlReportAssignment, CopiesTheOptions) {
  const TemporaryFolder folder;
  const TemporaryTemplate page("\xC3\xA9%BODY%");
  HtmlReport report;
  report.SetReportOption(OPTION_CONFORMING, 1);
  ExposedReport copy;
  static_cast<HtmlReport&>(copy) = report;
  EXPECT_EQ(copy.OpenWithTemplate((folder / L"a.html").c_str(), page.name().c_str()), REPORT_OK);
  EXPECT_EQ(copy.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.html"), "\xC3\xA9</body></html>\n");
}

TEST(XmlReportNames, MayBeLongAndUseAnyLetters) {
  const TemporaryFolder folder;
  const std::wstring longName(100, L'n');
  const std::wstring grin = sizeof(wchar_t) == 2
                                ? std::wstring{static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)}
                                : std::wstring{static_cast<wchar_t>(0x1F600)};
  XmlReport report;
  EXPECT_EQ(report.Open((folder / L"a.xml").c_str()), REPORT_OK);
  report.BeginTable(longName.c_str(), nullptr);
  report.BeginRow((L"r\u00E9" + grin).c_str(), nullptr, 1);
  report.EndRow((L"r\u00E9" + grin).c_str());
  report.EndTable(longName.c_str());
  EXPECT_EQ(report.Close(), REPORT_OK);
  const std::string name(100, 'n');
  EXPECT_EQ(bytesOf(folder / L"a.xml"), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report><" + name +
                                            "><r\xC3\xA9\xF0\x9F\x98\x80></r\xC3\xA9\xF0\x9F\x98\x80></" + name +
                                            "></report>");
}
