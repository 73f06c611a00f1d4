#include "formats/xlsx/excel_sheet.h"

#include "formats/xlsx/workbook/cell_text.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace scrivalen {
namespace {

constexpr std::size_t kSampleRows = 500;
constexpr std::size_t kSampleBytes = 262144;
constexpr std::uint32_t kLeastCells = 2;  // of a row that sets widths

constexpr std::size_t kMaxWidth = 60;
constexpr std::size_t kMinWidth = 9;  // a narrower column keeps the default width, which is about this

// Inches; the usual ones of spreadsheet programs.
constexpr std::string_view kMargins =
    "<pageMargins left=\"0.7\" right=\"0.7\" top=\"0.75\" bottom=\"0.75\" header=\"0.3\" footer=\"0.3\"/>";

}  // namespace

ExcelSheet::ExcelSheet(ZipWriter& zip, std::size_t number, xlsx::SheetFrame frame, const xlsx::SheetLimits& limits)
    : rows_(zip, number, limits), frame_(std::move(frame)), hasWidths_(!frame_.widths.empty()) {
  if (hasWidths_) {
    begin();
  }
}

bool ExcelSheet::put(std::uint32_t row, std::uint32_t column, std::uint32_t format, const ExcelText& text) {
  if (hasBegun_) {
    const bool hasRoom =
        text.utf8().size() <= xlsx::kShortText || rows_.hasRoomFor(text.utf8().size() * xlsx::kMostOfAUnit);
    write(row, column, format, hasRoom ? text.utf8() : std::string_view());
    return hasRoom;
  }
  hold(row, column, format, text);
  if (isSampled()) {
    if (column + 1 >= kLeastCells) {
      takeWidths();
    }
    begin();
  }
  return true;
}

void ExcelSheet::hold(std::uint32_t row, std::uint32_t column, std::uint32_t format, const ExcelText& text) {
  held_.push_back({row, column, format, static_cast<std::uint32_t>(text.utf8().size())});
  heldTexts_.append(text.utf8());
  rowWidths_.resize(column + 1);
  rowWidths_[column] = static_cast<std::uint8_t>(std::min(text.width(), kMaxWidth));
}

bool ExcelSheet::isSampled() const {
  return sampledRows_ >= kSampleRows || heldTexts_.size() + held_.size() * sizeof(HeldCell) >= kSampleBytes;
}

void ExcelSheet::endRow(std::uint32_t cells) {
  if (hasBegun_) {
    return;
  }
  if (cells >= kLeastCells) {
    takeWidths();
    ++sampledRows_;
  }
  rowWidths_.clear();
  if (isSampled()) {
    begin();
  }
}

void ExcelSheet::takeWidths() {
  widths_.resize(std::max(widths_.size(), rowWidths_.size()));
  for (std::size_t column = 0; column < rowWidths_.size(); ++column) {
    widths_[column] = std::max(widths_[column], rowWidths_[column]);
  }
}

void ExcelSheet::begin() {
  hasBegun_ = true;
  if (!hasWidths_) {
    for (const std::uint8_t width : widths_) {
      frame_.widths.push_back(width < kMinWidth ? 0 : width);
    }
  }
  rows_.begin(frame_);
  const std::string texts = std::exchange(heldTexts_, {});
  std::string_view rest = texts;
  for (const HeldCell& cell : std::exchange(held_, {})) {
    write(cell.row, cell.column, cell.format, rest.substr(0, cell.size));
    rest.remove_prefix(cell.size);
  }
}

void ExcelSheet::write(std::uint32_t row, std::uint32_t column, std::uint32_t format, std::string_view text) {
  if (!isRowOpen_ || rows_.row() != row) {
    closeRow();
    rows_.skipTo(row);
    rows_.beginRow();
    isRowOpen_ = true;
  }
  if (text.empty()) {
    rows_.blank(column, format);
  } else {
    rows_.escapedText(column, format, text);
  }
}

void ExcelSheet::closeRow() {
  if (std::exchange(isRowOpen_, false)) {
    rows_.endRow();
  }
}

void ExcelSheet::end() {
  if (!hasBegun_) {
    begin();
  }
  closeRow();
  rows_.end(kMargins, {});
}

}  // namespace scrivalen
