#pragma once

#include "formats/pdf/objects/mem_block.h"

#include <cstdint>
#include <vector>

namespace PDFStuffer {

/// An object of a PDF file (PDF 1.4, 3.2). An object with a number is an indirect object of the file; one without a
/// number is part of another object.
class CPDFObject {
 public:
  CPDFObject() = default;
  CPDFObject(const CPDFObject&) = delete;
  CPDFObject& operator=(const CPDFObject&) = delete;
  virtual ~CPDFObject();

  virtual void WriteHeader(CPDFMemBlock& out) const;
  /// Appends the whole object, with header and footer when it has a number.
  virtual void Write(CPDFMemBlock& out) = 0;
  virtual void WriteFooter(CPDFMemBlock& out) const;
  virtual void WriteChildren(CPDFMemBlock& out);

  std::uint32_t objectNumber = 0;
  std::uint32_t generation = 0;
  /// The offset at which the object begins in the file, in 64 bits, so that the table of a file above 4 GiB is correct.
  std::uint64_t fileOffset = 0;
  /// Set by dictionary-like objects; not read by the library.
  bool dictionaryFlag = false;
  /// Not owned.
  std::vector<CPDFObject*> children;
};

}  // namespace PDFStuffer
