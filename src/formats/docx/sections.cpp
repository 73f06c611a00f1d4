#include "formats/docx/sections.h"

#include "formats/docx/parts/styles.h"
#include "formats/docx/xml.h"

#include <utility>

namespace scrivalen::document::docx {
namespace {

// The margins keep their sides.
PageTwips turned(PageTwips paper) {
  std::swap(paper.width, paper.height);
  return paper;
}

}  // namespace

Sections::Sections(OutputBuffer& out, PageHeader& header, const PageTwips& paper, bool isRightToLeft)
    : out_(out), header_(header), paper_(paper), turned_(turned(paper)), isRightToLeft_(isRightToLeft) {}

void Sections::begin(std::string_view name) {
  if (opened_ && isPending_) {
    open(Orientation::Upright);
  }
  name_ = name;
  isPending_ = true;
  isAfterSection_ = false;
  isAtTop_ = true;
  breaksPage_ = false;
}

void Sections::end() {
  if (isPending_) {
    open(Orientation::Upright);
  }
  isAfterSection_ = true;
  isAtTop_ = true;
  breaksPage_ = false;
}

void Sections::finish() {
  if (isPending_) {
    open(Orientation::Upright);
  }
  writeProperties();
}

void Sections::prepare(Orientation orientation) {
  if (isAfterSection_) {
    begin({});
  }
  if (isPending_ || opened_ != orientation) {
    open(orientation);
  }
}

void Sections::open(Orientation orientation) {
  if (opened_) {
    put(out_, "<w:p><w:pPr>");
    put(out_, styleReference(Style::SectionEnd));
    writeProperties();
    put(out_, "</w:pPr></w:p>\n");
  }
  const PageTwips& page = orientation == Orientation::Turned ? turned_ : paper_;
  references_ = header_.references(name_, page.textWidth());
  opened_ = orientation;
  isPending_ = false;
  isAtTop_ = true;
  breaksPage_ = false;
}

void Sections::writeProperties() {
  const PageTwips& page = opened_ == Orientation::Turned ? turned_ : paper_;
  put(out_, "<w:sectPr>");
  put(out_, references_);
  put(out_, "<w:type w:val=\"nextPage\"/><w:pgSz w:w=\"", page.width, "\"");
  put(out_, " w:h=\"", page.height, page.width > page.height ? "\" w:orient=\"landscape\"/>" : "\"/>");
  put(out_, "<w:pgMar w:top=\"", page.top, "\"");
  put(out_, " w:right=\"", page.right, "\"");
  put(out_, " w:bottom=\"", page.bottom, "\"");
  put(out_, " w:left=\"", page.left, "\"");
  put(out_, " w:header=\"", header_.fromTop(), "\"");
  put(out_, " w:footer=\"", page.bottom / 2, "\" w:gutter=\"0\"/>");
  put(out_, isRightToLeft_ ? "<w:bidi/></w:sectPr>" : "</w:sectPr>");
}

void Sections::addContent() {
  isAtTop_ = false;
  hasContent_ = true;
}

}  // namespace scrivalen::document::docx
