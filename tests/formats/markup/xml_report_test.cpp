#include "formats/markup/xml_report.h"

#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/documents/report_state.h"
#include "support/faults/open_errors.h"
#include "support/files.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

namespace {

constexpr std::string_view kStart = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report>";
constexpr std::string_view kEnd = "</report>";

// The bytes that an action writes inside the root element.
template <typename Action>
std::string written(Action action) {
  const TemporaryFolder folder;
  XmlReport report;
  report.SetOutputFileName((folder / L"a.xml").c_str());
  EXPECT_EQ(report.Open(), REPORT_OK);
  action(report);
  EXPECT_EQ(report.Close(), REPORT_OK);
  const std::string bytes = bytesOf(folder / L"a.xml");
  EXPECT_TRUE(bytes.starts_with(kStart) && bytes.ends_with(kEnd)) << bytes.substr(0, 100);
  return bytes.size() < kStart.size() + kEnd.size()
             ? std::string()
             : bytes.substr(kStart.size(), bytes.size() - kStart.size() - kEnd.size());
}

std::string writtenText(const std::wstring& text, PARAGRAPH_TYPE type, int raw) {
  return written([&](AReport& report) { report.Text(text.c_str(), type, L"", raw); });
}

std::string writtenCell(const std::wstring& text) {
  return written([&](AReport& report) { report.Cell(text.c_str(), 0, nullptr); });
}

}  // namespace

TEST(XmlReport, WritesTheDeclarationAndTheRootElement) {
  const TemporaryFolder folder;
  XmlReport report;
  EXPECT_EQ(report.Open((folder / L"a.xml").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.xml"), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report></report>");
}

TEST(XmlReport, WritesInlineTextDirectlyAndParagraphsAsTextElements) {
  EXPECT_EQ(writtenText(L"a<b", PARAGRAPH_NONE, 0), "a&lt;b");
  EXPECT_EQ(writtenText(L"a<b", PARAGRAPH_NORMAL, 0), "<text>a&lt;b</text>");
  for (const int type : {1, 2, 3, 4, 5, 6, 42, -1}) {
    EXPECT_EQ(writtenText(L"a", static_cast<PARAGRAPH_TYPE>(type), 0), "<text>a</text>") << type;
  }
}

TEST(XmlReport, EscapesATextUnlessItIsRaw) {
  EXPECT_EQ(writtenText(L"a<b> & \"c\" 'd' &amp;", PARAGRAPH_NONE, 0), "a&lt;b&gt; &amp; &quot;c&quot; 'd' &amp;amp;");
  EXPECT_EQ(writtenText(L"<x y=\"1\">&amp;</x>", PARAGRAPH_NORMAL, 1), "<text><x y=\"1\">&amp;</x></text>");
  EXPECT_EQ(writtenText(L"<x/>", PARAGRAPH_NONE, -1), "<x/>");
}

TEST(XmlReport, IgnoresTheStyleOfAText) {
  EXPECT_EQ(written([](AReport& report) {
              report.Text(L"a", PARAGRAPH_HEADING1, L"class=x", 0);
              report.Text(L"b", PARAGRAPH_HEADING1, nullptr, 0);
            }),
            "<text>a</text><text>b</text>");
}

TEST(XmlReport, WritesParagraphElementsOfEveryKind) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginParagraph(PARAGRAPH_NORMAL, L"class=x");
              report.Text(L"a", PARAGRAPH_NONE, L"", 0);
              report.EndParagraph(PARAGRAPH_NORMAL);
              report.BeginParagraph(PARAGRAPH_HEADING1, nullptr);
              report.EndParagraph(PARAGRAPH_HEADING1);
              report.BeginParagraph(PARAGRAPH_NONE, nullptr);
              report.EndParagraph(PARAGRAPH_NONE);
            }),
            "<paragraph>a</paragraph><paragraph></paragraph><paragraph></paragraph>");
}

TEST(XmlReport, BreaksALineInTheText) {
  EXPECT_EQ(written([](AReport& report) { report.EndOfLine(); }), "\r\n");
}

TEST(XmlReport, UsesTheCallersNameForATable) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginTable(L"disks", L"class=x");
              report.EndTable(L"disks");
            }),
            "<disks></disks>");
}

TEST(XmlReport, TreatsANullTableNameAsEmpty) {
  const auto named = [](const wchar_t* name) {
    return written([&](AReport& report) {
      report.BeginTable(name, nullptr);
      report.EndTable(name);
    });
  };
  EXPECT_EQ(named(nullptr), named(L""));
}

TEST(XmlReport, UsesTheCallersNameForARow) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginRow(L"disk", L"class=x", 2);
              report.EndRow(L"disk");
            }),
            "<disk></disk>");
}

TEST(XmlReport, WritesNoElementForARowWithoutAName) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginRow(nullptr, nullptr, 1);
              report.EndRow(nullptr);
              report.BeginRow(L"", nullptr, 1);
              report.Cell(L"a", 0, nullptr);
              report.EndRow(L"");
            }),
            "<cell>a</cell>");
}

TEST(XmlReport, WritesCellsButNoHeaderCells) {
  EXPECT_EQ(written([](AReport& report) { report.Cell(L"a", 1, L" width=1"); }), "");
  EXPECT_EQ(written([](AReport& report) { report.Cell(L"a", -1, nullptr); }), "");
  EXPECT_EQ(written([](AReport& report) { report.Cell(L"a", 0, L" width=1"); }), "<cell>a</cell>");
  EXPECT_EQ(written([](AReport& report) { report.Cell(nullptr, 0, nullptr); }), "<cell></cell>");
}

TEST(XmlReport, WritesAnEmptyElementForAHeaderRow) {
  EXPECT_EQ(written([](AReport& report) { report.AttributeRowHeader(); }), "<row></row>");
}

TEST(XmlReport, WritesCompositeRows) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginTable(L"disks", nullptr);
              report.Row2(L"name", L"sda", 0, L" width=1", nullptr);
              report.Row3(L"a", L"b", L"c", 0);
              report.EndTable(L"disks");
            }),
            "<disks><row><cell>name</cell><cell>sda</cell></row>"
            "<row><cell>a</cell><cell>b</cell><cell>c</cell></row></disks>");
}

TEST(XmlReport, UsesTheCallersNameForABegunCell) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginCell(L"size", 0, L" width=1");
              report.Text(L"5", PARAGRAPH_NONE, L"", 0);
              report.EndCell(L"size", 0);
            }),
            "<size>5</size>");
}

TEST(XmlReport, WritesTheTextOfAHeaderOrEmptyCellWithoutAnElement) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginCell(L"size", 1, nullptr);
              report.Text(L"a", PARAGRAPH_NONE, L"", 0);
              report.EndCell(L"size", 1);
              report.BeginCell(L"", 0, nullptr);
              report.Text(L"b", PARAGRAPH_NONE, L"", 0);
              report.EndCell(L"", 0);
            }),
            "ab");
}

TEST(XmlReport, WritesNoTextInACellWithoutAName) {
  for (const int header : {0, 1}) {
    EXPECT_EQ(written([&](AReport& report) {
                report.BeginCell(nullptr, header, nullptr);
                report.Text(L"inline", PARAGRAPH_NONE, L"", 0);
                report.Text(L"paragraph", PARAGRAPH_NORMAL, L"", 0);
                report.Text(L"<raw/>", PARAGRAPH_HEADING1, L"", 1);
                report.EndCell(nullptr, header);
                report.Text(L"again", PARAGRAPH_NONE, L"", 0);
              }),
              "again");
  }
}

TEST(XmlReport, SuppressesOnlyTexts) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginCell(nullptr, 0, nullptr);
              report.EndOfLine();
              report.Cell(L"a", 0, nullptr);
              report.BeginParagraph(PARAGRAPH_NORMAL, nullptr);
              report.EndParagraph(PARAGRAPH_NORMAL);
              report.EndCell(nullptr, 0);
            }),
            "\r\n<cell>a</cell><paragraph></paragraph>");
}

TEST(XmlReport, SuppressesTextsUntilTheNextCellEnds) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginCell(nullptr, 0, nullptr);
              report.BeginCell(L"size", 0, nullptr);
              report.Text(L"lost", PARAGRAPH_NONE, L"", 0);
              report.EndCell(L"size", 0);
              report.Text(L"kept", PARAGRAPH_NONE, L"", 0);
              report.EndCell(nullptr, 0);
            }),
            "<size></size>kept");
}

TEST(XmlReport, KeepsSuppressingTextsInItsNextFile) {
  const TemporaryFolder folder;
  XmlReport report;
  EXPECT_EQ(report.Open((folder / L"a.xml").c_str()), REPORT_OK);
  report.BeginCell(nullptr, 0, nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.Open((folder / L"b.xml").c_str()), REPORT_OK);
  report.Text(L"lost", PARAGRAPH_NORMAL, L"", 0);
  report.EndCell(nullptr, 0);
  report.Text(L"kept", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"b.xml"),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report><text>kept</text></report>");
}

TEST(XmlReport, KeepsTheTextOfACellWellFormed) {
  EXPECT_EQ(writtenCell(L"a<b> & \"c\" 'd'"), "<cell>a&lt;b> &amp; \"c\" 'd'</cell>");
  EXPECT_EQ(writtenCell(L"a]]>b ]>"), "<cell>a]]&gt;b ]></cell>");
}

TEST(XmlReport, LeavesXmlReferencesInACellUnchanged) {
  EXPECT_EQ(writtenCell(L"&amp;&lt;&gt;&quot;&apos;&#65;&#x20aC;&#x10FFFF;"),
            "<cell>&amp;&lt;&gt;&quot;&apos;&#65;&#x20aC;&#x10FFFF;</cell>");
}

TEST(XmlReport, EscapesEveryOtherAmpersandInACell) {
  EXPECT_EQ(writtenCell(L"&nbsp; &AMP; &amp &; &#; &#x; &#0; &#xD800; &#x110000; &#X41; &#6 5;"),
            "<cell>&amp;nbsp; &amp;AMP; &amp;amp &amp;; &amp;#; &amp;#x; &amp;#0; &amp;#xD800; &amp;#x110000; "
            "&amp;#X41; &amp;#6 5;</cell>");
  EXPECT_EQ(writtenCell(L"R&D"), "<cell>R&amp;D</cell>");
  EXPECT_EQ(writtenCell(L"&"), "<cell>&amp;</cell>");
}

TEST(XmlReport, WritesAQuotedTextInACellUnchanged) {
  EXPECT_EQ(written([](AReport& report) { report.Row2NotEmptyWithQuote(L"a<b", L"a<b & \"c\""); }),
            "<row><cell>a&lt;b</cell><cell>a&lt;b &amp; &quot;c&quot;</cell></row>");
}

TEST(XmlReport, QuotesAText) {
  XmlReport report;
  EXPECT_EQ(report.Quoting(L"a<b> & \"c\" 'd'"), L"a&lt;b&gt; &amp; &quot;c&quot; 'd'");
}

TEST(XmlReport, WritesNoSpacesLinksAndStyles) {
  EXPECT_EQ(written([](AReport& report) {
              report.Space();
              report.Link(L"text", L"#target");
              for (const int style : {0, 1, 2, 3}) {
                report.BeginStyle(static_cast<REPORT_STYLE>(style), 14);
                report.EndStyle(static_cast<REPORT_STYLE>(style), 14);
              }
            }),
            "");
}

TEST(XmlReport, WritesNoAnchorsAndNoTableOfContents) {
  EXPECT_EQ(written([](AReport& report) {
              report.BeginAncor(L"name");
              report.EndAncor();
              report.Ancor(L"name");
              report.BeginToc();
              report.TocItem(L"anchor", L"text", 1);
              report.EndToc();
            }),
            "");
}

TEST(XmlReport, WritesNeitherColoursNorSubDocumentsNorProperties) {
  EXPECT_EQ(written([](AReport& report) {
              report.SetCellColor(L"red");
              report.SetColumnSeparator(L";");
              EXPECT_EQ(report.BeginSubDocument(L"folder", L"file", L"title"), REPORT_OK);
              report.EndSubDocument();
              report.AddProperty(L"%TITLE%", L"title");
              report.SetReportOption(OPTION_LANDSCAPE, 1);
              report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
              report.SetReportOption(OPTION_CONFORMING, 1);
            }),
            "");
}

TEST(XmlReport, TreatsNullTextsAsEmpty) {
  EXPECT_EQ(written([](AReport& report) {
              report.Text(nullptr, PARAGRAPH_NORMAL, nullptr, 0);
              report.Text(nullptr, PARAGRAPH_NONE, nullptr, 1);
            }),
            "<text></text>");
}

TEST(XmlReport, WritesPercentSignsUnchanged) {
  EXPECT_EQ(writtenText(L"100% %s %d %n", PARAGRAPH_NORMAL, 0), "<text>100% %s %d %n</text>");
  EXPECT_EQ(writtenCell(L"100% %s %d %n"), "<cell>100% %s %d %n</cell>");
}

TEST(XmlReport, LeavesLineEndsUnchanged) {
  EXPECT_EQ(writtenText(L"a\nb\r\nc\td", PARAGRAPH_NONE, 0), "a\nb\r\nc\td");
  EXPECT_EQ(writtenCell(L"a\nb\r\nc\td"), "<cell>a\nb\r\nc\td</cell>");
}

TEST(XmlReport, WritesUtf8) {
  EXPECT_EQ(writtenText(L"\u00E9\u20AC" + grin(), PARAGRAPH_NONE, 0), "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(writtenCell(wideUnit(0xD83D) + wideUnit(0xDE00)), "<cell>\xF0\x9F\x98\x80</cell>");
}

TEST(XmlReport, ReplacesCharactersThatXmlForbids) {
  const std::wstring forbidden = L"a" + wideUnit(0xD83D) + L"b" + wideUnit(0x01) + L"c" + wideUnit(0xFFFE) + L"d";
  EXPECT_EQ(writtenText(forbidden, PARAGRAPH_NONE, 0),
            "a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD"
            "c\xEF\xBF\xBD"
            "d");
  EXPECT_EQ(writtenCell(forbidden),
            "<cell>a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD"
            "c\xEF\xBF\xBD"
            "d</cell>");
}

TEST(XmlReport, LogsCharactersThatXmlForbids) {
  const CapturedLog log;
  const TemporaryFolder folder;
  XmlReport report;
  EXPECT_EQ(report.Open((folder / L"a.xml").c_str()), REPORT_OK);
  report.Cell(L"\x01\x02", 0, nullptr);
  report.Text(L"\x1F", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"'" + (folder / L"a.xml") +
                                                   L"': 3 characters could not be written as they were given, the "
                                                   L"first is U+0001."});
}

TEST(XmlReport, CountsCharactersThatQuotingReplaced) {
  const CapturedLog log;
  const TemporaryFolder folder;
  XmlReport report;
  EXPECT_EQ(report.Open((folder / L"a.xml").c_str()), REPORT_OK);
  report.Row2NotEmptyWithQuote(L"name", L"\x01");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(log.lines(), std::vector<std::wstring>{L"'" + (folder / L"a.xml") +
                                                   L"': 1 character could not be written as it was given: U+0001."});
}

TEST(XmlReport, StartsCountingLossesAnewForEachFile) {
  const TemporaryFolder folder;
  XmlReport report;
  for (const wchar_t* text : {L"\x01", L"A"}) {
    const CapturedLog log;
    EXPECT_EQ(report.Open((folder / L"a.xml").c_str()), REPORT_OK);
    report.Text(text, PARAGRAPH_NORMAL, L"", 0);
    EXPECT_EQ(report.Close(), REPORT_OK);
    EXPECT_EQ(log.lines().size(), text[0] == L'A' ? 0u : 1u);
  }
}

TEST(XmlReport, WritesLongTextsInFull) {
  const std::string letters(100000, 'x');
  EXPECT_TRUE(areSameBytes(letters, writtenText(longText(100000), PARAGRAPH_NONE, 0)));
  EXPECT_TRUE(areSameBytes("<cell>" + letters + "</cell>", writtenCell(longText(100000))));
}

TEST(XmlReport, OpensItsOutputName) {
  const TemporaryFolder folder;
  XmlReport report;
  report.SetOutputFileName((folder / L"a.xml").c_str());
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(ReportState::openFlag(report), 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.xml"), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report></report>");
}

TEST(XmlReport, ReportsWhyItCannotBeOpened) {
  const TemporaryFolder folder;
  XmlReport report;
  report.SetOutputFileName((folder / L"missing/a.xml").c_str());
  EXPECT_EQ(report.Open(), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(folder / L"missing/a.xml"));
  EXPECT_EQ(report.Open(nullptr), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(L""));
}

TEST(XmlReport, RefusesAnotherFileWhileItIsOpen) {
  const TemporaryFolder folder;
  XmlReport report;
  EXPECT_EQ(report.Open((folder / L"a.xml").c_str()), REPORT_OK);
  report.Text(L"A", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Open((folder / L"b.xml").c_str()), REPORT_FILE_ERROR);
  report.Text(L"B", PARAGRAPH_NONE, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.xml"), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report>AB</report>");
  EXPECT_FALSE(exists(folder / L"b.xml"));
}

TEST(XmlReport, WritesNothingWhileItIsClosed) {
  const CapturedLog log;
  const TemporaryFolder folder;
  XmlReport report;
  report.Text(L"before", PARAGRAPH_NORMAL, L"", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.Open((folder / L"missing/a.xml").c_str()), REPORT_FILE_ERROR);
  report.Row2(L"a", L"b", 0, nullptr, nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.Open((folder / L"a.xml").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.Cell(L"after", 0, nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(bytesOf(folder / L"a.xml"), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report></report>");
  EXPECT_TRUE(log.lines().empty());
}

TEST(XmlReport, CanBeOpenedAgain) {
  const TemporaryFolder folder;
  XmlReport report;
  for (const wchar_t* text : {L"first and long", L"B"}) {
    EXPECT_EQ(report.Open((folder / L"a.xml").c_str()), REPORT_OK);
    report.Text(text, PARAGRAPH_NONE, L"", 0);
    EXPECT_EQ(report.Close(), REPORT_OK);
  }
  EXPECT_EQ(bytesOf(folder / L"a.xml"), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<report>B</report>");
}

namespace {

// The same for a conforming report.
template <typename Action>
std::string conforming(Action action) {
  return written([&](AReport& report) {
    report.SetReportOption(OPTION_CONFORMING, 1);
    EXPECT_EQ(report.Close(), REPORT_OK);
    EXPECT_EQ(report.Open(), REPORT_OK);
    action(report);
  });
}

std::string conformingTable(const wchar_t* name) {
  return conforming([name](AReport& report) {
    report.BeginTable(name, nullptr);
    report.EndTable(name);
  });
}

std::string element(const std::string& name) { return "<" + name + "></" + name + ">"; }

}  // namespace

TEST(ConformingXmlReport, LeavesValidNamesUnchanged) {
  EXPECT_EQ(conformingTable(L"disks"), "<disks></disks>");
  EXPECT_EQ(conformingTable(L"_a-b.c9"), "<_a-b.c9></_a-b.c9>");
  EXPECT_EQ(conformingTable(L"\u00C9t\u00E9\u00B7\u4E2D\u0301"),
            element("\xC3\x89t\xC3\xA9\xC2\xB7\xE4\xB8\xAD\xCC\x81"));
}

TEST(ConformingXmlReport, ReplacesInvalidNameCharactersWithUnderscores) {
  EXPECT_EQ(conformingTable(L"my table"), element("my_table"));
  EXPECT_EQ(conformingTable(L"a<b>&\"c'/d=\n"), element("a_b___c__d__"));
  EXPECT_EQ(conformingTable(L"\u00D7a\u00F7\u037E"), element("_a__"));
  EXPECT_EQ(conformingTable((L"a" + grin() + wideUnit(0xD800) + wideUnit(0xFFFE)).c_str()),
            element("a\xF0\x9F\x98\x80__"));
}

TEST(ConformingXmlReport, PutsAnUnderscoreBeforeAnInvalidFirstCharacter) {
  EXPECT_EQ(conformingTable(L"2026"), element("_2026"));
  EXPECT_EQ(conformingTable(L"-a"), element("_-a"));
  EXPECT_EQ(conformingTable(L".a"), element("_.a"));
  EXPECT_EQ(conformingTable(L"\u0301a"), element("_\xCC\x81"
                                                 "a"));
  EXPECT_EQ(conformingTable(L" a"), element("_a"));
}

TEST(ConformingXmlReport, ReplacesTheColonOfAnUndeclaredPrefix) {
  EXPECT_EQ(conformingTable(L"a:b"), element("a_b"));
  EXPECT_EQ(conformingTable(L":"), element("_"));
}

TEST(ConformingXmlReport, WritesATableWithAnEmptyNameAsAnUnderscore) {
  EXPECT_EQ(conformingTable(L""), element("_"));
  EXPECT_EQ(conformingTable(nullptr), element("_"));
}

TEST(ConformingXmlReport, CorrectsTheNamesOfRowsAndCells) {
  EXPECT_EQ(conforming([](AReport& report) {
              report.BeginRow(L"a row", nullptr, 1);
              report.BeginCell(L"1st", 0, nullptr);
              report.Text(L"text", PARAGRAPH_NONE, L"", 0);
              report.EndCell(L"1st", 0);
              report.EndRow(L"a row");
              report.BeginRow(L"", nullptr, 1);
              report.BeginCell(L"", 0, nullptr);
              report.EndCell(L"", 0);
              report.EndRow(nullptr);
            }),
            "<a_row><_1st>text</_1st></a_row>");
}

TEST(ConformingXmlReport, LogsTheNamesItCorrectedOncePerFile) {
  const CapturedLog log;
  const TemporaryFolder folder;
  const std::wstring file = folder / L"a.xml";
  XmlReport report;
  report.SetReportOption(OPTION_CONFORMING, 1);
  EXPECT_EQ(report.Open(file.c_str()), REPORT_OK);
  report.BeginTable(L"my table", nullptr);
  report.BeginRow(L"2026", nullptr, 1);
  report.EndRow(L"2026");
  report.EndTable(L"my table");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.Open(file.c_str()), REPORT_OK);
  report.BeginTable(L"2026", nullptr);
  report.EndTable(L"2026");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(report.Open(file.c_str()), REPORT_OK);
  report.BeginTable(L"disks", nullptr);
  report.EndTable(L"disks");
  EXPECT_EQ(report.Close(), REPORT_OK);
  report.BeginTable(L"2026", nullptr);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(log.lines(), (std::vector<std::wstring>{
                             L"'" + file +
                                 L"': 2 elements were renamed because XML does not allow their names, the first from "
                                 L"'my table' to 'my_table'.",
                             L"'" + file +
                                 L"': 1 element was renamed because XML does not allow its name, from '2026' to "
                                 L"'_2026'."}));
}

TEST(ConformingXmlReport, TakesEffectAtTheNextOpen) {
  EXPECT_EQ(written([](AReport& report) {
              report.SetReportOption(OPTION_CONFORMING, 1);
              report.BeginTable(L"2026", nullptr);
              report.EndTable(L"2026");
            }),
            "<2026></2026>");
  EXPECT_EQ(conforming([](AReport& report) {
              report.SetReportOption(OPTION_CONFORMING, 0);
              report.BeginTable(L"2026", nullptr);
              report.EndTable(L"2026");
            }),
            "<_2026></_2026>");
}
