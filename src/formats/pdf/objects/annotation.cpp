#include "formats/pdf/objects/annotation.h"

#include "formats/pdf/objects/destination.h"

namespace PDFStuffer {

void CPDFAnnot::setRectangle(std::int32_t left, std::int32_t bottom, std::int32_t right, std::int32_t top) {
  rect.left = left;
  rect.bottom = bottom;
  rect.right = right;
  rect.top = top;
}

void CPDFAnnot::Write(CPDFMemBlock& out) {
  addName(u"Type", u"Annot");
  addName(u"Subtype", u"Link");
  add(u"Rect", std::make_unique<CPDFRect>(rect.left, rect.bottom, rect.right, rect.top));
  if (address.empty()) {
    addDestination(*this, destination, destLeft, destTop, out.form());
  } else {
    addUriAction(*this, address);
  }
  auto& border = add(u"Border", std::make_unique<CPDFArray>());
  border.SetLineBreaks(true);
  border.dictionaryFlag = true;
  for (int number = 0; number < 3; ++number) {
    border.Append(std::make_unique<CPDFNumber>(0));
  }
  CPDFDictionary::Write(out);
}

}  // namespace PDFStuffer
