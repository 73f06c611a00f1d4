#pragma once

#include "formats/pdf/objects/containers.h"
#include "formats/pdf/objects/values.h"

namespace PDFStuffer {

/// A link on a page (PDF 1.4, 8.4.5) to a place in the same document, without a visible border.
class CPDFAnnot final : public CPDFDictionary {
 public:
  explicit CPDFAnnot(std::uint32_t& nextObjectNumber) { objectNumber = nextObjectNumber++; }
  void Write(CPDFMemBlock& out) override;

  void setRectangle(std::int32_t left, std::int32_t bottom, std::int32_t right, std::int32_t top);

  /// In points from the page's lower left corner.
  CPDFRect rect;
  CPDFIndirectRef destination;
  CPDFNumber destLeft;
  CPDFNumber destTop;
};

}  // namespace PDFStuffer
