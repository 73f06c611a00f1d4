#include "formats/pdf/layout/pdf_report.h"

#include "formats/pdf/layout/made_pdf.h"
#include "scrivalen/host.h"
#include "support/bytes.h"
#include "support/captured_log.h"
#include "support/documents/pdf_structure.h"
#include "support/faults/open_errors.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <utility>

using namespace scrivalen::test;

namespace {

// The document that an action writes between Open and Close.
template <typename Action>
MadePdf pdfOf(PDFReport& report, Action action, int conforming = 0) {
  const TemporaryFolder folder;
  EXPECT_EQ(report.Open((folder / L"a.pdf").c_str()), REPORT_OK);
  action(report);
  EXPECT_EQ(report.Close(), REPORT_OK);
  MadePdf made(bytesOf(folder / L"a.pdf"));
  EXPECT_EQ(PdfStructure(made.bytes, conforming != 0).problems(), std::vector<std::string>());
  return made;
}

template <typename Action>
MadePdf pdf(Action action, int conforming = 0) {
  PDFReport report;
  report.SetReportOption(OPTION_CONFORMING, conforming);
  return pdfOf(report, action, conforming);
}

// The lines of the only page, without the first and last, which every page has.
template <typename Action>
std::string lines(Action action, int conforming = 0) {
  const MadePdf made = pdf(action, conforming);
  EXPECT_EQ(made.pageCount(), 1u);
  const std::string content = made.content(1);
  constexpr std::string_view kHead = "BT\n50 810 Td\n";
  EXPECT_TRUE(content.starts_with(kHead)) << content;
  EXPECT_TRUE(content.ends_with("ET\n")) << content;
  return content.substr(kHead.size(), content.size() - kHead.size() - 3);
}

// The line that sets the font of the only text.
template <typename Action>
std::string font(Action action, int conforming = 0) {
  const std::string all = lines(action, conforming);
  const std::size_t begin = all.find("/F");
  EXPECT_NE(begin, std::string::npos) << all;
  EXPECT_EQ(begin, all.rfind("/F")) << all;
  return begin == std::string::npos ? all : all.substr(begin, all.find('\n', begin) - begin);
}

// The fill colour of the only cell.
template <typename Action>
std::string fill(Action cell) {
  const std::string all = lines([cell](PDFReport& r) {
    r.BeginTable(L"t", nullptr);
    r.BeginRow(L"r", nullptr, 1);
    cell(r);
    r.EndRow(L"r");
    r.EndTable(L"t");
  });
  const std::string_view end = " rg\n50 ";
  const std::size_t at = all.find(end);
  EXPECT_NE(at, std::string::npos) << all;
  const std::size_t begin = all.rfind('\n', at) + 1;
  return at == std::string::npos ? all : all.substr(begin, at - begin);
}

std::string fillOf(const wchar_t* color) {
  return fill([color](PDFReport& r) {
    r.BeginCell(nullptr, 0, color);
    r.EndCell(nullptr, 0);
  });
}

constexpr const char* kWhite = "1.000000 1.000000 1.000000";
constexpr const char* kLightGrey = "0.750000 0.750000 0.750000";

struct NamedFill {
  std::wstring name;
  const char* fill;
};

const NamedFill kFills[] = {{L"black", "0.000000 0.000000 0.000000"},     {L"blue", "0.000000 0.000000 1.000000"},
                            {L"cyan", "0.000000 1.000000 1.000000"},      {L"darkgrey", "0.250000 0.250000 0.250000"},
                            {L"gray", "0.500000 0.500000 0.500000"},      {L"green", "0.000000 1.000000 0.000000"},
                            {L"lightgrey", "0.750000 0.750000 0.750000"}, {L"magenta", "1.000000 0.000000 1.000000"},
                            {L"red", "1.000000 0.000000 0.000000"},       {L"white", "1.000000 1.000000 1.000000"},
                            {L"yellow", "1.000000 1.000000 0.000000"}};

std::wstring inCapitals(std::wstring name) {
  for (wchar_t& letter : name) {
    letter = static_cast<wchar_t>(letter - L'a' + L'A');
  }
  return name;
}

void writeBody(AReport& report, const wchar_t* text) { report.Text(text, PARAGRAPH_NORMAL, L"", 0); }

constexpr const char* kBodyText =
    "1 0 0 1 0 0 Tm\n"
    "0 805 Td\n"
    "1 0 0 1 0 0 Tm\n"
    "50 805 Td\n"
    "0 -5 Td\n"
    "/F1 8 Tf\n"
    "0.000000 0.000000 0.000000 rg\n"
    "(body)Tj\n"
    "0 -5 Td\n";

}  // namespace

TEST(PdfReport, UsesTimesAndItsBoldVariant) {
  const MadePdf made = pdf([](PDFReport&) {});
  EXPECT_EQ(made.object(3),
            "3 0 obj\r\n<<\r\n/Type /Font\r\n/Subtype /Type1\r\n/Name /F1\r\n/BaseFont /Times-Roman\r\n"
            "/Encoding /WinAnsiEncoding\r\n>>\r\nendobj\r\n\r\n");
  EXPECT_EQ(made.object(4),
            "4 0 obj\r\n<<\r\n/Type /Font\r\n/Subtype /Type1\r\n/Name /F2\r\n/BaseFont /Times-Bold\r\n"
            "/Encoding /WinAnsiEncoding\r\n>>\r\nendobj\r\n\r\n");
}

TEST(PdfReport, ShowsNoPanelsInAReader) {
  EXPECT_EQ(pdf([](PDFReport&) {}).object(1),
            "1 0 obj\r\n<<\r\n/Type /Catalog\r\n/Pages 2 0 R\r\n/PageMode /UseNone\r\n>>\r\nendobj\r\n\r\n");
}

TEST(PdfReport, OpensTheOutputFileName) {
  const TemporaryFolder folder;
  PDFReport report;
  report.SetOutputFileName((folder / L"b.pdf").c_str());
  EXPECT_EQ(report.Open(), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_TRUE(bytesOf(folder / L"b.pdf").ends_with("%%EOF"));
}

TEST(PdfReport, ReturnsAnErrorWhenItsFileCannotBeOpened) {
  const TemporaryFolder folder;
  PDFReport report;
  EXPECT_EQ(report.Open((folder / L"missing/a.pdf").c_str()), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), openingError(folder / L"missing/a.pdf"));
  writeBody(report, L"lost");
  report.TocItem(L"lost", L"Lost", 0);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_FALSE(exists(folder / L"missing"));
}

TEST(PdfReport, BeginsEmptyAfterAFailedOpen) {
  const TemporaryFolder folder;
  PDFReport report;
  EXPECT_EQ(report.Open((folder / L"missing/a.pdf").c_str()), REPORT_FILE_ERROR);
  writeBody(report, L"lost");
  EXPECT_EQ(pdfOf(report, [](PDFReport& r) { writeBody(r, L"body"); }).texts(1), std::vector<std::string>{"body"});
}

TEST(PdfReport, RefusesAnotherFileWhileOpenAndKeepsItsDocument) {
  const TemporaryFolder folder;
  PDFReport report;
  EXPECT_EQ(report.Open((folder / L"a.pdf").c_str()), REPORT_OK);
  writeBody(report, L"before");
  report.SetReportOption(OPTION_LANDSCAPE, 1);
  EXPECT_EQ(report.Open((folder / L"b.pdf").c_str()), REPORT_FILE_ERROR);
  EXPECT_EQ(report.GetError(), L"File open/create error for '" + (folder / L"b.pdf") + L"'. The report is still open.");
  writeBody(report, L"behind");
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_FALSE(exists(folder / L"b.pdf"));
  const MadePdf made(bytesOf(folder / L"a.pdf"));
  EXPECT_EQ(made.texts(1), (std::vector<std::string>{"before", "behind"}));
  EXPECT_NE(made.objectWith("/Type /Page\r\n").find("/MediaBox [0 0 595 840]\r\n"), std::string::npos);
}

TEST(PdfReport, MayBeClosedWithoutBeingOpened) {
  PDFReport report;
  EXPECT_EQ(report.Close(), REPORT_OK);
}

TEST(PdfReport, FailsSoonWhenTheHostStopsIt) {
  static int calls;
  calls = 0;
  const TemporaryFolder folder;
  const CapturedLog log;
  PDFReport report;
  EXPECT_EQ(report.Open((folder / L"a.pdf").c_str()), REPORT_OK);
  for (int i = 0; i < 10000; ++i) {
    report.Text(L"a paragraph", PARAGRAPH_NORMAL, nullptr, 0);
  }
  scrivalen::SetStopHandler([] { return ++calls > 2; });
  EXPECT_EQ(report.Close(), REPORT_FILE_ERROR);
  scrivalen::SetStopHandler(nullptr);
  EXPECT_GT(calls, 2);
  EXPECT_LT(calls, 10);
  EXPECT_TRUE(std::wstring_view(report.GetError()).ends_with(L"'. The host has stopped the report"))
      << report.GetError();
  EXPECT_EQ(report.Open((folder / L"a.pdf").c_str()), REPORT_OK);
  EXPECT_EQ(report.Close(), REPORT_OK);
}

TEST(PdfReport, CarriesNothingOverToTheNextDocument) {
  PDFReport report;
  const MadePdf first = pdfOf(report, [](PDFReport& r) {
    writeBody(r, L"first");
    r.TocItem(L"first", L"First", 0);
  });
  EXPECT_EQ(first.outline(), "1 entries\nFirst to object 0 at 0 0\n");
  const MadePdf second = pdfOf(report, [](PDFReport& r) { writeBody(r, L"second"); });
  EXPECT_EQ(second.texts(1), std::vector<std::string>{"second"});
  EXPECT_EQ(second.outline(), "");
}

TEST(PdfReportText, OfABodyParagraphHasEightPoints) {
  EXPECT_EQ(lines([](PDFReport& r) { r.Text(L"body", PARAGRAPH_NORMAL, L"style", 0); }), kBodyText);
  EXPECT_EQ(lines([](PDFReport& r) { r.Text(L"body", PARAGRAPH_NORMAL, nullptr, 1); }), kBodyText);
}

TEST(PdfReportText, OfAHeadingHasTheSizeOfItsLevel) {
  constexpr std::pair<int, const char*> kSizes[] = {{1, "/F1 20 Tf"}, {2, "/F1 18 Tf"}, {3, "/F1 16 Tf"},
                                                    {4, "/F1 15 Tf"}, {5, "/F1 14 Tf"}, {6, "/F1 12 Tf"},
                                                    {7, "/F1 8 Tf"},  {-1, "/F1 8 Tf"}, {1000, "/F1 8 Tf"}};
  for (const auto& [type, expected] : kSizes) {
    const auto paragraph = static_cast<PARAGRAPH_TYPE>(type);
    EXPECT_EQ(font([paragraph](PDFReport& r) { r.Text(L"a", paragraph, L"", 0); }), expected);
    EXPECT_EQ(font([paragraph](PDFReport& r) {
                r.BeginParagraph(paragraph, L"");
                r.Text(L"a", PARAGRAPH_NONE, L"", 0);
                r.EndParagraph(paragraph);
              }),
              expected);
  }
}

TEST(PdfReportText, OfAHeadingIsFollowedByEightPoints) {
  EXPECT_EQ(font([](PDFReport& r) {
              r.Text(L"Title", PARAGRAPH_HEADING1, L"", 0);
              r.Text(L" and more", PARAGRAPH_NONE, L"", 0);
            }),
            "/F1 8 Tf");
}

TEST(PdfReportText, BeforeTheFirstParagraphIsNotWritten) {
  EXPECT_EQ(lines([](PDFReport& r) {
              r.Text(L"lost", PARAGRAPH_NONE, L"", 0);
              r.Space();
              r.EndOfLine();
            }),
            "");
}

TEST(PdfReportText, WithoutATypeIsAppendedToThePreviousParagraph) {
  EXPECT_EQ(lines([](PDFReport& r) {
              r.Text(L"bo", PARAGRAPH_NORMAL, L"", 0);
              r.Text(L"dy", PARAGRAPH_NONE, L"", 0);
            }),
            kBodyText);
}

TEST(PdfReportText, ThatIsNullIsIgnored) {
  EXPECT_EQ(lines([](PDFReport& r) { r.Text(nullptr, PARAGRAPH_NORMAL, nullptr, 0); }), "1 0 0 1 0 0 Tm\n0 802 Td\n");
  EXPECT_EQ(lines([](PDFReport& r) {
              r.Text(L"body", PARAGRAPH_NORMAL, L"", 0);
              r.Text(nullptr, PARAGRAPH_NONE, nullptr, 0);
            }),
            kBodyText);
}

TEST(PdfReportText, UsesTheStyleOfItsLastPiece) {
  EXPECT_EQ(font([](PDFReport& r) {
              r.BeginParagraph(PARAGRAPH_HEADING1, L"");
              r.Text(L"a", PARAGRAPH_NONE, L"", 0);
              r.BeginStyle(STYLE_BOLD, 0);
              r.BeginStyle(STYLE_FONT_SIZE, 30);
              r.Space();
            }),
            "/F2 30 Tf");
}

TEST(PdfReportText, HasItsBracketsAndBackslashesEscaped) {
  EXPECT_EQ(pdf([](PDFReport& r) { writeBody(r, L"a(b)\\c"); }).texts(1), std::vector<std::string>{"a\\(b\\)\\\\c"});
}

TEST(PdfReportText, AfterAnAnchorHasAnUnlistedFontUnlessConforming) {
  const auto action = [](PDFReport& r) {
    r.Ancor(L"here");
    r.Text(L"a", PARAGRAPH_NONE, L"", 0);
  };
  EXPECT_EQ(font(action), "/F0 12 Tf");
  EXPECT_EQ(font(action, 1), "/F1 12 Tf");
}

TEST(PdfReportLink, BeforeAnyParagraphHasAnUnlistedFontUnlessConforming) {
  const auto action = [](PDFReport& r) { r.Link(L"a", L"b"); };
  EXPECT_EQ(font(action), "/F0 12 Tf");
  EXPECT_EQ(font(action, 1), "/F1 12 Tf");
}

TEST(PdfReportParagraph, IsFollowedByEightPointsForAnyType) {
  for (const PARAGRAPH_TYPE type : {PARAGRAPH_NONE, PARAGRAPH_HEADING1, PARAGRAPH_NORMAL}) {
    EXPECT_EQ(font([type](PDFReport& r) {
                r.BeginParagraph(PARAGRAPH_HEADING2, L"");
                r.EndParagraph(type);
                r.Text(L"a", PARAGRAPH_NONE, L"", 0);
              }),
              "/F1 8 Tf");
  }
}

TEST(PdfReportParagraph, StaysCurrentAfterItsEnd) {
  EXPECT_EQ(lines([](PDFReport& r) {
              r.BeginParagraph(PARAGRAPH_NORMAL, L"");
              r.EndParagraph(PARAGRAPH_NORMAL);
              r.Text(L"body", PARAGRAPH_NONE, L"", 0);
            }),
            kBodyText);
}

TEST(PdfReportParagraph, IsIgnoredInACell) {
  EXPECT_EQ(pdf([](PDFReport& r) {
              r.BeginTable(L"t", nullptr);
              r.BeginRow(L"r", nullptr, 1);
              r.BeginCell(nullptr, 0, nullptr);
              r.Text(L"a", PARAGRAPH_HEADING1, L"", 0);
              r.Text(L"b", PARAGRAPH_NORMAL, L"", 0);
              r.EndCell(nullptr, 0);
            }).texts(1),
            std::vector<std::string>{"ab"});
}

TEST(PdfReportBreaks, AreALineEndAndABlank) {
  EXPECT_EQ(lines([](PDFReport& r) {
              r.BeginParagraph(PARAGRAPH_NORMAL, L"");
              r.Text(L"a", PARAGRAPH_NONE, L"", 0);
              r.Space();
              r.Text(L"b", PARAGRAPH_NONE, L"", 0);
              r.EndOfLine();
              r.Text(L"c", PARAGRAPH_NONE, L"", 0);
            }),
            "1 0 0 1 0 0 Tm\n"
            "0 805 Td\n"
            "1 0 0 1 0 0 Tm\n"
            "50 805 Td\n"
            "0 -5 Td\n"
            "/F1 8 Tf\n"
            "0.000000 0.000000 0.000000 rg\n"
            "(a b)Tj\n"
            "0 -5 Td\n"
            "1 0 0 1 0 0 Tm\n"
            "50 795 Td\n"
            "0 -5 Td\n"
            "/F1 8 Tf\n"
            "0.000000 0.000000 0.000000 rg\n"
            "(c)Tj\n"
            "0 -5 Td\n");
}

TEST(PdfReportStyles, UseTheBoldFontForBoldNoItalicAndAnySize) {
  const auto styled = [](REPORT_STYLE style, int value) {
    return font([=](PDFReport& r) {
      r.BeginParagraph(PARAGRAPH_NORMAL, L"");
      r.BeginStyle(style, value);
      r.Text(L"a", PARAGRAPH_NONE, L"", 0);
    });
  };
  EXPECT_EQ(styled(STYLE_BOLD, 0), "/F2 8 Tf");
  EXPECT_EQ(styled(STYLE_ITALIC, 0), "/F1 8 Tf");
  EXPECT_EQ(styled(STYLE_FONT_SIZE, 33), "/F1 33 Tf");
  EXPECT_EQ(styled(static_cast<REPORT_STYLE>(3), 33), "/F1 8 Tf");
  EXPECT_EQ(styled(static_cast<REPORT_STYLE>(-1), 33), "/F1 8 Tf");
}

TEST(PdfReportStyles, EndInPlainTextAndASizeOfTenPoints) {
  const auto ended = [](REPORT_STYLE style, int value) {
    return font([=](PDFReport& r) {
      r.BeginParagraph(PARAGRAPH_HEADING1, L"");
      r.BeginStyle(style, value);
      r.Text(L"a", PARAGRAPH_NONE, L"", 0);
      r.EndStyle(style, value);
      r.Text(L"b", PARAGRAPH_NONE, L"", 0);
    });
  };
  EXPECT_EQ(ended(STYLE_BOLD, 0), "/F1 20 Tf");
  EXPECT_EQ(ended(STYLE_ITALIC, 0), "/F1 20 Tf");
  EXPECT_EQ(ended(STYLE_FONT_SIZE, 33), "/F1 10 Tf");
  EXPECT_EQ(ended(static_cast<REPORT_STYLE>(3), 33), "/F1 20 Tf");
}

TEST(PdfReportStyles, EndIndependently) {
  EXPECT_EQ(font([](PDFReport& r) {
              r.BeginParagraph(PARAGRAPH_NORMAL, L"");
              r.BeginStyle(STYLE_BOLD, 0);
              r.EndStyle(STYLE_ITALIC, 0);
              r.EndStyle(STYLE_FONT_SIZE, 0);
              r.Text(L"a", PARAGRAPH_NONE, L"", 0);
            }),
            "/F2 10 Tf");
}

TEST(PdfReportAnchors, MarkTheirParagraph) {
  const MadePdf made = pdf([](PDFReport& r) {
    r.BeginParagraph(PARAGRAPH_NORMAL, L"");
    r.BeginAncor(L"here");
    r.Text(L"a", PARAGRAPH_NONE, L"", 0);
    r.EndAncor();
    r.Text(L"b", PARAGRAPH_NONE, L"", 0);
    r.Link(L"c", L"here");
  });
  EXPECT_EQ(made.texts(1), std::vector<std::string>{"abc"});
  EXPECT_EQ(made.links(), std::vector<std::string>{"page 1 [50 805 565 795] to page 1 at 50 805"});
}

TEST(PdfReportAnchors, InOneCallBeginAParagraph) {
  const auto action = [](PDFReport& r) {
    writeBody(r, L"before");
    r.Ancor(L"here");
    r.Text(L"a", PARAGRAPH_NONE, L"", 0);
    r.BeginParagraph(PARAGRAPH_NORMAL, L"");
    r.Link(L"link", L"here");
  };
  const MadePdf made = pdf(action);
  EXPECT_EQ(made.texts(1), (std::vector<std::string>{"before", "a", "link"}));
  EXPECT_EQ(made.links(), std::vector<std::string>{"page 1 [50 775 565 765] to page 1 at 50 790"});
}

TEST(PdfReportAnchors, BeforeTheFirstParagraphAreIgnored) {
  const MadePdf made = pdf([](PDFReport& r) {
    r.BeginAncor(L"here");
    r.EndAncor();
    r.Link(L"a", L"here");
  });
  EXPECT_EQ(made.links(), std::vector<std::string>{"page 1 [50 802 565 786] to object 0 at 0 0"});
}

TEST(PdfReportAnchors, InACellMarkTheCell) {
  const MadePdf made = pdf([](PDFReport& r) {
    r.BeginTable(L"t", nullptr);
    r.BeginRow(L"r", nullptr, 2);
    r.Cell(L"a", 0, nullptr);
    r.BeginCell(nullptr, 0, nullptr);
    r.Ancor(L"here");
    r.Link(L"b", L"here");
  });
  EXPECT_EQ(made.texts(1), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(made.links(), std::vector<std::string>{"page 1 [307 794 564 778] to page 1 at 307 794"});
}

TEST(PdfReportLink, BeginsAParagraphWhenThereIsNone) {
  const MadePdf made = pdf([](PDFReport& r) {
    r.Link(L"forward", L"later");
    r.Ancor(L"later");
  });
  EXPECT_EQ(made.texts(1), std::vector<std::string>{"forward"});
  EXPECT_EQ(made.links(), std::vector<std::string>{"page 1 [50 802 565 786] to page 1 at 50 778"});
}

TEST(PdfReportLink, WithoutATextMakesTheParagraphALink) {
  const MadePdf made = pdf([](PDFReport& r) {
    r.BeginParagraph(PARAGRAPH_NORMAL, L"");
    r.BeginAncor(L"here");
    r.Text(L"text", PARAGRAPH_NONE, L"", 0);
    r.Link(nullptr, L"here");
  });
  EXPECT_EQ(made.texts(1), std::vector<std::string>{"text"});
  EXPECT_EQ(made.links(), std::vector<std::string>{"page 1 [50 805 565 795] to page 1 at 50 805"});
}

TEST(PdfReportLink, IgnoresANumberSignWhenConforming) {
  const auto action = [](PDFReport& r) {
    r.Ancor(L"here");
    r.Link(L"a", L"#here");
  };
  EXPECT_EQ(pdf(action).links(), std::vector<std::string>{"page 1 [50 802 565 786] to object 0 at 0 0"});
  EXPECT_EQ(pdf(action, 1).links(), std::vector<std::string>{"page 1 [50 786 565 802] to page 1 at 50 802"});
}

TEST(PdfReportToc, IsTheOutline) {
  const MadePdf made = pdf([](PDFReport& r) {
    r.BeginToc();
    r.TocItem(L"one", L"One", 0);
    r.TocItem(L"half", L"Half", 1);
    r.EndToc();
    r.BeginParagraph(PARAGRAPH_NORMAL, L"");
    r.BeginAncor(L"one");
    r.Text(L"body", PARAGRAPH_NONE, L"", 0);
    r.Ancor(L"half");
  });
  EXPECT_EQ(made.outline(), "2 entries\nOne (1) to page 1 at 50 805\n  Half to page 1 at 50 787\n");
  EXPECT_EQ(made.texts(1), std::vector<std::string>{"body"});
}

TEST(PdfReportToc, LeadsToObjectZeroWithoutItsAnchor) {
  const MadePdf made = pdf([](PDFReport& r) { r.TocItem(L"missing", L"Lost", 0); });
  EXPECT_EQ(made.objectWith("/Type /Outline\r\n"),
            "7 0 obj\r\n<<\r\n/Type /Outline\r\n/Title (Lost)\r\n/Dest [0 0 R\r\n/XYZ\r\n0\r\n0\r\n0\r\n]\r\n\r\n"
            "/Parent 8 0 R\r\n>>\r\nendobj\r\n\r\n");
}

TEST(PdfReportToc, HasNoDestinationWithoutItsAnchorWhenConforming) {
  const MadePdf made = pdf([](PDFReport& r) { r.TocItem(L"missing", L"Lost", 0); }, 1);
  EXPECT_EQ(made.objectWith("/Type /Outline\r\n"),
            "7 0 obj\r\n<<\r\n/Type /Outline\r\n/Title (Lost)\r\n/Parent 8 0 R\r\n>>\r\nendobj\r\n\r\n");
}

TEST(PdfReportToc, AcceptsNullNames) {
  const MadePdf made = pdf([](PDFReport& r) {
    r.TocItem(nullptr, nullptr, -1);
    r.Ancor(nullptr);
    r.Link(nullptr, nullptr);
  });
  EXPECT_EQ(made.outline(), "1 entries\nuntitled to page 1 at 50 802\n");
  EXPECT_EQ(made.links(), std::vector<std::string>{"page 1 [50 802 565 802] to page 1 at 50 802"});
}

TEST(PdfReportToc, DoesNotInterruptTheParagraph) {
  EXPECT_EQ(lines([](PDFReport& r) {
              r.Text(L"bo", PARAGRAPH_NORMAL, L"", 0);
              r.TocItem(L"a", L"A", 0);
              r.Text(L"dy", PARAGRAPH_NONE, L"", 0);
            }),
            kBodyText);
}

TEST(PdfReportTable, HasAnEmptyParagraphBeforeItAndAFrameAroundEachCell) {
  EXPECT_EQ(lines([](PDFReport& r) {
              r.BeginParagraph(PARAGRAPH_NORMAL, L"");
              r.BeginTable(L"name", L"attributes");
              r.BeginRow(L"name", L"attributes", 2);
              r.Cell(L"a", 0, L"red");
              r.Cell(L"b", 0, nullptr);
              r.EndRow(L"name");
              r.EndTable(L"name");
            }),
            "1 0 0 1 0 0 Tm\n"
            "0 802 Td\n"
            "1 0 0 1 0 0 Tm\n"
            "0 794 Td\n"
            "1 0 0 1 0 0 Tm\n"
            "0 786 Td\n"
            "ET\n"
            "0.0 0.0 0.0 RG\n"
            "1.000000 1.000000 1.000000 rg\n"
            "50 779 257 10 re\n"
            "F\n"
            "50 779 257 10 re\n"
            "S\n"
            "1.000000 1.000000 1.000000 rg\n"
            "307 779 257 10 re\n"
            "F\n"
            "307 779 257 10 re\n"
            "S\n"
            "BT\n"
            "1 0 0 1 0 0 Tm\n"
            "51 786 Td\n"
            "0 -5 Td\n"
            "/F1 8 Tf\n"
            "0.000000 0.000000 0.000000 rg\n"
            "(a)Tj\n"
            "0 -5 Td\n"
            "1 0 0 1 0 0 Tm\n"
            "308 786 Td\n"
            "0 -5 Td\n"
            "/F1 8 Tf\n"
            "0.000000 0.000000 0.000000 rg\n"
            "(b)Tj\n"
            "0 -5 Td\n");
}

TEST(PdfReportTable, IgnoresParagraphsUntilItsEnd) {
  const MadePdf made = pdf([](PDFReport& r) {
    r.BeginTable(L"t", nullptr);
    writeBody(r, L"in the table");
    r.BeginRow(L"r", nullptr, 1);
    writeBody(r, L"in the row");
    r.Ancor(L"nowhere");
    r.Link(L"in the row", L"nowhere");
    r.EndRow(L"r");
    r.EndTable(L"t");
    writeBody(r, L"behind");
  });
  EXPECT_EQ(made.texts(1), std::vector<std::string>{"behind"});
  EXPECT_TRUE(made.links().empty());
}

TEST(PdfReportTable, EndsOnlyWhenCurrent) {
  EXPECT_EQ(pdf([](PDFReport& r) {
              r.BeginTable(L"t", nullptr);
              r.BeginRow(L"r", nullptr, 3);
              r.EndTable(L"t");
              r.Cell(L"a", 0, nullptr);
              r.BeginCell(nullptr, 0, nullptr);
              r.EndRow(L"r");
              r.EndTable(L"t");
              r.Text(L"b", PARAGRAPH_NONE, L"", 0);
              r.EndCell(nullptr, 0);
              r.EndCell(nullptr, 0);
              r.Cell(L"c", 0, nullptr);
              r.EndRow(L"r");
              r.EndRow(L"r");
              r.EndTable(L"t");
              writeBody(r, L"d");
            }).texts(1),
            (std::vector<std::string>{"a", "b", "c", "d"}));
}

TEST(PdfReportTable, MayHaveRowsWithDifferentNumbersOfColumns) {
  const MadePdf made = pdf([](PDFReport& r) {
    r.BeginParagraph(PARAGRAPH_NORMAL, L"");
    r.BeginTable(L"t", nullptr);
    r.Row2(L"1", L"2", 0, nullptr, nullptr);
    r.Row3(L"1", L"2", L"3", 0);
  });
  EXPECT_EQ(made.frames(1), (std::vector<std::string>{"50 779 257 10", "307 779 257 10", "50 769 171 10",
                                                      "221 769 171 10", "392 769 171 10"}));
}

TEST(PdfReportRow, DropsExtraCellsAndFramesMissingOnes) {
  const MadePdf made = pdf([](PDFReport& r) {
    r.BeginTable(L"t", nullptr);
    r.BeginRow(L"r", nullptr, 2);
    for (const wchar_t* text : {L"1", L"2", L"3"}) {
      r.Cell(text, 0, nullptr);
    }
    r.EndRow(L"r");
    r.BeginRow(L"r", nullptr, 2);
    r.Cell(L"4", 0, nullptr);
    r.EndRow(L"r");
  });
  EXPECT_EQ(made.texts(1), (std::vector<std::string>{"1", "2", "4"}));
  EXPECT_EQ(made.frames(1).size(), 4u);
}

TEST(PdfReportRow, MayHaveNoColumns) {
  EXPECT_EQ(lines([](PDFReport& r) {
              r.BeginTable(nullptr, nullptr);
              r.BeginRow(nullptr, nullptr, 0);
              r.Cell(L"a", 0, nullptr);
            }),
            "1 0 0 1 0 0 Tm\n0 802 Td\n1 0 0 1 0 0 Tm\n0 794 Td\nET\n0.0 0.0 0.0 RG\nBT\n");
}

TEST(PdfReportRow, OutsideATableIsIgnored) {
  EXPECT_EQ(lines([](PDFReport& r) { r.Row2(L"a", L"b", 0, nullptr, nullptr); }), "");
  EXPECT_EQ(pdf([](PDFReport& r) {
              writeBody(r, L"a");
              r.Row2(L"b", L"c", 0, nullptr, nullptr);
            }).texts(1),
            std::vector<std::string>{"abc"});
}

TEST(PdfReportCell, IsFilledWithItsNamedColour) {
  for (const NamedFill& named : kFills) {
    EXPECT_EQ(fillOf(named.name.c_str()), named.fill) << testing::PrintToString(named.name);
  }
}

TEST(PdfReportCell, NeedsOnlyTheFirstLetterOfItsColourInLowerCase) {
  for (const NamedFill& named : kFills) {
    const std::wstring capitals = inCapitals(named.name);
    EXPECT_EQ(fillOf((named.name.front() + capitals.substr(1)).c_str()), named.fill)
        << testing::PrintToString(named.name);
    EXPECT_EQ(fillOf((capitals.front() + named.name.substr(1)).c_str()), kWhite) << testing::PrintToString(named.name);
    EXPECT_EQ(fillOf(capitals.c_str()), kWhite) << testing::PrintToString(named.name);
  }
}

TEST(PdfReportCell, IsWhiteForAnyOtherName) {
  for (const wchar_t* name : {L"", L"blu", L"bluee", L" blue", L"blue ", L"blue;red", L"grey", L"darkgray",
                              L"lightgray", L"orange", L"#FF0000", L"b", L"bl\u00FCe"}) {
    EXPECT_EQ(fillOf(name), kWhite) << testing::PrintToString(std::wstring(name));
  }
  EXPECT_EQ(fillOf(nullptr), kWhite);
}

TEST(PdfReportCell, ThatIsAHeaderIsGreyAndBoldForAnyColour) {
  EXPECT_EQ(fill([](PDFReport& r) {
              r.BeginCell(nullptr, 1, L"red");
              r.EndCell(nullptr, 1);
            }),
            kLightGrey);
  EXPECT_EQ(font([](PDFReport& r) {
              r.BeginParagraph(PARAGRAPH_NORMAL, L"");
              r.BeginTable(L"t", nullptr);
              r.BeginRow(L"r", nullptr, 1);
              r.BeginCell(nullptr, -1, L"red");
              r.Text(L"a", PARAGRAPH_NONE, L"", 0);
            }),
            "/F2 8 Tf");
}

TEST(PdfReportCell, ThatIsAHeaderTurnsBoldOffAtItsEnd) {
  const auto secondCell = [](int header) {
    return font([header](PDFReport& r) {
      r.BeginParagraph(PARAGRAPH_NORMAL, L"");
      r.BeginTable(L"t", nullptr);
      r.BeginRow(L"r", nullptr, 2);
      r.BeginCell(nullptr, 1, nullptr);
      r.EndCell(nullptr, header);
      r.BeginCell(nullptr, 0, nullptr);
      r.Text(L"a", PARAGRAPH_NONE, L"", 0);
    });
  };
  EXPECT_EQ(secondCell(1), "/F1 8 Tf");
  EXPECT_EQ(secondCell(0), "/F2 8 Tf");
}

TEST(PdfReportCell, UsesTheSizeOfItsParagraphAndIsAHeaderForAnyNonZeroValue) {
  const std::string all = lines([](PDFReport& r) {
    r.BeginTable(L"t", nullptr);
    r.BeginRow(L"r", nullptr, 3);
    r.BeginCell(nullptr, 0, nullptr);
    r.BeginParagraph(PARAGRAPH_HEADING1, L"");
    r.Text(L"a", PARAGRAPH_NONE, L"", 0);
    r.EndCell(nullptr, 0);
    r.Cell(L"b", -1, nullptr);
    r.Cell(L"c", 0, nullptr);
  });
  EXPECT_NE(all.find("/F1 20 Tf\n0.000000 0.000000 0.000000 rg\n(a)Tj\n"), all.npos);
  EXPECT_NE(all.find("0.750000 0.750000 0.750000 rg\n221 "), all.npos);
  EXPECT_NE(all.find("/F2 20 Tf\n0.000000 0.000000 0.000000 rg\n(b)Tj\n"), all.npos);
  EXPECT_NE(all.find("/F1 20 Tf\n0.000000 0.000000 0.000000 rg\n(c)Tj\n"), all.npos);
}

TEST(PdfReportCell, InOneCallIsWhiteOrAGreyHeader) {
  EXPECT_EQ(fill([](PDFReport& r) { r.Cell(L"a", 0, L"red"); }), kWhite);
  EXPECT_EQ(fill([](PDFReport& r) { r.Cell(L"a", 1, L"red"); }), kLightGrey);
  EXPECT_EQ(font([](PDFReport& r) {
              r.BeginParagraph(PARAGRAPH_NORMAL, L"");
              r.BeginTable(L"t", nullptr);
              r.BeginRow(L"r", nullptr, 1);
              r.Cell(L"a", 1, nullptr);
            }),
            "/F2 8 Tf");
}

TEST(PdfReportCell, IgnoresSetCellColor) {
  EXPECT_EQ(fill([](PDFReport& r) {
              r.SetCellColor(L"red");
              r.Cell(L"a", 0, nullptr);
            }),
            kWhite);
}

TEST(PdfReportCell, HasALineForAnEmptyTextAndNoneForANullText) {
  const auto frameOf = [](const wchar_t* text) {
    return pdf([text](PDFReport& r) {
             r.BeginParagraph(PARAGRAPH_NORMAL, L"");
             r.BeginTable(L"t", nullptr);
             r.BeginRow(L"r", nullptr, 1);
             r.Cell(text, 0, nullptr);
           })
        .frames(1);
  };
  EXPECT_EQ(frameOf(L""), std::vector<std::string>{"50 779 515 10"});
  EXPECT_EQ(frameOf(nullptr), std::vector<std::string>{"50 789 515 0"});
}

TEST(PdfReportOptions, SetLandscapeForEveryNonZeroValue) {
  for (const int on : {1, -1, 7}) {
    PDFReport report;
    report.SetReportOption(OPTION_LANDSCAPE, on);
    const MadePdf made = pdfOf(report, [](PDFReport&) {});
    EXPECT_EQ(made.content(1), "BT\n50 565 Td\nET\n");
    EXPECT_NE(made.objectWith("/Type /Page\r\n").find("/MediaBox [0 0 840 595]\r\n"), std::string::npos);
  }
}

TEST(PdfReportOptions, TakeEffectAtTheNextOpen) {
  PDFReport report;
  const auto landscape = [](PDFReport& r) { r.SetReportOption(OPTION_LANDSCAPE, 1); };
  const auto portrait = [](PDFReport& r) { r.SetReportOption(OPTION_LANDSCAPE, 0); };
  EXPECT_EQ(pdfOf(report, landscape).content(1), "BT\n50 810 Td\nET\n");
  EXPECT_EQ(pdfOf(report, portrait).content(1), "BT\n50 565 Td\nET\n");
  EXPECT_EQ(pdfOf(report, portrait).content(1), "BT\n50 810 Td\nET\n");
}

TEST(PdfReportOptions, OfTheFormTakeEffectAtTheNextOpen) {
  PDFReport report;
  const auto conform = [](PDFReport& r) { r.SetReportOption(OPTION_CONFORMING, 1); };
  const auto classic = [](PDFReport& r) { r.SetReportOption(OPTION_CONFORMING, 0); };
  EXPECT_NE(pdfOf(report, conform).bytes.find("\r\n/Length 38\r\n"), std::string::npos);
  EXPECT_NE(pdfOf(report, classic, 1).bytes.find("\r\n/Length 19\r\n"), std::string::npos);
  EXPECT_NE(pdfOf(report, classic).bytes.find("\r\n/Length 38\r\n"), std::string::npos);
}

TEST(PdfReportOptions, OfOtherFormatsAreIgnored) {
  PDFReport report;
  report.SetReportOption(OPTION_SINGLE_BYTE_TEXT, 1);
  report.SetReportOption(static_cast<REPORT_OPTION>(2), 1);
  report.SetReportOption(static_cast<REPORT_OPTION>(-1), 1);
  const MadePdf made = pdfOf(report, [](PDFReport&) {});
  EXPECT_EQ(made.content(1), "BT\n50 810 Td\nET\n");
  EXPECT_NE(made.bytes.find("\r\n/Length 38\r\n"), std::string::npos);
}

TEST(PdfReport, IgnoresUnsupportedCalls) {
  EXPECT_EQ(lines([](PDFReport& r) {
              r.SetColumnSeparator(L";");
              EXPECT_EQ(r.BeginSubDocument(L"folder", L"file", L"title"), REPORT_OK);
              r.EndSubDocument();
              r.SetCellColor(L"red");
              r.BeginToc();
              r.EndToc();
              r.EndAncor();
              r.AddProperty(L"%TITLE%", L"Title");
            }),
            "");
}

TEST(PdfReport, KeepsPropertiesAndQuotesNothing) {
  PDFReport report;
  report.AddProperty(L"name", L"value");
  EXPECT_STREQ(report.GetProperty(L"name"), L"value");
  EXPECT_EQ(report.Quoting(L"<a> & \"b\" (c)"), L"<a> & \"b\" (c)");
}

namespace {

// The lines of the log, each starting at the report's file name.
template <typename Action>
std::vector<std::wstring> logOf(Action action, int conforming = 0) {
  const CapturedLog log;
  pdf(action, conforming);
  std::vector<std::wstring> lines;
  for (const std::wstring& line : log.lines()) {
    lines.push_back(line.substr(line.find(L"a.pdf")));
  }
  return lines;
}

}  // namespace

TEST(PdfReportLoss, IsLoggedInOneLine) {
  EXPECT_EQ(logOf([](PDFReport& r) { writeBody(r, L"a\u20AC"); }),
            std::vector<std::wstring>{L"a.pdf': 1 character could not be written as it was given: U+20AC."});
  EXPECT_EQ(
      logOf([](PDFReport& r) {
        writeBody(r, (L"\u4E2D" + grin()).c_str());
        r.TocItem(L"a", L"\u20AC", 0);
      }),
      std::vector<std::wstring>{L"a.pdf': 3 characters could not be written as they were given, the first is U+4E2D."});
}

TEST(PdfReportLoss, OfAConformingReportCountsOnlyCharactersOutsideWinAnsi) {
  EXPECT_EQ(logOf(
                [](PDFReport& r) {
                  writeBody(r, L"\u20AC \u2192");
                  r.TocItem(L"a", L"\u4E2D", 0);
                },
                1),
            std::vector<std::wstring>{L"a.pdf': 1 character could not be written as it was given: U+2192."});
}

TEST(PdfReportLoss, IsNotLoggedWhenThereIsNone) {
  EXPECT_TRUE(logOf([](PDFReport& r) { writeBody(r, L"caf\u00E9"); }).empty());
}

TEST(PdfReportLoss, IsLoggedOnlyForItsDocument) {
  const CapturedLog log;
  PDFReport report;
  pdfOf(report, [](PDFReport& r) { writeBody(r, L"\u20AC"); });
  pdfOf(report, [](PDFReport& r) { writeBody(r, L"a"); });
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(log.lines().size(), 1u);
}

namespace {

const std::vector<std::wstring> kMisread{
    L"a.pdf': programs that use poppler (Evince, Okular, pdftotext) draw the next page over the one shown. "
    L"OPTION_CONFORMING, set before Open, prevents that."};

void writeTwoPages(PDFReport& report) {
  for (int line = 0; line < 60; ++line) {
    writeBody(report, L"a");
  }
}

}  // namespace

TEST(PdfReportOfSeveralPages, LogsWhichProgramsMisreadItsClassicForm) {
  EXPECT_EQ(pdf(writeTwoPages).pageCount(), 2u);
  EXPECT_EQ(logOf(writeTwoPages), kMisread);
  EXPECT_TRUE(logOf(writeTwoPages, 1).empty());
  EXPECT_TRUE(logOf([](PDFReport& r) { writeBody(r, L"a"); }).empty());
}

TEST(PdfReportOfSeveralPages, LogsItOnceForEachReport) {
  const CapturedLog log;
  PDFReport report;
  pdfOf(report, writeTwoPages);
  EXPECT_EQ(log.lines().size(), 1u);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(log.lines().size(), 1u);
  pdfOf(report, writeTwoPages);
  EXPECT_EQ(log.lines().size(), 2u);
  pdfOf(report, [](PDFReport& r) { writeBody(r, L"a"); });
  EXPECT_EQ(log.lines().size(), 2u);
}

// The option takes effect at the next Open.
TEST(PdfReportOfSeveralPages, UsesTheFormThatItWasOpenedIn) {
  EXPECT_EQ(logOf([](PDFReport& r) {
              writeTwoPages(r);
              r.SetReportOption(OPTION_CONFORMING, 1);
            }),
            kMisread);
}

namespace {

void writeInSize(PDFReport& report, int size, const wchar_t* text) {
  report.BeginParagraph(PARAGRAPH_NORMAL, nullptr);
  report.BeginStyle(STYLE_FONT_SIZE, size);
  report.Text(text, PARAGRAPH_NONE, nullptr, 0);
  report.EndStyle(STYLE_FONT_SIZE, size);
}

// Writes a table with this number of columns and the text in the last one.
void writeInLastColumn(PDFReport& report, int columns, int size, const wchar_t* text) {
  report.BeginTable(nullptr, nullptr);
  report.BeginRow(nullptr, nullptr, columns);
  report.BeginStyle(STYLE_FONT_SIZE, size);
  for (int column = 1; column < columns; ++column) {
    report.Cell(L"", 0, nullptr);
  }
  report.Cell(text, 0, nullptr);
  report.EndRow(nullptr);
  report.EndTable(nullptr);
}

}  // namespace

TEST(PdfReportOffThePaper, IsLoggedInOneLineForAConformingReport) {
  const auto write = [](PDFReport& r) {
    writeTwoPages(r);
    writeInSize(r, 12, L"on the paper");
    writeInSize(r, 1000, L"a");  // taller than the page
    writeInSize(r, 700, L"W");   // wider than the page
    writeInSize(r, -12, L"five letters to the left of it");
    writeInLastColumn(r, 100, 60, L"WW");
  };
  EXPECT_EQ(logOf(write, 1),
            std::vector<std::wstring>{L"a.pdf': 3 paragraphs and 1 table leave the paper, the first on page 4."});
  EXPECT_EQ(logOf(write), kMisread);
}

TEST(PdfReportOffThePaper, IsLoggedForOneParagraphOrTable) {
  EXPECT_EQ(logOf([](PDFReport& r) { writeInSize(r, 1000, L"a"); }, 1),
            std::vector<std::wstring>{L"a.pdf': 1 paragraph leaves the paper, on page 2."});
  EXPECT_EQ(logOf([](PDFReport& r) { writeInLastColumn(r, 20, 100, L"W"); }, 1),
            std::vector<std::wstring>{L"a.pdf': 1 table leaves the paper, on page 1."});
}

// The trial of the row is on the second page, its final layout on the third.
TEST(PdfReportOffThePaper, IsLoggedForAFrame) {
  EXPECT_EQ(logOf([](PDFReport& r) { writeInLastColumn(r, 1, 650, L"."); }, 1),
            std::vector<std::wstring>{L"a.pdf': 1 table leaves the paper, on page 3."});
}

TEST(PdfReportOffThePaper, IsLoggedForEachReport) {
  const CapturedLog log;
  PDFReport report;
  report.SetReportOption(OPTION_CONFORMING, 1);
  pdfOf(
      report, [](PDFReport& r) { writeInSize(r, 1000, L"a"); }, 1);
  pdfOf(
      report, [](PDFReport& r) { writeInSize(r, 12, L"a"); }, 1);
  EXPECT_EQ(log.lines().size(), 1u);
  EXPECT_EQ(report.Close(), REPORT_OK);
  EXPECT_EQ(log.lines().size(), 1u);
}

TEST(PdfReportOffThePaper, IsNotLoggedWhenTextsStayOnThePaper) {
  const auto write = [](PDFReport& r) {
    writeBody(r, std::wstring(300, L'\u2014').c_str());
    writeBody(r, std::wstring(900, L'i').c_str());
    writeInSize(r, 500, L"W");
    writeInSize(r, 0, L"no size");
    writeTwoPages(r);
    writeInLastColumn(r, 515, 8, L"WWW");
    writeInLastColumn(r, 2, 30, std::wstring(700, L'W').c_str());
  };
  EXPECT_TRUE(logOf(write, 1).empty());
}

namespace {

MadePdf pdfWithTitle(const wchar_t* title, int conforming) {
  PDFReport report;
  report.SetReportOption(OPTION_CONFORMING, conforming);
  report.AddProperty(L"%TITLE%", title);
  return pdfOf(
      report, [](PDFReport& r) { writeBody(r, L"a"); }, conforming);
}

}  // namespace

// It is the last object, so that no other object's number changes.
TEST(PdfReportTitle, IsInTheInformationOfAConformingFile) {
  const MadePdf titled = pdfWithTitle(L"Smith (& Sons)\\", 1);
  EXPECT_EQ(titled.object(titled.objectCount()),
            "7 0 obj\r\n<<\r\n/Title (Smith \\(& Sons\\)\\\\)\r\n>>\r\nendobj\r\n\r\n");
  EXPECT_NE(titled.bytes.find("trailer\r\n<<\r\n/Size 8\r\n/Root 1 0 R\r\n/Info 7 0 R\r\n>>\r\nstartxref\r\n"),
            std::string::npos);
}

TEST(PdfReportTitle, IsInUnicodeWhenItIsNotAscii) {
  const MadePdf titled = pdfWithTitle((L"\u00E9\u4E2D" + grin()).c_str(), 1);
  EXPECT_NE(titled.bytes.find(std::string("/Title (\xFE\xFF\0\xE9\x4E\x2D\xD8\x3D\xDE\0)\r\n", 21)), std::string::npos);
}

TEST(PdfReportTitle, LosesItsControlCharacters) {
  const CapturedLog log;
  const MadePdf titled = pdfWithTitle(L"\x1B", 1);
  EXPECT_NE(titled.bytes.find("/Title (\xFE\xFF\xFF\xFD)\r\n"), std::string::npos);
  EXPECT_EQ(log.lines().size(), 1u);
}

TEST(PdfReportTitle, IsNotWrittenWithoutTheProperty) {
  EXPECT_EQ(pdf([](PDFReport& r) { writeBody(r, L"a"); }, 1).bytes.find("/Info"), std::string::npos);
  EXPECT_EQ(pdfWithTitle(L"", 1).bytes.find("/Info"), std::string::npos);
}

TEST(PdfReportTitle, IsNotInTheClassicForm) {
  const FixedClock clock(1700000000);
  EXPECT_EQ(pdfWithTitle(L"title", 0).bytes, pdf([](PDFReport& r) { writeBody(r, L"a"); }).bytes);
}
