#pragma once

#include "formats/pdf/objects/containers.h"
#include "formats/pdf/objects/values.h"

#include <string>

namespace PDFStuffer {

/// Adds a link's destination (PDF 1.4, 8.2.1): the page, XYZ, left, top, and an unchanged zoom. For a link without a
/// page, a conforming file has no destination; a classic one refers to object 0.
void addDestination(CPDFDictionary& link, const CPDFIndirectRef& page, const CPDFNumber& left, const CPDFNumber& top,
                    Form form);

/// Adds the URI action of a link out of the document (PDF 1.4, 8.5.3). The address is ASCII.
void addUriAction(CPDFDictionary& link, std::u16string address);

}  // namespace PDFStuffer
