#include "formats/docx/parts/styles.h"

#include "formats/docx/text/run_style.h"
#include "formats/docx/xml.h"
#include "text/ascii.h"

namespace scrivalen::document::docx {
namespace {

struct StyleDefinition {
  std::string_view id;
  std::string_view name;
  std::string_view paragraph;  // its properties
  int halfPoints = 0;          // 0: the document's
  bool bold = false;
  bool italic = false;
  bool isListed = true;  // among the styles that a person chooses from
  bool isOwn = false;    // unknown to Word
};

constexpr std::string_view kHeadingStart = "<w:keepNext/><w:keepLines/>";

struct HeadingDefinition {
  int before;
  int after;
  int halfPoints;
};

constexpr HeadingDefinition kHeadings[] = {{360, 120, 36}, {300, 100, 30}, {240, 80, 26},
                                           {200, 80, 23},  {200, 60, 22},  {200, 60, 22}};

constexpr StyleDefinition kTitle{"Title", "Title", "<w:keepNext/><w:keepLines/><w:spacing w:after=\"280\"/>", 48, true};
constexpr StyleDefinition kQuote{
    "Quote", "Quote",
    "<w:pBdr><w:left w:val=\"single\" w:sz=\"16\" w:space=\"9\" w:color=\"B8C0C8\"/></w:pBdr><w:ind w:left=\"360\"/>"};
constexpr StyleDefinition kList{"ListParagraph", "List Paragraph", ""};

// A border of the code's own colour leaves space around it.
constexpr std::string_view kCodeBox =
    "<w:pBdr><w:top w:val=\"single\" w:sz=\"4\" w:space=\"4\" w:color=\"F1F3F5\"/>"
    "<w:left w:val=\"single\" w:sz=\"4\" w:space=\"4\" w:color=\"F1F3F5\"/>"
    "<w:bottom w:val=\"single\" w:sz=\"4\" w:space=\"4\" w:color=\"F1F3F5\"/>"
    "<w:right w:val=\"single\" w:sz=\"4\" w:space=\"4\" w:color=\"F1F3F5\"/></w:pBdr>"
    "<w:shd w:val=\"clear\" w:color=\"auto\" w:fill=\"F1F3F5\"/>"
    "<w:spacing w:after=\"160\" w:line=\"240\" w:lineRule=\"auto\"/><w:ind w:left=\"80\" w:right=\"80\"/>";

constexpr StyleDefinition kRule{
    "HorizontalLine",
    "Horizontal Line",
    "<w:pBdr><w:bottom w:val=\"single\" w:sz=\"4\" w:space=\"1\" w:color=\"B8C0C8\"/></w:pBdr>",
    8,
    false,
    false,
    true,
    true};
constexpr StyleDefinition kTableSpace{
    "TableSpace", "Table Space", "<w:spacing w:after=\"0\" w:line=\"160\" w:lineRule=\"exact\"/>", 12, false, false,
    false,        true};
// It takes hardly any space.
constexpr StyleDefinition kSectionEnd{
    "SectionEnd", "Section End", "<w:spacing w:after=\"0\" w:line=\"20\" w:lineRule=\"exact\"/>", 2, false, false,
    false,        true};

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

void writeStyle(OutputBuffer& out, const StyleDefinition& style) {
  beginStyle(out, style.isOwn ? kOwnParagraph : kParagraph, style.id, style.name);
  put(out, "<w:basedOn w:val=\"Normal\"/>");
  put(out, style.isListed ? "<w:qFormat/>" : "<w:semiHidden/>");
  if (!style.paragraph.empty()) {
    put(out, "<w:pPr>");
    put(out, style.paragraph);
    put(out, "</w:pPr>");
  }
  writeRunProperties(out, style.halfPoints, style.bold, style.italic);
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

struct KnownFont {
  std::string_view setting;
  std::string_view name;
};

constexpr KnownFont kKnownFonts[] = {{"serif", "Times New Roman"}, {"", "Arial"},       {"sans", "Arial"},
                                     {"sans-serif", "Arial"},      {"mono", kMonoFont}, {"monospace", kMonoFont}};

}  // namespace

std::string_view fontName(std::string_view setting) {
  const std::string name = asciiLowered(setting);
  for (const KnownFont& known : kKnownFonts) {
    if (known.setting == name) {
      return known.name;
    }
  }
  return setting;
}

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
                                              "<w:pStyle w:val=\"Code\"/>",
                                              "<w:pStyle w:val=\"ListParagraph\"/>",
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

void StyleSheet::writeDefaults(OutputBuffer& out) const {
  OutputBuffer& o = out;
  put(o, "<w:docDefaults><w:rPrDefault><w:rPr><w:rFonts w:ascii=\"");
  const std::string_view font = fontName(settings_.text("font"));
  putValue(o, font);
  put(o, "\" w:hAnsi=\"");
  putValue(o, font);
  put(o, "\" w:cs=\"");
  putValue(o, font);
  put(o, "\"/><w:sz w:val=\"22\"/><w:szCs w:val=\"22\"/>");
  put(o, languageElement(settings_.text("language")));
  put(o,
      "</w:rPr></w:rPrDefault><w:pPrDefault/></w:docDefaults>\n"
      "<w:style w:type=\"paragraph\" w:default=\"1\" w:styleId=\"Normal\"><w:name w:val=\"Normal\"/><w:qFormat/>"
      "<w:pPr><w:spacing w:after=\"120\" w:line=\"264\" w:lineRule=\"auto\"/></w:pPr></w:style>\n"
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
  writeStyle(out, kTitle);
  for (int level = 1; level <= 6; ++level) {
    writeHeading(out, level);
  }
  writeStyle(out, kQuote);
  writeCodeStyles(out);
  writeStyle(out, kList);
  for (int level = 1; level <= 6; ++level) {
    writeContentsStyle(out, level, textWidth_);
  }
  writeRunningStyle(out, "Header", "header", textWidth_);
  writeRunningStyle(out, "Footer", "footer", textWidth_);
  writeStyle(out, kRule);
  writeLinkStyle(out);
  put(out, kNormalTable);
  put(out, kTable);
  writeTableTexts(out);
  writeStyle(out, kTableSpace);
  writeStyle(out, kSectionEnd);
  put(out, "</w:styles>\n");
}

}  // namespace scrivalen::document::docx
