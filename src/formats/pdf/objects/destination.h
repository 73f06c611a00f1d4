#pragma once

#include "formats/pdf/objects/containers.h"
#include "formats/pdf/objects/values.h"

namespace PDFStuffer {

/// Adds where a link leads (PDF 1.4, 8.2.1): the page, XYZ, left, top, and the zoom unchanged. A conforming file has
/// no destination for a link without a page; the classic one names object 0.
void addDestination(CPDFDictionary& link, const CPDFIndirectRef& page, const CPDFNumber& left, const CPDFNumber& top,
                    Form form);

}  // namespace PDFStuffer
