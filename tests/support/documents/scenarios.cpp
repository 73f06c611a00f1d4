#include "support/documents/scenarios.h"

#include "support/bytes.h"

#include <ostream>

namespace scrivalen::test {
namespace {

void playEmpty(AReport&) {}

void playHeadingsAndParagraphs(AReport& report) {
  report.Text(L"Disk report", PARAGRAPH_HEADING1, L"class=\"title\"", 0);
  report.Text(L"Overview", PARAGRAPH_HEADING2, L"", 0);
  report.Text(L"All disks are well.", PARAGRAPH_NORMAL, L"", 0);
  report.Text(L"Details", PARAGRAPH_HEADING6, L"", 0);
  report.BeginParagraph(PARAGRAPH_NORMAL, L"");
  report.Text(L"First line,", PARAGRAPH_NONE, L"", 0);
  report.EndOfLine();
  report.Text(L"second", PARAGRAPH_NONE, L"", 0);
  report.Space();
  report.Text(L"line.", PARAGRAPH_NONE, L"", 0);
  report.EndParagraph(PARAGRAPH_NORMAL);
  report.Text(L"", PARAGRAPH_NORMAL, L"", 0);
}

void playStyles(AReport& report) {
  report.BeginParagraph(PARAGRAPH_NORMAL, L"");
  report.Text(L"plain ", PARAGRAPH_NONE, L"", 0);
  report.BeginStyle(STYLE_BOLD, 0);
  report.Text(L"bold ", PARAGRAPH_NONE, L"", 0);
  report.BeginStyle(STYLE_ITALIC, 0);
  report.Text(L"both", PARAGRAPH_NONE, L"", 0);
  report.EndStyle(STYLE_ITALIC, 0);
  report.EndStyle(STYLE_BOLD, 0);
  report.BeginStyle(STYLE_FONT_SIZE, 18);
  report.Text(L" large", PARAGRAPH_NONE, L"", 0);
  report.EndStyle(STYLE_FONT_SIZE, 18);
  report.EndParagraph(PARAGRAPH_NORMAL);
}

void playAnchorsAndLinks(AReport& report) {
  report.BeginAncor(L"top");
  report.Text(L"Top", PARAGRAPH_HEADING1, L"", 0);
  report.EndAncor();
  report.Ancor(L"point");
  report.BeginParagraph(PARAGRAPH_NORMAL, L"");
  report.Link(L"to the top", L"#top");
  report.Text(L" or ", PARAGRAPH_NONE, L"", 0);
  report.Link(L"elsewhere", L"https://example.org/a?b=1&amp;c=2");
  report.EndParagraph(PARAGRAPH_NORMAL);
}

void playTableOfContents(AReport& report) {
  report.BeginToc();
  report.TocItem(L"one", L"One", 1);
  report.TocItem(L"one.one", L"One and a bit", 2);
  report.TocItem(L"two", L"Two", 1);
  report.EndToc();
  report.Ancor(L"one");
  report.Text(L"One", PARAGRAPH_HEADING1, L"", 0);
  report.Ancor(L"one.one");
  report.Text(L"One and a bit", PARAGRAPH_HEADING2, L"", 0);
  report.Ancor(L"two");
  report.Text(L"Two", PARAGRAPH_HEADING1, L"", 0);
}

void playTable(AReport& report) {
  report.BeginTable(L"disks", nullptr);
  report.BeginRow(L"disk", nullptr, 3);
  report.Cell(L"Name", 1, L" width=\"25%\"");
  report.Cell(L"Size", 1, nullptr);
  report.Cell(L"State", 1, nullptr);
  report.EndRow(L"disk");
  report.BeginRow(L"disk", L"class=\"good\"", 3);
  report.Cell(L"sda", 0, nullptr);
  report.Cell(L"2000", 0, L" align=\"right\"");
  report.SetCellColor(L"lightgreen");
  report.Cell(L"well", 0, nullptr);
  report.EndRow(L"disk");
  report.BeginRow(L"disk", nullptr, 3);
  report.BeginCell(L"name", 0, nullptr);
  report.BeginStyle(STYLE_BOLD, 0);
  report.Text(L"sdb", PARAGRAPH_NONE, L"", 0);
  report.EndStyle(STYLE_BOLD, 0);
  report.EndCell(L"name", 0);
  report.Cell(L"", 0, nullptr);
  report.SetCellColor(L"#FF8080;#000000");
  report.BeginCell(nullptr, 0, L" class=\"bad\"");
  report.Text(L"failing", PARAGRAPH_NONE, L"", 0);
  report.EndCell(nullptr, 0);
  report.EndRow(L"disk");
  report.EndTable(L"disks");
  report.BeginTable(L"none", L"");
  report.EndTable(L"none");
}

void playCompositeRows(AReport& report) {
  report.BeginTable(L"attributes", L"border=\"1\"");
  report.AttributeRowHeader();
  report.Row2(L"Model", L"X-25", 0, nullptr, L" class=\"model\"");
  report.Row2NotEmptyWithQuote(L"Serial", L"0042");
  report.Row2NotEmptyWithQuote(L"Firmware", L"");
  report.Row3(L"1", L"2", L"3", 0);
  report.Row3(L"a", L"b", L"c", 1);
  report.ReportCreated();
  report.EndTable(L"attributes");
}

void playSubDocuments(AReport& report) {
  report.Text(L"Contents", PARAGRAPH_HEADING1, L"", 0);
  report.BeginSubDocument(L"", L"first.htm", L"First topic");
  report.Text(L"In the first topic.", PARAGRAPH_NORMAL, L"", 0);
  report.EndSubDocument();
  report.BeginSubDocument(L"", L"second.htm", L"Second topic");
  report.Text(L"In the second topic.", PARAGRAPH_NORMAL, L"", 0);
  report.EndSubDocument();
}

void playRawText(AReport& report) {
  report.Text(L"<em>raw</em> &amp; <em>ready</em>", PARAGRAPH_NORMAL, L"", 1);
  report.Text(L"<em>quoted</em> &amp; safe", PARAGRAPH_NORMAL, L"", 0);
  report.Text(L"<em>inline</em>", PARAGRAPH_NONE, L"", 1);
}

void playCharacters(AReport& report) {
  report.Text(L"\"double\" 'single' <angle> & {brace} \\back 100% %s", PARAGRAPH_NORMAL, L"", 0);
  report.Text(L"na\u00EFve \u20AC 5 \u4E2D\u6587 ", PARAGRAPH_NONE, L"", 0);
  report.Text(grin().c_str(), PARAGRAPH_NONE, L"", 0);
  report.Text(L"line\none\ttab", PARAGRAPH_NORMAL, L"", 0);
}

constexpr Scenario kScenarios[] = {{"empty", &playEmpty},
                                   {"headings_and_paragraphs", &playHeadingsAndParagraphs},
                                   {"styles", &playStyles},
                                   {"anchors_and_links", &playAnchorsAndLinks},
                                   {"table_of_contents", &playTableOfContents},
                                   {"table", &playTable},
                                   {"composite_rows", &playCompositeRows},
                                   {"sub_documents", &playSubDocuments},
                                   {"raw_text", &playRawText},
                                   {"characters", &playCharacters}};

}  // namespace

void PrintTo(const Scenario& scenario, std::ostream* out) { *out << scenario.name; }

std::span<const Scenario> scenarios() { return kScenarios; }

}  // namespace scrivalen::test
