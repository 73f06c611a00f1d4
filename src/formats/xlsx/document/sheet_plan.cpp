#include "formats/xlsx/document/sheet_plan.h"

#include "document/language.h"
#include "formats/xlsx/document/sheet/text_height.h"
#include "formats/xlsx/workbook/cell_name.h"

#include <algorithm>
#include <span>
#include <utility>

namespace scrivalen::xlsx {
namespace {

using document::Cell;

constexpr std::size_t kMostHeld = 1048576;  // bytes
constexpr std::size_t kFewRows = 10;
constexpr double kLaterWidth = 13;  // of columns that only later tables may have, in digits

}  // namespace

bool SheetPlan::isFull() const {
  return proseBytes_ + columnBytes_ + texts_.used() + contents_.size() + contents_.pictureBytes() +
             cells_.size() * sizeof(Cell) + rows_.size() * sizeof(HeldRow) >
         kMostHeld;
}

void SheetPlan::add(ProseRow row) {
  constexpr std::size_t kBytesOfARow = 256;
  proseBytes_ += kBytesOfARow + row.text.text.size();
  for (const PlacedPicture& picture : row.text.pictures) {
    proseBytes_ += picture.picture->bytes().size();
  }
  rowsAfterTable_ += tableCount_ > 0 ? 1u : 0u;
  blocks_.push_back({std::move(row), nullptr});
}

// ---- Tables

void SheetPlan::measure(const document::Table& table, TableWriter& tables) {
  columns_.add(table);
  if (++tableCount_ > 1) {
    return;
  }
  const SheetLayout own = layout(true);
  const std::uint32_t header = TableWriter::headerRowsOf(table);
  RowsExtent head = rowsBeforeTable(own);
  head.rows += header;
  head.heightPt += tables.heightOfHeader(table, own);
  frozenRows_ = header > 0 && canFreeze(head.rows, head.heightPt) ? head.rows : 0;
}

// The rows before the table: those of each block, the blank ones before headings, and one before the table.
RowsExtent SheetPlan::rowsBeforeTable(const SheetLayout& layout) const {
  RowsExtent extent;
  bool isHeading = true;
  for (const Block& block : blocks_) {
    if (block.prose.hasBlankBefore && extent.rows > 0) {
      extent.add(kLineHeight);
    }
    addExtent(extent, block.prose, layout);
    isHeading = block.prose.isHeading;
  }
  if (!isHeading) {
    extent.add(kLineHeight);
  }
  return extent;
}

void SheetPlan::beginTable(const document::Table& table, const TableHead& head) {
  auto held = std::make_unique<HeldTable>(HeldTable{{table.name, table.columns}, rows_.size(), 0, head});
  columnBytes_ += sizeof(HeldTable) + table.columns.size() * sizeof(document::Column);
  blocks_.push_back({{}, std::move(held)});
  isInTable_ = true;
}

void SheetPlan::add(const document::Row& row) {
  rows_.push_back({cells_.size(), row.cells.size(), row.header, row.repeated});
  for (const Cell& cell : row.cells) {
    Cell& held = cells_.emplace_back(cell);
    held.text = texts_.copy(cell.text);
    if (cell.content != nullptr) {
      held.content = &contents_;
      held.contentBegin = contents_.size();
      cell.replay(contents_);
      held.contentEnd = contents_.size();
    }
  }
  ++blocks_.back().table->rows;
}

// ---- The sheet

bool SheetPlan::isOfFirstTable() const {
  return frozenRows_ > 0 || tableCount_ == 0 ||
         (tableCount_ == 1 && rowsAfterTable_ <= std::max(rows_.size(), kFewRows));
}

SheetLayout SheetPlan::layout(bool isWhole) const {
  SheetLayout layout;
  layout.isRightToLeft = document::isRightToLeft(settings_.text("language"));
  if (!isWhole) {
    layout.otherWidth = looks_.columnWidth.value_or(kLaterWidth);
  }
  if (tableCount_ > 0) {
    setColumns(layout);
    layout.frozenRows = looks_.frozenRows.value_or(frozenRows_);
  } else {
    layout.widths = {looks_.columnWidth.value_or(kProseWidth)};
    layout.proseWidth = layout.widths.front();
  }
  return layout;
}

void SheetPlan::setColumns(SheetLayout& layout) const {
  layout.widths = columns_.widths(settings_);
  if (looks_.columnWidth) {
    layout.widths.assign(layout.widths.size(), *looks_.columnWidth);
  }
  layout.proseColumns = 0;
  while (layout.proseWidth < kProseWidth && layout.proseColumns < kMostColumns) {
    layout.proseWidth += layout.widthOf(layout.proseColumns++);
  }
}

void SheetPlan::writeTo(SheetTarget& target) {
  const bool isOpen = std::exchange(isInTable_, false);
  for (const Block& block : blocks_) {
    if (block.table == nullptr) {
      target.writeProse(block.prose);
    } else {
      writeTable(*block.table, isOpen && &block == &blocks_.back(), target);
    }
  }
  blocks_.clear();
  columns_ = {};
  cells_.clear();
  rows_.clear();
  texts_.reset();
  contents_.clear();
  proseBytes_ = columnBytes_ = tableCount_ = rowsAfterTable_ = 0;
  frozenRows_ = 0;
}

void SheetPlan::writeTable(const HeldTable& table, bool isOpen, SheetTarget& target) const {
  target.beginHeldTable(table.table, table.head);
  for (const HeldRow& row : std::span(rows_).subspan(table.firstRow, table.rows)) {
    target.writeHeldRow({std::span(cells_).subspan(row.firstCell, row.count), row.header, row.repeated});
  }
  if (!isOpen) {
    target.endHeldTable();
  }
}

}  // namespace scrivalen::xlsx
