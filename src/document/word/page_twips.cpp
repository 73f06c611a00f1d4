#include "document/word/page_twips.h"

#include <cmath>

namespace scrivalen::document {
namespace {

constexpr double kLongestSidePt = 22 * 72;

int twips(double points) { return static_cast<int>(std::lround(points * kTwipsPerPoint)); }

}  // namespace

PageTwips::PageTwips(const Page& page)
    : width(twips(page.widthPt)),
      height(twips(page.heightPt)),
      top(twips(page.topPt)),
      right(twips(page.rightPt)),
      bottom(twips(page.bottomPt)),
      left(twips(page.leftPt)) {}

PageTwips wordPageOf(const FormatSettings& settings, OutputWarnings& warnings) {
  const PageTwips asked(pageOf(settings));
  const PageTwips page(pageOf(settings, kLongestSidePt));
  if (page.width < asked.width || page.height < asked.height) {
    warnings.add(WarningCode::InputMended, "paper longer than 22 inches, Word's limit, is cut to that");
  }
  return page;
}

}  // namespace scrivalen::document
