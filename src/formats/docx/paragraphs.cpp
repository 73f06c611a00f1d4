#include "formats/docx/paragraphs.h"

#include "formats/docx/xml.h"

#include <string>

namespace scrivalen::document::docx {
namespace {

Style styleOf(const ParagraphStart& start) {
  switch (start.kind) {
    case BlockKind::Normal: return Style::Normal;
    case BlockKind::Heading: return styleOfLevel(Style::Heading1, start.level);
    case BlockKind::Title: return Style::Title;
    case BlockKind::Quote: return Style::Quote;
    case BlockKind::Code: return Style::Code;
    case BlockKind::List: return Style::List;
    case BlockKind::Contents: return styleOfLevel(Style::Contents1, start.level);
    case BlockKind::Rule: return Style::Rule;
  }
  return Style::Normal;
}

}  // namespace

std::string_view alignmentElement(Align align, bool isRightToLeft) {
  constexpr std::string_view kBegin = "<w:jc w:val=\"left\"/>";
  constexpr std::string_view kEnd = "<w:jc w:val=\"right\"/>";
  switch (align) {
    case Align::Auto: return "";
    case Align::Left: return isRightToLeft ? kEnd : kBegin;
    case Align::Center: return "<w:jc w:val=\"center\"/>";
    case Align::Right: return isRightToLeft ? kBegin : kEnd;
    case Align::Justify: return "<w:jc w:val=\"both\"/>";
  }
  return "";
}

void Paragraphs::writeBegin(const ParagraphStart& start, bool isRightToLeft) {
  const ContainerProperties around = containers_.takeProperties(start, isRightToLeft);
  put(out_, "<w:p>");
  writeProperties(start, isRightToLeft, around);
  inlines_.beginText({}, isRightToLeft);
  inlines_.writeHeld();
  if (!around.marker.empty()) {
    inlines_.writeText(around.marker);
  }
}

// In the order of the schema (ECMA-376, 17.3.1.26).
void Paragraphs::writeProperties(const ParagraphStart& start, bool isRightToLeft, const ContainerProperties& around) {
  std::string xml(styles_.reference(around.style.value_or(styleOf(start)), !around.list.empty()));
  xml += sections_.takeBreak() ? "<w:pageBreakBefore/>" : "";
  xml.append(around.list).append(around.border);
  xml += isRightToLeft ? "<w:bidi/>" : "";
  xml += start.isLast ? "<w:spacing w:after=\"200\"/>" : "";
  xml.append(around.indent).append(around.space).append(alignmentElement(start.align, isRightToLeft));
  if (!xml.empty()) {
    put(out_, "<w:pPr>");
    put(out_, xml);
    put(out_, "</w:pPr>");
  }
}

void Paragraphs::writeEnd() { put(out_, "</w:p>\n"); }

}  // namespace scrivalen::document::docx
