#pragma once

#include "formats/pdf/objects/object.h"

#include <string>

namespace scrivalen::test {

/// The bytes that an object writes.
inline std::string written(PDFStuffer::CPDFObject& object, PDFStuffer::Form form = PDFStuffer::Form::Classic) {
  PDFStuffer::CPDFMemBlock out(form);
  object.Write(out);
  return std::string(out.text());
}

inline std::string conforming(PDFStuffer::CPDFObject& object) { return written(object, PDFStuffer::Form::Conforming); }

}  // namespace scrivalen::test
