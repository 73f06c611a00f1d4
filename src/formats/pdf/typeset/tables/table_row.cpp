#include "formats/pdf/typeset/tables/table_row.h"

#include "formats/pdf/typeset/fonts/win_ansi_text.h"

#include <algorithm>
#include <utility>

namespace scrivalen::typeset {
namespace {

constexpr Length kLeading = 1180;  // in thousandths of the size

Length textWidth(const TablePart& part, std::size_t column, std::size_t endColumn) {
  const Length width = part.rightOf(endColumn) - part.leftOf(column);
  return std::max(width - 2 * kCellPadding - part.gapBefore(endColumn), kPoint);
}

}  // namespace

void RowSetter::begin(const TablePlan& plan, const document::Table& table, Length pageHeight, bool isRightToLeft) {
  pictureHeight_ = pageHeight / 2;
  plan_ = &plan;
  lineHeight_ = scaled(kLeading, plan.size);
  baseline_ = baselineOf(lineHeight_, plan.size);
  aligns_.clear();
  for (const document::Column& column : table.columns) {
    const bool isTurned = isRightToLeft && column.align == document::Align::Left;
    aligns_.push_back(isTurned ? document::Align::Right : column.align);
  }
  parts_.assign(table.columns.size(), nullptr);
  widths_.clear();
  for (const TablePart& part : plan.parts) {
    for (std::size_t column = part.first; column < part.end; ++column) {
      parts_[column] = &part;
      widths_.push_back(textWidth(part, column, column + 1));
    }
    widths_.front() = std::min(widths_.front(), textWidth(part, 0, 1));
  }
}

// The least width of a cell's text in the parts that show it.
Length RowSetter::widthOf(const SetCell& cell, bool isHeader) const {
  if (cell.endColumn == cell.column + 1) {
    return widths_[cell.column];
  }
  const TablePart* const first = parts_[cell.column];
  const TablePart* const last = cell.column == 0 ? &plan_->parts.back() : isHeader ? parts_[cell.endColumn - 1] : first;
  Length width = textWidth(*first, cell.column, cell.endColumn);
  for (const TablePart* part = first + 1; part <= last; ++part) {
    width = std::min(width, textWidth(*part, cell.column, cell.endColumn));
  }
  return width;
}

void RowSetter::set(const document::Row& row, SetRow& set) {
  set.cells.clear();
  set.bytes.clear();
  set.isHeader = row.header;
  std::size_t column = 0;
  Length height = lineHeight_;
  for (const document::Cell& cell : row.cells) {
    SetCell& drawn = set.cells.emplace_back();
    drawn.column = column;
    drawn.endColumn = column + static_cast<std::size_t>(cell.span);
    drawn.align = alignOf(cell, column);
    drawn.isHeaderCell = row.header || cell.header;
    drawn.style.font = fontOf(family_, drawn.isHeaderCell, false);
    drawn.style.size = plan_->size;
    drawn.style.color = cell.color.value_or(0);
    drawn.background = cell.background;
    column = drawn.endColumn;
    drawn.space = widthOf(drawn, row.header);
    setCell(cell, set, drawn);
    if (drawn.more) {
      height = std::max(height, drawn.more->set.height());
    }
  }
  set.size = sizeFor(height);
}

RowSize RowSetter::sizeFor(Length textHeight) const {
  const Length padding = textHeight > lineHeight_ ? kRowPadding * 2 : kRowPadding;
  return {textHeight + 2 * padding, padding};
}

RowSize RowSetter::sizeIn(const TablePart& part, const SetRow& row) const {
  if (plan_->parts.size() == 1) {
    return row.size;
  }
  Length height = lineHeight_;
  eachCell(row, part, [&](const SetCell& cell) {
    if (cell.more && cell.isIn(part, row.isHeader)) {
      height = std::max(height, cell.more->set.height());
    }
  });
  return sizeFor(height);
}

// The text of a column on the left begins where its language does.
document::Align RowSetter::alignOf(const document::Cell& cell, std::size_t column) const {
  if (cell.align != document::Align::Auto) {
    return cell.align;
  }
  return aligns_[column] == document::Align::Left ? document::Align::Auto : aligns_[column];
}

// A text of one line whose letters do not depend on each other, which most are.
bool RowSetter::setShort(std::string_view text, SetRow& row, SetCell& set) {
  Typeface& typeface = fonts_.at(set.style.font);
  set.begin = row.bytes.size();
  bool isPlain = text.find('\n') == text.npos;
  std::int64_t width = isPlain && appendWinAnsi(row.bytes, text)
                           ? typeface.widthIfKnown(std::string_view(row.bytes).substr(set.begin))
                           : -1;
  set.font = {set.style.font, 0};
  if (width < 0) {
    row.bytes.resize(set.begin);
    width = 0;
    set.font.composite = 1;
    isPlain = isPlain && typeface.appendPlain(row.bytes, text, width);
  }
  set.end = row.bytes.size();
  set.width = scaled(width, plan_->size);
  if (!isPlain || set.width > set.space) {
    row.bytes.resize(set.begin);
    set.end = set.begin;
    return false;
  }
  return true;
}

void RowSetter::setCell(const document::Cell& cell, SetRow& row, SetCell& set) {
  if (cell.content == nullptr && setShort(cell.text, row, set)) {
    return;
  }
  // No letter is wider than its cell or higher than a picture there.
  collector_.begin(set.style, std::max(std::min(set.space, pictureHeight_), plan_->size));
  cell.replay(collector_);
  set.more = std::make_unique<LongCell>();
  set.more->text = collector_.take();
  set.more->set = setText(
      set.more->text, {.width = set.space, .leading = kLeading, .usual = set.style, .height = pictureHeight_}, shaper_);
}

}  // namespace scrivalen::typeset
