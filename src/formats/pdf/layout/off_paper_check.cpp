#include "formats/pdf/layout/off_paper_check.h"

#include <algorithm>
#include <numeric>

namespace scrivalen::pdf {
namespace {

Points widthOf(std::string_view text, const CharWidths& widths) {
  const auto add = [&widths](std::int64_t sum, char c) { return sum + widths.of(c); };
  return std::accumulate(text.begin(), text.end(), std::int64_t{0}, add) / widths.perPoint();
}

}  // namespace

// Letters reach two thirds of the size, which is the style's lead, above the baseline and two ninths below it. A line
// of several letters was broken before it reached the width of its column. A single letter cannot be broken, and text
// of a negative size never reaches the width.
void OffPaperCheck::line(std::string_view text, const DrawStyle& style, Points x, Points y, std::uint64_t page) {
  if (text.empty() || text == " ") {
    return;
  }
  const auto [bottom, top] = std::minmax({y - style.lead - style.lead / 3, y});
  checkHeights(bottom, top, page);
  if (text.size() == 1 || style.lead < 0) {
    const Points end = x + widthOf(text, style.widths);
    if (end < 0 || end > paper_.width) {
      note(page);
    }
  }
}

void OffPaperCheck::frame(Points bottom, Points top, std::uint64_t page) {
  const auto [low, high] = std::minmax({bottom, top});
  checkHeights(low, high, page);
}

void OffPaperCheck::checkHeights(Points bottom, Points top, std::uint64_t page) {
  if (bottom < 0 || top > paper_.height) {
    note(page);
  }
}

void OffPaperCheck::note(std::uint64_t page) {
  isOutside_ = true;
  found_.firstPage = found_.firstPage == 0 ? page : found_.firstPage;
}

void OffPaperCheck::countInto(std::uint64_t& count) {
  count += isOutside_ ? 1 : 0;
  isOutside_ = false;
}

}  // namespace scrivalen::pdf
