#include "formats/help/chm_report.h"

#include "scrivalen/multi_report.h"
#include "scrivalen/text.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/faults/open_errors.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <filesystem>

using namespace scrivalen;
using namespace scrivalen::test;

// The test program's folder has a help compiler that writes down its input, and a template that puts
// "<title>%TITLE%</title>\n" before a page's text and "\n<hr>\n" after it.

namespace {

constexpr std::string_view kPageStart = "<title>%TITLE%</title>\n";
constexpr std::string_view kPageEnd = "\n<hr>\n";

// A report in its own folder, with help.chm as its target.
struct InFolder {
  explicit InFolder(bool conforming = false) {
    report.SetReportOption(OPTION_CONFORMING, conforming);
    report.SetOutputFileName(target.c_str());
  }

  REPORT_ERRORS begin(const wchar_t* file, const wchar_t* title) {
    return report.BeginSubDocument(prefix.c_str(), file, title);
  }

  // The contents of a file that the compiler wrote down.
  std::string given(const std::string& name) const { return givenIn(bytesOf(target), name); }
  std::string page(const wchar_t* file) const { return given(scrivalen::ToUtf8(prefix + file)); }

  static std::string givenIn(const std::string& compiled, const std::string& name) {
    const std::string head = "\n[" + name + "]\n";
    const std::size_t at = compiled.find(head);
    EXPECT_NE(at, std::string::npos) << compiled;
    const std::size_t start = at == std::string::npos ? compiled.size() : at + head.size();
    const bool isProject = name == "report.hhp";
    const std::string next = isProject ? "report.hhc]\n" : name.substr(0, name.find_last_of("/\\") + 1);
    const std::size_t end = compiled.find("\n[" + next, start);
    return compiled.substr(start, end == std::string::npos ? end : end + 1 - start);
  }

  std::vector<std::wstring> leftovers() const { return filesEndingWith(folder.path(), L""); }

  TemporaryFolder folder;
  std::wstring prefix = folder.path() + kPathSeparator;
  std::wstring target = folder / L"help.chm";
  CHMReport report;
};

using Names = std::vector<std::wstring>;

// The text of a topic's page without the template around it.
template <typename Action>
std::string written(Action action) {
  InFolder help;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(help.begin(L"a.htm", L"A"), REPORT_OK);
  action(help.report);
  help.report.EndSubDocument();
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  const std::string page = help.page(L"a.htm");
  EXPECT_TRUE(page.starts_with(kPageStart) && page.ends_with(kPageEnd)) << page;
  return page.substr(kPageStart.size(), page.size() - kPageStart.size() - kPageEnd.size());
}

void writeTopic(InFolder& help, const wchar_t* file, const wchar_t* title, const wchar_t* text) {
  EXPECT_EQ(help.begin(file, title), REPORT_OK);
  help.report.Text(text, PARAGRAPH_NORMAL, L"", 0);
  help.report.EndSubDocument();
}

}  // namespace

TEST(ChmReport, PassesProjectContentsAndPagesToTheCompiler) {
  InFolder help;
  help.report.AddProperty(L"%TITLE%", L"Sales");
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"First", L"one");
  writeTopic(help, L"b.htm", L"The \"second\"", L"two");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  const std::string prefix = scrivalen::ToUtf8(help.prefix);
  EXPECT_TRUE(
      areSameBytes("argument " + prefix +
                       "report.hhp\n"
                       "[report.hhp]\n"
                       "[OPTIONS]\n"
                       "Compatibility=1.0\n"
                       "Compiled file=report.chm\n"
                       "Contents file=report.hhc\n"
                       "Default topic=" +
                       prefix +
                       "a.htm\n"
                       "Display compile progress=No\n"
                       "Full-text search=Yes\n"
                       "Language=0x409 English (United States)\n"
                       "Title=Sales\n"
                       "[FILES]\n" +
                       prefix + "a.htm\n" + prefix +
                       "b.htm\n"
                       "[report.hhc]\n"
                       "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\n<HTML>\n<HEAD>\n<!-- Sitemap 1.0 -->\n"
                       "</HEAD>\n<BODY>\n"
                       "<OBJECT type=\"text/site properties\"><param name=\"ImageType\" value=\"Folder\">\r\n"
                       "</OBJECT><UL>"
                       "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"First\">\r\n"
                       "<param name=\"Local\" value=\"" +
                       prefix +
                       "a.htm\">\r\n</OBJECT>"
                       "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"The second\">\r\n"
                       "<param name=\"Local\" value=\"" +
                       prefix +
                       "b.htm\">\r\n</OBJECT>"
                       "</UL></body></html>\n"
                       "[" +
                       prefix +
                       "a.htm]\n<title>%TITLE%</title>\n<p>one</p>\n<hr>\n"
                       "[" +
                       prefix + "b.htm]\n<title>%TITLE%</title>\n<p>two</p>\n<hr>\n",
                   bytesOf(help.target)));
  EXPECT_EQ(help.leftovers(), Names{L"help.chm"});
}

TEST(ChmReport, CreatesNoFileAtOpen) {
  InFolder help;
  EXPECT_EQ(help.report.Open(help.target.c_str()), REPORT_OK);
  CHMReport other;
  EXPECT_EQ(other.Open((help.folder / L"missing/help.chm").c_str()), REPORT_OK);
  EXPECT_TRUE(help.leftovers().empty());
}

TEST(ChmReport, UsesItsFirstTitlePropertyOrTheTitleReport) {
  InFolder help;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"A", L"");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_NE(help.given("report.hhp").find("\nTitle=Report\n"), std::string::npos);
  help.report.AddProperty(L"%TITLE%", L"First");
  help.report.AddProperty(L"%TITLE%", L"Second");
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"A", L"");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_NE(help.given("report.hhp").find("\nTitle=First\n"), std::string::npos);
}

TEST(ChmReport, HasAnEmptyTitleWhenItsPropertyIsEmpty) {
  InFolder help;
  help.report.AddProperty(L"%TITLE%", L"");
  help.report.AddProperty(L"%TITLE%", L"Second");
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"A", L"");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_NE(help.given("report.hhp").find("\nTitle=\n[FILES]\n"), std::string::npos);
}

TEST(ChmReport, PutsItsTitleOnOneLineOfTheProject) {
  InFolder help;
  help.report.AddProperty(L"%TITLE%", L"Sales\r\n[FILES]\nsecret.htm");
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"A", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_NE(help.given("report.hhp").find("\nTitle=Sales  [FILES] secret.htm\n[FILES]\n"), std::string::npos);
}

TEST(ChmReport, DoesNotPassItsPropertiesToThePages) {
  InFolder help;
  help.report.AddProperty(L"%TITLE%", L"Sales");
  help.report.AddProperty(L"<hr>", L"replaced");
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"A", L"text");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(help.page(L"a.htm"), "<title>%TITLE%</title>\n<p>text</p>\n<hr>\n");
}

TEST(ChmReport, ForwardsTheContentToThePage) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginParagraph(PARAGRAPH_HEADING1, L"id=h");
              report.BeginAncor(L"x");
              report.EndAncor();
              report.EndParagraph(PARAGRAPH_HEADING1);
              report.Ancor(L"y");
              report.BeginStyle(STYLE_BOLD, 0);
              report.Space();
              report.EndStyle(STYLE_BOLD, 0);
              report.EndOfLine();
              report.Link(L"there", L"b.htm#y");
            }),
            "<h1 id=h><a name=\"x\"></a></h1><a name=\"y\"> </a><b>&nbsp;</b><br><a href=\"b.htm#y\">there</a>");
}

TEST(ChmReport, ForwardsTables) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginTable(L"t", L"border=1");
              report.BeginRow(L"row", L"id=r", 2);
              report.Cell(L"<i>", 1, L" width=1");
              report.BeginCell(L"c", 0, nullptr);
              report.EndCell(L"c", 0);
              report.EndRow(L"row");
              report.EndTable(L"t");
            }),
            "<table border=1><tr id=r><th width=1><i></th><td></td></tr></table>");
}

TEST(ChmReport, EscapesEvenRawText) {
  EXPECT_EQ(written([](AReport& report) { report.Text(L"<b>&amp;</b>", PARAGRAPH_HEADING2, L"id=x", 1); }),
            "<h2 id=x>&lt;b&gt;&amp;amp;&lt;/b&gt;</h2>");
}

TEST(ChmReport, QuotesLikeHtml) {
  CHMReport report;
  EXPECT_EQ(report.Quoting(L"a<b> & \"c\""), L"a&lt;b&gt; &amp; &quot;c&quot;");
}

TEST(ChmReport, IgnoresContentsColoursSeparatorsAndOptions) {
  EXPECT_EQ(written([](AReport& report) {
              report.SetColumnSeparator(L";");
              report.BeginToc();
              report.TocItem(L"x", L"X", 1);
              report.EndToc();
              report.SetCellColor(L"red");
              report.SetReportOption(OPTION_LANDSCAPE, 1);
              report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
              report.Cell(L"1", 0, nullptr);
              report.Cell(L"2", 0, nullptr);
            }),
            "<td>1</td><td>2</td>");
}

TEST(ChmReport, DropsTextOutsideASubDocument) {
  const auto writeAll = [](AReport& report) {
    report.Text(L"lost", PARAGRAPH_NORMAL, L"", 0);
    report.Row2(L"lost", L"lost", 0, nullptr, nullptr);
    report.Link(L"lost", L"lost");
    report.Ancor(L"lost");
    report.EndSubDocument();
  };
  InFolder help;
  writeAll(help.report);
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeAll(help.report);
  writeTopic(help, L"a.htm", L"A", L"one");
  writeAll(help.report);
  writeTopic(help, L"b.htm", L"B", L"two");
  writeAll(help.report);
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  writeAll(help.report);
  EXPECT_EQ(bytesOf(help.target).find("lost"), std::string::npos);
  EXPECT_EQ(help.leftovers(), Names{L"help.chm"});
}

TEST(ChmReport, WorksInTheFolderOfTheLastTopic) {
  InFolder help;
  const std::wstring other = help.folder / L"other";
  makeFolder(other);
  const std::wstring prefix = other + kPathSeparator;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"A", L"one");
  EXPECT_EQ(help.report.BeginSubDocument(prefix.c_str(), L"b.htm", L"B"), REPORT_OK);
  help.report.EndSubDocument();
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_TRUE(bytesOf(help.target).starts_with("argument " + scrivalen::ToUtf8(prefix) + "report.hhp\n"));
  const std::string project = help.given("report.hhp");
  const std::string topics = scrivalen::ToUtf8(L"[FILES]\n" + help.prefix + L"a.htm\n" + prefix + L"b.htm\n");
  EXPECT_TRUE(project.ends_with(topics)) << project;
  EXPECT_NE(project.find(scrivalen::ToUtf8(L"Default topic=" + help.prefix + L"a.htm\n")), std::string::npos);
  EXPECT_TRUE(filesEndingWith(other, L"").empty());
  EXPECT_EQ(help.leftovers(), Names{L"help.chm"});
}

TEST(ChmReport, JoinsFolderAndFileWithoutASeparator) {
  const CapturedLog log;
  InFolder help;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(help.report.BeginSubDocument((help.folder / L"pre").c_str(), L"fix.htm", L"A"), REPORT_OK);
  EXPECT_TRUE(exists(help.folder / L"prefix.htm"));
  help.report.EndSubDocument();
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  EXPECT_TRUE(std::wstring_view(help.report.GetError())
                  .starts_with(L"The help compiler left no '" + help.prefix + L"prereport.chm'."));
  EXPECT_FALSE(exists(help.folder / L"prefix.htm"));
}

TEST(ChmReport, WithoutTopicsCompilesAnEmptyProjectInTheCurrentFolder) {
  InFolder help;
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(asPath(help.folder.path()));
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  std::filesystem::current_path(before);
  const std::string compiled = bytesOf(help.target);
  EXPECT_TRUE(compiled.starts_with("argument report.hhp\n"));
  EXPECT_NE(compiled.find("\nDefault topic=\n"), std::string::npos);
  EXPECT_NE(compiled.find("\n[FILES]\n[report.hhc]\n"), std::string::npos);
  EXPECT_EQ(help.leftovers(), Names{L"help.chm"});
}

TEST(ChmReport, TreatsNullTextsAsEmpty) {
  const CapturedLog log;
  InFolder help;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(help.report.BeginSubDocument((help.folder / L"a.htm").c_str(), nullptr, nullptr), REPORT_OK);
  help.report.Text(nullptr, PARAGRAPH_NONE, nullptr, 0);
  help.report.EndSubDocument();
  EXPECT_FALSE(exists(help.folder / L"report.hhp"));
  EXPECT_EQ(help.report.BeginSubDocument(nullptr, nullptr, nullptr), REPORT_FILE_ERROR);
}

TEST(ChmReport, ReplacesAnEarlierTarget) {
  InFolder help;
  writeBytes(help.target, "earlier");
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(bytesOf(help.target), "earlier");
  writeTopic(help, L"a.htm", L"A", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(help.page(L"a.htm"), "<title>%TITLE%</title>\n<p>one</p>\n<hr>\n");
}

TEST(ChmReport, MayUseTheCompilersOutputFileAsItsTarget) {
  InFolder help;
  help.target = help.folder / L"report.chm";
  writeBytes(help.target, "earlier");
  EXPECT_EQ(help.report.Open(help.target.c_str()), REPORT_OK);
  writeTopic(help, L"a.htm", L"A", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(help.page(L"a.htm"), "<title>%TITLE%</title>\n<p>one</p>\n<hr>\n");
  EXPECT_EQ(help.leftovers(), Names{L"report.chm"});
}

TEST(ChmReport, CanBeWrittenAgain) {
  InFolder help;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"A", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"b.htm", L"B", L"two");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  const std::string compiled = bytesOf(help.target);
  EXPECT_EQ(compiled.find("a.htm"), std::string::npos);
  EXPECT_NE(compiled.find(scrivalen::ToUtf8(L"Default topic=" + help.prefix + L"b.htm\n")), std::string::npos);
}

TEST(ChmReport, ForgetsFolderAndDefaultTopicWhenReused) {
  InFolder help;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"A", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  const TemporaryFolder current;
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(std::filesystem::path(current.path()));
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  std::filesystem::current_path(before);
  const std::string compiled = bytesOf(help.target);
  EXPECT_TRUE(compiled.starts_with("argument report.hhp\n")) << compiled;
  EXPECT_NE(compiled.find("\nDefault topic=\n"), std::string::npos);
  EXPECT_NE(compiled.find("\n[FILES]\n[report.hhc]\n"), std::string::npos);
}

TEST(ChmReport, WritesNothingWhenItIsNotOpen) {
  InFolder help;
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(help.begin(L"a.htm", L"A"), REPORT_FILE_ERROR);
  EXPECT_STREQ(help.report.GetError(), L"The report is not open.");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_TRUE(help.leftovers().empty());
}

TEST(ChmReport, ClosesOnce) {
  InFolder help;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"A", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  writeBytes(help.target, "somebody else's");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(help.target), "somebody else's");
}

TEST(ChmReport, CanBeAChildOfAMultiReport) {
  InFolder help;
  MultiReport report;
  report.AddReport(FORMAT_CHM, help.target.c_str(), nullptr);
  report.AddReport(FORMAT_XML, (help.folder / L"a.xml").c_str(), nullptr);
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.BeginSubDocument(help.prefix.c_str(), L"a.htm", L"A"), REPORT_OK);
  report.Text(L"text", PARAGRAPH_NORMAL, L"", 0);
  report.EndSubDocument();
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Clear();
  EXPECT_EQ(help.page(L"a.htm"), "<title>%TITLE%</title>\n<p>text</p>\n<hr>\n");
}

TEST(ConformingChmReport, GivesEachPageItsQuotedTopicTitle) {
  InFolder help(true);
  help.report.AddProperty(L"%TITLE%", L"Sales");
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"A & \"B\"", L"one");
  writeTopic(help, L"b.htm", L"<C>", L"two");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(help.page(L"a.htm"), "<title>A &amp; &quot;B&quot;</title>\n<p>one</p>\n<hr>\n");
  EXPECT_EQ(help.page(L"b.htm"), "<title>&lt;C&gt;</title>\n<p>two</p>\n<hr>\n");
  EXPECT_NE(help.given("report.hhp").find("\nTitle=Sales\n"), std::string::npos);
}

TEST(ConformingChmReport, GivesAPageAnEmptyTitleWhenItsTopicHasNone) {
  InFolder help(true);
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"", L"one");
  writeTopic(help, L"b.htm", nullptr, L"two");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(help.page(L"a.htm"), "<title></title>\n<p>one</p>\n<hr>\n");
  EXPECT_EQ(help.page(L"b.htm"), "<title></title>\n<p>two</p>\n<hr>\n");
}

TEST(ConformingChmReport, ReplacesNoPlaceholdersInATitle) {
  InFolder help(true);
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"%BODY% is 50% of %TITLE%", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(help.page(L"a.htm"), "<title>&#37;BODY&#37; is 50&#37; of &#37;TITLE&#37;</title>\n<p>one</p>\n<hr>\n");
}

TEST(ConformingChmReport, PutsItsTitleOnOneLineOfTheProject) {
  InFolder help(true);
  help.report.AddProperty(L"%TITLE%", L"Sales\n[FILES]\rsecret.htm");
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"A", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_NE(help.given("report.hhp").find("\nTitle=Sales [FILES] secret.htm\n[FILES]\n"), std::string::npos);
}

TEST(ConformingChmReport, HonoursTheRawFlag) {
  InFolder help(true);
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(help.begin(L"a.htm", L"A"), REPORT_OK);
  help.report.Text(L"<b>x</b>", PARAGRAPH_NORMAL, L"", 1);
  help.report.Text(L"<b>x</b>", PARAGRAPH_NORMAL, L"", 0);
  help.report.EndSubDocument();
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(help.page(L"a.htm"), "<title>A</title>\n<p><b>x</b></p><p>&lt;b&gt;x&lt;/b&gt;</p>\n<hr>\n");
}

TEST(ConformingChmReport, QuotesTheTextsOfCellsLinksAnchorsAndRows) {
  InFolder help(true);
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(help.begin(L"a.htm", L"A"), REPORT_OK);
  help.report.Cell(L"a < b", 0, nullptr);
  help.report.Link(L"Smith & Sons", L"b.htm?a&b");
  help.report.Ancor(L"a&b");
  help.report.Row2(L"R&D", L"R&amp;D", 0, nullptr, nullptr);
  help.report.EndSubDocument();
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(help.page(L"a.htm"),
            "<title>A</title>\n<td>a &lt; b</td><a href=\"b.htm?a&amp;b\">Smith &amp; Sons</a><a name=\"a&amp;b\"> </a>"
            "<tr><td>R&amp;D</td><td>R&amp;D</td></tr>\n<hr>\n");
}

TEST(ConformingChmReport, TakesEffectAtTheNextOpen) {
  InFolder help;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  help.report.SetReportOption(OPTION_CONFORMING, 1);
  EXPECT_EQ(help.begin(L"a.htm", L"A"), REPORT_OK);
  help.report.Text(L"<b>", PARAGRAPH_NONE, L"", 1);
  help.report.EndSubDocument();
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(help.page(L"a.htm"), "<title>%TITLE%</title>\n&lt;b&gt;\n<hr>\n");
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  help.report.SetReportOption(OPTION_CONFORMING, 0);
  EXPECT_EQ(help.begin(L"a.htm", L"A"), REPORT_OK);
  help.report.Text(L"<b>", PARAGRAPH_NONE, L"", 1);
  help.report.EndSubDocument();
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(help.page(L"a.htm"), "<title>A</title>\n<b>\n<hr>\n");
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"A", L"text");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(help.page(L"a.htm"), "<title>%TITLE%</title>\n<p>text</p>\n<hr>\n");
}

TEST(ChmReportThatFails, LeavesNoTargetWhenTheCompilerLeavesNoFile) {
  const std::pair<const char*, const wchar_t*> compilers[] = {{"leaves nothing", L"0"}, {"breaks off", L"217"}};
  for (const auto& [behaviour, status] : compilers) {
    const CapturedLog log;
    InFolder help;
    writeBytes(help.folder / L"stand_in", behaviour);
    EXPECT_EQ(help.report.Open(), REPORT_OK);
    writeTopic(help, L"a.htm", L"A", L"one");
    EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
    EXPECT_EQ(help.report.GetError(),
              L"The help compiler left no '" + help.prefix + L"report.chm'. It ended with status " + status + L".");
    EXPECT_EQ(log.lines(), Names{help.report.GetError()});
    EXPECT_EQ(help.leftovers(), Names{L"stand_in"});
  }
}

TEST(ChmReportThatFails, DoesNotMistakeAnEarlierFileForTheCompilersOutput) {
  const CapturedLog log;
  InFolder help;
  writeBytes(help.folder / L"stand_in", "leaves nothing");
  writeBytes(help.folder / L"report.chm", "earlier");
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"A", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(bytesOf(help.folder / L"report.chm"), "earlier");
  EXPECT_FALSE(exists(help.target));
  EXPECT_EQ(help.leftovers().size(), 2u);
}

TEST(ChmReportThatFails, KeepsAGoodHelpFileWhenATopicIsMissing) {
  for (const wchar_t* target : {L"help.chm", L"report.chm"}) {
    const CapturedLog log;
    InFolder help;
    help.target = help.folder / target;
    writeBytes(help.target, "earlier");
    makeFolder(help.folder / L"a.htm");
    EXPECT_EQ(help.report.Open(help.target.c_str()), REPORT_OK);
    EXPECT_EQ(help.begin(L"a.htm", L"A"), REPORT_FILE_ERROR);
    const std::wstring reason = help.report.GetError();
    std::filesystem::remove(asPath(help.folder / L"a.htm"));
    writeBytes(help.folder / L"a.htm", "somebody else's");
    writeTopic(help, L"b.htm", L"B", L"two");
    EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
    EXPECT_EQ(help.report.GetError(), reason);
    EXPECT_EQ(log.lines(),
              (Names{reason, L"'" + help.target + L"' is left as it was, because the new help file is incomplete."}));
    EXPECT_EQ(bytesOf(help.target), "earlier");
    EXPECT_EQ(help.leftovers().size(), 2u);
  }
}

TEST(ChmReportThatFails, KeepsAGoodHelpFileWhenATopicWasRefused) {
  const CapturedLog log;
  InFolder help;
  writeBytes(help.target, "earlier");
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(help.begin(L"report.hhp", L"A"), REPORT_FILE_ERROR);
  writeTopic(help, L"b.htm", L"B", L"two");
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(bytesOf(help.target), "earlier");
  EXPECT_EQ(help.leftovers(), Names{L"help.chm"});
}

TEST(ChmReportThatFails, KeepsAGoodHelpFileWhenATopicWasNotEnded) {
  const CapturedLog log;
  InFolder help;
  writeBytes(help.target, "earlier");
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(help.begin(L"a.htm", L"A"), REPORT_OK);
  help.report.Text(L"text", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(bytesOf(help.target), "earlier");
  EXPECT_EQ(help.leftovers(), Names{L"help.chm"});
}

TEST(ChmReportThatFails, WritesAnIncompleteHelpFileIfThereIsNone) {
  const CapturedLog log;
  InFolder help;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(help.begin(L"report.hhp", L"A"), REPORT_FILE_ERROR);
  writeTopic(help, L"b.htm", L"B", L"two");
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(help.page(L"b.htm"), "<title>%TITLE%</title>\n<p>two</p>\n<hr>\n");
}

TEST(ChmReportThatFails, ReportsAHelpFileThatCannotBeMoved) {
  const CapturedLog log;
  InFolder help;
  const std::wstring target = help.folder / L"missing" + kPathSeparator + L"help.chm";
  EXPECT_EQ(help.report.Open(target.c_str()), REPORT_OK);
  writeTopic(help, L"a.htm", L"A", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  const std::wstring reason =
      L"The help file '" + help.prefix + L"report.chm' could not be moved to '" + target + L"'. ";
  EXPECT_TRUE(std::wstring_view(help.report.GetError()).starts_with(reason));
  EXPECT_GT(std::wstring_view(help.report.GetError()).size(), reason.size());
  EXPECT_EQ(log.lines(), Names{help.report.GetError()});
  EXPECT_EQ(help.leftovers(), Names{L"report.chm"});
}

TEST(ChmReportThatFails, ReportsAFolderInTheWay) {
  const CapturedLog log;
  InFolder help;
  makeFolder(help.folder / L"report.chm");
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"A", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(help.report.GetError(),
            L"'" + help.prefix + L"report.chm' is in the way of the help compiler and cannot be moved.");
  EXPECT_FALSE(exists(help.target));
  EXPECT_TRUE(exists(help.folder / L"report.chm"));
  EXPECT_FALSE(exists(help.folder / L"a.htm"));
}

TEST(ChmReportThatFails, ReturnsTheResultOfOpeningAPage) {
  const CapturedLog log;
  InFolder help;
  const std::wstring missing = help.folder / L"missing" + kPathSeparator;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(help.report.BeginSubDocument(missing.c_str(), L"a.htm", L"A"), REPORT_FILE_ERROR);
  EXPECT_EQ(help.report.GetError(), openingError(missing + L"a.htm"));
  help.report.Text(L"lost", PARAGRAPH_NORMAL, L"", 0);
  help.report.EndSubDocument();
  EXPECT_EQ(help.begin(L"b.htm", L"B"), REPORT_OK);
  help.report.EndSubDocument();
  EXPECT_EQ(bytesOf(help.folder / L"b.htm"), "<title>%TITLE%</title>\n\n<hr>\n");
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(help.report.GetError(), openingError(missing + L"a.htm"));
  EXPECT_TRUE(help.leftovers().empty());
}

TEST(ChmReportThatFails, KeepsAFirstTopicThatDidNotOpenAsItsDefault) {
  const CapturedLog log;
  InFolder help;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  makeFolder(help.folder / L"a.htm");
  EXPECT_EQ(help.begin(L"a.htm", L"A"), REPORT_FILE_ERROR);
  writeTopic(help, L"b.htm", L"B", L"two");
  std::filesystem::remove(asPath(help.folder / L"a.htm"));
  writeBytes(help.folder / L"a.htm", "somebody else's");
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  const std::string project = help.given("report.hhp");
  EXPECT_NE(project.find(scrivalen::ToUtf8(L"\nDefault topic=" + help.prefix + L"a.htm\n")), std::string::npos);
  EXPECT_EQ(bytesOf(help.folder / L"a.htm"), "somebody else's");
}

TEST(ChmReportThatFails, LeavesAPageOfAnotherReportAlone) {
  const CapturedLog log;
  InFolder help;
  HtmlReport other;
  EXPECT_EQ(other.Open((help.folder / L"a.htm").c_str()), REPORT_OK);
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(help.begin(L"a.htm", L"A"), REPORT_FILE_ERROR);
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  other.Text(L"whole", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(other.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(help.folder / L"a.htm"), "whole</body></html>\n");
}

TEST(ChmReportThatFails, RefusesToBeOpenedTwice) {
  const CapturedLog log;
  InFolder help;
  const std::wstring other = help.folder / L"other.chm";
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"A", L"one");
  EXPECT_EQ(help.begin(L"b.htm", L"B"), REPORT_OK);
  EXPECT_EQ(help.report.Open(other.c_str()), REPORT_FILE_ERROR);
  EXPECT_EQ(help.report.GetError(), L"File open/create error for '" + other + L"'. The report is still open.");
  EXPECT_EQ(help.report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(help.report.GetError(), L"File open/create error for '" + help.target + L"'. The report is still open.");
  help.report.Text(L"two", PARAGRAPH_NORMAL, L"", 0);
  help.report.EndSubDocument();
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_TRUE(log.lines().empty());
  EXPECT_EQ(help.page(L"a.htm"), "<title>%TITLE%</title>\n<p>one</p>\n<hr>\n");
  EXPECT_EQ(help.page(L"b.htm"), "<title>%TITLE%</title>\n<p>two</p>\n<hr>\n");
  EXPECT_EQ(help.leftovers(), Names{L"help.chm"});
}

TEST(ChmReportThatFails, RefusesATopicInsideAnother) {
  const CapturedLog log;
  InFolder help;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(help.begin(L"a.htm", L"A"), REPORT_OK);
  EXPECT_EQ(help.begin(L"b.htm", L"B"), REPORT_FILE_ERROR);
  EXPECT_STREQ(help.report.GetError(),
               (L"File open/create error for '" + help.prefix + L"b.htm'. The report is still open.").c_str());
  help.report.Text(L"text", PARAGRAPH_NONE, L"", 0);
  help.report.EndSubDocument();
  EXPECT_EQ(bytesOf(help.folder / L"a.htm"), "<title>%TITLE%</title>\ntext\n<hr>\n");
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  EXPECT_TRUE(help.leftovers().empty());
}

TEST(ChmReportThatFails, RefusesATopicWithALineBreakInItsPath) {
  for (const bool conforming : {false, true}) {
    const CapturedLog log;
    InFolder help(conforming);
    EXPECT_EQ(help.report.Open(), REPORT_OK);
    const std::wstring reason = L"'" + help.prefix + L"a.htm ' cannot be a topic: there is a line break in its path.";
    for (const wchar_t* name : {L"a.htm\n", L"a.htm\r"}) {
      EXPECT_EQ(help.begin(name, L"A"), REPORT_FILE_ERROR);
      EXPECT_EQ(help.report.GetError(), reason);
    }
    EXPECT_EQ(help.report.BeginSubDocument((help.prefix + L"x\n[FILES]").c_str(), L"a.htm", L"A"), REPORT_FILE_ERROR);
    EXPECT_TRUE(help.leftovers().empty());
    writeTopic(help, L"b.htm", L"B", L"two");
    EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
    EXPECT_EQ(help.report.GetError(), reason);
    EXPECT_EQ(log.lines().size(), 3u);
    const std::string topic = scrivalen::ToUtf8(help.prefix + L"b.htm\n");
    EXPECT_TRUE(help.given("report.hhp").ends_with("\n[FILES]\n" + topic));
    EXPECT_NE(help.given("report.hhp").find("\nDefault topic=" + topic), std::string::npos);
  }
}

TEST(ChmReportThatFails, RefusesATopicWithANameOfTheCompilersFiles) {
  for (const wchar_t* name : {L"report.hhp", L"report.hhc", L"Report.CHM"}) {
    const CapturedLog log;
    InFolder help;
    writeBytes(help.folder / name, "somebody else's");
    EXPECT_EQ(help.report.Open(), REPORT_OK);
    EXPECT_EQ(help.begin(name, L"A"), REPORT_FILE_ERROR);
    EXPECT_EQ(help.report.GetError(),
              L"'" + help.prefix + name + L"' cannot be a topic: the help compiler needs a file of this name itself.");
    EXPECT_EQ(log.lines(), Names{help.report.GetError()});
    EXPECT_EQ(bytesOf(help.folder / name), "somebody else's");
    EXPECT_EQ(help.begin((name + std::wstring(L"l")).c_str(), L"A"), REPORT_OK);
    help.report.EndSubDocument();
  }
}

TEST(ChmReportThatFails, DeletesAPageThatWasRefusedAtFirst) {
  const CapturedLog log;
  InFolder help;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  makeFolder(help.folder / L"a.htm");
  EXPECT_EQ(help.begin(L"a.htm", L"A"), REPORT_FILE_ERROR);
  std::filesystem::remove(asPath(help.folder / L"a.htm"));
  writeTopic(help, L"a.htm", L"A", L"one");
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(help.leftovers(), Names{L"help.chm"});
}

TEST(ChmReportThatFails, ReportsATopicThatWasNotEnded) {
  const CapturedLog log;
  InFolder help;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(help.begin(L"a.htm", L"A"), REPORT_OK);
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(help.report.GetError(), L"The topic '" + help.prefix + L"a.htm' was not ended.");
  ASSERT_FALSE(log.lines().empty());
  // On Windows another line follows, because the compiler cannot read the page that is still held.
  EXPECT_EQ(log.lines().front(), help.report.GetError());
  help.report.EndSubDocument();
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"b.htm", L"B", L"two");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
}

TEST(ChmReportThatFails, ReleasesATopicThatWasNotEnded) {
  const CapturedLog log;
  InFolder help;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(help.begin(L"a.htm", L"A"), REPORT_OK);
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  EXPECT_FALSE(exists(help.folder / L"a.htm"));
  help.target = help.folder / L"second.chm";
  EXPECT_EQ(help.report.Open(help.target.c_str()), REPORT_OK);
  writeTopic(help, L"b.htm", L"B", L"two");
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(help.page(L"b.htm"), "<title>%TITLE%</title>\n<p>two</p>\n<hr>\n");
}

TEST(ChmReportThatFails, NamesTheTopicThatWasNotEndedEvenIfAnotherWasRefused) {
  const CapturedLog log;
  InFolder help;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(help.begin(L"a.htm", L"A"), REPORT_OK);
  EXPECT_EQ(help.begin(L"b.htm", L"B"), REPORT_FILE_ERROR);
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  ASSERT_GE(log.lines().size(), 2u);
  EXPECT_EQ(log.lines()[1], L"The topic '" + help.prefix + L"a.htm' was not ended.");
}

TEST(ChmReportThatFails, ReportsAProjectOrContentsFileThatCannotBeWritten) {
  for (const wchar_t* name : {L"report.hhp", L"report.hhc"}) {
    const CapturedLog log;
    InFolder help;
    makeFolder(help.folder / name);
    EXPECT_EQ(help.report.Open(), REPORT_OK);
    writeTopic(help, L"a.htm", L"A", L"one");
    const std::wstring reason = openingError(help.folder / name);
    EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
    EXPECT_EQ(help.report.GetError(), reason);
    EXPECT_EQ(log.lines(), Names{reason});
    EXPECT_TRUE(help.leftovers().empty());
    EXPECT_TRUE(exists(help.folder / name));
  }
}

TEST(ChmReportThatFails, DoesNotCompileAnotherReportsProject) {
  for (const wchar_t* name : {L"report.hhp", L"report.hhc"}) {
    const CapturedLog log;
    InFolder help;
    ReportFile other;
    EXPECT_TRUE(other.Open((help.folder / name).c_str()));
    EXPECT_EQ(help.report.Open(), REPORT_OK);
    writeTopic(help, L"a.htm", L"A", L"one");
    const std::wstring reason = openingError(help.folder / name);
    EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
    EXPECT_EQ(help.report.GetError(), reason);
    EXPECT_EQ(log.lines(), Names{reason});
    other.Write("whole", 5);
    EXPECT_TRUE(other.Close());
    EXPECT_EQ(bytesOf(help.folder / name), "whole");
    EXPECT_EQ(help.leftovers(), Names{name});
  }
}

TEST(ChmReport, LogsCharactersOutsideTheCodePageAtClose) {
  const CapturedLog log;
  InFolder help;
  help.report.AddProperty(L"%TITLE%", L"\u65E5");
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"\u65E5\u672C", L"\u65E5");
  EXPECT_TRUE(log.lines().empty());
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(log.lines(), Names{L"'" + help.target +
                               L"': 3 characters could not be written as they were given, the first is U+65E5."});
  EXPECT_EQ(help.page(L"a.htm"), "<title>%TITLE%</title>\n<p>\xE6\x97\xA5</p>\n<hr>\n");
}

TEST(ChmReport, LogsTheLossOfItsPagesUnderTheHelpFilesName) {
  const CapturedLog log;
  InFolder help;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  writeTopic(help, L"a.htm", L"A", L"one\x01");
  EXPECT_EQ(help.begin(L"b.htm", L"\u65E5"), REPORT_OK);
  help.report.Text(help.report.Quoting(L"\x02").c_str(), PARAGRAPH_NONE, L"", 0);
  help.report.EndSubDocument();
  EXPECT_TRUE(log.lines().empty());
  EXPECT_EQ(help.report.Close(), REPORT_OK);
  EXPECT_EQ(log.lines(), Names{L"'" + help.target +
                               L"': 3 characters could not be written as they were given, the first is U+0001."});
}

TEST(ChmReportThatFails, CountsTheLossOfATopicThatWasNotEnded) {
  const CapturedLog log;
  InFolder help;
  EXPECT_EQ(help.report.Open(), REPORT_OK);
  EXPECT_EQ(help.begin(L"a.htm", L"A"), REPORT_OK);
  help.report.Text(L"\x01", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(help.report.Close(), REPORT_FILE_ERROR);
  EXPECT_EQ(log.lines().back(), L"'" + help.target + L"': 1 character could not be written as it was given: U+0001.");
}
