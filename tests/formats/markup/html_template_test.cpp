#include "scrivalen/html_report.h"

#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/documents/report_state.h"
#include "support/documents/templates.h"
#include "support/faults/open_errors.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace scrivalen::test;
using scrivalen::kPathSeparator;

namespace {

struct ExposedReport : HtmlReport {
  using HtmlReport::OpenWithTemplate;
};

// The page that a report with the body "[body]" writes with a template.
template <typename Prepare>
std::string written(const std::wstring& templateName, Prepare prepare) {
  const TemporaryFolder folder;
  HtmlReport report;
  prepare(report);
  report.SetOutputFileName((folder / L"a.html").c_str());
  report.SetTemplateFileName(templateName.c_str());
  EXPECT_EQ(report.Open(), REPORT_OK);
  report.Text(L"[body]", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  return bytesOf(folder / L"a.html");
}

template <typename Prepare>
std::string filledIn(std::string_view bytes, Prepare prepare) {
  const TemporaryTemplate page(bytes);
  return written(page.name(), prepare);
}

// The text before and after the first occurrence of a mark.
std::pair<std::string, std::string> cutAt(const std::string& text, std::string_view mark) {
  const std::size_t at = text.find(mark);
  return at == std::string::npos ? std::pair(text, std::string())
                                 : std::pair(text.substr(0, at), text.substr(at + mark.size()));
}

std::string filledIn(std::string_view bytes) {
  return filledIn(bytes, [](AReport&) {});
}

}  // namespace

TEST(HtmlTemplate, SurroundsTheBody) { EXPECT_EQ(filledIn("<html>\r\n%BODY%\n</html>"), "<html>\r\n[body]\n</html>"); }

TEST(HtmlTemplate, HasItsPlaceholdersReplacedAtOpen) {
  EXPECT_EQ(filledIn("A%BODY%B", [](AReport& report) { report.AddProperty(L"A", L"x"); }), "x[body]B");
}

TEST(HtmlTemplate, IsWrittenUpToTheBodyAtOpenAndAfterItAtClose) {
  const TemporaryFolder folder;
  const TemporaryTemplate page("A%BODY%B");
  ExposedReport report;
  report.AddProperty(L"A", L"x");
  EXPECT_EQ(report.OpenWithTemplate((folder / L"a.html").c_str(), page.name().c_str()), REPORT_OK);
  report.AddProperty(L"B", L"added after the opening");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.html"), "xB");
}

TEST(HtmlTemplate, WithoutABodyIsWrittenInFullBeforeTheReportsText) {
  EXPECT_EQ(filledIn("<body>%BODY"), "<body>%BODY[body]</body></html>\n");
  EXPECT_EQ(filledIn("<body>%Body%"), "<body>%Body%[body]</body></html>\n");
}

TEST(HtmlTemplate, EndingWithTheBodyGetsTheDefaultEnd) {
  EXPECT_EQ(filledIn("<body>%BODY%"), "<body>[body]</body></html>\n");
}

TEST(HtmlTemplate, EmptyGetsTheDefaultEnd) { EXPECT_EQ(filledIn(""), "[body]</body></html>\n"); }

TEST(HtmlTemplate, IsSplitOnlyAtTheFirstBody) { EXPECT_EQ(filledIn("1%BODY%2%BODY%3"), "1[body]2%BODY%3"); }

TEST(HtmlTemplate, IsSplitAfterItsPlaceholdersAreReplaced) {
  EXPECT_EQ(filledIn("1%CONTENT%2", [](AReport& report) { report.AddProperty(L"%CONTENT%", L"<%BODY%>"); }),
            "1<[body]>2");
  EXPECT_EQ(filledIn("1%BODY%2", [](AReport& report) { report.AddProperty(L"%BODY%", L"-"); }),
            "1-2[body]</body></html>\n");
}

TEST(HtmlTemplate, HasTheTitleReplacedLikeAnyProperty) {
  EXPECT_EQ(filledIn("<title>%TITLE%</title>%BODY%<i>%TITLE%</i>",
                     [](AReport& report) { report.AddProperty(L"%TITLE%", L"a<b & \"c\" 100%s"); }),
            "<title>a<b & \"c\" 100%s</title>[body]<i>a<b & \"c\" 100%s</i>");
}

TEST(HtmlTemplate, KeepsThePlaceholderOfAMissingProperty) {
  EXPECT_EQ(filledIn("<title>%TITLE%</title>%BODY%."), "<title>%TITLE%</title>[body].");
}

TEST(HtmlTemplate, ReplacesLaterPropertiesInTheValuesOfEarlierOnes) {
  EXPECT_EQ(filledIn("%A%%BODY%%B%",
                     [](AReport& report) {
                       report.AddProperty(L"%A%", L"<%B%>");
                       report.AddProperty(L"%B%", L"b");
                       report.AddProperty(L"", L"nothing");
                     }),
            "<b>[body]b");
}

TEST(HtmlTemplate, IsReadAsOneCharacterPerByte) {
  EXPECT_EQ(filledIn("\xE9%BODY%\xC3\xA9"), "\xC3\xA9[body]\xC3\x83\xC2\xA9");
  EXPECT_EQ(filledIn("\xEF\xBB\xBF%BODY%."), "\xC3\xAF\xC2\xBB\xC2\xBF[body].");
}

TEST(HtmlTemplate, IsReadAsUtf8ByAConformingReport) {
  const auto conforming = [](AReport& report) { report.SetReportOption(OPTION_CONFORMING, 1); };
  EXPECT_EQ(filledIn("caf\xC3\xA9 \xF0\x9F\x98\x80%BODY%\xE2\x82\xAC", conforming),
            "caf\xC3\xA9 \xF0\x9F\x98\x80[body]\xE2\x82\xAC");
  EXPECT_EQ(filledIn("\xEF\xBB\xBF<p>%BODY%\xE9!", conforming), "<p>[body]\xEF\xBF\xBD!");
}

TEST(HtmlTemplate, IsReadInTheFormSetAtOpen) {
  EXPECT_EQ(filledIn("%BODY%\xC3\xA9",
                     [](AReport& report) {
                       report.SetReportOption(OPTION_CONFORMING, 1);
                       report.SetReportOption(OPTION_CONFORMING, 0);
                     }),
            "[body]\xC3\x83\xC2\xA9");
}

TEST(HtmlTemplate, MayBeLongerThanAReadBuffer) {
  const std::string head(20000, 'h');
  const std::string tail(20000, 't');
  EXPECT_TRUE(areSameBytes(head + "[body]" + tail, filledIn(head + "%BODY%" + tail)));
}

TEST(HtmlTemplate, ShippedWithTheLibraryMakesACompletePage) {
  const std::string shipped = bytesOf(templateFolder() + kPathSeparator + L"default.htm");
  const auto [beforeTitle, afterTitle] = cutAt(shipped, "%TITLE%");
  const auto [beforeBody, afterBody] = cutAt(afterTitle, "%BODY%");
  EXPECT_TRUE(beforeTitle.starts_with("<!DOCTYPE html>\n"));
  EXPECT_TRUE(beforeTitle.ends_with("<title>"));
  EXPECT_TRUE(beforeBody.starts_with("</title>"));
  EXPECT_TRUE(afterBody.ends_with("</html>\n"));
  EXPECT_TRUE(areSameBytes(beforeTitle + "Q1" + beforeBody + "[body]" + afterBody,
                           written(L"default.htm", [](AReport& report) { report.AddProperty(L"%TITLE%", L"Q1"); })));
}

TEST(HtmlTemplate, ShippedWithTheLibraryIsAsciiWithEachPlaceholderOnce) {
  const std::string shipped = bytesOf(templateFolder() + kPathSeparator + L"default.htm");
  EXPECT_TRUE(std::all_of(shipped.begin(), shipped.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; }));
  EXPECT_EQ(cutAt(cutAt(shipped, "%TITLE%").second, "%TITLE%").second, "");
  EXPECT_EQ(cutAt(cutAt(shipped, "%BODY%").second, "%BODY%").second, "");
}

TEST(HtmlTemplate, MissingIsReplacedByTheDefaultHead) {
  const CapturedLog log;
  const std::string bytes =
      written(L"no such template.htm", [](AReport& report) { report.AddProperty(L"%TITLE%", L"Q1"); });
  EXPECT_TRUE(bytes.starts_with("<!DOCTYPE html>\n"));
  EXPECT_NE(bytes.find("<title>Q1</title>\n"), std::string::npos);
  EXPECT_TRUE(bytes.ends_with("<body>\n[body]</body></html>\n"));
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"Template '" + templateFolder() + kPathSeparator +
                                                   L"no such template.htm' not found."});
}

TEST(HtmlTemplate, UnreadableIsReportedAsNotFoundAndLeavesTheOutputUnchanged) {
  const TemporaryFolder folder;
  const TemporaryTemplate unreadable{TemporaryTemplate::Unreadable()};
  writeBytes(folder / L"a.html", "kept");
  HtmlReport report;
  report.SetOutputFileName((folder / L"a.html").c_str());
  report.SetTemplateFileName(unreadable.name().c_str());
  EXPECT_EQ(report.Open(), REPORT_TEMPLATE_NOT_FOUND);
  EXPECT_EQ(report.GetError(), readingError(unreadable.path()));
  EXPECT_EQ(ReportState::openFlag(report), 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.html"), "kept");
}

TEST(HtmlTemplate, DoesNotHideAnOutputThatCannotBeCreated) {
  const TemporaryFolder folder;
  HtmlReport report;
  report.SetOutputFileName((folder / L"missing/a.html").c_str());
  report.SetTemplateFileName(L"default.htm");
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(folder / L"missing/a.html"));
}

TEST(OpenWithTemplate, LogsAMissingTemplateAndCreatesNoOutput) {
  const CapturedLog log;
  const TemporaryFolder folder;
  ExposedReport report;
  EXPECT_EQ(report.OpenWithTemplate((folder / L"a.html").c_str(), L"no such template.htm"), REPORT_TEMPLATE_NOT_FOUND);
  EXPECT_FALSE(exists(folder / L"a.html"));
  EXPECT_STREQ(report.GetError(), L"");
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"Template '" + templateFolder() + kPathSeparator +
                                                   L"no such template.htm' not found."});
}

TEST(OpenWithTemplate, ReportsWhyTheOutputCannotBeCreated) {
  const TemporaryFolder folder;
  ExposedReport report;
  EXPECT_EQ(report.OpenWithTemplate((folder / L"missing/a.html").c_str(), L"default.htm"), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(folder / L"missing/a.html"));
}

TEST(OpenWithTemplate, ReturnsNotFoundForAnEmptyName) {
  const TemporaryFolder folder;
  ExposedReport report;
  EXPECT_EQ(report.OpenWithTemplate((folder / L"a.html").c_str(), nullptr), REPORT_TEMPLATE_NOT_FOUND);
  EXPECT_EQ(report.OpenWithTemplate((folder / L"a.html").c_str(), L""), REPORT_TEMPLATE_NOT_FOUND);
  EXPECT_FALSE(exists(folder / L"a.html"));
}

TEST(OpenWithTemplate, DoesNotWriteItsTailToTheNextFile) {
  const TemporaryFolder folder;
  ExposedReport report;
  EXPECT_EQ(report.OpenWithTemplate((folder / L"a.html").c_str(), L"default.htm"), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  AReport& base = report;
  EXPECT_EQ(base.Open((folder / L"b.html").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"b.html"), "</body></html>\n");
}

TEST(OpenWithTemplate, CopiesTheTailWithTheReport) {
  const TemporaryFolder folder;
  const TemporaryTemplate page("A%BODY%B");
  ExposedReport report;
  EXPECT_EQ(report.OpenWithTemplate((folder / L"a.html").c_str(), page.name().c_str()), REPORT_OK);
  HtmlReport copy = report;
  EXPECT_EQ(copy.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.html"), "AB");
}
