#pragma once

#include "formats/pdf/layout/units.h"
#include "formats/pdf/objects/page.h"

#include <unordered_map>

namespace scrivalen::pdf {

class CPDFitem;

/// The position of a laid-out item.
struct Placement {
  PDFStuffer::CPDFPage* startPage = nullptr;
  PDFStuffer::CPDFPage* endPage = nullptr;
  Points top = 0;
  Points bottom = 0;
  Points width = 0;
  Points x = 0;
};

using Placements = std::unordered_map<const CPDFitem*, Placement>;

}  // namespace scrivalen::pdf
