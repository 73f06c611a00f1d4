#include "document/word/page_twips.h"

#include <cmath>

namespace scrivalen::document {
namespace {

int twips(double points) { return static_cast<int>(std::lround(points * kTwipsPerPoint)); }

}  // namespace

PageTwips::PageTwips(const Page& page)
    : width(twips(page.widthPt)),
      height(twips(page.heightPt)),
      top(twips(page.topPt)),
      right(twips(page.rightPt)),
      bottom(twips(page.bottomPt)),
      left(twips(page.leftPt)) {}

}  // namespace scrivalen::document
