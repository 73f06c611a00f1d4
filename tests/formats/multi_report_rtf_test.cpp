#include "scrivalen/multi_report.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/faults/open_errors.h"
#include "support/files.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

namespace {

constexpr std::string_view kPortrait = "\\paperw11906\\paperh16838\r\n{";
constexpr std::string_view kLandscape = "\\landscape\\paperw16838\\paperh11906\r\n{";

// The document's bytes between the head with that paper size and the closing braces.
std::string bodyOf(const std::wstring& path, std::string_view paper = kPortrait) {
  const std::string bytes = bytesOf(path);
  const std::string head = "\\red192\\green192\\blue192;}" + std::string(paper);
  const std::size_t at = bytes.find(head);
  EXPECT_NE(at, std::string::npos) << bytes;
  EXPECT_TRUE(bytes.ends_with("}}")) << bytes;
  const std::size_t begin = at + head.size();
  return at == std::string::npos ? bytes : bytes.substr(begin, bytes.size() - begin - 2);
}

// The body that an RTF child writes for an action on its MultiReport.
template <typename Action>
std::string body(Action action, int conforming = 0) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_RTF, (folder / L"a.rtf").c_str(), nullptr);
  report.SetReportOption(OPTION_CONFORMING, conforming);
  EXPECT_EQ(report.Open(), REPORT_OK);
  action(report);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  return bodyOf(folder / L"a.rtf");
}

std::string hyperLink(const std::string& text, const std::string& bookmark) {
  return " {\\field{\\*\\fldinst {HYPERLINK \\\\l \"" + bookmark + "\" }}{\\fldrslt {\\cs15\\ul\\cf2 " + text + "}}} ";
}

}  // namespace

TEST(MultiReportWithRtf, ForwardsTheTitle) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddProperty(L"%TITLE%", L"before");
  report.AddReport(FORMAT_RTF, (folder / L"a.rtf").c_str(), L"no such template.htm");
  report.AddProperty(L"%TITLE%", L"Sales");
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_TRUE(bytesOf(folder / L"a.rtf").starts_with("{\\rtf\\ansi{\\info{\\title Sales}} \r\n"));
}

TEST(MultiReportWithRtf, ForwardsTexts) {
  EXPECT_EQ(body([](AReport& r) {
              r.Text(L"Head", PARAGRAPH_HEADING2, L"x", 0);
              r.BeginParagraph(PARAGRAPH_NORMAL, L"x");
              r.BeginStyle(STYLE_FONT_SIZE, 28);
              r.Text(L"a", PARAGRAPH_NONE, L"", 1);
              r.EndStyle(STYLE_FONT_SIZE, 28);
              r.Space();
              r.EndOfLine();
              r.EndParagraph(PARAGRAPH_NORMAL);
            }),
            "Head\\s2\\ql\\par\\pard\\plain \\fs28 a\\fs10  \\line \\s0\\ql\\par\\pard\\plain ");
}

TEST(MultiReportWithRtf, ForwardsAnchorsLinksAndContents) {
  EXPECT_EQ(body([](AReport& r) {
              r.BeginAncor(L"a");
              r.EndAncor();
              r.Ancor(L"b");
              r.Link(L"See", L"#a");
              r.BeginToc();
              r.TocItem(L"b", L"Item", 2);
              r.EndToc();
            }),
            "{\\*\\bkmkstart a}{\\*\\bkmkend a}{\\*\\bkmkstart b}{\\*\\bkmkend b}" + hyperLink("See", "#a") +
                hyperLink("Item", "b") + "\\line \\s0\\ql\\par\\pard\\plain ");
}

TEST(MultiReportWithRtf, ForwardsCellsAndTheirColours) {
  EXPECT_EQ(body([](AReport& r) {
              r.BeginTable(L"t", L"x");
              r.BeginCell(L"c", 1, L"red;yellow");
              r.EndCell(L"c", 1);
              r.SetCellColor(L"red");
              r.Cell(L"whole", 1, L"Blue");
              r.EndRow(L"r");
              r.EndTable(L"t");
            }),
            "\\par \\intbl \\cf6 \\highlight7 \\highlight0 \\cf0 \\cell \r\n"
            "\\intbl \\cf2 \\highlight2 \\b{whole}\\b0 \\highlight0 \\cf0 \\cell \r\n"
            "\\pard \\nowidctlpar\\widctlpar\\adjustright\\row\\pard}\r\n");
}

TEST(MultiReportWithRtf, ForwardsTheNumberOfColumns) {
  const std::string row = body([](AReport& r) { r.BeginRow(L"r", L"x", 2); });
  EXPECT_NE(row.find("\\cellx1000"), std::string::npos);
  EXPECT_TRUE(row.ends_with("\\cellx2000\\nowidctlpar\\widctlpar\\adjustright\r\n")) << row;
}

TEST(MultiReportWithRtf, LeavesAQuotedValueUnchanged) {
  const std::string row = body([](AReport& r) { r.Row2NotEmptyWithQuote(L"name", L"<b> & {c}"); });
  EXPECT_NE(row.find("\\intbl <b> & {c}\\cell \r\n"), std::string::npos) << row;
}

TEST(MultiReportWithRtf, ForwardsLandscapeForTheNextOpen) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_RTF, (folder / L"a.rtf").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  report.SetReportOption(OPTION_LANDSCAPE, 1);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bodyOf(folder / L"a.rtf", kPortrait), "");
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bodyOf(folder / L"a.rtf", kLandscape), "");
  report.Clear();
}

TEST(MultiReportWithRtf, ForwardsLandscapeToEveryChildAddedSoFar) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_RTF, (folder / L"a.rtf").c_str(), nullptr);
  report.AddReport(FORMAT_RTF, (folder / L"b.rtf").c_str(), nullptr);
  report.SetReportOption(OPTION_LANDSCAPE, 1);
  report.AddReport(FORMAT_RTF, (folder / L"c.rtf").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(bodyOf(folder / L"a.rtf", kLandscape), "");
  EXPECT_EQ(bodyOf(folder / L"b.rtf", kLandscape), "");
  EXPECT_EQ(bodyOf(folder / L"c.rtf", kPortrait), "");
}

TEST(MultiReportWithRtf, ForwardsConforming) {
  const auto action = [](AReport& r) {
    r.Text(L"{\u4E2D}", PARAGRAPH_NONE, L"", 0);
    r.Link(L"See", L"#a");
  };
  EXPECT_EQ(body(action, 1), "\\{\\u20013?\\}" + hyperLink("See", "a"));
  const CapturedLog log;
  EXPECT_EQ(body(action, 0), "{?}" + hyperLink("See", "#a"));
  ASSERT_EQ(log.lines().size(), 1u);
  EXPECT_TRUE(log.lines()[0].ends_with(L"a.rtf': 1 character could not be written as it was given: U+4E2D."));
}

TEST(MultiReportWithRtf, MakesOnlyTheChildrenAddedSoFarConform) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_RTF, (folder / L"conforming.rtf").c_str(), nullptr);
  report.SetReportOption(OPTION_CONFORMING, 1);
  report.AddReport(FORMAT_RTF, (folder / L"classic.rtf").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  report.SetReportOption(OPTION_CONFORMING, 0);
  report.Text(L"{", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(bodyOf(folder / L"conforming.rtf"), "\\{");
  EXPECT_EQ(bodyOf(folder / L"classic.rtf"), "{");
}

TEST(MultiReportWithRtf, StopsOpeningWhenTheRtfChildFailsFirst) {
  const CapturedLog log;
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_RTF, (folder / L"missing/a.rtf").c_str(), nullptr);
  report.AddReport(FORMAT_HTML, (folder / L"a.html").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(folder / L"missing/a.rtf"));
  EXPECT_FALSE(exists(folder / L"a.html"));
  report.Text(L"lost", PARAGRAPH_NORMAL, L"", 0);
  report.Row2(L"lost", L"\u4E2D", 1, L"red", nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_FALSE(exists(folder / L"missing"));
  EXPECT_TRUE(log.lines().empty());
}

TEST(MultiReportWithRtf, LeavesTheRtfChildOpenWhenALaterOneFails) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_RTF, (folder / L"a.rtf").c_str(), nullptr);
  report.AddReport(FORMAT_XML, (folder / L"missing/a.xml").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(folder / L"missing/a.xml"));
  report.Text(L"kept", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(bodyOf(folder / L"a.rtf"), "kept");
}

TEST(MultiReportWithRtf, WritesTwoRtfChildrenIdentically) {
  const TemporaryFolder folder;
  MultiReport report;
  report.AddReport(FORMAT_RTF, (folder / L"a.rtf").c_str(), nullptr);
  report.AddReport(FORMAT_RTF, (folder / L"b.rtf").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  for (int row = 0; row < 1000; ++row) {
    report.Row2(L"left", L"right", 0, nullptr, L"red");
  }
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_GT(bytesOf(folder / L"a.rtf").size(), 1000u * 500u);
  EXPECT_TRUE(areSameBytes(bytesOf(folder / L"a.rtf"), bytesOf(folder / L"b.rtf")));
}
