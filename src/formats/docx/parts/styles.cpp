#include "formats/docx/parts/styles.h"

#include "document/word/document_font.h"
#include "formats/docx/text/run_style.h"
#include "formats/docx/xml.h"

#include <cstddef>

namespace scrivalen::document::docx {
namespace {

enum class Visibility {
  Listed,  // among the styles that a person chooses from
  IfUsed,  // the same once a paragraph has it
  Hidden
};

struct StyleDefinition {
  std::string_view id;
  std::string_view name;
  std::string_view paragraph = {};  // its properties
  std::string_view basedOn = "Normal";
  std::string_view next = {};  // of the paragraph after it; empty: the same
  int priority = 0;            // Word's place of it in lists of styles; 0: none
  Visibility visibility = Visibility::Listed;
  Style style = Style::Normal;  // of one that is listed if it is used
  bool isOwn = false;           // unknown to Word
  int halfPoints = 0;           // 0: those of the style below
  bool bold = false;
};

constexpr std::string_view kHeadingStart = "<w:keepNext/><w:keepLines/>";

struct HeadingDefinition {
  int before;
  int after;
  int halfPoints;
};

constexpr HeadingDefinition kHeadings[] = {{360, 120, 36}, {300, 100, 30}, {240, 80, 26},
                                           {200, 80, 23},  {200, 60, 22},  {200, 60, 22}};

constexpr StyleDefinition kTitle{.id = "Title",
                                 .name = "Title",
                                 .paragraph = "<w:keepNext/><w:keepLines/><w:spacing w:after=\"280\"/>",
                                 .next = "Normal",
                                 .priority = 10,
                                 .halfPoints = 48,
                                 .bold = true};

constexpr std::string_view kQuoteLook =
    "<w:pBdr><w:left w:val=\"single\" w:sz=\"16\" w:space=\"9\" w:color=\"B8C0C8\"/></w:pBdr><w:ind w:left=\"360\"/>";

// Quotes and code in an item have the number of no list, by which converters know that they belong to the item.
constexpr StyleDefinition kQuotes[] = {
    {.id = "Quote", .name = "Quote", .paragraph = kQuoteLook, .priority = 29},
    {.id = "QuoteRightToLeft",
     .name = "Quote Right to Left",
     .paragraph = "<w:pBdr><w:left w:val=\"nil\"/>"
                  "<w:right w:val=\"single\" w:sz=\"16\" w:space=\"9\" w:color=\"B8C0C8\"/></w:pBdr>",
     .basedOn = "Quote",
     .priority = 29,
     .visibility = Visibility::IfUsed,
     .style = Style::QuoteRightToLeft,
     .isOwn = true},
    {.id = "ListQuote",
     .name = "List Quote",
     .paragraph = "<w:numPr><w:numId w:val=\"0\"/></w:numPr><w:ind w:left=\"800\"/>",
     .basedOn = "Quote",
     .priority = 29,
     .visibility = Visibility::IfUsed,
     .style = Style::ListQuote,
     .isOwn = true},
};

// Converters know the items of a list without space between them, and further paragraphs of an item, by the names of
// the hidden styles.
constexpr StyleDefinition kLists[] = {
    {.id = "ListParagraph", .name = "List Paragraph", .priority = 34},
    {.id = "Compact", .name = "Compact", .basedOn = "ListParagraph", .visibility = Visibility::Hidden, .isOwn = true},
    {.id = "ListCompact",
     .name = "List Compact",
     .paragraph = "<w:contextualSpacing/>",
     .basedOn = "Compact",
     .priority = 34,
     .isOwn = true},
    {.id = "ListContinue",
     .name = "List Continue",
     .paragraph = "<w:ind w:left=\"440\"/>",
     .basedOn = "ListParagraph",
     .priority = 34},
    {.id = "ListItemText",
     .name = "list-paragraph",
     .basedOn = "ListContinue",
     .visibility = Visibility::Hidden,
     .isOwn = true},
    {.id = "QuoteList",
     .name = "Quote List",
     .paragraph = "<w:pBdr><w:left w:val=\"single\" w:sz=\"16\" w:space=\"9\" w:color=\"B8C0C8\"/></w:pBdr>",
     .basedOn = "ListParagraph",
     .priority = 34,
     .visibility = Visibility::IfUsed,
     .style = Style::QuoteList,
     .isOwn = true},
    {.id = "ListCode",
     .name = "List Code",
     .paragraph = "<w:numPr><w:numId w:val=\"0\"/></w:numPr><w:ind w:left=\"440\"/>",
     .basedOn = "Code",
     .priority = 35,
     .visibility = Visibility::IfUsed,
     .style = Style::ListCode,
     .isOwn = true},
};

// A border of the code's own colour leaves space around it.
constexpr std::string_view kCodeBox =
    "<w:pBdr><w:top w:val=\"single\" w:sz=\"4\" w:space=\"4\" w:color=\"F1F3F5\"/>"
    "<w:left w:val=\"single\" w:sz=\"4\" w:space=\"4\" w:color=\"F1F3F5\"/>"
    "<w:bottom w:val=\"single\" w:sz=\"4\" w:space=\"4\" w:color=\"F1F3F5\"/>"
    "<w:right w:val=\"single\" w:sz=\"4\" w:space=\"4\" w:color=\"F1F3F5\"/></w:pBdr>"
    "<w:shd w:val=\"clear\" w:color=\"auto\" w:fill=\"F1F3F5\"/>"
    "<w:spacing w:after=\"160\" w:line=\"240\" w:lineRule=\"auto\"/><w:ind w:left=\"80\" w:right=\"80\"/>";

constexpr StyleDefinition kRule{
    .id = "HorizontalLine",
    .name = "Horizontal Line",
    .paragraph = "<w:pBdr><w:bottom w:val=\"single\" w:sz=\"4\" w:space=\"1\" w:color=\"B8C0C8\"/></w:pBdr>",
    .next = "Normal",
    .isOwn = true,
    .halfPoints = 8};
constexpr StyleDefinition kTableSpace{.id = "TableSpace",
                                      .name = "Table Space",
                                      .paragraph = "<w:spacing w:after=\"0\" w:line=\"160\" w:lineRule=\"exact\"/>",
                                      .visibility = Visibility::Hidden,
                                      .isOwn = true,
                                      .halfPoints = 12};
// It takes hardly any space.
constexpr StyleDefinition kSectionEnd{.id = "SectionEnd",
                                      .name = "Section End",
                                      .paragraph = "<w:spacing w:after=\"0\" w:line=\"20\" w:lineRule=\"exact\"/>",
                                      .visibility = Visibility::Hidden,
                                      .isOwn = true,
                                      .halfPoints = 2};

constexpr std::string_view kParagraph = "paragraph";
constexpr std::string_view kOwnParagraph = "paragraph\" w:customStyle=\"1";  // unknown to Word
constexpr std::string_view kOwnCharacter = "character\" w:customStyle=\"1";

void beginStyle(OutputBuffer& out, std::string_view type, std::string_view id, std::string_view name) {
  put(out, "<w:style w:type=\"");
  put(out, type);
  put(out, "\" w:styleId=\"");
  put(out, id);
  put(out, "\"><w:name w:val=\"");
  put(out, name);
  put(out, "\"/>");
}

void writeRunProperties(OutputBuffer& out, int halfPoints, bool bold, bool italic) {
  put(out, runProperties({.bold = bold, .italic = italic, .halfPoints = halfPoints}, false));
}

std::string_view visibilityElements(const StyleDefinition& style, const StyleSet& used) {
  switch (style.visibility) {
    case Visibility::Listed: return "<w:qFormat/>";
    case Visibility::IfUsed:
      return used.test(static_cast<std::size_t>(style.style)) ? "<w:unhideWhenUsed/><w:qFormat/>"
                                                              : "<w:semiHidden/><w:unhideWhenUsed/><w:qFormat/>";
    case Visibility::Hidden: return "<w:semiHidden/>";
  }
  return "";
}

// In the order of the schema (ECMA-376, 17.7.4.17).
void writeStyle(OutputBuffer& out, const StyleDefinition& style, const StyleSet& used) {
  beginStyle(out, style.isOwn ? kOwnParagraph : kParagraph, style.id, style.name);
  put(out, joined({"<w:basedOn w:val=\"", style.basedOn, "\"/>"}));
  if (!style.next.empty()) {
    put(out, joined({"<w:next w:val=\"", style.next, "\"/>"}));
  }
  if (style.priority > 0) {
    put(out, "<w:uiPriority w:val=\"", style.priority, "\"/>");
  }
  put(out, visibilityElements(style, used));
  if (!style.paragraph.empty()) {
    put(out, joined({"<w:pPr>", style.paragraph, "</w:pPr>"}));
  }
  writeRunProperties(out, style.halfPoints, style.bold, false);
  put(out, "</w:style>\n");
}

void writeHeading(OutputBuffer& out, int level) {
  const HeadingDefinition& heading = kHeadings[level - 1];
  const std::string number = std::to_string(level);
  beginStyle(out, kParagraph, joined({"Heading", number}), joined({"heading ", number}));
  put(out, "<w:basedOn w:val=\"Normal\"/><w:next w:val=\"Normal\"/><w:uiPriority w:val=\"9\"/><w:qFormat/><w:pPr>");
  put(out, kHeadingStart);
  put(out, "<w:spacing w:before=\"", heading.before, "\"");
  put(out, " w:after=\"", heading.after, "\"/>");
  put(out, "<w:outlineLvl w:val=\"", level - 1, "\"/></w:pPr>");
  writeRunProperties(out, heading.halfPoints, true, level == 6);
  put(out, "</w:style>\n");
}

// A heading in a quote.
void writeQuoteHeading(OutputBuffer& out, int level, const StyleSet& used) {
  const std::string number = std::to_string(level);
  const std::string id = joined({"QuoteHeading", number});
  const std::string name = joined({"Quote Heading ", number});
  const std::string heading = joined({"Heading", number});
  writeStyle(out,
             {.id = id,
              .name = name,
              .paragraph = kQuoteLook,
              .basedOn = heading,
              .next = "Quote",
              .priority = 29,
              .visibility = Visibility::IfUsed,
              .style = styleOfLevel(Style::QuoteHeading1, level),
              .isOwn = true},
             used);
}

void writeContentsStyle(OutputBuffer& out, int level, int textWidth) {
  constexpr int kIndent = 240;
  const std::string number = std::to_string(level);
  beginStyle(out, kParagraph, joined({"TOC", number}), joined({"toc ", number}));
  put(out,
      "<w:basedOn w:val=\"Normal\"/><w:next w:val=\"Normal\"/><w:uiPriority w:val=\"39\"/><w:pPr><w:tabs>"
      "<w:tab w:val=\"right\" w:leader=\"dot\" w:pos=\"",
      textWidth, "\"/></w:tabs><w:spacing w:after=\"40\"/>");
  put(out, "<w:ind w:left=\"", (level - 1) * kIndent, "\"/></w:pPr></w:style>\n");
}

// What is on the left, in the middle and on the right of a page is divided by tabs.
void writeRunningStyle(OutputBuffer& out, std::string_view id, std::string_view name, int textWidth) {
  beginStyle(out, kParagraph, id, name);
  put(out, "<w:basedOn w:val=\"Normal\"/><w:uiPriority w:val=\"99\"/><w:pPr><w:tabs><w:tab w:val=\"center\" w:pos=\"",
      textWidth / 2, "\"/>");
  put(out, "<w:tab w:val=\"right\" w:pos=\"", textWidth,
      "\"/></w:tabs><w:spacing w:after=\"0\" w:line=\"240\" w:lineRule=\"auto\"/></w:pPr>");
  writeRunProperties(out, 18, false, false);
  put(out, "</w:style>\n");
}

// Converters know code by the names of the hidden styles below it.
void writeCodeStyles(OutputBuffer& out) {
  beginStyle(out, kOwnParagraph, "SourceCode", "Source Code");
  put(out, "<w:basedOn w:val=\"Normal\"/><w:semiHidden/></w:style>\n");
  beginStyle(out, kOwnParagraph, "Code", "Code");
  put(out, "<w:basedOn w:val=\"SourceCode\"/><w:qFormat/><w:pPr>");
  put(out, kCodeBox);
  put(out, "</w:pPr><w:rPr>");
  put(out, fontsElement(kMonoFont));
  put(out, "<w:noProof/><w:sz w:val=\"18\"/><w:szCs w:val=\"18\"/></w:rPr></w:style>\n");
  beginStyle(out, kOwnCharacter, "VerbatimChar", "Verbatim Char");
  put(out, "<w:semiHidden/></w:style>\n");
  beginStyle(out, kOwnCharacter, "InlineCode", "Inline Code");
  put(out, "<w:basedOn w:val=\"VerbatimChar\"/><w:qFormat/><w:rPr>");
  put(out, fontsElement(kMonoFont));
  put(out, "<w:noProof/></w:rPr></w:style>\n");
}

void writeFonts(OutputBuffer& out, std::string_view font) {
  put(out, "<w:rFonts w:ascii=\"");
  putValue(out, font);
  put(out, "\" w:hAnsi=\"");
  putValue(out, font);
  put(out, "\" w:cs=\"");
  putValue(out, font);
  put(out, "\"/>");
}

void writeLinkStyle(OutputBuffer& out) {
  beginStyle(out, "character", "Hyperlink", "Hyperlink");
  put(out,
      "<w:uiPriority w:val=\"99\"/><w:unhideWhenUsed/><w:rPr><w:color w:val=\"0B5CAD\"/><w:u w:val=\"single\"/></w:rPr>"
      "</w:style>\n");
}

constexpr std::string_view kNormalTable =
    "<w:style w:type=\"table\" w:default=\"1\" w:styleId=\"TableNormal\"><w:name w:val=\"Normal Table\"/>"
    "<w:uiPriority w:val=\"99\"/><w:semiHidden/><w:tblPr><w:tblInd w:w=\"0\" w:type=\"dxa\"/><w:tblCellMar>"
    "<w:top w:w=\"0\" w:type=\"dxa\"/><w:left w:w=\"80\" w:type=\"dxa\"/><w:bottom w:w=\"0\" w:type=\"dxa\"/>"
    "<w:right w:w=\"80\" w:type=\"dxa\"/></w:tblCellMar></w:tblPr></w:style>\n";

constexpr std::string_view kTable =
    "<w:style w:type=\"table\" w:customStyle=\"1\" w:styleId=\"Table\"><w:name w:val=\"Table\"/>"
    "<w:basedOn w:val=\"TableNormal\"/><w:qFormat/><w:tblPr><w:tblBorders>"
    "<w:bottom w:val=\"single\" w:sz=\"4\" w:space=\"0\" w:color=\"B8C0C8\"/>"
    "<w:insideH w:val=\"single\" w:sz=\"4\" w:space=\"0\" w:color=\"B8C0C8\"/></w:tblBorders></w:tblPr>"
    "<w:tblStylePr w:type=\"firstRow\"><w:tcPr><w:shd w:val=\"clear\" w:color=\"auto\" w:fill=\"E6EAEE\"/></w:tcPr>"
    "</w:tblStylePr></w:style>\n";

// Empty and " 8" for the usual size and 4 points.
std::string sizeSuffix(int halfPoints) {
  if (halfPoints == kUsualTableHalfPoints) {
    return {};
  }
  return joined({" ", std::to_string(halfPoints / 2), halfPoints % 2 == 1 ? ".5" : ""});
}

// An id has no full stop.
std::string tableStyleId(int halfPoints, bool isHeading) {
  const std::string id = isHeading ? "TableHeading" : "TableText";
  return halfPoints == kUsualTableHalfPoints ? id : id + std::to_string(halfPoints);
}

std::string tableStyleName(int halfPoints, bool isHeading) {
  return joined({isHeading ? "Table Heading" : "Table Text", sizeSuffix(halfPoints)});
}

// The id in an element that refers to a style.
std::string referredId(std::string_view reference) {
  const std::size_t begin = reference.find('"') + 1;
  return reference.empty() ? "Normal" : std::string(reference.substr(begin, reference.rfind('"') - begin));
}

void writeTableText(OutputBuffer& out, int halfPoints, bool isHeading) {
  beginStyle(out, kOwnParagraph, tableStyleId(halfPoints, isHeading), tableStyleName(halfPoints, isHeading));
  put(out, "<w:basedOn w:val=\"");
  if (isHeading) {
    put(out, tableStyleId(halfPoints, false));
    put(out, "\"/><w:qFormat/>");
    writeRunProperties(out, 0, true, false);
  } else {
    const bool isUsual = halfPoints == kUsualTableHalfPoints;
    put(out, isUsual ? "Normal" : "TableText");
    put(out, "\"/><w:qFormat/>");
    put(out,
        isUsual ? "<w:pPr><w:spacing w:before=\"30\" w:after=\"30\" w:line=\"240\" w:lineRule=\"auto\"/></w:pPr>" : "");
    writeRunProperties(out, halfPoints, false, false);
  }
  put(out, "</w:style>\n");
}

}  // namespace

StyleSheet::StyleSheet(const FormatSettings& settings, int textWidth, OutputWarnings& warnings)
    : settings_(settings), textWidth_(textWidth), font_(DocumentFont::of(settings.text("font"), warnings).name) {}

std::string_view styleReference(Style style) {
  constexpr std::string_view kReferences[] = {"",
                                              "<w:pStyle w:val=\"Heading1\"/>",
                                              "<w:pStyle w:val=\"Heading2\"/>",
                                              "<w:pStyle w:val=\"Heading3\"/>",
                                              "<w:pStyle w:val=\"Heading4\"/>",
                                              "<w:pStyle w:val=\"Heading5\"/>",
                                              "<w:pStyle w:val=\"Heading6\"/>",
                                              "<w:pStyle w:val=\"Title\"/>",
                                              "<w:pStyle w:val=\"Quote\"/>",
                                              "<w:pStyle w:val=\"QuoteRightToLeft\"/>",
                                              "<w:pStyle w:val=\"QuoteList\"/>",
                                              "<w:pStyle w:val=\"QuoteHeading1\"/>",
                                              "<w:pStyle w:val=\"QuoteHeading2\"/>",
                                              "<w:pStyle w:val=\"QuoteHeading3\"/>",
                                              "<w:pStyle w:val=\"QuoteHeading4\"/>",
                                              "<w:pStyle w:val=\"QuoteHeading5\"/>",
                                              "<w:pStyle w:val=\"QuoteHeading6\"/>",
                                              "<w:pStyle w:val=\"Code\"/>",
                                              "<w:pStyle w:val=\"ListParagraph\"/>",
                                              "<w:pStyle w:val=\"ListCompact\"/>",
                                              "<w:pStyle w:val=\"ListItemText\"/>",
                                              "<w:pStyle w:val=\"ListQuote\"/>",
                                              "<w:pStyle w:val=\"ListCode\"/>",
                                              "<w:pStyle w:val=\"TOC1\"/>",
                                              "<w:pStyle w:val=\"TOC2\"/>",
                                              "<w:pStyle w:val=\"TOC3\"/>",
                                              "<w:pStyle w:val=\"TOC4\"/>",
                                              "<w:pStyle w:val=\"TOC5\"/>",
                                              "<w:pStyle w:val=\"TOC6\"/>",
                                              "<w:pStyle w:val=\"Header\"/>",
                                              "<w:pStyle w:val=\"Footer\"/>",
                                              "<w:pStyle w:val=\"HorizontalLine\"/>",
                                              "<w:pStyle w:val=\"TableSpace\"/>",
                                              "<w:pStyle w:val=\"SectionEnd\"/>"};
  return kReferences[static_cast<int>(style)];
}

std::string StyleSheet::tableReference(int halfPoints, bool isHeading) {
  tableSizes_.set(static_cast<std::size_t>(halfPoints));
  return joined({"<w:pStyle w:val=\"", tableStyleId(halfPoints, isHeading), "\"/>"});
}

// In a table LibreOffice puts a font that is only the document's over those of character styles, so Normal has it, too.
std::string_view StyleSheet::reference(Style style, bool hasNumber) {
  used_.set(static_cast<std::size_t>(style));
  if (!hasNumber) {
    unnumbered_.set(static_cast<std::size_t>(style));
  }
  return styleReference(style);
}

void StyleSheet::writeDefaults(OutputBuffer& out) const {
  OutputBuffer& o = out;
  put(o, "<w:docDefaults><w:rPrDefault><w:rPr>");
  writeFonts(o, font_);
  put(o, "<w:sz w:val=\"22\"/><w:szCs w:val=\"22\"/>");
  put(o, languageElement(settings_.text("language")));
  put(o,
      "</w:rPr></w:rPrDefault><w:pPrDefault/></w:docDefaults>\n"
      "<w:style w:type=\"paragraph\" w:default=\"1\" w:styleId=\"Normal\"><w:name w:val=\"Normal\"/><w:qFormat/>"
      "<w:pPr><w:spacing w:after=\"120\" w:line=\"264\" w:lineRule=\"auto\"/></w:pPr><w:rPr>");
  writeFonts(o, font_);
  put(o,
      "</w:rPr></w:style>\n"
      "<w:style w:type=\"character\" w:default=\"1\" w:styleId=\"DefaultParagraphFont\">"
      "<w:name w:val=\"Default Paragraph Font\"/><w:uiPriority w:val=\"1\"/><w:semiHidden/></w:style>\n");
}

void StyleSheet::writeTableTexts(OutputBuffer& out) const {
  for (int halfPoints = kUsualTableHalfPoints; halfPoints > 0; --halfPoints) {
    if (halfPoints == kUsualTableHalfPoints || tableSizes_.test(static_cast<std::size_t>(halfPoints))) {
      writeTableText(out, halfPoints, false);
      writeTableText(out, halfPoints, true);
    }
  }
}

void StyleSheet::write(OutputBuffer& out) const {
  put(out, kXmlStart);
  put(out, "<w:styles");
  put(out, kNamespaces);
  put(out, "\n");
  writeDefaults(out);
  writeStyle(out, kTitle, used_);
  for (int level = 1; level <= 6; ++level) {
    writeHeading(out, level);
  }
  for (const StyleDefinition& quote : kQuotes) {
    writeStyle(out, quote, used_);
  }
  for (int level = 1; level <= 6; ++level) {
    writeQuoteHeading(out, level, used_);
  }
  writeCodeStyles(out);
  for (const StyleDefinition& list : kLists) {
    writeStyle(out, list, used_);
  }
  for (int level = 1; level <= 6; ++level) {
    writeContentsStyle(out, level, textWidth_);
  }
  writeRunningStyle(out, "Header", "header", textWidth_);
  writeRunningStyle(out, "Footer", "footer", textWidth_);
  writeStyle(out, kRule, used_);
  writeLinkStyle(out);
  put(out, kNormalTable);
  put(out, kTable);
  writeTableTexts(out);
  writeStyle(out, kTableSpace, used_);
  writeStyle(out, kSectionEnd, used_);
  put(out, "</w:styles>\n");
}

std::string StyleSheet::text() const {
  TextSink sink;
  OutputBuffer out(sink);
  write(out);
  out.flush();
  return sink.text;
}

std::set<std::string> StyleSheet::unnumberedIds() const {
  StyleSet styles = unnumbered_;
  styles[static_cast<std::size_t>(Style::Header)] =
      !settings_.text("header").empty() || !settings_.text("header-image").empty();
  styles[static_cast<std::size_t>(Style::Footer)] = !settings_.text("footer").empty();
  std::set<std::string> ids;
  for (std::size_t i = 0; i < styles.size(); ++i) {
    if (styles.test(i)) {
      ids.insert(referredId(styleReference(static_cast<Style>(i))));
    }
  }
  for (int halfPoints = 1; halfPoints <= kUsualTableHalfPoints; ++halfPoints) {
    if (tableSizes_.test(static_cast<std::size_t>(halfPoints))) {
      ids.insert({"Table", tableStyleId(halfPoints, false), tableStyleId(halfPoints, true)});
    }
  }
  return ids;
}

}  // namespace scrivalen::document::docx
