#include "formats/pdf/objects/destination.h"

namespace PDFStuffer {

void addDestination(CPDFDictionary& link, const CPDFIndirectRef& page, const CPDFNumber& left, const CPDFNumber& top,
                    Form form) {
  if (!page.target && form == Form::Conforming) {
    return;
  }
  auto& destination = link.add(u"Dest", std::make_unique<CPDFArray>());
  destination.SetLineBreaks(true);
  destination.dictionaryFlag = true;
  destination.Append(std::make_unique<CPDFIndirectRef>(page.target));
  destination.Append(std::make_unique<CPDFName>(u"XYZ"));
  destination.Append(std::make_unique<CPDFNumber>(left));
  destination.Append(std::make_unique<CPDFNumber>(top));
  destination.Append(std::make_unique<CPDFNumber>(0));
}

}  // namespace PDFStuffer
