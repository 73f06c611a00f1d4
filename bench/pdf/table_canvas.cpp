#include "table_canvas.h"

#include "document_ledger.h"

#include <array>
#include <cstddef>

namespace scrivalen::bench {
namespace {

constexpr double kRowHeight = 12.62;
constexpr double kBaseline = 10.7;
constexpr double kPadding = 4;
constexpr std::array<double, kDocumentColumns + 1> kEdges = {0, 42, 117, 305, 363, 424, 481.9};

constexpr bool isNumber(std::size_t column) { return column == 0 || column == 3; }

}  // namespace

bool drawLedger(TableCanvas& canvas, long rows) {
  bool fits = true;
  Bookings bookings;
  BookingTexts texts;
  double top = kPageHeight;
  for (long row = 0; row < rows; ++row) {
    if (top + kRowHeight > kPageHeight - kMargin) {
      canvas.beginPage();
      top = kMargin;
    }
    std::size_t column = 0;
    for (const std::string_view text : texts.of(bookings.next())) {
      const double free = kEdges[column + 1] - kEdges[column] - 2 * kPadding - canvas.widthOf(text);
      fits = fits && free > 0;
      canvas.text(kMargin + kEdges[column] + kPadding + (isNumber(column) ? free : 0), top + kBaseline, text);
      ++column;
    }
    top += kRowHeight;
    canvas.rule(kMargin, top, kEdges.back());
  }
  return fits;
}

}  // namespace scrivalen::bench
