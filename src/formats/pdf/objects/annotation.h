#pragma once

#include "formats/pdf/objects/containers.h"
#include "formats/pdf/objects/values.h"

#include <string>

namespace PDFStuffer {

/// A link on a page (PDF 1.4, 8.4.5) to a destination in the document or to an address, without a visible border.
class CPDFAnnot final : public CPDFDictionary {
 public:
  explicit CPDFAnnot(std::uint32_t& nextObjectNumber) { objectNumber = nextObjectNumber++; }
  void Write(CPDFMemBlock& out) override;

  void setRectangle(std::int32_t left, std::int32_t bottom, std::int32_t right, std::int32_t top);

  /// In points from the page's lower left corner.
  CPDFRect rect;
  /// The target address in ASCII; if empty, the link leads to the destination.
  std::u16string address;
  CPDFIndirectRef destination;
  CPDFNumber destLeft;
  CPDFNumber destTop;
};

}  // namespace PDFStuffer
