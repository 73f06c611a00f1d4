#pragma once

#include "formats/pdf/objects/containers.h"
#include "formats/pdf/objects/values.h"

#include <string>

namespace PDFStuffer {

/// Adds where a link leads (PDF 1.4, 8.2.1): the page, XYZ, left, top, and the zoom unchanged. A conforming file has
/// no destination for a link without a page; the classic one names object 0.
void addDestination(CPDFDictionary& link, const CPDFIndirectRef& page, const CPDFNumber& left, const CPDFNumber& top,
                    Form form);

/// Adds the action of a link out of the document (PDF 1.4, 8.5.3): opening an address, which is ASCII.
void addUriAction(CPDFDictionary& link, std::u16string address);

}  // namespace PDFStuffer
