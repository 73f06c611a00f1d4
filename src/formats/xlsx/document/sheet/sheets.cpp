#include "formats/xlsx/document/sheet/sheets.h"

#include "formats/xlsx/document/sheet/column_layout.h"

#include <numeric>

namespace scrivalen::xlsx {

SheetWriter& Sheets::begin(std::string_view wish, const SheetLayout& layout) {
  end();
  current_ =
      std::make_unique<SheetWriter>(zip_, formats_, places_, losses_, names_.next(wish), written_.size() + 1, limits_);
  current_->begin(layout);
  return *current_;
}

void Sheets::end() {
  if (!current_) {
    return;
  }
  const std::vector<double>& widths = current_->layout().widths;
  const double width = std::accumulate(widths.begin(), widths.end(), 0.0) * kPointsPerDigit;
  current_->end(page_, page_.isLandscape(width), parts_);
  written_.push_back({current_->name(), current_->filter(), current_->titleRows()});
  current_.reset();
}

}  // namespace scrivalen::xlsx
