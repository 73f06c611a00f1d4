#include "formats/pdf/objects/destination.h"

#include <utility>

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

void addUriAction(CPDFDictionary& link, std::u16string address) {
  auto& action = link.add(u"A", std::make_unique<CPDFDictionary>());
  action.addName(u"Type", u"Action");
  action.addName(u"S", u"URI");
  action.add(u"URI", std::make_unique<CPDFString>(std::move(address)));
}

}  // namespace PDFStuffer
