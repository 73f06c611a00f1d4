#pragma once

#include "formats/pdf/objects/mem_block.h"

#include <cstdint>
#include <vector>

namespace PDFStuffer {

/// An object of a PDF file (PDF 1.4, 3.2). One with a number stands in the file by itself, one without inside another.
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
  /// Where the object begins in the file; of 64 bits, so that a file above 4 GiB has a right table.
  std::uint64_t fileOffset = 0;
  /// Set by what is like a dictionary; no reader of it is known.
  bool dictionaryFlag = false;
  /// Not owned.
  std::vector<CPDFObject*> children;
};

}  // namespace PDFStuffer
