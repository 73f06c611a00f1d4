#include "made_reference.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {
namespace {

using document::Document;

// The styles of an empty document with those of the reference.
std::string stylesWith(std::string_view styles) { return partWithReference(referenceWithStyles(styles)); }

std::string paragraphStyle(std::string_view id, std::string_view name, std::string_view rest = {}) {
  return std::string("<w:style w:type='paragraph' w:styleId='")
      .append(id)
      .append("'><w:name w:val='")
      .append(name)
      .append("'/>")
      .append(rest)
      .append("</w:style>");
}

bool contains(const std::string& text, std::string_view part) { return text.find(part) != std::string::npos; }

std::size_t countOf(const std::string& text, std::string_view part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

std::string messagesOf(const std::string& reference, const Content& content, const SettingValues& settings = {}) {
  std::vector<document::Warning> warnings;
  docxWithReference(reference, content, settings, &warnings);
  std::string messages;
  for (const document::Warning& warning : warnings) {
    messages += warning.message + "\n";
  }
  return messages;
}

void addTableOfOneWord(Document& document) {
  document.beginTable({}, {});
  document.beginRow(false);
  document.cell("somewhat");
  document.end();
  document.end();
}

// The text of a document with that table and a reference with the styles.
std::string documentWith(std::string_view styles) {
  return partWithReference(referenceWithStyles(styles), &addTableOfOneWord, "word/document.xml");
}

int firstColumn(const std::string& text) {
  constexpr std::string_view kStart = "<w:gridCol w:w=\"";
  return std::stoi(text.substr(text.find(kStart) + kStart.size()));
}

constexpr std::string_view kNumbered = "<w:pPr><w:numPr><w:numId w:val='3'/></w:numPr></w:pPr>";
constexpr std::string_view kNumberless = "<w:pPr><w:numPr><w:numId w:val='0'/></w:numPr></w:pPr>";
constexpr std::string_view kRed = "<w:rPr><w:color w:val='FF0000'/></w:rPr>";

}  // namespace

TEST(ReferenceStyles, AreFoundByTheirNamesInAnyCaseAndGetOurIds) {
  const std::string styles =
      stylesWith(paragraphStyle("berschrift1", "Heading 1", kRed) + paragraphStyle("Titel", "TITLE"));
  EXPECT_EQ(styleIn(styles, "Heading1"),
            "<w:style w:type=\"paragraph\" w:styleId=\"Heading1\"><w:name w:val=\"heading 1\"/><w:pPr>"
            "<w:outlineLvl w:val=\"0\"/></w:pPr><w:rPr><w:color w:val=\"FF0000\"/></w:rPr></w:style>");
  EXPECT_EQ(styleIn(styles, "Title"),
            "<w:style w:type=\"paragraph\" w:styleId=\"Title\"><w:name w:val=\"Title\"/></w:style>");
  EXPECT_FALSE(hasStyle(styles, "berschrift1"));
}

TEST(ReferenceStyles, AreFoundByAliases) {
  const std::string styles = stylesWith(paragraphStyle("a", "Our Quotes", "<w:aliases w:val='Cite, quote'/>"));
  EXPECT_TRUE(contains(styleIn(styles, "Quote"), "<w:name w:val=\"Quote\"/><w:aliases w:val=\"Our Quotes\"/>"));
}

TEST(ReferenceStyles, AreFoundByNamesBeforeAliases) {
  const std::string styles = stylesWith(paragraphStyle("a", "heading 2", "<w:aliases w:val='heading 1'/>"));
  EXPECT_TRUE(contains(styleIn(styles, "Heading2"), "<w:name w:val=\"heading 2\"/>"));
  EXPECT_TRUE(contains(styleIn(styles, "Heading1"), "<w:name w:val=\"heading 1\"/>"));
}

TEST(ReferenceStyles, OfTheContentsOfTablesInLibreOfficeAreThoseOfCells) {
  const std::string styles = stylesWith(paragraphStyle("a", "Table Contents", kRed));
  EXPECT_TRUE(contains(styleIn(styles, "TableText"), "<w:name w:val=\"Table Text\"/><w:aliases"));
  EXPECT_TRUE(contains(styleIn(styles, "TableText"), "FF0000"));
}

TEST(ReferenceStyles, LeaveDirectionsToTheText) {
  const std::string styles = stylesWith(
      "<w:docDefaults><w:rPrDefault><w:rPr><w:rtl/></w:rPr></w:rPrDefault><w:pPrDefault><w:pPr><w:bidi/></w:pPr>"
      "</w:pPrDefault></w:docDefaults>" +
      paragraphStyle("a", "heading 1", "<w:pPr><w:bidi/></w:pPr><w:rPr><w:rtl/></w:rPr>"));
  EXPECT_FALSE(contains(styles, "w:bidi/"));
  EXPECT_FALSE(contains(styles, "w:rtl"));
}

TEST(ReferenceStyles, AreInTheOutlineOnlyIfTheyAreOfHeadings) {
  const std::string styles = stylesWith(paragraphStyle("a", "Base", "<w:pPr><w:outlineLvl w:val='0'/></w:pPr>") +
                                        paragraphStyle("b", "Quote", "<w:basedOn w:val='a'/>") +
                                        paragraphStyle("c", "Title", "<w:pPr><w:outlineLvl w:val='0'/></w:pPr>") +
                                        paragraphStyle("d", "heading 3", "<w:pPr><w:outlineLvl w:val='8'/></w:pPr>"));
  EXPECT_TRUE(contains(styleIn(styles, "Quote"), "<w:outlineLvl w:val=\"9\"/>"));
  EXPECT_FALSE(contains(styleIn(styles, "Title"), "outlineLvl"));
  EXPECT_TRUE(contains(styleIn(styles, "Heading3"), "<w:outlineLvl w:val=\"2\"/>"));
  EXPECT_FALSE(contains(styleIn(styles, "QuoteHeading3"), "outlineLvl"));
}

TEST(ReferenceStyles, AreOfTheSameType) {
  const std::string styles =
      stylesWith("<w:style w:type='character' w:styleId='Code'><w:name w:val='Code'/></w:style>");
  EXPECT_TRUE(contains(styleIn(styles, "Code-2"), "w:type=\"character\"")) << styles;
  EXPECT_TRUE(contains(styleIn(styles, "Code"), "<w:name w:val=\"Code 2\"/><w:basedOn w:val=\"SourceCode\"/>"));
}

TEST(ReferenceStyles, ReferToEachOtherByTheirNewIds) {
  const std::string styles =
      stylesWith(paragraphStyle("Standard", "Normal") +
                 paragraphStyle("x", "heading 1", "<w:basedOn w:val='Title'/><w:next w:val='Standard'/>") +
                 paragraphStyle("Title", "Other", "<w:basedOn w:val='Standard'/>"));
  EXPECT_TRUE(contains(styleIn(styles, "Heading1"), "<w:basedOn w:val=\"Title-2\"/><w:next w:val=\"Normal\"/>"));
  EXPECT_TRUE(contains(styleIn(styles, "Title-2"), "<w:name w:val=\"Other\"/><w:basedOn w:val=\"Normal\"/>"));
  EXPECT_TRUE(contains(styleIn(styles, "Title"), "<w:name w:val=\"Title\"/>"));
}

TEST(ReferenceStyles, ReferToNothingThatIsNotThere) {
  const std::string styles = stylesWith(
      paragraphStyle("a", "a", "<w:basedOn w:val='no'/><w:next w:val='no'/><w:link w:val='Heading1'/>") +
      paragraphStyle("b", "b", "<w:basedOn w:val='c'/>") + paragraphStyle("c", "c", "<w:basedOn w:val='d'/>") +
      paragraphStyle("d", "d", "<w:basedOn w:val='b'/>") + paragraphStyle("e", "e", "<w:basedOn w:val='e'/>"));
  EXPECT_TRUE(contains(styles, "<w:name w:val=\"a\"/></w:style>")) << styles;
  EXPECT_TRUE(contains(styles, "<w:name w:val=\"d\"/></w:style>")) << styles;
  EXPECT_TRUE(contains(styles, "<w:name w:val=\"e\"/></w:style>")) << styles;
}

TEST(ReferenceStyles, HaveOneDefaultOfEachType) {
  const std::string none = stylesWith({});
  const std::string two = stylesWith(
      "<w:style w:type='paragraph' w:default='1' w:styleId='a'><w:name w:val='a'/></w:style>"
      "<w:style w:type='paragraph' w:default='true' w:styleId='b'><w:name w:val='b'/></w:style>"
      "<w:style w:type='numbering' w:default='1' w:styleId='KeineListe'><w:name w:val='No List'/></w:style>");
  for (const std::string& styles : {none, two}) {
    EXPECT_EQ(countOf(styles, "w:default=\"1\""), 4u);
    for (const char* type : {"paragraph", "character", "table", "numbering"}) {
      EXPECT_EQ(countOf(styles, std::string("w:type=\"") + type + "\" w:default=\"1\""), 1u) << type;
    }
  }
  EXPECT_TRUE(contains(styleIn(two, "Normal"), "<w:name w:val=\"b\"/>"));
  EXPECT_FALSE(hasStyle(two, "KeineListe"));
}

TEST(ReferenceStyles, HaveOursForNamesThatAreMissing) {
  const std::string styles = stylesWith(paragraphStyle("x", "heading 1"));
  for (const char* id : {"Normal", "Heading2", "Quote", "Code", "ListParagraph", "Hyperlink", "Table", "TableText"}) {
    EXPECT_TRUE(hasStyle(styles, id)) << id;
  }
  EXPECT_TRUE(contains(styleIn(styles, "Heading2"), "<w:b/>"));
}

TEST(ReferenceStyles, DecideTheFontOfTheDocument) {
  const std::string reference = referenceWithStyles(
      "<w:docDefaults><w:rPrDefault><w:rPr><w:rFonts w:ascii='Georgia'/></w:rPr></w:rPrDefault></w:docDefaults>");
  const std::string styles = partWithReference(reference, {}, "word/styles.xml", {{"font", "Verdana"}});
  EXPECT_TRUE(contains(styles, "<w:rFonts w:ascii=\"Georgia\"/>"));
  EXPECT_FALSE(contains(styles, "Verdana"));
  EXPECT_FALSE(contains(styles, "Arial"));
}

TEST(ReferenceStyles, HaveTheLanguageOfTheDocument) {
  const std::string reference = referenceWithStyles(
      "<w:docDefaults><w:rPrDefault><w:rPr><w:lang w:val='fr-FR'/></w:rPr></w:rPrDefault>"
      "</w:docDefaults>" +
      paragraphStyle("a", "Normal", "<w:rPr><w:lang w:val='fr-FR'/></w:rPr>"));
  const std::string styles = partWithReference(reference, {}, "word/styles.xml", {{"language", "de-AT"}});
  EXPECT_FALSE(contains(styles, "fr-FR"));
  EXPECT_TRUE(contains(styles, "<w:rPr><w:lang w:val=\"de-AT\" w:eastAsia=\"de-AT\" w:bidi=\"de-AT\"/></w:rPr>"));
  EXPECT_TRUE(contains(stylesWith({}), "<w:docDefaults><w:rPrDefault><w:rPr><w:lang w:val=\"en-US\""));
}

TEST(ReferenceStyles, KeepDefaultsAndLatentStylesBeforeAllStyles) {
  const std::string styles = stylesWith(paragraphStyle("a", "a") +
                                        "<w:latentStyles w:count='1'><w:lsdException w:name='Normal'/></w:latentStyles>"
                                        "<w:docDefaults><w:pPrDefault/></w:docDefaults>");
  EXPECT_TRUE(contains(styles,
                       "/picture\">\n<w:docDefaults><w:rPrDefault><w:rPr><w:lang w:val=\"en-US\" w:eastAsia=\"en-US\" "
                       "w:bidi=\"en-US\"/></w:rPr></w:rPrDefault><w:pPrDefault/></w:docDefaults>\n"
                       "<w:latentStyles w:count=\"1\"><w:lsdException w:name=\"Normal\"/></w:latentStyles>\n<w:style "))
      << styles;
}

TEST(ReferenceStyles, LoseNumbersButKeepThatThereIsNone) {
  const std::string styles =
      stylesWith(paragraphStyle("a", "Heading 1", kNumbered) + paragraphStyle("b", "Quote", kNumberless));
  EXPECT_FALSE(contains(styles, "w:numId w:val=\"3\""));
  EXPECT_TRUE(contains(styleIn(styles, "Quote"), "<w:numPr><w:numId w:val=\"0\"/></w:numPr>"));
}

TEST(ReferenceStyles, LoseNumberingWithAWarningWhereTheTextHasThem) {
  const std::string reference = referenceWithStyles(
      paragraphStyle("a", "Heading 1", "<w:basedOn w:val='b'/>") + paragraphStyle("b", "Base", kNumbered) +
      paragraphStyle("c", "heading 2", "<w:basedOn w:val='b'/>") + paragraphStyle("d", "header", kNumbered) +
      paragraphStyle("e", "Table Text", kNumbered));
  const auto headings = [](Document& document) {
    document.heading(1, "one");
    document.heading(2, "two");
  };
  EXPECT_EQ(messagesOf(reference, [](Document& document) { document.paragraph("text"); }), "");
  EXPECT_EQ(messagesOf(reference, headings), "the numbering of the style 'Base' of the reference, left out\n");
  EXPECT_EQ(messagesOf(reference, {}, {{"header", "x"}}),
            "the numbering of the style 'header' of the reference, left out\n");
  EXPECT_EQ(messagesOf(reference, &addTableOfOneWord),
            "the numbering of the style 'Table Text' of the reference, left out\n");
}

TEST(ReferenceStyles, GiveTheirLostNumberingToOursThatAreBasedOnThem) {
  const std::string reference = referenceWithStyles(paragraphStyle("a", "heading 3", kNumbered));
  const auto quoted = [](Document& document) {
    document.beginQuote();
    document.heading(3, "x");
    document.end();
  };
  EXPECT_EQ(messagesOf(reference, quoted), "the numbering of the style 'heading 3' of the reference, left out\n");
}

TEST(ReferenceStyles, LoseNoNumberingInItemsWithTheirOwnBullets) {
  const std::string reference = referenceWithStyles(paragraphStyle("a", "List Paragraph", kNumbered));
  const auto list = [](Document& document, bool hasFurtherText) {
    document.beginList(false, 0, false);
    document.beginItem(document::Task::None);
    document.paragraph("x");
    if (hasFurtherText) {
      document.paragraph("y");
    }
    document.end();
    document.end();
  };
  EXPECT_EQ(messagesOf(reference, [&](Document& document) { list(document, false); }), "");
  EXPECT_EQ(messagesOf(reference, [&](Document& document) { list(document, true); }),
            "the numbering of the style 'List Paragraph' of the reference, left out\n");
}

TEST(ReferenceStyles, ThatSayThatThereIsNoNumberLoseNone) {
  const std::string reference =
      referenceWithStyles(paragraphStyle("a", "heading 1", std::string("<w:basedOn w:val='b'/>").append(kNumberless)) +
                          paragraphStyle("b", "Base", kNumbered));
  EXPECT_EQ(messagesOf(reference, [](Document& document) { document.heading(1, "x"); }), "");
}

TEST(ReferenceStyles, LoseWhatRefersElsewhereOrIsUnknown) {
  const std::string styles =
      stylesWith(paragraphStyle("a", "a",
                                "<w:rsid w:val='1'/><w:pPr><w:divId w:val='1'/><w:numPr><w:ilvl "
                                "w:val='1'/></w:numPr><w:pPrChange/><w:p/><w:jc w:val='left'/></w:pPr><w:sectPr/>"));
  EXPECT_EQ(styleIn(styles, "a"),
            "<w:style w:type=\"paragraph\" w:styleId=\"a\"><w:name w:val=\"a\"/><w:pPr><w:jc w:val=\"left\"/></w:pPr>"
            "</w:style>");
}

TEST(ReferenceStyles, LoseAttributesAndChildrenThatTheSchemaDoesNotKnow) {
  const std::string styles = stylesWith(
      "<w:style w:type='paragraph' w:styleId='a' w:rubbish='1'><w:name w:val='a' w:q='1'/><w:pPr w:q='1'>"
      "<w:pBdr><w:foo/><w:left w:val='single' w:bar='3'><w:top/></w:left><w:top w:val='single' w:w='1'/></w:pBdr>"
      "<w:tabs><w:zz/></w:tabs><w:spacing w:val='1' w:before='2'/></w:pPr>"
      "<w:rPr><w:rFonts w:q='1' w:ascii='A'/><w:b w:x='1' w:val='0'><w:i/></w:b><w:spacing w:val='1' w:before='2'/>"
      "</w:rPr></w:style>");
  EXPECT_EQ(styleIn(styles, "a"),
            "<w:style w:type=\"paragraph\" w:styleId=\"a\"><w:name w:val=\"a\"/><w:pPr><w:pBdr>"
            "<w:top w:val=\"single\"/><w:left w:val=\"single\"/></w:pBdr><w:spacing w:before=\"2\"/></w:pPr>"
            "<w:rPr><w:rFonts w:ascii=\"A\"/><w:b w:val=\"0\"/><w:spacing w:val=\"1\"/></w:rPr></w:style>");
}

TEST(ReferenceStyles, OfTablesLoseAttributesAndChildrenThatTheSchemaDoesNotKnow) {
  const std::string styles = stylesWith(
      "<w:style w:type='table' w:styleId='t'><w:name w:val='t'/><w:tblPr><w:tblCellMar>"
      "<w:right w:w='80' w:type='dxa' w:val='single'/><w:insideH/><w:left w:w='80' w:type='dxa'/></w:tblCellMar>"
      "<w:tblBorders><w:insideH w:val='single' w:w='1'/><w:bar/></w:tblBorders></w:tblPr></w:style>");
  EXPECT_EQ(styleIn(styles, "t"),
            "<w:style w:type=\"table\" w:styleId=\"t\"><w:name w:val=\"t\"/><w:tblPr><w:tblBorders>"
            "<w:insideH w:val=\"single\"/></w:tblBorders><w:tblCellMar><w:left w:w=\"80\" w:type=\"dxa\"/>"
            "<w:right w:w=\"80\" w:type=\"dxa\"/></w:tblCellMar></w:tblPr></w:style>");
}

TEST(ReferenceStyles, ComeInTheOrderOfTheSchema) {
  const std::string styles = stylesWith(
      paragraphStyle(
          "a", "a",
          "<w:rPr><w:sz w:val='1'/><w:b/><w:b w:val='0'/></w:rPr><w:pPr/><w:qFormat/><w:basedOn w:val='b'/>") +
      paragraphStyle("b", "b"));
  EXPECT_TRUE(contains(styles,
                       "<w:name w:val=\"a\"/><w:basedOn w:val=\"b\"/><w:qFormat/><w:pPr/><w:rPr><w:b/>"
                       "<w:sz w:val=\"1\"/></w:rPr></w:style>"))
      << styles;
}

TEST(ReferenceStyles, HaveTheTabsOfOurPageAndTheirOwnLeaders) {
  const std::string styles = stylesWith(
      paragraphStyle("a", "toc 1",
                     "<w:basedOn w:val='b'/><w:pPr><w:tabs><w:tab w:val='right' w:leader='hyphen' w:pos='9000'/>"
                     "</w:tabs></w:pPr>") +
      paragraphStyle("b", "b", "<w:pPr><w:tabs><w:tab w:val='left' w:pos='400'/></w:tabs></w:pPr>"));
  EXPECT_TRUE(contains(styleIn(styles, "TOC1"),
                       "<w:tabs><w:tab w:val=\"clear\" w:pos=\"400\"/>"
                       "<w:tab w:val=\"right\" w:leader=\"hyphen\" w:pos=\"9638\"/></w:tabs>"))
      << styleIn(styles, "TOC1");
}

TEST(ReferenceStyles, HaveTheTabsOfOurPageWhereTheReferenceHasNoneForThem) {
  const std::string styles = stylesWith(
      "<w:docDefaults><w:pPrDefault><w:pPr><w:tabs><w:tab w:val='left' w:pos='500'/></w:tabs></w:pPr></w:pPrDefault>"
      "</w:docDefaults><w:style w:type='paragraph' w:default='1' w:styleId='a'><w:name w:val='Normal'/><w:pPr>"
      "<w:tabs><w:tab w:val='left' w:pos='3000'/></w:tabs><w:ind w:right='700' w:hanging='100'/></w:pPr></w:style>");
  const std::string contents = styleIn(styles, "TOC1");
  EXPECT_TRUE(contains(contents,
                       "<w:tabs><w:tab w:val=\"clear\" w:pos=\"500\"/>"
                       "<w:tab w:val=\"clear\" w:pos=\"3000\"/>"
                       "<w:tab w:val=\"right\" w:leader=\"dot\" w:pos=\"9638\"/></w:tabs>"))
      << contents;
  EXPECT_TRUE(contains(contents, "<w:ind w:left=\"0\" w:right=\"0\" w:firstLine=\"0\"/>"));
  EXPECT_TRUE(contains(styleIn(styles, "Footer"), "<w:tab w:val=\"clear\" w:pos=\"3000\"/>"));
}

TEST(ReferenceStyles, OfCodeAreEnoughForThoseAboveThem) {
  const std::string styles =
      stylesWith(paragraphStyle("x", "Source Code", kRed) +
                 "<w:style w:type='character' w:styleId='y'><w:name w:val='Verbatim Char'/></w:style>");
  EXPECT_TRUE(contains(styleIn(styles, "Code"),
                       "<w:basedOn w:val=\"SourceCode\"/><w:qFormat/><w:rPr><w:noProof/></w:rPr></w:style>"));
  EXPECT_TRUE(contains(styleIn(styles, "InlineCode"),
                       "<w:basedOn w:val=\"VerbatimChar\"/><w:qFormat/><w:rPr><w:noProof/></w:rPr></w:style>"));
}

TEST(ReferenceStyles, OfCodeAreAboveThoseByWhichConvertersKnowIt) {
  const std::string styles = stylesWith(paragraphStyle("x", "Code", "<w:basedOn w:val='y'/>") +
                                        paragraphStyle("y", "y", "<w:pPr><w:spacing w:before='90'/></w:pPr>") +
                                        paragraphStyle("z", "List Compact"));
  EXPECT_TRUE(contains(styleIn(styles, "Code"), "<w:basedOn w:val=\"SourceCode\"/>"));
  EXPECT_TRUE(contains(styleIn(styles, "SourceCode"), "<w:basedOn w:val=\"y\"/><w:semiHidden/></w:style>"));
  EXPECT_TRUE(contains(styleIn(styles, "ListCompact"), "<w:basedOn w:val=\"Compact\"/>"));
  EXPECT_TRUE(contains(styleIn(styles, "Compact"), "<w:name w:val=\"Compact\"/><w:semiHidden/></w:style>"));
}

TEST(ReferenceStyles, LeaveTheIndentOfTheDefaultOutOfTables) {
  const std::string styles = stylesWith(paragraphStyle(
      "x", "Normal", "<w:pPr><w:spacing w:before='90'/><w:ind w:firstLine='500'/><w:jc w:val='both'/></w:pPr>"));
  EXPECT_TRUE(contains(styleIn(styles, "TableText"),
                       "<w:spacing w:before=\"30\" w:after=\"30\" w:line=\"240\" w:lineRule=\"auto\"/>"
                       "<w:ind w:left=\"0\" w:right=\"0\" w:firstLine=\"0\"/><w:jc w:val=\"left\"/></w:pPr>"));
  EXPECT_TRUE(contains(styleIn(styles, "SectionEnd"), "w:before=\"0\"/><w:ind w:left=\"0\""));
}

TEST(ReferenceStyles, LeaveWhatAllTextHasOutOfTables) {
  const std::string styles = stylesWith(
      "<w:docDefaults><w:pPrDefault><w:pPr><w:keepNext/><w:pageBreakBefore/><w:pBdr><w:top w:val='single'/></w:pBdr>"
      "<w:shd w:val='clear' w:fill='FF0000'/><w:spacing w:before='99' w:beforeAutospacing='1'/><w:ind w:left='900'/>"
      "<w:jc w:val='center'/></w:pPr></w:pPrDefault></w:docDefaults>");
  EXPECT_TRUE(contains(styleIn(styles, "TableText"),
                       "<w:pPr><w:keepNext w:val=\"0\"/><w:pageBreakBefore w:val=\"0\"/><w:pBdr><w:top w:val=\"nil\"/>"
                       "<w:left w:val=\"nil\"/><w:bottom w:val=\"nil\"/><w:right w:val=\"nil\"/>"
                       "<w:between w:val=\"nil\"/><w:bar w:val=\"nil\"/></w:pBdr>"
                       "<w:shd w:val=\"clear\" w:color=\"auto\" w:fill=\"auto\"/>"
                       "<w:spacing w:before=\"30\" w:after=\"30\" w:line=\"240\" w:lineRule=\"auto\" "
                       "w:beforeAutospacing=\"0\"/><w:ind w:left=\"0\" w:right=\"0\" w:firstLine=\"0\"/>"
                       "<w:jc w:val=\"left\"/></w:pPr>"))
      << styleIn(styles, "TableText");
  EXPECT_TRUE(contains(styleIn(styles, "HorizontalLine"),
                       "<w:top w:val=\"nil\"/><w:left w:val=\"nil\"/><w:bottom w:val=\"single\""));
}

TEST(ReferenceStyles, OfTablesMayBeTheDefault) {
  const std::string styles =
      stylesWith("<w:style w:type='table' w:default='1' w:styleId='x'><w:name w:val='table'/></w:style>");
  EXPECT_EQ(styleIn(styles, "Table"),
            "<w:style w:type=\"table\" w:styleId=\"Table\"><w:name w:val=\"Table\"/></w:style>");
  EXPECT_TRUE(contains(styleIn(styles, "TableNormal"), "w:default=\"1\""));
}

TEST(ReferenceStyles, OfQuotesGiveTheirBorderToWhatIsInThem) {
  constexpr std::string_view kBorder = "<w:pPr><w:pBdr><w:left w:val='double' w:sz='8'/></w:pBdr></w:pPr>";
  const std::string styles =
      stylesWith(paragraphStyle("x", "Quote", "<w:basedOn w:val='y'/>") + paragraphStyle("y", "y", kBorder));
  for (const char* id : {"QuoteList", "QuoteHeading3"}) {
    EXPECT_TRUE(contains(styleIn(styles, id), "<w:pBdr><w:left w:val=\"double\" w:sz=\"8\"/></w:pBdr>")) << id;
  }
  EXPECT_TRUE(contains(styleIn(styles, "QuoteRightToLeft"),
                       "<w:pBdr><w:left w:val=\"nil\"/><w:right w:val=\"double\" w:sz=\"8\"/></w:pBdr>"));
  const std::string plain = stylesWith(paragraphStyle("x", "Quote"));
  for (const char* id : {"QuoteList", "QuoteHeading3", "QuoteRightToLeft"}) {
    EXPECT_FALSE(contains(styleIn(plain, id), "pBdr")) << id;
  }
}

TEST(ReferenceStyles, AreTheSameForTheSameCalls) {
  const std::string reference = referenceWithStyles(paragraphStyle("x", "Quote", kRed));
  EXPECT_EQ(docxWithReference(reference), docxWithReference(reference));
}

TEST(ReferenceStyles, OfTablesDecideTheShadeOfHeadersAndBands) {
  const auto table = [](std::string_view rest) {
    return referenceWithStyles(
        std::string("<w:style w:type='table' w:styleId='t'><w:name w:val='Table'/>").append(rest).append("</w:style>"));
  };
  const auto body = [](const std::string& reference) {
    return partWithReference(
        reference,
        [](Document& document) {
          document.beginTable({}, {});
          for (int i = 0; i < 2; ++i) {
            document.beginRow(false);
            document.cell("x");
            document.end();
            document.beginRow(true);
            document.cell("h");
            document.end();
          }
          document.end();
        },
        "word/document.xml");
  };
  const std::string red = body(
      table("<w:tblStylePr w:type='firstRow'><w:tcPr><w:shd w:val='clear' w:fill='FF0000'/></w:tcPr></w:tblStylePr>"));
  EXPECT_TRUE(contains(red, "<w:tcPr><w:tcW w:w=\"")) << red;
  EXPECT_TRUE(contains(red, "<w:shd w:val=\"clear\" w:fill=\"FF0000\"/></w:tcPr>")) << red;
  EXPECT_TRUE(contains(red, "<w:tblLook w:val=\"0400\" w:firstRow=\"0\"")) << red;
  EXPECT_TRUE(contains(red, "w:noHBand=\"0\" w:noVBand=\"1\"/>")) << red;
  EXPECT_TRUE(contains(red, "<w:tblCellMar><w:left w:w=\"80\"")) << red;
  EXPECT_FALSE(contains(body(table("")), "w:shd"));
  const std::string ours = body(referenceWithStyles(""));
  EXPECT_TRUE(contains(ours, "<w:shd w:val=\"clear\" w:color=\"auto\" w:fill=\"E6EAEE\"/>")) << ours;
  EXPECT_TRUE(contains(ours, "<w:tblLook w:val=\"0600\" w:firstRow=\"0\"")) << ours;
}

TEST(ReferenceStyles, GiveColumnsFifteenPercentMoreRoomForText) {
  constexpr int kPadding = 2 * 80;  // of a cell
  const double plain = firstColumn(partOf(docxOf(&addTableOfOneWord), "word/document.xml")) - kPadding;
  EXPECT_NEAR((firstColumn(documentWith("")) - kPadding) / plain, 1.15, 0.005);
}

TEST(ReferenceStyles, OfTablesWithLargeTextMakeWiderColumns) {
  const int usual = firstColumn(documentWith(""));
  const int large = firstColumn(documentWith(paragraphStyle("x", "Table Text", "<w:basedOn w:val='y'/>") +
                                             paragraphStyle("y", "y", "<w:rPr><w:sz w:val='40'/></w:rPr>")));
  EXPECT_GT(large, usual * 3 / 2);
  EXPECT_LT(large, usual * 2);
}

}  // namespace scrivalen::test
