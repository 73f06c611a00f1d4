#include "formats/pdf/objects/object.h"

#include "formats/pdf/objects/piece.h"

namespace PDFStuffer {

CPDFObject::~CPDFObject() = default;

void CPDFObject::WriteHeader(CPDFMemBlock& out) const {
  if (objectNumber != 0) {
    out.Append(Piece().number(objectNumber).text(" ").number(generation).text(" obj\r\n").view());
  }
}

void CPDFObject::WriteFooter(CPDFMemBlock& out) const {
  if (objectNumber != 0) {
    out.Append("endobj\r\n\r\n");
  }
}

void CPDFObject::WriteChildren(CPDFMemBlock& out) {
  for (CPDFObject* const child : children) {
    child->Write(out);
  }
}

}  // namespace PDFStuffer
