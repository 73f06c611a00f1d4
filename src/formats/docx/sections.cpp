#include "formats/docx/sections.h"

#include "formats/docx/parts/styles.h"
#include "formats/docx/xml.h"

namespace scrivalen::document::docx {

void Sections::finish() {
  openPending();
  writeProperties(opened_);
}

void Sections::writeBreak() {
  put(out_, "<w:p><w:pPr>");
  put(out_, styleReference(Style::SectionEnd));
  put(out_, "<w:pageBreakBefore/></w:pPr></w:p>\n");
}

void Sections::writeBegin(Orientation orientation, std::optional<Orientation> before) {
  if (before) {
    put(out_, "<w:p><w:pPr>");
    put(out_, styleReference(Style::SectionEnd));
    writeProperties(*before);
    put(out_, "</w:pPr></w:p>\n");
  }
  opened_ = orientation;
  references_ = header_.references(name(), page(orientation).textWidth());
}

void Sections::writeProperties(Orientation orientation) {
  const PageTwips& section = page(orientation);
  put(out_, "<w:sectPr>");
  put(out_, references_);
  put(out_, "<w:type w:val=\"nextPage\"/><w:pgSz w:w=\"", section.width, "\"");
  put(out_, " w:h=\"", section.height, section.width > section.height ? "\" w:orient=\"landscape\"/>" : "\"/>");
  put(out_, "<w:pgMar w:top=\"", section.top, "\"");
  put(out_, " w:right=\"", section.right, "\"");
  put(out_, " w:bottom=\"", section.bottom, "\"");
  put(out_, " w:left=\"", section.left, "\"");
  put(out_, " w:header=\"", header_.fromTop(), "\"");
  put(out_, " w:footer=\"", section.bottom / 2, "\" w:gutter=\"0\"/>");
  put(out_, isRightToLeft_ ? "<w:bidi/></w:sectPr>" : "</w:sectPr>");
}

}  // namespace scrivalen::document::docx
